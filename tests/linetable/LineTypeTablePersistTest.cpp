// A line type table in an archive, in an XML document and in a table file, and copied.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "linestyle/LineTypeEquality.h"
#include "linetable/LineTypeTable.h"
#include "markup/Markup.h"
#include "platform/Archive.h"
#include "platform/GdiObjects.h"
#include "platform/Utf.h"
#include "suite/VantrelAppBaseX.h"
#include "suite/VantrelWinApp.h"

namespace fs = std::filesystem;

namespace {

using vantrel1::testing::SameLineType;

std::u16string UserDesc(const CLineTypeTable& table, int index) { return table.m_pUserLines[index].GetDesc(); }

// Byte-level builder of archives as the framework writes them.
class ArchiveBytes {
 public:
  ArchiveBytes& Int(std::int32_t value) {
    for (int i = 0; i < 4; ++i) m_bytes.push_back(static_cast<BYTE>(static_cast<std::uint32_t>(value) >> (8 * i)));
    return *this;
  }
  ArchiveBytes& Byte(BYTE value) {
    m_bytes.push_back(value);
    return *this;
  }
  // The Unicode string: 0xFF, 0xFFFE, a length byte and the UTF-16 units.
  ArchiveBytes& Wide(const std::u16string& text) {
    Byte(0xFF).Byte(0xFE).Byte(0xFF).Byte(static_cast<BYTE>(text.size()));
    for (char16_t c : text) Byte(static_cast<BYTE>(c & 0xFF)).Byte(static_cast<BYTE>(c >> 8));
    return *this;
  }
  const std::vector<BYTE>& Bytes() const { return m_bytes; }

 private:
  std::vector<BYTE> m_bytes;
};

CLineTypeTable& LoadBuiltIn(CLineTypeTable& table) {
  EXPECT_EQ(table.FromFile(nullptr, nullptr, nullptr), 0);
  return table;
}

std::vector<BYTE> Store(CLineTypeTable& table) {
  CArchive ar(CArchive::store);
  table.Serialize(ar);
  return ar.GetBytes();
}

void Load(CLineTypeTable& table, const std::vector<BYTE>& bytes) {
  CArchive ar(bytes);
  table.Serialize(ar);
}

std::optional<int> ArchiveError(CLineTypeTable& table, const std::vector<BYTE>& bytes) {
  try {
    Load(table, bytes);
  } catch (const CArchiveException& e) {
    return e.m_cause;
  }
  return std::nullopt;
}

std::u16string ToXml(CLineTypeTable& table) {
  CMarkup xml;
  table.SerializeXML(nullptr, &xml, 1);
  return xml.GetDoc();
}

void FromXml(CLineTypeTable& table, const std::u16string& doc) {
  CMarkup xml(doc.c_str());
  ASSERT_TRUE(xml.IsWellFormed()) << vantrel1::ToUtf8(xml.GetError());
  table.SerializeXML(nullptr, &xml, 0);
}

// Equal counts and every line type equal, field by field.
void ExpectSameTables(const CLineTypeTable& a, const CLineTypeTable& b) {
  ASSERT_EQ(a.m_nSystemLines, b.m_nSystemLines);
  ASSERT_EQ(a.m_nUserLines, b.m_nUserLines);
  for (int i = 0; i < a.m_nSystemLines; ++i)
    EXPECT_TRUE(SameLineType(a.m_pSystemLines[i], b.m_pSystemLines[i])) << "system line type " << i;
  for (int i = 0; i < a.m_nUserLines; ++i)
    EXPECT_TRUE(SameLineType(a.m_pUserLines[i], b.m_pUserLines[i])) << "user line type " << i;
}

// The built-in table with a font on "kontura", the line type with a text item.
void LoadWithFont(CLineTypeTable& table) {
  LoadBuiltIn(table);
  LOGFONTW lf{};
  lf.lfHeight = -25;
  lf.lfWeight = 700;
  lf.lfCharSet = 238;
  std::u16string(u"DejaVu Sans").copy(lf.lfFaceName, 11);
  table.m_pUserLines[40].SetFont(&lf);
}

class TableFile : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "vantrel1-table-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    m_dir = pattern;
  }
  void TearDown() override { fs::remove_all(m_dir); }
  std::u16string Path(const char* name) const { return vantrel1::FromUtf8((m_dir / name).string()); }
  void WriteBytes(const char* name, const std::string& bytes) const {
    std::ofstream(m_dir / name, std::ios::binary) << bytes;
  }
  std::string ReadBytes(const char* name) const {
    std::ifstream in(m_dir / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }

  fs::path m_dir;
};

