#include "geometry/RectDouble.h"

#include <cmath>
#include <cstdint>

#include "suite/GeoMath.h"

namespace {

LONG RoundToLong(double value) {
  const double r = Round(value, 0);
  if (std::isnan(r)) return 0;
  if (r >= 2147483647.0) return INT32_MAX;
  if (r <= -2147483648.0) return INT32_MIN;
  return static_cast<LONG>(r);
}

}  // namespace

using vantrel1::EqualWithin;

CRectDouble::~CRectDouble() = default;

int CRectDouble::operator==(const CRectDouble& other) const {
  const double tol = m_dTolerance;
  return EqualWithin(m_dLeft, other.m_dLeft, tol) && EqualWithin(m_dTop, other.m_dTop, tol) &&
         EqualWithin(m_dRight, other.m_dRight, tol) && EqualWithin(m_dBottom, other.m_dBottom, tol);
}

int CRectDouble::SetRect(double left, double top, double right, double bottom) {
  m_dLeft = left;
  m_dTop = top;
  m_dRight = right;
  m_dBottom = bottom;
  return (left - m_dTolerance > right || bottom - m_dTolerance > top) ? 0 : 1;
}

CPointDouble CRectDouble::CenterPoint() const {
  return CPointDouble(m_dLeft + (m_dRight - m_dLeft) * 0.5, m_dBottom + (m_dTop - m_dBottom) * 0.5, 0.0);
}

void CRectDouble::InflateRect(double dx, double dy) {
  m_dLeft -= dx;
  m_dRight += dx;
  m_dTop += dy;
  m_dBottom -= dy;
}

int CRectDouble::SetFromCenterOffset(double cx, double cy, double offset) {
  if (!(offset < -1e-12) && !(offset - 1e-12 > 0)) return 0;
  const double r = std::fabs(offset);
  m_dLeft = cx - r;
  m_dRight = cx + r;
  m_dTop = cy + r;
  m_dBottom = cy - r;
  return 1;
}

int CRectDouble::IsRectEmpty() const {
  return EqualWithin(m_dRight, m_dLeft, m_dTolerance) && EqualWithin(m_dTop, m_dBottom, m_dTolerance);
}

int CRectDouble::PtInRect(double x, double y) const {
  const double tol = m_dTolerance;
  return x >= m_dLeft - tol && y <= m_dTop + tol && x < m_dRight - tol && y > m_dBottom + tol;
}

int CRectDouble::IsIntersectRect(const CRectDouble& other) const {
  const double tol = m_dTolerance;
  return other.m_dTop > m_dBottom + tol && m_dTop > other.m_dBottom + tol &&
         m_dRight > other.m_dLeft + tol && other.m_dRight > m_dLeft + tol;
}

int CRectDouble::IsTriangleInside(const CPointDouble& a, const CPointDouble& b,
                                  const CPointDouble& c) const {
  return PtInRect(a) && PtInRect(b) && PtInRect(c);
}

CRect CRectDouble::ToCRect() const {
  return CRect(RoundToLong(m_dLeft), RoundToLong(m_dTop), RoundToLong(m_dRight), RoundToLong(m_dBottom));
}

void CRectDouble::FromCRect(const CRect& rc) {
  m_dLeft = rc.left;
  m_dTop = rc.top;
  m_dRight = rc.right;
  m_dBottom = rc.bottom;
}
