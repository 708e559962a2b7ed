#include "suite/VantrelFont.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>

namespace {

constexpr double kPi = 3.14159265358979323846;

LOGFONTW Font(const char16_t* face) {
  LOGFONTW lf{};
  lf.lfHeight = -12;
  lf.lfWeight = FW_BOLD;
  lf.lfCharSet = EASTEUROPE_CHARSET;
  for (int i = 0; face[i] != 0 && i < LF_FACESIZE; ++i) lf.lfFaceName[i] = face[i];
  return lf;
}

LOGFONTW Filled(BYTE marker) {
  LOGFONTW lf;
  std::memset(&lf, marker, sizeof lf);
  return lf;
}

std::u16string ToText(const LOGFONTW& font) {
  WCHAR text[FNT_TEXT_SIZE];
  EXPECT_EQ(FntToString(&font, text), text);
  return text;
}

bool SameFont(const LOGFONTW& a, const LOGFONTW& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

LONG EscapementAt(double angle) {
  const LOGFONTW lf = Font(u"Arial");
  HFONT font = FntGraphic2(angle, lf, nullptr);
  if (!font) return -99999;
  LOGFONTW made{};
  GetObjectW(font, sizeof made, &made);
  DeleteObject(font);
  EXPECT_EQ(made.lfOrientation, made.lfEscapement);
  EXPECT_EQ(made.lfHeight, -12);
  return made.lfEscapement;
}

}  // namespace

TEST(FntGraphic2, TurnsTheFontToTheAngleInTenthsOfADegree) {
  EXPECT_EQ(EscapementAt(0), 0);
  EXPECT_EQ(EscapementAt(kPi / 2), 900);
  EXPECT_EQ(EscapementAt(-kPi / 6), -300);
  EXPECT_EQ(EscapementAt(0.5 * kPi / 180 * 0.1), 1);   // 0.05° rounds up to a tenth
  EXPECT_EQ(EscapementAt(0.04 * kPi / 180), 0);         // 0.04° rounds down
  EXPECT_EQ(EscapementAt(2 * kPi + kPi / 4), 450);      // whole turns dropped
  EXPECT_EQ(EscapementAt(-kPi), 1800);                  // a half turn is +180°
  EXPECT_EQ(EscapementAt(-179.99 * kPi / 180), 1800);   // and so is what rounds to it
  EXPECT_EQ(EscapementAt(std::numeric_limits<double>::quiet_NaN()), -99999);
  EXPECT_EQ(EscapementAt(std::numeric_limits<double>::infinity()), -99999);
}

TEST(FntToString, WritesEveryFieldAndQuotesTheFace) {
  LOGFONTW lf = Font(u"DejaVu Sans, Bold");
  lf.lfEscapement = -450;
  lf.lfOrientation = 3599;
  lf.lfItalic = 1;
  lf.lfQuality = 255;
  EXPECT_EQ(ToText(lf), u"-12,0,-450,3599,700,1,0,0,238,0,0,255,0,\"DejaVu Sans, Bold\"");
}

TEST(FntFromString, RoundTripsExtremeFieldsAndAwkwardFaces) {
  const char16_t* faces[] = {u"DejaVu Sans, Bold", u"", u" lead and trail ", u"a\"b\\c", u"tab\there\nnewline",
                             u"Šćž ĐČ", u"\U0001F600 pair", u"\xD800 lone high", u"lone low \xDC00",
                             u"0123456789012345678901234567890"};  // 31 units, the most
  for (const char16_t* face : faces) {
    LOGFONTW lf = Font(face);
    lf.lfHeight = std::numeric_limits<LONG>::min();
    lf.lfWidth = std::numeric_limits<LONG>::max();
    lf.lfPitchAndFamily = 255;
    const std::u16string text = ToText(lf);
    EXPECT_LT(text.size(), static_cast<std::size_t>(FNT_TEXT_SIZE));
    for (const char16_t c : text) EXPECT_GE(c, 0x20) << "one printable line";
    LOGFONTW back = Filled(0xAA);
    ASSERT_EQ(FntFromString(text.c_str(), &back), 1) << std::string(text.begin(), text.end());
    EXPECT_TRUE(SameFont(back, lf));
  }
}

TEST(FntToString, LongestTextFitsTheStatedSize) {
  LOGFONTW lf = Filled(0xFF);  // every byte field 255
  lf.lfHeight = lf.lfWidth = lf.lfEscapement = lf.lfOrientation = lf.lfWeight = std::numeric_limits<LONG>::min();
  for (WCHAR& c : lf.lfFaceName) c = 0x01;  // 31 escapes; the 32nd unit is never read
  EXPECT_EQ(ToText(lf).size() + 1, 281u);
  EXPECT_LE(281, FNT_TEXT_SIZE);
}

TEST(FntFromString, RejectsMalformedTextAndLeavesTheFontAlone) {
  const char16_t* bad[] = {
      u"12,0,0,0,700,0,0,0,238,0,0,0,\"Arial\"",               // a field missing
      u"12,0,0,0,700,0,0,0,238,0,0,0,0,0,\"Arial\"",           // a field too many
      u"12,0,0,0,700,0,0,0,256,0,0,0,0,\"Arial\"",             // byte out of range
      u"12,0,0,0,700,-1,0,0,238,0,0,0,0,\"Arial\"",            // negative byte
      u"2147483648,0,0,0,700,0,0,0,238,0,0,0,0,\"Arial\"",     // beyond 32 bits
      u"99999999999999999999,0,0,0,0,0,0,0,0,0,0,0,0,\"A\"",   // far beyond
      u" 12,0,0,0,700,0,0,0,238,0,0,0,0,\"Arial\"",            // blank before a number
      u"12,0,0,0,700,0,0,0,238,0,0,0,0,Arial",                 // unquoted
      u"12,0,0,0,700,0,0,0,238,0,0,0,0,\"Arial\" ",            // text after the quote
      u"12,0,0,0,700,0,0,0,238,0,0,0,0,\"A\\x\"",              // unknown escape
      u"12,0,0,0,700,0,0,0,238,0,0,0,0,\"A\\u0000B\"",         // escaped terminator
      u"12,0,0,0,700,0,0,0,238,0,0,0,0,\"01234567890123456789012345678901\"",  // 32 units
  };
  for (const char16_t* text : bad) {
    LOGFONTW font = Filled(0x5A);
    EXPECT_EQ(FntFromString(text, &font), 0) << std::string(text, text + std::char_traits<char16_t>::length(text));
    EXPECT_TRUE(SameFont(font, Filled(0x5A)));
  }
  LOGFONTW font{};
  EXPECT_EQ(FntFromString(nullptr, &font), 0);
  EXPECT_EQ(FntFromString(u"0,0,0,0,0,0,0,0,0,0,0,0,0,\"\"", nullptr), 0);
  EXPECT_EQ(FntToString(nullptr, nullptr), nullptr);
}

// Every prefix of a valid text (cut inside a number, the face or an escape) sits in a
// buffer of its own exact size, so that a read beyond the terminator is caught by the
// address sanitizer.
TEST(FntFromString, NeverReadsPastTheTerminatorOfAnyPrefix) {
  const std::u16string full = u"-12,3,4,5,700,1,1,1,238,3,2,1,34,\"A\\\\b\\\"c\\u00E9\"";
  for (std::size_t n = 0; n < full.size(); ++n) {
    std::unique_ptr<WCHAR[]> text(new WCHAR[n + 1]);
    full.copy(text.get(), n);
    text[n] = 0;
    LOGFONTW font{};
    EXPECT_EQ(FntFromString(text.get(), &font), 0) << n;
  }
  LOGFONTW font{};
  ASSERT_EQ(FntFromString(full.c_str(), &font), 1);
  EXPECT_EQ(std::u16string(font.lfFaceName), u"A\\b\"c\u00E9");
}
