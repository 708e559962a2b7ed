#include "platform/StdStr.h"

#include <gtest/gtest.h>

TEST(StdStrFormat, HasNoLengthLimitOfItsOwnAndTakesItselfAsArgument) {
  const CStdStrW long_text(1000, u'ž');
  CStdStrW s;
  EXPECT_TRUE(s.Format(u"[%s]", long_text));
  EXPECT_EQ(s.GetLength(), 1002);
  EXPECT_EQ(s.Mid(1, 1000), long_text);
  EXPECT_TRUE(s.Format(u"%s|%s", s.Left(3), s));
  EXPECT_EQ(s.GetLength(), 3 + 1 + 1002);
  EXPECT_EQ(s.Left(5), u"[žž|[");
}

TEST(StdStrFormat, FailureLeavesAClearResult) {
  CStdStrW s = u"old";
  EXPECT_FALSE(s.Format(u"%d", u"not a number"));
  EXPECT_EQ(s, u"");
  s = u"old";
  EXPECT_FALSE(s.AppendFormat(u"%d %d", 1));
  EXPECT_EQ(s, u"old");
  EXPECT_TRUE(s.AppendFormat(u"-%02d%hs", 7, "x"));
  EXPECT_EQ(s, u"old-07x");
  // A width beyond the longest result is refused, not allocated.
  EXPECT_FALSE(s.Format(u"%16777217d", 1));
  EXPECT_EQ(s, u"");
  s = u"old";
  EXPECT_TRUE(s.Format(static_cast<const char16_t*>(nullptr)));
  EXPECT_EQ(s, u"");
}

TEST(StdStrCompare, CaseFoldingIsClassicAsciiOnlyAndTheEndCountsAsZero) {
  const CStdStrW upper = u"Železnica";
  EXPECT_EQ(upper.CompareNoCase(u"železnica"), 0x17D - 0x17E);  // Ž and ž are distinct units
  EXPECT_EQ(upper.CompareNoCase(u"ŽELEZNICA"), 0);
  EXPECT_TRUE(upper.EqualsNoCase(u"ŽELEZNICA"));
  EXPECT_EQ(CStdStrW(u"ab").CompareNoCase(u"ABC"), -int{u'c'});  // folded as _wcsicmp folds
  EXPECT_EQ(CStdStrW(u"abC").CompareNoCase(u"AB"), int{u'c'});
  EXPECT_EQ(CStdStrW(u"ABC").Compare(u"abc"), int{u'A'} - int{u'a'});
  EXPECT_EQ(CStdStrW(u"").Compare(static_cast<const char16_t*>(nullptr)), 0);
}

TEST(StdStrSearch, FindsFromAStartAndReportsMinusOne) {
  const CStdStrW s = u"linija, linija";
  EXPECT_EQ(s.Find(u'i', 2), 3);
  EXPECT_EQ(s.Find(u"linija", 1), 8);
  EXPECT_EQ(s.Find(u"x"), -1);
  EXPECT_EQ(s.Find(u'l', -1), -1);
  EXPECT_EQ(s.Find(u"", 14), 14);
  EXPECT_EQ(s.Find(u"", 15), -1);
  EXPECT_EQ(s.ReverseFind(u'l'), 8);
  EXPECT_EQ(s.ReverseFind(u'q'), -1);
  EXPECT_EQ(s.FindOneOf(u" ,"), 6);
}

TEST(StdStrExtract, OutOfRangeCountsAreClamped) {
  const CStdStrW s = u"železnica";
  EXPECT_EQ(s.Mid(-2, 3), u"žel");
  EXPECT_EQ(s.Mid(7, 99), u"ca");
  EXPECT_EQ(s.Mid(9), u"");
  EXPECT_EQ(s.Mid(50, 2), u"");
  EXPECT_EQ(s.Mid(3, -1), u"");
  EXPECT_EQ(s.Mid(INT_MAX, INT_MAX), u"");
  EXPECT_EQ(s.Left(-1), u"");
  EXPECT_EQ(s.Left(99), s);
  EXPECT_EQ(s.Right(3), u"ica");
  EXPECT_EQ(s.Right(99), s);
  EXPECT_EQ(s.Right(-5), u"");
  EXPECT_EQ(s.GetAt(8), u'a');
  EXPECT_EQ(s.GetAt(9), u'\0');
  EXPECT_EQ(s.GetAt(-1), u'\0');
}

