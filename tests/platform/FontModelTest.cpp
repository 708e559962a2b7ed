#include "platform/FontModel.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "platform/GdiObjects.h"

namespace {

LOGFONTW Font(LONG height, LONG width = 0) {
  LOGFONTW lf{};
  lf.lfHeight = height;
  lf.lfWidth = width;
  return lf;
}

}  // namespace

TEST(FontModel, MetricsFollowFromHeightAndWidth) {
  struct Case {
    LONG height, width;
    LONG tmHeight, ascent, descent, charWidth;
  };
  const Case cases[] = {
      {0, 0, 12, 10, 2, 6},   // no height asked for: the model's default
      {-7, 0, 7, 6, 1, 4},    // 5.6 and 3.5 round up
      {10, -3, 10, 8, 2, 3},  // a width of its own, by magnitude
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.height << "/" << c.width);
    const TEXTMETRICW tm = vantrel1::ModelTextMetrics(Font(c.height, c.width));
    EXPECT_EQ(tm.tmHeight, c.tmHeight);
    EXPECT_EQ(tm.tmAscent, c.ascent);
    EXPECT_EQ(tm.tmDescent, c.descent);
    EXPECT_EQ(tm.tmAveCharWidth, c.charWidth);
    EXPECT_EQ(vantrel1::ModelTextExtent(Font(c.height, c.width), 7).cx, 7 * c.charWidth);
    EXPECT_EQ(vantrel1::ModelTextExtent(Font(c.height, c.width), 7).cy, c.tmHeight);
  }
}

TEST(FontModel, MetricsCarryTheRequestedStyle) {
  LOGFONTW lf = Font(10);
  lf.lfItalic = 1;
  lf.lfCharSet = EASTEUROPE_CHARSET;
  lf.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
  EXPECT_EQ(vantrel1::ModelTextMetrics(lf).tmWeight, FW_NORMAL);  // weight 0 means normal
  lf.lfWeight = FW_BOLD;
  const TEXTMETRICW tm = vantrel1::ModelTextMetrics(lf);
  EXPECT_EQ(tm.tmWeight, FW_BOLD);
  EXPECT_EQ(tm.tmItalic, 1);
  EXPECT_EQ(tm.tmCharSet, EASTEUROPE_CHARSET);
  EXPECT_EQ(tm.tmPitchAndFamily, VARIABLE_PITCH | FF_SWISS);
}

TEST(FontModel, ExtremeSizesSaturateInsteadOfOverflowing) {
  const LOGFONTW huge = Font(std::numeric_limits<LONG>::min());
  const TEXTMETRICW tm = vantrel1::ModelTextMetrics(huge);
  EXPECT_EQ(tm.tmHeight, std::numeric_limits<LONG>::max());
  EXPECT_EQ(tm.tmAscent + static_cast<std::int64_t>(tm.tmDescent), tm.tmHeight);
  EXPECT_EQ(vantrel1::ModelTextExtent(huge, std::numeric_limits<int>::max()).cx, std::numeric_limits<LONG>::max());
  EXPECT_EQ(vantrel1::ModelTextExtent(huge, -4).cx, 0);
}

TEST(FontModel, FaceNameStopsAtTheTerminatorOrTheField) {
  LOGFONTW lf{};
  EXPECT_EQ(vantrel1::ModelFaceName(lf), u"");
  for (WCHAR& c : lf.lfFaceName) c = u'q';
  EXPECT_EQ(vantrel1::ModelFaceName(lf), std::u16string(LF_FACESIZE, u'q'));
  lf.lfFaceName[5] = 0;
  EXPECT_EQ(vantrel1::ModelFaceName(lf), u"qqqqq");
}
