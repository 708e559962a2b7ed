#include "geometry/PolygonDouble.h"

#include <climits>

CPolygonDouble::~CPolygonDouble() = default;

CPolygonDouble& CPolygonDouble::operator=(const CPolygonDouble& other) {
  m_dTolerance = other.m_dTolerance;
  if (&other != this) m_vertices = other.m_vertices;
  return *this;
}

int CPolygonDouble::operator==(const CPolygonDouble& other) const {
  if (m_vertices.size() != other.m_vertices.size()) return 0;
  for (std::size_t i = 0; i < m_vertices.size(); ++i)
    if (!(other.m_vertices[i] == m_vertices[i])) return 0;
  return 1;
}

std::uint64_t CPolygonDouble::AppendPoint(double x, double y, double z) {
  m_vertices.emplace_back(x, y, z);
  return m_vertices.size();
}

std::uint64_t CPolygonDouble::AppendPoint(const CPointDouble& p) {
  m_vertices.push_back(p);
  return m_vertices.size();
}

int CPolygonDouble::GetVertex(unsigned int i, CPointDouble* out) const {
  if (out == nullptr || i >= m_vertices.size()) return 0;
  *out = m_vertices[i];
  return 1;
}

int CPolygonDouble::GetVertexIndex(const CPointDouble& p) const {
  const std::size_t n = m_vertices.size() < INT_MAX ? m_vertices.size() : INT_MAX;
  for (std::size_t i = 0; i < n; ++i) {
    CPointDouble vertex(m_vertices[i]);
    vertex.SetTolerance(m_dTolerance);
    if (vertex == p) return static_cast<int>(i);
  }
  return -1;
}

int CPolygonDouble::RemoveAll() {
  m_vertices.clear();
  return 1;
}
