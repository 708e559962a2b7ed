#include "linestyle/LineWalk.h"

#include <algorithm>

namespace vantrel1 {
namespace {

// Margins beyond this would take the window to where a step of a tenth no longer moves a
// coordinate.
constexpr double kMaxMargin = 2147483648.0;

// Narrows [*tIn, *tOut] to the t for which lo ≤ p − c·t ≤ hi.
void ClipRay(double p, double c, double lo, double hi, double* tIn, double* tOut) {
  if (c == 0) {
    if (p < lo || p > hi) *tIn = *tOut + 1;
    return;
  }
  double t1 = (p - hi) / c;
  double t2 = (p - lo) / c;
  if (c < 0) std::swap(t1, t2);
  *tIn = std::max(*tIn, t1);
  *tOut = std::min(*tOut, t2);
}

}  // namespace

LineWalk::LineWalk(const double* x, const double* y, long n, const RECT* clip)
    : m_x(x), m_y(y), m_n(x != nullptr && y != nullptr && n > 0 ? n : 0), m_bounds(WalkBounds::Of(clip)) {}

double LineWalk::SkipHidden(double period, double margin) {
  const double distance = DistanceToEnd();
  if (!(period > 0) || !(distance > kMinSkipPeriods * period)) return 0;
  const double m = std::clamp(std::isnan(margin) ? kMaxMargin : margin, 0.0, kMaxMargin);
  double tIn = 0;
  double tOut = distance;
  // A rectangle given upside down still names an area that the clipper draws into.
  const auto [left, right] = std::minmax(m_bounds.left, m_bounds.right);
  const auto [bottom, top] = std::minmax(m_bounds.bottom, m_bounds.top);
  ClipRay(m_x0, m_c, left - m, right + m, &tIn, &tOut);
  ClipRay(m_y0, m_s, bottom - m, top + m, &tIn, &tOut);
  double target;
  if (tIn > tOut)
    target = distance;  // the rest of the segment never comes near the bounds
  else if (tIn > 0)
    target = tIn;
  else
    return 0;
  const double periods = std::floor(target / period) - 1;
  if (!(periods >= kMinSkipPeriods)) return 0;
  const double jump = periods * period;
  Advance(jump);
  return jump;
}

}  // namespace vantrel1
