#include "geometry/QuadTree.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>

#include "platform/RecordingMessageSink.h"

namespace {

int DepthMessages(const CRecordingMessageSink& sink) {
  int n = 0;
  for (const MessageRequest& r : sink.Requests())
    if (r.kind == MessageKind::Box && r.text == u"Max Depth exceeded!" && r.type == MB_OK) ++n;
  return n;
}

std::unique_ptr<CQuadTree> NewTree(double size) {
  auto tree = std::make_unique<CQuadTree>();
  tree->SetExtents(CRectDouble(0, size, size, 0));
  return tree;
}

std::array<double, 4> Edges(const CRectDouble& r) { return {r.Left(), r.Top(), r.Right(), r.Bottom()}; }

CPointDouble* Found(CQuadTree& tree, double x, double y) {
  CPointDouble* found = nullptr;
  return tree.GetPoint(x, y, &found) ? found : nullptr;
}

}  // namespace

// The extents' right and bottom edges are outside, as in every rectangle of the tree.
TEST(CQuadTree, RefusesPointsOutsideOrBeforeExtents) {
  CQuadTree tree;
  CPointDouble p(1, 1, 0);
  EXPECT_EQ(tree.AddPoint(&p), 0);
  tree.SetExtents(CRectDouble(0, 100, 100, 0));
  EXPECT_EQ(tree.AddPoint(nullptr), 0);
  CPointDouble onRight(100, 50, 0), onBottom(50, 0, 0), onLeft(0, 50, 0), onTop(50, 100, 0);
  EXPECT_EQ(tree.AddPoint(&onRight), 0);
  EXPECT_EQ(tree.AddPoint(&onBottom), 0);
  EXPECT_EQ(tree.AddPoint(&onLeft), 1);
  EXPECT_EQ(tree.AddPoint(&onTop), 1);
  EXPECT_EQ(tree.NumPoints(), 2);
}

TEST(CQuadTreeNode, QuadrantsAroundTheCentreAndTheirExtents) {
  CQuadTree tree;
  CQuadTreeNode node(&tree);
  node.m_rcExtents.SetRect(0, 100, 100, 0);
  EXPECT_EQ(node.GetQuadrant({50, 50, 0}), 1);
  EXPECT_EQ(node.GetQuadrant({50 - 1e-10, 50 + 1e-10, 0}), 1);
  EXPECT_EQ(node.GetQuadrant({50, 50 + 2e-10, 0}), 0);
  EXPECT_EQ(node.GetQuadrant({50 - 2e-10, 50, 0}), 2);
  EXPECT_EQ(node.GetQuadrant({50 - 2e-10, 50 + 2e-10, 0}), 3);

  node.m_rcExtents.SetRect(0, 100, 60, 20);
  ASSERT_EQ(node.SplitNode(), 1);
  const std::array<double, 4> quadrants[] = {{30, 100, 60, 60}, {30, 60, 60, 20}, {0, 60, 30, 20}, {0, 100, 30, 60}};
  for (int q = 0; q < 4; ++q) {
    EXPECT_EQ(Edges(node.m_pChildren[q]->m_rcExtents), quadrants[q]) << q;
    EXPECT_EQ(node.m_pChildren[q]->m_pTree, &tree);
  }
  CQuadTreeNode* first = node.m_pChildren[0];
  node.SplitNode();
  EXPECT_EQ(node.m_pChildren[0], first);  // a node keeps its children
}

