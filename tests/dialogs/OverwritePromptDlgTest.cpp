#include "dialogs/OverwritePromptDlg.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <vector>

#include "dialogs/DialogTestSupport.h"
#include "dialogs/QtText.h"
#include "dialogs/WindowOps.h"

namespace {

using vantrel1::FromQString;
using vantrel1::test::Application;
using vantrel1::test::WhileModal;

struct Flags {
  int overwrite, replaceAll, skip, skipAll;
  bool operator==(const Flags&) const = default;
};

Flags FlagsOf(const COverwritePromptDlg& dlg) {
  return {dlg.m_bOverwrite, dlg.m_bReplaceAll, dlg.m_bSkip, dlg.m_bSkipAll};
}

void PrintTo(const Flags& f, std::ostream* os) {
  *os << "{" << f.overwrite << "," << f.replaceAll << "," << f.skip << "," << f.skipAll << "}";
}

void Click(QWidget* dialog, int id) {
  auto* button = dialog->findChild<QPushButton*>(QString::number(id));
  ASSERT_NE(button, nullptr) << id;
  QTest::mouseClick(button, Qt::LeftButton);
}

// Shows the prompt and clicks the button `id` (0: presses Escape instead).
INT_PTR Answer(COverwritePromptDlg& dlg, int id) {
  return WhileModal(
      [id](QWidget* shown) {
        if (id != 0) {
          Click(shown, id);
        } else {
          QTest::keyClick(shown, Qt::Key_Escape);
        }
      },
      [&] { return dlg.DoModal(); });
}

// Every test makes its dialogs on a running GUI application.
class OverwritePrompt : public ::testing::Test {
 protected:
  void SetUp() override { Application(); }
};

TEST_F(OverwritePrompt, ShowsItsTitleAndTheFourButtonsInTheirOrder) {
  COverwritePromptDlg dlg;
  std::vector<std::pair<int, CStdStrW>> buttons;
  CStdStrW title;
  WhileModal(
      [&](QWidget* shown) {
        title = FromQString(shown->windowTitle());
        for (QPushButton* b : shown->findChildren<QPushButton*>()) buttons.emplace_back(b->x(), FromQString(b->text()));
        std::sort(buttons.begin(), buttons.end());
        shown->close();
      },
      [&] { return dlg.DoModal(); });
  EXPECT_EQ(title, CStdStrW(u"Zameni tip linije/simbol"));
  ASSERT_EQ(buttons.size(), 4u);
  EXPECT_EQ(buttons[0].second, CStdStrW(u"Overvrite"));
  EXPECT_EQ(buttons[1].second, CStdStrW(u"Zameni sve"));
  EXPECT_EQ(buttons[2].second, CStdStrW(u"Skip"));
  EXPECT_EQ(buttons[3].second, CStdStrW(u"Preskoči sve"));
}

TEST_F(OverwritePrompt, EachButtonSetsItsAnswerAndClosesWithOkClearingTheDetails) {
  const struct {
    int id;
    Flags flags;
  } cases[] = {
      {COverwritePromptDlg::IDC_OVERWRITE, {1, 0, 0, 0}},
      {COverwritePromptDlg::IDC_REPLACE_ALL, {0, 1, 0, 0}},
      {COverwritePromptDlg::IDC_SKIP, {0, 0, 1, 0}},
      {COverwritePromptDlg::IDC_SKIP_ALL, {0, 0, 0, 1}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.id);
    COverwritePromptDlg dlg;
    dlg.SetNotifyFormat(u"%s: %s");
    dlg.SetNotifyDetails(u"ograda", u"Normal.lin");
    EXPECT_EQ(Answer(dlg, c.id), IDOK);
    EXPECT_EQ(FlagsOf(dlg), c.flags);
    EXPECT_TRUE(dlg.m_strDetail1.IsEmpty());
    EXPECT_TRUE(dlg.m_strDetail2.IsEmpty());
    EXPECT_EQ(dlg.m_strNotifyFormat, CStdStrW(u"%s: %s"));
  }
}

TEST_F(OverwritePrompt, EscapeClosesWithCancelAndNoAnswer) {
  COverwritePromptDlg dlg;
  dlg.SetNotifyDetails(u"ograda", u"Normal.lin");
  EXPECT_EQ(Answer(dlg, 0), IDCANCEL);
  EXPECT_EQ(FlagsOf(dlg), (Flags{0, 0, 0, 0}));
  EXPECT_EQ(dlg.m_strDetail1, CStdStrW(u"ograda"));
}

TEST_F(OverwritePrompt, TheAllAnswersOutliveRepeatedShowingsWhileThisItemsAnswersStartAfresh) {
  COverwritePromptDlg dlg;
  Answer(dlg, COverwritePromptDlg::IDC_OVERWRITE);
  EXPECT_EQ(FlagsOf(dlg), (Flags{1, 0, 0, 0}));
  Answer(dlg, COverwritePromptDlg::IDC_REPLACE_ALL);
  EXPECT_EQ(FlagsOf(dlg), (Flags{0, 1, 0, 0}));
  Answer(dlg, COverwritePromptDlg::IDC_SKIP);
  EXPECT_EQ(FlagsOf(dlg), (Flags{0, 1, 1, 0}));
  Answer(dlg, COverwritePromptDlg::IDC_SKIP_ALL);
  EXPECT_EQ(FlagsOf(dlg), (Flags{0, 1, 0, 1}));
  Answer(dlg, 0);
  EXPECT_EQ(FlagsOf(dlg), (Flags{0, 1, 0, 1}));
}

TEST_F(OverwritePrompt, TheQuestionIsTheFormatFilledWithTheTwoDetails) {
  const struct {
    const char16_t* format;
    const char16_t* detail1;
    const char16_t* detail2;
    const char16_t* question;
  } cases[] = {
      {u"Tip linije \"%s\" već postoji u tabeli %s.", u"ograda", u"Normal.lin",
       u"Tip linije \"ograda\" već postoji u tabeli Normal.lin."},
      {u"%s", u"škarp", u"Normal.sym", u"škarp"},
      // Details are text, never a format of their own.
      {u"%s / %s", u"100%s %d", u"%n", u"100%s %d / %n"},
      {u"%-8s|%.3s", u"led", u"talasasta", u"led     |tal"},
      // A format that wants more than the two strings shows no question at all.
      {u"%s %s %s", u"a", u"b", u""},
      {u"%d stavki", u"a", u"b", u""},
      {u"%n", u"a", u"b", u""},
      {u"", u"a", u"b", u""},
  };
  for (const auto& c : cases) {
    COverwritePromptDlg dlg;
    dlg.SetNotifyFormat(c.format);
    dlg.SetNotifyDetails(c.detail1, c.detail2);
    CStdStrW question;
    WhileModal(
        [&](QWidget* shown) {
          question = dlg.GetDlgItemText(COverwritePromptDlg::IDC_QUESTION);
          shown->close();
        },
        [&] { return dlg.DoModal(); });
    EXPECT_EQ(question, CStdStrW(c.question)) << vantrel1::ToUtf8(c.format);
  }
}

TEST_F(OverwritePrompt, IsAWindowOfItsOwnOwnedByItsParentWindow) {
  QWidget frame;
  CWnd parent;
  parent.Attach(HwndFromWidget(&frame));
  COverwritePromptDlg dlg(&parent);
  EXPECT_EQ(dlg.parentWidget(), &frame);
  EXPECT_TRUE(dlg.isWindow());
  EXPECT_EQ(dlg.GetTemplateId(), 20006u);
  EXPECT_EQ(dlg.GetSafeHwnd(), HwndFromWidget(&dlg));
  EXPECT_EQ(WidgetFromWnd(&dlg), &dlg);
  EXPECT_TRUE(dlg.IsKindOf(RUNTIME_CLASS(CWnd)));
}

TEST_F(OverwritePrompt, AParentWithoutALiveWindowOwnsNothing) {
  CWnd vanished;
  {
    QWidget frame;
    vanished.Attach(HwndFromWidget(&frame));
  }
  COverwritePromptDlg orphan(&vanished);
  EXPECT_EQ(orphan.parentWidget(), nullptr);
  CWnd none;
  COverwritePromptDlg unowned(&none);
  EXPECT_EQ(unowned.parentWidget(), nullptr);
}

}  // namespace
