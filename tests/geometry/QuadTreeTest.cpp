#include "geometry/QuadTree.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <new>

#include "platform/RecordingMessageSink.h"

namespace {

int MessagesWithText(const CRecordingMessageSink& sink, const char16_t* text) {
  int n = 0;
  for (const MessageRequest& r : sink.Requests())
    if (r.kind == MessageKind::Box && r.text == text && r.type == MB_OK) ++n;
  return n;
}

CQuadTree* NewTree(double size) {
  auto* tree = new CQuadTree;
  tree->SetExtents(CRectDouble(0, size, size, 0));
  return tree;
}

}  // namespace

TEST(CQuadTree, RefusesPointsOutsideOrBeforeExtents) {
  CQuadTree tree;
  CPointDouble p(1, 1, 0);
  EXPECT_EQ(tree.AddPoint(&p), 0);
  EXPECT_EQ(tree.AddPoint(nullptr), 0);
  tree.SetExtents(CRectDouble(0, 100, 100, 0));
  CPointDouble onRight(100, 50, 0), onBottom(50, 0, 0), onLeft(0, 50, 0), onTop(50, 100, 0);
  EXPECT_EQ(tree.IsPointInBounds(onRight), 0);
  EXPECT_EQ(tree.AddPoint(&onRight), 0);
  EXPECT_EQ(tree.AddPoint(&onBottom), 0);
  EXPECT_EQ(tree.AddPoint(&onLeft), 1);
  EXPECT_EQ(tree.AddPoint(&onTop), 1);
  EXPECT_EQ(tree.NumPoints(), 2);
}

TEST(CQuadTreeNode, QuadrantsAroundTheCentre) {
  CQuadTree tree;
  CQuadTreeNode node(&tree);
  node.m_rcExtents.SetRect(0, 100, 100, 0);
  EXPECT_EQ(node.GetQuadrant({50, 50, 0}), 1);
  EXPECT_EQ(node.GetQuadrant({50 - 1e-10, 50 + 1e-10, 0}), 1);
  EXPECT_EQ(node.GetQuadrant({50, 50 + 2e-10, 0}), 0);
  EXPECT_EQ(node.GetQuadrant({50 - 2e-10, 50, 0}), 2);
  EXPECT_EQ(node.GetQuadrant({50 - 2e-10, 50 + 2e-10, 0}), 3);
  EXPECT_EQ(node.GetQuadrant({99, 1, 0}), 1);
}

TEST(CQuadTreeNode, SplitGivesQuadrantExtents) {
  CQuadTree tree;
  CQuadTreeNode node(&tree);
  node.m_rcExtents.SetRect(0, 100, 60, 20);
  ASSERT_EQ(node.SplitNode(), 1);
  EXPECT_TRUE(node.m_pChildren[0]->m_rcExtents == CRectDouble(30, 100, 60, 60));
  EXPECT_TRUE(node.m_pChildren[1]->m_rcExtents == CRectDouble(30, 60, 60, 20));
  EXPECT_TRUE(node.m_pChildren[2]->m_rcExtents == CRectDouble(0, 60, 30, 20));
  EXPECT_TRUE(node.m_pChildren[3]->m_rcExtents == CRectDouble(0, 100, 30, 60));
  EXPECT_EQ(node.m_pChildren[2]->m_pTree, &tree);
  CQuadTreeNode* first = node.m_pChildren[0];
  node.SplitNode();
  EXPECT_EQ(node.m_pChildren[0], first);
}

TEST(CQuadTree, SecondPointSplitsAndBothAreFoundAgain) {
  CQuadTree tree;
  tree.SetExtents(CRectDouble(0, 100, 100, 0));
  CPointDouble a(10, 90, 0), b(60, 20, 0), c(70, 30, 0);
  ASSERT_EQ(tree.AddPoint(&a), 1);
  EXPECT_EQ(tree.Depth(), 1);
  ASSERT_EQ(tree.AddPoint(&b), 1);
  ASSERT_EQ(tree.AddPoint(&c), 1);
  EXPECT_EQ(tree.NumPoints(), 3);
  const CQuadTreeNode* root = tree.GetRoot();
  EXPECT_EQ(root->m_pPoint, nullptr);
  EXPECT_EQ(root->m_pChildren[3]->m_pPoint, &a);
  EXPECT_EQ(root->m_pChildren[1]->m_nCount, 2);
  EXPECT_EQ(tree.Depth(), 3);  // b and c part one level below the root's lower right

  CPointDouble* found = nullptr;
  EXPECT_EQ(tree.GetPoint(60 + 1e-10, 20 - 1e-10, &found), 1);
  EXPECT_EQ(found, &b);
  EXPECT_EQ(tree.GetPoint(70, 30, &found), 1);
  EXPECT_EQ(found, &c);
  EXPECT_EQ(tree.GetPoint(70 + 2e-10, 30, &found), 0);
  EXPECT_EQ(found, &c);
  EXPECT_EQ(tree.GetPoint(50, 50, &found), 0);
  EXPECT_EQ(tree.GetPoint(10, 90, nullptr), 1);
}

