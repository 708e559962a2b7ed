#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "linestyle/LineType.h"
#include "platform/Archive.h"
#include "platform/Gdi.h"
#include "platform/RecordingDevice.h"
#include "RecordTestSupport.h"

namespace {

using vantrel1::test::Le32;
using vantrel1::test::LoadFailure;

CLineItem Dashed(int width) {
  const int dashes[10] = {300};
  const int gaps[10] = {100};
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

void PutLe32(std::vector<BYTE>& bytes, std::size_t at, std::int32_t value) {
  for (int i = 0; i < 4; ++i) bytes[at + i] = static_cast<BYTE>(static_cast<std::uint32_t>(value) >> (8 * i));
}

const double kX[] = {0.0, 100.0, 100.0};
const double kY[] = {0.0, 0.0, 50.0};

}  // namespace

TEST(LineType, NeverDeletesThePenItWasGiven) {
  HPEN pen = CreatePen(PS_SOLID, 3, RGB(1, 2, 3));
  CLineType withPen(pen);
  withPen.Delete();
  EXPECT_EQ(withPen.GetPen(), nullptr);
  EXPECT_TRUE(DeleteObject(pen));
}

TEST(LineType, AllocateReservesCapacityOnceAndAnyArrayMakesItComplex) {
  CLineType type(2, 0, 3);
  EXPECT_EQ(type.m_pSymbolItems, nullptr);
  EXPECT_EQ(type.GetNLine(), 0);
  EXPECT_EQ(type.IsComplexLine(), 1);
  const CLineItem* lines = type.m_pLineItems;
  EXPECT_EQ(type.Allocate(5, 5, 5), 0);
  EXPECT_EQ(type.m_pLineItems, lines);
  EXPECT_EQ(type.m_nMaxLine, 2);
  EXPECT_EQ(type.m_nMaxSymbol, 0);

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

TEST(LineType, AddingGrowsOneElementAtATimeUpToTheLimit) {
  CLineType type(1, 0, 0);
  for (int width : {1, 2, 3}) {
    const CLineItem item = Dashed(width);
    ASSERT_EQ(type.AddLineItem(&item), 1);
    EXPECT_EQ(type.m_nMaxLine, width);
  }
  EXPECT_EQ(LineWidths(type), (std::vector<int>{1, 2, 3}));
  // An item of the full array itself, copied before the array it lives in is freed.
  ASSERT_EQ(type.AddLineItem(type.GetLineItem(1)), 1);
  EXPECT_EQ(LineWidths(type), (std::vector<int>{1, 2, 3, 2}));
  EXPECT_EQ(type.AddLineItem(nullptr), 0);
  EXPECT_EQ(type.AddSymbolItem(nullptr), 0);
  EXPECT_EQ(type.GetNLine(), 4);

  const CTextItem text(1.0, 0, 1, 1000, 0.5, 0, u"KM");
  CLineType full(0, 0, CLineType::kMaxItems);
  for (int i = 0; i < CLineType::kMaxItems; ++i) ASSERT_EQ(full.AddTextItem(&text), 1);
  EXPECT_EQ(full.AddTextItem(&text), 0);
  EXPECT_EQ(full.GetNText(), CLineType::kMaxItems);
  EXPECT_EQ(full.GetTextItem(CLineType::kMaxItems), nullptr);
  EXPECT_EQ(full.GetTextItem(-1), nullptr);
}

TEST(LineType, DeletingBeyondTheEndRemovesTheLastItem) {
  CLineType type;
  EXPECT_EQ(type.DeleteLineItem(0), -1);
  for (int width : {1, 2}) {
    const CLineItem item = Dashed(width);
    type.AddLineItem(&item);
  }
  EXPECT_EQ(type.DeleteLineItem(-1), -2);
  EXPECT_EQ(type.DeleteLineItem(7), 1);
  EXPECT_EQ(LineWidths(type), (std::vector<int>{1}));
  // The freed slot is reset, capacity stays.
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
}

TEST(LineType, DescriptionIsCutToThirtyOneUnits) {
  CLineType type;
  EXPECT_EQ(type.SetDesc(nullptr), 0);
  EXPECT_EQ(type.SetDesc(u"granica katastarske opštine i parcele"), 1);
  EXPECT_EQ(std::u16string(type.GetDesc()), u"granica katastarske opštine i p");
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
    const CLineItem item = Dashed(width);
    src.AddLineItem(&item);
  }
  const CSymbolItem symbol(2.0, 1, 1, 1000, 0, nullptr, nullptr, 0, 0, 0);
  src.AddSymbolItem(&symbol);

  CLineType copy(0, 0, 2);
  copy.m_crColor = RGB(0, 0, 255);
  copy.m_nTextMode = 2;
  copy = src;
  EXPECT_EQ(copy.GetPen(), nullptr);
  EXPECT_EQ(copy.GetColor(), 0u);
  EXPECT_EQ(copy.m_nTextMode, 0);
  EXPECT_NE(copy.m_pLineItems, src.m_pLineItems);
  // Everything else as stored: width, counts, capacities, font, description and items.
  src.m_crColor = 0;
  src.m_hPen = nullptr;
  EXPECT_EQ(Stored(copy), Stored(src));
  CLineType constructed(src);
  EXPECT_EQ(Stored(constructed), Stored(src));

  // A plain line type passes on its width and description, not its font.
  CLineType plain;
  plain.m_nPenWidth = 2;
  plain.SetDesc(u"0123456789012345678901234567890");
  plain.SetFont(&font);
  copy = plain;
  EXPECT_EQ(copy.GetFont(), nullptr);
  EXPECT_EQ(copy.IsComplexLine(), 0);
  const CLineType& same = copy;
  copy = same;
  EXPECT_EQ(copy.GetPenWidth(), 2);
  EXPECT_EQ(std::u16string(copy.GetDesc()), u"0123456789012345678901234567890");
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
  ASSERT_NE(back.GetFont(), nullptr);
  EXPECT_EQ(Stored(back), expected);
}

TEST(LineType, ArchiveRoundTripWithItemsDropsThePen) {
  HPEN pen = CreatePen(PS_SOLID, 1, 0);
  CLineType type(pen);
  type.Allocate(2, 0, 3);
  const CLineItem line = Dashed(-1);
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
  EXPECT_EQ(back.GetPen(), nullptr);
  EXPECT_EQ(back.m_pSymbolItems, nullptr);
  bytes[48] = 0x01;
  EXPECT_EQ(Stored(back), bytes);
  DeleteObject(pen);
}

TEST(LineType, ArchiveLoadingRefusesCountsThatDoNotFit) {
  CLineType type(1, 1, 1);
  const CLineItem line;
  type.AddLineItem(&line);
  const std::vector<BYTE> good = Stored(type);
  CLineType back;
  EXPECT_EQ(LoadFailure(good, back), CArchiveException::none);

  struct Case {
    std::size_t at;
    std::int32_t value;
    int cause;
  };
  const Case cases[] = {
      {8, 2, CArchiveException::badIndex},            // two line items in an array of one
      {12, -1, CArchiveException::badIndex},          // a negative count
      {24, 0x7FFFFFFF, CArchiveException::badIndex},  // symbol capacity
      {28, -5, CArchiveException::none},              // a negative capacity with no items
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.at);
    std::vector<BYTE> bytes = good;
    PutLe32(bytes, c.at, c.value);
    EXPECT_EQ(LoadFailure(bytes, back), c.cause);
  }
  EXPECT_EQ(back.m_nMaxText, 0);
  EXPECT_EQ(back.m_pTextItems, nullptr);

