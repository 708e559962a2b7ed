#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "markup/MarkupProbe.h"

using markup_probe::Layout;
using markup_probe::Narrow;

namespace {

// The error text a failed parse of `doc` leaves.
std::string ErrorOf(const char16_t* doc) {
  MarkupProbe m;
  EXPECT_FALSE(m.SetDoc(doc));
  EXPECT_FALSE(m.IsWellFormed());
  EXPECT_EQ(m.FreeIndex(), 1);
  return Narrow(m.GetError());
}

std::u16string Repeat(const std::u16string& text, int times) {
  std::u16string out;
  out.reserve(text.size() * static_cast<std::size_t>(times));
  for (int i = 0; i < times; ++i) out += text;
  return out;
}

}  // namespace

TEST(MarkupParse, EmptyElementEndsAtItsSlash) {
  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(u"<a/>"));
  EXPECT_TRUE(m.IsWellFormed());
  EXPECT_EQ(Layout(m), "a<0,3,2,3>");
  EXPECT_EQ(m.Entry(1).nParent, 0);
  EXPECT_EQ(m.Entry(0).nFirstChild, 1);
  EXPECT_EQ(m.FreeIndex(), 2);
}

TEST(MarkupParse, SkipsDeclarationAndCommentBeforeTheRoot) {
  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(u"<?xml version=\"1.0\"?><!-- c --><a><b/></a>"));
  EXPECT_EQ(Layout(m), "a<31,33,38,41>(b<34,37,36,37>)");
  // The document entry's scan cursor rests on the root's '<'.
  EXPECT_EQ(m.Entry(0).nEndOpen, 31);
  EXPECT_EQ(m.ParentPos(), 0);
  EXPECT_EQ(m.MainPos(), 0);
  EXPECT_EQ(m.Kind(), 0);
}

TEST(MarkupParse, IndexesNestedSiblingsInDocumentOrder) {
  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(u"<r>\r\n <a x='1'><b></b>t</a>\r\n <c/>\r\n</r>"));
  EXPECT_EQ(Layout(m), "r<0,2,36,39>(a<6,14,23,26>(b<15,17,18,21>) c<30,33,32,33>)");
  const auto& a = m.Entry(m.Entry(1).nFirstChild);
  EXPECT_EQ(m.Entry(a.nNextSibling).nNextSibling, 0);
}

TEST(MarkupParse, OnlyTheFirstElementIsIndexed) {
  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(u"<a></a><b></b>"));
  EXPECT_EQ(Layout(m), "a<0,2,3,6>");
  ASSERT_TRUE(m.SetDoc(u"<a/>trailing <unclosed"));
  EXPECT_EQ(Layout(m), "a<0,3,2,3>");
}

TEST(MarkupParse, SkipsInstructionsCommentsCDataAndDocTypesInsideContent) {
  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(u"<a>x<?p ?><!-- <b> --><![CDATA[<c>]]><!X y='>'>y</a>"));
  EXPECT_EQ(Layout(m), "a<0,2,48,51>");
}

TEST(MarkupParse, EndTagToleratesSpacesAndExtraTokens) {
  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(u"<a></ a >"));
  EXPECT_EQ(Layout(m), "a<0,2,3,8>");
  ASSERT_TRUE(m.SetDoc(u"<a></a b=\">\" c>"));
  EXPECT_EQ(Layout(m), "a<0,2,3,14>");
  // The end tag may name only the part of the tag name before a '['.
  ASSERT_TRUE(m.SetDoc(u"<a[1]></a>"));
  EXPECT_EQ(Narrow(m.TagName(1)), "a[1]");
}

TEST(MarkupParse, QuotedGreaterThanEndsTheStartTagEarly) {
  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(u"<a x=\">\"/></a>"));
  EXPECT_EQ(Layout(m), "a<0,6,10,13>");
  ASSERT_TRUE(m.FindElem(u"a"));
  EXPECT_EQ(Narrow(m.GetData()), "\"/>");
  // The value's closing quote lies beyond the tag, so the element has no such attribute.
  EXPECT_EQ(Narrow(m.GetAttrib(u"x")), "");
}

