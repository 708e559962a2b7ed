// The XML form of a line type.
#include <gtest/gtest.h>

#include <string>

#include "linestyle/LineType.h"
#include "linestyle/LineTypeEquality.h"
#include "markup/Markup.h"
#include "platform/Utf.h"

namespace {

using vantrel1::testing::SameLineType;

constexpr const char16_t* kDashes = u"2,0,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0";
// One pair with no dash at all: nothing of it is ever visible.
constexpr const char16_t* kEmptyPattern = u"1,0,1,0,0,0,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0";
constexpr const char16_t* kTriangle = u"B1,1,1,1000,0.5,0,0,3,0,0,0,50,100,1,-50,100,1";

CLineItem LineItem(const char16_t* record) {
  CLineItem item;
  EXPECT_EQ(item.FromAscii(record), 1);
  return item;
}

CSymbolItem SymbolItem(const char16_t* record) {
  CSymbolItem item;
  EXPECT_EQ(item.FromAscii(record), 1);
  return item;
}

LOGFONTW Font() {
  LOGFONTW lf{};
  lf.lfHeight = -40;
  lf.lfEscapement = 900;
  lf.lfOrientation = 450;
  lf.lfWeight = 700;
  lf.lfItalic = 1;
  lf.lfCharSet = 238;
  lf.lfOutPrecision = 3;
  lf.lfClipPrecision = 2;
  lf.lfQuality = 1;
  lf.lfPitchAndFamily = 34;
  lf.lfUnderline = 1;
  lf.lfStrikeOut = 1;
  lf.lfWidth = 12;
  std::u16string face = u"DejaVu Sans";
  face.copy(lf.lfFaceName, face.size());
  return lf;
}

// Writes the line type inside a LINETYPE element, as a table writes each of its entries.
std::u16string Write(CLineType& line) {
  CMarkup xml;
  xml.AddElem(u"LINETYPE");
  xml.IntoElem();
  line.SerializeXML(&xml, 1);
  xml.OutOfElem();
  return xml.GetDoc();
}

// Reads the line type held by the document's first element.
CLineType Read(const std::u16string& doc) {
  CMarkup xml(doc.c_str());
  EXPECT_TRUE(xml.IsWellFormed()) << vantrel1::ToUtf8(xml.GetError());
  xml.ResetPos();
  EXPECT_TRUE(xml.FindElem());
  CLineType line;
  line.SerializeXML(&xml, 0);
  return line;
}

TEST(LineTypeXml, WritesTheFieldsTheFontMembersAlphabeticallyThenTheItemRecordsAndReadsThemBack) {
  CLineType line;
  line.m_crColor = 0xFFFFFFFF;  // stored as a signed number
  line.m_nPenWidth = 0;
  line.SetDesc(u"trag");
  const LOGFONTW lf = Font();
  line.SetFont(&lf);
  const CLineItem dash = LineItem(kDashes);
  line.AddLineItem(&dash);
  const CSymbolItem triangle = SymbolItem(kTriangle);
  line.AddSymbolItem(&triangle);
  const CTextItem text(1.0, 0, 1, 1000, 0.5, 0, u"T");
  line.AddTextItem(&text);
  line.AddTextItem(&text);
  const std::u16string doc = Write(line);
  EXPECT_EQ(vantrel1::ToUtf8(doc),
            "<LINETYPE>\r\n"
            "<COLOR>-1</COLOR>\r\n"
            "<WIDTH>0</WIDTH>\r\n"
            "<NLINE>1</NLINE>\r\n"
            "<NSYMBOL>1</NSYMBOL>\r\n"
            "<NTEXT>2</NTEXT>\r\n"
            "<MAXLINE>1</MAXLINE>\r\n"
            "<MAXSYMBOL>1</MAXSYMBOL>\r\n"
            "<MAXTEXT>2</MAXTEXT>\r\n"
            "<HAVEFONT>1</HAVEFONT>\r\n"
            "<DESC>trag</DESC>\r\n"
            "<LFCHAR>238</LFCHAR>\r\n"
            "<LFCLIP>2</LFCLIP>\r\n"
            "<LFESCA>900</LFESCA>\r\n"
            "<LFFACE>DejaVu Sans</LFFACE>\r\n"
            "<LFHEIG>-40</LFHEIG>\r\n"
            "<LFITAL>1</LFITAL>\r\n"
            "<LFORIE>450</LFORIE>\r\n"
            "<LFOUTP>3</LFOUTP>\r\n"
            "<LFPITC>34</LFPITC>\r\n"
            "<LFQUAL>1</LFQUAL>\r\n"
            "<LFSTRI>1</LFSTRI>\r\n"
            "<LFUNDE>1</LFUNDE>\r\n"
            "<LFWEIG>700</LFWEIG>\r\n"
            "<LFWIDT>12</LFWIDT>\r\n"
            "<LINEITEM0>2,0,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0</LINEITEM0>\r\n"
            "<SYMBOLITEM0>B1,1,1,1000,0.5,0,0,3,0,0,0,50,100,1,-50,100,1</SYMBOLITEM0>\r\n"
            "<TEXTITEM0>1,0,1,1000,0.5,0,T</TEXTITEM0>\r\n"
            "<TEXTITEM1>1,0,1,1000,0.5,0,T</TEXTITEM1>\r\n"
            "</LINETYPE>\r\n");
  const CLineType back = Read(doc);
  EXPECT_TRUE(SameLineType(back, line));
  EXPECT_EQ(back.m_nMaxText, 2);
}

TEST(LineTypeXml, EmptyLineItemsAreWrittenButLeaveTheObject) {
  CLineType line;
  const CLineItem empty = LineItem(kEmptyPattern);
  const CLineItem dash = LineItem(kDashes);
  line.AddLineItem(&empty);
  line.AddLineItem(&dash);
  line.AddLineItem(&empty);

  const std::u16string doc = Write(line);
  EXPECT_NE(doc.find(u"<NLINE>3</NLINE>"), std::u16string::npos);
  EXPECT_NE(doc.find(u"<LINEITEM2>1,0,1,"), std::u16string::npos);
  ASSERT_EQ(line.GetNLine(), 1);
  EXPECT_EQ(line.GetLineItem(0)->m_nWidth, 2);

  // Reading drops them again: the document says three, the line type keeps one.
  const CLineType back = Read(doc);
  ASSERT_EQ(back.m_nLine, 1);
  EXPECT_EQ(back.m_nMaxLine, 3);
  EXPECT_EQ(back.m_pLineItems[0].m_nWidth, 2);
}

TEST(LineTypeXml, MissingElementsReadAsZeroAndMissingItemsKeepTheirDefaults) {
  const CLineType line = Read(
      u"<L><MAXLINE>2</MAXLINE><LINEITEM0>2,0,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0</LINEITEM0>"
      u"<NSYMBOL>2</NSYMBOL><MAXSYMBOL>2</MAXSYMBOL><SYMBOLITEM0>B2,0,1,500,0.25,0,0,1,0,0,1</SYMBOLITEM0>"
      u"<DESC>opis bez broja linija i dužih od polja</DESC><HAVEFONT>1</HAVEFONT><LFFACE>Serif</LFFACE>"
      u"<LFWEIG>400</LFWEIG></L>");
  EXPECT_EQ(line.m_nPenWidth, 0);  // not the constructor's 1
  EXPECT_EQ(line.m_crColor, 0u);
  EXPECT_EQ(line.m_nLine, 0);  // no NLINE: the item in the document is not read
  EXPECT_EQ(line.m_nMaxLine, 2);
  ASSERT_EQ(line.m_nSymbol, 2);
  EXPECT_EQ(line.m_pSymbolItems[0].m_dScale, 2.0);
  EXPECT_EQ(line.m_pSymbolItems[0].m_nStart, 25);
  EXPECT_EQ(line.m_pSymbolItems[1].m_dScale, 1.0);
  EXPECT_EQ(std::u16string(line.GetDesc()), u"opis bez broja linija i dužih o");
  ASSERT_NE(line.GetFont(), nullptr);
  EXPECT_EQ(std::u16string(line.m_lf.lfFaceName), u"Serif");
  EXPECT_EQ(line.m_lf.lfWeight, 400);
  EXPECT_EQ(line.m_lf.lfHeight, 0);
}

TEST(LineTypeXml, CountsBeyondTheCapacitiesReadOnlyTheItemsThatFit) {
  const CLineType line = Read(
      u"<L><NLINE>5</NLINE><MAXLINE>1</MAXLINE><NTEXT>-3</NTEXT><MAXTEXT>2</MAXTEXT>"
      u"<LINEITEM0>2,0,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0</LINEITEM0>"
      u"<LINEITEM1>3,0,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0</LINEITEM1></L>");
  ASSERT_EQ(line.m_nLine, 1);
  EXPECT_EQ(line.m_pLineItems[0].m_nWidth, 2);
  EXPECT_EQ(line.m_nText, 0);
  EXPECT_EQ(line.m_nMaxText, 2);
}

TEST(LineTypeXml, AbsurdCapacitiesAreRefusedNotAllocated) {
  const CLineType line = Read(u"<L><NLINE>2000000000</NLINE><MAXLINE>2000000000</MAXLINE></L>");
  EXPECT_EQ(line.m_pLineItems, nullptr);
  EXPECT_EQ(line.m_nLine, 0);
}

}  // namespace
