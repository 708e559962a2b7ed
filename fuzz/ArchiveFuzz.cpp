// Reads arbitrary bytes as every kind of archive value. Nothing may crash, read out of
// bounds or allocate without bound; every failure must be a CArchiveException. Values
// read are also written back, and must give the same bytes (numbers) or the same string.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "platform/Archive.h"

namespace {

using Data = std::span<const BYTE>;

void Check(bool condition) {
  if (!condition) __builtin_trap();
}

template <typename T>
void ReadEvery(Data data) {
  CArchive in(data);
  CArchive out(CArchive::store);
  try {
    for (;;) {
      T value{};
      in >> value;
      out << value;
    }
  } catch (const CArchiveException& e) {
    Check(e.m_cause == CArchiveException::endOfFile);
  }
  const std::size_t whole = data.size() / sizeof(T) * sizeof(T);
  Check(out.GetBytes().size() == whole);
  Check(std::equal(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(whole),
                   out.GetBytes().begin()));
}

void CheckStringRoundTrip(const std::u16string& text) {
  CArchive out(CArchive::store);
  out << text;
  CArchive back(out.GetBytes());
  std::u16string again;
  back >> again;
  Check(again == text);
  Check(back.IsBufferEmpty());
}

void ReadStrings(Data data) {
  CArchive in(data);
  try {
    for (;;) {
      CStdStrW text;
      in >> text;
      CheckStringRoundTrip(text);
    }
  } catch (const CArchiveException& e) {
    Check(e.m_cause == CArchiveException::endOfFile);
  }
}

template <typename T>
void ReadOne(CArchive& ar) {
  T value{};
  ar >> value;
}

// Each byte chooses the kind of the value that follows, as a record of mixed fields.
void ReadMixed(Data data) {
  CArchive ar(data);
  try {
    for (;;) {
      BYTE kind = 0;
      ar >> kind;
      switch (kind % 13) {
        case 0: ReadOne<BYTE>(ar); break;
        case 1: ReadOne<char>(ar); break;
        case 2: ReadOne<WORD>(ar); break;
        case 3: ReadOne<std::int16_t>(ar); break;
        case 4: ReadOne<WCHAR>(ar); break;
        case 5: ReadOne<std::int32_t>(ar); break;
        case 6: ReadOne<std::uint32_t>(ar); break;
        case 7: ReadOne<std::int64_t>(ar); break;
        case 8: ReadOne<std::uint64_t>(ar); break;
        case 9: ReadOne<float>(ar); break;
        case 10: ReadOne<double>(ar); break;
        case 11: ReadOne<CStdStrW>(ar); break;
        default: {
          BYTE buffer[64];
          BYTE wanted = 0;
          ar >> wanted;
          Check(ar.Read(buffer, wanted % sizeof(buffer)) <= wanted % sizeof(buffer));
          break;
        }
      }
    }
  } catch (const CArchiveException& e) {
    Check(e.m_cause == CArchiveException::endOfFile);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const Data data(bytes, size);
  ReadEvery<BYTE>(data);
  ReadEvery<char>(data);
  ReadEvery<WORD>(data);
  ReadEvery<std::int16_t>(data);
  ReadEvery<WCHAR>(data);
  ReadEvery<std::int32_t>(data);
  ReadEvery<std::uint32_t>(data);
  ReadEvery<std::int64_t>(data);
  ReadEvery<std::uint64_t>(data);
  ReadEvery<float>(data);
  ReadEvery<double>(data);
  ReadStrings(data);
  ReadMixed(data);
  return 0;
}
