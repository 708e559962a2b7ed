#include "platform/StringTable.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/Utf.h"

namespace fs = std::filesystem;

namespace {

std::u16string Load(HINSTANCE module, UINT id) {
  WCHAR buffer[512];
  const int n = LoadStringW(module, id, buffer, 512);
  return std::u16string(buffer, static_cast<std::size_t>(n));
}

std::vector<std::string> Describe(const std::vector<vantrel1::StringTableError>& errors) {
  std::vector<std::string> out;
  for (const auto& e : errors) out.push_back(e.Describe());
  return out;
}

class StringModuleFile : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "vantrel1-strings-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    m_dir = pattern;
  }
  void TearDown() override { fs::remove_all(m_dir); }
  std::u16string Make(const char* name, const std::string& text) const {
    std::ofstream(m_dir / name, std::ios::binary) << text;
    return vantrel1::FromUtf8((m_dir / name).string());
  }
  fs::path m_dir;
};

}  // namespace

TEST(BuiltinStrings, ParseCleanlyWithoutDuplicateIds) {
  EXPECT_EQ(Describe(vantrel1::BuiltinStringTableErrors()), std::vector<std::string>{});
  // Each file on its own too, so that a fault is reported against its own line numbers.
  for (const auto& entry : fs::directory_iterator(fs::path(VANTREL1_SOURCE_DIR) / "resources" / "strings")) {
    if (entry.path().extension() != ".str") continue;
    std::ifstream in(entry.path(), std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(Describe(vantrel1::StringTable::Parse(text).errors), std::vector<std::string>{}) << entry.path();
  }
}

TEST(BuiltinStrings, KeepLeadingBlanksAndLettersBeyondAscii) {
  EXPECT_EQ(Load(nullptr, 20236), u" Simbol neće biti dodat jer je naziv simbola već u tabeli.");
}

TEST(LoadString, CopiesAtMostSizeMinusOneUnitsAndReturnsTheCount) {
  WCHAR buffer[16];
  EXPECT_EQ(LoadStringW(nullptr, 21004, buffer, 13), 12);
  EXPECT_EQ(std::u16string(buffer), u"Unesite broj");
  EXPECT_EQ(LoadStringW(nullptr, 21004, buffer, 12), 11);
  EXPECT_EQ(std::u16string(buffer), u"Unesite bro");
  EXPECT_EQ(LoadStringW(nullptr, 21004, buffer, 1), 0);
  EXPECT_EQ(buffer[0], 0);
  EXPECT_EQ(LoadStringW(nullptr, 21004, nullptr, 16), 0);
  EXPECT_EQ(LoadStringW(nullptr, 21004, buffer, -1), 0);
}

TEST(LoadString, AbsentStringGivesZeroAndAnEmptyBuffer) {
  WCHAR buffer[16] = u"stale";
  EXPECT_EQ(LoadStringW(nullptr, 21006, buffer, 16), 0);
  EXPECT_EQ(buffer[0], 0);
  EXPECT_EQ(LoadStringW(reinterpret_cast<HINSTANCE>(std::uintptr_t{0x12340}), 21004, buffer, 16), 0);
}

TEST(LoadString, SizeZeroHandsOutAPointerToTheWholeString) {
  const WCHAR* text = nullptr;
  EXPECT_EQ(LoadStringW(nullptr, 20211, reinterpret_cast<LPWSTR>(&text), 0), 37);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(std::u16string(text, 37), u"Preuzmite datoteku tabele tipa linije");
  EXPECT_EQ(LoadStringW(nullptr, 1, reinterpret_cast<LPWSTR>(&text), 0), 0);
  EXPECT_EQ(text, nullptr);
}

TEST(StringTableParse, EscapesCommentsBomAndCrLf) {
  const auto parsed = vantrel1::StringTable::Parse(
      "\xEF\xBB\xBF# heading\r\n"
      "\r\n"
      "  7\t\"a\\\\b \\\"c\\\"\\nd\\te\\u0161\"   # trailing note\r\n"
      "8 \"\\uD83D\\uDE00 \xC5\xBE\"\n"
      "65535 \"\"");
  ASSERT_EQ(Describe(parsed.errors), std::vector<std::string>{});
  EXPECT_EQ(parsed.table.Size(), 3u);
  EXPECT_EQ(*parsed.table.Find(7), u"a\\b \"c\"\nd\teš");
  EXPECT_EQ(*parsed.table.Find(8), u"\U0001F600 ž");
  EXPECT_EQ(*parsed.table.Find(65535), u"");
  EXPECT_EQ(parsed.table.Find(9), nullptr);
}

TEST(StringTableParse, ReportsEachBadLineWithItsNumberAndKeepsTheGoodOnes) {
  const auto parsed = vantrel1::StringTable::Parse(
      "1 \"one\"\n"
      "2 \"unterminated\n"
      "3 no quotes\n"
      "4 \"bad \\q escape\"\n"
      "65536 \"too big\"\n"
      "5 \"x\" y\n"
      "1 \"again\"\n"
      "6 \"\\u12G4\"\n"
      "7 \"\xC5\"\n"
      "text without id\n"
      "8 \"eight\"\n");
  EXPECT_EQ(Describe(parsed.errors), (std::vector<std::string>{
                                         "line 2: missing '\"' to close the text",
                                         "line 3: expected '\"' to open the text",
                                         "line 4: unknown escape \\q",
                                         "line 5: string id above 65535",
                                         "line 6: unexpected text after the closing quote",
                                         "line 7: duplicate id 1, first on line 1",
                                         "line 8: \\u needs four hexadecimal digits",
                                         "line 9: the line is not valid UTF-8",
                                         "line 10: expected a string id",
                                     }));
  EXPECT_EQ(parsed.table.Size(), 2u);
  EXPECT_EQ(*parsed.table.Find(1), u"one");
  EXPECT_EQ(*parsed.table.Find(8), u"eight");
}

TEST_F(StringModuleFile, LoadedModuleAnswersBesideTheBuiltinOne) {
  const std::u16string path = Make("en.str", "# English\n21004 \"Enter a number\"\n30000 \"Only here\"\n");
  HINSTANCE module = LoadStringModule(path.c_str());
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(vantrel1::StringModuleErrors().size(), 0u);
  EXPECT_EQ(Load(module, 21004), u"Enter a number");
  EXPECT_EQ(Load(module, 30000), u"Only here");
  EXPECT_EQ(Load(module, 21005), u"");
  EXPECT_EQ(Load(nullptr, 21004), u"Unesite broj");
  EXPECT_EQ(Load(nullptr, 30000), u"");
  EXPECT_TRUE(FreeStringModule(module));
  EXPECT_EQ(Load(module, 21004), u"");
  EXPECT_FALSE(FreeStringModule(module));
  EXPECT_FALSE(FreeStringModule(nullptr));
}

TEST_F(StringModuleFile, MalformedOrMissingFileIsRefusedWithItsReason) {
  const std::u16string path = Make("bad.str", "21004 \"Enter a number\"\n\n21005 \"Must be a number\n");
  EXPECT_EQ(LoadStringModule(path.c_str()), nullptr);
  EXPECT_EQ(Describe(vantrel1::StringModuleErrors()),
            std::vector<std::string>{"line 3: missing '\"' to close the text"});
  const std::u16string missing = vantrel1::FromUtf8((m_dir / "none.str").string());
  EXPECT_EQ(LoadStringModule(missing.c_str()), nullptr);
  ASSERT_EQ(vantrel1::StringModuleErrors().size(), 1u);
  EXPECT_EQ(vantrel1::StringModuleErrors()[0].line, 0);
  EXPECT_EQ(LoadStringModule(nullptr), nullptr);
}
