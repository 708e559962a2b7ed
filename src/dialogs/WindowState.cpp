#include "dialogs/WindowState.h"

#include <QWidget>

#include "dialogs/WindowOps.h"

BOOL ShowWindow(HWND window, int command) {
  QWidget* widget = WidgetFromHwnd(window);
  if (widget == nullptr) return FALSE;
  const BOOL wasVisible = widget->isHidden() ? FALSE : TRUE;
  widget->setVisible(command != SW_HIDE);
  return wasVisible;
}

BOOL EnableWindow(HWND window, BOOL enable) {
  QWidget* widget = WidgetFromHwnd(window);
  if (widget == nullptr) return FALSE;
  const BOOL wasDisabled = widget->testAttribute(Qt::WA_Disabled) ? TRUE : FALSE;
  widget->setEnabled(enable != FALSE);
  return wasDisabled;
}

BOOL IsWindowEnabled(HWND window) {
  QWidget* widget = WidgetFromHwnd(window);
  return widget != nullptr && !widget->testAttribute(Qt::WA_Disabled) ? TRUE : FALSE;
}

BOOL IsWindowVisible(HWND window) {
  QWidget* widget = WidgetFromHwnd(window);
  return widget != nullptr && !widget->isHidden() ? TRUE : FALSE;
}
