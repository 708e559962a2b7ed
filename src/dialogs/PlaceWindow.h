#pragma once
// PlaceWindow: puts a window diagonally beside another one, right of it and below it by
// preference, and keeps it on the screen.
#include "dialogs/Wnd.h"

// Nothing happens when either window is null.
VANTREL1_QT_EXPORT void PlaceWindow(CWnd* window, const CWnd* reference);
