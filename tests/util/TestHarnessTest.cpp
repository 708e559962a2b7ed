#include "util/TestHarness.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

class TestHarness : public ::testing::Test {
 protected:
  void SetUp() override {
    m_dir = std::filesystem::temp_directory_path() /
            ("vantrel1-harness-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
             ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(m_dir);
  }
  void TearDown() override { std::filesystem::remove_all(m_dir); }

  CStdStrW Write(const char* name, const std::string& bytes) {
    const auto path = m_dir / name;
    std::ofstream(path, std::ios::binary) << bytes;
    return CStdStrW::FromUtf8(path.string());
  }

  std::filesystem::path m_dir;
};

TEST_F(TestHarness, EqualFilesPassWithTheirCheckValue) {
  UT_TestCase c(u"digits", Write("out", "123456789"), Write("ref", "123456789"));
  EXPECT_EQ(c.Run(), 1);
  EXPECT_EQ(c.GetOutputCrc(), 0xCBF43926u);
  EXPECT_EQ(c.Describe(), u"digits: passed (CRC CBF43926)");
}

TEST_F(TestHarness, SuiteReportsWhichCasesDifferAndCountsThem) {
  UT_TestSuite suite(u"plans");
  suite.AddCase(UT_TestCase(u"same", Write("a", "123456789"), Write("b", "123456789")));
  suite.AddCase(UT_TestCase(u"changed", Write("c", "123456789"), Write("d", "123456780")));
  suite.AddCase(UT_TestCase(u"missing", Write("e", "x"),
                            CStdStrW::FromUtf8((m_dir / "absent").string())));
  EXPECT_EQ(suite.Run(), 2);
  EXPECT_EQ(suite.GetCase(0)->Passed(), 1);
  EXPECT_EQ(suite.GetCase(1)->Passed(), 0);
  EXPECT_EQ(suite.GetCase(2)->GetReferenceError(), 2u);
  EXPECT_EQ(suite.GetCase(3), nullptr);
  const CStdStrW report = suite.Report();
  EXPECT_NE(report.Find(u"changed: FAILED, "), -1);
  EXPECT_NE(report.Find(u"has CRC CBF43926"), -1);
  EXPECT_NE(report.Find(u"cannot be read (error 2)"), -1);
  EXPECT_NE(report.Find(u"1 passed, 2 failed\n"), -1);
}

TEST_F(TestHarness, ACaseNotRunSaysSoAndCountsAsFailed) {
  UT_TestSuite suite;
  suite.AddCase(UT_TestCase(u"later", u"x", u"y"));
  EXPECT_EQ(suite.GetFailed(), 1);
  EXPECT_EQ(suite.Report(), u"later: not run\n0 passed, 1 failed\n");
}

}  // namespace
