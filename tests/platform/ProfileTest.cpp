#include "platform/Profile.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/ProfileDocument.h"
#include "platform/Utf.h"

namespace fs = std::filesystem;
using vantrel1::FromUtf8;

namespace {

class ProfileFile : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "vantrel1-profile-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    m_dir = pattern;
  }
  void TearDown() override {
    ::chmod(m_dir.c_str(), 0755);
    fs::remove_all(m_dir);
  }

  fs::path Path(const char* name) const { return m_dir / name; }
  static std::u16string Wide(const fs::path& path) { return FromUtf8(path.string()); }

  static void WriteBytes(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
  static std::string ReadBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  static std::u16string Read(const char16_t* section, const char16_t* key, const fs::path& path,
                             const char16_t* fallback = u"") {
    WCHAR buffer[512];
    GetPrivateProfileStringW(section, key, fallback, buffer, 512, Wide(path).c_str());
    return buffer;
  }
  static BOOL Write(const char16_t* section, const char16_t* key, const char16_t* value, const fs::path& path) {
    return WritePrivateProfileStringW(section, key, value, Wide(path).c_str());
  }
  static BOOL Flush(const fs::path& path) { return WritePrivateProfileStringW(nullptr, nullptr, nullptr, Wide(path).c_str()); }

  fs::path m_dir;
};

const char kTable[] =
    "; user line types\r\n"
    "[LineType0]\r\n"
    "LineDesc=1,2,0,0,dvostruka crtica\r\n"
    "LineItem0 = -1,150,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0  \r\n"
    "\r\n"
    "; the next one is drawn thick\r\n"
    "[LineType1]\r\n"
    "LineDesc=5,1,0,0,debela crtica\r\n";

}  // namespace

TEST_F(ProfileFile, SectionsAndKeysMatchWithoutRegardToCase) {
  WriteBytes(Path("t.lin"), kTable);
  EXPECT_EQ(Read(u"linetype0", u"LINEDESC", Path("t.lin")), u"1,2,0,0,dvostruka crtica");
  EXPECT_EQ(Read(u"LINETYPE1", u"linedesc", Path("t.lin")), u"5,1,0,0,debela crtica");
  // Blanks around the value are not part of it.
  EXPECT_EQ(Read(u"LineType0", u"lineitem0", Path("t.lin")), u"-1,150,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0");
}

TEST_F(ProfileFile, ReadReturnsUnitsCopiedAndTruncatesToSizeMinusOne) {
  WriteBytes(Path("t.lin"), kTable);
  const std::u16string file = Wide(Path("t.lin"));
  WCHAR buffer[32];
  EXPECT_EQ(GetPrivateProfileStringW(u"LineType0", u"LineDesc", u"", buffer, 32, file.c_str()), 24u);
  EXPECT_EQ(std::u16string(buffer), u"1,2,0,0,dvostruka crtica");
  EXPECT_EQ(GetPrivateProfileStringW(u"LineType0", u"LineDesc", u"", buffer, 8, file.c_str()), 7u);
  EXPECT_EQ(std::u16string(buffer), u"1,2,0,0");
  EXPECT_EQ(GetPrivateProfileStringW(u"LineType0", u"LineDesc", u"", buffer, 1, file.c_str()), 0u);
  EXPECT_EQ(buffer[0], 0);
  buffer[0] = u'x';
  EXPECT_EQ(GetPrivateProfileStringW(u"LineType0", u"LineDesc", u"", buffer, 0, file.c_str()), 0u);
  EXPECT_EQ(buffer[0], u'x');
  // An absent key gives the default without its trailing blanks, truncated the same way.
  EXPECT_EQ(GetPrivateProfileStringW(u"LineType0", u"Font", u"none  ", buffer, 32, file.c_str()), 4u);
  EXPECT_EQ(std::u16string(buffer), u"none");
  EXPECT_EQ(GetPrivateProfileStringW(u"LineType9", u"LineDesc", u"default", buffer, 4, file.c_str()), 3u);
  EXPECT_EQ(std::u16string(buffer), u"def");
  EXPECT_EQ(GetPrivateProfileStringW(u"LineType0", u"Font", nullptr, buffer, 32, file.c_str()), 0u);
  EXPECT_EQ(GetPrivateProfileStringW(u"LineType0", u"LineDesc", u"d", buffer, 32, nullptr), 1u);
}

