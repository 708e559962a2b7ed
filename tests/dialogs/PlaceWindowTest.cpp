#include "dialogs/PlaceWindow.h"

#include <gtest/gtest.h>

#include <QWidget>

#include <array>

#include "dialogs/DialogTestSupport.h"
#include "dialogs/WindowOps.h"

namespace {

using vantrel1::test::Application;

// A shown top-level window whose outer rectangle on screen is `rect`.
class Window {
 public:
  explicit Window(const QRect& rect) {
    m_widget.setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    m_widget.setGeometry(rect);
    m_widget.show();
    m_wnd.Attach(HwndFromWidget(&m_widget));
  }
  QWidget& widget() { return m_widget; }
  CWnd& wnd() { return m_wnd; }
  RECT Rect() {
    RECT r{};
    GetWindowRect(m_wnd.GetSafeHwnd(), &r);
    return r;
  }

 private:
  [[maybe_unused]] bool m_applicationRuns = Application() != nullptr;  // before the widget
  QWidget m_widget;
  CWnd m_wnd;
};

using Edges = std::array<LONG, 4>;  // left, top, right, bottom
Edges EdgesOf(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }

TEST(PlaceWindow, PutsTheWindowBesideTheReferenceRightAndBelowByPreferenceKeptOnTheScreen) {
  Application();
  const int w = GetSystemMetrics(SM_CXSCREEN);
  const int h = GetSystemMetrics(SM_CYSCREEN);
  ASSERT_GT(w, 400);
  ASSERT_GT(h, 300);
  const struct {
    const char* name;
    QRect reference;  // x, y, width, height
    QRect window;
    RECT placed;      // left, top, right, bottom
  } cases[] = {
      {"right and below", {100, 50, 200, 100}, {0, 0, 150, 80}, {300, 150, 450, 230}},
      {"the window's own position does not matter", {100, 50, 200, 100}, {w - 150, h - 80, 150, 80}, {300, 150, 450, 230}},
      {"ending exactly at the screen's edges", {100, 50, w - 250, h - 130}, {0, 0, 150, 80}, {w - 150, 50 + h - 130, w, h}},
      {"lower right corner: above and to the left", {w - 200, h - 100, 200, 100}, {10, 10, 150, 80},
       {w - 350, h - 180, w - 200, h - 100}},
      {"one pixel too far: before the reference", {100, 50, w - 249, h - 129}, {0, 0, 150, 80},
       {100 - 150, 50 - 80, 100, 50}},
      {"no room on either side: at the screen's start", {100, 50, w - 200, h - 100}, {300, 300, 150, 80},
       {0, 0, 150, 80}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Window reference(c.reference);
    Window window(c.window);
    PlaceWindow(&window.wnd(), &reference.wnd());
    const RECT placed = window.Rect();
    // Before the reference but off the screen is pulled back to 0 on that axis.
    RECT expected = c.placed;
    if (expected.left < 0) {
      expected.right -= expected.left;
      expected.left = 0;
    }
    if (expected.top < 0) {
      expected.bottom -= expected.top;
      expected.top = 0;
    }
    EXPECT_EQ(EdgesOf(placed), EdgesOf(expected));
  }
}

TEST(PlaceWindow, AChildMovesWithinItsParentByTheSameShift) {
  Window frame(QRect(50, 40, 300, 200));
  QWidget child(&frame.widget());
  child.setGeometry(10, 20, 40, 30);
  child.show();
  Window reference(QRect(0, 0, 100, 100));
  CWnd wnd;
  wnd.Attach(HwndFromWidget(&child));
  PlaceWindow(&wnd, &reference.wnd());
  // On screen the child was at (60, 60); it goes to (100, 100).
  EXPECT_EQ(child.geometry(), QRect(50, 60, 40, 30));
  RECT placed{};
  GetWindowRect(wnd.GetSafeHwnd(), &placed);
  EXPECT_EQ(EdgesOf(placed), (Edges{100, 100, 140, 130}));
}

TEST(PlaceWindow, DoesNothingWithoutBothWindows) {
  Window window(QRect(10, 20, 150, 80));
  Window reference(QRect(400, 300, 100, 100));
  CWnd none;
  CWnd vanished;
  {
    QWidget widget;
    widget.setGeometry(0, 0, 50, 50);
    vanished.Attach(HwndFromWidget(&widget));
  }
  PlaceWindow(&window.wnd(), nullptr);
  PlaceWindow(nullptr, &reference.wnd());
  PlaceWindow(&none, &reference.wnd());
  PlaceWindow(&window.wnd(), &none);
  PlaceWindow(&vanished, &reference.wnd());
  // A reference that is gone is not taken for one at the screen's origin.
  PlaceWindow(&window.wnd(), &vanished);
  EXPECT_EQ(EdgesOf(window.Rect()), (Edges{10, 20, 160, 100}));
}

}  // namespace
