#include "GeoJsonDrawing.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <stdexcept>

#include <nlohmann/json.hpp>

namespace vantrel1::cli {

namespace {

using nlohmann::json;

// Thrown inside the reader only; the message becomes the result's error.
struct Refusal : std::runtime_error {
  using std::runtime_error::runtime_error;
};

[[noreturn]] void Refuse(int feature, const std::string& what) {
  throw Refusal("feature " + std::to_string(feature) + ": " + what);
}

// nlohmann's messages start with "[json.exception.parse_error.101] "; the reader of our
// message needs only what follows.
std::string WithoutExceptionTag(const std::string& message) {
  if (message.empty() || message.front() != '[') return message;
  const std::size_t end = message.find("] ");
  return end == std::string::npos ? message : message.substr(end + 2);
}

class Reader {
 public:
  GeoJsonDrawing Read(const json& document);

 private:
  DrawingFeature ReadFeature(const json& feature, int index);
  void ReadGeometry(const json& geometry, DrawingFeature& out);
  void ReadProperties(const json& properties, DrawingFeature& out);

  DrawingPath ReadPosition(const json& position, int index);
  DrawingPath ReadPositions(const json& positions, int index, std::size_t minimum, const char* what);
  void ReadPolygon(const json& rings, DrawingFeature& out);
  void AddPoint(double x, double y, int index, DrawingPath& path);

