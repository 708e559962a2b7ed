#include "qt/DeviceClip.h"

#include <cmath>

namespace vantrel1 {
namespace {

bool Finite(const QPointF& p) { return std::isfinite(p.x()) && std::isfinite(p.y()); }

// Liang-Barsky: narrows [t0, t1] by one boundary inequality p·t <= q.
bool Narrow(double p, double q, double& t0, double& t1) {
  if (p == 0.0) return q >= 0.0;
  const double t = q / p;
  if (p < 0.0) {
    if (t > t1) return false;
    if (t > t0) t0 = t;
  } else {
    if (t < t0) return false;
    if (t < t1) t1 = t;
  }
  return true;
}

bool ClipSegment(QPointF& a, QPointF& b, const QRectF& r) {
  const double dx = b.x() - a.x();
  const double dy = b.y() - a.y();
  double t0 = 0.0;
  double t1 = 1.0;
  if (!Narrow(-dx, a.x() - r.left(), t0, t1) || !Narrow(dx, r.right() - a.x(), t0, t1) ||
      !Narrow(-dy, a.y() - r.top(), t0, t1) || !Narrow(dy, r.bottom() - a.y(), t0, t1))
    return false;
  const QPointF start = a;
  if (t1 < 1.0) b = QPointF(start.x() + t1 * dx, start.y() + t1 * dy);
  if (t0 > 0.0) a = QPointF(start.x() + t0 * dx, start.y() + t0 * dy);
  return true;
}

void Flush(QPolygonF& run, std::vector<QPolygonF>& runs) {
  if (run.size() >= 2) runs.push_back(run);
  run.clear();
}

// One side of the rectangle for Sutherland-Hodgman: which points are inside and where an
// edge crosses the side.
struct Side {
  int axis;      // 0: x, 1: y
  double limit;
  bool keepBelow;

  double Coordinate(const QPointF& p) const { return axis == 0 ? p.x() : p.y(); }
  bool Inside(const QPointF& p) const { return keepBelow ? Coordinate(p) <= limit : Coordinate(p) >= limit; }
  QPointF Crossing(const QPointF& a, const QPointF& b) const {
    const double t = (limit - Coordinate(a)) / (Coordinate(b) - Coordinate(a));
    const QPointF p = a + t * (b - a);
    return axis == 0 ? QPointF(limit, p.y()) : QPointF(p.x(), limit);
  }
};

QPolygonF ClipToSide(const QPolygonF& in, const Side& side) {
  QPolygonF out;
  for (qsizetype i = 0; i < in.size(); ++i) {
    const QPointF& current = in[i];
    const QPointF& previous = in[i == 0 ? in.size() - 1 : i - 1];
    const bool currentIn = side.Inside(current);
    if (currentIn != side.Inside(previous)) out << side.Crossing(previous, current);
    if (currentIn) out << current;
  }
  return out;
}

}  // namespace

std::vector<QPolygonF> ClipPolyline(const QPolygonF& line, const QRectF& bounds) {
  std::vector<QPolygonF> runs;
  QPolygonF run;
  for (qsizetype i = 1; i < line.size(); ++i) {
    QPointF a = line[i - 1];
    QPointF b = line[i];
    if (!Finite(a) || !Finite(b) || !ClipSegment(a, b, bounds)) {
      Flush(run, runs);
      continue;
    }
    if (!run.isEmpty() && run.last() != a) Flush(run, runs);
    if (run.isEmpty()) run << a;
    run << b;
    if (b != line[i]) Flush(run, runs);
  }
  Flush(run, runs);
  return runs;
}

QPolygonF ClipPolygon(const QPolygonF& polygon, const QRectF& bounds) {
  for (const QPointF& p : polygon)
    if (!Finite(p)) return QPolygonF();
  const Side sides[] = {{0, bounds.left(), false}, {0, bounds.right(), true},
                        {1, bounds.top(), false}, {1, bounds.bottom(), true}};
  QPolygonF out = polygon;
  for (const Side& side : sides) {
    if (out.isEmpty()) break;
    out = ClipToSide(out, side);
  }
  return out;
}

}  // namespace vantrel1
