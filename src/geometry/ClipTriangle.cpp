// CRectDouble::ClipTriangle: a Sutherland–Hodgman clipper with one stage per edge, run as
// a pipeline (each stage passes its output straight on to the next).
#include <array>
#include <cmath>
#include <vector>

#include "geometry/PolygonDouble.h"
#include "geometry/RectDouble.h"
#include "suite/GeoMath.h"

namespace vantrel1 {
namespace {

struct PlanPoint {
  double x;
  double y;
};

enum class Boundary { Right, Bottom, Left, Top };

class ClipStage {
 public:
  ClipStage(Boundary boundary, double at) : m_boundary(boundary), m_at(at) {}

  bool HasFirst() const { return m_hasFirst; }
  PlanPoint First() const { return m_first; }

  // Feeds p and appends what the stage emits to `emitted` (at most two points).
  void Feed(PlanPoint p, std::vector<PlanPoint>* emitted) {
    const bool inside = Inside(p);
    if (!m_hasFirst) {
      m_hasFirst = true;
      m_first = p;
    } else if (inside) {
      if (!m_previousInside) emitted->push_back(Cross(m_previous, p));
      emitted->push_back(p);
    } else if (m_previousInside) {
      emitted->push_back(Cross(m_previous, p));
    }
    m_previous = p;
    m_previousInside = inside;
  }

 private:
  // Right and top exclusive, left and bottom inclusive, no tolerance: a vertex on the
  // right edge of one tile belongs to its neighbour.
  bool Inside(PlanPoint p) const {
    switch (m_boundary) {
      case Boundary::Right: return p.x < m_at;
      case Boundary::Bottom: return p.y >= m_at;
      case Boundary::Left: return p.x >= m_at;
      case Boundary::Top: return p.y < m_at;
    }
    return false;
  }

  // Called only when p0 and p1 lie on opposite sides, so the divisor is never zero.
  PlanPoint Cross(PlanPoint p0, PlanPoint p1) const {
    if (m_boundary == Boundary::Right || m_boundary == Boundary::Left)
      return {m_at, p0.y + (p1.y - p0.y) / (p1.x - p0.x) * (m_at - p0.x)};
    return {p0.x + (p1.x - p0.x) / (p1.y - p0.y) * (m_at - p0.y), m_at};
  }

  Boundary m_boundary;
  double m_at;
  bool m_hasFirst = false;
  PlanPoint m_first{0, 0};
  PlanPoint m_previous{0, 0};
  bool m_previousInside = false;
};

class ClipPipeline {
 public:
  explicit ClipPipeline(const CRectDouble& r)
      : m_stages{ClipStage(Boundary::Right, r.Right()), ClipStage(Boundary::Bottom, r.Bottom()),
                 ClipStage(Boundary::Left, r.Left()), ClipStage(Boundary::Top, r.Top())} {}

  void Feed(PlanPoint p) { FeedStage(0, p); }

  // Every stage sees its first point again, in pipeline order, so that each closing edge
  // passes through the stages after it.
  void Close() {
    for (std::size_t i = 0; i < m_stages.size(); ++i)
      if (m_stages[i].HasFirst()) FeedStage(i, m_stages[i].First());
  }

  const std::vector<PlanPoint>& Result() const { return m_result; }

 private:
  void FeedStage(std::size_t i, PlanPoint p) {
    std::vector<PlanPoint> emitted;
    m_stages[i].Feed(p, &emitted);
    for (const PlanPoint& q : emitted) {
      if (i + 1 < m_stages.size())
        FeedStage(i + 1, q);
      else
        m_result.push_back(q);
    }
  }

  std::array<ClipStage, 4> m_stages;
  std::vector<PlanPoint> m_result;
};

bool FiniteInPlan(const CPointDouble& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

}  // namespace
}  // namespace vantrel1

unsigned int CRectDouble::ClipTriangle(const CPointDouble& a, const CPointDouble& b,
                                       const CPointDouble& c, CPolygonDouble* out) const {
  using vantrel1::PlanPoint;
  if (out == nullptr || !vantrel1::FiniteInPlan(a) || !vantrel1::FiniteInPlan(b) ||
      !vantrel1::FiniteInPlan(c))
    return 0;
  vantrel1::ClipPipeline pipeline(*this);
  pipeline.Feed({a.x, a.y});
  pipeline.Feed({b.x, b.y});
  pipeline.Feed({c.x, c.y});
  pipeline.Close();

  unsigned int appended = 0;
  const std::vector<PlanPoint>& points = pipeline.Result();
  for (std::size_t i = 0; i < points.size(); ++i) {
    const CPointDouble p(points[i].x, points[i].y, 0.0);
    if (i > 0 && p == CPointDouble(points[i - 1].x, points[i - 1].y, 0.0)) continue;
    const double z = InterpolateElevOnTriangle(p.x, p.y, a.x, a.y, a.z, b.x, b.y, b.z, c.x, c.y, c.z);
    out->AppendPoint(p.x, p.y, z);
    ++appended;
  }
  return appended;
}
