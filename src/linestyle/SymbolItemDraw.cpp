// Drawing a symbol item's figure: along a line at a fixed interval, at chosen vertices, or
// once at a point. Figure point (X, Y), in tenths, is scaled, turned to θ and put at the
// origin, which lies the item's shift away from the placement point along the local −y.
#include <cmath>
#include <cstdint>

#include "linestyle/DrawScope.h"
#include "linestyle/LineWalk.h"
#include "linestyle/SymbolItem.h"
#include "linestyle/Tenths.h"
#include "platform/Gdi.h"
#include "suite/GeoMath.h"
#include "suite/PolylineClip.h"

namespace {

constexpr double kPi = vantrel1::LineWalk::kPi;
constexpr double kHalfPi = kPi / 2;

// Pen-up is anything but 1.
bool PenUp(signed char flag) { return flag != 1; }

}  // namespace

void CSymbolItem::Draw(HDC dc, COLORREF colour, const double* x, const double* y, long n, RECT* clip,
                       double scale, double angle) {
  const vantrel1::SelectedObject brush(dc, m_nFill != 0 ? CreateSolidBrush(colour) : nullptr);
  const vantrel1::SelectedObject pen(
      dc, m_nFill != 0 ? CreatePen(PS_NULL, m_nPenWidth, 0) : CreatePen(PS_SOLID, m_nPenWidth, colour));
  const double stored = m_dScale;
  m_dScale *= scale;
  if (m_nMode == 0)
    DrawByInterval(dc, colour, x, y, n, clip, angle);
  else
    DrawByPoints(dc, colour, x, y, n, clip, angle);
  m_dScale = stored;
}

void CSymbolItem::Draw(HDC dc, COLORREF colour, double x, double y, RECT* clip, double scale, double angle) {
  Draw(dc, colour, &x, &y, 1, clip, scale, angle);
}

void CSymbolItem::DrawByInterval(HDC dc, COLORREF /*colour*/, const double* x, const double* y, long n,
                                 RECT* clip, double angle) {
  if (m_nInterval < 1 || UsedPoints() < 1 || x == nullptr || y == nullptr) return;
  if (n == 1) {
    if (m_nStart == 0) DrawSymbol(dc, angle - kHalfPi, x[0], y[0], clip);
    return;
  }
  if (n < 2) return;

  // The first placement is a whole number of tenths, truncated as C divides.
  const std::int64_t firstTenths = static_cast<std::int64_t>(m_nStart) * m_nInterval / 100;
  const double first = firstTenths > 0 ? vantrel1::TenthsOf(firstTenths) : 0.0;
  const double interval = vantrel1::Tenths(m_nInterval);

  // How far from a placement point its figure can reach, for skipping hidden stretches.
  double size = 0;
  for (int i = 0; i < UsedPoints(); ++i)
    size = std::fmax(size, std::hypot(vantrel1::Tenths(m_ptPoints[i].x), vantrel1::Tenths(m_ptPoints[i].y)));
  const double reach = size * std::fabs(m_dScale) + std::fabs(vantrel1::Tenths(m_nShift)) +
                       std::fabs(m_nPenWidth / 2.0) + 1;
  long normalOf = -1;
  double normal = 0;
  vantrel1::LineWalk walk(x, y, n, clip);
  vantrel1::WalkPlacements(
      walk, first, interval, [reach](const vantrel1::LineWalk&) { return reach; },
      [&](const vantrel1::LineWalk& w) {
        if (w.Index() != normalOf) {
          normalOf = w.Index();
          PerpAng(0, 1, 0, 0, w.StartX(), w.StartY(), w.EndX(), w.EndY(), 0, &normal);
        }
        DrawSymbol(dc, normal + angle, w.X(), w.Y(), clip);
      });
}

void CSymbolItem::DrawByPoints(HDC dc, COLORREF /*colour*/, const double* x, const double* y, long n,
                               RECT* clip, double angle) {
  if (x == nullptr || y == nullptr || n < 1) return;
  // A single point keeps this normal: its figure is turned to `angle` itself.
  double a = -kHalfPi;
  for (long i = 0; i < n; ++i) {
    const int bit = i == 0 ? 1 : (i == n - 1 ? 2 : 4);
    if ((m_nMode & bit) == 0) continue;
    if (n > 1) {
      if (i == 0)
        PerpAng(0, 1, 0, 0, x[0], y[0], x[1], y[1], 0, &a);
      else if (i == n - 1)
        PerpAng(1, 0, x[n - 2], y[n - 2], x[n - 1], y[n - 1], 0, 0, 0, &a);
      else
        PerpAng(1, 1, x[i - 1], y[i - 1], x[i], y[i], x[i + 1], y[i + 1], 0, &a);
    }
    DrawSymbol(dc, a + angle, x[i], y[i], clip);
  }
}

void CSymbolItem::DrawSymbol(HDC dc, double a, double px, double py, RECT* clip) {
  const int count = UsedPoints();
  if (count < 1) return;
  const double theta = a + kHalfPi;
  const double c = std::cos(theta);
  const double s = std::sin(theta);
  const double h = vantrel1::Tenths(m_nShift);
  // The origin first, then the figure's points.
  double fx[kMaxPoints + 1];
  double fy[kMaxPoints + 1];
  fx[0] = px + h * s;
  fy[0] = py - h * c;
  for (int i = 0; i < count; ++i) {
    const double sx = vantrel1::Tenths(m_ptPoints[i].x) * m_dScale;
    const double sy = vantrel1::Tenths(m_ptPoints[i].y) * m_dScale;
    fx[i + 1] = fx[0] + sx * c - sy * s;
    fy[i + 1] = fy[0] + sx * s + sy * c;
  }
  // Runs of strokes: a pen-down point strokes from the entry before it (the origin for
  // point 0); a pen-up point begins a new run at itself.
  const int fill = m_nFill != 0 ? 1 : 0;
  int runStart = 0;
  for (int i = 0; i < count; ++i) {
    if (i == runStart && PenUp(m_bPenDown[i])) ++runStart;
    if (i + 1 == count || PenUp(m_bPenDown[i + 1])) {
      if (i + 1 > runStart) PolylineClip(dc, fx + runStart, fy + runStart, i + 2 - runStart, clip, fill, nullptr);
      runStart = i + 2;
    }
  }
}
