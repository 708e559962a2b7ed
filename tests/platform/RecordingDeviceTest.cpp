#include "platform/RecordingDevice.h"

#include <gtest/gtest.h>

#include <vector>

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
  // Everything was put back.
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_PEN), GetStockObject(BLACK_PEN));
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_FONT), GetStockObject(SYSTEM_FONT));
  EXPECT_EQ(GetBkMode(&dc), OPAQUE);

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
  ASSERT_EQ(dc.Primitives().size(), 5u);
  EXPECT_TRUE(dc.Primitives()[1].Filled());
  EXPECT_FALSE(dc.Primitives()[4].Filled());
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
  EXPECT_EQ(std::vector<LONG>({previous.x, previous.y}), std::vector<LONG>({0, 0}));
  EXPECT_TRUE(LineTo(&dc, 30, 40));
  EXPECT_TRUE(LineTo(&dc, 50, 60));
  EXPECT_TRUE(MoveToEx(&dc, 0, 0, &previous));
  EXPECT_EQ(std::vector<LONG>({previous.x, previous.y}), std::vector<LONG>({50, 60}));
  EXPECT_EQ(dc.ToString(),
            "polyline (1,2) (3,4) (-5,6) | pen solid 1 RGB(0,0,0)\n"
            "polygon (1,2) (3,4) (-5,6) | pen solid 1 RGB(0,0,0) | brush solid RGB(255,255,255)\n"
            "polyline (10,20) (30,40) | pen solid 1 RGB(0,0,0)\n"
            "polyline (30,40) (50,60) | pen solid 1 RGB(0,0,0)\n");
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
