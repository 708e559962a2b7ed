#include <gtest/gtest.h>

#include <memory>
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

}  // namespace

TEST(SymbolConstruction, OldStyleNumbersOwnASolidPenAndTakeTheirNames) {
  static const char* const kNames[] = {
      "Nijedan", "Kvadrat", "Sim2", "Crosshairs", "BCEC", "IP", "Krst", "Circle", "Trougao",
      "Kvadrat /v Krst", "Krug /v Krst", "krst  (veliki)", "Kvadrat  (veliki)", "Krug  (veliki)",
      "trougao  (veliki)", "Kvadratni/v krst  (veliki)", "Krug /v krst  (veliki)", "Tick",
      "krpelj  (veliki)", "Popunjen krug  (veliki)"};
  const COLORREF red = RGB(255, 0, 0);
  for (int n = 0; n <= 19; ++n) {
    SCOPED_TRACE(n);
    CSymbol symbol(n, red, 2.5);
    EXPECT_EQ(Desc(symbol), kNames[n]);
    EXPECT_EQ(symbol.IsOldSymbol(), n == 0 ? 0 : 1);
    EXPECT_EQ(symbol.GetIndex(), n);
    EXPECT_EQ(symbol.GetScale(), 2.5);
    EXPECT_EQ(symbol.IsComplexSymbol(), 0);
    if (n == 0) {
      EXPECT_EQ(symbol.GetPen(), nullptr);
      EXPECT_EQ(symbol.m_bDeletePen, 0);
      continue;
    }
    EXPECT_EQ(symbol.m_bDeletePen, 1);
    const LOGPEN pen = PenOf(symbol);
    EXPECT_EQ(pen.lopnStyle, static_cast<UINT>(PS_SOLID));
    EXPECT_EQ(pen.lopnWidth.x, 1);
    EXPECT_EQ(pen.lopnColor, red);
  }
}

TEST(SymbolConstruction, NumbersOutsideTheOldStyleRangeHaveNoPenAndNoName) {
  for (int n : {20, 1024, -1, -2147483647 - 1}) {
    SCOPED_TRACE(n);
    CSymbol symbol(n, RGB(1, 2, 3), 1.0);
    EXPECT_EQ(symbol.GetPen(), nullptr);
    EXPECT_EQ(symbol.IsOldSymbol(), 0);
    EXPECT_EQ(Desc(symbol), "");
    EXPECT_EQ(symbol.CheckValid(), 0);
  }
}

TEST(SymbolConstruction, CreatedByClassNameAsTheNoneSymbolWithDefaultFlags) {
  std::unique_ptr<CObject> object(CRuntimeClass::CreateObject("CSymbol"));
  ASSERT_NE(object, nullptr);
  ASSERT_TRUE(object->IsKindOf(RUNTIME_CLASS(CSymbol)));
  const auto& symbol = static_cast<const CSymbol&>(*object);
  EXPECT_EQ(Desc(symbol), "Nijedan");
  EXPECT_EQ(symbol.GetIndex(), 0);
  EXPECT_EQ(symbol.GetColor(), 0u);
  EXPECT_EQ(symbol.GetScale(), 1.0);
  EXPECT_EQ(symbol.m_nPenWidth, 1);
  EXPECT_EQ(symbol.m_bRotatable, 1);
  EXPECT_EQ(symbol.m_bScalable, 1);
  EXPECT_EQ(symbol.GetFont(), nullptr);
  EXPECT_EQ(symbol.CheckValid(), 1);
}

TEST(SymbolPen, SetColorReplacesAnOwnedPenAndEveryPenIsDeletedInTheEnd) {
  drawtest::TallyScope tally;
  {
    CSymbol circle(7, RGB(0, 0, 255), 1.0);
    const HPEN first = circle.GetPen();
    circle.SetColor(RGB(0, 255, 0));
    EXPECT_EQ(GetObjectType(first), 0u) << "the pen of the old colour is deleted";
    EXPECT_EQ(PenOf(circle).lopnColor, RGB(0, 255, 0));
    EXPECT_EQ(circle.GetColor(), RGB(0, 255, 0));

    // A composite symbol has no pen to replace.
    CSymbol composite(0, 0, 1.0);
    composite.SetColor(RGB(9, 9, 9));
    EXPECT_EQ(composite.GetPen(), nullptr);
    EXPECT_EQ(composite.m_bDeletePen, 0);

    // Becoming old-style after construction: SetColor makes the pen.
    composite.m_nIndex = 3;
    composite.SetColor(RGB(1, 1, 1));
    EXPECT_EQ(composite.m_bDeletePen, 1);
    EXPECT_EQ(PenOf(composite).lopnColor, RGB(1, 1, 1));
  }
  EXPECT_EQ(tally.Delta().pens.Live(), 0);
  EXPECT_EQ(tally.Delta().refusedDeletes, 0);
}

