#include "clipboard/Vantrel1Frame.h"

#include "clipboard/ClipboardText.h"
#include "platform/Clipboard.h"
#include "platform/WinThread.h"

IMPLEMENT_DYNCREATE(CVantrel1Frame, CMDIFrameWndEx)

BEGIN_MESSAGE_MAP(CVantrel1Frame, CMDIFrameWndEx)
END_MESSAGE_MAP()

CVantrel1Frame::CVantrel1Frame() : m_pClipboard(new CVantrelClipboard(this)) {}

CVantrel1Frame::~CVantrel1Frame() {
  delete m_pClipboard;
  m_pClipboard = nullptr;
}

int CVantrel1Frame::PushToClipboard(UINT format, CStdStrW& text) {
  if (!OpenClipboard(GetSafeHwnd())) return 1;
  EmptyClipboard();
  vantrel1::PutClipboardText(format, text);
  CloseClipboard();
  return 1;
}

int CVantrel1Frame::PullFromClipboard(UINT format, CStdStrW* pText) {
  if (!pText || !OpenClipboard(GetSafeHwnd())) return 0;
  CStdStrW text;
  const bool available = vantrel1::TakeClipboardText(format, text);
  CloseClipboard();
  if (!available) return 0;
  *pText = std::move(text);
  return 1;
}

CVantrel1Frame* CVantrel1Frame::GetMainFrame() {
  CWnd* window = AfxGetMainWnd();
  if (!window || !window->IsKindOf(RUNTIME_CLASS(CVantrel1Frame))) return nullptr;
  return static_cast<CVantrel1Frame*>(window);
}
