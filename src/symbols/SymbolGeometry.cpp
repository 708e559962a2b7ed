#include <algorithm>
#include <cmath>
#include <cstdint>

#include "symbols/Symbol.h"

namespace {

// trunc(value) as an int. Values beyond the range are held at its ends and a value that
// is not a number gives 0, where a plain conversion would be undefined.
int TruncToInt(double value) {
  if (std::isnan(value)) return 0;
  if (value >= 2147483647.0) return 2147483647;
  if (value <= -2147483648.0) return -2147483647 - 1;
  return static_cast<int>(value);
}

int AddHeld(int a, int b) {
  const std::int64_t sum = static_cast<std::int64_t>(a) + b;
  return static_cast<int>(std::clamp<std::int64_t>(sum, INT32_MIN, INT32_MAX));
}

constexpr double kNoExtent = 99999.0;

}  // namespace

void CSymbol::ApplyScalefactor(double factor) {
  for (int i = 0; i < UsedSymbols(); ++i) {
    CSymbolItem& item = m_pSymbolItems[i];
    for (int k = 0; k < item.UsedPoints(); ++k) {
      item.m_ptPoints[k].x = TruncToInt(item.m_ptPoints[k].x * factor);
      item.m_ptPoints[k].y = TruncToInt(item.m_ptPoints[k].y * factor);
    }
  }
  for (int i = 0; i < UsedTexts(); ++i) {
    CTextItem& text = m_pTextItems[i];
    text.m_dScale *= factor;
    text.m_dStart = TruncToInt(factor * text.m_dStart);
    text.m_nOffset = TruncToInt(text.m_nOffset * factor);
  }
}

void CSymbol::ApplyShift(double dx, double dy) {
  const int sx = TruncToInt(dx);
  const int sy = TruncToInt(dy);
  for (int i = 0; i < UsedSymbols(); ++i) {
    CSymbolItem& item = m_pSymbolItems[i];
    for (int k = 0; k < item.UsedPoints(); ++k) {
      item.m_ptPoints[k].x = AddHeld(item.m_ptPoints[k].x, sx);
      item.m_ptPoints[k].y = AddHeld(item.m_ptPoints[k].y, sy);
    }
  }
  for (int i = 0; i < UsedTexts(); ++i) {
    m_pTextItems[i].m_dStart += sx;
    m_pTextItems[i].m_nOffset = AddHeld(m_pTextItems[i].m_nOffset, sy);
  }
}

void CSymbol::GetExtents(double* minX, double* maxX, double* minY, double* maxY) const {
  double x0 = kNoExtent, x1 = -kNoExtent, y0 = kNoExtent, y1 = -kNoExtent;
  const auto widen = [&](double x, double y) {
    x0 = std::min(x0, x);
    x1 = std::max(x1, x);
    y0 = std::min(y0, y);
    y1 = std::max(y1, y);
  };
  for (int i = 0; i < UsedSymbols(); ++i) {
    const CSymbolItem& item = m_pSymbolItems[i];
    for (int k = 0; k < item.UsedPoints(); ++k) widen(item.m_ptPoints[k].x, item.m_ptPoints[k].y);
  }
  for (int i = 0; i < UsedTexts(); ++i) widen(m_pTextItems[i].m_dStart, m_pTextItems[i].m_nOffset);
  if (minX != nullptr) *minX = x0;
  if (maxX != nullptr) *maxX = x1;
  if (minY != nullptr) *minY = y0;
  if (maxY != nullptr) *maxY = y1;
}

void CSymbol::GetCenterPoint(double* x, double* y) const {
  double x0 = 0, x1 = 0, y0 = 0, y1 = 0;
  GetExtents(&x0, &x1, &y0, &y1);
  if (x != nullptr) *x = (x0 + x1) * 0.5;
  if (y != nullptr) *y = (y0 + y1) * 0.5;
}
