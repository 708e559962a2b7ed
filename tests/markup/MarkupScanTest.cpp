#include <gtest/gtest.h>

#include <string>

#include "markup/MarkupProbe.h"

using markup_probe::IndexMismatch;
using markup_probe::Layout;
using markup_probe::Narrow;

namespace {

std::u16string Xs(int count) { return std::u16string(static_cast<std::size_t>(count), u'x'); }

std::string Pos(const std::string& name, int a, int b, int c, int d) {
  return name + "<" + std::to_string(a) + "," + std::to_string(b) + "," +
         std::to_string(c) + "," + std::to_string(d) + ">";
}

std::string ErrorOf(const std::u16string& doc) {
  MarkupProbe m;
  EXPECT_FALSE(m.SetDoc(doc));
  return Narrow(m.GetError());
}

}  // namespace

// Texts of every length around the width the searches step by, so that each '<', '>' and
// null falls at every offset within a step and at the very end of the document.
TEST(MarkupScan, TagsAndNullsAreFoundAtEveryOffset) {
  for (int n = 0; n <= 20; ++n) {
    SCOPED_TRACE(n);
    MarkupProbe m;
    ASSERT_TRUE(m.SetDoc(u"<a>" + Xs(n) + u"<b" + Xs(n) + u"/>" + Xs(n) + u"</a>"));
    const int b = 3 + n;
    const int end = b + 2 * n + 4;
    EXPECT_EQ(Layout(m), Pos("a", 0, 2, end, end + 3) + "(" +
                             Pos("b" + std::string(static_cast<std::size_t>(n), 'x'), b, b + n + 3,
                                 b + n + 2, b + n + 3) +
                             ")");

    std::u16string cut = u"<r><a>" + Xs(n);
    cut += u'\0';
    cut += u"</a></r>";
    EXPECT_EQ(ErrorOf(cut), "End tag of a element not found");
    EXPECT_EQ(ErrorOf(u"<r><a" + Xs(n)), "End of tag not found");
    EXPECT_EQ(ErrorOf(u"<r><a>" + Xs(n)), "End tag of a element not found");
  }
}

TEST(MarkupScan, EndTagMustNameTheWholeElement) {
  EXPECT_EQ(ErrorOf(u"<ab></a>"), "End tag does not correspond to ab");
  EXPECT_EQ(ErrorOf(u"<a></ab>"), "End tag does not correspond to a");
  EXPECT_EQ(ErrorOf(u"<a></a"), "End tag not completed for element a");
  EXPECT_EQ(ErrorOf(u"<a></>"), "End tag does not correspond to a");
  EXPECT_EQ(ErrorOf(u"<a><b></a></b>"), "End tag does not correspond to b");
  // A tag named by a single delimiter cannot be closed: "</>" names nothing.
  EXPECT_EQ(ErrorOf(u"<r><=></></r>"), "End tag does not correspond to =");

  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(u"<USER1><USER10></USER10></USER1>"));
  EXPECT_EQ(Layout(m), "USER1<0,6,24,31>(USER10<7,14,15,23>)");
  // After the name, anything up to a '>' that begins a token belongs to the end tag.
  ASSERT_TRUE(m.SetDoc(u"<a><b></b/></a x=\">\">"));
  EXPECT_EQ(Layout(m), "a<0,2,11,20>(b<3,5,6,10>)");
  // A start tag read after a space still pairs with its end tag.
  ASSERT_TRUE(m.SetDoc(u"<r>< a>t</a>< b/></r>"));
  EXPECT_EQ(Layout(m), "r<0,2,17,20>(a<3,6,8,11> b<12,16,15,16>)");
}

