#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "SymbolTestSupport.h"

using namespace symboltest;

namespace {

using Points = std::vector<std::pair<int, int>>;

struct Anchor {
  double height, x;
  int y;
  bool operator==(const Anchor&) const = default;
};

Anchor AnchorOf(const CSymbol& symbol) {
  const CTextItem* text = symbol.GetTextItem(0);
  return {text->m_dScale, text->m_dStart, text->m_nOffset};
}

}  // namespace

TEST(SymbolScalefactor, VerticesAndAnchorsAreTruncatedTowardZeroAndHeightsKeepFractions) {
  struct Case {
    double factor;
    Points vertices;
    Anchor anchor;
  };
  // Vertices (−3, 3) and (7, −7); text 2.0 high anchored at (3.0, −5).
  const Case cases[] = {
      {0.5, {{-1, 1}, {3, -3}}, {1.0, 1.0, -2}},
      {1.5, {{-4, 4}, {10, -10}}, {3.0, 4.0, -7}},
      {-1.0, {{3, -3}, {-7, 7}}, {-2.0, -3.0, 5}},
      {0.0, {{0, 0}, {0, 0}}, {0.0, 0.0, 0}},
      // Results beyond the 32-bit range are held at its ends rather than wrapping.
      {1e300, {{-2147483647 - 1, 2147483647}, {2147483647, -2147483647 - 1}}, {2e300, 2147483647.0, -2147483647 - 1}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.factor);
    CSymbol symbol = Composite({Figure({{-3, 3}, {7, -7}})}, {Text("h", 3.0, -5, 2.0)});
    symbol.ApplyScalefactor(c.factor);
    EXPECT_EQ(Vertices(*symbol.GetSymbolItem(0)), c.vertices);
    EXPECT_EQ(AnchorOf(symbol), c.anchor);
    EXPECT_EQ(symbol.GetScale(), 1.0) << "the drawing scale is another thing";
  }

  CSymbol symbol = Composite({Figure({{-3, 3}})}, {Text("h", 3.0, -5, 2.0)});
  symbol.ApplyScalefactor(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(Vertices(*symbol.GetSymbolItem(0)), (Points{{0, 0}}));
  EXPECT_EQ(symbol.GetTextItem(0)->m_dStart, 0.0);
}

TEST(SymbolShift, TheShiftIsTruncatedFirstAndMovesEveryVertexAndAnchor) {
  struct Case {
    double dx, dy;
    Points vertices;
    double anchorX;
    int anchorY;
  };
  // Vertices (−3, 3) and (2147483000, −2147483000); text anchored at (0.5, 4).
  const Case cases[] = {
      {1.9, -1.9, {{-2, 2}, {2147483001, -2147483001}}, 1.5, 3},
      {-0.99, 0.99, {{-3, 3}, {2147483000, -2147483000}}, 0.5, 4},
      {1000.0, -1000.0, {{997, -997}, {2147483647, -2147483647 - 1}}, 1000.5, -996},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.dx);
    CSymbol symbol = Composite({Figure({{-3, 3}, {2147483000, -2147483000}})}, {Text("s", 0.5, 4)});
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
    double minX, maxX, minY, maxY, cx, cy;
  };
  const Case cases[] = {
      {"figures", Composite({Figure({{-100, 0}, {50, 86}}), Figure({{0, -100, 0}, {20, 30}})}),
       -100, 50, -100, 86, -25, -7},
      {"a text anchor beyond the figure",
       Composite({Figure({{-10, -10}, {10, 10}})}, {Text("very long text", 40.5, -30)}), -10, 40.5, -30, 10, 15.25, -10},
      {"texts only", Composite({}, {Text("a", 2, 3), Text("b", -2, 1)}), -2, 2, 1, 3, 0, 2},
      {"nothing", Composite({}), 99999, -99999, 99999, -99999, 0, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    double minX = 0, maxX = 0, minY = 0, maxY = 0, cx = 1, cy = 1;
    c.symbol.GetExtents(&minX, &maxX, &minY, &maxY);
    EXPECT_EQ(minX, c.minX);
    EXPECT_EQ(maxX, c.maxX);
    EXPECT_EQ(minY, c.minY);
    EXPECT_EQ(maxY, c.maxY);
    c.symbol.GetCenterPoint(&cx, &cy);
    EXPECT_EQ(cx, c.cx);
    EXPECT_EQ(cy, c.cy);
  }
}
