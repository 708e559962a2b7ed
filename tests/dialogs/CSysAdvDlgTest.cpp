#include "dialogs/CSysAdvDlg.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <fstream>
#include <functional>
#include <sstream>

#include "dialogs/DialogTestSupport.h"
#include "dialogs/QtText.h"
#include "dialogs/VantrelFileDialog.h"
#include "dialogs/WindowOps.h"
#include "dialogs/WindowState.h"
#include "help/VantrelMainFrame.h"
#include "platform/RecordingMessageSink.h"
#include "platform/WinThread.h"
#include "suite/CoordSysX.h"

namespace {

using vantrel1::FromQString;
using vantrel1::ToQString;
using vantrel1::test::Application;
using vantrel1::test::WhileModal;

// A building site's own grid: a valid system with no place on the earth and no code.
constexpr const char16_t* kLocalWkt =
    u"ENGCRS[\"Gradiliste\",EDATUM[\"Lokalni datum\"],CS[Cartesian,2],"
    u"AXIS[\"x\",east,ORDER[1],LENGTHUNIT[\"metre\",1]],AXIS[\"y\",north,ORDER[2],LENGTHUNIT[\"metre\",1]]]";

// WGS 84 / UTM zone 34N as an ESRI projection file writes it, without any code.
constexpr const char* kUtm34Prj =
    "PROJCS[\"WGS_1984_UTM_Zone_34N\",GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\","
    "SPHEROID[\"WGS_1984\",6378137.0,298.257223563]],PRIMEM[\"Greenwich\",0.0],"
    "UNIT[\"Degree\",0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],"
    "PARAMETER[\"False_Easting\",500000.0],PARAMETER[\"False_Northing\",0.0],"
    "PARAMETER[\"Central_Meridian\",21.0],PARAMETER[\"Scale_Factor\",0.9996],"
    "PARAMETER[\"Latitude_Of_Origin\",0.0],UNIT[\"Meter\",1.0]]";

CCoordSysX FromCode(int code) {
  CCoordSysX csys;
  EXPECT_TRUE(csys.FromEPSG(nullptr, code, 1)) << code;
  return csys;
}

CCoordSysX Local() {
  CCoordSysX csys;
  EXPECT_TRUE(csys.FromWktStr(kLocalWkt, 1));
  return csys;
}

bool StartsWith(const std::u16string& text, std::u16string_view start) { return text.starts_with(start); }

// The dialog with its protected steps in reach, counting the calls that reach its
// overrides through the virtual table.
class ProbeDlg : public CCSysAdvDlg {
 public:
  using CCSysAdvDlg::OnInitDialog;
  void PutValues() override {
    ++puts;
    CCSysAdvDlg::PutValues();
    if (replacement) SetText(*replacement);
  }
  int GetValues() override {
    ++gets;
    return CCSysAdvDlg::GetValues();
  }
  // The edit's text, set as the program sets it (not as the user's change).
  void SetText(const QString& text) {
    Wkt()->setPlainText(text);
    Wkt()->document()->setModified(false);
  }
  QPlainTextEdit* Wkt() { return findChild<QPlainTextEdit*>(QStringLiteral("20210")); }
  CStdStrW WktText() { return FromQString(Wkt()->toPlainText()); }
  CStdStrW Label(int id) { return GetDlgItemText(id); }
  bool Visible(int id) { return IsWindowVisible(GetDlgItem(GetSafeHwnd(), id)) != FALSE; }
  bool Enabled(int id) { return IsWindowEnabled(GetDlgItem(GetSafeHwnd(), id)) != FALSE; }
  void Click(int id) {
    auto* button = findChild<QPushButton*>(QString::number(id));
    ASSERT_NE(button, nullptr) << id;
    QTest::mouseClick(button, Qt::LeftButton);
  }

