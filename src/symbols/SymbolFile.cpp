// The text form of a point symbol: a header record, the font and one record per item,
// read from a section of a profile file or from consecutive strings of a string-table
// module (the built-in symbols), and written to a profile file.
#include "linestyle/RecordSource.h"
#include "linestyle/RecordText.h"
#include "platform/WideCrt.h"
#include "suite/VantrelAppBaseX.h"
#include "suite/VantrelFont.h"
#include "symbols/Symbol.h"

namespace {

constexpr const WCHAR* kHeaderKey = u"SymbolDesc";
constexpr const WCHAR* kFontKey = u"FontItem";
constexpr const WCHAR* kSymbolItemKey = u"SymbolItem";
constexpr const WCHAR* kTextItemKey = u"TextItem";

using vantrel1::RecordMisfit;
using vantrel1::WriteItemRecords;
using vantrel1::WriteProfileKey;

}  // namespace

int CSymbol::ToFileX(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section) {
  WCHAR header[kRecordSize];
  if (_snwprintf_s(header, kRecordSize, _TRUNCATE, u"%d,%d,%d,%d,%s,%d,%d", m_nIndex, m_nPenWidth, UsedSymbols(),
                   UsedTexts(), m_szDesc.c_str(), m_bRotatable, m_bScalable) < 0)
    return 0;
  WriteProfileKey(app, file, section, kHeaderKey, header);
  if (m_bHaveFont) {
    WCHAR font[FNT_TEXT_SIZE];
    if (FntToString(&m_lf, font) != nullptr) WriteProfileKey(app, file, section, kFontKey, font);
  }
  // An item whose record does not fit is left out, without a key.
  WriteItemRecords(app, file, section, kSymbolItemKey, m_pSymbolItems, UsedSymbols(), RecordMisfit::kSkip);
  WriteItemRecords(app, file, section, kTextItemKey, m_pTextItems, UsedTexts(), RecordMisfit::kSkip);
  // The keys are only on disk once the file is flushed; a failed flush leaves the file
  // as it was, which the caller must hear about.
  return WriteProfileKey(app, file, nullptr, nullptr, nullptr) ? 1 : 0;
}

int CSymbol::FromFileX(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, HINSTANCE module,
                       int* stringId) {
  Delete();
  vantrel1::RecordSource source(app, file, section, module, stringId);
  if (!source.Usable()) return 0;

  WCHAR record[kRecordSize];
  if (source.Read(kHeaderKey, record) < 1) return 0;
  Delete();

  vantrel1::RecordTokens tokens;
  if (!tokens.Split(record)) return 0;
  // Runs of commas are one separator, so an empty field is never read as 0. The two item
  // counts are not kept: they only say how many records follow.
  int fields[4] = {};
  for (int i = 0; i < 4; ++i) {
    const WCHAR* token = tokens.Next();
    if (token == nullptr) return 0;
    fields[i] = _wtoi(token);
    if (i == 0) m_nIndex = fields[0];
    if (i == 1) m_nPenWidth = fields[1];
  }
  const int nSymbol = fields[2];
  const int nText = fields[3];
  const WCHAR* desc = tokens.Next();
  if (desc == nullptr) return 0;
  m_szDesc = desc;
  // Files written before symbols could be turned or scaled end here; such a symbol does
  // neither. A description holding a comma loses its tail to these fields.
  m_bRotatable = 0;
  m_bScalable = 0;
  if (const WCHAR* token = tokens.Next()) m_bRotatable = _wtoi(token);
  if (const WCHAR* token = tokens.Next()) m_bScalable = _wtoi(token);
  if (nSymbol > kMaxStoredItems || nText > kMaxStoredItems) return 0;

  // The built-in strings keep an empty id for the font of every symbol that has none.
  WCHAR font[kRecordSize];
  if (source.Read(kFontKey, font) > 0) m_bHaveFont = FntFromString(font, &m_lf);

  CSymbolItem symbolItem;
  if (!source.ReadItems(kSymbolItemKey, nSymbol, symbolItem,
                        [this](const CSymbolItem* item) { return AddSymbolItem(item); }))
    return 0;
  CTextItem textItem;
  return source.ReadItems(kTextItemKey, nText, textItem, [this](const CTextItem* item) { return AddTextItem(item); })
             ? 1
             : 0;
}
