#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "linestyle/TextItem.h"
#include "platform/Archive.h"

namespace {

std::u16string Record(CTextItem& item, std::size_t size = 512) {
  std::vector<WCHAR> buffer(size, u'#');
  const WCHAR* result = item.ToAscii(buffer.data(), size);
  return result == nullptr ? u"<null>" : std::u16string(result);
}

}  // namespace

TEST(TextItemRecords, DefaultsKeepAStarThatInitClears) {
  CTextItem item;
  EXPECT_EQ(Record(item), u"1,0,1,1000,0.5,0,*");
  item.Init();
  EXPECT_EQ(Record(item), u"1,0,1,1000,0.5,0,");

  CTextItem made(0.75, -900, 2, 250, 0.125, 40, u"Ždralovac12");
  EXPECT_EQ(std::u16string(made.m_szText), u"Ždralovac");
  EXPECT_EQ(Record(made), u"0.75,-900,2,250,0.125,40,Ždralovac");
  CTextItem none(1.0, 0, 1, 1000, 0.5, 0, nullptr);
  EXPECT_EQ(none.m_szText[0], u'\0');

  CTextItem copy;
  copy = made;
  EXPECT_EQ(Record(copy), Record(made));
}

TEST(TextItemRecords, ReadsSevenFields) {
  CTextItem item;
  ASSERT_EQ(item.FromAscii(u"1.5,450,2,1000,0.25,-30,KM"), 1);
  EXPECT_EQ(item.m_dScale, 1.5);
  EXPECT_EQ(item.m_nAngle, 450);
  EXPECT_EQ(item.m_nBkMode, 2);
  EXPECT_EQ(item.m_nInterval, 1000);
  EXPECT_EQ(item.m_dStart, 0.25);
  EXPECT_EQ(item.m_nOffset, -30);
  EXPECT_EQ(std::u16string(item.m_szText), u"KM");

  ASSERT_EQ(item.FromAscii(u"1,,0,1,,500,0.5,0,  a b,ignored"), 1);
  EXPECT_EQ(item.m_nInterval, 500);
  EXPECT_EQ(std::u16string(item.m_szText), u"  a b");
}

TEST(TextItemRecords, SixFieldsClearTheText) {
  CTextItem item;
  ASSERT_EQ(item.FromAscii(u"2,0,1,1000,0,0"), 1);
  EXPECT_EQ(item.m_szText[0], u'\0');
  EXPECT_EQ(item.m_dScale, 2.0);
  EXPECT_EQ(item.m_dStart, 0.0);
}

TEST(TextItemRecords, LongTextKeepsNineUnits) {
  CTextItem item;
  ASSERT_EQ(item.FromAscii(u"1,0,1,1000,0.5,0,abcdefghijkl"), 1);
  EXPECT_EQ(std::u16string(item.m_szText), u"abcdefghi");
  EXPECT_EQ(Record(item), u"1,0,1,1000,0.5,0,abcdefghi");
}

TEST(TextItemRecords, MissingNumberFailsAndKeepsWhatWasRead) {
  CTextItem item;
  EXPECT_EQ(item.FromAscii(u"3,10,2,700"), 0);
  EXPECT_EQ(item.m_dScale, 3.0);
  EXPECT_EQ(item.m_nInterval, 700);
  EXPECT_EQ(item.m_dStart, 0.5);
  EXPECT_EQ(std::u16string(item.m_szText), u"*");
  EXPECT_EQ(item.FromAscii(u""), 0);
  EXPECT_EQ(item.FromAscii(nullptr), 0);
}

TEST(TextItemRecords, WritingNeedsRoomForTheTerminator) {
  CTextItem item(1.0 / 3.0, 0, 1, 1000, 0.5, 0, u"x");
  const std::u16string full = u"0.333333333333,0,1,1000,0.5,0,x";
  EXPECT_EQ(Record(item), full);
  EXPECT_EQ(Record(item, full.size() + 1), full);
  EXPECT_EQ(Record(item, full.size()), u"<null>");
  EXPECT_EQ(item.ToAscii(nullptr, 64), nullptr);

  CTextItem back;
  ASSERT_EQ(back.FromAscii(full.c_str()), 1);
  EXPECT_EQ(back.m_dScale, 0.333333333333);
}

TEST(TextItemRecords, ArchiveRecordBytes) {
  CTextItem item(1.0, 450, 2, 1000, 0.5, -30, u"KM");
  CArchive out(CArchive::store);
  item.Serialize(out);
  const std::vector<BYTE> expected = {
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF0, 0x3F,  // scale
      0xC2, 0x01, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00,  // angle, background mode
      0xE8, 0x03, 0x00, 0x00,                          // interval
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xE0, 0x3F,  // start
      0xE2, 0xFF, 0xFF, 0xFF,                          // offset
      0xFF, 0xFE, 0xFF, 0x02, 0x4B, 0x00, 0x4D, 0x00};  // "KM"
  EXPECT_EQ(out.GetBytes(), expected);

  CArchive in(out.GetBytes());
  CTextItem back;
  back.Serialize(in);
  EXPECT_TRUE(in.IsBufferEmpty());
  EXPECT_EQ(Record(back), Record(item));
}

TEST(TextItemRecords, ArchiveTextIsCutToNineUnits) {
  CArchive out(CArchive::store);
  out << 1.0 << 0 << 1 << 1000 << 0.5 << 0 << std::u16string_view(u"dvanaest slova");
  CArchive in(out.GetBytes());
  CTextItem item;
  item.Serialize(in);
  EXPECT_EQ(std::u16string(item.m_szText), u"dvanaest ");

  CArchive shortOut(CArchive::store);
  shortOut << 1.0 << 0 << 1;
  CArchive shortIn(shortOut.GetBytes());
  EXPECT_THROW(item.Serialize(shortIn), CArchiveException);
}
