// Numbering, lookup, editing of the user set and loading of CLineTypeTable. The drawing
// cache is in LineTypeCache.cpp.
#include "linetable/LineTypeTable.h"

#include <new>

#include "platform/Profile.h"
#include "platform/StringTable.h"
#include "platform/WideCrt.h"
#include "suite/AppMessages.h"
#include "suite/VantrelAppBaseX.h"
#include "suite/VantrelStrings.h"

IMPLEMENT_SERIAL(CLineTypeTable, CObject, 2)

namespace {

constexpr int kSimpleLines = 7;
constexpr int kRecordSize = 512;
// A line type name read from the string table is compared as loaded: at most 256 units.
constexpr int kNameSize = 256;
constexpr const WCHAR* kSectionPrefix = u"LineType";
constexpr const WCHAR* kHeaderKey = u"LineDesc";
// Highlight colours that older table files keep in their first sections.
constexpr const WCHAR* kHighlightBw = u"HILITE_BW";
constexpr const WCHAR* kHighlightColor = u"HILITE_COLOR";
constexpr int kFallbackDefaultWidth = 2;

bool SectionName(int index, WCHAR* buffer, int size) {
  return _snwprintf_s(buffer, static_cast<std::size_t>(size), _TRUNCATE, u"%s%d", kSectionPrefix, index) >= 0;
}

bool IsHighlightEntry(const CLineType& line) {
  const CStdStrW desc = line.GetDesc();
  return desc == kHighlightBw || desc == kHighlightColor;
}

}  // namespace

CLineTypeTable::CLineTypeTable()
    : m_pUserLines(nullptr),
      m_pSystemLines(nullptr),
      m_nUserLines(0),
      m_nSystemLines(0),
      m_nCacheCount(0),
      m_pCacheLine{},
      m_nCacheNumber{},
      m_crCacheColor{},
      m_nCacheRef{},
      m_nDefaultWidth(1) {
  for (int i = 0; i < kCacheSize; ++i) m_nCacheNumber[i] = -1;
}

CLineTypeTable::~CLineTypeTable() {
  for (int i = m_nCacheCount - 1; i >= 0; --i) FreeLine(m_pCacheLine[i]);
  FreeArrays();
}

void CLineTypeTable::FreeArrays() {
  delete[] m_pUserLines;
  delete[] m_pSystemLines;
  m_pUserLines = nullptr;
  m_pSystemLines = nullptr;
}

int CLineTypeTable::IsUserLineType(int number) { return number > kLastSystemNumber ? 1 : 0; }

int CLineTypeTable::NextUserLineType(int number) const {
  if (number < -1) return -1;
  if (number < kLastSystemNumber) return number + 1;
  if (number < kFirstUserNumber) return m_nUserLines > 0 ? kFirstUserNumber : -1;
  return number < kFirstUserNumber - 1 + m_nUserLines ? number + 1 : -1;
}

CLineType* CLineTypeTable::GetLineTypePtr(int number) {
  if (m_pUserLines == nullptr || number < kFirstUserNumber || number - kFirstUserNumber >= m_nUserLines)
    return nullptr;
  return &m_pUserLines[number - kFirstUserNumber];
}

int CLineTypeTable::SetLineType(const CLineType* line, int number) {
  CLineType* target = GetLineTypePtr(number);
  if (line == nullptr || target == nullptr) return 0;
  *target = *line;
  return 1;
}

int CLineTypeTable::AddLineType(CLineType& line, HWND /*parent*/) {
  if (m_nUserLines < 0) return -2;
  if (m_nUserLines >= kMaxUserLines) {
    AppWarning(VMSG_TABLE_FULL, nullptr, nullptr, MB_ICONEXCLAMATION);
    return -3;
  }
  // The new array is filled before the old one goes, so a failed allocation leaves the
  // table as it was.
  CLineType* grown = new (std::nothrow) CLineType[static_cast<std::size_t>(m_nUserLines) + 1];
  if (grown == nullptr) return -1;
  for (int i = 0; i < m_nUserLines; ++i) grown[i] = m_pUserLines[i];
  grown[m_nUserLines] = line;
  delete[] m_pUserLines;
  m_pUserLines = grown;
  return ++m_nUserLines;
}

