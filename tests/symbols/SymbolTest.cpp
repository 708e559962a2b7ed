#include <gtest/gtest.h>

#include <string>

#include "SymbolTestSupport.h"
#include "linestyle/DrawTestSupport.h"
#include "platform/Gdi.h"
#include "platform/Utf.h"

using namespace symboltest;

namespace {

std::string Desc(const CSymbol& symbol) { return vantrel1::ToUtf8(symbol.GetDesc()); }

LOGPEN PenOf(const CSymbol& symbol) {
  LOGPEN pen{};
  EXPECT_EQ(GetObjectW(symbol.GetPen(), sizeof pen, &pen), static_cast<int>(sizeof pen));
  return pen;
}

std::vector<int> FirstXs(const CSymbol& symbol) {
  std::vector<int> xs;
  for (int i = 0; i < symbol.SymbolItemsNum(); ++i) xs.push_back(symbol.GetSymbolItem(i)->m_ptPoints[0].x);
  return xs;
}

}  // namespace

TEST(SymbolConstruction, OldStyleNumbersOwnASolidPenAndEveryNumberUpTo19IsNamed) {
  static const char* const kNames[] = {
      "Nijedan", "Kvadrat", "Sim2", "Crosshairs", "BCEC", "IP", "Krst", "Circle", "Trougao",
      "Kvadrat /v Krst", "Krug /v Krst", "krst  (veliki)", "Kvadrat  (veliki)", "Krug  (veliki)",
      "trougao  (veliki)", "Kvadratni/v krst  (veliki)", "Krug /v krst  (veliki)", "Tick",
      "krpelj  (veliki)", "Popunjen krug  (veliki)"};
  for (int n = -1; n <= 20; ++n) {
    SCOPED_TRACE(n);
    CSymbol symbol(n, RGB(255, 0, 0), 2.5);
    EXPECT_EQ(Desc(symbol), n >= 0 && n <= 19 ? kNames[n] : "");
    EXPECT_EQ(symbol.IsOldSymbol(), n >= 1 && n <= 19 ? 1 : 0);
    EXPECT_EQ(symbol.IsComplexSymbol(), 0);
    if (symbol.IsOldSymbol() == 0) {
      EXPECT_EQ(symbol.GetPen(), nullptr);
      continue;
    }
    const LOGPEN pen = PenOf(symbol);
    EXPECT_EQ(pen.lopnStyle, static_cast<UINT>(PS_SOLID));
    EXPECT_EQ(pen.lopnWidth.x, 1);
    EXPECT_EQ(pen.lopnColor, RGB(255, 0, 0));
  }
  const CSymbol none;
  EXPECT_EQ(none.m_bRotatable, 1);
  EXPECT_EQ(none.m_bScalable, 1);
}

TEST(SymbolPen, SetColorReplacesOnlyAnOwnedPenAndEveryOwnedPenIsDeleted) {
  drawtest::TallyScope tally;
  const HPEN borrowed = CreatePen(PS_SOLID, 3, RGB(5, 5, 5));
  {
    CSymbol circle(7, RGB(0, 0, 255), 1.0);
    const HPEN first = circle.GetPen();
    circle.SetColor(RGB(0, 255, 0));
    EXPECT_EQ(GetObjectType(first), 0u) << "the pen of the old colour is deleted";
    EXPECT_EQ(PenOf(circle).lopnColor, RGB(0, 255, 0));

    // Becoming old-style after construction: SetColor makes the pen.
    CSymbol composite(0, 0, 1.0);
    composite.m_nIndex = 3;
    composite.SetColor(RGB(1, 1, 1));
    EXPECT_EQ(PenOf(composite).lopnColor, RGB(1, 1, 1));

    CSymbol source(0, 0, 1.0);
    source.m_hPen = borrowed;
    CSymbol copy(source);
    copy.SetColor(RGB(1, 2, 3));
    EXPECT_EQ(copy.GetPen(), borrowed);
  }
  EXPECT_EQ(GetObjectType(borrowed), static_cast<DWORD>(OBJ_PEN)) << "a borrowed pen is never deleted";
  DeleteObject(borrowed);
  EXPECT_EQ(tally.Delta().pens.Live(), 0);
  EXPECT_EQ(tally.Delta().refusedDeletes, 0);
}

