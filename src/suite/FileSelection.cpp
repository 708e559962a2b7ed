#include "suite/FileSelection.h"

#include <algorithm>
#include <climits>

#include "suite/AppMessages.h"
#include "suite/FilePath.h"
#include "suite/VantrelStrings.h"

namespace vantrel1 {

namespace {

using View = std::u16string_view;

bool IsSeparator(char16_t c) { return c == u'/' || c == u'\\'; }

// Splits at `separator`; a trailing empty piece is kept, so "a|" gives "a" and "".
std::vector<View> Split(View text, char16_t separator) {
  std::vector<View> pieces;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text.find(separator, start);
    pieces.push_back(text.substr(start, end == View::npos ? View::npos : end - start));
    if (end == View::npos) return pieces;
    start = end + 1;
  }
}

View FileNameOf(View path) {
  const auto slash = std::find_if(path.rbegin(), path.rend(), IsSeparator);
  return path.substr(static_cast<std::size_t>(path.rend() - slash));
}

View FolderOf(View path) { return path.substr(0, path.size() - FileNameOf(path).size()); }

bool HasExtension(View path) {
  CStdStrW ext;
  splitpath2(path, nullptr, nullptr, &ext);
  return !ext.empty();
}

// Copies `text` and its terminator at `pos`; false when they do not fit.
bool Put(View text, WCHAR* buffer, std::size_t capacity, std::size_t& pos) {
  if (capacity - pos < text.size() + 1) return false;
  std::copy(text.begin(), text.end(), buffer + pos);
  pos += text.size();
  buffer[pos++] = 0;
  return true;
}

bool PutAll(const std::vector<CStdStrW>& paths, WCHAR* buffer, std::size_t capacity, std::size_t& pos) {
  if (paths.size() == 1) return Put(paths.front(), buffer, capacity, pos);
  const View folder = FolderOf(paths.front());
  if (!Put(folder, buffer, capacity, pos)) return false;
  for (const CStdStrW& path : paths) {
    const View name = FolderOf(path) == folder ? FileNameOf(path) : View(path);
    if (!Put(name, buffer, capacity, pos)) return false;
  }
  return true;
}

CStdStrW JoinPath(View folder, View name) {
  CStdStrW path(folder);
  if (!path.empty() && !IsSeparator(path.back())) path.push_back(u'/');
  return path + CStdStrW(name);
}

bool WithinLimits(const FileSelection& selection, HWND owner) {
  for (const CStdStrW& path : selection.paths) {
    if (path.size() > kMaxSelectedPathLength) {
      AppError(VMSG_PATH_TOO_LONG, owner, path);
      return false;
    }
  }
  if (selection.paths.size() > kMaxSelectedFiles) {
    AppError(VMSG_TOO_MANY_FILES, owner);
    return false;
  }
  return true;
}

// A single bare name takes the extension of the filter's first pattern.
bool SupplyExtension(FileSelection& selection, View patterns) {
  if (selection.paths.size() != 1 || HasExtension(selection.paths.front())) return false;
  const CStdStrW ext = PatternExtension(patterns);
  if (ext.empty()) return false;
  AppendExtension(selection.paths.front(), ext, selection.pathCapacity);
  if (!selection.fileTitle.empty()) AppendExtension(selection.fileTitle, ext, selection.titleCapacity);
  return true;
}

// 0 when every name fits the selected filter (perhaps after supplying an extension).
int MatchFilter(FileSelection& selection, const FileSelectionRules& rules, bool* appended) {
  CStdStrW patterns;
  if (!FilterPattern(rules.filter, rules.filterIndex == 0 ? 1 : rules.filterIndex, &patterns)) return 1;
  for (const CStdStrW& path : selection.paths) {
    if (NameFitsPatterns(FileNameOf(path), patterns)) continue;
    if (!*appended && SupplyExtension(selection, patterns)) {
      *appended = true;
      continue;
    }
    AppError(VMSG_NAME_DOES_NOT_FIT_FILTER, rules.owner, CStdStrW(FileNameOf(path)));
    return 1;
  }
  return 0;
}

bool IsReservedName(const FileSelection& selection) {
  const CStdStrW reserved = LoadVantrelString(VSTR_RESERVED_FILE_NAME);
  for (const CStdStrW& path : selection.paths) {
    CStdStrW title;
    splitpath2(path, nullptr, &title, nullptr);
    if (!reserved.empty() && title.CompareNoCase(reserved) == 0) return true;
  }
  return false;
}

// The question the framework asked about the bare name is asked again about the name the
// file will really have.
int ConfirmOverwrite(const FileSelection& selection, HWND owner) {
  const CStdStrW& path = selection.paths.front();
  if (!FileExistsX(path.c_str(), FILE_EXISTS_ANY)) return 0;
  return AppPrompt(VMSG_CONFIRM_OVERWRITE, owner, CStdStrW(FileNameOf(path))) == IDYES ? 0 : 1;
}

// Digits with an optional sign after optional blanks, as "%d" reads them.
bool ScanInt(View text, std::size_t& pos, int& value) {
  while (pos < text.size() && (text[pos] == u' ' || (text[pos] >= u'\t' && text[pos] <= u'\r'))) ++pos;
  const bool negative = pos < text.size() && text[pos] == u'-';
  if (pos < text.size() && (text[pos] == u'-' || text[pos] == u'+')) ++pos;
  const std::size_t first = pos;
  long long magnitude = 0;
  for (; pos < text.size() && text[pos] >= u'0' && text[pos] <= u'9'; ++pos) {
    magnitude = std::min<long long>(magnitude * 10 + (text[pos] - u'0'), 1LL + INT_MAX);
  }
  if (pos == first) return false;
  const long long signedValue = negative ? -magnitude : magnitude;
  value = static_cast<int>(std::clamp<long long>(signedValue, INT_MIN, INT_MAX));
  return true;
}

}  // namespace

