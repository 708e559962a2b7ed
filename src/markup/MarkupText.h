#pragma once
// Character classes and small text searches shared by the markup parser and editor.
#include <cstddef>
#include <string>

#include "platform/Types.h"

namespace vantrel1::markup {

// Positions are ints; a document and everything added to it stays below this length.
constexpr std::size_t kMaxDocLength = 0x7FFFFF00;

inline bool IsSpace(WCHAR c) { return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r'; }

inline bool IsDelimiter(WCHAR c) {
  switch (c) {
    case u' ': case u'\t': case u'\n': case u'\r':
    case u'<': case u'>': case u'=': case u'\\': case u'/': case u'?': case u'!':
      return true;
    default:
      return false;
  }
}

// Advances `pos` to the next occurrence of `what` (at most a few characters) at or after
// it; false at the terminator.
inline bool FindText(const WCHAR* doc, int& pos, const WCHAR* what) {
  for (;; ++pos) {
    if (!doc[pos]) return false;
    int i = 0;
    while (what[i] && doc[pos + i] == what[i]) ++i;
    if (!what[i]) return true;
  }
}

inline int Length(const WCHAR* text) {
  return text ? static_cast<int>(std::char_traits<WCHAR>::length(text)) : 0;
}

// A name that scans back as the single token it was written as: not empty, not quoted,
// no delimiters. Anything else would turn the written tag into a different one.
inline bool IsValidName(const WCHAR* name) {
  if (!name || !*name || *name == u'"' || *name == u'\'') return false;
  for (const WCHAR* p = name; *p; ++p)
    if (IsDelimiter(*p)) return false;
  return true;
}

}  // namespace vantrel1::markup