// Archive -------------------------------------------------------------------------------

TEST(TableArchive, StartsWithVersionTwoAndTheCountsThenTheFirstSystemRecord) {
  CLineTypeTable table;
  const std::vector<BYTE> bytes = Store(LoadBuiltIn(table));
  ArchiveBytes expected;
  expected.Int(2).Int(43).Int(9);
  // "strelica": colour, pen width 0, one line and one symbol item, no font.
  expected.Int(0).Int(0).Int(1).Int(1).Int(0).Int(1).Int(1).Int(0).Int(0).Wide(u"strelica").Int(1);
  // Its line item: the line type's pen, on the path, continuous (the record's one pair
  // has no gap), the pairs still holding what the record gave.
  expected.Int(-1).Int(0).Int(0).Int(1000).Int(0).Int(0);
  ASSERT_GE(bytes.size(), expected.Bytes().size());
  EXPECT_EQ(std::vector<BYTE>(bytes.begin(), bytes.begin() + static_cast<long>(expected.Bytes().size())),
            expected.Bytes());
}

TEST(TableArchive, RefusesDamagedArchivesBeforeTouchingTheTable) {
  CLineTypeTable table;
  LoadBuiltIn(table);
  const CLineType* users = table.m_pUserLines;
  const std::pair<int, int> counts[] = {{251, 9}, {-1, 9}, {2000000000, 9}, {0, 10}, {0, -1}};
  for (const auto& [userCount, systemCount] : counts) {
    ArchiveBytes archive;
    archive.Int(2).Int(userCount).Int(systemCount);
    EXPECT_EQ(ArchiveError(table, archive.Bytes()), CArchiveException::badIndex) << userCount << " " << systemCount;
  }
  EXPECT_EQ(table.m_pUserLines, users);
  EXPECT_EQ(table.m_nUserLines, 43);
  EXPECT_EQ(table.m_nSystemLines, 9);

  std::vector<BYTE> bytes = Store(table);
  bytes.resize(bytes.size() / 2);
  CLineTypeTable truncated;
  EXPECT_EQ(ArchiveError(truncated, bytes), CArchiveException::endOfFile);
}

class WidthContext : public CVantrelAppBaseX {
 public:
  int GetDefaultLineWidth() const override { return 7; }
};

TEST(TableArchive, ATableSurvivesArchiveAndXmlInTurn) {
  CLineTypeTable original;
  LoadWithFont(original);
  std::vector<BYTE> bytes = Store(original);
  bytes[0] = 7;  // any version loads alike
  CLineTypeTable fromArchive;
  fromArchive.m_nDefaultWidth = 5;
  Load(fromArchive, bytes);
  ExpectSameTables(fromArchive, original);
  EXPECT_EQ(fromArchive.CheckValid(), 1);
  EXPECT_EQ(fromArchive.m_nDefaultWidth, 5);  // not part of the archive

  const std::u16string doc = ToXml(fromArchive);
  CLineTypeTable fromXml;
  FromXml(fromXml, doc);
  ExpectSameTables(fromXml, original);
  // Loading XML takes the default width from the running application, if any.
  EXPECT_EQ(fromXml.m_nDefaultWidth, 2);
  WidthContext context;
  CVantrelWinApp app(1, &context);
  FromXml(fromXml, doc);
  EXPECT_EQ(fromXml.m_nDefaultWidth, 7);
}

