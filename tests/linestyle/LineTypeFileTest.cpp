// The text form of a line type: string-table chains and settings-file sections.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <climits>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "linestyle/LineType.h"
#include "linestyle/LineTypeEquality.h"
#include "platform/Profile.h"
#include "platform/StringTable.h"
#include "platform/Utf.h"
#include "suite/VantrelFont.h"

namespace fs = std::filesystem;

namespace {

class LineTypeText : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "vantrel1-linetype-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    m_dir = pattern;
  }
  void TearDown() override {
    if (m_module != nullptr) FreeStringModule(m_module);
    fs::remove_all(m_dir);
  }

  std::u16string Path(const char* name) const { return vantrel1::FromUtf8((m_dir / name).string()); }
  void WriteBytes(const char* name, const std::string& bytes) const {
    std::ofstream(m_dir / name, std::ios::binary) << bytes;
  }
  // A string-table module holding `text` (lines `<id> "<text>"`).
  HINSTANCE Module(const std::string& text) {
    WriteBytes("strings.str", text);
    m_module = LoadStringModule(Path("strings.str").c_str());
    return m_module;
  }
  int FromStrings(CLineType& line, int* id) { return line.FromFile(nullptr, nullptr, nullptr, m_module, id); }

  fs::path m_dir;
  HINSTANCE m_module = nullptr;
};

std::u16string Record(CLineItem& item) {
  WCHAR buffer[512];
  return item.ToAscii(buffer, 512);
}

std::u16string Profile(const std::u16string& file, const char16_t* section, const char16_t* key) {
  WCHAR buffer[512];
  GetPrivateProfileStringW(section, key, u"", buffer, 512, file.c_str());
  return buffer;
}

TEST_F(LineTypeText, ReadsAChainOfStringsAndLeavesTheIdAfterIt) {
  ASSERT_NE(Module("100 \"1,2,0,0,dvostruka crtica\"\n"
                   "101 \"-1,150,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0\"\n"
                   "102 \"-1,-150,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0\"\n"
                   // Runs of commas are one separator; the name ends at a comma and is cut.
                   "103 \"3,,1,0,0,,opis,ostatak\"\n"
                   "104 \"-1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\"\n"
                   "105 \"0,0,0,0,abcdefghijklmnopqrstuvwxyz0123456789\"\n"),
            nullptr);
  CLineType line;
  int id = 100;
  ASSERT_EQ(FromStrings(line, &id), 1);
  EXPECT_EQ(id, 103);
  EXPECT_EQ(std::u16string(line.GetDesc()), u"dvostruka crtica");
  EXPECT_EQ(line.GetPenWidth(), 1);
  ASSERT_EQ(line.GetNLine(), 2);
  EXPECT_EQ(Record(*line.GetLineItem(1)), u"-1,-150,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0");

  ASSERT_EQ(FromStrings(line, &id), 1);
  EXPECT_EQ(line.GetPenWidth(), 3);
  EXPECT_EQ(line.GetNLine(), 1);
  EXPECT_EQ(std::u16string(line.GetDesc()), u"opis");
  ASSERT_EQ(FromStrings(line, &id), 1);
  EXPECT_EQ(id, 106);
  EXPECT_EQ(std::u16string(line.GetDesc()), u"abcdefghijklmnopqrstuvwxyz01234");
  EXPECT_EQ(line.GetPenWidth(), 0);
  EXPECT_EQ(line.IsComplexLine(), 0);
}

TEST_F(LineTypeText, RefusesBadHeadersAndItemsAfterMovingPastWhatItRead) {
  Module("10 \"1,251,0,0,previse\"\n"
         "20 \"1,250,0,0,dovoljno\"\n"
         "30 \"1,0,0,251,previse\"\n"
         "40 \"1,2,0,0\"\n"
         "60 \"1,3,0,0,prekinuta\"\n"
         "61 \"-1,150,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0\"\n"
         "62 \"1,2,3\"\n");
  struct Case {
    int id;
    int after;
  };
  const Case cases[] = {
      {10, 11}, {20, 22},  // 250 items pass the header; the chain fails on the first missing one
      {30, 31}, {40, 41},  {50, 51}, {60, 63}, {-1, 0}, {INT_MAX, INT_MAX},
  };
  CLineType line;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.id);
    int id = c.id;
    EXPECT_EQ(FromStrings(line, &id), 0);
    EXPECT_EQ(id, c.after);
  }
  // What was read before the bad item stays.
  EXPECT_EQ(line.FromFile(nullptr, nullptr, nullptr, m_module, nullptr), 0);
  int id = 60;
  FromStrings(line, &id);
  EXPECT_EQ(line.GetNLine(), 1);
  EXPECT_EQ(std::u16string(line.GetDesc()), u"prekinuta");
}

