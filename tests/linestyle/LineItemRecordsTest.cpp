#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "linestyle/LineItem.h"
#include "linestyle/Tenths.h"
#include "platform/Archive.h"

namespace {

std::u16string Record(CLineItem& item, std::size_t size = 512) {
  std::vector<WCHAR> buffer(size, u'#');
  const WCHAR* result = item.ToAscii(buffer.data(), size);
  return result == nullptr ? u"<null>" : std::u16string(result);
}

std::vector<int> Dashes(const CLineItem& item) { return {item.m_nDash, item.m_nDash + 10}; }
std::vector<int> Gaps(const CLineItem& item) { return {item.m_nGap, item.m_nGap + 10}; }

void AppendLe32(std::vector<BYTE>& bytes, std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<BYTE>(bits >> shift));
}

}  // namespace

TEST(Tenths, ConvertsInSinglePrecisionBeforeWidening) {
  EXPECT_EQ(vantrel1::Tenths(300), 30.000000447034836);
  EXPECT_EQ(vantrel1::Tenths(1000), 100.00000149011612);
  EXPECT_NE(vantrel1::Tenths(300), 30.0);
  EXPECT_EQ(vantrel1::Tenths(1), 0.10000000149011612);
  EXPECT_EQ(vantrel1::Tenths(-150), -15.000000223517418);
  EXPECT_EQ(vantrel1::Tenths(0), 0.0);
}

TEST(LineItemRecords, ConstructorCopiesTenEntriesWhateverTheCount) {
  const int dashes[10] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  const int gaps[10] = {11, 12, 13, 14, 15, 16, 17, 18, 19, 20};
  CLineItem item(3, -40, dashes, gaps, 2);
  EXPECT_EQ(item.m_nWidth, 3);
  EXPECT_EQ(item.m_nOffset, -40);
  EXPECT_EQ(item.m_nCount, 2);
  EXPECT_EQ(Dashes(item), std::vector<int>(dashes, dashes + 10));
  EXPECT_EQ(Gaps(item), std::vector<int>(gaps, gaps + 10));

  CLineItem copy;
  copy = item;
  EXPECT_EQ(Record(copy), Record(item));
  copy.Init();
  EXPECT_EQ(Record(copy), u"0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0");
}