TEST_F(ProfileFile, QuotesAroundAValueAreStrippedOnce) {
  WriteBytes(Path("q.ini"), "[S]\nd=\"two words\"\ns='single'\nu=\"unbalanced\nn=\"\"\"\"\ne=\n");
  EXPECT_EQ(Read(u"S", u"d", Path("q.ini")), u"two words");
  EXPECT_EQ(Read(u"S", u"s", Path("q.ini")), u"single");
  EXPECT_EQ(Read(u"S", u"u", Path("q.ini")), u"\"unbalanced");
  EXPECT_EQ(Read(u"S", u"n", Path("q.ini")), u"\"\"");
  // Present but empty is not absent: the default is not used.
  EXPECT_EQ(Read(u"S", u"e", Path("q.ini"), u"default"), u"");
}

TEST_F(ProfileFile, IntegersReadAsWindowsReadsThem) {
  WriteBytes(Path("i.ini"), "[N]\na=42\nb=-5\nc= 12abc\nd=abc\ne=\n");
  const std::u16string file = Wide(Path("i.ini"));
  EXPECT_EQ(GetPrivateProfileIntW(u"n", u"a", 7, file.c_str()), 42u);
  EXPECT_EQ(GetPrivateProfileIntW(u"N", u"b", 7, file.c_str()), 0xFFFFFFFBu);
  EXPECT_EQ(GetPrivateProfileIntW(u"N", u"c", 7, file.c_str()), 12u);
  EXPECT_EQ(GetPrivateProfileIntW(u"N", u"d", 7, file.c_str()), 0u);
  EXPECT_EQ(GetPrivateProfileIntW(u"N", u"e", 7, file.c_str()), 7u);
  EXPECT_EQ(GetPrivateProfileIntW(u"N", u"missing", 7, file.c_str()), 7u);
}

TEST_F(ProfileFile, NullSectionOrKeyListsNamesDoublyTerminated) {
  WriteBytes(Path("t.lin"), kTable);
  const std::u16string file = Wide(Path("t.lin"));
  WCHAR buffer[64];
  EXPECT_EQ(GetPrivateProfileSectionNamesW(buffer, 64, file.c_str()), 20u);
  EXPECT_EQ(std::u16string(buffer, 21), std::u16string(u"LineType0\0LineType1\0\0", 21));
  EXPECT_EQ(GetPrivateProfileStringW(u"linetype0", nullptr, u"", buffer, 64, file.c_str()), 19u);
  EXPECT_EQ(std::u16string(buffer, 20), std::u16string(u"LineDesc\0LineItem0\0\0", 20));
  // A list that does not fit is cut and still ends with two terminators.
  EXPECT_EQ(GetPrivateProfileStringW(nullptr, nullptr, u"", buffer, 14, file.c_str()), 12u);
  EXPECT_EQ(std::u16string(buffer, 14), std::u16string(u"LineType0\0Li\0\0", 14));
  EXPECT_EQ(GetPrivateProfileStringW(u"Nowhere", nullptr, u"", buffer, 64, file.c_str()), 0u);
  EXPECT_EQ(buffer[0], 0);
  EXPECT_EQ(buffer[1], 0);
}

TEST_F(ProfileFile, WritesKeepCommentsOrderAndLineEnds) {
  WriteBytes(Path("t.lin"), kTable);
  EXPECT_TRUE(Write(u"linetype0", u"LINEDESC", u"1,2,0,0,dvostruka", Path("t.lin")));
  EXPECT_TRUE(Write(u"LineType0", u"LineItem1", u"-1,-150,0,1", Path("t.lin")));
  EXPECT_TRUE(Write(u"LineType1", u"Font", u"Arial", Path("t.lin")));
  EXPECT_TRUE(Write(u"LineType2", u"LineDesc", u"0,1,0,0,talus", Path("t.lin")));
  // Nothing reaches the disk before the flush; reads already see the writes.
  EXPECT_EQ(ReadBytes(Path("t.lin")), kTable);
  EXPECT_EQ(Read(u"LineType2", u"LineDesc", Path("t.lin")), u"0,1,0,0,talus");
  ASSERT_TRUE(Flush(Path("t.lin")));
  EXPECT_EQ(ReadBytes(Path("t.lin")),
            "; user line types\r\n"
            "[LineType0]\r\n"
            "LineDesc=1,2,0,0,dvostruka\r\n"
            "LineItem0 = -1,150,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0  \r\n"
            "LineItem1=-1,-150,0,1\r\n"
            "\r\n"
            "; the next one is drawn thick\r\n"
            "[LineType1]\r\n"
            "LineDesc=5,1,0,0,debela crtica\r\n"
            "Font=Arial\r\n"
            "\r\n"
            "[LineType2]\r\n"
            "LineDesc=0,1,0,0,talus\r\n");
}

