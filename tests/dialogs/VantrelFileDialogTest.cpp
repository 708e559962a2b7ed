#include "dialogs/VantrelFileDialog.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <fstream>

#include "dialogs/DialogTestSupport.h"
#include "dialogs/QtText.h"
#include "help/VantrelHelp.h"
#include "platform/RecordingMessageSink.h"
#include "platform/Registry.h"
#include "platform/WinThread.h"
#include "suite/VantrelWinApp.h"

namespace {

using vantrel1::FromQString;
using vantrel1::ToQString;
using vantrel1::test::Application;
using vantrel1::test::WhileModal;

constexpr const char16_t* kFilter = u"Linije i tekst|*.lin;*.txt|Sve datoteke|*.*||";

DWORD g_now = 0;
DWORD FakeTicks() { return g_now; }

// Help that shows "online" and writes down for which owner window.
class OwnerRecordingHelp : public CVantrelHelp {
 public:
  OwnerRecordingHelp() { m_nHelpPreference = 1; }
  bool OnlineHelp(HWND owner) override {
    owners.push_back(owner);
    return true;
  }
  std::vector<HWND> owners;
};

class FileDialogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Application();
    ASSERT_TRUE(folder.isValid());
    previousStore = SetRegistryStore(&store);
    previousTicks = vantrel1::SetHelpTickSource(FakeTicks);
  }
  void TearDown() override {
    SetRegistryStore(previousStore);
    vantrel1::SetHelpTickSource(previousTicks);
  }

  CStdStrW Touch(const QString& name) {
    std::ofstream(QDir(folder.path()).filePath(name).toStdString()) << "x";
    return Path(name);
  }
  CStdStrW Path(const QString& name) const { return FromQString(QDir(folder.path()).filePath(name)); }

  // Shows `dlg` in the test folder, types `typed` into the name field and confirms; then
  // cancels if the choice was refused. Returns the result and whether it stayed open.
  std::pair<INT_PTR, bool> Confirm(CVantrelFileDialog& dlg, const QString& typed) {
    dlg.m_strInitialDir = FromQString(folder.path());
    bool stayedOpen = false;
    const INT_PTR result = WhileModal(
        [&](QWidget* shown) {
          auto* edit = shown->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
          ASSERT_NE(edit, nullptr);
          edit->setText(typed);
          static_cast<QDialog*>(shown)->accept();
          stayedOpen = shown->isVisible();
          if (stayedOpen) static_cast<QDialog*>(shown)->reject();
        },
        [&] { return dlg.DoModal(); });
    return {result, stayedOpen};
  }

  QTemporaryDir folder;
  CMemoryRegistryStore store;
  CRecordingMessageSink sink;

 private:
  CRegistryStore* previousStore = nullptr;
  vantrel1::HelpTickSource previousTicks = nullptr;
};

TEST_F(FileDialogTest, CarriesTheRequiredFlagsAndTheInitialNameInItsLargeBufferWithoutDefaultExtension) {
  CVantrelFileDialog dlg(TRUE, u"lin", u"put.lin", OFN_FILEMUSTEXIST, kFilter, nullptr, nullptr);
  EXPECT_EQ(dlg.m_ofn.Flags, OFN_FILEMUSTEXIST | 0x80030u);
  EXPECT_EQ(dlg.m_ofn.lpstrDefExt, nullptr);
  EXPECT_EQ(dlg.m_ofn.nMaxFile, 52201u);
  EXPECT_EQ(std::u16string(dlg.m_ofn.lpstrFile), u"put.lin");
  EXPECT_EQ(dlg.IsExtMatchRequired(), 1);
  EXPECT_EQ(dlg.IsSingleSelection(), 1);

  const CStdStrW huge(60000, u'x');
  CVantrelFileDialog big(FALSE, nullptr, huge.c_str(), 0, kFilter, nullptr, nullptr);
  EXPECT_EQ(std::char_traits<char16_t>::length(big.m_ofn.lpstrFile), 52200u);
}

