#pragma once
// Small pieces shared by the item drawing code: a GDI object owned by one draw call, and
// the tenths rule for values wider than an int.
#include <cmath>
#include <cstdint>

#include "platform/Gdi.h"

namespace vantrel1 {

// A pen, brush or font made for one draw call: selected into the device context on
// construction, and on destruction the previous object is selected back and the made one
// deleted. A null object (creation failed) is neither selected nor deleted.
class SelectedObject {
 public:
  SelectedObject(HDC dc, HGDIOBJ object) : m_dc(dc), m_object(object) {
    if (m_object != nullptr) m_previous = SelectObject(m_dc, m_object);
  }
  ~SelectedObject() {
    if (m_object == nullptr) return;
    if (m_previous != nullptr) SelectObject(m_dc, m_previous);
    DeleteObject(m_object);
  }
  SelectedObject(const SelectedObject&) = delete;
  SelectedObject& operator=(const SelectedObject&) = delete;

 private:
  HDC m_dc;
  HGDIOBJ m_object;
  HGDIOBJ m_previous = nullptr;
};

// The tenths rule (linestyle/Tenths.h) for a value computed wider than an int: rounded to
// single precision, then multiplied by the single-precision tenth. Values beyond the range
// of a float are held at its largest finite value, where a float conversion would be
// undefined.
inline double TenthsOf(double value) {
  constexpr double kFloatMax = 3.4028234663852886e38;
  if (std::isnan(value)) return value;
  const double held = std::fmax(-kFloatMax, std::fmin(kFloatMax, value));
  return static_cast<double>(static_cast<float>(held)) * static_cast<double>(0.1f);
}

inline double TenthsOf(std::int64_t value) {
  return static_cast<double>(static_cast<float>(value)) * static_cast<double>(0.1f);
}

// Whether trunc(value) is an int, so that the conversion is defined.
inline bool TruncatesToInt(double value) {
  return value > -2147483649.0 && value < 2147483648.0;
}

// size × a × b truncated toward zero as an int; sizes beyond the range are held at its
// ends and a product that is not a number gives 0.
inline LONG ScaledSize(LONG size, double a, double b) {
  const double v = static_cast<double>(size) * a * b;
  if (std::isnan(v)) return 0;
  if (v >= 2147483647.0) return 2147483647;
  if (v <= -2147483648.0) return -2147483647 - 1;
  return static_cast<LONG>(v);
}

}  // namespace vantrel1
