// Writing: every edit splices the text and must leave the index a fresh parse would build.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "markup/MarkupProbe.h"

using markup_probe::IndexMismatch;
using markup_probe::Narrow;

namespace {

std::string Doc(const CMarkup& m) { return Narrow(m.GetDoc()); }
std::string Cursor(const CMarkup& m) { return Narrow(m.GetTagName()) + "/" + Narrow(m.GetChildTagName()); }

}  // namespace

TEST(MarkupWrite, ElementsAndAttributesGoWhereTheCursorSays) {
  const struct {
    const char* what;
    const char16_t* start;
    bool (*edit)(MarkupProbe&);
    const char* doc;
    const char* cursor;  // main and child tag names afterwards
  } cases[] = {
      {"first child opens an empty root", nullptr,
       [](MarkupProbe& m) { return m.AddElem(u"LINETYPETABLE") && m.AddChildElem(u"A", u"1"); },
       "<LINETYPETABLE>\r\n<A>1</A>\r\n</LINETYPETABLE>\r\n", "LINETYPETABLE/A"},
      {"records are written flush left", nullptr,
       [](MarkupProbe& m) {
         bool ok = m.AddElem(u"TABLE") && m.SetAttrib(u"version", u"2") && m.IntoElem();
         for (const char16_t* name : {u"one", u"two"})
           ok = ok && m.AddElem(u"LINE") && m.AddChildElem(u"NAME", name) && m.AddChildElem(u"EMPTY", u"") &&
                m.SetChildAttrib(u"k", u"v");
         return ok && m.OutOfElem();
       },
       "<TABLE version=\"2\">\r\n"
       "<LINE>\r\n<NAME>one</NAME>\r\n<EMPTY k=\"v\"/>\r\n</LINE>\r\n"
       "<LINE>\r\n<NAME>two</NAME>\r\n<EMPTY k=\"v\"/>\r\n</LINE>\r\n"
       "</TABLE>\r\n",
       "TABLE/LINE"},
      {"a name is whatever scans as one token", nullptr, [](MarkupProbe& m) { return m.AddElem(u"\u0161[1]"); },
       "<\xC5\xA1[1]/>\r\n", "\xC5\xA1[1]/"},
      {"a root after a prolog", u"<?xml version=\"1.0\"?>\r\n<!-- table -->\r\n",
       [](MarkupProbe& m) { return m.AddElem(u"R", u"1"); },
       "<?xml version=\"1.0\"?>\r\n<!-- table -->\r\n<R>1</R>\r\n", "R/"},
      {"an existing value is replaced in its own quotes", u"<R a='1' b=\"\"><C/></R>",
       [](MarkupProbe& m) {
         return m.FindElem() && m.SetAttrib(u"a", u"x'y") && m.AddAttrib(u"b", u"long value") && m.SetAttrib(u"a", u"");
       },
       "<R a='' b=\"long value\"><C/></R>", "R/"},
      {"a new attribute goes before the slash of an empty element", u"<R><E /><F></F></R>",
       [](MarkupProbe& m) {
         return m.FindChildElem(u"E") && m.SetChildAttrib(u"n", u"1") && m.FindChildElem(u"F") &&
                m.AddChildAttrib(u"m", u"2");
       },
       "<R><E  n=\"1\"/><F m=\"2\"></F></R>", "R/F"},
      {"a null value is an empty one", u"<R><C/></R>",
       [](MarkupProbe& m) { return m.FindElem() && m.SetAttrib(u"a", nullptr); }, "<R a=\"\"><C/></R>", "R/"},
      {"a child between adjacent tags", u"<p></p>",
       [](MarkupProbe& m) { return m.FindElem() && m.AddChildElem(u"n"); }, "<p>\r\n<n/>\r\n</p>", "p/n"},
      {"a child after text goes before the end tag", u"<p>text<!-- c --></p>",
       [](MarkupProbe& m) { return m.FindElem() && m.AddChildElem(u"n", u"1"); },
       "<p>text<!-- c --><n>1</n>\r\n</p>", "p/n"},
      {"an empty parent with attributes is opened", u"<r><p a=\"1\" /><q/></r>",
       [](MarkupProbe& m) { return m.FindElem() && m.IntoElem() && m.FindElem(u"p") && m.AddChildElem(u"n"); },
       "<r><p a=\"1\" >\r\n<n/>\r\n</p><q/></r>", "p/n"},
      {"a sibling goes after the main element, before the next tag", u"<r>\r\n<a/>\r\n<b/>\r\n</r>\r\n",
       [](MarkupProbe& m) { return m.FindElem() && m.IntoElem() && m.FindElem(u"a") && m.AddElem(u"n", u"x"); },
       "<r>\r\n<a/>\r\n<n>x</n>\r\n<b/>\r\n</r>\r\n", "n/"},
      {"a sibling before text keeps the text after it", u"<r><a/> x <b/></r>",
       [](MarkupProbe& m) { return m.FindChildElem(u"a") && m.AddChildElem(u"n"); }, "<r><a/><n/>\r\n x <b/></r>",
       "r/n"},
      {"inserting goes before the child, or first", u"<r> <a/><b/></r>",
       [](MarkupProbe& m) {
         return m.FindElem() && m.x_AddElem(u"first", nullptr, true, true) && m.FindChildElem(u"b") &&
                m.x_AddElem(u"mid", nullptr, true, true);
       },
       "<r> <first/>\r\n<a/><mid/>\r\n<b/></r>", "r/mid"},
      {"edits deep inside shift everything after them", u"<r><a><b><c/></b><d/></a><e><f/></e></r>",
       [](MarkupProbe& m) {
         return m.FindElem() && m.IntoElem() && m.FindElem(u"a") && m.IntoElem() && m.FindElem(u"b") &&
                m.SetAttrib(u"x", u"12") && m.AddChildElem(u"g", u"z");
       },
       "<r><a><b x=\"12\"><c/><g>z</g>\r\n</b><d/></a><e><f/></e></r>", "b/g"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    MarkupProbe m;
    m.SetDoc(c.start);
    ASSERT_TRUE(c.edit(m));
    EXPECT_EQ(Doc(m), c.doc);
    EXPECT_EQ(Cursor(m), c.cursor);
    EXPECT_TRUE(m.IsWellFormed());
    EXPECT_EQ(IndexMismatch(m), "");
  }
}

TEST(MarkupWrite, RefusesEditsThatWouldNotReadBackAndLeavesTheText) {
  const struct {
    const char* what;
    const char16_t* start;
    bool (*edit)(MarkupProbe&);
  } cases[] = {
      {"a second root", u"<R/>", [](MarkupProbe& m) { return m.FindElem() && m.AddElem(u"S"); }},
      {"a second root from the top", u"<R/>", [](MarkupProbe& m) { return m.AddElem(u"S", u"x"); }},
      // Text that already reads as the start of an element would swallow a root after it.
      {"a root after a start tag", u"<a>", [](MarkupProbe& m) { return m.AddElem(u"R"); }},
      {"a root after an end tag", u"</x>", [](MarkupProbe& m) { return m.AddElem(u"R"); }},
      {"a root after an open declaration", u"<!DOCTYPE x", [](MarkupProbe& m) { return m.AddElem(u"R"); }},
      {"a root after a lone '<'", u"< ", [](MarkupProbe& m) { return m.AddElem(u"R"); }},
      {"a root after an open comment", u"<!-- open", [](MarkupProbe& m) { return m.AddElem(u"R"); }},
      // "<p/>" after the first slash would still close the start tag as an empty element.
      {"a child of <p//>", u"<p//>", [](MarkupProbe& m) { return m.FindElem() && m.AddChildElem(u"n"); }},
      {"an attribute without a main element", u"<R><C/></R>", [](MarkupProbe& m) { return m.SetAttrib(u"a", u"1"); }},
      {"an attribute without a child", u"<R><C/></R>",
       [](MarkupProbe& m) { return m.FindElem() && m.SetChildAttrib(u"a", u"1"); }},
  };
  for (const auto& c : cases) {
    MarkupProbe m;
    m.SetDoc(c.start);
    EXPECT_FALSE(c.edit(m)) << c.what;
    EXPECT_EQ(m.GetDoc(), std::u16string(c.start)) << c.what;
  }

  MarkupProbe m(u"<R/>");
  ASSERT_TRUE(m.FindElem());
  const char16_t* const names[] = {u"", u"a b", u"a/", u"?x", u"!x", u"\"q", u"'q", u"a=b", u"a>", nullptr};
  for (const char16_t* name : names) {
    EXPECT_FALSE(m.AddChildElem(name)) << Narrow(name ? name : u"null");
    EXPECT_FALSE(m.SetAttrib(name, u"1")) << Narrow(name ? name : u"null");
  }
  EXPECT_EQ(Doc(m), "<R/>");
}

TEST(MarkupWrite, EscapesDataAndAttributeValuesThatReadBackUnchanged) {
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

// Random edits from starting points that include text that only just parses and text that
// does not: every one keeps the index equal to a fresh parse of the edited text.
TEST(MarkupWrite, IndexMatchesAFreshParseAfterEveryEdit) {
  const char16_t* const starts[] = {
      u"",
      u"   ",
      u"plain text",
      u"<?xml version=\"1.0\"?>\r\n<!-- c -->\r\n",
      u"<r/>",
      u"<r></r>",
      u"<r>\r\n<a x='1'>t</a>\r\n<b/>\r\n</r>\r\n",
      u"<?xml?><!DOCTYPE r [ <!ENTITY e 'v'> ]><r a=\"&lt;\"><a><b/></a> text <c></c></r> tail",
      u"<r><p//><q /><s a=\">\"/></s><=/><a[1]></a></r>",
      u"<r><![CDATA[<x>]]><!-- <y> --><?p?></r>",
      u"<r><a>",
      u"</r>",
  };
  for (unsigned seed = 1; seed <= 40; ++seed) {
    for (const char16_t* start : starts) {
      std::mt19937 random(seed);
      const auto pick = [&random](unsigned n) { return static_cast<unsigned>(random() % n); };
      MarkupProbe m;
      m.SetDoc(start);
      for (int step = 0; step < 60; ++step) {
        markup_probe::ApplyRandomEdit(m, pick);
        ASSERT_EQ(IndexMismatch(m), "") << "seed " << seed << ", step " << step << ", start " << Narrow(start)
                                        << "\n" << Narrow(m.GetDoc());
      }
    }
  }
}
