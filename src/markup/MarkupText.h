#pragma once
// Character classes and small text searches shared by the markup parser and editor.
#include <cstddef>
#include <string>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "platform/Types.h"

namespace vantrel1::markup {

// Positions are ints; a document and everything added to it stays below this length.
constexpr std::size_t kMaxDocLength = 0x7FFFFF00;

inline bool IsSpace(WCHAR c) { return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r'; }

inline bool IsDelimiter(WCHAR c) {
  // Bit n set for the delimiters among the first 64 code points; the rest are '\\'.
  constexpr unsigned long long kLow = (1ULL << ' ') | (1ULL << '\t') | (1ULL << '\n') |
                                      (1ULL << '\r') | (1ULL << '<') | (1ULL << '>') |
                                      (1ULL << '=') | (1ULL << '/') | (1ULL << '?') |
                                      (1ULL << '!');
  return c < 64 ? ((kLow >> c) & 1) != 0 : c == u'\\';
}

// Advances `pos` to the first `c` (not the terminator) at or after it, or to the
// terminator; true when `c` was found.
inline bool FindChar(const WCHAR* doc, int& pos, WCHAR c) {
  const WCHAR* p = doc + pos;
  while (*p != c && *p) ++p;
  pos = static_cast<int>(p - doc);
  return *p != 0;
}

// The position of the first `c` or null at or after `pos`, in a text of `length` units
// whose unit at `length` is null. Reads nothing past that terminator.
inline int FindCharOrEnd(const WCHAR* doc, int pos, int length, WCHAR c) {
#if defined(__SSE2__)
  const __m128i wanted = _mm_set1_epi16(static_cast<short>(c));
  const __m128i zero = _mm_setzero_si128();
  for (; pos + 8 <= length; pos += 8) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(doc + pos));
    const __m128i hits = _mm_or_si128(_mm_cmpeq_epi16(units, wanted), _mm_cmpeq_epi16(units, zero));
    const int mask = _mm_movemask_epi8(hits);
    if (mask) return pos + __builtin_ctz(static_cast<unsigned>(mask)) / 2;
  }
#endif
  while (doc[pos] != c && doc[pos]) ++pos;
  return pos;
}

// Advances `pos` past whitespace; true when it stops before the terminator.
inline bool SkipSpace(const WCHAR* doc, int& pos) {
  while (IsSpace(doc[pos])) ++pos;
  return doc[pos] != 0;
}

// The token scanner over anything shaped like CMarkup::TokenPos: skips whitespace, then
// takes a quoted run, a run of non-delimiters or a single delimiter.
template <class Token>
bool ScanToken(Token& token) {
  const WCHAR* doc = token.pText;
  int pos = token.nScan;
  token.bQuoted = 0;
  if (!SkipSpace(doc, pos)) {
    token.nFirst = token.nLast = token.nScan = pos;
    return false;
  }
  const WCHAR c = doc[pos];
  if (c == u'"' || c == u'\'') {
    token.nFirst = pos + 1;
    token.bQuoted = 1;
    int close = pos + 1;
    const bool closed = FindChar(doc, close, c);
    token.nLast = close - 1;
    token.nScan = closed ? close + 1 : close;
    return true;
  }
  token.nFirst = pos;
  int end = pos;
  while (doc[end] && !IsDelimiter(doc[end])) ++end;
  token.nScan = end > pos ? end : pos + 1;
  token.nLast = token.nScan - 1;
  return true;
}

// Whether a token starting with `c` is a run of non-delimiters rather than a quoted text,
// a single delimiter or nothing.
inline bool StartsName(WCHAR c) { return c && !IsDelimiter(c) && c != u'"' && c != u'\''; }

// The end of the run of non-delimiters starting at `pos`: a name as the token scanner
// reads it when StartsName holds for its first character.
inline int NameEnd(const WCHAR* doc, int pos) {
  while (doc[pos] && !IsDelimiter(doc[pos])) ++pos;
  return pos;
}

// The characters of a search name before which a tag's name may end: a search for
// "x[1]" or "x y" also finds a tag named "x".
inline bool EndsTagName(WCHAR c) { return c == u' ' || c == u'=' || c == u'/' || c == u'['; }

// Whether a tag whose name is the token `token` is `name`. The tag's name may also be just
// the part of `name` before a space, '=', '/' or '['.
inline bool TokenMatches(std::u16string_view token, const WCHAR* name, int nameLength) {
  const int length = static_cast<int>(token.size());
  if (length > nameLength) return false;
  for (int i = 0; i < length; ++i)
    if (token[static_cast<std::size_t>(i)] != name[i]) return false;
  return length == nameLength || EndsTagName(name[length]);
}

// The same for a tag whose name is the run of non-delimiters starting at `text`, without
// measuring the run first.
inline bool NameRunMatches(const WCHAR* text, const WCHAR* name, int nameLength) {
  int i = 0;
  while (i < nameLength && text[i] == name[i] && !IsDelimiter(text[i])) ++i;
  if (text[i] && !IsDelimiter(text[i])) return false;
  return i == nameLength || EndsTagName(name[i]);
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
