#include "symbols/Symbol.h"

#include <algorithm>
#include <new>

#include "linestyle/ItemArray.h"
#include "platform/Gdi.h"
#include "suite/VantrelStrings.h"

IMPLEMENT_DYNCREATE(CSymbol, CObject)

namespace {

using vantrel1::DeleteItem;
using vantrel1::InUse;
using vantrel1::ItemAt;


// A new array of exactly count + 1 items: the used ones, then a copy of *item. The old
// array is freed only after the copy, so that `item` may point into it.
template <typename T>
int AddItem(T*& items, int& count, int& capacity, const T* item) {
  if (item == nullptr) return 0;
  const int used = InUse(count, capacity);
  T* grown = new (std::nothrow) T[static_cast<std::size_t>(used) + 1];
  if (grown == nullptr) return 0;
  for (int i = 0; i < used; ++i) grown[i] = items[i];
  grown[used] = *item;
  delete[] items;
  items = grown;
  capacity = used + 1;
  count = used + 1;
  return 1;
}

}  // namespace

CSymbol::CSymbol() : CSymbol(0, 0, 1.0) {}

CSymbol::CSymbol(int index, COLORREF colour, double scale) {
  Init();
  m_nIndex = index;
  m_dScale = scale;
  m_crColor = colour;
  if (IsOldSymbol(index)) MakeOwnPen();
  // Negative indices look their name up as well, at 20000 + index; the library's own
  // strings hold none there.
  if (index <= kOldSymbolCount)
    m_szDesc = VantrelLoadResString(nullptr, kNameStringBase + static_cast<UINT>(index), kMaxNameLength);
}

CSymbol::CSymbol(const CSymbol& other) : CObject(other) {
  Init();
  *this = other;
}

CSymbol::~CSymbol() { Delete(); }

void CSymbol::Init() {
  m_crColor = 0;
  m_dScale = 1.0;
  m_hPen = nullptr;
  m_bDeletePen = 0;
  m_lf = LOGFONTW{};
  m_bHaveFont = 0;
  m_szDesc.clear();
  m_pSymbolItems = nullptr;
  m_pTextItems = nullptr;
  m_nIndex = 0;
  m_nPenWidth = 1;
  m_nSymbol = 0;
  m_nText = 0;
  m_bRotatable = 1;
  m_bScalable = 1;
  m_nSymbolCapacity = 0;
  m_nTextCapacity = 0;
}

void CSymbol::Delete() {
  delete[] m_pSymbolItems;
  delete[] m_pTextItems;
  ReleasePen();
  Init();
}

void CSymbol::Serialize(CArchive&) {}

CSymbol& CSymbol::operator=(const CSymbol& src) {
  if (this == &src) return *this;
  Delete();
  m_crColor = src.m_crColor;
  m_dScale = src.m_dScale;
  m_nPenWidth = src.m_nPenWidth;
  if (src.m_bDeletePen)
    MakeOwnPen();
  else
    m_hPen = src.m_hPen;
  m_bHaveFont = src.m_bHaveFont;
  if (m_bHaveFont) m_lf = src.m_lf;
  m_szDesc = src.m_szDesc;
  for (int i = 0; i < src.UsedSymbols(); ++i) AddSymbolItem(&src.m_pSymbolItems[i]);
  for (int i = 0; i < src.UsedTexts(); ++i) AddTextItem(&src.m_pTextItems[i]);
  m_nIndex = src.m_nIndex;
  m_bRotatable = src.m_bRotatable;
  m_bScalable = src.m_bScalable;
  return *this;
}

int CSymbol::AddSymbolItem(const CSymbolItem* item) {
  return AddItem(m_pSymbolItems, m_nSymbol, m_nSymbolCapacity, item);
}

int CSymbol::AddTextItem(const CTextItem* item) { return AddItem(m_pTextItems, m_nText, m_nTextCapacity, item); }

int CSymbol::DeleteSymbolItem(int index) { return DeleteItem(m_pSymbolItems, m_nSymbol, m_nSymbolCapacity, index); }

int CSymbol::DeleteTextItem(int index) { return DeleteItem(m_pTextItems, m_nText, m_nTextCapacity, index); }

CSymbolItem* CSymbol::GetSymbolItem(int index) const {
  return ItemAt(m_pSymbolItems, m_nSymbol, m_nSymbolCapacity, index);
}

CTextItem* CSymbol::GetTextItem(int index) const { return ItemAt(m_pTextItems, m_nText, m_nTextCapacity, index); }

int CSymbol::UsedSymbols() const { return InUse(m_nSymbol, m_nSymbolCapacity); }

int CSymbol::UsedTexts() const { return InUse(m_nText, m_nTextCapacity); }

int CSymbol::IsComplexSymbol() const { return m_pSymbolItems != nullptr || m_pTextItems != nullptr ? 1 : 0; }

int CSymbol::CheckValid() const { return m_szDesc.empty() ? 0 : 1; }

void CSymbol::ReleasePen() {
  if (m_bDeletePen && m_hPen != nullptr) DeleteObject(m_hPen);
  if (m_bDeletePen) m_hPen = nullptr;
  m_bDeletePen = 0;
}

void CSymbol::MakeOwnPen() {
  m_hPen = CreatePen(PS_SOLID, m_nPenWidth, m_crColor);
  m_bDeletePen = m_hPen != nullptr ? 1 : 0;
}

void CSymbol::SetColor(COLORREF colour) {
  m_crColor = colour;
  ReleasePen();
  if (IsOldSymbol()) MakeOwnPen();
}

int CSymbol::SetDesc(const CStdStrW& desc) {
  // A description with a terminator inside could not be written out and read back whole.
  if (desc.find(u'\0') != CStdStrW::npos) return 0;
  m_szDesc = desc;
  return 1;
}

int CSymbol::SetDesc(const WCHAR* desc) {
  if (desc == nullptr) return 0;
  m_szDesc = CStdStrW(desc);
  return 1;
}

void CSymbol::SetFont(const LOGFONTW* font) {
  if (font == nullptr) {
    m_bHaveFont = 0;
    return;
  }
  m_lf = *font;
  m_bHaveFont = 1;
}
