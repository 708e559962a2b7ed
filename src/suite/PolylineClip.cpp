#include "suite/PolylineClip.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <utility>
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

// A growing array whose first N elements live inside it: the figures of line types are
// short, and drawing a line type must not reach the heap for each of them.
template <typename T, std::size_t N>
class SmallArray {
 public:
  SmallArray() = default;
  SmallArray(const SmallArray&) = delete;
  SmallArray& operator=(const SmallArray&) = delete;

  std::size_t size() const { return m_size; }
  bool empty() const { return m_size == 0; }
  T* data() { return m_data; }
  T& operator[](std::size_t i) { return m_data[i]; }
  const T& operator[](std::size_t i) const { return m_data[i]; }
  const T& front() const { return m_data[0]; }
  const T& back() const { return m_data[m_size - 1]; }
  void clear() { m_size = 0; }
  void pop_back() { --m_size; }
  void Truncate(std::size_t size) { m_size = std::min(size, m_size); }

  void push_back(const T& value) {
    if (m_size == m_capacity) Grow();
    m_data[m_size++] = value;
  }

 private:
  void Grow() {
    if (m_data == m_inline) m_heap.assign(m_inline, m_inline + m_size);
    m_heap.resize(2 * m_capacity);
    m_data = m_heap.data();
    m_capacity = m_heap.size();
  }

  T m_inline[N];
  std::vector<T> m_heap;
  T* m_data = m_inline;
  std::size_t m_size = 0;
  std::size_t m_capacity = N;
};

constexpr std::size_t kInlinePoints = 64;

bool IsFinite(const Point& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

// Rounding may leave a computed crossing a hair outside; the boundary is where it belongs.
Point Clamped(const Point& p, const Bounds& b) {
  return {std::clamp(p.x, b.left, b.right), std::clamp(p.y, b.bottom, b.top)};
}

// The point at parameter t of a → b. Differences are taken of halves, which cannot
// overflow however far apart finite points lie; doubling back is exact.
// False also for a non-finite coordinate: the comparisons with NaN fail, infinities lie
// beyond every bound.
bool AllInside(const double* x, const double* y, long n, const Bounds& b) {
  for (long i = 0; i < n; ++i)
    if (!(x[i] >= b.left && x[i] <= b.right && y[i] >= b.bottom && y[i] <= b.top)) return false;
  return true;
}

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
  SmallArray<double, kInlinePoints> m_x, m_y;
  bool m_lastIsVertex = false;
  int m_drawn = 0;
};

int DrawOpen(HDC dc, const double* x, const double* y, long n, const Bounds& box) {
  // Inside the rectangle every segment is its own piece and all of them join into one
  // run of the caller's points.
  if (n <= INT_MAX && AllInside(x, y, n, box)) return PolylineD(dc, x, y, static_cast<int>(n)) ? 1 : 0;
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

using Polygon = SmallArray<Point, kInlinePoints>;

void ClipToEdge(const Polygon& in, Edge edge, const Bounds& box, Polygon* out) {
  out->clear();
  for (std::size_t i = 0; i < in.size(); ++i) {
    const Point& previous = in[(i + in.size() - 1) % in.size()];
    const Point& current = in[i];
    const bool currentIn = Inside(current, edge, box);
    if (currentIn != Inside(previous, edge, box)) out->push_back(Crossing(previous, current, edge, box));
    if (currentIn) out->push_back(current);
  }
}

void RemoveRepeats(Polygon* polygon) {
  Polygon& p = *polygon;
  std::size_t kept = 0;
  for (std::size_t i = 0; i < p.size(); ++i)
    if (kept == 0 || !(p[i] == p[kept - 1])) p[kept++] = p[i];
  p.Truncate(kept);
  while (p.size() > 1 && p.back() == p.front()) p.pop_back();
}

// Whether the polygon has nothing for RemoveRepeats to take out.
bool HasNoRepeats(const double* x, const double* y, long n) {
  for (long i = 1; i < n; ++i)
    if (x[i] == x[i - 1] && y[i] == y[i - 1]) return false;
  return !(x[n - 1] == x[0] && y[n - 1] == y[0]);
}

int FillPolygon(HDC dc, const double* x, const double* y, int n, const COLORREF* colour) {
  HBRUSH brush = colour ? CreateSolidBrush(*colour) : nullptr;
  HGDIOBJ previous = brush ? SelectObject(dc, brush) : nullptr;
  const BOOL drawn = PolygonD(dc, x, y, n);
  if (previous) SelectObject(dc, previous);
  if (brush) DeleteObject(brush);
  return drawn ? 1 : 0;
}

int DrawFilled(HDC dc, const double* x, const double* y, long n, const Bounds& box, const COLORREF* colour) {
  const bool inside = AllInside(x, y, n, box);
  if (inside && n >= 3 && n <= INT_MAX && HasNoRepeats(x, y, n))
    return FillPolygon(dc, x, y, static_cast<int>(n), colour);

  Polygon first, second;
  Polygon* polygon = &first;
  Polygon* spare = &second;
  for (long i = 0; i < n; ++i)
    if (IsFinite({x[i], y[i]})) polygon->push_back({x[i], y[i]});
  if (!inside) {
    for (const Edge edge : {Edge::Left, Edge::Right, Edge::Bottom, Edge::Top}) {
      ClipToEdge(*polygon, edge, box, spare);
      std::swap(polygon, spare);
    }
  }
  RemoveRepeats(polygon);
  if (polygon->size() < 3 || polygon->size() > static_cast<std::size_t>(INT_MAX)) return 0;

  SmallArray<double, kInlinePoints> px, py;
  for (std::size_t i = 0; i < polygon->size(); ++i) {
    px.push_back((*polygon)[i].x);
    py.push_back((*polygon)[i].y);
  }
  return FillPolygon(dc, px.data(), py.data(), static_cast<int>(px.size()), colour);
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
