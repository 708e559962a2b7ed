#include "util/ReadOnlyFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <limits>
#include <string>

#include "platform/Utf.h"
#include "util/Win32Error.h"

namespace vantrel1 {
namespace {

#ifdef MAP_POPULATE
// One call brings in the pages of a window that would otherwise cost a fault each (2,560
// of them in 10 MiB).
constexpr int kViewFlags = MAP_SHARED | MAP_POPULATE;
#else
constexpr int kViewFlags = MAP_SHARED;
#endif

}  // namespace

DWORD ReadOnlyFile::Open(LPCWSTR path, FileShare share) {
  Close();
  // Windows reports a missing name as a missing path, not a missing file.
  if (path == nullptr || *path == 0) return ERROR_PATH_NOT_FOUND;
  const std::string name = ToUtf8(path);
  // Non-blocking only while opening, so that a FIFO without a writer does not hang us.
  m_fd = ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
  if (m_fd < 0) return Win32ErrorFromErrno(errno);
  const DWORD error = Prepare(share);
  if (error != ERROR_SUCCESS) Close();
  return error;
}

DWORD ReadOnlyFile::Prepare(FileShare share) {
  struct stat status {};
  if (::fstat(m_fd, &status) != 0) return Win32ErrorFromErrno(errno);
  if (S_ISDIR(status.st_mode)) return ERROR_ACCESS_DENIED;
  // A file system without locks cannot deny anyone; that is not a reason to fail.
  if (share == FileShare::DenyWriters && ::flock(m_fd, LOCK_SH | LOCK_NB) != 0 &&
      errno == EWOULDBLOCK)
    return ERROR_SHARING_VIOLATION;
  const int flags = ::fcntl(m_fd, F_GETFL);
  if (flags >= 0) ::fcntl(m_fd, F_SETFL, flags & ~O_NONBLOCK);
  ::posix_fadvise(m_fd, 0, 0, POSIX_FADV_SEQUENTIAL);
  return ERROR_SUCCESS;
}

void ReadOnlyFile::Close() {
  if (m_fd >= 0) ::close(m_fd);
  m_fd = -1;
}

bool ReadOnlyFile::Read(void* buffer, std::size_t size, std::size_t& bytesRead) {
  bytesRead = 0;
  for (;;) {
    const ssize_t n = ::read(m_fd, buffer, size);
    if (n >= 0) {
      bytesRead = static_cast<std::size_t>(n);
      return true;
    }
    if (errno != EINTR) return false;
  }
}

FileView::FileView(const ReadOnlyFile& file, std::uint64_t offset, std::size_t length) {
  if (length == 0) return;
  if (offset > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) {
    m_error = Win32ErrorFromErrno(EOVERFLOW);
    return;
  }
  void* data = ::mmap(nullptr, length, PROT_READ, kViewFlags, file.Descriptor(),
                      static_cast<off_t>(offset));
  if (data == MAP_FAILED) {
    m_error = Win32ErrorFromErrno(errno);
    return;
  }
  m_data = data;
  m_size = length;
}

FileView::~FileView() {
  if (m_data != nullptr) ::munmap(m_data, m_size);
}

}  // namespace vantrel1
