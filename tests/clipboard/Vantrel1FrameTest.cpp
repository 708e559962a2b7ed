#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "ClipboardTestSupport.h"
#include "clipboard/Vantrel1Frame.h"
#include "platform/Clipboard.h"
#include "platform/WinThread.h"

namespace {

// Exposes the class's own message map for inspection.
class CFrameProbe : public CVantrel1Frame {
 public:
  using CVantrel1Frame::GetThisMessageMap;
};

TEST(Vantrel1FrameClass, CreatedByNameWithItsOwnClipboardAndMessageMap) {
  std::unique_ptr<CObject> object(CRuntimeClass::CreateObject("CVantrel1Frame"));
  ASSERT_NE(object, nullptr);
  ASSERT_TRUE(object->IsKindOf(RUNTIME_CLASS(CMDIFrameWndEx)));
  EXPECT_EQ(object->GetRuntimeClass(), CVantrel1Frame::GetThisClass());
  auto* frame = static_cast<CVantrel1Frame*>(object.get());
  ASSERT_NE(frame->m_pClipboard, nullptr);

  CTestClipboardBackend backend;
  frame->Attach(TestWindow(7));
  frame->m_pClipboard->SetTextData(CF_UNICODETEXT, u"x", 1);
  EXPECT_EQ(backend.ownerWhenSet, TestWindow(7));

  const AFX_MSGMAP* map = frame->GetMessageMap();
  EXPECT_EQ(map, CFrameProbe::GetThisMessageMap());
  EXPECT_EQ(map->lpEntries[0].nMessage, 0u);  // no handlers of its own
  ASSERT_NE(map->pfnGetBaseMap, nullptr);
  EXPECT_EQ(map->pfnGetBaseMap(), CWnd().GetMessageMap());
}

TEST(Vantrel1FrameClass, MainFrameIsFoundThroughTheThreadUntilItGoesAway) {
  CWinThread* thread = AfxGetThread();
  EXPECT_EQ(CVantrel1Frame::GetMainFrame(), nullptr);
  CWnd plainWindow;
  thread->m_pMainWnd = &plainWindow;
  EXPECT_EQ(CVantrel1Frame::GetMainFrame(), nullptr);
  {
    CVantrel1Frame frame;
    thread->m_pMainWnd = &frame;
    EXPECT_EQ(CVantrel1Frame::GetMainFrame(), &frame);
    EXPECT_EQ(AfxGetMainWnd(), &frame);
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

  CStdStrW empty;
  EXPECT_EQ(frame.PushToClipboard(612, empty), 1);
  EXPECT_EQ(backend.Bytes(612), (std::vector<BYTE>{0, 0}));

  backend.refuseData = true;
  EXPECT_EQ(frame.PushToClipboard(613, text), 1);
  EXPECT_EQ(backend.Formats(), std::vector<UINT>{});
}

TEST(Vantrel1FramePush, HeldClipboardIsLeftAsItWas) {
  CTestClipboardBackend backend;
  CVantrel1Frame frame;
  backend.PutText(610, u"held");
  ASSERT_EQ(OpenClipboard(TestWindow(99)), TRUE);
  CStdStrW text = u"new";
  EXPECT_EQ(frame.PushToClipboard(611, text), 1);
  EXPECT_EQ(GetOpenClipboardWindow(), TestWindow(99));
  CloseClipboard();
  EXPECT_EQ(backend.Formats(), std::vector<UINT>{610});
  EXPECT_EQ(backend.Bytes(610), TextBytes(u"held"));
}

TEST(Vantrel1FramePull, ReadsOnlyAFormatThatIsThere) {
  CTestClipboardBackend backend;
  CVantrel1Frame frame;
  CStdStrW pushed = u"Šabac";
  frame.PushToClipboard(620, pushed);

  CStdStrW text = u"unchanged";
  EXPECT_EQ(frame.PullFromClipboard(621, &text), 0);
  EXPECT_EQ(text, u"unchanged");
  EXPECT_EQ(frame.PullFromClipboard(620, &text), 1);
  EXPECT_EQ(text, u"Šabac");
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);

  backend.Put(622, {});
  EXPECT_EQ(frame.PullFromClipboard(622, &text), 1);  // present but empty
  EXPECT_EQ(text, u"");

  text = u"unchanged";
  ASSERT_EQ(OpenClipboard(TestWindow(99)), TRUE);
  EXPECT_EQ(frame.PullFromClipboard(620, &text), 0);
  EXPECT_EQ(text, u"unchanged");
  CloseClipboard();
  EXPECT_EQ(frame.PullFromClipboard(620, nullptr), 0);
  EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
}

TEST(Vantrel1FramePull, TextIsCutAtAnEmbeddedZero) {
  CTestClipboardBackend backend;
  CVantrel1Frame frame;
  CStdStrW pushed(std::u16string(u"N 45\0 E 19", 10));
  frame.PushToClipboard(630, pushed);
  CStdStrW text;
  EXPECT_EQ(frame.PullFromClipboard(630, &text), 1);
  EXPECT_EQ(text, u"N 45");
}

}  // namespace
