#pragma once
// CVantrel1Frame: the main frame window of the suite's programs. It owns the program's
// CVantrelClipboard, which library code reaches through the thread's main window
// (GetMainFrame), and moves single texts to and from the clipboard.
#include "clipboard/VantrelClipboard.h"
#include "platform/Export.h"
#include "platform/StdStr.h"
#include "platform/Wnd.h"

class VANTREL1_QT_EXPORT CVantrel1Frame : public CMDIFrameWndEx {
  DECLARE_DYNCREATE(CVantrel1Frame)

 public:
  CVantrel1Frame();
  ~CVantrel1Frame() override;

  // Opens the clipboard for this window, empties it, puts the text, closes it. Always 1,
  // also when the clipboard could not be opened (then nothing is done): callers treat a
  // push as successful, whatever happened.
  int PushToClipboard(UINT format, CStdStrW& text);
  // 1 and the text under `format` in *pText when the clipboard holds the format; 0 with
  // *pText untouched when it does not, when the clipboard cannot be opened, or when pText
  // is null.
  int PullFromClipboard(UINT format, CStdStrW* pText);

  // The thread's main window when it is a CVantrel1Frame, else null.
  static CVantrel1Frame* GetMainFrame();

  CVantrelClipboard* m_pClipboard;  // owned; null once the frame is destroyed

  DECLARE_MESSAGE_MAP()
};
