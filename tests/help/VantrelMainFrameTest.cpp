#include "help/VantrelMainFrame.h"

#include <gtest/gtest.h>

#include <memory>

#include "platform/WinThread.h"

namespace {

// Help of a program with online pages.
class ProgramHelp : public CVantrelHelp {
 public:
  int GetHelpPreference() const override { return 1; }
};

// Makes `window` the thread's main window for the object's lifetime.
class MainWindowScope {
 public:
  explicit MainWindowScope(CWnd* window) : m_previous(AfxGetThread()->m_pMainWnd) {
    AfxGetThread()->m_pMainWnd = window;
  }
  ~MainWindowScope() { AfxGetThread()->m_pMainWnd = m_previous; }
  MainWindowScope(const MainWindowScope&) = delete;
  MainWindowScope& operator=(const MainWindowScope&) = delete;

 private:
  CWnd* m_previous;
};

TEST(VantrelMainFrame, IsCreatedByNameAsAKindOfMainFrameWithItsOwnHelp) {
  std::unique_ptr<CObject> object(CRuntimeClass::CreateObject("CVantrelMainFrame"));
  ASSERT_NE(object, nullptr);
  EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CVantrelMainFrame)));
  EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CVantrel1Frame)));
  auto* frame = static_cast<CVantrelMainFrame*>(object.get());
  ASSERT_NE(frame->GetHelp(), nullptr);
  EXPECT_EQ(frame->GetHelp()->GetTopicPath(), CStdStrW(u"html\\vtrl0000.htm"));
  EXPECT_NE(frame->m_pClipboard, nullptr);

  frame->SetHelp(std::make_unique<ProgramHelp>());
  EXPECT_EQ(frame->GetHelp()->GetHelpPreference(), 1);
}

TEST(VantrelMainFrame, IsFoundAsTheMainFrameOnlyWhenItIsTheMainWindow) {
  CVantrelMainFrame frame;
  CVantrel1Frame plain;
  EXPECT_EQ(CVantrelMainFrame::GetMainFrame(), nullptr);
  {
    MainWindowScope scope(&plain);
    EXPECT_EQ(CVantrelMainFrame::GetMainFrame(), nullptr);
  }
  MainWindowScope scope(&frame);
  EXPECT_EQ(CVantrelMainFrame::GetMainFrame(), &frame);
  EXPECT_EQ(CVantrel1Frame::GetMainFrame(), &frame);
}

}  // namespace
