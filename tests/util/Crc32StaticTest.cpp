#include "util/Crc32Static.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "platform/Utf.h"

namespace fs = std::filesystem;

namespace {

// Reaches the byte step, which callers of the class do not see.
class Crc32Probe : public CCrc32Static {
 public:
  static DWORD ByteByByte(const std::vector<unsigned char>& bytes) {
    DWORD reg = 0xFFFFFFFFu;
    for (unsigned char b : bytes) CalcCrc32(b, reg);
    return ~reg;
  }
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
const FileOperation kWin32 = CCrc32Static::FileCrc32Win32;
const FileOperation kFilemap = CCrc32Static::FileCrc32Filemap;
const FileOperation kStreams = CCrc32Static::FileCrc32Streams;
const FileOperation kAssembly = CCrc32Static::FileCrc32Assembly;

Outcome Checksum(FileOperation operation, LPCWSTR path) {
  DWORD crc = 0x12345678u;
  const DWORD code = operation(path, crc);
  return {code, crc};
}

std::vector<unsigned char> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

std::vector<unsigned char> RandomBytes(std::size_t count, unsigned seed) {
  std::mt19937 generator(seed);
  std::vector<unsigned char> bytes(count);
  for (auto& b : bytes) b = static_cast<unsigned char>(generator());
  return bytes;
}

constexpr DWORD kDigits = 0xCBF43926u;  // the CRC-32 of "123456789"

class Crc32Files : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "crc32-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    m_dir = pattern;
  }
  void TearDown() override { fs::remove_all(m_dir); }

  std::u16string Write(const std::string& name, const std::vector<unsigned char>& bytes) {
    std::ofstream out(m_dir / name, std::ios::binary);  // the name's bytes as they are: UTF-8
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return InDir(name);
  }
  std::u16string InDir(const std::string& name) const { return vantrel1::FromUtf8((m_dir / name).string()); }

  fs::path m_dir;
};

}  // namespace

TEST(Crc32Table, IsTheStandardReflectedTable) {
  for (std::uint32_t n = 0; n < 256; ++n) {
    std::uint32_t expected = n;
    for (int bit = 0; bit < 8; ++bit) expected = (expected >> 1) ^ ((expected & 1u) ? 0xEDB88320u : 0u);
    ASSERT_EQ(vantrel1::kCrc32Table[n], expected) << "entry " << n;
  }
  EXPECT_EQ(Crc32Probe::ByteByByte(Bytes("123456789")), kDigits);
}

// Only the low byte of each unit counts: Latin-1 text gives the checksum of its 8-bit
// form, and U+0141 the checksum of "A".
TEST(StringCrc32, ChecksumsTheLowByteOfEachUnit) {
  const struct {
    const char16_t* text;
    DWORD crc;
  } cases[] = {{u"123456789", kDigits}, {u"", 0}, {nullptr, 0},
               {u"\u00E9t\u00E9", 0xCBF7D413u}, {u"A", 0xD3D99E8Bu}, {u"\u0141", 0xD3D99E8Bu}};
  for (const auto& c : cases) {
    DWORD crc = 7;
    EXPECT_EQ(CCrc32Static::StringCrc32(c.text, crc), 0u);
    EXPECT_EQ(crc, c.crc) << (c.text ? vantrel1::ToUtf8(c.text) : "null");
  }
}

// Units such as 0x0100, whose low byte is 0, are text, not the end of it.
TEST(StringCrc32, TextOfAnyLengthMatchesTheByteStep) {
  for (std::size_t length : {1u, 7u, 8u, 9u, 4095u, 4096u, 4097u, 12289u}) {
    std::u16string text;
    std::vector<unsigned char> low;
    for (std::size_t i = 0; i < length; ++i) {
      const auto unit = static_cast<char16_t>(0x0100 * (1 + i % 7) + (i * 31) % 256);
      text.push_back(unit);
      low.push_back(static_cast<unsigned char>(unit & 0xFF));
    }
    DWORD crc = 0;
    EXPECT_EQ(CCrc32Static::StringCrc32(text.c_str(), crc), 0u);
    EXPECT_EQ(crc, Crc32Probe::ByteByByte(low)) << "length " << length;
  }
}

