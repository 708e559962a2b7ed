// Loading and saving a CSymbolTable: the built-in symbols of the string resources, table
// files, a document's archive and its XML form.
#include <algorithm>
#include <cstdint>

#include "linestyle/IndexedName.h"
#include "linestyle/RecordSource.h"
#include "markup/Markup.h"
#include "platform/Archive.h"
#include "platform/StringTable.h"
#include "platform/WideCrt.h"
#include "suite/FileRemoval.h"
#include "suite/FilePath.h"
#include "suite/VantrelAppBaseX.h"
#include "symbols/SymbolTable.h"

namespace {

constexpr std::int32_t kArchiveVersion = 2;
constexpr int kPathSize = 260;
constexpr const WCHAR* kDefaultTableFile = u"Normal.sym";
constexpr const WCHAR* kSectionPrefix = u"Symbol";
constexpr const WCHAR* kHeaderKey = u"SymbolDesc";

using vantrel1::IndexedName;

}  // namespace

// The number of "Symbol<i>" sections before the first one without a header.
int CSymbolTable::CountFileSections(CVantrelAppBaseX* app, const WCHAR* file) const {
  for (int i = 0; i < kMaxSymbols; ++i) {
    vantrel1::RecordBuffer header;
    if (vantrel1::ReadProfileKey(app, file, IndexedName(kSectionPrefix, i).c_str(), kHeaderKey, header) == 0) return i;
  }
  return kMaxSymbols;
}

int CSymbolTable::FromFile(CVantrelAppBaseX* app, const WCHAR* file, HINSTANCE module) {
  int count = file != nullptr ? CountFileSections(app, file) : 0;
  const bool fromFile = count > 0;
  if (!fromFile) {
    WCHAR text[CSymbol::kRecordSize];
    if (LoadStringW(module, kBuiltInCountId, text, CSymbol::kRecordSize) < 1) return 0;
    count = _wtoi(text);
    // The count is data like any other string; more than a table may hold is not believed.
    if (count < 1 || count > kMaxSymbols) return 0;
  }

  m_nCount = 0;
  if (Allocate(count) == 0) return 0;
  int stringId = kBuiltInChainId;
  for (int i = 0; i < count; ++i) {
    const CStdStrW section = IndexedName(kSectionPrefix, i);
    if (m_pSymbols[i].FromFileX(app, fromFile ? file : nullptr, section.c_str(), module, &stringId) == 0) return 0;
    ++m_nCount;
  }
  // 0 for the resources even though they were read: callers tell the two sources apart
  // by it.
  return fromFile ? 1 : 0;
}

int CSymbolTable::ToFile(CVantrelAppBaseX* app, const WCHAR* file, int removeFirst) {
  WCHAR buffer[kPathSize];
  const WCHAR* path = file;
  if (path == nullptr) {
    if (!FileMakePathX(app, buffer, GetCorviaDIR(), kDefaultTableFile, nullptr, kPathSize)) return 0;
    path = buffer;
  }
  // Sections of a longer table written before would otherwise survive as symbols.
  if (removeFirst) vantrel1::RemoveFileIfPresent(path);
  for (int i = 0; i < Used(); ++i) {
    if (m_pSymbols[i].ToFileX(app, path, IndexedName(kSectionPrefix, i).c_str()) == 0) return 0;
  }
  return 1;
}

void CSymbolTable::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    const int used = Used();
    ar << kArchiveVersion << static_cast<std::int32_t>(used);
    for (int i = 0; i < used; ++i) m_pSymbols[i].Serialize(ar);
    return;
  }

  std::int32_t version = 0;  // any version loads alike
  std::int32_t count = 0;
  ar >> version >> count;
  // A table holds at most 250 symbols; another count comes from a damaged document and
  // is refused before the table changes.
  if (count < 0 || count > kMaxSymbols)
    AfxThrowArchiveException(CArchiveException::badIndex, ar.GetFileName().c_str());
  m_nCount = 0;
  if (Allocate(count) == 0) AfxThrowArchiveException(CArchiveException::genericException, ar.GetFileName().c_str());
  m_nCount = count;
  for (int i = 0; i < count; ++i) m_pSymbols[i].Serialize(ar);
}

void CSymbolTable::SerializeXML(CVantrelAppBaseX* app, CMarkup* xml, int mode) {
  if (xml == nullptr) return;
  if (mode == 1) {
    xml->AddElem(u"SYMBOLTABLE");
    xml->IntoElem();
    xml->AddElem(u"NSYMBOLS", vantrel1::DecimalText(Used()).c_str());
    for (int i = 0; i < Used(); ++i) {
      xml->AddElem(IndexedName(u"SYMBOL", i).c_str());
      xml->IntoElem();
      m_pSymbols[i].SerializeXML(xml, 1);
      xml->OutOfElem();
    }
    return;
  }

  // The count comes from the document: a negative one reads as 0, and no more than a
  // table can hold is allocated.
  xml->ResetPos();
  const int count = std::clamp(xml->GetDataInt(u"NSYMBOLS", 0), 0, kMaxSymbols);
  m_nCount = 0;
  if (Allocate(count) != 0) m_nCount = count;
  // Each entry is looked up from the document's first element afresh; an entry the
  // document lacks stays a default symbol.
  for (int i = 0; i < m_nCount; ++i) {
    xml->ResetPos();
    if (!xml->FindChildElem(IndexedName(u"SYMBOL", i).c_str())) continue;
    xml->IntoElem();
    m_pSymbols[i].SerializeXML(xml, 0);
    xml->OutOfElem();
  }
  if (m_nCount == 0 && mode == 0) FromFile(app, nullptr, nullptr);
}
