#include "dialogs/Wnd.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>

#include "dialogs/QtText.h"

HWND HwndFromWidget(QWidget* widget) { return reinterpret_cast<HWND>(widget); }

QWidget* WidgetFromHwnd(HWND window) { return reinterpret_cast<QWidget*>(window); }

CWnd::~CWnd() = default;

namespace {

using vantrel1::FromQString;
using vantrel1::ToQString;

QRect OuterRectOnScreen(const QWidget& widget) {
  if (widget.isWindow()) return widget.frameGeometry();
  return QRect(widget.mapToGlobal(QPoint(0, 0)), widget.size());
}

}  // namespace

void CWnd::GetWindowRect(LPRECT rect) const {
  if (rect == nullptr) return;
  const QWidget* widget = GetWidget();
  const QRect r = widget ? OuterRectOnScreen(*widget) : QRect();
  *rect = widget ? RECT{r.left(), r.top(), r.left() + r.width(), r.top() + r.height()} : RECT{0, 0, 0, 0};
}

void CWnd::MoveWindow(const RECT& rect, BOOL repaint) {
  QWidget* widget = GetWidget();
  if (widget == nullptr) return;
  // A window's position is that of its frame, in Qt as in the framework; its size is the
  // client's, so the frame's extra is taken off.
  const QSize extra = widget->isWindow() ? widget->frameGeometry().size() - widget->size() : QSize(0, 0);
  widget->move(rect.left, rect.top);
  widget->resize(std::max(0, static_cast<int>(rect.right - rect.left) - extra.width()),
                 std::max(0, static_cast<int>(rect.bottom - rect.top) - extra.height()));
  if (repaint) widget->update();
}

void CWnd::OffsetWindow(int dx, int dy, BOOL repaint) {
  QWidget* widget = GetWidget();
  if (widget == nullptr) return;
  widget->move(widget->pos() + QPoint(dx, dy));
  if (repaint) widget->update();
}

QWidget* CWnd::GetDlgItem(int id) const {
  const QWidget* widget = GetWidget();
  return widget ? widget->findChild<QWidget*>(QString::number(id)) : nullptr;
}

void CWnd::SetDlgItemText(int id, const CStdStrW& text) {
  QWidget* item = GetDlgItem(id);
  if (auto* label = qobject_cast<QLabel*>(item)) label->setText(ToQString(text));
  else if (auto* button = qobject_cast<QAbstractButton*>(item)) button->setText(ToQString(text));
  else if (auto* edit = qobject_cast<QLineEdit*>(item)) edit->setText(ToQString(text));
  else if (auto* group = qobject_cast<QGroupBox*>(item)) group->setTitle(ToQString(text));
}

CStdStrW CWnd::GetDlgItemText(int id) const {
  const QWidget* item = GetDlgItem(id);
  if (auto* label = qobject_cast<const QLabel*>(item)) return FromQString(label->text());
  if (auto* button = qobject_cast<const QAbstractButton*>(item)) return FromQString(button->text());
  if (auto* edit = qobject_cast<const QLineEdit*>(item)) return FromQString(edit->text());
  if (auto* group = qobject_cast<const QGroupBox*>(item)) return FromQString(group->title());
  return CStdStrW();
}

int GetSystemMetrics(int index) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return 0;
  switch (index) {
    case SM_CXSCREEN: return screen->geometry().width();
    case SM_CYSCREEN: return screen->geometry().height();
    default: return 0;
  }
}
