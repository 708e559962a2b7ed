#pragma once
// What the drawing commands share: their option scanner, the Qt application that fonts
// and images need, the line type table, and the output file.
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QGuiApplication>

#include "linetable/LineTypeTable.h"
#include "platform/Types.h"
#include "qt/OutputSurface.h"
#include "suite/VantrelAppBaseX.h"

namespace vantrel1::cli {

// Exit codes: 2 for a command line that cannot be followed, 1 for inputs or outputs that
// fail.
constexpr int kUsageError = 2;
constexpr int kFailure = 1;

constexpr double kDefaultDpi = 300.0;
constexpr double kMinDpi = 10.0;
constexpr double kMaxDpi = 2400.0;

// The command line of one command: positional arguments and "--name value" options, of
// which each command names the ones it knows.
class CommandLine {
 public:
  CommandLine(const char* command, int argc, char** argv) : m_command(command), m_argc(argc), m_argv(argv) {}

  // False (after printing why) for an unknown option, an option without its value or
  // a number of positional arguments other than `positionals`.
  bool Scan(const std::vector<std::string>& options, std::size_t positionals, const char* usage);

  const std::vector<std::string>& Positionals() const { return m_positionals; }
  const char* Option(const std::string& name) const;

  // Prints "vantrel1 <command>: <message>" on standard error and returns `code`.
  int Fail(int code, const std::string& message) const;

 private:
  const char* m_command;
  int m_argc;
  char** m_argv;
  std::vector<std::string> m_positionals;
  std::vector<std::pair<std::string, const char*>> m_options;
};

std::optional<double> ParseDpi(const char* text);
// RRGGBB, with or without a leading '#'.
std::optional<COLORREF> ParseColorOption(const char* text);
std::optional<int> ParseIntOption(const char* text, int low, int high);

// The program draws only into files: unless the user chose a Qt platform, it runs without
// a display, and the same build writes the same images on every machine.
class DrawingApplication {
 public:
  DrawingApplication();
  ~DrawingApplication();

 private:
  int m_argc = 1;
  char m_name[9] = "vantrel1";
  char* m_argv[2] = {m_name, nullptr};
  std::unique_ptr<QGuiApplication> m_app;
};

// The program's application context. Its default line width is 1 (0.1 mm) rather than
// the user setting: styled pens wider than 1 draw solid, as GDI's do, and a drawing or a
// catalogue should show the simple dash and dot lines as such on every machine.
class CliAppContext : public CVantrelAppBaseX {
 public:
  int GetDefaultLineWidth() const override { return 1; }
};

// The built-in line types, or those of a table file of any stored form (.lin, .xml, .vlt;
// the system line types of a .lin file always come from the library). False with a
// message when the file is missing, of an unknown form or not a whole table.
bool LoadLineTable(CLineTypeTable& table, CVantrelAppBaseX& app, const char* tableFile, std::string& error);

// The output surface for `path`, or null with a message.
std::unique_ptr<OutputSurface> OpenOutput(const std::string& path, const LogicalWindow& window, double dpi,
                                          std::string& error);

// A font of this size (em height in logical units) for labels on the sheet.
LOGFONTW LabelFont(int emHeight, int weight = 400);
// Draws text with the GDI text calls: the font is made, selected and deleted here.
void DrawLabel(HDC dc, int x, int y, std::u16string_view text, const LOGFONTW& font, COLORREF color, UINT align);

}  // namespace vantrel1::cli
