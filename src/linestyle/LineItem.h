#pragma once
// CLineItem: one stroke of a line type, continuous or dashed, on the path or at a fixed
// perpendicular offset from it, with its own pen or with the line type's pen.
//
// Text record: 25 comma-separated integers, width, offset, three count fields (the count
// is the largest of them; the writer puts count,0,0), ten dashes, ten gaps. Archive
// record: width, offset, count, then the ten dash/gap pairs interleaved (92 bytes).
// Lengths are tenths of a drawing unit (linestyle/Tenths.h).
#include <cstddef>

#include "platform/Object.h"
#include "platform/Types.h"

class VANTREL1_EXPORT CLineItem : public CObject {
  DECLARE_SERIAL(CLineItem)

 public:
  static constexpr int kMaxPairs = 10;

  CLineItem();
  // Always copies exactly ten entries of each array, whatever `count` says; the
  // old-style fixed patterns are built this way.
  CLineItem(int width, int offset, const int* dashes, const int* gaps, int count);
  CLineItem(const CLineItem& other);
  CLineItem& operator=(const CLineItem& other);
  ~CLineItem() override;

  void Init();
  // 1 when the pattern in use has no visible dash; a continuous item is never empty.
  int IsEmpty() const;
  // 1 on success; 0 for a missing number or a count above ten. Fields read before a
  // failure keep their new values.
  int FromAscii(const WCHAR* text);
  // `buffer`, or null when the record and its terminator do not fit in `size` units.
  WCHAR* ToAscii(WCHAR* buffer, std::size_t size);
  // Loading refuses a count above ten with CArchiveException::badIndex.
  void Serialize(CArchive& ar) override;

  // Drawing along a polyline in logical units (y upwards); clip null = unbounded.
  void Draw(HDC dc, COLORREF colour, const double* x, const double* y, long n, RECT* clip);
  // The path moved sideways by `offset` tenths, with mitred corners. 0 when the offset is
  // 0 (outputs untouched), otherwise n - 1 when n > 2, else 1.
  static int SideDoubleLine(const double* x, const double* y, double* outX, double* outY, long n,
                            int offset);
  // Both sides at once, `halfWidth` tenths either side; same result rule.
  static int CenteredDoubleLine(const double* x, const double* y, double* outX1, double* outY1,
                                double* outX2, double* outY2, long n, int halfWidth);

  // Number of pairs that can be read without leaving the arrays: the count, kept within
  // 0..10 whatever was stored in it.
  int UsedPairs() const;

  int m_nWidth;   // own pen width; negative: draw with the pen already selected
  int m_nOffset;  // tenths; 0 = on the path
  int m_nDash[kMaxPairs];
  int m_nGap[kMaxPairs];
  int m_nCount;   // pairs in use; 0 = continuous

 private:
  void NormalisePattern();
};
