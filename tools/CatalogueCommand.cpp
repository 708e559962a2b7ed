// vantrel1 catalogue OUT.(png|pdf|svg): one sheet with a sample of every line style of a
// line type table, each drawn along the same path and labelled with its numbered name.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <numbers>

#include "Commands.h"
#include "DrawingSupport.h"
#include "symbols/SymbolTable.h"
#include "platform/Gdi.h"

namespace vantrel1::cli {

namespace {

constexpr char kUsage[] =
    "OUT.(png|pdf|svg) [--lin FILE.lin | --xml FILE.xml] [--color RRGGBB] [--text-mode 0|1|2] [--dpi N] "
    "[--sheet lines|symbols]";
// Symbols are drawn this many times their size, to be read on the sheet.
constexpr double kSymbolSampleScale = 3.0;

// Logical units of 0.1 mm: a cell is 90 mm by 25 mm.
constexpr int kCellWidth = 900;
constexpr int kCellHeight = 250;
constexpr int kPageMargin = 100;
constexpr int kTitleHeight = 160;
constexpr int kTitleEm = 50;
constexpr int kLabelEm = 32;
constexpr int kNumberEm = 24;
constexpr COLORREF kFrameColor = RGB(200, 200, 200);
constexpr COLORREF kNumberColor = RGB(110, 110, 110);

// Where the sample path lies inside a cell (cell origin at its bottom left); the label
// runs above it, with room between for symbols that stand off the line.
constexpr double kPathLeft = 50.0, kPathRight = 850.0, kPathBottom = 40.0, kPathTop = 140.0;
constexpr int kLabelBaseline = 195;
constexpr int kLabelInset = 30;

struct Sheet {
  const char* name;
  int width, height;
};

// Portrait ISO A sizes; the first that holds every entry is used.
constexpr Sheet kSheets[] = {{"A4", 2100, 2970}, {"A3", 2970, 4200}, {"A2", 4200, 5940}, {"A1", 5940, 8410},
                             {"A0", 8410, 11890}};

struct Layout {
  int width = 0, height = 0;
  int columns = 1, rows = 0;
  int gridLeft = 0, gridTop = 0;

  RECT Cell(int i) const {
    const int left = gridLeft + (i / rows) * kCellWidth;
    const int top = gridTop - (i % rows) * kCellHeight;
    return {left, top, left + kCellWidth, top - kCellHeight};
  }
};

Layout Arrange(const Sheet& sheet, int rows) {
  Layout layout;
  layout.width = sheet.width;
  layout.columns = std::max(1, (sheet.width - 2 * kPageMargin) / kCellWidth);
  layout.rows = std::max(1, rows);
  layout.height = std::max(sheet.height, 2 * kPageMargin + kTitleHeight + layout.rows * kCellHeight);
  layout.gridLeft = (sheet.width - layout.columns * kCellWidth) / 2;
  layout.gridTop = layout.height - kPageMargin - kTitleHeight;
  return layout;
}

// Entries run down the columns, as in a printed list, with as few rows as the columns
// allow; a table too large even for A0 makes the sheet as tall as it needs.
Layout ChooseLayout(int count) {
  for (const Sheet& sheet : kSheets) {
    const int columns = (sheet.width - 2 * kPageMargin) / kCellWidth;
    const int capacity = columns * ((sheet.height - 2 * kPageMargin - kTitleHeight) / kCellHeight);
    if (count <= capacity) return Arrange(sheet, (count + columns - 1) / columns);
  }
  const Sheet& largest = kSheets[std::size(kSheets) - 1];
  const int columns = (largest.width - 2 * kPageMargin) / kCellWidth;
  return Arrange(largest, (count + columns - 1) / columns);
}

// The sample path: a straight run, a sharp corner, a gentle bend back to the first
// direction, another straight run, a reverse curve and a last straight run, so that each
// line type shows how its pattern meets corners and curves. Arcs are sampled every 3°.
struct SamplePath {
  std::vector<double> x, y;

  SamplePath();

 private:
  void Straight(double length);
  void Turn(double degrees);
  void Arc(double radius, double degrees);
  void FitInto(double left, double bottom, double right, double top);

