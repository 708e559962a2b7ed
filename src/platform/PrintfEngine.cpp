#include "platform/PrintfEngine.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "platform/Utf.h"

namespace vantrel1 {
namespace {

constexpr std::size_t kNoLength = static_cast<std::size_t>(-1);
constexpr std::size_t kMaxNumber = static_cast<std::size_t>(std::numeric_limits<int>::max());

// Beyond 1100 digits a double has only zeros left to show: its exact decimal expansion
// has at most 1074 fraction digits and 767 significant ones. Longer precisions are
// served by appending counted zeros, so no precision can make a buffer grow.
constexpr int kMaxFloatDigits = 1100;
constexpr std::size_t kFloatBuffer = 1600;

struct Directive {
  bool left = false;
  bool plus = false;
  bool space = false;
  bool alt = false;
  bool zero = false;
  std::size_t width = 0;
  bool hasPrecision = false;
  std::size_t precision = 0;
  IntSize size = IntSize::Int;
  bool narrow = false;  // h: a byte character or narrow text
  bool wide = false;    // l or w: a UTF-16 character or wide text
  bool longDouble = false;
  char16_t conversion = 0;
};

// A formatted field: prefix, zeros, body, zeros, tail (for example "-", 0, "1.5", 3,
// "e+07"). Zeros are counted, never stored.
struct Field {
  std::string prefix;
  std::size_t leadZeros = 0;
  std::string body;
  std::size_t trailZeros = 0;
  std::string tail;
};

void PutAscii(FormatSink& sink, std::string_view text) {
  char16_t chunk[64];
  while (!text.empty()) {
    const std::size_t n = std::min(text.size(), std::size(chunk));
    for (std::size_t i = 0; i < n; ++i) chunk[i] = static_cast<unsigned char>(text[i]);
    sink.Put(chunk, n);
    text.remove_prefix(n);
  }
}

std::size_t PaddingFor(const Directive& d, std::size_t length) {
  return d.width > length ? d.width - length : 0;
}

void EmitField(FormatSink& sink, const Directive& d, const Field& f, bool zeroPad) {
  const std::size_t length = f.prefix.size() + f.leadZeros + f.body.size() + f.trailZeros + f.tail.size();
  const std::size_t pad = PaddingFor(d, length);
  zeroPad = zeroPad && d.zero && !d.left;
  if (!d.left && !zeroPad) sink.Fill(u' ', pad);
  PutAscii(sink, f.prefix);
  if (zeroPad) sink.Fill(u'0', pad);
  sink.Fill(u'0', f.leadZeros);
  PutAscii(sink, f.body);
  sink.Fill(u'0', f.trailZeros);
  PutAscii(sink, f.tail);
  if (d.left) sink.Fill(u' ', pad);
}

void EmitUnits(FormatSink& sink, const Directive& d, const char16_t* units, std::size_t count) {
  const std::size_t pad = PaddingFor(d, count);
  if (!d.left) sink.Fill(u' ', pad);
  sink.Put(units, count);
  if (d.left) sink.Fill(u' ', pad);
}

// --- parsing a directive such as %-8.3f ---

std::size_t ReadNumber(std::u16string_view format, std::size_t& i) {
  std::size_t value = 0;
  while (i < format.size() && format[i] >= u'0' && format[i] <= u'9') {
    value = std::min(kMaxNumber, value * 10 + static_cast<std::size_t>(format[i] - u'0'));
    ++i;
  }
  return value;
}

void ReadFlags(std::u16string_view format, std::size_t& i, Directive& d) {
  for (; i < format.size(); ++i) {
    switch (format[i]) {
      case u'-': d.left = true; break;
      case u'+': d.plus = true; break;
      case u' ': d.space = true; break;
      case u'#': d.alt = true; break;
      case u'0': d.zero = true; break;
      default: return;
    }
  }
}

bool ReadStarArgument(FormatSource& source, long long& value) {
  std::uint64_t bits = 0;
  if (!source.NextInteger(IntSize::Int, true, bits)) return false;
  value = static_cast<int>(static_cast<std::uint32_t>(bits));
  return true;
}

bool ReadWidth(std::u16string_view format, std::size_t& i, FormatSource& source, Directive& d) {
  if (i < format.size() && format[i] == u'*') {
    ++i;
    long long width = 0;
    if (!ReadStarArgument(source, width)) return false;
    if (width < 0) d.left = true;
    d.width = static_cast<std::size_t>(width < 0 ? -width : width);
    return true;
  }
  d.width = ReadNumber(format, i);
  return true;
}

bool ReadPrecision(std::u16string_view format, std::size_t& i, FormatSource& source, Directive& d) {
  if (i >= format.size() || format[i] != u'.') return true;
  ++i;
  d.hasPrecision = true;
  if (i < format.size() && format[i] == u'*') {
    ++i;
    long long precision = 0;
    if (!ReadStarArgument(source, precision)) return false;
    // A negative precision taken from the arguments counts as none.
    d.hasPrecision = precision >= 0;
    d.precision = precision >= 0 ? static_cast<std::size_t>(precision) : 0;
    return true;
  }
  d.precision = ReadNumber(format, i);
  return true;
}

bool Next(std::u16string_view format, std::size_t i, char16_t unit) {
  return i < format.size() && format[i] == unit;
}

void ReadLength(std::u16string_view format, std::size_t& i, Directive& d) {
  if (i >= format.size()) return;
  switch (format[i]) {
    case u'h':
      d.narrow = true;
      d.size = Next(format, i + 1, u'h') ? IntSize::Char : IntSize::Short;
      i += d.size == IntSize::Char ? 2 : 1;
      break;
    case u'l':
      d.wide = true;
      d.size = Next(format, i + 1, u'l') ? IntSize::LongLong : IntSize::Long;
      i += d.size == IntSize::LongLong ? 2 : 1;
      break;
    case u'w': d.wide = true; ++i; break;
    case u'L': d.longDouble = true; ++i; break;
    case u'j': d.size = IntSize::IntMax; ++i; break;
    case u'z': d.size = IntSize::Size; ++i; break;
    case u't': d.size = IntSize::PtrDiff; ++i; break;
    case u'I':
      ++i;
      if (Next(format, i, u'6') && Next(format, i + 1, u'4')) { d.size = IntSize::Int64; i += 2; }
      else if (Next(format, i, u'3') && Next(format, i + 1, u'2')) { d.size = IntSize::Int32; i += 2; }
      else d.size = IntSize::Size;
      break;
    default: break;
  }
}

bool ParseDirective(std::u16string_view format, std::size_t& i, FormatSource& source, Directive& d) {
  ReadFlags(format, i, d);
  if (!ReadWidth(format, i, source, d) || !ReadPrecision(format, i, source, d)) return false;
  ReadLength(format, i, d);
  if (i >= format.size()) return false;
  d.conversion = format[i++];
  return true;
}

// --- integers ---

// Cuts the bits read to the width the length modifier names, as printf converts them.
std::uint64_t CutUnsigned(std::uint64_t bits, IntSize size) {
  switch (size) {
    case IntSize::Char: return static_cast<unsigned char>(bits);
    case IntSize::Short: return static_cast<unsigned short>(bits);
    case IntSize::Int: case IntSize::Int32: return static_cast<std::uint32_t>(bits);
    default: return bits;
  }
}

std::int64_t CutSigned(std::uint64_t bits, IntSize size) {
  switch (size) {
    case IntSize::Char: return static_cast<signed char>(static_cast<unsigned char>(bits));
    case IntSize::Short: return static_cast<short>(static_cast<unsigned short>(bits));
    case IntSize::Int: case IntSize::Int32: return static_cast<std::int32_t>(static_cast<std::uint32_t>(bits));
    default: return static_cast<std::int64_t>(bits);
  }
}

std::string Digits(std::uint64_t magnitude, int base, bool upper) {
  const char* digits = upper ? "0123456789ABCDEF" : "0123456789abcdef";
  std::string text;
  do {
    text.insert(text.begin(), digits[magnitude % static_cast<unsigned>(base)]);
    magnitude /= static_cast<unsigned>(base);
  } while (magnitude != 0);
  return text;
}

std::string SignPrefix(const Directive& d, bool negative) {
  if (negative) return "-";
  if (d.plus) return "+";
  if (d.space) return " ";
  return "";
}

void EmitInteger(FormatSink& sink, const Directive& d, bool negative, std::uint64_t magnitude) {
  const char16_t c = d.conversion;
  const int base = (c == u'x' || c == u'X') ? 16 : c == u'o' ? 8 : 10;
  const bool isSigned = c == u'd' || c == u'i';
  Field f;
  if (!(d.hasPrecision && d.precision == 0 && magnitude == 0)) f.body = Digits(magnitude, base, c == u'X');
  if (isSigned) f.prefix = SignPrefix(d, negative);
  if (d.alt && base == 16 && magnitude != 0) f.prefix = c == u'X' ? "0X" : "0x";
  std::size_t precision = d.hasPrecision ? d.precision : 1;
  if (d.alt && base == 8 && (f.body.empty() || f.body[0] != '0')) precision = std::max(precision, f.body.size() + 1);
  f.leadZeros = precision > f.body.size() ? precision - f.body.size() : 0;
  EmitField(sink, d, f, !d.hasPrecision);
}

bool FormatInteger(FormatSink& sink, FormatSource& source, const Directive& d) {
  const bool isSigned = d.conversion == u'd' || d.conversion == u'i';
  std::uint64_t bits = 0;
  if (!source.NextInteger(d.size, isSigned, bits)) return false;
  if (!isSigned) {
    EmitInteger(sink, d, false, CutUnsigned(bits, d.size));
    return true;
  }
  const std::int64_t value = CutSigned(bits, d.size);
  // The magnitude of the most negative value is taken in unsigned arithmetic.
  const std::uint64_t magnitude = value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
  EmitInteger(sink, d, value < 0, magnitude);
  return true;
}

// --- floating point ---

std::string ToChars(double magnitude, std::chars_format style, int precision) {
  char buffer[kFloatBuffer];
  const auto result = std::to_chars(buffer, buffer + kFloatBuffer, magnitude, style, precision);
  return std::string(buffer, result.ec == std::errc() ? result.ptr : buffer);
}

int CappedDigits(std::size_t precision) {
  return static_cast<int>(std::min<std::size_t>(precision, kMaxFloatDigits));
}

void FixedField(Field& f, double magnitude, std::size_t precision) {
  const int digits = CappedDigits(precision);
  f.body = ToChars(magnitude, std::chars_format::fixed, digits);
  f.trailZeros = precision - static_cast<std::size_t>(digits);
}

// The exponent goes to the tail so that counted zeros can stand before it.
void ScientificField(Field& f, double magnitude, std::size_t precision) {
  const int digits = CappedDigits(precision);
  const std::string text = ToChars(magnitude, std::chars_format::scientific, digits);
  const std::size_t e = text.find('e');
  f.body = text.substr(0, e);
  f.tail = e == std::string::npos ? std::string() : text.substr(e);
  f.trailZeros = precision - static_cast<std::size_t>(digits);
}

int DecimalExponent(double magnitude, std::size_t significant) {
  const std::string text = ToChars(magnitude, std::chars_format::scientific, CappedDigits(significant - 1));
  const std::size_t e = text.find('e');
  return e == std::string::npos ? 0 : std::atoi(text.c_str() + e + 1);
}

void StripFractionZeros(Field& f) {
  f.trailZeros = 0;
  if (f.body.find('.') == std::string::npos) return;
  while (f.body.back() == '0') f.body.pop_back();
  if (f.body.back() == '.') f.body.pop_back();
}

// %g: the style %e would use decides between fixed and scientific notation; then,
// unless #, trailing fraction zeros go.
void GeneralField(Field& f, double magnitude, std::size_t precision, bool alt) {
  const std::size_t p = precision == 0 ? 1 : precision;
  const long long x = DecimalExponent(magnitude, p);
  if (static_cast<long long>(p) > x && x >= -4)
    FixedField(f, magnitude, static_cast<std::size_t>(static_cast<long long>(p) - 1 - x));
  else
    ScientificField(f, magnitude, p - 1);
  if (!alt) StripFractionZeros(f);
}

void UpperCase(std::string& text) {
  for (char& c : text) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
}

void EmitFloating(FormatSink& sink, const Directive& d, double value) {
  const char16_t c = d.conversion;
  const bool upper = c == u'F' || c == u'E' || c == u'G';
  Field f;
  f.prefix = SignPrefix(d, std::signbit(value));
  const double magnitude = std::fabs(value);
  bool zeroPad = true;
  if (std::isinf(magnitude) || std::isnan(magnitude)) {
    f.body = std::isinf(magnitude) ? "inf" : "nan";
    zeroPad = false;
  } else {
    const std::size_t precision = d.hasPrecision ? d.precision : 6;
    if (c == u'f' || c == u'F') FixedField(f, magnitude, precision);
    else if (c == u'e' || c == u'E') ScientificField(f, magnitude, precision);
    else GeneralField(f, magnitude, precision, d.alt);
    if (d.alt && f.body.find('.') == std::string::npos) f.body += '.';
  }
  if (upper) {
    UpperCase(f.body);
    UpperCase(f.tail);
  }
  EmitField(sink, d, f, zeroPad);
}

bool FormatFloating(FormatSink& sink, FormatSource& source, const Directive& d) {
  double value = 0.0;
  if (!source.NextFloating(d.longDouble, value)) return false;
  EmitFloating(sink, d, value);
  return true;
}

// --- characters, text and pointers ---

char16_t FromByte(std::uint64_t bits) {
  const auto byte = static_cast<unsigned char>(bits);
  return byte < 0x80 ? char16_t(byte) : char16_t(0xFFFD);  // a lone high byte is not UTF-8
}

bool FormatCharacter(FormatSink& sink, FormatSource& source, const Directive& d) {
  std::uint64_t bits = 0;
  if (!source.NextInteger(IntSize::Int, false, bits)) return false;
  const bool narrow = d.conversion == u'C' ? !d.wide : d.narrow;
  const char16_t unit = narrow ? FromByte(bits) : static_cast<char16_t>(bits);
  EmitUnits(sink, d, &unit, 1);
  return true;
}

template <typename CT>
std::size_t BoundedLength(const CT* text, std::size_t known, std::size_t limit) {
  if (known != kNoLength) return std::min(known, limit);
  std::size_t n = 0;
  while (n < limit && text[n] != CT(0)) ++n;
  return n;
}

bool FormatText(FormatSink& sink, FormatSource& source, const Directive& d) {
  const bool narrow = d.conversion == u'S' ? !d.wide : d.narrow;
  TextArg text;
  if (!source.NextText(!narrow, text)) return false;
  const std::size_t limit = d.hasPrecision ? d.precision : kNoLength;
  if (text.data == nullptr) {
    const std::u16string_view null = u"(null)";
    EmitUnits(sink, d, null.data(), std::min(null.size(), limit));
  } else if (text.wide) {
    const auto* units = static_cast<const char16_t*>(text.data);
    EmitUnits(sink, d, units, BoundedLength(units, text.length, limit));
  } else {
    const auto* bytes = static_cast<const char*>(text.data);
    std::u16string units = FromUtf8(std::string_view(bytes, BoundedLength(bytes, text.length, limit)));
    if (units.size() > limit) units.resize(limit);
    EmitUnits(sink, d, units.data(), units.size());
  }
  return true;
}

bool FormatPointer(FormatSink& sink, FormatSource& source, const Directive& d) {
  std::uint64_t address = 0;
  if (!source.NextPointer(address)) return false;
  Field f;
  f.body = Digits(address, 16, true);
  f.leadZeros = 16 - f.body.size();
  EmitField(sink, d, f, false);
  return true;
}

bool FormatConversion(FormatSink& sink, FormatSource& source, const Directive& d) {
  switch (d.conversion) {
    case u'd': case u'i': case u'u': case u'o': case u'x': case u'X':
      return FormatInteger(sink, source, d);
    case u'f': case u'F': case u'e': case u'E': case u'g': case u'G':
      return FormatFloating(sink, source, d);
    case u'c': case u'C': return FormatCharacter(sink, source, d);
    case u's': case u'S': return FormatText(sink, source, d);
    case u'p': return FormatPointer(sink, source, d);
    case u'%': {
      const char16_t percent = u'%';
      sink.Put(&percent, 1);
      return true;
    }
    default: return false;  // %n among them: writing through an argument is never allowed
  }
}

}  // namespace

bool RunFormat(std::u16string_view format, FormatSource& source, FormatSink& sink) {
  std::size_t i = 0;
  while (i < format.size()) {
    const std::size_t percent = std::min(format.find(u'%', i), format.size());
    sink.Put(format.data() + i, percent - i);
    if (percent == format.size()) break;
    i = percent + 1;
    Directive d;
    if (!ParseDirective(format, i, source, d) || !FormatConversion(sink, source, d)) return false;
  }
  return true;
}

std::size_t BoundedSink::Room(std::size_t count) const {
  if (buffer_ == nullptr || length_ >= capacity_) return 0;
  return std::min(count, capacity_ - length_);
}

void BoundedSink::Advance(std::size_t count) {
  length_ = count > kNoLength - length_ ? kNoLength : length_ + count;
}

void BoundedSink::Put(const char16_t* units, std::size_t count) {
  if (const std::size_t room = Room(count)) std::copy_n(units, room, buffer_ + length_);
  Advance(count);
}

void BoundedSink::Fill(char16_t unit, std::size_t count) {
  if (const std::size_t room = Room(count)) std::fill_n(buffer_ + length_, room, unit);
  Advance(count);
}

}  // namespace vantrel1
