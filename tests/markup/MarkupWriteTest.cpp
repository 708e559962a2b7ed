#include <gtest/gtest.h>

#include <string>

#include "markup/MarkupProbe.h"

using markup_probe::IndexMismatch;
using markup_probe::Layout;
using markup_probe::Narrow;

namespace {

std::string Doc(const CMarkup& m) { return Narrow(m.GetDoc()); }

}  // namespace

TEST(MarkupWrite, FirstChildOpensAnEmptyRoot) {
  MarkupProbe m;
  ASSERT_TRUE(m.AddElem(u"LINETYPETABLE", nullptr));
  EXPECT_EQ(Doc(m), "<LINETYPETABLE/>\r\n");
  EXPECT_EQ(Layout(m), "LINETYPETABLE<0,15,14,15>");
  EXPECT_TRUE(m.IsWellFormed());
  ASSERT_TRUE(m.AddChildElem(u"A", u"1"));
  EXPECT_EQ(Doc(m), "<LINETYPETABLE>\r\n<A>1</A>\r\n</LINETYPETABLE>\r\n");
  EXPECT_EQ(Layout(m), "LINETYPETABLE<0,14,27,42>(A<17,19,21,24>)");
  EXPECT_EQ(Narrow(m.GetTagName()), "LINETYPETABLE");
  EXPECT_EQ(Narrow(m.GetChildTagName()), "A");
  EXPECT_EQ(IndexMismatch(m), "");
}

TEST(MarkupWrite, OnlyOneRootElement) {
  MarkupProbe m;
  ASSERT_TRUE(m.AddElem(u"R"));
  EXPECT_FALSE(m.AddElem(u"S"));
  m.ResetPos();
  EXPECT_FALSE(m.AddElem(u"S", u"x"));
  EXPECT_EQ(Doc(m), "<R/>\r\n");
}

TEST(MarkupWrite, TableOfRecordsIsWrittenFlushLeft) {
  MarkupProbe m;
  ASSERT_TRUE(m.AddElem(u"TABLE"));
  ASSERT_TRUE(m.SetAttrib(u"version", u"2"));
  ASSERT_TRUE(m.IntoElem());
  for (const char16_t* name : {u"one", u"two"}) {
    ASSERT_TRUE(m.AddElem(u"LINE"));
    ASSERT_TRUE(m.AddChildElem(u"NAME", name));
    ASSERT_TRUE(m.AddChildElem(u"EMPTY", u""));
    ASSERT_TRUE(m.SetChildAttrib(u"k", u"v"));
  }
  EXPECT_EQ(Doc(m),
            "<TABLE version=\"2\">\r\n"
            "<LINE>\r\n<NAME>one</NAME>\r\n<EMPTY k=\"v\"/>\r\n</LINE>\r\n"
            "<LINE>\r\n<NAME>two</NAME>\r\n<EMPTY k=\"v\"/>\r\n</LINE>\r\n"
            "</TABLE>\r\n");
  EXPECT_EQ(IndexMismatch(m), "");
  ASSERT_TRUE(m.OutOfElem());
  EXPECT_EQ(Narrow(m.GetTagName()), "TABLE");
  EXPECT_EQ(Narrow(m.GetChildTagName()), "LINE");
}

TEST(MarkupWrite, EscapesDataAndAttributeValues) {
  MarkupProbe m(u"<R/>");
  ASSERT_TRUE(m.FindElem());
  ASSERT_TRUE(m.AddChildElem(u"T", u"a<b&c>d 'q' \"w\""));
  ASSERT_TRUE(m.SetChildAttrib(u"s", u"it's <\"&\">"));
  EXPECT_EQ(Doc(m),
            "<R>\r\n<T s=\"it&apos;s &lt;&quot;&amp;&quot;&gt;\">"
            "a&lt;b&amp;c&gt;d 'q' \"w\"</T>\r\n</R>");
  EXPECT_EQ(Narrow(m.GetChildAttrib(u"s")), "it's <\"&\">");
  EXPECT_EQ(Narrow(m.GetChildData()), "a<b&c>d 'q' \"w\"");
  EXPECT_EQ(IndexMismatch(m), "");
}

TEST(MarkupWrite, SetAttribReplacesAnExistingValueInItsQuotes) {
  MarkupProbe m(u"<R a='1' b=\"\"><C/></R>");
  ASSERT_TRUE(m.FindElem());
  ASSERT_TRUE(m.SetAttrib(u"a", u"x'y"));
  ASSERT_TRUE(m.AddAttrib(u"b", u"long value"));
  EXPECT_EQ(Doc(m), "<R a='x&apos;y' b=\"long value\"><C/></R>");
  EXPECT_EQ(Layout(m), "R<0,30,35,38>(C<31,34,33,34>)");
  ASSERT_TRUE(m.SetAttrib(u"a", u""));
  EXPECT_EQ(Doc(m), "<R a='' b=\"long value\"><C/></R>");
  EXPECT_EQ(Narrow(m.GetAttrib(u"b")), "long value");
  EXPECT_EQ(IndexMismatch(m), "");
}