TEST(MarkupParse, DocTypeBracketsCountByTokenStart) {
  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(u"<!DOCTYPE a [ <!ENTITY b \"c>\"> ]><a/>"));
  EXPECT_EQ(Layout(m), "a<33,36,35,36>");
  ASSERT_TRUE(m.SetDoc(u"<!DOCTYPE a [x ]><a/>"));
  EXPECT_EQ(Layout(m), "a<17,20,19,20>");
  // "x]" does not begin with ']', so the '>' after it is still inside the brackets.
  EXPECT_EQ(ErrorOf(u"<!DOCTYPE a [x]><a/>"), "Invalid node");
}

TEST(MarkupParse, NodeEndsAreSearchedPastTheirOwnOpeners) {
  MarkupProbe m;
  EXPECT_EQ(ErrorOf(u"<!--><a/>"), "Invalid node");
  ASSERT_TRUE(m.SetDoc(u"<!-->--><a/>"));
  EXPECT_EQ(Layout(m), "a<8,11,10,11>");
  EXPECT_EQ(ErrorOf(u"<?><a/>"), "Invalid node");
  ASSERT_TRUE(m.SetDoc(u"<?>?><a/>"));
  EXPECT_EQ(Layout(m), "a<5,8,7,8>");
  // A comment opener needs only "<!-".
  ASSERT_TRUE(m.SetDoc(u"<!-x --><a/>"));
  EXPECT_EQ(Layout(m), "a<8,11,10,11>");
}

TEST(MarkupParse, ReportsEachErrorInItsOwnWords) {
  EXPECT_EQ(ErrorOf(u"just text"), "Element tag not found");
  EXPECT_EQ(ErrorOf(u"<!-- only a comment -->  "), "Element tag not found");
  EXPECT_EQ(ErrorOf(u"<"), "Abrupt end within tag");
  EXPECT_EQ(ErrorOf(u"<a>< \r\n"), "Abrupt end within tag");
  EXPECT_EQ(ErrorOf(u"<\"a\">"), "Tag starts with quote");
  EXPECT_EQ(ErrorOf(u"<!-- open"), "Invalid node");
  EXPECT_EQ(ErrorOf(u"<?xml version='1.0'"), "Invalid node");
  EXPECT_EQ(ErrorOf(u"<a><![CDATA[x</a>"), "Invalid node");
  EXPECT_EQ(ErrorOf(u"<!DOCTYPE a [ ]"), "Invalid node");
  EXPECT_EQ(ErrorOf(u"<!"), "Invalid node");
  EXPECT_EQ(ErrorOf(u"<a b='1'"), "End of tag not found");
  EXPECT_EQ(ErrorOf(u"<a><b></a>"), "End tag does not correspond to b");
  EXPECT_EQ(ErrorOf(u"<a></ab>"), "End tag does not correspond to a");
  EXPECT_EQ(ErrorOf(u"<ab></a>"), "End tag does not correspond to ab");
  EXPECT_EQ(ErrorOf(u"<a></>"), "End tag does not correspond to a");
  EXPECT_EQ(ErrorOf(u"<a></a"), "End tag not completed for element a");
  EXPECT_EQ(ErrorOf(u"<a></a '>'"), "End tag not completed for element a");
}

TEST(MarkupParse, MissingEndTagIsReportedByTheOpenElement) {
  EXPECT_EQ(ErrorOf(u"<a>"), "End tag of a element not found");
  EXPECT_EQ(ErrorOf(u"<a><b/>text"), "End tag of a element not found");
  EXPECT_EQ(ErrorOf(u"<a><b>"), "End tag of b element not found");
}

TEST(MarkupParse, SpaceBeforeQuestionMarkOrBangIsAnInvalidNode) {
  EXPECT_EQ(ErrorOf(u"< ?x?><a/>"), "Invalid node");
  EXPECT_EQ(ErrorOf(u"<a>< !-- c --></a>"), "Invalid node");
}

TEST(MarkupParse, EndTagAtDocumentLevelFailsWithoutAMessage) {
  MarkupProbe m;
  m.SetLastError(u"previous");
  EXPECT_FALSE(m.SetDoc(u"</a>"));
  EXPECT_EQ(Narrow(m.GetError()), "previous");
}