TEST(CQuadTree, TreeToleranceIsStoredButNotUsed) {
  CQuadTree tree;
  tree.SetExtents(CRectDouble(0, 100, 100, 0));
  tree.SetTolerance(1.0);
  EXPECT_EQ(tree.GetTolerance(), 1.0);
  CPointDouble a(10, 10, 0);
  tree.AddPoint(&a);
  CPointDouble* found = nullptr;
  EXPECT_EQ(tree.GetPoint(10.5, 10, &found), 0);
}

TEST(CQuadTree, LastMatchVisitedWins) {
  CQuadTree tree;
  tree.SetExtents(CRectDouble(0, 100, 100, 0));
  CQuadTreeNode* root = tree.GetRoot();
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
  CPointDouble* found = nullptr;
  EXPECT_EQ(tree.GetPoint(40, 40, &found), 1);
  EXPECT_EQ(found, &second);
}

TEST(CQuadTree, DepthLimitAllowsOneHundredLevels) {
  CRecordingMessageSink sink;
  // The two points part in a node of side 4, which is level 99 of a tree of side 2^100.
  std::unique_ptr<CQuadTree> tree(NewTree(std::ldexp(1.0, 100)));
  CPointDouble a(1, 1, 0), b(3, 1, 0);
  EXPECT_EQ(tree->AddPoint(&a), 1);
  EXPECT_EQ(tree->AddPoint(&b), 1);
  EXPECT_EQ(tree->Depth(), 100);
  EXPECT_TRUE(sink.Requests().empty());
  CPointDouble* found = nullptr;
  EXPECT_EQ(tree->GetPoint(3, 1, &found), 1);
  EXPECT_EQ(found, &b);

  std::unique_ptr<CQuadTree> deeper(NewTree(std::ldexp(1.0, 101)));
  CPointDouble c(1, 1, 0), d(3, 1, 0);
  EXPECT_EQ(deeper->AddPoint(&c), 1);
  EXPECT_EQ(deeper->AddPoint(&d), 1);
  EXPECT_EQ(MessagesWithText(sink, u"Max Depth exceeded!"), 2);
  EXPECT_EQ(deeper->GetPoint(3, 1, &found), 0);  // lost below the limit, still counted
  EXPECT_EQ(deeper->NumPoints(), 2);
}

TEST(CQuadTree, SamePositionTwicePassesTheLimitForGood) {
  CRecordingMessageSink sink;
  std::unique_ptr<CQuadTree> tree(NewTree(100));
  CPointDouble a(25, 25, 0), b(25, 25, 1), c(75, 75, 0), d(10, 90, 0);
  EXPECT_EQ(tree->AddPoint(&a), 1);
  EXPECT_TRUE(sink.Requests().empty());
  // Both points go down to the level past the limit, and each shows the message there.
  EXPECT_EQ(tree->AddPoint(&b), 1);
  EXPECT_EQ(MessagesWithText(sink, u"Max Depth exceeded!"), 2);
  EXPECT_EQ(tree->Depth(), 102);
  EXPECT_EQ(tree->NumPoints(), 2);
  CPointDouble* found = nullptr;
  EXPECT_EQ(tree->GetPoint(25, 25, &found), 0);

  EXPECT_EQ(tree->AddPoint(&c), 0);
  EXPECT_EQ(MessagesWithText(sink, u"Max Depth exceeded!"), 3);
  EXPECT_EQ(tree->AddPoint(&d), 0);
  EXPECT_EQ(MessagesWithText(sink, u"Max Depth exceeded!"), 4);
  EXPECT_EQ(sink.Requests().size(), 4u);
  EXPECT_EQ(tree->NumPoints(), 2);
  EXPECT_EQ(tree->Depth(), 102);
}

TEST(CQuadTree, DeleteAllPointsFreesPointsButKeepsCounts) {
  CQuadTree tree;
  tree.SetExtents(CRectDouble(0, 100, 100, 0));
  for (double x : {10.0, 60.0, 70.0, 80.0}) ASSERT_EQ(tree.AddPoint(new CPointDouble(x, 20, 0)), 1);
  tree.DeleteAllPoints();
  EXPECT_EQ(tree.NumPoints(), 4);
  CPointDouble* found = nullptr;
  EXPECT_EQ(tree.GetPoint(60, 20, &found), 0);
  tree.DeleteAllPoints();  // nothing left to delete twice
}

TEST(CQuadTree, CopiesShareTheRoot) {
  CQuadTree tree;
  tree.SetExtents(CRectDouble(0, 100, 100, 0));
  CPointDouble a(10, 10, 0), b(90, 90, 0);
  tree.AddPoint(&a);
  // Only one of the two may be destroyed, so the copy lives in storage that is never
  // destroyed.
  alignas(CQuadTree) unsigned char storage[sizeof(CQuadTree)];
  CQuadTree* copy = new (storage) CQuadTree(tree);
  EXPECT_EQ(copy->GetRoot(), tree.GetRoot());
  EXPECT_EQ(copy->AddPoint(&b), 1);
  EXPECT_EQ(tree.NumPoints(), 2);
  CPointDouble* found = nullptr;
  EXPECT_EQ(tree.GetPoint(90, 90, &found), 1);
  EXPECT_EQ(found, &b);
}
