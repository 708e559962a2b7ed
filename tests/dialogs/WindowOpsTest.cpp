#include "dialogs/WindowOps.h"

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include <array>
#include <memory>

#include "dialogs/DialogTestSupport.h"
#include "dialogs/QtText.h"

namespace {

using vantrel1::test::Application;

using Edges = std::array<LONG, 4>;  // left, top, right, bottom

Edges RectOf(HWND window, BOOL* ok = nullptr) {
  RECT r{1, 2, 3, 4};
  const BOOL result = GetWindowRect(window, &r);
  if (ok != nullptr) *ok = result;
  return {r.left, r.top, r.right, r.bottom};
}

TEST(WindowHandles, NameAWidgetOnlyWhileItLives) {
  Application();
  auto widget = std::make_unique<QWidget>();
  const HWND handle = HwndFromWidget(widget.get());
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(WidgetFromHwnd(handle), widget.get());
  CWnd wnd;
  wnd.Attach(handle);
  EXPECT_EQ(WidgetFromWnd(&wnd), widget.get());

  widget.reset();
  EXPECT_EQ(WidgetFromHwnd(handle), nullptr);
  EXPECT_EQ(WidgetFromWnd(&wnd), nullptr);
  // A handle that never was a widget, and no handle at all.
  int notAWidget = 0;
  EXPECT_EQ(WidgetFromHwnd(reinterpret_cast<HWND>(&notAWidget)), nullptr);
  EXPECT_EQ(HwndFromWidget(nullptr), nullptr);
  EXPECT_EQ(WidgetFromHwnd(nullptr), nullptr);
  CWnd none;
  EXPECT_EQ(WidgetFromWnd(&none), nullptr);
  EXPECT_EQ(WidgetFromWnd(nullptr), nullptr);
}

TEST(WindowGeometry, MovesByOuterRectangleAndOffsetsKeepingTheSize) {
  Application();
  QWidget window;
  window.setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
  window.show();
  const HWND handle = HwndFromWidget(&window);
  EXPECT_EQ(MoveWindow(handle, 30, 40, 200, 100, TRUE), TRUE);
  EXPECT_EQ(RectOf(handle), (Edges{30, 40, 230, 140}));
  EXPECT_EQ(OffsetWindow(handle, 5, -10, FALSE), TRUE);
  EXPECT_EQ(RectOf(handle), (Edges{35, 30, 235, 130}));
  // A size below nothing is no size.
  EXPECT_EQ(MoveWindow(handle, 0, 0, -5, 10, TRUE), TRUE);
  EXPECT_EQ(window.size(), QSize(0, 10));
  EXPECT_EQ(GetWindowRect(handle, nullptr), FALSE);
}

TEST(WindowGeometry, AWindowThatIsGoneHasAnEmptyRectangleAndDoesNotMove) {
  Application();
  HWND gone = nullptr;
  {
    QWidget window;
    gone = HwndFromWidget(&window);
  }
  for (HWND handle : {gone, static_cast<HWND>(nullptr)}) {
    BOOL ok = TRUE;
    EXPECT_EQ(RectOf(handle, &ok), (Edges{0, 0, 0, 0}));
    EXPECT_EQ(ok, FALSE);
    EXPECT_EQ(MoveWindow(handle, 1, 2, 3, 4, TRUE), FALSE);
    EXPECT_EQ(OffsetWindow(handle, 1, 2, TRUE), FALSE);
  }
}

TEST(DialogItems, TextOfLabelsButtonsEditsAndGroupsByResourceId) {
  Application();
  QWidget dialog;
  const auto named = [](QWidget* item, int id) { item->setObjectName(QString::number(id)); };
  named(new QLabel(&dialog), 101);
  auto* button = new QPushButton(&dialog);
  named(button, 102);
  named(new QLineEdit(&dialog), 103);
  auto* group = new QGroupBox(&dialog);
  named(group, 104);
  // Found at any depth, as controls inside a group are.
  named(new QLineEdit(group), 105);
  named(new QWidget(&dialog), 106);
  const HWND handle = HwndFromWidget(&dialog);

  for (int id : {101, 102, 103, 104, 105}) {
    const CStdStrW text = u"Zameni sve " + CStdStrW(vantrel1::FromQString(QString::number(id)));
    EXPECT_EQ(SetDlgItemText(handle, id, text), TRUE) << id;
    EXPECT_EQ(GetDlgItemText(handle, id), text) << id;
  }
  EXPECT_EQ(button->text(), QString("Zameni sve 102"));
  EXPECT_EQ(group->title(), QString("Zameni sve 104"));
  EXPECT_EQ(GetDlgItem(handle, 102), HwndFromWidget(button));
  // A control that shows no text, and an id no control has.
  EXPECT_EQ(SetDlgItemText(handle, 106, u"x"), FALSE);
  EXPECT_EQ(GetDlgItemText(handle, 106), CStdStrW());
  EXPECT_EQ(SetDlgItemText(handle, 999, u"x"), FALSE);
  EXPECT_EQ(GetDlgItemText(handle, 999), CStdStrW());
  EXPECT_EQ(GetDlgItem(handle, 999), nullptr);
}

TEST(DialogItems, ADialogThatIsGoneHasNone) {
  Application();
  HWND gone = nullptr;
  {
    QWidget dialog;
    (new QLabel("Preskoči", &dialog))->setObjectName("101");
    gone = HwndFromWidget(&dialog);
    ASSERT_EQ(GetDlgItemText(gone, 101), CStdStrW(u"Preskoči"));
  }
  EXPECT_EQ(GetDlgItem(gone, 101), nullptr);
  EXPECT_EQ(GetDlgItemText(gone, 101), CStdStrW());
  EXPECT_EQ(SetDlgItemText(gone, 101, u"x"), FALSE);
}

}  // namespace
