#include "help/VantrelHelp.h"

#include <gtest/gtest.h>

#include <vector>

#include "suite/FileName.h"
#include "suite/VantrelWinApp.h"

namespace {

DWORD g_now = 0;
DWORD FakeTicks() { return g_now; }

// An application whose help viewer writes down what it was asked to show.
class RecordingApp : public CWinApp {
 public:
  void HtmlHelp(UINT_PTR data, UINT command) override {
    shown.emplace_back(reinterpret_cast<const WCHAR*>(data));
    commands.push_back(command);
  }
  std::vector<CStdStrW> shown;
  std::vector<UINT> commands;
};

// Help whose preference can be set and whose online help answers as told.
class OnlineHelpStub : public CVantrelHelp {
 public:
  void SetHelpPreference(int preference) override { m_nHelpPreference = preference; }
  bool OnlineHelp(HWND owner) override {
    owners.push_back(owner);
    return onlineShows;
  }
  bool onlineShows = false;
  std::vector<HWND> owners;
};

class HelpTest : public ::testing::Test {
 protected:
  void SetUp() override {
    g_now = 1000;
    m_previous = vantrel1::SetHelpTickSource(FakeTicks);
  }
  void TearDown() override { vantrel1::SetHelpTickSource(m_previous); }

  RecordingApp app;

 private:
  vantrel1::HelpTickSource m_previous = nullptr;
};

TEST_F(HelpTest, ShowsTheCurrentTopicInsideTheHtmlFolderOfTheHelpFile) {
  const struct {
    const char16_t* topic;  // null: the topic a new help object starts with
    const char16_t* path;
  } cases[] = {
      {nullptr, u"html\\vtrl0000.htm"},
      {u"", u"html\\vtrl0000.htm"},
      {u"Edit Projection.htm", u"html\\Edit Projection.htm"},
      {u"podešavanja\\koordinate.htm", u"html\\podešavanja\\koordinate.htm"},
  };
  for (const auto& c : cases) {
    CVantrelHelp help;
    if (c.topic) help.SetTopicIndex(c.topic);
    g_now += 1000;
    app.shown.clear();
    help.Help(nullptr);
    ASSERT_EQ(app.shown.size(), 1u);
    EXPECT_EQ(app.shown[0], CStdStrW(c.path));
    EXPECT_EQ(app.commands.back(), HH_DISPLAY_TOPIC);
  }
}

TEST_F(HelpTest, RequestsWithin600MillisecondsOfTheLastShownOneAreIgnored) {
  const struct {
    const char* name;
    DWORD created;
    std::vector<DWORD> requests;
    int shown;
  } cases[] = {
      {"right after construction", 1000, {1300}, 0},
      {"exactly 600 ms after construction", 1000, {1600}, 0},
      {"601 ms after construction", 1000, {1601}, 1},
      {"300 ms apart", 1000, {5000, 5300}, 1},
      {"700 ms apart", 1000, {5000, 5700}, 2},
      // An ignored request does not restart the interval.
      {"ignored one in between", 1000, {5000, 5400, 5800}, 2},
      {"counter wrapped, 512 ms", 0xFFFFFF00u, {0x100u}, 0},
      {"counter wrapped, 601 ms", 0xFFFFFF00u, {0x159u}, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    g_now = c.created;
    CVantrelHelp help;
    app.shown.clear();
    for (DWORD t : c.requests) {
      g_now = t;
      help.Help(nullptr);
    }
    EXPECT_EQ(static_cast<int>(app.shown.size()), c.shown);
  }
}

TEST_F(HelpTest, OnlineHelpIsTriedOnlyForPreferenceOneAndLocalHelpFollowsWhenItShowsNothing) {
  const struct {
    int preference;
    bool onlineShows;
    size_t onlineCalls;
    size_t localShown;
  } cases[] = {
      {1, true, 1, 0}, {1, false, 1, 1}, {0, true, 0, 1}, {2, true, 0, 1}, {-1, true, 0, 1},
  };
  const HWND owner = reinterpret_cast<HWND>(0x1234);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.preference);
    OnlineHelpStub help;
    help.SetHelpPreference(c.preference);
    help.onlineShows = c.onlineShows;
    g_now += 1000;
    app.shown.clear();
    help.Help(owner);
    EXPECT_EQ(help.owners.size(), c.onlineCalls);
    if (!help.owners.empty()) {
      EXPECT_EQ(help.owners[0], owner);
    }
    EXPECT_EQ(app.shown.size(), c.localShown);
  }
}

TEST_F(HelpTest, PlainHelpKeepsItsPreferenceUnlessAssignedAndThenShowsLocalHelp) {
  CVantrelHelp plain;
  plain.SetHelpPreference(1);
  EXPECT_EQ(plain.GetHelpPreference(), 0);

  OnlineHelpStub online;
  online.SetHelpPreference(1);
  plain = online;
  EXPECT_EQ(plain.GetHelpPreference(), 1);
  g_now += 1000;
  plain.Help(nullptr);
  ASSERT_EQ(app.shown.size(), 1u);
  EXPECT_EQ(app.shown[0], CStdStrW(u"html\\vtrl0000.htm"));
}

TEST_F(HelpTest, TopicsAndHelpNamesAreSwappedAndHandedBack) {
  CVantrelHelp help;
  // A dialog's balanced swap.
  const CStdStrW previous = help.SetTopicIndex(u"Edit Projection.htm");
  EXPECT_EQ(previous, CStdStrW(u"vtrl0000.htm"));
  EXPECT_EQ(help.SetTopicIndex(previous), CStdStrW(u"Edit Projection.htm"));
  EXPECT_EQ(help.GetTopicPath(), CStdStrW(u"html\\vtrl0000.htm"));

  const CFileName first(u"/opt/corvia/help/Vantrel.chm");
  const CFileName second(u"/opt/corvia/help/Putevi.chm");
  EXPECT_EQ(help.SetHTMLHelpName(&first), CStdStrW());
  EXPECT_EQ(help.SetHTMLHelpName(&second), first.GetPath());
  EXPECT_EQ(help.SetHTMLHelpName(nullptr), second.GetPath());
  EXPECT_EQ(help.SetHTMLHelpName(&first), CStdStrW());
}

TEST_F(HelpTest, CopiesCarryTheTopicAndTheTimeOfTheLastShownHelp) {
  CVantrelHelp help;
  help.SetTopicIndex(u"Edit Projection.htm");
  g_now = 5000;
  help.Help(nullptr);
  CVantrelHelp copy(help);
  g_now = 5300;
  copy.Help(nullptr);
  g_now = 5700;
  copy.Help(nullptr);
  ASSERT_EQ(app.shown.size(), 2u);
  EXPECT_EQ(app.shown[1], CStdStrW(u"html\\Edit Projection.htm"));
}

TEST_F(HelpTest, WithoutAnApplicationNothingIsShownButTheRequestStillCounts) {
  CVantrelHelp help;
  g_now = 5000;
  CWinApp* const previous = AfxSetApp(nullptr);
  help.Help(nullptr);
  AfxSetApp(previous);
  g_now = 5300;
  help.Help(nullptr);
  EXPECT_TRUE(app.shown.empty());
  g_now = 5700;
  help.Help(nullptr);
  EXPECT_EQ(app.shown.size(), 1u);
}

}  // namespace