  int puts = 0;
  int gets = 0;
  const QString* replacement = nullptr;
};

// Runs `act` on the dialog that `open` shows from inside a dialog that is already up.
void WithNested(const std::function<void(QWidget*)>& act, const std::function<void()>& open) {
  bool acted = false;
  QWidget* outer = QApplication::activeModalWidget();
  QTimer::singleShot(0, [&] {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal == outer) {
      ADD_FAILURE() << "no second dialog is shown";
      return;
    }
    acted = true;
    act(modal);
  });
  open();
  EXPECT_TRUE(acted);
}

// What a file dialog was made with.
struct FileDialogSeen {
  CStdStrW filter;
  DWORD flags = 0;
  BOOL open = -1;
};

// Types `text` into the file dialog's name field and confirms it, noting the dialog's
// settings in `seen` when given.
void ChooseFile(QWidget* fileDialog, const QString& text, FileDialogSeen* seen = nullptr) {
  auto* chooser = qobject_cast<CVantrelFileDialog*>(fileDialog);
  ASSERT_NE(chooser, nullptr);
  if (seen) *seen = {chooser->GetFilter(), chooser->m_ofn.Flags, chooser->IsOpenDialog()};
  auto* edit = fileDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  ASSERT_NE(edit, nullptr);
  edit->setText(text);
  static_cast<QDialog*>(chooser)->accept();
  if (chooser->isVisible()) {
    ADD_FAILURE() << "the file dialog refused " << text.toStdString();
    static_cast<QDialog*>(chooser)->reject();
  }
}

class CSysAdvDlgTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Application();
    ASSERT_TRUE(folder.isValid());
  }

  QString Path(const QString& name) const { return QDir(folder.path()).filePath(name); }
  QString Write(const QString& name, const std::string& content) {
    std::ofstream(Path(name).toStdString(), std::ios::binary) << content;
    return Path(name);
  }

  // Shows the dialog, runs `act` on it and returns the modal result.
  INT_PTR Run(ProbeDlg& dlg, const std::function<void(ProbeDlg&)>& act) {
    return WhileModal([&](QWidget*) { act(dlg); }, [&] { return dlg.DoModal(); });
  }

  QTemporaryDir folder;
  CRecordingMessageSink sink;
};

TEST_F(CSysAdvDlgTest, BuildsItsControlsWithTheirTexts) {
  ProbeDlg dlg;
  EXPECT_EQ(dlg.windowTitle(), QStringLiteral("Uredi projekciju"));
  EXPECT_EQ(dlg.objectName(), QStringLiteral("20236"));
  ASSERT_NE(dlg.Wkt(), nullptr);
  EXPECT_EQ(dlg.Wkt()->lineWrapMode(), QPlainTextEdit::NoWrap);
  const QList<QLabel*> labels = dlg.findChildren<QLabel*>();
  const auto caption = std::find_if(labels.begin(), labels.end(), [](QLabel* label) {
    return label->text() == QStringLiteral("Unesite CoordSis u VKT formatu:");
  });
  ASSERT_NE(caption, labels.end());
  EXPECT_EQ((*caption)->buddy(), dlg.Wkt());
  EXPECT_EQ(dlg.Label(20222), CStdStrW(u"EPSG:"));
  EXPECT_EQ(dlg.Label(20221), CStdStrW(u"EPSG#"));
  EXPECT_EQ(dlg.Label(20251), CStdStrW(u"Iz EPSG-a..."));
  EXPECT_EQ(dlg.Label(20252), CStdStrW(u"Iz datoteke..."));
  EXPECT_EQ(dlg.Label(20253), CStdStrW(u"Da podnese..."));
  EXPECT_EQ(dlg.Label(IDOK), CStdStrW(u"Ok"));
  EXPECT_EQ(dlg.Label(IDCANCEL), CStdStrW(u"Otkaži"));
  EXPECT_TRUE(dlg.findChild<QPushButton*>(QStringLiteral("1"))->isDefault());
}

