// Applies edit sequences chosen by the input to a document taken from it, and checks after
// each edit that the element index equals the one a fresh parse of the new text builds.
#include <cstddef>
#include <cstdint>
#include <string>

#include "../tests/markup/MarkupProbe.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  // First byte: length of the starting document (UTF-8) that follows; the rest picks edits.
  const std::size_t docLength = data[0] < size - 1 ? data[0] : size - 1;
  MarkupProbe m;
  m.SetDoc(vantrel1::FromUtf8(std::string(reinterpret_cast<const char*>(data) + 1, docLength)));
  std::size_t next = 1 + docLength;
  const auto pick = [&](unsigned n) -> unsigned {
    return next < size ? data[next++] % n : 0;
  };
  while (next < size) {
    markup_probe::ApplyRandomEdit(m, pick);
    if (!markup_probe::IndexMismatch(m).empty()) __builtin_trap();
  }
  return 0;
}
