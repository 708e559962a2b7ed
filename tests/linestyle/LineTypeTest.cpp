#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "linestyle/LineType.h"
#include "platform/Archive.h"
#include "platform/Gdi.h"
#include "platform/RecordingDevice.h"

namespace {

CLineItem Dashed(int width, int dash, int gap) {
  const int dashes[10] = {dash};
  const int gaps[10] = {gap};
  return CLineItem(width, 0, dashes, gaps, 1);
}

std::vector<int> LineWidths(CLineType& type) {
  std::vector<int> widths;
  for (int i = 0; i < type.GetNLine(); ++i) widths.push_back(type.GetLineItem(i)->m_nWidth);
  return widths;
}

LOGFONTW TestFont() {
  LOGFONTW font{};
  font.lfHeight = -12;
  font.lfWidth = 7;
  font.lfEscapement = 900;
  font.lfWeight = 700;
  font.lfItalic = 1;
  font.lfUnderline = 1;
  font.lfCharSet = 238;
  font.lfOutPrecision = 3;
  font.lfClipPrecision = 2;
  font.lfQuality = 5;
  font.lfPitchAndFamily = 0x22;
  std::u16string(u"Arial").copy(font.lfFaceName, 5);
  return font;
}

std::vector<BYTE> Stored(CLineType& type) {
  CArchive out(CArchive::store);
  type.Serialize(out);
  return out.GetBytes();
}

int LoadFailure(const std::vector<BYTE>& bytes) {
  CArchive in(bytes);
  CLineType type;
  try {
    type.Serialize(in);
  } catch (const CArchiveException& e) {
    return e.m_cause;
  }
  return CArchiveException::none;
}

void PutLe32(std::vector<BYTE>& bytes, std::size_t at, std::int32_t value) {
  for (int i = 0; i < 4; ++i) bytes[at + i] = static_cast<BYTE>(static_cast<std::uint32_t>(value) >> (8 * i));
}

const double kX[] = {0.0, 100.0, 100.0};
const double kY[] = {0.0, 0.0, 50.0};

}  // namespace

TEST(LineType, StartsAsAPlainBlackLineOfWidthOne) {
  CLineType type;
  EXPECT_EQ(type.GetPenWidth(), 1);
  EXPECT_EQ(type.GetColor(), 0u);
  EXPECT_EQ(type.GetPen(), nullptr);
  EXPECT_EQ(type.GetNLine() + type.GetNSymbol() + type.GetNText(), 0);
  EXPECT_EQ(type.GetFont(), nullptr);
  EXPECT_EQ(type.GetDesc()[0], u'\0');
  EXPECT_EQ(type.IsComplexLine(), 0);
  EXPECT_EQ(type.m_nTextMode, 0);
  EXPECT_EQ(type.CheckValid(), 1);
  EXPECT_EQ(type.GetLineItem(0), nullptr);

  HPEN pen = CreatePen(PS_SOLID, 3, RGB(1, 2, 3));
  CLineType withPen(pen);
  EXPECT_EQ(withPen.GetPen(), pen);
  withPen.Delete();
  EXPECT_EQ(withPen.GetPen(), nullptr);
  EXPECT_TRUE(DeleteObject(pen));  // the line type never deleted it
}

TEST(LineType, AllocateOnlyReservesCapacity) {
  CLineType type(2, 0, 3);
  EXPECT_EQ(type.m_nMaxLine, 2);
  EXPECT_EQ(type.m_nMaxSymbol, 0);
  EXPECT_EQ(type.m_nMaxText, 3);
  EXPECT_EQ(type.m_pSymbolItems, nullptr);
  EXPECT_EQ(type.GetNLine(), 0);
  EXPECT_EQ(type.GetNText(), 0);
  EXPECT_EQ(type.IsComplexLine(), 1);

  const CLineItem* lines = type.m_pLineItems;
  EXPECT_EQ(type.Allocate(5, 5, 5), 0);
  EXPECT_EQ(type.m_pLineItems, lines);
  EXPECT_EQ(type.m_nMaxLine, 2);
  EXPECT_EQ(type.m_nMaxSymbol, 0);

  CLineType lineOnly;
  ASSERT_EQ(lineOnly.Allocate(1, 0, 0), 1);
  EXPECT_EQ(lineOnly.IsComplexLine(), 1);
  EXPECT_EQ(lineOnly.GetNLine(), 0);

  CLineType nothing;
  EXPECT_EQ(nothing.Allocate(0, -1, 0), 1);
  EXPECT_EQ(nothing.IsComplexLine(), 0);
}

