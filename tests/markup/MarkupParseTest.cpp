// The parser that builds the element index, and the scanner beneath it.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "markup/MarkupProbe.h"

using markup_probe::Layout;
using markup_probe::Narrow;

namespace {

// The error text a failed parse of `doc` leaves.
std::string ErrorOf(const std::u16string& doc) {
  MarkupProbe m;
  EXPECT_FALSE(m.SetDoc(doc));
  EXPECT_FALSE(m.IsWellFormed());
  EXPECT_EQ(m.FreeIndex(), 1);
  return Narrow(m.GetError());
}

std::u16string Repeat(const std::u16string& text, int times) {
  std::u16string out;
  for (int i = 0; i < times; ++i) out += text;
  return out;
}

}  // namespace

TEST(MarkupParse, IndexesEachElementWhereItsTagsLie) {
  const struct {
    const char16_t* doc;
    const char* layout;
  } cases[] = {
      {u"<a/>", "a<0,3,2,3>"},
      {u"<?xml version=\"1.0\"?><!-- c --><a><b/></a>", "a<31,33,38,41>(b<34,37,36,37>)"},
      {u"<r>\r\n <a x='1'><b></b>t</a>\r\n <c/>\r\n</r>", "r<0,2,36,39>(a<6,14,23,26>(b<15,17,18,21>) c<30,33,32,33>)"},
      {u"<USER1><USER10></USER10></USER1>", "USER1<0,6,24,31>(USER10<7,14,15,23>)"},
      // Only the first element is indexed.
      {u"<a></a><b></b>", "a<0,2,3,6>"},
      {u"<a/>trailing <unclosed", "a<0,3,2,3>"},
      {u"<a>x<?p ?><!-- <b> --><![CDATA[<c>]]><!X y='>'>y</a>", "a<0,2,48,51>"},
      // End tags tolerate spaces, and anything up to a '>' that begins a token.
      {u"<a></ a >", "a<0,2,3,8>"},
      {u"<a></a b=\">\" c>", "a<0,2,3,14>"},
      {u"<a><b></b/></a x=\">\">", "a<0,2,11,20>(b<3,5,6,10>)"},
      {u"<r>< a>t</a>< b/></r>", "r<0,2,17,20>(a<3,6,8,11> b<12,16,15,16>)"},
      // The end tag may name only the part of the tag name before a '['.
      {u"<a[1]></a>", "a[1]<0,5,6,9>"},
      // A quoted '>' still ends the start tag.
      {u"<a x=\">\"/></a>", "a<0,6,10,13>"},
      // Document type brackets count only at the start of a token.
      {u"<!DOCTYPE a [ <!ENTITY b \"c>\"> ]><a/>", "a<33,36,35,36>"},
      {u"<!DOCTYPE a [x ]><a/>", "a<17,20,19,20>"},
      // Node ends are searched for past their own openers; a comment needs only "<!-".
      {u"<!-->--><a/>", "a<8,11,10,11>"},
      {u"<?>?><a/>", "a<5,8,7,8>"},
      {u"<!-x --><a/>", "a<8,11,10,11>"},
  };
  for (const auto& c : cases) {
    MarkupProbe m;
    ASSERT_TRUE(m.SetDoc(c.doc)) << Narrow(c.doc);
    EXPECT_TRUE(m.IsWellFormed());
    EXPECT_EQ(Layout(m), c.layout) << Narrow(c.doc);
    EXPECT_EQ(m.MainPos(), 0);
  }

  // The document entry's scan cursor rests on the root's '<'.
  MarkupProbe m(u"<?xml?> <a/>");
  EXPECT_EQ(m.Entry(0).nEndOpen, 8);
  // With the start tag ended early, the rest is data, and the attribute's closing quote
  // lies beyond the tag, so the element has no such attribute.
  ASSERT_TRUE(m.SetDoc(u"<a x=\">\"/></a>"));
  ASSERT_TRUE(m.FindElem(u"a"));
  EXPECT_EQ(Narrow(m.GetData()), "\"/>");
  EXPECT_EQ(Narrow(m.GetAttrib(u"x")), "");
}

