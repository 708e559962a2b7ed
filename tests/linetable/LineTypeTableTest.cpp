// Numbering, lookup, editing of the user set and loading of the line type table.
#include "linetable/LineTypeTable.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <climits>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/Gdi.h"
#include "platform/RecordingMessageSink.h"
#include "platform/Utf.h"
#include "platform/WideCrt.h"
#include "suite/AppMessages.h"
#include "suite/VantrelAppBaseX.h"

namespace fs = std::filesystem;

namespace {

std::u16string Desc(const CLineType& line) { return line.GetDesc(); }
std::u16string UserDesc(const CLineTypeTable& table, int index) { return Desc(table.m_pUserLines[index]); }

CLineType Named(const char16_t* name) {
  CLineType line;
  line.SetDesc(name);
  return line;
}

class BuiltInTable : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(m_table.FromFile(nullptr, nullptr, nullptr), 0); }
  CLineTypeTable m_table;
};

TEST(LineTypeTableEmpty, StartsWithNothingLoadedAndIsNotValid) {
  CLineTypeTable table;
  EXPECT_EQ(table.m_pUserLines, nullptr);
  EXPECT_EQ(table.m_pSystemLines, nullptr);
  EXPECT_EQ(table.m_nUserLines, 0);
  EXPECT_EQ(table.m_nSystemLines, 0);
  EXPECT_EQ(table.m_nCacheCount, 0);
  EXPECT_EQ(table.m_nDefaultWidth, 1);
  for (int i = 0; i < CLineTypeTable::kCacheSize; ++i) {
    EXPECT_EQ(table.m_pCacheLine[i], nullptr);
    EXPECT_EQ(table.m_nCacheNumber[i], -1);
  }
  EXPECT_EQ(table.CheckValid(), 0);
  EXPECT_EQ(table.NextUserLineType(15), -1);
  // Nothing to resolve to: the line is blank but still a line.
  EXPECT_EQ(table.GetDesc(20), u"--980");
  EXPECT_EQ(table.DeleteLineType(16), -1);
  EXPECT_EQ(table.ShiftLine(16, 1), 0);
}