TEST(LineType, FailedAllocationOfLaterArraysResetsEverything) {
  CLineType type;
  type.m_nPenWidth = 4;
  type.SetDesc(u"ograda");
  EXPECT_EQ(type.Allocate(2, CLineType::kMaxItems + 1, 0), 0);
  EXPECT_EQ(type.IsComplexLine(), 0);
  EXPECT_EQ(type.m_nMaxLine, 0);
  EXPECT_EQ(type.GetPenWidth(), 1);
  EXPECT_EQ(type.GetDesc()[0], u'\0');

  type.m_nPenWidth = 4;
  EXPECT_EQ(type.Allocate(CLineType::kMaxItems + 1, 0, 0), 0);  // nothing made yet: nothing reset
  EXPECT_EQ(type.GetPenWidth(), 4);
  EXPECT_EQ(type.Allocate(CLineType::kMaxItems, 0, 1), 1);
}

TEST(LineType, AddingGrowsOneElementAtATime) {
  CLineType type(1, 0, 0);
  for (int width : {1, 2, 3}) {
    const CLineItem item = Dashed(width, 300, 100);
    ASSERT_EQ(type.AddLineItem(&item), 1);
    EXPECT_EQ(type.m_nMaxLine, width);
  }
  EXPECT_EQ(type.GetNLine(), 3);
  EXPECT_EQ(LineWidths(type), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(type.AddLineItem(nullptr), 0);
  EXPECT_EQ(type.GetNLine(), 3);

  CLineType fresh;
  const CSymbolItem symbol;
  const CTextItem text(1.0, 0, 1, 1000, 0.5, 0, u"KM");
  ASSERT_EQ(fresh.AddSymbolItem(&symbol), 1);
  ASSERT_EQ(fresh.AddTextItem(&text), 1);
  ASSERT_EQ(fresh.AddTextItem(&text), 1);
  EXPECT_EQ(fresh.m_nMaxSymbol, 1);
  EXPECT_EQ(fresh.m_nMaxText, 2);
  EXPECT_EQ(std::u16string(fresh.GetTextItem(1)->m_szText), u"KM");
  EXPECT_EQ(fresh.GetTextItem(2), nullptr);
  EXPECT_EQ(fresh.GetTextItem(-1), nullptr);
  EXPECT_EQ(fresh.AddSymbolItem(nullptr), 0);
  EXPECT_EQ(fresh.AddTextItem(nullptr), 0);

  CLineType full(0, 0, CLineType::kMaxItems);
  for (int i = 0; i < CLineType::kMaxItems; ++i) ASSERT_EQ(full.AddTextItem(&text), 1);
  EXPECT_EQ(full.AddTextItem(&text), 0);
  EXPECT_EQ(full.GetNText(), CLineType::kMaxItems);
}

TEST(LineType, DeletingBeyondTheEndRemovesTheLastItem) {
  CLineType type;
  EXPECT_EQ(type.DeleteLineItem(0), -1);
  for (int width : {1, 2}) {
    const CLineItem item = Dashed(width, 300, 100);
    type.AddLineItem(&item);
  }
  EXPECT_EQ(type.DeleteLineItem(-1), -2);
  EXPECT_EQ(type.DeleteLineItem(7), 1);
  EXPECT_EQ(LineWidths(type), (std::vector<int>{1}));
  // The freed slot is reset, capacity stays.
  EXPECT_EQ(type.m_pLineItems[1].m_nWidth, 0);
  EXPECT_EQ(type.m_pLineItems[1].m_nDash[0], 0);
  EXPECT_EQ(type.m_nMaxLine, 2);
  EXPECT_EQ(type.DeleteLineItem(0), 0);
  EXPECT_EQ(type.DeleteLineItem(0), -1);

  for (const char16_t* text : {u"a", u"b", u"c"}) {
    const CTextItem item(1.0, 0, 1, 1000, 0.5, 0, text);
    type.AddTextItem(&item);
  }
  EXPECT_EQ(type.DeleteTextItem(0), 2);
  EXPECT_EQ(std::u16string(type.GetTextItem(0)->m_szText), u"b");
  EXPECT_EQ(std::u16string(type.GetTextItem(1)->m_szText), u"c");
  EXPECT_EQ(type.m_pTextItems[2].m_szText[0], u'\0');  // Init clears the text

  CSymbolItem symbol;
  symbol.m_nInterval = 400;
  type.AddSymbolItem(&symbol);
  EXPECT_EQ(type.DeleteSymbolItem(3), 0);
  EXPECT_EQ(type.m_pSymbolItems[0].m_nInterval, 1000);
  EXPECT_EQ(type.DeleteSymbolItem(0), -1);
}

TEST(LineType, DescriptionAndFont) {
  CLineType type;
  EXPECT_EQ(type.SetDesc(nullptr), 0);
  EXPECT_EQ(type.SetDesc(u"granica katastarske opštine i parcele"), 1);
  EXPECT_EQ(std::u16string(type.GetDesc()), u"granica katastarske opštine i p");
  const LOGFONTW font = TestFont();
  type.SetFont(&font);
  ASSERT_EQ(type.GetFont(), &type.m_lf);
  EXPECT_EQ(type.m_bHaveFont, 1);
  EXPECT_EQ(type.GetFont()->lfHeight, -12);
}

TEST(LineType, AssignmentCopiesItemsButNotColourPenOrTextMode) {
  HPEN pen = CreatePen(PS_SOLID, 3, RGB(1, 2, 3));
  CLineType src(pen);
  src.m_crColor = RGB(255, 0, 0);
  src.m_nPenWidth = 3;
  src.m_nTextMode = 1;
  src.SetDesc(u"nasip");
  const LOGFONTW font = TestFont();
  src.SetFont(&font);
  src.Allocate(4, 1, 0);
  for (int width : {5, 6}) {
    const CLineItem item = Dashed(width, 300, 100);
    src.AddLineItem(&item);
  }
  CSymbolItem symbol;
  ASSERT_EQ(symbol.FromAscii(u"2,1,1,1000,0,3,50,86,1,100,0,1,0,0,1"), 1);
  src.AddSymbolItem(&symbol);

  CLineType copy(0, 0, 2);
  copy.m_crColor = RGB(0, 0, 255);
  copy.m_nTextMode = 2;
  copy = src;
  EXPECT_EQ(copy.GetPen(), nullptr);
  EXPECT_EQ(copy.GetColor(), 0u);
  EXPECT_EQ(copy.m_nTextMode, 0);
  EXPECT_EQ(copy.GetPenWidth(), 3);
  EXPECT_EQ(std::u16string(copy.GetDesc()), u"nasip");
  EXPECT_EQ(copy.m_nMaxLine, 4);
  EXPECT_EQ(copy.m_nMaxSymbol, 1);
  EXPECT_EQ(copy.m_nMaxText, 0);
  EXPECT_EQ(copy.m_pTextItems, nullptr);
  EXPECT_EQ(LineWidths(copy), (std::vector<int>{5, 6}));
  EXPECT_NE(copy.m_pLineItems, src.m_pLineItems);
  ASSERT_EQ(copy.GetNSymbol(), 1);
  EXPECT_EQ(copy.GetSymbolItem(0)->m_ptPoints[1].x, 100);
  ASSERT_NE(copy.GetFont(), nullptr);
  EXPECT_EQ(std::u16string(copy.GetFont()->lfFaceName), u"Arial");

  const CLineType constructed(src);
  EXPECT_EQ(constructed.m_nMaxLine, 4);
  EXPECT_EQ(constructed.GetPen(), nullptr);

  // A plain line type passes on its width and description, not its font.
  CLineType plain;
  plain.m_nPenWidth = 2;
  plain.SetDesc(u"0123456789012345678901234567890");
  plain.SetFont(&font);
  copy = plain;
  EXPECT_EQ(copy.GetPenWidth(), 2);
  EXPECT_EQ(copy.GetFont(), nullptr);
  EXPECT_EQ(copy.IsComplexLine(), 0);
  EXPECT_EQ(std::u16string(copy.GetDesc()), u"0123456789012345678901234567890");

  const CLineType& same = copy;
  copy = same;
  EXPECT_EQ(copy.GetPenWidth(), 2);
  src.Delete();
  EXPECT_TRUE(DeleteObject(pen));
}

TEST(LineType, ArchiveRecordHeaderAndFont) {
  CLineType type;
  type.m_crColor = RGB(0x12, 0x34, 0x56);
  type.m_nPenWidth = 2;
  type.SetDesc(u"ab");
  const LOGFONTW font = TestFont();
  type.SetFont(&font);
  const std::vector<BYTE> expected = {
      0x12, 0x34, 0x56, 0x00, 0x02, 0x00, 0x00, 0x00,  // colour, pen width
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // counts
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // capacities
      0x01, 0x00, 0x00, 0x00,                                                  // has a font
      0xFF, 0xFE, 0xFF, 0x02, 0x61, 0x00, 0x62, 0x00,                          // "ab"
      0xEE, 0x02, 0x84, 0x03, 0x00, 0x00,  // character set, clip precision, escapement
      0xFF, 0xFE, 0xFF, 0x05, 0x41, 0x00, 0x72, 0x00, 0x69, 0x00, 0x61, 0x00, 0x6C, 0x00,  // "Arial"
      0xF4, 0xFF, 0xFF, 0xFF, 0x01, 0x00, 0x00, 0x00, 0x00,  // height, italic, orientation
      0x03, 0x22, 0x05, 0x00, 0x01,  // out precision, pitch and family, quality, strike-out, underline
      0xBC, 0x02, 0x00, 0x00, 0x07, 0x00, 0x00, 0x00,  // weight, width
      0x01, 0x00, 0x00, 0x00};                         // no pen
  EXPECT_EQ(Stored(type), expected);

  CArchive in(expected);
  CLineType back;
  back.Serialize(in);
  EXPECT_TRUE(in.IsBufferEmpty());
  EXPECT_EQ(back.GetColor(), RGB(0x12, 0x34, 0x56));
  ASSERT_NE(back.GetFont(), nullptr);
  EXPECT_EQ(std::u16string(back.GetFont()->lfFaceName), u"Arial");
  EXPECT_EQ(back.GetFont()->lfPitchAndFamily, 0x22);
  EXPECT_EQ(back.GetFont()->lfWidth, 7);
  EXPECT_EQ(Stored(back), expected);
}

TEST(LineType, ArchiveRoundTripWithItems) {
  HPEN pen = CreatePen(PS_SOLID, 1, 0);
  CLineType type(pen);
  type.Allocate(2, 0, 3);
  const CLineItem line = Dashed(-1, 300, 100);
  type.AddLineItem(&line);
  const CTextItem text(1.0, 450, 2, 1000, 0.5, -30, u"KM");
  type.AddTextItem(&text);
  type.SetDesc(u"opis");

  std::vector<BYTE> bytes = Stored(type);
  ASSERT_EQ(bytes.size(), 36u + 12u + 4u + 92u + 40u);
  EXPECT_EQ(bytes[48], 0x00);  // it had a pen
  CArchive in(bytes);
  CLineType back(pen);
  back.Serialize(in);
  EXPECT_EQ(back.GetPen(), nullptr);  // a loaded line type never has a pen
  EXPECT_EQ(back.m_nMaxLine, 2);
  EXPECT_EQ(back.m_nMaxText, 3);
  EXPECT_EQ(back.m_pSymbolItems, nullptr);
  EXPECT_EQ(back.GetNLine(), 1);
  EXPECT_EQ(back.GetNText(), 1);
  EXPECT_EQ(back.GetLineItem(0)->m_nDash[0], 300);
  EXPECT_EQ(back.GetTextItem(0)->m_nAngle, 450);
  EXPECT_EQ(std::u16string(back.GetDesc()), u"opis");
  bytes[48] = 0x01;
  EXPECT_EQ(Stored(back), bytes);
  DeleteObject(pen);
}

TEST(LineType, ArchiveLoadingRefusesCountsThatDoNotFit) {
  CLineType type(1, 1, 1);
  const CLineItem line;
  type.AddLineItem(&line);
  const std::vector<BYTE> good = Stored(type);
  EXPECT_EQ(LoadFailure(good), CArchiveException::none);

  std::vector<BYTE> bytes = good;
  PutLe32(bytes, 8, 2);  // two line items in an array of one
  EXPECT_EQ(LoadFailure(bytes), CArchiveException::badIndex);
  bytes = good;
  PutLe32(bytes, 12, -1);
  EXPECT_EQ(LoadFailure(bytes), CArchiveException::badIndex);
  bytes = good;
  PutLe32(bytes, 24, 0x7FFFFFFF);  // symbol capacity
  EXPECT_EQ(LoadFailure(bytes), CArchiveException::badIndex);
  bytes = good;
  bytes.pop_back();
  EXPECT_EQ(LoadFailure(bytes), CArchiveException::endOfFile);

  // A negative capacity with no items is an empty array.
  bytes = good;
  PutLe32(bytes, 28, -5);
  CArchive in(bytes);
  CLineType back;
  back.Serialize(in);
  EXPECT_EQ(back.m_nMaxText, 0);
  EXPECT_EQ(back.m_pTextItems, nullptr);
}

TEST(LineType, ArchiveDescriptionIsCutToThirtyOneUnits) {
  CArchive out(CArchive::store);
  for (int i = 0; i < 9; ++i) out << 0;
  out << std::u16string_view(u"dugačak opis koji ne staje u polje opisa");
  out << 1;
  CArchive in(out.GetBytes());
  CLineType type;
  type.Serialize(in);
  EXPECT_EQ(std::u16string(type.GetDesc()), u"dugačak opis koji ne staje u po");
  EXPECT_EQ(type.GetPenWidth(), 0);
}

TEST(LineType, PlainLineIsOnePolylineOrFilledPolygonInItsColour) {
  CRecordingDevice dc;
  HPEN pen = CreatePen(PS_SOLID, 4, RGB(0, 0, 255));
  HGDIOBJ original = GetCurrentObject(&dc, OBJ_PEN);
  CLineType type(pen);
  type.m_crColor = RGB(0, 128, 0);

  type.Draw(&dc, &dc, kX, kY, 3, nullptr, 0);
  ASSERT_EQ(dc.Primitives().size(), 1u) << dc.ToString();
  const RecordedPrimitive& line = dc.Primitives()[0];
  EXPECT_EQ(line.kind, PrimitiveKind::Polyline);
  EXPECT_EQ(line.x, (std::vector<double>{0.0, 100.0, 100.0}));
  EXPECT_EQ(line.y, (std::vector<double>{0.0, 0.0, 50.0}));
  EXPECT_EQ(line.pen.lopnWidth.x, 4);
  EXPECT_EQ(line.pen.lopnColor, RGB(0, 0, 255));
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_PEN), original);

  dc.Clear();
  type.Draw(&dc, &dc, kX, kY, 3, nullptr, 1);
  ASSERT_EQ(dc.Primitives().size(), 1u) << dc.ToString();
  const RecordedPrimitive& polygon = dc.Primitives()[0];
  EXPECT_EQ(polygon.kind, PrimitiveKind::Polygon);
  EXPECT_TRUE(polygon.Filled());
  EXPECT_EQ(polygon.brush.lbColor, RGB(0, 128, 0));
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_PEN), original);

  // Capacity alone does not make items to draw: still the plain line, with the pen in the
  // device context when the line type has none.
  CLineType reserved(3, 3, 3);
  dc.Clear();
  RECT clip{50, 100, 200, -100};
  reserved.Draw(&dc, &dc, kX, kY, 3, &clip, 0);
  ASSERT_EQ(dc.Primitives().size(), 1u) << dc.ToString();
  EXPECT_EQ(dc.Primitives()[0].x, (std::vector<double>{50.0, 100.0, 100.0}));
  EXPECT_EQ(dc.Primitives()[0].pen.lopnWidth.x, 1);
  DeleteObject(pen);
}

