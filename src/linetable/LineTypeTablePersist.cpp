// Storing a CLineTypeTable: in a document's archive, in an XML document, and as a table
// file of its own (the user line types only); and copying one table into another.
#include <algorithm>
#include <cstdint>
#include <new>

#include "linestyle/IndexedName.h"
#include "linestyle/RecordSource.h"
#include "linetable/LineTypeTable.h"
#include "markup/Markup.h"
#include "platform/Archive.h"
#include "platform/StdStr.h"
#include "suite/FileRemoval.h"
#include "suite/FilePath.h"
#include "suite/VantrelAppBaseX.h"
#include "suite/VantrelWinApp.h"

namespace {

constexpr std::int32_t kArchiveVersion = 2;
constexpr int kPathSize = 260;
constexpr const WCHAR* kDefaultTableFile = u"Normal.lin";
constexpr int kFallbackDefaultWidth = 2;

// The entries a table really holds, whatever its counts say: a table whose user array
// was lost to a failed allocation holds none, and the system array never has more than
// nine entries. Writers and copies go by these, so that they never read outside an array
// and never store a count without its records.
int PresentUserLines(const CLineTypeTable& table) {
  return table.m_pUserLines != nullptr ? std::max(table.m_nUserLines, 0) : 0;
}

int PresentSystemLines(const CLineTypeTable& table) {
  return table.m_pSystemLines != nullptr ? std::clamp(table.m_nSystemLines, 0, CLineTypeTable::kSystemLines) : 0;
}

// Null for a count of 0, as for a failed allocation.
CLineType* NewLineTypes(int count) {
  return count > 0 ? new (std::nothrow) CLineType[static_cast<std::size_t>(count)] : nullptr;
}

using vantrel1::IndexedName;

void StoreLineTypesXml(CMarkup& xml, const WCHAR* prefix, CLineType* lines, int count) {
  for (int i = 0; i < count; ++i) {
    xml.AddElem(IndexedName(prefix, i).c_str());
    xml.IntoElem();
    lines[i].SerializeXML(&xml, 1);
    xml.OutOfElem();
  }
}

// Each entry is looked up from the document's first element afresh; an entry the
// document lacks keeps the default line type.
void LoadLineTypesXml(CMarkup& xml, const WCHAR* prefix, CLineType* lines, int count) {
  for (int i = 0; i < count; ++i) {
    xml.ResetPos();
    if (!xml.FindChildElem(IndexedName(prefix, i).c_str())) continue;
    xml.IntoElem();
    lines[i].SerializeXML(&xml, 0);
    xml.OutOfElem();
  }
}

}  // namespace

CLineTypeTable::CLineTypeTable(const CLineTypeTable& other) : CLineTypeTable() { *this = other; }

CLineTypeTable& CLineTypeTable::operator=(const CLineTypeTable& other) {
  if (this == &other) return *this;

  const int users = PresentUserLines(other);
  delete[] m_pUserLines;
  // An empty user set still gets an array: a table without one is not valid.
  m_pUserLines = new (std::nothrow) CLineType[static_cast<std::size_t>(users)];
  m_nUserLines = m_pUserLines != nullptr ? users : 0;
  for (int i = 0; i < m_nUserLines; ++i) m_pUserLines[i] = other.m_pUserLines[i];

  const int systems = PresentSystemLines(other);
  delete[] m_pSystemLines;
  m_pSystemLines = new (std::nothrow) CLineType[kSystemLines];
  m_nSystemLines = m_pSystemLines != nullptr ? systems : 0;
  for (int i = 0; i < m_nSystemLines; ++i) m_pSystemLines[i] = other.m_pSystemLines[i];

  // Lines still held outside stay alive: their slots are let go of without freeing them,
  // so that DeleteLine no longer finds them and frees them itself.
  DeleteUnusedCacheLines();
  for (int i = 0; i < kCacheSize; ++i) ClearCacheSlot(i);
  m_nCacheCount = 0;

  m_nDefaultWidth = other.m_nDefaultWidth;
  return *this;
}

