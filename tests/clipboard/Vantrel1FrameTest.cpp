#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "ClipboardTestSupport.h"
#include "clipboard/Vantrel1Frame.h"
#include "platform/Clipboard.h"
#include "platform/WinThread.h"

namespace {

TEST(Vantrel1FrameClass, CreatedByNameWithAClipboardThatOpensForItsWindow) {
  std::unique_ptr<CObject> object(CRuntimeClass::CreateObject("CVantrel1Frame"));
  ASSERT_NE(object, nullptr);
  ASSERT_TRUE(object->IsKindOf(RUNTIME_CLASS(CMDIFrameWndEx)));
  auto* frame = static_cast<CVantrel1Frame*>(object.get());
  ASSERT_NE(frame->m_pClipboard, nullptr);

  CTestClipboardBackend backend;
  frame->Attach(TestWindow(7));
  frame->m_pClipboard->SetTextData(CF_UNICODETEXT, u"x", 1);
  EXPECT_EQ(backend.ownerWhenSet, TestWindow(7));
}

TEST(Vantrel1FrameClass, MainFrameIsFoundThroughTheThreadUntilItGoesAway) {
  CWinThread* thread = AfxGetThread();
  CWnd plainWindow;
  thread->m_pMainWnd = &plainWindow;
  EXPECT_EQ(CVantrel1Frame::GetMainFrame(), nullptr);
  {
    CVantrel1Frame frame;
    thread->m_pMainWnd = &frame;
    EXPECT_EQ(CVantrel1Frame::GetMainFrame(), &frame);
  }
  EXPECT_EQ(thread->m_pMainWnd, nullptr);
  EXPECT_EQ(CVantrel1Frame::GetMainFrame(), nullptr);
}

TEST(Vantrel1FramePush, ReplacesTheClipboardWithOneFormatAndAlwaysSucceeds) {
  CTestClipboardBackend backend;
  CVantrel1Frame frame;
  frame.Attach(TestWindow(3));
  backend.PutText(610, u"older");
  CStdStrW text = u"Novi Sad";
  EXPECT_EQ(frame.PushToClipboard(611, text), 1);
  EXPECT_EQ(backend.Formats(), std::vector<UINT>{611});
  EXPECT_EQ(backend.Bytes(611), TextBytes(u"Novi Sad"));
  EXPECT_EQ(backend.ownerWhenSet, TestWindow(3));
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);

  backend.refuseData = true;
  EXPECT_EQ(frame.PushToClipboard(613, text), 1);
  EXPECT_EQ(backend.Formats(), std::vector<UINT>{});

  // A clipboard another window holds is left as it was.
  backend.refuseData = false;
  backend.PutText(610, u"held");
  ASSERT_EQ(OpenClipboard(TestWindow(99)), TRUE);
  EXPECT_EQ(frame.PushToClipboard(611, text), 1);
  EXPECT_EQ(GetOpenClipboardWindow(), TestWindow(99));
  CloseClipboard();
  EXPECT_EQ(backend.Formats(), std::vector<UINT>{610});
}

TEST(Vantrel1FramePull, ReadsOnlyAFormatThatIsThereAndLeavesTheTextOtherwise) {
  CTestClipboardBackend backend;
  CVantrel1Frame frame;
  backend.PutText(620, u"Šabac");
  backend.Put(622, {});

  CStdStrW text = u"unchanged";
  EXPECT_EQ(frame.PullFromClipboard(621, &text), 0);
  EXPECT_EQ(text, u"unchanged");
  ASSERT_EQ(OpenClipboard(TestWindow(99)), TRUE);
  EXPECT_EQ(frame.PullFromClipboard(620, &text), 0);
  EXPECT_EQ(text, u"unchanged");
  CloseClipboard();
  EXPECT_EQ(frame.PullFromClipboard(620, nullptr), 0);

  EXPECT_EQ(frame.PullFromClipboard(620, &text), 1);
  EXPECT_EQ(text, u"Šabac");
  EXPECT_EQ(frame.PullFromClipboard(622, &text), 1);  // present but empty
  EXPECT_EQ(text, u"");
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
}

}  // namespace
