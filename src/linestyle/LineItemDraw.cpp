// Stroking a line item along a polyline: its own pen or the line type's, the sideways
// offset, and the dash pattern carried across vertices.
#include <memory>
#include <new>

#include "linestyle/DrawScope.h"
#include "linestyle/LineItem.h"
#include "linestyle/LineWalk.h"
#include "linestyle/Tenths.h"
#include "platform/Gdi.h"
#include "suite/PolylineClip.h"

namespace vantrel1 {
namespace {

// A stored length while drawing: a negative one counts as 0.
double DrawnLength(int tenths) { return tenths > 0 ? Tenths(tenths) : 0.0; }

// The dash/gap pattern in drawing units and the walk's place in it. The sequence is
// dash 0, gap 0, dash 1, gap 1, ..., and round again; D and G are what is left of the
// current dash and gap, and they are kept when the walk skips invisible segments.
class DashWalker {
 public:
  DashWalker(const CLineItem& item, HDC dc, RECT* clip)
      : m_dc(dc), m_device(LiveDevice(dc)), m_clip(clip), m_bounds(WalkBounds::Of(clip)) {
    m_count = item.UsedPairs();
    for (int i = 0; i < m_count; ++i) {
      m_dash[i] = DrawnLength(item.m_nDash[i]);
      m_gap[i] = DrawnLength(item.m_nGap[i]);
      m_period += m_dash[i] + m_gap[i];
    }
    m_remainingDash = m_dash[0];
    m_remainingGap = m_gap[0];
  }

  // A pattern of nothing but zero lengths would never move along the line.
  bool Moves() const { return m_count > 0 && m_period > 0; }

  void Walk(LineWalk& walk) {
    while (walk.NextSegment()) {
      if (walk.Restarted()) m_inDash = true;
      Segment(walk);
    }
  }

 private:
  void Segment(LineWalk& walk) {
    for (;;) {
      if (++m_steps >= LineWalk::kSkipCheckSteps) {
        m_steps = 0;
        if (walk.FarFromEnd(m_period)) walk.SkipHidden(m_period, 0.0);
      }
      // Both guards widen by the dash length, also in a gap.
      if (!walk.WithinBox(m_remainingDash)) return;
      if (m_inDash && !DashStep(walk)) return;
      if (!GapStep(walk)) return;
    }
  }

  // Draws the dash up to its end or to the segment's end; false when the segment is used up.
  bool DashStep(LineWalk& walk) {
    const double x0 = walk.X();
    const double y0 = walk.Y();
    const double distance = walk.DistanceToEnd();
    if (distance < m_remainingDash) {
      Piece(x0, y0, walk.EndX(), walk.EndY());
      m_remainingDash -= distance;
      walk.MoveToEnd();
      return false;
    }
    walk.Advance(m_remainingDash);
    Piece(x0, y0, walk.X(), walk.Y());
    m_gapIndex = m_gapIndex + 1 < m_count ? m_gapIndex + 1 : 0;
    m_remainingGap = m_gap[m_gapIndex];
    m_inDash = false;
    return true;
  }

  bool GapStep(LineWalk& walk) {
    const double distance = walk.DistanceToEnd();
    if (distance < m_remainingGap) {
      m_remainingGap -= distance;
      walk.MoveToEnd();
      return false;
    }
    walk.Advance(m_remainingGap);
    m_dashIndex = m_dashIndex + 1 < m_count ? m_dashIndex + 1 : 0;
    m_remainingDash = m_dash[m_dashIndex];
    m_inDash = true;
    return true;
  }

  // A piece wholly inside the bounds is what the clipper would pass on unchanged; handing
  // it straight to the device spares the clipper's run buffers on the common path, and the
  // device looked up once spares a handle lookup per piece (nothing in a draw call can
  // destroy it).
  void Piece(double x0, double y0, double x1, double y1) const {
    const double x[2] = {x0, x1};
    const double y[2] = {y0, y1};
    if (Inside(x0, y0) && Inside(x1, y1)) {
      if (m_device != nullptr) m_device->DrawPolyline(x, y, 2);
    } else
      PolylineClip(m_dc, x, y, 2, m_clip, 0, nullptr);
  }

  bool Inside(double x, double y) const {
    return x >= m_bounds.left && x <= m_bounds.right && y >= m_bounds.bottom && y <= m_bounds.top;
  }

  HDC m_dc;
  GdiDevice* m_device;
  RECT* m_clip;
  WalkBounds m_bounds;
  double m_dash[CLineItem::kMaxPairs] = {};
  double m_gap[CLineItem::kMaxPairs] = {};
  int m_count = 0;
  double m_period = 0;
  double m_remainingDash = 0;
  double m_remainingGap = 0;
  int m_dashIndex = 0;
  int m_gapIndex = -1;  // the first gap drawn is gap 0
  bool m_inDash = true;
  unsigned m_steps = 0;
};

}  // namespace
}  // namespace vantrel1

void CLineItem::Draw(HDC dc, COLORREF colour, const double* x, const double* y, long n, RECT* clip) {
  if (IsEmpty() != 0 || x == nullptr || y == nullptr || n < 1) return;
  const vantrel1::SelectedObject pen(dc, m_nWidth >= 0 ? CreatePen(PS_SOLID, m_nWidth, colour) : nullptr);

  std::unique_ptr<double[]> offsetX;
  std::unique_ptr<double[]> offsetY;
  if (m_nOffset != 0) {
    offsetX.reset(new (std::nothrow) double[static_cast<std::size_t>(n)]);
    offsetY.reset(new (std::nothrow) double[static_cast<std::size_t>(n)]);
    if (!offsetX || !offsetY) return;
    SideDoubleLine(x, y, offsetX.get(), offsetY.get(), n, m_nOffset);
    x = offsetX.get();
    y = offsetY.get();
  }

  if (m_nCount < 1) {
    PolylineClip(dc, x, y, n, clip, 0, nullptr);
    return;
  }
  if (n < 2) return;
  vantrel1::DashWalker dashes(*this, dc, clip);
  if (!dashes.Moves()) return;
  vantrel1::LineWalk walk(x, y, n, clip);
  dashes.Walk(walk);
}
