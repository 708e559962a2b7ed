#include <algorithm>
#include <cmath>
#include <vector>

#include "symbols/Symbol.h"

namespace {

// What a consolidated item takes from the last source item completed before it is cut:
// scale, pen width, shift and the twenty pen flags. Before any item is complete the flags
// are all pen-down.
struct Carried {
  double scale = 1.0;
  int penWidth = 1;
  int shift = 0;
  signed char penDown[CSymbolItem::kMaxPoints];

  Carried() { std::fill(std::begin(penDown), std::end(penDown), static_cast<signed char>(1)); }

  void From(const CSymbolItem& item) {
    scale = item.m_dScale;
    penWidth = item.m_nPenWidth;
    shift = item.m_nShift;
    std::copy(std::begin(item.m_bPenDown), std::end(item.m_bPenDown), penDown);
  }
};

bool HasPenUpMove(const CSymbolItem& item) {
  for (int k = 1; k < item.UsedPoints(); ++k)
    if (item.m_bPenDown[k] != 1) return true;
  return false;
}

CSymbolItem MakeItem(PolylineVector& run, const Carried& carried) {
  CSymbolItem item;
  item.Init();
  item.m_dScale = carried.scale;
  item.m_nPenWidth = carried.penWidth;
  item.m_nShift = carried.shift;
  int report = 1;
  item.SetPolyline(&run, &report, CStdStrW(), nullptr);
  std::copy(std::begin(carried.penDown), std::end(carried.penDown), item.m_bPenDown);
  return item;
}

}  // namespace

void CSymbol::Consolidate() {
  PolylineVector run;
  std::vector<CSymbolItem> collected;
  Carried carried;
  double lastX = -999999.0, lastY = -999999.0;
  bool penUp = false;
  const auto flush = [&] {
    collected.push_back(MakeItem(run, carried));
    run.clear();
  };
  for (int j = 0; j < UsedSymbols(); ++j) {
    const CSymbolItem& item = m_pSymbolItems[j];
    bool cut = j > 0;
    for (int k = 0; k < item.UsedPoints(); ++k) {
      const double x = item.m_ptPoints[k].x;
      const double y = item.m_ptPoints[k].y;
      if (std::fabs(lastX - x) < 0.001 && std::fabs(lastY - y) < 0.001) cut = false;
      if (penUp || run.size() + 1 >= CSymbolItem::kMaxPoints) cut = true;
      if (cut && !run.empty()) {
        flush();
        penUp = false;
        cut = false;
      }
      // Figures are built from polylines in hundredths.
      run.AddPoint(x / 100, y / 100, 0.0);
      lastX = x;
      lastY = y;
    }
    carried.From(item);
    penUp = HasPenUpMove(item);
  }
  if (!run.empty()) flush();
  for (int i = UsedSymbols() - 1; i >= 0; --i) DeleteSymbolItem(i);
  for (const CSymbolItem& item : collected) AddSymbolItem(&item);
}

int CSymbol::GetAcadPolylines(std::vector<PolylineVector>* out) {
  if (out == nullptr) return 0;
  if (IsOldSymbol()) return ExportOldStyleSymbol(out);
  for (int i = 0; i < UsedSymbols(); ++i)
    if (!m_pSymbolItems[i].GetPolylines(out)) return 0;
  return 1;
}

namespace {

// Half the size of an old-style shape in the exchange form, in tenths: 14 and 19 keep the
// small size although their names say large, as the suite has always exported them.
double OldStyleSize(int n) {
  switch (n) {
    case 11: case 12: case 13: case 15: case 16: case 17: return 10;
    case 18: return 20;
    case 8: return 4;
    case 3: return 160;
    default: return 6;
  }
}

PolylineVector Square(double r) { return {{-r, r, 0}, {r, r, 0}, {r, -r, 0}, {-r, -r, 0}, {-r, r, 0}}; }

void AddCross(std::vector<PolylineVector>* out, double r) {
  out->push_back({{0, r, 0}, {0, -r, 0}});
  out->push_back({{r, 0, 0}, {-r, 0, 0}});
}

// A closed 19-gon: 19 corners, then the first again.
PolylineVector Circle(double r) {
  constexpr double kStep = 0.3306939635357677;  // 2π / 19
  PolylineVector circle;
  for (int k = 0; k < 19; ++k) circle.AddPoint(r * std::cos(k * kStep), r * std::sin(k * kStep));
  circle.AddPoint(r, 0);
  return circle;
}

// 1.7205 rather than √3: the exchange form has always used it.
PolylineVector Triangle(double r) {
  return {{0, 2 * r, 0}, {-1.7205 * r, -r, 0}, {1.7205 * r, -r, 0}, {0, 2 * r, 0}};
}

}  // namespace

int CSymbol::ExportOldStyleSymbol(std::vector<PolylineVector>* out) const {
  const int n = m_nIndex;
  const double r = OldStyleSize(n) / 10;
  switch (n) {
    case 1: case 5: case 12: out->push_back(Square(r)); break;
    case 9: case 15: out->push_back(Square(r)); AddCross(out, r); break;
    case 3: case 6: case 11: AddCross(out, r); break;
    case 17: case 18: out->push_back({{0, r, 0}, {0, -r, 0}}); break;
    case 7: case 13: out->push_back(Circle(r)); break;
    case 10: case 16: out->push_back(Circle(r)); AddCross(out, r); break;
    case 8: case 14: out->push_back(Triangle(r)); break;
    default: break;  // 0, and 2, 4 and 19, which have no outline
  }
  return 1;
}
