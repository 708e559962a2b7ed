// Document files in each encoding, saved back in the form they came in.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

#include "markup/MarkupProbe.h"

using markup_probe::Narrow;

namespace {

class MarkupFile : public ::testing::Test {
 protected:
  void SetUp() override {
    dir = std::filesystem::temp_directory_path() /
          ("markup_file_" + std::to_string(::getpid()) + "_" +
           ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(dir);
  }
  void TearDown() override { std::filesystem::remove_all(dir); }

  std::u16string PathOf(const std::string& name) const {
    return vantrel1::FromUtf8((dir / name).string());
  }
  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(dir / name, std::ios::binary) << bytes;
  }
  std::string Read(const std::string& name) const {
    std::ifstream in(dir / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }

  std::filesystem::path dir;
};

// "<š a='ж'>😀</š>" in UTF-8, then in UTF-16LE.
const std::string kUtf8 = "<\xC5\xA1 a='\xD0\xB6'>\xF0\x9F\x98\x80</\xC5\xA1>";
const std::string kUtf16 = std::string(
    "<\0a\x01 \0a\0=\0'\0\x36\x04'\0>\0\x3D\xD8\x00\xDE<\0/\0a\x01>\0", 30);

void ExpectContent(CMarkup& m) {
  ASSERT_TRUE(m.FindElem(u"\u0161"));
  EXPECT_EQ(m.GetAttrib(u"a"), std::u16string(u"\u0436"));
  EXPECT_EQ(m.GetData(), std::u16string(u"\U0001F600"));
}

}  // namespace

TEST_F(MarkupFile, EachEncodingIsReadAndWrittenBackUnchanged) {
  const struct {
    const char* file;
    std::string bytes;
    CMarkup::Encoding encoding;
  } cases[] = {
      {"plain.xml", kUtf8, CMarkup::EncodingUtf8},
      {"bom.xml", "\xEF\xBB\xBF" + kUtf8, CMarkup::EncodingUtf8Bom},
      {"wide.xml", kUtf16, CMarkup::EncodingUtf16Le},
      {"widebom.xml", "\xFF\xFE" + kUtf16, CMarkup::EncodingUtf16LeBom},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    Write(c.file, c.bytes);
    CMarkup m;
    ASSERT_TRUE(m.Load(PathOf(c.file).c_str()));
    EXPECT_EQ(m.GetEncoding(), c.encoding);
    ExpectContent(m);
    ASSERT_TRUE(m.Save(PathOf(std::string("out-") + c.file).c_str()));
    EXPECT_EQ(Read(std::string("out-") + c.file), c.bytes);
  }
}

// An edited document is saved in the form it was loaded in; a new one as UTF-8 without a mark.
TEST_F(MarkupFile, SavesInTheFormTheDocumentCameIn) {
  const auto utf16 = [](const std::string& ascii) {
    std::string bytes;
    for (char c : ascii) bytes += std::string{c, '\0'};
    return bytes;
  };
  Write("in.xml", "\xFF\xFE" + utf16("<r/>"));
  CMarkup m;
  ASSERT_TRUE(m.Load(PathOf("in.xml").c_str()));
  ASSERT_TRUE(m.FindElem());
  ASSERT_TRUE(m.AddChildElem(u"c", u"1"));
  ASSERT_TRUE(m.Save(PathOf("out.xml").c_str()));
  EXPECT_EQ(Read("out.xml"), "\xFF\xFE" + utf16("<r>\r\n<c>1</c>\r\n</r>"));

  CMarkup fresh;
  ASSERT_TRUE(fresh.AddElem(u"R", u"\u0107"));
  ASSERT_TRUE(fresh.Save(PathOf("new.xml").c_str()));
  EXPECT_EQ(Read("new.xml"), "<R>\xC4\x87</R>\r\n");
}

// Whatever a readable file holds is loaded: malformed text with its parse error, invalid
// UTF-8 as replacement characters, a null and all that follows it.
TEST_F(MarkupFile, LoadsWhateverTheFileHolds) {
  Write("bad.xml", "<a><b></a>");
  CMarkup m;
  EXPECT_FALSE(m.Load(PathOf("bad.xml").c_str()));
  EXPECT_EQ(Narrow(m.GetDoc()), "<a><b></a>");
  EXPECT_EQ(Narrow(m.GetError()), "End tag does not correspond to b");

  Write("junk.xml", std::string("<a>\xFF\xC3</a>\0<b>", 13));
  ASSERT_TRUE(m.Load(PathOf("junk.xml").c_str()));
  std::u16string expected = u"<a>\uFFFD\uFFFD</a>";
  expected += u'\0';
  expected += u"<b>";
  EXPECT_EQ(m.GetDoc(), expected);
  // An odd trailing byte of a UTF-16 file is dropped.
  Write("odd.xml", "\xFF\xFE" + std::string("<\0a\0/\0>\0!", 9));
  ASSERT_TRUE(m.Load(PathOf("odd.xml").c_str()));
  EXPECT_EQ(Narrow(m.GetDoc()), "<a/>");
}

TEST_F(MarkupFile, MissingFileOrFolderFailsWithoutTouchingTheDocument) {
  CMarkup m(u"<keep/>");
  EXPECT_FALSE(m.Load(PathOf("missing.xml").c_str()));
  EXPECT_FALSE(m.Load(nullptr));
  EXPECT_FALSE(m.Load(PathOf("").c_str()));
  EXPECT_EQ(Narrow(m.GetDoc()), "<keep/>");
  EXPECT_TRUE(m.IsWellFormed());
  EXPECT_FALSE(m.Save(PathOf("no/such/folder.xml").c_str()));
  EXPECT_FALSE(m.Save(nullptr));
}
