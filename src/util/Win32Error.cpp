#include "util/Win32Error.h"

#include <cerrno>

namespace vantrel1 {
namespace {

// Codes not needed elsewhere in the library, with the values Windows gives them.
constexpr DWORD kErrorInvalidFunction = 1;
constexpr DWORD kErrorGenFailure = 31;
constexpr DWORD kErrorDiskFull = 112;
constexpr DWORD kErrorBusy = 170;
constexpr DWORD kErrorFilenameExcedRange = 206;
constexpr DWORD kErrorFileTooLarge = 223;
constexpr DWORD kErrorIoDevice = 1117;
constexpr DWORD kErrorCantResolveFilename = 1921;

}  // namespace

DWORD Win32ErrorFromErrno(int error) {
  switch (error) {
    case 0: return ERROR_SUCCESS;
    case ENOENT: case ENXIO: return ERROR_FILE_NOT_FOUND;
    case ENOTDIR: return ERROR_PATH_NOT_FOUND;
    case EMFILE: case ENFILE: return ERROR_TOO_MANY_OPEN_FILES;
    // Windows refuses to open a directory as a file with "access denied" too.
    case EACCES: case EPERM: case EROFS: case EISDIR: return ERROR_ACCESS_DENIED;
    case EBADF: return ERROR_INVALID_HANDLE;
    case ENOMEM: return ERROR_NOT_ENOUGH_MEMORY;
    // A lock held by another writer, or a program image being executed.
    case EWOULDBLOCK: case ETXTBSY: return ERROR_SHARING_VIOLATION;
    case EINVAL: return ERROR_INVALID_PARAMETER;
    case ENODEV: return kErrorInvalidFunction;
    case ENOSPC: return kErrorDiskFull;
    case EBUSY: return kErrorBusy;
    case ENAMETOOLONG: return kErrorFilenameExcedRange;
    case EFBIG: case EOVERFLOW: return kErrorFileTooLarge;
    case EIO: return kErrorIoDevice;
    case ELOOP: return kErrorCantResolveFilename;
    default: return kErrorGenFailure;
  }
}

}  // namespace vantrel1