TEST_F(ProfileFile, NullValueDeletesKeyAndNullKeyDeletesSection) {
  WriteBytes(Path("t.lin"), kTable);
  EXPECT_TRUE(Write(u"LineType0", u"lineitem0", nullptr, Path("t.lin")));
  EXPECT_TRUE(Write(u"linetype1", nullptr, nullptr, Path("t.lin")));
  ASSERT_TRUE(Flush(Path("t.lin")));
  EXPECT_EQ(ReadBytes(Path("t.lin")),
            "; user line types\r\n"
            "[LineType0]\r\n"
            "LineDesc=1,2,0,0,dvostruka crtica\r\n"
            "\r\n"
            "; the next one is drawn thick\r\n");
  EXPECT_EQ(Read(u"LineType1", u"LineDesc", Path("t.lin"), u"gone"), u"gone");
}

TEST_F(ProfileFile, Utf16FileRoundTripsInItsEncoding) {
  auto utf16 = [](std::u16string_view text) {
    std::string bytes = "\xFF\xFE";
    for (char16_t u : text) bytes += {static_cast<char>(u & 0xFF), static_cast<char>(u >> 8)};
    return bytes;
  };
  WriteBytes(Path("w.lin"), utf16(u"[LineType0]\r\nLineDesc=1,1,2,0,železnica\r\n"));
  EXPECT_EQ(Read(u"LineType0", u"LineDesc", Path("w.lin")), u"1,1,2,0,železnica");
  EXPECT_TRUE(Write(u"LineType0", u"Font", u"čvrst", Path("w.lin")));
  ASSERT_TRUE(Flush(Path("w.lin")));
  EXPECT_EQ(ReadBytes(Path("w.lin")), utf16(u"[LineType0]\r\nLineDesc=1,1,2,0,železnica\r\nFont=čvrst\r\n"));
}

TEST_F(ProfileFile, Utf8BomLfEndsAndUndecodableLinesSurviveAWrite) {
  const std::string original = "\xEF\xBB\xBF[A]\nraw=\xE8\xE6 (1250)\nk=old\n";
  WriteBytes(Path("b.ini"), original);
  EXPECT_EQ(Read(u"a", u"k", Path("b.ini")), u"old");
  EXPECT_TRUE(Write(u"A", u"k", u"new", Path("b.ini")));
  ASSERT_TRUE(Flush(Path("b.ini")));
  EXPECT_EQ(ReadBytes(Path("b.ini")), "\xEF\xBB\xBF[A]\nraw=\xE8\xE6 (1250)\nk=new\n");
}

TEST_F(ProfileFile, WritesThatWouldNotReadBackAreRefused) {
  WriteBytes(Path("t.lin"), kTable);
  EXPECT_FALSE(Write(u"LineType0", u"Line=Desc", u"x", Path("t.lin")));
  EXPECT_FALSE(Write(u"LineType0", u"LineDesc", u"x\r\n[Injected]", Path("t.lin")));
  EXPECT_FALSE(Write(u"Line]Type", u"k", u"x", Path("t.lin")));
  EXPECT_FALSE(Write(u"LineType0", u"  ", u"x", Path("t.lin")));
  EXPECT_FALSE(Write(nullptr, u"LineDesc", u"x", Path("t.lin")));
  ASSERT_TRUE(Flush(Path("t.lin")));
  EXPECT_EQ(ReadBytes(Path("t.lin")), kTable);
}

TEST_F(ProfileFile, RepeatedReadsParseTheFileOnceUntilItChanges) {
  WriteBytes(Path("t.lin"), kTable);
  const std::size_t before = vantrel1::ProfileParseCount();
  const std::u16string file = Wide(Path("t.lin"));
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(GetPrivateProfileIntW(u"LineType1", u"LineDesc", -1, file.c_str()), 5u);
    EXPECT_EQ(Read(u"LineType0", u"LineDesc", Path("t.lin")), u"1,2,0,0,dvostruka crtica");
  }
  EXPECT_EQ(vantrel1::ProfileParseCount() - before, 1u);
  // Another program rewrites the file: the next read sees it.
  WriteBytes(Path("t.lin"), "[LineType0]\r\nLineDesc=changed\r\n");
  EXPECT_EQ(Read(u"LineType0", u"LineDesc", Path("t.lin")), u"changed");
  EXPECT_EQ(vantrel1::ProfileParseCount() - before, 2u);
}

TEST_F(ProfileFile, DeletingTheFileDropsUnflushedWrites) {
  WriteBytes(Path("t.lin"), kTable);
  EXPECT_TRUE(Write(u"LineType7", u"LineDesc", u"stale", Path("t.lin")));
  fs::remove(Path("t.lin"));
  EXPECT_TRUE(Write(u"LineType0", u"LineDesc", u"fresh", Path("t.lin")));
  ASSERT_TRUE(Flush(Path("t.lin")));
  EXPECT_EQ(ReadBytes(Path("t.lin")), "[LineType0]\r\nLineDesc=fresh\r\n");
}