// XML -----------------------------------------------------------------------------------

TEST(TableXml, WritesTheCountsThenEachSystemAndUserLineTypeInItsOwnElement) {
  CLineTypeTable table;
  LoadBuiltIn(table);
  while (table.m_nUserLines > 2) table.DeleteLineType(5000);
  const std::string doc = vantrel1::ToUtf8(ToXml(table));
  const std::string head =
      "<LINETYPETABLE>\r\n"
      "<USERLINES>2</USERLINES>\r\n"
      "<SYSTEMLINES>9</SYSTEMLINES>\r\n"
      "<SYSTEM0>\r\n"
      "<COLOR>0</COLOR>\r\n"
      "<WIDTH>0</WIDTH>\r\n"
      "<NLINE>1</NLINE>\r\n"
      "<NSYMBOL>1</NSYMBOL>\r\n";
  EXPECT_EQ(doc.substr(0, head.size()), head);
  for (const char* tag : {"<SYSTEM8>\r\n", "</SYSTEM8>\r\n<USER0>\r\n", "<DESC>velika crtica mala mala</DESC>"})
    EXPECT_NE(doc.find(tag), std::string::npos) << tag;
  EXPECT_EQ(doc.find("<SYSTEM9>"), std::string::npos);
  EXPECT_TRUE(doc.ends_with("</USER1>\r\n</LINETYPETABLE>\r\n")) << doc.substr(doc.size() - 40);

  // Storing leaves the markup inside the table element.
  CMarkup xml;
  xml.AddElem(u"DOC");
  xml.IntoElem();
  table.SerializeXML(nullptr, &xml, 1);
  xml.AddElem(u"TAIL");
  EXPECT_NE(vantrel1::ToUtf8(xml.GetDoc()).find("</USER1>\r\n<TAIL/>\r\n</LINETYPETABLE>"), std::string::npos);
}

TEST(TableXml, ATableWithoutSystemLineTypesBecomesTheBuiltInOne) {
  const std::u16string user0 =
      u"<USER0><NLINE>1</NLINE><MAXLINE>1</MAXLINE><DESC>vlastita</DESC>"
      u"<LINEITEM0>1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0</LINEITEM0></USER0>";
  for (const char16_t* counts : {u"<USERLINES>1</USERLINES><SYSTEMLINES>0</SYSTEMLINES>", u"<USERLINES>1</USERLINES>",
                                 u"<USERLINES>1</USERLINES><SYSTEMLINES>-4</SYSTEMLINES>"}) {
    CLineTypeTable table;
    FromXml(table, u"<LINETYPETABLE>" + std::u16string(counts) + user0 + u"</LINETYPETABLE>");
    EXPECT_EQ(table.m_nSystemLines, 9);
    ASSERT_EQ(table.m_nUserLines, 43);
    EXPECT_EQ(std::u16string(table.m_pUserLines[0].GetDesc()), u"dvostruka crtica");
  }

  // Storing one writes it as it is, then reloads the built-in table.
  CLineTypeTable empty;
  EXPECT_EQ(vantrel1::ToUtf8(ToXml(empty)),
            "<LINETYPETABLE>\r\n<USERLINES>0</USERLINES>\r\n<SYSTEMLINES>0</SYSTEMLINES>\r\n</LINETYPETABLE>\r\n");
  EXPECT_EQ(empty.m_nSystemLines, 9);
  EXPECT_EQ(empty.m_nUserLines, 43);
}