TEST(MarkupWrite, NewAttributeGoesBeforeTheSlashOfAnEmptyElement) {
  MarkupProbe m(u"<R><E /><F></F></R>");
  ASSERT_TRUE(m.FindElem());
  ASSERT_TRUE(m.FindChildElem(u"E"));
  ASSERT_TRUE(m.SetChildAttrib(u"n", u"1"));
  ASSERT_TRUE(m.FindChildElem(u"F"));
  ASSERT_TRUE(m.AddChildAttrib(u"m", u"2"));
  EXPECT_EQ(Doc(m), "<R><E  n=\"1\"/><F m=\"2\"></F></R>");
  EXPECT_EQ(IndexMismatch(m), "");
}

TEST(MarkupWrite, AttributeWritesNeedAnElementPosition) {
  MarkupProbe m(u"<R><C/></R>");
  EXPECT_FALSE(m.SetAttrib(u"a", u"1"));
  ASSERT_TRUE(m.FindElem());
  EXPECT_FALSE(m.SetChildAttrib(u"a", u"1"));
  EXPECT_FALSE(m.SetAttrib(u"", u"1"));
  EXPECT_FALSE(m.SetAttrib(u"a b", u"1"));
  EXPECT_FALSE(m.SetAttrib(u"a>", u"1"));
  EXPECT_FALSE(m.SetAttrib(nullptr, u"1"));
  EXPECT_EQ(Doc(m), "<R><C/></R>");
  // A null value is written as an empty one.
  ASSERT_TRUE(m.SetAttrib(u"a", nullptr));
  EXPECT_EQ(Doc(m), "<R a=\"\"><C/></R>");
}

TEST(MarkupWrite, NamesThatWouldNotReadBackAreRefused) {
  MarkupProbe m;
  for (const char16_t* name : {u"", u"a b", u"a/", u"?x", u"!x", u"\"q", u"'q", u"a=b", u"a>"})
    EXPECT_FALSE(m.AddElem(name)) << Narrow(name);
  EXPECT_FALSE(m.AddElem(nullptr));
  EXPECT_EQ(Doc(m), "");
  EXPECT_TRUE(m.AddElem(u"\u0161[1]"));
}

TEST(MarkupWrite, ChildIntoAnElementWithNothingBetweenItsTags) {
  MarkupProbe m(u"<p></p>");
  ASSERT_TRUE(m.FindElem());
  ASSERT_TRUE(m.AddChildElem(u"n"));
  EXPECT_EQ(Doc(m), "<p>\r\n<n/>\r\n</p>");
  EXPECT_EQ(Layout(m), "p<0,2,11,14>(n<5,8,7,8>)");
}

TEST(MarkupWrite, ChildAfterTextGoesBeforeTheEndTag) {
  MarkupProbe m(u"<p>text<!-- c --></p>");
  ASSERT_TRUE(m.FindElem());
  ASSERT_TRUE(m.AddChildElem(u"n", u"1"));
  EXPECT_EQ(Doc(m), "<p>text<!-- c --><n>1</n>\r\n</p>");
  EXPECT_EQ(IndexMismatch(m), "");
}

TEST(MarkupWrite, EmptyParentWithAttributesIsOpened) {
  MarkupProbe m(u"<r><p a=\"1\" /><q/></r>");
  ASSERT_TRUE(m.FindElem());
  ASSERT_TRUE(m.IntoElem());
  ASSERT_TRUE(m.FindElem(u"p"));
  ASSERT_TRUE(m.AddChildElem(u"n"));
  EXPECT_EQ(Doc(m), "<r><p a=\"1\" >\r\n<n/>\r\n</p><q/></r>");
  EXPECT_EQ(Layout(m), "r<0,2,29,32>(p<3,12,21,24>(n<15,18,17,18>) q<25,28,27,28>)");
  EXPECT_EQ(IndexMismatch(m), "");
}

TEST(MarkupWrite, EmptyParentWithADoubledSlashIsRefused) {
  // "<p/>" after the first slash would still close the start tag as an empty element.
  MarkupProbe m(u"<p//>");
  ASSERT_TRUE(m.FindElem());
  EXPECT_FALSE(m.AddChildElem(u"n"));
  EXPECT_EQ(Doc(m), "<p//>");
}

TEST(MarkupWrite, SiblingGoesAfterTheMainElementBeforeTheNextTag) {
  MarkupProbe m(u"<r>\r\n<a/>\r\n<b/>\r\n</r>\r\n");
  ASSERT_TRUE(m.FindElem());
  ASSERT_TRUE(m.IntoElem());
  ASSERT_TRUE(m.FindElem(u"a"));
  ASSERT_TRUE(m.AddElem(u"n", u"x"));
  EXPECT_EQ(Doc(m), "<r>\r\n<a/>\r\n<n>x</n>\r\n<b/>\r\n</r>\r\n");
  EXPECT_EQ(Narrow(m.GetTagName()), "n");
  ASSERT_TRUE(m.FindElem());
  EXPECT_EQ(Narrow(m.GetTagName()), "b");
  EXPECT_EQ(IndexMismatch(m), "");
}

