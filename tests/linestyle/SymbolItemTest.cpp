#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "linestyle/SymbolItem.h"
#include "platform/Archive.h"
#include "platform/RecordingMessageSink.h"
#include "platform/Utf.h"
#include "suite/CoordBaseX.h"
#include "RecordTestSupport.h"

namespace {

using vantrel1::test::Record;
using vantrel1::test::LoadFailure;

// The figure's flags, as a string of digits ("0110").
std::string Flags(const CSymbolItem& item) {
  std::string flags;
  for (int i = 0; i < item.m_nPoints; ++i) flags += std::to_string(item.m_bPenDown[i]);
  return flags;
}

std::vector<int> Xs(const CSymbolItem& item) {
  std::vector<int> xs;
  for (int i = 0; i < item.m_nPoints; ++i) xs.push_back(item.m_ptPoints[i].x);
  return xs;
}

// Point i at (10(i + 1), −10(i + 1)) with the flag given by digit i.
CSymbolItem Figure(const std::string& flags) {
  CSymbolItem item;
  item.m_nPoints = std::min(static_cast<int>(flags.size()), CSymbolItem::kMaxPoints);
  for (int i = 0; i < item.m_nPoints; ++i) {
    item.m_ptPoints[i] = POINT{10 * (i + 1), -10 * (i + 1)};
    item.m_bPenDown[i] = static_cast<signed char>(flags[static_cast<std::size_t>(i)] - '0');
  }
  return item;
}

}  // namespace

TEST(SymbolItemRecords, DefaultsAndConstructor) {
  CSymbolItem item;
  EXPECT_EQ(Record(item), u"B1,0,0,1000,0,0,1,0");
  EXPECT_EQ(item.m_bPenDown[0], 0);
  EXPECT_EQ(item.m_bPenDown[19], 1);

  const SIZE points[2] = {{100, 0}, {0, -25}};
  const char penDown[2] = {0, 1};
  CSymbolItem made(-2.0, 1, 3, 400, 50, points, penDown, 2, 7, 6);  // a scale ≤ 0 becomes 1
  EXPECT_EQ(Record(made), u"B1,1,3,400,0.5,7,6,2,100,0,0,0,-25,1");
  CSymbolItem pointless(2.5, 0, 1, 400, 0, nullptr, nullptr, 5, 0, 0);
  EXPECT_EQ(pointless.m_nPoints, 0);
}

