#include "platform/Archive.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>

#include "platform/Utf.h"

namespace vantrel1 {
namespace {

// Archives written by ANSI builds of the suite store 8-bit strings in the system code
// page of the machine that wrote them. The suite ran on Serbian (Latin) and other
// Central European Windows, whose ANSI code page is 1250; Latin-1 would turn š (0x9A),
// ž (0x9E), Š (0x8A) and Ž (0x8E) into control characters and đ, č, ć into other
// letters. The five bytes that code page 1250 leaves undefined map to the C1 control of
// the same value, as Windows' own conversion does.
constexpr std::array<char16_t, 128> kCp1250High = {
    0x20AC, 0x0081, 0x201A, 0x0083, 0x201E, 0x2026, 0x2020, 0x2021,  // 80
    0x0088, 0x2030, 0x0160, 0x2039, 0x015A, 0x0164, 0x017D, 0x0179,  // 88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90
    0x0098, 0x2122, 0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A,  // 98
    0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6, 0x00A7,  // A0
    0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B,  // A8
    0x00B0, 0x00B1, 0x02DB, 0x0142, 0x00B4, 0x00B5, 0x00B6, 0x00B7,  // B0
    0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C,  // B8
    0x0154, 0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7,  // C0
    0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD, 0x00CE, 0x010E,  // C8
    0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7,  // D0
    0x0158, 0x016E, 0x00DA, 0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF,  // D8
    0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,  // E0
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F,  // E8
    0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4, 0x0151, 0x00F6, 0x00F7,  // F0
    0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,  // F8
};

char16_t FromCp1250(BYTE b) { return b < 0x80 ? char16_t{b} : kCp1250High[b - 0x80u]; }

// Strings are read in pieces of this many units, so that memory grows only with the
// bytes that actually arrive, even where the size of the source is unknown.
constexpr std::size_t kStringChunk = 16384;

template <typename T>
using Unsigned = std::make_unsigned_t<T>;

template <typename T>
std::array<BYTE, sizeof(T)> ToLittleEndian(T value) {
  std::array<BYTE, sizeof(T)> bytes{};
  auto bits = static_cast<Unsigned<T>>(value);
  for (auto& b : bytes) {
    b = static_cast<BYTE>(bits & 0xFFu);
    bits = static_cast<Unsigned<T>>(bits >> 8);
  }
  return bytes;
}

template <typename T>
T FromLittleEndian(const std::array<BYTE, sizeof(T)>& bytes) {
  Unsigned<T> bits = 0;
  for (std::size_t i = sizeof(T); i-- > 0;) {
    bits = static_cast<Unsigned<T>>((bits << 8) | bytes[i]);
  }
  return static_cast<T>(bits);
}

CStdStrW NameOf(LPCWSTR name) { return name == nullptr ? CStdStrW() : CStdStrW(name); }

}  // namespace
}  // namespace vantrel1

using vantrel1::FromLittleEndian;
using vantrel1::ToLittleEndian;

// --- CArchiveException -----------------------------------------------------------------

CArchiveException::CArchiveException(int cause, const CStdStrW& strArchiveName)
    : m_cause(cause), m_strFileName(strArchiveName) {}

CArchiveException::~CArchiveException() = default;

const char* CArchiveException::what() const noexcept {
  switch (m_cause) {
    case none: return "archive: no error";
    case genericException: return "archive: input/output error";
    case readOnly: return "archive: writing to an archive that loads";
    case endOfFile: return "archive: unexpected end of data";
    case writeOnly: return "archive: reading from an archive that stores";
    case badIndex: return "archive: bad object index";
    case badClass: return "archive: unexpected class";
    case badSchema: return "archive: unsupported schema";
    case bufferFull: return "archive: buffer full";
    default: return "archive: unknown error";
  }
}

void AfxThrowArchiveException(int cause, LPCWSTR lpszArchiveName) {
  throw CArchiveException(cause, vantrel1::NameOf(lpszArchiveName));
}

// --- Opening and closing ------------------------------------------------------------------

CArchive::CArchive(const CStdStrW& strFileName, Mode nMode)
    : m_nMode(nMode), m_strFileName(strFileName) {
  const std::string path = vantrel1::ToUtf8(strFileName);
  m_pFile = std::fopen(path.c_str(), nMode == load ? "rb" : "wb");
  if (m_pFile == nullptr) Throw(CArchiveException::genericException);
  if (nMode == load) MeasureFile();
}

// Anything but a regular file (a pipe, a device) has no size to check lengths against;
// its strings are bounded only by the data that actually arrives.
void CArchive::MeasureFile() {
  struct stat info {};
  const bool known = fstat(fileno(m_pFile), &info) == 0;
  if (known && S_ISDIR(info.st_mode)) {
    Abort();
    Throw(CArchiveException::genericException);
  }
  m_nFileSize = known && S_ISREG(info.st_mode) ? static_cast<std::uint64_t>(info.st_size)
                                               : std::numeric_limits<std::uint64_t>::max();
}

