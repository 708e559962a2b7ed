#include "help/VantrelMainFrame.h"

#include "platform/WinThread.h"

IMPLEMENT_DYNCREATE(CVantrelMainFrame, CVantrel1Frame)

BEGIN_MESSAGE_MAP(CVantrelMainFrame, CVantrel1Frame)
END_MESSAGE_MAP()

CVantrelMainFrame::CVantrelMainFrame() : m_pHelp(std::make_unique<CVantrelHelp>()) {}

CVantrelMainFrame::~CVantrelMainFrame() = default;

void CVantrelMainFrame::SetHelp(std::unique_ptr<CVantrelHelp> help) { m_pHelp = std::move(help); }

CVantrelMainFrame* CVantrelMainFrame::GetMainFrame() {
  CWnd* window = AfxGetMainWnd();
  if (!window || !window->IsKindOf(RUNTIME_CLASS(CVantrelMainFrame))) return nullptr;
  return static_cast<CVantrelMainFrame*>(window);
}
