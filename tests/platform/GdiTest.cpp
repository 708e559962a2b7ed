#include "platform/Gdi.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "platform/RecordingDevice.h"

namespace {

LOGPEN PenOf(HGDIOBJ pen) {
  LOGPEN lp{};
  EXPECT_EQ(GetObjectW(pen, sizeof lp, &lp), static_cast<int>(sizeof lp));
  return lp;
}

LOGBRUSH BrushOf(HGDIOBJ brush) {
  LOGBRUSH lb{};
  EXPECT_EQ(GetObjectW(brush, sizeof lb, &lb), static_cast<int>(sizeof lb));
  return lb;
}

LOGFONTW FontNamed(const char16_t* face, LONG height) {
  LOGFONTW lf{};
  lf.lfHeight = height;
  for (int i = 0; face[i] != 0; ++i) lf.lfFaceName[i] = face[i];
  return lf;
}

}  // namespace

TEST(GdiSelection, ReturnsThePreviousObjectOfTheSameKind) {
  CRecordingDevice dc;
  HPEN red = CreatePen(PS_SOLID, 2, RGB(255, 0, 0));
  HPEN blue = CreatePen(PS_DASH, 1, RGB(0, 0, 255));
  HBRUSH green = CreateSolidBrush(RGB(0, 255, 0));
  const LOGFONTW lf = FontNamed(u"Arial", -12);
  HFONT arial = CreateFontIndirectW(&lf);

  EXPECT_EQ(SelectObject(&dc, red), GetStockObject(BLACK_PEN));
  EXPECT_EQ(SelectObject(&dc, green), GetStockObject(WHITE_BRUSH));
  EXPECT_EQ(SelectObject(&dc, arial), GetStockObject(SYSTEM_FONT));
  EXPECT_EQ(SelectObject(&dc, blue), red);
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_PEN), blue);
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_BRUSH), green);
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_FONT), arial);
  EXPECT_EQ(dc.State().pen.lopnStyle, static_cast<UINT>(PS_DASH));
  EXPECT_EQ(dc.State().brush.lbColor, RGB(0, 255, 0));

  SelectObject(&dc, GetStockObject(BLACK_PEN));
  SelectObject(&dc, GetStockObject(WHITE_BRUSH));
  SelectObject(&dc, GetStockObject(SYSTEM_FONT));
  for (HGDIOBJ object : {HGDIOBJ(red), HGDIOBJ(blue), HGDIOBJ(green), HGDIOBJ(arial)})
    EXPECT_TRUE(DeleteObject(object));
}

TEST(GdiSelection, RefusesBadHandlesAndKeepsTheSelection) {
  CRecordingDevice dc;
  HPEN pen = CreatePen(PS_SOLID, 1, 0);
  ASSERT_TRUE(DeleteObject(pen));
  int notAnObject = 0;

  EXPECT_EQ(SelectObject(nullptr, GetStockObject(WHITE_PEN)), nullptr);
  EXPECT_EQ(SelectObject(&dc, nullptr), nullptr);
  EXPECT_EQ(SelectObject(&dc, pen), nullptr);
  EXPECT_EQ(SelectObject(&dc, &notAnObject), nullptr);
  EXPECT_EQ(SelectObject(&dc, reinterpret_cast<HGDIOBJ>(std::uintptr_t{0xA5})), nullptr);
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_PEN), GetStockObject(BLACK_PEN));
  EXPECT_EQ(GetCurrentObject(&dc, 99), nullptr);
}

TEST(GdiDelete, RefusesAnObjectWhileALiveDeviceHoldsIt) {
  const GdiObjectTally before = GdiObjectCounts();
  HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
  auto first = std::make_unique<CRecordingDevice>();
  CRecordingDevice second;
  SelectObject(first.get(), brush);
  HGDIOBJ old = SelectObject(&second, brush);

  EXPECT_FALSE(DeleteObject(brush));
  EXPECT_EQ(GetObjectType(brush), OBJ_BRUSH);
  SelectObject(&second, old);
  EXPECT_FALSE(DeleteObject(brush));  // still in the first device
  first.reset();                      // a destroyed device lets go of its objects
  EXPECT_TRUE(DeleteObject(brush));
  EXPECT_FALSE(DeleteObject(brush));

  const GdiObjectTally d = GdiObjectCounts() - before;
  EXPECT_EQ(d.brushes.created, 1);
  EXPECT_EQ(d.brushes.deleted, 1);
  EXPECT_EQ(d.Live(), 0);
  EXPECT_EQ(d.refusedDeletes, 3);
}