TEST(MarkupWrite, SiblingAfterTextKeepsItsPlace) {
  MarkupProbe m(u"<r><a/> x <b/></r>");
  ASSERT_TRUE(m.FindChildElem(u"a"));
  ASSERT_TRUE(m.AddChildElem(u"n"));
  EXPECT_EQ(Doc(m), "<r><a/><n/>\r\n x <b/></r>");
  EXPECT_EQ(IndexMismatch(m), "");
}

TEST(MarkupWrite, InsertBeforePlacesTheElementAtTheStart) {
  MarkupProbe m(u"<r> <a/><b/></r>");
  ASSERT_TRUE(m.FindElem());
  ASSERT_TRUE(m.x_AddElem(u"first", nullptr, true, true));
  EXPECT_EQ(Doc(m), "<r> <first/>\r\n<a/><b/></r>");
  ASSERT_TRUE(m.FindChildElem(u"b"));
  ASSERT_TRUE(m.x_AddElem(u"mid", nullptr, true, true));
  EXPECT_EQ(Doc(m), "<r> <first/>\r\n<a/><mid/>\r\n<b/></r>");
  EXPECT_EQ(Layout(m),
            "r<0,2,30,33>(first<4,11,10,11> a<14,17,16,17> mid<18,23,22,23> b<26,29,28,29>)");
  EXPECT_EQ(IndexMismatch(m), "");
}

TEST(MarkupWrite, RootAfterAPrologOnlyDocument) {
  MarkupProbe m;
  EXPECT_FALSE(m.SetDoc(u"<?xml version=\"1.0\"?>\r\n<!-- table -->\r\n"));
  ASSERT_TRUE(m.AddElem(u"R", u"1"));
  EXPECT_EQ(Doc(m), "<?xml version=\"1.0\"?>\r\n<!-- table -->\r\n<R>1</R>\r\n");
  EXPECT_TRUE(m.IsWellFormed());
  EXPECT_EQ(m.Entry(0).nEndOpen, 39);
  EXPECT_EQ(IndexMismatch(m), "");
}

TEST(MarkupWrite, RootIsNotAppendedAfterTextThatStartsAnElement) {
  MarkupProbe m;
  for (const char16_t* doc : {u"<a>", u"</x>", u"<!DOCTYPE x", u"< ", u"<!-- open"}) {
    EXPECT_FALSE(m.SetDoc(doc));
    EXPECT_FALSE(m.AddElem(u"R")) << Narrow(doc);
    EXPECT_EQ(m.GetDoc(), std::u16string(doc));
  }
}

TEST(MarkupWrite, EditsDeepInsideShiftEverythingAfterThem) {
  MarkupProbe m(u"<r><a><b><c/></b><d/></a><e><f/></e></r>");
  ASSERT_TRUE(m.FindElem());
  ASSERT_TRUE(m.IntoElem());
  ASSERT_TRUE(m.FindElem(u"a"));
  ASSERT_TRUE(m.IntoElem());
  ASSERT_TRUE(m.FindElem(u"b"));
  ASSERT_TRUE(m.SetAttrib(u"x", u"12"));
  ASSERT_TRUE(m.AddChildElem(u"g", u"z"));
  EXPECT_EQ(Doc(m), "<r><a><b x=\"12\"><c/><g>z</g>\r\n</b><d/></a><e><f/></e></r>");
  EXPECT_EQ(IndexMismatch(m), "");
}

TEST(MarkupWrite, TwentyTwoThousandRecordsStayConsistent) {
  MarkupProbe m;
  ASSERT_TRUE(m.AddElem(u"LINETYPETABLE"));
  ASSERT_TRUE(m.IntoElem());
  for (int i = 0; i < 22000; ++i) {
    ASSERT_TRUE(m.AddElem(u"LINETYPE"));
    ASSERT_TRUE(m.SetAttrib(u"id", u"7"));
    ASSERT_TRUE(m.AddChildElem(u"NAME", u"Ograda"));
    ASSERT_TRUE(m.AddChildElem(u"COLOR", u"255"));
  }
  EXPECT_EQ(m.FreeIndex(), 1 + 22000 * 3 + 1);
  EXPECT_EQ(IndexMismatch(m), "");
  const std::string record = "<LINETYPE id=\"7\">\r\n<NAME>Ograda</NAME>\r\n<COLOR>255</COLOR>\r\n</LINETYPE>\r\n";
  EXPECT_EQ(Doc(m).size(), 17 + 22000 * record.size() + 18);
  EXPECT_EQ(Doc(m).substr(17, record.size()), record);
}
