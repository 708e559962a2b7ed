#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <memory>

#include "qt/QSettingsRegistryStore.h"
#include "qt/QtMessageSink.h"

namespace {

// One QApplication for the whole program, made by whichever test needs it first and
// destroyed after the last test: Qt cannot take it down among the static destructors.
std::unique_ptr<QApplication> g_application;

class ApplicationEnvironment : public ::testing::Environment {
 public:
  void TearDown() override { g_application.reset(); }
};

[[maybe_unused]] ::testing::Environment* const g_environment =
    ::testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

QApplication* Application() {
  if (!QCoreApplication::instance()) {
    static int argc = 1;
    static char name[] = "test_qt";
    static char* argv[] = {name, nullptr};
    g_application = std::make_unique<QApplication>(argc, argv);
  }
  return qobject_cast<QApplication*>(QCoreApplication::instance());
}

// The box on screen, found as the modal widget or else among the top-level widgets.
QMessageBox* ShownBox() {
  if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) return box;
  for (QWidget* w : QApplication::topLevelWidgets())
    if (auto* box = qobject_cast<QMessageBox*>(w); box && box->isVisible()) return box;
  return nullptr;
}

struct SeenBox {
  QString text;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  QMessageBox::StandardButtons buttons;
  QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
};

// Shows `request` through the sink; as soon as the box is up, `act` looks at it and
// presses a button or closes it.
int ShowAndAct(const MessageRequest& request, SeenBox* seen, const std::function<void(QMessageBox*)>& act) {
  QTimer::singleShot(0, [&] {
    QMessageBox* box = ShownBox();
    ASSERT_NE(box, nullptr);  // nothing to close then: the test would hang, and time out
    seen->text = box->text();
    seen->icon = box->icon();
    seen->buttons = box->standardButtons();
    if (QPushButton* d = box->defaultButton()) seen->defaultButton = box->standardButton(d);
    act(box);
  });
  CQtMessageSink sink;
  return sink.Show(request);
}

MessageRequest Request(UINT type, const char16_t* text = u"Datoteka već postoji.") {
  MessageRequest request;
  request.kind = MessageKind::Prompt;
  request.id = 504;
  request.text = text;
  request.type = type;
  return request;
}

std::function<void(QMessageBox*)> Press(QMessageBox::StandardButton button) {
  return [button](QMessageBox* box) { box->button(button)->click(); };
}

}  // namespace

