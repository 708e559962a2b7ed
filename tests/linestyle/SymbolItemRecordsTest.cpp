#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "linestyle/SymbolItem.h"
#include "platform/Archive.h"
#include "platform/RecordingMessageSink.h"
#include "suite/CoordBaseX.h"

namespace {

std::u16string Record(CSymbolItem& item, std::size_t size = 512) {
  std::vector<WCHAR> buffer(size, u'#');
  const WCHAR* result = item.ToAscii(buffer.data(), size);
  return result == nullptr ? u"<null>" : std::u16string(result);
}

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

CSymbolItem Figure(const char* flags) {
  CSymbolItem item;
  const int n = static_cast<int>(std::char_traits<char>::length(flags));
  for (int i = 0; i < n; ++i) {
    item.m_ptPoints[i] = POINT{10 * (i + 1), -10 * (i + 1)};
    item.m_bPenDown[i] = static_cast<signed char>(flags[i] - '0');
  }
  item.m_nPoints = n;
  return item;
}

}  // namespace

TEST(SymbolItemRecords, DefaultsAndConstructor) {
  CSymbolItem item;
  EXPECT_EQ(item.m_dScale, 1.0);
  EXPECT_EQ(item.m_nInterval, 1000);
  EXPECT_EQ(item.m_nMode, 1);
  EXPECT_EQ(item.m_nPoints, 0);
  EXPECT_EQ(item.m_bPenDown[0], 0);
  EXPECT_EQ(item.m_bPenDown[1], 1);
  EXPECT_EQ(item.m_bPenDown[19], 1);
  EXPECT_EQ(Record(item), u"B1,0,0,1000,0,0,1,0");

  const SIZE points[2] = {{100, 0}, {0, -25}};
  const char penDown[2] = {0, 1};
  CSymbolItem made(-2.0, 1, 3, 400, 50, points, penDown, 2, 7, 6);
  EXPECT_EQ(Record(made), u"B1,1,3,400,0.5,7,6,2,100,0,0,0,-25,1");
  CSymbolItem many(2.5, 0, 1, 400, 0, nullptr, nullptr, 5, 0, 0);
  EXPECT_EQ(many.m_nPoints, 0);
}

TEST(SymbolItemRecords, ReadsPlainRecord) {
  CSymbolItem item;
  ASSERT_EQ(item.FromAscii(u"1,0,1,400,0,1,0,200,1"), 1);
  EXPECT_EQ(item.m_dScale, 1.0);
  EXPECT_EQ(item.m_nFill, 0);
  EXPECT_EQ(item.m_nPenWidth, 1);
  EXPECT_EQ(item.m_nInterval, 400);
  EXPECT_EQ(item.m_nStart, 0);
  EXPECT_EQ(item.m_nMode, 0);
  EXPECT_EQ(item.m_nShift, 0);
  ASSERT_EQ(item.m_nPoints, 1);
  EXPECT_EQ(item.m_ptPoints[0].x, 0);
  EXPECT_EQ(item.m_ptPoints[0].y, 200);
  EXPECT_EQ(item.m_bPenDown[0], 1);

  ASSERT_EQ(item.FromAscii(u"1.5,1,1,20000,0.15,4,0,25,1,100,0,1,0,-25,1,0,0,1"), 1);
  EXPECT_EQ(item.m_dScale, 1.5);
  EXPECT_EQ(item.m_nStart, 15);
  EXPECT_EQ(Xs(item), (std::vector<int>{0, 100, 0, 0}));
  EXPECT_EQ(Flags(item), "1111");
}

TEST(SymbolItemRecords, IntervalAndStartSelectThePlacementMode) {
  struct Case {
    const char16_t* record;
    int mode, interval, start;
  };
  const Case cases[] = {
      {u"1,0,1,0,0,1,0,200,1", 4, 1000, 0},      {u"1,0,1,-5,0.5,1,0,200,1", 4, 1000, 50},
      {u"4,1,1,0,-1,1,0,25,1", 5, 1000, 0},      {u"4,1,1,0,-2,1,0,25,1", 6, 1000, 0},
      {u"4,1,1,300,-3,1,0,25,1", 7, 300, 0},     {u"4,1,1,300,-1.5,1,0,25,1", 6, 300, 0},
      {u"4,1,1,300,0.33333,1,0,25,1", 0, 300, 33}, {u"4,1,1,300,0.16667,1,0,25,1", 0, 300, 16},
      {u"4,1,1,300,0.29,1,0,25,1", 0, 300, 28},  {u"4,1,1,300,1e300,1,0,25,1", 0, 300, 2147483647},
  };
  for (const Case& c : cases) {
    CSymbolItem item;
    ASSERT_EQ(item.FromAscii(c.record), 1) << vantrel1::ToUtf8(c.record);
    EXPECT_EQ(item.m_nMode, c.mode) << vantrel1::ToUtf8(c.record);
    EXPECT_EQ(item.m_nInterval, c.interval) << vantrel1::ToUtf8(c.record);
    EXPECT_EQ(item.m_nStart, c.start) << vantrel1::ToUtf8(c.record);
  }
}

