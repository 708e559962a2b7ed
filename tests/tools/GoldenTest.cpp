// The program's drawings compared byte for byte (by CRC-32) with reference images kept in
// tests/golden. A difference means something changed how lines are drawn: look at the new
// image (in the build folder's tests/golden-output), and if it is right, refresh the
// references with scripts/refresh-golden.sh, which runs this test with
// VANTREL1_REFRESH_GOLDEN=1 so that it copies its outputs over the references.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "CliRunner.h"
#include "util/TestHarness.h"

namespace {

namespace fs = std::filesystem;
using vantrel1::test::CliResult;
using vantrel1::test::Quoted;
using vantrel1::test::RunCli;

struct Golden {
  const char* file;
  std::string command;  // OUT stands for the output file
};

std::string WithOutput(std::string command, const std::string& output) {
  return command.replace(command.find("OUT"), 3, Quoted(output));
}

TEST(GoldenOutput, CatalogueAndSampleRoadPlanMatchTheirReferences) {
  const fs::path outputs = fs::path(VANTREL1_BINARY_DIR) / "tests" / "golden-output";
  const fs::path references = fs::path(VANTREL1_SOURCE_DIR) / "tests" / "golden";
  const std::string plan = Quoted((fs::path(VANTREL1_SOURCE_DIR) / "examples" / "road-plan.geojson").string());
  const Golden goldens[] = {
      {"catalogue.png", "catalogue OUT --dpi 100"},
      {"symbols.png", "catalogue OUT --dpi 100 --sheet symbols"},
      {"road-plan.png", "render " + plan + " OUT --dpi 100"},
  };
  fs::create_directories(outputs);

  UT_TestSuite suite(u"golden output");
  for (const Golden& g : goldens) {
    const CliResult r = RunCli(WithOutput(g.command, (outputs / g.file).string()));
    ASSERT_EQ(r.status, 0) << g.command << "\n" << r.err;
    suite.AddCase(UT_TestCase(CStdStrW::FromUtf8(g.file), CStdStrW::FromUtf8((outputs / g.file).string()),
                              CStdStrW::FromUtf8((references / g.file).string())));
  }
  if (std::getenv("VANTREL1_REFRESH_GOLDEN")) {
    for (const Golden& g : goldens)
      fs::copy_file(outputs / g.file, references / g.file, fs::copy_options::overwrite_existing);
    GTEST_SKIP() << "references refreshed in " << references;
  }
  EXPECT_EQ(suite.Run(), 0) << suite.Report().ToUtf8() << "\nnew images in " << outputs;
}

}  // namespace
