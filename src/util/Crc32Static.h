#pragma once
// CRC-32 (the reflected one of ZIP and zlib; "123456789" gives 0xCBF43926) of files and
// wide strings. Every operation writes the checksum to its output argument, also after a
// failure, and returns a Windows error code (0 for success).
#include <cstdint>

#include "platform/Types.h"
#include "util/Crc32Table.h"

class VANTREL1_EXPORT CCrc32Static {
 public:
  CCrc32Static();
  CCrc32Static(const CCrc32Static& other);
  CCrc32Static& operator=(const CCrc32Static& other);
  virtual ~CCrc32Static();

  // The low byte of each UTF-16 unit before the terminator; null counts as empty.
  static DWORD StringCrc32(LPCWSTR szString, DWORD& dwCrc32);

  // Four interchangeable ways of reading a file. Paths are UTF-16.
  // Binary stream in 4096-byte blocks; a file that cannot be opened gives 0 and checksum 0.
  static DWORD FileCrc32Streams(LPCWSTR szFilename, DWORD& dwCrc32);
  // Plain reads of 4096 bytes, the file shared with readers and writers.
  static DWORD FileCrc32Win32(LPCWSTR szFilename, DWORD& dwCrc32);
  // Read-only mapping in windows of 10 MiB, writers denied.
  static DWORD FileCrc32Filemap(LPCWSTR szFilename, DWORD& dwCrc32);
  // Reads the whole file like FileCrc32Win32 but folds nothing in: any file it can open
  // gives 0 and checksum 0. Callers wanting a checksum use one of the other three.
  static DWORD FileCrc32Assembly(LPCWSTR szFilename, DWORD& dwCrc32);

 protected:
  // `hFile` is an open file descriptor. False, with size 0, when the size is unknown.
  static bool GetFileSizeQW(int hFile, std::uint64_t& qwSize);

  static void CalcCrc32(BYTE byte, DWORD& dwCrc32) {
    dwCrc32 = vantrel1::kCrc32Table[(dwCrc32 ^ byte) & 0xFFu] ^ (dwCrc32 >> 8);
  }
};
