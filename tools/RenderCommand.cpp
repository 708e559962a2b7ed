// vantrel1 render IN.geojson OUT.(png|pdf|svg): draws a GeoJSON drawing in logical units
// with the line types its features name.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <sstream>

#include "Commands.h"
#include "DrawingSupport.h"
#include "GeoJsonDrawing.h"
#include "platform/Gdi.h"
#include "suite/PolylineClip.h"
#include "symbols/SymbolTable.h"

namespace vantrel1::cli {

namespace {

constexpr char kUsage[] = "IN.geojson OUT.(png|pdf|svg) [--clip left,bottom,right,top] [--lin FILE.lin] [--dpi N]";

// Around the data: 10 mm of paper, or a twentieth of the larger side when that is more.
constexpr double kMinMargin = 100.0;
constexpr double kMarginShare = 0.05;
// Half the width of the cross that stands for an unknown symbol, before the feature's scale.
constexpr double kCrossArm = 20.0;
constexpr int kCrossPenWidth = 3;

struct Page {
  LogicalWindow window;
  RECT clip;
};

Page PageOf(double left, double bottom, double right, double top) {
  Page page;
  page.window = {left, bottom, right, top};
  page.clip = {static_cast<LONG>(left), static_cast<LONG>(top), static_cast<LONG>(right), static_cast<LONG>(bottom)};
  return page;
}

// left,bottom,right,top as whole logical units within the drawing's coordinate range.
std::optional<Page> ParseClip(const char* text) {
  std::istringstream in(text);
  double v[4];
  for (int i = 0; i < 4; ++i) {
    if (i > 0 && in.get() != ',') return std::nullopt;
    if (!(in >> v[i]) || v[i] != std::trunc(v[i]) || std::fabs(v[i]) > kMaxCoordinate) return std::nullopt;
  }
  if (in.peek() != std::char_traits<char>::eof() || v[2] <= v[0] || v[3] <= v[1]) return std::nullopt;
  return PageOf(v[0], v[1], v[2], v[3]);
}

Page PageAround(const DrawingBounds& b) {
  const double margin = std::max(kMinMargin, kMarginShare * std::max(b.right - b.left, b.top - b.bottom));
  return PageOf(std::floor(b.left - margin), std::floor(b.bottom - margin), std::ceil(b.right + margin),
                std::ceil(b.top + margin));
}

class FeaturePainter {
 public:
  FeaturePainter(CLineTypeTable& table, CSymbolTable& symbols, HDC dc, const RECT& clip)
      : m_table(table), m_symbols(symbols), m_dc(dc), m_clip(clip) {}

  void Draw(const DrawingFeature& feature);
  // The features whose symbol number names no symbol.
  const std::vector<int>& MarkedSymbols() const { return m_marked; }

 private:
  void Stroke(const DrawingFeature& feature, const DrawingPath& path);
  void Fill(const DrawingFeature& feature);
  void FillArea(COLORREF color, const DrawingPath& area);
  void PlaceSymbol(const DrawingFeature& feature, const DrawingPath& point);
  void MarkSymbol(const DrawingFeature& feature, const DrawingPath& point);

