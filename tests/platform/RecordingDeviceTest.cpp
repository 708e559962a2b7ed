#include "platform/RecordingDevice.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/FontModel.h"
#include "platform/Gdi.h"

namespace {

LOGFONTW Font(const char16_t* face, LONG height, LONG escapement = 0) {
  LOGFONTW lf{};
  lf.lfHeight = height;
  lf.lfEscapement = escapement;
  lf.lfWeight = FW_NORMAL;
  for (int i = 0; face[i] != 0; ++i) lf.lfFaceName[i] = face[i];
  return lf;
}

// A draw call as the line styles make them: own pen and brush, selected, used, restored,
// deleted; then a turned text in a made font.
void DrawSample(HDC dc) {
  HPEN pen = CreatePen(PS_SOLID, 3, RGB(255, 0, 0));
  HGDIOBJ oldPen = SelectObject(dc, pen);
  const double lx[] = {0.1, 30.000000447034836};
  const double ly[] = {-0.5, 0.0};
  PolylineD(dc, lx, ly, 2);

  HBRUSH brush = CreateSolidBrush(RGB(0, 128, 0));
  HGDIOBJ oldBrush = SelectObject(dc, brush);
  SelectObject(dc, GetStockObject(NULL_PEN));
  const double px[] = {0, 10, 10};
  const double py[] = {0, 0, 5.25};
  PolygonD(dc, px, py, 3);
  SelectObject(dc, oldBrush);
  SelectObject(dc, oldPen);
  DeleteObject(brush);
  DeleteObject(pen);

  const LOGFONTW lf = Font(u"Arial", -12, 900);
  HFONT font = CreateFontIndirectW(&lf);
  HGDIOBJ oldFont = SelectObject(dc, font);
  const COLORREF oldColour = SetTextColor(dc, RGB(0, 0, 255));
  const int oldMode = SetBkMode(dc, TRANSPARENT);
  const UINT oldAlign = SetTextAlign(dc, TA_BASELINE | TA_CENTER);
  TextOutW(dc, 50, -7, u"*\"ž", 3);
  SetTextAlign(dc, oldAlign);
  SetBkMode(dc, oldMode);
  SetTextColor(dc, oldColour);
  SelectObject(dc, oldFont);
  DeleteObject(font);
}

}  // namespace

TEST(RecordingDevice, RecordsEachPrimitiveWithTheStateInForce) {
  CRecordingDevice dc;
  const GdiObjectTally before = GdiObjectCounts();
  DrawSample(&dc);
  const GdiObjectTally d = GdiObjectCounts() - before;
  EXPECT_EQ(d.Live(), 0);
  EXPECT_EQ(d.refusedDeletes, 0);

  const auto& p = dc.Primitives();
  ASSERT_EQ(p.size(), 3u) << dc.ToString();

  EXPECT_EQ(p[0].kind, PrimitiveKind::Polyline);
  EXPECT_EQ(p[0].x, (std::vector<double>{0.1, 30.000000447034836}));
  EXPECT_EQ(p[0].y, (std::vector<double>{-0.5, 0.0}));
  EXPECT_EQ(p[0].pen.lopnStyle, static_cast<UINT>(PS_SOLID));
  EXPECT_EQ(p[0].pen.lopnWidth.x, 3);
  EXPECT_EQ(p[0].pen.lopnColor, RGB(255, 0, 0));

  EXPECT_EQ(p[1].kind, PrimitiveKind::Polygon);
  EXPECT_EQ(p[1].y, (std::vector<double>{0, 0, 5.25}));
  EXPECT_EQ(p[1].pen.lopnStyle, static_cast<UINT>(PS_NULL));
  EXPECT_TRUE(p[1].Filled());
  EXPECT_EQ(p[1].brush.lbColor, RGB(0, 128, 0));

  EXPECT_EQ(p[2].kind, PrimitiveKind::Text);
  EXPECT_EQ(p[2].text, u"*\"ž");
  EXPECT_EQ(p[2].x, std::vector<double>{50});
  EXPECT_EQ(p[2].y, std::vector<double>{-7});
  EXPECT_EQ(p[2].font.lfEscapement, 900);
  EXPECT_EQ(p[2].font.lfHeight, -12);
  EXPECT_EQ(p[2].textColor, RGB(0, 0, 255));
  EXPECT_EQ(p[2].bkMode, TRANSPARENT);
  EXPECT_EQ(p[2].textAlign, TA_BASELINE | TA_CENTER);

  // Everything was put back.
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_PEN), GetStockObject(BLACK_PEN));
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_FONT), GetStockObject(SYSTEM_FONT));
  EXPECT_EQ(GetBkMode(&dc), OPAQUE);
}

