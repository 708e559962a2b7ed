#pragma once
// Conversions between the library's UTF-16 text and UTF-8 (file names, Qt-free output,
// files written in UTF-8). Ill-formed input never fails: each bad sequence or lone
// surrogate becomes U+FFFD.
#include <string>
#include <string_view>

#include "platform/Export.h"

namespace vantrel1 {

VANTREL1_EXPORT std::string ToUtf8(std::u16string_view text);
VANTREL1_EXPORT std::u16string FromUtf8(std::string_view text);

}  // namespace vantrel1
