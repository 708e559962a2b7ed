#pragma once
// CPointDouble: a 3-D point in double precision that compares within its own tolerance.
// The three tags and the flag belong to the caller: they travel with the point through
// copies and are never read here.
#include "platform/Export.h"

class VANTREL1_EXPORT CPointDouble {
 public:
  CPointDouble() = default;
  CPointDouble(double px, double py, double pz) : x(px), y(py), z(pz) {}
  CPointDouble(const CPointDouble& other) = default;
  CPointDouble& operator=(const CPointDouble& other) = default;
  virtual ~CPointDouble();

  // Equal when x, y and z each differ by no more than this point's tolerance; the
  // other point's tolerance plays no part, so a == b and b == a can disagree.
  virtual int operator==(const CPointDouble& other) const;
  int operator!=(const CPointDouble& other) const { return !(*this == other); }

  void SetPoint(double px, double py, double pz) {
    x = px;
    y = py;
    z = pz;
  }
  double GetTolerance() const { return m_dTolerance; }
  void SetTolerance(double tolerance) { m_dTolerance = tolerance; }

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  int m_nTag1 = -1;
  int m_nTag2 = -1;
  int m_nTag3 = -1;
  int m_nFlag = 0;

 private:
  double m_dTolerance = 1e-10;
};

namespace vantrel1 {

// Neither a − tol > b nor b − tol > a: the geometry's one tolerant comparison. Near the
// boundary it can differ from |a − b| ≤ tol in the last bit, and a NaN equals everything.
inline bool EqualWithin(double a, double b, double tol) { return !(a - tol > b) && !(b - tol > a); }

}  // namespace vantrel1
