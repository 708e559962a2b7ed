#pragma once
// Field-by-field comparison of two line types, for the tests of the stored forms.
//
// Compared: colour, pen width, the font flag and (when set) every font member, the
// description, the three counts and every field of each item in use. Not compared: the
// capacities (the text form keeps none: a line type read from it has exactly as much
// room as it has items), the pen and the text mode (never stored).
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>

#include "linestyle/LineType.h"
#include "platform/Utf.h"
#include "platform/WideFormat.h"

namespace vantrel1::testing {

class LineTypeDiff {
 public:
  template <typename T>
  void Field(const std::string& name, const T& a, const T& b) {
    if (a == b) return;
    m_out << "  " << name << ": " << +a << " vs " << +b << "\n";
  }
  template <std::size_t N>
  void Text(const std::string& name, const WCHAR (&a)[N], const WCHAR (&b)[N]) {
    const std::u16string_view ta(a, vantrel1::ArrayTextLength(a));
    const std::u16string_view tb(b, vantrel1::ArrayTextLength(b));
    if (ta != tb) m_out << "  " << name << ": \"" << ToUtf8(ta) << "\" vs \"" << ToUtf8(tb) << "\"\n";
  }
  std::string Result() const { return m_out.str(); }

 private:
  std::ostringstream m_out;
};

inline void CompareItem(LineTypeDiff& d, const std::string& at, const CLineItem& a, const CLineItem& b) {
  d.Field(at + ".width", a.m_nWidth, b.m_nWidth);
  d.Field(at + ".offset", a.m_nOffset, b.m_nOffset);
  d.Field(at + ".count", a.m_nCount, b.m_nCount);
  for (int k = 0; k < CLineItem::kMaxPairs; ++k) {
    d.Field(at + ".dash" + std::to_string(k), a.m_nDash[k], b.m_nDash[k]);
    d.Field(at + ".gap" + std::to_string(k), a.m_nGap[k], b.m_nGap[k]);
  }
}

inline void CompareItem(LineTypeDiff& d, const std::string& at, const CSymbolItem& a, const CSymbolItem& b) {
  d.Field(at + ".scale", a.m_dScale, b.m_dScale);
  d.Field(at + ".fill", a.m_nFill, b.m_nFill);
  d.Field(at + ".penWidth", a.m_nPenWidth, b.m_nPenWidth);
  d.Field(at + ".interval", a.m_nInterval, b.m_nInterval);
  d.Field(at + ".start", a.m_nStart, b.m_nStart);
  d.Field(at + ".mode", a.m_nMode, b.m_nMode);
  d.Field(at + ".shift", a.m_nShift, b.m_nShift);
  d.Field(at + ".points", a.m_nPoints, b.m_nPoints);
  for (int k = 0; k < a.UsedPoints() && k < b.UsedPoints(); ++k) {
    d.Field(at + ".x" + std::to_string(k), a.m_ptPoints[k].x, b.m_ptPoints[k].x);
    d.Field(at + ".y" + std::to_string(k), a.m_ptPoints[k].y, b.m_ptPoints[k].y);
    d.Field(at + ".penDown" + std::to_string(k), a.m_bPenDown[k], b.m_bPenDown[k]);
  }
}

inline void CompareItem(LineTypeDiff& d, const std::string& at, const CTextItem& a, const CTextItem& b) {
  d.Field(at + ".scale", a.m_dScale, b.m_dScale);
  d.Field(at + ".angle", a.m_nAngle, b.m_nAngle);
  d.Field(at + ".bkMode", a.m_nBkMode, b.m_nBkMode);
  d.Field(at + ".interval", a.m_nInterval, b.m_nInterval);
  d.Field(at + ".start", a.m_dStart, b.m_dStart);
  d.Field(at + ".offset", a.m_nOffset, b.m_nOffset);
  d.Text(at + ".text", a.m_szText, b.m_szText);
}

inline void CompareFont(LineTypeDiff& d, const LOGFONTW& a, const LOGFONTW& b) {
  d.Field("lfHeight", a.lfHeight, b.lfHeight);
  d.Field("lfWidth", a.lfWidth, b.lfWidth);
  d.Field("lfEscapement", a.lfEscapement, b.lfEscapement);
  d.Field("lfOrientation", a.lfOrientation, b.lfOrientation);
  d.Field("lfWeight", a.lfWeight, b.lfWeight);
  d.Field("lfItalic", a.lfItalic, b.lfItalic);
  d.Field("lfUnderline", a.lfUnderline, b.lfUnderline);
  d.Field("lfStrikeOut", a.lfStrikeOut, b.lfStrikeOut);
  d.Field("lfCharSet", a.lfCharSet, b.lfCharSet);
  d.Field("lfOutPrecision", a.lfOutPrecision, b.lfOutPrecision);
  d.Field("lfClipPrecision", a.lfClipPrecision, b.lfClipPrecision);
  d.Field("lfQuality", a.lfQuality, b.lfQuality);
  d.Field("lfPitchAndFamily", a.lfPitchAndFamily, b.lfPitchAndFamily);
  d.Text("lfFaceName", a.lfFaceName, b.lfFaceName);
}

// Usage: EXPECT_TRUE(SameLineType(a, b)); the failure lists every field that differs.
inline ::testing::AssertionResult SameLineType(const CLineType& a, const CLineType& b) {
  LineTypeDiff d;
  d.Field("colour", a.m_crColor, b.m_crColor);
  d.Field("penWidth", a.m_nPenWidth, b.m_nPenWidth);
  d.Text("desc", a.m_szDesc, b.m_szDesc);
  d.Field("haveFont", a.m_bHaveFont, b.m_bHaveFont);
  if (a.m_bHaveFont && b.m_bHaveFont) CompareFont(d, a.m_lf, b.m_lf);
  d.Field("nLine", a.m_nLine, b.m_nLine);
  d.Field("nSymbol", a.m_nSymbol, b.m_nSymbol);
  d.Field("nText", a.m_nText, b.m_nText);
  const std::string counts = d.Result();
  if (counts.empty()) {
    for (int i = 0; i < a.m_nLine; ++i) CompareItem(d, "line" + std::to_string(i), a.m_pLineItems[i], b.m_pLineItems[i]);
    for (int i = 0; i < a.m_nSymbol; ++i)
      CompareItem(d, "symbol" + std::to_string(i), a.m_pSymbolItems[i], b.m_pSymbolItems[i]);
    for (int i = 0; i < a.m_nText; ++i) CompareItem(d, "text" + std::to_string(i), a.m_pTextItems[i], b.m_pTextItems[i]);
  }
  const std::string diff = d.Result();
  if (diff.empty()) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "line types \"" << ToUtf8(a.GetDesc()) << "\" and \""
                                       << ToUtf8(b.GetDesc()) << "\" differ:\n"
                                       << diff;
}

}  // namespace vantrel1::testing
