#include "geometry/PointDouble.h"

#include <gtest/gtest.h>

TEST(CPointDouble, TagsAndFlagTravelWithCopiesButNotWithSetPoint) {
  CPointDouble p;
  EXPECT_EQ(p.m_nTag1, -1);
  EXPECT_EQ(p.m_nTag2, -1);
  EXPECT_EQ(p.m_nTag3, -1);
  EXPECT_EQ(p.m_nFlag, 0);
  EXPECT_EQ(p.GetTolerance(), 1e-10);
  p.m_nTag1 = 4;
  p.m_nTag3 = 6;
  p.m_nFlag = 9;
  p.SetTolerance(0.5);
  p.SetPoint(1, 2, 3);
  EXPECT_EQ(p.m_nTag1, 4);

  const CPointDouble copy(p);
  CPointDouble assigned(7, 8, 9);
  assigned = p;
  for (const CPointDouble* q : {&copy, static_cast<const CPointDouble*>(&assigned)}) {
    EXPECT_EQ(q->x, 1);
    EXPECT_EQ(q->y, 2);
    EXPECT_EQ(q->z, 3);
    EXPECT_EQ(q->m_nTag1, 4);
    EXPECT_EQ(q->m_nTag2, -1);
    EXPECT_EQ(q->m_nTag3, 6);
    EXPECT_EQ(q->m_nFlag, 9);
    EXPECT_EQ(q->GetTolerance(), 0.5);
  }
}

TEST(CPointDouble, EqualWithinToleranceOnEveryAxis) {
  const CPointDouble origin(0, 0, 0);
  EXPECT_TRUE(origin == CPointDouble(1e-10, -1e-10, 1e-10));
  EXPECT_FALSE(origin == CPointDouble(1.0000000000000002e-10, 0, 0));
  EXPECT_FALSE(origin == CPointDouble(0, -1.0000000000000002e-10, 0));
  EXPECT_FALSE(origin == CPointDouble(0, 0, 1.0000000000000002e-10));

  CPointDouble tagged(0, 0, 0);
  tagged.m_nTag2 = 42;
  tagged.m_nFlag = 1;
  EXPECT_TRUE(origin == tagged);
}

TEST(CPointDouble, LeftHandToleranceDecides) {
  CPointDouble loose(1, 1, 1);
  loose.SetTolerance(0.5);
  CPointDouble tight(1.375, 1, 1);
  tight.SetTolerance(0.25);
  EXPECT_TRUE(loose == tight);
  EXPECT_FALSE(tight == loose);
  EXPECT_TRUE(tight != loose);

  loose.SetPoint(1, 1, 1.5);
  EXPECT_TRUE(loose == CPointDouble(1, 1, 1));  // exactly the tolerance apart
  loose.SetPoint(1, 1, 1.5000000000000002);
  EXPECT_FALSE(loose == CPointDouble(1, 1, 1));
}
