#include "help/HelpViewerApp.h"

#include <gtest/gtest.h>

#include <vector>

#include "help/VantrelHelp.h"

namespace {

std::vector<QUrl> g_opened;
bool RecordPage(const QUrl& page) {
  g_opened.push_back(page);
  return true;
}

DWORD g_now = 0;
DWORD FakeTicks() { return g_now; }

TEST(HelpPages, ATopicPathNamesAPageInsideTheHelpFolder) {
  const struct {
    const char16_t* folder;
    const char16_t* topic;
    const char* page;  // empty: refused
  } cases[] = {
      {u"/usr/share/vantrel1/help", u"html\\vtrl0000.htm", "file:///usr/share/vantrel1/help/html/vtrl0000.htm"},
      {u"/usr/share/vantrel1/help/", u"html\\Edit Projection.htm",
       "file:///usr/share/vantrel1/help/html/Edit%20Projection.htm"},
      {u"/", u"html\\a.htm", "file:///html/a.htm"},
      {u"/help", u"html\\..\\..\\etc\\passwd", ""},
      {u"/help", u"..", ""},
      {u"/help", u".", ""},
      {u"/help", u"", ""},
      {u"", u"html\\a.htm", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(vantrel1::HelpPageUrl(c.folder, c.topic).toString(QUrl::FullyEncoded).toStdString(), c.page)
        << vantrel1::ToUtf8(c.topic);
  }
}

TEST(HelpPages, TheHelpObjectOpensItsTopicThroughTheApplication) {
  const vantrel1::HelpPageOpener previousOpener = vantrel1::SetHelpPageOpener(RecordPage);
  const vantrel1::HelpTickSource previousTicks = vantrel1::SetHelpTickSource(FakeTicks);
  g_opened.clear();
  {
    CHelpViewerApp app;
    app.SetHelpFilePath(u"/opt/corvia/help");
    g_now = 0;
    CVantrelHelp help;
    help.SetTopicIndex(u"Edit Projection.htm");
    g_now = 1000;
    help.Help(nullptr);
    // Only the topic command shows anything.
    const CStdStrW topic = u"html\\a.htm";
    app.HtmlHelp(reinterpret_cast<UINT_PTR>(topic.c_str()), 1);
    app.HtmlHelp(0, HH_DISPLAY_TOPIC);
  }
  vantrel1::SetHelpTickSource(previousTicks);
  vantrel1::SetHelpPageOpener(previousOpener);
  ASSERT_EQ(g_opened.size(), 1u);
  EXPECT_EQ(g_opened[0].toLocalFile().toStdString(), "/opt/corvia/help/html/Edit Projection.htm");
}

}  // namespace
