#include "linestyle/RecordSource.h"

#include <climits>

#include "platform/Profile.h"
#include "platform/StringTable.h"
#include "suite/VantrelAppBaseX.h"

namespace vantrel1 {

namespace {
// String ids are 16-bit.
constexpr int kMaxStringId = 0xFFFF;
}  // namespace

DWORD ReadProfileKey(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, const WCHAR* key,
                     RecordBuffer& buffer) {
  if (app != nullptr) return app->GetProfileStringX(section, key, u"", buffer, kRecordSize, file);
  return GetPrivateProfileStringW(section, key, u"", buffer, kRecordSize, file);
}

BOOL WriteProfileKey(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, const WCHAR* key,
                     const WCHAR* value) {
  if (app != nullptr) return app->WriteProfileStringX(section, key, value, file);
  return WritePrivateProfileStringW(section, key, value, file);
}

int RecordSource::Read(const WCHAR* key, RecordBuffer& buffer) {
  if (FromProfile()) return static_cast<int>(ReadProfileKey(m_app, m_file, m_section, key, buffer));
  buffer[0] = 0;
  if (m_stringId == nullptr) return 0;
  const int id = *m_stringId;
  if (id < INT_MAX) ++*m_stringId;
  if (id < 0 || id > kMaxStringId) return 0;
  return LoadStringW(m_module, static_cast<UINT>(id), buffer, kRecordSize);
}

int RecordSource::ReadItem(const WCHAR* prefix, int index, RecordBuffer& buffer) {
  return Read(FromProfile() ? IndexedName(prefix, index).c_str() : nullptr, buffer);
}

}  // namespace vantrel1
