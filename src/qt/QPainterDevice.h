#pragma once
// QPainterDevice: a device context that draws with a QPainter, onto an image, a PDF or SVG
// writer, a widget or any other QPaintDevice. Logical units (y growing upwards) reach the
// device through a PageMapping; text is measured and drawn with real fonts.
//
// How GDI's objects look here:
//   pens     PS_NULL draws no outline. A pen of width 0 is one device pixel wide; any other
//            width is in logical units, never thinner than one device pixel. Solid and
//            inside-frame pens have round caps and joins, as GDI's geometric pens. The dash
//            styles keep GDI's cosmetic patterns (dash 18-6, dot 3-3, dash-dot 9-6-3-6,
//            dash-dot-dot 9-3-3-3-3-3 pixels of a 96-dpi screen, so the same length on paper
//            at any resolution) with flat ends, but only for widths 0 and 1: a wider styled
//            pen draws solid, as on the Windows versions whose output the suite matches.
//            The limit is in logical units rather than device pixels so that a drawing looks
//            the same on screen, in a 600-dpi PNG and in a PDF. An inside-frame pen keeps a
//            rectangle's or ellipse's outline inside the bounding box.
//   brushes  BS_SOLID fills in its colour, BS_NULL does not fill. Polygons fill by the
//            alternate (even-odd) rule, GDI's default.
//   fonts    see DeviceFont.h. The escapement turns the baseline counter-clockwise as seen
//            on the page; glyphs stay upright relative to the baseline, never mirrored.
//   text     TA_LEFT/TA_CENTER/TA_RIGHT and TA_TOP/TA_BASELINE/TA_BOTTOM place the text's
//            cell (advance width by ascent + descent) relative to the reference point,
//            along the turned baseline; other bits are ignored. In OPAQUE mode that cell is
//            first filled with the background colour.
//
// The device stores no geometry beyond one exception: each primitive is clipped to a little
// more than the visible page and drawn at once, except that on an image painted by the
// device's own painter, consecutive one-segment lines wholly on the page with the same
// one-pixel solid pen (what a dash walk produces) are held and drawn together when
// anything else is drawn or the device ends. On an RGB32 or premultiplied ARGB32 image
// they are then written straight into its pixels (see HairlineRaster.h), otherwise handed
// to the painter in one call. Pens are held to four page diagonals in width and absurdly
// large text (an em beyond 2^20 device pixels) is not drawn; nothing of either could be
// told apart on the page.
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QPaintDevice>
#include <QPen>
#include <QPolygonF>
#include <QRectF>
#include <QTransform>

#include "platform/GdiDevice.h"
#include "qt/HairlineRaster.h"
#include "qt/PageMapping.h"

namespace vantrel1 {
class DeviceFont;
}

class VANTREL1_QT_EXPORT QPainterDevice : public GdiDevice {
 public:
  // Draws with a painter that is already active and stays owned by the caller, for example
  // in a widget's paint event. Its state is saved here and restored by the destructor; its
  // current coordinate system is taken as device pixels, and the visible page is the paint
  // device's rectangle.
  QPainterDevice(QPainter& painter, const PageMapping& mapping);
  ~QPainterDevice() override;

  // Devices with a painter of their own, begun on `target` with antialiasing on. Null when
  // the mapping is invalid, no QGuiApplication runs or the painter cannot begin.
  static std::unique_ptr<QPainterDevice> ForPaintDevice(QPaintDevice& target, const PageMapping& mapping);
  // The image's own resolution (dots per metre) gives the device pixels per millimetre.
  static std::unique_ptr<QPainterDevice> ForImage(QImage& image, const LogicalWindow& window,
                                                  double unitsPerMm = kDefaultUnitsPerMm);

  // Ends an own painter (a PDF or SVG writer writes its file then); later drawing calls
  // draw nothing. A borrowed painter is restored and left active. False when ending failed.
  bool End();
  bool IsActive() const;

  const PageMapping& Mapping() const { return m_mapping; }

  void DrawPolyline(const double* x, const double* y, int count) override;
  void DrawPolygon(const double* x, const double* y, int count) override;
  void DrawRectangle(int left, int top, int right, int bottom) override;
  void DrawEllipse(int left, int top, int right, int bottom) override;
  void DrawString(int x, int y, std::u16string_view text) override;
  SIZE TextExtent(const LOGFONTW& font, std::u16string_view text) const override;
  TEXTMETRICW TextMetrics(const LOGFONTW& font) const override;
  std::u16string FaceName(const LOGFONTW& font) const override;
  RECT ClipBox() const override;

 private:
  QPainterDevice(std::unique_ptr<QPainter> painter, const PageMapping& mapping);
  void Prepare();

  QPen CurrentPen() const;
  // The pen for the state's LOGPEN, made again only when that changes.
  const QPen& StatePen();
  bool HoldLine(const double* x, const double* y);
  void DrawHeldLines();
  double PenWidthPixels() const;
  QRectF DrawingBounds(double penWidth) const;
  void DrawShape(const QPolygonF& device, bool closed);
  QPolygonF ToDevice(const double* x, const double* y, int count) const;
  QRectF BoxToDevice(int left, int top, int right, int bottom) const;
  QTransform TextTransform(int x, int y, const vantrel1::DeviceFont& font) const;
  const vantrel1::DeviceFont& Font(const LOGFONTW& font) const;

  std::unique_ptr<QPainter> m_ownPainter;
  QPainter* m_painter = nullptr;
  PageMapping m_mapping;
  QTransform m_base;
  QRectF m_page;  // the visible device area
  bool m_ended = false;
  // Whether one-segment lines may be held (see above), decided when painting begins.
  bool m_holdLines = false;
  std::vector<QLineF> m_heldLines;
  QPen m_heldPen;
  // Draws held lines straight into the image when the painter would only blend them in.
  vantrel1::HairlineRaster m_raster;
  QPointF m_rasterOffset;
  QPen m_statePen;
  LOGPEN m_statePenKey{};
  bool m_statePenValid = false;
  // The last font resolved; drawing code measures and draws with one font many times.
  mutable std::unique_ptr<vantrel1::DeviceFont> m_font;
  mutable LOGFONTW m_fontKey{};
};
