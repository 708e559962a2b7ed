// Drawable lines and their cache. A drawable line is a CLineType of its own that carries
// a pen in the requested colour; the table never draws with its own line types.
//
// Slots 0 … m_nCacheCount - 1 are occupied, the most recently inserted first. A slot is
// keyed by line number, colour and the cached line's text mode, and counts the holders of
// its line. A slot whose count has dropped to 0 keeps its line until it is evicted (the
// unreferenced slot inserted longest ago goes first) or purged, so that the next request
// for the same line costs no pen. DeleteCacheLine leaves a hole (null line, number 0)
// that lookups skip.
#include <new>

#include "linetable/LineTypeTable.h"
#include "platform/Gdi.h"
#include "platform/StringTable.h"

namespace {

constexpr int kWidthMedium = 6;  // simple line 5
constexpr int kWidthHeavy = 9;   // simple line 6

}  // namespace

void CLineTypeTable::FreeLine(CLineType* line) {
  if (line == nullptr) return;
  if (line->m_hPen != nullptr) DeleteObject(line->m_hPen);
  delete line;
}

CLineType* CLineTypeTable::BuildLine(int number, const COLORREF* color, int plain, int textMode) const {
  CLineType* line = new (std::nothrow) CLineType;
  if (line == nullptr) return nullptr;
  if (number < 0) {
    line->m_hPen = CreatePen(PS_NULL, 0, 0);
    return line;
  }
  if (color != nullptr) line->m_crColor = *color;
  if (number < kFirstSystemNumber) {
    LoadStringW(nullptr, kSimpleLineNameId + static_cast<UINT>(number), line->m_szDesc, CLineType::kDescSize);
    int style = number;
    int width = m_nDefaultWidth;
    if (number == 5 || number == 6) {
      style = PS_SOLID;
      width = number == 5 ? kWidthMedium : kWidthHeavy;
    }
    if (plain) width = 0;
    line->m_nPenWidth = width;
    line->m_hPen = CreatePen(style, width, color != nullptr ? *color : 0);
  } else if (!plain) {
    if (const CLineType* source = Resolve(number)) *line = *source;
    if (color != nullptr) {
      line->m_hPen = CreatePen(PS_SOLID, line->m_nPenWidth, *color);
      line->m_crColor = *color;  // the copy does not carry the colour
    }
  } else if (color != nullptr) {
    // A plain request for a line type is a bare solid pen of the default width.
    line->m_hPen = CreatePen(PS_SOLID, line->m_nPenWidth, *color);
  }
  line->m_nTextMode = textMode;
  return line;
}

CLineType* CLineTypeTable::CreateLine(int number, COLORREF* color, int plain, int useCache, int textMode) {
  if (useCache) {
    if (CLineType* cached = GetCacheLine(number, color, textMode)) return cached;
  }
  CLineType* line = BuildLine(number, color, plain, textMode);
  if (line != nullptr && useCache) AddCacheLine(number, color, line);
  return line;
}

void CLineTypeTable::DeleteLine(CLineType* line, int useCache) {
  if (line == nullptr) return;
  if (useCache && DecrementCache(line)) return;
  // A cached line given back without the cache is deleted as asked; its slot becomes a
  // hole so that the cache never reaches a deleted line.
  const int slot = FindCacheSlot(line);
  if (slot >= 0) {
    DeleteCacheLine(slot, 1);
    return;
  }
  FreeLine(line);
}

// Cache slots -----------------------------------------------------------------------------

// A line is given back mostly right after it was handed out, so the slot of the last hit
// or insertion is tried first. Slots hold distinct lines, so a confirmed hint is the slot
// the scan would find; a stale one (slots shifted or cleared since) just falls through.
int CLineTypeTable::FindCacheSlot(const CLineType* line) const {
  if (line == nullptr) return -1;
  const int hint = m_nLastCacheSlot;
  if (hint >= 0 && hint < m_nCacheCount && m_pCacheLine[hint] == line) return hint;
  for (int i = 0; i < m_nCacheCount; ++i)
    if (m_pCacheLine[i] == line) return i;
  return -1;
}

void CLineTypeTable::MoveCacheSlot(int from, int to) {
  m_pCacheLine[to] = m_pCacheLine[from];
  m_nCacheNumber[to] = m_nCacheNumber[from];
  m_crCacheColor[to] = m_crCacheColor[from];
  m_nCacheRef[to] = m_nCacheRef[from];
}

void CLineTypeTable::ClearCacheSlot(int slot) {
  m_pCacheLine[slot] = nullptr;
  m_nCacheNumber[slot] = -1;
  m_crCacheColor[slot] = 0;
  m_nCacheRef[slot] = 0;
}

CLineType* CLineTypeTable::GetCacheLine(int number, COLORREF* color, int textMode) {
  if (m_nCacheCount < 1 || color == nullptr) return nullptr;
  const COLORREF colour = *color;
  // The colour tells slots apart best and lies in a flat array; the line is looked at last.
  for (int i = 0; i < m_nCacheCount; ++i) {
    if (m_crCacheColor[i] != colour || m_nCacheNumber[i] != number) continue;
    CLineType* line = m_pCacheLine[i];
    if (line != nullptr && line->m_nTextMode == textMode) {
      ++m_nCacheRef[i];
      m_nLastCacheSlot = i;
      return line;
    }
  }
  return nullptr;
}

void CLineTypeTable::AddCacheLine(int number, COLORREF* color, CLineType* line) {
  if (color == nullptr) return;
  int last = m_nCacheCount;  // the slot that the shift below fills
  if (m_nCacheCount < kCacheSize) {
    ++m_nCacheCount;
  } else {
    int victim = kCacheSize - 1;
    while (victim >= 0 && m_nCacheRef[victim] >= 1) --victim;
    // Every slot in use: the line is not cached and stays with the caller alone.
    if (victim < 0) return;
    FreeLine(m_pCacheLine[victim]);
    last = victim;
  }
  for (int i = last; i > 0; --i) MoveCacheSlot(i - 1, i);
  m_pCacheLine[0] = line;
  m_nCacheNumber[0] = number;
  m_crCacheColor[0] = *color;
  m_nCacheRef[0] = 1;
  m_nLastCacheSlot = 0;
}

int CLineTypeTable::DecrementCache(CLineType* line) {
  const int slot = FindCacheSlot(line);
  if (slot < 0) return 0;
  --m_nCacheRef[slot];
  return 1;
}

int CLineTypeTable::IsCached(CLineType* line) { return FindCacheSlot(line) >= 0 ? 1 : 0; }

int CLineTypeTable::DeleteCacheLine(int slot, int force) {
  if (slot < 0 || slot >= kCacheSize) return 0;
  if (m_nCacheRef[slot] > 0 && !force) return 0;
  FreeLine(m_pCacheLine[slot]);
  m_pCacheLine[slot] = nullptr;
  m_nCacheNumber[slot] = 0;
  m_crCacheColor[slot] = 0;
  m_nCacheRef[slot] = 0;
  return 1;
}

void CLineTypeTable::DeleteUnusedCacheLines() {
  int i = 0;
  while (i < m_nCacheCount) {
    if (m_nCacheRef[i] >= 1) {
      ++i;
      continue;
    }
    FreeLine(m_pCacheLine[i]);  // a hole has no line to free
    for (int j = i + 1; j < m_nCacheCount; ++j) MoveCacheSlot(j, j - 1);
    --m_nCacheCount;
    ClearCacheSlot(m_nCacheCount);
  }
}