  double m_heading = 0.0;
};

SamplePath::SamplePath() : x{0.0}, y{0.0} {
  Straight(250.0);
  Turn(60.0);
  Straight(30.0);
  Arc(120.0, -60.0);
  Straight(80.0);
  Arc(150.0, -40.0);
  Arc(150.0, 40.0);
  Straight(180.0);
  FitInto(kPathLeft, kPathBottom, kPathRight, kPathTop);
}

void SamplePath::Straight(double length) {
  x.push_back(x.back() + length * std::cos(m_heading));
  y.push_back(y.back() + length * std::sin(m_heading));
}

void SamplePath::Turn(double degrees) { m_heading += degrees * std::numbers::pi / 180.0; }

void SamplePath::Arc(double radius, double degrees) {
  const int steps = std::max(1, static_cast<int>(std::lround(std::fabs(degrees) / 3.0)));
  const double step = degrees / steps * std::numbers::pi / 180.0;
  const double chord = 2.0 * radius * std::sin(std::fabs(step) / 2.0);
  for (int i = 0; i < steps; ++i) {
    m_heading += step / 2.0;
    Straight(chord);
    m_heading += step / 2.0;
  }
}

void SamplePath::FitInto(double left, double bottom, double right, double top) {
  const auto [xMin, xMax] = std::minmax_element(x.begin(), x.end());
  const auto [yMin, yMax] = std::minmax_element(y.begin(), y.end());
  const double scale = std::min((right - left) / (*xMax - *xMin), (top - bottom) / (*yMax - *yMin));
  const double dx = left + ((right - left) - (*xMax - *xMin) * scale) / 2.0 - *xMin * scale;
  const double dy = bottom + ((top - bottom) - (*yMax - *yMin) * scale) / 2.0 - *yMin * scale;
  for (double& v : x) v = v * scale + dx;
  for (double& v : y) v = v * scale + dy;
}

struct CatalogueEntry {
  CStdStrW label;   // the numbered name
  CStdStrW number;  // the number a drawing uses
  std::function<void(HDC, const RECT& cell)> draw;
};

struct LineStyleOptions {
  COLORREF color = 0;
  int textMode = 0;
};

void DrawLineSample(CLineTypeTable& table, int number, LineStyleOptions style, HDC dc, const RECT& cell) {
  static const SamplePath path;
  std::vector<double> x(path.x), y(path.y);
  for (double& v : x) v += cell.left;
  for (double& v : y) v += cell.bottom;
  RECT clip = cell;
  CLineType* line = table.CreateLine(number, &style.color, 0, 1, style.textMode);
  if (!line) return;
  line->Draw(dc, dc, x.data(), y.data(), static_cast<long>(x.size()), &clip, 0);
  table.DeleteLine(line, 1);
}

// Every line number in the table's order: the invisible line, the simple pen lines, the
// system line types and the user line types.
std::vector<CatalogueEntry> LineEntries(CLineTypeTable& table, LineStyleOptions style) {
  std::vector<CatalogueEntry> entries;
  for (int number = -1;;) {
    entries.push_back({table.GetDesc(number), CStdStrW::FromUtf8(std::to_string(number)),
                       [&table, number, style](HDC dc, const RECT& cell) {
                         DrawLineSample(table, number, style, dc, cell);
                       }});
    number = table.NextUserLineType(number);
    if (number == -1) break;
  }
  return entries;
}

void DrawSymbolSample(CSymbolTable& symbols, int number, COLORREF colour, HDC dc, const RECT& cell) {
  CSymbol* symbol = symbols.CreateSymbol(number, colour, 1.0, 0);
  symbol->SetScale(kSymbolSampleScale);
  RECT clip = cell;
  symbol->Draw(dc, dc, (cell.left + cell.right) / 2.0, cell.bottom + 0.6 * (cell.top - cell.bottom), &clip, 0.0);
  symbols.DeleteSymbol(symbol);
}

// The old-style symbols 1 to 19, then the table's symbols in its order.
std::vector<CatalogueEntry> SymbolEntries(CSymbolTable& symbols, COLORREF colour) {
  std::vector<CatalogueEntry> entries;
  auto add = [&](int number) {
    CSymbol* named = symbols.CreateSymbol(number, colour, 1.0, 1);
    entries.push_back({named->GetDesc() + u"-" + CStdStrW::FromUtf8(std::to_string(number)),
                       CStdStrW::FromUtf8(std::to_string(number)),
                       [&symbols, number, colour](HDC dc, const RECT& cell) {
                         DrawSymbolSample(symbols, number, colour, dc, cell);
                       }});
    symbols.DeleteSymbol(named);
  };
  for (int number = 1; CSymbol::IsOldSymbol(number); ++number) add(number);
  for (int number = symbols.NextUserSymbol(CSymbol::kOldSymbolCount); symbols.IsUserSymbol(number) != 0;
       number = symbols.NextUserSymbol(number))
    add(number);
  return entries;
}

void DrawFrame(HDC dc, const RECT& cell) {
  HPEN pen = CreatePen(PS_SOLID, 0, kFrameColor);
  HGDIOBJ previous = SelectObject(dc, pen);
  const POINT corners[5] = {{cell.left, cell.bottom}, {cell.right, cell.bottom}, {cell.right, cell.top},
                            {cell.left, cell.top}, {cell.left, cell.bottom}};
  Polyline(dc, corners, 5);
  SelectObject(dc, previous);
  DeleteObject(pen);
}

void DrawCell(HDC dc, const CatalogueEntry& entry, const RECT& cell) {
  DrawFrame(dc, cell);
  const int baseline = cell.bottom + kLabelBaseline;
  DrawLabel(dc, cell.left + kLabelInset, baseline, entry.label, LabelFont(kLabelEm), RGB(0, 0, 0),
            TA_LEFT | TA_BASELINE);
  DrawLabel(dc, cell.right - kLabelInset, baseline, entry.number, LabelFont(kNumberEm), kNumberColor,
            TA_RIGHT | TA_BASELINE);
  entry.draw(dc, cell);
}

void DrawSheet(HDC dc, const Layout& layout, const std::vector<CatalogueEntry>& entries, const std::string& title) {
  DrawLabel(dc, layout.gridLeft, layout.height - kPageMargin - kTitleEm, CStdStrW::FromUtf8(title),
            LabelFont(kTitleEm, FW_BOLD), RGB(0, 0, 0), TA_LEFT | TA_BASELINE);
  for (std::size_t i = 0; i < entries.size(); ++i) DrawCell(dc, entries[i], layout.Cell(static_cast<int>(i)));
}

struct CatalogueOptions {
  LineStyleOptions style;
  double dpi = kDefaultDpi;
  bool symbols = false;
};

// Parses the options; a message and an exit code when they cannot be followed.
std::optional<int> ReadOptions(const CommandLine& args, CatalogueOptions& options) {
  if (args.Option("--xml") && args.Option("--lin")) return args.Fail(kUsageError, "give --lin or --xml, not both");
  if (const char* color = args.Option("--color")) {
    const std::optional<COLORREF> c = ParseColorOption(color);
    if (!c) return args.Fail(kUsageError, "--color must be RRGGBB in hexadecimal, for example 0000FF for blue");
    options.style.color = *c;
  }
  if (const char* mode = args.Option("--text-mode")) {
    const std::optional<int> m = ParseIntOption(mode, 0, 2);
    if (!m) return args.Fail(kUsageError, "--text-mode must be 0 (text in the line's colour), 1 (white) or 2 (none)");
    options.style.textMode = *m;
  }
  if (const char* dpi = args.Option("--dpi")) {
    const std::optional<double> d = ParseDpi(dpi);
    if (!d) return args.Fail(kUsageError, "--dpi must be a number from 10 to 2400");
    options.dpi = *d;
  }
  if (const char* sheet = args.Option("--sheet")) {
    const std::string_view which(sheet);
    if (which != "lines" && which != "symbols") return args.Fail(kUsageError, "--sheet must be lines or symbols");
    options.symbols = which == "symbols";
    if (options.symbols && (args.Option("--lin") || args.Option("--xml") || args.Option("--text-mode")))
      return args.Fail(kUsageError, "--lin, --xml and --text-mode belong to the sheet of lines");
  }
  return std::nullopt;
}

}  // namespace

int RunCatalogue(int argc, char** argv) {
  CommandLine args("catalogue", argc, argv);
  if (!args.Scan({"--lin", "--xml", "--color", "--text-mode", "--dpi", "--sheet"}, 1, kUsage)) return kUsageError;
  const std::string& output = args.Positionals()[0];
  if (!OutputSurface::FormatOf(QString::fromStdString(output)))
    return args.Fail(kUsageError, output + ": the output must be a .png, .pdf or .svg file");
  CatalogueOptions options;
  if (const std::optional<int> refused = ReadOptions(args, options)) return *refused;

  DrawingApplication gui;
  CliAppContext app;
  CLineTypeTable table;
  std::string error;
  const char* lin = args.Option("--lin") ? args.Option("--lin") : args.Option("--xml");
  if (!LoadLineTable(table, app, lin, error)) return args.Fail(kFailure, error);

  CSymbolTable symbols;
  if (options.symbols) symbols.FromFile(&app, nullptr, nullptr);
  const std::vector<CatalogueEntry> entries =
      options.symbols ? SymbolEntries(symbols, options.style.color) : LineEntries(table, options.style);

  const Layout layout = ChooseLayout(static_cast<int>(entries.size()));
  const LogicalWindow window{0.0, 0.0, double(layout.width), double(layout.height)};
  std::unique_ptr<OutputSurface> surface = OpenOutput(output, window, options.dpi, error);
  if (!surface) return args.Fail(kFailure, error);
  const std::string source = lin ? std::filesystem::path(lin).filename().string() : "built-in";
  DrawSheet(surface->Dc(), layout, entries,
            options.symbols ? "Point symbols: built-in (three times their size)" : "Line types: " + source);
  if (!surface->Finish()) return args.Fail(kFailure, output + ": cannot be written");
  std::printf("%s: %zu %s, %d x %d mm\n", output.c_str(), entries.size(), options.symbols ? "symbols" : "line styles",
              layout.width / 10, layout.height / 10);
  return 0;
}

}  // namespace vantrel1::cli
