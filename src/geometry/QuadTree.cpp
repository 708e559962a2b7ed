#include "geometry/QuadTree.h"

#include <climits>

CQuadTree::CQuadTree() : m_pRoot(new CQuadTreeNode(this)) {}

CQuadTree::~CQuadTree() { delete m_pRoot; }

void CQuadTree::SetExtents(const CRectDouble& r) { m_pRoot->m_rcExtents = r; }

int CQuadTree::IsPointInBounds(const CPointDouble& p) const { return m_pRoot->m_rcExtents.PtInRect(p.x, p.y); }

int CQuadTree::AddPoint(CPointDouble* p) {
  if (p == nullptr || m_pRoot->m_rcExtents.IsRectEmpty() || !m_pRoot->m_rcExtents.PtInRect(*p)) return 0;
  return m_pRoot->InsertPoint(p);
}

int CQuadTree::GetPoint(double x, double y, CPointDouble** out) {
  m_pFoundPoint = nullptr;
  m_pRoot->GetPoint(CPointDouble(x, y, 0.0));
  if (m_pFoundPoint == nullptr) return 0;
  if (out != nullptr) *out = m_pFoundPoint;
  return 1;
}

int CQuadTree::NumPoints() const { return m_pRoot->m_nCount; }

// Saturates: a tree past its limit raises the depth on every refused point.
void CQuadTree::IncrementDepth() {
  if (m_nDepth < INT_MAX) ++m_nDepth;
  if (m_nDepth > m_nMaxDepth) m_nMaxDepth = m_nDepth;
}

void CQuadTree::DeleteAllPoints() { m_pRoot->DeleteAllPoints(); }
