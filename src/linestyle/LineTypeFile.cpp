// The text form of a line type: a header record "pen width,line items,symbol items,text
// items,description" and one record per item, read from a section of a settings file or
// from consecutive strings of a string-table module, and written to a settings file.
#include "linestyle/LineType.h"
#include "linestyle/RecordSource.h"
#include "platform/WideCrt.h"
#include "suite/VantrelAppBaseX.h"
#include "suite/VantrelFont.h"

namespace {

// The most items of one kind that a line type may hold.
constexpr int kMaxItemsInRecord = 250;

constexpr const WCHAR* kHeaderKey = u"LineDesc";
constexpr const WCHAR* kFontKey = u"Font";
constexpr const WCHAR* kLineItemKey = u"LineItem";
constexpr const WCHAR* kSymbolItemKey = u"SymbolItem";
constexpr const WCHAR* kTextItemKey = u"TextItem";

using vantrel1::kRecordSize;
using vantrel1::RecordMisfit;
using vantrel1::WriteItemRecords;
using vantrel1::WriteProfileKey;

}  // namespace

int CLineType::FromFile(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, HINSTANCE module,
                        int* resId) {
  Delete();
  vantrel1::RecordSource source(app, file, section, module, resId);
  if (!source.Usable()) return 0;

  WCHAR record[kRecordSize];
  if (source.Read(kHeaderKey, record) < 1) return 0;

  // Runs of commas are one separator, so an empty field never reads as 0 here.
  WCHAR* context = nullptr;
  int fields[4];
  for (int i = 0; i < 4; ++i) {
    const WCHAR* token = wcstok(i == 0 ? record : nullptr, u",", &context);
    if (token == nullptr) return 0;
    fields[i] = _wtoi(token);
    if (i == 0) m_nPenWidth = fields[0];
  }
  const WCHAR* desc = wcstok(nullptr, u",", &context);
  if (desc == nullptr) return 0;
  lstrcpynW(m_szDesc, desc, kDescSize);
  const int nLine = fields[1];
  const int nSymbol = fields[2];
  const int nText = fields[3];
  if (nLine > kMaxItemsInRecord || nSymbol > kMaxItemsInRecord || nText > kMaxItemsInRecord) return 0;

  m_bHaveFont = 0;
  // A run of strings holds no font record.
  if (source.FromProfile()) {
    WCHAR font[kRecordSize];
    if (source.Read(kFontKey, font) > 0) m_bHaveFont = FntFromString(font, &m_lf);
  }
  if (Allocate(nLine, nSymbol, nText) == 0) return 0;

  CLineItem lineItem;
  if (!source.ReadItems(kLineItemKey, nLine, lineItem, [this](CLineItem* item) { return AddLineItem(item); }))
    return 0;
  CSymbolItem symbolItem;
  if (!source.ReadItems(kSymbolItemKey, nSymbol, symbolItem,
                        [this](CSymbolItem* item) { return AddSymbolItem(item); }))
    return 0;
  CTextItem textItem(1.0, 0, 1, 1000, 0.5, 0, u"*");
  return source.ReadItems(kTextItemKey, nText, textItem, [this](CTextItem* item) { return AddTextItem(item); })
             ? 1
             : 0;
}

int CLineType::ToFile(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section) {
  WCHAR record[kRecordSize];
  if (_snwprintf_s(record, kRecordSize, _TRUNCATE, u"%d,%d,%d,%d,%s", m_nPenWidth, UsedLines(), UsedSymbols(),
                   UsedTexts(), m_szDesc) < 0)
    return 0;
  WriteProfileKey(app, file, section, kHeaderKey, record);
  if (m_bHaveFont) {
    WCHAR font[FNT_TEXT_SIZE];
    if (FntToString(&m_lf, font) != nullptr) WriteProfileKey(app, file, section, kFontKey, font);
  }
  // A record that does not fit fails the whole write.
  if (!WriteItemRecords(app, file, section, kLineItemKey, m_pLineItems, UsedLines(), RecordMisfit::kStop) ||
      !WriteItemRecords(app, file, section, kSymbolItemKey, m_pSymbolItems, UsedSymbols(), RecordMisfit::kStop) ||
      !WriteItemRecords(app, file, section, kTextItemKey, m_pTextItems, UsedTexts(), RecordMisfit::kStop))
    return 0;
  // The records are only on disk once the file is flushed; a flush that fails leaves the
  // file as it was, which the caller must hear about.
  return WriteProfileKey(app, file, nullptr, nullptr, nullptr) ? 1 : 0;
}
