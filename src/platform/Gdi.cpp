#include "platform/Gdi.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

using vantrel1::GdiDeviceAccess;
using vantrel1::GdiKind;
using vantrel1::GdiObjectTable;
using vantrel1::LiveDevice;

namespace {

GdiObjectTable& Table() { return GdiObjectTable::Instance(); }

GdiDcState* StateOf(HDC hdc) {
  GdiDevice* dc = LiveDevice(hdc);
  return dc ? &GdiDeviceAccess::State(*dc) : nullptr;
}

// Moves a device's selection of one kind from `held` to `object`.
template <typename Handle, typename Record>
HGDIOBJ Reselect(Handle& held, Record& copy, HGDIOBJ object, const Record& record) {
  const HGDIOBJ previous = held;
  Table().Selected(object);
  Table().Deselected(previous);
  held = static_cast<Handle>(object);
  copy = record;
  return previous;
}

bool ValidText(LPCWSTR text, int count) { return count == 0 || (count > 0 && text); }

std::u16string_view TextView(LPCWSTR text, int count) {
  return count > 0 ? std::u16string_view(text, static_cast<std::size_t>(count)) : std::u16string_view();
}

bool ValidPoints(const void* x, const void* y, int count) { return x && y && count >= 2; }

struct Coordinates {
  std::vector<double> x;
  std::vector<double> y;
};

Coordinates Widen(const POINT* points, int count) {
  Coordinates c;
  c.x.reserve(static_cast<std::size_t>(count));
  c.y.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    c.x.push_back(points[i].x);
    c.y.push_back(points[i].y);
  }
  return c;
}

int CopyObject(const void* record, int recordSize, int size, void* buffer, bool whole) {
  if (!buffer) return recordSize;
  if (size <= 0 || (whole && size < recordSize)) return 0;
  const int n = std::min(size, recordSize);
  std::memcpy(buffer, record, static_cast<std::size_t>(n));
  return n;
}

}  // namespace

HPEN CreatePen(int style, int width, COLORREF color) {
  if (style < PS_SOLID || style > PS_INSIDEFRAME) style = PS_SOLID;
  const LONG magnitude = width == std::numeric_limits<int>::min()
                             ? std::numeric_limits<LONG>::max()
                             : static_cast<LONG>(width < 0 ? -width : width);
  const LOGPEN pen{static_cast<UINT>(style), POINT{magnitude, 0}, color};
  return static_cast<HPEN>(Table().Add(pen));
}

HBRUSH CreateSolidBrush(COLORREF color) {
  return static_cast<HBRUSH>(Table().Add(LOGBRUSH{BS_SOLID, color, 0}));
}

HFONT CreateFontIndirectW(const LOGFONTW* font) {
  if (!font) return nullptr;
  LOGFONTW copy = *font;
  const auto end = std::find(copy.lfFaceName, copy.lfFaceName + LF_FACESIZE - 1, u'\0');
  std::fill(end, copy.lfFaceName + LF_FACESIZE, u'\0');
  return static_cast<HFONT>(Table().Add(copy));
}

HGDIOBJ GetStockObject(int index) { return Table().Stock(index); }

HGDIOBJ SelectObject(HDC hdc, HGDIOBJ object) {
  GdiDcState* s = StateOf(hdc);
  if (!s) return nullptr;
  switch (Table().KindOf(object)) {
    case GdiKind::Pen: return Reselect(s->hPen, s->pen, object, *Table().Pen(object));
    case GdiKind::Brush: return Reselect(s->hBrush, s->brush, object, *Table().Brush(object));
    case GdiKind::Font: return Reselect(s->hFont, s->font, object, *Table().Font(object));
    case GdiKind::None: break;
  }
  return nullptr;
}

BOOL DeleteObject(HGDIOBJ object) { return Table().Delete(object); }

int GetObjectW(HGDIOBJ object, int size, void* buffer) {
  if (const LOGPEN* pen = Table().Pen(object))
    return CopyObject(pen, sizeof(LOGPEN), size, buffer, true);
  if (const LOGBRUSH* brush = Table().Brush(object))
    return CopyObject(brush, sizeof(LOGBRUSH), size, buffer, false);
  if (const LOGFONTW* font = Table().Font(object))
    return CopyObject(font, sizeof(LOGFONTW), size, buffer, false);
  return 0;
}

DWORD GetObjectType(HGDIOBJ object) { return static_cast<DWORD>(Table().KindOf(object)); }

HGDIOBJ GetCurrentObject(HDC hdc, UINT type) {
  const GdiDcState* s = StateOf(hdc);
  if (!s) return nullptr;
  switch (type) {
    case OBJ_PEN: return s->hPen;
    case OBJ_BRUSH: return s->hBrush;
    case OBJ_FONT: return s->hFont;
    default: return nullptr;
  }
}

COLORREF SetTextColor(HDC hdc, COLORREF color) {
  GdiDcState* s = StateOf(hdc);
  if (!s) return CLR_INVALID;
  return std::exchange(s->textColor, color);
}

COLORREF GetTextColor(HDC hdc) {
  const GdiDcState* s = StateOf(hdc);
  return s ? s->textColor : CLR_INVALID;
}

COLORREF SetBkColor(HDC hdc, COLORREF color) {
  GdiDcState* s = StateOf(hdc);
  if (!s) return CLR_INVALID;
  return std::exchange(s->bkColor, color);
}

