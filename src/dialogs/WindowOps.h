#pragma once
// Windows of the framework on Qt widgets. A window handle (HWND) is the address of its
// widget, so code written against handles (owners of dialogs and message boxes, a CWnd's
// m_hWnd) passes widgets through unchanged. A handle is turned back into a widget only
// while a live widget has that address: a handle of a destroyed widget, or a value that
// never was a widget, names no window, and every operation on it does nothing.
//
// Rectangles are in pixels of the virtual desktop, y growing downwards, as on screen.
#include "platform/StdStr.h"
#include "platform/Types.h"
#include "platform/Wnd.h"

class QWidget;

// Null for null.
VANTREL1_QT_EXPORT HWND HwndFromWidget(QWidget* widget);
// The live widget whose handle is `window`, else null.
VANTREL1_QT_EXPORT QWidget* WidgetFromHwnd(HWND window);
// The live widget of a window object, else null (also for a null object).
VANTREL1_QT_EXPORT QWidget* WidgetFromWnd(const CWnd* window);

// The window's outer rectangle (frame included) on screen. Without a window: FALSE, and
// *rect is emptied.
VANTREL1_QT_EXPORT BOOL GetWindowRect(HWND window, LPRECT rect);
// Places the window at (x, y) with the given outer size: screen coordinates for a
// top-level window, the parent's for a child, as the framework does.
VANTREL1_QT_EXPORT BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
// Shifts the window by (dx, dy) pixels, keeping its size; the same shift on screen for a
// top-level window and a child.
VANTREL1_QT_EXPORT BOOL OffsetWindow(HWND window, int dx, int dy, BOOL repaint);

// The child control whose resource id is `id` (its object name), else null.
VANTREL1_QT_EXPORT HWND GetDlgItem(HWND dialog, int id);
// The text of a label, button, edit field or group box. Setting fails (FALSE) for a
// missing item or one that shows no text; getting gives an empty text then.
VANTREL1_QT_EXPORT BOOL SetDlgItemText(HWND dialog, int id, const CStdStrW& text);
VANTREL1_QT_EXPORT CStdStrW GetDlgItemText(HWND dialog, int id);

// The metrics window placement needs: the primary screen's size in pixels.
constexpr int SM_CXSCREEN = 0;
constexpr int SM_CYSCREEN = 1;
// 0 for another index or when there is no screen.
VANTREL1_QT_EXPORT int GetSystemMetrics(int index);
