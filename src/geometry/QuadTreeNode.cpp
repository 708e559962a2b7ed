#include "geometry/QuadTreeNode.h"

#include <vector>

#include "geometry/QuadTree.h"
#include "platform/MessageSink.h"

namespace {

// Nodes match points with this fixed tolerance, whatever the tree's tolerance says.
constexpr double kMatchTolerance = 1e-10;

void TakeChildren(CQuadTreeNode* node, std::vector<CQuadTreeNode*>* into) {
  for (CQuadTreeNode*& child : node->m_pChildren) {
    if (child != nullptr) into->push_back(child);
    child = nullptr;
  }
}

// Pushes the children in reverse so that they are popped in order 0 to 3.
template <typename Node>
void PushChildren(const CQuadTreeNode* node, std::vector<Node*>* stack) {
  for (int q = 3; q >= 0; --q)
    if (node->m_pChildren[q] != nullptr) stack->push_back(node->m_pChildren[q]);
}

}  // namespace

// Iterative, so that no shape of tree can exhaust the stack.
CQuadTreeNode::~CQuadTreeNode() {
  std::vector<CQuadTreeNode*> pending;
  TakeChildren(this, &pending);
  while (!pending.empty()) {
    CQuadTreeNode* node = pending.back();
    pending.pop_back();
    TakeChildren(node, &pending);
    delete node;
  }
  m_pPoint = nullptr;
  m_nCount = 0;
}

int CQuadTreeNode::GetQuadrant(const CPointDouble& p) const {
  const CPointDouble centre = m_rcExtents.CenterPoint();
  const bool right = p.x >= centre.x - m_dTolerance;
  const bool upper = p.y > centre.y + m_dTolerance;
  if (right) return upper ? 0 : 1;
  return upper ? 3 : 2;
}

CRectDouble CQuadTreeNode::QuadrantExtents(int quadrant) const {
  const CPointDouble c = m_rcExtents.CenterPoint();
  const CRectDouble& r = m_rcExtents;
  switch (quadrant) {
    case 0: return CRectDouble(c.x, r.Top(), r.Right(), c.y);
    case 1: return CRectDouble(c.x, c.y, r.Right(), r.Bottom());
    case 2: return CRectDouble(r.Left(), c.y, c.x, r.Bottom());
    default: return CRectDouble(r.Left(), r.Top(), c.x, c.y);
  }
}

int CQuadTreeNode::SplitNode() {
  for (int q = 0; q < 4; ++q) {
    if (m_pChildren[q] != nullptr) continue;
    const CRectDouble extents = QuadrantExtents(q);
    m_pChildren[q] = new CQuadTreeNode(m_pTree);
    m_pChildren[q]->m_rcExtents.SetRect(extents.Left(), extents.Top(), extents.Right(), extents.Bottom());
  }
  return 1;
}

int CQuadTreeNode::InsertIntoQuadrant(CPointDouble* p) {
  if (m_pChildren[0] == nullptr) SplitNode();
  return m_pChildren[GetQuadrant(*p)]->InsertPoint(p);
}

// Recursion is bounded: every level raises the tree's depth, and past the limit the
// insertion stops.
int CQuadTreeNode::InsertPoint(CPointDouble* p) {
  if (p == nullptr || m_pTree == nullptr) return 0;
  m_pTree->IncrementDepth();
  if (m_pTree->Depth() > CQuadTree::kMaxDepth) {
    AfxMessageBox(u"Max Depth exceeded!");
    return 0;  // the depth stays raised, deliberately: see CQuadTree
  }
  if (m_nCount == 0) {
    m_pPoint = p;
  } else if (m_nCount == 1) {
    SplitNode();
    if (m_pPoint != nullptr) InsertIntoQuadrant(m_pPoint);
    m_pPoint = nullptr;
    InsertIntoQuadrant(p);
  } else {
    InsertIntoQuadrant(p);
  }
  ++m_nCount;
  m_pTree->DecrementDepth();
  return 1;
}

void CQuadTreeNode::GetPoint(const CPointDouble& p) const {
  using vantrel1::EqualWithin;
  std::vector<const CQuadTreeNode*> stack{this};
  while (!stack.empty()) {
    const CQuadTreeNode* node = stack.back();
    stack.pop_back();
    if (!node->m_rcExtents.PtInRect(p.x, p.y)) continue;
    if (node->m_nCount == 1) {
      const CPointDouble* q = node->m_pPoint;
      if (q != nullptr && node->m_pTree != nullptr && EqualWithin(q->x, p.x, kMatchTolerance) &&
          EqualWithin(q->y, p.y, kMatchTolerance))
        node->m_pTree->FoundPoint(node->m_pPoint);
    } else if (node->m_nCount > 1) {
      PushChildren(node, &stack);
    }
  }
}

void CQuadTreeNode::DeleteAllPoints() {
  std::vector<CQuadTreeNode*> stack{this};
  while (!stack.empty()) {
    CQuadTreeNode* node = stack.back();
    stack.pop_back();
    if (node->m_nCount == 1) {
      delete node->m_pPoint;
      node->m_pPoint = nullptr;
    } else if (node->m_nCount > 1) {
      PushChildren(node, &stack);
    }
  }
}
