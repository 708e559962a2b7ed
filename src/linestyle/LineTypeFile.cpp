// The text form of a line type: a header record "pen width,line items,symbol items,text
// items,description" and one record per item, read from a section of a settings file or
// from consecutive strings of a string-table module, and written to a settings file.
#include <climits>
#include <cstddef>

#include "linestyle/LineType.h"
#include "platform/Profile.h"
#include "platform/StringTable.h"
#include "platform/WideCrt.h"
#include "suite/VantrelAppBaseX.h"
#include "suite/VantrelFont.h"

namespace {

// Every record of this form is read into and written from a buffer of this size.
constexpr int kRecordSize = 512;
// The most items of one kind that a line type may hold.
constexpr int kMaxItemsInRecord = 250;
// String ids are 16-bit.
constexpr int kMaxStringId = 0xFFFF;

constexpr const WCHAR* kHeaderKey = u"LineDesc";
constexpr const WCHAR* kFontKey = u"Font";
constexpr const WCHAR* kLineItemKey = u"LineItem";
constexpr const WCHAR* kSymbolItemKey = u"SymbolItem";
constexpr const WCHAR* kTextItemKey = u"TextItem";

// Where the records come from: a settings-file section, or a string-table module read
// with a running string id.
class RecordSource {
 public:
  RecordSource(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, HINSTANCE module, int* resId)
      : m_app(app), m_file(file), m_section(section), m_module(module), m_resId(resId) {}

  bool FromStrings() const { return m_file == nullptr || m_section == nullptr; }

  // Reads the record under `key` (a settings file), or the string at the running id,
  // which then moves on whether or not anything was there. Returns the units read.
  int Read(const WCHAR* key, WCHAR* buffer) {
    if (FromStrings()) {
      const int id = *m_resId;
      if (id < INT_MAX) ++*m_resId;
      if (id < 0 || id > kMaxStringId) {
        buffer[0] = 0;
        return 0;
      }
      return LoadStringW(m_module, static_cast<UINT>(id), buffer, kRecordSize);
    }
    return static_cast<int>(ReadKey(key, buffer));
  }

  // The item record `prefix` + index: a key of the section, or the next string.
  int ReadItem(const WCHAR* prefix, int index, WCHAR* buffer) {
    if (FromStrings()) return Read(nullptr, buffer);
    WCHAR key[64];
    if (_snwprintf_s(key, 64, _TRUNCATE, u"%s%d", prefix, index) < 0) return 0;
    return Read(key, buffer);
  }

 private:
  // A line type may be read without an application (a tool, a test): the profile file is
  // then read as the default application context reads it.
  DWORD ReadKey(const WCHAR* key, WCHAR* buffer) const {
    if (m_app != nullptr) return m_app->GetProfileStringX(m_section, key, u"", buffer, kRecordSize, m_file);
    return GetPrivateProfileStringW(m_section, key, u"", buffer, kRecordSize, m_file);
  }

  CVantrelAppBaseX* m_app;
  const WCHAR* m_file;
  const WCHAR* m_section;
  HINSTANCE m_module;
  int* m_resId;
};

struct Header {
  int penWidth = 0;
  int nLine = 0;
  int nSymbol = 0;
  int nText = 0;
};

BOOL WriteKey(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, const WCHAR* key, const WCHAR* value) {
  if (app != nullptr) return app->WriteProfileStringX(section, key, value, file);
  return WritePrivateProfileStringW(section, key, value, file);
}

// Writes each item's record under `prefix` + index; false as soon as one does not fit.
template <typename Item>
bool WriteItems(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, const WCHAR* prefix, Item* items,
                int count) {
  for (int i = 0; i < count; ++i) {
    WCHAR record[kRecordSize];
    WCHAR key[64];
    if (items[i].ToAscii(record, kRecordSize) == nullptr) return false;
    if (_snwprintf_s(key, 64, _TRUNCATE, u"%s%d", prefix, i) < 0) return false;
    WriteKey(app, file, section, key, record);
  }
  return true;
}

}  // namespace

int CLineType::FromFile(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, HINSTANCE module,
                        int* resId) {
  Delete();
  int unusedId = 0;
  RecordSource source(app, file, section, module, resId != nullptr ? resId : &unusedId);
  if (source.FromStrings() && resId == nullptr) return 0;

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
  if (!source.FromStrings()) {
    WCHAR font[kRecordSize];
    if (source.Read(kFontKey, font) > 0) m_bHaveFont = FntFromString(font, &m_lf);
  }
  if (Allocate(nLine, nSymbol, nText) == 0) return 0;

  CLineItem lineItem;
  for (int i = 0; i < nLine; ++i) {
    if (source.ReadItem(kLineItemKey, i, record) < 1 || lineItem.FromAscii(record) == 0 ||
        AddLineItem(&lineItem) == 0)
      return 0;
  }
  CSymbolItem symbolItem;
  for (int i = 0; i < nSymbol; ++i) {
    if (source.ReadItem(kSymbolItemKey, i, record) < 1 || symbolItem.FromAscii(record) == 0 ||
        AddSymbolItem(&symbolItem) == 0)
      return 0;
  }
  CTextItem textItem(1.0, 0, 1, 1000, 0.5, 0, u"*");
  for (int i = 0; i < nText; ++i) {
    if (source.ReadItem(kTextItemKey, i, record) < 1 || textItem.FromAscii(record) == 0 ||
        AddTextItem(&textItem) == 0)
      return 0;
  }
  return 1;
}

int CLineType::ToFile(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section) {
  WCHAR record[kRecordSize];
  if (_snwprintf_s(record, kRecordSize, _TRUNCATE, u"%d,%d,%d,%d,%s", m_nPenWidth, UsedLines(), UsedSymbols(),
                   UsedTexts(), m_szDesc) < 0)
    return 0;
  WriteKey(app, file, section, kHeaderKey, record);
  if (m_bHaveFont) {
    WCHAR font[FNT_TEXT_SIZE];
    if (FntToString(&m_lf, font) != nullptr) WriteKey(app, file, section, kFontKey, font);
  }
  if (!WriteItems(app, file, section, kLineItemKey, m_pLineItems, UsedLines()) ||
      !WriteItems(app, file, section, kSymbolItemKey, m_pSymbolItems, UsedSymbols()) ||
      !WriteItems(app, file, section, kTextItemKey, m_pTextItems, UsedTexts()))
    return 0;
  // The records are only on disk once the file is flushed; a flush that fails leaves the
  // file as it was, which the caller must hear about.
  return WriteKey(app, file, nullptr, nullptr, nullptr) ? 1 : 0;
}
