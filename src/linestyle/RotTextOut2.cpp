// One rotated text at a point, in a font made for its angle.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "linestyle/DrawScope.h"
#include "linestyle/TextItem.h"
#include "platform/Gdi.h"
#include "platform/WideCrt.h"
#include "suite/GeoMath.h"
#include "suite/PolylineClip.h"
#include "suite/VantrelFont.h"

namespace {

// The request for vertical centring, which is not a text-alignment flag of the platform.
constexpr int kCentreVertically = 32;

int HeldToInt(std::int64_t v) {
  return static_cast<int>(std::clamp<std::int64_t>(v, INT32_MIN, INT32_MAX));
}

// trunc(v), or 0 when it is not a number of the 64-bit range.
std::int64_t Truncated(double v) {
  return (v > -9.2e18 && v < 9.2e18) ? static_cast<std::int64_t>(v) : 0;
}

// Whether a square of half-side r round (x, y) meets the bounds (top is the larger y).
bool MeetsBounds(const RECT& b, std::int64_t x, std::int64_t y, std::int64_t r) {
  return y - r <= b.top && y + r >= b.bottom && x - r <= b.right && x + r >= b.left;
}

// A font selected into the device context and, when it is another one, into the
// measuring context; both are given their previous fonts back before it is deleted.
class FontInBoth {
 public:
  FontInBoth(HDC dc, HDC measure, HFONT font) : m_dc(dc), m_measure(measure), m_font(font) {
    if (m_font == nullptr) return;
    m_previousDc = SelectObject(m_dc, m_font);
    if (m_measure != m_dc) m_previousMeasure = SelectObject(m_measure, m_font);
  }
  ~FontInBoth() {
    if (m_font == nullptr) return;
    if (m_previousMeasure != nullptr) SelectObject(m_measure, m_previousMeasure);
    if (m_previousDc != nullptr) SelectObject(m_dc, m_previousDc);
    DeleteObject(m_font);
  }
  FontInBoth(const FontInBoth&) = delete;
  FontInBoth& operator=(const FontInBoth&) = delete;

 private:
  HDC m_dc;
  HDC m_measure;
  HFONT m_font;
  HGDIOBJ m_previousDc = nullptr;
  HGDIOBJ m_previousMeasure = nullptr;
};

}  // namespace

int RotTextOut2(HDC dc, HDC attribDC, int x, int y, double angle, const WCHAR* text, int count,
                int adjust, const LOGFONTW* font, const double* cosA, const double* sinA, RECT* clip,
                int align) {
  double c = cosA != nullptr ? *cosA : std::cos(angle);
  double s = sinA != nullptr ? *sinA : std::sin(angle);
  const HDC measure = attribDC != nullptr ? attribDC : dc;
  HFONT made = nullptr;
  if (font != nullptr) made = FntGraphic2(AdjustTextAngle(adjust, angle, &c, &s), *font, nullptr);
  const FontInBoth selected(dc, measure, made);

  // The square is measured on the whole text, whatever part of it is written.
  const int length = text != nullptr ? lstrlenW(text) : 0;
  SIZE extent{0, 0};
  if (length > 0) GetTextExtentPoint32W(measure, text, length, &extent);
  const double diagonal = std::sqrt(static_cast<double>(extent.cx) * extent.cx +
                                    static_cast<double>(extent.cy) * extent.cy);
  const std::int64_t r = Truncated(diagonal);

  RECT boundsBuffer{};
  const RECT* bounds = GetClipBounds(&boundsBuffer, dc, clip);
  if (length == 0 || bounds == nullptr || !MeetsBounds(*bounds, x, y, r)) return 1;

  std::int64_t refX = x;
  std::int64_t refY = y;
  if ((align & kCentreVertically) != 0) {
    align &= ~kCentreVertically;
    TEXTMETRICW tm;
    if (GetTextMetricsW(measure, &tm) != 0) {
      // Down across the text by the distance from the baseline to its middle.
      const double d = tm.tmHeight * 0.5 - tm.tmDescent;
      refX += Truncated(d * s);
      refY -= Truncated(d * c);
    }
  }
  // A count beyond the text would write what follows its terminator.
  const int chars = count >= 1 ? std::min(count, length) : length;
  const UINT previousAlign = SetTextAlign(dc, static_cast<UINT>(align));
  TextOutW(dc, HeldToInt(refX), HeldToInt(refY), text, chars);
  SetTextAlign(dc, previousAlign);
  return 1;
}
