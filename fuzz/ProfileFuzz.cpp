// Profile files: any bytes parse, write back byte for byte, and stay consistent through
// an edit of the first section's first key.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/ProfileDocument.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using vantrel1::ProfileDocument;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  ProfileDocument doc = ProfileDocument::Parse(bytes);
  // A UTF-16 file of odd length loses its last byte; everything else comes back unchanged.
  const bool oddUtf16 = doc.Encoding() == vantrel1::ProfileEncoding::Utf16Le && size % 2 == 1;
  Check(oddUtf16 || doc.Serialize() == bytes);

  const auto sections = doc.SectionNames();
  if (sections.empty()) return 0;
  const std::u16string section = sections.front();
  const auto keys = doc.KeyNames(section);
  const std::u16string key = keys.empty() ? u"Added" : keys.front();
  if (ProfileDocument::CanStore(section, key, u"v")) {
    doc.Set(section, key, u"v");
    Check(doc.Find(section, key) == u"v");
    const ProfileDocument reread = ProfileDocument::Parse(doc.Serialize());
    Check(reread.Find(section, key) == u"v");
    Check(reread.SectionNames().size() == sections.size());
  }
  doc.DeleteSection(section);
  Check(!doc.Find(section, key).has_value());
  return 0;
}
