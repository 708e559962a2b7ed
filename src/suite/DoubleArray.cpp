#include "suite/DoubleArray.h"

#include <algorithm>

CdoubleArray::CdoubleArray(std::initializer_list<double> values) : m_values(values) {}

CdoubleArray::CdoubleArray(const double* values, long count) {
  if (values != nullptr && count > 0) m_values.assign(values, values + count);
}

void CdoubleArray::SetSize(long newSize, long /*growBy*/) {
  m_values.resize(static_cast<std::size_t>(std::max(newSize, 0L)), 0.0);
}

void CdoubleArray::RemoveAll() { m_values.clear(); }

void CdoubleArray::FreeExtra() { m_values.shrink_to_fit(); }

double CdoubleArray::GetAtC(long index) const {
  return InRange(index) ? m_values[static_cast<std::size_t>(index)] : 0.0;
}

void CdoubleArray::SetAt(long index, double value) {
  if (InRange(index)) m_values[static_cast<std::size_t>(index)] = value;
}

double& CdoubleArray::ElementAt(long index) {
  if (InRange(index)) return m_values[static_cast<std::size_t>(index)];
  m_dScratch = 0.0;
  return m_dScratch;
}

long CdoubleArray::Add(double value) {
  m_values.push_back(value);
  return GetSize() - 1;
}

long CdoubleArray::Append(const CdoubleArray& other) {
  const long first = GetSize();
  if (&other == this) {
    const std::vector<double> copy(m_values);
    m_values.insert(m_values.end(), copy.begin(), copy.end());
  } else {
    m_values.insert(m_values.end(), other.m_values.begin(), other.m_values.end());
  }
  return first;
}

void CdoubleArray::Copy(const CdoubleArray& other) {
  if (&other != this) m_values = other.m_values;
}

void CdoubleArray::InsertAt(long index, double value, long count) {
  if (count <= 0) return;
  const long at = std::clamp(index, 0L, GetSize());
  m_values.insert(m_values.begin() + at, static_cast<std::size_t>(count), value);
}

void CdoubleArray::RemoveAt(long index, long count) {
  if (!InRange(index) || count <= 0) return;
  const long end = index + std::min(count, GetSize() - index);
  m_values.erase(m_values.begin() + index, m_values.begin() + end);
}
