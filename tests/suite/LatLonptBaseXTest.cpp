#include "suite/LatLonptBaseX.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace {

CLatLonptBaseX Point(double lat, double lon) {
  CLatLonptBaseX point;
  EXPECT_EQ(point.Set(lat, lon), 1);
  return point;
}

// Reads `text` into a point that starts at (1, 2); NaN, NaN when it is refused.
std::pair<double, double> Read(const std::u16string& text) {
  CLatLonptBaseX point = Point(1, 2);
  if (!point.FromString(nullptr, CStdStrW(text), 0)) {
    EXPECT_EQ(point.GetLatitude(), 1);
    EXPECT_EQ(point.GetLongitude(), 2);
    return {NAN, NAN};
  }
  return {point.GetLatitude(), point.GetLongitude()};
}

bool SameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST(LatLonptBaseXValues, StoredLatitudeFirstAndOnlyInRange) {
  CLatLonptBaseX point;
  EXPECT_EQ(point.GetLatitude(), 0);
  EXPECT_EQ(point.GetLongitude(), 0);
  EXPECT_EQ(point.Set(-90, 180), 1);
  double* coords = point.GetCoords();
  EXPECT_EQ(coords[0], -90);
  EXPECT_EQ(coords[1], 180);
  coords[0] = 44.5;  // a conversion in place
  EXPECT_EQ(point.GetLatitude(), 44.5);
  for (const double bad : {90.000001, -90.5, double(NAN), double(INFINITY)}) {
    EXPECT_EQ(point.SetLatitude(bad), 0) << bad;
    EXPECT_EQ(point.Set(bad, 0), 0) << bad;
  }
  for (const double bad : {180.000001, -181.0, double(NAN), -double(INFINITY)}) {
    EXPECT_EQ(point.SetLongitude(bad), 0) << bad;
    EXPECT_EQ(point.Set(0, bad), 0) << bad;
  }
  EXPECT_EQ(point.GetLatitude(), 44.5);
  EXPECT_EQ(point.GetLongitude(), 180);
}

TEST(LatLonptBaseXText, ToStringIsShortestAndReadsBackBitForBit) {
  EXPECT_EQ(Point(44.8176, 20.4633).ToString(), u"44.8176 20.4633");
  EXPECT_EQ(Point(-33.9, -0.0).ToString(), u"-33.9 -0");
  EXPECT_EQ(Point(1e-7, -179.99999999999997).ToString(), u"1e-07 -179.99999999999997");
  const double values[][2] = {{0.1 + 0.2, 1.0 / 3.0}, {-89.99999999999999, 179.99999999999997},
                              {5e-324, -0.0}, {44.817600000000006, 20.463299999999997}};
  for (const auto& v : values) {
    CLatLonptBaseX back;
    ASSERT_EQ(back.FromString(nullptr, Point(v[0], v[1]).ToString(), 0), 1);
    EXPECT_TRUE(SameBits(back.GetLatitude(), v[0])) << v[0];
    EXPECT_TRUE(SameBits(back.GetLongitude(), v[1])) << v[1];
  }
}

TEST(LatLonptBaseXText, FormatsDegreesHemispheresAndSeconds) {
  const CLatLonptBaseX south = Point(-44.8176, -20.4633);
  EXPECT_EQ(south.FormatLatitude(0, 5), u"-44.81760");
  EXPECT_EQ(south.FormatLongitude(0, 2), u"-20.46");
  EXPECT_EQ(south.FormatLatitude(1, 5), u"44.81760°S");
  EXPECT_EQ(south.FormatLongitude(1, 0), u"20°W");
  EXPECT_EQ(south.FormatLatitude(2, 2), u"44°49'03.36\"S");
  EXPECT_EQ(south.FormatLongitude(2, 0), u"20°27'48\"W");
  const CLatLonptBaseX north = Point(44.8176, 20.4633);
  EXPECT_EQ(north.FormatLatitude(1, 5), u"44.81760°N");
  EXPECT_EQ(north.FormatLongitude(1, 5), u"20.46330°E");
  EXPECT_EQ(north.FormatLatitude(7, 1), u"44.8°N");  // unknown style: hemisphere letters
  // Decimals are clamped to 0..10.
  EXPECT_EQ(north.FormatLatitude(0, -3), u"45");
  EXPECT_EQ(north.FormatLatitude(0, 99), u"44.8176000000");
  EXPECT_EQ(Point(0, 180).FormatLongitude(2, 10), u"180°00'00.0000000000\"E");
}

