#include "qt/HairlineRaster.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantrel1 {
namespace {

// Whole part of a value known to lie within ±2^31, rounded downwards.
int FloorToInt(double value) {
  const int whole = static_cast<int>(value);
  return value < whole ? whole - 1 : whole;
}

std::int64_t RoundToInt64(double value) {
  return value >= 0 ? static_cast<std::int64_t>(value + 0.5) : -static_cast<std::int64_t>(0.5 - value);
}

// x·a/255 + y·(255 − a)/255 on each of the four bytes, rounded; two bytes per multiply.
[[gnu::always_inline]] inline std::uint32_t Interpolate(std::uint32_t x, std::uint32_t y, unsigned a) {
  const unsigned b = 255 - a;
  std::uint32_t low = (x & 0xff00ffu) * a + (y & 0xff00ffu) * b;
  low = ((low + ((low >> 8) & 0xff00ffu) + 0x800080u) >> 8) & 0xff00ffu;
  std::uint32_t high = ((x >> 8) & 0xff00ffu) * a + ((y >> 8) & 0xff00ffu) * b;
  high = (high + ((high >> 8) & 0xff00ffu) + 0x800080u) & 0xff00ff00u;
  return high | low;
}

unsigned Coverage(double fraction) { return static_cast<unsigned>(fraction * 255.0 + 0.5); }

[[gnu::always_inline]] inline void Blend(std::uint8_t* at, std::uint32_t colour, unsigned coverage) {
  auto* pixel = reinterpret_cast<std::uint32_t*>(at);
  if (coverage >= 255)
    *pixel = colour;
  else if (coverage > 0)
    *pixel = Interpolate(colour, *pixel, coverage);
}

// The pixel grid seen along the line's major axis u and its minor axis v: a step of one
// along each, in bytes, and the number of pixels across.
struct Axes {
  std::uint8_t* bits;
  std::intptr_t uStep;
  std::intptr_t vStep;
  int vLimit;
};

// Column u of the line: `upper` of row v and `lower` of row v + 1, where they exist.
[[gnu::always_inline]] inline void Cover(const Axes& axes, int u, std::int64_t v, std::uint32_t colour, unsigned upper, unsigned lower) {
  std::uint8_t* pixel = axes.bits + u * axes.uStep + v * axes.vStep;
  if (v >= 0 && v < axes.vLimit) Blend(pixel, colour, upper);
  if (v + 1 >= 0 && v + 1 < axes.vLimit) Blend(pixel + axes.vStep, colour, lower);
}

// How a line ends at its low and its high u. A capped end is antialiased by the share of
// its column that the line spans. Where a polyline goes on, the column is covered fully
// when its centre lies on the line's side of the end, so that two lines meeting end to end
// share the columns there without a gap or a double cover; a centre exactly on the vertex
// belongs to the line leaving it.
struct Ends {
  bool capLow;
  bool capHigh;
  bool holdsLow;
  bool holdsHigh;
};

// A column at an end of the line, or cut by the image's edge.
void EndColumn(const Axes& axes, int u, double u0, double v0, double u1, double slope, const Ends& ends,
               std::uint32_t colour) {
  const bool openLow = u0 >= u && !ends.capLow;
  const bool openHigh = u1 <= u + 1.0 && !ends.capHigh;
  double span = 1.0;
  double middle = u + 0.5;
  if (openLow || openHigh) {
    if (openLow && !(middle > u0 || (middle == u0 && ends.holdsLow))) return;
    if (openHigh && !(middle < u1 || (middle == u1 && ends.holdsHigh))) return;
  } else {
    const double lo = std::max(u0, static_cast<double>(u));
    const double hi = std::min(u1, u + 1.0);
    span = hi - lo;
    middle = (lo + hi) * 0.5;
  }
  const double top = v0 + slope * (middle - u0) - 0.5;
  if (!(span > 0) || !(top > -2.0) || !(top < axes.vLimit + 2.0)) return;
  const int row = FloorToInt(top);
  const double below = top - row;
  // Split as the interior columns split it: the two shares add up to the column's.
  const unsigned lower = Coverage(below * span);
  Cover(axes, u, row, colour, Coverage(span) - lower, lower);
}

}  // namespace

bool HairlineRaster::Supports(QImage::Format format) {
  return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32_Premultiplied;
}