TEST(SymbolPen, ABorrowedPenIsPassedOnAndNeverDeleted) {
  const HPEN borrowed = CreatePen(PS_SOLID, 3, RGB(5, 5, 5));
  {
    CSymbol source(0, 0, 1.0);
    source.m_hPen = borrowed;
    CSymbol copy(source);
    EXPECT_EQ(copy.GetPen(), borrowed);
    EXPECT_EQ(copy.m_bDeletePen, 0);
    copy.SetColor(RGB(1, 2, 3));
    EXPECT_EQ(copy.GetPen(), borrowed);
  }
  EXPECT_EQ(GetObjectType(borrowed), static_cast<DWORD>(OBJ_PEN));
  DeleteObject(borrowed);
}

TEST(SymbolCopy, AssignmentCopiesEverythingWithAPenOfItsOwn) {
  LOGFONTW font{};
  font.lfHeight = 40;
  font.lfFaceName[0] = u'Q';
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
  EXPECT_EQ(copy.m_bDeletePen, 1);
  EXPECT_EQ(PenOf(copy).lopnWidth.x, 4);
  EXPECT_EQ(PenOf(copy).lopnColor, RGB(10, 20, 30));
  EXPECT_EQ(copy.GetIndex(), 9);
  EXPECT_EQ(copy.GetScale(), 3.0);
  EXPECT_EQ(Desc(copy), "kapela");
  ASSERT_NE(copy.GetFont(), nullptr);
  EXPECT_EQ(copy.GetFont()->lfHeight, 40);
  ASSERT_EQ(copy.SymbolItemsNum(), 1);
  EXPECT_EQ(Vertices(*copy.GetSymbolItem(0)), Vertices(figure));
  EXPECT_EQ(copy.GetSymbolItem(0)->m_bPenDown[0], 0);
  ASSERT_EQ(copy.TextItemsNum(), 1);
  EXPECT_EQ(copy.GetTextItem(0)->m_dStart, 7.5);
  EXPECT_EQ(std::u16string(copy.GetTextItem(0)->m_szText), u"K");
  EXPECT_EQ(copy.m_bRotatable, 0);
  EXPECT_EQ(copy.m_bScalable, 0);

  // The copy's items are its own.
  copy.GetSymbolItem(0)->m_ptPoints[0].x = 99;
  EXPECT_EQ(source.GetSymbolItem(0)->m_ptPoints[0].x, 1);

  // Assigning a symbol to itself keeps it whole.
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
  EXPECT_EQ(symbol.SymbolItemsNum(), 6);
  EXPECT_EQ(Vertices(*symbol.GetSymbolItem(5)), (std::vector<std::pair<int, int>>{{1, 1}}));

  const CTextItem text = Text("a", 0, 0);
  ASSERT_EQ(symbol.AddTextItem(&text), 1);
  ASSERT_EQ(symbol.AddTextItem(symbol.GetTextItem(0)), 1);
  EXPECT_EQ(symbol.TextItemsNum(), 2);
  EXPECT_EQ(symbol.GetTextItem(2), nullptr);
  EXPECT_EQ(symbol.GetTextItem(-1), nullptr);
  EXPECT_EQ(symbol.GetSymbolItem(6), nullptr);
}

