// The built-in line types: where their chains lie in the string table, what they hold,
// and that they draw what their names say.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

#include "linetable/LineTypeTable.h"
#include "platform/Gdi.h"
#include "platform/RecordingDevice.h"
#include "platform/StringTable.h"
#include "platform/WideCrt.h"

namespace {

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

std::u16string LoadString(UINT id) {
  WCHAR buffer[512];
  LoadStringW(nullptr, id, buffer, 512);
  return buffer;
}

class BuiltInLineTypes : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    s_table = new CLineTypeTable;
    s_table->FromFile(nullptr, nullptr, nullptr);
  }
  static void TearDownTestSuite() {
    delete s_table;
    s_table = nullptr;
  }

  // Draws `number` in red along `x`, `y` and gives the line back.
  static std::vector<RecordedPrimitive> Draw(int number, std::vector<double> x, std::vector<double> y) {
    CRecordingDevice device;
    COLORREF red = RGB(255, 0, 0);
    CLineType* line = s_table->CreateLine(number, &red, 0, 0, 0);
    line->Draw(&device, &device, x.data(), y.data(), static_cast<long>(x.size()), nullptr, 0);
    s_table->DeleteLine(line, 0);
    return device.Primitives();
  }
  static std::vector<RecordedPrimitive> DrawStraight(int number) { return Draw(number, {0, 1000}, {0, 0}); }

  static CLineTypeTable* s_table;
};

CLineTypeTable* BuiltInLineTypes::s_table = nullptr;

double MinOf(const std::vector<double>& v) { return *std::min_element(v.begin(), v.end()); }
double MaxOf(const std::vector<double>& v) { return *std::max_element(v.begin(), v.end()); }

std::vector<RecordedPrimitive> OfKind(const std::vector<RecordedPrimitive>& all, PrimitiveKind kind) {
  std::vector<RecordedPrimitive> out;
  std::copy_if(all.begin(), all.end(), std::back_inserter(out), [&](const auto& p) { return p.kind == kind; });
  return out;
}

TEST_F(BuiltInLineTypes, ChainsStartWhereTheNumberingSaysAndHoldWhatItSays) {
  ASSERT_EQ(std::size(kBuiltIns), 52u);
  for (const BuiltIn& b : kBuiltIns) {
    WCHAR header[64];
    _snwprintf_s(header, 64, _TRUNCATE, u"%d,%d,%d,%d,%s", b.penWidth, b.nLine, b.nSymbol, b.nText, b.desc);
    EXPECT_EQ(LoadString(static_cast<UINT>(b.firstId)), std::u16string(header)) << b.number;
    const CLineType& line =
        b.number < 1026 ? s_table->m_pSystemLines[b.number - 7] : s_table->m_pUserLines[b.number - 1026];
    EXPECT_EQ(std::u16string(line.GetDesc()), b.desc);
    EXPECT_EQ(line.GetPenWidth(), b.penWidth) << b.number;
    EXPECT_EQ(line.GetNLine(), b.nLine) << b.number;
    EXPECT_EQ(line.GetNSymbol(), b.nSymbol) << b.number;
    EXPECT_EQ(line.GetNText(), b.nText) << b.number;
  }
  EXPECT_EQ(LoadString(20299), u"43");
  for (UINT unused : {20300u, 20301u, 20441u, 20526u}) EXPECT_EQ(LoadString(unused), u"") << unused;
  EXPECT_EQ(LoadString(20303), u"-1,150,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0");
  EXPECT_EQ(LoadString(20107), u"debeo  (srednji)");
}

TEST_F(BuiltInLineTypes, EveryOneDrawsAndReleasesWhatItMade) {
  for (const BuiltIn& b : kBuiltIns) {
    const GdiObjectTally before = GdiObjectCounts();
    const std::vector<RecordedPrimitive> drawn = Draw(b.number, {0, 400, 500, 900}, {0, 0, 100, 100});
    EXPECT_FALSE(drawn.empty()) << b.number;
    EXPECT_EQ((GdiObjectCounts() - before).Live(), 0) << b.number;
  }
}