// Counts come from the document and are kept within what a table holds; an entry the
// document lacks keeps the default line type.
TEST(TableXml, LoadingTrustsNoCountAndNoEntryOfTheDocument) {
  CLineTypeTable original;
  LoadBuiltIn(original);
  while (original.m_nUserLines > 5) original.DeleteLineType(5000);
  std::u16string doc = ToXml(original);
  const std::size_t from = doc.find(u"<USER3>");
  const std::size_t to = doc.find(u"</USER3>\r\n") + 10;
  doc.erase(from, to - from);

  CLineTypeTable loaded;
  FromXml(loaded, doc);
  ASSERT_EQ(loaded.m_nUserLines, 5);
  EXPECT_TRUE(SameLineType(loaded.m_pUserLines[3], CLineType()));
  EXPECT_EQ(loaded.m_pUserLines[3].m_pLineItems, nullptr);
  EXPECT_TRUE(SameLineType(loaded.m_pUserLines[4], original.m_pUserLines[4]));

  CLineTypeTable table;
  FromXml(table, u"<LINETYPETABLE><USERLINES>2000000000</USERLINES><SYSTEMLINES>12</SYSTEMLINES>"
                 u"<SYSTEM8><DESC>deveta</DESC></SYSTEM8><SYSTEM9><DESC>deseta</DESC></SYSTEM9></LINETYPETABLE>");
  EXPECT_EQ(table.m_nUserLines, CLineTypeTable::kMaxUserLines);
  ASSERT_EQ(table.m_nSystemLines, 9);
  EXPECT_EQ(std::u16string(table.m_pSystemLines[8].GetDesc()), u"deveta");

  FromXml(table, u"<LINETYPETABLE><USERLINES>-5</USERLINES><SYSTEMLINES>3</SYSTEMLINES></LINETYPETABLE>");
  EXPECT_EQ(table.m_nUserLines, 0);
  EXPECT_EQ(table.m_pUserLines, nullptr);
  EXPECT_EQ(table.m_nSystemLines, 3);
}

// Table files ---------------------------------------------------------------------------

std::string Section(int index, const char* desc) {
  return "[LineType" + std::to_string(index) + "]\r\nLineDesc=1,1,0,0," + desc +
         "\r\nLineItem0=-1,0,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0\r\n";
}

TEST_F(TableFile, LoadsSectionsUpToTheFirstGapSkippingLeadingHighlights) {
  const struct {
    std::vector<std::pair<int, const char*>> sections;
    std::vector<std::u16string> loaded;
  } cases[] = {
      {{{0, "prva"}, {1, "druga"}, {3, "posle praznine"}}, {u"prva", u"druga"}},
      {{{0, "HILITE_BW"}, {1, "prva"}, {2, "druga"}}, {u"prva", u"druga"}},
      {{{0, "HILITE_BW"}, {1, "HILITE_COLOR"}, {2, "prva"}}, {u"prva"}},
      // Only an exact spelling marks a highlight entry, and only in the first two sections.
      {{{0, "hilite_bw"}, {1, "prva"}, {2, "HILITE_COLOR"}}, {u"hilite_bw", u"prva", u"HILITE_COLOR"}},
      {{{0, "HILITE_COLOR"}}, {}},
  };
  int file = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(file);
    const std::string name = "t" + std::to_string(file++) + ".lin";
    std::string text;
    for (const auto& [index, desc] : c.sections) text += Section(index, desc);
    WriteBytes(name.c_str(), text);
    CLineTypeTable table;
    EXPECT_EQ(table.FromFile(nullptr, Path(name.c_str()).c_str(), nullptr), 1);
    EXPECT_EQ(table.m_nSystemLines, 9);
    EXPECT_EQ(table.CheckValid(), 1);
    ASSERT_EQ(table.m_nUserLines, static_cast<int>(c.loaded.size()));
    for (int i = 0; i < table.m_nUserLines; ++i) {
      EXPECT_EQ(UserDesc(table, i), c.loaded[static_cast<std::size_t>(i)]);
      EXPECT_EQ(table.m_pUserLines[i].GetLineItem(0)->m_nDash[0], 300);
    }
  }
}

