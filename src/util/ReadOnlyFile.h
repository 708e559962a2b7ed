#pragma once
// Reading a file as the checksum operations need it: opened read-only by a UTF-16 path,
// read in blocks, or mapped read-only a window at a time. Failures are Windows codes.
#include <cstddef>
#include <cstdint>

#include "platform/Types.h"

namespace vantrel1 {

// Whom the file is shared with while it is open. POSIX has no mandatory sharing, so
// `DenyWriters` takes a shared advisory lock: a writer holding an exclusive lock makes the
// open fail with ERROR_SHARING_VIOLATION, as an open for writing would on Windows.
enum class FileShare { DenyWriters, ReadersAndWriters };

class ReadOnlyFile {
 public:
  ReadOnlyFile() = default;
  ~ReadOnlyFile() { Close(); }
  ReadOnlyFile(const ReadOnlyFile&) = delete;
  ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

  // 0, or the Windows code of the failure. A directory is refused with access denied.
  DWORD Open(LPCWSTR path, FileShare share);
  void Close();
  bool IsOpen() const { return m_fd >= 0; }
  int Descriptor() const { return m_fd; }

  // As ReadFile: false on a failed read; true with `bytesRead` 0 at the end of the file.
  bool Read(void* buffer, std::size_t size, std::size_t& bytesRead);

 private:
  DWORD Prepare(FileShare share);

  int m_fd = -1;
};

// A read-only window of a file, unmapped when it goes away.
class FileView {
 public:
  FileView(const ReadOnlyFile& file, std::uint64_t offset, std::size_t length);
  ~FileView();
  FileView(const FileView&) = delete;
  FileView& operator=(const FileView&) = delete;

  // 0, or the Windows code of the reason the window could not be mapped.
  DWORD Error() const { return m_error; }
  const unsigned char* Data() const { return static_cast<const unsigned char*>(m_data); }
  std::size_t Size() const { return m_size; }

 private:
  void* m_data = nullptr;
  std::size_t m_size = 0;
  DWORD m_error = ERROR_SUCCESS;
};

}  // namespace vantrel1
