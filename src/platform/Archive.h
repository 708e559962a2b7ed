#pragma once
// CArchive: the binary stream that documents and clipboard blocks are written in, over a
// file or a block of memory. Every value is little-endian whatever the machine, with the
// widths Windows gives the types, so that archives written by the suite's Windows
// programs load here and the other way round.
//
// Strings are written in the framework's Unicode form: byte 0xFF, word 0xFFFE, then the
// length in UTF-16 units (a byte when below 0xFF; else 0xFF and a word when below
// 0xFFFE; else 0xFF, 0xFFFF and a dword), then the units. Reading also accepts the
// framework's 8-bit form, which has no 0xFFFE word.
//
// Every failure throws CArchiveException: reading past the end (endOfFile), writing to a
// loading archive (readOnly), reading from a storing one (writeOnly), a file that cannot
// be opened or written (genericException). A string length larger than the bytes left is
// endOfFile before anything is allocated.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ArchiveException.h"
#include "platform/StdStr.h"
#include "platform/Types.h"

class VANTREL1_EXPORT CArchive {
 public:
  enum Mode { store = 0, load = 1 };

  // Over a file, opened in binary; storing creates or truncates it. Throws
  // genericException (with the path) when the file cannot be opened.
  CArchive(const CStdStrW& strFileName, Mode nMode);
  // Over memory: storing appends to an empty block (see GetBytes); loading reads nothing.
  explicit CArchive(Mode nMode);
  // Loads from a copy of the bytes.
  explicit CArchive(std::span<const BYTE> bytes);
  // Flushes and closes a file archive that is still open; errors go unreported here, so
  // callers who care call Close.
  ~CArchive();
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;

  bool IsLoading() const { return m_nMode == load; }
  bool IsStoring() const { return m_nMode == store; }
  // Loading: true when nothing is left to read.
  bool IsBufferEmpty() const;
  const CStdStrW& GetFileName() const { return m_strFileName; }
  // The bytes of a memory archive (what was stored, or what is being loaded).
  const std::vector<BYTE>& GetBytes() const { return m_bytes; }

  // Copies up to nMax bytes and returns how many there were; fewer only at the end,
  // which is not an error here (the typed reads below throw instead).
  UINT Read(void* lpBuf, UINT nMax);
  void Write(const void* lpBuf, UINT nMax);
  void Flush();
  // Flushes and closes; any later use throws genericException.
  void Close();
  // Closes without throwing, for error paths (a file keeps what was written).
  void Abort();

  CArchive& operator<<(BYTE by);
  CArchive& operator<<(char ch);  // one byte
  CArchive& operator<<(WORD w);
  CArchive& operator<<(std::int16_t n);
  CArchive& operator<<(WCHAR ch);  // one UTF-16 unit, two bytes
  CArchive& operator<<(std::int32_t l);  // int and LONG
  CArchive& operator<<(std::uint32_t dw);  // unsigned, UINT and DWORD
  CArchive& operator<<(std::int64_t n);
  CArchive& operator<<(std::uint64_t n);
  CArchive& operator<<(float f);
  CArchive& operator<<(double d);
  CArchive& operator<<(std::u16string_view str);  // CStdStrW
  CArchive& operator<<(LPCWSTR psz);  // up to the terminator; null is an empty string
  // A bool has no width of its own in any record: left to overload resolution it would
  // silently become a 4-byte int, and a pointer would turn into a bool. Records say the
  // width they mean (a BYTE or a BOOL, which is an int).
  CArchive& operator<<(bool) = delete;

  CArchive& operator>>(BYTE& by);
  CArchive& operator>>(char& ch);
  CArchive& operator>>(WORD& w);
  CArchive& operator>>(std::int16_t& n);
  CArchive& operator>>(WCHAR& ch);
  CArchive& operator>>(std::int32_t& l);
  CArchive& operator>>(std::uint32_t& dw);
  CArchive& operator>>(std::int64_t& n);
  CArchive& operator>>(std::uint64_t& n);
  CArchive& operator>>(float& f);
  CArchive& operator>>(double& d);
  CArchive& operator>>(std::u16string& str);  // CStdStrW
  CArchive& operator>>(bool&) = delete;

 private:
  template <typename T>
  CArchive& WriteValue(T value);
  template <typename T>
  CArchive& ReadValue(T& value);
  void ReadExactly(void* lpBuf, std::size_t nCount);
  void WriteBytes(const void* lpBuf, std::size_t nCount);
  std::size_t ReadBytes(void* lpBuf, std::size_t nCount);
  void MeasureFile();
  std::uint64_t BytesLeft() const;
  std::uint64_t ReadStringLength(bool& bWide);
  void WriteStringLength(std::uint64_t nLength);
  void CheckReading() const;
  void CheckWriting() const;
  [[noreturn]] void Throw(int cause) const;

  Mode m_nMode;
  bool m_bClosed = false;
  CStdStrW m_strFileName;
  std::FILE* m_pFile = nullptr;
  std::uint64_t m_nFileSize = 0;  // loading from a file
  std::uint64_t m_nFilePos = 0;
  std::vector<BYTE> m_bytes;  // memory archives
  std::size_t m_nPos = 0;
};
