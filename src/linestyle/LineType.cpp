#include "linestyle/LineType.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <string>
#include <string_view>

#include "platform/Archive.h"
#include "linestyle/ItemArray.h"
#include "platform/Gdi.h"
#include "platform/WideCrt.h"
#include "platform/WideFormat.h"
#include "suite/PolylineClip.h"

IMPLEMENT_SERIAL(CLineType, CObject, 2)

namespace {

using vantrel1::DeleteItem;
using vantrel1::InUse;
using vantrel1::ItemAt;

template <typename T>
T* NewItems(int count) {
  if (count < 1 || count > CLineType::kMaxItems) return nullptr;
  return new (std::nothrow) T[static_cast<std::size_t>(count)];
}

// Appends a copy, growing the array by exactly one element when it is full. The old array
// is freed only after the copy: `item` may be one of its own items.
template <typename T>
int AddItem(T*& items, int& count, int& capacity, const T* item) {
  if (item == nullptr || count < 0 || count > capacity) return 0;
  if (count == capacity) {
    T* grown = NewItems<T>(capacity + 1);
    if (grown == nullptr) return 0;
    for (int i = 0; i < capacity; ++i) grown[i] = items[i];
    grown[count] = *item;
    delete[] items;
    items = grown;
    ++capacity;
  } else {
    items[count] = *item;
  }
  ++count;
  return 1;
}

template <typename T>
void CopyItems(T* to, int& toCount, int toCapacity, const T* from, int fromCount, int fromCapacity) {
  toCount = std::min(InUse(fromCount, fromCapacity), std::max(toCapacity, 0));
  for (int i = 0; i < toCount; ++i) to[i] = from[i];
}

[[noreturn]] void Refuse(const CArchive& ar) {
  AfxThrowArchiveException(CArchiveException::badIndex, ar.GetFileName().c_str());
}

void ReadText(CArchive& ar, WCHAR* field, int size) {
  std::u16string text;
  ar >> text;
  lstrcpynW(field, text.c_str(), size);
}

}  // namespace

CLineType::CLineType() { Init(); }

CLineType::CLineType(HGDIOBJ pen) {
  Init();
  m_hPen = static_cast<HPEN>(pen);
}

CLineType::CLineType(int nLine, int nSymbol, int nText) {
  Init();
  Allocate(nLine, nSymbol, nText);
}

CLineType::CLineType(const CLineType& other) : CObject(other) {
  Init();
  *this = other;
}

CLineType::~CLineType() {
  delete[] m_pLineItems;
  delete[] m_pSymbolItems;
  delete[] m_pTextItems;
}

void CLineType::Init() {
  m_hPen = nullptr;
  m_nPenWidth = 1;
  m_crColor = 0;
  m_nLine = m_nSymbol = m_nText = 0;
  m_nMaxLine = m_nMaxSymbol = m_nMaxText = 0;
  m_lf = LOGFONTW{};
  m_bHaveFont = 0;
  std::fill(m_szDesc, m_szDesc + kDescSize, u'\0');
  m_pLineItems = nullptr;
  m_pSymbolItems = nullptr;
  m_pTextItems = nullptr;
  m_nTextMode = 0;
}

void CLineType::Delete() {
  delete[] m_pLineItems;
  delete[] m_pSymbolItems;
  delete[] m_pTextItems;
  Init();
}

int CLineType::Allocate(int nLine, int nSymbol, int nText) {
  if (IsComplexLine()) return 0;
  if (nLine > 0) {
    m_pLineItems = NewItems<CLineItem>(nLine);
    if (m_pLineItems == nullptr) return 0;
    m_nMaxLine = nLine;
  }
  if (nSymbol > 0) {
    m_pSymbolItems = NewItems<CSymbolItem>(nSymbol);
    if (m_pSymbolItems == nullptr) {
      Delete();
      return 0;
    }
    m_nMaxSymbol = nSymbol;
  }
  if (nText < 1) return 1;
  m_pTextItems = NewItems<CTextItem>(nText);
  if (m_pTextItems == nullptr) {
    Delete();
    return 0;
  }
  m_nMaxText = nText;
  return 1;
}

