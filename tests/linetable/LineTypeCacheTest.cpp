// Drawable lines, their pens and the reference-counted cache.
#include <gtest/gtest.h>

#include <vector>

#include "linetable/LineTypeTable.h"
#include "platform/Gdi.h"

// The cache operations that only the table itself calls.
struct LineTypeTableInternals {
  static int DeleteCacheLine(CLineTypeTable& table, int slot, int force) { return table.DeleteCacheLine(slot, force); }
  static void DeleteUnusedCacheLines(CLineTypeTable& table) { table.DeleteUnusedCacheLines(); }
  static int IsCached(CLineTypeTable& table, CLineType* line) { return table.IsCached(line); }
};

namespace {

using Internals = LineTypeTableInternals;

LOGPEN PenOf(const CLineType* line) {
  LOGPEN pen{};
  EXPECT_EQ(GetObjectW(line->GetPen(), sizeof pen, &pen), static_cast<int>(sizeof pen));
  return pen;
}

std::int64_t LivePens() { return GdiObjectCounts().pens.Live(); }

class LineCache : public ::testing::Test {
 protected:
  void SetUp() override {
    m_pens = LivePens();
    m_table = new CLineTypeTable;
    m_table->FromFile(nullptr, nullptr, nullptr);
  }
  void TearDown() override {
    delete m_table;
    EXPECT_EQ(LivePens(), m_pens) << "a pen outlived its table";
  }
  CLineTypeTable& T() { return *m_table; }

  // `count` cached lines of user line type 1026 in colours 1 … count, all still held.
  std::vector<CLineType*> FillWithHeldLines(int count) {
    std::vector<CLineType*> lines;
    for (COLORREF c = 1; c <= static_cast<COLORREF>(count); ++c) lines.push_back(T().CreateLine(1026, &c, 0, 1, 0));
    return lines;
  }

  std::int64_t m_pens = 0;
  CLineTypeTable* m_table = nullptr;
};

TEST_F(LineCache, UncolouredLinesAreNeverCachedAndAreDeletedOnReturn) {
  CLineType* a = T().CreateLine(3, nullptr, 0, 1, 0);
  CLineType* b = T().CreateLine(3, nullptr, 0, 1, 0);
  ASSERT_NE(a, nullptr);
  EXPECT_NE(a, b);
  EXPECT_EQ(std::u16string(a->GetDesc()), u"crtica-tačka");
  EXPECT_EQ(PenOf(a).lopnStyle, static_cast<UINT>(PS_DASHDOT));
  EXPECT_EQ(PenOf(a).lopnColor, 0u);
  // A line type without a colour is a copy without a pen.
  CLineType* bare = T().CreateLine(1041, nullptr, 0, 1, 2);
  EXPECT_EQ(bare->GetPen(), nullptr);
  EXPECT_EQ(bare->GetNLine(), 2);
  EXPECT_EQ(bare->m_nTextMode, 2);
  EXPECT_EQ(T().m_nCacheCount, 0);
  EXPECT_EQ(LivePens(), m_pens + 2);
  for (CLineType* line : {a, b, bare}) T().DeleteLine(line, 1);
  EXPECT_EQ(LivePens(), m_pens);
}

TEST_F(LineCache, SharesOneColouredLineAmongItsHolders) {
  COLORREF red = RGB(255, 0, 0);
  CLineType* first = T().CreateLine(1026, &red, 0, 1, 0);
  CLineType* second = T().CreateLine(1026, &red, 0, 1, 0);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first, second);
  EXPECT_EQ(T().m_nCacheCount, 1);
  EXPECT_EQ(T().m_nCacheRef[0], 2);
  EXPECT_EQ(LivePens(), m_pens + 1);
  EXPECT_EQ(first->GetColor(), red);
  EXPECT_EQ(PenOf(first).lopnStyle, static_cast<UINT>(PS_SOLID));
  EXPECT_EQ(PenOf(first).lopnColor, red);
  EXPECT_EQ(PenOf(first).lopnWidth.x, 1);

  T().DeleteLine(first, 1);
  T().DeleteLine(second, 1);
  EXPECT_EQ(T().m_nCacheRef[0], 0);
  EXPECT_EQ(T().m_nCacheCount, 1);
  EXPECT_EQ(LivePens(), m_pens + 1);  // kept for the next request
  EXPECT_EQ(T().CreateLine(1026, &red, 0, 1, 0), first);
  EXPECT_EQ(T().m_nCacheRef[0], 1);

  COLORREF blue = RGB(0, 0, 255);
  CLineType* other = T().CreateLine(1026, &blue, 0, 1, 0);
  EXPECT_NE(other, first);
  EXPECT_EQ(T().m_pCacheLine[0], other);  // newest first
  EXPECT_EQ(T().m_pCacheLine[1], first);
}

