#pragma once
// Where messages to the user go. The library shows messages through AfxMessageBox and the
// suite's numbered AppError/AppWarning/AppPrompt; each becomes a MessageRequest handed to
// the installed sink, whose answer (IDOK, IDYES, IDNO, IDCANCEL, ...) is returned to the
// caller. The default sink writes to standard error; vantrel1-qt installs a message-box
// sink for GUI applications; tests install a recording sink.
#include "platform/StdStr.h"
#include "platform/Types.h"

enum class MessageKind { Box, Error, Warning, Prompt };

struct MessageRequest {
  MessageKind kind = MessageKind::Box;
  UINT id = 0;        // string or message id; 0 for a literal text
  CStdStrW text;      // the text as shown
  UINT type = MB_OK;  // MB_* buttons and icon
};

class VANTREL1_EXPORT CMessageSink {
 public:
  virtual ~CMessageSink();
  virtual int Show(const MessageRequest& request) = 0;
};

// Installs a sink (not owned) and returns the previous one; null restores the default.
VANTREL1_EXPORT CMessageSink* SetMessageSink(CMessageSink* sink);
VANTREL1_EXPORT CMessageSink* GetMessageSink();

VANTREL1_EXPORT int AfxMessageBox(LPCWSTR text, UINT type = MB_OK, UINT helpId = 0);
// Loads the text of string `id` from the library's own string table.
VANTREL1_EXPORT int AfxMessageBox(UINT id, UINT type = MB_OK, UINT helpId = (UINT)-1);
