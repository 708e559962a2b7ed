#include "dialogs/PlaceWindow.h"

#include "dialogs/WindowOps.h"
#include "platform/CRect.h"

namespace {

// The shift along one axis that puts the span [low, high) just past the reference's far
// edge, else just before its near edge, else at the screen's start.
LONG Shift(LONG low, LONG high, LONG refLow, LONG refHigh, LONG screen) {
  LONG shift = refHigh - low;
  if (high + shift > screen) shift = refLow - high;
  if (low + shift < 0) shift = -low;
  return shift;
}

}  // namespace

void PlaceWindow(CWnd* window, const CWnd* reference) {
  if (window == nullptr || reference == nullptr) return;
  CRect rect;
  CRect refRect;
  if (!GetWindowRect(window->GetSafeHwnd(), &rect) || !GetWindowRect(reference->GetSafeHwnd(), &refRect)) return;
  const LONG dx = Shift(rect.left, rect.right, refRect.left, refRect.right, GetSystemMetrics(SM_CXSCREEN));
  const LONG dy = Shift(rect.top, rect.bottom, refRect.top, refRect.bottom, GetSystemMetrics(SM_CYSCREEN));
  OffsetWindow(window->GetSafeHwnd(), dx, dy, TRUE);
}
