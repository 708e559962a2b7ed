#pragma once
// CSymbolItem: a small figure of up to 20 integer points (tenths of a drawing unit),
// joined by pen-down strokes and optionally filled, that a line type repeats along its
// line or that a point symbol shows at its point.
//
// Text record, three forms told apart by the first character:
//   plain  scale, fill, pen width, interval, start, nPoints, nPoints × (x, y, penDown)
//   "A"    A scale, fill, pen width, interval, start, shift, nPoints, triples
//   "B"    B scale, fill, pen width, interval, start, shift, mode, nPoints, triples
// The start is a fraction of the interval in the record and a percentage in the item.
// Archive record: scale (double), fill, pen width, interval, start, nPoints, shift, mode
// (int32 each), then per point x, y (int32 each) and the pen-down byte.
#include <cstddef>
#include <vector>

#include "platform/Object.h"
#include "platform/StdStr.h"
#include "platform/Types.h"
#include "suite/PolylineVector.h"

class CCoordBaseX;

class VANTREL1_EXPORT CSymbolItem : public CObject {
  DECLARE_SERIAL(CSymbolItem)

 public:
  static constexpr int kMaxPoints = 20;

  CSymbolItem();
  // A scale that is not positive becomes 1.0; copies nPoints points and flags (none when
  // nPoints ≤ 0, at most 20).
  CSymbolItem(double scale, int fill, int penWidth, int interval, int start, const SIZE* points,
              const char* penDown, int nPoints, int shift, int mode);
  CSymbolItem(const CSymbolItem& other);
  CSymbolItem& operator=(const CSymbolItem& other);
  ~CSymbolItem() override;

  void Init();
  // 1 on success; 0 for a missing field or more than 20 points. Fields read before a
  // failure keep their new values.
  int FromAscii(const WCHAR* text);
  // Writes the "B" form; null when it does not fit in `size` units with its terminator.
  WCHAR* ToAscii(WCHAR* buffer, std::size_t size);
  // Loading refuses more than 20 points with CArchiveException::badIndex.
  void Serialize(CArchive& ar) override;

  // Remove one point, keeping a break in the figure; the new count.
  int DeletePoint(int index);
  // Remove trailing moves and moves followed by another move; the new count.
  int CleanPoints();
  // Appends the polyline as a new stroke run (first point pen-up), converted through
  // `coords`; 1 on success. When the figure would reach 20 points nothing changes, the
  // result is 0 and, if *report is non-zero, error 412 is shown prefixed with `name`.
  int SetPolyline(PolylineVector* polyline, int* report, CStdStrW name, CCoordBaseX* coords);
  // The figure's stroke runs as polylines, unrotated, in hundredths; always 1.
  int GetPolylines(std::vector<PolylineVector>* out);

  // Line form: repeated along the polyline (mode 0) or at chosen vertices (modes 1–7).
  void Draw(HDC dc, COLORREF colour, const double* x, const double* y, long n, RECT* clip,
            double scale, double angle);
  // Point form: the line form with the single point (x, y).
  void Draw(HDC dc, COLORREF colour, double x, double y, RECT* clip, double scale, double angle);

  // Number of points that can be read without leaving the arrays: the count, kept within
  // 0..20 whatever was stored in it.
  int UsedPoints() const;

  double m_dScale;
  int m_nFill;
  int m_nPenWidth;
  int m_nInterval;  // tenths
  int m_nStart;     // percent of the interval
  int m_nMode;      // 0: by interval; otherwise bits 1 first point, 2 last point, 4 interior
  POINT m_ptPoints[kMaxPoints];  // tenths, before scaling
  signed char m_bPenDown[kMaxPoints];  // 1 = stroke to this point; anything else = move
  int m_nPoints;
  int m_nShift;  // tenths, along the local −y direction

 protected:
  void DrawByInterval(HDC dc, COLORREF colour, const double* x, const double* y, long n, RECT* clip,
                      double angle);
  void DrawByPoints(HDC dc, COLORREF colour, const double* x, const double* y, long n, RECT* clip,
                    double angle);
  // Draws the figure once at (px, py), turned to a + π/2.
  void DrawSymbol(HDC dc, double a, double px, double py, RECT* clip);

 private:
  void RemovePoint(int index);
};