TEST(LatLonptBaseXText, RoundingCarriesAndZeroHasNoSign) {
  // 59.9996 seconds rounds up into the next minute and degree.
  const CLatLonptBaseX point = Point(-(44 + 59.0 / 60 + 59.9996 / 3600), -0.000001);
  EXPECT_EQ(point.FormatLatitude(2, 3), u"45°00'00.000\"S");
  EXPECT_EQ(point.FormatLatitude(2, 4), u"44°59'59.9996\"S");
  EXPECT_EQ(point.FormatLongitude(0, 5), u"0.00000");
  EXPECT_EQ(point.FormatLongitude(1, 5), u"0.00000°E");
  EXPECT_EQ(point.FormatLongitude(2, 2), u"0°00'00.00\"E");
  EXPECT_EQ(point.FormatLongitude(0, 6), u"-0.000001");
  EXPECT_EQ(point.FormatLongitude(1, 6), u"0.000001°W");
}

TEST(LatLonptBaseXText, ReadsEveryFormItWritesAndWhatPeopleType) {
  const std::pair<double, double> belgrade{44.8176, 20.4633};
  for (const char16_t* text : {u"44.8176 20.4633", u"  44.8176,20.4633 ", u"44.8176 ; 20.4633", u"44.8176\t20.4633",
                               u"+44.8176, +20.4633", u"44.81760°N 20.46330°E", u"44.8176N,20.4633E",
                               u"N 44.8176 E 20.4633", u"20.4633 E 44.8176 n", u"4.48176e1 2.04633E1",
                               u"44.8176º 20.4633º"}) {
    EXPECT_EQ(Read(text), belgrade) << CStdStrW(text).ToUtf8();
  }
  EXPECT_EQ(Read(u"44.8176°S 20.4633°W"), std::make_pair(-44.8176, -20.4633));
  EXPECT_EQ(Read(u"-44.8176 -20.4633"), std::make_pair(-44.8176, -20.4633));
  EXPECT_EQ(Read(u"44°49'03.36\"N 20°27'47.88\"E"), 
            std::make_pair((44 * 3600 + 49 * 60 + 3.36) / 3600, (20 * 3600 + 27 * 60 + 47.88) / 3600));
  EXPECT_EQ(Read(u"S 44° 49′ 3″, W 20° 27.5′"), 
            std::make_pair(-(44 * 3600 + 49 * 60 + 3.0) / 3600, -(20 * 3600 + 27.5 * 60) / 3600));
  EXPECT_EQ(Read(u"44°49'N 20°E"), std::make_pair((44 * 3600 + 49 * 60.0) / 3600, 20.0));
  EXPECT_EQ(Read(u"-90 180"), std::make_pair(-90.0, 180.0));
  EXPECT_EQ(Read(u"44.8176E 20.4633N"), std::make_pair(20.4633, 44.8176));  // letters say which is which
  EXPECT_EQ(Read(u"44.8176 20.4633 E"), belgrade);

  // Whatever the clipboard's plain text says reads back to it.
  const CLatLonptBaseX point = Point(-0.000004, 179.999996);
  const CStdStrW plain = point.FormatLatitude(1, 5) + u" " + point.FormatLongitude(1, 5);
  EXPECT_EQ(plain, u"0.00000°N 180.00000°E");
  EXPECT_EQ(Read(plain), std::make_pair(0.0, 180.0));
}

TEST(LatLonptBaseXText, RefusesEverythingElseAndKeepsThePoint) {
  const char16_t* refused[] = {
      u"", u"   ", u"44.8176", u"44.8176 20.4633 1", u"44.8176 20.4633x", u"44.8176 20.4633,", u"44.8176-20.4633",
      u"44,8176 20,4633 1", u"90.0001 0", u"0 -180.0001", u"1e400 0", u"nan 0", u"inf 0", u"0x10 1",
      u"44.8176E 20.4633", u"44.8176N 20.4633N", u"-44.8176S 20.4633", u"N44.8176N 20.4633",
      u"44.5°30' 20", u"44°60' 20", u"44°30'60\" 20", u"44°30.5'10\" 20", u"44°30'' 20", u"44.8176 20.4633 EN",
      u". 1", u"44.8176 20.4633°°", u"N 20", u"44..8 20"};
  for (const char16_t* text : refused) EXPECT_TRUE(std::isnan(Read(text).first)) << CStdStrW(text).ToUtf8();
  EXPECT_TRUE(std::isnan(Read(std::u16string(250, u' ') + u"44.8176 20.4633").first));
  EXPECT_EQ(Read(std::u16string(240, u' ') + u"44.8176 20.4633").first, 44.8176);
  EXPECT_TRUE(std::isnan(Read(u"1" + std::u16string(40, u'0') + u" 2").first));
}

TEST(LatLonptBaseXCompare, EqualWithinATenthOfANanodegree) {
  EXPECT_TRUE(Point(44.8176, 20.4633) == Point(44.8176 + 0.9e-10, 20.4633 - 0.9e-10));
  EXPECT_TRUE(Point(44.8176, 20.4633) != Point(44.8176 + 1.1e-10, 20.4633));
  EXPECT_TRUE(Point(44.8176, 20.4633) != Point(44.8176, 20.4634));
  EXPECT_TRUE(Point(0, -0.0) == CLatLonptBaseX());
}

}  // namespace
