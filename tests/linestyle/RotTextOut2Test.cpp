#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "DrawTestSupport.h"
#include "linestyle/TextItem.h"

using namespace drawtest;

namespace {

LOGFONTW Font(LONG height) {
  LOGFONTW lf{};
  lf.lfHeight = height;
  lf.lfWeight = FW_NORMAL;
  const char16_t face[] = u"Arial";
  for (int i = 0; face[i] != 0; ++i) lf.lfFaceName[i] = face[i];
  return lf;
}

// Height 10: width 5, descent 2; the middle of the text is 3 above the baseline.
const LOGFONTW kFont = Font(10);

const RecordedPrimitive& OnlyText(const CRecordingDevice& dc) {
  EXPECT_EQ(dc.Primitives().size(), 1u) << dc.ToString();
  return dc.Primitives().at(0);
}

}  // namespace

TEST(RotTextOut2, CountBelowOneWritesTheWholeTextAndACountIsHeldToIt) {
  for (const auto& [count, written] : {std::pair{0, u"abc"}, {2, u"ab"}, {40, u"abc"}}) {
    CRecordingDevice dc;
    EXPECT_EQ(RotTextOut2(&dc, nullptr, 10, 20, 0, u"abc", count, 0, &kFont, nullptr, nullptr, nullptr, 6), 1);
    EXPECT_EQ(OnlyText(dc).text, written) << count;
  }
}

TEST(RotTextOut2, OnlyTheCentringRequestMovesTheReferencePoint) {
  CRecordingDevice dc;
  RotTextOut2(&dc, nullptr, 10, 20, 0, u"abc", 0, 0, &kFont, nullptr, nullptr, nullptr, 6);
  EXPECT_EQ(OnlyText(dc).y[0], 20.0);
  EXPECT_EQ(OnlyText(dc).textAlign, TA_CENTER);

  dc.Clear();  // 62 = centre vertically + baseline + centre: 32 is not passed on
  RotTextOut2(&dc, nullptr, 10, 20, 0, u"abc", 0, 0, &kFont, nullptr, nullptr, nullptr, 62);
  EXPECT_EQ(OnlyText(dc).x[0], 10.0);
  EXPECT_EQ(OnlyText(dc).y[0], 17.0);
  EXPECT_EQ(OnlyText(dc).textAlign, TA_BASELINE | TA_CENTER);
  EXPECT_EQ(GetTextAlign(&dc), TA_LEFT | TA_TOP);
}

TEST(RotTextOut2, TextThatWouldReadUpsideDownIsTurnedAndCentredAlongTheTurnedAngle) {
  // −90° is written at 90°; an explicit cosine and sine are replaced by those of the
  // font's angle.
  CRecordingDevice dc;
  const double c = 0, s = 1;
  RotTextOut2(&dc, nullptr, 10, 20, -kPi / 2, u"abc", 0, 0, &kFont, &c, &s, nullptr, 62);
  EXPECT_EQ(OnlyText(dc).font.lfEscapement, 900);
  EXPECT_EQ(OnlyText(dc).x[0], 13.0);
  EXPECT_EQ(OnlyText(dc).y[0], 20.0);
}

TEST(RotTextOut2, WithoutAFontTheGivenCosineAndSineCentreTheTextInTheContextsFont) {
  CRecordingDevice dc;
  const LOGFONTW big = Font(40);  // descent 8: 12 from baseline to middle
  HFONT font = CreateFontIndirectW(&big);
  SelectObject(&dc, font);
  const double c = 0, s = 1;
  const TallyScope tally;
  RotTextOut2(&dc, nullptr, 10, 20, 0, u"abc", 0, 0, nullptr, &c, &s, nullptr, 62);
  EXPECT_EQ(OnlyText(dc).x[0], 22.0);
  EXPECT_EQ(OnlyText(dc).y[0], 20.0);
  EXPECT_EQ(OnlyText(dc).font.lfHeight, 40);
  EXPECT_EQ(tally.Delta().fonts.created, 0);
  SelectObject(&dc, GetStockObject(SYSTEM_FONT));
  DeleteObject(font);
}