TEST_F(BuiltInLineTypes, ArrowsPointForwardOutOfTheirEnds) {
  const auto arrow = OfKind(DrawStraight(7), PrimitiveKind::Polygon);
  ASSERT_EQ(arrow.size(), 1u);
  EXPECT_NEAR(MaxOf(arrow[0].x), 1000.0, 1e-6);
  EXPECT_LT(MinOf(arrow[0].x), 990.0);
  EXPECT_TRUE(arrow[0].Filled());

  const auto both = OfKind(DrawStraight(8), PrimitiveKind::Polygon);
  ASSERT_EQ(both.size(), 2u);
  EXPECT_NEAR(MaxOf(both[0].x), 1000.0, 1e-6);
  EXPECT_NEAR(MinOf(both[1].x), 0.0, 1e-6);
  EXPECT_GT(MaxOf(both[1].x), 10.0);

  // The line with an arrow at its end: the head lies beyond the last point.
  const auto head = OfKind(DrawStraight(1050), PrimitiveKind::Polygon);
  ASSERT_EQ(head.size(), 1u);
  EXPECT_NEAR(MaxOf(head[0].x), 1040.0, 1e-6);
  EXPECT_NEAR(MinOf(head[0].x), 1000.0, 1e-6);
}

TEST_F(BuiltInLineTypes, EmbankmentHachuresStandOnTheLeftLongAndShort) {
  std::vector<double> tips;
  for (const RecordedPrimitive& p : OfKind(DrawStraight(1038), PrimitiveKind::Polyline)) {
    if (MaxOf(p.y) == 0.0) continue;  // the line itself
    EXPECT_GT(MinOf(p.y), -1e-9);
    tips.push_back(MaxOf(p.y));
  }
  // Every 4 units a long tick of 2, half-way between them a short one of 1.
  const auto near = [&](double length) {
    return std::count_if(tips.begin(), tips.end(), [&](double t) { return std::abs(t - length) < 1e-6; });
  };
  EXPECT_GE(near(20.0), 25);
  EXPECT_EQ(near(10.0), 25);
  EXPECT_EQ(near(20.0) + near(10.0), static_cast<long>(tips.size()));
}

TEST_F(BuiltInLineTypes, DoubleLinesLieEitherSideOfThePath) {
  std::vector<double> sides;
  for (const RecordedPrimitive& p : OfKind(DrawStraight(1026), PrimitiveKind::Polyline)) sides.push_back(p.y[0]);
  ASSERT_FALSE(sides.empty());
  EXPECT_NEAR(MinOf(sides), -15.0, 1e-6);
  EXPECT_NEAR(MaxOf(sides), 15.0, 1e-6);

  std::vector<double> rails;
  for (const RecordedPrimitive& p : OfKind(DrawStraight(1041), PrimitiveKind::Polyline))
    if (p.y[0] == p.y.back()) rails.push_back(p.y[0]);
  EXPECT_NE(std::find_if(rails.begin(), rails.end(), [](double v) { return std::abs(v - 6.0) < 1e-6; }), rails.end());
  EXPECT_NE(std::find_if(rails.begin(), rails.end(), [](double v) { return std::abs(v + 6.0) < 1e-6; }), rails.end());
}

TEST_F(BuiltInLineTypes, WavesSwingBothWaysAndContoursCarryTheirLabel) {
  const auto wave = OfKind(DrawStraight(1068), PrimitiveKind::Polyline);
  ASSERT_GE(wave.size(), 30u);
  double top = 0;
  double bottom = 0;
  for (const RecordedPrimitive& p : wave) {
    top = std::max(top, MaxOf(p.y));
    bottom = std::min(bottom, MinOf(p.y));
  }
  EXPECT_NEAR(top, 10.0, 1e-6);
  EXPECT_NEAR(bottom, -10.0, 1e-6);

  const auto labels = OfKind(DrawStraight(1066), PrimitiveKind::Text);
  ASSERT_EQ(labels.size(), 2u);  // at 250 and 750 units
  EXPECT_EQ(labels[0].text, u"100");
  EXPECT_EQ(labels[0].bkMode, OPAQUE);
}

}  // namespace