TEST(MarkupParse, EmptyOrNullDocumentKeepsThePreviousError) {
  MarkupProbe m;
  EXPECT_FALSE(m.SetDoc(u"<a>"));
  EXPECT_FALSE(m.SetDoc(u""));
  EXPECT_FALSE(m.IsWellFormed());
  EXPECT_EQ(Narrow(m.GetError()), "End tag of a element not found");
  EXPECT_FALSE(m.SetDoc(static_cast<const char16_t*>(nullptr)));
  EXPECT_EQ(Narrow(m.GetError()), "End tag of a element not found");
  EXPECT_TRUE(m.GetDoc().empty());
  // A later success does not clear it either.
  EXPECT_TRUE(m.SetDoc(u"<a/>"));
  EXPECT_EQ(Narrow(m.GetError()), "End tag of a element not found");
}

TEST(MarkupParse, FailedParseKeepsTheTextAndAnEmptyIndex) {
  MarkupProbe m(u"<a><b/></a>");
  ASSERT_TRUE(m.FindElem());
  EXPECT_FALSE(m.SetDoc(u"<a><b/>"));
  EXPECT_EQ(Narrow(m.GetDoc()), "<a><b/>");
  EXPECT_EQ(m.FreeIndex(), 1);
  EXPECT_EQ(m.Entry(0).nFirstChild, 0);
  EXPECT_EQ(m.MainPos(), 0);
  EXPECT_FALSE(m.FindElem());
}

TEST(MarkupParse, NullCharacterEndsTheTextTheParserSees) {
  MarkupProbe m;
  std::u16string text = u"<a/>";
  text += u'\0';
  text += u"<b>";
  EXPECT_TRUE(m.SetDoc(text));
  EXPECT_EQ(m.GetDoc(), text);
  EXPECT_EQ(Layout(m), "a<0,3,2,3>");

  // A root added to a document without one goes before the null, where a parse finds it.
  text = u"<?p?>";
  text += u'\0';
  text += u"<x";
  EXPECT_FALSE(m.SetDoc(text));
  ASSERT_TRUE(m.AddElem(u"R"));
  std::u16string expected = u"<?p?><R/>\r\n";
  expected += u'\0';
  expected += u"<x";
  EXPECT_EQ(m.GetDoc(), expected);
  EXPECT_EQ(markup_probe::IndexMismatch(m), "");
}

TEST(MarkupParse, IndexIsPreallocatedFromLengthAndGrowsByHalf) {
  MarkupProbe sparse;
  ASSERT_TRUE(sparse.SetDoc(u"<a>" + Repeat(u" ", 1000) + u"</a>"));
  EXPECT_EQ(sparse.IndexSize(), 1007 / 64 + 8);

  // 407 characters give 14 entries; 101 elements need 102: 14, 21, 31, 46, 69, 103.
  MarkupProbe dense;
  ASSERT_TRUE(dense.SetDoc(u"<a>" + Repeat(u"<b/>", 100) + u"</a>"));
  EXPECT_EQ(dense.FreeIndex(), 102);
  EXPECT_EQ(dense.IndexSize(), 103);
  // It never shrinks for a shorter document.
  ASSERT_TRUE(dense.SetDoc(u"<a/>"));
  EXPECT_EQ(dense.IndexSize(), 103);
}

TEST(MarkupParse, MillionNestedElementsParseWithoutRecursion) {
  const int depth = 1000000;
  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(Repeat(u"<a>", depth) + Repeat(u"</a>", depth)));
  EXPECT_EQ(m.FreeIndex(), depth + 1);
  const auto& innermost = m.Entry(depth);
  EXPECT_EQ(innermost.nTagOpen, 3 * (depth - 1));
  EXPECT_EQ(innermost.nEndClose, 3 * depth + 3);
  EXPECT_EQ(m.Entry(1).nEndClose, 7 * depth - 1);

  EXPECT_FALSE(m.SetDoc(Repeat(u"<a>", depth)));
  EXPECT_EQ(Narrow(m.GetError()), "End tag of a element not found");
}

