#pragma once
// CWnd: a window of the framework, here a handle on a Qt widget. An HWND is the widget's
// address, so code written against handles (owners of dialogs and message boxes) passes
// widgets through unchanged. A CWnd does not own its widget and reads as no window once
// the widget is gone.
//
// Rectangles are in pixels of the virtual desktop, y growing downwards, as on screen.
#include <QPointer>
#include <QWidget>

#include "platform/CRect.h"
#include "platform/StdStr.h"
#include "platform/Types.h"

VANTREL1_QT_EXPORT HWND HwndFromWidget(QWidget* widget);
VANTREL1_QT_EXPORT QWidget* WidgetFromHwnd(HWND window);

class VANTREL1_QT_EXPORT CWnd {
 public:
  CWnd() = default;
  explicit CWnd(QWidget* widget) : m_pWidget(widget) {}
  virtual ~CWnd();
  CWnd(const CWnd&) = default;
  CWnd& operator=(const CWnd&) = default;

  QWidget* GetWidget() const { return m_pWidget.data(); }
  HWND GetSafeHwnd() const { return HwndFromWidget(GetWidget()); }

  // The window's outer rectangle (frame included) on screen; empty without a window.
  void GetWindowRect(LPRECT rect) const;
  // Places the window at `rect`: screen coordinates for a top-level window, the parent's
  // coordinates for a child, as the framework does.
  void MoveWindow(const RECT& rect, BOOL repaint = TRUE);
  // Shifts the window by (dx, dy) pixels, keeping its size.
  void OffsetWindow(int dx, int dy, BOOL repaint = TRUE);

  // The child control whose resource id is `id` (its object name), or null.
  QWidget* GetDlgItem(int id) const;
  void SetDlgItemText(int id, const CStdStrW& text);
  CStdStrW GetDlgItemText(int id) const;

 protected:
  void Attach(QWidget* widget) { m_pWidget = widget; }

 private:
  QPointer<QWidget> m_pWidget;
};

// The metrics PlaceWindow needs: the primary screen's size in pixels.
constexpr int SM_CXSCREEN = 0;
constexpr int SM_CYSCREEN = 1;
// 0 for another index or when there is no screen.
VANTREL1_QT_EXPORT int GetSystemMetrics(int index);
