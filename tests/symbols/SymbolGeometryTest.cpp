#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "SymbolTestSupport.h"

using namespace symboltest;

namespace {

using Points = std::vector<std::pair<int, int>>;

// Vertices (−3, 3) and (7, −7); a text 2.0 high anchored at (3.0, −5).
CSymbol Sample() { return Composite({Figure({{-3, 3}, {7, -7}})}, {Text("h", 3.0, -5, 2.0)}); }

// Height, horizontal and vertical anchor of the first text.
std::vector<double> Anchor(const CSymbol& symbol) {
  const CTextItem* text = symbol.GetTextItem(0);
  return {text->m_dScale, text->m_dStart, static_cast<double>(text->m_nOffset)};
}

}  // namespace

TEST(SymbolScalefactor, VerticesAndAnchorsAreTruncatedTowardZeroAndHeightsKeepFractions) {
  struct Case {
    double factor;
    Points vertices;
    std::vector<double> anchor;
  };
  const Case cases[] = {
      {0.5, {{-1, 1}, {3, -3}}, {1.0, 1.0, -2}},
      {1.5, {{-4, 4}, {10, -10}}, {3.0, 4.0, -7}},
      // Results beyond the 32-bit range are held at its ends rather than wrapping.
      {1e300, {{INT32_MIN, INT32_MAX}, {INT32_MAX, INT32_MIN}}, {2e300, 2147483647.0, INT32_MIN}},
      {std::numeric_limits<double>::quiet_NaN(), {{0, 0}, {0, 0}}, {std::numeric_limits<double>::quiet_NaN(), 0, 0}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.factor);
    CSymbol symbol = Sample();
    symbol.ApplyScalefactor(c.factor);
    EXPECT_EQ(Vertices(*symbol.GetSymbolItem(0)), c.vertices);
    const std::vector<double> anchor = Anchor(symbol);
    if (!std::isnan(c.factor)) {
      EXPECT_EQ(anchor[0], c.anchor[0]);
    }
    EXPECT_EQ(anchor[1], c.anchor[1]);
    EXPECT_EQ(anchor[2], c.anchor[2]);
  }
}

TEST(SymbolShift, TheShiftIsTruncatedFirstAndHeldAtTheEndsOfTheRange) {
  struct Case {
    double dx, dy;
    Points vertices;
    double anchorX;
    int anchorY;
  };
  const Case cases[] = {
      {1.9, -1.9, {{-2, 2}, {2147483001, -2147483001}}, 4.0, -6},
      {1000.0, -1000.0, {{997, -997}, {INT32_MAX, INT32_MIN}}, 1003.0, -1005},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.dx);
    CSymbol symbol = Composite({Figure({{-3, 3}, {2147483000, -2147483000}})}, {Text("s", 3.0, -5)});
    symbol.ApplyShift(c.dx, c.dy);
    EXPECT_EQ(Vertices(*symbol.GetSymbolItem(0)), c.vertices);
    EXPECT_EQ(symbol.GetTextItem(0)->m_dStart, c.anchorX);
    EXPECT_EQ(symbol.GetTextItem(0)->m_nOffset, c.anchorY);
  }
}

TEST(SymbolExtents, BoundsCoverVerticesAndTextAnchorsAndTheCentreIsTheirMiddle) {
  struct Case {
    const char* what;
    CSymbol symbol;
    std::vector<double> expected;  // min x, max x, min y, max y, centre x, centre y
  };
  const Case cases[] = {
      {"figures", Composite({Figure({{-100, 0}, {50, 86}}), Figure({{0, -100, 0}, {20, 30}})}),
       {-100, 50, -100, 86, -25, -7}},
      {"a text anchor beyond the figure",
       Composite({Figure({{-10, -10}, {10, 10}})}, {Text("very long text", 40.5, -30)}), {-10, 40.5, -30, 10, 15.25, -10}},
      {"nothing", Composite({}), {99999, -99999, 99999, -99999, 0, 0}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    std::vector<double> got(6, 1.0);
    c.symbol.GetExtents(&got[0], &got[1], &got[2], &got[3]);
    c.symbol.GetCenterPoint(&got[4], &got[5]);
    EXPECT_EQ(got, c.expected);
  }
}
