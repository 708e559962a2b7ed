#include "suite/LatLonText.h"

#include <charconv>
#include <cmath>
#include <string>

namespace vantrel1 {
namespace {

constexpr std::size_t kMaxNumberLength = 40;

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n' || c == u'\u00A0'; }
bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
// The degree sign, and the masculine ordinal that keyboards without one give instead.
bool IsDegreeMark(char16_t c) { return c == u'\u00B0' || c == u'\u00BA'; }
// Apostrophe, prime, and the typographic quote word processors replace it with.
bool IsMinuteMark(char16_t c) { return c == u'\'' || c == u'\u2032' || c == u'\u2019'; }
bool IsSecondMark(char16_t c) { return c == u'"' || c == u'\u2033' || c == u'\u201D'; }

char16_t Hemisphere(char16_t c) {
  const char16_t upper = c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
  return upper == u'N' || upper == u'S' || upper == u'E' || upper == u'W' ? upper : 0;
}

struct Coordinate {
  double value = 0;
  char16_t hemisphere = 0;  // N, S, E, W or 0
};

class PointScanner {
 public:
  explicit PointScanner(std::u16string_view text) : m_text(text) {}

  bool Read(Coordinate* first, Coordinate* second) {
    if (!ReadCoordinate(first)) return false;
    const bool marked = m_pos > 0 && !IsDigit(m_text[m_pos - 1]) && m_text[m_pos - 1] != u'.';
    if (!SkipSeparator() && !marked) return false;
    if (!ReadCoordinate(second)) return false;
    SkipBlanks();
    return m_pos == m_text.size();
  }

 private:
  char16_t Peek(std::size_t ahead = 0) const {
    return m_pos + ahead < m_text.size() ? m_text[m_pos + ahead] : char16_t(0);
  }

  std::size_t SkipBlanks() {
    const std::size_t start = m_pos;
    while (IsBlank(Peek())) ++m_pos;
    return m_pos - start;
  }

  bool SkipSeparator() {
    bool skipped = SkipBlanks() > 0;
    if (Peek() == u',' || Peek() == u';') {
      ++m_pos;
      skipped = true;
      SkipBlanks();
    }
    return skipped;
  }

  std::size_t SkipDigits() {
    const std::size_t start = m_pos;
    while (IsDigit(Peek())) ++m_pos;
    return m_pos - start;
  }

  // Digits with an optional fraction and, where allowed, an exponent; *whole tells
  // whether it had no fraction or exponent.
  bool ReadNumber(double* value, bool allowExponent, bool* whole) {
    const std::size_t start = m_pos;
    std::size_t digits = SkipDigits();
    *whole = true;
    if (Peek() == u'.') {
      ++m_pos;
      digits += SkipDigits();
      *whole = false;
    }
    if (digits == 0) return Fail(start);
    if (allowExponent && (Peek() == u'e' || Peek() == u'E')) {
      const std::size_t mark = m_pos;
      ++m_pos;
      if (Peek() == u'+' || Peek() == u'-') ++m_pos;
      if (SkipDigits() == 0) m_pos = mark;  // a letter after the number, not an exponent
      else *whole = false;
    }
    return Convert(start, value);
  }

  bool Convert(std::size_t start, double* value) {
    if (m_pos - start > kMaxNumberLength) return Fail(start);
    std::string ascii(m_text.begin() + start, m_text.begin() + m_pos);
    const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), *value);
    return error == std::errc() && end == ascii.data() + ascii.size() ? true : Fail(start);
  }

  bool Fail(std::size_t start) {
    m_pos = start;
    return false;
  }

  // A part of a degrees-minutes-seconds angle: a number and its mark, below 60 after
  // the degrees. Absent (true, *present false) when no number with that mark follows.
  bool ReadPart(bool (*isMark)(char16_t), double* value, bool* whole, bool* present) {
    const std::size_t start = m_pos;
    SkipBlanks();
    *present = ReadNumber(value, false, whole) && isMark(Peek());
    if (!*present) return !Fail(start);
    ++m_pos;
    return *value < 60.0;
  }

  bool ReadAngle(double* degrees) {
    bool whole = false, present = false;
    if (!ReadNumber(degrees, true, &whole)) return false;
    if (!IsDegreeMark(Peek())) return true;
    ++m_pos;
    double minutes = 0, seconds = 0;
    bool minutesWhole = false;
    if (!ReadPart(IsMinuteMark, &minutes, &minutesWhole, &present)) return false;
    if (!present) return true;
    if (!whole) return false;  // fractional degrees and minutes besides
    if (!ReadPart(IsSecondMark, &seconds, &whole, &present)) return false;
    if (present && !minutesWhole) return false;
    // Whole degrees and minutes are exact in seconds; one division rounds once.
    *degrees = (*degrees * 3600.0 + minutes * 60.0 + seconds) / 3600.0;
    return true;
  }

  char16_t ReadHemisphere() {
    const char16_t hemisphere = Hemisphere(Peek());
    if (hemisphere) ++m_pos;
    return hemisphere;
  }

  char16_t ReadSuffix() {
    const std::size_t end = m_pos;
    SkipBlanks();
    const char16_t hemisphere = ReadHemisphere();
    if (!hemisphere) m_pos = end;
    return hemisphere;
  }

  bool ReadCoordinate(Coordinate* coordinate) {
    SkipBlanks();
    coordinate->hemisphere = ReadHemisphere();
    SkipBlanks();
    const bool negative = Peek() == u'-';
    const bool signed_ = negative || Peek() == u'+';
    if (signed_) ++m_pos;
    double degrees = 0;
    if (!ReadAngle(&degrees)) return false;
    // A letter after a coordinate that had one before it belongs to the next coordinate.
    if (!coordinate->hemisphere) coordinate->hemisphere = ReadSuffix();
    if (coordinate->hemisphere && signed_) return false;
    const bool south = coordinate->hemisphere == u'S' || coordinate->hemisphere == u'W';
    coordinate->value = negative || south ? -degrees : degrees;
    return true;
  }

  std::u16string_view m_text;
  std::size_t m_pos = 0;
};

bool IsLatitude(char16_t hemisphere) { return hemisphere == 0 || hemisphere == u'N' || hemisphere == u'S'; }
bool IsLongitude(char16_t hemisphere) { return hemisphere == 0 || hemisphere == u'E' || hemisphere == u'W'; }

}  // namespace

bool ParseLatLon(std::u16string_view text, double* latitude, double* longitude) {
  Coordinate first, second;
  if (!PointScanner(text).Read(&first, &second)) return false;
  // Hemisphere letters may name the longitude first.
  if (first.hemisphere && second.hemisphere && !IsLatitude(first.hemisphere)) std::swap(first, second);
  if (!IsLatitude(first.hemisphere) || !IsLongitude(second.hemisphere)) return false;
  *latitude = first.value;
  *longitude = second.value;
  return std::isfinite(*latitude) && std::isfinite(*longitude);
}

}  // namespace vantrel1