HairlineRaster::HairlineRaster(QImage* image) {
  if (image == nullptr || image->isNull() || !Supports(image->format())) return;
  m_bits = image->bits();
  m_stride = image->bytesPerLine();
  m_width = image->width();
  m_height = image->height();
}

void HairlineRaster::DrawPolyline(const QPointF* points, qsizetype count, QPointF offset, QRgb colour) {
  if (points == nullptr) return;
  for (qsizetype i = 1; i < count; ++i)
    DrawSegment(points[i - 1] + offset, points[i] + offset, i == 1, i == count - 1, colour);
}

void HairlineRaster::DrawSegment(QPointF a, QPointF b, bool capA, bool capB, QRgb colour) {
  if (!Active() || !std::isfinite(a.x()) || !std::isfinite(a.y()) || !std::isfinite(b.x()) ||
      !std::isfinite(b.y()))
    return;
  const std::uint32_t opaque = colour | 0xff000000u;
  // Half a pixel more at a capped end, where a round cap one pixel across reaches (Qt draws
  // its one-pixel round and square caps so too).
  if (capA || capB) {
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    // Overflows only for lines far longer than any image, where a cap cannot be seen.
    const double length = std::sqrt(dx * dx + dy * dy);
    if (length > 0 && std::isfinite(length)) {
      const QPointF half(0.5 * dx / length, 0.5 * dy / length);
      if (capA) a -= half;
      if (capB) b += half;
    }
  }
  if (std::fabs(b.x() - a.x()) >= std::fabs(b.y() - a.y()))
    DrawMajor(a.x(), a.y(), b.x(), b.y(), false, capA, capB, opaque);
  else
    DrawMajor(a.y(), a.x(), b.y(), b.x(), true, capA, capB, opaque);
}

void HairlineRaster::DrawMajor(double u0, double v0, double u1, double v1, bool transposed, bool cap0,
                               bool cap1, std::uint32_t colour) {
  Ends ends{cap0, cap1, true, false};
  if (u1 < u0) {
    std::swap(u0, u1);
    std::swap(v0, v1);
    ends = Ends{cap1, cap0, false, true};
  }
  const double run = u1 - u0;
  if (!(run > 0) || !std::isfinite(run)) return;
  const double slope = (v1 - v0) / run;
  const int uLimit = transposed ? m_height : m_width;
  const int vLimit = transposed ? m_width : m_height;
  // Only the part of the line within the image, or within two pixels of it across, is
  // walked; that bounds both the work and the values below.
  double from = std::max(u0, 0.0);
  double to = std::min(u1, static_cast<double>(uLimit));
  if (slope != 0) {
    double enter = u0 + (-2.0 - v0) / slope;
    double leave = u0 + (vLimit + 2.0 - v0) / slope;
    if (enter > leave) std::swap(enter, leave);
    from = std::max(from, enter);
    to = std::min(to, leave);
  } else if (!(v0 > -2.0 && v0 < vLimit + 2.0)) {
    return;
  }
  if (!(from < to)) return;
  const Axes axes{m_bits, transposed ? m_stride : 4, transposed ? 4 : m_stride, vLimit};
  // 0 <= from < to <= uLimit: truncation is the floor, and the ceiling is one more
  // unless `to` is whole.
  const int first = static_cast<int>(from);
  const int whole = static_cast<int>(to);
  const int last = std::min(whole < to ? whole : whole - 1, uLimit - 1);
  EndColumn(axes, first, u0, v0, u1, slope, ends, colour);
  if (last > first) EndColumn(axes, last, u0, v0, u1, slope, ends, colour);
  if (last - first < 2) return;
  // Columns wholly spanned: the line's centre moves by the slope from one to the next, in
  // fixed point with 28 fractional bits (drifting less than 2^-8 pixels over a million
  // columns; the centre stays within two pixels of the image, so nothing overflows).
  constexpr double kOne = 268435456.0;
  std::int64_t top = RoundToInt64((v0 + slope * (first + 1.5 - u0) - 0.5) * kOne);
  const std::int64_t step = RoundToInt64(slope * kOne);
  for (int i = first + 1; i < last; ++i, top += step) {
    const std::int64_t row = top >> 28;
    const unsigned below = static_cast<unsigned>((((top >> 12) & 0xffff) * 255 + 32768) >> 16);
    Cover(axes, i, row, colour, 255 - below, below);
  }
}

}  // namespace vantrel1
