#include "dialogs/CSysEpsgDlg.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "dialogs/DialogTestSupport.h"
#include "dialogs/QtText.h"
#include "platform/RecordingMessageSink.h"
#include "suite/CoordSysX.h"

namespace {

using vantrel1::FromQString;
using vantrel1::ToQString;
using vantrel1::test::Application;
using vantrel1::test::WhileModal;

class ProbeDlg : public CCSysEpsgDlg {
 public:
  using CCSysEpsgDlg::GetValues;
  using CCSysEpsgDlg::OnInitDialog;
  QLineEdit* Code() { return findChild<QLineEdit*>(QStringLiteral("20210")); }
  QPushButton* Button(int id) { return findChild<QPushButton*>(QString::number(id)); }
  CStdStrW Epsg() const {
    CStdStrW code;
    GetCSys()->GetEPSG(&code);
    return code;
  }
};

class CSysEpsgDlgTest : public ::testing::Test {
 protected:
  void SetUp() override { Application(); }
  CRecordingMessageSink sink;
};

TEST_F(CSysEpsgDlgTest, AsksForTheCodeInItsFocusedFieldAndShowsTheLastOneAgain) {
  ProbeDlg dlg;
  EXPECT_EQ(dlg.windowTitle(), QStringLiteral("Unesite EPSG"));
  EXPECT_EQ(dlg.objectName(), QStringLiteral("20218"));
  ASSERT_NE(dlg.Code(), nullptr);
  EXPECT_EQ(dlg.Button(IDOK)->text(), QStringLiteral("Ok"));
  EXPECT_EQ(dlg.Button(IDCANCEL)->text(), QStringLiteral("Otkaži"));
  EXPECT_EQ(dlg.OnInitDialog(), FALSE);
  EXPECT_EQ(dlg.focusWidget(), dlg.Code());

  QString shownFirst = QStringLiteral("?");
  const INT_PTR first = WhileModal(
      [&](QWidget*) {
        shownFirst = dlg.Code()->text();
        QTest::keyClicks(dlg.Code(), "4326");
        QTest::keyClick(dlg.Code(), Qt::Key_Return);
      },
      [&] { return dlg.DoModal(); });
  EXPECT_TRUE(shownFirst.isEmpty());
  EXPECT_EQ(first, IDOK);
  EXPECT_EQ(dlg.m_nEPSG, 4326);
  EXPECT_EQ(dlg.Epsg(), CStdStrW(u"4326"));

  QString shownAgain;
  const INT_PTR second = WhileModal(
      [&](QWidget*) {
        shownAgain = dlg.Code()->text();
        QTest::mouseClick(dlg.Button(IDCANCEL), Qt::LeftButton);
      },
      [&] { return dlg.DoModal(); });
  EXPECT_EQ(shownAgain, QStringLiteral("4326"));
  EXPECT_EQ(second, IDCANCEL);
  EXPECT_TRUE(sink.Requests().empty());
}

TEST_F(CSysEpsgDlgTest, AnythingButDigitsIsRefusedWithItsMessage) {
  const struct {
    const char16_t* typed;
    UINT id;
    const char16_t* message;
  } cases[] = {
      {u"", 21004, u"Unesite broj"},
      {u"4326 ", 21005, u"ESPG mora biti broj"},
      {u" 4326", 21005, u"ESPG mora biti broj"},
      {u"-4326", 21005, u"ESPG mora biti broj"},
      {u"+4326", 21005, u"ESPG mora biti broj"},
      {u"4326a", 21005, u"ESPG mora biti broj"},
      {u"43.26", 21005, u"ESPG mora biti broj"},
      {u"\u0664\u0663\u0662\u0666", 21005, u"ESPG mora biti broj"},  // digits of another script
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(ToQString(c.typed).toStdString());
    sink.Clear();
    ProbeDlg dlg;
    dlg.Code()->setText(ToQString(c.typed));
    EXPECT_EQ(dlg.GetValues(), 0);
    ASSERT_EQ(sink.Requests().size(), 1u);
    EXPECT_EQ(sink.Requests()[0].kind, MessageKind::Box);
    EXPECT_EQ(sink.Requests()[0].id, c.id);
    EXPECT_EQ(sink.Requests()[0].text, CStdStrW(c.message));
    EXPECT_EQ(sink.Requests()[0].type, static_cast<UINT>(MB_OK));
    EXPECT_EQ(dlg.m_nEPSG, 0);
    EXPECT_FALSE(dlg.GetCSys()->IsValid());
  }
}

TEST_F(CSysEpsgDlgTest, LeadingZerosAreAcceptedAndAnUnknownCodeKeepsTheSystemSilently) {
  ProbeDlg dlg;
  dlg.Code()->setText(QStringLiteral("04326"));
  EXPECT_EQ(dlg.GetValues(), 1);
  EXPECT_EQ(dlg.m_nEPSG, 4326);
  EXPECT_EQ(dlg.Epsg(), CStdStrW(u"4326"));

  for (const char* unknown : {"999999", "0", "99999999999999999999"}) {
    SCOPED_TRACE(unknown);
    dlg.Code()->setText(QString::fromLatin1(unknown));
    EXPECT_EQ(dlg.GetValues(), 0);
    EXPECT_EQ(dlg.Epsg(), CStdStrW(u"4326"));
  }
  EXPECT_EQ(dlg.m_nEPSG, 2147483647);  // the last code as read, cut at the largest int
  EXPECT_TRUE(sink.Requests().empty());
}

TEST_F(CSysEpsgDlgTest, OkStaysOpenUntilTheCodeNamesASystem) {
  ProbeDlg dlg;
  bool openAfterLetter = false;
  bool openAfterUnknown = false;
  const INT_PTR result = WhileModal(
      [&](QWidget*) {
        QTest::keyClicks(dlg.Code(), "326x");
        QTest::mouseClick(dlg.Button(IDOK), Qt::LeftButton);
        openAfterLetter = dlg.isVisible();
        dlg.Code()->setText(QStringLiteral("999999"));
        QTest::mouseClick(dlg.Button(IDOK), Qt::LeftButton);
        openAfterUnknown = dlg.isVisible();
        dlg.Code()->setText(QStringLiteral("32634"));
        QTest::mouseClick(dlg.Button(IDOK), Qt::LeftButton);
      },
      [&] { return dlg.DoModal(); });
  EXPECT_TRUE(openAfterLetter);
  EXPECT_TRUE(openAfterUnknown);
  EXPECT_EQ(result, IDOK);
  EXPECT_EQ(dlg.Epsg(), CStdStrW(u"32634"));
  ASSERT_EQ(sink.Requests().size(), 1u);
  EXPECT_EQ(sink.Requests()[0].id, 21005u);
}

}  // namespace