TEST(RotTextOut2, MeasuringContextGetsTheMadeFontTooAndBothGetTheirOwnBack) {
  CRecordingDevice dc;
  CRecordingDevice attrib;
  const LOGFONTW big = Font(40);
  HFONT font = CreateFontIndirectW(&big);
  SelectObject(&attrib, font);
  const HGDIOBJ dcFont = GetCurrentObject(&dc, OBJ_FONT);
  const TallyScope tally;
  RotTextOut2(&dc, &attrib, 10, 20, 0, u"abc", 0, 0, &kFont, nullptr, nullptr, nullptr, 62);
  // Centred by the made font's metrics, measured on the attribute context.
  EXPECT_EQ(OnlyText(dc).y[0], 17.0);
  EXPECT_EQ(OnlyText(dc).font.lfHeight, 10);
  EXPECT_EQ(attrib.PrimitiveCount(), 0u);
  EXPECT_EQ(GetCurrentObject(&attrib, OBJ_FONT), font);
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_FONT), dcFont);
  EXPECT_EQ(tally.Delta().fonts.created, 1);
  ExpectNothingLeft(tally.Delta());
  SelectObject(&attrib, GetStockObject(SYSTEM_FONT));
  DeleteObject(font);
}

TEST(RotTextOut2, TextIsWrittenOnlyWhenItsSquareMeetsTheBoundsButTheResultIsAlwaysOne) {
  // "abc" measures 15 × 10: a square of half-side 18 round the point.
  CRecordingDevice dc;
  RECT clip{0, 100, 100, 0};
  const TallyScope tally;
  EXPECT_EQ(RotTextOut2(&dc, nullptr, 119, 50, 0, u"abc", 0, 0, &kFont, nullptr, nullptr, &clip, 62), 1);
  EXPECT_EQ(RotTextOut2(&dc, nullptr, 50, -19, 0, u"abc", 0, 0, &kFont, nullptr, nullptr, &clip, 62), 1);
  EXPECT_EQ(dc.PrimitiveCount(), 0u);
  ExpectNothingLeft(tally.Delta());
  RotTextOut2(&dc, nullptr, 118, 50, 0, u"abc", 0, 0, &kFont, nullptr, nullptr, &clip, 62);  // touches
  RotTextOut2(&dc, nullptr, 50, 118, 0, u"abc", 0, 0, &kFont, nullptr, nullptr, &clip, 62);
  EXPECT_EQ(dc.PrimitiveCount(), 2u);

  // Without a clip rectangle the device's clip box decides.
  dc.Clear();
  dc.SetClipBox(clip);
  RotTextOut2(&dc, nullptr, -19, 50, 0, u"abc", 0, 0, &kFont, nullptr, nullptr, nullptr, 62);
  EXPECT_EQ(dc.PrimitiveCount(), 0u);
  RotTextOut2(&dc, nullptr, -18, 50, 0, u"abc", 0, 0, &kFont, nullptr, nullptr, nullptr, 62);
  EXPECT_EQ(dc.PrimitiveCount(), 1u);
}

TEST(RotTextOut2, ExtremePointsAndMissingTextNeverOverflow) {
  CRecordingDevice dc;
  EXPECT_EQ(RotTextOut2(&dc, nullptr, 2147483647, -2147483647 - 1, 0, u"abc", 0, 0, &kFont, nullptr, nullptr,
                        nullptr, 62),
            1);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  EXPECT_EQ(dc.Primitives()[0].y[0], -2147483648.0);  // held at the end of the range
  EXPECT_EQ(RotTextOut2(&dc, nullptr, 0, 0, 0, nullptr, 3, 0, &kFont, nullptr, nullptr, nullptr, 62), 1);
  EXPECT_EQ(RotTextOut2(nullptr, nullptr, 0, 0, 0, u"abc", 0, 0, &kFont, nullptr, nullptr, nullptr, 62), 1);
}
