#include "suite/PolylineClip.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <vector>

namespace {

struct Bounds {
  double left, bottom, right, top;
};

struct Point {
  double x, y;
  bool operator==(const Point&) const = default;
};

constexpr double kMinCoordinate = -2147483648.0;
constexpr double kMaxCoordinate = 2147483647.0;

Bounds BoundsOf(const RECT* clip) {
  if (!clip) return {kMinCoordinate, kMinCoordinate, kMaxCoordinate, kMaxCoordinate};
  return {static_cast<double>(std::min(clip->left, clip->right)), static_cast<double>(std::min(clip->top, clip->bottom)),
          static_cast<double>(std::max(clip->left, clip->right)), static_cast<double>(std::max(clip->top, clip->bottom))};
}

bool IsFinite(const Point& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

// Rounding may leave a computed crossing a hair outside; the boundary is where it belongs.
Point Clamped(const Point& p, const Bounds& b) {
  return {std::clamp(p.x, b.left, b.right), std::clamp(p.y, b.bottom, b.top)};
}

// The point at parameter t of a → b. Differences are taken of halves, which cannot
// overflow however far apart finite points lie; doubling back is exact.
Point At(const Point& a, const Point& b, double t) {
  const double hx = 0.5 * b.x - 0.5 * a.x;
  const double hy = 0.5 * b.y - 0.5 * a.y;
  return {2 * (0.5 * a.x + t * hx), 2 * (0.5 * a.y + t * hy)};
}

// ---- open polylines: Liang-Barsky per segment

struct Piece {
  Point from, to;
  bool fromIsVertex, toIsVertex;  // the piece ends at the segment's own end, not at a cut
};

// The point at parameter t, with the coordinate of the edge it was cut at set exactly.
// Far outside the integer range the parameter cannot locate the point to better than a
// relative 1e-16 of the segment's length; the clamp keeps even such a point in the box.
Point CutAt(const Point& a, const Point& b, double t, int edge, const Bounds& box) {
  Point p = Clamped(At(a, b, t), box);
  switch (edge) {
    case 0: p.x = box.left; break;
    case 1: p.x = box.right; break;
    case 2: p.y = box.bottom; break;
    default: p.y = box.top; break;
  }
  return p;
}

bool ClipSegment(const Point& a, const Point& b, const Bounds& box, Piece* piece) {
  if (!IsFinite(a) || !IsFinite(b)) return false;
  const double hx = 0.5 * b.x - 0.5 * a.x;
  const double hy = 0.5 * b.y - 0.5 * a.y;
  // Edges left, right, bottom, top: the point at t is inside an edge when p·t ≤ q, all in
  // halves like hx and hy.
  const double p[4] = {-hx, hx, -hy, hy};
  const double q[4] = {0.5 * a.x - 0.5 * box.left, 0.5 * box.right - 0.5 * a.x, 0.5 * a.y - 0.5 * box.bottom,
                       0.5 * box.top - 0.5 * a.y};
  double t0 = 0, t1 = 1;
  int enter = -1, leave = -1;
  for (int e = 0; e < 4; ++e) {
    if (p[e] == 0) {
      if (q[e] < 0) return false;
      continue;
    }
    const double r = q[e] / p[e];
    if (p[e] < 0) {
      if (r > t1) return false;
      if (r > t0) {
        t0 = r;
        enter = e;
      }
    } else {
      if (r < t0) return false;
      if (r < t1) {
        t1 = r;
        leave = e;
      }
    }
  }
  piece->fromIsVertex = enter < 0;
  piece->toIsVertex = leave < 0;
  piece->from = piece->fromIsVertex ? a : CutAt(a, b, t0, enter, box);
  piece->to = piece->toIsVertex ? b : CutAt(a, b, t1, leave, box);
  return true;
}

class RunWriter {
 public:
  explicit RunWriter(HDC dc) : m_dc(dc) {}

  void Add(const Piece& piece) {
    const bool joins = !m_x.empty() && m_lastIsVertex && piece.fromIsVertex;
    if (!joins) {
      Flush();
      Push(piece.from);
    } else if (m_x.size() == kMaxRun) {
      const Point last{m_x.back(), m_y.back()};
      Flush();
      Push(last);
    }
    Push(piece.to);
    m_lastIsVertex = piece.toIsVertex;
  }

  void Flush() {
    if (m_x.size() >= 2 && PolylineD(m_dc, m_x.data(), m_y.data(), static_cast<int>(m_x.size()))) ++m_drawn;
    m_x.clear();
    m_y.clear();
  }

  int Drawn() const { return m_drawn; }

 private:
  static constexpr std::size_t kMaxRun = INT_MAX;  // the device takes an int count

  void Push(const Point& p) {
    m_x.push_back(p.x);
    m_y.push_back(p.y);
  }

  HDC m_dc;
  std::vector<double> m_x, m_y;
  bool m_lastIsVertex = false;
  int m_drawn = 0;
};

int DrawOpen(HDC dc, const double* x, const double* y, long n, const Bounds& box) {
  RunWriter runs(dc);
  for (long k = 1; k < n; ++k) {
    Piece piece;
    if (ClipSegment({x[k - 1], y[k - 1]}, {x[k], y[k]}, box, &piece))
      runs.Add(piece);
    else
      runs.Flush();
  }
  runs.Flush();
  return runs.Drawn();
}

// ---- polygons: Sutherland-Hodgman against the four edges

enum class Edge { Left, Right, Bottom, Top };

bool Inside(const Point& p, Edge edge, const Bounds& b) {
  switch (edge) {
    case Edge::Left: return p.x >= b.left;
    case Edge::Right: return p.x <= b.right;
    case Edge::Bottom: return p.y >= b.bottom;
    case Edge::Top: return p.y <= b.top;
  }
  return false;
}

// Where a → b crosses the edge's line (one end is inside, the other not). The crossed
// coordinate is set exactly.
Point Crossing(const Point& a, const Point& b, Edge edge, const Bounds& box) {
  const bool vertical = edge == Edge::Left || edge == Edge::Right;
  const double line = edge == Edge::Left ? box.left : edge == Edge::Right ? box.right
                      : edge == Edge::Bottom ? box.bottom : box.top;
  const double from = vertical ? a.x : a.y;
  const double to = vertical ? b.x : b.y;
  double t = (0.5 * line - 0.5 * from) / (0.5 * to - 0.5 * from);
  if (!(t >= 0)) t = 0;  // halves of subnormal ends may both round to zero
  if (t > 1) t = 1;
  Point p = At(a, b, t);
  (vertical ? p.x : p.y) = line;
  return p;
}

std::vector<Point> ClipToEdge(const std::vector<Point>& in, Edge edge, const Bounds& box) {
  std::vector<Point> out;
  out.reserve(in.size() + 4);
  for (std::size_t i = 0; i < in.size(); ++i) {
    const Point& previous = in[(i + in.size() - 1) % in.size()];
    const Point& current = in[i];
    const bool currentIn = Inside(current, edge, box);
    if (currentIn != Inside(previous, edge, box)) out.push_back(Crossing(previous, current, edge, box));
    if (currentIn) out.push_back(current);
  }
  return out;
}

std::vector<Point> WithoutRepeats(const std::vector<Point>& in) {
  std::vector<Point> out;
  for (const Point& p : in)
    if (out.empty() || !(p == out.back())) out.push_back(p);
  while (out.size() > 1 && out.back() == out.front()) out.pop_back();
  return out;
}

int DrawFilled(HDC dc, const double* x, const double* y, long n, const Bounds& box, const COLORREF* colour) {
  std::vector<Point> polygon;
  for (long i = 0; i < n; ++i)
    if (IsFinite({x[i], y[i]})) polygon.push_back({x[i], y[i]});
  for (const Edge edge : {Edge::Left, Edge::Right, Edge::Bottom, Edge::Top})
    if (!polygon.empty()) polygon = ClipToEdge(polygon, edge, box);
  polygon = WithoutRepeats(polygon);
  if (polygon.size() < 3 || polygon.size() > static_cast<std::size_t>(INT_MAX)) return 0;

  std::vector<double> px, py;
  px.reserve(polygon.size());
  py.reserve(polygon.size());
  for (const Point& p : polygon) {
    px.push_back(p.x);
    py.push_back(p.y);
  }
  HBRUSH brush = colour ? CreateSolidBrush(*colour) : nullptr;
  HGDIOBJ previous = brush ? SelectObject(dc, brush) : nullptr;
  const BOOL drawn = PolygonD(dc, px.data(), py.data(), static_cast<int>(px.size()));
  if (previous) SelectObject(dc, previous);
  if (brush) DeleteObject(brush);
  return drawn ? 1 : 0;
}

}  // namespace

int PolylineClip(HDC dc, const double* x, const double* y, long n, const RECT* clip, int fill, const COLORREF* colour) {
  if (!dc || !x || !y || n < 2) return 0;
  const Bounds box = BoundsOf(clip);
  return fill ? DrawFilled(dc, x, y, n, box, colour) : DrawOpen(dc, x, y, n, box);
}

RECT* GetClipBounds(RECT* out, HDC dc, const RECT* clip) {
  if (!out) return nullptr;
  if (clip) {
    *out = *clip;
  } else if (GetClipBox(dc, out) == RGN_ERROR) {
    *out = RECT{INT32_MIN, INT32_MAX, INT32_MAX, INT32_MIN};
  }
  return out;
}