TEST(GdiDelete, StaleHandleNeverReachesTheObjectThatReusesItsSlot) {
  HPEN old = CreatePen(PS_SOLID, 1, RGB(1, 1, 1));
  ASSERT_TRUE(DeleteObject(old));
  HPEN reused = CreatePen(PS_DOT, 7, RGB(2, 2, 2));
  ASSERT_NE(reused, nullptr);
  EXPECT_NE(reused, old);

  LOGPEN lp{};
  EXPECT_EQ(GetObjectType(old), 0u);
  EXPECT_EQ(GetObjectW(old, sizeof lp, &lp), 0);
  EXPECT_FALSE(DeleteObject(old));
  EXPECT_EQ(PenOf(reused).lopnWidth.x, 7);
  EXPECT_TRUE(DeleteObject(reused));
}

TEST(GdiStockObjects, AreSharedRecordsThatCannotBeDeleted) {
  EXPECT_EQ(GetStockObject(BLACK_PEN), GetStockObject(BLACK_PEN));
  EXPECT_EQ(GetStockObject(HOLLOW_BRUSH), GetStockObject(NULL_BRUSH));
  for (int index : {-1, 9, 15, 18}) EXPECT_EQ(GetStockObject(index), nullptr) << index;

  const LOGPEN black = PenOf(GetStockObject(BLACK_PEN));
  EXPECT_EQ(black.lopnStyle, static_cast<UINT>(PS_SOLID));
  EXPECT_EQ(black.lopnWidth.x, 1);
  EXPECT_EQ(black.lopnColor, RGB(0, 0, 0));
  EXPECT_EQ(PenOf(GetStockObject(WHITE_PEN)).lopnColor, RGB(255, 255, 255));
  EXPECT_EQ(PenOf(GetStockObject(NULL_PEN)).lopnStyle, static_cast<UINT>(PS_NULL));
  EXPECT_EQ(BrushOf(GetStockObject(NULL_BRUSH)).lbStyle, BS_NULL);
  EXPECT_EQ(BrushOf(GetStockObject(GRAY_BRUSH)).lbColor, RGB(128, 128, 128));

  LOGFONTW lf{};
  ASSERT_EQ(GetObjectW(GetStockObject(SYSTEM_FONT), sizeof lf, &lf), static_cast<int>(sizeof lf));
  EXPECT_EQ(lf.lfHeight, 16);
  EXPECT_EQ(lf.lfWeight, FW_BOLD);
  EXPECT_EQ(std::u16string(lf.lfFaceName), u"DejaVu Sans");
  EXPECT_EQ(GetObjectType(GetStockObject(DEFAULT_GUI_FONT)), OBJ_FONT);

  const GdiObjectTally before = GdiObjectCounts();
  for (int index : {BLACK_PEN, WHITE_BRUSH, SYSTEM_FONT}) EXPECT_FALSE(DeleteObject(GetStockObject(index)));
  EXPECT_EQ(GetObjectType(GetStockObject(BLACK_PEN)), OBJ_PEN);
  const GdiObjectTally d = GdiObjectCounts() - before;
  EXPECT_EQ(d.refusedDeletes, 3);
  EXPECT_EQ(d.pens.deleted + d.brushes.deleted + d.fonts.deleted, 0);
}

