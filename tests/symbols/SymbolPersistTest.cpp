// A point symbol in its text form (profile sections and the built-in string runs) and in
// its XML form.
#include <gtest/gtest.h>

#include <string>

#include "markup/Markup.h"
#include "platform/Utf.h"
#include "symbols/Symbol.h"
#include "symbols/SymbolTestSupport.h"

namespace {

using symboltest::Figure;
using symboltest::Text;
using symboltest::ToXml;
using vantrel1::ToUtf8;

class SymbolFile : public symboltest::TempDirTest {
 protected:
  int Load(CSymbol& symbol) const {
    return symbol.FromFileX(nullptr, PathOf("s.sym").c_str(), u"S", nullptr, nullptr);
  }
};

LOGFONTW Font() {
  LOGFONTW lf{};
  lf.lfHeight = -40;
  lf.lfWeight = 700;
  lf.lfCharSet = 238;
  std::u16string(u"DejaVu Sans").copy(lf.lfFaceName, 11);
  return lf;
}

// A symbol that uses every field the forms keep.
CSymbol Sample() {
  CSymbol symbol = symboltest::Composite({Figure({{-10, 0, 0}, {10, 0}}), Figure({{0, -10, 0}, {0, 10}})},
                                         {Text("Ž", 5.0, -3, 2.5)});
  symbol.SetDesc(u"međa");
  symbol.SetColor(RGB(1, 2, 3));
  symbol.SetScale(0.125);
  symbol.m_nPenWidth = 3;
  symbol.m_bRotatable = 0;
  const LOGFONTW lf = Font();
  symbol.SetFont(&lf);
  return symbol;
}

template <typename Item>
std::string Record(Item* item) {
  WCHAR record[512];
  return item != nullptr && item->ToAscii(record, 512) != nullptr ? ToUtf8(record) : "";
}

void FromXml(CSymbol& symbol, const std::u16string& doc) {
  CMarkup xml(doc.c_str());
  ASSERT_TRUE(xml.IsWellFormed()) << ToUtf8(xml.GetError());
  ASSERT_TRUE(xml.FindElem());
  symbol.SerializeXML(&xml, 0);
}

}  // namespace

// Text form -------------------------------------------------------------------------------

TEST(SymbolStrings, BuiltInRunsReadWithTheirItemsAndMoveTheStringIdPastEveryString) {
  struct Case {
    int firstId;
    const char* name;
    int nSymbol, nText;
  };
  const Case cases[] = {{20701, "benchmark", 3, 0},  {20706, "spomenik šumarske službe", 2, 0},
                        {20710, "P.I.", 2, 0},       {20714, "močvara", 3, 0},
                        {20719, "izdanak stene", 2, 0}, {20723, "toranj i žičnica", 4, 0},
                        {20729, "Borrow pit", 2, 1}, {20734, "Waste area", 2, 1}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    CSymbol symbol;
    int id = c.firstId;
    ASSERT_EQ(symbol.FromFileX(nullptr, nullptr, nullptr, nullptr, &id), 1);
    EXPECT_EQ(ToUtf8(symbol.GetDesc()), c.name);
    EXPECT_EQ(symbol.SymbolItemsNum(), c.nSymbol);
    EXPECT_EQ(symbol.TextItemsNum(), c.nText);
    EXPECT_EQ(id, c.firstId + 2 + c.nSymbol + c.nText);  // the absent font string counts
    EXPECT_EQ(symbol.GetFont(), nullptr);
    EXPECT_EQ(symbol.m_bRotatable, 0);
    EXPECT_EQ(symbol.m_bScalable, 0);
  }
  CSymbol pit;
  int missing = 20739;
  EXPECT_EQ(pit.FromFileX(nullptr, nullptr, nullptr, nullptr, &missing), 0);
  EXPECT_EQ(pit.FromFileX(nullptr, nullptr, nullptr, nullptr, nullptr), 0);  // no source at all
}

