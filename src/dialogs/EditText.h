#pragma once
// Text of the controls named by their resource ids, for single-line and multi-line edit
// fields alike (WindowOps.h knows the single-line ones), and the dialog data exchange of
// a text field.
//
// A multi-line edit is a QPlainTextEdit. It takes the framework's line breaks ("\r\n")
// as well as plain line feeds and gives its text back with line feeds. Setting the text
// of an edit field clears its modified flag, as setting the text of an edit control does;
// only the user's changes set it.
#include "dialogs/Dialog.h"
#include "platform/StdStr.h"
#include "platform/Types.h"

// FALSE for a missing item or one that shows no text.
VANTREL1_QT_EXPORT BOOL SetEditText(HWND dialog, int id, const CStdStrW& text);
// Empty for a missing item.
VANTREL1_QT_EXPORT CStdStrW GetEditText(HWND dialog, int id);
// Whether the user changed the edit field, single- or multi-line, since its text was last
// set (EM_GETMODIFY). FALSE for a missing control.
VANTREL1_QT_EXPORT BOOL GetEditTextModify(HWND dialog, int id);

// A text in an edit field or a label. Saving takes the text as it stands; nothing fails.
VANTREL1_QT_EXPORT void DDX_Text(CDataExchange* exchange, int id, CStdStrW& value);
