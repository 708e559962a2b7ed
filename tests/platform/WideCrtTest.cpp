#include "platform/WideCrt.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "platform/StdStr.h"

namespace {

// The result, and the whole buffer pre-filled with 'X' so that the tests see exactly which
// units were written, terminator included.
using Printed = std::pair<int, std::u16string>;

template <typename... Args>
Printed Print(std::size_t count, const char16_t* format, const Args&... args) {
  std::u16string buffer(count + 2, u'X');
  const int result = _snwprintf(buffer.data(), count, format, args...);
  return {result, buffer};
}

template <typename... Args>
std::u16string Text(const char16_t* format, const Args&... args) {
  char16_t buffer[256];
  const int n = _snwprintf(buffer, 256, format, args...);
  return n < 0 ? u"<failed>" : std::u16string(buffer, static_cast<std::size_t>(n));
}

int VPrint(char16_t* buffer, std::size_t count, const char16_t* format, ...) {
  va_list args;
  va_start(args, format);
  const int result = _vsnwprintf(buffer, count, format, args);
  va_end(args);
  return result;
}

std::vector<std::u16string> Split(std::u16string text, const char16_t* delimiters) {
  std::vector<std::u16string> tokens;
  char16_t* context = nullptr;
  for (char16_t* t = wcstok(text.data(), delimiters, &context); t != nullptr; t = wcstok(nullptr, delimiters, &context))
    tokens.emplace_back(t);
  return tokens;
}

}  // namespace

TEST(WideToInt, StopsAtTheFirstNonDigit) {
  EXPECT_EQ(_wtoi(u"  -12abc"), -12);
  EXPECT_EQ(_wtoi(u"\t\r\n\v\f +7,"), 7);
  EXPECT_EQ(_wtoi(u"- 5"), 0);
  EXPECT_EQ(_wtoi(nullptr), 0);
  EXPECT_EQ(_wtoi(u"\u00A012"), 0);     // a no-break space is not a blank
  EXPECT_EQ(_wtoi(u"\u0661\u0662"), 0);  // nor are Arabic-Indic digits digits
  EXPECT_EQ(_wtoi(u"0000000000000000000000042"), 42);
}

TEST(WideToInt, SaturatesAtTheEndsOfItsRange) {
  EXPECT_EQ(_wtoi(u"2147483648"), INT_MAX);
  EXPECT_EQ(_wtoi(u"-2147483648"), INT_MIN);
  EXPECT_EQ(_wtoi(u"-2147483649"), INT_MIN);
  EXPECT_EQ(_wtoi(u"99999999999999999999999999999"), INT_MAX);
  EXPECT_EQ(_wtoi64(u"9223372036854775808"), LLONG_MAX);
  EXPECT_EQ(_wtoi64(u"-9223372036854775808"), LLONG_MIN);
  EXPECT_EQ(_wtoi64(u"-18446744073709551617"), LLONG_MIN);
  EXPECT_EQ(_wtoi64(u" 4294967296"), 4294967296LL);
}

TEST(WideToDouble, ReadsTheLongestNumericPrefix) {
  EXPECT_EQ(_wtof(u" 2.5e3x"), 2500.0);
  EXPECT_EQ(_wtof(u"-.5"), -0.5);
  EXPECT_EQ(_wtof(u"+5."), 5.0);
  EXPECT_EQ(_wtof(u"1e+"), 1.0);
  EXPECT_EQ(_wtof(u"1E-2"), 0.01);
  EXPECT_EQ(_wtof(u"."), 0.0);
  EXPECT_EQ(_wtof(u"1,5"), 1.0);  // the decimal mark is '.' whatever the locale
  EXPECT_EQ(_wtof(nullptr), 0.0);
  EXPECT_EQ(_wtof(u"0x1.8p3"), 12.0);
  EXPECT_EQ(_wtof(u"0xg"), 0.0);
}

