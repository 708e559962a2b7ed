#pragma once
// LineWalk: how dashes, symbol placements and text copies travel along a polyline.
//
// The walk visits the segments that the clip bounds do not trivially reject (both ends
// beyond the same edge) and keeps one position that carries over vertices. After rejected
// segments it restarts at the start of the next visible one; otherwise the position stays
// where the previous segment left it.
//
// A segment's direction is held reversed, a = atan2(dy, dx) + π (0 for a segment shorter
// than 1e-5 in both coordinates), so stepping t forward from (px, py) reaches
// (px − c·t, py − s·t) with c = cos a, s = sin a. Distances along a segment are signed:
// (px − qx) / c, or (py − qy) / s when |c| ≤ 1e-5. Drawings made by the suite's Windows
// programs depend on both forms to the last bit (for instance sin(π) ≈ 1.2e-16 is kept
// and moves a dash on a horizontal line off its axis by a few ulps), so they are kept.
//
// Nothing here allocates; the walk is a few doubles on the stack of one draw call.
#include <bit>
#include <cmath>
#include <cstdint>

#include "platform/Export.h"
#include "platform/Types.h"

namespace vantrel1 {

// Clip bounds as left, bottom, right, top (y upwards); without a clip rectangle, the whole
// 32-bit plane.
struct WalkBounds {
  double left = -2147483648.0;
  double bottom = -2147483648.0;
  double right = 2147483647.0;
  double top = 2147483647.0;

  static WalkBounds Of(const RECT* clip) {
    WalkBounds b;
    if (clip != nullptr) {
      b.left = clip->left;
      b.bottom = clip->bottom;
      b.right = clip->right;
      b.top = clip->top;
    }
    return b;
  }

  // Both ends beyond the same edge.
  bool Rejects(double px, double py, double qx, double qy) const {
    return (px < left && qx < left) || (py < bottom && qy < bottom) ||
           (px > right && qx > right) || (py > top && qy > top);
  }
};

class VANTREL1_EXPORT LineWalk {
 public:
  static constexpr double kPi = 3.14159265358979323846;
  // Below this a direction component counts as zero.
  static constexpr double kTiny = 1e-5;

  // `x` and `y` hold n points; null arrays or n < 2 give a walk without segments.
  LineWalk(const double* x, const double* y, long n, const RECT* clip);

  // Steps to the next visible segment; false when none is left. Segments with a
  // non-finite coordinate (or a length beyond the range of a double) are skipped as
  // rejected ones are: nothing can be placed on them.
  bool NextSegment() {
    bool skipped = false;
    while (m_next < m_n) {
      const long k = m_next++;
      const double px = m_x[k - 1], py = m_y[k - 1], qx = m_x[k], qy = m_y[k];
      const double dx = qx - px, dy = qy - py;
      if (m_bounds.Rejects(px, py, qx, qy) || !std::isfinite(dx) || !std::isfinite(dy)) {
        skipped = true;
        continue;
      }
      m_index = k;
      m_px = px;
      m_py = py;
      m_qx = qx;
      m_qy = qy;
      SetDirection(dx, dy);
      m_restarted = m_restart || skipped;
      m_restart = false;
      if (m_restarted) {
        m_x0 = px;
        m_y0 = py;
      }
      return true;
    }
    return false;
  }

  // The current segment runs from point Index() − 1 to point Index().
  long Index() const { return m_index; }
  // The current segment is the first one visited or follows rejected ones; the position
  // has been put at its start.
  bool Restarted() const { return m_restarted; }
  // Makes the next visible segment start afresh at its own start point.
  void Restart() { m_restart = true; }

  double StartX() const { return m_px; }
  double StartY() const { return m_py; }
  double EndX() const { return m_qx; }
  double EndY() const { return m_qy; }
  // Cosine and sine of the reversed direction.
  double Cos() const { return m_c; }
  double Sin() const { return m_s; }
  const WalkBounds& Bounds() const { return m_bounds; }

  double X() const { return m_x0; }
  double Y() const { return m_y0; }
  void MoveTo(double x, double y) {
    m_x0 = x;
    m_y0 = y;
  }

  // Signed distance from the position to the segment's end, positive ahead of it.
  double DistanceToEnd() const {
    return std::fabs(m_c) > kTiny ? (m_x0 - m_qx) / m_c : (m_y0 - m_qy) / m_s;
  }
  void Advance(double t) {
    m_x0 -= m_c * t;
    m_y0 -= m_s * t;
  }
  void MoveToEnd() {
    m_x0 = m_qx;
    m_y0 = m_qy;
  }

