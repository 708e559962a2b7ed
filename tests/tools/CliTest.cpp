// The command-line program, run as a user runs it.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace {

struct Result {
  int status;
  std::string out;
};

Result RunCli(const std::string& args) {
  const std::string command = std::string(VANTREL1_BINARY_DIR) + "/tools/vantrel1 " + args + " 2>&1";
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  Result r{-1, {}};
  if (!pipe) return r;
  std::array<char, 4096> buf{};
  std::size_t n;
  while ((n = fread(buf.data(), 1, buf.size(), pipe.get())) > 0) r.out.append(buf.data(), n);
  const int raw = pclose(pipe.release());
  r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  return r;
}

TEST(Cli, CrcPrintsTheChecksumOfEachFile) {
  const auto path = std::filesystem::temp_directory_path() / "vantrel1-cli-crc.txt";
  std::ofstream(path, std::ios::binary) << "123456789";
  const Result r = RunCli("crc " + path.string());
  std::filesystem::remove(path);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "CBF43926  " + path.string() + "\n");
}

TEST(Cli, CrcOfAMissingFileSaysSoAndFails) {
  const Result r = RunCli("crc /nonexistent/vantrel1.lin");
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "vantrel1 crc: /nonexistent/vantrel1.lin: cannot be read (Windows error 2)\n");
}

TEST(Cli, UnknownCommandIsRefused) {
  const Result r = RunCli("paint");
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.out, "vantrel1: unknown command 'paint' (try --help)\n");
}

TEST(Cli, HelpListsTheCommands) {
  const Result r = RunCli("--help");
  EXPECT_EQ(r.status, 0);
  EXPECT_NE(r.out.find("  crc "), std::string::npos);
}

}  // namespace