// Matches take the nodes' fixed 1e-10, not the tree's tolerance. The points are the
// caller's until DeleteAllPoints, which keeps nodes and counts.
TEST(CQuadTree, SecondPointSplitsAndEveryPointIsFoundAgain) {
  auto tree = NewTree(100);
  tree->SetTolerance(1.0);
  auto* a = new CPointDouble(10, 90, 0);
  auto* b = new CPointDouble(60, 20, 0);
  auto* c = new CPointDouble(70, 30, 0);
  ASSERT_EQ(tree->AddPoint(a), 1);
  EXPECT_EQ(tree->Depth(), 1);
  ASSERT_EQ(tree->AddPoint(b), 1);
  ASSERT_EQ(tree->AddPoint(c), 1);
  EXPECT_EQ(tree->NumPoints(), 3);
  EXPECT_EQ(tree->GetRoot()->m_pChildren[1]->m_nCount, 2);
  EXPECT_EQ(tree->Depth(), 3);  // b and c part one level below the root's lower right

  EXPECT_EQ(Found(*tree, 60 + 1e-10, 20 - 1e-10), b);
  EXPECT_EQ(Found(*tree, 70, 30), c);
  CPointDouble* found = a;
  EXPECT_EQ(tree->GetPoint(70 + 2e-10, 30, &found), 0);
  EXPECT_EQ(found, a);  // left alone
  EXPECT_EQ(Found(*tree, 50, 50), nullptr);
  EXPECT_EQ(tree->GetPoint(10, 90, nullptr), 1);

  tree->DeleteAllPoints();
  EXPECT_EQ(tree->NumPoints(), 3);
  EXPECT_EQ(Found(*tree, 70, 30), nullptr);
  tree->DeleteAllPoints();  // nothing left to delete twice
}

TEST(CQuadTree, LastMatchVisitedWins) {
  auto tree = NewTree(100);
  CQuadTreeNode* root = tree->GetRoot();
  root->SplitNode();
  root->m_nCount = 2;
  // Overlapping children, so that the search meets both points.
  CPointDouble first(40, 40, 0), second(40, 40 + 5e-11, 0);
  for (int q : {0, 3}) {
    root->m_pChildren[q]->m_rcExtents.SetRect(0, 100, 100, 0);
    root->m_pChildren[q]->m_nCount = 1;
  }
  root->m_pChildren[0]->m_pPoint = &first;
  root->m_pChildren[3]->m_pPoint = &second;
  EXPECT_EQ(Found(*tree, 40, 40), &second);
}

// Two points part in a node of side 4, which is level 99 of a tree of side 2^100 and
// level 100 of one of side 2^101: the one beyond the limit is lost but still counted.
TEST(CQuadTree, DepthLimitAllowsOneHundredLevels) {
  CRecordingMessageSink sink;
  auto tree = NewTree(std::ldexp(1.0, 100));
  CPointDouble a(1, 1, 0), b(3, 1, 0);
  EXPECT_EQ(tree->AddPoint(&a), 1);
  EXPECT_EQ(tree->AddPoint(&b), 1);
  EXPECT_EQ(tree->Depth(), 100);
  EXPECT_TRUE(sink.Requests().empty());
  EXPECT_EQ(Found(*tree, 3, 1), &b);

  auto deeper = NewTree(std::ldexp(1.0, 101));
  EXPECT_EQ(deeper->AddPoint(&a), 1);
  EXPECT_EQ(deeper->AddPoint(&b), 1);
  EXPECT_EQ(DepthMessages(sink), 2);
  EXPECT_EQ(Found(*deeper, 3, 1), nullptr);
  EXPECT_EQ(deeper->NumPoints(), 2);
}

// The deepest level reached is never lowered, so once past the limit the tree refuses
// every later point, each with the message.
TEST(CQuadTree, SamePositionTwicePassesTheLimitForGood) {
  CRecordingMessageSink sink;
  auto tree = NewTree(100);
  CPointDouble a(25, 25, 0), b(25, 25, 1), c(75, 75, 0), d(10, 90, 0);
  EXPECT_EQ(tree->AddPoint(&a), 1);
  EXPECT_EQ(tree->AddPoint(&b), 1);
  EXPECT_EQ(DepthMessages(sink), 2);  // both points go down past the limit
  EXPECT_EQ(tree->Depth(), 102);
  EXPECT_EQ(Found(*tree, 25, 25), nullptr);
  EXPECT_EQ(tree->AddPoint(&c), 0);
  EXPECT_EQ(tree->AddPoint(&d), 0);
  EXPECT_EQ(DepthMessages(sink), 4);
  EXPECT_EQ(sink.Requests().size(), 4u);
  EXPECT_EQ(tree->NumPoints(), 2);
  EXPECT_EQ(tree->Depth(), 102);
}
