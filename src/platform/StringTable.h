#pragma once
// String-table modules. An HINSTANCE names a module: null is this library's own, whose
// text is compiled in from resources/strings/*.str; any other is a string-table file
// loaded at run time (a translation, for example).
//
// Both are read by one parser. The text is UTF-8 (a leading BOM is skipped), one string
// per line:
//     <id> "<text>"       id 0 to 65535; escapes \\ \" \n \t and \uXXXX (one UTF-16 unit)
//     # a comment         and blank lines; a comment may also follow the closing quote
// Anything else, and a second string with an id already used, is an error reported with
// its line number.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Types.h"

// Copies string `id` of `module` into `buffer`, at most bufferMax - 1 units and a
// terminator, and returns the number of units copied; 0 (and an empty buffer) when the
// module has no such string. With bufferMax 0, `buffer` is taken as a `const WCHAR**`
// and receives a read-only pointer to the whole string, valid while the module is
// loaded; the string's length is returned.
VANTREL1_EXPORT int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int bufferMax);

// Loads a string-table file. Returns null when the file cannot be read or has any error
// (then vantrel1::StringModuleErrors() says which); mind that null also names this
// library's own module.
VANTREL1_EXPORT HINSTANCE LoadStringModule(LPCWSTR path);
// FALSE for null, this library's module, or a handle that is not loaded.
VANTREL1_EXPORT BOOL FreeStringModule(HINSTANCE module);

namespace vantrel1 {

struct VANTREL1_EXPORT StringTableError {
  int line = 0;  // 1-based; 0 when the error concerns the file as a whole
  std::string message;
  std::string Describe() const;  // "line 12: ..."
};

struct StringTableParse;

class VANTREL1_EXPORT StringTable {
 public:
  // Keeps every good line and reports every bad one; the first of two equal ids is kept.
  static StringTableParse Parse(std::string_view text);

  const std::u16string* Find(UINT id) const;
  std::size_t Size() const { return m_entries.size(); }

 private:
  struct Entry {
    UINT id;
    int line;
    std::u16string text;
  };
  std::vector<Entry> m_entries;  // sorted by id
};

struct StringTableParse {
  StringTable table;
  std::vector<StringTableError> errors;  // in line order
  bool Ok() const { return errors.empty(); }
};

// This library's own module and what its parse reported (a correct build reports nothing).
VANTREL1_EXPORT const StringTable& BuiltinStringTable();
VANTREL1_EXPORT const std::vector<StringTableError>& BuiltinStringTableErrors();

// Why the last LoadStringModule call on this thread failed (empty after a success).
VANTREL1_EXPORT std::vector<StringTableError> StringModuleErrors();

}  // namespace vantrel1
