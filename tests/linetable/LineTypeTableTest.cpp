// Numbering, lookup, editing of the user set and loading of the line type table, and what
// the built-in line types hold and draw.
#include "linetable/LineTypeTable.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "platform/Gdi.h"
#include "platform/RecordingDevice.h"
#include "platform/RecordingMessageSink.h"
#include "platform/StringTable.h"
#include "platform/Utf.h"
#include "platform/WideCrt.h"
#include "suite/AppMessages.h"

namespace {

std::u16string UserDesc(const CLineTypeTable& table, int index) { return table.m_pUserLines[index].GetDesc(); }

CLineType Named(const char16_t* name) {
  CLineType line;
  line.SetDesc(name);
  return line;
}

std::u16string LoadString(UINT id) {
  WCHAR buffer[512];
  LoadStringW(nullptr, id, buffer, 512);
  return buffer;
}

class BuiltInTable : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(m_table.FromFile(nullptr, nullptr, nullptr), 0); }
  CLineTypeTable m_table;
};

TEST(LineTypeTableEmpty, HasNothingToResolveOrEdit) {
  CLineTypeTable table;
  EXPECT_EQ(table.CheckValid(), 0);
  EXPECT_EQ(table.NextUserLineType(15), -1);
  EXPECT_EQ(table.GetLineTypePtr(1026), nullptr);
  // Nothing to resolve to: the line is blank but still a line.
  EXPECT_EQ(table.GetDesc(20), u"--980");
  EXPECT_EQ(table.DeleteLineType(16), -1);
  EXPECT_EQ(table.ShiftLine(16, 1), 0);
  // Any two tables compare equal, deliberately.
  CLineTypeTable loaded;
  loaded.FromFile(nullptr, nullptr, nullptr);
  EXPECT_EQ(loaded == table, 1);
}

// Built-in line types ----------------------------------------------------------------------

struct BuiltIn {
  int number;
  int firstId;
  const char16_t* desc;
  int penWidth, nLine, nSymbol, nText;
};

const BuiltIn kBuiltIns[] = {
    {7, 20500, u"strelica", 0, 1, 1, 0},
    {8, 20503, u"dupla strelica", 0, 1, 2, 0},
    {9, 20507, u"strelica1", 1, 1, 2, 0},
    {10, 20511, u"strelica2", 1, 1, 2, 0},
    {11, 20515, u"dimenzija", 0, 1, 1, 0},
    {12, 20518, u"puna  (standardna)", 1, 1, 0, 0},
    {13, 20520, u"crtica  (standardna)", 1, 1, 0, 0},
    {14, 20522, u"tačka  (standardno)", 1, 1, 0, 0},
    {15, 20524, u"crtica - tačka  (standardno)", 1, 1, 0, 0},
    {1026, 20302, u"dvostruka crtica", 1, 2, 0, 0},
    {1027, 20305, u"velika crtica mala mala", 1, 1, 0, 0},
    {1028, 20307, u"debela crtica", 5, 1, 0, 0},
    {1029, 20309, u"led", 1, 1, 1, 0},
    {1030, 20312, u"trag", 1, 1, 1, 0},
    {1031, 20315, u"linija uzemljenja", 1, 1, 1, 0},
    {1032, 20318, u"linija rova", 1, 1, 1, 0},
    {1033, 20321, u"hedž", 0, 1, 1, 0},
    {1034, 20324, u"trouglovi na liniji", 1, 1, 1, 0},
    {1035, 20327, u"polukrugovi na liniji", 1, 1, 1, 0},
    {1036, 20330, u"tabela vode", 1, 1, 1, 0},
    {1037, 20333, u"ograda", 1, 1, 1, 0},
    {1038, 20336, u"vrh nasipa", 1, 1, 2, 0},
    {1039, 20340, u"predloženi jarak", 1, 1, 1, 0},
    {1040, 20343, u"ekstremno visoka voda", 3, 1, 0, 0},
    {1041, 20345, u"železnica", 1, 2, 1, 0},
    {1042, 20349, u"škarp", 1, 1, 1, 0},
    {1043, 20352, u"talus", 0, 1, 0, 0},
    {1044, 20354, u"predloženi potporni zid", 0, 1, 1, 0},
    {1045, 20357, u"postojeći potporni zid", 0, 1, 2, 0},
    {1046, 20361, u"autoput", 0, 3, 0, 0},
    {1047, 20365, u"strujne i telefonske linije", 0, 2, 1, 0},
    {1048, 20369, u"betonska barijera", 1, 2, 1, 0},
    {1049, 20373, u"linija sa kvadratima", 0, 1, 1, 0},
    {1050, 20376, u"linija sa strelicom na kraju", 0, 1, 1, 0},
    {1051, 20379, u"linija sa srednjom strelicom", 0, 1, 1, 0},
    {1052, 20382, u"Slide", 0, 1, 2, 0},
    {1053, 20386, u"ribanje", 0, 1, 5, 0},
    {1054, 20393, u"Izgrađeni most", 0, 0, 2, 0},
    {1055, 20396, u"Grabilica", 0, 1, 2, 0},
    {1056, 20400, u"Motika Chuck", 0, 1, 2, 0},
    {1057, 20404, u"parangala", 0, 1, 1, 0},
    {1058, 20407, u"highlead", 0, 1, 1, 0},
    {1059, 20410, u"Aerial", 0, 1, 1, 0},
    {1060, 20413, u"Harvestor Forvarder", 0, 1, 1, 0},
    {1061, 20416, u"Granica širine", 0, 1, 1, 0},
    {1062, 20419, u"Napredna regen", 0, 1, 1, 0},
    {1063, 20422, u"Zrelo drvo", 0, 1, 1, 0},
    {1064, 20425, u"Debele duple crtice", 0, 2, 0, 0},
    {1065, 20428, u"Granica bloka", 0, 1, 1, 0},
    {1066, 20431, u"kontura", 0, 1, 0, 1},
    {1067, 20434, u"Strim", 1, 0, 3, 0},
    {1068, 20438, u"talasasta linija", 1, 0, 2, 0},
};

