#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "linestyle/LineItem.h"
#include "linestyle/Tenths.h"
#include "platform/Archive.h"
#include "platform/Utf.h"
#include "RecordTestSupport.h"

namespace {

using vantrel1::test::Record;
using vantrel1::test::Le32;
using vantrel1::test::LoadFailure;

}  // namespace

TEST(Tenths, ConvertsInSinglePrecisionBeforeWidening) {
  EXPECT_EQ(vantrel1::Tenths(300), 30.000000447034836);
  EXPECT_EQ(vantrel1::Tenths(1), 0.10000000149011612);
  EXPECT_EQ(vantrel1::Tenths(-150), -15.000000223517418);
}

// Pairs with a zero dash or gap absorb the pair after them; the record written afterwards
// shows the new count and every entry, including the vacated ones.
TEST(LineItemRecords, ReadingNormalisesZeroLengthPairs) {
  struct Case {
    const char* why;
    const char16_t* in;
    const char16_t* out;
    int empty;
  };
  const Case cases[] = {
      {"count in the fourth field, no zero in use",
       u"-1,150,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0",
       u"-1,150,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0", 0},
      {"count in the fifth field is the largest", u"4,-5,1,3,2,100,200,300,0,0,0,0,0,0,0,10,20,30,0,0,0,0,0,0,0",
       u"4,-5,3,0,0,100,200,300,0,0,0,0,0,0,0,10,20,30,0,0,0,0,0,0,0", 0},
      {"a dash without a gap is continuous", u"-1,0,0,1,0,1000,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0",
       u"-1,0,0,0,0,1000,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0", 0},
      {"following dash 0: merged, vacated pair kept", u"1,0,0,2,2,300,0,0,0,0,0,0,0,0,0,100,50,0,0,0,0,0,0,0,0",
       u"1,0,1,0,0,300,0,0,0,0,0,0,0,0,0,150,50,0,0,0,0,0,0,0,0", 0},
      {"own dash 0: the next pair folds in", u"1,0,0,3,3,0,200,300,0,0,0,0,0,0,0,100,100,100,0,0,0,0,0,0,0",
       u"1,0,2,0,0,200,300,300,0,0,0,0,0,0,0,200,100,100,0,0,0,0,0,0,0", 0},
      {"a merged pair is not examined again", u"1,0,0,3,3,100,0,0,0,0,0,0,0,0,0,0,0,50,0,0,0,0,0,0,0",
       u"1,0,2,0,0,100,0,0,0,0,0,0,0,0,0,0,50,50,0,0,0,0,0,0,0", 0},
      {"a folded-in gap is not summed: continuous", u"1,0,0,2,2,100,0,0,0,0,0,0,0,0,0,0,50,0,0,0,0,0,0,0,0",
       u"1,0,0,0,0,100,0,0,0,0,0,0,0,0,0,50,50,0,0,0,0,0,0,0,0", 0},
      {"the last pair is never merged", u"1,0,0,1,1,0,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0",
       u"1,0,1,0,0,0,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0", 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.why);
    CLineItem item;
    ASSERT_EQ(item.FromAscii(c.in), 1);
    EXPECT_EQ(Record(item), c.out);
    EXPECT_EQ(item.IsEmpty(), c.empty);
  }
}

TEST(LineItemRecords, RunsOfCommasAreOneSeparatorAndFieldsReadAsLeadingIntegers) {
  CLineItem item;
  // "2.9" stops at the point, " 40" skips its blank, "x" is 0, extra fields are ignored.
  ASSERT_EQ(item.FromAscii(u",,1,,0,0,1,0,2.9, 40,x,0,0,0,0,0,0,0,5,5,5,0,0,0,0,0,0,0,99,98"), 1);
  EXPECT_EQ(Record(item), u"1,0,1,0,0,2,40,0,0,0,0,0,0,0,0,5,5,5,0,0,0,0,0,0,0");
}

TEST(LineItemRecords, ShortRecordFailsButKeepsWhatItRead) {
  CLineItem item;
  ASSERT_EQ(item.FromAscii(u"-1,0,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,77"), 1);
  // 24 numbers: the last gap is missing and keeps its 77.
  EXPECT_EQ(item.FromAscii(u"5,60,2,0,0,111,222,0,0,0,0,0,0,0,0,33,44,0,0,0,0,0,0,0"), 0);
  EXPECT_EQ(Record(item), u"5,60,2,0,0,111,222,0,0,0,0,0,0,0,0,33,44,0,0,0,0,0,0,0,77");
  for (const char16_t* bad : {u"", u",,,", static_cast<const char16_t*>(nullptr)}) EXPECT_EQ(item.FromAscii(bad), 0);
  EXPECT_EQ(item.m_nWidth, 5);
}

