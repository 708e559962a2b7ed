#pragma once
// Visibility and enable state of windows on Qt widgets, by handle (dialogs/WindowOps.h).
// A handle that names no live widget is left alone: the calls return FALSE.
#include "platform/Types.h"

constexpr int SW_HIDE = 0;
constexpr int SW_SHOW = 5;

// Shows (any command but SW_HIDE) or hides the window; TRUE when it was visible before.
VANTREL1_QT_EXPORT BOOL ShowWindow(HWND window, int command);
// Enables or disables the window; TRUE when it was disabled before.
VANTREL1_QT_EXPORT BOOL EnableWindow(HWND window, BOOL enable);
// Whether the window itself is enabled, whatever its parents' state.
VANTREL1_QT_EXPORT BOOL IsWindowEnabled(HWND window);
// Whether the window itself is not hidden (its parents need not be shown yet).
VANTREL1_QT_EXPORT BOOL IsWindowVisible(HWND window);
