#pragma once
// PolylineVector: one polyline as an ordered list of points (x, y, z) in doubles, the form
// in which figures are handed in for editing and out for export to CAD exchange formats
// (a drawing's line work is a std::vector<PolylineVector>). A closed outline repeats its
// first point at the end.
#include <cstddef>
#include <initializer_list>
#include <vector>

#include "platform/Export.h"
#include "suite/DoubleArray.h"

struct PolylinePoint {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  bool operator==(const PolylinePoint&) const = default;
};

class VANTREL1_EXPORT PolylineVector {
 public:
  using const_iterator = std::vector<PolylinePoint>::const_iterator;
  using iterator = std::vector<PolylinePoint>::iterator;

  PolylineVector() = default;
  PolylineVector(std::initializer_list<PolylinePoint> points) : m_points(points) {}
  // From parallel coordinate arrays, z = 0; as many points as the shorter array holds.
  PolylineVector(const CdoubleArray& xs, const CdoubleArray& ys);

  std::size_t size() const { return m_points.size(); }
  bool empty() const { return m_points.empty(); }
  void clear() { m_points.clear(); }
  void reserve(std::size_t n) { m_points.reserve(n); }
  void push_back(const PolylinePoint& p) { m_points.push_back(p); }
  long GetSize() const { return static_cast<long>(m_points.size()); }
  void AddPoint(double x, double y, double z = 0.0) { m_points.push_back({x, y, z}); }

  // Checked access: an index out of range reads a point at the origin and writes nothing
  // (SetAt then returns 0, else 1).
  PolylinePoint GetAt(long index) const;
  int SetAt(long index, const PolylinePoint& p);

  const_iterator begin() const { return m_points.begin(); }
  const_iterator end() const { return m_points.end(); }
  iterator begin() { return m_points.begin(); }
  iterator end() { return m_points.end(); }
  const std::vector<PolylinePoint>& Points() const { return m_points; }

  // The coordinates as the two arrays that the drawing and search routines take; both
  // arrays are replaced. Null arrays are skipped.
  void GetXY(CdoubleArray* xs, CdoubleArray* ys) const;

  bool operator==(const PolylineVector& other) const { return m_points == other.m_points; }
  bool operator!=(const PolylineVector& other) const { return !(*this == other); }

 private:
  std::vector<PolylinePoint> m_points;
};