TEST(LineType, DrawsLineThenSymbolThenTextItems) {
  CLineType type;
  type.m_crColor = RGB(200, 0, 0);
  CTextItem text(1.0, 0, 1, 10000, 0.0, 0, u"A");
  type.AddTextItem(&text);
  CSymbolItem symbol;
  ASSERT_EQ(symbol.FromAscii(u"B1,0,2,1000,0,0,1,1,0,100,1"), 1);
  type.AddSymbolItem(&symbol);
  CLineItem line;  // continuous
  line.m_nWidth = 3;
  type.AddLineItem(&line);
  const LOGFONTW font = TestFont();
  type.SetFont(&font);

  CRecordingDevice dc;
  SetTextColor(&dc, RGB(1, 1, 1));
  type.Draw(&dc, &dc, kX, kY, 3, nullptr, 0);
  ASSERT_EQ(dc.Primitives().size(), 3u) << dc.ToString();
  EXPECT_EQ(dc.Primitives()[0].kind, PrimitiveKind::Polyline);
  EXPECT_EQ(dc.Primitives()[0].pen.lopnWidth.x, 3);
  EXPECT_EQ(dc.Primitives()[0].pen.lopnColor, RGB(200, 0, 0));
  EXPECT_EQ(dc.Primitives()[1].kind, PrimitiveKind::Polyline);
  EXPECT_EQ(dc.Primitives()[1].pen.lopnWidth.x, 2);
  EXPECT_EQ(dc.Primitives()[2].kind, PrimitiveKind::Text);
  EXPECT_EQ(dc.Primitives()[2].text, u"A");
  EXPECT_EQ(dc.Primitives()[2].textColor, RGB(200, 0, 0));
  EXPECT_EQ(std::u16string(dc.Primitives()[2].font.lfFaceName), u"Arial");
  EXPECT_EQ(GetTextColor(&dc), RGB(1, 1, 1));

  dc.Clear();
  type.m_nTextMode = 1;
  type.Draw(&dc, &dc, kX, kY, 3, nullptr, 0);
  ASSERT_EQ(dc.Primitives().size(), 3u) << dc.ToString();
  EXPECT_EQ(dc.Primitives()[2].textColor, RGB(255, 255, 255));
  EXPECT_EQ(GetTextColor(&dc), RGB(1, 1, 1));

  dc.Clear();
  type.m_nTextMode = 2;
  type.Draw(&dc, &dc, kX, kY, 3, nullptr, 1);  // fill concerns only a plain line
  ASSERT_EQ(dc.Primitives().size(), 2u) << dc.ToString();
  EXPECT_EQ(dc.CountOf(PrimitiveKind::Text), 0u);
  EXPECT_EQ(dc.CountOf(PrimitiveKind::Polygon), 0u);
}
