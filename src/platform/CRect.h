#pragma once
// CRect: the framework's integer rectangle, a RECT with helpers. It keeps the framework's
// meaning (Height is bottom − top, empty means no positive area); in the drawing code,
// whose y axis points up, a rectangle's top is the larger y, so such a rectangle has a
// negative Height() here. The library's own code reads the four fields directly.
#include "platform/Types.h"

class CRect : public RECT {
 public:
  CRect() : RECT{0, 0, 0, 0} {}
  CRect(LONG l, LONG t, LONG r, LONG b) : RECT{l, t, r, b} {}
  CRect(const RECT& rc) : RECT(rc) {}

  LONG Width() const { return right - left; }
  LONG Height() const { return bottom - top; }

  void SetRect(LONG l, LONG t, LONG r, LONG b) {
    left = l;
    top = t;
    right = r;
    bottom = b;
  }
  void SetRectEmpty() { SetRect(0, 0, 0, 0); }
  // As in the framework: no positive width or no positive height.
  bool IsRectEmpty() const { return right <= left || bottom <= top; }
  bool IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
  bool PtInRect(POINT p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }

  void OffsetRect(LONG dx, LONG dy) {
    left += dx;
    right += dx;
    top += dy;
    bottom += dy;
  }
  void InflateRect(LONG dx, LONG dy) {
    left -= dx;
    right += dx;
    top -= dy;
    bottom += dy;
  }
  void NormalizeRect() {
    if (left > right) Swap(left, right);
    if (top > bottom) Swap(top, bottom);
  }

  bool operator==(const RECT& rc) const {
    return left == rc.left && top == rc.top && right == rc.right && bottom == rc.bottom;
  }
  bool operator!=(const RECT& rc) const { return !(*this == rc); }

  operator RECT*() { return this; }
  operator const RECT*() const { return this; }

 private:
  static void Swap(LONG& a, LONG& b) {
    const LONG t = a;
    a = b;
    b = t;
  }
};