TEST(SymbolCopy, AssignmentCopiesEverythingWithAPenAndItemsOfItsOwn) {
  LOGFONTW font{};
  font.lfHeight = 40;
  CSymbol source(9, RGB(10, 20, 30), 3.0);
  source.m_nPenWidth = 4;
  source.SetColor(RGB(10, 20, 30));  // a pen of the new width
  source.SetFont(&font);
  source.SetDesc(u"kapela");
  const CSymbolItem figure = Figure({{1, 2, 0}, {3, 4}});
  const CTextItem text = Text("K", 7.5, -3, 2.0);
  source.AddSymbolItem(&figure);
  source.AddTextItem(&text);
  source.m_bRotatable = 0;
  source.m_bScalable = 0;

  CSymbol copy(5, 0, 1.0);
  copy = source;
  EXPECT_NE(copy.GetPen(), source.GetPen());
  EXPECT_EQ(PenOf(copy).lopnWidth.x, 4);
  EXPECT_EQ(ToXml(copy), ToXml(source));
  copy.GetSymbolItem(0)->m_ptPoints[0].x = 99;
  EXPECT_EQ(source.GetSymbolItem(0)->m_ptPoints[0].x, 1);

  CSymbol& same = copy;
  copy = same;
  EXPECT_EQ(copy.SymbolItemsNum(), 1);
  EXPECT_EQ(Desc(copy), "kapela");
}

TEST(SymbolItems, AddGrowsByOneEvenFromAnItemOfTheSameSymbol) {
  CSymbol symbol = Composite({Figure({{1, 1}})});
  EXPECT_EQ(symbol.AddSymbolItem(nullptr), 0);
  EXPECT_EQ(symbol.AddTextItem(nullptr), 0);
  // The array is regrown while the added item still lives in the old one.
  for (int i = 0; i < 5; ++i) ASSERT_EQ(symbol.AddSymbolItem(symbol.GetSymbolItem(i)), 1);
  EXPECT_EQ(FirstXs(symbol), std::vector<int>(6, 1));
  EXPECT_EQ(symbol.GetSymbolItem(6), nullptr);
  EXPECT_EQ(symbol.GetSymbolItem(-1), nullptr);
}

TEST(SymbolItems, DeleteShiftsLaterItemsDownAndTakesTheLastForAnIndexBeyondIt) {
  struct Case {
    int index;
    int result;
    std::vector<int> left;
  };
  const Case cases[] = {{0, 2, {20, 30}}, {1, 2, {10, 30}}, {10, 2, {10, 20}}, {-1, -2, {10, 20, 30}}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.index);
    CSymbol symbol = Composite({Figure({{10, 0}}), Figure({{20, 0}}), Figure({{30, 0}})},
                               {Text("a", 10, 0), Text("b", 20, 0), Text("c", 30, 0)});
    EXPECT_EQ(symbol.DeleteSymbolItem(c.index), c.result);
    EXPECT_EQ(symbol.DeleteTextItem(c.index), c.result);
    std::vector<int> texts;
    for (int i = 0; i < symbol.TextItemsNum(); ++i) texts.push_back(static_cast<int>(symbol.GetTextItem(i)->m_dStart));
    EXPECT_EQ(FirstXs(symbol), c.left);
    EXPECT_EQ(texts, c.left);
  }
}

TEST(SymbolItems, EmptiedItemByItemStaysComplexAndCountsNeverReachBeyondTheArrays) {
  CSymbol symbol = Composite({Figure({{-5, 8}}), Figure({{4, -2}})}, {Text("a", 3, 3)});
  symbol.m_nSymbol = 1000;
  symbol.m_nText = 50;
  EXPECT_EQ(symbol.GetSymbolItem(2), nullptr);
  EXPECT_EQ(CSymbol(symbol).SymbolItemsNum(), 2);
  EXPECT_EQ(symbol.DeleteSymbolItem(7), 1);
  EXPECT_EQ(symbol.DeleteSymbolItem(0), 0);
  EXPECT_EQ(symbol.DeleteSymbolItem(0), -1);
  EXPECT_EQ(symbol.DeleteTextItem(5), 0);
  EXPECT_EQ(symbol.DeleteTextItem(-3), -1) << "an empty list is reported before a bad index";
  EXPECT_EQ(symbol.IsComplexSymbol(), 1);
  symbol.Delete();
  EXPECT_EQ(symbol.IsComplexSymbol(), 0);
  EXPECT_EQ(symbol.CheckValid(), 0) << "Delete leaves a blank symbol";
}

TEST(SymbolDescription, SetDescRefusesWhatCouldNotBeKeptAndSetFontNullOnlyClearsTheFlag) {
  CSymbol symbol(0, 0, 1.0);
  EXPECT_EQ(symbol.SetDesc(u"močvara"), 1);
  EXPECT_EQ(symbol.SetDesc(static_cast<const WCHAR*>(nullptr)), 0);
  EXPECT_EQ(symbol.SetDesc(CStdStrW(std::u16string(u"a\0b", 3))), 0);
  EXPECT_EQ(Desc(symbol), "močvara");

  LOGFONTW font{};
  font.lfWeight = 700;
  symbol.SetFont(&font);
  symbol.SetFont(nullptr);
  EXPECT_EQ(symbol.GetFont(), nullptr);
  EXPECT_EQ(symbol.m_lf.lfWeight, 700);
}