TEST_F(BuiltInTable, ChainsStartWhereTheNumberingSaysAndHoldWhatItSays) {
  ASSERT_EQ(m_table.m_nSystemLines, 9);
  ASSERT_EQ(m_table.m_nUserLines, 43);
  ASSERT_EQ(std::size(kBuiltIns), 52u);
  EXPECT_EQ(m_table.CheckValid(), 1);
  EXPECT_EQ(m_table.m_nDefaultWidth, 2);
  for (const BuiltIn& b : kBuiltIns) {
    SCOPED_TRACE(b.number);
    WCHAR header[64];
    _snwprintf_s(header, 64, _TRUNCATE, u"%d,%d,%d,%d,%s", b.penWidth, b.nLine, b.nSymbol, b.nText, b.desc);
    EXPECT_EQ(LoadString(static_cast<UINT>(b.firstId)), std::u16string(header));
    const CLineType& line =
        b.number < 1026 ? m_table.m_pSystemLines[b.number - 7] : m_table.m_pUserLines[b.number - 1026];
    EXPECT_EQ(std::u16string(line.GetDesc()), b.desc);
  }
  EXPECT_EQ(LoadString(20299), u"43");
  // Loading again replaces both sets rather than adding to them.
  EXPECT_EQ(m_table.FromFile(nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(m_table.m_nUserLines, 43);
  EXPECT_EQ(m_table.m_nSystemLines, 9);
}

// A primitive as text, coordinates to a millionth: "filled polygon 1000,0 976,9 976,-9".
std::string Shape(const RecordedPrimitive& p) {
  std::string out = "line";
  if (p.kind == PrimitiveKind::Polygon) out = p.Filled() ? "filled polygon" : "polygon";
  if (p.kind == PrimitiveKind::Text) out = (p.bkMode == OPAQUE ? "opaque text " : "text ") + vantrel1::ToUtf8(p.text);
  for (std::size_t i = 0; i < p.x.size(); ++i) {
    char point[64];
    // + 0.0 turns a rounded -0 into 0.
    std::snprintf(point, sizeof point, " %g,%g", std::round(p.x[i] * 1e6) / 1e6 + 0.0,
                  std::round(p.y[i] * 1e6) / 1e6 + 0.0);
    out += point;
  }
  return out;
}

std::vector<RecordedPrimitive> Draw(CLineTypeTable& table, int number, std::vector<double> x, std::vector<double> y) {
  CRecordingDevice device;
  COLORREF red = RGB(255, 0, 0);
  CLineType* line = table.CreateLine(number, &red, 0, 0, 0);
  line->Draw(&device, &device, x.data(), y.data(), static_cast<long>(x.size()), nullptr, 0);
  table.DeleteLine(line, 0);
  return device.Primitives();
}

TEST_F(BuiltInTable, EveryOneDrawsAndReleasesWhatItMade) {
  for (const BuiltIn& b : kBuiltIns) {
    const GdiObjectTally before = GdiObjectCounts();
    EXPECT_FALSE(Draw(m_table, b.number, {0, 400, 500, 900}, {0, 0, 100, 100}).empty()) << b.number;
    EXPECT_EQ((GdiObjectCounts() - before).Live(), 0) << b.number;
  }
}

// Drawn along 0,0 - 1000,0; the y axis points to the left of the path.
TEST_F(BuiltInTable, DrawWhatTheirNamesSay) {
  const struct {
    int number;
    std::size_t count;
    std::size_t at;
    const char* shape;
  } cases[] = {
      {7, 2, 1, "filled polygon 1000,0 976,9 976,-9"},  // arrow
      {8, 3, 1, "filled polygon 1000,0 976,9 976,-9"},  // double arrow
      {8, 3, 2, "filled polygon 0,0 24,9 24,-9"},
      {1050, 2, 1, "filled polygon 1000,0 1000,10 1040,0 1000,-10"},  // head beyond the last point
      {1026, 50, 49, "line 960,15 990,15"},  // dashes either side
      {1041, 22, 1, "line 0,6 1000,6"},  // rails and sleepers
      {1041, 22, 2, "line 25,-12 25,12"},
      {1038, 51, 1, "line 0,0 0,20"},  // embankment: long ticks every 40, short ones between
      {1038, 51, 50, "line 980,0 980,10"},
      {1068, 34, 0, "line 0,0 5,5 10,8.7 15,10 20,8.7 25,5 30,0"},  // waves both ways
      {1068, 34, 17, "line 30,0 35,-5 40,-8.7 45,-10 50,-8.7 55,-5 60,0"},
      {1066, 3, 1, "opaque text 100 250,-5"},  // contour with its label
      {1066, 3, 2, "opaque text 100 750,-5"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.number);
    const std::vector<RecordedPrimitive> drawn = Draw(m_table, c.number, {0, 1000}, {0, 0});
    ASSERT_EQ(drawn.size(), c.count);
    EXPECT_EQ(Shape(drawn[c.at]), c.shape);
  }
}

// Numbers and descriptions ---------------------------------------------------------------

TEST_F(BuiltInTable, NumbersUserLineTypesFrom1026AndEnumeratesEveryValidNumber) {
  EXPECT_EQ(CLineTypeTable::IsUserLineType(15), 0);
  EXPECT_NE(CLineTypeTable::IsUserLineType(16), 0);
  for (int number : {7, 16, 1025, 1069}) EXPECT_EQ(m_table.GetLineTypePtr(number), nullptr) << number;
  EXPECT_EQ(m_table.GetLineTypePtr(1026), &m_table.m_pUserLines[0]);
  EXPECT_EQ(m_table.GetLineTypePtr(1068), &m_table.m_pUserLines[42]);

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
  EXPECT_EQ(CLineTypeTable::MakeDesc(20, u"x"), u"x--980");

  const GdiObjectTally before = GdiObjectCounts();
  const std::pair<int, const char16_t*> cases[] = {
      {1026, u"dvostruka crtica-26"},
      {3, u"crtica-tačka-3"},
      {6, u"debeo  (težak)-6"},
      {-1, u"--1"},
      {12, u"puna  (standardna)-12"},
      // Numbers holding no line fall back to the first system or the first user line type.
      {20, u"strelica--980"},
      {5000, u"dvostruka crtica-4000"},
  };
  for (const auto& [number, desc] : cases) EXPECT_EQ(m_table.GetDesc(number), desc) << number;
  EXPECT_EQ((GdiObjectCounts() - before).pens.Live(), 0);
  EXPECT_EQ(m_table.m_nCacheCount, 0);
}

TEST_F(BuiltInTable, FindsLinesByNameIgnoringAsciiCaseLowestNumberFirst) {
  CLineType dash = Named(u"crtica");
  CLineType trail = Named(u"trag");
  ASSERT_EQ(m_table.AddLineType(dash, nullptr), 44);
  ASSERT_EQ(m_table.AddLineType(trail, nullptr), 45);
  const std::pair<const char16_t*, int> cases[] = {
      {u"ČVRST", 0},
      {u"čvrst", -1},  // only the ASCII letters fold, as in the classic locale
      {u"Debeo  (srednji)", 5},
      {u"STRELICA1", 9},
      {u"talasasta linija", 1068},
      {u"crtica", 1},  // the simple line, not the user line type added with its name
      {u"trag", 1030},
      {u"nema je", -1},
      {nullptr, -1},
  };
  for (const auto& [name, number] : cases) EXPECT_EQ(m_table.FindLine(name), number);
}

TEST_F(BuiltInTable, FindsLineNumbersByPlainOrNumberedDescription) {
  const struct {
    const char16_t* desc;
    int numbered, number;
  } cases[] = {
      {u"TRAG-30", 1, 1030}, {u"trag", 0, 1030},         {u"trag-30", 0, -1},
      {u"trag", 1, -1},      {u"tačka-2", 1, 2},         {u"dimenzija-11", 1, 11},
      {u"talasasta linija-68", 1, 1068},
      {u"--1", 1, -1},  // the invisible line is not enumerated
  };
  for (const auto& c : cases) EXPECT_EQ(m_table.GetLineNumber(c.desc, c.numbered), c.number) << c.numbered;
}

// Editing the user set -------------------------------------------------------------------

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
  EXPECT_EQ(m_table.DeleteLineType(17), 41);
  EXPECT_EQ(UserDesc(m_table, 1), u"led");
  // Past the end, 1026 among them, removes the last one.
  EXPECT_EQ(m_table.DeleteLineType(1026), 40);
  EXPECT_EQ(UserDesc(m_table, 39), u"Strim");
  EXPECT_EQ(std::u16string(m_table.m_pUserLines[40].GetDesc()), u"");  // the vacated entry is cleared
  while (m_table.m_nUserLines > 0) m_table.DeleteLineType(16);
  EXPECT_EQ(m_table.DeleteLineType(16), -1);
  EXPECT_EQ(m_table.CheckValid(), 1);
  // Without user line types, their numbers fall back to the first system line type.
  EXPECT_EQ(m_table.GetDesc(1026), u"strelica-26");
}

TEST_F(BuiltInTable, ShiftsUserLineTypesNumberedFromSixteen) {
  EXPECT_EQ(m_table.ShiftLine(16, 1), 1);
  EXPECT_EQ(UserDesc(m_table, 0), u"velika crtica mala mala");
  EXPECT_EQ(UserDesc(m_table, 1), u"dvostruka crtica");
  EXPECT_EQ(m_table.m_pUserLines[1].GetNLine(), 2);
  EXPECT_EQ(m_table.ShiftLine(17, -1), 1);
  EXPECT_EQ(m_table.ShiftLine(16 + 42, -1), 1);
  EXPECT_EQ(UserDesc(m_table, 42), u"Strim");
  // Moves that would leave the array are refused, the last entry moving down among them.
  const std::pair<int, int> refused[] = {{16 + 42, 1}, {15, 1},       {16, -1},       {1026, 1},
                                         {1026, -1},   {16, INT_MAX}, {INT_MAX, -1}};
  for (const auto& [number, direction] : refused)
    EXPECT_EQ(m_table.ShiftLine(number, direction), 0) << number << " " << direction;
  EXPECT_EQ(UserDesc(m_table, 0), u"dvostruka crtica");
  EXPECT_EQ(UserDesc(m_table, 41), u"talasasta linija");
}

TEST_F(BuiltInTable, SetsOnlyPresentUserLineTypes) {
  const CLineType line = Named(u"novi");
  EXPECT_EQ(m_table.SetLineType(&line, 1027), 1);
  EXPECT_EQ(UserDesc(m_table, 1), u"novi");
  EXPECT_EQ(m_table.m_pUserLines[1].GetNLine(), 0);
  EXPECT_EQ(m_table.SetLineType(nullptr, 1027), 0);
  for (int number : {1069, 7, 16}) EXPECT_EQ(m_table.SetLineType(&line, number), 0) << number;
}

}  // namespace