CArchive::CArchive(Mode nMode) : m_nMode(nMode) {}

CArchive::CArchive(std::span<const BYTE> bytes)
    : m_nMode(load), m_bytes(bytes.begin(), bytes.end()) {}

CArchive::~CArchive() { Abort(); }

void CArchive::Flush() {
  if (m_bClosed) Throw(CArchiveException::genericException);
  if (m_pFile != nullptr && IsStoring() && std::fflush(m_pFile) != 0) {
    Throw(CArchiveException::genericException);
  }
}

void CArchive::Close() {
  if (m_bClosed) return;
  Flush();
  m_bClosed = true;
  if (m_pFile == nullptr) return;
  std::FILE* file = m_pFile;
  m_pFile = nullptr;
  if (std::fclose(file) != 0 && IsStoring()) Throw(CArchiveException::genericException);
}

void CArchive::Abort() {
  m_bClosed = true;
  if (m_pFile != nullptr) std::fclose(m_pFile);
  m_pFile = nullptr;
}

// --- Raw bytes ----------------------------------------------------------------------------

void CArchive::Throw(int cause) const { throw CArchiveException(cause, m_strFileName); }

void CArchive::CheckReading() const {
  if (m_bClosed) Throw(CArchiveException::genericException);
  if (!IsLoading()) Throw(CArchiveException::writeOnly);
}

void CArchive::CheckWriting() const {
  if (m_bClosed) Throw(CArchiveException::genericException);
  if (!IsStoring()) Throw(CArchiveException::readOnly);
}

std::uint64_t CArchive::BytesLeft() const {
  if (m_pFile != nullptr) return m_nFileSize - std::min(m_nFilePos, m_nFileSize);
  return m_bytes.size() - m_nPos;
}

bool CArchive::IsBufferEmpty() const {
  if (!IsLoading() || m_bClosed) return true;
  if (m_pFile != nullptr && m_nFileSize == std::numeric_limits<std::uint64_t>::max()) {
    const int c = std::fgetc(m_pFile);
    if (c == EOF) return true;
    std::ungetc(c, m_pFile);
    return false;
  }
  return BytesLeft() == 0;
}

std::size_t CArchive::ReadBytes(void* lpBuf, std::size_t nCount) {
  if (m_pFile != nullptr) {
    const std::size_t got = std::fread(lpBuf, 1, nCount, m_pFile);
    m_nFilePos += got;
    if (got < nCount && std::ferror(m_pFile)) Throw(CArchiveException::genericException);
    return got;
  }
  const std::size_t got = std::min(nCount, m_bytes.size() - m_nPos);
  if (got > 0) std::memcpy(lpBuf, m_bytes.data() + m_nPos, got);
  m_nPos += got;
  return got;
}

void CArchive::ReadExactly(void* lpBuf, std::size_t nCount) {
  CheckReading();
  if (ReadBytes(lpBuf, nCount) < nCount) Throw(CArchiveException::endOfFile);
}

void CArchive::WriteBytes(const void* lpBuf, std::size_t nCount) {
  CheckWriting();
  if (nCount == 0) return;
  if (m_pFile != nullptr) {
    if (std::fwrite(lpBuf, 1, nCount, m_pFile) != nCount) {
      Throw(CArchiveException::genericException);
    }
    return;
  }
  const auto* bytes = static_cast<const BYTE*>(lpBuf);
  m_bytes.insert(m_bytes.end(), bytes, bytes + nCount);
}

UINT CArchive::Read(void* lpBuf, UINT nMax) {
  CheckReading();
  return static_cast<UINT>(ReadBytes(lpBuf, nMax));
}

void CArchive::Write(const void* lpBuf, UINT nMax) { WriteBytes(lpBuf, nMax); }

// --- Numbers ------------------------------------------------------------------------------

template <typename T>
CArchive& CArchive::WriteValue(T value) {
  const auto bytes = ToLittleEndian(value);
  WriteBytes(bytes.data(), bytes.size());
  return *this;
}

template <typename T>
CArchive& CArchive::ReadValue(T& value) {
  std::array<BYTE, sizeof(T)> bytes{};
  ReadExactly(bytes.data(), bytes.size());
  value = FromLittleEndian<T>(bytes);
  return *this;
}

