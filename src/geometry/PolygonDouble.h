#pragma once
// CPolygonDouble: an ordered list of points held by value, closed implicitly (the first
// vertex is not repeated at the end).
#include <cstdint>
#include <vector>

#include "geometry/PointDouble.h"
#include "platform/Export.h"

class VANTREL1_EXPORT CPolygonDouble {
 public:
  CPolygonDouble() = default;
  CPolygonDouble(const CPolygonDouble& other) = default;
  CPolygonDouble& operator=(const CPolygonDouble& other);
  virtual ~CPolygonDouble();

  // Same count and, vertex by vertex in order, other's vertex i == this vertex i: the
  // other polygon's vertex tolerances decide. A ring started elsewhere is not equal.
  virtual int operator==(const CPolygonDouble& other) const;
  int operator!=(const CPolygonDouble& other) const { return !(*this == other); }

  // A new vertex with default tags, flag and tolerance; returns the new vertex count.
  std::uint64_t AppendPoint(double x, double y, double z);
  // A copy of p with its tags, flag and tolerance; returns the new vertex count.
  std::uint64_t AppendPoint(const CPointDouble& p);
  std::uint64_t GetVertexCount() const { return m_vertices.size(); }
  // Copies vertex i (every field) into *out; 0 when i is out of range or out is null.
  int GetVertex(unsigned int i, CPointDouble* out) const;
  // The first vertex that matches p within the polygon's tolerance, or −1.
  int GetVertexIndex(const CPointDouble& p) const;
  int IsValid() const { return m_vertices.size() >= 3 ? 1 : 0; }
  int RemoveAll();

  double GetTolerance() const { return m_dTolerance; }
  void SetTolerance(double tolerance) { m_dTolerance = tolerance; }

 private:
  double m_dTolerance = 1e-10;
  std::vector<CPointDouble> m_vertices;
};
