#include <gtest/gtest.h>

#include "markup/MarkupProbe.h"

using markup_probe::Narrow;

namespace {

const char16_t* const kRecord =
    u"<T a=\"1\" b='x&amp;y' c=3 d = \"4\"><N>42</N><D> 2.5 </D><C>c</C><E/>"
    u"<S>a&lt;b &#65; &unknown; &lt</S><K> <![CDATA[a<b&amp;]]></K><N>7</N>"
    u"<Q>&apos;&quot;&gt;</Q><L>d</L></T>";

class MarkupRead : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m.SetDoc(kRecord));
    ASSERT_TRUE(m.FindElem(u"T"));
  }
  MarkupProbe m;
};

}  // namespace

TEST_F(MarkupRead, AttributesAreUnescapedAndMustBeQuoted) {
  EXPECT_EQ(Narrow(m.GetTagName()), "T");
  EXPECT_EQ(Narrow(m.GetAttrib(u"a")), "1");
  EXPECT_EQ(Narrow(m.GetAttrib(u"b")), "x&y");
  EXPECT_EQ(Narrow(m.GetAttrib(u"c")), "");
  EXPECT_EQ(Narrow(m.GetAttrib(u"d")), "4");
  EXPECT_EQ(Narrow(m.GetAttrib(u"missing")), "");
  EXPECT_EQ(Narrow(m.GetAttrib(nullptr)), "");
  // "3", the unquoted value of c, reads as a name without a value.
  EXPECT_EQ(Narrow(m.GetAttrib(u"3")), "");
}

TEST_F(MarkupRead, AttributeSearchStopsAtTheEndOfTheStartTag) {
  ASSERT_TRUE(m.SetDoc(u"<a x='1' / y='2'><b y='3'/></a>"));
  ASSERT_TRUE(m.FindElem());
  EXPECT_EQ(Narrow(m.GetAttrib(u"x")), "1");
  EXPECT_EQ(Narrow(m.GetAttrib(u"y")), "");
  ASSERT_TRUE(m.FindChildElem(u"b"));
  EXPECT_EQ(Narrow(m.GetChildAttrib(u"y")), "3");
}

TEST_F(MarkupRead, TypedReadsFindTheFirstChildOfThatNameInAnyOrder) {
  EXPECT_EQ(m.GetDataInt(u"N", 9), 42);
  EXPECT_EQ(m.GetDataInt(u"Missing", 9), 9);
  EXPECT_DOUBLE_EQ(m.GetDataDouble(u"D", 0.0), 2.5);
  EXPECT_DOUBLE_EQ(m.GetDataDouble(u"Missing", -1.25), -1.25);
  EXPECT_EQ(Narrow(m.GetDataStr(u"S", u"")), "a<b &#65; &unknown; &lt");
  // Read again after a later field: the search starts over at the first child.
  EXPECT_EQ(m.GetDataInt(u"N", 9), 42);
  EXPECT_EQ(Narrow(m.GetDataStr(u"Missing", u"def")), "def");
  EXPECT_EQ(Narrow(m.GetDataStr(u"Q", u"")), "'\">");
}

TEST_F(MarkupRead, TypedReadLeavesTheFoundFieldAsChildPosition) {
  ASSERT_EQ(m.GetDataInt(u"D", 0), 2);
  EXPECT_EQ(Narrow(m.GetTagName()), "T");
  EXPECT_EQ(Narrow(m.GetChildTagName()), "D");
  EXPECT_EQ(m.ParentPos(), 0);
  EXPECT_EQ(m.Kind(), 1);
  ASSERT_TRUE(m.FindChildElem(u"N"));
  EXPECT_EQ(Narrow(m.GetChildData()), "7");
}

TEST_F(MarkupRead, CharacterFieldsWriteZeroAsTheLetterC) {
  EXPECT_EQ(m.GetDataChar(u"C", u'x'), 0);
  EXPECT_EQ(m.GetDataChar(u"L", u'x'), u'd');
  EXPECT_EQ(m.GetDataChar(u"E", u'x'), 0);
  EXPECT_EQ(m.GetDataChar(u"Missing", u'x'), u'x');
  EXPECT_EQ(m.GetDataChar(u"N", u'x'), u'4');
}

TEST_F(MarkupRead, CDataIsReturnedAsWritten) {
  EXPECT_EQ(Narrow(m.GetDataStr(u"K", u"")), "a<b&amp;");
  ASSERT_TRUE(m.SetDoc(u"<T><![CDATA[]]></T>"));
  ASSERT_TRUE(m.FindElem());
  EXPECT_EQ(Narrow(m.GetData()), "");
  // Text after the section is not part of the value.
  ASSERT_TRUE(m.SetDoc(u"<T><![CDATA[a]]>tail</T>"));
  ASSERT_TRUE(m.FindElem());
  EXPECT_EQ(Narrow(m.GetData()), "a");
  // Text before it makes the whole content the value.
  ASSERT_TRUE(m.SetDoc(u"<T>x<![CDATA[a]]></T>"));
  ASSERT_TRUE(m.FindElem());
  EXPECT_EQ(Narrow(m.GetData()), "x<![CDATA[a]]>");
}