TEST(GdiDeviceHandles, NullAndDestroyedDevicesFailCleanly) {
  auto device = std::make_unique<CRecordingDevice>();
  const HDC gone = device.get();
  device.reset();
  const POINT pts[] = {{0, 0}, {1, 1}};
  const double xs[] = {0, 1};
  WCHAR face[8] = {u'x'};
  RECT r{1, 2, 3, 4};
  SIZE size{5, 6};
  TEXTMETRICW tm{};
  POINT previous{7, 8};

  for (HDC dc : {HDC(nullptr), gone}) {
    EXPECT_EQ(SelectObject(dc, GetStockObject(WHITE_PEN)), nullptr);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_PEN), nullptr);
    EXPECT_EQ(SetTextColor(dc, 1), CLR_INVALID);
    EXPECT_EQ(GetTextColor(dc), CLR_INVALID);
    EXPECT_EQ(SetBkColor(dc, 1), CLR_INVALID);
    EXPECT_EQ(GetBkColor(dc), CLR_INVALID);
    EXPECT_EQ(SetBkMode(dc, OPAQUE), 0);
    EXPECT_EQ(GetBkMode(dc), 0);
    EXPECT_EQ(SetTextAlign(dc, TA_CENTER), GDI_ERROR);
    EXPECT_EQ(GetTextAlign(dc), GDI_ERROR);
    EXPECT_FALSE(TextOutW(dc, 0, 0, u"a", 1));
    EXPECT_FALSE(GetTextExtentPoint32W(dc, u"a", 1, &size));
    EXPECT_FALSE(GetTextMetricsW(dc, &tm));
    EXPECT_EQ(GetTextFaceW(dc, 8, face), 0);
    EXPECT_EQ(GetClipBox(dc, &r), RGN_ERROR);
    EXPECT_FALSE(Polyline(dc, pts, 2));
    EXPECT_FALSE(Polygon(dc, pts, 2));
    EXPECT_FALSE(PolylineD(dc, xs, xs, 2));
    EXPECT_FALSE(PolygonD(dc, xs, xs, 2));
    EXPECT_FALSE(MoveToEx(dc, 1, 1, &previous));
    EXPECT_FALSE(LineTo(dc, 1, 1));
    EXPECT_FALSE(Rectangle(dc, 0, 0, 1, 1));
    EXPECT_FALSE(Ellipse(dc, 0, 0, 1, 1));
  }
  EXPECT_EQ(face[0], u'x');
  EXPECT_EQ(r.left, 1);
  EXPECT_EQ(size.cx, 5);
  EXPECT_EQ(previous.x, 7);
}

TEST(GdiCreatePen, TakesTheWidthMagnitudeAndMakesUnknownStylesSolid) {
  HPEN dashed = CreatePen(PS_DASH, -3, RGB(1, 2, 3));
  HPEN odd = CreatePen(9, 2, 0);
  HPEN negative = CreatePen(-1, 2, 0);
  HPEN huge = CreatePen(PS_SOLID, std::numeric_limits<int>::min(), 0);
  HPEN invisible = CreatePen(PS_NULL, 4, 0);

  const LOGPEN lp = PenOf(dashed);
  EXPECT_EQ(lp.lopnStyle, static_cast<UINT>(PS_DASH));
  EXPECT_EQ(lp.lopnWidth.x, 3);
  EXPECT_EQ(lp.lopnWidth.y, 0);
  EXPECT_EQ(lp.lopnColor, RGB(1, 2, 3));
  EXPECT_EQ(PenOf(odd).lopnStyle, static_cast<UINT>(PS_SOLID));
  EXPECT_EQ(PenOf(negative).lopnStyle, static_cast<UINT>(PS_SOLID));
  EXPECT_EQ(PenOf(huge).lopnWidth.x, std::numeric_limits<LONG>::max());
  // A null pen of its own, with the width asked for, deleted like any other.
  EXPECT_NE(invisible, GetStockObject(NULL_PEN));
  EXPECT_EQ(PenOf(invisible).lopnStyle, static_cast<UINT>(PS_NULL));
  EXPECT_EQ(PenOf(invisible).lopnWidth.x, 4);
  for (HPEN pen : {dashed, odd, negative, huge, invisible}) EXPECT_TRUE(DeleteObject(pen));
}

TEST(GdiGetObject, FollowsGdiBufferRules) {
  HPEN pen = CreatePen(PS_SOLID, 1, 0);
  HBRUSH brush = CreateSolidBrush(RGB(9, 8, 7));
  LOGFONTW lf = FontNamed(u"Courier", 10);
  HFONT font = CreateFontIndirectW(&lf);

  EXPECT_EQ(GetObjectW(pen, 0, nullptr), static_cast<int>(sizeof(LOGPEN)));
  EXPECT_EQ(GetObjectW(brush, 0, nullptr), static_cast<int>(sizeof(LOGBRUSH)));
  EXPECT_EQ(GetObjectW(font, 0, nullptr), static_cast<int>(sizeof(LOGFONTW)));

  LOGPEN lp{};
  EXPECT_EQ(GetObjectW(pen, sizeof lp - 1, &lp), 0);  // a pen is all or nothing
  EXPECT_EQ(GetObjectW(pen, 4 * sizeof lp, &lp), static_cast<int>(sizeof lp));

  LOGFONTW partial{};
  partial.lfWidth = 55;
  EXPECT_EQ(GetObjectW(font, sizeof(LONG), &partial), static_cast<int>(sizeof(LONG)));
  EXPECT_EQ(partial.lfHeight, 10);
  EXPECT_EQ(partial.lfWidth, 55);

  const LOGBRUSH lb = BrushOf(brush);
  EXPECT_EQ(lb.lbStyle, BS_SOLID);
  EXPECT_EQ(lb.lbColor, RGB(9, 8, 7));
  LOGBRUSH unused{};
  EXPECT_EQ(GetObjectW(brush, -1, &unused), 0);
  EXPECT_EQ(GetObjectW(nullptr, sizeof unused, &unused), 0);

  for (HGDIOBJ object : {HGDIOBJ(pen), HGDIOBJ(brush), HGDIOBJ(font)}) EXPECT_TRUE(DeleteObject(object));
}

