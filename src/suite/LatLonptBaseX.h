#pragma once
// CLatLonptBaseX: a point on the earth as latitude and longitude in decimal degrees
// (negative south and west), with its text forms.
//
// The two values are stored next to each other, latitude first, so that a conversion can
// be given their addresses (GetCoords) and change them in place. A point only takes
// values in range: latitude within [-90, 90], longitude within [-180, 180]; a setter or
// FromString that is given anything else fails and leaves the point as it was.
//
// Display styles of FormatLatitude / FormatLongitude (`decimals` is clamped to 0..10 and
// counts the digits after the point of the degrees, or of the seconds in style 2):
//   kSignedDegrees     0  "-44.81760"
//   kHemisphereDegrees 1  "44.81760°S"    (unknown styles are taken as this one)
//   kDegreesMinSec     2  "44°49'03.36\"S"
// A value that rounds to zero is written without a sign and as north or east.
#include "platform/StdStr.h"
#include "platform/Types.h"

class CVantrelAppBaseX;

class VANTREL1_EXPORT CLatLonptBaseX {
 public:
  static constexpr int kSignedDegrees = 0;
  static constexpr int kHemisphereDegrees = 1;
  static constexpr int kDegreesMinSec = 2;
  static constexpr int kMaxDecimals = 10;
  // Longest text FromString looks at, in UTF-16 units.
  static constexpr int kMaxTextLength = 256;
  // Points closer than this in both values, in degrees (about 0.01 mm), are equal.
  static constexpr double kTolerance = 1e-10;

  CLatLonptBaseX() = default;
  CLatLonptBaseX(const CLatLonptBaseX&) = default;
  CLatLonptBaseX& operator=(const CLatLonptBaseX&) = default;
  virtual ~CLatLonptBaseX();

  double GetLatitude() const { return m_dCoord[0]; }
  double GetLongitude() const { return m_dCoord[1]; }
  // 1, or 0 with the point unchanged when a value is out of range or not a number.
  int SetLatitude(double latitude);
  int SetLongitude(double longitude);
  int Set(double latitude, double longitude);

  // The stored values, latitude then longitude, for a conversion in place.
  double* GetCoords() { return m_dCoord; }
  const double* GetCoords() const { return m_dCoord; }

  // Reads a point: latitude then longitude, as ToString writes them or as a person types
  // them - signed decimal degrees, or degrees with minutes and seconds (° ' "), each with
  // an optional hemisphere letter N/S, E/W before or after it (then the two may come in
  // either order), separated by blanks, a comma or a semicolon. Non-zero when the whole
  // text was one point in range; otherwise 0 and the point is unchanged. `app` and
  // `flag` (0) are reserved.
  int FromString(const CVantrelAppBaseX* app, const CStdStrW& text, int flag);
  // "latitude longitude" in the shortest decimal forms that read back to the same bits.
  CStdStrW ToString() const;

  CStdStrW FormatLatitude(int style, int decimals) const;
  CStdStrW FormatLongitude(int style, int decimals) const;

  int operator==(const CLatLonptBaseX& other) const;
  int operator!=(const CLatLonptBaseX& other) const { return !(*this == other); }

 protected:
  double m_dCoord[2] = {0.0, 0.0};  // latitude, longitude
};