TEST_F(LineCache, TextModesAreSeparateSlots) {
  COLORREF c = RGB(0, 128, 0);
  CLineType* coloured = T().CreateLine(1066, &c, 0, 1, 0);
  CLineType* white = T().CreateLine(1066, &c, 0, 1, 1);
  CLineType* hidden = T().CreateLine(1066, &c, 0, 1, 2);
  EXPECT_NE(coloured, white);
  EXPECT_NE(white, hidden);
  EXPECT_EQ(T().m_nCacheCount, 3);
  EXPECT_EQ(T().CreateLine(1066, &c, 0, 1, 1), white);
  EXPECT_EQ(T().m_nCacheRef[1], 2);
}

TEST_F(LineCache, WhenFullEvictsTheOldestUnreferencedSlotOrCachesNothing) {
  std::vector<CLineType*> held = FillWithHeldLines(100);
  ASSERT_EQ(T().m_pCacheLine[99], held[0]);  // slot 99 holds the first line made
  COLORREF extra = 1000;
  const std::int64_t pens = LivePens();
  // Every slot held: the line is the caller's alone.
  CLineType* uncached = T().CreateLine(1026, &extra, 0, 1, 0);
  ASSERT_NE(uncached, nullptr);
  EXPECT_EQ(T().m_nCacheCount, 100);
  EXPECT_EQ(Internals::IsCached(T(), uncached), 0);
  EXPECT_EQ(T().m_pCacheLine[0], held.back());
  T().DeleteLine(uncached, 1);
  EXPECT_EQ(LivePens(), pens);

  T().DeleteLine(held[0], 1);
  T().DeleteLine(held[50], 1);  // slot 49, also unreferenced but younger
  CLineType* added = T().CreateLine(1026, &extra, 0, 1, 0);
  EXPECT_EQ(LivePens(), pens);  // one pen made, the victim's deleted
  EXPECT_EQ(T().m_nCacheCount, 100);
  EXPECT_EQ(T().m_pCacheLine[0], added);
  EXPECT_EQ(T().m_pCacheLine[99], held[1]);
  EXPECT_EQ(T().m_nCacheRef[99], 1);
  EXPECT_EQ(T().m_pCacheLine[50], held[50]);
  EXPECT_EQ(T().m_nCacheRef[50], 0);

  // With slot 99 referenced, the search goes on towards slot 0.
  COLORREF more = 1001;
  T().CreateLine(1026, &more, 0, 1, 0);
  EXPECT_EQ(Internals::IsCached(T(), held[50]), 0);
  EXPECT_EQ(T().m_pCacheLine[99], held[1]);
}

TEST_F(LineCache, ALineGivenBackAfterItsSlotMovedLosesTheReferenceWhereItNowIs) {
  std::vector<CLineType*> held = FillWithHeldLines(3);  // slots: colour 3, 2, 1
  T().DeleteLine(held[1], 1);
  COLORREF first = 1;
  ASSERT_EQ(T().CreateLine(1026, &first, 0, 1, 0), held[0]);  // a hit in slot 2
  EXPECT_EQ(T().m_nCacheRef[2], 2);
  Internals::DeleteUnusedCacheLines(T());  // colour 2 goes, colour 1 moves up to slot 1
  ASSERT_EQ(T().m_nCacheCount, 2);
  ASSERT_EQ(T().m_pCacheLine[1], held[0]);

  T().DeleteLine(held[0], 1);
  EXPECT_EQ(T().m_nCacheRef[1], 1);
  EXPECT_EQ(T().m_nCacheRef[0], 1);
  EXPECT_EQ(T().m_nCacheRef[2], 0);
  COLORREF newest = 4;
  CLineType* added = T().CreateLine(1026, &newest, 0, 1, 0);  // shifts colour 1 to slot 2
  T().DeleteLine(held[0], 0);  // deleted as asked: its slot becomes a hole
  EXPECT_EQ(T().m_pCacheLine[2], nullptr);
  EXPECT_EQ(T().m_nCacheRef[2], 0);
  EXPECT_EQ(T().m_pCacheLine[0], added);
  EXPECT_EQ(T().m_nCacheRef[0], 1);
  EXPECT_EQ(T().m_nCacheRef[1], 1);
}

TEST_F(LineCache, SimplePenLinesTakeTheirStyleAndWidth) {
  COLORREF c = RGB(10, 20, 30);
  const struct {
    int number, plain, style, width;
  } cases[] = {{5, 0, PS_SOLID, 6}, {6, 0, PS_SOLID, 9}, {5, 1, PS_SOLID, 0},
               {4, 0, PS_DASHDOTDOT, 2}, {0, 1, PS_SOLID, 0}};
  for (const auto& k : cases) {
    SCOPED_TRACE(testing::Message() << k.number << " plain " << k.plain);
    CLineType* line = T().CreateLine(k.number, &c, k.plain, 0, 0);
    ASSERT_NE(line, nullptr);
    const LOGPEN pen = PenOf(line);
    EXPECT_EQ(pen.lopnStyle, static_cast<UINT>(k.style));
    EXPECT_EQ(pen.lopnWidth.x, k.width);
    EXPECT_EQ(line->GetPenWidth(), k.width);
    EXPECT_EQ(pen.lopnColor, c);
    EXPECT_EQ(line->GetColor(), c);
    EXPECT_EQ(line->IsComplexLine(), 0);
    T().DeleteLine(line, 0);
  }
}

