#include <gtest/gtest.h>

#include <string>

#include "SymbolTestSupport.h"
#include "linestyle/DrawTestSupport.h"
#include "platform/Gdi.h"
#include "suite/OldStyleSymbol.h"

using namespace symboltest;
using namespace drawtest;

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

// A stroke from the symbol's point to 10 units along the symbol's x axis.
CSymbolItem Tick() { return Figure({{100, 0}}); }

CTextItem Label(const char* text) { return Text(text, 0.0, 0, 2.0); }

std::string Drawn(CSymbol& symbol, double x, double y, double angle, RECT* clip = nullptr) {
  CRecordingDevice dc;
  symbol.Draw(&dc, &dc, x, y, clip, angle);
  return dc.ToString();
}

}  // namespace

TEST(SymbolDraw, FiguresAreDrawnAtThePointInTheSymbolsColourScaleAndAngle) {
  CSymbol symbol = Composite({Tick()});
  symbol.SetColor(kRed);
  symbol.SetScale(2.0);
  struct Case {
    double angle, endX, endY;
  };
  const Case cases[] = {{0.0, 30, 20}, {kPi / 2, 10, 40}, {kPi, -10, 20}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.angle);
    CRecordingDevice dc;
    symbol.Draw(&dc, &dc, 10, 20, nullptr, c.angle);
    const auto lines = Lines(dc);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].x[0], 10);
    EXPECT_EQ(lines[0].y[0], 20);
    EXPECT_NEAR(lines[0].x[1], c.endX, 1e-5);
    EXPECT_NEAR(lines[0].y[1], c.endY, 1e-5);
    EXPECT_EQ(dc.Primitives()[0].pen.lopnColor, kRed);
  }
}

TEST(SymbolDraw, ASymbolThatIsNotRotatableIgnoresTheAngle) {
  CSymbol symbol = Composite({Tick()}, {Label("N")});
  symbol.m_bRotatable = 0;
  const std::string upright = Drawn(symbol, 100, 100, 0.0);
  EXPECT_EQ(Drawn(symbol, 100, 100, 1.0), upright);
  symbol.m_bRotatable = 1;
  EXPECT_NE(Drawn(symbol, 100, 100, 1.0), upright);
}

TEST(SymbolDraw, TextsTakeTheSymbolsColourAndFontAndTheContextsColourIsRestored) {
  LOGFONTW font{};
  font.lfHeight = 10;
  std::u16string face = u"Arial";
  face.copy(font.lfFaceName, face.size());
  CSymbol symbol = Composite({}, {Label("R"), Label("W")});
  symbol.SetColor(kBlue);
  symbol.SetFont(&font);
  symbol.SetScale(1.5);

  CRecordingDevice dc;
  SetTextColor(&dc, kRed);
  symbol.Draw(&dc, &dc, 50, 60, nullptr, 0.0);
  EXPECT_EQ(GetTextColor(&dc), kRed);
  const auto& drawn = dc.Primitives();
  ASSERT_EQ(drawn.size(), 2u) << dc.ToString();
  for (const RecordedPrimitive& text : drawn) {
    EXPECT_EQ(text.kind, PrimitiveKind::Text);
    EXPECT_EQ(text.textColor, kBlue);
    EXPECT_EQ(std::u16string(text.font.lfFaceName), face);
    EXPECT_EQ(text.font.lfHeight, 30) << "font height × text height × symbol scale";
  }
  EXPECT_EQ(drawn[0].text, u"R");
  EXPECT_EQ(drawn[1].text, u"W");
}

TEST(SymbolDraw, OldStyleShapesAreDrawnWithTheSymbolsPenAfterItsFigures) {
  CSymbol circle(7, kBlue, 3.0);
  CRecordingDevice expected;
  DrawSymbol(&expected, 5, 6, 7, circle.GetPen(), 3.0, nullptr, 0.5, &circle.m_crColor);
  ASSERT_GT(expected.PrimitiveCount(), 0u);
  EXPECT_EQ(Drawn(circle, 5, 6, 0.5), expected.ToString());

  // A symbol may have both: its figures come first.
  CSymbol both(6, kRed, 1.0);
  const CSymbolItem tick = Tick();
  both.AddSymbolItem(&tick);
  CRecordingDevice dc;
  both.Draw(&dc, &dc, 0, 0, nullptr, 0.0);
  ASSERT_GE(dc.Primitives().size(), 2u);
  EXPECT_EQ(dc.Primitives()[0].pen.lopnWidth.x, 0) << "the figure's own pen";
  EXPECT_EQ(dc.Primitives()[1].pen.lopnWidth.x, 1) << "the old-style pen";
}

TEST(SymbolDraw, NothingOutsideTheClipRectangleNorWithoutADeviceAndNoObjectLeftBehind) {
  TallyScope tally;
  CSymbol symbol = Composite({Tick(), Figure({{0, 0, 0}, {10, 10}})}, {Label("X")});
  symbol.SetColor(kRed);
  CSymbol filled(19, kBlue, 2.0);
  RECT far{1000, 2000, 2000, 1000};
  EXPECT_EQ(Drawn(symbol, 0, 0, 0.0, &far), "");
  EXPECT_EQ(Drawn(filled, 0, 0, 0.0, &far), "");
  EXPECT_NE(Drawn(filled, 1500, 1500, 0.0, &far), "");
  symbol.Draw(nullptr, nullptr, 0, 0, nullptr, 0.0);
  filled.Draw(nullptr, nullptr, 0, 0, nullptr, 0.0);
  const GdiObjectTally delta = tally.Delta();
  EXPECT_EQ(delta.pens.Live(), 1) << "only the old-style symbol's own pen";
  EXPECT_EQ(delta.brushes.Live(), 0);
  EXPECT_EQ(delta.fonts.Live(), 0);
  EXPECT_EQ(delta.refusedDeletes, 0);
}
