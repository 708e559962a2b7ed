#include "dialogs/DataExchange.h"

#include <cmath>

#include <QCheckBox>
#include <QLineEdit>

#include "dialogs/DialogStrings.h"
#include "dialogs/QtText.h"
#include "dialogs/WindowOps.h"
#include "platform/MessageSink.h"
#include "platform/WideCrt.h"

namespace {

using vantrel1::FromQString;
using vantrel1::ToQString;

template <typename Control>
Control* ControlOf(CDataExchange* exchange, int id) {
  if (exchange == nullptr || exchange->Failed() || exchange->m_pDlgWnd == nullptr) return nullptr;
  return qobject_cast<Control*>(WidgetFromHwnd(GetDlgItem(exchange->m_pDlgWnd->GetSafeHwnd(), id)));
}

bool IsBlank(char16_t c) { return c == u' ' || (c >= u'\t' && c <= u'\r'); }
bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

std::size_t SkipDigits(const CStdStrW& text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

std::size_t SkipSign(const CStdStrW& text, std::size_t at) {
  return at < text.size() && (text[at] == u'+' || text[at] == u'-') ? at + 1 : at;
}

// Blanks, sign, digits with at most one '.', at least one digit, an optional exponent
// with digits, blanks. Hexadecimal, "inf" and "nan" are what a reader of records accepts,
// not what a user types as a coordinate.
bool IsDecimalNumber(const CStdStrW& text) {
  std::size_t at = 0;
  while (at < text.size() && IsBlank(text[at])) ++at;
  at = SkipSign(text, at);
  const std::size_t intStart = at;
  at = SkipDigits(text, at);
  std::size_t digits = at - intStart;
  if (at < text.size() && text[at] == u'.') {
    const std::size_t fracStart = ++at;
    at = SkipDigits(text, at);
    digits += at - fracStart;
  }
  if (digits == 0) return false;
  if (at < text.size() && (text[at] == u'e' || text[at] == u'E')) {
    const std::size_t expStart = SkipSign(text, at + 1);
    at = SkipDigits(text, expStart);
    if (at == expStart) return false;
  }
  while (at < text.size() && IsBlank(text[at])) ++at;
  return at == text.size();
}

CStdStrW NumberText(double value) {
  CStdStrW text;
  text.Format(u"%.15g", value);
  return text;
}

void Refuse(CDataExchange* exchange, QWidget* control, const CStdStrW& message) {
  AfxMessageBox(message.c_str(), MB_ICONEXCLAMATION);
  control->setFocus(Qt::OtherFocusReason);
  exchange->Fail();
}

}  // namespace

void DDX_Text(CDataExchange* exchange, int id, double& value) {
  auto* edit = ControlOf<QLineEdit>(exchange, id);
  if (edit == nullptr) return;
  if (!exchange->m_bSaveAndValidate) {
    edit->setText(ToQString(NumberText(value)));
    return;
  }
  const CStdStrW text = FromQString(edit->text());
  const double number = IsDecimalNumber(text) ? _wtof(text.c_str()) : NAN;
  if (!std::isfinite(number)) {
    Refuse(exchange, edit, vantrel1::DialogString(vantrel1::DSTR_PARSE_REAL));
    return;
  }
  value = number;
}

void DDV_MinMaxDouble(CDataExchange* exchange, int id, double value, double min, double max) {
  if (exchange == nullptr || !exchange->m_bSaveAndValidate || (value >= min && value <= max)) return;
  auto* control = ControlOf<QWidget>(exchange, id);
  if (control == nullptr) return;
  CStdStrW message;
  message.Format(vantrel1::DialogString(vantrel1::DSTR_PARSE_REAL_RANGE), NumberText(min), NumberText(max));
  Refuse(exchange, control, message);
}

void DDX_Check(CDataExchange* exchange, int id, int& value) {
  auto* check = ControlOf<QCheckBox>(exchange, id);
  if (check == nullptr) return;
  if (!exchange->m_bSaveAndValidate) {
    check->setTristate(value == 2);
    check->setCheckState(value == 1 ? Qt::Checked : value == 2 ? Qt::PartiallyChecked : Qt::Unchecked);
    return;
  }
  const Qt::CheckState state = check->checkState();
  value = state == Qt::Checked ? 1 : state == Qt::PartiallyChecked ? 2 : 0;
}

BOOL GetEditModify(HWND dialog, int id) {
  auto* edit = qobject_cast<QLineEdit*>(WidgetFromHwnd(GetDlgItem(dialog, id)));
  return edit != nullptr && edit->isModified() ? TRUE : FALSE;
}
