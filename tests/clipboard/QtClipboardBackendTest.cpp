#include <gtest/gtest.h>

#include <QByteArray>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "clipboard/QtClipboardBackend.h"
#include "clipboard/Vantrel1Frame.h"
#include "clipboard/VantrelClipboard.h"
#include "platform/Clipboard.h"
#include "platform/GlobalMemory.h"

namespace {

// The clipboard needs a GUI application; the test program makes one the first time a test
// asks and keeps it to the end.
QClipboard* DesktopClipboard() {
  if (!QCoreApplication::instance()) {
    static int argc = 1;
    static char name[] = "test_clipboard";
    static char* argv[] = {name, nullptr};
    static QGuiApplication* app = new QGuiApplication(argc, argv);
    (void)app;
  }
  return QGuiApplication::clipboard();
}

// The Qt backend installed for one test, on a desktop clipboard that starts empty.
class QtClipboard : public ::testing::Test {
 protected:
  void SetUp() override {
    DesktopClipboard()->clear();
    m_previous = SetClipboardBackend(&m_backend);
  }
  void TearDown() override {
    CloseClipboard();
    SetClipboardBackend(m_previous);
  }

  CQtClipboardBackend m_backend;
  CClipboardBackend* m_previous = nullptr;
};

QStringList DesktopFormats() {
  const QMimeData* content = DesktopClipboard()->mimeData();
  return content ? content->formats() : QStringList{};
}

QString MimeOf(const char* name) { return QStringLiteral("application/x-qt-windows-mime;value=\"%1\"").arg(name); }

TEST_F(QtClipboard, TransferPublishesEachNamedFormatAsItsOwnMimeType) {
  CVantrelClipboard clipboard(nullptr);
  CStdStrW system = u"WGS 84 / UTM 34N", units = u"m", plain = u"45°15' 19°50'";
  ASSERT_EQ(clipboard.OpenCB(), 1);
  EXPECT_EQ(clipboard.AppendCB(clipboard.GetID(5), system), 1);
  EXPECT_EQ(clipboard.AppendCB(clipboard.GetID(7), units), 1);
  EXPECT_EQ(clipboard.AppendCB(CF_UNICODETEXT, plain), 1);
  EXPECT_EQ(DesktopFormats(), QStringList{});  // nothing before the close
  clipboard.CloseCB();

  const QMimeData* content = DesktopClipboard()->mimeData();
  ASSERT_NE(content, nullptr);
  EXPECT_EQ(content->data(MimeOf("Vantrel Coordinate System")),
            QByteArray(reinterpret_cast<const char*>(u"WGS 84 / UTM 34N"), 34));
  EXPECT_EQ(content->data(MimeOf("Vantrel LM Units")), QByteArray("m\0\0\0", 4));
  EXPECT_EQ(content->text(), QStringLiteral("45°15' 19°50'"));
  EXPECT_FALSE(content->hasFormat(MimeOf("Vantrel Lat Lon")));
}

TEST_F(QtClipboard, FormatsPutByAnotherProgramAreReadByName) {
  auto* foreign = new QMimeData;
  foreign->setData(MimeOf("Vantrel Lat Lon"), QByteArray(reinterpret_cast<const char*>(u"45.25 19.83"), 22));
  foreign->setText(QStringLiteral("plain"));
  DesktopClipboard()->setMimeData(foreign);

  CVantrel1Frame frame;
  CStdStrW text;
  EXPECT_EQ(frame.PullFromClipboard(frame.m_pClipboard->GetID(2), &text), 1);
  EXPECT_EQ(text, u"45.25 19.83");  // no terminator in the data: the block's end ends it
  EXPECT_EQ(frame.PullFromClipboard(CF_UNICODETEXT, &text), 1);
  EXPECT_EQ(text, u"plain");
  text = u"as it was";
  EXPECT_EQ(frame.PullFromClipboard(frame.m_pClipboard->GetID(5), &text), 0);
  EXPECT_EQ(text, u"as it was");
}

TEST_F(QtClipboard, PushReplacesAndAppendingWithoutEmptyingKeepsTheRest) {
  DesktopClipboard()->setText(QStringLiteral("older"));
  CVantrel1Frame frame;
  CStdStrW units = u"ft";
  EXPECT_EQ(frame.PushToClipboard(frame.m_pClipboard->GetID(6), units), 1);
  EXPECT_FALSE(DesktopClipboard()->mimeData()->hasText());
  EXPECT_TRUE(DesktopClipboard()->mimeData()->hasFormat(MimeOf("Vantrel Units")));

  EXPECT_EQ(frame.m_pClipboard->SetTextData(CF_UNICODETEXT, u"beside", 0), 1);
  EXPECT_EQ(DesktopClipboard()->text(), QStringLiteral("beside"));
  EXPECT_EQ(frame.m_pClipboard->GetTextData(frame.m_pClipboard->GetID(6)), u"ft");
}

TEST_F(QtClipboard, FormatsWithoutANameAreRefused) {
  ASSERT_EQ(OpenClipboard(nullptr), TRUE);
  EmptyClipboard();
  HGLOBAL block = GlobalAlloc(GMEM_SHARE, 2);
  EXPECT_EQ(SetClipboardData(CF_TEXT, block), nullptr);
  EXPECT_EQ(SetClipboardData(0xBFFF, block), nullptr);
  EXPECT_EQ(IsClipboardFormatAvailable(CF_TEXT), FALSE);
  GlobalFree(block);
  EXPECT_EQ(CQtClipboardBackend::MimeTypeOf(CF_UNICODETEXT), QString());
}

}  // namespace