TEST(LineItemRecords, RefusesMoreThanTenPairs) {
  CLineItem item;
  ASSERT_EQ(item.FromAscii(u"1,0,2,0,0,10,20,0,0,0,0,0,0,0,0,30,40,0,0,0,0,0,0,0,0"), 1);
  EXPECT_EQ(item.FromAscii(u"1,0,11,0,0,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1"), 0);
  EXPECT_EQ(item.m_nCount, 2);
  // The first count field was taken before the last one was refused.
  EXPECT_EQ(item.FromAscii(u"1,0,0,0,2147483647,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1"), 0);
  EXPECT_EQ(item.m_nCount, 0);
  EXPECT_EQ(item.FromAscii(u"1,0,10,0,0,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1"), 1);
  EXPECT_EQ(item.m_nCount, 10);
}

TEST(LineItemRecords, EmptinessLooksOnlyAtDashesInUse) {
  CLineItem item;
  EXPECT_EQ(item.IsEmpty(), 0);  // continuous, even with every dash 0
  item.m_nCount = 2;
  item.m_nDash[2] = 50;
  EXPECT_EQ(item.IsEmpty(), 1);
  item.m_nDash[1] = 50;
  EXPECT_EQ(item.IsEmpty(), 0);
  // The sum wraps around in 32 bits.
  item.m_nDash[0] = INT_MIN;
  item.m_nDash[1] = INT_MIN;
  EXPECT_EQ(item.IsEmpty(), 1);
  item.m_nCount = 40;  // never read beyond the ten pairs
  EXPECT_EQ(item.IsEmpty(), 0);
}

TEST(LineItemRecords, WritingNeedsTwoSpareUnitsPerNumber) {
  CLineItem item;
  item.m_nWidth = 2;
  const std::u16string zeros = u"2,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0";  // 49 units
  EXPECT_EQ(Record(item, 50), u"<null>");
  EXPECT_EQ(Record(item, 51), zeros);
  EXPECT_EQ(Record(item, 9), u"<null>");   // the header itself does not fit
  EXPECT_EQ(Record(item, 10), u"<null>");  // the header fits, the numbers do not
  EXPECT_EQ(item.ToAscii(nullptr, 100), nullptr);

  // The minus sign counts as a digit.
  item.m_nGap[9] = -5;
  EXPECT_EQ(Record(item, 51), u"<null>");
  EXPECT_EQ(Record(item, 52), u"2,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,-5");

  // A failed write leaves a terminated prefix.
  std::vector<WCHAR> buffer(30, u'#');
  ASSERT_EQ(item.ToAscii(buffer.data(), buffer.size()), nullptr);
  EXPECT_EQ(std::u16string(buffer.data()), u"2,0,0,0,0,0,0,0,0,0,0,0,0,0");
}

TEST(LineItemRecords, ConstructorTakesTenEntriesAndTheRecordReadsBack) {
  const int dashes[10] = {300, 60, -7, 0, 0, 0, 0, 0, 0, 2147483647};
  const int gaps[10] = {50, 500, 50, 0, 0, 0, 0, 0, 0, INT_MIN};
  CLineItem item(-1, -150, dashes, gaps, 3);
  const std::u16string text = Record(item);
  EXPECT_EQ(text, u"-1,-150,3,0,0,300,60,-7,0,0,0,0,0,0,2147483647,50,500,50,0,0,0,0,0,0,-2147483648");
  CLineItem back;
  ASSERT_EQ(back.FromAscii(text.c_str()), 1);
  EXPECT_EQ(Record(back), text);
}

TEST(LineItemRecords, ArchiveRecordIsNinetyTwoBytesWithDashesAndGapsInterleaved) {
  const int dashes[10] = {300, 60, 0, 0, 0, 0, 0, 0, 0, 9};
  const int gaps[10] = {100, -2, 0, 0, 0, 0, 0, 0, 0, 8};
  CLineItem item(-1, 150, dashes, gaps, 2);
  CArchive out(CArchive::store);
  item.Serialize(out);
  EXPECT_EQ(out.GetBytes(), Le32({-1, 150, 2, 300, 100, 60, -2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9, 8}));

  CArchive in(out.GetBytes());
  CLineItem back;
  back.Serialize(in);
  EXPECT_TRUE(in.IsBufferEmpty());
  EXPECT_EQ(Record(back), Record(item));
}

TEST(LineItemRecords, ArchiveLoadingRefusesOverlongPatternsAndShortRecords) {
  std::vector<BYTE> bytes = Le32({1, 0, 11});
  bytes.resize(92, 1);
  CLineItem item;
  EXPECT_EQ(LoadFailure(bytes, item), CArchiveException::badIndex);
  EXPECT_EQ(item.m_nCount, 0);
  bytes[8] = 10;
  bytes.resize(91);
  EXPECT_EQ(LoadFailure(bytes, item), CArchiveException::endOfFile);
}
