// Storage, numbering, lookup and editing of CSymbolTable. Loading and saving are in
// SymbolTablePersist.cpp.
#include "symbols/SymbolTable.h"

#include <algorithm>
#include <new>
#include <vector>

#include "suite/AppMessages.h"
#include "suite/VantrelStrings.h"

IMPLEMENT_SERIAL(CSymbolTable, CObject, 2)

namespace {

constexpr int kNameSize = 256;

// The smallest capacity reached from `capacity` in steps of CSymbolTable::kGrowStep that
// holds `n` entries.
int GrownCapacity(int capacity, int n) {
  capacity = std::max(capacity, 0);
  while (capacity < n) capacity += CSymbolTable::kGrowStep;
  return capacity;
}

}  // namespace

CSymbolTable::CSymbolTable() { Init(); }

CSymbolTable::CSymbolTable(const CSymbolTable& other) : CObject(other) {
  Init();
  *this = other;
}

CSymbolTable::~CSymbolTable() { Deallocate(); }

void CSymbolTable::Init() {
  m_pSymbols = nullptr;
  m_nCount = 0;
  m_nCapacity = 0;
}

int CSymbolTable::Used() const { return m_pSymbols != nullptr ? std::clamp(m_nCount, 0, m_nCapacity) : 0; }

int CSymbolTable::Allocate(int n) {
  Deallocate();
  m_nCapacity = GrownCapacity(m_nCapacity, n);
  m_pSymbols = new (std::nothrow) CSymbol[static_cast<std::size_t>(m_nCapacity)];
  return m_pSymbols != nullptr ? 1 : 0;
}

int CSymbolTable::Deallocate() {
  delete[] m_pSymbols;
  m_pSymbols = nullptr;
  return 1;
}

CSymbolTable& CSymbolTable::operator=(const CSymbolTable& other) {
  if (this == &other) return *this;
  const int count = other.Used();
  if (Allocate(count) == 0) {
    m_nCount = 0;
    return *this;
  }
  m_nCount = count;
  for (int i = 0; i < count; ++i) m_pSymbols[i] = other.m_pSymbols[i];
  return *this;
}

int CSymbolTable::operator==(CSymbolTable& /*other*/) { return 1; }

int CSymbolTable::AddSymbol(CSymbol& symbol, HWND /*owner*/) {
  if (m_nCount < 0) return -2;
  if (m_nCount >= kMaxSymbols) {
    AppWarning(VMSG_TABLE_FULL, nullptr, nullptr, MB_ICONEXCLAMATION);
    return -3;
  }
  // The entry goes straight in only while a slot stays spare after it; otherwise the
  // storage is rebuilt, and grows by 100 when the entry would not fit.
  if (m_pSymbols != nullptr && m_nCount + 1 < m_nCapacity) {
    m_pSymbols[m_nCount++] = symbol;
    return 1;
  }
  const int used = Used();
  std::vector<CSymbol> kept;
  try {
    kept.assign(m_pSymbols, m_pSymbols + used);
  } catch (const std::bad_alloc&) {
    return -1;
  }
  // `symbol` may be one of the entries about to be freed.
  CSymbol added(symbol);
  if (Allocate(used + 1) == 0) {
    m_nCount = 0;
    return -1;
  }
  for (int i = 0; i < used; ++i) m_pSymbols[i] = kept[static_cast<std::size_t>(i)];
  m_pSymbols[used] = added;
  m_nCount = used + 1;
  return m_nCount;
}

int CSymbolTable::DeleteSymbol(int index) {
  const int used = Used();
  if (used < 1) return -1;
  if (index < 0) return -2;
  for (int i = index; i + 1 < used; ++i) m_pSymbols[i] = m_pSymbols[i + 1];
  m_pSymbols[used - 1].Delete();
  m_nCount = used - 1;
  return m_nCount;
}

void CSymbolTable::DeleteSymbol(CSymbol* symbol) { delete symbol; }

int CSymbolTable::ShiftSymbol(int index, int direction) {
  const int used = Used();
  // Callers move by one place; any move that would leave the table is refused.
  const long long other = static_cast<long long>(index) + direction;
  if (used < 1 || index < 0 || index >= used || other < 0 || other >= used) return 0;
  CSymbol temp;
  temp = m_pSymbols[index];
  m_pSymbols[index] = m_pSymbols[other];
  m_pSymbols[other] = temp;
  return 1;
}

CSymbol* CSymbolTable::CreateSymbol(int number, COLORREF colour, double scale, int descOnly) {
  if (CSymbol::IsOldSymbol(number)) return new CSymbol(number, colour, scale);
  const CSymbol* entry = GetSymbolPtr(number);
  if (entry == nullptr) return new CSymbol(0, 0, 1.0);

  auto* symbol = new CSymbol(number, colour, scale);
  symbol->SetDesc(entry->GetDesc());
  if (descOnly) return symbol;
  *symbol = *entry;
  symbol->SetColor(colour);
  // A symbol that may not be scaled keeps the scale it was defined with.
  if (entry->m_bScalable == 1) symbol->SetScale(scale);
  return symbol;
}

CSymbol* CSymbolTable::GetSymbolPtr(int number) {
  return IsUserSymbol(number) ? &m_pSymbols[number - kFirstTableNumber] : nullptr;
}

int CSymbolTable::IsUserSymbol(int number) const {
  const long long index = static_cast<long long>(number) - kFirstTableNumber;
  return index >= 0 && index < Used() ? 1 : 0;
}

int CSymbolTable::NextUserSymbol(int number) const {
  if (number < -1) return -1;
  if (number < 1) return number + 1;
  // The old-style symbols 2 to 5 are not offered.
  if (number < 6) return 6;
  if (number < CSymbol::kOldSymbolCount) return number + 1;
  if (number < kFirstTableNumber) return kFirstTableNumber;
  return number - kFirstTableNumber < Used() - 1 ? number + 1 : -1;
}

int CSymbolTable::GetSymbolNumber(CStdStrW name) {
  for (int number = 0; number != -1; number = NextUserSymbol(number)) {
    CSymbol* symbol = CreateSymbol(number, 0, 1.0, 1);
    const bool same = name.CompareNoCase(symbol->GetDesc()) == 0;
    DeleteSymbol(symbol);
    if (same) return number;
  }
  return -1;
}

CStdStrW CSymbolTable::GetDesc(int number) {
  CSymbol* symbol = CreateSymbol(number, 0, 1.0, 1);
  const CStdStrW desc = symbol->GetDesc();
  DeleteSymbol(symbol);
  return desc;
}

CStdStrW CSymbolTable::GetSymbolNoneDesc() { return VantrelLoadResString(nullptr, kNoneNameId, kNameSize); }

int CSymbolTable::CheckValid() const {
  if (m_nCount > kMaxValidSymbols || m_pSymbols == nullptr) return 0;
  for (int i = 0; i < Used(); ++i)
    if (m_pSymbols[i].CheckValid() == 0) return 0;
  return 1;
}