CArchive& CArchive::operator<<(BYTE by) { return WriteValue(by); }
CArchive& CArchive::operator<<(char ch) { return WriteValue(static_cast<BYTE>(ch)); }
CArchive& CArchive::operator<<(WORD w) { return WriteValue(w); }
CArchive& CArchive::operator<<(std::int16_t n) { return WriteValue(n); }
CArchive& CArchive::operator<<(WCHAR ch) { return WriteValue(static_cast<WORD>(ch)); }
CArchive& CArchive::operator<<(std::int32_t l) { return WriteValue(l); }
CArchive& CArchive::operator<<(std::uint32_t dw) { return WriteValue(dw); }
CArchive& CArchive::operator<<(std::int64_t n) { return WriteValue(n); }
CArchive& CArchive::operator<<(std::uint64_t n) { return WriteValue(n); }
CArchive& CArchive::operator<<(float f) { return WriteValue(std::bit_cast<std::uint32_t>(f)); }
CArchive& CArchive::operator<<(double d) { return WriteValue(std::bit_cast<std::uint64_t>(d)); }

CArchive& CArchive::operator>>(BYTE& by) { return ReadValue(by); }
CArchive& CArchive::operator>>(std::int16_t& n) { return ReadValue(n); }
CArchive& CArchive::operator>>(WORD& w) { return ReadValue(w); }
CArchive& CArchive::operator>>(std::int32_t& l) { return ReadValue(l); }
CArchive& CArchive::operator>>(std::uint32_t& dw) { return ReadValue(dw); }
CArchive& CArchive::operator>>(std::int64_t& n) { return ReadValue(n); }
CArchive& CArchive::operator>>(std::uint64_t& n) { return ReadValue(n); }

CArchive& CArchive::operator>>(char& ch) {
  BYTE by = 0;
  ReadValue(by);
  ch = static_cast<char>(by);
  return *this;
}

CArchive& CArchive::operator>>(WCHAR& ch) {
  WORD w = 0;
  ReadValue(w);
  ch = static_cast<WCHAR>(w);
  return *this;
}

CArchive& CArchive::operator>>(float& f) {
  std::uint32_t bits = 0;
  ReadValue(bits);
  f = std::bit_cast<float>(bits);
  return *this;
}

CArchive& CArchive::operator>>(double& d) {
  std::uint64_t bits = 0;
  ReadValue(bits);
  d = std::bit_cast<double>(bits);
  return *this;
}

// --- Strings ------------------------------------------------------------------------------

void CArchive::WriteStringLength(std::uint64_t nLength) {
  *this << BYTE{0xFF} << WORD{0xFFFE};
  if (nLength < 0xFF) {
    *this << static_cast<BYTE>(nLength);
    return;
  }
  *this << BYTE{0xFF};
  if (nLength < 0xFFFE) {
    *this << static_cast<WORD>(nLength);
    return;
  }
  *this << WORD{0xFFFF};
  if (nLength < 0xFFFFFFFFu) {
    *this << static_cast<DWORD>(nLength);
    return;
  }
  *this << DWORD{0xFFFFFFFFu} << nLength;
}

// The 0xFFFE word may only follow the first byte; after it the length starts over. A
// word of 0xFFFE in that second length is taken as a length, since only the first
// position can be the marker.
std::uint64_t CArchive::ReadStringLength(bool& bWide) {
  bWide = false;
  BYTE by = 0;
  WORD w = 0;
  *this >> by;
  if (by < 0xFF) return by;
  *this >> w;
  if (w == 0xFFFE) {
    bWide = true;
    *this >> by;
    if (by < 0xFF) return by;
    *this >> w;
  }
  if (w < 0xFFFF) return w;
  DWORD dw = 0;
  *this >> dw;
  if (dw < 0xFFFFFFFFu) return dw;
  std::uint64_t qw = 0;
  *this >> qw;
  return qw;
}

CArchive& CArchive::operator<<(std::u16string_view str) {
  WriteStringLength(str.size());
  for (char16_t unit : str) *this << unit;
  return *this;
}

CArchive& CArchive::operator<<(LPCWSTR psz) {
  return *this << (psz == nullptr ? std::u16string_view() : std::u16string_view(psz));
}

CArchive& CArchive::operator>>(std::u16string& str) {
  CheckReading();
  bool bWide = false;
  const std::uint64_t nLength = ReadStringLength(bWide);
  const std::uint64_t nUnitSize = bWide ? 2 : 1;
  if (nLength > BytesLeft() / nUnitSize) Throw(CArchiveException::endOfFile);

  std::u16string result;
  std::vector<BYTE> chunk;
  for (std::uint64_t nDone = 0; nDone < nLength;) {
    const auto nUnits =
        static_cast<std::size_t>(std::min<std::uint64_t>(nLength - nDone, vantrel1::kStringChunk));
    chunk.resize(nUnits * nUnitSize);
    ReadExactly(chunk.data(), chunk.size());
    for (std::size_t i = 0; i < nUnits; ++i) {
      result += bWide ? static_cast<char16_t>(chunk[2 * i] | (chunk[2 * i + 1] << 8))
                      : vantrel1::FromCp1250(chunk[i]);
    }
    nDone += nUnits;
  }
  str = std::move(result);
  return *this;
}
