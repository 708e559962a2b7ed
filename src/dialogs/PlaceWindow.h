#pragma once
// PlaceWindow: puts a window diagonally beside another one, right of it and below it by
// preference, and keeps it on the screen.
#include "platform/Wnd.h"

// Nothing happens when either is null or has no live window.
VANTREL1_QT_EXPORT void PlaceWindow(CWnd* window, const CWnd* reference);
