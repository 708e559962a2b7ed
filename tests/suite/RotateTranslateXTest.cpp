#include "suite/RotateTranslateX.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(CRotateTranslateX, StartsAsTheIdentityWithNothingOffered) {
  const CRotTransCoord rt;
  EXPECT_EQ(rt.GetAngle(), 0.0);
  EXPECT_EQ(rt.GetOriginX(), 0.0);
  EXPECT_EQ(rt.GetOriginY(), 0.0);
  EXPECT_EQ(rt.GetOriginZ(), 0.0);
  EXPECT_EQ(rt.GetShiftX(), 0.0);
  EXPECT_EQ(rt.GetShiftY(), 0.0);
  EXPECT_EQ(rt.GetShiftZ(), 0.0);
  EXPECT_EQ(rt.GetScaleX(), 1.0);
  EXPECT_EQ(rt.GetScaleY(), 1.0);
  EXPECT_EQ(rt.GetScaleZ(), 1.0);
  EXPECT_EQ(rt.GetFlags(), 0u);
}

TEST(CRotateTranslateX, KeepsTheAngleInRadiansFromDegrees) {
  const struct {
    double degrees;
    double radians;
  } cases[] = {
      {0.0, 0.0},        {90.0, M_PI / 2},       {-90.0, -M_PI / 2}, {180.0, M_PI},
      {360.0, 2 * M_PI}, {30.0, 0.5235987755982988}, {-360.0, -2 * M_PI},
  };
  CRotateTranslateX rt;
  for (const auto& c : cases) {
    rt.SetAngleDegrees(c.degrees);
    EXPECT_EQ(rt.GetAngle(), c.radians) << c.degrees;
  }
}

TEST(CRotateTranslateX, EveryFieldIsItsOwnAndSurvivesACopy) {
  CRotTransCoord rt;
  rt.SetOriginX(1.5);
  rt.SetOriginY(-2.5);
  rt.SetOriginZ(3.25);
  rt.SetShiftX(10.0);
  rt.SetShiftY(-20.0);
  rt.SetShiftZ(30.0);
  rt.SetScaleX(0.5);
  rt.SetScaleY(2.0);
  rt.SetScaleZ(4.0);
  rt.SetAngleDegrees(45.0);
  rt.SetFlags(CRotateTranslateX::kCenterAllowed | CRotateTranslateX::kCenterOn | 0x80u);
  const CRotateTranslateX copy = rt;
  EXPECT_EQ(copy.GetOriginX(), 1.5);
  EXPECT_EQ(copy.GetOriginY(), -2.5);
  EXPECT_EQ(copy.GetOriginZ(), 3.25);
  EXPECT_EQ(copy.GetShiftX(), 10.0);
  EXPECT_EQ(copy.GetShiftY(), -20.0);
  EXPECT_EQ(copy.GetShiftZ(), 30.0);
  EXPECT_EQ(copy.GetScaleX(), 0.5);
  EXPECT_EQ(copy.GetScaleY(), 2.0);
  EXPECT_EQ(copy.GetScaleZ(), 4.0);
  EXPECT_EQ(copy.GetAngle(), M_PI / 4);
  EXPECT_EQ(copy.GetFlags(), 0x83u);
}
