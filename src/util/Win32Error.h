#pragma once
// The Windows error code that stands for a POSIX errno value, so that the file utilities
// report failures in the codes their callers on Windows already handle.
#include "platform/Types.h"

namespace vantrel1 {

// ENOENT gives ERROR_FILE_NOT_FOUND (2), EACCES ERROR_ACCESS_DENIED (5) and so on; an
// errno without a Windows counterpart gives ERROR_GEN_FAILURE (31), and 0 gives 0.
VANTREL1_EXPORT DWORD Win32ErrorFromErrno(int error);

}  // namespace vantrel1