TEST(GdiCreateFont, KeepsThirtyOneFaceUnitsAndATerminator) {
  EXPECT_EQ(CreateFontIndirectW(nullptr), nullptr);
  LOGFONTW lf{};
  lf.lfEscapement = 900;
  for (WCHAR& c : lf.lfFaceName) c = u'm';
  HFONT font = CreateFontIndirectW(&lf);
  LOGFONTW stored{};
  ASSERT_EQ(GetObjectW(font, sizeof stored, &stored), static_cast<int>(sizeof stored));
  EXPECT_EQ(std::u16string(stored.lfFaceName), std::u16string(31, u'm'));
  EXPECT_EQ(stored.lfEscapement, 900);
  EXPECT_TRUE(DeleteObject(font));
}

TEST(GdiAttributes, SettersReturnThePreviousValue) {
  CRecordingDevice dc;
  EXPECT_EQ(SetTextColor(&dc, RGB(1, 2, 3)), RGB(0, 0, 0));
  EXPECT_EQ(SetTextColor(&dc, RGB(4, 5, 6)), RGB(1, 2, 3));
  EXPECT_EQ(GetTextColor(&dc), RGB(4, 5, 6));
  EXPECT_EQ(SetBkColor(&dc, RGB(7, 8, 9)), RGB(255, 255, 255));
  EXPECT_EQ(GetBkColor(&dc), RGB(7, 8, 9));

  EXPECT_EQ(SetBkMode(&dc, TRANSPARENT), OPAQUE);
  EXPECT_EQ(SetBkMode(&dc, 3), 0);
  EXPECT_EQ(SetBkMode(&dc, 0), 0);
  EXPECT_EQ(GetBkMode(&dc), TRANSPARENT);

  EXPECT_EQ(SetTextAlign(&dc, 62), TA_LEFT | TA_TOP);
  EXPECT_EQ(GetTextAlign(&dc), 62u);  // bit 32 is no GDI flag, but it is kept
}

TEST(GdiText, MeasuresWithTheSelectedFont) {
  CRecordingDevice dc;
  SIZE size{};
  ASSERT_TRUE(GetTextExtentPoint32W(&dc, u"abc", 3, &size));  // stock system font, 16 high
  EXPECT_EQ(size.cx, 24);
  EXPECT_EQ(size.cy, 16);

  LOGFONTW lf = FontNamed(u"Arial", -20);
  lf.lfEscapement = 450;
  lf.lfWeight = FW_BOLD;
  HFONT font = CreateFontIndirectW(&lf);
  HGDIOBJ old = SelectObject(&dc, font);
  ASSERT_TRUE(GetTextExtentPoint32W(&dc, u"abcd", 3, &size));
  EXPECT_EQ(size.cx, 30);
  EXPECT_EQ(size.cy, 20);
  ASSERT_TRUE(GetTextExtentPoint32W(&dc, nullptr, 0, &size));
  EXPECT_EQ(size.cx, 0);
  EXPECT_EQ(size.cy, 20);
  EXPECT_FALSE(GetTextExtentPoint32W(&dc, u"a", -1, &size));
  EXPECT_FALSE(GetTextExtentPoint32W(&dc, nullptr, 2, &size));
  EXPECT_FALSE(GetTextExtentPoint32W(&dc, u"a", 1, nullptr));

  TEXTMETRICW tm{};
  ASSERT_TRUE(GetTextMetricsW(&dc, &tm));
  EXPECT_EQ(tm.tmHeight, 20);
  EXPECT_EQ(tm.tmAscent, 16);
  EXPECT_EQ(tm.tmWeight, FW_BOLD);
  EXPECT_FALSE(GetTextMetricsW(&dc, nullptr));

  SelectObject(&dc, old);
  EXPECT_TRUE(DeleteObject(font));
}

