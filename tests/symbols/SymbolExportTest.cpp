#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "SymbolTestSupport.h"

using namespace symboltest;

namespace {

using Points = std::vector<std::pair<int, int>>;

// The x of every vertex of every item, item by item.
std::vector<std::vector<int>> Xs(const CSymbol& symbol) {
  std::vector<std::vector<int>> items;
  for (int i = 0; i < symbol.SymbolItemsNum(); ++i) {
    items.emplace_back();
    for (const auto& v : Vertices(*symbol.GetSymbolItem(i))) items.back().push_back(v.first);
  }
  return items;
}

std::string Flags(const CSymbolItem& item) {
  std::string flags;
  for (signed char f : item.m_bPenDown) flags += std::to_string(f);
  return flags;
}

CSymbolItem Styled(CSymbolItem item, double scale, int penWidth, int shift) {
  item.m_dScale = scale;
  item.m_nPenWidth = penWidth;
  item.m_nShift = shift;
  item.m_nFill = 1;
  item.m_nInterval = 77;
  return item;
}

std::vector<size_t> Sizes(const std::vector<PolylineVector>& lines) {
  std::vector<size_t> sizes;
  for (const PolylineVector& line : lines) sizes.push_back(line.size());
  return sizes;
}

}  // namespace

TEST(SymbolConsolidate, ItemsJoinedEndToEndBecomeRunsOfAtMostNineteenVertices) {
  struct Case {
    const char* what;
    CSymbol symbol;
    std::vector<std::vector<int>> xs;
  };
  const Case cases[] = {
      // The shared vertices are kept twice: 5 + 4 + 6.
      {"a continuous path", Composite({Path(0, 0, 5), Path(4, 0, 4), Path(7, 0, 6)}),
       {{0, 1, 2, 3, 4, 4, 5, 6, 7, 7, 8, 9, 10, 11, 12}}},
      // 12 + 13 vertices: the run is cut before the 20th, and the stroke from the 19th to
      // the 20th vertex is lost.
      {"a path too long for one figure", Composite({Path(0, 0, 12), Path(11, 0, 13)}),
       {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 11, 12, 13, 14, 15, 16, 17}, {18, 19, 20, 21, 22, 23}}},
      {"a gap between items", Composite({Path(0, 0, 3), Path(5, 0, 3)}), {{0, 1, 2}, {5, 6, 7}}},
      {"a pen-up move before the joint",
       Composite({Figure({{0, 0, 0}, {1, 0}, {2, 0, 0}, {3, 0}}), Figure({{3, 0, 0}, {4, 0}})}),
       {{0, 1, 2, 3}, {3, 4}}},
      {"a pen-up move only at the first vertex", Composite({Figure({{0, 0, 0}, {1, 0}}), Figure({{1, 0, 0}, {2, 0}})}),
       {{0, 1, 1, 2}}},
      {"a joint off by one tenth", Composite({Path(0, 0, 2), Figure({{1, 1}, {5, 5}})}), {{0, 1}, {1, 5}}},
      {"no items", Composite({}), {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    CSymbol symbol = c.symbol;
    symbol.Consolidate();
    EXPECT_EQ(Xs(symbol), c.xs);
  }
}

TEST(SymbolConsolidate, ARunTakesTheAttributesOfTheLastItemCompletedBeforeItWasCut) {
  CSymbolItem first = Styled(Figure({{0, 0, 0}, {10, 0}, {10, 10, 0}, {20, 10}}), 2.0, 3, 40);
  first.m_nPoints = 2;  // the flags beyond the count are carried as well
  const CSymbolItem second = Styled(Path(10, 0, 4), 0.5, 7, -5);
  const CSymbolItem third = Styled(Path(100, 100, 2), 9.0, 9, 9);
  CSymbol symbol = Composite({first, second, third}, {Text("t", 1, 2)});
  symbol.Consolidate();

  ASSERT_EQ(symbol.SymbolItemsNum(), 2);
  const CSymbolItem& joined = *symbol.GetSymbolItem(0);
  EXPECT_EQ(Vertices(joined), (Points{{0, 0}, {10, 0}, {10, 0}, {11, 0}, {12, 0}, {13, 0}}));
  // The second item is the last one complete when the third starts elsewhere.
  EXPECT_EQ(joined.m_dScale, 0.5);
  EXPECT_EQ(joined.m_nPenWidth, 7);
  EXPECT_EQ(joined.m_nShift, -5);
  EXPECT_EQ(Flags(joined), "01111111111111111111");
  EXPECT_EQ(joined.m_nFill, 0) << "everything else starts afresh";
  EXPECT_EQ(joined.m_nInterval, 1000);
  EXPECT_EQ(symbol.GetSymbolItem(1)->m_nPenWidth, 9);
  EXPECT_EQ(symbol.TextItemsNum(), 1);

  // A run cut inside the first item has nothing completed to take from: defaults, pen down.
  CSymbol single = Composite({Styled(Path(0, 0, 20), 4.0, 2, 3)});
  single.Consolidate();
  ASSERT_EQ(single.SymbolItemsNum(), 2);
  const CSymbolItem& cut = *single.GetSymbolItem(0);
  EXPECT_EQ(cut.m_dScale, 1.0);
  EXPECT_EQ(cut.m_nPenWidth, 1);
  EXPECT_EQ(cut.m_nShift, 0);
  EXPECT_EQ(Flags(cut), "11111111111111111111");
  EXPECT_EQ(single.GetSymbolItem(1)->m_dScale, 4.0);
  EXPECT_EQ(Vertices(*single.GetSymbolItem(1)), (Points{{19, 0}}));
}

TEST(SymbolAcadPolylines, OldStyleShapesHaveFixedUnscaledOutlines) {
  struct Case {
    int n;
    std::vector<size_t> sizes;
    double r;  // the half-size: the largest |y| of the first polyline, or of the triangle's base
  };
  const Case cases[] = {
      {0, {}, 0},          {1, {5}, 0.6},        {2, {}, 0},           {3, {2, 2}, 16},     {4, {}, 0},
      {5, {5}, 0.6},       {6, {2, 2}, 0.6},     {7, {20}, 0.6},       {8, {4}, 0.4},       {9, {5, 2, 2}, 0.6},
      {10, {20, 2, 2}, 0.6}, {11, {2, 2}, 1.0},  {12, {5}, 1.0},       {13, {20}, 1.0},     {14, {4}, 0.6},
      {15, {5, 2, 2}, 1.0}, {16, {20, 2, 2}, 1.0}, {17, {2}, 1.0},     {18, {2}, 2.0},      {19, {}, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.n);
    CSymbol symbol(c.n, RGB(255, 0, 0), 5.0);
    std::vector<PolylineVector> out(1);  // what is there already stays
    EXPECT_EQ(symbol.GetAcadPolylines(&out), 1);
    out.erase(out.begin());
    EXPECT_EQ(Sizes(out), c.sizes);
    if (out.empty()) continue;
    const PolylineVector& shape = out[0];
    const double r = shape.size() == 4 ? -shape.GetAt(1).y : shape.size() == 20 ? shape.GetAt(0).x : shape.GetAt(0).y;
    EXPECT_EQ(r, c.r);
    for (const PolylineVector& line : out)
      for (const PolylinePoint& p : line) EXPECT_EQ(p.z, 0.0);
  }
}

TEST(SymbolAcadPolylines, SquareCrossCircleAndTriangleOutlinesPointByPoint) {
  std::vector<PolylineVector> out;
  CSymbol(9, 0, 1.0).GetAcadPolylines(&out);
  const std::vector<PolylineVector> squareAndCross = {
      {{-0.6, 0.6, 0}, {0.6, 0.6, 0}, {0.6, -0.6, 0}, {-0.6, -0.6, 0}, {-0.6, 0.6, 0}},
      {{0, 0.6, 0}, {0, -0.6, 0}},
      {{0.6, 0, 0}, {-0.6, 0, 0}}};
  EXPECT_EQ(out, squareAndCross);

  out.clear();
  CSymbol(7, 0, 1.0).GetAcadPolylines(&out);
  ASSERT_EQ(Sizes(out), (std::vector<size_t>{20}));
  const double step = 2 * 3.14159265358979323846 / 19;
  for (int k : {1, 10, 18}) {
    EXPECT_NEAR(out[0].GetAt(k).x, 0.6 * std::cos(k * step), 1e-15) << k;
    EXPECT_NEAR(out[0].GetAt(k).y, 0.6 * std::sin(k * step), 1e-15) << k;
  }
  EXPECT_EQ(out[0].GetAt(19), (PolylinePoint{0.6, 0, 0}));

  out.clear();
  CSymbol(8, 0, 1.0).GetAcadPolylines(&out);
  const std::vector<PolylineVector> triangle = {
      {{0, 0.8, 0}, {-1.7205 * 0.4, -0.4, 0}, {1.7205 * 0.4, -0.4, 0}, {0, 0.8, 0}}};
  EXPECT_EQ(out, triangle);
}

TEST(SymbolAcadPolylines, CompositeSymbolsHandOutTheirFiguresStrokeRunByStrokeRun) {
  CSymbol symbol = Composite({Figure({{100, 0}, {100, 100, 0}, {200, 100}}), Figure({{0, 0, 0}, {0, 300}})});
  std::vector<PolylineVector> out;
  EXPECT_EQ(symbol.GetAcadPolylines(&out), 1);
  EXPECT_EQ(Sizes(out), (std::vector<size_t>{2, 2, 2}));
  EXPECT_NEAR(out[1].GetAt(1).x, 2.0, 1e-6);
  EXPECT_NEAR(out[2].GetAt(1).y, 3.0, 1e-6);

  EXPECT_EQ(symbol.GetAcadPolylines(nullptr), 0);
  EXPECT_EQ(CSymbol(7, 0, 1.0).GetAcadPolylines(nullptr), 0);
}
