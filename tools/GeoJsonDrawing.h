#pragma once
// A drawing read from a GeoJSON FeatureCollection whose coordinates are logical units of
// the page (y growing upwards). Each feature is drawn by the style its properties name:
//   "line"   line number (default 0, the solid pen line); any number is passed on, and the
//            line type table resolves numbers it does not hold as it always does
//   "symbol" symbol number of a point (0 = none)
//   "color"  "#RRGGBB" or a COLORREF integer 0x00BBGGRR (default black)
//   "scale", "angle"  of a point's symbol: a positive factor and degrees counter-clockwise
//   "fill"   true fills a polygon's rings with the line's colour
// Geometries: Point, MultiPoint, LineString, MultiLineString, Polygon, MultiPolygon; a
// null geometry is an unplaced feature and is left out. Polygon rings become closed paths.
//
// Reading never trusts the document: its size, the number of features and of positions
// are bounded, coordinates must be finite and within kMaxCoordinate, and every refusal
// names the feature by its index in the "features" array.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Types.h"

namespace vantrel1::cli {

struct DrawingPath {
  std::vector<double> x, y;
  bool hole = false;  // a polygon's inner ring
};

struct DrawingFeature {
  enum class Kind { Point, Line, Polygon };

  int index = 0;  // in the collection's "features" array
  Kind kind = Kind::Line;
  // Lines: one path each; polygons: every ring, closed; points: one position each.
  std::vector<DrawingPath> paths;
  int line = 0;
  int symbol = 0;
  COLORREF color = 0;
  double scale = 1.0;
  double angle = 0.0;
  bool fill = false;
};

struct DrawingBounds {
  double left = 0.0, bottom = 0.0, right = 0.0, top = 0.0;
  bool empty = true;

  void Add(double x, double y);
};

struct GeoJsonDrawing {
  std::vector<DrawingFeature> features;
  DrawingBounds bounds;  // of every position of every feature
};

// Either a drawing or a message saying what is wrong ("feature 3: ...").
struct GeoJsonResult {
  std::optional<GeoJsonDrawing> drawing;
  std::string error;
};

constexpr std::size_t kMaxGeoJsonBytes = 16u << 20;
constexpr std::size_t kMaxFeatures = 100000;
constexpr std::size_t kMaxPositions = 2000000;
constexpr double kMaxCoordinate = 1e9;

GeoJsonResult ReadGeoJsonDrawing(std::string_view text);
// The file's text, refused when it cannot be read or exceeds kMaxGeoJsonBytes.
GeoJsonResult ReadGeoJsonFile(const std::string& path);

// "#RRGGBB" (either case) as a COLORREF; none for anything else.
std::optional<COLORREF> ParseHexColor(std::string_view text);

}  // namespace vantrel1::cli