TEST_F(BuiltInTable, LoadsNineSystemAndFortyThreeUserLineTypesFromTheLibrary) {
  EXPECT_EQ(m_table.m_nSystemLines, 9);
  EXPECT_EQ(m_table.m_nUserLines, 43);
  EXPECT_EQ(m_table.CheckValid(), 1);
  EXPECT_EQ(m_table.m_nDefaultWidth, 2);
  EXPECT_EQ(Desc(m_table.m_pSystemLines[0]), u"strelica");
  EXPECT_EQ(Desc(m_table.m_pSystemLines[8]), u"crtica - tačka  (standardno)");
  EXPECT_EQ(UserDesc(m_table, 0), u"dvostruka crtica");
  EXPECT_EQ(UserDesc(m_table, 42), u"talasasta linija");
  // Loading again replaces both sets rather than adding to them.
  EXPECT_EQ(m_table.FromFile(nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(m_table.m_nUserLines, 43);
}

TEST_F(BuiltInTable, NumbersUserLineTypesFrom1026AndEnumeratesEveryValidNumber) {
  EXPECT_EQ(CLineTypeTable::IsUserLineType(15), 0);
  EXPECT_NE(CLineTypeTable::IsUserLineType(16), 0);
  EXPECT_EQ(m_table.GetLineTypePtr(16), nullptr);
  EXPECT_EQ(m_table.GetLineTypePtr(7), nullptr);
  EXPECT_EQ(m_table.GetLineTypePtr(1026), &m_table.m_pUserLines[0]);
  EXPECT_EQ(m_table.GetLineTypePtr(1068), &m_table.m_pUserLines[42]);
  EXPECT_EQ(m_table.GetLineTypePtr(1069), nullptr);

  std::vector<int> numbers;
  for (int n = -1; n != -1 || numbers.empty(); n = m_table.NextUserLineType(n)) numbers.push_back(n);
  ASSERT_EQ(numbers.size(), 1u + 16u + 43u);
  EXPECT_EQ(numbers[16], 15);
  EXPECT_EQ(numbers[17], 1026);
  EXPECT_EQ(numbers.back(), 1068);
  EXPECT_EQ(m_table.NextUserLineType(500), 1026);
  EXPECT_EQ(m_table.NextUserLineType(-2), -1);
}

TEST_F(BuiltInTable, NumberedDescriptionsShowUserLineTypesLessAThousand) {
  EXPECT_EQ(CLineTypeTable::MakeDesc(1030, u"trag"), u"trag-30");
  EXPECT_EQ(CLineTypeTable::MakeDesc(3, u"crtica-tačka"), u"crtica-tačka-3");
  EXPECT_EQ(CLineTypeTable::MakeDesc(-1, u""), u"--1");
  EXPECT_EQ(CLineTypeTable::MakeDesc(20, u"x"), u"x--980");

  const GdiObjectTally before = GdiObjectCounts();
  EXPECT_EQ(m_table.GetDesc(1026), u"dvostruka crtica-26");
  EXPECT_EQ(m_table.GetDesc(3), u"crtica-tačka-3");
  EXPECT_EQ(m_table.GetDesc(6), u"debeo  (težak)-6");
  EXPECT_EQ(m_table.GetDesc(-1), u"--1");
  EXPECT_EQ(m_table.GetDesc(12), u"puna  (standardna)-12");
  // Numbers holding no line fall back to the first system or the first user line type.
  EXPECT_EQ(m_table.GetDesc(20), u"strelica--980");
  EXPECT_EQ(m_table.GetDesc(5000), u"dvostruka crtica-4000");
  EXPECT_EQ((GdiObjectCounts() - before).pens.Live(), 0);
  EXPECT_GT((GdiObjectCounts() - before).pens.created, 0);
  EXPECT_EQ(m_table.m_nCacheCount, 0);
}

TEST_F(BuiltInTable, FindsLinesByNameIgnoringAsciiCaseLowestNumberFirst) {
  EXPECT_EQ(m_table.FindLine(u"ČVRST"), 0);
  // Only the ASCII letters fold, as in the classic locale.
  EXPECT_EQ(m_table.FindLine(u"čvrst"), -1);
  EXPECT_EQ(m_table.FindLine(u"Debeo  (srednji)"), 5);
  EXPECT_EQ(m_table.FindLine(u"STRELICA1"), 9);
  EXPECT_EQ(m_table.FindLine(u"talasasta linija"), 1068);
  EXPECT_EQ(m_table.FindLine(u"nema je"), -1);
  EXPECT_EQ(m_table.FindLine(nullptr), -1);

  CLineType dash = Named(u"crtica");
  CLineType trail = Named(u"trag");
  ASSERT_EQ(m_table.AddLineType(dash, nullptr), 44);
  ASSERT_EQ(m_table.AddLineType(trail, nullptr), 45);
  EXPECT_EQ(m_table.FindLine(u"crtica"), 1);
  EXPECT_EQ(m_table.FindLine(u"trag"), 1030);
}

TEST_F(BuiltInTable, FindsLineNumbersByPlainOrNumberedDescription) {
  EXPECT_EQ(m_table.GetLineNumber(u"TRAG-30", 1), 1030);
  EXPECT_EQ(m_table.GetLineNumber(u"trag", 0), 1030);
  EXPECT_EQ(m_table.GetLineNumber(u"trag-30", 0), -1);
  EXPECT_EQ(m_table.GetLineNumber(u"trag", 1), -1);
  EXPECT_EQ(m_table.GetLineNumber(u"tačka-2", 1), 2);
  EXPECT_EQ(m_table.GetLineNumber(u"dimenzija-11", 1), 11);
  EXPECT_EQ(m_table.GetLineNumber(u"talasasta linija-68", 1), 1068);
  // The invisible line is not enumerated.
  EXPECT_EQ(m_table.GetLineNumber(u"--1", 1), -1);
}

TEST_F(BuiltInTable, AddsCopiesUpToTwoHundredFiftyThenWarns) {
  CRecordingMessageSink sink;
  CLineType line = Named(u"trag");
  line.m_crColor = RGB(200, 0, 0);
  ASSERT_EQ(m_table.AddLineType(line, nullptr), 44);
  EXPECT_EQ(UserDesc(m_table, 43), u"trag");
  EXPECT_EQ(m_table.m_pUserLines[43].GetColor(), 0u);  // assignment does not carry the colour
  EXPECT_EQ(UserDesc(m_table, 0), u"dvostruka crtica");

  while (m_table.m_nUserLines < 250) ASSERT_GT(m_table.AddLineType(line, nullptr), 0);
  EXPECT_TRUE(sink.Requests().empty());
  EXPECT_EQ(m_table.AddLineType(line, nullptr), -3);
  EXPECT_EQ(m_table.m_nUserLines, 250);
  ASSERT_EQ(sink.Requests().size(), 1u);
  EXPECT_EQ(sink.Requests()[0].kind, MessageKind::Warning);
  EXPECT_EQ(sink.Requests()[0].id, 265u);
  EXPECT_EQ(sink.Requests()[0].type, static_cast<UINT>(MB_ICONEXCLAMATION));
  EXPECT_EQ(m_table.CheckValid(), 1);

  m_table.m_nUserLines = -1;
  EXPECT_EQ(m_table.AddLineType(line, nullptr), -2);
  m_table.m_nUserLines = 250;
}

TEST_F(BuiltInTable, DeletesUserLineTypesNumberedFromSixteen) {
  EXPECT_EQ(m_table.DeleteLineType(15), -2);
  EXPECT_EQ(m_table.DeleteLineType(INT_MIN), -2);
  EXPECT_EQ(m_table.DeleteLineType(16), 42);
  EXPECT_EQ(UserDesc(m_table, 0), u"velika crtica mala mala");
  // Past the end, 1026 among them, removes the last one.
  EXPECT_EQ(m_table.DeleteLineType(5000), 41);
  EXPECT_EQ(UserDesc(m_table, 40), u"Strim");
  EXPECT_EQ(m_table.DeleteLineType(1026), 40);
  EXPECT_EQ(UserDesc(m_table, 39), u"kontura");
  EXPECT_EQ(Desc(m_table.m_pUserLines[40]), u"");  // the vacated entry is cleared
  EXPECT_EQ(m_table.DeleteLineType(17), 39);
  EXPECT_EQ(UserDesc(m_table, 1), u"led");
  while (m_table.m_nUserLines > 0) m_table.DeleteLineType(16);
  EXPECT_EQ(m_table.DeleteLineType(16), -1);
  EXPECT_EQ(m_table.CheckValid(), 1);
}

TEST_F(BuiltInTable, ShiftsUserLineTypesNumberedFromSixteen) {
  EXPECT_EQ(m_table.ShiftLine(16, 1), 1);
  EXPECT_EQ(UserDesc(m_table, 0), u"velika crtica mala mala");
  EXPECT_EQ(UserDesc(m_table, 1), u"dvostruka crtica");
  EXPECT_EQ(m_table.m_pUserLines[1].GetNLine(), 2);
  EXPECT_EQ(m_table.ShiftLine(17, -1), 1);
  EXPECT_EQ(UserDesc(m_table, 0), u"dvostruka crtica");
  EXPECT_EQ(m_table.ShiftLine(16 + 42, 1), 0);
  EXPECT_EQ(m_table.ShiftLine(16 + 42, -1), 1);
  EXPECT_EQ(UserDesc(m_table, 42), u"Strim");
  EXPECT_EQ(m_table.ShiftLine(15, 1), 0);
  // Moves that would leave the array are refused.
  EXPECT_EQ(m_table.ShiftLine(16, -1), 0);
  EXPECT_EQ(m_table.ShiftLine(1026, 1), 0);
  EXPECT_EQ(m_table.ShiftLine(1026, -1), 0);
  EXPECT_EQ(m_table.ShiftLine(16, INT_MAX), 0);
  EXPECT_EQ(m_table.ShiftLine(INT_MAX, -1), 0);
  EXPECT_EQ(UserDesc(m_table, 0), u"dvostruka crtica");
}

TEST_F(BuiltInTable, SetsOnlyPresentUserLineTypes) {
  const CLineType line = Named(u"novi");
  EXPECT_EQ(m_table.SetLineType(&line, 1027), 1);
  EXPECT_EQ(UserDesc(m_table, 1), u"novi");
  EXPECT_EQ(m_table.m_pUserLines[1].GetNLine(), 0);
  EXPECT_EQ(m_table.SetLineType(nullptr, 1027), 0);
  EXPECT_EQ(m_table.SetLineType(&line, 1069), 0);
  EXPECT_EQ(m_table.SetLineType(&line, 7), 0);
  EXPECT_EQ(m_table.SetLineType(&line, 16), 0);
}

TEST(LineTypeTableCompare, AnyTwoTablesAreEqual) {
  CLineTypeTable loaded;
  loaded.FromFile(nullptr, nullptr, nullptr);
  CLineTypeTable empty;
  EXPECT_EQ(loaded == empty, 1);
}

// Table files ------------------------------------------------------------------------------

class TableFile : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "vantrel1-linetable-XXXXXX").string();
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

std::string Section(int index, const char* desc) {
  return "[LineType" + std::to_string(index) + "]\r\nLineDesc=1,1,0,0," + desc +
         "\r\nLineItem0=-1,0,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0\r\n";
}

TEST_F(TableFile, LoadsItsSectionsUpToTheFirstGap) {
  WriteBytes("t.lin", Section(0, "prva") + Section(1, "druga") + Section(3, "posle praznine"));
  CLineTypeTable table;
  EXPECT_EQ(table.FromFile(nullptr, Path("t.lin").c_str(), nullptr), 1);
  EXPECT_EQ(table.m_nSystemLines, 9);
  ASSERT_EQ(table.m_nUserLines, 2);
  EXPECT_EQ(UserDesc(table, 0), u"prva");
  EXPECT_EQ(UserDesc(table, 1), u"druga");
  EXPECT_EQ(table.m_pUserLines[1].GetLineItem(0)->m_nDash[0], 300);
  EXPECT_EQ(table.CheckValid(), 1);
}

TEST_F(TableFile, SkipsLeadingHighlightSections) {
  WriteBytes("bw.lin", Section(0, "HILITE_BW") + Section(1, "prva") + Section(2, "druga"));
  CLineTypeTable table;
  EXPECT_EQ(table.FromFile(nullptr, Path("bw.lin").c_str(), nullptr), 1);
  ASSERT_EQ(table.m_nUserLines, 2);
  EXPECT_EQ(UserDesc(table, 0), u"prva");
  EXPECT_EQ(table.FindLine(u"HILITE_BW"), -1);

  WriteBytes("both.lin", Section(0, "HILITE_BW") + Section(1, "HILITE_COLOR") + Section(2, "prva"));
  EXPECT_EQ(table.FromFile(nullptr, Path("both.lin").c_str(), nullptr), 1);
  ASSERT_EQ(table.m_nUserLines, 1);
  EXPECT_EQ(UserDesc(table, 0), u"prva");

  // Only an exact spelling marks a highlight entry, and only in the first two sections.
  WriteBytes("other.lin", Section(0, "hilite_bw") + Section(1, "prva") + Section(2, "HILITE_COLOR"));
  EXPECT_EQ(table.FromFile(nullptr, Path("other.lin").c_str(), nullptr), 1);
  ASSERT_EQ(table.m_nUserLines, 3);
  EXPECT_EQ(UserDesc(table, 0), u"hilite_bw");

  WriteBytes("only.lin", Section(0, "HILITE_COLOR"));
  EXPECT_EQ(table.FromFile(nullptr, Path("only.lin").c_str(), nullptr), 1);
  EXPECT_EQ(table.m_nUserLines, 0);
  EXPECT_EQ(table.CheckValid(), 1);
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

// Writes the table's user line types one section each, as a table file holds them.
void WriteSections(CLineTypeTable& table, const std::u16string& file) {
  WCHAR section[32];
  for (int i = 0; i < table.m_nUserLines; ++i) {
    _snwprintf_s(section, 32, _TRUNCATE, u"LineType%d", i);
    ASSERT_EQ(table.m_pUserLines[i].ToFile(nullptr, file.c_str(), section), 1);
  }
}

// A line type's description, pen width and item records as one text.
std::u16string Records(CLineType& line) {
  std::u16string out = line.GetDesc();
  out += u'|';
  out += static_cast<char16_t>(u'0' + line.GetPenWidth());
  WCHAR record[512];
  for (int k = 0; k < line.GetNLine(); ++k) out += u'|' + std::u16string(line.GetLineItem(k)->ToAscii(record, 512));
  for (int k = 0; k < line.GetNSymbol(); ++k) out += u'|' + std::u16string(line.GetSymbolItem(k)->ToAscii(record, 512));
  for (int k = 0; k < line.GetNText(); ++k) out += u'|' + std::u16string(line.GetTextItem(k)->ToAscii(record, 512));
  return out;
}

void ExpectSameUserLines(CLineTypeTable& a, CLineTypeTable& b) {
  ASSERT_EQ(a.m_nUserLines, b.m_nUserLines);
  for (int i = 0; i < a.m_nUserLines; ++i)
    EXPECT_EQ(Records(a.m_pUserLines[i]), Records(b.m_pUserLines[i])) << "user line type " << i;
}

TEST_F(TableFile, RoundTripsTheBuiltInSetThroughUtf8AndUtf16Files) {
  CLineTypeTable builtIn;
  builtIn.FromFile(nullptr, nullptr, nullptr);

  const std::u16string utf8 = Path("utf8.lin");
  WriteSections(builtIn, utf8);
  const std::string bytes = ReadBytes("utf8.lin");
  EXPECT_EQ(bytes.rfind("[LineType0]\r\nLineDesc=1,2,0,0,dvostruka crtica\r\n", 0), 0u);
  EXPECT_NE(bytes.find("LineDesc=1,2,1,0,\xC5\xBE" "eleznica"), std::string::npos);

  WriteBytes("utf16.lin", std::string("\xFF\xFE", 2));
  const std::u16string utf16 = Path("utf16.lin");
  WriteSections(builtIn, utf16);
  const std::string wide = ReadBytes("utf16.lin");
  ASSERT_GE(wide.size(), 4u);
  EXPECT_EQ(wide.substr(0, 4), std::string("\xFF\xFE[\0", 4));
  EXPECT_NE(wide.find(std::string("h\0e\0d\0\x7E\x01", 8)), std::string::npos);  // "hedž"

  for (const std::u16string& file : {utf8, utf16}) {
    CLineTypeTable loaded;
    EXPECT_EQ(loaded.FromFile(nullptr, file.c_str(), nullptr), 1);
    EXPECT_EQ(loaded.CheckValid(), 1);
    ExpectSameUserLines(builtIn, loaded);
    EXPECT_EQ(loaded.FindLine(u"postojeći potporni zid"), 1045);
  }
}

}  // namespace
