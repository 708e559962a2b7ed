#pragma once
// How a drawing's logical units reach paper and device pixels, like GDI's metric mapping
// modes: a logical window (left, bottom, right, top, y growing upwards) is laid on the page
// with its top-left corner at the device's origin, at a fixed number of logical units per
// millimetre of paper, on a device of a given resolution. The classic mapping is 10 units
// per millimetre: a pen of width 1 is 0.1 mm wide.
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QSizeF>

#include "platform/Export.h"
#include "platform/Types.h"

constexpr double kDefaultUnitsPerMm = 10.0;

struct VANTREL1_QT_EXPORT LogicalWindow {
  double left = 0.0;
  double bottom = 0.0;
  double right = 0.0;
  double top = 0.0;

  // Finite, with right > left and top > bottom.
  bool IsValid() const;
  double Width() const { return right - left; }
  double Height() const { return top - bottom; }
};

class VANTREL1_QT_EXPORT PageMapping {
 public:
  // An invalid mapping: nothing maps through it.
  PageMapping() = default;
  // Invalid unless the window is valid and both scales are finite and positive.
  PageMapping(const LogicalWindow& window, double unitsPerMm, double dotsPerInch);

  bool IsValid() const { return m_devicePerUnit > 0.0; }
  const LogicalWindow& Window() const { return m_window; }
  double UnitsPerMm() const { return m_unitsPerMm; }
  double DotsPerInch() const { return m_dotsPerInch; }

  // Device pixels per logical unit.
  double DevicePerUnit() const { return m_devicePerUnit; }
  // Device pixels per pixel of a 96-dpi screen, the unit of GDI's cosmetic dash styles.
  double DevicePerScreenPixel() const { return m_dotsPerInch / 96.0; }

  QPointF ToDevice(double x, double y) const;
  QPointF ToLogical(const QPointF& device) const;

  // The window's size on paper, and in whole device pixels (rounded, at least 1 each way;
  // 0 by 0 for an invalid mapping or a size beyond 2^30 pixels).
  QSizeF PaperSizeMm() const;
  QSize DeviceSize() const;

  // The logical bounds of a device area, rounded outwards to whole units (a bound within a
  // millionth of a unit of a whole number is taken as that number), top the larger y.
  RECT LogicalBounds(const QRectF& deviceArea) const;

 private:
  LogicalWindow m_window;
  double m_unitsPerMm = 0.0;
  double m_dotsPerInch = 0.0;
  double m_devicePerUnit = 0.0;
};
