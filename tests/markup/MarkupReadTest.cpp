// The cursor and everything that reads the document through it.
#include <gtest/gtest.h>

#include <string>

#include "markup/MarkupProbe.h"

using markup_probe::IndexMismatch;
using markup_probe::Narrow;

namespace {

const char16_t* const kRecord =
    u"<T a=\"1\" b='x&amp;y' c=3 d = \"4\" / y='2'><N>42</N><D> 2.5 </D><C>c</C><E/>"
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

TEST_F(MarkupRead, AttributesAreUnescapedQuotedAndInsideTheStartTag) {
  const std::pair<const char16_t*, const char*> cases[] = {
      {u"a", "1"}, {u"b", "x&y"}, {u"d", "4"}, {u"missing", ""}, {nullptr, ""},
      {u"c", ""},  // an unquoted value is no value
      {u"3", ""},  // ... and does not read as a name either
      {u"y", ""},  // after a '/' the tag has ended
  };
  for (const auto& [name, value] : cases) EXPECT_EQ(Narrow(m.GetAttrib(name)), value) << (name ? Narrow(name) : "null");
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
  EXPECT_EQ(Narrow(m.GetDataStr(u"K", u"")), "a<b&amp;");  // CDATA as written

  // A zero character is written as the letter c, or as nothing.
  const std::pair<const char16_t*, WCHAR> chars[] = {{u"C", 0}, {u"E", 0}, {u"L", u'd'}, {u"N", u'4'}, {u"Missing", u'x'}};
  for (const auto& [name, c] : chars) EXPECT_EQ(m.GetDataChar(name, u'x'), c) << Narrow(name);

  // The field found last stays the child position.
  ASSERT_EQ(m.GetDataInt(u"D", 0), 2);
  EXPECT_EQ(Narrow(m.GetTagName()), "T");
  EXPECT_EQ(Narrow(m.GetChildTagName()), "D");
  EXPECT_EQ(m.Kind(), 1);
  ASSERT_TRUE(m.FindChildElem(u"N"));
  EXPECT_EQ(Narrow(m.GetChildData()), "7");
}

TEST(MarkupReadData, IsTheTextBetweenTheTagsOrASectionThatStartsIt) {
  const std::pair<const char16_t*, const char*> cases[] = {
      {u"<T> x </T>", " x "},
      {u"<T> x <U/></T>", ""},  // a parent has no data
      {u"<T/>", ""},
      {u"<T></T>", ""},
      {u"<T><![CDATA[]]></T>", ""},
      {u"<T><![CDATA[a]]>tail</T>", "a"},                // text after the section is not part of it
      {u"<T>x<![CDATA[a]]></T>", "x<![CDATA[a]]>"},      // text before it makes all the content data
  };
  for (const auto& [doc, data] : cases) {
    MarkupProbe m(doc);
    ASSERT_TRUE(m.FindElem());
    EXPECT_EQ(Narrow(m.GetData()), data) << Narrow(doc);
  }
}

TEST(MarkupReadData, EntitiesMustFitInsideTheText) {
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
  ASSERT_TRUE(m.FindElem(u"N"));
  ASSERT_TRUE(m.FindElem(u"N"));
  EXPECT_FALSE(m.FindElem(u"N"));  // a failed search keeps the position
  EXPECT_EQ(Narrow(m.GetData()), "7");
  ASSERT_TRUE(m.IntoElem());
  EXPECT_FALSE(m.FindElem());
  ASSERT_TRUE(m.OutOfElem());
  ASSERT_TRUE(m.OutOfElem());
  EXPECT_EQ(Narrow(m.GetTagName()), "T");
  EXPECT_EQ(Narrow(m.GetChildData()), "7");
  EXPECT_FALSE(m.OutOfElem());

  // IntoElem needs an element at the main position.
  m.ResetMainPos();
  EXPECT_FALSE(m.IntoElem());
  m.ResetPos();
  EXPECT_FALSE(m.IntoElem());
  // FindChildElem first takes the first element as the main one.
  ASSERT_TRUE(m.FindChildElem(u"E"));
  EXPECT_EQ(Narrow(m.GetTagName()), "T");
  EXPECT_FALSE(m.FindChildElem(u"E"));
  EXPECT_EQ(Narrow(m.GetChildTagName()), "E");
  m.ResetChildPos();
  EXPECT_EQ(m.Kind(), 1);
  EXPECT_EQ(m.ChildPos(), 0);
}

// A search name may carry a suffix after '[', '=', '/' or a space that the tag lacks;
// otherwise whole names are compared, case and all.
TEST(MarkupReadSearch, ComparesWholeTagNamesUpToAToleratedSuffix) {
  MarkupProbe m(u"<r><xy/><x[1]/>< x k='1'/><x/></r>");
  const struct {
    const char16_t* name;
    int tagOpen;  // of the first match, -1 for none
  } cases[] = {{u"x", 15},    {u"x[1]", 8}, {u"x[2]", 15}, {u"x y", 15},
               {u"xy", 3},    {u"xyz", -1}, {u"X", -1},    {u"r", -1}};
  for (const auto& c : cases) {
    m.ResetPos();
    EXPECT_EQ(m.FindChildElem(c.name) ? m.Entry(m.ChildPos()).nTagOpen : -1, c.tagOpen) << Narrow(c.name);
  }
  m.ResetPos();
  EXPECT_TRUE(m.FindElem(u"r[1]"));
  ASSERT_TRUE(m.FindChildElem(u"x"));
  ASSERT_TRUE(m.FindChildElem(u"x"));
  EXPECT_EQ(m.Entry(m.ChildPos()).nTagOpen, 26);
  EXPECT_FALSE(m.FindChildElem(u"x"));
}

// Entries looked up from the top again and again, as a table reader looks them up, in a
// list long enough that the searches remember the names they have walked past.
TEST(MarkupReadSearch, RepeatedSearchesFromTheTopFindTheFirstMatch) {
  const auto number = [](int i) { return vantrel1::FromUtf8(std::to_string(i)); };
  std::u16string doc = u"<T>";
  for (int i = 0; i < 600; ++i) doc += u"<E" + number(i) + u">" + number(i) + u"</E" + number(i) + u">";
  doc += u"<E7>second</E7><x>short</x><x[1]>long</x[1]></T>";
  MarkupProbe m(doc.c_str());
  const auto find = [&m](const char16_t* name) {
    m.ResetPos();
    return m.FindChildElem(name) ? Narrow(m.GetChildData()) : std::string("none");
  };

  for (int i = 599; i >= 0; i -= 7) {
    const std::u16string name = u"E" + number(i);
    ASSERT_EQ(find(name.c_str()), std::to_string(i));
  }
  // A failed search has walked past every child, the later duplicate and "x[1]" too.
  EXPECT_EQ(find(u"E600"), "none");
  EXPECT_EQ(find(u"E"), "none");
  EXPECT_EQ(find(u"E7"), "7");
  EXPECT_EQ(find(u"E60 0"), "60");
  EXPECT_EQ(find(u"x[2]"), "short");
  EXPECT_EQ(find(u"x[1]"), "short");

  // Edits move the tags; what the searches remembered must not outlive them.
  ASSERT_EQ(find(u"E3"), "3");
  ASSERT_TRUE(m.SetChildAttrib(u"k", u"a longer value than before"));
  EXPECT_EQ(find(u"E599"), "599");
  EXPECT_EQ(m.Entry(m.ChildPos()).nTagOpen, static_cast<int>(m.GetDoc().find(u"<E599>")));
  ASSERT_EQ(find(u"E0"), "0");
  ASSERT_TRUE(m.x_AddElem(u"E5", u"new", true, true));
  EXPECT_EQ(find(u"E5"), "new");
  EXPECT_EQ(find(u"E598"), "598");
  EXPECT_EQ(IndexMismatch(m), "");

  MarkupProbe copy(m);
  copy.ResetPos();
  ASSERT_TRUE(copy.FindChildElem(u"E597"));
  EXPECT_EQ(Narrow(copy.GetChildData()), "597");
  ASSERT_TRUE(copy.SetDoc(u"<T><E5>other</E5></T>"));
  copy.ResetPos();
  ASSERT_TRUE(copy.FindChildElem(u"E5"));
  EXPECT_EQ(Narrow(copy.GetChildData()), "other");
  EXPECT_EQ(find(u"E5"), "new");
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