void CLineTypeTable::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    const int users = PresentUserLines(*this);
    const int systems = PresentSystemLines(*this);
    ar << kArchiveVersion << static_cast<std::int32_t>(users) << static_cast<std::int32_t>(systems);
    for (int i = 0; i < systems; ++i) m_pSystemLines[i].Serialize(ar);
    for (int i = 0; i < users; ++i) m_pUserLines[i].Serialize(ar);
    return;
  }

  std::int32_t version = 0;  // any version loads alike
  std::int32_t users = 0;
  std::int32_t systems = 0;
  ar >> version >> users >> systems;
  // The system array always has nine entries, and a table holds at most 250 user line
  // types; other counts come from a damaged document and are refused before anything is
  // allocated or the table changes.
  if (users < 0 || users > kMaxUserLines || systems < 0 || systems > kSystemLines)
    AfxThrowArchiveException(CArchiveException::badIndex, ar.GetFileName().c_str());

  FreeArrays();
  m_nUserLines = 0;
  m_nSystemLines = 0;
  m_pSystemLines = new (std::nothrow) CLineType[kSystemLines];
  m_pUserLines = new (std::nothrow) CLineType[static_cast<std::size_t>(users)];
  if (m_pSystemLines == nullptr || m_pUserLines == nullptr)
    AfxThrowArchiveException(CArchiveException::genericException, ar.GetFileName().c_str());
  m_nSystemLines = systems;
  m_nUserLines = users;
  for (int i = 0; i < systems; ++i) m_pSystemLines[i].Serialize(ar);
  for (int i = 0; i < users; ++i) m_pUserLines[i].Serialize(ar);
}

void CLineTypeTable::SerializeXML(CVantrelAppBaseX* app, CMarkup* xml, int storing) {
  if (xml == nullptr) return;
  if (storing == 1) {
    const int users = PresentUserLines(*this);
    const int systems = PresentSystemLines(*this);
    xml->AddElem(u"LINETYPETABLE");
    xml->IntoElem();
    xml->AddElem(u"USERLINES", vantrel1::DecimalText(users).c_str());
    xml->AddElem(u"SYSTEMLINES", vantrel1::DecimalText(systems).c_str());
    StoreLineTypesXml(*xml, u"SYSTEM", m_pSystemLines, systems);
    StoreLineTypesXml(*xml, u"USER", m_pUserLines, users);
  } else {
    // Counts come from the document and are not trusted: negative ones read as 0, and
    // no more than a table can hold are allocated (250 user line types; the nine system
    // line types, a larger count keeping the first nine).
    xml->ResetPos();
    const int users = std::clamp(xml->GetDataInt(u"USERLINES", 0), 0, kMaxUserLines);
    xml->ResetPos();
    const int systems = std::clamp(xml->GetDataInt(u"SYSTEMLINES", 0), 0, kSystemLines);
    FreeArrays();
    m_pSystemLines = NewLineTypes(systems);
    m_pUserLines = NewLineTypes(users);
    m_nSystemLines = m_pSystemLines != nullptr ? systems : 0;
    m_nUserLines = m_pUserLines != nullptr ? users : 0;
    LoadLineTypesXml(*xml, u"SYSTEM", m_pSystemLines, m_nSystemLines);
    LoadLineTypesXml(*xml, u"USER", m_pUserLines, m_nUserLines);
  }

  // A table without system line types is never left in memory, whichever way it went:
  // the built-in table (nine system and the default user line types) replaces it.
  if (m_nSystemLines == 0) FromFile(app, nullptr, nullptr);
  if (storing == 1) return;

  m_nDefaultWidth = kFallbackDefaultWidth;
  if (CVantrelAppBaseX* running = GetVantrelAppBase()) m_nDefaultWidth = running->GetDefaultLineWidth();
}

int CLineTypeTable::ToFile(CVantrelAppBaseX* app, const WCHAR* file, int remove) {
  WCHAR buffer[kPathSize];
  const WCHAR* path = file;
  if (path == nullptr) {
    if (!FileMakePathX(app, buffer, GetCorviaDIR(), kDefaultTableFile, nullptr, kPathSize)) return 0;
    path = buffer;
  }
  // Sections of a longer table written before would otherwise survive as line types.
  if (remove) vantrel1::RemoveFileIfPresent(path);

  for (int i = 0; i < PresentUserLines(*this); ++i) {
    if (!m_pUserLines[i].ToFile(app, path, IndexedName(u"LineType", i).c_str())) return 0;
  }
  // A failed flush leaves the file as it was, which the caller must hear about.
  return vantrel1::WriteProfileKey(app, path, nullptr, nullptr, nullptr) ? 1 : 0;
}
