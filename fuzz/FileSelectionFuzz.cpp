// Feeds arbitrary UTF-16 text (little-endian byte pairs after two control bytes, of which
// the first is used) to the file dialog's checks: the text is split at its first two '\n'
// into a filter list, a selection buffer and a file title, and the checks run over them
// with capacities, a filter index and the dialog's kind taken from the control byte.
// Checks that a name given an extension still fits its buffer, that a buffer written back
// reads back as many names, and that the first-use flags survive a round trip through
// text.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/MessageSink.h"
#include "platform/RecordingMessageSink.h"
#include "platform/StdStr.h"
#include "suite/FileSelection.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

std::u16string Decode(const std::uint8_t* data, std::size_t size) {
  std::u16string text;
  for (std::size_t i = 0; i + 1 < size; i += 2) text += static_cast<char16_t>(data[i] | (data[i + 1] << 8));
  return text;
}

// The piece of `text` before the next '\n' from `*at`, moving `*at` past it.
std::u16string Piece(const std::u16string& text, std::size_t* at) {
  const std::size_t end = std::min(text.find(u'\n', *at), text.size());
  std::u16string piece = text.substr(*at, end - *at);
  *at = end < text.size() ? end + 1 : end;
  return piece;
}

void CheckBuffer(const std::u16string& buffer) {
  using namespace vantrel1;
  const std::vector<CStdStrW> read = ReadSelectionBuffer(buffer.data(), buffer.size());
  BufferHoldsSingleName(buffer.data(), buffer.size());
  std::vector<WCHAR> copy(buffer.size() + 1);
  // A path that names a folder (ends in a separator) has no name to write back in the multi-selection
  // form; the dialog never hands out such paths.
  const bool named = std::none_of(read.begin(), read.end(), [](const CStdStrW& p) {
    return p.empty() || p.back() == u'/' || p.back() == u'\\';
  });
  if (!read.empty() && named && WriteSelectionBuffer(read, copy.data(), copy.size())) {
    const std::vector<CStdStrW> again = ReadSelectionBuffer(copy.data(), copy.size());
    Check(again.size() == read.size());
  }
}

void CheckSelection(const std::u16string& filter, const std::u16string& path, const std::u16string& title,
                    std::uint8_t control) {
  using namespace vantrel1;
  FileSelection selection;
  selection.paths = {CStdStrW(path)};
  selection.fileTitle = title;
  selection.pathCapacity = 1 + (control & 0x3F) * 5;
  selection.titleCapacity = 1 + (control & 0x3F);
  FileSelectionRules rules;
  rules.filter = filter;
  rules.filterIndex = control >> 6;
  rules.saveDialog = (control & 0x40) != 0;
  bool appended = false;
  const int result = CheckFileSelection(selection, rules, &appended);
  Check(result == 0 || result == 1);
  // A name that got the filter's extension still fits its buffer with the terminator.
  if (result == 0 && appended && selection.paths.size() == 1 && selection.paths[0] != path)
    Check(selection.paths[0].size() < selection.pathCapacity);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  CRecordingMessageSink sink;  // questions are answered, messages kept, nothing shown
  const std::u16string text = Decode(data + 2, size - 2);
  std::size_t at = 0;
  const std::u16string filter = Piece(text, &at);
  const std::u16string buffer = Piece(text, &at);
  const std::u16string title = text.substr(at);

  vantrel1::ParseFilterList(filter);
  vantrel1::PatternExtension(filter);
  vantrel1::NameFitsPatterns(title, filter);
  CheckBuffer(buffer);
  CheckSelection(filter, buffer, title, data[0]);

  const vantrel1::SamplesFlags flags = vantrel1::ParseSamplesFlags(title);
  const vantrel1::SamplesFlags again = vantrel1::ParseSamplesFlags(vantrel1::FormatSamplesFlags(flags));
  for (int i = 0; i < 3; ++i) Check(again.values[i] == flags.values[i]);
  return 0;
}
