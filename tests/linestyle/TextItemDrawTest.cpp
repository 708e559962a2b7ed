#include <gtest/gtest.h>

#include <string>

#include "DrawTestSupport.h"
#include "linestyle/TextItem.h"

using namespace drawtest;

namespace {

LOGFONTW Font(const char16_t* face, LONG height) {
  LOGFONTW lf{};
  lf.lfHeight = height;
  lf.lfWeight = FW_NORMAL;
  for (int i = 0; face[i] != 0; ++i) lf.lfFaceName[i] = face[i];
  return lf;
}

// With height 10 the font model has descent 2: the middle of the text lies 10/2 − 2 = 3
// above the baseline, so a centred copy's baseline point is 3 below its point.
const LOGFONTW kFont = Font(u"Arial", 10);

CTextItem Stars(int interval = 1000, double start = 0.5) {
  return CTextItem(1.0, 0, TRANSPARENT, interval, start, 0, u"*");
}

std::vector<const RecordedPrimitive*> Texts(const CRecordingDevice& dc) {
  std::vector<const RecordedPrimitive*> texts;
  for (const RecordedPrimitive& p : dc.Primitives())
    if (p.kind == PrimitiveKind::Text) texts.push_back(&p);
  return texts;
}

}  // namespace

TEST(TextItemDraw, CopiesAlongTheLineAreCentredOnTheirPointsAndTurnedToIt) {
  CRecordingDevice dc;
  SetBkMode(&dc, OPAQUE);
  const Coords x{0, 220}, y{0, 0};
  const TallyScope tally;
  Stars().Draw(&dc, &dc, x.data(), y.data(), 2, &kFont, nullptr, 1.0, 0);
  const auto texts = Texts(dc);
  ASSERT_EQ(texts.size(), 2u) << dc.ToString();
  EXPECT_EQ(texts[0]->text, u"*");
  EXPECT_EQ(texts[0]->x[0], 50.0);
  EXPECT_EQ(texts[0]->y[0], -3.0);
  EXPECT_EQ(texts[1]->x[0], 150.0);
  EXPECT_EQ(texts[1]->textAlign, TA_BASELINE | TA_CENTER);
  EXPECT_EQ(texts[1]->font.lfEscapement, 0);
  EXPECT_EQ(texts[1]->font.lfHeight, 10);
  // The item's background mode holds for every copy and the context's comes back.
  EXPECT_EQ(texts[0]->bkMode, TRANSPARENT);
  EXPECT_EQ(texts[1]->bkMode, TRANSPARENT);
  EXPECT_EQ(GetBkMode(&dc), OPAQUE);
  EXPECT_EQ(GetTextAlign(&dc), TA_LEFT | TA_TOP);
  ExpectNothingLeft(tally.Delta());
  EXPECT_EQ(tally.Delta().fonts.created, 2);

  // Northwards the text reads upwards and is centred by moving its baseline to the right.
  dc.Clear();
  const Coords nx{0, 0}, ny{0, 220};
  Stars().Draw(&dc, &dc, nx.data(), ny.data(), 2, &kFont, nullptr, 1.0, 0);
  ASSERT_EQ(Texts(dc).size(), 2u);
  EXPECT_EQ(Texts(dc)[0]->x[0], 3.0);
  EXPECT_EQ(Texts(dc)[0]->y[0], 50.0);
  EXPECT_EQ(Texts(dc)[0]->font.lfEscapement, 900);
}

TEST(TextItemDraw, OffsetLiesRightOfTravelAndTheItemsAngleAddsToTheLines) {
  CRecordingDevice dc;
  const Coords x{0, 120}, y{0, 0};
  CTextItem item(1.0, 900, TRANSPARENT, 1000, 0.5, 50, u"ab");
  item.Draw(&dc, &dc, x.data(), y.data(), 2, &kFont, nullptr, 1.0, 0);
  const auto texts = Texts(dc);
  ASSERT_EQ(texts.size(), 1u) << dc.ToString();
  // Point (50, −5); turned to 90°, so centring moves it 3 along +x.
  EXPECT_EQ(texts[0]->x[0], 53.0);
  EXPECT_EQ(texts[0]->y[0], -5.0);
  EXPECT_EQ(texts[0]->font.lfEscapement, 900);
  EXPECT_EQ(texts[0]->text, u"ab");

  dc.Clear();  // northwards, right of travel is +x
  const Coords nx{0, 0}, ny{0, 120};
  item.Draw(&dc, &dc, nx.data(), ny.data(), 2, &kFont, nullptr, 1.0, 0);
  ASSERT_EQ(Texts(dc).size(), 1u);
  // Turned to 180°, which reads upside down: written at 0° instead, centred downwards.
  EXPECT_EQ(Texts(dc)[0]->x[0], 5.0);
  EXPECT_EQ(Texts(dc)[0]->y[0], 50.0 - 3.0);
  EXPECT_EQ(Texts(dc)[0]->font.lfEscapement, 0);
}