TEST_F(LineTypeText, WritesASectionAndReadsItBack) {
  CLineType source;
  CLineItem left;
  ASSERT_EQ(left.FromAscii(u"-1,-150,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0"), 1);
  CSymbolItem arrow;
  ASSERT_EQ(arrow.FromAscii(u"B0.3,1,0,1000,0,0,2,4,0,0,0,-800,300,1,-800,-300,1,0,0,1"), 1);
  CTextItem label;
  ASSERT_EQ(label.FromAscii(u"1.5,900,2,4000,0.25,-30,kota"), 1);
  source.AddLineItem(&left);
  source.AddLineItem(&left);
  source.AddSymbolItem(&arrow);
  source.AddTextItem(&label);
  source.SetDesc(u"postojeći zid");
  source.m_nPenWidth = 3;
  LOGFONTW font{};
  font.lfHeight = -24;
  font.lfWeight = 700;
  std::char_traits<WCHAR>::copy(font.lfFaceName, u"DejaVu Sans", 12);
  source.SetFont(&font);

  const std::u16string file = Path("linije.lin");
  ASSERT_EQ(source.ToFile(nullptr, file.c_str(), u"LineType0"), 1);
  std::ifstream in(m_dir / "linije.lin", std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  EXPECT_NE(bytes.find("LineDesc=3,2,1,1,postoje\xC4\x87i zid\r\n"), std::string::npos) << bytes;
  EXPECT_NE(bytes.find("LineItem1=-1,-150,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0\r\n"), std::string::npos);
  EXPECT_NE(bytes.find("SymbolItem0=B0.3,1,0,1000,0,0,2,4,0,0,0,-800,300,1,-800,-300,1,0,0,1\r\n"), std::string::npos);
  EXPECT_NE(bytes.find("TextItem0=1.5,900,2,4000,0.25,-30,kota\r\n"), std::string::npos);
  WCHAR fontText[FNT_TEXT_SIZE];
  FntToString(&font, fontText);
  EXPECT_EQ(Profile(file, u"LineType0", u"Font"), std::u16string(fontText));

  CLineType copy;
  ASSERT_EQ(copy.FromFile(nullptr, file.c_str(), u"LineType0", nullptr, nullptr), 1);
  EXPECT_TRUE(vantrel1::testing::SameLineType(copy, source));
}

TEST_F(LineTypeText, ASectionWithoutAUsableFontHasNone) {
  WriteBytes("a.lin",
             "[A]\nLineDesc=1,0,0,0,bez fonta\nFont=nije font\n"
             "[B]\nLineDesc=1,1,0,0,bez stavke\n");
  CLineType line;
  ASSERT_EQ(line.FromFile(nullptr, Path("a.lin").c_str(), u"A", nullptr, nullptr), 1);
  EXPECT_EQ(line.GetFont(), nullptr);
  EXPECT_EQ(line.FromFile(nullptr, Path("a.lin").c_str(), u"B", nullptr, nullptr), 0);
  EXPECT_EQ(line.FromFile(nullptr, Path("a.lin").c_str(), u"C", nullptr, nullptr), 0);
  EXPECT_EQ(line.FromFile(nullptr, Path("nema.lin").c_str(), u"A", nullptr, nullptr), 0);
}

TEST_F(LineTypeText, AnItemTooLongForItsRecordStopsTheWriteBeforeTheFlush) {
  CSymbolItem big;
  big.m_nPoints = CSymbolItem::kMaxPoints;
  for (int i = 0; i < big.m_nPoints; ++i) big.m_ptPoints[i] = POINT{INT_MIN, INT_MIN};
  CLineType line;
  line.SetDesc(u"preduga");
  line.AddSymbolItem(&big);
  const std::u16string file = Path("preduga.lin");
  EXPECT_EQ(line.ToFile(nullptr, file.c_str(), u"LineType0"), 0);
  // The header was written but never reached the disk.
  EXPECT_EQ(Profile(file, u"LineType0", u"LineDesc"), u"1,0,1,0,preduga");
  EXPECT_FALSE(fs::exists(m_dir / "preduga.lin"));
  WritePrivateProfileStringW(u"LineType0", nullptr, nullptr, file.c_str());
}

// The counts are public fields; set beyond the arrays by hand, they must not take the
// write past them.
TEST_F(LineTypeText, CountsBeyondTheArraysWriteOnlyTheItemsThatExist) {
  CLineType line;
  CLineItem solid;
  line.SetDesc(u"prebrojana");
  line.AddLineItem(&solid);
  line.m_nLine = 50;
  line.m_nSymbol = 7;
  line.m_nText = -3;
  const std::u16string file = Path("prebrojana.lin");
  ASSERT_EQ(line.ToFile(nullptr, file.c_str(), u"LineType0"), 1);
  EXPECT_EQ(Profile(file, u"LineType0", u"LineDesc"), u"1,1,0,0,prebrojana");
  EXPECT_EQ(Profile(file, u"LineType0", u"LineItem1"), u"");
  CLineType copy;
  EXPECT_EQ(copy.FromFile(nullptr, file.c_str(), u"LineType0", nullptr, nullptr), 1);
  EXPECT_EQ(copy.m_nLine, 1);
}

}  // namespace
