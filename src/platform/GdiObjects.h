#pragma once
// Pens, brushes and fonts: small immutable records behind opaque handles, as in GDI.
//
// A handle is never a pointer to the object. It encodes a slot of a process-wide table and
// the slot's generation, so a null, stale or made-up handle is looked up and refused instead
// of being dereferenced, and a handle whose object was deleted never reaches the object that
// later reuses its slot. Like the GDI of the suite's Windows programs, the table belongs to
// the user-interface thread: it takes no locks.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/Types.h"

struct LOGPEN {
  UINT lopnStyle;
  POINT lopnWidth;  // x is the width; y is unused and 0
  COLORREF lopnColor;
};

struct LOGBRUSH {
  UINT lbStyle;
  COLORREF lbColor;
  UINT_PTR lbHatch;
};

// Brush styles.
constexpr UINT BS_SOLID = 0;
constexpr UINT BS_NULL = 1;
constexpr UINT BS_HOLLOW = BS_NULL;

// Object types (GetObjectType, GetCurrentObject).
constexpr DWORD OBJ_PEN = 1;
constexpr DWORD OBJ_BRUSH = 2;
constexpr DWORD OBJ_FONT = 6;

// Stock objects (GetStockObject).
constexpr int WHITE_BRUSH = 0;
constexpr int LTGRAY_BRUSH = 1;
constexpr int GRAY_BRUSH = 2;
constexpr int DKGRAY_BRUSH = 3;
constexpr int BLACK_BRUSH = 4;
constexpr int NULL_BRUSH = 5;
constexpr int HOLLOW_BRUSH = NULL_BRUSH;
constexpr int WHITE_PEN = 6;
constexpr int BLACK_PEN = 7;
constexpr int NULL_PEN = 8;
constexpr int OEM_FIXED_FONT = 10;
constexpr int ANSI_FIXED_FONT = 11;
constexpr int ANSI_VAR_FONT = 12;
constexpr int SYSTEM_FONT = 13;
constexpr int DEVICE_DEFAULT_FONT = 14;
constexpr int SYSTEM_FIXED_FONT = 16;
constexpr int DEFAULT_GUI_FONT = 17;

// Font pitch and family (LOGFONTW::lfPitchAndFamily).
constexpr BYTE DEFAULT_PITCH = 0;
constexpr BYTE FIXED_PITCH = 1;
constexpr BYTE VARIABLE_PITCH = 2;
constexpr BYTE FF_DONTCARE = 0x00;
constexpr BYTE FF_ROMAN = 0x10;
constexpr BYTE FF_SWISS = 0x20;
constexpr BYTE FF_MODERN = 0x30;

// How many GDI objects the process has made and destroyed, per kind. Stock objects are
// not counted. Tests take the difference of two readings around a draw call to prove that
// it deleted every object it created.
struct GdiObjectTally {
  struct Kind {
    std::int64_t created = 0;
    std::int64_t deleted = 0;
    std::int64_t Live() const { return created - deleted; }
  };
  Kind pens;
  Kind brushes;
  Kind fonts;
  // DeleteObject calls that were refused: a stock object, an object still selected into a
  // device, or a handle that names no live object.
  std::int64_t refusedDeletes = 0;

  std::int64_t Live() const { return pens.Live() + brushes.Live() + fonts.Live(); }
};

VANTREL1_EXPORT GdiObjectTally operator-(const GdiObjectTally& after, const GdiObjectTally& before);

// The process-wide tally at this moment.
VANTREL1_EXPORT GdiObjectTally GdiObjectCounts();

namespace vantrel1 {

enum class GdiKind : BYTE { None = 0, Pen = OBJ_PEN, Brush = OBJ_BRUSH, Font = OBJ_FONT };

// At most this many objects, stock objects included, live at once; creation fails with a
// null handle beyond it, as GDI fails when a process exhausts its handle quota.
constexpr std::size_t kMaxGdiObjects = 0x10000;

class GdiObjectTable {
 public:
  static GdiObjectTable& Instance();

  HGDIOBJ Add(const LOGPEN& pen);
  HGDIOBJ Add(const LOGBRUSH& brush);
  HGDIOBJ Add(const LOGFONTW& font);
  HGDIOBJ Stock(int index) const;

  GdiKind KindOf(HGDIOBJ handle) const;
  const LOGPEN* Pen(HGDIOBJ handle) const;
  const LOGBRUSH* Brush(HGDIOBJ handle) const;
  const LOGFONTW* Font(HGDIOBJ handle) const;

  // Devices report what they have selected, so that a selected object is not deleted.
  void Selected(HGDIOBJ handle);
  void Deselected(HGDIOBJ handle);

  BOOL Delete(HGDIOBJ handle);
  const GdiObjectTally& Tally() const { return m_tally; }

 private:
  struct Slot {
    GdiKind kind = GdiKind::None;
    bool stock = false;
    std::uintptr_t generation = 0;
    unsigned selections = 0;
    LOGPEN pen{};
    LOGBRUSH brush{};
    LOGFONTW font{};
  };

  GdiObjectTable();
  HGDIOBJ Insert(const Slot& slot);
  void AddStock(int index, const Slot& slot);
  Slot* Find(HGDIOBJ handle);
  const Slot* Find(HGDIOBJ handle) const;
  GdiObjectTally::Kind* TallyOf(GdiKind kind);

  std::vector<Slot> m_slots;
  std::vector<std::uint32_t> m_free;
  HGDIOBJ m_stock[DEFAULT_GUI_FONT + 1] = {};
  GdiObjectTally m_tally;
};

}  // namespace vantrel1
