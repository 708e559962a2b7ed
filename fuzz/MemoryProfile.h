#pragma once
// An application context whose profile files live in memory, for the fuzzers of table
// files: the file named `inputName` is the fuzz input, read only; every other name reads
// and writes one shared output file.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/ProfileDocument.h"
#include "suite/VantrelAppBaseX.h"

class MemoryProfile : public CVantrelAppBaseX {
 public:
  MemoryProfile(std::string_view bytes, std::u16string_view inputName)
      : m_inputName(inputName), m_input(vantrel1::ProfileDocument::Parse(bytes)) {}

  DWORD GetProfileStringX(LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue, LPWSTR buffer, DWORD size,
                          LPCWSTR file) const override {
    if (buffer == nullptr || size == 0) return 0;
    const vantrel1::ProfileDocument& doc = file != nullptr && m_inputName == file ? m_input : m_output;
    std::u16string value = defaultValue != nullptr ? defaultValue : u"";
    if (section != nullptr && key != nullptr) {
      if (auto found = doc.Find(section, key)) value = *found;
    }
    const std::size_t n = std::min<std::size_t>(value.size(), size - 1);
    std::copy_n(value.data(), n, buffer);
    buffer[n] = 0;
    return static_cast<DWORD>(n);
  }

  BOOL WriteProfileStringX(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR /*file*/) const override {
    if (section == nullptr || key == nullptr) return TRUE;
    if (value == nullptr) return m_output.DeleteKey(section, key) ? TRUE : FALSE;
    return m_output.Set(section, key, value) ? TRUE : FALSE;
  }

 private:
  std::u16string_view m_inputName;
  vantrel1::ProfileDocument m_input;
  mutable vantrel1::ProfileDocument m_output;
};