TEST(CQtMessageSink, ShowsTheTypesButtonsAndIconAndAnswersWithThePressedOne) {
  if (!Application()) GTEST_SKIP() << "another kind of Qt application is running";
  SeenBox seen;
  EXPECT_EQ(ShowAndAct(Request(MB_YESNO | MB_ICONQUESTION), &seen, Press(QMessageBox::No)), IDNO);
  EXPECT_EQ(seen.text, QStringLiteral("Datoteka već postoji."));
  EXPECT_EQ(seen.icon, QMessageBox::Question);
  EXPECT_EQ(seen.buttons, QMessageBox::Yes | QMessageBox::No);
  EXPECT_EQ(seen.defaultButton, QMessageBox::Yes);

  EXPECT_EQ(ShowAndAct(Request(MB_YESNOCANCEL | MB_ICONEXCLAMATION | 0x100), &seen, Press(QMessageBox::Yes)),
            IDYES);
  EXPECT_EQ(seen.icon, QMessageBox::Warning);
  EXPECT_EQ(seen.buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
  EXPECT_EQ(seen.defaultButton, QMessageBox::No);  // MB_DEFBUTTON2

  EXPECT_EQ(ShowAndAct(Request(0x2 | MB_ICONSTOP), &seen, Press(QMessageBox::Retry)), IDRETRY);
  EXPECT_EQ(seen.icon, QMessageBox::Critical);
  EXPECT_EQ(seen.buttons, QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore);

  EXPECT_EQ(ShowAndAct(Request(MB_OK), &seen, Press(QMessageBox::Ok)), IDOK);
  EXPECT_EQ(seen.icon, QMessageBox::NoIcon);
  EXPECT_EQ(seen.buttons, QMessageBox::Ok);
}

TEST(CQtMessageSink, ClosingTheBoxCountsAsCancelElseNo) {
  if (!Application()) GTEST_SKIP() << "another kind of Qt application is running";
  SeenBox seen;
  const auto close = [](QMessageBox* box) { box->reject(); };
  EXPECT_EQ(ShowAndAct(Request(MB_OKCANCEL), &seen, close), IDCANCEL);
  EXPECT_EQ(ShowAndAct(Request(MB_YESNO), &seen, close), IDNO);
  EXPECT_EQ(ShowAndAct(Request(MB_YESNOCANCEL), &seen, close), IDCANCEL);
  EXPECT_EQ(ShowAndAct(Request(MB_OK), &seen, close), IDOK);
}

TEST(CQtMessageSink, ServesAsTheMessageSinkOfTheLibrary) {
  if (!Application()) GTEST_SKIP() << "another kind of Qt application is running";
  CQtMessageSink sink;
  CMessageSink* previous = SetMessageSink(&sink);
  QString seen;
  QTimer::singleShot(0, [&] {
    QMessageBox* box = ShownBox();
    ASSERT_NE(box, nullptr);
    seen = box->text();
    box->button(QMessageBox::Ok)->click();
  });
  EXPECT_EQ(AfxMessageBox(u"Unesite broj"), IDOK);
  EXPECT_EQ(seen, QStringLiteral("Unesite broj"));
  SetMessageSink(previous);
}

class QSettingsRegistryStoreTest : public ::testing::Test {
 protected:
  QString File() const { return m_dir.filePath(QStringLiteral("Corvia.ini")); }
  QTemporaryDir m_dir;
};

TEST_F(QSettingsRegistryStoreTest, WritesReadsAndDeletesValuesInTheSettingsFile) {
  ASSERT_TRUE(m_dir.isValid());
  {
    CQSettingsRegistryStore store(File());
    EXPECT_TRUE(store.Write(u"", u"StartInSamples", u"1,0,1"));
    EXPECT_TRUE(store.Write(u"Dijalozi\\Datoteke", u"Folder", u"/home/korisnik/čvorovi"));
  }
  QSettings raw(File(), QSettings::IniFormat);
  EXPECT_EQ(raw.value(QStringLiteral("StartInSamples")).toString(), QStringLiteral("1,0,1"));
  EXPECT_EQ(raw.value(QStringLiteral("Dijalozi/Datoteke/Folder")).toString(), QStringLiteral("/home/korisnik/čvorovi"));

  CQSettingsRegistryStore store(File());
  CStdStrW value;
  EXPECT_TRUE(store.Read(u"", u"StartInSamples", value));
  EXPECT_EQ(value, CStdStrW(u"1,0,1"));
  EXPECT_TRUE(store.Read(u"Dijalozi/Datoteke", u"Folder", value));
  EXPECT_EQ(value, CStdStrW(u"/home/korisnik/čvorovi"));
  EXPECT_FALSE(store.Read(u"", u"Missing", value));
  EXPECT_TRUE(store.Delete(u"", u"StartInSamples"));
  EXPECT_FALSE(store.Read(u"", u"StartInSamples", value));
  EXPECT_TRUE(store.Delete(u"", u"NeverThere"));
}

TEST_F(QSettingsRegistryStoreTest, MatchesSectionsAndNamesWithoutRegardToCase) {
  ASSERT_TRUE(m_dir.isValid());
  CQSettingsRegistryStore store(File());
  ASSERT_TRUE(store.Write(u"Dijalozi", u"StartInSamples", u"1,1,1"));
  CStdStrW value;
  EXPECT_TRUE(store.Read(u"DIJALOZI", u"startinsamples", value));
  EXPECT_EQ(value, CStdStrW(u"1,1,1"));
  ASSERT_TRUE(store.Write(u"dijalozi", u"STARTINSAMPLES", u"0,1,1"));
  QSettings raw(File(), QSettings::IniFormat);
  EXPECT_EQ(raw.allKeys(), QStringList{QStringLiteral("Dijalozi/StartInSamples")});  // one value, first spelling
  EXPECT_EQ(raw.value(QStringLiteral("Dijalozi/StartInSamples")).toString(), QStringLiteral("0,1,1"));
}

TEST_F(QSettingsRegistryStoreTest, BacksTheSuitesRegistryCalls) {
  ASSERT_TRUE(m_dir.isValid());
  CQSettingsRegistryStore store(File());
  CRegistryStore* previous = SetRegistryStore(&store);
  EXPECT_EQ(CorviaRegistryWriteInt(nullptr, u"DefaultLineWidth", 4), 1);
  EXPECT_EQ(CorviaRegistryReadInt(nullptr, u"defaultlinewidth", 2), 4);
  EXPECT_EQ(CorviaRegistryWrite(nullptr, u"a/b", u"x"), 0);  // a name may not hold a separator
  SetRegistryStore(previous);
}