TEST(StdStrEdit, ReplaceRemoveInsertDeleteReportCounts) {
  CStdStrW s = u"a,,b,,,c";
  EXPECT_EQ(s.Replace(u",,", u","), 2);
  EXPECT_EQ(s, u"a,b,,c");  // left to right, without overlapping
  EXPECT_EQ(s.Replace(u"", u"x"), 0);
  EXPECT_EQ(s.Replace(u',', u';'), 3);
  EXPECT_EQ(s.Replace(u';', u';'), 0);
  EXPECT_EQ(s.Replace(u"a;", u"a;a;"), 1);
  EXPECT_EQ(s, u"a;a;b;;c");
  EXPECT_EQ(s.Remove(u';'), 4);
  EXPECT_EQ(s, u"aabc");
  EXPECT_EQ(s.Insert(-5, u'<'), 5);
  EXPECT_EQ(s.Insert(99, u">"), 6);
  EXPECT_EQ(s.Insert(1, s), 12);
  EXPECT_EQ(s, u"<<aabc>aabc>");
  EXPECT_EQ(s.Delete(-3, 2), 10);
  EXPECT_EQ(s, u"aabc>aabc>");
  EXPECT_EQ(s.Delete(8, 99), 8);
  EXPECT_EQ(s.Delete(99, 1), 8);
  EXPECT_EQ(s.Delete(2, -1), 8);
  EXPECT_EQ(s.Delete(4), 7);
  EXPECT_EQ(s, u"aabcaab");
  s.SetAt(0, u'A');
  s.SetAt(7, u'!');
  EXPECT_EQ(s, u"Aabcaab");
}

TEST(StdStrEdit, CaseAndTrimmingUseTheClassicLocale) {
  CStdStrW s = u"Šđ ABC xyz";
  EXPECT_EQ(s.MakeLower(), u"Šđ abc xyz");
  EXPECT_EQ(s.MakeUpper(), u"Šđ ABC XYZ");
  s = u" \t x y \r\n";
  EXPECT_EQ(s.Trim(), u"x y");
  s = u"\u00A0x\u00A0";  // a no-break space is not white space here
  EXPECT_EQ(s.Trim(), u"\u00A0x\u00A0");
  s = u"0012300";
  EXPECT_EQ(s.TrimLeft(u'0'), u"12300");
  EXPECT_EQ(s.TrimRight(u"03"), u"12");
  s = u"   ";
  EXPECT_EQ(s.TrimRight(), u"");
  CStdStrA narrow = "Žabc";
  EXPECT_EQ(narrow.MakeUpper(), "ŽABC");  // the UTF-8 bytes of Ž are left alone
}

TEST(StdStrBuffer, CStyleWritersSetTheLength) {
  CStdStrW s = u"ab";
  char16_t* p = s.GetBuffer(10);
  ASSERT_EQ(s.GetLength(), 10);
  p[0] = u'x';
  p[1] = u'y';
  p[2] = u'z';
  p[3] = 0;
  s.ReleaseBuffer();
  EXPECT_EQ(s, u"xyz");
  s.GetBuffer(2);
  s.ReleaseBuffer(2);
  EXPECT_EQ(s, u"xy");
  s.ReleaseBuffer(99);
  EXPECT_EQ(s, u"xy");
  s.GetBuffer(-4);
  s.ReleaseBuffer();
  EXPECT_EQ(s, u"xy");
}

TEST(StdStrValue, NullPointerIsAnEmptyString) {
  EXPECT_TRUE(CStdStrW(static_cast<const char16_t*>(nullptr)).IsEmpty());
}