TEST_F(SymbolFile, HeaderFieldsAndTheirFailures) {
  struct Case {
    const char* section;
    int result;
    int index, penWidth, rotatable, scalable;
    const char* desc;
  };
  const Case cases[] = {
      {"SymbolDesc=3,1,0,0,Crosshairs,1,1", 1, 3, 1, 1, 1, "Crosshairs"},
      {"SymbolDesc=0,0,0,0,stari", 1, 0, 0, 0, 0, "stari"},
      // A comma in the name: its tail is read as the rotatable field.
      {"SymbolDesc=0,2,0,0,a,1,0", 1, 0, 2, 1, 0, "a"},
      {"SymbolDesc=,,7,,2,,0,0,,x", 1, 7, 2, 0, 0, "x"},  // runs of commas are one separator
      {"SymbolDesc=5,4,0,0", 0, 5, 4, 1, 1, ""},          // no name: the fields read stay
      {"SymbolDesc=0,0,1,0,x", 0, 0, 0, 0, 0, "x"},       // a symbol item record is missing
      {"SymbolDesc=0,0,0,1,x\r\nTextItem0=1,0", 0, 0, 0, 0, 0, "x"},  // a text record too short
      {"SymbolDesc=0,0,1001,0,x", 0, 0, 0, 0, 0, "x"},    // more items than a symbol may ask for
      {"Other=1", 0, 0, 1, 1, 1, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.section);
    Write("s.sym", std::string("[S]\r\n") + c.section + "\r\n");
    CSymbol symbol(7, 0, 1.0);
    EXPECT_EQ(Load(symbol), c.result);
    EXPECT_EQ(symbol.GetIndex(), c.index);
    EXPECT_EQ(symbol.m_nPenWidth, c.penWidth);
    EXPECT_EQ(symbol.m_bRotatable, c.rotatable);
    EXPECT_EQ(symbol.m_bScalable, c.scalable);
    EXPECT_EQ(ToUtf8(symbol.GetDesc()), c.desc);
    EXPECT_EQ(symbol.GetPen(), nullptr);  // the old pen went with the old symbol
  }
}

TEST_F(SymbolFile, WritesOneKeyPerPartAndReadsTheSymbolBack) {
  CSymbol symbol = Sample();
  ASSERT_EQ(symbol.ToFileX(nullptr, PathOf("s.sym").c_str(), u"S"), 1);
  EXPECT_EQ(Read("s.sym"),
            "[S]\r\n"
            "SymbolDesc=0,3,2,1,međa,0,1\r\n"
            "FontItem=-40,0,0,0,700,0,0,0,238,0,0,0,0,\"DejaVu Sans\"\r\n"
            "SymbolItem0=" + Record(symbol.GetSymbolItem(0)) + "\r\n"
            "SymbolItem1=" + Record(symbol.GetSymbolItem(1)) + "\r\n"
            "TextItem0=2.5,0,1,1000,5,-3,Ž\r\n");
  CSymbol back;
  ASSERT_EQ(Load(back), 1);
  back.SetColor(RGB(1, 2, 3));  // neither colour nor scale is kept in this form
  back.SetScale(0.125);
  EXPECT_EQ(ToXml(back), ToXml(symbol));

  symbol.SetFont(nullptr);
  symbol.SetDesc(std::u16string(600, u'x'));  // the header cannot hold it
  EXPECT_EQ(symbol.ToFileX(nullptr, PathOf("s.sym").c_str(), u"T"), 0);
}

// XML form --------------------------------------------------------------------------------