int CLineTypeTable::DeleteLineType(int number) {
  if (m_nUserLines < 1 || m_pUserLines == nullptr) return -1;
  if (number < kShiftedUserBase) return -2;
  const long long index = static_cast<long long>(number) - kShiftedUserBase;
  for (long long i = index + 1; i < m_nUserLines; ++i) m_pUserLines[i - 1] = m_pUserLines[i];
  m_pUserLines[m_nUserLines - 1].Delete();
  return --m_nUserLines;
}

int CLineTypeTable::ShiftLine(int number, int direction) {
  if (m_nUserLines <= 0 || m_pUserLines == nullptr || number < kShiftedUserBase) return 0;
  const long long index = static_cast<long long>(number) - kShiftedUserBase;
  const long long other = index + direction;
  // The last entry cannot move down; moves that would leave the array in any other way
  // are refused too, rather than reaching outside it.
  if (index >= m_nUserLines || other < 0 || other >= m_nUserLines) return 0;
  CLineType temp;
  temp = m_pUserLines[index];
  m_pUserLines[index] = m_pUserLines[other];
  m_pUserLines[other] = temp;
  return 1;
}

int CLineTypeTable::FindLine(const WCHAR* name) const {
  for (int i = 0; i < kSimpleLines; ++i) {
    const CStdStrW simple = VantrelLoadResString(nullptr, kSimpleLineNameId + static_cast<UINT>(i), kNameSize);
    if (_wcsicmp(simple.c_str(), name) == 0) return i;
  }
  for (int i = 0; m_pSystemLines != nullptr && i < m_nSystemLines; ++i)
    if (_wcsicmp(m_pSystemLines[i].GetDesc(), name) == 0) return kFirstSystemNumber + i;
  for (int i = 0; m_pUserLines != nullptr && i < m_nUserLines; ++i)
    if (_wcsicmp(m_pUserLines[i].GetDesc(), name) == 0) return kFirstUserNumber + i;
  return -1;
}

int CLineTypeTable::GetLineNumber(CStdStrW desc, int numbered) {
  for (int number = 0; number != -1; number = NextUserLineType(number)) {
    CLineType* line = BuildLine(number, nullptr, 0, 0);
    if (line == nullptr) return -1;
    const CStdStrW name = line->GetDesc();
    FreeLine(line);
    if (desc.CompareNoCase(numbered ? MakeDesc(number, name) : name) == 0) return number;
  }
  return -1;
}

CStdStrW CLineTypeTable::MakeDesc(int number, CStdStrW name) {
  const int shown = number > kLastSystemNumber ? number - 1000 : number;
  CStdStrW desc = name;
  desc.AppendFormat(u"-%d", shown);
  return desc;
}

CStdStrW CLineTypeTable::GetDesc(int number) {
  // An uncoloured line is never cached, so this always builds afresh.
  CLineType* line = CreateLine(number, nullptr, 0, 0, 0);
  const CStdStrW name = line != nullptr ? CStdStrW(line->GetDesc()) : CStdStrW();
  DeleteLine(line, 1);
  return MakeDesc(number, name);
}

int CLineTypeTable::CheckValid() {
  if (m_nSystemLines != kSystemLines || m_nUserLines < 0 || m_pSystemLines == nullptr || m_pUserLines == nullptr)
    return 0;
  for (int i = 0; i < m_nSystemLines; ++i)
    if (m_pSystemLines[i].CheckValid() == 0) return 0;
  for (int i = 0; i < m_nUserLines; ++i)
    if (m_pUserLines[i].CheckValid() == 0) return 0;
  return 1;
}

int CLineTypeTable::operator==(CLineTypeTable& /*other*/) { return 1; }

