#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "linestyle/TextItem.h"
#include "platform/Archive.h"
#include "platform/Utf.h"
#include "RecordTestSupport.h"

namespace {

using vantrel1::test::Record;

}  // namespace

TEST(TextItemRecords, DefaultsKeepAStarThatInitClearsAndTextsKeepNineUnits) {
  CTextItem item;
  EXPECT_EQ(Record(item), u"1,0,1,1000,0.5,0,*");
  item.Init();
  EXPECT_EQ(Record(item), u"1,0,1,1000,0.5,0,");

  CTextItem made(0.75, -900, 2, 250, 0.125, 40, u"Ždralovac12");
  EXPECT_EQ(Record(made), u"0.75,-900,2,250,0.125,40,Ždralovac");
  CTextItem none(1.0, 0, 1, 1000, 0.5, 0, nullptr);
  EXPECT_EQ(none.m_szText[0], u'\0');
}

// Read over the default item (text "*") and written back.
TEST(TextItemRecords, ReadsSixNumbersAndAnOptionalText) {
  struct Case {
    const char16_t* in;
    const char16_t* out;
  };
  const Case cases[] = {
      {u"1.5,450,2,1000,0.25,-30,KM", u"1.5,450,2,1000,0.25,-30,KM"},
      // Runs of commas are one separator; the text keeps its blanks and ends at a comma.
      {u"1,,0,1,,500,0.5,0,  a b,ignored", u"1,0,1,500,0.5,0,  a b"},
      {u"2,0,1,1000,0,0", u"2,0,1,1000,0,0,"},
      {u"1,0,1,1000,0.5,0,abcdefghijkl", u"1,0,1,1000,0.5,0,abcdefghi"},
      {u"0.333333333333,0,1,1000,0.5,0,x", u"0.333333333333,0,1,1000,0.5,0,x"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(vantrel1::ToUtf8(c.in));
    CTextItem item;
    ASSERT_EQ(item.FromAscii(c.in), 1);
    EXPECT_EQ(Record(item), c.out);
  }
}

TEST(TextItemRecords, MissingNumberFailsAndKeepsWhatWasRead) {
  CTextItem item;
  EXPECT_EQ(item.FromAscii(u"3,10,2,700"), 0);
  EXPECT_EQ(Record(item), u"3,10,2,700,0.5,0,*");
  EXPECT_EQ(item.FromAscii(u""), 0);
  EXPECT_EQ(item.FromAscii(nullptr), 0);
}

TEST(TextItemRecords, WritingNeedsRoomForTheTerminator) {
  CTextItem item(1.0 / 3.0, 0, 1, 1000, 0.5, 0, u"x");
  const std::u16string full = u"0.333333333333,0,1,1000,0.5,0,x";
  EXPECT_EQ(Record(item, full.size() + 1), full);
  EXPECT_EQ(Record(item, full.size()), u"<null>");
  EXPECT_EQ(item.ToAscii(nullptr, 64), nullptr);
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

TEST(TextItemRecords, ArchiveTextIsCutToNineUnitsAndAShortRecordThrows) {
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
