#include "dialogs/WindowOps.h"

#include <algorithm>

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QWidget>

#include "dialogs/QtText.h"

namespace {

using vantrel1::FromQString;
using vantrel1::ToQString;

QRect OuterRectOnScreen(const QWidget& widget) {
  if (widget.isWindow()) return widget.frameGeometry();
  return QRect(widget.mapToGlobal(QPoint(0, 0)), widget.size());
}

}  // namespace

HWND HwndFromWidget(QWidget* widget) { return reinterpret_cast<HWND>(widget); }

QWidget* WidgetFromHwnd(HWND window) {
  if (window == nullptr) return nullptr;
  // Compared, never cast: a stale handle must not be followed into freed memory. A new
  // widget at a freed one's address takes over its handle, as reused handles do.
  const QWidgetList widgets = QApplication::allWidgets();
  const auto found = std::find_if(widgets.begin(), widgets.end(),
                                  [window](QWidget* widget) { return HwndFromWidget(widget) == window; });
  return found == widgets.end() ? nullptr : *found;
}

QWidget* WidgetFromWnd(const CWnd* window) { return window ? WidgetFromHwnd(window->GetSafeHwnd()) : nullptr; }

BOOL GetWindowRect(HWND window, LPRECT rect) {
  if (rect == nullptr) return FALSE;
  const QWidget* widget = WidgetFromHwnd(window);
  if (widget == nullptr) {
    *rect = RECT{0, 0, 0, 0};
    return FALSE;
  }
  const QRect r = OuterRectOnScreen(*widget);
  *rect = RECT{r.left(), r.top(), r.left() + r.width(), r.top() + r.height()};
  return TRUE;
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) {
  QWidget* widget = WidgetFromHwnd(window);
  if (widget == nullptr) return FALSE;
  // A window's position is that of its frame, in Qt as in the framework; its size is the
  // client's, so the frame's extra is taken off.
  const QSize extra = widget->isWindow() ? widget->frameGeometry().size() - widget->size() : QSize(0, 0);
  widget->move(x, y);
  widget->resize(std::max(0, width - extra.width()), std::max(0, height - extra.height()));
  if (repaint) widget->update();
  return TRUE;
}

BOOL OffsetWindow(HWND window, int dx, int dy, BOOL repaint) {
  QWidget* widget = WidgetFromHwnd(window);
  if (widget == nullptr) return FALSE;
  widget->move(widget->pos() + QPoint(dx, dy));
  if (repaint) widget->update();
  return TRUE;
}

namespace {

QWidget* DlgItem(HWND dialog, int id) {
  const QWidget* widget = WidgetFromHwnd(dialog);
  return widget ? widget->findChild<QWidget*>(QString::number(id)) : nullptr;
}

}  // namespace

HWND GetDlgItem(HWND dialog, int id) { return HwndFromWidget(DlgItem(dialog, id)); }

BOOL SetDlgItemText(HWND dialog, int id, const CStdStrW& text) {
  QWidget* item = DlgItem(dialog, id);
  if (auto* label = qobject_cast<QLabel*>(item)) label->setText(ToQString(text));
  else if (auto* button = qobject_cast<QAbstractButton*>(item)) button->setText(ToQString(text));
  else if (auto* edit = qobject_cast<QLineEdit*>(item)) edit->setText(ToQString(text));
  else if (auto* group = qobject_cast<QGroupBox*>(item)) group->setTitle(ToQString(text));
  else return FALSE;
  return TRUE;
}

CStdStrW GetDlgItemText(HWND dialog, int id) {
  const QWidget* item = DlgItem(dialog, id);
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
