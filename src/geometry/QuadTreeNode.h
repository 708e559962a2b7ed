#pragma once
// CQuadTreeNode: one node of a point quadtree. A node holds at most one point; the second
// point splits it into four quadrant children, numbered round the centre (cx, cy):
//   0 upper right  x ≥ cx − tol and y > cy + tol
//   1 lower right  x ≥ cx − tol and y ≤ cy + tol   (the centre itself goes here)
//   2 lower left   x < cx − tol and y ≤ cy + tol
//   3 upper left   x < cx − tol and y > cy + tol
// Copies are shallow: they share the children, and only one of them may be destroyed.
// Points are the caller's; a node deletes them only in DeleteAllPoints.
#include "geometry/PointDouble.h"
#include "geometry/RectDouble.h"
#include "platform/Export.h"

class CQuadTree;

class VANTREL1_EXPORT CQuadTreeNode {
 public:
  explicit CQuadTreeNode(CQuadTree* tree) : m_pTree(tree) {}
  CQuadTreeNode(const CQuadTreeNode& other) = default;
  CQuadTreeNode& operator=(const CQuadTreeNode& other) = default;
  // Deletes the children (not the points).
  virtual ~CQuadTreeNode();

  int GetQuadrant(const CPointDouble& p) const;
  // Inserts p below this node; 0 once the tree has passed its depth limit (the tree then
  // refuses every later point), otherwise 1, also when a point lost below that limit was
  // not stored: the counts of its ancestors still include it.
  int InsertPoint(CPointDouble* p);
  // Gives the node its four quadrant children; a node that has them keeps them.
  int SplitNode();
  // Records in the tree every stored point within 1e-10 of p in x and y; the last one
  // visited (children in order 0 to 3) is the one left there.
  void GetPoint(const CPointDouble& p) const;
  // Deletes the stored points; nodes and counts stay.
  void DeleteAllPoints();

  CRectDouble m_rcExtents;
  int m_nCount = 0;
  CPointDouble* m_pPoint = nullptr;
  CQuadTreeNode* m_pChildren[4] = {nullptr, nullptr, nullptr, nullptr};
  double m_dTolerance = 1e-10;
  CQuadTree* m_pTree;

 private:
  CRectDouble QuadrantExtents(int quadrant) const;
  int InsertIntoQuadrant(CPointDouble* p);
};
