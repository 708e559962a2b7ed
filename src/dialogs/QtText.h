#pragma once
// The library's UTF-16 strings and Qt's, which hold the same code units.
#include <QString>

#include "platform/StdStr.h"

namespace vantrel1 {

inline QString ToQString(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline CStdStrW FromQString(const QString& text) {
  return CStdStrW(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size()));
}

}  // namespace vantrel1