TEST_F(FileDialogTest, OpenGivesABareNameTheFilterExtensionAndAcceptsAMatchingOne) {
  Touch("plan.lin");
  Touch("opis.txt");
  CVantrelFileDialog bare(TRUE, nullptr, nullptr, 0, kFilter, nullptr, nullptr);
  EXPECT_EQ(Confirm(bare, "plan"), std::make_pair(INT_PTR(IDOK), false));
  EXPECT_EQ(bare.GetPathName(), Path("plan.lin"));
  EXPECT_EQ(bare.GetFileName(), CStdStrW(u"plan.lin"));

  CVantrelFileDialog text(TRUE, nullptr, nullptr, 0, kFilter, nullptr, nullptr);
  EXPECT_EQ(Confirm(text, "opis.txt"), std::make_pair(INT_PTR(IDOK), false));
  EXPECT_EQ(text.GetPathName(), Path("opis.txt"));
  EXPECT_TRUE(sink.Requests().empty());
}

TEST_F(FileDialogTest, RefusedChoicesKeepTheDialogOpenWithTheirMessage) {
  Touch("a.dwg");
  Touch("b.dwg");
  CVantrelFileDialog other(TRUE, nullptr, nullptr, 0, kFilter, nullptr, nullptr);
  EXPECT_EQ(Confirm(other, "a.dwg"), std::make_pair(INT_PTR(IDCANCEL), true));
  CVantrelFileDialog several(TRUE, nullptr, nullptr, OFN_ALLOWMULTISELECT, kFilter, nullptr, nullptr);
  EXPECT_EQ(Confirm(several, "\"a.dwg\" \"b.dwg\""), std::make_pair(INT_PTR(IDCANCEL), true));
  CVantrelFileDialog reserved(FALSE, nullptr, nullptr, 0, kFilter, nullptr, nullptr);
  EXPECT_EQ(Confirm(reserved, "normal"), std::make_pair(INT_PTR(IDCANCEL), true));
  ASSERT_EQ(sink.Requests().size(), 3u);
  EXPECT_EQ(sink.Requests()[0].id, 138u);
  EXPECT_EQ(sink.Requests()[1].id, 138u);
  EXPECT_EQ(sink.Requests()[2].id, 743u);
}

TEST_F(FileDialogTest, MultiSelectionListsEveryPathAndIsNotSingle) {
  Touch("a.lin");
  Touch("b.txt");
  CVantrelFileDialog dlg(TRUE, nullptr, nullptr, OFN_ALLOWMULTISELECT, kFilter, nullptr, nullptr);
  EXPECT_EQ(Confirm(dlg, "\"a.lin\" \"b.txt\""), std::make_pair(INT_PTR(IDOK), false));
  EXPECT_EQ(dlg.GetSelectedPaths(), (std::vector<CStdStrW>{Path("a.lin"), Path("b.txt")}));
  EXPECT_EQ(dlg.IsSingleSelection(), 0);
}

TEST_F(FileDialogTest, SaveAsksAgainWhenTheSuppliedExtensionNamesAnExistingFile) {
  Touch("plan.lin");
  sink.QueueAnswer(IDNO);
  CVantrelFileDialog declined(FALSE, nullptr, nullptr, OFN_OVERWRITEPROMPT, kFilter, nullptr, nullptr);
  EXPECT_EQ(Confirm(declined, "plan"), std::make_pair(INT_PTR(IDCANCEL), true));
  sink.QueueAnswer(IDYES);
  CVantrelFileDialog confirmed(FALSE, nullptr, nullptr, OFN_OVERWRITEPROMPT, kFilter, nullptr, nullptr);
  EXPECT_EQ(Confirm(confirmed, "plan"), std::make_pair(INT_PTR(IDOK), false));
  EXPECT_EQ(confirmed.GetPathName(), Path("plan.lin"));
  ASSERT_EQ(sink.Requests().size(), 2u);
  EXPECT_EQ(sink.Requests()[0].id, 504u);
  EXPECT_EQ(sink.Requests()[1].id, 504u);
}

