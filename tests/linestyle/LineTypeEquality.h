#pragma once
// Comparison of two line types, for the tests of the stored forms.
//
// Compared: colour, pen width, description, the three counts, the font (every member, in
// its settings-file text) when both have one, and each item in use by its text record,
// which holds every field of the item. Not compared: the capacities (the text form keeps
// none: a line type read from it has exactly as much room as it has items), the pen and
// the text mode (never stored).
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>

#include "linestyle/LineType.h"
#include "platform/Utf.h"
#include "platform/WideFormat.h"
#include "suite/VantrelFont.h"

namespace vantrel1::testing {

template <typename Item>
std::string ItemRecord(const Item& item) {
  Item copy(item);
  WCHAR buffer[512];
  const WCHAR* record = copy.ToAscii(buffer, 512);
  return record != nullptr ? ToUtf8(record) : "<too long>";
}

inline std::string FontText(const LOGFONTW& font) {
  WCHAR text[FNT_TEXT_SIZE];
  return FntToString(&font, text) != nullptr ? ToUtf8(text) : "<no text>";
}

template <std::size_t N>
std::string FieldText(const WCHAR (&field)[N]) {
  return ToUtf8(std::u16string_view(field, ArrayTextLength(field)));
}

template <typename T>
void Compare(std::ostringstream& out, const std::string& name, const T& a, const T& b) {
  if (!(a == b)) out << "  " << name << ": " << a << " vs " << b << "\n";
}

template <typename Item>
void CompareItems(std::ostringstream& out, const char* kind, const Item* a, const Item* b, int count) {
  for (int i = 0; i < count; ++i) Compare(out, kind + std::to_string(i), ItemRecord(a[i]), ItemRecord(b[i]));
}

// Usage: EXPECT_TRUE(SameLineType(a, b)); the failure lists every field that differs.
inline ::testing::AssertionResult SameLineType(const CLineType& a, const CLineType& b) {
  std::ostringstream out;
  Compare(out, "colour", a.m_crColor, b.m_crColor);
  Compare(out, "penWidth", a.m_nPenWidth, b.m_nPenWidth);
  Compare(out, "desc", FieldText(a.m_szDesc), FieldText(b.m_szDesc));
  Compare(out, "haveFont", a.m_bHaveFont, b.m_bHaveFont);
  if (a.m_bHaveFont && b.m_bHaveFont) Compare(out, "font", FontText(a.m_lf), FontText(b.m_lf));
  Compare(out, "nLine", a.m_nLine, b.m_nLine);
  Compare(out, "nSymbol", a.m_nSymbol, b.m_nSymbol);
  Compare(out, "nText", a.m_nText, b.m_nText);
  if (out.str().empty()) {
    CompareItems(out, "line", a.m_pLineItems, b.m_pLineItems, a.m_nLine);
    CompareItems(out, "symbol", a.m_pSymbolItems, b.m_pSymbolItems, a.m_nSymbol);
    CompareItems(out, "text", a.m_pTextItems, b.m_pTextItems, a.m_nText);
  }
  if (out.str().empty()) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "line types \"" << FieldText(a.m_szDesc) << "\" and \""
                                       << FieldText(b.m_szDesc) << "\" differ:\n"
                                       << out.str();
}

}  // namespace vantrel1::testing
