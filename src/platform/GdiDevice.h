#pragma once
// GdiDevice: what an HDC points at. The GDI functions of platform/Gdi.h keep the device
// context's state here (selected objects, colours, modes, alignment, current position) and
// hand each primitive to the device, which only draws and measures. A device may read the
// whole state in force from State() while it draws.
//
// Coordinates are logical units with y growing upwards. The double-precision primitives
// carry the exact coordinates computed by clipping and dashing; a raster device rounds them
// (RoundCoordinate), a recording device keeps them.
#include <string>
#include <string_view>

#include "platform/GdiObjects.h"
#include "platform/Types.h"

struct GdiDcState {
  HPEN hPen = nullptr;
  HBRUSH hBrush = nullptr;
  HFONT hFont = nullptr;
  LOGPEN pen{};      // the selected objects' records, copied when they are selected
  LOGBRUSH brush{};  // (GDI objects never change after creation)
  LOGFONTW font{};
  COLORREF textColor = RGB(0, 0, 0);
  COLORREF bkColor = RGB(255, 255, 255);
  int bkMode = OPAQUE;
  UINT textAlign = TA_LEFT | TA_TOP | TA_NOUPDATECP;
  POINT position{0, 0};
};

namespace vantrel1 {
struct GdiDeviceAccess;
}

class VANTREL1_EXPORT GdiDevice {
 public:
  // A new device has GDI's defaults: BLACK_PEN, WHITE_BRUSH, SYSTEM_FONT, black text on an
  // opaque white background, left/top alignment.
  GdiDevice();
  // Releases its selections, so the objects it held may be deleted afterwards.
  virtual ~GdiDevice();
  GdiDevice(const GdiDevice&) = delete;
  GdiDevice& operator=(const GdiDevice&) = delete;

  const GdiDcState& State() const { return m_state; }

  // Primitives, each with at least two points. A polygon is closed by the device, filled
  // with the brush and outlined with the pen.
  virtual void DrawPolyline(const double* x, const double* y, int count) = 0;
  virtual void DrawPolygon(const double* x, const double* y, int count) = 0;
  // Bounding boxes given as in GDI: two corners, filled with the brush, outlined with the pen.
  virtual void DrawRectangle(int left, int top, int right, int bottom) = 0;
  virtual void DrawEllipse(int left, int top, int right, int bottom) = 0;
  // Text at a reference point, placed by the state's alignment and turned by the font's
  // escapement; opaque background when the mode is OPAQUE.
  virtual void DrawString(int x, int y, std::u16string_view text) = 0;

  // Measurement with a given font, unrotated.
  virtual SIZE TextExtent(const LOGFONTW& font, std::u16string_view text) const = 0;
  virtual TEXTMETRICW TextMetrics(const LOGFONTW& font) const = 0;
  // The face that the device really uses for the font.
  virtual std::u16string FaceName(const LOGFONTW& font) const = 0;
  // The visible bounds in logical units; top is the larger y.
  virtual RECT ClipBox() const = 0;

  // Nearest integer, halves away from zero, held within the 32-bit range; NaN gives 0.
  static LONG RoundCoordinate(double value);

 private:
  friend struct vantrel1::GdiDeviceAccess;
  GdiDcState m_state;
};

namespace vantrel1 {

// The door through which the GDI functions change a device's state. Not for devices.
struct GdiDeviceAccess {
  static GdiDcState& State(GdiDevice& dc) { return dc.m_state; }
};

// The device behind a handle, or null when the handle is null or its device is gone.
GdiDevice* LiveDevice(HDC hdc);

}  // namespace vantrel1
