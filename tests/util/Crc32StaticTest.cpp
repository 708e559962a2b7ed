#include "util/Crc32Static.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "platform/Utf.h"
#include "util/Win32Error.h"

namespace fs = std::filesystem;

namespace {

// Reaches the byte step and the size query, which callers of the class do not see.
class Crc32Probe : public CCrc32Static {
 public:
  static DWORD ByteByByte(const std::vector<unsigned char>& bytes) {
    DWORD reg = 0xFFFFFFFFu;
    for (unsigned char b : bytes) CalcCrc32(b, reg);
    return ~reg;
  }
  static bool SizeOf(int fd, std::uint64_t& size) { return GetFileSizeQW(fd, size); }
};

struct Outcome {
  DWORD code;
  DWORD crc;
  bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& o) {
  return out << "{code " << o.code << ", crc 0x" << std::hex << o.crc << std::dec << "}";
}

using FileOperation = DWORD (*)(LPCWSTR, DWORD&);

Outcome Checksum(FileOperation operation, const std::u16string& path) {
  DWORD crc = 0x12345678u;
  const DWORD code = operation(path.c_str(), crc);
  return {code, crc};
}

class Crc32Files : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "crc32-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    m_dir = pattern;
  }
  void TearDown() override { fs::remove_all(m_dir); }

  std::u16string Write(const std::string& name, const std::vector<unsigned char>& bytes) {
    const fs::path path = m_dir / name;  // bytes as they are: UTF-8 on this platform
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return Wide(path);
  }
  std::u16string Wide(const fs::path& path) const { return vantrel1::FromUtf8(path.string()); }
  std::u16string InDir(const std::string& name) const { return Wide(m_dir / name); }

  fs::path m_dir;
};

std::vector<unsigned char> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

std::vector<unsigned char> RandomBytes(std::size_t count, unsigned seed) {
  std::mt19937 generator(seed);
  std::vector<unsigned char> bytes(count);
  for (auto& b : bytes) b = static_cast<unsigned char>(generator());
  return bytes;
}

}  // namespace

TEST(Crc32Table, IsTheStandardReflectedTable) {
  for (std::uint32_t n = 0; n < 256; ++n) {
    std::uint32_t expected = n;
    for (int bit = 0; bit < 8; ++bit) expected = (expected >> 1) ^ ((expected & 1u) ? 0xEDB88320u : 0u);
    ASSERT_EQ(vantrel1::kCrc32Table[n], expected) << "entry " << n;
  }
  EXPECT_EQ(vantrel1::kCrc32Table[1], 0x77073096u);
  EXPECT_EQ(vantrel1::kCrc32Table[128], 0xEDB88320u);
  EXPECT_EQ(Crc32Probe::ByteByByte(Bytes("123456789")), 0xCBF43926u);
}

TEST(StringCrc32, DigitsGiveTheCheckValueAndEmptyTextGivesZero) {
  DWORD crc = 0;
  EXPECT_EQ(CCrc32Static::StringCrc32(u"123456789", crc), 0u);
  EXPECT_EQ(crc, 0xCBF43926u);
  crc = 7;
  EXPECT_EQ(CCrc32Static::StringCrc32(u"", crc), 0u);
  EXPECT_EQ(crc, 0u);
  crc = 7;
  EXPECT_EQ(CCrc32Static::StringCrc32(nullptr, crc), 0u);
  EXPECT_EQ(crc, 0u);
}

TEST(StringCrc32, UsesOnlyTheLowByteOfEachUnit) {
  DWORD latin = 0;
  CCrc32Static::StringCrc32(u"\u00E9t\u00E9", latin);
  EXPECT_EQ(latin, 0xCBF7D413u);  // the bytes E9 74 E9
  DWORD a = 0;
  DWORD lStroke = 0;
  CCrc32Static::StringCrc32(u"A", a);
  CCrc32Static::StringCrc32(u"\u0141", lStroke);
  EXPECT_EQ(a, 0xD3D99E8Bu);
  EXPECT_EQ(lStroke, a);
}

// Units such as 0x0100, whose low byte is 0, are text, not the end of it.
TEST(StringCrc32, TextOfAnyLengthMatchesTheByteStep) {
  for (std::size_t length : {1u, 7u, 8u, 9u, 4095u, 4096u, 4097u, 12289u}) {
    std::u16string text;
    std::vector<unsigned char> low;
    for (std::size_t i = 0; i < length; ++i) {
      const char16_t unit = static_cast<char16_t>(0x0100 * (1 + i % 7) + (i * 31) % 256);
      text.push_back(unit);
      low.push_back(static_cast<unsigned char>(unit & 0xFF));
    }
    DWORD crc = 0;
    EXPECT_EQ(CCrc32Static::StringCrc32(text.c_str(), crc), 0u);
    EXPECT_EQ(crc, Crc32Probe::ByteByByte(low)) << "length " << length;
  }
}

TEST_F(Crc32Files, DigitsGiveTheCheckValueExceptFromTheEmptyAssemblyStep) {
  const auto path = Write("digits.txt", Bytes("123456789"));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Win32, path), (Outcome{0, 0xCBF43926u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Filemap, path), (Outcome{0, 0xCBF43926u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Streams, path), (Outcome{0, 0xCBF43926u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Assembly, path), (Outcome{0, 0u}));
}

TEST_F(Crc32Files, EmptyFileGivesZeroFromEveryOperation) {
  const auto path = Write("empty", {});
  for (FileOperation op : {CCrc32Static::FileCrc32Win32, CCrc32Static::FileCrc32Filemap,
                           CCrc32Static::FileCrc32Streams, CCrc32Static::FileCrc32Assembly})
    EXPECT_EQ(Checksum(op, path), (Outcome{0, 0u}));
}

TEST_F(Crc32Files, FileOneByteLongerThanAWindowGivesTheSameChecksumEveryWay) {
  const auto bytes = RandomBytes(10 * 1024 * 1024 + 1, 5);
  const auto path = Write("big.bin", bytes);
  const Outcome expected{0, Crc32Probe::ByteByByte(bytes)};
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Filemap, path), expected);
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Win32, path), expected);
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Streams, path), expected);
}