TEST(SymbolXml, WritesTheFieldsInOrderAndReadsThemBack) {
  CSymbol symbol = Sample();
  const std::u16string doc = ToXml(symbol);
  EXPECT_EQ(ToUtf8(doc),
            "<SYMBOL0>\r\n"
            "<COLOR>197121</COLOR>\r\n<SCALE>0.125</SCALE>\r\n<PENWIDTH>3</PENWIDTH>\r\n"
            "<DELETEPEN>0</DELETEPEN>\r\n<NSYMBOL>2</NSYMBOL>\r\n<NTEXT>1</NTEXT>\r\n<ISYMBOL>0</ISYMBOL>\r\n"
            "<ROTATABLE>0</ROTATABLE>\r\n<SCALABLE>1</SCALABLE>\r\n<DESC>međa</DESC>\r\n<B_FONT>1</B_FONT>\r\n"
            "<LFCHAR>238</LFCHAR>\r\n<LFCLIP>0</LFCLIP>\r\n<LFESCA>0</LFESCA>\r\n"
            "<LFFACE>DejaVu Sans</LFFACE>\r\n<LFHEIG>-40</LFHEIG>\r\n<LFITAL>0</LFITAL>\r\n"
            "<LFORIE>0</LFORIE>\r\n<LFOUTP>0</LFOUTP>\r\n<LFPITC>0</LFPITC>\r\n<LFQUAL>0</LFQUAL>\r\n"
            "<LFSTRI>0</LFSTRI>\r\n<LFUNDE>0</LFUNDE>\r\n<LFWEIG>700</LFWEIG>\r\n<LFWIDT>0</LFWIDT>\r\n"
            "<SYMBOLITEM0>" + Record(symbol.GetSymbolItem(0)) + "</SYMBOLITEM0>\r\n"
            "<SYMBOLITEM1>" + Record(symbol.GetSymbolItem(1)) + "</SYMBOLITEM1>\r\n"
            "<TEXTITEM0>2.5,0,1,1000,5,-3,Ž</TEXTITEM0>\r\n"
            "</SYMBOL0>\r\n");
  CSymbol back;
  FromXml(back, doc);
  EXPECT_EQ(ToXml(back), doc);
}

TEST(SymbolXml, MissingElementsGiveTheirDefaultsAndNoPenIsMade) {
  CSymbol bare;
  FromXml(bare, u"<SYMBOL0/>");
  EXPECT_EQ(bare.m_bRotatable, 0);  // unlike a new symbol
  EXPECT_EQ(bare.m_bScalable, 0);
  EXPECT_EQ(bare.GetScale(), 1.0);
  EXPECT_EQ(bare.m_nPenWidth, 0);

  CSymbol old;
  FromXml(old,
          u"<S><ISYMBOL>7</ISYMBOL><DELETEPEN>1</DELETEPEN><B_FONT>1</B_FONT><LFWEIG>700</LFWEIG>"
          u"<NSYMBOL>2</NSYMBOL><SYMBOLITEM1>1,0,1,0,0,2,5,6,0,7,8,1</SYMBOLITEM1><NTEXT>-4</NTEXT></S>");
  EXPECT_EQ(old.GetPen(), nullptr);  // SetColor makes it
  ASSERT_NE(old.GetFont(), nullptr);
  EXPECT_EQ(old.GetFont()->lfHeight, 12);
  EXPECT_EQ(old.GetFont()->lfWeight, 700);
  EXPECT_EQ(ToUtf8(old.GetFont()->lfFaceName), "Arial");
  ASSERT_EQ(old.SymbolItemsNum(), 2);
  EXPECT_EQ(old.GetSymbolItem(0)->m_nPoints, CSymbolItem().m_nPoints);
  EXPECT_EQ(old.GetSymbolItem(1)->m_ptPoints[1].y, 8);
  EXPECT_EQ(old.TextItemsNum(), 0);

  CSymbol huge;
  FromXml(huge, u"<S><NSYMBOL>2000000000</NSYMBOL><NTEXT>2000000000</NTEXT></S>");
  EXPECT_EQ(huge.SymbolItemsNum(), 1000);
  EXPECT_EQ(huge.TextItemsNum(), 1000);
}
