#include "suite/FileSelection.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "platform/RecordingMessageSink.h"
#include "platform/Utf.h"

namespace {

using namespace vantrel1;

constexpr const char16_t* kLinesThenText = u"Linije i tekst|*.lin;*.txt|Sve datoteke|*.*||";

std::vector<CStdStrW> Paths(std::initializer_list<const char16_t*> list) { return {list.begin(), list.end()}; }

FileSelection Selection(std::vector<CStdStrW> paths, CStdStrW title = {}) {
  FileSelection selection;
  selection.paths = std::move(paths);
  selection.fileTitle = std::move(title);
  selection.pathCapacity = 52201;
  selection.titleCapacity = 64;
  return selection;
}

FileSelectionRules Rules(const char16_t* filter = kLinesThenText, int index = 1, bool save = false) {
  FileSelectionRules rules;
  rules.filter = filter;
  rules.filterIndex = index;
  rules.saveDialog = save;
  return rules;
}

TEST(FilterList, FindsThePatternsOfTheSelectedPairUntilTheListEnds) {
  const struct {
    const char16_t* filter;
    int index;
    bool found;
    const char16_t* patterns;
  } cases[] = {
      {kLinesThenText, 1, true, u"*.lin;*.txt"},
      {kLinesThenText, 2, true, u"*.*"},
      {kLinesThenText, 3, false, u""},
      {kLinesThenText, 0, false, u""},
      {kLinesThenText, -1, false, u""},
      {u"Projekcije|*.prj", 1, true, u"*.prj"},  // without the closing "||"
      {u"Prazno|", 1, true, u""},
      {u"Bez uzorka", 1, false, u""},
      {u"|*.lin|Tekst|*.txt||", 1, false, u""},  // an empty description ends the list
      {u"A|*.a||B|*.b||", 2, false, u""},
      {u"", 1, false, u""},
  };
  for (const auto& c : cases) {
    CStdStrW patterns = u"unchanged";
    EXPECT_EQ(FilterPattern(c.filter, c.index, &patterns), c.found) << ToUtf8(c.filter) << " #" << c.index;
    if (c.found) {
      EXPECT_EQ(patterns, CStdStrW(c.patterns));
    }
  }
}

TEST(FilterList, NameFitsWhenAnyPartFitsAndExtensionComesFromTheFirstPart) {
  EXPECT_TRUE(NameFitsPatterns(u"put.LIN", u"*.lin;*.txt"));
  EXPECT_TRUE(NameFitsPatterns(u"opis.txt", u"*.lin;*.txt"));
  EXPECT_FALSE(NameFitsPatterns(u"plan.dwg", u"*.lin;*.txt"));
  EXPECT_FALSE(NameFitsPatterns(u"plan", u"*.lin;*.txt"));
  EXPECT_TRUE(NameFitsPatterns(u"plan", u"*.*"));
  const struct {
    const char16_t* patterns;
    const char16_t* ext;
  } cases[] = {
      {u"*.prj", u"prj"}, {u"*.lin;*.txt", u"lin"}, {u"*.tar.gz", u"tar.gz"}, {u"Normal.sim", u"sim"},
      {u"*", u""},        {u"*.*", u""},            {u"*.l?n", u""},         {u"*.", u""},
      {u"", u""},         {u";*.lin", u""},
  };
  for (const auto& c : cases) EXPECT_EQ(PatternExtension(c.patterns), CStdStrW(c.ext)) << ToUtf8(c.patterns);
}

TEST(FilterList, AppendsTheExtensionOnlyWhenItAndTheTerminatorFit) {
  CStdStrW name = u"a";
  EXPECT_FALSE(AppendExtension(name, u"lin", 5));
  EXPECT_EQ(name, CStdStrW(u"a"));
  EXPECT_TRUE(AppendExtension(name, u"lin", 6));
  EXPECT_EQ(name, CStdStrW(u"a.lin"));
  CStdStrW dotted = u"plan.";
  EXPECT_TRUE(AppendExtension(dotted, u"lin", 9));
  EXPECT_EQ(dotted, CStdStrW(u"plan.lin"));
}

TEST(SelectionBuffer, RoundTripsSingleAndMultipleSelectionsInTheDialogsForm) {
  WCHAR buffer[64];
  ASSERT_TRUE(WriteSelectionBuffer(Paths({u"/p/put.lin"}), buffer, 64));
  EXPECT_EQ(std::u16string(buffer), u"/p/put.lin");
  EXPECT_TRUE(BufferHoldsSingleName(buffer, 64));
  EXPECT_EQ(ReadSelectionBuffer(buffer, 64), Paths({u"/p/put.lin"}));

  const auto several = Paths({u"/p/a.lin", u"/p/b.lin", u"/q/c.lin"});
  ASSERT_TRUE(WriteSelectionBuffer(several, buffer, 64));
  const std::u16string raw(buffer, 27);
  EXPECT_EQ(raw, std::u16string(u"/p/\0a.lin\0b.lin\0/q/c.lin\0\0", 27));
  EXPECT_FALSE(BufferHoldsSingleName(buffer, 64));
  EXPECT_EQ(ReadSelectionBuffer(buffer, 64), several);
}

TEST(SelectionBuffer, RefusesSelectionsThatDoNotFitAndNeverReadsBeyondTheCapacity) {
  WCHAR buffer[8];
  EXPECT_TRUE(WriteSelectionBuffer(Paths({u"/p/a.li"}), buffer, 8));  // 7 units and a terminator
  EXPECT_FALSE(WriteSelectionBuffer(Paths({u"/p/a.lin"}), buffer, 8));
  EXPECT_EQ(buffer[0], 0);
  EXPECT_FALSE(WriteSelectionBuffer(Paths({u"/p/a", u"/p/b"}), buffer, 8));  // "/p/ a b" and the end need 9

  const WCHAR unterminated[4] = {u'a', u'b', u'c', u'd'};
  EXPECT_EQ(ReadSelectionBuffer(unterminated, 4), Paths({u"abcd"}));
  EXPECT_TRUE(BufferHoldsSingleName(unterminated, 4));
  EXPECT_TRUE(ReadSelectionBuffer(nullptr, 10).empty());
  EXPECT_FALSE(BufferHoldsSingleName(nullptr, 10));
}

class SelectionCheck : public ::testing::Test {
 protected:
  void SetUp() override {
    dir = std::filesystem::temp_directory_path() /
          ("vantrel1-selection-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
           ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(dir);
  }
  void TearDown() override { std::filesystem::remove_all(dir); }

  CStdStrW Touch(const std::string& name) {
    std::ofstream(dir / name) << "x";
    return CStdStrW::FromUtf8(dir.string() + "/" + name);
  }
  CStdStrW In(const std::string& name) const { return CStdStrW::FromUtf8(dir.string() + "/" + name); }

  std::filesystem::path dir;
  CRecordingMessageSink sink;
};

TEST_F(SelectionCheck, RefusesPathsLongerThan250AndSelectionsOfMoreThan200Files) {
  const CStdStrW longest = u"/" + CStdStrW(245, u'a') + u".lin";  // 250
  auto selection = Selection({longest});
  EXPECT_EQ(CheckFileSelection(selection, Rules(), nullptr), 0);
  EXPECT_TRUE(sink.Requests().empty());

  auto tooLong = Selection({u"/b.lin", longest + u"x"});
  EXPECT_EQ(CheckFileSelection(tooLong, Rules(), nullptr), 1);
  ASSERT_EQ(sink.Requests().size(), 1u);
  EXPECT_EQ(sink.Requests()[0].id, 44u);
  EXPECT_NE(sink.Requests()[0].text.find(longest + u"x"), CStdStrW::npos);
  sink.Clear();

  std::vector<CStdStrW> many;
  for (int i = 0; i < 200; ++i) many.push_back(u"/p/f" + CStdStrW::FromUtf8(std::to_string(i)) + u".lin");
  auto twoHundred = Selection(many);
  EXPECT_EQ(CheckFileSelection(twoHundred, Rules(), nullptr), 0);
  many.push_back(u"/p/last.lin");
  auto twoHundredOne = Selection(many);
  EXPECT_EQ(CheckFileSelection(twoHundredOne, Rules(), nullptr), 1);
  ASSERT_EQ(sink.Requests().size(), 1u);
  EXPECT_EQ(sink.Requests()[0].id, 812u);
}

TEST_F(SelectionCheck, MatchesNamesAgainstTheSelectedFilterSupplyingTheFirstExtensionToOneBareName) {
  const struct {
    std::vector<CStdStrW> paths;
    CStdStrW title;
    int filterIndex;
    int refused;
    bool appended;
    std::vector<CStdStrW> after;
    CStdStrW titleAfter;
    CStdStrW rejectedName;  // argument of message 138
  } cases[] = {
      {Paths({u"/p/plan"}), u"plan", 1, 0, true, Paths({u"/p/plan.lin"}), u"plan.lin", u""},
      {Paths({u"/p/plan."}), u"plan.", 1, 0, true, Paths({u"/p/plan.lin"}), u"plan.lin", u""},
      {Paths({u"/p/plan"}), u"plan", 0, 0, true, Paths({u"/p/plan.lin"}), u"plan.lin", u""},  // 0 counts as 1
      {Paths({u"/p/opis.TXT"}), u"opis.TXT", 1, 0, false, Paths({u"/p/opis.TXT"}), u"opis.TXT", u""},
      {Paths({u"/p/crtez.dwg"}), u"crtez.dwg", 1, 1, false, Paths({u"/p/crtez.dwg"}), u"crtez.dwg", u"crtez.dwg"},
      {Paths({u"/p/a", u"/p/b"}), u"a", 1, 1, false, Paths({u"/p/a", u"/p/b"}), u"a", u"a"},
      {Paths({u"/p/a.lin", u"/p/b.dwg"}), u"a.lin", 1, 1, false, Paths({u"/p/a.lin", u"/p/b.dwg"}), u"a.lin",
       u"b.dwg"},
      {Paths({u"/p/plan"}), u"plan", 2, 0, false, Paths({u"/p/plan"}), u"plan", u""},  // "*.*"
      {Paths({u"/p/plan"}), u"", 1, 0, true, Paths({u"/p/plan.lin"}), u"", u""},  // no title to extend
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(ToUtf8(c.paths.front()) + " filter " + std::to_string(c.filterIndex));
    sink.Clear();
    auto selection = Selection(c.paths, c.title);
    bool appended = !c.appended;
    EXPECT_EQ(CheckFileSelection(selection, Rules(kLinesThenText, c.filterIndex), &appended), c.refused);
    EXPECT_EQ(appended, c.appended);
    EXPECT_EQ(selection.paths, c.after);
    EXPECT_EQ(selection.fileTitle, c.titleAfter);
    if (c.rejectedName.empty()) {
      EXPECT_TRUE(sink.Requests().empty());
    } else {
      ASSERT_EQ(sink.Requests().size(), 1u);
      EXPECT_EQ(sink.Requests()[0].id, 138u);
      EXPECT_NE(sink.Requests()[0].text.find(c.rejectedName), CStdStrW::npos);
    }
  }
}

TEST_F(SelectionCheck, SkipsMatchingWhenNotRequiredOrWithoutFilterAndRefusesSilentlyBeyondTheList) {
  auto selection = Selection(Paths({u"/p/crtez.dwg"}));
  auto rules = Rules();
  rules.extMatchRequired = false;
  EXPECT_EQ(CheckFileSelection(selection, rules, nullptr), 0);
  EXPECT_EQ(CheckFileSelection(selection, Rules(u""), nullptr), 0);
  EXPECT_EQ(CheckFileSelection(selection, Rules(kLinesThenText, 3), nullptr), 1);
  EXPECT_TRUE(sink.Requests().empty());
}

TEST_F(SelectionCheck, KeepsTheNameWhenTheSuppliedExtensionDoesNotFitItsBuffer) {
  auto selection = Selection(Paths({u"/p/plan"}), u"plan");
  selection.titleCapacity = 8;  // "plan.lin" needs 9 with its terminator
  selection.pathCapacity = 11;  // "/p/plan.lin" needs 12
  bool appended = false;
  EXPECT_EQ(CheckFileSelection(selection, Rules(), &appended), 0);
  EXPECT_TRUE(appended);
  EXPECT_EQ(selection.paths, Paths({u"/p/plan"}));
  EXPECT_EQ(selection.fileTitle, CStdStrW(u"plan"));
}

TEST_F(SelectionCheck, SaveDialogRefusesTheReservedNameInAnyCase) {
  for (const char16_t* path : {u"/p/Normal.lin", u"/p/NORMAL.txt", u"/p/normal"}) {
    sink.Clear();
    auto selection = Selection(Paths({path}));
    EXPECT_EQ(CheckFileSelection(selection, Rules(kLinesThenText, 1, true), nullptr), 1) << ToUtf8(path);
    ASSERT_EQ(sink.Requests().size(), 1u);
    EXPECT_EQ(sink.Requests()[0].id, 743u);
  }
  auto opened = Selection(Paths({u"/p/Normal.lin"}));
  EXPECT_EQ(CheckFileSelection(opened, Rules(kLinesThenText, 1, false), nullptr), 0);
  auto similar = Selection(Paths({u"/p/Normalan.lin"}));
  EXPECT_EQ(CheckFileSelection(similar, Rules(kLinesThenText, 1, true), nullptr), 0);
}

TEST_F(SelectionCheck, SaveDialogAsksAgainOnlyWhenTheSuppliedExtensionNamesAnExistingFile) {
  Touch("plan.lin");
  const CStdStrW existing = Touch("opis.txt");
  const struct {
    CStdStrW path;
    int answer;
    bool asked;
    int refused;
  } cases[] = {
      {In("plan"), IDYES, true, 0},
      {In("plan"), IDNO, true, 1},
      {In("novi"), IDNO, false, 0},      // nothing there yet
      {existing, IDNO, false, 0},        // the framework already asked about this name
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(ToUtf8(c.path));
    sink.Clear();
    sink.QueueAnswer(c.answer);
    auto selection = Selection({c.path});
    EXPECT_EQ(CheckFileSelection(selection, Rules(kLinesThenText, 1, true), nullptr), c.refused);
    ASSERT_EQ(sink.Requests().size(), c.asked ? 1u : 0u);
    if (c.asked) {
      EXPECT_EQ(sink.Requests()[0].id, 504u);
      EXPECT_NE(sink.Requests()[0].text.find(u"plan.lin"), CStdStrW::npos);
    }
  }
}

TEST(SamplesFlags, ReadsThreeIntegersAsTheCScanDoes) {
  const struct {
    const char16_t* text;
    int a, b, c;
  } cases[] = {
      {u"1,1,1", 1, 1, 1},
      {u"0,1,0", 0, 1, 0},
      {u" 1, -2,\t+3", 1, -2, 3},
      {u"1 ,2,3", 1, 0, 0},  // the comma must follow the digits
      {u"1,2", 1, 2, 0},
      {u"", 0, 0, 0},
      {u"x,1,1", 0, 0, 0},
      {u"7,,1", 7, 0, 0},
      {u"99999999999999999999,-99999999999,5", INT_MAX, INT_MIN, 5},
      {u"1,2,3,4", 1, 2, 3},
  };
  for (const auto& c : cases) {
    const SamplesFlags flags = ParseSamplesFlags(c.text);
    EXPECT_EQ(flags.values[0], c.a) << ToUtf8(c.text);
    EXPECT_EQ(flags.values[1], c.b) << ToUtf8(c.text);
    EXPECT_EQ(flags.values[2], c.c) << ToUtf8(c.text);
  }
  EXPECT_EQ(FormatSamplesFlags(ParseSamplesFlags(u"0, 1,-3")), CStdStrW(u"0,1,-3"));
}

TEST(SamplesFlags, KeepsTypesTwoThreeAndOneInThatOrder) {
  EXPECT_EQ(SamplesFlagSlot(2), 0);
  EXPECT_EQ(SamplesFlagSlot(3), 1);
  EXPECT_EQ(SamplesFlagSlot(1), 2);
  EXPECT_EQ(SamplesFlagSlot(0), -1);
  EXPECT_EQ(SamplesFlagSlot(4), -1);
}

// Arbitrary buffers, filters and names: every check ends with a result, within bounds.
TEST(FileSelectionRobustness, ArbitraryInputNeverBreaksTheChecks) {
  std::mt19937 random(1234);
  const char16_t alphabet[] = u"ab.*?;|/\\ ,-09\0";
  CRecordingMessageSink sink;
  for (int round = 0; round < 2000; ++round) {
    CStdStrW text;
    const int length = static_cast<int>(random() % 40);
    for (int i = 0; i < length; ++i) text.push_back(alphabet[random() % (sizeof(alphabet) / 2)]);
    ParseSamplesFlags(text);
    ReadSelectionBuffer(text.data(), text.size());
    BufferHoldsSingleName(text.data(), text.size());
    auto selection = Selection({text.c_str()});
    selection.pathCapacity = random() % 20;
    selection.titleCapacity = random() % 20;
    const int result = CheckFileSelection(selection, Rules(text.c_str(), static_cast<int>(random() % 4), true), nullptr);
    EXPECT_TRUE(result == 0 || result == 1);
    sink.Clear();
  }
}

}  // namespace
