#include "geometry/NearestPoint.h"

#include <cmath>

namespace {

// The search limit is the largest single-precision value, not infinity: a vertex more
// than about 1.8e19 away is never found.
constexpr double kFarthestSquared = 3.4028234663852886e38;

bool OutsideBox(double offset, double tolerance) { return tolerance > 0 && std::fabs(offset) > tolerance; }

}  // namespace

long NearestPoint(double x, double y, const CdoubleArray& xs, const CdoubleArray& ys, double* distance,
                  double toleranceX, double toleranceY, std::vector<bool>* skip) {
  const long n = xs.GetSize();
  if (n == 0 || n != ys.GetSize()) return -1;
  if (skip != nullptr && skip->size() < static_cast<std::size_t>(n)) return -1;

  double best = kFarthestSquared;
  long bestIndex = -1;
  for (long i = 0; i < n; ++i) {
    if (skip != nullptr && (*skip)[static_cast<std::size_t>(i)]) continue;
    const double dy = ys.GetAtC(i) - y;
    const double dx = xs.GetAtC(i) - x;
    const double squared = dy * dy + dx * dx;
    if (squared < best) {
      best = squared;
      bestIndex = i;
    }
  }
  if (bestIndex < 0) return -1;
  if (OutsideBox(xs.GetAtC(bestIndex) - x, toleranceX) || OutsideBox(ys.GetAtC(bestIndex) - y, toleranceY))
    return -1;
  if (distance != nullptr) *distance = std::sqrt(best);
  return bestIndex;
}
