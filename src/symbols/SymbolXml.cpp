// The XML form of a point symbol: child elements of the element the caller has opened
// for it, every value as element data.
#include <algorithm>
#include <new>
#include <string_view>

#include "linestyle/FontXml.h"
#include "linestyle/IndexedName.h"
#include "linestyle/ItemXml.h"
#include "markup/Markup.h"
#include "platform/StdStr.h"
#include "platform/WideCrt.h"
#include "symbols/Symbol.h"

namespace {

using vantrel1::AddItemElems;
using vantrel1::AddNumberElem;
using vantrel1::IndexedName;

// What a symbol's font element that a document lacks reads as.
LOGFONTW DefaultSymbolFont() {
  LOGFONTW lf{};
  lf.lfHeight = 12;
  std::u16string_view(u"Arial").copy(lf.lfFaceName, LF_FACESIZE - 1);
  return lf;
}

// An item whose record does not parse keeps what was parsed of it.
template <typename Item>
void ReadItems(CMarkup& xml, const WCHAR* prefix, Item* items, int count) {
  for (int i = 0; i < count; ++i) {
    const CStdStrW record = xml.GetDataStr(IndexedName(prefix, i), u"");
    if (!record.empty()) items[i].FromAscii(record.c_str());
  }
}

int StoredCount(int count) { return std::clamp(count, 0, CSymbol::kMaxStoredItems); }

}  // namespace

void CSymbol::SerializeXML(CMarkup* xml, int mode) {
  if (xml == nullptr) return;
  CMarkup& doc = *xml;
  if (mode == 1) {
    AddNumberElem(doc, u"COLOR", static_cast<int>(m_crColor));
    CStdStrW scale;
    scale.Format(u"%.12g", m_dScale);
    doc.AddElem(u"SCALE", scale.c_str());
    AddNumberElem(doc, u"PENWIDTH", m_nPenWidth);
    AddNumberElem(doc, u"DELETEPEN", m_bDeletePen);
    AddNumberElem(doc, u"NSYMBOL", UsedSymbols());
    AddNumberElem(doc, u"NTEXT", UsedTexts());
    AddNumberElem(doc, u"ISYMBOL", m_nIndex);
    AddNumberElem(doc, u"ROTATABLE", m_bRotatable);
    AddNumberElem(doc, u"SCALABLE", m_bScalable);
    doc.AddElem(u"DESC", m_szDesc.c_str());
    AddNumberElem(doc, u"B_FONT", m_bHaveFont);
    if (m_bHaveFont == 1) vantrel1::WriteFontXml(doc, m_lf);
    AddItemElems(doc, u"SYMBOLITEM", m_pSymbolItems, UsedSymbols());
    AddItemElems(doc, u"TEXTITEM", m_pTextItems, UsedTexts());
    return;
  }

  m_crColor = static_cast<COLORREF>(doc.GetDataInt(u"COLOR", 0));
  m_dScale = doc.GetDataDouble(u"SCALE", 1.0);
  m_nPenWidth = doc.GetDataInt(u"PENWIDTH", 0);
  // The flag is taken as stored, but no pen is made for it: SetColor does that.
  ReleasePen();
  m_bDeletePen = doc.GetDataInt(u"DELETEPEN", 0);
  const int nSymbol = StoredCount(doc.GetDataInt(u"NSYMBOL", 0));
  const int nText = StoredCount(doc.GetDataInt(u"NTEXT", 0));
  m_nIndex = doc.GetDataInt(u"ISYMBOL", 0);
  m_bRotatable = doc.GetDataInt(u"ROTATABLE", 0);
  m_bScalable = doc.GetDataInt(u"SCALABLE", 0);
  m_szDesc = doc.GetDataStr(u"DESC", u"");
  m_bHaveFont = doc.GetDataInt(u"B_FONT", 0);
  if (m_bHaveFont == 1) m_lf = vantrel1::ReadFontXml(doc, DefaultSymbolFont());

  ReplaceItemArrays(nSymbol, nText);
  ReadItems(doc, u"SYMBOLITEM", m_pSymbolItems, UsedSymbols());
  ReadItems(doc, u"TEXTITEM", m_pTextItems, UsedTexts());
}

// Arrays are made even for a count of 0, so a symbol read from a document counts as
// composite whatever it holds.
void CSymbol::ReplaceItemArrays(int nSymbol, int nText) {
  delete[] m_pSymbolItems;
  delete[] m_pTextItems;
  m_pSymbolItems = new (std::nothrow) CSymbolItem[static_cast<std::size_t>(nSymbol)];
  m_pTextItems = new (std::nothrow) CTextItem[static_cast<std::size_t>(nText)];
  m_nSymbolCapacity = m_nSymbol = m_pSymbolItems != nullptr ? nSymbol : 0;
  m_nTextCapacity = m_nText = m_pTextItems != nullptr ? nText : 0;
}