  std::size_t m_positions = 0;
  DrawingBounds m_bounds;
};

bool IsPosition(const json& p) {
  return p.is_array() && (p.size() == 2 || p.size() == 3) && p[0].is_number() && p[1].is_number();
}

GeoJsonDrawing Reader::Read(const json& document) {
  if (!document.is_object() || document.value("type", json()) != "FeatureCollection")
    throw Refusal("the document is not a GeoJSON FeatureCollection");
  const auto features = document.find("features");
  if (features == document.end() || !features->is_array())
    throw Refusal("a FeatureCollection needs a \"features\" array");
  if (features->size() > kMaxFeatures) throw Refusal("more than " + std::to_string(kMaxFeatures) + " features");
  GeoJsonDrawing drawing;
  for (std::size_t i = 0; i < features->size(); ++i) {
    DrawingFeature feature = ReadFeature((*features)[i], static_cast<int>(i));
    if (!feature.paths.empty()) drawing.features.push_back(std::move(feature));
  }
  drawing.bounds = m_bounds;
  return drawing;
}

DrawingFeature Reader::ReadFeature(const json& feature, int index) {
  if (!feature.is_object() || feature.value("type", json()) != "Feature") Refuse(index, "not a GeoJSON Feature");
  DrawingFeature out;
  out.index = index;
  if (const auto p = feature.find("properties"); p != feature.end()) ReadProperties(*p, out);
  if (const auto g = feature.find("geometry"); g != feature.end()) ReadGeometry(*g, out);
  return out;
}

void Reader::ReadGeometry(const json& geometry, DrawingFeature& out) {
  if (geometry.is_null()) return;
  const int index = out.index;
  if (!geometry.is_object() || !geometry.contains("type") || !geometry["type"].is_string())
    Refuse(index, "geometry must be a GeoJSON geometry object or null");
  const std::string type = geometry["type"];
  const auto found = geometry.find("coordinates");
  if (found == geometry.end()) Refuse(index, type + " has no coordinates");
  const json& c = *found;
  const auto requireArray = [&](const char* what) {
    if (!c.is_array()) Refuse(index, std::string("coordinates must be ") + what);
  };
  if (type == "Point") {
    out.kind = DrawingFeature::Kind::Point;
    out.paths.push_back(ReadPosition(c, index));
  } else if (type == "MultiPoint") {
    out.kind = DrawingFeature::Kind::Point;
    requireArray("an array of [x, y] positions");
    for (const json& p : c) out.paths.push_back(ReadPosition(p, index));
  } else if (type == "LineString") {
    out.kind = DrawingFeature::Kind::Line;
    out.paths.push_back(ReadPositions(c, index, 2, "a LineString"));
  } else if (type == "MultiLineString") {
    out.kind = DrawingFeature::Kind::Line;
    requireArray("an array of lines");
    for (const json& line : c) out.paths.push_back(ReadPositions(line, index, 2, "a LineString"));
  } else if (type == "Polygon") {
    out.kind = DrawingFeature::Kind::Polygon;
    ReadPolygon(c, out);
  } else if (type == "MultiPolygon") {
    out.kind = DrawingFeature::Kind::Polygon;
    requireArray("an array of polygons");
    for (const json& polygon : c) ReadPolygon(polygon, out);
  } else {
    Refuse(index, "geometry type \"" + type + "\" is not supported");
  }
}

void Reader::ReadPolygon(const json& rings, DrawingFeature& out) {
  if (!rings.is_array()) Refuse(out.index, "coordinates must be an array of rings of [x, y] pairs");
  for (std::size_t i = 0; i < rings.size(); ++i) {
    DrawingPath path = ReadPositions(rings[i], out.index, 3, "a polygon ring");
    path.hole = i > 0;
    const std::size_t last = path.x.size() - 1;
    if (path.x[0] != path.x[last] || path.y[0] != path.y[last]) AddPoint(path.x[0], path.y[0], out.index, path);
    if (path.x.size() < 4) Refuse(out.index, "a polygon ring needs at least 3 distinct positions");
    out.paths.push_back(std::move(path));
  }
}

DrawingPath Reader::ReadPosition(const json& position, int index) {
  if (!IsPosition(position)) Refuse(index, "coordinates must be an [x, y] pair");
  DrawingPath path;
  AddPoint(position[0].get<double>(), position[1].get<double>(), index, path);
  return path;
}

DrawingPath Reader::ReadPositions(const json& positions, int index, std::size_t minimum, const char* what) {
  if (!positions.is_array()) Refuse(index, "coordinates must be an array of [x, y] pairs");
  DrawingPath path;
  for (const json& p : positions) {
    if (!IsPosition(p)) Refuse(index, "coordinates must be an array of [x, y] pairs");
    AddPoint(p[0].get<double>(), p[1].get<double>(), index, path);
  }
  if (path.x.size() < minimum)
    Refuse(index, std::string(what) + " needs at least " + std::to_string(minimum) + " positions");
  return path;
}

void Reader::AddPoint(double x, double y, int index, DrawingPath& path) {
  if (!std::isfinite(x) || !std::isfinite(y) || std::fabs(x) > kMaxCoordinate || std::fabs(y) > kMaxCoordinate)
    Refuse(index, "coordinates must lie within -1e9 .. 1e9");
  if (++m_positions > kMaxPositions) throw Refusal("more than " + std::to_string(kMaxPositions) + " positions");
  path.x.push_back(x);
  path.y.push_back(y);
  m_bounds.Add(x, y);
}

// An integer property: integral and within int, as a line or symbol number is.
std::optional<int> AsInt(const json& v) {
  if (!v.is_number()) return std::nullopt;
  const double d = v.get<double>();
  if (d != std::trunc(d) || d < std::numeric_limits<int>::min() || d > std::numeric_limits<int>::max())
    return std::nullopt;
  return static_cast<int>(d);
}

std::optional<COLORREF> AsColor(const json& v) {
  if (v.is_string()) return ParseHexColor(v.get<std::string>());
  const std::optional<int> i = AsInt(v);
  if (i && *i >= 0 && *i <= 0xFFFFFF) return static_cast<COLORREF>(*i);
  return std::nullopt;
}

std::optional<double> AsNumber(const json& v, double low, double high) {
  if (!v.is_number()) return std::nullopt;
  const double d = v.get<double>();
  return d >= low && d <= high ? std::optional<double>(d) : std::nullopt;
}

void Reader::ReadProperties(const json& p, DrawingFeature& out) {
  if (p.is_null()) return;
  if (!p.is_object()) Refuse(out.index, "properties must be an object or null");
  const auto take = [&](const char* key, auto parse, auto& field, const char* rule) {
    const auto it = p.find(key);
    if (it == p.end()) return;
    const auto value = parse(*it);
    if (!value) Refuse(out.index, "\"" + std::string(key) + "\" must be " + rule);
    field = *value;
  };
  take("line", AsInt, out.line, "an integer line number");
  take("symbol", AsInt, out.symbol, "an integer symbol number");
  take("color", AsColor, out.color, "\"#RRGGBB\" or a COLORREF integer 0 .. 16777215");
  take("scale", [](const json& v) { return AsNumber(v, 1e-6, 1e6); }, out.scale, "a number from 1e-6 to 1e6");
  take("angle", [](const json& v) { return AsNumber(v, -1e6, 1e6); }, out.angle, "a number of degrees");
  take("fill", [](const json& v) { return v.is_boolean() ? std::optional<bool>(v.get<bool>()) : std::nullopt; },
       out.fill, "true or false");
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

void DrawingBounds::Add(double x, double y) {
  if (empty) {
    left = right = x;
    bottom = top = y;
    empty = false;
    return;
  }
  left = std::min(left, x);
  right = std::max(right, x);
  bottom = std::min(bottom, y);
  top = std::max(top, y);
}

std::optional<COLORREF> ParseHexColor(std::string_view text) {
  if (text.size() != 7 || text[0] != '#') return std::nullopt;
  unsigned rgb[3];
  for (int i = 0; i < 3; ++i) {
    const int high = HexDigit(text[1 + 2 * i]), low = HexDigit(text[2 + 2 * i]);
    if (high < 0 || low < 0) return std::nullopt;
    rgb[i] = static_cast<unsigned>(high * 16 + low);
  }
  return RGB(rgb[0], rgb[1], rgb[2]);
}

GeoJsonResult ReadGeoJsonDrawing(std::string_view text) {
  GeoJsonResult result;
  if (text.size() > kMaxGeoJsonBytes) {
    result.error = "larger than " + std::to_string(kMaxGeoJsonBytes >> 20) + " MiB";
    return result;
  }
  try {
    const json document = json::parse(text.begin(), text.end());
    result.drawing = Reader().Read(document);
  } catch (const Refusal& e) {
    result.error = e.what();
  } catch (const json::exception& e) {
    result.error = "not valid JSON: " + WithoutExceptionTag(e.what());
  } catch (const std::bad_alloc&) {
    result.error = "too large to read";
  }
  return result;
}

GeoJsonResult ReadGeoJsonFile(const std::string& path) {
  GeoJsonResult result;
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    result.error = "cannot be read";
    return result;
  }
  std::string text;
  char buffer[65536];
  while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
    if (text.size() + static_cast<std::size_t>(in.gcount()) > kMaxGeoJsonBytes) {
      result.error = "larger than " + std::to_string(kMaxGeoJsonBytes >> 20) + " MiB";
      return result;
    }
    text.append(buffer, static_cast<std::size_t>(in.gcount()));
  }
  if (in.bad()) {
    result.error = "cannot be read";
    return result;
  }
  return ReadGeoJsonDrawing(text);
}

}  // namespace vantrel1::cli
