#include "dialogs/CoordDlg.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <vector>

#include "dialogs/DialogTestSupport.h"
#include "dialogs/QtText.h"
#include "dialogs/WindowOps.h"
#include "dialogs/WindowState.h"
#include "help/VantrelHelp.h"
#include "platform/RecordingMessageSink.h"
#include "suite/RotateTranslateX.h"

namespace {

using vantrel1::FromQString;
using vantrel1::ToQString;
using vantrel1::test::Application;
using vantrel1::test::WhileModal;

constexpr DWORD kCentred = CRotateTranslateX::kCenterAllowed | CRotateTranslateX::kCenterOn;

CRotTransCoord Sample(DWORD flags = 0) {
  CRotTransCoord rt;
  rt.SetOriginX(1000.5);
  rt.SetOriginY(2000.25);
  rt.SetOriginZ(12.0);
  rt.SetAngleDegrees(30.0);
  rt.SetShiftX(10.0);
  rt.SetShiftY(-20.0);
  rt.SetShiftZ(3.0);
  rt.SetScaleX(0.5);
  rt.SetScaleY(2.0);
  rt.SetScaleZ(4.0);
  rt.SetFlags(flags);
  return rt;
}

QLineEdit* EditOf(CCoordDlg& dlg, int id) { return dlg.findChild<QLineEdit*>(QString::number(id)); }
QCheckBox* CheckOf(CCoordDlg& dlg, int id) { return dlg.findChild<QCheckBox*>(QString::number(id)); }
CStdStrW TextOf(CCoordDlg& dlg, int id) { return dlg.GetDlgItemText(id); }
bool Enabled(CCoordDlg& dlg, int id) { return IsWindowEnabled(GetDlgItem(dlg.GetSafeHwnd(), id)) != FALSE; }
bool Visible(CCoordDlg& dlg, int id) { return IsWindowVisible(GetDlgItem(dlg.GetSafeHwnd(), id)) != FALSE; }

void Type(CCoordDlg& dlg, int id, const char* text) {
  QLineEdit* edit = EditOf(dlg, id);
  ASSERT_NE(edit, nullptr) << id;
  edit->selectAll();
  QTest::keyClick(edit, Qt::Key_Backspace);
  QTest::keyClicks(edit, text);
}

// A page as a sheet holds it: embedded in a container, initialised, then driven through
// the activation calls a sheet makes.
struct EmbeddedPage {
  QWidget sheet;
  CCoordDlg page{0};
  CPropertyPage& AsPage() { return page; }
  EmbeddedPage() {
    Application();
    page.Embed(&sheet);
  }
};

class CoordDlg : public ::testing::Test {
 protected:
  void SetUp() override { Application(); }
};

TEST_F(CoordDlg, ReadsTheTransformationInDegreesWithTheScaleOnlyWhenOffered) {
  CCoordDlg dlg(1);
  dlg.Init(Sample(), 1);
  EXPECT_EQ(dlg.m_dOriginX, 1000.5);
  EXPECT_EQ(dlg.m_dOriginY, 2000.25);
  EXPECT_DOUBLE_EQ(dlg.m_dAngle, 30.0);
  EXPECT_EQ(dlg.m_dShiftX, 10.0);
  EXPECT_EQ(dlg.m_dShiftY, -20.0);
  EXPECT_EQ(dlg.m_dShiftZ, 3.0);
  EXPECT_EQ(dlg.m_dScaleX, 0.5);
  EXPECT_EQ(dlg.m_dScaleY, 2.0);
  EXPECT_EQ(dlg.m_dScaleZ, 4.0);
  EXPECT_EQ(dlg.m_dOriginZ, 12.0);
  EXPECT_EQ(dlg.m_bScale, 1);

  dlg.Init(Sample(), 0);
  EXPECT_EQ(dlg.m_bScale, 0);
  EXPECT_EQ(dlg.m_dScaleX, 1.0);
  EXPECT_EQ(dlg.m_dScaleY, 1.0);
  EXPECT_EQ(dlg.m_dScaleZ, 1.0);
  EXPECT_EQ(dlg.m_dOriginZ, 0.0);
  EXPECT_EQ(dlg.m_dShiftZ, 3.0);
}

TEST_F(CoordDlg, CentringIsOnOnlyWhenOfferedAndThenClearsAllThreeShifts) {
  const struct {
    DWORD flags;
    int allowed, centred;
    double shiftX, shiftZ;
  } cases[] = {
      {0x0, 0, 0, 10.0, 3.0},
      {0x1, 1, 0, 10.0, 3.0},
      {0x2, 0, 0, 10.0, 3.0},  // on, but not offered
      {0x3, 1, 1, 0.0, 0.0},
      {0xF3, 1, 1, 0.0, 0.0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.flags);
    CCoordDlg dlg(0);
    dlg.Init(Sample(c.flags), 1);
    EXPECT_EQ(dlg.m_bCenterAllowed, c.allowed);
    EXPECT_EQ(dlg.m_bCenterScreen, c.centred);
    EXPECT_EQ(dlg.m_dShiftX, c.shiftX);
    EXPECT_EQ(dlg.m_dShiftY, c.shiftX == 0.0 ? 0.0 : -20.0);
    EXPECT_EQ(dlg.m_dShiftZ, c.shiftZ);
  }
}

TEST_F(CoordDlg, WritesEveryFieldBackAndOnlyTheCentringBitOfTheFlags) {
  CCoordDlg dlg(1);
  dlg.Init(Sample(), 1);
  dlg.m_dAngle = 90.0;
  dlg.m_bCenterScreen = 1;
  CRotateTranslateX out;
  out.SetFlags(0x81);
  dlg.UpdateFromDlg(&out);
  EXPECT_EQ(out.GetOriginX(), 1000.5);
  EXPECT_EQ(out.GetOriginY(), 2000.25);
  EXPECT_EQ(out.GetOriginZ(), 12.0);
  EXPECT_EQ(out.GetAngle(), M_PI / 2);
  EXPECT_EQ(out.GetShiftX(), 10.0);
  EXPECT_EQ(out.GetShiftY(), -20.0);
  EXPECT_EQ(out.GetShiftZ(), 3.0);
  EXPECT_EQ(out.GetScaleX(), 0.5);
  EXPECT_EQ(out.GetScaleY(), 2.0);
  EXPECT_EQ(out.GetScaleZ(), 4.0);
  EXPECT_EQ(out.GetFlags(), 0x83u);

  for (const int notExactlyOne : {0, 2, -1}) {
    dlg.m_bCenterScreen = notExactlyOne;
    dlg.UpdateFromDlg(&out);
    EXPECT_EQ(out.GetFlags(), 0x81u) << notExactlyOne;
  }
  dlg.UpdateFromDlg(nullptr);  // nothing to write into
}

TEST_F(CoordDlg, WithoutScalingWritesUnitScalesAndAZeroOrigin) {
  CCoordDlg dlg(1);
  dlg.Init(Sample(), 0);
  CRotTransCoord out = Sample();
  dlg.UpdateFromDlg(&out);
  EXPECT_EQ(out.GetScaleX(), 1.0);
  EXPECT_EQ(out.GetScaleY(), 1.0);
  EXPECT_EQ(out.GetScaleZ(), 1.0);
  EXPECT_EQ(out.GetOriginZ(), 0.0);
}

TEST_F(CoordDlg, BindingATransformationWritesTheFieldsIntoItAtOnce) {
  CCoordDlg dlg(1);
  dlg.Init(Sample(kCentred), 1);
  CRotTransCoord bound;
  EXPECT_EQ(dlg.InitTranslation(&bound), 1);
  EXPECT_EQ(dlg.m_pRotTrans, &bound);
  EXPECT_EQ(bound.GetOriginX(), 1000.5);
  EXPECT_EQ(bound.GetShiftX(), 0.0);
  EXPECT_EQ(bound.GetFlags(), CRotateTranslateX::kCenterOn);
  EXPECT_EQ(dlg.InitTranslation(nullptr), 1);
  EXPECT_EQ(dlg.m_pRotTrans, nullptr);
}

TEST_F(CoordDlg, IsDisabledWhenNothingButTheOriginIsSet) {
  const struct {
    double CCoordDlg::*field;
    double value;
    int disabled;
  } cases[] = {
      {&CCoordDlg::m_dOriginX, 5.0, 1},  {&CCoordDlg::m_dOriginY, -5.0, 1}, {&CCoordDlg::m_dOriginZ, 7.0, 1},
      {&CCoordDlg::m_dAngle, 1e-300, 0}, {&CCoordDlg::m_dShiftX, 0.1, 0},   {&CCoordDlg::m_dShiftY, -0.1, 0},
      {&CCoordDlg::m_dShiftZ, 1.0, 0},   {&CCoordDlg::m_dScaleX, 1.0000000000000002, 0},
      {&CCoordDlg::m_dScaleY, 0.0, 0},   {&CCoordDlg::m_dScaleZ, 2.0, 0}, {&CCoordDlg::m_dAngle, -0.0, 1},
  };
  for (const auto& c : cases) {
    CCoordDlg dlg(1);
    EXPECT_EQ(dlg.IsDisabled(), 1);
    dlg.*c.field = c.value;
    EXPECT_EQ(dlg.IsDisabled(), c.disabled) << c.value;
  }
}

TEST_F(CoordDlg, ShowsItsTextsExactly) {
  CCoordDlg dlg(1);
  EXPECT_EQ(FromQString(dlg.windowTitle()), CStdStrW(u"Rotiraj/Prevedi/Skaliraj"));
  EXPECT_EQ(dlg.GetTemplateId(), 20201u);
  const struct {
    int id;
    const char16_t* text;
  } cases[] = {
      {20232, u"Onemogući  (bez podešavanja koordinata)"},
      {20231, u"Centar na ekranu"},
      {20221, u"Faktor razmera  (množilac)"},
      {20224, u"Skala Ks:"},
      {20225, u"Skala I:"},
      {20226, u"Skala Z:"},
      {20230, u"Z:"},
      {20222, u"NAPOMENA: Redosled operacije je Rotate  | Skala  | Smena"},
      {20223, u"NAPOMENA: Redosled operacije je Rotate  | Smena"},
      {IDOK, u"Ok"},
      {IDCANCEL, u"Otkaži"},
  };
  for (const auto& c : cases) EXPECT_EQ(TextOf(dlg, c.id), CStdStrW(c.text)) << c.id;

  // The texts without ids of their own.
  std::vector<CStdStrW> rest;
  for (QWidget* w : dlg.findChildren<QWidget*>()) {
    if (auto* label = qobject_cast<QLabel*>(w)) rest.push_back(FromQString(label->text()));
    if (auto* group = qobject_cast<QGroupBox*>(w)) rest.push_back(FromQString(group->title()));
  }
  for (const char16_t* text :
       {u"Rotacija", u"Ugao  (stepen):", u"NAPOMENA: Ugao se meri u stepenima u smeru suprotnom od kazaljke na satu",
        u"Poreklo", u"Izvor se koristi u operacijama rotacije i razmera", u"IKS:", u"I:",
        u"Shift  (dodati pomaci)", u"Pomak Ks:", u"Pomak I:", u"Pomak Z:"}) {
    EXPECT_NE(std::find(rest.begin(), rest.end(), CStdStrW(text)), rest.end()) << vantrel1::ToUtf8(text);
  }
}

TEST_F(CoordDlg, OffersOnlyWhatItsSettingAllows) {
  const int scaleOnly[] = {20221, 20222, 20224, 20225, 20226, 20218, 20219, 20220, 20230, 20227};
  for (const int standalone : {0, 1}) {
    for (const int scale : {0, 1}) {
      for (const DWORD flags : {DWORD{0}, DWORD{1}}) {
        SCOPED_TRACE(testing::Message() << standalone << scale << flags);
        EmbeddedPage host;
        CCoordDlg dlg(standalone);
        dlg.Init(Sample(flags), scale);
        if (!standalone) dlg.Embed(&host.sheet);
        static_cast<CDialog&>(dlg).OnInitDialog();
        EXPECT_EQ(Visible(dlg, IDOK), standalone == 1);
        EXPECT_EQ(Visible(dlg, IDCANCEL), standalone == 1);
        for (const int id : scaleOnly) EXPECT_EQ(Visible(dlg, id), scale == 1) << id;
        EXPECT_EQ(Visible(dlg, 20223), scale == 0);
        EXPECT_EQ(Visible(dlg, 20231), flags == 1);
        EXPECT_TRUE(Visible(dlg, 20215));
      }
    }
  }
}

TEST_F(CoordDlg, ShowsTheFieldsWithFifteenDigitsAndCentringWithClearedShifts) {
  EmbeddedPage host;
  host.page.Init(Sample(kCentred), 1);
  static_cast<CDialog&>(host.page).OnInitDialog();
  EXPECT_EQ(TextOf(host.page, 20212), CStdStrW(u"30"));  // 29.999999999999996 from radians
  EXPECT_EQ(TextOf(host.page, 20210), CStdStrW(u"1000.5"));
  EXPECT_EQ(TextOf(host.page, 20211), CStdStrW(u"2000.25"));
  EXPECT_EQ(TextOf(host.page, 20227), CStdStrW(u"12"));
  for (const int id : {20213, 20214, 20215}) EXPECT_EQ(TextOf(host.page, id), CStdStrW(u"0")) << id;
  EXPECT_EQ(TextOf(host.page, 20218), CStdStrW(u"0.5"));
  EXPECT_TRUE(CheckOf(host.page, 20231)->isChecked());
  EXPECT_FALSE(CheckOf(host.page, 20232)->isChecked());
  EXPECT_EQ(host.page.m_bDisable, 0);
  // The view gives the horizontal shifts; the Z shift stays the user's.
  EXPECT_FALSE(Enabled(host.page, 20213));
  EXPECT_FALSE(Enabled(host.page, 20214));
  EXPECT_TRUE(Enabled(host.page, 20215));
  EXPECT_TRUE(Enabled(host.page, 20212));
}

TEST_F(CoordDlg, DisablingClearsAndShowsTheValuesAndReenablingKeepsThem) {
  EmbeddedPage host;
  CCoordDlg& dlg = host.page;
  dlg.Init(Sample(CRotateTranslateX::kCenterAllowed), 1);
  static_cast<CDialog&>(dlg).OnInitDialog();
  const int all[] = {20212, 20210, 20211, 20227, 20213, 20214, 20215, 20218, 20219, 20220, 20231};
  for (const int id : all) EXPECT_TRUE(Enabled(dlg, id)) << id;

  QTest::mouseClick(CheckOf(dlg, 20232), Qt::LeftButton);
  EXPECT_EQ(dlg.m_bDisable, 1);
  EXPECT_EQ(dlg.m_dAngle, 0.0);
  EXPECT_EQ(dlg.m_dShiftX, 0.0);
  EXPECT_EQ(dlg.m_dScaleY, 1.0);
  EXPECT_EQ(dlg.m_dOriginX, 1000.5);
  EXPECT_EQ(dlg.m_dOriginZ, 12.0);
  EXPECT_EQ(TextOf(dlg, 20212), CStdStrW(u"0"));
  EXPECT_EQ(TextOf(dlg, 20214), CStdStrW(u"0"));
  EXPECT_EQ(TextOf(dlg, 20219), CStdStrW(u"1"));
  EXPECT_EQ(TextOf(dlg, 20210), CStdStrW(u"1000.5"));
  for (const int id : all) EXPECT_FALSE(Enabled(dlg, id)) << id;
  EXPECT_EQ(dlg.IsDisabled(), 1);

  QTest::mouseClick(CheckOf(dlg, 20232), Qt::LeftButton);
  EXPECT_EQ(dlg.m_bDisable, 0);
  EXPECT_EQ(dlg.m_dAngle, 0.0);
  EXPECT_EQ(dlg.m_dScaleX, 1.0);
  EXPECT_EQ(TextOf(dlg, 20212), CStdStrW(u"0"));
  for (const int id : all) EXPECT_TRUE(Enabled(dlg, id)) << id;
}

TEST_F(CoordDlg, AnIdentityTransformationOpensDisabled) {
  EmbeddedPage host;
  CRotTransCoord rt;
  rt.SetOriginX(55.0);
  host.page.Init(rt, 1);
  static_cast<CDialog&>(host.page).OnInitDialog();
  EXPECT_EQ(host.page.m_bDisable, 1);
  EXPECT_TRUE(CheckOf(host.page, 20232)->isChecked());
  EXPECT_FALSE(Enabled(host.page, 20210));
  EXPECT_EQ(TextOf(host.page, 20210), CStdStrW(u"55"));
}

TEST_F(CoordDlg, CentringOnTheScreenTakesTheHorizontalShiftsAwayWithoutRewritingTheFields) {
  EmbeddedPage host;
  CCoordDlg& dlg = host.page;
  dlg.Init(Sample(CRotateTranslateX::kCenterAllowed), 1);
  static_cast<CDialog&>(dlg).OnInitDialog();
  Type(dlg, 20213, "77");
  QTest::mouseClick(CheckOf(dlg, 20231), Qt::LeftButton);
  EXPECT_EQ(dlg.m_bCenterScreen, 1);
  EXPECT_EQ(dlg.m_dShiftX, 77.0);
  EXPECT_FALSE(Enabled(dlg, 20213));
  EXPECT_FALSE(Enabled(dlg, 20214));
  EXPECT_TRUE(Enabled(dlg, 20215));
  QTest::mouseClick(CheckOf(dlg, 20231), Qt::LeftButton);
  EXPECT_EQ(dlg.m_bCenterScreen, 0);
  EXPECT_TRUE(Enabled(dlg, 20213));

  // A field that does not read leaves the enable state as it was.
  Type(dlg, 20211, "x");
  CRecordingMessageSink sink;
  QTest::mouseClick(CheckOf(dlg, 20231), Qt::LeftButton);
  EXPECT_EQ(sink.Requests().size(), 1u);
  EXPECT_EQ(dlg.m_bCenterScreen, 0);
  EXPECT_TRUE(Enabled(dlg, 20213));
}

TEST_F(CoordDlg, LeavingThePageValidatesTheAngleRangeAndUpdatesTheBoundTransformation) {
  const struct {
    const char* typed;
    BOOL leaves;
    const char16_t* message;
  } cases[] = {
      {"360", TRUE, nullptr},
      {"-360", TRUE, nullptr},
      {"  12.5 ", TRUE, nullptr},
      {"1e2", TRUE, nullptr},
      {"-.5", TRUE, nullptr},
      {"360.5", FALSE, u"Unesite broj između -360 i 360."},
      {"-360.000001", FALSE, u"Unesite broj između -360 i 360."},
      {"1e3", FALSE, u"Unesite broj između -360 i 360."},
      {"", FALSE, u"Unesite broj."},
      {"abc", FALSE, u"Unesite broj."},
      {"1,5", FALSE, u"Unesite broj."},
      {"12x", FALSE, u"Unesite broj."},
      {".", FALSE, u"Unesite broj."},
      {"1e", FALSE, u"Unesite broj."},
      {"0x10", FALSE, u"Unesite broj."},
      {"nan", FALSE, u"Unesite broj."},
      {"inf", FALSE, u"Unesite broj."},
      {"1e999", FALSE, u"Unesite broj."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.typed);
    EmbeddedPage host;
    host.page.Init(Sample(), 1);
    static_cast<CDialog&>(host.page).OnInitDialog();
    CRotTransCoord bound;
    host.page.InitTranslation(&bound);
    bound.SetAngleDegrees(7.0);
    Type(host.page, 20212, c.typed);
    CRecordingMessageSink sink;
    EXPECT_EQ(host.AsPage().OnKillActive(), c.leaves);
    if (c.leaves) {
      EXPECT_TRUE(sink.Requests().empty());
      EXPECT_EQ(bound.GetAngle(), host.page.m_dAngle * M_PI / 180.0);
      EXPECT_EQ(bound.GetShiftY(), -20.0);
    } else {
      ASSERT_EQ(sink.Requests().size(), 1u);
      EXPECT_EQ(sink.Requests()[0].text, CStdStrW(c.message));
      EXPECT_EQ(bound.GetAngle(), 7.0 * M_PI / 180.0);  // untouched
    }
  }
}

TEST_F(CoordDlg, AFieldThatDoesNotReadStopsTheExchangeThere) {
  EmbeddedPage host;
  CCoordDlg& dlg = host.page;
  dlg.Init(Sample(), 1);
  static_cast<CDialog&>(dlg).OnInitDialog();
  Type(dlg, 20210, "1");
  Type(dlg, 20213, "bad");
  Type(dlg, 20214, "2");
  CRecordingMessageSink sink;
  EXPECT_EQ(dlg.UpdateData(TRUE), FALSE);
  EXPECT_EQ(dlg.m_dOriginX, 1.0);   // before the bad field
  EXPECT_EQ(dlg.m_dShiftY, -20.0);  // after it
  EXPECT_EQ(sink.Requests().size(), 1u);
}

TEST_F(CoordDlg, RemembersThatTheUserEditedAFieldButNotThatTheProgramDid) {
  for (const int id : {20210, 20211, 20212, 20213, 20214, 20215, 20218, 20219, 20220, 20227}) {
    EmbeddedPage host;
    CCoordDlg& dlg = host.page;
    dlg.Init(Sample(), 1);
    static_cast<CDialog&>(dlg).OnInitDialog();
    dlg.UpdateData(TRUE);
    dlg.UpdateData(FALSE);
    EXPECT_EQ(dlg.m_bModified, 0) << id;
    Type(dlg, id, "5");
    dlg.UpdateData(TRUE);
    EXPECT_EQ(dlg.m_bModified, 1) << id;
    dlg.UpdateData(FALSE);  // rewriting the text does not undo it
    dlg.UpdateData(TRUE);
    EXPECT_EQ(dlg.m_bModified, 1) << id;
  }
}

TEST_F(CoordDlg, ActivationMakesThePagesHelpTopicCurrent) {
  EmbeddedPage host;
  CVantrelHelp help;
  help.SetTopicIndex(u"vtrl0001.htm");
  host.page.m_pHelp = &help;
  host.page.m_strHelpTopic = u"vtrl0412.htm";
  EXPECT_EQ(host.AsPage().OnSetActive(), TRUE);
  EXPECT_EQ(help.SetTopicIndex(u"x"), CStdStrW(u"vtrl0412.htm"));

  EmbeddedPage helpless;
  EXPECT_EQ(helpless.AsPage().OnSetActive(), TRUE);
}

TEST_F(CoordDlg, AloneOkLeavesThePageIntoTheBoundTransformationAndCancelLeavesItAlone) {
  for (const int button : {IDOK, IDCANCEL}) {
    CCoordDlg dlg(1);
    CVantrelHelp help;
    dlg.m_pHelp = &help;
    dlg.m_strHelpTopic = u"vtrl0412.htm";
    dlg.Init(Sample(), 1);
    CRotTransCoord bound;
    dlg.InitTranslation(&bound);
    const INT_PTR result = WhileModal(
        [&](QWidget*) {
          Type(dlg, 20213, "-1.25");
          QTest::mouseClick(dlg.findChild<QPushButton*>(QString::number(button)), Qt::LeftButton);
        },
        [&] { return dlg.DoModal(); });
    EXPECT_EQ(result, button);
    EXPECT_EQ(help.GetTopicPath(), CStdStrW(u"html\\vtrl0412.htm"));
    EXPECT_EQ(bound.GetShiftX(), button == IDOK ? -1.25 : 10.0);
  }
}

TEST_F(CoordDlg, AloneABadAngleKeepsTheDialogOpenWithTheFocusOnIt) {
  CCoordDlg dlg(1);
  dlg.Init(Sample(), 1);
  CRecordingMessageSink sink;
  bool stayed = false;
  QWidget* focused = nullptr;
  const INT_PTR result = WhileModal(
      [&](QWidget* shown) {
        Type(dlg, 20212, "400");
        EditOf(dlg, 20210)->setFocus();
        QTest::mouseClick(dlg.findChild<QPushButton*>(QString::number(IDOK)), Qt::LeftButton);
        stayed = shown->isVisible();
        focused = shown->focusWidget();
        dlg.EndDialog(IDCANCEL);
      },
      [&] { return dlg.DoModal(); });
  EXPECT_EQ(result, IDCANCEL);
  EXPECT_TRUE(stayed);
  EXPECT_EQ(focused, EditOf(dlg, 20212));
  EXPECT_EQ(sink.Requests().size(), 1u);
}

TEST_F(CoordDlg, InsideASheetEscapeAndEnterDoNotCloseThePage) {
  EmbeddedPage host;
  host.page.Init(Sample(), 1);
  static_cast<CDialog&>(host.page).OnInitDialog();
  host.sheet.show();
  QTest::keyClick(EditOf(host.page, 20212), Qt::Key_Escape);
  QTest::keyClick(EditOf(host.page, 20212), Qt::Key_Return);
  EXPECT_TRUE(host.page.isVisible());
  EXPECT_FALSE(Visible(host.page, IDOK));
}

TEST_F(CoordDlg, ItsMessageMapRecordsTheFourButtons) {
  CCoordDlg dlg(1);
  EXPECT_TRUE(dlg.IsKindOf(RUNTIME_CLASS(CPropertyPage)));
  EXPECT_TRUE(dlg.IsKindOf(RUNTIME_CLASS(CDialog)));
  int entries = 0;
  for (const AFX_MSGMAP_ENTRY* e = dlg.GetMessageMap()->lpEntries; e->nMessage != 0; ++e) ++entries;
  EXPECT_EQ(entries, 4);
  for (const int id : {IDOK, IDCANCEL, 20231, 20232}) EXPECT_NE(dlg.FindClickedEntry(id), nullptr) << id;
  EXPECT_EQ(dlg.FindClickedEntry(20212), nullptr);
}

}  // namespace
