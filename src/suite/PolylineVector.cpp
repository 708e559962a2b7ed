#include "suite/PolylineVector.h"

#include <algorithm>

PolylineVector::PolylineVector(const CdoubleArray& xs, const CdoubleArray& ys) {
  const long n = std::min(xs.GetSize(), ys.GetSize());
  m_points.reserve(static_cast<std::size_t>(n));
  for (long i = 0; i < n; ++i) AddPoint(xs.GetAtC(i), ys.GetAtC(i));
}

PolylinePoint PolylineVector::GetAt(long index) const {
  if (index < 0 || index >= GetSize()) return PolylinePoint{};
  return m_points[static_cast<std::size_t>(index)];
}

int PolylineVector::SetAt(long index, const PolylinePoint& p) {
  if (index < 0 || index >= GetSize()) return 0;
  m_points[static_cast<std::size_t>(index)] = p;
  return 1;
}

void PolylineVector::GetXY(CdoubleArray* xs, CdoubleArray* ys) const {
  if (xs) xs->RemoveAll();
  if (ys) ys->RemoveAll();
  for (const PolylinePoint& p : m_points) {
    if (xs) xs->Add(p.x);
    if (ys) ys->Add(p.y);
  }
}