TEST(WideToDouble, RoundsCorrectlyAndHandlesTheExtremes) {
  EXPECT_EQ(_wtof(u"0.1000000000000000055511151231257827021181583404541015625"), 0.1);
  EXPECT_EQ(_wtof(u"4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(_wtof(u"1e400"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(_wtof(u"1e-400"), 0.0);
  EXPECT_TRUE(std::signbit(_wtof(u"-1e-400")));
  EXPECT_EQ(_wtof(u"0.0000000000000000000000000001e99999999999999999999"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(_wtof(u"-INFINITY"), -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(_wtof(u"nan(1)")));
}

TEST(WideTokens, RunsOfDelimitersAreOneSeparator) {
  // Leading commas and the run of three are skipped: a record keeps its field count.
  EXPECT_EQ(Split(u",,1,0,,,300,50", u","), (std::vector<std::u16string>{u"1", u"0", u"300", u"50"}));
  EXPECT_EQ(Split(u" a, b ,c,", u", "), (std::vector<std::u16string>{u"a", u"b", u"c"}));
  EXPECT_TRUE(Split(u",,,", u",").empty());
  EXPECT_TRUE(Split(u"", u",").empty());
}

TEST(WideTokens, CutsTheTextInPlaceAndStaysExhausted) {
  char16_t text[] = u"ab,,cd";
  char16_t* context = nullptr;
  EXPECT_EQ(wcstok(text, u",", &context), text);
  EXPECT_EQ(std::u16string(text, 6), std::u16string(u"ab\0,cd", 6));
  EXPECT_EQ(wcstok(nullptr, u",", &context), text + 4);
  EXPECT_EQ(wcstok(nullptr, u",", &context), nullptr);
  EXPECT_EQ(wcstok(nullptr, u",", &context), nullptr);
  EXPECT_EQ(wcstok(text, nullptr, &context), nullptr);
  EXPECT_EQ(wcstok(text, u",", nullptr), nullptr);
}

TEST(WidePrintBounded, ReportsOverflowExactlyWhereTheTextStopsFitting) {
  // "12,-3" is five units.
  EXPECT_EQ(Print(6, u"%d,%d", 12, -3), Printed(5, std::u16string(u"12,-3\0XX", 8)));
  EXPECT_EQ(Print(5, u"%d,%d", 12, -3), Printed(5, u"12,-3XX"));  // fits exactly: no terminator
  EXPECT_EQ(Print(4, u"%d,%d", 12, -3), Printed(-1, u"12,-XX"));  // the first four units stay
  EXPECT_EQ(Print(0, u"%d,%d", 12, -3), Printed(-1, u"XX"));
  EXPECT_EQ(Print(1, u""), Printed(0, std::u16string(u"\0XX", 3)));
  EXPECT_EQ(_snwprintf(nullptr, 0, u"%d,%d", 12, -3), 5);  // measuring
  EXPECT_EQ(_snwprintf(nullptr, 4, u"%d", 1), -1);
  EXPECT_EQ(Print(4, u"%2147483647d", 1), Printed(-1, u"    XX"));
}

TEST(WidePrintBounded, DoublesAsTwelveSignificantDigits) {
  EXPECT_EQ(Text(u"%.12g|%.12g|%.12g|%.12g", 0.1, 30.000000447034836, -0.0, 0.0), u"0.1|30.000000447|-0|0");
  // Fixed notation from 1e-4 up to twelve integer digits; rounding may carry past them.
  EXPECT_EQ(Text(u"%.12g|%.12g|%.12g|%.12g", 1e-5, 0.0001, 123456789012.0, 1234567890123.0),
            u"1e-05|0.0001|123456789012|1.23456789012e+12");
  EXPECT_EQ(Text(u"%.12g|%.12g|%.12g", 999999999999.5, 1e100, -2.5e-300), u"1e+12|1e+100|-2.5e-300");
}

TEST(WidePrintBounded, FloatingConversionsFollowC) {
  EXPECT_EQ(Text(u"%f|%e|%E|%g", 1.5, 12345.678, 12345.678, 100000.0), u"1.500000|1.234568e+04|1.234568E+04|100000");
  EXPECT_EQ(Text(u"%g|%G|%#g|%g", 1e6, 1e-10, 1.0, 0.0), u"1e+06|1E-10|1.00000|0");
  EXPECT_EQ(Text(u"%.0f|%.0f|%#.0f|%#.0e", 2.5, 3.5, 2.0, 3.0), u"2|4|2.|3.e+00");
  EXPECT_EQ(Text(u"%08.3f|%+.1f|% .1f|%-7.2f|", -1.5, 2.0, 2.0, 3.14159), u"-001.500|+2.0| 2.0|3.14   |");
  EXPECT_EQ(Text(u"%.40f", 0.1), u"0.1000000000000000055511151231257827021182");
  EXPECT_EQ(Text(u"%f|%F|%6.1f|%06f|%e", std::numeric_limits<double>::infinity(),
                 std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                 std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::quiet_NaN()),
            u"inf|INF|  -inf|   nan|-nan");
  EXPECT_EQ(Text(u"%.*f|%*.*e", 2, 3.14159, 10, 1, 5.0), u"3.14|   5.0e+00");
  EXPECT_EQ(Text(u"%f", 3), u"3.000000");  // an integer may stand for a double
}

TEST(WidePrintBounded, PrecisionsBeyondTheDigitsOfADoubleAppendZeros) {
  CStdStrW s;
  ASSERT_TRUE(s.Format(u"%.1500f", 0.5));
  EXPECT_EQ(s, u"0.5" + std::u16string(1499, u'0'));
  ASSERT_TRUE(s.Format(u"%.1500e", 0.5));
  EXPECT_EQ(s, u"5." + std::u16string(1500, u'0') + u"e-01");
  ASSERT_TRUE(s.Format(u"%#.1500g", 0.5));
  EXPECT_EQ(s, u"0.5" + std::u16string(1499, u'0'));
  ASSERT_TRUE(s.Format(u"%.1500g", 0.1));
  EXPECT_EQ(s, u"0.1000000000000000055511151231257827021181583404541015625");
}

TEST(WidePrintBounded, IntegerConversionsAndFlags) {
  EXPECT_EQ(Text(u"%5d|%-5d|%05d|%+d|% d|%.3d|%.0d|", 42, 42, 42, 42, 42, 7, 0), u"   42|42   |00042|+42| 42|007||");
  EXPECT_EQ(Text(u"%x %X %#x %#X %o %#o %#x", 255, 255, 255, 255, 255, 255, 0), u"ff FF 0xff 0XFF 377 0377 0");
  EXPECT_EQ(Text(u"%u|%hd|%hhu|%d", -1, 70000, 258, 5000000000LL), u"4294967295|4464|2|705032704");
  EXPECT_EQ(Text(u"%lld|%I64d|%llu|%I32d", LLONG_MIN, LLONG_MIN, ULLONG_MAX, INT_MIN),
            u"-9223372036854775808|-9223372036854775808|18446744073709551615|-2147483648");
  EXPECT_EQ(Text(u"%-*d|%*d|%.*d", 4, 1, -4, 2, -1, 3), u"1   |2   |3");
  EXPECT_EQ(Text(u"%%|%c%c|%3c", u'Ž', 'a', u'x'), u"%|Ža|  x");
  EXPECT_EQ(Text(u"%p", reinterpret_cast<const void*>(0xBEEF)), u"000000000000BEEF");
}

TEST(WidePrintBounded, TextArgumentsOfEveryKind) {
  const char16_t unterminated[3] = {u'a', u'b', u'c'};
  const CStdStrW desc = u"vrh nasipa";
  EXPECT_EQ(Text(u"%s|%s|%s", u"abc", desc, unterminated), u"abc|vrh nasipa|abc");
  EXPECT_EQ(Text(u"%hs|%S|%s", "\xC5\xBE" "abc", "x", std::string("narrow")), u"žabc|x|narrow");
  EXPECT_EQ(Text(u"%.2s|%5s|%-5s|%05s|%.3hs", u"abcdef", u"abc", u"abc", u"abc", "abcdef"), u"ab|  abc|abc  |  abc|abc");
  EXPECT_EQ(Text(u"%s|%.3s", static_cast<const char16_t*>(nullptr), nullptr), u"(null)|(nu");
}

TEST(WidePrintBounded, RefusesInvalidFormatsAndUnsuitableArguments) {
  // A refused format leaves an empty string, whatever it had written before the fault.
  EXPECT_EQ(Print(4, u"ab%n", 1), Printed(-1, std::u16string(u"\0bXXXX", 6)));
  EXPECT_EQ(Print(8, u"%y", 1).first, -1);
  EXPECT_EQ(Print(8, u"abc%").first, -1);
  EXPECT_EQ(Print(8, u"%d", u"text").first, -1);
  EXPECT_EQ(Print(8, u"%s", 5).first, -1);
  EXPECT_EQ(Print(8, u"%d %d", 1).first, -1);
  EXPECT_EQ(Print(8, u"%*d", 1.0, 2).first, -1);
  EXPECT_EQ(Print(8, u"%d", 1, 2, u"unused").first, 1);
  EXPECT_EQ(_snwprintf(nullptr, 0, nullptr), -1);
}

TEST(WidePrintBounded, VaListFormReadsCArguments) {
  char16_t buffer[64];
  const int n = VPrint(buffer, 64, u"%d %s %hs %.12g %lld %c %zu", -7, u"ž", "x", 0.1, -5LL, int{u'Ž'}, std::size_t{9});
  EXPECT_EQ(std::u16string(buffer, static_cast<std::size_t>(n)), u"-7 ž x 0.1 -5 Ž 9");
  EXPECT_EQ(VPrint(buffer, 3, u"%d", 1234), -1);
  EXPECT_EQ(VPrint(nullptr, 0, u"%d", 1234), 4);
  EXPECT_EQ(VPrint(buffer, 3, u"%n", 1), -1);
}

TEST(WidePrintTerminated, FailsUnlessTheTextAndItsTerminatorFit) {
  char16_t buffer[6] = u"XXXXX";
  EXPECT_EQ(_snwprintf_s(buffer, 6, _TRUNCATE, u"%d", 12345), 5);
  EXPECT_EQ(std::u16string(buffer), u"12345");
  EXPECT_EQ(_snwprintf_s(buffer, 6, _TRUNCATE, u"%d", 123456), -1);
  EXPECT_EQ(std::u16string(buffer), u"12345");  // cut and terminated
  EXPECT_EQ(_snwprintf_s(buffer, 6, 2, u"%d", 123), -1);
  EXPECT_EQ(std::u16string(buffer), u"12");
  EXPECT_EQ(_snwprintf_s(buffer, 6, 3, u"%d", 123), 3);
  EXPECT_EQ(_snwprintf_s(buffer, 6, 6, u"%d", 123456), -1);
  EXPECT_EQ(std::u16string(buffer), u"");  // too small a buffer without _TRUNCATE
  EXPECT_EQ(_snwprintf_s(buffer, 6, _TRUNCATE, u"%q"), -1);
  EXPECT_EQ(std::u16string(buffer), u"");
  EXPECT_EQ(_snwprintf_s(buffer, 0, _TRUNCATE, u"x"), -1);
}

TEST(WideIntToText, RadixSignAndBufferSize) {
  char16_t buffer[40];
  EXPECT_EQ(std::u16string(_itow(0, buffer, 10)), u"0");
  EXPECT_EQ(std::u16string(_itow(INT_MIN, buffer, 10)), u"-2147483648");
  EXPECT_EQ(std::u16string(_itow(-1, buffer, 16)), u"ffffffff");
  EXPECT_EQ(std::u16string(_itow(INT_MIN, buffer, 2)), u"1" + std::u16string(31, u'0'));
  EXPECT_EQ(std::u16string(_itow(35, buffer, 36)), u"z");
  EXPECT_EQ(_itow_s(-123, buffer, 5, 10), 0);
  EXPECT_EQ(std::u16string(buffer), u"-123");
  EXPECT_EQ(_itow_s(-123, buffer, 4, 10), ERANGE);
  EXPECT_EQ(std::u16string(buffer), u"");
  EXPECT_EQ(_itow_s(5, buffer, 8, 1), EINVAL);
  EXPECT_EQ(_itow_s(5, nullptr, 8, 10), EINVAL);
}

TEST(WideCaseInsensitive, FoldsOnlyAsciiLetters) {
  EXPECT_EQ(_wcsicmp(u"ŽELEZNICA", u"Železnica"), 0);
  EXPECT_EQ(_wcsicmp(u"Železnica", u"železnica"), 0x17D - 0x17E);
  EXPECT_EQ(_wcsicmp(u"abc", u"ABD"), -1);
  EXPECT_EQ(_wcsicmp(u"ab", u"abc"), -int{u'c'});
  EXPECT_EQ(_wcsicmp(u"[", u"a"), int{u'['} - int{u'a'});  // folding to lower case puts '[' before 'a'
  EXPECT_EQ(_wcsnicmp(u"abcX", u"ABCy", 3), 0);
  EXPECT_EQ(_wcsnicmp(u"abcX", u"ABCy", 4), -1);
  EXPECT_EQ(_wcsnicmp(u"ab", u"AB", 10), 0);
  EXPECT_EQ(_wcsicmp(nullptr, u""), 0);
}

TEST(WideCopy, KeepsOneUnitForTheTerminator) {
  char16_t buffer[12] = u"XXXXXXXXXXX";
  EXPECT_EQ(lstrcpynW(buffer, u"dvostruka crtica", 10), buffer);
  EXPECT_EQ(std::u16string(buffer), u"dvostruka");
  lstrcpynW(buffer, u"ab", 10);
  EXPECT_EQ(std::u16string(buffer), u"ab");
  lstrcpynW(buffer, u"zz", 0);
  EXPECT_EQ(std::u16string(buffer), u"ab");
  lstrcpynW(buffer, nullptr, 10);
  EXPECT_EQ(std::u16string(buffer), u"");
  EXPECT_EQ(lstrlenW(u"železnica"), 9);
  EXPECT_EQ(lstrlenW(u"\U0001F600"), 2);
  EXPECT_EQ(lstrlenW(nullptr), 0);
}
