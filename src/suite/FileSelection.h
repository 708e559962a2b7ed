#pragma once
// What the suite's file dialog checks when the user confirms a choice, kept apart from the
// widgets so that every rule can be exercised on plain strings: the dialog's selection
// buffer, its filter list, the names against the selected filter's patterns, the limits on
// path length and selection size, the reserved name and the overwrite question after an
// extension was supplied. Also the first-use setting that starts a dialog in the samples
// folder. Nothing here includes Qt.
#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/StdStr.h"
#include "platform/Types.h"

namespace vantrel1 {

// Paths longer than this are refused.
constexpr std::size_t kMaxSelectedPathLength = 250;
// A selection of more names is refused.
constexpr std::size_t kMaxSelectedFiles = 200;

// One pair of a filter list "description|patterns|description|patterns||".
struct FilterPair {
  CStdStrW description;
  CStdStrW patterns;  // parts separated by ';'
};

// The pairs of a filter list, in order. The list ends at its end, at an empty description
// (the "||" that closes it) or at a description without its pattern text.
VANTREL1_EXPORT std::vector<FilterPair> ParseFilterList(std::u16string_view filter);
// The pattern text of pair `index` (1 is the first); false when the list ends before it.
VANTREL1_EXPORT bool FilterPattern(std::u16string_view filter, int index, CStdStrW* patterns);
// True as soon as one ';'-separated part of `patterns` fits `name` (FileNameFitsSpec).
VANTREL1_EXPORT bool NameFitsPatterns(std::u16string_view name, std::u16string_view patterns);
// The extension a bare name gets from `patterns`: what follows the first '.' of the first
// part ("prj" for "*.prj;*.txt"). Empty when that cannot name a file: no dot, nothing after
// it, or a wildcard or separator in it ("*.*", "*.l?n").
VANTREL1_EXPORT CStdStrW PatternExtension(std::u16string_view patterns);
// Appends "." (unless `text` already ends with one) and `ext` when the result and its
// terminator fit in `capacity` units; false and `text` unchanged otherwise.
VANTREL1_EXPORT bool AppendExtension(CStdStrW& text, std::u16string_view ext, std::size_t capacity);

// The dialog's file buffer, as the common file dialog fills it: one full path, or for a
// multi-selection the folder and then each name, every string terminated and the whole
// ended by an empty string. Reading never goes beyond `capacity` units.
VANTREL1_EXPORT std::vector<CStdStrW> ReadSelectionBuffer(const WCHAR* buffer, std::size_t capacity);
// Writes `paths` in that form (names of another folder than the first one's stay full
// paths) and zeroes the rest; false, with an empty buffer, when they do not fit.
VANTREL1_EXPORT bool WriteSelectionBuffer(const std::vector<CStdStrW>& paths, WCHAR* buffer, std::size_t capacity);
// True when nothing follows the first string: one name (or none).
VANTREL1_EXPORT bool BufferHoldsSingleName(const WCHAR* buffer, std::size_t capacity);

// The confirmed choice as the checks see it and change it.
struct FileSelection {
  std::vector<CStdStrW> paths;  // full paths
  CStdStrW fileTitle;           // the file name shown in the title buffer; may be empty
  std::size_t pathCapacity = 0;   // of the path buffer, terminator included
  std::size_t titleCapacity = 0;  // of the title buffer, terminator included
};

struct FileSelectionRules {
  bool saveDialog = false;
  bool extMatchRequired = true;
  CStdStrW filter;      // the filter list; empty: no filter
  int filterIndex = 0;  // the selected pair; 0 counts as 1
  HWND owner = nullptr;
};

// Runs the checks, telling the user why a choice is refused (the suite's messages 44,
// 138, 743, 812 and the question 504). Returns 0 to accept and 1 to keep the dialog open;
// `*extensionAppended` tells whether a bare name got the filter's extension.
VANTREL1_EXPORT int CheckFileSelection(FileSelection& selection, const FileSelectionRules& rules,
                                          bool* extensionAppended);

// The first-use setting "StartInSamples": "%d,%d,%d", one flag per program type, in the
// order of types 2, 3 and 1.
struct SamplesFlags {
  int values[3] = {0, 0, 0};
};
// Reads as the C library's "%d,%d,%d" scan does: values that are missing or malformed
// (and all after them) are 0; values beyond the int range are clamped.
VANTREL1_EXPORT SamplesFlags ParseSamplesFlags(std::u16string_view text);
VANTREL1_EXPORT CStdStrW FormatSamplesFlags(const SamplesFlags& flags);
// Where the flag of a program type is kept; -1 for a type without one.
VANTREL1_EXPORT int SamplesFlagSlot(int moduleType);

}  // namespace vantrel1
