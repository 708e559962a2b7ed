#include "qt/QtMessageSink.h"

#include <QApplication>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>

#include <cstdio>
#include <utility>
#include <vector>

namespace {

// Button sets and the other fields of an MB_ type that the platform's header leaves out.
constexpr UINT kTypeMask = 0xF;
constexpr UINT kIconMask = 0xF0;
constexpr UINT kDefaultMask = 0xF00;
constexpr UINT kAbortRetryIgnore = 0x2;
constexpr UINT kRetryCancel = 0x5;

using Button = std::pair<QMessageBox::StandardButton, int>;

std::vector<Button> ButtonsOf(UINT type) {
  switch (type & kTypeMask) {
    case MB_OKCANCEL: return {{QMessageBox::Ok, IDOK}, {QMessageBox::Cancel, IDCANCEL}};
    case kAbortRetryIgnore:
      return {{QMessageBox::Abort, IDABORT}, {QMessageBox::Retry, IDRETRY}, {QMessageBox::Ignore, IDIGNORE}};
    case MB_YESNOCANCEL: return {{QMessageBox::Yes, IDYES}, {QMessageBox::No, IDNO}, {QMessageBox::Cancel, IDCANCEL}};
    case MB_YESNO: return {{QMessageBox::Yes, IDYES}, {QMessageBox::No, IDNO}};
    case kRetryCancel: return {{QMessageBox::Retry, IDRETRY}, {QMessageBox::Cancel, IDCANCEL}};
    default: return {{QMessageBox::Ok, IDOK}};
  }
}

QMessageBox::Icon IconOf(UINT type) {
  switch (type & kIconMask) {
    case MB_ICONSTOP: return QMessageBox::Critical;
    case MB_ICONQUESTION: return QMessageBox::Question;
    case MB_ICONEXCLAMATION: return QMessageBox::Warning;
    case MB_ICONINFORMATION: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
  }
}

// The button that closing the box stands for: Cancel, else No, else the first.
QMessageBox::StandardButton EscapeOf(const std::vector<Button>& buttons) {
  for (const QMessageBox::StandardButton wanted : {QMessageBox::Cancel, QMessageBox::No})
    for (const Button& b : buttons)
      if (b.first == wanted) return wanted;
  return buttons.front().first;
}

// The answer for a button of the box; a box closed without one counts as its escape.
int AnswerOf(const std::vector<Button>& buttons, QMessageBox::StandardButton pressed) {
  if (pressed == QMessageBox::NoButton) pressed = EscapeOf(buttons);
  for (const Button& b : buttons)
    if (b.first == pressed) return b.second;
  return IDOK;
}

int Unattended(const MessageRequest& request) {
  std::fprintf(stderr, "vantrel1 message %u: %s\n", request.id, request.text.ToUtf8().c_str());
  return AnswerOf(ButtonsOf(request.type), QMessageBox::NoButton);
}

}  // namespace

int CQtMessageSink::Show(const MessageRequest& request) {
  if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return Unattended(request);
  const std::vector<Button> buttons = ButtonsOf(request.type);
  QMessageBox box(IconOf(request.type), QGuiApplication::applicationDisplayName(),
                  QString::fromUtf16(request.text.data(), static_cast<qsizetype>(request.text.size())),
                  QMessageBox::NoButton, m_pParent);
  for (const Button& b : buttons) box.addButton(b.first);
  const std::size_t defaultIndex = (request.type & kDefaultMask) >> 8;
  if (defaultIndex < buttons.size()) box.setDefaultButton(buttons[defaultIndex].first);
  box.setEscapeButton(EscapeOf(buttons));
  box.exec();
  return AnswerOf(buttons, box.clickedButton() ? box.standardButton(box.clickedButton()) : QMessageBox::NoButton);
}
