#include "platform/Registry.h"

#include <algorithm>
#include <climits>
#include <string>

#include "platform/ProfileDocument.h"

namespace {

CMemoryRegistryStore g_memoryStore;
CRegistryStore* g_store = &g_memoryStore;

bool ParseInt(const CStdStrW& text, int& value) {
  std::size_t i = 0;
  const bool negative = !text.empty() && text[0] == u'-';
  if (!text.empty() && (text[0] == u'-' || text[0] == u'+')) ++i;
  if (i == text.size()) return false;
  long long magnitude = 0;
  for (; i < text.size(); ++i) {
    if (text[i] < u'0' || text[i] > u'9') return false;
    magnitude = magnitude * 10 + (text[i] - u'0');
    if (magnitude > static_cast<long long>(INT_MAX) + 1) return false;
  }
  const long long signedValue = negative ? -magnitude : magnitude;
  if (signedValue > INT_MAX) return false;
  value = static_cast<int>(signedValue);
  return true;
}

}  // namespace

CRegistryStore::~CRegistryStore() = default;

bool CMemoryRegistryStore::Read(const CStdStrW& section, const CStdStrW& name, CStdStrW& value) {
  const auto it = m_values.find({vantrel1::FoldName(section), vantrel1::FoldName(name)});
  if (it == m_values.end()) return false;
  value = it->second;
  return true;
}

bool CMemoryRegistryStore::Write(const CStdStrW& section, const CStdStrW& name, const CStdStrW& value) {
  m_values[{vantrel1::FoldName(section), vantrel1::FoldName(name)}] = value;
  return true;
}

bool CMemoryRegistryStore::Delete(const CStdStrW& section, const CStdStrW& name) {
  m_values.erase({vantrel1::FoldName(section), vantrel1::FoldName(name)});
  return true;
}

CRegistryStore* SetRegistryStore(CRegistryStore* store) {
  CRegistryStore* previous = g_store;
  g_store = store ? store : &g_memoryStore;
  return previous;
}

CRegistryStore* GetRegistryStore() { return g_store; }

int CorviaRegistryRead(LPCWSTR section, LPCWSTR name, LPWSTR buffer, int size) {
  if (buffer && size > 0) buffer[0] = 0;
  CStdStrW value;
  if (!name || !g_store->Read(CStdStrW(section), CStdStrW(name), value)) return 0;
  if (buffer && size > 0) {
    const std::size_t n = std::min(value.size(), static_cast<std::size_t>(size - 1));
    std::copy_n(value.data(), n, buffer);
    buffer[n] = 0;
  }
  return 1;
}

int CorviaRegistryWrite(LPCWSTR section, LPCWSTR name, LPCWSTR value) {
  if (!name) return 0;
  const bool ok = value ? g_store->Write(CStdStrW(section), CStdStrW(name), CStdStrW(value))
                        : g_store->Delete(CStdStrW(section), CStdStrW(name));
  return ok ? 1 : 0;
}

int CorviaRegistryReadInt(LPCWSTR section, LPCWSTR name, int defaultValue) {
  CStdStrW text;
  int value = 0;
  if (!name || !g_store->Read(CStdStrW(section), CStdStrW(name), text) || !ParseInt(text, value)) return defaultValue;
  return value;
}

int CorviaRegistryWriteInt(LPCWSTR section, LPCWSTR name, int value) {
  const std::string digits = std::to_string(value);
  return CorviaRegistryWrite(section, name, CStdStrW(std::u16string(digits.begin(), digits.end())).c_str());
}