TEST(LineItemRecords, ReadsBuiltInDashedRecord) {
  CLineItem item;
  ASSERT_EQ(item.FromAscii(u"-1,150,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0"), 1);
  EXPECT_EQ(item.m_nWidth, -1);
  EXPECT_EQ(item.m_nOffset, 150);
  EXPECT_EQ(item.m_nCount, 1);
  EXPECT_EQ(item.m_nDash[0], 300);
  EXPECT_EQ(item.m_nGap[0], 100);

  ASSERT_EQ(item.FromAscii(u"1,0,0,3,3,300,60,60,0,0,0,0,0,0,0,50,500,50,0,0,0,0,0,0,0"), 1);
  EXPECT_EQ(item.m_nCount, 3);
  EXPECT_EQ(Dashes(item), (std::vector<int>{300, 60, 60, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Gaps(item), (std::vector<int>{50, 500, 50, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(LineItemRecords, DashWithoutGapBecomesContinuous) {
  CLineItem item;
  ASSERT_EQ(item.FromAscii(u"-1,0,0,1,0,1000,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0"), 1);
  EXPECT_EQ(item.m_nCount, 0);
  EXPECT_EQ(item.m_nDash[0], 1000);
  EXPECT_EQ(item.IsEmpty(), 0);
}

TEST(LineItemRecords, MergesPairWhenFollowingDashIsZero) {
  CLineItem item;
  ASSERT_EQ(item.FromAscii(u"1,0,0,2,2,300,0,0,0,0,0,0,0,0,0,100,50,0,0,0,0,0,0,0,0"), 1);
  EXPECT_EQ(item.m_nCount, 1);
  EXPECT_EQ(item.m_nDash[0], 300);
  EXPECT_EQ(item.m_nGap[0], 150);
  // The vacated pair keeps its old values and is written back out.
  EXPECT_EQ(item.m_nDash[1], 0);
  EXPECT_EQ(item.m_nGap[1], 50);
  EXPECT_EQ(Record(item), u"1,0,1,0,0,300,0,0,0,0,0,0,0,0,0,150,50,0,0,0,0,0,0,0,0");
}

TEST(LineItemRecords, MergesFollowingPairIntoPairWithZeroDash) {
  CLineItem item;
  ASSERT_EQ(item.FromAscii(u"1,0,0,3,3,0,200,300,0,0,0,0,0,0,0,100,100,100,0,0,0,0,0,0,0"), 1);
  EXPECT_EQ(item.m_nCount, 2);
  EXPECT_EQ(Dashes(item), (std::vector<int>{200, 300, 300, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Gaps(item), (std::vector<int>{200, 100, 100, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(LineItemRecords, MergedPairIsNotExaminedAgain) {
  CLineItem item;
  // (100,0) (0,0) (0,50): the first merge gives (100,0) (0,50), and (100,0) is not
  // merged a second time.
  ASSERT_EQ(item.FromAscii(u"1,0,0,3,3,100,0,0,0,0,0,0,0,0,0,0,0,50,0,0,0,0,0,0,0"), 1);
  EXPECT_EQ(item.m_nCount, 2);
  EXPECT_EQ(item.m_nDash[0], 100);
  EXPECT_EQ(item.m_nGap[0], 0);
  EXPECT_EQ(item.m_nDash[1], 0);
  EXPECT_EQ(item.m_nGap[1], 50);
}

TEST(LineItemRecords, MergedInGapDoesNotCountTowardsTheGaps) {
  CLineItem item;
  // (100,0) (0,50) merge to (100,50), but only the first pair's gap 0 was summed: the
  // item reads as continuous.
  ASSERT_EQ(item.FromAscii(u"1,0,0,2,2,100,0,0,0,0,0,0,0,0,0,0,50,0,0,0,0,0,0,0,0"), 1);
  EXPECT_EQ(item.m_nCount, 0);
  EXPECT_EQ(item.m_nDash[0], 100);
  EXPECT_EQ(item.m_nGap[0], 50);
}

TEST(LineItemRecords, LastPairIsNeverMerged) {
  CLineItem item;
  ASSERT_EQ(item.FromAscii(u"1,0,0,1,1,0,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0"), 1);
  EXPECT_EQ(item.m_nCount, 1);
  EXPECT_EQ(item.IsEmpty(), 1);
}

TEST(LineItemRecords, CountIsLargestOfThreeFieldsAndWrittenFirst) {
  const std::u16string tail = u",100,200,300,0,0,0,0,0,0,0,10,20,30,0,0,0,0,0,0,0";
  for (const std::u16string head : {u"4,-5,0,3,3", u"4,-5,3,0,0", u"4,-5,1,3,2"}) {
    CLineItem item;
    ASSERT_EQ(item.FromAscii((head + tail).c_str()), 1) << vantrel1::ToUtf8(head);
    EXPECT_EQ(item.m_nCount, 3);
    EXPECT_EQ(Record(item), u"4,-5,3,0,0" + tail);
  }
}

TEST(LineItemRecords, RunsOfCommasAreOneSeparator) {
  CLineItem item;
  ASSERT_EQ(item.FromAscii(u"7,,150,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0"), 1);
  EXPECT_EQ(item.m_nWidth, 7);
  EXPECT_EQ(item.m_nOffset, 150);
  EXPECT_EQ(item.m_nCount, 1);
  EXPECT_EQ(item.m_nDash[0], 300);
  EXPECT_EQ(item.m_nGap[0], 100);

  ASSERT_EQ(item.FromAscii(u",,1,,0,0,1,0,2.9, 40,x,0,0,0,0,0,0,0,5,5,5,0,0,0,0,0,0,0,99,98"), 1);
  EXPECT_EQ(item.m_nWidth, 1);
  EXPECT_EQ(item.m_nOffset, 0);
  EXPECT_EQ(item.m_nCount, 1);
  EXPECT_EQ(item.m_nDash[0], 2);   // "2.9" stops at the point
  EXPECT_EQ(item.m_nDash[1], 40);  // leading blank skipped
  EXPECT_EQ(item.m_nDash[2], 0);   // not a number
}

TEST(LineItemRecords, ShortRecordFailsButKeepsWhatItRead) {
  CLineItem item;
  ASSERT_EQ(item.FromAscii(u"-1,0,0,1,1,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,77"), 1);
  // 24 numbers: the last gap is missing.
  EXPECT_EQ(item.FromAscii(u"5,60,2,0,0,111,222,0,0,0,0,0,0,0,0,33,44,0,0,0,0,0,0,0"), 0);
  EXPECT_EQ(item.m_nWidth, 5);
  EXPECT_EQ(item.m_nOffset, 60);
  EXPECT_EQ(item.m_nCount, 2);
  EXPECT_EQ(item.m_nDash[0], 111);
  EXPECT_EQ(item.m_nDash[1], 222);
  EXPECT_EQ(item.m_nGap[0], 33);
  EXPECT_EQ(item.m_nGap[8], 0);
  EXPECT_EQ(item.m_nGap[9], 77);

  EXPECT_EQ(item.FromAscii(u""), 0);
  EXPECT_EQ(item.FromAscii(u",,,"), 0);
  EXPECT_EQ(item.FromAscii(nullptr), 0);
  EXPECT_EQ(item.m_nWidth, 5);
}

TEST(LineItemRecords, RefusesMoreThanTenPairs) {
  CLineItem item;
  ASSERT_EQ(item.FromAscii(u"1,0,2,0,0,10,20,0,0,0,0,0,0,0,0,30,40,0,0,0,0,0,0,0,0"), 1);
  EXPECT_EQ(item.FromAscii(u"1,0,11,0,0,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1"), 0);
  EXPECT_EQ(item.m_nCount, 2);
  EXPECT_EQ(item.FromAscii(u"1,0,0,0,2147483647,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1"), 0);
  EXPECT_EQ(item.m_nCount, 0);
  EXPECT_EQ(item.FromAscii(u"1,0,10,0,0,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1"), 1);
  EXPECT_EQ(item.m_nCount, 10);
}

TEST(LineItemRecords, EmptinessLooksOnlyAtDashesInUse) {
  CLineItem item;
  EXPECT_EQ(item.IsEmpty(), 0);  // continuous, even with every dash 0
  item.m_nCount = 2;
  EXPECT_EQ(item.IsEmpty(), 1);
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

TEST(LineItemRecords, WritesTwentyFiveNumbersWithinTheBuffer) {
  CLineItem item;
  item.m_nWidth = 2;
  EXPECT_EQ(Record(item), u"2,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0");

  // 49 units: each appended number needs room for two units more than it uses.
  EXPECT_EQ(Record(item, 30), u"<null>");
  EXPECT_EQ(Record(item, 50), u"<null>");
  EXPECT_EQ(Record(item, 51), u"2,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0");
  EXPECT_EQ(Record(item, 9), u"<null>");   // the header itself does not fit
  EXPECT_EQ(Record(item, 10), u"<null>");  // the header fits, the numbers do not
  EXPECT_EQ(item.ToAscii(nullptr, 100), nullptr);

  // The minus sign counts as a digit.
  item.m_nGap[9] = -5;
  EXPECT_EQ(Record(item, 51), u"<null>");
  EXPECT_EQ(Record(item, 52), u"2,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,-5");
}

TEST(LineItemRecords, FailedWriteLeavesATerminatedPrefix) {
  CLineItem item;
  std::vector<WCHAR> buffer(30, u'#');
  ASSERT_EQ(item.ToAscii(buffer.data(), buffer.size()), nullptr);
  EXPECT_EQ(std::u16string(buffer.data()), u"0,0,0,0,0,0,0,0,0,0,0,0,0,0");
}

TEST(LineItemRecords, WrittenRecordReadsBack) {
  const int dashes[10] = {300, 60, -7, 0, 0, 0, 0, 0, 0, 2147483647};
  const int gaps[10] = {50, 500, 50, 0, 0, 0, 0, 0, 0, INT_MIN};
  CLineItem item(-1, -150, dashes, gaps, 3);
  const std::u16string text = Record(item);
  CLineItem back;
  ASSERT_EQ(back.FromAscii(text.c_str()), 1);
  EXPECT_EQ(Record(back), text);
  EXPECT_EQ(back.m_nGap[9], INT_MIN);
}

TEST(LineItemRecords, ArchiveRecordIsNinetyTwoBytes) {
  const int dashes[10] = {300, 60, 0, 0, 0, 0, 0, 0, 0, 9};
  const int gaps[10] = {100, -2, 0, 0, 0, 0, 0, 0, 0, 8};
  CLineItem item(-1, 150, dashes, gaps, 2);
  CArchive out(CArchive::store);
  item.Serialize(out);

  std::vector<BYTE> expected = {0xFF, 0xFF, 0xFF, 0xFF, 0x96, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00,
                                0x2C, 0x01, 0x00, 0x00, 0x64, 0x00, 0x00, 0x00,   // dash 0, gap 0
                                0x3C, 0x00, 0x00, 0x00, 0xFE, 0xFF, 0xFF, 0xFF};  // dash 1, gap 1
  for (int i = 2; i < 9; ++i) {
    AppendLe32(expected, 0);
    AppendLe32(expected, 0);
  }
  AppendLe32(expected, 9);
  AppendLe32(expected, 8);
  ASSERT_EQ(expected.size(), 92u);
  EXPECT_EQ(out.GetBytes(), expected);

  CArchive in(out.GetBytes());
  CLineItem back;
  back.Serialize(in);
  EXPECT_TRUE(in.IsBufferEmpty());
  EXPECT_EQ(Record(back), Record(item));
}

TEST(LineItemRecords, ArchiveLoadingRefusesOverlongPatternsAndShortRecords) {
  std::vector<BYTE> bytes;
  AppendLe32(bytes, 1);
  AppendLe32(bytes, 0);
  AppendLe32(bytes, 11);
  for (int i = 0; i < 20; ++i) AppendLe32(bytes, 1);
  CLineItem item;
  {
    CArchive in(bytes);
    try {
      item.Serialize(in);
      FAIL() << "a count of 11 was accepted";
    } catch (const CArchiveException& e) {
      EXPECT_EQ(e.m_cause, CArchiveException::badIndex);
    }
  }
  EXPECT_EQ(item.m_nCount, 0);

  bytes[8] = 10;
  bytes.resize(91);
  CArchive shortRecord(bytes);
  try {
    item.Serialize(shortRecord);
    FAIL() << "a record of 91 bytes was accepted";
  } catch (const CArchiveException& e) {
    EXPECT_EQ(e.m_cause, CArchiveException::endOfFile);
  }
}