// The stream reports no failure to open, only checksum 0; the assembly step folds nothing
// in; the others report the Windows code of the failure.
TEST_F(Crc32Files, EachOperationGivesItsCodeAndChecksum) {
  const std::u16string digits = Write("digits.txt", Bytes("123456789"));
  const std::u16string serbian = Write("železnica-čđ.txt", Bytes("123456789"));
  const std::u16string empty = Write("empty", {});
  const std::u16string missing = InDir("missing.txt");
  const std::u16string belowFile = digits + u"/inside";
  const std::u16string dir = vantrel1::FromUtf8(m_dir.string());
  ASSERT_EQ(::mkfifo((m_dir / "pipe").c_str(), 0600), 0);  // no writer: must not wait
  const std::u16string fifo = InDir("pipe");
  const std::u16string secret = Write("secret.txt", Bytes("123"));
  fs::permissions(m_dir / "secret.txt", fs::perms::none);
  const std::u16string locked = Write("locked.txt", Bytes("123456789"));
  const int writer = ::open((m_dir / "locked.txt").c_str(), O_RDWR);
  ASSERT_GE(writer, 0);
  ASSERT_EQ(::flock(writer, LOCK_EX | LOCK_NB), 0);  // denies only those that share with readers alone
  const struct {
    const char* what;
    LPCWSTR path;
    Outcome win32, filemap, streams, assembly;
  } cases[] = {
      {"digits", digits.c_str(), {0, kDigits}, {0, kDigits}, {0, kDigits}, {0, 0}},
      {"UTF-16 path", serbian.c_str(), {0, kDigits}, {0, kDigits}, {0, kDigits}, {0, 0}},
      {"empty file", empty.c_str(), {0, 0}, {0, 0}, {0, 0}, {0, 0}},
      {"missing", missing.c_str(), {2, 0}, {2, 0}, {0, 0}, {2, 0}},
      {"below a file", belowFile.c_str(), {3, 0}, {3, 0}, {0, 0}, {3, 0}},
      {"empty path", u"", {3, 0}, {3, 0}, {0, 0}, {3, 0}},
      {"null path", nullptr, {3, 0}, {3, 0}, {0, 0}, {3, 0}},
      {"directory", dir.c_str(), {5, 0}, {5, 0}, {0, 0}, {5, 0}},
      {"fifo", fifo.c_str(), {0, 0}, {0, 0}, {0, 0}, {0, 0}},
      {"unreadable", secret.c_str(), {5, 0}, {5, 0}, {0, 0}, {5, 0}},
      {"locked by a writer", locked.c_str(), {0, kDigits}, {32, 0}, {0, kDigits}, {32, 0}},
  };
  for (const auto& c : cases) {
    if (c.path == secret.c_str() && ::geteuid() == 0) continue;  // permissions do not stop the superuser
    SCOPED_TRACE(c.what);
    EXPECT_EQ(Checksum(kWin32, c.path), c.win32);
    EXPECT_EQ(Checksum(kFilemap, c.path), c.filemap);
    EXPECT_EQ(Checksum(kStreams, c.path), c.streams);
    EXPECT_EQ(Checksum(kAssembly, c.path), c.assembly);
  }
  ::close(writer);
}

// Around the 4096-byte block and one byte past the 10 MiB mapping window.
TEST_F(Crc32Files, BlockAndWindowBoundariesMatchTheByteStep) {
  for (std::size_t size : {1u, 4096u, 4097u, 10u * 1024 * 1024 + 1}) {
    const auto bytes = RandomBytes(size, static_cast<unsigned>(size));
    const std::u16string path = Write("odd.bin", bytes);
    const Outcome expected{0, Crc32Probe::ByteByByte(bytes)};
    EXPECT_EQ(Checksum(kWin32, path.c_str()), expected) << size;
    EXPECT_EQ(Checksum(kFilemap, path.c_str()), expected) << size;
    EXPECT_EQ(Checksum(kStreams, path.c_str()), expected) << size;
  }
}
