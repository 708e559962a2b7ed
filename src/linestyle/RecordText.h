#pragma once
// The two halves of the items' comma-separated records, shared by the line, symbol and
// text items: a tokenizer over a private copy of the record (a run of commas is one
// separator, so empty fields are skipped) and an appender that adds ",<number>" to a
// record being written, refusing to go past the buffer.
#include <cstddef>
#include <new>
#include <string>

#include "platform/Types.h"
#include "platform/WideCrt.h"

namespace vantrel1 {

class RecordTokens {
 public:
  // False when the copy cannot be made. Null text is an empty record.
  bool Split(const WCHAR* text) {
    try {
      m_copy.assign(text != nullptr ? text : u"");
    } catch (const std::bad_alloc&) {
      return false;
    }
    m_context = nullptr;
    m_first = true;
    return true;
  }

  // The next field, or null when none is left.
  const WCHAR* Next() {
    WCHAR* start = m_first ? m_copy.data() : nullptr;
    m_first = false;
    return wcstok(start, u",", &m_context);
  }

 private:
  std::u16string m_copy;
  WCHAR* m_context = nullptr;
  bool m_first = true;
};

class RecordWriter {
 public:
  // `buffer` holds a terminated record of fewer than `size` units.
  RecordWriter(WCHAR* buffer, std::size_t size)
      : m_buffer(buffer), m_size(size), m_length(static_cast<std::size_t>(lstrlenW(buffer))) {}

  // Appends "," and the decimal digits of `value` (with its minus sign). The record's
  // writers demand room for two units more than the comma and the terminator take, so a
  // record that would only just fit is refused; the buffer then keeps what it had.
  bool AppendNumber(int value) {
    WCHAR digits[16];
    _itow_s(value, digits, sizeof digits / sizeof digits[0], 10);
    const auto count = static_cast<std::size_t>(lstrlenW(digits));
    if (m_length + 3 + count > m_size) return false;
    m_buffer[m_length++] = u',';
    for (std::size_t i = 0; i < count; ++i) m_buffer[m_length++] = digits[i];
    m_buffer[m_length] = u'\0';
    return true;
  }

 private:
  WCHAR* m_buffer;
  std::size_t m_size;
  std::size_t m_length;
};

}  // namespace vantrel1
