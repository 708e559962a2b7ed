#pragma once
// Deleting a file that a table is about to be written to afresh.
#include "platform/Types.h"

namespace vantrel1 {

// Removes the file if it is there. A file that is not there is already what was asked
// for, and one that cannot be removed shows itself when it is written next, so neither is
// reported.
void RemoveFileIfPresent(const WCHAR* path);

}  // namespace vantrel1
