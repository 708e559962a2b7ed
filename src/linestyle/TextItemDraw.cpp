// Drawing a text item: copies along a line, each turned to its segment and centred on its
// point, or one copy at a point.
#include <cmath>

#include "linestyle/DrawScope.h"
#include "linestyle/LineWalk.h"
#include "linestyle/Tenths.h"
#include "linestyle/TextItem.h"
#include "platform/Gdi.h"
#include "suite/GeoMath.h"
#include "suite/VantrelFont.h"

namespace {

constexpr double kPi = vantrel1::LineWalk::kPi;
constexpr double kHalfPi = kPi / 2;
// Vertical centre (32), baseline (24) and horizontal centre (6): centred on its point.
constexpr int kCentred = 62;
// Nine tenths of the largest int: copies beyond are left out, so that the position still
// converts to an int after RotTextOut2 moves it to centre the text.
constexpr double kPositionLimit = 1932735282.3;

// The item's text, terminated even if the stored field is not.
struct ItemText {
  explicit ItemText(const WCHAR (&stored)[CTextItem::kTextSize]) {
    while (length < CTextItem::kTextSize && stored[length] != 0) {
      units[length] = stored[length];
      ++length;
    }
    units[length] = 0;
  }
  WCHAR units[CTextItem::kTextSize + 1] = {};
  int length = 0;
};

// The attribute context's font as a logical font; false when it has no face name.
bool FontOfContext(HDC attribDC, LOGFONTW* lf) {
  WCHAR face[LF_FACESIZE] = {};
  if (GetTextFaceW(attribDC, LF_FACESIZE, face) < 1 || face[0] == 0) return false;
  TEXTMETRICW tm;
  if (GetTextMetricsW(attribDC, &tm) == 0) return false;
  *lf = LOGFONTW{};
  lf->lfHeight = tm.tmHeight;
  lf->lfWidth = tm.tmAveCharWidth;
  lf->lfWeight = tm.tmWeight;
  lf->lfItalic = tm.tmItalic;
  lf->lfUnderline = tm.tmUnderlined;
  lf->lfStrikeOut = tm.tmStruckOut;
  lf->lfCharSet = tm.tmCharSet;
  lf->lfPitchAndFamily = tm.tmPitchAndFamily;
  for (int i = 0; i < LF_FACESIZE; ++i) lf->lfFaceName[i] = face[i];
  lf->lfFaceName[LF_FACESIZE - 1] = 0;
  return true;
}

// How far from its point a copy can reach: twice the diagonal of the text (RotTextOut2
// tests a square of one diagonal round the point) plus the offset. Not a number when the
// text cannot be measured, which lets nothing be skipped near the view.
double CopyReach(HDC measure, const LOGFONTW& lf, const ItemText& text, double offset) {
  HFONT font = FntGraphic2(0.0, lf, nullptr);
  if (font == nullptr) return NAN;
  SIZE extent{0, 0};
  BOOL measured = FALSE;
  {
    const vantrel1::SelectedObject selected(measure, font);
    measured = GetTextExtentPoint32W(measure, text.units, text.length, &extent);
  }
  if (measured == 0) return NAN;
  return 2 * std::hypot(static_cast<double>(extent.cx), static_cast<double>(extent.cy)) +
         std::fabs(offset) + 2;
}

struct Copies {
  HDC dc;
  HDC attribDC;
  const LOGFONTW* font;
  RECT* clip;
  const ItemText* text;
  double offset;  // drawing units, to the right of the direction of travel
  double turn;    // the item's own angle, radians
};

void DrawAlong(const Copies& copies, const double* x, const double* y, long n, double first,
               double interval, double angle) {
  long normalOf = -1;
  double normal = 0;
  double reach = 0;
  bool measured = false;
  vantrel1::LineWalk walk(x, y, n, copies.clip);
  vantrel1::WalkPlacements(
      walk, first, interval,
      [&](const vantrel1::LineWalk&) {
        if (!measured) {
          measured = true;
          const HDC measure = copies.attribDC != nullptr ? copies.attribDC : copies.dc;
          reach = CopyReach(measure, *copies.font, *copies.text, copies.offset);
        }
        return reach;
      },
      [&](const vantrel1::LineWalk& w) {
        if (w.Index() != normalOf) {
          normalOf = w.Index();
          PerpAng(0, 1, 0, 0, w.StartX(), w.StartY(), w.EndX(), w.EndY(), 0, &normal);
        }
        const double textAngle = normal + copies.turn + kHalfPi + angle;
        const double px = w.X() + copies.offset * -w.Sin();
        const double py = w.Y() + copies.offset * w.Cos();
        if (!(std::fabs(px) < kPositionLimit && std::fabs(py) < kPositionLimit)) return;
        RotTextOut2(copies.dc, copies.attribDC, static_cast<int>(px), static_cast<int>(py), textAngle,
                    copies.text->units, copies.text->length, 0, copies.font, nullptr, nullptr,
                    copies.clip, kCentred);
      });
}

}  // namespace

void CTextItem::Draw(HDC dc, HDC attribDC, const double* x, const double* y, long n, const LOGFONTW* font,
                     RECT* clip, double scale, double angle) {
  const ItemText text(m_szText);
  if (text.length == 0 || x == nullptr || y == nullptr || n < 1) return;
  if (n > 1 && m_nInterval < 1) return;
  LOGFONTW lf;
  if (font != nullptr)
    lf = *font;
  else if (!FontOfContext(attribDC, &lf))
    return;
  lf.lfWidth = vantrel1::ScaledSize(lf.lfWidth, m_dScale, scale);
  lf.lfHeight = vantrel1::ScaledSize(lf.lfHeight, m_dScale, scale);

  const int savedMode = GetBkMode(dc);
  SetBkMode(dc, m_nBkMode);
  const Copies copies{dc, attribDC, &lf, clip, &text, vantrel1::Tenths(m_nOffset), m_nAngle * 0.1 * kPi / 180};
  if (n == 1) {
    // At a point the offset lifts the text straight up, whatever its angle.
    const double py = y[0] + copies.offset;
    if (m_dStart == 0 && vantrel1::TruncatesToInt(x[0]) && vantrel1::TruncatesToInt(py))
      RotTextOut2(dc, attribDC, static_cast<int>(x[0]), static_cast<int>(py), copies.turn + angle,
                  text.units, text.length, 0, &lf, nullptr, nullptr, clip, kCentred);
  } else {
    DrawAlong(copies, x, y, n, vantrel1::TenthsOf(m_nInterval * m_dStart), vantrel1::Tenths(m_nInterval),
              angle);
  }
  SetBkMode(dc, savedMode);
}

void CTextItem::Draw(HDC dc, HDC attribDC, double x, double y, const LOGFONTW* font, RECT* clip, double scale,
                     double angle) {
  Draw(dc, attribDC, &x, &y, 1, font, clip, scale, angle);
}