TEST_F(FileDialogTest, HelpButtonShowsHelpForTheMainWindowAndDoesNothingWithoutHelp) {
  CWnd mainWindow;
  mainWindow.Attach(reinterpret_cast<HWND>(0x5150));
  CWnd* previousMain = AfxGetThread()->m_pMainWnd;
  AfxGetThread()->m_pMainWnd = &mainWindow;
  g_now = 100000;
  OwnerRecordingHelp help;
  g_now += 1000;
  for (CVantrelHelp* object : {static_cast<CVantrelHelp*>(&help), static_cast<CVantrelHelp*>(nullptr)}) {
    CVantrelFileDialog dlg(TRUE, nullptr, nullptr, 0, kFilter, nullptr, object);
    CStdStrW label;
    WhileModal(
        [&](QWidget* shown) {
          auto* button = shown->findChild<QPushButton*>(QStringLiteral("1038"));
          ASSERT_NE(button, nullptr);
          label = FromQString(button->text());
          QTest::mouseClick(button, Qt::LeftButton);
          EXPECT_TRUE(shown->isVisible());
          static_cast<QDialog*>(shown)->reject();
        },
        [&] { return dlg.DoModal(); });
    EXPECT_EQ(label, CStdStrW(u"Pomoć"));
  }
  AfxGetThread()->m_pMainWnd = previousMain;
  EXPECT_EQ(help.owners, std::vector<HWND>{reinterpret_cast<HWND>(0x5150)});
}

// Starts the dialog with the first-use setting `flags` for a program of `moduleType`,
// confirms or cancels it, and returns the folder it started in.
class SamplesTest : public FileDialogTest {
 protected:
  void SetUp() override {
    FileDialogTest::SetUp();
    const char* dir = std::getenv("VANTREL1_DIR");
    previousDir = dir ? dir : "";
    QDir(folder.path()).mkdir("samples");
    setenv("VANTREL1_DIR", folder.path().toUtf8().constData(), 1);
  }
  void TearDown() override {
    setenv("VANTREL1_DIR", previousDir.c_str(), 1);
    FileDialogTest::TearDown();
  }

  // The folder the dialog started in: the samples, or the caller's own folder.
  std::string Show(int startInSamples, bool confirm) {
    CVantrelFileDialog dlg(FALSE, nullptr, nullptr, 0, kFilter, nullptr, nullptr);
    dlg.m_bStartInSamples = startInSamples;
    dlg.m_strInitialDir = FromQString(folder.path());
    QString started;
    WhileModal(
        [&](QWidget* shown) {
          auto* fd = static_cast<QFileDialog*>(shown);
          started = fd->directory().absolutePath();
          if (!confirm) {
            static_cast<QDialog*>(fd)->reject();
            return;
          }
          fd->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(folder.path() + "/novi.lin");
          static_cast<QDialog*>(fd)->accept();
        },
        [&] { return dlg.DoModal(); });
    return started.toStdString();
  }
  CStdStrW Setting() {
    WCHAR value[81] = {};
    CorviaRegistryRead(nullptr, u"StartInSamples", value, 81);
    return value;
  }

  std::string previousDir;
};

TEST_F(SamplesTest, StartsInTheSamplesOnceForEachProgramAndOnlyAConfirmedChoiceClearsTheFlag) {
  const std::string samples = QDir(folder.path() + "/samples").absolutePath().toStdString();
  const std::string own = QDir(folder.path()).absolutePath().toStdString();
  CVantrelWinApp app(1);
  CorviaRegistryWrite(nullptr, u"StartInSamples", u"1,1,1");
  EXPECT_EQ(Show(1, false), samples);
  EXPECT_EQ(Setting(), CStdStrW(u"1,1,1"));
  EXPECT_EQ(Show(1, true), samples);
  EXPECT_EQ(Setting(), CStdStrW(u"1,1,0"));
  EXPECT_EQ(Show(1, true), own);

  app.SetModuleType(2);
  EXPECT_EQ(Show(0, true), own);  // not asked to look at the setting
  EXPECT_EQ(Setting(), CStdStrW(u"1,1,0"));
  EXPECT_EQ(Show(1, true), samples);
  EXPECT_EQ(Setting(), CStdStrW(u"0,1,0"));
  app.SetModuleType(3);
  EXPECT_EQ(Show(1, true), samples);
  EXPECT_EQ(Setting(), CStdStrW(u"0,0,0"));
}

}  // namespace
