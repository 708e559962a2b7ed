#include "util/Crc32Static.h"

#include <sys/stat.h>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <algorithm>
#include <fstream>
#include <string>

#include "platform/Utf.h"
#include "util/Crc32Bulk.h"
#include "util/ReadOnlyFile.h"

using vantrel1::FileShare;
using vantrel1::FileView;
using vantrel1::ReadOnlyFile;

namespace {

constexpr std::size_t kBlockSize = 4096;
// 10 MiB: a multiple of every allocation granularity, so each window starts where a view
// may start, and small enough for address spaces that cannot hold a large file at once.
constexpr std::uint64_t kViewSize = 0xA00000;

// The frame every operation shares: the register starts at all ones, any exception ends
// the feed with ERROR_CRC, and the output is complemented whatever happened, so that a
// failure before the first byte leaves the checksum at 0.
template <typename Feed>
DWORD RunChecksum(DWORD& dwCrc32, Feed feed) {
  dwCrc32 = 0xFFFFFFFFu;
  DWORD error = ERROR_SUCCESS;
  try {
    error = feed(dwCrc32);
  } catch (...) {
    error = ERROR_CRC;
  }
  dwCrc32 = ~dwCrc32;
  return error;
}

// Reads to the end of the file. A read that fails part-way ends the file without an
// error: the checksum covers what was read.
template <bool kFold>
void ReadBlocks(ReadOnlyFile& file, [[maybe_unused]] DWORD& reg) {
  unsigned char buffer[kBlockSize];
  std::size_t got = 0;
  while (file.Read(buffer, sizeof buffer, got) && got > 0) {
    if constexpr (kFold) reg = vantrel1::Crc32Update(reg, buffer, got);
  }
}

template <bool kFold>
DWORD FeedByReads(LPCWSTR path, FileShare share, DWORD& reg) {
  ReadOnlyFile file;
  const DWORD error = file.Open(path, share);
  if (error == ERROR_SUCCESS) ReadBlocks<kFold>(file, reg);
  return error;
}

DWORD FeedWindows(const ReadOnlyFile& file, std::uint64_t size, DWORD& reg) {
  for (std::uint64_t offset = 0; offset < size;) {
    const auto length = static_cast<std::size_t>(std::min(size - offset, kViewSize));
    const FileView view(file, offset, length);
    if (view.Error() != ERROR_SUCCESS) return view.Error();
    reg = vantrel1::Crc32Update(reg, view.Data(), view.Size());
    offset += length;
  }
  return ERROR_SUCCESS;
}

// Opening a FIFO for reading waits for a writer; the stream treats it as a file that
// cannot be opened instead.
bool IsFifo(const std::string& name) {
  struct stat status {};
  return ::stat(name.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

DWORD FeedStream(LPCWSTR path, DWORD& reg) {
  if (path == nullptr) return ERROR_SUCCESS;
  const std::string name = vantrel1::ToUtf8(path);
  if (IsFifo(name)) return ERROR_SUCCESS;
  std::ifstream stream(name, std::ios::in | std::ios::binary);
  char buffer[kBlockSize];
  while (stream.read(buffer, sizeof buffer), stream.gcount() > 0)
    reg = vantrel1::Crc32Update(reg, buffer, static_cast<std::size_t>(stream.gcount()));
  return ERROR_SUCCESS;
}

// Each unit is read only once the one before it is known not to end the text.
bool EightUnitsOfText(LPCWSTR t) {
  return t[0] && t[1] && t[2] && t[3] && t[4] && t[5] && t[6] && t[7];
}

void CopyEightLowBytes(LPCWSTR text, unsigned char* block) {
#if defined(__SSE2__)
  const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  const __m128i low = _mm_and_si128(units, _mm_set1_epi16(0xFF));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(block), _mm_packus_epi16(low, low));
#else
  for (std::size_t k = 0; k < 8; ++k) block[k] = static_cast<unsigned char>(text[k]);
#endif
}

// Copies the low byte of each unit up to the terminator or `capacity` units, eight at a
// time where it can, so that the copy keeps close to the pace of the checksum.
std::size_t GatherLowBytes(LPCWSTR text, unsigned char* block, std::size_t capacity) {
  std::size_t n = 0;
  for (; n + 8 <= capacity && EightUnitsOfText(text + n); n += 8) CopyEightLowBytes(text + n, block + n);
  for (; n < capacity && text[n] != 0; ++n) block[n] = static_cast<unsigned char>(text[n]);
  return n;
}

DWORD FeedLowBytes(LPCWSTR text, DWORD reg) {
  unsigned char block[kBlockSize];
  for (;;) {
    const std::size_t n = GatherLowBytes(text, block, kBlockSize);
    reg = vantrel1::Crc32Update(reg, block, n);
    if (n < kBlockSize) return reg;
    text += n;
  }
}

}  // namespace

CCrc32Static::CCrc32Static() = default;
CCrc32Static::CCrc32Static(const CCrc32Static&) = default;
CCrc32Static& CCrc32Static::operator=(const CCrc32Static&) = default;
CCrc32Static::~CCrc32Static() = default;

// The high byte of each unit is ignored on purpose: text in the Latin-1 range gives the
// checksum of its 8-bit form.
DWORD CCrc32Static::StringCrc32(LPCWSTR szString, DWORD& dwCrc32) {
  return RunChecksum(dwCrc32, [szString](DWORD& reg) {
    if (szString != nullptr) reg = FeedLowBytes(szString, reg);
    return ERROR_SUCCESS;
  });
}

// Unlike the other three, a file that cannot be opened is not reported: the result is 0
// with the checksum 0. Callers rely on that asymmetry.
DWORD CCrc32Static::FileCrc32Streams(LPCWSTR szFilename, DWORD& dwCrc32) {
  return RunChecksum(dwCrc32, [szFilename](DWORD& reg) { return FeedStream(szFilename, reg); });
}

DWORD CCrc32Static::FileCrc32Win32(LPCWSTR szFilename, DWORD& dwCrc32) {
  return RunChecksum(dwCrc32, [szFilename](DWORD& reg) {
    return FeedByReads<true>(szFilename, FileShare::ReadersAndWriters, reg);
  });
}

DWORD CCrc32Static::FileCrc32Filemap(LPCWSTR szFilename, DWORD& dwCrc32) {
  return RunChecksum(dwCrc32, [szFilename](DWORD& reg) {
    ReadOnlyFile file;
    const DWORD error = file.Open(szFilename, FileShare::DenyWriters);
    if (error != ERROR_SUCCESS) return error;
    std::uint64_t size = 0;
    if (!GetFileSizeQW(file.Descriptor(), size)) return ERROR_BAD_LENGTH;
    return FeedWindows(file, size, reg);
  });
}

// The per-block step is empty in this build: the file is opened and read to its end, and
// nothing is folded in.
DWORD CCrc32Static::FileCrc32Assembly(LPCWSTR szFilename, DWORD& dwCrc32) {
  return RunChecksum(dwCrc32, [szFilename](DWORD& reg) {
    return FeedByReads<false>(szFilename, FileShare::DenyWriters, reg);
  });
}

bool CCrc32Static::GetFileSizeQW(int hFile, std::uint64_t& qwSize) {
  qwSize = 0;
  struct stat status {};
  if (hFile < 0 || ::fstat(hFile, &status) != 0 || status.st_size < 0) return false;
  qwSize = static_cast<std::uint64_t>(status.st_size);
  return true;
}