  CLineTypeTable& m_table;
  CSymbolTable& m_symbols;
  HDC m_dc;
  RECT m_clip;
  std::vector<int> m_marked;
};

void FeaturePainter::Draw(const DrawingFeature& feature) {
  if (feature.kind == DrawingFeature::Kind::Point) {
    if (feature.symbol == 0) return;
    const bool known = CSymbol::IsOldSymbol(feature.symbol) != 0 || m_symbols.IsUserSymbol(feature.symbol) != 0;
    for (const DrawingPath& point : feature.paths) {
      if (known)
        PlaceSymbol(feature, point);
      else
        MarkSymbol(feature, point);
    }
    if (!known) m_marked.push_back(feature.index);
    return;
  }
  if (feature.kind == DrawingFeature::Kind::Polygon && feature.fill) Fill(feature);
  for (const DrawingPath& path : feature.paths) Stroke(feature, path);
}

void FeaturePainter::Stroke(const DrawingFeature& feature, const DrawingPath& path) {
  COLORREF color = feature.color;
  CLineType* line = m_table.CreateLine(feature.line, &color, 0, 1, 0);
  if (!line) return;
  line->Draw(m_dc, m_dc, path.x.data(), path.y.data(), static_cast<long>(path.x.size()), &m_clip, 0);
  m_table.DeleteLine(line, 1);
}

// Each polygon's rings become one path: the outer ring, then every hole, each entered
// from and left back to the outer ring's first point. The even-odd rule then leaves the
// holes open, and the bridges, walked once each way, enclose nothing.
void FeaturePainter::Fill(const DrawingFeature& feature) {
  DrawingPath area;
  const auto fillArea = [&] {
    if (!area.x.empty()) FillArea(feature.color, area);
    area = {};
  };
  for (const DrawingPath& ring : feature.paths) {
    if (!ring.hole) fillArea();
    area.x.insert(area.x.end(), ring.x.begin(), ring.x.end());
    area.y.insert(area.y.end(), ring.y.begin(), ring.y.end());
    if (ring.hole) {
      area.x.push_back(area.x.front());
      area.y.push_back(area.y.front());
    }
  }
  fillArea();
}

// The fill is the invisible line's plain-line fill: the area in the colour, no outline,
// so that the rings are then stroked with whatever line type the feature names.
void FeaturePainter::FillArea(COLORREF color, const DrawingPath& area) {
  CLineType* line = m_table.CreateLine(-1, nullptr, 0, 0, 0);
  if (!line) return;
  line->m_crColor = color;
  line->Draw(m_dc, m_dc, area.x.data(), area.y.data(), static_cast<long>(area.x.size()), &m_clip, 1);
  m_table.DeleteLine(line, 0);
}

void FeaturePainter::PlaceSymbol(const DrawingFeature& feature, const DrawingPath& point) {
  CSymbol* symbol = m_symbols.CreateSymbol(feature.symbol, feature.color, feature.scale, 0);
  symbol->Draw(m_dc, m_dc, point.x[0], point.y[0], &m_clip, feature.angle * std::numbers::pi / 180.0);
  m_symbols.DeleteSymbol(symbol);
}

void FeaturePainter::MarkSymbol(const DrawingFeature& feature, const DrawingPath& point) {
  const double arm = kCrossArm * feature.scale;
  const double turn = feature.angle * std::numbers::pi / 180.0;
  const double c = std::cos(turn) * arm, s = std::sin(turn) * arm;
  const double x0 = point.x[0], y0 = point.y[0];
  HPEN pen = CreatePen(PS_SOLID, kCrossPenWidth, feature.color);
  HGDIOBJ previous = SelectObject(m_dc, pen);
  const double ax[2] = {x0 - c + s, x0 + c - s}, ay[2] = {y0 - s - c, y0 + s + c};
  const double bx[2] = {x0 - c - s, x0 + c + s}, by[2] = {y0 - s + c, y0 + s - c};
  PolylineClip(m_dc, ax, ay, 2, &m_clip, 0, nullptr);
  PolylineClip(m_dc, bx, by, 2, &m_clip, 0, nullptr);
  SelectObject(m_dc, previous);
  DeleteObject(pen);
}

std::string Indices(const std::vector<int>& indices) {
  std::string text;
  for (std::size_t i = 0; i < indices.size() && i < 5; ++i) text += (i ? ", " : "") + std::to_string(indices[i]);
  if (indices.size() > 5) text += ", ...";
  return text;
}

}  // namespace

int RunRender(int argc, char** argv) {
  CommandLine args("render", argc, argv);
  if (!args.Scan({"--clip", "--lin", "--dpi"}, 2, kUsage)) return kUsageError;
  const std::string& input = args.Positionals()[0];
  const std::string& output = args.Positionals()[1];
  if (!OutputSurface::FormatOf(QString::fromStdString(output)))
    return args.Fail(kUsageError, output + ": the output must be a .png, .pdf or .svg file");
  const std::optional<double> dpi = args.Option("--dpi") ? ParseDpi(args.Option("--dpi")) : kDefaultDpi;
  if (!dpi) return args.Fail(kUsageError, "--dpi must be a number from 10 to 2400");
  std::optional<Page> clipPage;
  if (const char* clip = args.Option("--clip"); clip && !(clipPage = ParseClip(clip)))
    return args.Fail(kUsageError,
                     "--clip must be four whole numbers left,bottom,right,top with right > left and top > bottom");

  const GeoJsonResult read = ReadGeoJsonFile(input);
  if (!read.drawing) return args.Fail(kFailure, input + ": " + read.error);
  const GeoJsonDrawing& drawing = *read.drawing;
  if (!clipPage && drawing.bounds.empty)
    return args.Fail(kFailure, input + ": holds nothing to draw (give --clip for an empty page)");

  DrawingApplication gui;
  CliAppContext app;
  CLineTypeTable table;
  std::string error;
  if (!LoadLineTable(table, app, args.Option("--lin"), error)) return args.Fail(kFailure, error);
  CSymbolTable symbols;
  symbols.FromFile(&app, nullptr, nullptr);

  const Page page = clipPage ? *clipPage : PageAround(drawing.bounds);
  std::unique_ptr<OutputSurface> surface = OpenOutput(output, page.window, *dpi, error);
  if (!surface) return args.Fail(kFailure, error);
  FeaturePainter painter(table, symbols, surface->Dc(), page.clip);
  for (const DrawingFeature& feature : drawing.features) painter.Draw(feature);
  if (!surface->Finish()) return args.Fail(kFailure, output + ": cannot be written");

  const std::vector<int>& marked = painter.MarkedSymbols();
  if (!marked.empty())
    args.Fail(0, "no such symbol; a cross marks the points of " + std::to_string(marked.size()) +
                     " feature(s): " + Indices(marked));
  std::printf("%s: %.0f x %.0f mm, %zu features\n", output.c_str(), page.window.Width() / kDefaultUnitsPerMm,
              page.window.Height() / kDefaultUnitsPerMm, drawing.features.size());
  return 0;
}

}  // namespace vantrel1::cli