TEST_F(TableFile, FallsBackToTheBuiltInSetWhenTheFileHasNoLineTypes) {
  WriteBytes("empty.lin", "[Other]\r\nKey=1\r\n");
  CLineTypeTable table;
  EXPECT_EQ(table.FromFile(nullptr, Path("empty.lin").c_str(), nullptr), 0);
  EXPECT_EQ(table.m_nUserLines, 43);
  EXPECT_EQ(table.FromFile(nullptr, Path("missing.lin").c_str(), nullptr), 0);
  EXPECT_EQ(table.m_nUserLines, 43);
  EXPECT_EQ(table.CheckValid(), 1);
}

TEST_F(TableFile, StopsAtABrokenSectionKeepingWhatWasRead) {
  WriteBytes("bad.lin", Section(0, "prva") + Section(1, "druga") +
                            "[LineType2]\r\nLineDesc=1,251,0,0,previse\r\n" + Section(3, "cetvrta"));
  CLineTypeTable table;
  EXPECT_EQ(table.FromFile(nullptr, Path("bad.lin").c_str(), nullptr), 0);
  EXPECT_EQ(table.m_nUserLines, 2);
  EXPECT_EQ(table.m_nSystemLines, 9);
}

class ProfileCounter : public CVantrelAppBaseX {
 public:
  DWORD GetProfileStringX(LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue, LPWSTR buffer, DWORD size,
                          LPCWSTR file) const override {
    ++reads;
    return CVantrelAppBaseX::GetProfileStringX(section, key, defaultValue, buffer, size, file);
  }
  int GetDefaultLineWidth() const override { return 7; }
  mutable int reads = 0;
};

TEST_F(TableFile, ReadsThroughTheApplicationContext) {
  WriteBytes("t.lin", Section(0, "prva"));
  ProfileCounter app;
  CLineTypeTable table;
  EXPECT_EQ(table.FromFile(&app, Path("t.lin").c_str(), nullptr), 1);
  // Counting finds section 0 and misses section 1; section 0 (header, font, one item) is
  // then read twice: once to look for a highlight entry, once to keep.
  EXPECT_EQ(app.reads, 2 + 3 + 3);
  EXPECT_EQ(table.m_nDefaultWidth, 7);
}

// A table file stays in the form it has: UTF-8 unless it starts as UTF-16.
TEST_F(TableFile, ReadsBackEqualUserLineTypesFromUtf8AndUtf16Files) {
  CLineTypeTable original;
  LoadWithFont(original);
  ASSERT_EQ(original.ToFile(nullptr, Path("utf8.lin").c_str(), 1), 1);
  const std::string bytes = ReadBytes("utf8.lin");
  EXPECT_EQ(bytes.rfind("[LineType0]\r\nLineDesc=1,2,0,0,dvostruka crtica\r\n", 0), 0u);
  EXPECT_NE(bytes.find("LineDesc=1,2,1,0,\xC5\xBE" "eleznica"), std::string::npos);

  WriteBytes("utf16.lin", std::string("\xFF\xFE", 2));
  ASSERT_EQ(original.ToFile(nullptr, Path("utf16.lin").c_str(), 0), 1);
  const std::string wide = ReadBytes("utf16.lin");
  EXPECT_EQ(wide.substr(0, 4), std::string("\xFF\xFE[\0", 4));
  EXPECT_NE(wide.find(std::string("h\0e\0d\0\x7E\x01", 8)), std::string::npos);  // "hedž"

  for (const char* file : {"utf8.lin", "utf16.lin"}) {
    SCOPED_TRACE(file);
    CLineTypeTable loaded;
    ASSERT_EQ(loaded.FromFile(nullptr, Path(file).c_str(), nullptr), 1);
    ExpectSameTables(loaded, original);
  }
}

