// Paths parallel to a polyline: one side (the offset of a line item) or both sides.
// The offset lies along the normal that PerpAng gives, to the right of the direction of
// travel for a positive distance; interior points sit on the corner's bisector at
// d / sin(b / 2), so the parallel stays d from both segments (a mitred corner).
#include <climits>
#include <cmath>

#include "linestyle/LineItem.h"
#include "linestyle/Tenths.h"
#include "suite/GeoMath.h"

namespace {

// A mitre of an interior corner: the direction of the offset and the distance along it.
struct Mitre {
  double c;
  double s;
  double m;
};

double Normal(int hasPrev, int hasNext, const double* x, const double* y, long prev, long cur, long next) {
  double a = 0;
  PerpAng(hasPrev, hasNext, hasPrev ? x[prev] : 0, hasPrev ? y[prev] : 0, x[cur], y[cur],
          hasNext ? x[next] : 0, hasNext ? y[next] : 0, 0, &a);
  return a;
}

// The offset directions and distances at every point, handed to emit(i, c·m, s·m).
// `limitSpikes`: at a corner that nearly reverses (|sin(b / 2)| ≤ 0.01) use d itself
// instead of a mitre that would shoot off a hundred times further.
template <class Emit>
void Offsets(const double* x, const double* y, long n, double d, bool limitSpikes, Emit&& emit) {
  double a = Normal(0, 1, x, y, 0, 0, 1);
  emit(0, std::cos(a) * d, std::sin(a) * d);
  for (long i = 1; i + 1 < n; ++i) {
    double b = 0;
    BisectAngle(x[i - 1], y[i - 1], x[i], y[i], x[i + 1], y[i + 1], &b, nullptr, nullptr);
    const double sh = std::sin(b * 0.5);
    const double m = (limitSpikes && std::fabs(sh) <= 0.01) ? d : d / sh;
    a = Normal(1, 1, x, y, i - 1, i, i + 1);
    emit(i, std::cos(a) * m, std::sin(a) * m);
  }
  a = Normal(1, 0, x, y, n - 2, n - 1, 0);
  emit(n - 1, std::cos(a) * d, std::sin(a) * d);
}

int PointsResult(long n) { return n > 2 ? static_cast<int>(n - 1 < INT_MAX ? n - 1 : INT_MAX) : 1; }

}  // namespace

int CLineItem::SideDoubleLine(const double* x, const double* y, double* outX, double* outY, long n,
                              int offset) {
  const double d = vantrel1::Tenths(offset);
  if (d == 0 || x == nullptr || y == nullptr || outX == nullptr || outY == nullptr) return 0;
  if (n < 2) {
    // No direction to offset along: the point stays where it is.
    if (n == 1) {
      outX[0] = x[0];
      outY[0] = y[0];
    }
    return 1;
  }
  Offsets(x, y, n, d, true, [&](long i, double ox, double oy) {
    outX[i] = x[i] + ox;
    outY[i] = y[i] + oy;
  });
  return PointsResult(n);
}

int CLineItem::CenteredDoubleLine(const double* x, const double* y, double* outX1, double* outY1,
                                  double* outX2, double* outY2, long n, int halfWidth) {
  const double d = vantrel1::Tenths(halfWidth);
  if (d == 0 || x == nullptr || y == nullptr || outX1 == nullptr || outY1 == nullptr ||
      outX2 == nullptr || outY2 == nullptr)
    return 0;
  if (n < 2) {
    if (n == 1) {
      outX1[0] = outX2[0] = x[0];
      outY1[0] = outY2[0] = y[0];
    }
    return 1;
  }
  // No spike limit here: callers of the two-sided form get the true mitre, however far.
  Offsets(x, y, n, d, false, [&](long i, double ox, double oy) {
    outX1[i] = x[i] + ox;
    outY1[i] = y[i] + oy;
    outX2[i] = x[i] - ox;
    outY2[i] = y[i] - oy;
  });
  return PointsResult(n);
}