TEST_F(Crc32Files, OddSizesMatchTheByteStep) {
  for (std::size_t size : {1u, 63u, 4095u, 4096u, 4097u, 70001u}) {
    const auto bytes = RandomBytes(size, static_cast<unsigned>(size));
    const auto path = Write("odd.bin", bytes);
    const Outcome expected{0, Crc32Probe::ByteByByte(bytes)};
    EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Filemap, path), expected) << size;
    EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Win32, path), expected) << size;
    EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Streams, path), expected) << size;
  }
}

TEST_F(Crc32Files, Utf16PathWithSerbianLettersIsFound) {
  const auto path = Write("železnica-čđ.txt", Bytes("123456789"));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Filemap, path), (Outcome{0, 0xCBF43926u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Streams, path), (Outcome{0, 0xCBF43926u}));
}

TEST_F(Crc32Files, MissingFileIsReportedExceptByTheStream) {
  const auto path = InDir("missing.txt");
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Win32, path), (Outcome{2, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Filemap, path), (Outcome{2, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Assembly, path), (Outcome{2, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Streams, path), (Outcome{0, 0u}));
}

TEST_F(Crc32Files, BadPathsGetThePathCodes) {
  const auto file = Write("plain.txt", Bytes("x"));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Win32, file + u"/inside"), (Outcome{3, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Win32, u""), (Outcome{3, 0u}));
  DWORD crc = 1;
  EXPECT_EQ(CCrc32Static::FileCrc32Filemap(nullptr, crc), 3u);
  EXPECT_EQ(crc, 0u);
  EXPECT_EQ(CCrc32Static::FileCrc32Streams(nullptr, crc), 0u);
  EXPECT_EQ(crc, 0u);
}

TEST_F(Crc32Files, DirectoryIsRefusedWithAccessDenied) {
  const auto path = Wide(m_dir);
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Win32, path), (Outcome{5, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Filemap, path), (Outcome{5, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Assembly, path), (Outcome{5, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Streams, path), (Outcome{0, 0u}));
}

TEST_F(Crc32Files, UnreadableFileIsRefusedWithAccessDenied) {
  if (::geteuid() == 0) GTEST_SKIP() << "permissions do not stop the superuser";
  const auto path = Write("secret.txt", Bytes("123"));
  fs::permissions(m_dir / "secret.txt", fs::perms::none);
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Win32, path), (Outcome{5, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Filemap, path), (Outcome{5, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Streams, path), (Outcome{0, 0u}));
}

TEST_F(Crc32Files, LockedWriterDeniesOnlyTheOperationsThatShareWithReadersAlone) {
  const auto path = Write("locked.txt", Bytes("123456789"));
  const int writer = ::open((m_dir / "locked.txt").c_str(), O_RDWR);
  ASSERT_GE(writer, 0);
  ASSERT_EQ(::flock(writer, LOCK_EX | LOCK_NB), 0);
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Filemap, path), (Outcome{32, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Assembly, path), (Outcome{32, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Win32, path), (Outcome{0, 0xCBF43926u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Streams, path), (Outcome{0, 0xCBF43926u}));
  ::close(writer);
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Filemap, path), (Outcome{0, 0xCBF43926u}));
}

TEST_F(Crc32Files, FifoWithoutWriterEndsAtOnceInsteadOfWaiting) {
  ASSERT_EQ(::mkfifo((m_dir / "pipe").c_str(), 0600), 0);
  const auto path = InDir("pipe");
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Win32, path), (Outcome{0, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Filemap, path), (Outcome{0, 0u}));
  EXPECT_EQ(Checksum(CCrc32Static::FileCrc32Streams, path), (Outcome{0, 0u}));
}

TEST_F(Crc32Files, SizeQueryReportsTheSizeOrFailsWithZero) {
  Write("seven", Bytes("1234567"));
  const int fd = ::open((m_dir / "seven").c_str(), O_RDONLY);
  ASSERT_GE(fd, 0);
  std::uint64_t size = 99;
  EXPECT_TRUE(Crc32Probe::SizeOf(fd, size));
  EXPECT_EQ(size, 7u);
  ::close(fd);
  EXPECT_FALSE(Crc32Probe::SizeOf(-1, size));
  EXPECT_EQ(size, 0u);
}

TEST(Win32Error, CommonErrnoValuesGetTheirWindowsCodes) {
  EXPECT_EQ(vantrel1::Win32ErrorFromErrno(0), 0u);
  EXPECT_EQ(vantrel1::Win32ErrorFromErrno(ENOENT), 2u);
  EXPECT_EQ(vantrel1::Win32ErrorFromErrno(ENOTDIR), 3u);
  EXPECT_EQ(vantrel1::Win32ErrorFromErrno(EMFILE), 4u);
  EXPECT_EQ(vantrel1::Win32ErrorFromErrno(EACCES), 5u);
  EXPECT_EQ(vantrel1::Win32ErrorFromErrno(ENOMEM), 8u);
  EXPECT_EQ(vantrel1::Win32ErrorFromErrno(EWOULDBLOCK), 32u);
  EXPECT_EQ(vantrel1::Win32ErrorFromErrno(ENAMETOOLONG), 206u);
  EXPECT_EQ(vantrel1::Win32ErrorFromErrno(EPIPE), 31u);
}