TEST_F(ProfileFile, FailedFlushLeavesTheOldFileAndKeepsTheWrites) {
  WriteBytes(Path("t.lin"), kTable);
  EXPECT_TRUE(Write(u"LineType0", u"LineItem1", std::u16string(200, u'7').c_str(), Path("t.lin")));
  // The new table is larger than the old one; a file-size limit between the two makes the
  // temporary file's write fail halfway, as a full disk would.
  struct rlimit saved {};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &saved), 0);
  struct rlimit limited = saved;
  limited.rlim_cur = sizeof kTable + 20;
  ::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limited), 0);
  const BOOL flushed = Flush(Path("t.lin"));
  ::setrlimit(RLIMIT_FSIZE, &saved);
  ::signal(SIGXFSZ, SIG_DFL);
  EXPECT_FALSE(flushed);
  EXPECT_EQ(ReadBytes(Path("t.lin")), kTable);
  EXPECT_EQ(std::distance(fs::directory_iterator(m_dir), fs::directory_iterator()), 1);
  // The writes are still pending and reach the disk with the next flush.
  ASSERT_TRUE(Flush(Path("t.lin")));
  EXPECT_EQ(Read(u"LineType0", u"LineItem1", Path("t.lin")).size(), 200u);
  EXPECT_NE(ReadBytes(Path("t.lin")).find("LineItem1=777"), std::string::npos);
}

TEST_F(ProfileFile, FlushIntoAnUnwritableFolderFailsAndKeepsTheFile) {
  if (::geteuid() == 0) GTEST_SKIP() << "permissions do not bind the superuser";
  WriteBytes(Path("t.lin"), kTable);
  EXPECT_TRUE(Write(u"LineType0", u"LineDesc", u"new", Path("t.lin")));
  ASSERT_EQ(::chmod(m_dir.c_str(), 0555), 0);
  EXPECT_FALSE(Flush(Path("t.lin")));
  EXPECT_EQ(ReadBytes(Path("t.lin")), kTable);
  ASSERT_EQ(::chmod(m_dir.c_str(), 0755), 0);
  EXPECT_TRUE(Flush(Path("t.lin")));
}

TEST_F(ProfileFile, FlushReplacesALinksTargetAndKeepsTheLink) {
  WriteBytes(Path("real.lin"), kTable);
  fs::create_symlink(Path("real.lin"), Path("link.lin"));
  EXPECT_TRUE(Write(u"LineType1", u"LineDesc", u"5,1,0,0,tanka", Path("link.lin")));
  ASSERT_TRUE(Flush(Path("link.lin")));
  EXPECT_TRUE(fs::is_symlink(Path("link.lin")));
  EXPECT_EQ(Read(u"LineType1", u"LineDesc", Path("real.lin")), u"5,1,0,0,tanka");
}

TEST_F(ProfileFile, NullFileFlushesEveryFileAndNewFilesAreUtf8WithCrLf) {
  EXPECT_TRUE(Write(u"Simbol", u"Opis", u"spomenik šumarske službe", Path("a.sym")));
  EXPECT_TRUE(Write(u"B", u"k", u"2", Path("b.ini")));
  EXPECT_TRUE(WritePrivateProfileStringW(nullptr, nullptr, nullptr, nullptr));
  EXPECT_EQ(ReadBytes(Path("a.sym")), "[Simbol]\r\nOpis=spomenik \xC5\xA1umarske slu\xC5\xBE" "be\r\n");
  EXPECT_EQ(ReadBytes(Path("b.ini")), "[B]\r\nk=2\r\n");
}

TEST_F(ProfileFile, WritesNotFlushedReachTheDiskAtProcessExit) {
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    const BOOL written = Write(u"LineType0", u"LineDesc", u"0,1,0,0,talus", Path("exit.lin"));
    std::exit(written && !fs::exists(Path("exit.lin")) ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(ReadBytes(Path("exit.lin")), "[LineType0]\r\nLineDesc=0,1,0,0,talus\r\n");
}

TEST(ProfileDocument, ParseThenSerializeIsByteExact) {
  for (const std::string& bytes :
       {std::string(kTable), std::string("no end\r"), std::string("\xEF\xBB\xBFx\n\n[s\r\nk=v"),
        std::string("\xFF\xFE[\0s\0]\0\n\0", 10), std::string("a\xFF\xFE" "b\n[\xC0]\nk=\xED\xA0\x80\n")}) {
    EXPECT_EQ(vantrel1::ProfileDocument::Parse(bytes).Serialize(), bytes);
  }
}
