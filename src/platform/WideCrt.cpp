#include "platform/WideCrt.h"

#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "platform/CharClass.h"
#include "platform/PrintfEngine.h"

using vantrel1::IsClassicDigit;
using vantrel1::IsClassicSpace;

namespace {

const WCHAR* SkipBlanks(const WCHAR* p) {
  while (IsClassicSpace(*p)) ++p;
  return p;
}

// Reads an optional sign; true when it is '-'.
bool ReadSign(const WCHAR*& p) {
  if (*p != u'+' && *p != u'-') return false;
  return *p++ == u'-';
}

// Leading blanks, sign, digits; saturates at the ends of Int's range.
template <typename Int>
Int ParseInteger(const WCHAR* text) {
  using Unsigned = std::make_unsigned_t<Int>;
  if (text == nullptr) return 0;
  const WCHAR* p = SkipBlanks(text);
  const bool negative = ReadSign(p);
  const Unsigned limit = static_cast<Unsigned>(std::numeric_limits<Int>::max()) + (negative ? 1u : 0u);
  Unsigned value = 0;
  for (; IsClassicDigit(*p); ++p) {
    const auto digit = static_cast<Unsigned>(*p - u'0');
    value = value > (limit - digit) / 10 ? limit : static_cast<Unsigned>(value * 10 + digit);
  }
  // Negation in unsigned arithmetic reaches the most negative value without overflow.
  return static_cast<Int>(negative ? static_cast<Unsigned>(0 - value) : value);
}

// --- _wtof ---

bool IsHexDigit(WCHAR c) {
  return IsClassicDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

bool IsDigitOf(WCHAR c, bool hex) { return hex ? IsHexDigit(c) : IsClassicDigit(c); }

// Whether `p` starts with `word` (lower case) in any letter case.
bool StartsWithWord(const WCHAR* p, std::u16string_view word) {
  for (const char16_t w : word) {
    if (vantrel1::ClassicToLower(*p) != w) return false;
    ++p;
  }
  return true;
}

// The longest numeric prefix, in the narrow form std::from_chars reads, and the decimal
// (or binary) order of magnitude of its leading digit, which tells an overflow from an
// underflow when the value is out of range.
struct NumberText {
  std::string chars;
  long long order = 0;
  bool hasDigits = false;
};

void SaturatingAppendDigit(long long& value, int digit) {
  value = value > (LLONG_MAX - digit) / 10 ? LLONG_MAX : value * 10 + digit;
}

void ScanMantissa(const WCHAR*& p, bool hex, NumberText& n) {
  long long integerDigits = 0;
  long long fractionZeros = 0;
  bool significant = false;
  for (; IsDigitOf(*p, hex); ++p) {
    n.chars += static_cast<char>(*p);
    n.hasDigits = true;
    significant = significant || *p != u'0';
    if (significant) ++integerDigits;
  }
  if (*p == u'.') {
    n.chars += '.';
    for (++p; IsDigitOf(*p, hex); ++p) {
      n.chars += static_cast<char>(*p);
      n.hasDigits = true;
      if (!significant && *p == u'0') ++fractionZeros;
      significant = significant || *p != u'0';
    }
  }
  n.order = (integerDigits > 0 ? integerDigits : -fractionZeros) * (hex ? 4 : 1);
}

// An exponent is taken only when digits follow its letter and sign.
void ScanExponent(const WCHAR*& p, bool hex, NumberText& n) {
  if (vantrel1::ClassicToLower(*p) != (hex ? u'p' : u'e')) return;
  const WCHAR* q = p + 1;
  const bool negative = ReadSign(q);
  if (!IsClassicDigit(*q)) return;
  n.chars += hex ? 'p' : 'e';
  if (negative) n.chars += '-';
  long long exponent = 0;
  for (; IsClassicDigit(*q); ++q) {
    n.chars += static_cast<char>(*q);
    SaturatingAppendDigit(exponent, *q - u'0');
  }
  n.order = negative ? n.order - exponent : (n.order > LLONG_MAX - exponent ? LLONG_MAX : n.order + exponent);
  p = q;
}

double ConvertNumber(const NumberText& n, bool hex) {
  double value = 0.0;
  const char* first = n.chars.data();
  const auto result = std::from_chars(first, first + n.chars.size(), value,
                                      hex ? std::chars_format::hex : std::chars_format::general);
  if (result.ec == std::errc::result_out_of_range)
    return n.order > 0 ? std::numeric_limits<double>::infinity() : 0.0;
  return result.ec == std::errc() ? value : 0.0;
}

double ReadMagnitude(const WCHAR* p) {
  if (StartsWithWord(p, u"inf")) return std::numeric_limits<double>::infinity();
  if (StartsWithWord(p, u"nan")) return std::numeric_limits<double>::quiet_NaN();
  const bool hex = p[0] == u'0' && (p[1] == u'x' || p[1] == u'X') &&
                   (IsHexDigit(p[2]) || (p[2] == u'.' && IsHexDigit(p[3])));
  if (hex) p += 2;
  NumberText n;
  ScanMantissa(p, hex, n);
  if (!n.hasDigits) return 0.0;
  ScanExponent(p, hex, n);
  return ConvertNumber(n, hex);
}

// --- formatting ---

// Reads C variadic arguments as the conversions ask for them; as with C's printf, the
// caller answers for their number and types.
class VaSource final : public vantrel1::FormatSource {
 public:
  explicit VaSource(va_list args) { va_copy(args_, args); }
  ~VaSource() override { va_end(args_); }
  VaSource(const VaSource&) = delete;
  VaSource& operator=(const VaSource&) = delete;

  bool NextInteger(vantrel1::IntSize size, bool isSigned, std::uint64_t& bits) override {
    bits = isSigned ? static_cast<std::uint64_t>(ReadSigned(size)) : ReadUnsigned(size);
    return true;
  }
  bool NextFloating(bool longDouble, double& value) override {
    value = longDouble ? static_cast<double>(va_arg(args_, long double)) : va_arg(args_, double);
    return true;
  }
  bool NextText(bool wide, vantrel1::TextArg& text) override {
    text.wide = wide;
    text.data = wide ? static_cast<const void*>(va_arg(args_, const char16_t*))
                     : static_cast<const void*>(va_arg(args_, const char*));
    return true;
  }
  bool NextPointer(std::uint64_t& address) override {
    address = reinterpret_cast<std::uintptr_t>(va_arg(args_, const void*));
    return true;
  }

 private:
  std::int64_t ReadSigned(vantrel1::IntSize size) {
    using vantrel1::IntSize;
    switch (size) {
      case IntSize::Long: return va_arg(args_, long);
      case IntSize::LongLong: case IntSize::Int64: return va_arg(args_, long long);
      case IntSize::Size: case IntSize::PtrDiff: return va_arg(args_, std::ptrdiff_t);
      case IntSize::IntMax: return va_arg(args_, std::intmax_t);
      default: return va_arg(args_, int);  // char and short arrive promoted to int
    }
  }
  std::uint64_t ReadUnsigned(vantrel1::IntSize size) {
    using vantrel1::IntSize;
    switch (size) {
      case IntSize::Long: return va_arg(args_, unsigned long);
      case IntSize::LongLong: case IntSize::Int64: return va_arg(args_, unsigned long long);
      case IntSize::Size: case IntSize::PtrDiff: return va_arg(args_, std::size_t);
      case IntSize::IntMax: return va_arg(args_, std::uintmax_t);
      default: return va_arg(args_, unsigned int);
    }
  }

  va_list args_;
};

// _snwprintf's result from what the formatter did.
int BoundedResult(WCHAR* buffer, std::size_t count, vantrel1::BoundedStatus status, std::size_t length) {
  if (status == vantrel1::BoundedStatus::Invalid) {
    if (buffer != nullptr && count > 0) buffer[0] = 0;
    return -1;
  }
  if (length > static_cast<std::size_t>(INT_MAX)) return -1;
  if (buffer == nullptr) return static_cast<int>(length);  // measuring
  if (status == vantrel1::BoundedStatus::Overflow) return -1;
  if (length < count) buffer[length] = 0;
  return static_cast<int>(length);
}

std::u16string_view FormatView(const WCHAR* format) {
  return std::u16string_view(format);
}

std::size_t TextLength(const WCHAR* text) {
  std::size_t n = 0;
  if (text != nullptr)
    while (text[n] != 0) ++n;
  return n;
}

}  // namespace

int _wtoi(const WCHAR* text) { return ParseInteger<int>(text); }

LONG _wtol(const WCHAR* text) { return ParseInteger<LONG>(text); }

long long _wtoi64(const WCHAR* text) { return ParseInteger<long long>(text); }

double _wtof(const WCHAR* text) {
  if (text == nullptr) return 0.0;
  const WCHAR* p = SkipBlanks(text);
  const bool negative = ReadSign(p);
  const double magnitude = ReadMagnitude(p);
  return negative ? -magnitude : magnitude;
}

int lstrlenW(const WCHAR* text) {
  return static_cast<int>(std::min<std::size_t>(TextLength(text), INT_MAX));
}

WCHAR* lstrcpynW(WCHAR* destination, const WCHAR* source, int max) {
  if (destination == nullptr || max < 1) return destination;
  int i = 0;
  for (; source != nullptr && i < max - 1 && source[i] != 0; ++i) destination[i] = source[i];
  destination[i] = 0;
  return destination;
}

int _wcsnicmp(const WCHAR* a, const WCHAR* b, std::size_t count) {
  const WCHAR empty = 0;
  if (a == nullptr) a = &empty;
  if (b == nullptr) b = &empty;
  for (std::size_t i = 0; i < count; ++i) {
    const int d = vantrel1::ClassicFoldedDifference(a[i], b[i]);
    if (d != 0 || a[i] == 0) return d;
  }
  return 0;
}

int _wcsicmp(const WCHAR* a, const WCHAR* b) { return _wcsnicmp(a, b, static_cast<std::size_t>(-1)); }

int _itow_s(int value, WCHAR* buffer, std::size_t size, int radix) {
  if (buffer == nullptr || size == 0) return EINVAL;
  buffer[0] = 0;
  if (radix < 2 || radix > 36) return EINVAL;
  const bool negative = radix == 10 && value < 0;
  auto magnitude = static_cast<std::uint32_t>(value);
  if (negative) magnitude = 0u - magnitude;
  WCHAR digits[33];
  std::size_t n = 0;
  do {
    const auto d = magnitude % static_cast<std::uint32_t>(radix);
    digits[n++] = static_cast<WCHAR>(d < 10 ? u'0' + d : u'a' + d - 10);
    magnitude /= static_cast<std::uint32_t>(radix);
  } while (magnitude != 0);
  if (n + (negative ? 1 : 0) + 1 > size) return ERANGE;
  WCHAR* out = buffer;
  if (negative) *out++ = u'-';
  while (n > 0) *out++ = digits[--n];
  *out = 0;
  return 0;
}

WCHAR* _itow(int value, WCHAR* buffer, int radix) {
  _itow_s(value, buffer, 33, radix);
  return buffer;
}

WCHAR* wcstok(WCHAR* text, const WCHAR* delimiters, WCHAR** context) {
  if (context == nullptr || delimiters == nullptr) return nullptr;
  WCHAR* p = text != nullptr ? text : *context;
  if (p == nullptr) return nullptr;
  const std::u16string_view set(delimiters);
  const auto isDelimiter = [&set](WCHAR c) { return set.find(c) != std::u16string_view::npos; };
  while (*p != 0 && isDelimiter(*p)) ++p;
  if (*p == 0) {
    *context = p;
    return nullptr;
  }
  WCHAR* token = p;
  while (*p != 0 && !isDelimiter(*p)) ++p;
  if (*p != 0) *p++ = 0;
  *context = p;
  return token;
}

int _vsnwprintf(WCHAR* buffer, std::size_t count, const WCHAR* format, va_list args) {
  if (format == nullptr || (buffer == nullptr && count > 0)) return -1;
  VaSource source(args);
  vantrel1::BoundedSink sink(buffer, count);
  const bool valid = vantrel1::RunFormat(FormatView(format), source, sink);
  const auto status = !valid               ? vantrel1::BoundedStatus::Invalid
                      : sink.Overflowed() ? vantrel1::BoundedStatus::Overflow
                                          : vantrel1::BoundedStatus::Fits;
  return BoundedResult(buffer, count, status, sink.Length());
}

namespace vantrel1 {

int Snwprintf(WCHAR* buffer, std::size_t count, const WCHAR* format, const FormatArg* args, std::size_t argCount) {
  if (format == nullptr || (buffer == nullptr && count > 0)) return -1;
  std::size_t length = 0;
  const BoundedStatus status = FormatBounded(buffer, count, FormatView(format), args, argCount, length);
  return BoundedResult(buffer, count, status, length);
}

int SnwprintfS(WCHAR* buffer, std::size_t size, std::size_t count, const WCHAR* format, const FormatArg* args,
               std::size_t argCount) {
  if (buffer == nullptr || size == 0) return -1;
  buffer[0] = 0;
  if (format == nullptr) return -1;
  const bool cutAllowed = count == _TRUNCATE || count < size;
  const std::size_t limit = cutAllowed && count < size ? count : size - 1;
  std::size_t length = 0;
  const BoundedStatus status = FormatBounded(buffer, limit, FormatView(format), args, argCount, length);
  if (status == BoundedStatus::Fits && length <= static_cast<std::size_t>(INT_MAX)) {
    buffer[length] = 0;
    return static_cast<int>(length);
  }
  buffer[status == BoundedStatus::Overflow && cutAllowed ? limit : 0] = 0;
  return -1;
}

}  // namespace vantrel1