TEST(MarkupScan, SiblingSearchComparesWholeTagNames) {
  MarkupProbe m;
  ASSERT_TRUE(m.SetDoc(u"<r><xy/><x[1]/>< x k='1'/><x/></r>"));
  ASSERT_TRUE(m.FindElem());
  ASSERT_TRUE(m.FindChildElem(u"x"));
  EXPECT_EQ(m.Entry(m.ChildPos()).nTagOpen, 15);
  ASSERT_TRUE(m.FindChildElem(u"x"));
  EXPECT_EQ(m.Entry(m.ChildPos()).nTagOpen, 26);
  EXPECT_FALSE(m.FindChildElem(u"x"));

  // The search name may carry a suffix after '[' or a space that the tag lacks.
  m.ResetChildPos();
  ASSERT_TRUE(m.FindChildElem(u"x[1]"));
  EXPECT_EQ(m.Entry(m.ChildPos()).nTagOpen, 8);
  ASSERT_TRUE(m.FindChildElem(u"x[2]"));
  EXPECT_EQ(Narrow(m.GetChildTagName()), "x");
  EXPECT_EQ(m.Entry(m.ChildPos()).nTagOpen, 15);
  m.ResetChildPos();
  ASSERT_TRUE(m.FindChildElem(u"x y"));
  EXPECT_EQ(m.Entry(m.ChildPos()).nTagOpen, 15);
  m.ResetChildPos();
  ASSERT_TRUE(m.FindChildElem(u"xy"));
  EXPECT_EQ(m.Entry(m.ChildPos()).nTagOpen, 3);
  m.ResetChildPos();
  EXPECT_FALSE(m.FindChildElem(u"xyz"));
}

// A table written element by element, as a line type table is, equals the text written by
// hand and reads back field by field with the cursor stepping along the entries.
TEST(MarkupScan, LargeTableWrittenByElementsReadsBack) {
  const int count = 300;
  MarkupProbe m;
  std::u16string expected = u"<TABLE>\r\n";
  ASSERT_TRUE(m.AddElem(u"TABLE"));
  ASSERT_TRUE(m.IntoElem());
  for (int i = 0; i < count; ++i) {
    const std::u16string name = u"USER" + vantrel1::FromUtf8(std::to_string(i));
    const std::u16string value = vantrel1::FromUtf8(std::to_string(i * 7));
    ASSERT_TRUE(m.AddElem(name.c_str()));
    ASSERT_TRUE(m.IntoElem());
    ASSERT_TRUE(m.AddElem(u"COLOR", value.c_str()));
    ASSERT_TRUE(m.AddElem(u"ITEM0", u"-1,150,0&1"));
    ASSERT_TRUE(m.OutOfElem());
    expected += u"<" + name + u">\r\n<COLOR>" + value + u"</COLOR>\r\n<ITEM0>-1,150,0&amp;1</ITEM0>\r\n</" +
                name + u">\r\n";
  }
  expected += u"</TABLE>\r\n";
  EXPECT_EQ(m.GetDoc(), expected);
  EXPECT_EQ(IndexMismatch(m), "");

  MarkupProbe read(expected.c_str());
  ASSERT_TRUE(read.FindElem(u"TABLE"));
  for (int i = 0; i < count; ++i) {
    const std::u16string name = u"USER" + vantrel1::FromUtf8(std::to_string(i));
    ASSERT_TRUE(read.FindChildElem(name.c_str()));
    ASSERT_TRUE(read.IntoElem());
    EXPECT_EQ(read.GetDataInt(u"COLOR", -1), i * 7);
    EXPECT_EQ(Narrow(read.GetDataStr(u"ITEM0", u"")), "-1,150,0&1");
    EXPECT_EQ(Narrow(read.GetDataStr(u"ITEM1", u"none")), "none");
    ASSERT_TRUE(read.OutOfElem());
  }
  EXPECT_FALSE(read.FindChildElem(u"USER0"));
}

// Entries looked up from the top again and again, as a table reader looks them up, in a
// list long enough that the searches remember the names they have walked past.
TEST(MarkupLongSearch, RepeatedSearchesFromTheTopFindTheFirstMatch) {
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
