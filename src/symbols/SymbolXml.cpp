// The XML form of a point symbol: child elements of the element the caller has opened
// for it, every value as element data.
#include <algorithm>
#include <new>
#include <string_view>

#include "linestyle/IndexedName.h"
#include "markup/Markup.h"
#include "platform/StdStr.h"
#include "platform/WideCrt.h"
#include "symbols/Symbol.h"

namespace {

using vantrel1::DecimalText;
using vantrel1::IndexedName;

struct FontField {
  const WCHAR* name;
  LONG LOGFONTW::*longField;
  BYTE LOGFONTW::*byteField;
};

// Alphabetical, as documents have always stored them; LFFACE is text and stands apart.
constexpr FontField kFontFields[] = {
    {u"LFCHAR", nullptr, &LOGFONTW::lfCharSet},
    {u"LFCLIP", nullptr, &LOGFONTW::lfClipPrecision},
    {u"LFESCA", &LOGFONTW::lfEscapement, nullptr},
    {u"LFFACE", nullptr, nullptr},
    {u"LFHEIG", &LOGFONTW::lfHeight, nullptr},
    {u"LFITAL", nullptr, &LOGFONTW::lfItalic},
    {u"LFORIE", &LOGFONTW::lfOrientation, nullptr},
    {u"LFOUTP", nullptr, &LOGFONTW::lfOutPrecision},
    {u"LFPITC", nullptr, &LOGFONTW::lfPitchAndFamily},
    {u"LFQUAL", nullptr, &LOGFONTW::lfQuality},
    {u"LFSTRI", nullptr, &LOGFONTW::lfStrikeOut},
    {u"LFUNDE", nullptr, &LOGFONTW::lfUnderline},
    {u"LFWEIG", &LOGFONTW::lfWeight, nullptr},
    {u"LFWIDT", &LOGFONTW::lfWidth, nullptr},
};

// What a symbol's font element that a document lacks reads as.
LOGFONTW DefaultSymbolFont() {
  LOGFONTW lf{};
  lf.lfHeight = 12;
  std::u16string_view(u"Arial").copy(lf.lfFaceName, LF_FACESIZE - 1);
  return lf;
}

CStdStrW FaceName(const LOGFONTW& lf) {
  const auto* end = std::find(std::begin(lf.lfFaceName), std::end(lf.lfFaceName), u'\0');
  return CStdStrW(std::u16string_view(lf.lfFaceName, static_cast<std::size_t>(end - lf.lfFaceName)));
}

void AddNumber(CMarkup& xml, const WCHAR* name, int value) { xml.AddElem(name, DecimalText(value).c_str()); }

void WriteFont(CMarkup& xml, const LOGFONTW& lf) {
  for (const FontField& field : kFontFields) {
    if (field.longField != nullptr)
      AddNumber(xml, field.name, lf.*field.longField);
    else if (field.byteField != nullptr)
      AddNumber(xml, field.name, lf.*field.byteField);
    else
      xml.AddElem(field.name, FaceName(lf).c_str());
  }
}

LOGFONTW ReadFont(CMarkup& xml) {
  LOGFONTW lf = DefaultSymbolFont();
  for (const FontField& field : kFontFields) {
    if (field.longField != nullptr)
      lf.*field.longField = xml.GetDataInt(field.name, lf.*field.longField);
    else if (field.byteField != nullptr)
      lf.*field.byteField = static_cast<BYTE>(xml.GetDataInt(field.name, lf.*field.byteField));
    else
      lstrcpynW(lf.lfFaceName, xml.GetDataStr(field.name, FaceName(lf)).c_str(), LF_FACESIZE);
  }
  return lf;
}

// A record that does not fit its buffer is written as an empty element, which reads back
// as an item at its defaults, like a missing one.
template <typename Item>
void AddItems(CMarkup& xml, const WCHAR* prefix, Item* items, int count) {
  for (int i = 0; i < count; ++i) {
    WCHAR record[CSymbol::kRecordSize];
    const WCHAR* text = items[i].ToAscii(record, CSymbol::kRecordSize);
    xml.AddElem(IndexedName(prefix, i).c_str(), text != nullptr ? text : u"");
  }
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
    AddNumber(doc, u"COLOR", static_cast<int>(m_crColor));
    CStdStrW scale;
    scale.Format(u"%.12g", m_dScale);
    doc.AddElem(u"SCALE", scale.c_str());
    AddNumber(doc, u"PENWIDTH", m_nPenWidth);
    AddNumber(doc, u"DELETEPEN", m_bDeletePen);
    AddNumber(doc, u"NSYMBOL", UsedSymbols());
    AddNumber(doc, u"NTEXT", UsedTexts());
    AddNumber(doc, u"ISYMBOL", m_nIndex);
    AddNumber(doc, u"ROTATABLE", m_bRotatable);
    AddNumber(doc, u"SCALABLE", m_bScalable);
    doc.AddElem(u"DESC", m_szDesc.c_str());
    AddNumber(doc, u"B_FONT", m_bHaveFont);
    if (m_bHaveFont == 1) WriteFont(doc, m_lf);
    AddItems(doc, u"SYMBOLITEM", m_pSymbolItems, UsedSymbols());
    AddItems(doc, u"TEXTITEM", m_pTextItems, UsedTexts());
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
  if (m_bHaveFont == 1) m_lf = ReadFont(doc);

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
