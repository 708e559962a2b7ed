#pragma once
// CTextItem: a short text (at most 9 UTF-16 units) that a line type repeats along its
// line or that a point symbol shows at its point.
//
// Text record "%.12g,%d,%d,%d,%.12g,%d,%s": scale, angle (tenths of a degree), background
// mode, interval (tenths), start (fraction of the interval), offset (tenths), text.
// Archive record: scale (double), angle, background mode, interval (int32 each), start
// (double), offset (int32), then the text as an archive string.
#include <cstddef>

#include "platform/Object.h"
#include "platform/Types.h"

class VANTREL1_EXPORT CTextItem : public CObject {
  DECLARE_SERIAL(CTextItem)

 public:
  static constexpr int kTextSize = 10;  // nine units and the terminator

  // The defaults, with the text "*".
  CTextItem();
  // Keeps at most nine units of `text` (null is empty).
  CTextItem(double scale, int angle, int bkMode, int interval, double start, int offset,
            const WCHAR* text);
  CTextItem(const CTextItem& other);
  CTextItem& operator=(const CTextItem& other);
  ~CTextItem() override;

  // The defaults, with an empty text.
  void Init();
  // 1 on success; 0 when one of the six numbers is missing. Without a seventh field the
  // text is left empty.
  int FromAscii(const WCHAR* text);
  // `buffer`, or null when the record and its terminator do not fit in `size` units.
  WCHAR* ToAscii(WCHAR* buffer, std::size_t size);
  void Serialize(CArchive& ar) override;

  // Line form: copies along the polyline, each centred on its point and turned to the line.
  void Draw(HDC dc, HDC attribDC, const double* x, const double* y, long n, const LOGFONTW* font,
            RECT* clip, double scale, double angle);
  // Point form: the line form with the single point (x, y).
  void Draw(HDC dc, HDC attribDC, double x, double y, const LOGFONTW* font, RECT* clip, double scale,
            double angle);

  double m_dScale;
  int m_nAngle;   // tenths of a degree
  int m_nBkMode;  // 1 transparent, 2 opaque
  int m_nInterval;  // tenths
  double m_dStart;  // fraction of the interval
  int m_nOffset;    // tenths
  WCHAR m_szText[kTextSize];
};

// Writes `text` at (x, y) turned to `angle` (radians) with a font made for that angle,
// when a square of the text's length round the point meets the visible bounds. `align`
// 32 asks for vertical centring; its other bits are text-alignment flags. `count` < 1
// writes the whole text. Always returns 1.
VANTREL1_EXPORT int RotTextOut2(HDC dc, HDC attribDC, int x, int y, double angle, const WCHAR* text,
                                int count, int adjust, const LOGFONTW* font, const double* cosA,
                                const double* sinA, RECT* clip, int align);
