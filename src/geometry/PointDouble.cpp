#include "geometry/PointDouble.h"

CPointDouble::~CPointDouble() = default;

int CPointDouble::operator==(const CPointDouble& other) const {
  using vantrel1::EqualWithin;
  return EqualWithin(x, other.x, m_dTolerance) && EqualWithin(y, other.y, m_dTolerance) &&
         EqualWithin(z, other.z, m_dTolerance);
}