const CLineType* CLineTypeTable::Resolve(int number) const {
  const CLineType* firstSystem = m_pSystemLines != nullptr && m_nSystemLines > 0 ? &m_pSystemLines[0] : nullptr;
  if (number < kFirstSystemNumber) return nullptr;
  if (number < kFirstUserNumber) {
    const int index = number - kFirstSystemNumber;
    return index < m_nSystemLines && firstSystem != nullptr ? &m_pSystemLines[index] : firstSystem;
  }
  if (m_pUserLines == nullptr || m_nUserLines < 1) return firstSystem;
  const int index = number - kFirstUserNumber;
  return index < m_nUserLines ? &m_pUserLines[index] : &m_pUserLines[0];
}

// Loading ---------------------------------------------------------------------------------

int CLineTypeTable::FromFile(CVantrelAppBaseX* app, const WCHAR* file, HINSTANCE resources) {
  if (LoadSystemLines(app, resources) == 0) return 0;

  int count = file != nullptr ? CountFileSections(app, file) : 0;
  const bool fromFile = count > 0;
  if (!fromFile) {
    // A null module is this library's own, in this step as in every other.
    WCHAR text[kRecordSize];
    LoadStringW(resources, kUserCountId, text, kRecordSize);
    count = _wtoi(text);
    if (count < 1) return 0;
    // The built-in count is data like any other string; more than a table may hold is
    // not believed.
    if (count > kMaxUserLines) return 0;
  }
  if (LoadUserLines(app, fromFile ? file : nullptr, resources, count) == 0) return 0;

  m_nDefaultWidth = app != nullptr ? app->GetDefaultLineWidth() : kFallbackDefaultWidth;
  return fromFile ? 1 : 0;
}

int CLineTypeTable::LoadSystemLines(CVantrelAppBaseX* app, HINSTANCE resources) {
  m_nSystemLines = 0;
  delete[] m_pSystemLines;
  m_pSystemLines = new (std::nothrow) CLineType[kSystemLines];
  if (m_pSystemLines == nullptr) return 0;
  int id = kSystemChainId;
  for (int i = 0; i < kSystemLines; ++i) {
    if (m_pSystemLines[i].FromFile(app, nullptr, nullptr, resources, &id) == 0) return 0;
    ++m_nSystemLines;
  }
  return 1;
}

// The number of "LineType<i>" sections before the first one without a header.
int CLineTypeTable::CountFileSections(CVantrelAppBaseX* app, const WCHAR* file) const {
  for (int i = 0; i < kMaxUserLines; ++i) {
    WCHAR section[32];
    WCHAR header[kRecordSize];
    if (!SectionName(i, section, 32)) return i;
    const DWORD read = app != nullptr
                           ? app->GetProfileStringX(section, kHeaderKey, u"", header, kRecordSize, file)
                           : GetPrivateProfileStringW(section, kHeaderKey, u"", header, kRecordSize, file);
    if (read == 0) return i;
  }
  return kMaxUserLines;
}

// Reads `count` line types from the sections of `file`, or from the default chain of
// `resources` when `file` is null, into a fresh user array.
int CLineTypeTable::LoadUserLines(CVantrelAppBaseX* app, const WCHAR* file, HINSTANCE resources, int count) {
  m_nUserLines = 0;
  delete[] m_pUserLines;
  m_pUserLines = new (std::nothrow) CLineType[static_cast<std::size_t>(count)];
  if (m_pUserLines == nullptr) return 0;

  WCHAR section[32];
  int skip = 0;
  int id = kUserChainId;
  for (int i = 0; i < 2 && i < count; ++i) {
    if (!SectionName(i, section, 32) || m_pUserLines[i].FromFile(app, file, section, resources, &id) == 0) return 0;
    if (IsHighlightEntry(m_pUserLines[i])) skip = i + 1;
  }
  id = kUserChainId;
  for (int i = skip; i < count; ++i) {
    if (!SectionName(i, section, 32) || m_pUserLines[i - skip].FromFile(app, file, section, resources, &id) == 0)
      return 0;
    ++m_nUserLines;
  }
  return 1;
}
