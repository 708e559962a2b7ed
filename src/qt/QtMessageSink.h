#pragma once
// CQtMessageSink: messages to the user as Qt message boxes, for the suite's GUI programs.
// Install it with SetMessageSink (platform/MessageSink.h) once the QApplication exists.
//
// The MB_ type chooses the buttons (OK; OK, Cancel; Abort, Retry, Ignore; Yes, No,
// Cancel; Yes, No; Retry, Cancel), the icon (stop, question, exclamation, information)
// and the default button (MB_DEFBUTTON2, MB_DEFBUTTON3); the button pressed is answered
// as IDOK, IDCANCEL, IDABORT, IDRETRY, IDIGNORE, IDYES or IDNO. Closing the box counts as
// its Cancel button, else No, else OK (Abort for abort/retry/ignore).
//
// Without a QApplication (a command-line program) there is nobody to ask: the message
// goes to standard error and the safe choice is answered, as by the default sink.
#include "platform/Export.h"
#include "platform/MessageSink.h"

class QWidget;

class VANTREL1_QT_EXPORT CQtMessageSink : public CMessageSink {
 public:
  // Boxes are shown over `parent` (not owned; may be null). The title is the
  // application's display name.
  explicit CQtMessageSink(QWidget* parent = nullptr) : m_pParent(parent) {}
  int Show(const MessageRequest& request) override;

 private:
  QWidget* m_pParent;
};
