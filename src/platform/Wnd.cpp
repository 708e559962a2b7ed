#include "platform/Wnd.h"

#include "platform/WinThread.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)
IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)
IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)
IMPLEMENT_DYNCREATE(CMDIFrameWnd, CFrameWnd)
IMPLEMENT_DYNCREATE(CMDIFrameWndEx, CMDIFrameWnd)

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const { return GetThisMessageMap(); }

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
  static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, 0, nullptr}};
  static const AFX_MSGMAP messageMap = {nullptr, &entries[0]};
  return &messageMap;
}

CWnd::~CWnd() {
  CWinThread* thread = AfxGetThread();
  if (thread->m_pMainWnd == this) thread->m_pMainWnd = nullptr;
}

BOOL CWnd::Attach(HWND hWnd) {
  if (!hWnd || m_hWnd) return FALSE;
  m_hWnd = hWnd;
  return TRUE;
}

HWND CWnd::Detach() {
  HWND hWnd = m_hWnd;
  m_hWnd = nullptr;
  return hWnd;
}