TEST_F(MarkupRead, DataKeepsWhitespaceAndIsEmptyForParentsAndEmptyElements) {
  ASSERT_TRUE(m.SetDoc(u"<T> x <U/><V></V></T>"));
  ASSERT_TRUE(m.FindElem());
  EXPECT_EQ(Narrow(m.GetData()), "");
  ASSERT_TRUE(m.SetDoc(u"<T> x </T>"));
  ASSERT_TRUE(m.FindElem());
  EXPECT_EQ(Narrow(m.GetData()), " x ");
  ASSERT_TRUE(m.SetDoc(u"<T><U/><V></V></T>"));
  ASSERT_TRUE(m.FindChildElem(u"U"));
  EXPECT_EQ(Narrow(m.GetChildData()), "");
  ASSERT_TRUE(m.FindChildElem(u"V"));
  EXPECT_EQ(Narrow(m.GetChildData()), "");
}

TEST_F(MarkupRead, EntitiesMustFitInsideTheText) {
  MarkupProbe text(u"<a>&amp;lt; &quot &apos;&</a>");
  EXPECT_EQ(Narrow(text.x_TextFromDoc(3, 24)), "&lt; &quot '&");
  // An entity that does not end inside the range stays as written.
  EXPECT_EQ(Narrow(text.x_TextFromDoc(3, 6)), "&amp");
  EXPECT_EQ(Narrow(text.x_TextFromDoc(3, 7)), "&");
  EXPECT_EQ(Narrow(text.x_TextFromDoc(5, 4)), "");
}

TEST_F(MarkupRead, CursorWalksIntoAndOutOfElements) {
  ASSERT_TRUE(m.IntoElem());
  EXPECT_EQ(m.ParentPos(), 1);
  EXPECT_EQ(m.MainPos(), 0);
  EXPECT_EQ(m.Kind(), 0);
  ASSERT_TRUE(m.FindElem());
  EXPECT_EQ(Narrow(m.GetTagName()), "N");
  ASSERT_TRUE(m.FindElem(u"N"));
  EXPECT_EQ(Narrow(m.GetData()), "7");
  EXPECT_FALSE(m.FindElem(u"N"));
  EXPECT_EQ(Narrow(m.GetData()), "7");
  ASSERT_TRUE(m.IntoElem());
  EXPECT_FALSE(m.FindElem());
  ASSERT_TRUE(m.OutOfElem());
  ASSERT_TRUE(m.OutOfElem());
  EXPECT_EQ(Narrow(m.GetTagName()), "T");
  EXPECT_EQ(Narrow(m.GetChildTagName()), "N");
  EXPECT_EQ(Narrow(m.GetChildData()), "7");
  EXPECT_FALSE(m.OutOfElem());
}

TEST_F(MarkupRead, IntoElemNeedsAnElementAtTheMainPosition) {
  m.ResetMainPos();
  EXPECT_EQ(m.Kind(), 0);
  EXPECT_FALSE(m.IntoElem());
  m.ResetPos();
  EXPECT_FALSE(m.IntoElem());
  EXPECT_FALSE(m.OutOfElem());
}

TEST_F(MarkupRead, FindChildElemFirstTakesTheFirstElementAsMain) {
  m.ResetPos();
  ASSERT_TRUE(m.FindChildElem(u"E"));
  EXPECT_EQ(Narrow(m.GetTagName()), "T");
  EXPECT_EQ(Narrow(m.GetChildTagName()), "E");
  EXPECT_FALSE(m.FindChildElem(u"E"));
  EXPECT_EQ(Narrow(m.GetChildTagName()), "E");
  m.ResetChildPos();
  EXPECT_EQ(m.Kind(), 1);
  EXPECT_EQ(m.ChildPos(), 0);
}

TEST_F(MarkupRead, NameMatchesAToleratedSuffixOfTheSearchName) {
  m.ResetPos();
  EXPECT_TRUE(m.FindElem(u"T x"));
  m.ResetPos();
  EXPECT_TRUE(m.FindElem(u"T[1]"));
  m.ResetPos();
  EXPECT_FALSE(m.FindElem(u"Tx"));
  m.ResetPos();
  EXPECT_FALSE(m.FindElem(u"t"));
}

TEST(MarkupReadEmpty, EverythingFailsQuietlyWithoutAnIndex) {
  MarkupProbe m;
  EXPECT_FALSE(m.FindElem());
  EXPECT_FALSE(m.FindChildElem());
  EXPECT_EQ(Narrow(m.GetTagName()), "");
  EXPECT_EQ(Narrow(m.GetData()), "");
  EXPECT_EQ(Narrow(m.GetAttrib(u"a")), "");
  EXPECT_EQ(m.GetDataInt(u"N", 5), 5);
  EXPECT_FALSE(m.SetAttrib(u"a", u"1"));
  EXPECT_FALSE(m.AddChildElem(u"a"));
}
