#pragma once
// HairlineRaster: antialiased lines one pixel wide and of one opaque colour, written
// straight into the pixels of a 32-bit image, as Wine's DIB driver draws into a bitmap's
// memory instead of going through a general renderer.
//
// A dash walk hands the painter device a quarter of a million short lines for one long
// road; Qt's raster engine strokes each through its general span machinery, which costs
// more than the walk that made them. Here each pixel column (or row, for a steep line)
// the line crosses is covered one pixel high, shared between the two pixels nearest to the
// line's centre in proportion to their overlap, and the end columns in proportion to how
// much of them the line spans (flat ends, as Qt's one-pixel lines have).
//
// Only the formats whose pixels are 0xAARRGGBB words with premultiplied (or no) alpha are
// drawn: RGB32 and ARGB32_Premultiplied. Pixels outside the image are never touched, and
// the work per line is bounded by the image's size whatever the coordinates.
#include <cstdint>

#include <QImage>
#include <QLineF>
#include <QPointF>

#include "platform/Export.h"

namespace vantrel1 {

class VANTREL1_QT_EXPORT HairlineRaster {
 public:
  // A raster over `image`'s pixels, or an inactive one (Active() false) when its format is
  // not one of the two above or it is null. The image must outlive the raster and keep its
  // pixels in place (no detaching copy) while lines are drawn.
  explicit HairlineRaster(QImage* image);
  HairlineRaster() = default;

  bool Active() const { return m_bits != nullptr; }
  static bool Supports(QImage::Format format);

  // Draws the line from `a` to `b` in image pixel coordinates (pixel (i, j) covers
  // [i, i+1] × [j, j+1]) in `colour`, whose alpha is ignored: the colour is opaque. A line
  // with a non-finite end draws nothing.
  void Draw(QPointF a, QPointF b, QRgb colour) { DrawSegment(a, b, true, true, colour); }
  // Draws the lines between consecutive points, each moved by `offset`. Only the first and
  // the last point have caps: at a vertex the two lines meet end to end and share the
  // column there instead of covering it twice.
  void DrawPolyline(const QPointF* points, qsizetype count, QPointF offset, QRgb colour);

 private:
  void DrawSegment(QPointF a, QPointF b, bool capA, bool capB, QRgb colour);
  // Walks the columns of a line from (u0, v0) to (u1, v1) whose run along the major axis u
  // is at least its rise along v; `transposed` swaps the axes back when writing pixels.
  void DrawMajor(double u0, double v0, double u1, double v1, bool transposed, bool cap0, bool cap1,
                 std::uint32_t colour);

  std::uint8_t* m_bits = nullptr;
  std::intptr_t m_stride = 0;
  int m_width = 0;
  int m_height = 0;
};

}  // namespace vantrel1
