#pragma once
// CCoordBaseX: how drawing coordinates become the integer vertices of a symbol item.
// A vertex is the point's offset from the origin times the factor, rounded to the
// nearest integer (halves away from zero). The default, origin (0, 0) and factor 100,
// takes hundredths: the unit in which symbol figures are exchanged with CAD programs,
// where a vertex of 100 is one unit, so a figure exported and read back keeps every
// vertex. An editor that draws a symbol at a point of a drawing uses that point as the
// origin and the number of vertex units per drawing unit as the factor.
#include "platform/Types.h"

class VANTREL1_EXPORT CCoordBaseX {
 public:
  static constexpr double kDefaultFactor = 100.0;

  CCoordBaseX() = default;
  CCoordBaseX(double originX, double originY, double factor)
      : m_dOriginX(originX), m_dOriginY(originY), m_dFactor(factor) {}

  double GetOriginX() const { return m_dOriginX; }
  double GetOriginY() const { return m_dOriginY; }
  double GetFactor() const { return m_dFactor; }

  // 1 and the vertex; 0 (and `out` untouched) when a coordinate is not finite, the factor
  // is not a finite positive number, or the vertex lies outside the 32-bit range.
  int ToItem(double x, double y, POINT* out) const;
  // The drawing point of a vertex: the inverse of ToItem, short of its rounding.
  void FromItem(const POINT& vertex, double* x, double* y) const;

  // ToItem through `base`, or through the default base when `base` is null.
  static int ToItem(const CCoordBaseX* base, double x, double y, POINT* out);

 private:
  double m_dOriginX = 0.0;
  double m_dOriginY = 0.0;
  double m_dFactor = kDefaultFactor;
};
