#pragma once
// The wide C runtime that the record parsers and writers use, with Microsoft's semantics
// (the files and records these functions read and write are shared with the suite's
// Windows programs). Every function here is total: no input reads past its terminator,
// overflows, or has undefined behaviour.
#include <cstddef>

#include "platform/Types.h"

// Leading blanks, an optional sign, then digits up to the first non-digit; 0 when there
// are none. Values beyond the int range saturate instead of overflowing.
VANTREL1_EXPORT int _wtoi(const WCHAR* text);
VANTREL1_EXPORT long long _wtoi64(const WCHAR* text);
// As strtod in the classic locale: leading blanks, sign, digits, '.', exponent; 0.0 when
// nothing is numeric.
VANTREL1_EXPORT double _wtof(const WCHAR* text);

// Length in code units up to the terminator; 0 for null.
VANTREL1_EXPORT int lstrlenW(const WCHAR* text);

// Splits `text` in place as wcstok does: a run of delimiters is one separator, and leading
// delimiters are skipped. Pass the text on the first call and null afterwards, with the
// same `context`. Returns null when no token is left.
VANTREL1_EXPORT WCHAR* wcstok(WCHAR* text, const WCHAR* delimiters, WCHAR** context);

// Bounded formatting into `buffer` of `count` code units with _snwprintf's contract:
// returns the number of units written without a terminator when the text fits in
// `count` units (terminated only if there is room), -1 when it does not fit (the buffer
// then holds the first `count` units, unterminated). Supports the conversions the library
// uses: %d %i %u %x %X %ld %lu %lld %c %s (wide) %hs (narrow) %f %e %g with flags, width
// and precision, and %%.
VANTREL1_EXPORT int _snwprintf(WCHAR* buffer, std::size_t count, const WCHAR* format, ...);
