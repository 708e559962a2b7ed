#include "platform/WinThread.h"

IMPLEMENT_DYNAMIC(CWinThread, CCmdTarget)

CWinThread* AfxGetThread() {
  // Never destroyed: windows may still ask for it while static objects go away.
  static auto* thread = new CWinThread;
  return thread;
}

CWnd* AfxGetMainWnd() { return AfxGetThread()->GetMainWnd(); }
