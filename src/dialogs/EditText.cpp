#include "dialogs/EditText.h"

#include <QPlainTextEdit>

#include "dialogs/DataExchange.h"
#include "dialogs/QtText.h"
#include "dialogs/WindowOps.h"

namespace {

using vantrel1::FromQString;
using vantrel1::ToQString;

QPlainTextEdit* MultiLineEdit(HWND dialog, int id) {
  return qobject_cast<QPlainTextEdit*>(WidgetFromHwnd(GetDlgItem(dialog, id)));
}

}  // namespace

BOOL SetEditText(HWND dialog, int id, const CStdStrW& text) {
  QPlainTextEdit* edit = MultiLineEdit(dialog, id);
  if (edit == nullptr) return SetDlgItemText(dialog, id, text);
  // The edit's own reading of a lone "\r" is left to it; a "\r\n" pair is one break.
  CStdStrW lines = text;
  lines.Replace(u"\r\n", u"\n");
  edit->setPlainText(ToQString(lines));
  edit->document()->setModified(false);
  return TRUE;
}

CStdStrW GetEditText(HWND dialog, int id) {
  if (const QPlainTextEdit* edit = MultiLineEdit(dialog, id)) return FromQString(edit->toPlainText());
  return GetDlgItemText(dialog, id);
}

BOOL GetEditTextModify(HWND dialog, int id) {
  if (const QPlainTextEdit* edit = MultiLineEdit(dialog, id)) return edit->document()->isModified() ? TRUE : FALSE;
  return GetEditModify(dialog, id);
}

void DDX_Text(CDataExchange* exchange, int id, CStdStrW& value) {
  if (exchange == nullptr || exchange->Failed() || exchange->m_pDlgWnd == nullptr) return;
  const HWND dialog = exchange->m_pDlgWnd->GetSafeHwnd();
  if (GetDlgItem(dialog, id) == nullptr) return;
  if (exchange->m_bSaveAndValidate) {
    value = GetEditText(dialog, id);
  } else {
    SetEditText(dialog, id, value);
  }
}
