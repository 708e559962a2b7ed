#include "util/TestHarness.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

class TestHarness : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "vantrel1-harness-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    m_dir = pattern;
  }
  void TearDown() override { std::filesystem::remove_all(m_dir); }

  CStdStrW Path(const char* name) const { return CStdStrW::FromUtf8((m_dir / name).string()); }
  CStdStrW Write(const char* name, const std::string& bytes) const {
    std::ofstream(m_dir / name, std::ios::binary) << bytes;
    return Path(name);
  }

  std::filesystem::path m_dir;
};

TEST_F(TestHarness, SuiteReportsWhichCasesDifferAndWhy) {
  UT_TestSuite suite(u"plans");
  suite.AddCase(UT_TestCase(u"same", Write("a", "123456789"), Write("b", "123456789")));
  suite.AddCase(UT_TestCase(u"changed", Write("c", "123456789"), Write("d", "123456780")));
  suite.AddCase(UT_TestCase(u"no reference", Write("e", "x"), Path("absent")));
  suite.AddCase(UT_TestCase(u"no output", Path("absent"), Write("f", "x")));
  EXPECT_EQ(suite.Run(), 3);
  EXPECT_EQ(suite.GetCase(0)->Passed(), 1);
  EXPECT_EQ(suite.GetCase(0)->GetOutputCrc(), 0xCBF43926u);
  EXPECT_EQ(suite.GetCase(1)->Passed(), 0);
  EXPECT_EQ(suite.GetCase(2)->GetReferenceError(), 2u);
  EXPECT_EQ(suite.GetCase(4), nullptr);
  EXPECT_EQ(suite.GetCase(-1), nullptr);
  EXPECT_EQ(suite.Report(), u"plans\n"
                            u"same: passed (CRC CBF43926)\n"
                            u"changed: FAILED, " + Path("c") + u" has CRC CBF43926, reference " + Path("d") +
                                u" has B2288182\n"
                                u"no reference: FAILED, reference " + Path("absent") +
                                u" cannot be read (error 2)\n"
                                u"no output: FAILED, output " + Path("absent") + u" cannot be read (error 2)\n"
                                u"1 passed, 3 failed\n");
}

TEST_F(TestHarness, ACaseNotRunSaysSoAndCountsAsFailed) {
  UT_TestSuite suite;
  suite.AddCase(UT_TestCase(u"later", u"x", u"y"));
  EXPECT_EQ(suite.GetFailed(), 1);
  EXPECT_EQ(suite.Report(), u"later: not run\n0 passed, 1 failed\n");
}

}  // namespace
