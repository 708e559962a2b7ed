#pragma once
// The graphics device interface: GDI's functions with GDI's names and meaning, on a device
// context that is any GdiDevice (the recording device in tests, a QPainter device in the
// Qt library). Drawing code selects, restores and deletes pens, brushes and fonts exactly
// as it would on Windows.
//
// Every function refuses a null or stale device context or object handle with its error
// result (FALSE, 0, null, CLR_INVALID or GDI_ERROR as GDI does) and changes nothing.
// Logical y grows upwards: a RECT's top is its larger y.
#include "platform/GdiDevice.h"
#include "platform/GdiObjects.h"
#include "platform/Types.h"

constexpr COLORREF CLR_INVALID = 0xFFFFFFFFu;

// Region types returned by GetClipBox.
constexpr int RGN_ERROR = 0;
constexpr int NULLREGION = 1;
constexpr int SIMPLEREGION = 2;

// Objects. CreatePen takes the width's magnitude and makes any style other than the seven
// PS_ styles a solid pen, as GDI does. Unlike GDI, a PS_NULL request makes a new pen rather
// than handing out the stock NULL_PEN, so that every CreatePen is matched by a countable
// DeleteObject.
VANTREL1_EXPORT HPEN CreatePen(int style, int width, COLORREF color);
VANTREL1_EXPORT HBRUSH CreateSolidBrush(COLORREF color);
// The face name is kept up to 31 units and always terminated. Null gives null.
VANTREL1_EXPORT HFONT CreateFontIndirectW(const LOGFONTW* font);
// Stock objects are shared and never deleted. Unknown indices give null.
VANTREL1_EXPORT HGDIOBJ GetStockObject(int index);
// Selects a pen, brush or font and returns the one of that kind it replaces.
VANTREL1_EXPORT HGDIOBJ SelectObject(HDC hdc, HGDIOBJ object);
// FALSE without effect for a stock object, an object selected into a live device context,
// and a handle that names no live object.
VANTREL1_EXPORT BOOL DeleteObject(HGDIOBJ object);
// Copies the object's LOGPEN, LOGBRUSH or LOGFONTW; with a null buffer returns the size.
// A pen needs a buffer of a whole LOGPEN; a brush or font is copied up to `size` bytes.
// Returns the number of bytes copied, 0 on failure.
VANTREL1_EXPORT int GetObjectW(HGDIOBJ object, int size, void* buffer);
// OBJ_PEN, OBJ_BRUSH, OBJ_FONT, or 0 for a handle that names no live object.
VANTREL1_EXPORT DWORD GetObjectType(HGDIOBJ object);
VANTREL1_EXPORT HGDIOBJ GetCurrentObject(HDC hdc, UINT type);

// Attributes. Each setter returns the previous value.
VANTREL1_EXPORT COLORREF SetTextColor(HDC hdc, COLORREF color);
VANTREL1_EXPORT COLORREF GetTextColor(HDC hdc);
VANTREL1_EXPORT COLORREF SetBkColor(HDC hdc, COLORREF color);
VANTREL1_EXPORT COLORREF GetBkColor(HDC hdc);
// TRANSPARENT or OPAQUE; any other mode is refused with 0.
VANTREL1_EXPORT int SetBkMode(HDC hdc, int mode);
VANTREL1_EXPORT int GetBkMode(HDC hdc);
// The flags are stored as given, unknown bits included, so that a caller that forgets to
// take its own bits out before passing them on is seen in the recorded state.
VANTREL1_EXPORT UINT SetTextAlign(HDC hdc, UINT align);
VANTREL1_EXPORT UINT GetTextAlign(HDC hdc);

// Text. Counts are UTF-16 code units; a negative count, or a null text with a positive
// count, fails. The current position is not used or moved by text (TA_UPDATECP is kept as a
// flag only).
VANTREL1_EXPORT BOOL TextOutW(HDC hdc, int x, int y, LPCWSTR text, int count);
VANTREL1_EXPORT BOOL GetTextExtentPoint32W(HDC hdc, LPCWSTR text, int count, SIZE* size);
VANTREL1_EXPORT BOOL GetTextMetricsW(HDC hdc, TEXTMETRICW* metrics);
// As GDI's wide form: with a buffer, copies at most count - 1 units and a terminator and
// returns the units written including the terminator (1 for an empty face name; 0 when
// count < 1); with a null buffer returns the name's length plus 1.
VANTREL1_EXPORT int GetTextFaceW(HDC hdc, int count, LPWSTR face);

// SIMPLEREGION, NULLREGION for an empty box, RGN_ERROR for a bad handle or null rect.
VANTREL1_EXPORT int GetClipBox(HDC hdc, RECT* rect);

// Lines and shapes with the selected pen (and brush for closed shapes). Fewer than two
// points, or null arrays, are refused with FALSE and draw nothing.
VANTREL1_EXPORT BOOL Polyline(HDC hdc, const POINT* points, int count);
VANTREL1_EXPORT BOOL Polygon(HDC hdc, const POINT* points, int count);
// The same with exact coordinates, for clipped and dashed output.
VANTREL1_EXPORT BOOL PolylineD(HDC hdc, const double* x, const double* y, int count);
VANTREL1_EXPORT BOOL PolygonD(HDC hdc, const double* x, const double* y, int count);
VANTREL1_EXPORT BOOL MoveToEx(HDC hdc, int x, int y, POINT* previous);
// A two-point polyline from the current position, which then moves to (x, y).
VANTREL1_EXPORT BOOL LineTo(HDC hdc, int x, int y);
VANTREL1_EXPORT BOOL Rectangle(HDC hdc, int left, int top, int right, int bottom);
VANTREL1_EXPORT BOOL Ellipse(HDC hdc, int left, int top, int right, int bottom);
