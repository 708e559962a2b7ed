#include "qt/PageMapping.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMmPerInch = 25.4;
constexpr double kMaxDevicePixels = 1073741824.0;  // 2^30 each way

bool Positive(double value) { return std::isfinite(value) && value > 0.0; }

LONG Saturate(double value) {
  if (!(value > -2147483648.0)) return -2147483647 - 1;
  if (value > 2147483647.0) return 2147483647;
  return static_cast<LONG>(value);
}

// A bound computed as left + width / scale lands a hair off a whole unit; rounding it
// outwards would widen the box by a unit that is not visible.
double Tolerance(double value) { return 1e-6 * std::max(1.0, std::fabs(value)); }
LONG Down(double value) { return Saturate(std::floor(value + Tolerance(value))); }
LONG Up(double value) { return Saturate(std::ceil(value - Tolerance(value))); }

}  // namespace

bool LogicalWindow::IsValid() const {
  return std::isfinite(left) && std::isfinite(bottom) && std::isfinite(right) && std::isfinite(top) &&
         right > left && top > bottom && std::isfinite(Width()) && std::isfinite(Height());
}

PageMapping::PageMapping(const LogicalWindow& window, double unitsPerMm, double dotsPerInch) {
  if (!window.IsValid() || !Positive(unitsPerMm) || !Positive(dotsPerInch)) return;
  const double devicePerUnit = dotsPerInch / kMmPerInch / unitsPerMm;
  if (!Positive(devicePerUnit)) return;
  m_window = window;
  m_unitsPerMm = unitsPerMm;
  m_dotsPerInch = dotsPerInch;
  m_devicePerUnit = devicePerUnit;
}

QPointF PageMapping::ToDevice(double x, double y) const {
  return QPointF((x - m_window.left) * m_devicePerUnit, (m_window.top - y) * m_devicePerUnit);
}

QPointF PageMapping::ToLogical(const QPointF& device) const {
  if (!IsValid()) return QPointF();
  return QPointF(m_window.left + device.x() / m_devicePerUnit, m_window.top - device.y() / m_devicePerUnit);
}

QSizeF PageMapping::PaperSizeMm() const {
  if (!IsValid()) return QSizeF();
  return QSizeF(m_window.Width() / m_unitsPerMm, m_window.Height() / m_unitsPerMm);
}

QSize PageMapping::DeviceSize() const {
  if (!IsValid()) return QSize();
  const double w = std::max(1.0, std::round(m_window.Width() * m_devicePerUnit));
  const double h = std::max(1.0, std::round(m_window.Height() * m_devicePerUnit));
  if (!(w <= kMaxDevicePixels && h <= kMaxDevicePixels)) return QSize();
  return QSize(static_cast<int>(w), static_cast<int>(h));
}

RECT PageMapping::LogicalBounds(const QRectF& deviceArea) const {
  if (!IsValid()) return RECT{0, 0, 0, 0};
  const QPointF topLeft = ToLogical(deviceArea.topLeft());
  const QPointF bottomRight = ToLogical(deviceArea.bottomRight());
  return RECT{Down(topLeft.x()), Up(topLeft.y()), Up(bottomRight.x()), Down(bottomRight.y())};
}
