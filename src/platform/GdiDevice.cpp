#include "platform/GdiDevice.h"

#include <cmath>
#include <unordered_set>

namespace vantrel1 {
namespace {

// Devices register themselves, so that an HDC is looked up before it is used and a
// handle of a destroyed device is refused rather than followed.
std::unordered_set<const GdiDevice*>& Devices() {
  static auto* devices = new std::unordered_set<const GdiDevice*>;
  return *devices;
}

}  // namespace

GdiDevice* LiveDevice(HDC hdc) {
  if (!hdc || !Devices().count(hdc)) return nullptr;
  return hdc;
}

}  // namespace vantrel1

GdiDevice::GdiDevice() {
  auto& table = vantrel1::GdiObjectTable::Instance();
  m_state.hPen = static_cast<HPEN>(table.Stock(BLACK_PEN));
  m_state.hBrush = static_cast<HBRUSH>(table.Stock(WHITE_BRUSH));
  m_state.hFont = static_cast<HFONT>(table.Stock(SYSTEM_FONT));
  m_state.pen = *table.Pen(m_state.hPen);
  m_state.brush = *table.Brush(m_state.hBrush);
  m_state.font = *table.Font(m_state.hFont);
  table.Selected(m_state.hPen);
  table.Selected(m_state.hBrush);
  table.Selected(m_state.hFont);
  vantrel1::Devices().insert(this);
}

GdiDevice::~GdiDevice() {
  vantrel1::Devices().erase(this);
  auto& table = vantrel1::GdiObjectTable::Instance();
  table.Deselected(m_state.hPen);
  table.Deselected(m_state.hBrush);
  table.Deselected(m_state.hFont);
}

LONG GdiDevice::RoundCoordinate(double value) {
  if (std::isnan(value)) return 0;
  if (value >= 2147483647.0) return 2147483647;
  if (value <= -2147483648.0) return -2147483647 - 1;
  return static_cast<LONG>(std::lround(value));
}