  // Whether the position lies in the segment's bounding box widened by `widen` on every
  // side, inclusive. A rounding allowance of 1e-9 × max(1, |coordinate|) is added so that
  // the ulps that the reversed direction puts off an axis-parallel segment never count as
  // leaving it.
  bool WithinBox(double widen) const {
    const double ax = std::fabs(m_x0);
    const double ay = std::fabs(m_y0);
    const double tx = 1e-9 * (ax > 1 ? ax : 1.0) + widen;
    const double ty = 1e-9 * (ay > 1 ? ay : 1.0) + widen;
    const double left = m_px < m_qx ? m_px : m_qx;
    const double right = m_px < m_qx ? m_qx : m_px;
    const double bottom = m_py < m_qy ? m_py : m_qy;
    const double top = m_py < m_qy ? m_qy : m_py;
    return m_x0 >= left - tx && m_x0 <= right + tx && m_y0 >= bottom - ty && m_y0 <= top + ty;
  }

  // Fast-forwards over whole periods of a repeating pattern when the rest of the segment
  // ahead runs far outside the clip bounds widened by `margin` (the reach of what is
  // placed, held below 2^31): up to where it comes near them, or else up to the last two
  // periods before the segment's end. Whole periods leave the pattern's phase as it was, so
  // only output that could not be seen is left out. Jumps are made only over more than
  // kMinSkipPeriods periods, so ordinary drawings are walked step by step to the last bit;
  // the jumps are what bound the work on a long segment that merely crosses a small view
  // and keep a position that no longer moves by a step (coordinates of 1e300) from
  // stepping for ever. Returns the distance jumped, 0 when none.
  double SkipHidden(double period, double margin);
  // Whether more than kMinSkipPeriods periods lie ahead: a jump is worth considering.
  bool FarFromEnd(double period) const { return DistanceToEnd() > kMinSkipPeriods * period; }
  static constexpr double kMinSkipPeriods = 1024;
  // How many steps a walker may take between two SkipHidden calls.
  static constexpr unsigned kSkipCheckSteps = 64;

 private:
  struct Direction {
    std::uint64_t dx = 0;
    std::uint64_t dy = 0;
    double c = -1;
    double s = 0;
    bool valid = false;
  };

  // cos and sin of the reversed direction, remembered for the last two directions: a
  // straight run or a zigzag then costs no trigonometry. Compared by bits, because the
  // sign of a zero difference turns atan2 by 2π.
  void SetDirection(double dx, double dy) {
    const std::uint64_t bx = std::bit_cast<std::uint64_t>(dx);
    const std::uint64_t by = std::bit_cast<std::uint64_t>(dy);
    for (Direction& d : m_memo) {
      if (d.valid && d.dx == bx && d.dy == by) {
        m_c = d.c;
        m_s = d.s;
        return;
      }
    }
    const double a = (std::fabs(dx) < kTiny && std::fabs(dy) < kTiny) ? 0.0 : std::atan2(dy, dx) + kPi;
    m_c = std::cos(a);
    m_s = std::sin(a);
    m_memo[m_memoNext] = Direction{bx, by, m_c, m_s, true};
    m_memoNext ^= 1;
  }

  const double* m_x;
  const double* m_y;
  long m_n;
  long m_next = 1;
  WalkBounds m_bounds;

  long m_index = 0;
  bool m_restart = true;
  bool m_restarted = false;
  double m_px = 0, m_py = 0, m_qx = 0, m_qy = 0;
  double m_c = -1, m_s = 0;
  double m_x0 = 0, m_y0 = 0;

  Direction m_memo[2];
  unsigned m_memoNext = 0;
};

// Evenly spaced placements along a polyline: the first at `first` from the start of the
// line (at the first point itself when `first` is 0), then one every `interval`, the
// remaining distance carried over vertices; after rejected segments the walk resumes, with
// the distance it had left, at the start of the next visible segment. place(walk) is
// called with the walk's position on the placement. `margin` is how far from the clip
// bounds a placement can still be seen (see LineWalk::SkipHidden); `margin(walk)` is asked
// only when a jump is considered. A negative or non-finite `first` counts as 0; an
// interval that is not positive and finite places nothing.
template <class Place, class Margin>
void WalkPlacements(LineWalk& walk, double first, double interval, Margin&& margin, Place&& place) {
  if (!(interval > 0) || !std::isfinite(interval)) return;
  bool due = !(first > 0) || !std::isfinite(first);
  double remaining = due ? 0.0 : first;
  unsigned steps = 0;
  while (walk.NextSegment()) {
    for (;;) {
      if (due) {
        place(walk);
        remaining = interval;
        due = false;
      }
      if (++steps >= LineWalk::kSkipCheckSteps) {
        steps = 0;
        if (walk.FarFromEnd(interval)) walk.SkipHidden(interval, margin(walk));
      }
      const double distance = walk.DistanceToEnd();
      if (distance < remaining) {
        remaining -= distance;
        walk.MoveToEnd();
        break;
      }
      walk.Advance(remaining);
      due = true;
    }
  }
}

}  // namespace vantrel1