TEST_F(TableFile, RemovingTheFileFirstDropsSectionsOfALongerTable) {
  CLineTypeTable table;
  LoadBuiltIn(table);
  const std::u16string path = Path("tabela.lin");
  ASSERT_EQ(table.ToFile(nullptr, path.c_str(), 0), 1);
  while (table.m_nUserLines > 2) table.DeleteLineType(5000);

  CLineTypeTable loaded;
  ASSERT_EQ(table.ToFile(nullptr, path.c_str(), 0), 1);
  ASSERT_EQ(loaded.FromFile(nullptr, path.c_str(), nullptr), 1);
  EXPECT_EQ(loaded.m_nUserLines, 43);  // sections 2 … 42 were left from before

  ASSERT_EQ(table.ToFile(nullptr, path.c_str(), 1), 1);
  ASSERT_EQ(loaded.FromFile(nullptr, path.c_str(), nullptr), 1);
  EXPECT_EQ(loaded.m_nUserLines, 2);

  EXPECT_EQ(table.ToFile(nullptr, Path("nema/tabela.lin").c_str(), 1), 0);
}

TEST_F(TableFile, WithoutAFileNameAnEmptyTableDeletesNormalLinInTheInstallationDirectory) {
  const char* previous = std::getenv("VANTREL1_DIR");
  const std::optional<std::string> saved = previous ? std::optional<std::string>(previous) : std::nullopt;
  ASSERT_EQ(::setenv("VANTREL1_DIR", m_dir.c_str(), 1), 0);
  WriteBytes("Normal.lin", "[LineType0]\r\nLineDesc=1,0,0,0,stara\r\n");

  CLineTypeTable empty;
  const int result = empty.ToFile(nullptr, nullptr, 1);
  if (saved) ::setenv("VANTREL1_DIR", saved->c_str(), 1); else ::unsetenv("VANTREL1_DIR");
  EXPECT_EQ(result, 1);
  EXPECT_FALSE(fs::exists(m_dir / "Normal.lin"));
}

// Copying -------------------------------------------------------------------------------

std::int64_t LivePens() { return GdiObjectCounts().pens.Live(); }

TEST(TableAssignment, CopiesBothSetsAndTheDefaultWidth) {
  CLineTypeTable source;
  LoadBuiltIn(source);
  source.m_nDefaultWidth = 4;
  CLineTypeTable copy(source);
  ExpectSameTables(copy, source);
  EXPECT_EQ(copy.m_nDefaultWidth, 4);
  EXPECT_NE(copy.m_pUserLines, source.m_pUserLines);

  // An empty table still leaves arrays behind.
  CLineTypeTable empty;
  copy = empty;
  EXPECT_EQ(copy.m_nUserLines, 0);
  EXPECT_EQ(copy.m_nSystemLines, 0);
  EXPECT_NE(copy.m_pUserLines, nullptr);
  EXPECT_NE(copy.m_pSystemLines, nullptr);
  EXPECT_EQ(copy.m_nDefaultWidth, 1);
}

TEST(TableAssignment, HeldLinesSurviveAndAreFreedWhenGivenBack) {
  const std::int64_t pens = LivePens();
  {
    CLineTypeTable table;
    LoadBuiltIn(table);
    COLORREF red = RGB(255, 0, 0);
    COLORREF blue = RGB(0, 0, 255);
    CLineType* held = table.CreateLine(1026, &red, 0, 1, 0);
    table.DeleteLine(table.CreateLine(1027, &blue, 0, 1, 0), 1);  // cached, no longer held
    ASSERT_EQ(LivePens(), pens + 2);

    // Assigning a table to itself keeps its cache.
    CLineTypeTable& same = table;
    table = same;
    EXPECT_EQ(table.m_nCacheCount, 2);
    EXPECT_EQ(table.m_pCacheLine[1], held);

    CLineTypeTable other;
    LoadBuiltIn(other);
    table = other;
    EXPECT_EQ(table.m_nCacheCount, 0);
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(table.m_pCacheLine[i], nullptr);
      EXPECT_EQ(table.m_nCacheRef[i], 0);
    }
    EXPECT_EQ(LivePens(), pens + 1);  // the unreferenced line went with its pen
    EXPECT_EQ(std::u16string(held->GetDesc()), u"dvostruka crtica");

    table.DeleteLine(held, 1);
    EXPECT_EQ(LivePens(), pens);
  }
  EXPECT_EQ(LivePens(), pens);
}

}  // namespace
