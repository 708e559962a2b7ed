#include "platform/Utf.h"

#include <gtest/gtest.h>

using vantrel1::FromUtf8;
using vantrel1::ToUtf8;

TEST(Utf, SerbianLettersRoundTrip) {
  const std::u16string text = u"Nije moguće kreirati koordinatni sistem: železnica, Šđčć";
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
  EXPECT_EQ(ToUtf8(u"ž"), "\xC5\xBE");
}

TEST(Utf, SupplementaryCharactersBecomeSurrogatePairs) {
  EXPECT_EQ(FromUtf8("\xF0\x9F\x98\x80"), std::u16string({0xD83D, 0xDE00}));
  EXPECT_EQ(ToUtf8(std::u16string({0xD83D, 0xDE00})), "\xF0\x9F\x98\x80");
}

TEST(Utf, IllFormedInputBecomesReplacementCharacters) {
  EXPECT_EQ(ToUtf8(std::u16string({u'a', 0xD800, u'b'})), "a\xEF\xBF\xBD" "b");
  EXPECT_EQ(ToUtf8(std::u16string({0xDC00})), "\xEF\xBF\xBD");
  EXPECT_EQ(FromUtf8("\xC0\xAF"), u"\uFFFD\uFFFD");          // overlong '/'
  EXPECT_EQ(FromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");  // encoded surrogate
  EXPECT_EQ(FromUtf8("x\xE2\x82"), u"x\uFFFD\uFFFD");          // truncated at the end
}