TEST_F(LineCache, InvisibleAndPlainLines) {
  COLORREF c = RGB(9, 9, 9);
  CLineType* none = T().CreateLine(-1, &c, 0, 1, 0);
  EXPECT_EQ(PenOf(none).lopnStyle, static_cast<UINT>(PS_NULL));
  EXPECT_EQ(none->GetColor(), 0u);
  EXPECT_EQ(std::u16string(none->GetDesc()), u"");
  EXPECT_EQ(T().m_nCacheNumber[0], -1);
  EXPECT_EQ(T().CreateLine(-1, &c, 0, 1, 0), none);

  // A plain request for a line type: a bare solid pen of the default width, no items.
  CLineType* plain = T().CreateLine(1041, &c, 1, 0, 0);
  EXPECT_EQ(plain->IsComplexLine(), 0);
  EXPECT_EQ(std::u16string(plain->GetDesc()), u"");
  EXPECT_EQ(PenOf(plain).lopnWidth.x, 1);
  T().DeleteLine(plain, 0);
}

TEST_F(LineCache, HolesAreSkippedByLookupsAndRemovedByThePurge) {
  COLORREF a = 1, b = 2, c = 3;
  CLineType* la = T().CreateLine(1026, &a, 0, 1, 0);  // ends in slot 2
  CLineType* lb = T().CreateLine(1027, &b, 0, 1, 0);  // slot 1
  CLineType* lc = T().CreateLine(1028, &c, 0, 1, 0);  // slot 0
  T().DeleteLine(la, 1);

  EXPECT_EQ(Internals::DeleteCacheLine(T(), 1, 0), 0);  // still held
  EXPECT_EQ(T().m_pCacheLine[1], lb);
  const std::int64_t pens = LivePens();
  EXPECT_EQ(Internals::DeleteCacheLine(T(), 1, 1), 1);
  EXPECT_EQ(LivePens(), pens - 1);
  EXPECT_EQ(T().m_pCacheLine[1], nullptr);
  EXPECT_EQ(T().m_nCacheNumber[1], 0);
  EXPECT_EQ(T().m_nCacheCount, 3);
  EXPECT_EQ(Internals::DeleteCacheLine(T(), 100, 1), 0);

  // A request with the hole's key makes a new line rather than finding the hole.
  COLORREF black = 0;
  CLineType* fresh = T().CreateLine(0, &black, 0, 1, 0);
  EXPECT_NE(fresh, nullptr);
  EXPECT_EQ(T().m_nCacheCount, 4);
  // A cached line given back without the cache is deleted and leaves a hole too.
  T().DeleteLine(T().CreateLine(1030, &c, 0, 1, 0), 0);
  EXPECT_EQ(T().m_pCacheLine[0], nullptr);
  EXPECT_EQ(T().m_nCacheCount, 5);

  Internals::DeleteUnusedCacheLines(T());
  ASSERT_EQ(T().m_nCacheCount, 2);
  EXPECT_EQ(T().m_pCacheLine[0], fresh);
  EXPECT_EQ(T().m_pCacheLine[1], lc);
  EXPECT_EQ(T().m_pCacheLine[2], nullptr);
  EXPECT_EQ(T().m_nCacheNumber[2], -1);
}

TEST(LineCacheTeardown, NoPenOutlivesAnySequenceOrTheTable) {
  const std::int64_t pens = LivePens();
  {
    CLineTypeTable table;
    table.FromFile(nullptr, nullptr, nullptr);
    for (int round = 0; round < 3; ++round) {
      for (int number : {-1, 0, 3, 5, 6, 7, 15, 20, 1026, 1041, 1068, 5000}) {
        for (COLORREF c : {COLORREF{0}, RGB(255, 0, 0)}) {
          for (int useCache : {0, 1}) {
            CLineType* line = table.CreateLine(number, &c, round == 1, useCache, round);
            // Even numbers stay held when the table goes.
            if (!useCache || number % 2 != 0) table.DeleteLine(line, useCache);
            table.DeleteLine(table.CreateLine(number, nullptr, 0, useCache, 0), useCache);
          }
        }
      }
    }
    EXPECT_GT(LivePens(), pens);
  }
  EXPECT_EQ(LivePens(), pens);
}

}  // namespace
