#include "suite/CoordBaseX.h"

#include <cmath>

namespace {

bool ToVertexUnit(double value, LONG* out) {
  const double rounded = std::round(value);  // halves away from zero
  if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) return false;  // NaN too
  *out = static_cast<LONG>(rounded);
  return true;
}

}  // namespace

int CCoordBaseX::ToItem(double x, double y, POINT* out) const {
  if (!out || !std::isfinite(m_dFactor) || !(m_dFactor > 0)) return 0;
  POINT vertex{};
  if (!ToVertexUnit((x - m_dOriginX) * m_dFactor, &vertex.x) || !ToVertexUnit((y - m_dOriginY) * m_dFactor, &vertex.y))
    return 0;
  *out = vertex;
  return 1;
}

void CCoordBaseX::FromItem(const POINT& vertex, double* x, double* y) const {
  if (x) *x = m_dOriginX + vertex.x / m_dFactor;
  if (y) *y = m_dOriginY + vertex.y / m_dFactor;
}

int CCoordBaseX::ToItem(const CCoordBaseX* base, double x, double y, POINT* out) {
  static const CCoordBaseX kDefault;
  return (base ? base : &kDefault)->ToItem(x, y, out);
}