int CLineType::AddLineItem(const CLineItem* item) { return AddItem(m_pLineItems, m_nLine, m_nMaxLine, item); }

int CLineType::AddSymbolItem(const CSymbolItem* item) {
  return AddItem(m_pSymbolItems, m_nSymbol, m_nMaxSymbol, item);
}

int CLineType::AddTextItem(const CTextItem* item) { return AddItem(m_pTextItems, m_nText, m_nMaxText, item); }

int CLineType::DeleteLineItem(int index) { return DeleteItem(m_pLineItems, m_nLine, m_nMaxLine, index); }

int CLineType::DeleteSymbolItem(int index) {
  return DeleteItem(m_pSymbolItems, m_nSymbol, m_nMaxSymbol, index);
}

int CLineType::DeleteTextItem(int index) { return DeleteItem(m_pTextItems, m_nText, m_nMaxText, index); }

CLineItem* CLineType::GetLineItem(int index) { return ItemAt(m_pLineItems, m_nLine, m_nMaxLine, index); }

CSymbolItem* CLineType::GetSymbolItem(int index) {
  return ItemAt(m_pSymbolItems, m_nSymbol, m_nMaxSymbol, index);
}

CTextItem* CLineType::GetTextItem(int index) { return ItemAt(m_pTextItems, m_nText, m_nMaxText, index); }

void CLineType::SetFont(const LOGFONTW* font) {
  if (font == nullptr) return;
  m_lf = *font;
  m_bHaveFont = 1;
}

int CLineType::SetDesc(const WCHAR* desc) {
  if (desc == nullptr) return 0;
  lstrcpynW(m_szDesc, desc, kDescSize);
  return 1;
}

int CLineType::IsComplexLine() const {
  return m_pLineItems != nullptr || m_pSymbolItems != nullptr || m_pTextItems != nullptr ? 1 : 0;
}

int CLineType::CheckValid() { return 1; }

// The colour, the pen and the text mode are not copied: the drawing cache gives each copy
// its own. A line type without item storage does not pass on its font either.
CLineType& CLineType::operator=(const CLineType& src) {
  if (this == &src) return *this;
  Delete();
  m_nPenWidth = src.m_nPenWidth;
  lstrcpynW(m_szDesc, src.m_szDesc, kDescSize);
  if (!src.IsComplexLine()) return *this;
  if (!Allocate(src.m_nMaxLine, src.m_nMaxSymbol, src.m_nMaxText)) return *this;
  CopyItems(m_pLineItems, m_nLine, m_nMaxLine, src.m_pLineItems, src.m_nLine, src.m_nMaxLine);
  CopyItems(m_pSymbolItems, m_nSymbol, m_nMaxSymbol, src.m_pSymbolItems, src.m_nSymbol, src.m_nMaxSymbol);
  CopyItems(m_pTextItems, m_nText, m_nMaxText, src.m_pTextItems, src.m_nText, src.m_nMaxText);
  if (src.m_bHaveFont != 0) {
    m_bHaveFont = src.m_bHaveFont;
    m_lf = src.m_lf;
  }
  return *this;
}

void CLineType::Draw(HDC dc, HDC attribDC, const double* x, const double* y, long n, RECT* clip, int fill) {
  HGDIOBJ previousPen = m_hPen != nullptr ? SelectObject(dc, m_hPen) : nullptr;
  if (m_nLine <= 0 && m_nSymbol < 1 && m_nText < 1) {
    PolylineClip(dc, x, y, n, clip, fill, &m_crColor);
  } else {
    for (int i = 0; i < UsedLines(); ++i) m_pLineItems[i].Draw(dc, m_crColor, x, y, n, clip);
    for (int i = 0; i < UsedSymbols(); ++i) {
      m_pSymbolItems[i].Draw(dc, m_crColor, x, y, n, clip, 1.0, 0.0);
    }
    if (m_nTextMode != 2) {
      const COLORREF colour = m_nTextMode == 1 ? RGB(255, 255, 255) : m_crColor;
      for (int i = 0; i < UsedTexts(); ++i) {
        const COLORREF previous = SetTextColor(dc, colour);
        m_pTextItems[i].Draw(dc, attribDC, x, y, n, GetFont(), clip, 1.0, 0.0);
        SetTextColor(dc, previous);
      }
    }
  }
  if (m_hPen != nullptr) SelectObject(dc, previousPen);
}

