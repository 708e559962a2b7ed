#pragma once
// CRectDouble: an axis-aligned rectangle in double precision whose y axis points up (top
// is the larger y), compared within its own tolerance. Nothing normalises an inverted
// rectangle: callers keep left ≤ right and bottom ≤ top, and SetRect reports a violation
// without correcting it.
#include "geometry/PointDouble.h"
#include "platform/CRect.h"
#include "platform/Export.h"

class CPolygonDouble;

class VANTREL1_EXPORT CRectDouble {
 public:
  CRectDouble() = default;
  CRectDouble(double left, double top, double right, double bottom)
      : m_dLeft(left), m_dTop(top), m_dRight(right), m_dBottom(bottom) {}
  CRectDouble(const CRectDouble& other) = default;
  CRectDouble& operator=(const CRectDouble& other) = default;
  virtual ~CRectDouble();

  // The four edges agree within this rectangle's tolerance; tolerances are not compared.
  virtual int operator==(const CRectDouble& other) const;
  int operator!=(const CRectDouble& other) const { return !(*this == other); }

  // Stores the values as given, then returns 0 when they are inverted (left − tol > right
  // or bottom − tol > top), else 1.
  int SetRect(double left, double top, double right, double bottom);

  double Left() const { return m_dLeft; }
  double Top() const { return m_dTop; }
  double Right() const { return m_dRight; }
  double Bottom() const { return m_dBottom; }
  double Width() const { return m_dRight - m_dLeft; }
  double Height() const { return m_dTop - m_dBottom; }
  double GetTolerance() const { return m_dTolerance; }
  void SetTolerance(double tolerance) { m_dTolerance = tolerance; }

  CPointDouble CenterPoint() const;
  // Negative values shrink the rectangle; nothing is checked.
  void InflateRect(double dx, double dy);
  // The square of half-side |offset| round (cx, cy); an offset within ±1e-12 of zero
  // changes nothing and returns 0.
  int SetFromCenterOffset(double cx, double cy, double offset);

  // Empty only when both the width and the height are zero within tolerance: a
  // rectangle that is flat in one direction only is not empty.
  int IsRectEmpty() const;
  // The left and top edges are inside and widened outward by the tolerance; the right
  // and bottom edges are outside together with a band of the tolerance's width inside
  // them. Points on a shared edge so belong to exactly one of two neighbours.
  int PtInRect(double x, double y) const;
  int PtInRect(const CPointDouble& p) const { return PtInRect(p.x, p.y); }
  // Strict overlap by more than this rectangle's tolerance; touching is not enough.
  int IsIntersectRect(const CRectDouble& other) const;
  int IsTriangleInside(const CPointDouble& a, const CPointDouble& b, const CPointDouble& c) const;

  // Each edge rounded by Round(value, 0) (halves away from zero) and truncated to 32 bits:
  // values beyond the 32-bit range saturate and NaN becomes 0. The y axis is not flipped.
  CRect ToCRect() const;
  // Takes the four edges; the tolerance is kept.
  void FromCRect(const CRect& rc);

  // Clips the triangle abc in plan to this rectangle and appends the outline to `out`
  // (which is not emptied first), each vertex with its elevation on the triangle's plane;
  // returns the number of vertices appended, 0 when nothing of the triangle is inside.
  // The right and top edges are exclusive and the left and bottom edges inclusive, with
  // no tolerance. A triangle wholly inside comes out as b, c, a. A point equal (within
  // 1e-10) to the one before it is not repeated.
  // Degenerate triangles need no guard: an edge is cut only where its ends lie on opposite
  // sides of a boundary, so the divisor is never zero, and the elevation of a flat
  // triangle comes from InterpolateElevOnTriangle's fallback along its longest edge. A
  // triangle with a non-finite x or y, or a null `out`, gives 0 and appends nothing.
  unsigned int ClipTriangle(const CPointDouble& a, const CPointDouble& b, const CPointDouble& c,
                            CPolygonDouble* out) const;

 private:
  double m_dLeft = 0.0;
  double m_dTop = 0.0;
  double m_dRight = 0.0;
  double m_dBottom = 0.0;
  double m_dTolerance = 1e-10;
};
