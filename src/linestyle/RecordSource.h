#pragma once
// The text records of line types and point symbols: read from a section of a profile
// file, or from consecutive strings of a string-table module with a running string id,
// and written to a profile file. Without an application (a tool, a test) the file is
// read and written as the default application context does it.
#include "linestyle/IndexedName.h"
#include "platform/Types.h"

class CVantrelAppBaseX;

namespace vantrel1 {

// Every record is read into and written from a buffer of this size.
inline constexpr int kRecordSize = 512;
using RecordBuffer = WCHAR[kRecordSize];

DWORD ReadProfileKey(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, const WCHAR* key,
                     RecordBuffer& buffer);
// With a null section and key this flushes the file.
BOOL WriteProfileKey(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, const WCHAR* key,
                     const WCHAR* value);

// What writing does with an item whose record does not fit the buffer.
enum class RecordMisfit { kSkip, kStop };

// Writes each item's record under `prefix` + index. A misfit is either left out, without
// a key, or ends the writing with false.
template <typename Item>
bool WriteItemRecords(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, const WCHAR* prefix,
                      Item* items, int count, RecordMisfit misfit) {
  for (int i = 0; i < count; ++i) {
    RecordBuffer record;
    if (items[i].ToAscii(record, kRecordSize) != nullptr)
      WriteProfileKey(app, file, section, IndexedName(prefix, i).c_str(), record);
    else if (misfit == RecordMisfit::kStop)
      return false;
  }
  return true;
}

class RecordSource {
 public:
  // The profile section when both `file` and `section` are given, otherwise the strings
  // of `module` from *stringId on.
  RecordSource(CVantrelAppBaseX* app, const WCHAR* file, const WCHAR* section, HINSTANCE module, int* stringId)
      : m_app(app), m_file(file), m_section(section), m_module(module), m_stringId(stringId) {}

  bool FromProfile() const { return m_file != nullptr && m_section != nullptr; }
  // A run of strings needs somewhere to keep its running id.
  bool Usable() const { return FromProfile() || m_stringId != nullptr; }

  // The record under `key`, or the string at the running id, which moves on whether or
  // not anything was there. Returns the units read.
  int Read(const WCHAR* key, RecordBuffer& buffer);
  // The item record `prefix` + index: a key of the section, or the next string.
  int ReadItem(const WCHAR* prefix, int index, RecordBuffer& buffer);

  // Reads `count` item records into `item` in turn and hands each to `add`; false at the
  // first one that is missing, does not parse or is refused.
  template <typename Item, typename Add>
  bool ReadItems(const WCHAR* prefix, int count, Item& item, Add add) {
    RecordBuffer record;
    for (int i = 0; i < count; ++i) {
      if (ReadItem(prefix, i, record) < 1 || item.FromAscii(record) == 0 || add(&item) == 0) return false;
    }
    return true;
  }

 private:
  CVantrelAppBaseX* m_app;
  const WCHAR* m_file;
  const WCHAR* m_section;
  HINSTANCE m_module;
  int* m_stringId;
};

}  // namespace vantrel1
