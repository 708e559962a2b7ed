// The command-line program, run as a user runs it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "CliRunner.h"

namespace {

using vantrel1::test::CliResult;

CliResult RunCli(const std::string& args) {
  CliResult r = vantrel1::test::RunCli(args);
  r.out += r.err;
  return r;
}

TEST(Cli, CrcPrintsTheChecksumOfEachFile) {
  const auto path = std::filesystem::temp_directory_path() / "vantrel1-cli-crc.txt";
  std::ofstream(path, std::ios::binary) << "123456789";
  const CliResult r = RunCli("crc " + path.string());
  std::filesystem::remove(path);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "CBF43926  " + path.string() + "\n");
}

TEST(Cli, CrcOfAMissingFileSaysSoAndFails) {
  const CliResult r = RunCli("crc /nonexistent/vantrel1.lin");
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "vantrel1 crc: /nonexistent/vantrel1.lin: cannot be read (Windows error 2)\n");
}

TEST(Cli, UnknownCommandIsRefused) {
  const CliResult r = RunCli("paint");
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.out, "vantrel1: unknown command 'paint' (try --help)\n");
}

TEST(Cli, HelpListsTheCommands) {
  const CliResult r = RunCli("--help");
  EXPECT_EQ(r.status, 0);
  EXPECT_NE(r.out.find("  crc "), std::string::npos);
}

}  // namespace
