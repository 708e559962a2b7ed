#include "dialogs/PropertyPage.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QPushButton>
#include <QTest>

#include "dialogs/DataExchange.h"
#include "dialogs/DialogTestSupport.h"
#include "dialogs/WindowOps.h"
#include "dialogs/WindowState.h"

namespace {

using vantrel1::test::Application;
using vantrel1::test::WhileModal;

// A page whose leaving can be refused, with a check box and an OK button.
class CProbePage : public CPropertyPage {
 public:
  CProbePage() : CPropertyPage(30000) {
    auto* check = new QCheckBox(this);
    check->setObjectName(QStringLiteral("30001"));
    auto* ok = new QPushButton(this);
    ok->setObjectName(QStringLiteral("1"));
    ConnectClicked(30001, [this] { OnChecked(); });
    ConnectClicked(IDOK, [this] { OnOkButton(); });
    m_bConnectedMissing = ConnectClicked(30002, [this] { OnChecked(); });
  }
  BOOL OnSetActive() override {
    ++m_nActivated;
    return CPropertyPage::OnSetActive();
  }
  BOOL OnKillActive() override {
    ++m_nLeft;
    return m_bMayLeave;
  }
  void OnChecked() { ++m_nChecked; }
  void OnOkButton() { OnOK(); }

  int m_nActivated = 0;
  int m_nLeft = 0;
  int m_nChecked = 0;
  BOOL m_bMayLeave = TRUE;
  BOOL m_bConnectedMissing = TRUE;

  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CProbePage, CPropertyPage)
ON_BN_CLICKED(30001, &CProbePage::OnChecked)
ON_BN_CLICKED(IDOK, &CProbePage::OnOkButton)
END_MESSAGE_MAP()

class PropertyPage : public ::testing::Test {
 protected:
  void SetUp() override { Application(); }
};

TEST_F(PropertyPage, AloneItIsActivatedAndClosesWithOkOnlyWhenItMayBeLeft) {
  CProbePage page;
  page.m_bMayLeave = FALSE;
  bool stayed = false;
  const INT_PTR result = WhileModal(
      [&](QWidget* shown) {
        QTest::mouseClick(page.findChild<QPushButton*>(QStringLiteral("1")), Qt::LeftButton);
        stayed = shown->isVisible();
        page.m_bMayLeave = TRUE;
        QTest::mouseClick(page.findChild<QPushButton*>(QStringLiteral("1")), Qt::LeftButton);
      },
      [&] { return page.DoModal(); });
  EXPECT_TRUE(stayed);
  EXPECT_EQ(result, IDOK);
  EXPECT_EQ(page.m_nActivated, 1);
  EXPECT_EQ(page.m_nLeft, 2);
}

TEST_F(PropertyPage, InASheetOkAndCancelAreTheSheets) {
  QWidget sheet;
  CProbePage page;
  page.Embed(&sheet);
  EXPECT_TRUE(page.IsEmbedded());
  EXPECT_EQ(page.parentWidget(), &sheet);
  sheet.show();
  page.accept();
  page.reject();
  EXPECT_TRUE(page.isVisible());
  EXPECT_EQ(page.m_nLeft, 0);

  QTest::mouseClick(page.findChild<QCheckBox*>(QStringLiteral("30001")), Qt::LeftButton);
  EXPECT_EQ(page.m_nChecked, 1);
  EXPECT_EQ(page.m_bConnectedMissing, FALSE);
}

TEST_F(PropertyPage, TheMessageMapNamesEachButtonsHandlerAndEndsAtItsBase) {
  CProbePage page;
  const AFX_MSGMAP_ENTRY* checked = page.FindClickedEntry(30001);
  ASSERT_NE(checked, nullptr);
  EXPECT_EQ(checked->nMessage, WM_COMMAND);
  EXPECT_EQ(checked->nCode, BN_CLICKED);
  EXPECT_EQ(checked->pfn, static_cast<void (CCmdTarget::*)()>(&CProbePage::OnChecked));
  EXPECT_EQ(page.FindClickedEntry(30002), nullptr);
  EXPECT_EQ(page.FindClickedEntry(-1), nullptr);
  int maps = 0;
  for (const AFX_MSGMAP* map = page.GetMessageMap(); map != nullptr;
       map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr) {
    ++maps;
  }
  EXPECT_GE(maps, 3);  // the page's, CPropertyPage's, the command target's
}

TEST_F(PropertyPage, WindowStateCallsLeaveHandlesOfNoWindowAlone) {
  QWidget window;
  const HWND hwnd = HwndFromWidget(&window);
  EXPECT_EQ(EnableWindow(hwnd, FALSE), FALSE);  // was enabled
  EXPECT_EQ(IsWindowEnabled(hwnd), FALSE);
  EXPECT_EQ(EnableWindow(hwnd, TRUE), TRUE);  // was disabled
  EXPECT_EQ(ShowWindow(hwnd, SW_SHOW), FALSE);
  EXPECT_EQ(IsWindowVisible(hwnd), TRUE);
  EXPECT_EQ(ShowWindow(hwnd, SW_HIDE), TRUE);
  EXPECT_EQ(IsWindowVisible(hwnd), FALSE);

  HWND gone = nullptr;
  {
    QWidget vanished;
    gone = HwndFromWidget(&vanished);
  }
  for (const HWND none : {HWND{nullptr}, gone}) {
    EXPECT_EQ(ShowWindow(none, SW_SHOW), FALSE);
    EXPECT_EQ(EnableWindow(none, TRUE), FALSE);
    EXPECT_EQ(IsWindowEnabled(none), FALSE);
    EXPECT_EQ(IsWindowVisible(none), FALSE);
    EXPECT_EQ(GetEditModify(none, 1), FALSE);
  }
}

TEST_F(PropertyPage, ChecksExchangeTheirThreeStates) {
  CProbePage page;
  for (const int value : {0, 1, 2}) {
    int field = value;
    CDataExchange load(&page, FALSE);
    DDX_Check(&load, 30001, field);
    field = -7;
    CDataExchange save(&page, TRUE);
    DDX_Check(&save, 30001, field);
    EXPECT_EQ(field, value);
  }
  int untouched = 5;
  CDataExchange save(&page, TRUE);
  DDX_Check(&save, 39999, untouched);  // no such control
  DDX_Check(nullptr, 30001, untouched);
  EXPECT_EQ(untouched, 5);
}

}  // namespace