void CLineType::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << m_crColor << m_nPenWidth << m_nLine << m_nSymbol << m_nText << m_nMaxLine << m_nMaxSymbol
       << m_nMaxText << m_bHaveFont;
    ar << std::u16string_view(m_szDesc, vantrel1::ArrayTextLength(m_szDesc));
    if (m_bHaveFont == 1) SerializeFont(ar);
    ar << static_cast<std::int32_t>(m_hPen == nullptr ? 1 : 0);
    for (int i = 0; i < UsedLines(); ++i) m_pLineItems[i].Serialize(ar);
    for (int i = 0; i < UsedSymbols(); ++i) m_pSymbolItems[i].Serialize(ar);
    for (int i = 0; i < UsedTexts(); ++i) m_pTextItems[i].Serialize(ar);
    return;
  }

  Delete();
  int counts[3] = {};
  int capacities[3] = {};
  ar >> m_crColor >> m_nPenWidth >> counts[0] >> counts[1] >> counts[2] >> capacities[0] >> capacities[1] >>
      capacities[2] >> m_bHaveFont;
  ReadText(ar, m_szDesc, kDescSize);
  if (m_bHaveFont == 1) SerializeFont(ar);
  std::int32_t noPen = 0;  // a loaded line type never has a pen; the drawing cache gives it one
  ar >> noPen;
  for (int kind = 0; kind < 3; ++kind) {
    if (capacities[kind] > kMaxItems || counts[kind] < 0 || counts[kind] > std::max(capacities[kind], 0)) {
      Refuse(ar);
    }
  }
  if (!Allocate(capacities[0], capacities[1], capacities[2])) {
    AfxThrowArchiveException(CArchiveException::genericException, ar.GetFileName().c_str());
  }
  m_nLine = counts[0];
  m_nSymbol = counts[1];
  m_nText = counts[2];
  for (int i = 0; i < m_nLine; ++i) m_pLineItems[i].Serialize(ar);
  for (int i = 0; i < m_nSymbol; ++i) m_pSymbolItems[i].Serialize(ar);
  for (int i = 0; i < m_nText; ++i) m_pTextItems[i].Serialize(ar);
}

// The font's members in the alphabetical order of their names, as documents have always
// stored them.
void CLineType::SerializeFont(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << m_lf.lfCharSet << m_lf.lfClipPrecision << m_lf.lfEscapement;
    ar << std::u16string_view(m_lf.lfFaceName, vantrel1::ArrayTextLength(m_lf.lfFaceName));
    ar << m_lf.lfHeight << m_lf.lfItalic << m_lf.lfOrientation << m_lf.lfOutPrecision << m_lf.lfPitchAndFamily
       << m_lf.lfQuality << m_lf.lfStrikeOut << m_lf.lfUnderline << m_lf.lfWeight << m_lf.lfWidth;
    return;
  }
  ar >> m_lf.lfCharSet >> m_lf.lfClipPrecision >> m_lf.lfEscapement;
  ReadText(ar, m_lf.lfFaceName, LF_FACESIZE);
  ar >> m_lf.lfHeight >> m_lf.lfItalic >> m_lf.lfOrientation >> m_lf.lfOutPrecision >> m_lf.lfPitchAndFamily >>
      m_lf.lfQuality >> m_lf.lfStrikeOut >> m_lf.lfUnderline >> m_lf.lfWeight >> m_lf.lfWidth;
}

int CLineType::UsedLines() const { return InUse(m_nLine, m_pLineItems ? m_nMaxLine : 0); }
int CLineType::UsedSymbols() const { return InUse(m_nSymbol, m_pSymbolItems ? m_nMaxSymbol : 0); }
int CLineType::UsedTexts() const { return InUse(m_nText, m_pTextItems ? m_nMaxText : 0); }