// Every form is read over an item that already has points, a shift and a mode, and written
// back in the "B" form: the plain and "A" forms reset the shift and take the mode from the
// interval and start; the record's start fraction becomes a truncated percentage.
TEST(SymbolItemRecords, ReadsEveryFormAndWritesTheBForm) {
  struct Case {
    const char16_t* in;
    const char16_t* out;
  };
  const Case cases[] = {
      {u"1,0,1,400,0,1,0,200,1", u"B1,0,1,400,0,0,0,1,0,200,1"},
      {u"1.5,1,1,20000,0.15,4,0,25,1,100,0,1,0,-25,1,0,0,1", u"B1.5,1,1,20000,0.15,0,0,4,0,25,1,100,0,1,0,-25,1,0,0,1"},
      // An interval below 1 means interior vertices; a negative start the ends as well.
      {u"1,0,1,0,0.5,1,0,200,1", u"B1,0,1,1000,0.5,0,4,1,0,200,1"},
      {u"4,1,1,0,-1,1,0,25,1", u"B4,1,1,1000,0,0,5,1,0,25,1"},
      {u"4,1,1,300,-1.5,1,0,25,1", u"B4,1,1,300,0,0,6,1,0,25,1"},
      {u"4,1,1,300,-2,1,0,25,1", u"B4,1,1,300,0,0,6,1,0,25,1"},
      {u"4,1,1,300,-3,1,0,25,1", u"B4,1,1,300,0,0,7,1,0,25,1"},
      {u"4,1,1,300,0.16667,1,0,25,1", u"B4,1,1,300,0.16,0,0,1,0,25,1"},
      {u"4,1,1,300,0.29,1,0,25,1", u"B4,1,1,300,0.28,0,0,1,0,25,1"},  // 0.29 × 100 < 29
      {u"4,1,1,300,1e300,1,0,25,1", u"B4,1,1,300,21474836.47,0,0,1,0,25,1"},
      {u"A2,1,1,0,-2,-50,2,100,0,0,0,30,1", u"B2,1,1,1000,0,-50,6,2,100,0,0,0,30,1"},
      {u"B1,0,1,400,0,0,3,1,0,200,1", u"B1,0,1,400,0,0,3,1,0,200,1"},
      {u"B0.3,1,0,1000,0,0,2,4,0,0,0,-800,300,1,-800,-300,1,0,0,1",
       u"B0.3,1,0,1000,0,0,2,4,0,0,0,-800,300,1,-800,-300,1,0,0,1"},
      // No points: no further fields needed, and a negative count is kept.
      {u"1,0,1,400,0,0", u"B1,0,1,400,0,0,0,0"},
      {u"B1,0,1,400,0,0,2,-4", u"B1,0,1,400,0,0,2,-4"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(vantrel1::ToUtf8(c.in));
    CSymbolItem item = Figure("111");
    item.m_nShift = 9;
    item.m_nMode = 3;
    ASSERT_EQ(item.FromAscii(c.in), 1);
    EXPECT_EQ(Record(item), c.out);
  }
}

TEST(SymbolItemRecords, MissingFieldsFailAndKeepWhatWasRead) {
  CSymbolItem item;
  EXPECT_EQ(item.FromAscii(u"2,1,1,1000,0,3,50,86,1,100,0,1,0"), 0);
  EXPECT_EQ(item.m_nPoints, 3);
  EXPECT_EQ(item.m_ptPoints[1].x, 100);
  EXPECT_EQ(item.FromAscii(u"3,0"), 0);
  EXPECT_EQ(item.m_dScale, 3.0);
  for (const char16_t* bad : {u"B1,0,1,400,0,0", u"B", static_cast<const char16_t*>(nullptr)})
    EXPECT_EQ(item.FromAscii(bad), 0);
}

TEST(SymbolItemRecords, RefusesMoreThanTwentyPoints) {
  CSymbolItem item = Figure("0111");
  std::u16string record = u"1,0,1,400,0,21";
  for (int i = 0; i < 21; ++i) record += u",1,1,1";
  EXPECT_EQ(item.FromAscii(record.c_str()), 0);
  EXPECT_EQ(item.m_nPoints, 4);

  record = u"1,0,1,400,0,20";
  for (int i = 0; i < 20; ++i) record += u",1,-1,-1";
  ASSERT_EQ(item.FromAscii(record.c_str()), 1);
  EXPECT_EQ(item.m_nPoints, 20);
  EXPECT_EQ(item.m_bPenDown[19], -1);
}

TEST(SymbolItemRecords, WritingFailsWhenTheBufferIsShort) {
  CSymbolItem item;
  ASSERT_EQ(item.FromAscii(u"B4,1,1,1000,0,0,6,2,0,25,1,-100,0,1"), 1);
  const std::u16string full = u"B4,1,1,1000,0,0,6,2,0,25,1,-100,0,1";
  EXPECT_EQ(Record(item, full.size() + 2), full);
  EXPECT_EQ(Record(item, full.size() + 1), u"<null>");
  EXPECT_EQ(Record(item, 19), u"<null>");  // the header and its terminator need 20
  EXPECT_EQ(Record(item, 20), u"<null>");
  EXPECT_EQ(Record(item, 0), u"<null>");
}

TEST(SymbolItemRecords, ArchiveRecordBytes) {
  const SIZE points[2] = {{100, -25}, {0, 0}};
  const char penDown[2] = {1, 0};
  CSymbolItem item(1.5, 1, 2, 400, 25, points, penDown, 2, -3, 0);
  CArchive out(CArchive::store);
  item.Serialize(out);
  const std::vector<BYTE> expected = {
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF8, 0x3F,  // scale
      0x01, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00,  // fill, pen width
      0x90, 0x01, 0x00, 0x00, 0x19, 0x00, 0x00, 0x00,  // interval, start
      0x02, 0x00, 0x00, 0x00, 0xFD, 0xFF, 0xFF, 0xFF,  // points, shift
      0x00, 0x00, 0x00, 0x00,                          // mode
      0x64, 0x00, 0x00, 0x00, 0xE7, 0xFF, 0xFF, 0xFF, 0x01,
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
  EXPECT_EQ(out.GetBytes(), expected);

  CArchive in(out.GetBytes());
  CSymbolItem back;
  back.Serialize(in);
  EXPECT_TRUE(in.IsBufferEmpty());
  EXPECT_EQ(Record(back), Record(item));
}

TEST(SymbolItemRecords, ArchiveLoadingRefusesOverfullFiguresAndShortPoints) {
  CSymbolItem item = Figure("0111");
  CArchive out(CArchive::store);
  item.Serialize(out);
  std::vector<BYTE> bytes = out.GetBytes();
  bytes[24] = 21;
  CSymbolItem fresh;
  EXPECT_EQ(LoadFailure(bytes, fresh), CArchiveException::badIndex);
  bytes[24] = 4;
  bytes.resize(bytes.size() - 5);  // the last point's y and flag are missing
  CSymbolItem another;
  EXPECT_EQ(LoadFailure(bytes, another), CArchiveException::endOfFile);
}

TEST(SymbolItemRecords, DeletingAMoveKeepsTheBreak) {
  CSymbolItem item = Figure("0110");
  EXPECT_EQ(item.DeletePoint(0), 3);
  EXPECT_EQ(Flags(item), "010");
  EXPECT_EQ(Xs(item), (std::vector<int>{20, 30, 40}));
  EXPECT_EQ(item.DeletePoint(1), 2);  // a stroke: the next point keeps its flag
  EXPECT_EQ(Flags(item), "00");
  EXPECT_EQ(item.DeletePoint(2), 2);
  EXPECT_EQ(item.DeletePoint(-1), 2);
  EXPECT_EQ(item.DeletePoint(1), 1);  // the last point: nothing moves into its place
  EXPECT_EQ(Xs(item), (std::vector<int>{20}));
  EXPECT_EQ(item.DeletePoint(0), 0);
  EXPECT_EQ(item.DeletePoint(0), 0);

  CSymbolItem other = Figure("121");  // flag 2 is a move too
  EXPECT_EQ(other.DeletePoint(1), 2);
  EXPECT_EQ(Flags(other), "10");
}

TEST(SymbolItemRecords, CleaningRemovesTrailingMovesAndMovesBeforeMoves) {
  struct Case {
    const char* flags;
    const char* cleaned;
    std::vector<int> xs;
  };
  const Case cases[] = {
      {"0010", "01", {20, 30}},
      {"100", "1", {10}},
      {"000", "", {}},
      {"0101001", "010101", {10, 20, 30, 40, 60, 70}},
      {"", "", {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.flags);
    CSymbolItem item = Figure(c.flags);
    EXPECT_EQ(item.CleanPoints(), static_cast<int>(c.xs.size()));
    EXPECT_EQ(Flags(item), c.cleaned);
    EXPECT_EQ(Xs(item), c.xs);
  }
}

TEST(SymbolItemRecords, SetPolylineAppendsAStrokeRunBelowTwentyPoints) {
  CRecordingMessageSink sink;
  CSymbolItem item = Figure("01");
  PolylineVector line{{1.5, -0.25, 0.0}, {2.0, 0.0, 0.0}, {0.04, -0.07, 0.0}};
  int report = 1;
  ASSERT_EQ(item.SetPolyline(&line, &report, u"Oznaka", nullptr), 1);
  EXPECT_EQ(Flags(item), "01011");
  EXPECT_EQ(Xs(item), (std::vector<int>{10, 20, 150, 200, 4}));
  EXPECT_EQ(item.m_ptPoints[4].y, -7);

  CCoordBaseX base(10.0, 20.0, 10.0);
  PolylineVector near{{11.0, 19.0, 0.0}};
  ASSERT_EQ(item.SetPolyline(&near, &report, u"Oznaka", &base), 1);
  EXPECT_EQ(item.m_ptPoints[5].x, 10);
  EXPECT_EQ(item.m_ptPoints[5].y, -10);
  EXPECT_TRUE(sink.Requests().empty());

  // 6 + 14 points would make 20: refused, with the message only when asked for.
  PolylineVector longLine;
  for (int i = 0; i < 14; ++i) longLine.AddPoint(i, i);
  EXPECT_EQ(item.SetPolyline(&longLine, &report, u"Oznaka", nullptr), 0);
  EXPECT_EQ(item.m_nPoints, 6);
  ASSERT_EQ(sink.Requests().size(), 1u);
  EXPECT_EQ(sink.Requests()[0].kind, MessageKind::Error);
  EXPECT_EQ(sink.Requests()[0].id, 412u);
  EXPECT_EQ(sink.Requests()[0].text.substr(0, 9), u"Oznaka:  ");
  report = 0;
  EXPECT_EQ(item.SetPolyline(&longLine, &report, u"Oznaka", nullptr), 0);
  EXPECT_EQ(item.SetPolyline(&longLine, nullptr, u"Oznaka", nullptr), 0);
  EXPECT_EQ(sink.Requests().size(), 1u);

  longLine.clear();
  for (int i = 0; i < 13; ++i) longLine.AddPoint(i, i);
  ASSERT_EQ(item.SetPolyline(&longLine, &report, u"Oznaka", nullptr), 1);
  EXPECT_EQ(item.m_nPoints, 19);
  EXPECT_EQ(item.SetPolyline(nullptr, &report, u"Oznaka", nullptr), 0);
}

TEST(SymbolItemRecords, PolylinesAreStrokeRunsInHundredths) {
  CSymbolItem item;
  ASSERT_EQ(item.FromAscii(u"A2,0,1,1000,0,100,4,0,200,1,100,0,1,300,300,0,400,0,1"), 1);
  std::vector<PolylineVector> runs;
  ASSERT_EQ(item.GetPolylines(&runs), 1);
  // 0.01 in single precision: 100 tenths of shift are 0.9999999776482582.
  const std::vector<PolylineVector> expected = {
      {{0.0, -0.9999999776482582, 0.0}, {0.0, 2.9999999329447746, 0.0},
       {1.9999999552965164, -0.9999999776482582, 0.0}},
      {{5.999999865889549, 4.999999888241291, 0.0}, {7.999999821186066, -0.9999999776482582, 0.0}}};
  EXPECT_EQ(runs, expected);

  // Neither an empty figure nor one of moves only adds a run.
  CSymbolItem empty;
  EXPECT_EQ(empty.GetPolylines(&runs), 1);
  CSymbolItem moves = Figure("00");
  EXPECT_EQ(moves.GetPolylines(&runs), 1);
  EXPECT_EQ(runs.size(), 2u);
}
