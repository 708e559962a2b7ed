#include "suite/GeoMath.h"

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kHalfPi = kPi / 2;
constexpr double kTwoPi = 2 * kPi;
// Vertical texts read upwards even when the computed direction strays this far past it.
constexpr double kVerticalSlack = 1e-9;

struct Unit {
  double x = 0;
  double y = 0;
};

// The unit direction from (x0, y0) to (x1, y1); false when the segment has none.
bool UnitDirection(double x0, double y0, double x1, double y1, Unit* u) {
  const double dx = x1 - x0;
  const double dy = y1 - y0;
  const double length = std::hypot(dx, dy);
  if (!std::isfinite(length) || length == 0) return false;
  u->x = dx / length;
  u->y = dy / length;
  return true;
}

// atan2 gives (−π, π] except for a negative zero, which makes −π.
double WithoutMinusPi(double a) { return a <= -kPi ? a + kTwoPi : a; }

double NormaliseAngle(double a) {
  double r = std::fmod(a, kTwoPi);
  if (r > kPi) r -= kTwoPi;
  return WithoutMinusPi(r);
}

double NormalOf(const Unit& u) { return WithoutMinusPi(std::atan2(-u.x, u.y)); }

double DirectionOf(double x0, double y0, double x1, double y1) {
  Unit u;
  return UnitDirection(x0, y0, x1, y1, &u) ? WithoutMinusPi(std::atan2(u.y, u.x)) : 0.0;
}

double InteriorNormal(const Unit& in, const Unit& out) {
  // Sum of the two right-hand normals (u.y, −u.x); it vanishes only at a full reversal.
  const double sx = in.y + out.y;
  const double sy = -(in.x + out.x);
  if (std::hypot(sx, sy) < 1e-12) return WithoutMinusPi(std::atan2(in.y, in.x));
  return WithoutMinusPi(std::atan2(sy, sx));
}

double InterpolateOnSegment(double x, double y, double xa, double ya, double za, double xb,
                            double yb, double zb) {
  const double dx = xb - xa;
  const double dy = yb - ya;
  const double lengthSquared = dx * dx + dy * dy;
  if (!(lengthSquared > 0)) return za;
  double t = ((x - xa) * dx + (y - ya) * dy) / lengthSquared;
  if (!(t > 0)) t = 0;
  if (t > 1) t = 1;
  return za + (zb - za) * t;
}

double SquaredLength(double xa, double ya, double xb, double yb) {
  return (xb - xa) * (xb - xa) + (yb - ya) * (yb - ya);
}

}  // namespace

int PerpAng(int hasPrev, int hasNext, double prevX, double prevY, double curX, double curY,
            double nextX, double nextY, int /*reserved*/, double* angle) {
  if (angle == nullptr || (!hasPrev && !hasNext)) return 0;
  Unit in;
  Unit out;
  const bool haveIn = hasPrev && UnitDirection(prevX, prevY, curX, curY, &in);
  const bool haveOut = hasNext && UnitDirection(curX, curY, nextX, nextY, &out);
  if (haveIn && haveOut)
    *angle = InteriorNormal(in, out);
  else if (haveIn)
    *angle = NormalOf(in);
  else if (haveOut)
    *angle = NormalOf(out);
  else
    *angle = -kHalfPi;
  return 1;
}

int BisectAngle(double x1, double y1, double x2, double y2, double x3, double y3, double* angle,
                double* inDirection, double* outDirection) {
  if (inDirection) *inDirection = DirectionOf(x1, y1, x2, y2);
  if (outDirection) *outDirection = DirectionOf(x2, y2, x3, y3);
  Unit back;
  Unit forward;
  if (!UnitDirection(x2, y2, x1, y1, &back) || !UnitDirection(x2, y2, x3, y3, &forward)) {
    if (angle) *angle = kPi;
    return 0;
  }
  const double cross = back.x * forward.y - back.y * forward.x;
  const double dot = back.x * forward.x + back.y * forward.y;
  if (angle) *angle = std::atan2(std::fabs(cross), dot);
  return 1;
}

double AdjustTextAngle(int adjust, double angle, double* cosA, double* sinA) {
  double a = std::isfinite(angle) ? NormaliseAngle(angle) : 0.0;
  if (adjust == 0) {
    if (a > kHalfPi + kVerticalSlack)
      a -= kPi;
    else if (a <= -kHalfPi + kVerticalSlack)
      a += kPi;
  }
  if (cosA) *cosA = std::cos(a);
  if (sinA) *sinA = std::sin(a);
  return a;
}

double Round(double value, unsigned int decimals) {
  if (!std::isfinite(value) || value == 0) return value;
  const double scale = std::pow(10.0, static_cast<double>(decimals));  // exact up to 1e22
  const double scaled = value * scale;
  if (!(std::fabs(scaled) < 0x1p52)) return value;
  const double whole = std::trunc(scaled);
  const double half = whole + std::copysign(0.5, value);
  // The rounded product can land exactly on a half that the true product misses (or the
  // reverse); fma compares the unrounded product with the half.
  const double excess = std::fma(value, scale, -half);
  double rounded = whole;
  if (value > 0 && excess >= 0) rounded = whole + 1;
  if (value < 0 && excess <= 0) rounded = whole - 1;
  return rounded / scale;
}

double InterpolateElevOnTriangle(double x, double y, double x1, double y1, double z1, double x2,
                                 double y2, double z2, double x3, double y3, double z3) {
  const double ax = x2 - x1, ay = y2 - y1, az = z2 - z1;
  const double bx = x3 - x1, by = y3 - y1, bz = z3 - z1;
  const double det = ax * by - bx * ay;
  const double e12 = SquaredLength(x1, y1, x2, y2);
  const double e23 = SquaredLength(x2, y2, x3, y3);
  const double e31 = SquaredLength(x3, y3, x1, y1);
  double longest = e12;
  if (e23 > longest) longest = e23;
  if (e31 > longest) longest = e31;
  if (std::fabs(det) > 1e-12 * longest) {
    const double slopeX = (az * by - bz * ay) / det;
    const double slopeY = (ax * bz - bx * az) / det;
    return z1 + slopeX * (x - x1) + slopeY * (y - y1);
  }
  if (e12 >= e23 && e12 >= e31) return InterpolateOnSegment(x, y, x1, y1, z1, x2, y2, z2);
  if (e23 >= e31) return InterpolateOnSegment(x, y, x2, y2, z2, x3, y3, z3);
  return InterpolateOnSegment(x, y, x3, y3, z3, x1, y1, z1);
}
