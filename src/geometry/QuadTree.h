#pragma once
// CQuadTree: finds points again from their plan position (x, y) inside fixed extents. The
// tree stores pointers to points that the caller owns and deletes them only on request
// (DeleteAllPoints).
//
// Insertion is limited to a depth of 100. Two points at the same position split their
// node again and again until the limit is passed; the tree then shows "Max Depth
// exceeded!" and, since the deepest level reached is never lowered, refuses every later
// point with the same message.
//
// Copies are shallow: both trees share the root, so only one of them may be destroyed
// (assignment does not delete the target's previous root, which an earlier copy may
// share). The nodes keep reporting depth and found points to the tree that made them.
#include "geometry/PointDouble.h"
#include "geometry/QuadTreeNode.h"
#include "geometry/RectDouble.h"
#include "platform/Export.h"

class VANTREL1_EXPORT CQuadTree {
 public:
  static constexpr int kMaxDepth = 100;

  CQuadTree();
  CQuadTree(const CQuadTree& other) = default;
  CQuadTree& operator=(const CQuadTree& other) = default;
  virtual ~CQuadTree();

  // The root's rectangle, tolerance included. Set it before adding points.
  void SetExtents(const CRectDouble& r);
  // Stored only: the nodes decide quadrants and matches with their own 1e-10.
  void SetTolerance(double t) { m_dTolerance = t; }
  double GetTolerance() const { return m_dTolerance; }

  int IsPointInBounds(const CPointDouble& p) const;
  // 0 when the extents are empty, p is null or outside them; otherwise the root's
  // InsertPoint.
  int AddPoint(CPointDouble* p);
  // The stored point within 1e-10 of (x, y) (the last one visited when several are):
  // stores it in *out and returns 1, or returns 0 and leaves *out alone.
  int GetPoint(double x, double y, CPointDouble** out);
  void FoundPoint(CPointDouble* p) { m_pFoundPoint = p; }

  int NumPoints() const;
  // The deepest insertion level reached so far.
  int Depth() const { return m_nMaxDepth; }
  void IncrementDepth();
  // Never below 0, so that each level of an insertion always counts towards the limit.
  void DecrementDepth() {
    if (m_nDepth > 0) --m_nDepth;
  }
  void DeleteAllPoints();
  CQuadTreeNode* GetRoot() const { return m_pRoot; }

 private:
  double m_dTolerance = 1e-10;
  CQuadTreeNode* m_pRoot;
  CPointDouble* m_pFoundPoint = nullptr;
  int m_nDepth = 0;
  int m_nMaxDepth = 0;
};