TEST(RecordingDevice, PrintsOneReadableLinePerPrimitive) {
  CRecordingDevice dc;
  DrawSample(&dc);
  Rectangle(&dc, 1, 20, 11, 2);
  SelectObject(&dc, GetStockObject(NULL_BRUSH));
  Ellipse(&dc, -1, 1, 1, -1);
  EXPECT_EQ(dc.ToString(),
            "polyline (0.1,-0.5) (30.000000447034836,0) | pen solid 3 RGB(255,0,0)\n"
            "polygon (0,0) (10,0) (10,5.25) | pen null 1 RGB(0,0,0) | brush solid RGB(0,128,0)\n"
            "text (50,-7) \"*\\\"\xC5\xBE\" | font \"Arial\" h-12 w0 esc900 wt400"
            " | color RGB(0,0,255) | bk transparent | align 30\n"
            "rectangle (1,20) (11,2) | pen solid 1 RGB(0,0,0) | brush solid RGB(255,255,255)\n"
            "ellipse (-1,1) (1,-1) | pen solid 1 RGB(0,0,0) | brush null\n");
}

TEST(RecordingDevice, CountsWithoutRecordingWhenSwitchedOff) {
  CRecordingDevice dc;
  dc.SetRecording(false);
  DrawSample(&dc);
  LineTo(&dc, 5, 5);
  EXPECT_TRUE(dc.Primitives().empty());
  EXPECT_EQ(dc.PrimitiveCount(), 4u);

  dc.SetRecording(true);
  LineTo(&dc, 6, 6);
  EXPECT_EQ(dc.PrimitiveCount(), 5u);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  EXPECT_EQ(dc.Primitives()[0].x, (std::vector<double>{5, 6}));
  EXPECT_EQ(dc.CountOf(PrimitiveKind::Polyline), 1u);
  EXPECT_EQ(dc.CountOf(PrimitiveKind::Text), 0u);

  dc.Clear();
  EXPECT_EQ(dc.PrimitiveCount(), 0u);
  EXPECT_TRUE(dc.Primitives().empty());
}

TEST(RecordingDevice, IntegerPrimitivesAndTheCurrentPosition) {
  CRecordingDevice dc;
  const POINT pts[] = {{1, 2}, {3, 4}, {-5, 6}};
  EXPECT_TRUE(Polyline(&dc, pts, 3));
  EXPECT_TRUE(Polygon(&dc, pts, 3));
  POINT previous{9, 9};
  EXPECT_TRUE(MoveToEx(&dc, 10, 20, &previous));
  EXPECT_EQ(previous.x, 0);
  EXPECT_EQ(previous.y, 0);
  EXPECT_TRUE(LineTo(&dc, 30, 40));
  EXPECT_TRUE(LineTo(&dc, 50, 60));
  EXPECT_TRUE(MoveToEx(&dc, 0, 0, &previous));
  EXPECT_EQ(previous.x, 50);
  EXPECT_EQ(previous.y, 60);

  const auto& p = dc.Primitives();
  ASSERT_EQ(p.size(), 4u);
  EXPECT_EQ(p[0].x, (std::vector<double>{1, 3, -5}));
  EXPECT_EQ(p[1].kind, PrimitiveKind::Polygon);
  EXPECT_EQ(p[1].y, (std::vector<double>{2, 4, 6}));
  EXPECT_EQ(p[2].x, (std::vector<double>{10, 30}));
  EXPECT_EQ(p[3].y, (std::vector<double>{40, 60}));
}

TEST(RecordingDevice, RefusedCallsRecordNothing) {
  CRecordingDevice dc;
  const POINT pts[] = {{1, 2}, {3, 4}};
  const double xs[] = {1, 2};
  EXPECT_FALSE(Polyline(&dc, pts, 1));
  EXPECT_FALSE(Polygon(&dc, nullptr, 2));
  EXPECT_FALSE(PolylineD(&dc, xs, nullptr, 2));
  EXPECT_FALSE(PolygonD(&dc, xs, xs, 0));
  EXPECT_FALSE(PolylineD(&dc, xs, xs, -3));
  EXPECT_FALSE(TextOutW(&dc, 0, 0, u"abc", -1));
  EXPECT_FALSE(TextOutW(&dc, 0, 0, nullptr, 1));
  EXPECT_TRUE(TextOutW(&dc, 0, 0, u"abc", 0));  // nothing to write is no error
  EXPECT_EQ(dc.PrimitiveCount(), 0u);
}

