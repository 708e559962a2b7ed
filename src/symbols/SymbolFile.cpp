// The text form of a point symbol: a header record, the font and one record per item,
// read from a section of a profile file or from consecutive strings of a string-table
// module (the built-in symbols), and written to a profile file.
#include <climits>

#include "linestyle/IndexedName.h"
#include "linestyle/RecordText.h"
#include "platform/Profile.h"
#include "platform/StringTable.h"
#include "platform/WideCrt.h"
#include "suite/VantrelAppBaseX.h"
#include "suite/VantrelFont.h"
#include "symbols/Symbol.h"

namespace {

constexpr const WCHAR* kHeaderKey = u"SymbolDesc";
constexpr const WCHAR* kFontKey = u"FontItem";
constexpr const WCHAR* kSymbolItemKey = u"SymbolItem";
constexpr const WCHAR* kTextItemKey = u"TextItem";
// String ids are 16-bit.
constexpr int kMaxStringId = 0xFFFF;

using vantrel1::IndexedName;

// Where the records come from: a profile-file section, or a string-table module read with
// a running string id.
class RecordSource {
 public:
  RecordSource(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, HINSTANCE module, int* stringId)
      : m_app(app), m_file(file), m_section(section), m_module(module), m_stringId(stringId) {}

  bool FromProfile() const { return m_file != nullptr && m_section != nullptr; }
  bool Usable() const { return FromProfile() || m_stringId != nullptr; }

  // The record under `key`, or the string at the running id, which moves on whether or
  // not anything was there. Returns the units read.
  int Read(const WCHAR* key, WCHAR* buffer) {
    if (FromProfile()) return static_cast<int>(ReadKey(key, buffer));
    const int id = *m_stringId;
    if (id < INT_MAX) ++*m_stringId;
    buffer[0] = 0;
    if (id < 0 || id > kMaxStringId) return 0;
    return LoadStringW(m_module, static_cast<UINT>(id), buffer, CSymbol::kRecordSize);
  }

  int ReadItem(const WCHAR* prefix, int index, WCHAR* buffer) {
    return Read(FromProfile() ? IndexedName(prefix, index).c_str() : nullptr, buffer);
  }

 private:
  // Without an application (a tool, a test) the file is read as the default application
  // context reads it.
  DWORD ReadKey(const WCHAR* key, WCHAR* buffer) const {
    if (m_app != nullptr)
      return m_app->GetProfileStringX(m_section, key, u"", buffer, CSymbol::kRecordSize, m_file);
    return GetPrivateProfileStringW(m_section, key, u"", buffer, CSymbol::kRecordSize, m_file);
  }

  CVantrelAppBaseX* m_app;
  const WCHAR* m_file;
  const WCHAR* m_section;
  HINSTANCE m_module;
  int* m_stringId;
};

BOOL WriteKey(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, const WCHAR* key, const WCHAR* value) {
  if (app != nullptr) return app->WriteProfileStringX(section, key, value, file);
  return WritePrivateProfileStringW(section, key, value, file);
}

// An item whose record does not fit is left out, without a key.
template <typename Item>
void WriteItems(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, const WCHAR* prefix, Item* items,
                int count) {
  for (int i = 0; i < count; ++i) {
    WCHAR record[CSymbol::kRecordSize];
    if (items[i].ToAscii(record, CSymbol::kRecordSize) != nullptr)
      WriteKey(app, file, section, IndexedName(prefix, i).c_str(), record);
  }
}

// Reads `count` records into `item` in turn and adds each to the symbol; false at the
// first one that is missing, does not parse or cannot be added.
template <typename Item, typename Add>
bool ReadItems(RecordSource& source, const WCHAR* prefix, int count, Item& item, Add add) {
  WCHAR record[CSymbol::kRecordSize];
  for (int i = 0; i < count; ++i) {
    if (source.ReadItem(prefix, i, record) < 1 || item.FromAscii(record) == 0 || add(&item) == 0) return false;
  }
  return true;
}

}  // namespace

int CSymbol::ToFileX(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section) {
  WCHAR header[kRecordSize];
  if (_snwprintf_s(header, kRecordSize, _TRUNCATE, u"%d,%d,%d,%d,%s,%d,%d", m_nIndex, m_nPenWidth, UsedSymbols(),
                   UsedTexts(), m_szDesc.c_str(), m_bRotatable, m_bScalable) < 0)
    return 0;
  WriteKey(app, file, section, kHeaderKey, header);
  if (m_bHaveFont) {
    WCHAR font[FNT_TEXT_SIZE];
    if (FntToString(&m_lf, font) != nullptr) WriteKey(app, file, section, kFontKey, font);
  }
  WriteItems(app, file, section, kSymbolItemKey, m_pSymbolItems, UsedSymbols());
  WriteItems(app, file, section, kTextItemKey, m_pTextItems, UsedTexts());
  // The keys are only on disk once the file is flushed; a failed flush leaves the file
  // as it was, which the caller must hear about.
  return WriteKey(app, file, nullptr, nullptr, nullptr) ? 1 : 0;
}

int CSymbol::FromFileX(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, HINSTANCE module,
                       int* stringId) {
  Delete();
  RecordSource source(app, file, section, module, stringId);
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
  if (!ReadItems(source, kSymbolItemKey, nSymbol, symbolItem,
                 [this](const CSymbolItem* item) { return AddSymbolItem(item); }))
    return 0;
  CTextItem textItem;
  return ReadItems(source, kTextItemKey, nText, textItem,
                   [this](const CTextItem* item) { return AddTextItem(item); })
             ? 1
             : 0;
}
