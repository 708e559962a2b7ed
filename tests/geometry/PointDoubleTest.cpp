#include "geometry/PointDouble.h"

#include <gtest/gtest.h>

// Each axis within the left-hand point's tolerance (1e-10 unless set), boundary included;
// tags, flag and the right-hand tolerance play no part, so a == b and b == a can disagree.
TEST(CPointDouble, EqualWithinTheLeftHandToleranceOnEveryAxis) {
  const double justOver = 1.0000000000000002e-10;
  CPointDouble tagged(0, 0, 0);
  tagged.m_nTag2 = 42;
  tagged.m_nFlag = 1;
  CPointDouble tight(1.375, 1, 1);
  tight.SetTolerance(0.25);
  const struct {
    double tolerance;
    CPointDouble left, right;
    int equal;
  } cases[] = {
      {0, {0, 0, 0}, {1e-10, -1e-10, 1e-10}, 1}, {0, {0, 0, 0}, {justOver, 0, 0}, 0},
      {0, {0, 0, 0}, {0, -justOver, 0}, 0},      {0, {0, 0, 0}, {0, 0, justOver}, 0},
      {0, {0, 0, 0}, tagged, 1},                 {0.5, {1, 1, 1}, tight, 1},
      {0.25, tight, {1, 1, 1}, 0},                   {0.5, {1, 1, 1.5}, {1, 1, 1}, 1},
      {0.5, {1, 1, 1.5000000000000002}, {1, 1, 1}, 0},
  };
  for (auto c : cases) {
    if (c.tolerance != 0) c.left.SetTolerance(c.tolerance);
    EXPECT_EQ(c.left == c.right, c.equal) << c.left.x << " " << c.left.y << " " << c.left.z;
    EXPECT_EQ(c.left != c.right, 1 - c.equal);
  }
}