TEST(RecordingDevice, TextCountLimitsTheWrittenUnits) {
  CRecordingDevice dc;
  EXPECT_TRUE(TextOutW(&dc, 1, 2, u"abc\0def", 5));
  ASSERT_EQ(dc.Primitives().size(), 1u);
  EXPECT_EQ(dc.Primitives()[0].text, std::u16string(u"abc\0d", 5));
  EXPECT_EQ(dc.Primitives()[0].font.lfHeight, 16);  // a fresh device writes in the system font
  EXPECT_EQ(dc.Primitives()[0].bkMode, OPAQUE);
  EXPECT_EQ(dc.Primitives()[0].bkColor, RGB(255, 255, 255));
}

TEST(FontModel, MetricsFollowFromHeightAndWidth) {
  const TEXTMETRICW standard = vantrel1::ModelTextMetrics(Font(u"Arial", 0));
  EXPECT_EQ(standard.tmHeight, 12);
  EXPECT_EQ(standard.tmAscent, 10);
  EXPECT_EQ(standard.tmDescent, 2);
  EXPECT_EQ(standard.tmAveCharWidth, 6);
  EXPECT_EQ(standard.tmMaxCharWidth, 6);
  EXPECT_EQ(standard.tmInternalLeading, 0);
  EXPECT_EQ(standard.tmWeight, FW_NORMAL);

  const TEXTMETRICW odd = vantrel1::ModelTextMetrics(Font(u"Arial", -7));
  EXPECT_EQ(odd.tmHeight, 7);
  EXPECT_EQ(odd.tmAscent, 6);  // 5.6 rounds up
  EXPECT_EQ(odd.tmDescent, 1);
  EXPECT_EQ(odd.tmAveCharWidth, 4);  // 3.5 rounds up

  LOGFONTW narrow = Font(u"Arial", 10);
  narrow.lfWidth = -3;
  narrow.lfWeight = 0;
  narrow.lfItalic = 1;
  narrow.lfCharSet = EASTEUROPE_CHARSET;
  narrow.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
  const TEXTMETRICW tm = vantrel1::ModelTextMetrics(narrow);
  EXPECT_EQ(tm.tmAveCharWidth, 3);
  EXPECT_EQ(tm.tmAscent, 8);
  EXPECT_EQ(tm.tmWeight, FW_NORMAL);
  EXPECT_EQ(tm.tmItalic, 1);
  EXPECT_EQ(tm.tmCharSet, EASTEUROPE_CHARSET);
  EXPECT_EQ(tm.tmPitchAndFamily, VARIABLE_PITCH | FF_SWISS);
  const SIZE extent = vantrel1::ModelTextExtent(narrow, 7);
  EXPECT_EQ(extent.cx, 21);
  EXPECT_EQ(extent.cy, 10);
}

TEST(FontModel, ExtremeSizesSaturateInsteadOfOverflowing) {
  const LOGFONTW huge = Font(u"", std::numeric_limits<LONG>::min());
  const TEXTMETRICW tm = vantrel1::ModelTextMetrics(huge);
  EXPECT_EQ(tm.tmHeight, std::numeric_limits<LONG>::max());
  EXPECT_EQ(tm.tmAscent + static_cast<std::int64_t>(tm.tmDescent), tm.tmHeight);
  const SIZE extent = vantrel1::ModelTextExtent(huge, std::numeric_limits<int>::max());
  EXPECT_EQ(extent.cx, std::numeric_limits<LONG>::max());
  EXPECT_EQ(vantrel1::ModelTextExtent(huge, -4).cx, 0);
  EXPECT_EQ(vantrel1::ModelFaceName(huge), u"");
}

TEST(FontModel, FaceNameStopsAtTheTerminatorOrTheField) {
  EXPECT_EQ(vantrel1::ModelFaceName(Font(u"DejaVu Sans", 1)), u"DejaVu Sans");
  LOGFONTW full{};
  for (WCHAR& c : full.lfFaceName) c = u'q';
  EXPECT_EQ(vantrel1::ModelFaceName(full), std::u16string(LF_FACESIZE, u'q'));
}