TEST(TextItemDraw, WithoutAFontTheAttributeContextsFontIsRebuiltAndScaled) {
  CRecordingDevice dc;
  CRecordingDevice attrib;
  const LOGFONTW bold = [] {
    LOGFONTW lf = Font(u"Arial", 20);
    lf.lfWeight = FW_BOLD;
    lf.lfItalic = 1;
    lf.lfCharSet = 238;
    return lf;
  }();
  HFONT selected = CreateFontIndirectW(&bold);
  SelectObject(&attrib, selected);
  const Coords x{0, 220}, y{0, 0};
  CTextItem item = Stars();
  item.m_dScale = 1.5;
  item.Draw(&dc, &attrib, x.data(), y.data(), 2, nullptr, nullptr, 0.9, 0);
  const auto texts = Texts(dc);
  ASSERT_EQ(texts.size(), 2u);
  const LOGFONTW& used = texts[0]->font;
  EXPECT_EQ(std::u16string(used.lfFaceName), u"Arial");
  EXPECT_EQ(used.lfHeight, 27);  // 20 × 1.5 × 0.9, truncated
  EXPECT_EQ(used.lfWidth, 13);   // the model's average width 10, likewise
  EXPECT_EQ(used.lfWeight, FW_BOLD);
  EXPECT_EQ(used.lfItalic, 1);
  EXPECT_EQ(used.lfCharSet, 238);
  SelectObject(&attrib, GetStockObject(SYSTEM_FONT));
  DeleteObject(selected);
}

TEST(TextItemDraw, NothingIsDrawnOrChangedWithoutSomethingToWrite) {
  CRecordingDevice dc;
  CRecordingDevice attrib;
  SetBkMode(&dc, TRANSPARENT);
  const LOGFONTW faceless = Font(u"", 12);
  HFONT font = CreateFontIndirectW(&faceless);
  SelectObject(&attrib, font);
  const Coords x{0, 220}, y{0, 0};
  CTextItem item = Stars();
  item.m_nBkMode = OPAQUE;
  const TallyScope tally;
  item.Draw(&dc, &attrib, x.data(), y.data(), 2, nullptr, nullptr, 1.0, 0);  // no face name
  CTextItem(1.0, 0, OPAQUE, 1000, 0.5, 0, u"").Draw(&dc, &dc, x.data(), y.data(), 2, &kFont, nullptr, 1.0, 0);
  Stars(0).Draw(&dc, &dc, x.data(), y.data(), 2, &kFont, nullptr, 1.0, 0);  // interval below 1
  EXPECT_EQ(dc.PrimitiveCount(), 0u);
  EXPECT_EQ(GetBkMode(&dc), TRANSPARENT);
  EXPECT_EQ(tally.Delta().fonts.created, 0);
  SelectObject(&attrib, GetStockObject(SYSTEM_FONT));
  DeleteObject(font);
}

TEST(TextItemDraw, AtAPointOnlyWithStartZeroAndTheOffsetLiftsItStraightUp) {
  CRecordingDevice dc;
  CTextItem item(1.0, 900, TRANSPARENT, 1000, 0.0, 50, u"A");
  item.Draw(&dc, &dc, 10.7, 20.2, &kFont, nullptr, 1.0, 0);
  auto texts = Texts(dc);
  ASSERT_EQ(texts.size(), 1u);
  // (10, 25), turned to 90°: centring moves it 3 along +x.
  EXPECT_EQ(texts[0]->x[0], 13.0);
  EXPECT_EQ(texts[0]->y[0], 25.0);
  EXPECT_EQ(texts[0]->font.lfEscapement, 900);

  dc.Clear();
  item.m_dStart = 0.5;
  item.Draw(&dc, &dc, 10.7, 20.2, &kFont, nullptr, 1.0, 0);
  EXPECT_EQ(dc.PrimitiveCount(), 0u);

  dc.Clear();  // a point beyond the int range is not converted
  item.m_dStart = 0;
  item.Draw(&dc, &dc, 3e9, 0.0, &kFont, nullptr, 1.0, 0);
  EXPECT_EQ(dc.PrimitiveCount(), 0u);
}

TEST(TextItemDraw, CopiesTooFarOutToConvertAreLeftOut) {
  CRecordingDevice dc;
  // Copies fall at 1932735182, 1932735282.0000014 and 1932735382: the last lies beyond
  // nine tenths of the int range.
  const Coords x{1932735182.0, 1932735482.0}, y{0, 0};
  Stars(1000, 0).Draw(&dc, &dc, x.data(), y.data(), 2, &kFont, nullptr, 1.0, 0);
  const auto texts = Texts(dc);
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_EQ(texts[1]->x[0], 1932735282.0);
}