TEST(SymbolItems, DeleteShiftsLaterItemsDownAndTakesTheLastForAnIndexBeyondIt) {
  struct Case {
    int index;
    int result;
    std::vector<int> left;  // first x of the items that remain
  };
  const Case cases[] = {
      {0, 2, {20, 30}}, {1, 2, {10, 30}}, {2, 2, {10, 20}}, {10, 2, {10, 20}}, {-1, -2, {10, 20, 30}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.index);
    CSymbol symbol = Composite({Figure({{10, 0}}), Figure({{20, 0}}), Figure({{30, 0}})},
                               {Text("a", 10, 0), Text("b", 20, 0), Text("c", 30, 0)});
    EXPECT_EQ(symbol.DeleteSymbolItem(c.index), c.result);
    EXPECT_EQ(symbol.DeleteTextItem(c.index), c.result);
    std::vector<int> items, texts;
    for (int i = 0; i < symbol.SymbolItemsNum(); ++i) items.push_back(symbol.GetSymbolItem(i)->m_ptPoints[0].x);
    for (int i = 0; i < symbol.TextItemsNum(); ++i) texts.push_back(static_cast<int>(symbol.GetTextItem(i)->m_dStart));
    EXPECT_EQ(items, c.left);
    EXPECT_EQ(texts, c.left);
  }
}

TEST(SymbolItems, ASymbolEmptiedItemByItemStaysComplexUntilDeleted) {
  CSymbol symbol = Composite({Figure({{-5, 8}}), Figure({{4, -2}})}, {Text("a", 3, 3)});
  EXPECT_EQ(symbol.DeleteSymbolItem(0), 1);
  EXPECT_EQ(symbol.DeleteSymbolItem(0), 0);
  EXPECT_EQ(symbol.DeleteSymbolItem(0), -1);
  EXPECT_EQ(symbol.DeleteTextItem(5), 0);
  EXPECT_EQ(symbol.DeleteTextItem(-3), -1) << "an empty list is reported before a bad index";
  EXPECT_EQ(symbol.IsComplexSymbol(), 1);
  EXPECT_EQ(symbol.GetSymbolItem(0), nullptr);

  double x0 = 0, x1 = 0, y0 = 0, y1 = 0;
  symbol.GetExtents(&x0, &x1, &y0, &y1);
  EXPECT_EQ(x0, 99999.0);
  EXPECT_EQ(x1, -99999.0);
  EXPECT_EQ(y0, 99999.0);
  EXPECT_EQ(y1, -99999.0);

  symbol.Delete();
  EXPECT_EQ(symbol.IsComplexSymbol(), 0);
  EXPECT_EQ(Desc(symbol), "") << "Delete leaves a blank symbol";
  EXPECT_EQ(symbol.CheckValid(), 0);
}

TEST(SymbolItems, CountsSetBeyondTheArraysReachNoFurtherThanTheItemsThatExist) {
  CSymbol symbol = Composite({Figure({{1, 1}}), Figure({{2, 2}})}, {Text("a", 0, 0)});
  symbol.m_nSymbol = 1000;
  symbol.m_nText = 50;
  EXPECT_EQ(symbol.GetSymbolItem(2), nullptr);
  EXPECT_EQ(symbol.GetTextItem(1), nullptr);
  double x1 = 0;
  symbol.GetExtents(nullptr, &x1, nullptr, nullptr);
  EXPECT_EQ(x1, 2.0);
  CSymbol copy(symbol);
  EXPECT_EQ(copy.SymbolItemsNum(), 2);
  EXPECT_EQ(copy.TextItemsNum(), 1);
  EXPECT_EQ(symbol.DeleteSymbolItem(7), 1);
}

TEST(SymbolDescription, SetDescRefusesWhatCouldNotBeKeptAndSetFontNullOnlyClearsTheFlag) {
  CSymbol symbol(0, 0, 1.0);
  EXPECT_EQ(symbol.SetDesc(u"močvara"), 1);
  EXPECT_EQ(Desc(symbol), "močvara");
  EXPECT_EQ(symbol.SetDesc(static_cast<const WCHAR*>(nullptr)), 0);
  EXPECT_EQ(symbol.SetDesc(CStdStrW(std::u16string(u"a\0b", 3))), 0);
  EXPECT_EQ(Desc(symbol), "močvara");
  EXPECT_EQ(symbol.SetDesc(CStdStrW()), 1);
  EXPECT_EQ(symbol.CheckValid(), 0);

  LOGFONTW font{};
  font.lfWeight = 700;
  symbol.SetFont(&font);
  ASSERT_NE(symbol.GetFont(), nullptr);
  EXPECT_EQ(symbol.GetFont()->lfWeight, 700);
  symbol.SetFont(nullptr);
  EXPECT_EQ(symbol.GetFont(), nullptr);
  EXPECT_EQ(symbol.m_lf.lfWeight, 700);
}
