#include "suite/LatLonptBaseX.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "platform/Utf.h"
#include "suite/LatLonText.h"

namespace {

constexpr double kMaxLatitude = 90.0;
constexpr double kMaxLongitude = 180.0;
constexpr char16_t kDegreeSign = u'\u00B0';

bool InRange(double value, double limit) { return std::isfinite(value) && std::fabs(value) <= limit; }

std::string Fixed(double value, int decimals) {
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  return std::string(buffer, result.ptr);
}

std::string Shortest(double value) {
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

bool AllZero(const std::string& digits) {
  return std::all_of(digits.begin(), digits.end(), [](char c) { return c == '0' || c == '.'; });
}

long long PowerOfTen(int exponent) {
  long long power = 1;
  for (int i = 0; i < exponent; ++i) power *= 10;
  return power;
}

std::string Padded(long long value, int width) {
  std::string digits = std::to_string(value);
  return std::string(digits.size() < static_cast<std::size_t>(width) ? width - digits.size() : 0, '0') + digits;
}

// Whole seconds are counted in integers so that 59.9999 seconds rounds up into the next
// minute (and degree) instead of being written as 60.
std::u16string DegreesMinutesSeconds(double magnitude, int decimals, bool* zero) {
  const long long unit = PowerOfTen(decimals);
  const long long total = std::llround(magnitude * 3600.0 * static_cast<double>(unit));
  *zero = total == 0;
  const long long degrees = total / (3600 * unit);
  const long long minutes = total / (60 * unit) % 60;
  const long long seconds = total % (60 * unit);
  std::string text = std::to_string(degrees) + "\xC2\xB0" + Padded(minutes, 2) + "'" + Padded(seconds / unit, 2);
  if (decimals > 0) text += "." + Padded(seconds % unit, decimals);
  return vantrel1::FromUtf8(text + "\"");
}

CStdStrW FormatCoordinate(double value, int style, int decimals, char16_t positive, char16_t negative) {
  decimals = std::clamp(decimals, 0, CLatLonptBaseX::kMaxDecimals);
  const double magnitude = std::fabs(value);
  bool zero = false;
  std::u16string text;
  if (style == CLatLonptBaseX::kDegreesMinSec) {
    text = DegreesMinutesSeconds(magnitude, decimals, &zero);
  } else {
    const std::string digits = Fixed(magnitude, decimals);
    zero = AllZero(digits);
    text = vantrel1::FromUtf8(digits);
  }
  const bool south = std::signbit(value) && !zero;
  if (style == CLatLonptBaseX::kSignedDegrees) return CStdStrW(south ? u"-" + text : text);
  if (style != CLatLonptBaseX::kDegreesMinSec) text += kDegreeSign;
  return CStdStrW(text + (south ? negative : positive));
}

}  // namespace

CLatLonptBaseX::~CLatLonptBaseX() = default;

int CLatLonptBaseX::SetLatitude(double latitude) {
  if (!InRange(latitude, kMaxLatitude)) return 0;
  m_dCoord[0] = latitude;
  return 1;
}

int CLatLonptBaseX::SetLongitude(double longitude) {
  if (!InRange(longitude, kMaxLongitude)) return 0;
  m_dCoord[1] = longitude;
  return 1;
}

int CLatLonptBaseX::Set(double latitude, double longitude) {
  if (!InRange(latitude, kMaxLatitude) || !InRange(longitude, kMaxLongitude)) return 0;
  m_dCoord[0] = latitude;
  m_dCoord[1] = longitude;
  return 1;
}

int CLatLonptBaseX::FromString(const CVantrelAppBaseX* /*app*/, const CStdStrW& text, int /*flag*/) {
  if (text.size() > static_cast<std::size_t>(kMaxTextLength)) return 0;
  double latitude = 0, longitude = 0;
  if (!vantrel1::ParseLatLon(text, &latitude, &longitude)) return 0;
  return Set(latitude, longitude);
}

CStdStrW CLatLonptBaseX::ToString() const {
  return CStdStrW::FromUtf8(Shortest(m_dCoord[0]) + " " + Shortest(m_dCoord[1]));
}

CStdStrW CLatLonptBaseX::FormatLatitude(int style, int decimals) const {
  return FormatCoordinate(m_dCoord[0], style, decimals, u'N', u'S');
}

CStdStrW CLatLonptBaseX::FormatLongitude(int style, int decimals) const {
  return FormatCoordinate(m_dCoord[1], style, decimals, u'E', u'W');
}

int CLatLonptBaseX::operator==(const CLatLonptBaseX& other) const {
  return std::fabs(m_dCoord[0] - other.m_dCoord[0]) <= kTolerance &&
         std::fabs(m_dCoord[1] - other.m_dCoord[1]) <= kTolerance;
}
