#pragma once
// The user-interface thread object. Library code finds the application's main window
// through it (AfxGetThread()->GetMainWnd()); the program sets m_pMainWnd once its main
// frame exists and clears it before the frame goes away.
#include "platform/Wnd.h"

class VANTREL1_EXPORT CWinThread : public CCmdTarget {
  DECLARE_DYNAMIC(CWinThread)

 public:
  CWinThread() = default;
  CWinThread(const CWinThread&) = delete;
  CWinThread& operator=(const CWinThread&) = delete;

  virtual CWnd* GetMainWnd() { return m_pMainWnd; }

  CWnd* m_pMainWnd = nullptr;  // not owned
};

// The thread object of the program's user-interface thread, the only thread the library
// runs on; it lives as long as the process.
VANTREL1_EXPORT CWinThread* AfxGetThread();
// AfxGetThread()->GetMainWnd().
VANTREL1_EXPORT CWnd* AfxGetMainWnd();