TEST(GdiText, FaceNameIsCopiedAsTheWideFormCopiesIt) {
  CRecordingDevice dc;
  LOGFONTW lf = FontNamed(u"Arial", 10);
  HFONT arial = CreateFontIndirectW(&lf);
  lf = FontNamed(u"", 10);
  HFONT nameless = CreateFontIndirectW(&lf);
  HGDIOBJ old = SelectObject(&dc, arial);

  // Results count the terminator; a count below 1 leaves the buffer alone.
  const std::tuple<int, int, std::u16string> cases[] = {
      {LF_FACESIZE, 6, u"Arial"}, {3, 3, u"Ar"}, {1, 1, u""}, {0, 0, u"x"}, {-5, 0, u"x"}};
  WCHAR face[LF_FACESIZE];
  for (const auto& [count, result, copied] : cases) {
    SCOPED_TRACE(count);
    face[0] = u'x';
    face[1] = 0;
    EXPECT_EQ(GetTextFaceW(&dc, count, face), result);
    EXPECT_EQ(std::u16string(face), copied);
  }
  EXPECT_EQ(GetTextFaceW(&dc, 0, nullptr), 6);

  SelectObject(&dc, nameless);
  EXPECT_EQ(GetTextFaceW(&dc, LF_FACESIZE, face), 1);
  EXPECT_EQ(face[0], u'\0');
  EXPECT_EQ(GetTextFaceW(&dc, 0, nullptr), 1);

  SelectObject(&dc, old);
  EXPECT_TRUE(DeleteObject(arial));
  EXPECT_TRUE(DeleteObject(nameless));
}

TEST(GdiClipBox, ReportsTheDeviceBoundsWithTopAsTheLargerY) {
  constexpr LONG kMin = std::numeric_limits<LONG>::min();
  constexpr LONG kMax = std::numeric_limits<LONG>::max();
  CRecordingDevice dc;
  RECT r{};
  EXPECT_EQ(GetClipBox(&dc, &r), SIMPLEREGION);
  EXPECT_EQ(std::vector<LONG>({r.left, r.top, r.right, r.bottom}), std::vector<LONG>({kMin, kMax, kMax, kMin}));

  dc.SetClipBox(RECT{-10, 50, 100, 0});
  EXPECT_EQ(GetClipBox(&dc, &r), SIMPLEREGION);
  EXPECT_EQ(std::vector<LONG>({r.left, r.top, r.right, r.bottom}), std::vector<LONG>({-10, 50, 100, 0}));

  dc.SetClipBox(RECT{0, 0, 100, 50});  // top below bottom: nothing visible
  EXPECT_EQ(GetClipBox(&dc, &r), NULLREGION);
  EXPECT_EQ(GetClipBox(&dc, nullptr), RGN_ERROR);
}

TEST(GdiObjectTable, CreationFailsCleanlyWhenTheTableIsFull) {
  std::vector<HPEN> pens;
  for (std::size_t i = 0; i <= vantrel1::kMaxGdiObjects; ++i) {
    HPEN pen = CreatePen(PS_SOLID, 1, 0);
    if (!pen) break;
    pens.push_back(pen);
  }
  EXPECT_LT(pens.size(), vantrel1::kMaxGdiObjects);
  EXPECT_GT(pens.size(), vantrel1::kMaxGdiObjects - 100);
  EXPECT_EQ(CreateSolidBrush(0), nullptr);
  LOGFONTW lf{};
  EXPECT_EQ(CreateFontIndirectW(&lf), nullptr);

  for (HPEN pen : pens) ASSERT_TRUE(DeleteObject(pen));
  HBRUSH brush = CreateSolidBrush(0);
  EXPECT_NE(brush, nullptr);
  EXPECT_TRUE(DeleteObject(brush));
}

TEST(GdiDevice, RoundsHalvesAwayFromZeroAndClampsToTheCoordinateRange) {
  EXPECT_EQ(GdiDevice::RoundCoordinate(2.5), 3);
  EXPECT_EQ(GdiDevice::RoundCoordinate(-2.5), -3);
  EXPECT_EQ(GdiDevice::RoundCoordinate(2.4999), 2);
  EXPECT_EQ(GdiDevice::RoundCoordinate(1e12), std::numeric_limits<LONG>::max());
  EXPECT_EQ(GdiDevice::RoundCoordinate(-std::numeric_limits<double>::infinity()), std::numeric_limits<LONG>::min());
  EXPECT_EQ(GdiDevice::RoundCoordinate(std::nan("")), 0);
}
