// The XML form of a line type: child elements of the element the caller has positioned
// the markup on, all values as element data. Writing adds COLOR, WIDTH, the three counts,
// the three capacities, HAVEFONT and DESC, the fourteen LF... font elements when there is
// a font, then LINEITEM<i>, SYMBOLITEM<i> and TEXTITEM<i> holding the items' text records.
#include <algorithm>
#include <string_view>

#include "linestyle/FontXml.h"
#include "linestyle/IndexedName.h"
#include "linestyle/ItemXml.h"
#include "linestyle/LineType.h"
#include "markup/Markup.h"
#include "platform/StdStr.h"
#include "platform/WideCrt.h"
#include "platform/WideFormat.h"

namespace {

using vantrel1::AddItemElems;
using vantrel1::AddNumberElem;
using vantrel1::IndexedName;

template <std::size_t N>
CStdStrW FixedText(const WCHAR (&field)[N]) {
  return CStdStrW(std::u16string_view(field, vantrel1::ArrayTextLength(field)));
}

template <typename Item>
void ReadItems(CMarkup& xml, const WCHAR* prefix, Item* items, int count) {
  for (int i = 0; i < count; ++i) items[i].FromAscii(xml.GetDataStr(IndexedName(prefix, i), u"").c_str());
}

// The count a document asks for, kept within the storage Allocate gave: a document whose
// NLINE exceeds its MAXLINE (or whose line type already had smaller storage) reads only
// the items that fit instead of writing past the array.
int CountWithin(int count, int capacity) { return std::clamp(count, 0, std::max(capacity, 0)); }

// From the last to the first, so that each removal leaves the indices still to be
// examined in place.
void RemoveEmptyLineItems(CLineType& line) {
  for (int i = CountWithin(line.m_nLine, line.m_nMaxLine) - 1; i >= 0; --i)
    if (line.m_pLineItems[i].IsEmpty()) line.DeleteLineItem(i);
}

}  // namespace

void CLineType::SerializeXML(CMarkup* xml, int store) {
  if (xml == nullptr) return;
  CMarkup& doc = *xml;
  if (store == 1) {
    AddNumberElem(doc, u"COLOR", static_cast<int>(m_crColor));
    AddNumberElem(doc, u"WIDTH", m_nPenWidth);
    AddNumberElem(doc, u"NLINE", m_nLine);
    AddNumberElem(doc, u"NSYMBOL", m_nSymbol);
    AddNumberElem(doc, u"NTEXT", m_nText);
    AddNumberElem(doc, u"MAXLINE", m_nMaxLine);
    AddNumberElem(doc, u"MAXSYMBOL", m_nMaxSymbol);
    AddNumberElem(doc, u"MAXTEXT", m_nMaxText);
    AddNumberElem(doc, u"HAVEFONT", m_bHaveFont);
    doc.AddElem(u"DESC", FixedText(m_szDesc).c_str());
    if (m_bHaveFont == 1) vantrel1::WriteFontXml(doc, m_lf);
    AddItemElems(doc, u"LINEITEM", m_pLineItems, CountWithin(m_nLine, m_nMaxLine));
    // Empty line items are written and only then dropped from the object (and again after
    // reading): documents keep them while the line type in memory loses them, deliberately.
    RemoveEmptyLineItems(*this);
    AddItemElems(doc, u"SYMBOLITEM", m_pSymbolItems, CountWithin(m_nSymbol, m_nMaxSymbol));
    AddItemElems(doc, u"TEXTITEM", m_pTextItems, CountWithin(m_nText, m_nMaxText));
    return;
  }

  m_crColor = static_cast<COLORREF>(doc.GetDataInt(u"COLOR", 0));
  m_nPenWidth = doc.GetDataInt(u"WIDTH", 0);
  const int nLine = doc.GetDataInt(u"NLINE", 0);
  const int nSymbol = doc.GetDataInt(u"NSYMBOL", 0);
  const int nText = doc.GetDataInt(u"NTEXT", 0);
  const int maxLine = doc.GetDataInt(u"MAXLINE", 0);
  const int maxSymbol = doc.GetDataInt(u"MAXSYMBOL", 0);
  const int maxText = doc.GetDataInt(u"MAXTEXT", 0);
  m_bHaveFont = doc.GetDataInt(u"HAVEFONT", 0);
  // Writers keep descriptions under 32 units; a longer one is cut to fit the field.
  lstrcpynW(m_szDesc, doc.GetDataStr(u"DESC", u"").c_str(), kDescSize);
  // A font element the document lacks reads as 0 (an empty face name).
  if (m_bHaveFont == 1) m_lf = vantrel1::ReadFontXml(doc, LOGFONTW{});

  // Capacities come from the MAX... elements alone; Allocate refuses absurd ones
  // (kMaxItems) and does nothing when the line type already has item storage.
  Allocate(maxLine, maxSymbol, maxText);
  m_nLine = CountWithin(nLine, m_nMaxLine);
  ReadItems(doc, u"LINEITEM", m_pLineItems, m_nLine);
  RemoveEmptyLineItems(*this);
  m_nSymbol = CountWithin(nSymbol, m_nMaxSymbol);
  ReadItems(doc, u"SYMBOLITEM", m_pSymbolItems, m_nSymbol);
  m_nText = CountWithin(nText, m_nMaxText);
  ReadItems(doc, u"TEXTITEM", m_pTextItems, m_nText);
}