TEST(MarkupParse, ReportsEachErrorInItsOwnWords) {
  const struct {
    const char16_t* doc;
    const char* error;
  } cases[] = {
      {u"just text", "Element tag not found"},
      {u"<!-- only a comment -->  ", "Element tag not found"},
      {u"<", "Abrupt end within tag"},
      {u"<a>< \r\n", "Abrupt end within tag"},
      {u"<\"a\">", "Tag starts with quote"},
      {u"<!-- open", "Invalid node"},
      {u"<?xml version='1.0'", "Invalid node"},
      {u"<a><![CDATA[x</a>", "Invalid node"},
      {u"<!DOCTYPE a [ ]", "Invalid node"},
      {u"<!", "Invalid node"},
      {u"<!DOCTYPE a [x]><a/>", "Invalid node"},  // "x]" does not begin with ']'
      {u"<!--><a/>", "Invalid node"},
      {u"<?><a/>", "Invalid node"},
      {u"< ?x?><a/>", "Invalid node"},
      {u"<a>< !-- c --></a>", "Invalid node"},
      {u"<a b='1'", "End of tag not found"},
      {u"<a><b></a>", "End tag does not correspond to b"},
      {u"<a></ab>", "End tag does not correspond to a"},
      {u"<ab></a>", "End tag does not correspond to ab"},
      {u"<a></>", "End tag does not correspond to a"},
      // A tag named by a single delimiter cannot be closed: "</>" names nothing.
      {u"<r><=></></r>", "End tag does not correspond to ="},
      {u"<a></a", "End tag not completed for element a"},
      {u"<a></a '>'", "End tag not completed for element a"},
      // A missing end tag is reported by the innermost open element.
      {u"<a>", "End tag of a element not found"},
      {u"<a><b/>text", "End tag of a element not found"},
      {u"<a><b>", "End tag of b element not found"},
  };
  for (const auto& c : cases) EXPECT_EQ(ErrorOf(c.doc), c.error) << Narrow(c.doc);
}

TEST(MarkupParse, OnlyAnotherErrorReplacesTheErrorText) {
  MarkupProbe m;
  m.SetLastError(u"previous");
  // An end tag at document level fails without a message.
  EXPECT_FALSE(m.SetDoc(u"</a>"));
  EXPECT_EQ(Narrow(m.GetError()), "previous");
  EXPECT_FALSE(m.SetDoc(u"<a>"));
  EXPECT_FALSE(m.SetDoc(u""));
  EXPECT_FALSE(m.SetDoc(static_cast<const char16_t*>(nullptr)));
  EXPECT_TRUE(m.GetDoc().empty());
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

// Texts of every length around the width the searches step by, so that each '<', '>' and
// null falls at every offset within a step and at the very end of the document.
TEST(MarkupParse, TagsAndNullsAreFoundAtEveryOffset) {
  for (int n = 0; n <= 20; ++n) {
    SCOPED_TRACE(n);
    const std::u16string xs(static_cast<std::size_t>(n), u'x');
    const std::string bx = "b" + std::string(static_cast<std::size_t>(n), 'x');
    MarkupProbe m;
    ASSERT_TRUE(m.SetDoc(u"<a>" + xs + u"<b" + xs + u"/>" + xs + u"</a>"));
    const int b = 3 + n;
    const int end = b + 2 * n + 4;
    const auto pos = [](int p, int q, int r, int s) {
      return "<" + std::to_string(p) + "," + std::to_string(q) + "," + std::to_string(r) + "," + std::to_string(s) +
             ">";
    };
    EXPECT_EQ(Layout(m), "a" + pos(0, 2, end, end + 3) + "(" + bx + pos(b, b + n + 3, b + n + 2, b + n + 3) + ")");

    std::u16string cut = u"<r><a>" + xs;
    cut += u'\0';
    cut += u"</a></r>";
    EXPECT_EQ(ErrorOf(cut), "End tag of a element not found");
    EXPECT_EQ(ErrorOf(u"<r><a" + xs), "End of tag not found");
    EXPECT_EQ(ErrorOf(u"<r><a>" + xs), "End tag of a element not found");
  }
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