  std::vector<BYTE> bytes = good;
  bytes.pop_back();
  EXPECT_EQ(LoadFailure(bytes, back), CArchiveException::endOfFile);

  CArchive out(CArchive::store);
  for (int i = 0; i < 9; ++i) out << 0;
  out << std::u16string_view(u"dugačak opis koji ne staje u polje opisa") << 1;
  EXPECT_EQ(LoadFailure(out.GetBytes(), back), CArchiveException::none);
  EXPECT_EQ(std::u16string(back.GetDesc()), u"dugačak opis koji ne staje u po");
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
  EXPECT_EQ(line.y, (std::vector<double>{0.0, 0.0, 50.0}));
  EXPECT_EQ(line.pen.lopnWidth.x, 4);
  EXPECT_EQ(line.pen.lopnColor, RGB(0, 0, 255));
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_PEN), original);

  dc.Clear();
  type.Draw(&dc, &dc, kX, kY, 3, nullptr, 1);
  ASSERT_EQ(dc.Primitives().size(), 1u) << dc.ToString();
  EXPECT_EQ(dc.Primitives()[0].kind, PrimitiveKind::Polygon);
  EXPECT_EQ(dc.Primitives()[0].brush.lbColor, RGB(0, 128, 0));

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

TEST(LineType, DrawsLineThenSymbolThenTextItemsAndTheTextModeColoursTheText) {
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
  EXPECT_EQ(dc.Primitives()[0].pen.lopnWidth.x, 3);
  EXPECT_EQ(dc.Primitives()[0].pen.lopnColor, RGB(200, 0, 0));
  EXPECT_EQ(dc.Primitives()[1].pen.lopnWidth.x, 2);
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
  EXPECT_EQ(dc.Primitives().size(), 2u) << dc.ToString();
  EXPECT_EQ(dc.CountOf(PrimitiveKind::Polyline), 2u);
}