TEST(MarkupParse, ThousandsOfAttributesAndLoneSurrogatesAreOrdinaryText) {
  std::u16string tag = u"<a";
  for (int i = 0; i < 20000; ++i) tag += u" k" + vantrel1::FromUtf8(std::to_string(i)) + u"='v'";
  tag += u" last=\"\xD800\">\xDC00</a>";
  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(tag));
  ASSERT_TRUE(m.FindElem(u"a"));
  EXPECT_EQ(m.GetAttrib(u"last"), std::u16string(u"\xD800"));
  EXPECT_EQ(m.GetAttrib(u"k19999"), std::u16string(u"v"));
  EXPECT_EQ(m.GetData(), std::u16string(u"\xDC00"));
}

TEST(MarkupParse, IndexOutsideTheEntriesInUseThrows) {
  MarkupProbe m(u"<a><b/></a>");
  EXPECT_NO_THROW(m.Entry(2));
  EXPECT_THROW(m.Entry(3), std::invalid_argument);
  EXPECT_THROW(m.Entry(-1), std::invalid_argument);
  EXPECT_THROW(m.TagName(7), std::invalid_argument);
}

TEST(MarkupParse, CopiesAreIndependentAndSelfAssignmentThrows) {
  MarkupProbe a(u"<a><b/></a>");
  ASSERT_TRUE(a.FindElem());
  MarkupProbe b(a);
  EXPECT_EQ(b.MainPos(), 1);
  EXPECT_EQ(Layout(b), Layout(a));
  MarkupProbe c;
  c = a;
  EXPECT_TRUE(c.AddChildElem(u"n"));
  EXPECT_EQ(Narrow(a.GetDoc()), "<a><b/></a>");
  EXPECT_EQ(Narrow(c.GetDoc()), "<a><b/><n/>\r\n</a>");
  CMarkup& self = c;
  EXPECT_THROW(self = c, std::invalid_argument);
}

TEST(MarkupScanner, TokensStopAtDelimitersAndQuotes) {
  // Each row: first, last, next scan position, quoted.
  const char16_t* text = u"  name=\"v a\" / 'open";
  const int expected[][4] = {{2, 5, 6, 0}, {6, 6, 7, 0}, {8, 10, 12, 1}, {13, 13, 14, 0},
                             {16, 19, 20, 1}};  // an unclosed quote runs to the end
  MarkupProbe::TokenPos token(text);
  for (const auto& row : expected) {
    ASSERT_TRUE(MarkupProbe::x_FindToken(token));
    EXPECT_EQ(token.nFirst, row[0]);
    EXPECT_EQ(token.nLast, row[1]);
    EXPECT_EQ(token.nScan, row[2]);
    EXPECT_EQ(token.bQuoted, row[3]);
  }
  EXPECT_FALSE(MarkupProbe::x_FindToken(token));
  EXPECT_EQ(token.nFirst, 20);
  EXPECT_EQ(token.nScan, 20);
}

TEST(MarkupScanner, NodeKindsAndTheirEnds) {
  struct Case {
    const char16_t* text;
    int kind;
    int scan;
  };
  const Case cases[] = {
      {u"  x <a>", 2, 4},        {u" \r\n<a>", 4, 3},       {u"   ", 4, 3},
      {u"<?p x?>.", 16, 7},      {u"<!--x-->.", 32, 8},     {u"<![CDATA[>]]>.", 8, 13},
      {u"<!D [ > ] >.", 64, 11}, {u"<!D 'a>'>.", 64, 9},     {u"</a>", 0, 0},
      {u"<a>", 1, 0},            {u"<", 0, 0},              {u"<a", 0, 0},
      {u"<!-- x", 0, 0},         {u"", 0, 0},
  };
  MarkupProbe m;
  for (const Case& c : cases) {
    MarkupProbe::TokenPos token(c.text);
    EXPECT_EQ(m.x_ParseNode(token), c.kind) << Narrow(c.text);
    EXPECT_EQ(token.nScan, c.scan) << Narrow(c.text);
  }
}
