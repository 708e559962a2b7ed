#pragma once
// The suite's per-user settings: values under the current user's product key "Corvia",
// optionally in a named section below it (an empty or null section is the product key
// itself, where the file dialog keeps "StartInSamples"). Values are text; integers are
// stored as their decimal text.
//
// The values live in a replaceable store: in memory by default, the user's settings
// through Qt in GUI programs. Section and value names are matched without regard to case,
// as in the Windows registry.
#include <map>
#include <utility>

#include "platform/StdStr.h"
#include "platform/Types.h"

class VANTREL1_EXPORT CRegistryStore {
 public:
  virtual ~CRegistryStore();
  // True and the value when it exists.
  virtual bool Read(const CStdStrW& section, const CStdStrW& name, CStdStrW& value) = 0;
  virtual bool Write(const CStdStrW& section, const CStdStrW& name, const CStdStrW& value) = 0;
  // True when the value is gone afterwards (also when it never existed).
  virtual bool Delete(const CStdStrW& section, const CStdStrW& name) = 0;
};

// Values kept for the life of the process.
class VANTREL1_EXPORT CMemoryRegistryStore : public CRegistryStore {
 public:
  bool Read(const CStdStrW& section, const CStdStrW& name, CStdStrW& value) override;
  bool Write(const CStdStrW& section, const CStdStrW& name, const CStdStrW& value) override;
  bool Delete(const CStdStrW& section, const CStdStrW& name) override;

 private:
  using Key = std::pair<std::u16string, std::u16string>;  // folded section and name
  std::map<Key, CStdStrW> m_values;
};

// Installs a store (not owned) and returns the previous one; null restores the default
// in-memory store.
VANTREL1_EXPORT CRegistryStore* SetRegistryStore(CRegistryStore* store);
VANTREL1_EXPORT CRegistryStore* GetRegistryStore();

// Copies the value into `buffer` (at most size - 1 units and a terminator) and returns 1;
// returns 0 with an empty buffer when the value does not exist or `name` is null.
VANTREL1_EXPORT int CorviaRegistryRead(LPCWSTR section, LPCWSTR name, LPWSTR buffer, int size);
// Stores `value`; a null value deletes it. 1 on success, 0 on failure.
VANTREL1_EXPORT int CorviaRegistryWrite(LPCWSTR section, LPCWSTR name, LPCWSTR value);

// The value as a decimal integer (optional sign, nothing else around it); `defaultValue`
// when it does not exist or is not such a number.
VANTREL1_EXPORT int CorviaRegistryReadInt(LPCWSTR section, LPCWSTR name, int defaultValue);
VANTREL1_EXPORT int CorviaRegistryWriteInt(LPCWSTR section, LPCWSTR name, int value);