std::vector<FilterPair> ParseFilterList(View filter) {
  std::vector<FilterPair> pairs;
  const std::vector<View> pieces = Split(filter, u'|');
  for (std::size_t i = 0; i + 1 < pieces.size() && !pieces[i].empty(); i += 2) {
    pairs.push_back({CStdStrW(pieces[i]), CStdStrW(pieces[i + 1])});
  }
  return pairs;
}

bool FilterPattern(View filter, int index, CStdStrW* patterns) {
  const std::vector<FilterPair> pairs = ParseFilterList(filter);
  if (index < 1 || static_cast<std::size_t>(index) > pairs.size()) return false;
  if (patterns) *patterns = pairs[static_cast<std::size_t>(index) - 1].patterns;
  return true;
}

bool NameFitsPatterns(View name, View patterns) {
  for (View part : Split(patterns, u';')) {
    if (FileNameFitsSpec(name, part)) return true;
  }
  return false;
}

CStdStrW PatternExtension(View patterns) {
  const View first = Split(patterns, u';').front();
  const std::size_t dot = first.find(u'.');
  if (dot == View::npos) return {};
  const View ext = first.substr(dot + 1);
  if (ext.find_first_of(u"*?/\\") != View::npos) return {};
  return CStdStrW(ext);
}

bool AppendExtension(CStdStrW& text, View ext, std::size_t capacity) {
  const bool needsDot = text.empty() || text.back() != u'.';
  const std::size_t length = text.size() + (needsDot ? 1 : 0) + ext.size();
  if (length + 1 > capacity) return false;
  if (needsDot) text.push_back(u'.');
  text.append(ext);
  return true;
}

std::vector<CStdStrW> ReadSelectionBuffer(const WCHAR* buffer, std::size_t capacity) {
  std::vector<View> strings;
  std::size_t pos = 0;
  while (buffer && pos < capacity) {
    const WCHAR* start = buffer + pos;
    const std::size_t length = std::find(start, buffer + capacity, WCHAR(0)) - start;
    if (length == 0) break;
    strings.emplace_back(start, length);
    pos += length + 1;
  }
  if (strings.size() <= 1) return {strings.begin(), strings.end()};
  std::vector<CStdStrW> paths;
  for (std::size_t i = 1; i < strings.size(); ++i) {
    const bool absolute = IsSeparator(strings[i].front());
    paths.push_back(absolute ? CStdStrW(strings[i]) : JoinPath(strings[0], strings[i]));
  }
  return paths;
}

bool WriteSelectionBuffer(const std::vector<CStdStrW>& paths, WCHAR* buffer, std::size_t capacity) {
  if (!buffer || capacity == 0) return false;
  std::fill(buffer, buffer + capacity, WCHAR(0));
  std::size_t pos = 0;
  if (paths.empty()) return true;
  // A multi-selection's closing empty string needs one more unit.
  if (PutAll(paths, buffer, capacity, pos) && (paths.size() == 1 || pos < capacity)) return true;
  std::fill(buffer, buffer + capacity, WCHAR(0));
  return false;
}

bool BufferHoldsSingleName(const WCHAR* buffer, std::size_t capacity) {
  if (!buffer || capacity == 0) return false;
  const std::size_t end = std::find(buffer, buffer + capacity, WCHAR(0)) - buffer;
  return end + 1 >= capacity || buffer[end + 1] == 0;
}

int CheckFileSelection(FileSelection& selection, const FileSelectionRules& rules, bool* extensionAppended) {
  bool appended = false;
  if (extensionAppended) *extensionAppended = false;
  if (!WithinLimits(selection, rules.owner)) return 1;
  if (rules.extMatchRequired && !rules.filter.empty() && MatchFilter(selection, rules, &appended) != 0) return 1;
  if (extensionAppended) *extensionAppended = appended;
  if (!rules.saveDialog || selection.paths.empty()) return 0;
  if (IsReservedName(selection)) {
    AppError(VMSG_RESERVED_FILE_NAME, rules.owner);
    return 1;
  }
  return appended ? ConfirmOverwrite(selection, rules.owner) : 0;
}

SamplesFlags ParseSamplesFlags(View text) {
  SamplesFlags flags;
  std::size_t pos = 0;
  for (int i = 0; i < 3; ++i) {
    if (i > 0 && (pos >= text.size() || text[pos++] != u',')) break;
    if (!ScanInt(text, pos, flags.values[i])) break;
  }
  return flags;
}

CStdStrW FormatSamplesFlags(const SamplesFlags& flags) {
  CStdStrW text;
  text.Format(u"%d,%d,%d", flags.values[0], flags.values[1], flags.values[2]);
  return text;
}

int SamplesFlagSlot(int moduleType) {
  switch (moduleType) {
    case 2: return 0;
    case 3: return 1;
    case 1: return 2;
    default: return -1;
  }
}

}  // namespace vantrel1
