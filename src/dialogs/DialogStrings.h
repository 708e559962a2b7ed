#pragma once
// Texts of this library's dialogs, kept in resources/strings/dialogs.str. A dialog's
// controls are named by their resource ids; their texts have string ids of their own,
// since resource ids repeat from one dialog to another.
#include "platform/StdStr.h"
#include "platform/Types.h"

namespace vantrel1 {

// The overwrite prompt (dialog 20006).
constexpr UINT DSTR_OVERWRITE_TITLE = 21100;
constexpr UINT DSTR_OVERWRITE = 21101;
constexpr UINT DSTR_REPLACE_ALL = 21102;
constexpr UINT DSTR_SKIP = 21103;
constexpr UINT DSTR_SKIP_ALL = 21104;

// String `id` of this library's own module; empty when absent.
VANTREL1_QT_EXPORT CStdStrW DialogString(UINT id);

}  // namespace vantrel1
