#pragma once
// The wide C runtime that the record parsers and writers use, with Microsoft's semantics
// (the files and records these functions read and write are shared with the suite's
// Windows programs). Every function here is total: no input reads past its terminator,
// overflows, or has undefined behaviour. Null text pointers read as empty text.
//
// Blanks, digits and letter case are those of the classic locale (platform/CharClass.h):
// the six ASCII blanks, '0'..'9', and case folding of 'A'..'Z' only. Microsoft's runtime
// also accepts other Unicode digits in _wtoi; the suite's records never hold them, and
// accepting only ASCII digits keeps parsing independent of any table.
#include <cstdarg>
#include <cstddef>

#include "platform/Types.h"
#include "platform/WideFormat.h"

// Leading blanks, an optional sign, then digits up to the first non-digit; 0 when there
// are none ("  -12abc" → -12, "1.5" → 1, "abc" → 0, "- 5" → 0). Values beyond the range
// saturate at its ends (INT_MAX / INT_MIN, as Microsoft's runtime returns) instead of
// overflowing. _wtol has the range of Windows' 32-bit long.
VANTREL1_EXPORT int _wtoi(const WCHAR* text);
VANTREL1_EXPORT LONG _wtol(const WCHAR* text);
VANTREL1_EXPORT long long _wtoi64(const WCHAR* text);

// As strtod in the classic locale, never the process locale: leading blanks, sign, then
// decimal digits with '.' and an exponent, a hexadecimal "0x" form, "inf", "infinity" or
// "nan" (any case); 0.0 when nothing is numeric. Correctly rounded; a magnitude too large
// gives ±infinity and one too small ±0 or a subnormal.
VANTREL1_EXPORT double _wtof(const WCHAR* text);

// Length in code units up to the terminator; 0 for null.
VANTREL1_EXPORT int lstrlenW(const WCHAR* text);

// Copies at most max - 1 units of `source` and always terminates (nothing is written when
// max < 1); returns `destination`. "At most 10 characters with the tenth forced to the
// terminator" is lstrcpynW(dst, src, 10).
VANTREL1_EXPORT WCHAR* lstrcpynW(WCHAR* destination, const WCHAR* source, int max);

// Case-insensitive comparison in the classic locale, unit by unit up to the first
// difference or terminator: the difference of the two folded units, so 0 means equal.
// _wcsnicmp compares at most `count` units.
VANTREL1_EXPORT int _wcsicmp(const WCHAR* a, const WCHAR* b);
VANTREL1_EXPORT int _wcsnicmp(const WCHAR* a, const WCHAR* b, std::size_t count);

// Integer to text in `radix` (2..36, lower-case letters). Only radix 10 writes a minus
// sign; other radices show the value's 32 bits unsigned. _itow_s returns 0, EINVAL (bad
// buffer or radix) or ERANGE (too small a buffer; `buffer` is then emptied). _itow needs
// room for 33 units.
VANTREL1_EXPORT int _itow_s(int value, WCHAR* buffer, std::size_t size, int radix);
VANTREL1_EXPORT WCHAR* _itow(int value, WCHAR* buffer, int radix);

// Splits `text` in place as wcstok does: a run of delimiters is one separator, and leading
// delimiters are skipped. Pass the text on the first call and null afterwards, with the
// same `context`. Returns null when no token is left.
VANTREL1_EXPORT WCHAR* wcstok(WCHAR* text, const WCHAR* delimiters, WCHAR** context);

// Bounded formatting into `buffer` of `count` code units with _snwprintf's contract:
// returns the number of units written when the text fits in `count` units, terminated
// only if there is room (so a text of exactly `count` units is not terminated); -1 when
// it does not fit (the buffer then holds the first `count` units, unterminated) or the
// format is invalid (the buffer is then emptied when count > 0). A null buffer with count
// 0 returns the length the text needs. Conversions and argument rules: platform/WideFormat.h.
VANTREL1_EXPORT int _vsnwprintf(WCHAR* buffer, std::size_t count, const WCHAR* format, va_list args);

namespace vantrel1 {
VANTREL1_EXPORT int Snwprintf(WCHAR* buffer, std::size_t count, const WCHAR* format, const FormatArg* args,
                              std::size_t argCount);
VANTREL1_EXPORT int SnwprintfS(WCHAR* buffer, std::size_t size, std::size_t count, const WCHAR* format,
                               const FormatArg* args, std::size_t argCount);
}  // namespace vantrel1

// The arguments keep their types, so a CStdStrW may stand for %s and an argument of the
// wrong kind makes the call fail with -1 instead of printing garbage.
template <typename... Args>
int _snwprintf(WCHAR* buffer, std::size_t count, const WCHAR* format, const Args&... args) {
  return vantrel1::WithFormatArgs(
      [&](const vantrel1::FormatArg* list, std::size_t n) { return vantrel1::Snwprintf(buffer, count, format, list, n); },
      args...);
}

inline constexpr std::size_t _TRUNCATE = static_cast<std::size_t>(-1);

// The terminating form: writes at most min(count, size - 1) units and always terminates.
// Returns the length, or -1 when the text did not fit (with count = _TRUNCATE or count <
// size the buffer keeps the text cut there; otherwise it is emptied) or the format is
// invalid. So with _TRUNCATE a call succeeds only when the text and its terminator fit.
template <typename... Args>
int _snwprintf_s(WCHAR* buffer, std::size_t size, std::size_t count, const WCHAR* format, const Args&... args) {
  return vantrel1::WithFormatArgs(
      [&](const vantrel1::FormatArg* list, std::size_t n) {
        return vantrel1::SnwprintfS(buffer, size, count, format, list, n);
      },
      args...);
}