TEST(SymbolItemRecords, PrefixedFormsCarryShiftAndMode) {
  CSymbolItem item;
  ASSERT_EQ(item.FromAscii(u"B1,0,1,400,0,0,3,1,0,200,1"), 1);
  EXPECT_EQ(item.m_nMode, 3);
  EXPECT_EQ(item.m_nShift, 0);
  EXPECT_EQ(item.m_nPoints, 1);

  ASSERT_EQ(item.FromAscii(u"A2,1,1,0,-2,-50,2,100,0,0,0,30,1"), 1);
  EXPECT_EQ(item.m_dScale, 2.0);
  EXPECT_EQ(item.m_nShift, -50);
  EXPECT_EQ(item.m_nMode, 6);
  EXPECT_EQ(Xs(item), (std::vector<int>{100, 0}));
  EXPECT_EQ(Flags(item), "01");

  // The built-in "B" record is written back exactly.
  const std::u16string builtIn = u"B0.3,1,0,1000,0,0,2,4,0,0,0,-800,300,1,-800,-300,1,0,0,1";
  ASSERT_EQ(item.FromAscii(builtIn.c_str()), 1);
  EXPECT_EQ(Record(item), builtIn);
}

TEST(SymbolItemRecords, PointCountZeroNeedsNoFurtherFields) {
  CSymbolItem item = Figure("111");
  ASSERT_EQ(item.FromAscii(u"1,0,1,400,0,0"), 1);
  EXPECT_EQ(item.m_nPoints, 0);
  ASSERT_EQ(item.FromAscii(u"B1,0,1,400,0,0,2,-4"), 1);
  EXPECT_EQ(item.m_nPoints, -4);
  EXPECT_EQ(Record(item), u"B1,0,1,400,0,0,2,-4");
}

TEST(SymbolItemRecords, MissingFieldsFailAndKeepWhatWasRead) {
  CSymbolItem item;
  EXPECT_EQ(item.FromAscii(u"2,1,1,1000,0,3,50,86,1,100,0,1,0"), 0);
  EXPECT_EQ(item.m_nPoints, 3);
  EXPECT_EQ(item.m_ptPoints[1].x, 100);
  EXPECT_EQ(item.FromAscii(u"B1,0,1,400,0,0"), 0);
  EXPECT_EQ(item.FromAscii(u"3,0"), 0);
  EXPECT_EQ(item.m_dScale, 3.0);
  EXPECT_EQ(item.FromAscii(u"B"), 0);
  EXPECT_EQ(item.FromAscii(nullptr), 0);
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
  ASSERT_EQ(item.FromAscii(u"4,1,1,0,-2,2,0,25,1,-100,0,1"), 1);
  const std::u16string full = u"B4,1,1,1000,0,0,6,2,0,25,1,-100,0,1";
  EXPECT_EQ(Record(item), full);
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
  {
    CArchive in(bytes);
    CSymbolItem back;
    try {
      back.Serialize(in);
      FAIL() << "21 points were accepted";
    } catch (const CArchiveException& e) {
      EXPECT_EQ(e.m_cause, CArchiveException::badIndex);
    }
  }
  bytes[24] = 4;
  bytes.resize(bytes.size() - 5);  // the last point's y and flag are missing
  CArchive in(bytes);
  CSymbolItem back;
  try {
    back.Serialize(in);
    FAIL() << "a short point was accepted";
  } catch (const CArchiveException& e) {
    EXPECT_EQ(e.m_cause, CArchiveException::endOfFile);
  }
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

TEST(SymbolItemRecords, CleaningRemovesRedundantMoves) {
  CSymbolItem item = Figure("0010");
  EXPECT_EQ(item.CleanPoints(), 2);
  EXPECT_EQ(Flags(item), "01");
  EXPECT_EQ(Xs(item), (std::vector<int>{20, 30}));

  item = Figure("100");
  EXPECT_EQ(item.CleanPoints(), 1);
  item = Figure("000");
  EXPECT_EQ(item.CleanPoints(), 0);
  item = Figure("0101001");
  EXPECT_EQ(item.CleanPoints(), 6);
  EXPECT_EQ(Flags(item), "010101");
  EXPECT_EQ(Xs(item), (std::vector<int>{10, 20, 30, 40, 60, 70}));
  item = CSymbolItem();
  EXPECT_EQ(item.CleanPoints(), 0);
}

TEST(SymbolItemRecords, SetPolylineAppendsAStrokeRunBelowTwentyPoints) {
  CRecordingMessageSink sink;
  CSymbolItem item = Figure("01");
  PolylineVector line{{1.5, -0.25, 0.0}, {2.0, 0.0, 0.0}, {0.04, -0.07, 0.0}};
  int report = 1;
  ASSERT_EQ(item.SetPolyline(&line, &report, u"Oznaka", nullptr), 1);
  EXPECT_EQ(Flags(item), "01011");
  EXPECT_EQ(Xs(item), (std::vector<int>{10, 20, 150, 200, 4}));
  EXPECT_EQ(item.m_ptPoints[2].y, -25);
  EXPECT_EQ(item.m_ptPoints[4].y, -7);
  EXPECT_TRUE(sink.Requests().empty());

  CCoordBaseX base(10.0, 20.0, 10.0);
  PolylineVector near{{11.0, 19.0, 0.0}};
  ASSERT_EQ(item.SetPolyline(&near, &report, u"Oznaka", &base), 1);
  EXPECT_EQ(item.m_ptPoints[5].x, 10);
  EXPECT_EQ(item.m_ptPoints[5].y, -10);

  // 6 + 14 points would make 20: refused, with the message when asked for.
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

  CSymbolItem empty;
  EXPECT_EQ(empty.GetPolylines(&runs), 1);
  EXPECT_EQ(runs.size(), 2u);
  CSymbolItem moves = Figure("00");
  EXPECT_EQ(moves.GetPolylines(&runs), 1);
  EXPECT_EQ(runs.size(), 2u);
}
