#include "platform/GdiObjects.h"

#include <algorithm>
#include <iterator>

namespace vantrel1 {
namespace {

// Handle layout: bits 0-7 a fixed odd tag (no object address is odd, so a pointer passed
// where a handle belongs is refused outright), bits 8-23 the slot, the rest the slot's
// generation, which changes every time the slot is freed.
constexpr std::uintptr_t kTag = 0xA5;
constexpr unsigned kSlotShift = 8;
constexpr unsigned kGenerationShift = 24;
constexpr std::uintptr_t kSlotMask = 0xFFFF;
constexpr std::uintptr_t kGenerationMask = ~std::uintptr_t{0} >> kGenerationShift;
static_assert(kMaxGdiObjects == kSlotMask + 1);

HGDIOBJ Encode(std::size_t slot, std::uintptr_t generation) {
  const std::uintptr_t value = ((generation & kGenerationMask) << kGenerationShift) |
                               (static_cast<std::uintptr_t>(slot) << kSlotShift) | kTag;
  return reinterpret_cast<HGDIOBJ>(value);
}

std::uintptr_t Bits(HGDIOBJ handle) { return reinterpret_cast<std::uintptr_t>(handle); }

struct StockPen {
  int index;
  UINT style;
  COLORREF colour;
};

struct StockBrush {
  int index;
  UINT style;
  COLORREF colour;
};

struct StockFont {
  int index;
  LONG height;
  LONG weight;
  BYTE pitchAndFamily;
  const WCHAR* face;
};

// GDI's stock pens are one-unit cosmetic pens.
constexpr StockPen kStockPens[] = {
    {WHITE_PEN, PS_SOLID, RGB(255, 255, 255)},
    {BLACK_PEN, PS_SOLID, RGB(0, 0, 0)},
    {NULL_PEN, PS_NULL, RGB(0, 0, 0)},
};

constexpr StockBrush kStockBrushes[] = {
    {WHITE_BRUSH, BS_SOLID, RGB(255, 255, 255)},
    {LTGRAY_BRUSH, BS_SOLID, RGB(192, 192, 192)},
    {GRAY_BRUSH, BS_SOLID, RGB(128, 128, 128)},
    {DKGRAY_BRUSH, BS_SOLID, RGB(64, 64, 64)},
    {BLACK_BRUSH, BS_SOLID, RGB(0, 0, 0)},
    {NULL_BRUSH, BS_NULL, RGB(0, 0, 0)},
};

// The stock fonts keep the sizes and weights Windows gives them but name the DejaVu faces
// that every machine running the library has, so that a real device draws them as named.
constexpr StockFont kStockFonts[] = {
    // the font of a fresh device context: bold, 16 units
    {SYSTEM_FONT, 16, FW_BOLD, VARIABLE_PITCH | FF_SWISS, u"DejaVu Sans"},
    {DEVICE_DEFAULT_FONT, 16, FW_BOLD, VARIABLE_PITCH | FF_SWISS, u"DejaVu Sans"},
    // dialogs and controls: 8 points as a character height
    {DEFAULT_GUI_FONT, -11, FW_NORMAL, VARIABLE_PITCH | FF_SWISS, u"DejaVu Sans"},
    {ANSI_VAR_FONT, 12, FW_NORMAL, VARIABLE_PITCH | FF_SWISS, u"DejaVu Sans"},
    {ANSI_FIXED_FONT, 12, FW_NORMAL, FIXED_PITCH | FF_MODERN, u"DejaVu Sans Mono"},
    {OEM_FIXED_FONT, 12, FW_NORMAL, FIXED_PITCH | FF_MODERN, u"DejaVu Sans Mono"},
    {SYSTEM_FIXED_FONT, 16, FW_NORMAL, FIXED_PITCH | FF_MODERN, u"DejaVu Sans Mono"},
};

LOGFONTW MakeStockFont(const StockFont& row) {
  LOGFONTW font{};
  font.lfHeight = row.height;
  font.lfWeight = row.weight;
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfPitchAndFamily = row.pitchAndFamily;
  for (int i = 0; row.face[i] != 0 && i < LF_FACESIZE - 1; ++i) font.lfFaceName[i] = row.face[i];
  return font;
}

}  // namespace

GdiObjectTable& GdiObjectTable::Instance() {
  // Never destroyed: devices that outlive static destruction still find it.
  static GdiObjectTable* table = new GdiObjectTable;
  return *table;
}

GdiObjectTable::GdiObjectTable() {
  for (const StockPen& row : kStockPens) {
    Slot slot;
    slot.kind = GdiKind::Pen;
    slot.pen = LOGPEN{row.style, POINT{1, 0}, row.colour};
    AddStock(row.index, slot);
  }
  for (const StockBrush& row : kStockBrushes) {
    Slot slot;
    slot.kind = GdiKind::Brush;
    slot.brush = LOGBRUSH{row.style, row.colour, 0};
    AddStock(row.index, slot);
  }
  for (const StockFont& row : kStockFonts) {
    Slot slot;
    slot.kind = GdiKind::Font;
    slot.font = MakeStockFont(row);
    AddStock(row.index, slot);
  }
}

void GdiObjectTable::AddStock(int index, const Slot& slot) {
  Slot stock = slot;
  stock.stock = true;
  stock.generation = 1;
  m_slots.push_back(stock);
  m_stock[index] = Encode(m_slots.size() - 1, stock.generation);
}

HGDIOBJ GdiObjectTable::Insert(const Slot& slot) {
  std::size_t index;
  if (!m_free.empty()) {
    index = m_free.back();
    m_free.pop_back();
  } else if (m_slots.size() < kMaxGdiObjects) {
    index = m_slots.size();
    m_slots.emplace_back();
  } else {
    return nullptr;
  }
  Slot& target = m_slots[index];
  const std::uintptr_t generation = target.generation + 1;
  target = slot;
  target.generation = generation;
  ++TallyOf(slot.kind)->created;
  return Encode(index, generation);
}

HGDIOBJ GdiObjectTable::Add(const LOGPEN& pen) {
  Slot slot;
  slot.kind = GdiKind::Pen;
  slot.pen = pen;
  return Insert(slot);
}

HGDIOBJ GdiObjectTable::Add(const LOGBRUSH& brush) {
  Slot slot;
  slot.kind = GdiKind::Brush;
  slot.brush = brush;
  return Insert(slot);
}

HGDIOBJ GdiObjectTable::Add(const LOGFONTW& font) {
  Slot slot;
  slot.kind = GdiKind::Font;
  slot.font = font;
  return Insert(slot);
}

HGDIOBJ GdiObjectTable::Stock(int index) const {
  if (index < 0 || index >= static_cast<int>(std::size(m_stock))) return nullptr;
  return m_stock[index];
}

GdiObjectTable::Slot* GdiObjectTable::Find(HGDIOBJ handle) {
  const std::uintptr_t bits = Bits(handle);
  if ((bits & 0xFF) != kTag) return nullptr;
  const std::size_t index = (bits >> kSlotShift) & kSlotMask;
  if (index >= m_slots.size()) return nullptr;
  Slot& slot = m_slots[index];
  if (slot.kind == GdiKind::None) return nullptr;
  if ((slot.generation & kGenerationMask) != (bits >> kGenerationShift)) return nullptr;
  return &slot;
}

const GdiObjectTable::Slot* GdiObjectTable::Find(HGDIOBJ handle) const {
  return const_cast<GdiObjectTable*>(this)->Find(handle);
}

GdiKind GdiObjectTable::KindOf(HGDIOBJ handle) const {
  const Slot* slot = Find(handle);
  return slot ? slot->kind : GdiKind::None;
}

const LOGPEN* GdiObjectTable::Pen(HGDIOBJ handle) const {
  const Slot* slot = Find(handle);
  return slot && slot->kind == GdiKind::Pen ? &slot->pen : nullptr;
}

const LOGBRUSH* GdiObjectTable::Brush(HGDIOBJ handle) const {
  const Slot* slot = Find(handle);
  return slot && slot->kind == GdiKind::Brush ? &slot->brush : nullptr;
}

const LOGFONTW* GdiObjectTable::Font(HGDIOBJ handle) const {
  const Slot* slot = Find(handle);
  return slot && slot->kind == GdiKind::Font ? &slot->font : nullptr;
}

void GdiObjectTable::Selected(HGDIOBJ handle) {
  if (Slot* slot = Find(handle)) ++slot->selections;
}

void GdiObjectTable::Deselected(HGDIOBJ handle) {
  Slot* slot = Find(handle);
  if (slot && slot->selections > 0) --slot->selections;
}

BOOL GdiObjectTable::Delete(HGDIOBJ handle) {
  Slot* slot = Find(handle);
  if (!slot || slot->stock || slot->selections > 0) {
    ++m_tally.refusedDeletes;
    return FALSE;
  }
  ++TallyOf(slot->kind)->deleted;
  const std::uintptr_t generation = slot->generation;
  *slot = Slot{};
  slot->generation = generation;
  m_free.push_back(static_cast<std::uint32_t>(slot - m_slots.data()));
  return TRUE;
}

GdiObjectTally::Kind* GdiObjectTable::TallyOf(GdiKind kind) {
  switch (kind) {
    case GdiKind::Pen: return &m_tally.pens;
    case GdiKind::Brush: return &m_tally.brushes;
    case GdiKind::Font:
    case GdiKind::None: break;
  }
  return &m_tally.fonts;
}

}  // namespace vantrel1

GdiObjectTally operator-(const GdiObjectTally& after, const GdiObjectTally& before) {
  GdiObjectTally d;
  d.pens = {after.pens.created - before.pens.created, after.pens.deleted - before.pens.deleted};
  d.brushes = {after.brushes.created - before.brushes.created,
               after.brushes.deleted - before.brushes.deleted};
  d.fonts = {after.fonts.created - before.fonts.created, after.fonts.deleted - before.fonts.deleted};
  d.refusedDeletes = after.refusedDeletes - before.refusedDeletes;
  return d;
}

GdiObjectTally GdiObjectCounts() { return vantrel1::GdiObjectTable::Instance().Tally(); }