TEST_F(CSysAdvDlgTest, ShowsTheSystemAsWktWithItsCodeAndOffersSavingOnlyADefinedOne) {
  const struct {
    const char* name;
    CCoordSysX csys;
    const char16_t* code;
    const char16_t* wktStart;
  } cases[] = {
      {"UTM 34N", FromCode(32634), u"32634", u"PROJCRS[\"WGS 84 / UTM zone 34N\","},
      {"WGS 84", FromCode(4326), u"4326", u"GEOGCRS[\"WGS 84\","},
      {"local", Local(), u"", u"ENGCRS[\"Gradiliste\","},
      {"none", CCoordSysX(), u"", u""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ProbeDlg dlg;
    dlg.InitCSys(c.csys);
    dlg.OnInitDialog();
    CStdStrW wkt;
    c.csys.ToWktStr(&wkt, nullptr, 3);
    EXPECT_EQ(dlg.WktText(), wkt);
    EXPECT_TRUE(StartsWith(dlg.WktText(), c.wktStart));
    EXPECT_EQ(dlg.WktText().find(u'\r'), CStdStrW::npos);
    EXPECT_EQ(dlg.m_strEPSG, CStdStrW(c.code));
    EXPECT_EQ(dlg.Label(20221), CStdStrW(c.code));
    EXPECT_EQ(dlg.Visible(20222), !CStdStrW(c.code).empty());
    EXPECT_EQ(dlg.Enabled(20253), c.csys.IsDefinedCSys() != 0);
    EXPECT_FALSE(dlg.Wkt()->document()->isModified());
    EXPECT_EQ(dlg.puts, 1);
  }
}

TEST_F(CSysAdvDlgTest, OkWithoutTouchingTheTextKeepsTheSystemAsGivenWithoutReadingTheText) {
  const QString unreadable = QStringLiteral("ovo nije VKT");
  ProbeDlg dlg;
  dlg.InitCSys(FromCode(32634));
  dlg.replacement = &unreadable;
  EXPECT_EQ(Run(dlg, [](ProbeDlg& d) { d.Click(IDOK); }), IDOK);
  EXPECT_EQ(dlg.gets, 1);
  EXPECT_TRUE(*dlg.GetCSys() == FromCode(32634));

  // The none system has no WKT at all; its empty text is not read back either.
  ProbeDlg none;
  EXPECT_EQ(Run(none, [](ProbeDlg& d) { d.Click(IDOK); }), IDOK);
  EXPECT_FALSE(none.GetCSys()->IsValid());
  EXPECT_TRUE(sink.Requests().empty());
}

TEST_F(CSysAdvDlgTest, ClearedTextIsRefusedAndTheDialogStaysOpenWithItsSystem) {
  ProbeDlg dlg;
  dlg.InitCSys(FromCode(4326));
  bool stayedOpen = false;
  const INT_PTR result = Run(dlg, [&](ProbeDlg& d) {
    d.Wkt()->setFocus();
    QTest::keyClick(d.Wkt(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(d.Wkt(), Qt::Key_Delete);
    EXPECT_TRUE(d.WktText().empty());
    d.Click(IDOK);
    stayedOpen = d.isVisible();
    d.reject();
  });
  EXPECT_EQ(result, IDCANCEL);
  EXPECT_TRUE(stayedOpen);
  ASSERT_EQ(sink.Requests().size(), 1u);
  EXPECT_EQ(sink.Requests()[0].kind, MessageKind::Box);
  EXPECT_EQ(sink.Requests()[0].text, CStdStrW(u"Nije moguće kreirati koordinatni sistem"));
  EXPECT_EQ(sink.Requests()[0].type, static_cast<UINT>(MB_OK));
  EXPECT_TRUE(*dlg.GetCSys() == FromCode(4326));
}

TEST_F(CSysAdvDlgTest, ChangedTextBecomesTheSystemAndReturnStaysInTheText) {
  CStdStrW esri;
  ASSERT_TRUE(FromCode(32634).ToWktStr(&esri, nullptr, 2));
  ProbeDlg dlg;
  dlg.InitCSys(FromCode(4326));
  bool openAfterReturn = false;
  const INT_PTR result = Run(dlg, [&](ProbeDlg& d) {
    d.Wkt()->setFocus();
    d.Wkt()->selectAll();
    d.Wkt()->insertPlainText(ToQString(esri));
    QTest::keyClick(d.Wkt(), Qt::Key_Return);
    openAfterReturn = d.isVisible();
    d.Click(IDOK);
  });
  EXPECT_TRUE(openAfterReturn);
  EXPECT_EQ(dlg.WktText(), esri + u"\n");
  EXPECT_EQ(result, IDOK);
  EXPECT_TRUE(*dlg.GetCSys() == FromCode(32634));
  EXPECT_TRUE(sink.Requests().empty());
}

TEST_F(CSysAdvDlgTest, FromEpsgTakesTheCodedSystemAndShowsIt) {
  ProbeDlg dlg;
  dlg.InitCSys(Local());
  CStdStrW subTitle;
  const INT_PTR result = Run(dlg, [&](ProbeDlg& d) {
    // Cancelled: nothing changes.
    WithNested([](QWidget* sub) { static_cast<QDialog*>(sub)->reject(); }, [&] { d.Click(20251); });
    EXPECT_EQ(d.puts, 1);
    EXPECT_FALSE(d.Visible(20222));

    WithNested(
        [&](QWidget* sub) {
          subTitle = FromQString(sub->windowTitle());
          auto* code = sub->findChild<QLineEdit*>(QStringLiteral("20210"));
          ASSERT_NE(code, nullptr);
          QTest::keyClicks(code, "32634");
          QTest::mouseClick(sub->findChild<QPushButton*>(QStringLiteral("1")), Qt::LeftButton);
        },
        [&] { d.Click(20251); });
    EXPECT_EQ(d.puts, 2);
    EXPECT_EQ(d.Label(20221), CStdStrW(u"32634"));
    EXPECT_TRUE(d.Visible(20222));
    EXPECT_TRUE(d.Enabled(20253));
    EXPECT_TRUE(StartsWith(d.WktText(), u"PROJCRS[\"WGS 84 / UTM zone 34N\","));
    EXPECT_FALSE(d.Wkt()->document()->isModified());
    d.Click(IDOK);
  });
  EXPECT_EQ(subTitle, CStdStrW(u"Unesite EPSG"));
  EXPECT_EQ(result, IDOK);
  EXPECT_TRUE(*dlg.GetCSys() == FromCode(32634));
}

TEST_F(CSysAdvDlgTest, FromFileReadsAProjectionFileAndKeepsTheSystemWhenItCannotBeRead) {
  const QString prj = Write("utm34.prj", kUtm34Prj);
  const QString broken = Write("pokvaren.prj", "PROJCS[\"nedovrsen\",GEOGCS[");
  ProbeDlg dlg;
  dlg.InitCSys(FromCode(4326));
  FileDialogSeen seen;
  const INT_PTR result = Run(dlg, [&](ProbeDlg& d) {
    WithNested([](QWidget* file) { static_cast<QDialog*>(file)->reject(); }, [&] { d.Click(20252); });
    EXPECT_EQ(d.puts, 1);
    EXPECT_EQ(d.Label(20221), CStdStrW(u"4326"));

    WithNested([&](QWidget* file) { ChooseFile(file, broken, &seen); }, [&] { d.Click(20252); });
    EXPECT_EQ(d.puts, 2);
    EXPECT_EQ(d.Label(20221), CStdStrW(u"4326"));

    WithNested([&](QWidget* file) { ChooseFile(file, prj); }, [&] { d.Click(20252); });
    EXPECT_EQ(d.puts, 3);
    EXPECT_TRUE(StartsWith(d.WktText(), u"PROJCRS["));
    EXPECT_TRUE(d.Enabled(20253));
    d.Click(IDOK);
  });
  EXPECT_EQ(seen.filter, CStdStrW(u"Datoteke projekcije (*.prj)|*.prj|Sve datoteke (*.*)|*.*|"));
  EXPECT_EQ(seen.flags, OFN_FILEMUSTEXIST | OFN_LONGNAMES | CVantrelFileDialog::kRequiredFlags);
  EXPECT_EQ(seen.open, TRUE);
  EXPECT_EQ(result, IDOK);
  EXPECT_TRUE(*dlg.GetCSys() == FromCode(32634));
  EXPECT_TRUE(sink.Requests().empty());
}

TEST_F(CSysAdvDlgTest, ToFileWritesTheSystemGivingABareNameThePrjExtension) {
  ProbeDlg dlg;
  dlg.InitCSys(FromCode(32634));
  FileDialogSeen seen;
  Run(dlg, [&](ProbeDlg& d) {
    WithNested([&](QWidget* file) { ChooseFile(file, Path("izlaz"), &seen); }, [&] { d.Click(20253); });
    d.reject();
  });
  EXPECT_EQ(seen.filter, CStdStrW(u"Datoteke projekcije (*.prj)|*.prj||"));
  EXPECT_EQ(seen.flags, OFN_OVERWRITEPROMPT | CVantrelFileDialog::kRequiredFlags);
  EXPECT_EQ(seen.open, FALSE);
  std::ifstream written(Path("izlaz.prj").toStdString());
  ASSERT_TRUE(written.good());
  std::stringstream text;
  text << written.rdbuf();
  EXPECT_TRUE(text.str().starts_with("PROJCS[\"WGS_1984_UTM_Zone_34N\",GEOGCS[")) << text.str();
  CCoordSysX back;
  EXPECT_TRUE(back.FromWktFileESRI(FromQString(Path("izlaz.prj")).c_str()));
  EXPECT_TRUE(back == FromCode(32634));
  EXPECT_TRUE(sink.Requests().empty());
}

TEST_F(CSysAdvDlgTest, AFailedWriteIsReportedWithThePath) {
  // A folder that does not exist, and the none system, which cannot be written anywhere
  // (its button is disabled, the command is not).
  const struct {
    CCoordSysX csys;
    QString path;
  } cases[] = {
      {FromCode(32634), Path("nema/izlaz.prj")},
      {CCoordSysX(), Path("prazno.prj")},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path.toStdString());
    sink.Clear();
    ProbeDlg dlg;
    dlg.InitCSys(c.csys);
    Run(dlg, [&](ProbeDlg& d) {
      WithNested([&](QWidget* file) { ChooseFile(file, c.path); }, [&] { d.OnToFile(); });
      d.reject();
    });
    ASSERT_EQ(sink.Requests().size(), 1u);
    EXPECT_EQ(sink.Requests()[0].kind, MessageKind::Error);
    EXPECT_EQ(sink.Requests()[0].id, 933u);
    EXPECT_EQ(sink.Requests()[0].text, CStdStrW(u"Nije moguće upisati datoteku projekcije:\n") + FromQString(c.path));
    EXPECT_FALSE(QFile::exists(c.path));
  }
}

TEST_F(CSysAdvDlgTest, DoModalShowsItsHelpPageOnTheMainFrameAndPutsThePreviousOneBack) {
  CVantrelMainFrame frame;
  CWnd* previousMain = AfxGetThread()->m_pMainWnd;
  AfxGetThread()->m_pMainWnd = &frame;
  frame.GetHelp()->SetTopicIndex(u"vtrl0412.htm");
  CStdStrW during;
  ProbeDlg dlg;
  Run(dlg, [&](ProbeDlg& d) {
    during = frame.GetHelp()->GetTopicPath();
    d.Click(IDOK);
  });
  EXPECT_EQ(during, CStdStrW(u"html\\Edit Projection.htm"));
  EXPECT_EQ(frame.GetHelp()->GetTopicPath(), CStdStrW(u"html\\vtrl0412.htm"));

  // A frame without a help object is left alone.
  frame.SetHelp(nullptr);
  ProbeDlg again;
  EXPECT_EQ(Run(again, [](ProbeDlg& d) { d.reject(); }), IDCANCEL);
  AfxGetThread()->m_pMainWnd = previousMain;
}

}  // namespace
