#pragma once
// CdoubleArray: the suite's growable array of doubles, with the framework array's
// operations (GetSize, GetAt, SetAt, Add, SetSize, RemoveAll, operator[] ...). Polylines
// travel through the library as two of these, x and y.
//
// Indices are checked: an index outside 0 … GetSize() − 1 reads 0.0 and writes go to a
// scratch element that is cleared before every use, so a wrong index never touches memory
// outside the array. Sizes below 0 count as 0.
#include <cstddef>
#include <initializer_list>
#include <vector>

#include "platform/Export.h"

class VANTREL1_EXPORT CdoubleArray {
 public:
  CdoubleArray() = default;
  CdoubleArray(std::initializer_list<double> values);
  CdoubleArray(const double* values, long count);

  long GetSize() const { return static_cast<long>(m_values.size()); }
  long GetCount() const { return GetSize(); }
  long GetUpperBound() const { return GetSize() - 1; }
  bool IsEmpty() const { return m_values.empty(); }

  // Grows with zeros or shrinks to `newSize`; growBy is accepted for compatibility.
  void SetSize(long newSize, long growBy = -1);
  void RemoveAll();
  void FreeExtra();

  double GetAt(long index) const { return GetAtC(index); }
  double GetAtC(long index) const;
  void SetAt(long index, double value);
  double& ElementAt(long index);
  double operator[](long index) const { return GetAtC(index); }
  double& operator[](long index) { return ElementAt(index); }

  // Appends and returns the new element's index.
  long Add(double value);
  // Appends the other array's elements and returns the index of the first one.
  long Append(const CdoubleArray& other);
  void Copy(const CdoubleArray& other);
  // Inserts `count` copies of value before `index`, clamped to 0 … GetSize().
  void InsertAt(long index, double value, long count = 1);
  // Removes up to `count` elements from `index`; nothing when index is out of range.
  void RemoveAt(long index, long count = 1);

  // The elements, contiguous; null when the array is empty.
  const double* GetData() const { return m_values.empty() ? nullptr : m_values.data(); }
  double* GetData() { return m_values.empty() ? nullptr : m_values.data(); }

  bool operator==(const CdoubleArray& other) const { return m_values == other.m_values; }
  bool operator!=(const CdoubleArray& other) const { return !(*this == other); }

 private:
  bool InRange(long index) const { return index >= 0 && index < GetSize(); }

  std::vector<double> m_values;
  double m_dScratch = 0.0;
};