COLORREF GetBkColor(HDC hdc) {
  const GdiDcState* s = StateOf(hdc);
  return s ? s->bkColor : CLR_INVALID;
}

int SetBkMode(HDC hdc, int mode) {
  GdiDcState* s = StateOf(hdc);
  if (!s || (mode != TRANSPARENT && mode != OPAQUE)) return 0;
  return std::exchange(s->bkMode, mode);
}

int GetBkMode(HDC hdc) {
  const GdiDcState* s = StateOf(hdc);
  return s ? s->bkMode : 0;
}

UINT SetTextAlign(HDC hdc, UINT align) {
  GdiDcState* s = StateOf(hdc);
  if (!s) return GDI_ERROR;
  return std::exchange(s->textAlign, align);
}

UINT GetTextAlign(HDC hdc) {
  const GdiDcState* s = StateOf(hdc);
  return s ? s->textAlign : GDI_ERROR;
}

BOOL TextOutW(HDC hdc, int x, int y, LPCWSTR text, int count) {
  GdiDevice* dc = LiveDevice(hdc);
  if (!dc || !ValidText(text, count)) return FALSE;
  if (count > 0) dc->DrawString(x, y, TextView(text, count));
  return TRUE;
}

BOOL GetTextExtentPoint32W(HDC hdc, LPCWSTR text, int count, SIZE* size) {
  const GdiDevice* dc = LiveDevice(hdc);
  if (!dc || !size || !ValidText(text, count)) return FALSE;
  *size = dc->TextExtent(dc->State().font, TextView(text, count));
  return TRUE;
}

BOOL GetTextMetricsW(HDC hdc, TEXTMETRICW* metrics) {
  const GdiDevice* dc = LiveDevice(hdc);
  if (!dc || !metrics) return FALSE;
  *metrics = dc->TextMetrics(dc->State().font);
  return TRUE;
}

int GetTextFaceW(HDC hdc, int count, LPWSTR face) {
  const GdiDevice* dc = LiveDevice(hdc);
  if (!dc) return 0;
  const std::u16string name = dc->FaceName(dc->State().font);
  if (!face) return static_cast<int>(name.size()) + 1;
  if (count < 1) return 0;
  const std::size_t n = std::min(name.size(), static_cast<std::size_t>(count) - 1);
  std::copy_n(name.data(), n, face);
  face[n] = u'\0';
  return static_cast<int>(n) + 1;
}

int GetClipBox(HDC hdc, RECT* rect) {
  const GdiDevice* dc = LiveDevice(hdc);
  if (!dc || !rect) return RGN_ERROR;
  *rect = dc->ClipBox();
  return rect->left < rect->right && rect->bottom < rect->top ? SIMPLEREGION : NULLREGION;
}

BOOL Polyline(HDC hdc, const POINT* points, int count) {
  GdiDevice* dc = LiveDevice(hdc);
  if (!dc || !ValidPoints(points, points, count)) return FALSE;
  const Coordinates c = Widen(points, count);
  dc->DrawPolyline(c.x.data(), c.y.data(), count);
  return TRUE;
}

BOOL Polygon(HDC hdc, const POINT* points, int count) {
  GdiDevice* dc = LiveDevice(hdc);
  if (!dc || !ValidPoints(points, points, count)) return FALSE;
  const Coordinates c = Widen(points, count);
  dc->DrawPolygon(c.x.data(), c.y.data(), count);
  return TRUE;
}

BOOL PolylineD(HDC hdc, const double* x, const double* y, int count) {
  GdiDevice* dc = LiveDevice(hdc);
  if (!dc || !ValidPoints(x, y, count)) return FALSE;
  dc->DrawPolyline(x, y, count);
  return TRUE;
}

BOOL PolygonD(HDC hdc, const double* x, const double* y, int count) {
  GdiDevice* dc = LiveDevice(hdc);
  if (!dc || !ValidPoints(x, y, count)) return FALSE;
  dc->DrawPolygon(x, y, count);
  return TRUE;
}

BOOL MoveToEx(HDC hdc, int x, int y, POINT* previous) {
  GdiDcState* s = StateOf(hdc);
  if (!s) return FALSE;
  if (previous) *previous = s->position;
  s->position = POINT{x, y};
  return TRUE;
}

BOOL LineTo(HDC hdc, int x, int y) {
  GdiDevice* dc = LiveDevice(hdc);
  if (!dc) return FALSE;
  GdiDcState& s = GdiDeviceAccess::State(*dc);
  const double xs[] = {static_cast<double>(s.position.x), static_cast<double>(x)};
  const double ys[] = {static_cast<double>(s.position.y), static_cast<double>(y)};
  dc->DrawPolyline(xs, ys, 2);
  s.position = POINT{x, y};
  return TRUE;
}

BOOL Rectangle(HDC hdc, int left, int top, int right, int bottom) {
  GdiDevice* dc = LiveDevice(hdc);
  if (!dc) return FALSE;
  dc->DrawRectangle(left, top, right, bottom);
  return TRUE;
}

BOOL Ellipse(HDC hdc, int left, int top, int right, int bottom) {
  GdiDevice* dc = LiveDevice(hdc);
  if (!dc) return FALSE;
  dc->DrawEllipse(left, top, right, bottom);
  return TRUE;
}
