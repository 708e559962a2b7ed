#pragma once
// Runs the vantrel1 program as a user does and gives its exit status and output, with a
// scratch folder for the files a test writes and reads.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <QColor>
#include <QImage>

namespace vantrel1::test {

struct CliResult {
  int status = -1;
  std::string out;  // standard output
  std::string err;  // standard error
};

inline std::string ReadText(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void WriteText(const std::filesystem::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

// A fresh folder for one test, removed afterwards.
class ScratchDir {
 public:
  explicit ScratchDir(const std::string& name)
      : m_path(std::filesystem::temp_directory_path() / ("vantrel1-" + name + "-" + std::to_string(::getpid()))) {
    std::filesystem::remove_all(m_path);
    std::filesystem::create_directories(m_path);
  }
  ~ScratchDir() { std::filesystem::remove_all(m_path); }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;

  std::string operator/(const std::string& name) const { return (m_path / name).string(); }

 private:
  std::filesystem::path m_path;
};

inline CliResult RunCli(const std::string& args) {
  const std::string errFile = (std::filesystem::temp_directory_path() /
                               ("vantrel1-cli-stderr-" + std::to_string(::getpid()) + ".txt")).string();
  const std::string command = std::string(VANTREL1_BINARY_DIR) + "/tools/vantrel1 " + args + " 2>" + errFile;
  CliResult r;
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  if (!pipe) return r;
  std::array<char, 4096> buf{};
  std::size_t n;
  while ((n = fread(buf.data(), 1, buf.size(), pipe.get())) > 0) r.out.append(buf.data(), n);
  const int raw = pclose(pipe.release());
  r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  r.err = ReadText(errFile);
  std::filesystem::remove(errFile);
  return r;
}

inline std::string Quoted(const std::string& path) { return "'" + path + "'"; }

// The darkest pixel's colour in a device rectangle, or white when it lies outside.
inline QColor Darkest(const QImage& image, int x0, int y0, int x1, int y1) {
  QColor darkest(Qt::white);
  for (int y = std::max(0, y0); y <= std::min(image.height() - 1, y1); ++y)
    for (int x = std::max(0, x0); x <= std::min(image.width() - 1, x1); ++x) {
      const QColor c = image.pixelColor(x, y);
      if (c.lightness() < darkest.lightness()) darkest = c;
    }
  return darkest;
}

}  // namespace vantrel1::test
