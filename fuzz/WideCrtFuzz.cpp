// Feeds arbitrary UTF-16 text (little-endian byte pairs after one control byte) to the
// number parsers, the tokenizer and the formatter — as text to parse, as a %s argument
// and as the format itself — and checks that the bounded and unbounded forms agree and
// that numbers survive a round trip through text.
#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/StdStr.h"
#include "platform/WideCrt.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

std::u16string Decode(const std::uint8_t* data, std::size_t size) {
  std::u16string text;
  for (std::size_t i = 0; i + 1 < size; i += 2) text += static_cast<char16_t>(data[i] | (data[i + 1] << 8));
  return text;
}

void CheckNumbers(const char16_t* text) {
  const long long wide = _wtoi64(text);
  Check(_wtoi(text) == static_cast<int>(std::clamp<long long>(wide, INT_MIN, INT_MAX)));
  Check(_wtol(text) == _wtoi(text));
  CStdStrW printed;
  Check(printed.Format(u"%lld", wide));
  Check(_wtoi64(printed.c_str()) == wide);
  const double value = _wtof(text);
  Check(printed.Format(u"%.17g", value));
  const double back = _wtof(printed.c_str());
  Check(std::isnan(value) ? std::isnan(back) : std::memcmp(&back, &value, sizeof value) == 0);
}

void CheckTokens(const char16_t* text) {
  const std::u16string_view delimiters = u",; ";
  std::u16string copy(text);
  std::u16string joined;
  char16_t* context = nullptr;
  for (char16_t* t = wcstok(copy.data(), u",; ", &context); t != nullptr; t = wcstok(nullptr, u",; ", &context)) {
    const std::u16string_view token(t);
    Check(!token.empty() && token.find_first_of(delimiters) == std::u16string_view::npos);
    joined += token;
  }
  std::u16string expected(text);
  expected.erase(std::remove_if(expected.begin(), expected.end(),
                                [&](char16_t c) { return delimiters.find(c) != std::u16string_view::npos; }),
                 expected.end());
  Check(joined == expected);
}

// The bounded form must hold exactly the first `count` units of the unbounded result.
template <typename... Args>
void CheckBoundedAgrees(std::size_t count, const char16_t* format, const Args&... args) {
  const int needed = _snwprintf(nullptr, 0, format, args...);
  CStdStrW full;
  if (needed < 0 || needed > 65536) {
    if (needed < 0) Check(!full.Format(format, args...));
    return;
  }
  Check(full.Format(format, args...) && full.GetLength() == needed);
  std::u16string buffer(count + 1, u'#');
  const int written = _snwprintf(buffer.data(), count, format, args...);
  const std::size_t n = static_cast<std::size_t>(needed);
  Check(written == (n <= count ? needed : -1));
  Check(buffer.compare(0, std::min(n, count), full, 0, std::min(n, count)) == 0);
  Check(n >= count || buffer[n] == 0);
  const int terminated = _snwprintf_s(buffer.data(), count + 1, _TRUNCATE, format, args...);
  Check(terminated == (n <= count ? needed : -1));
  Check(buffer[std::min(n, count)] == 0);
}

void CheckStrings(const CStdStrW& s, int a, int b) {
  CStdStrW upper = s;
  upper.MakeUpper();
  Check(s.CompareNoCase(upper) == 0);
  CStdStrW lower = upper;
  lower.MakeLower();
  Check(lower.CompareNoCase(s) == 0);
  Check(s.Mid(a, b).GetLength() <= std::max(0, b));
  Check(s.Left(a) + s.Mid(a) == s);
  Check(s.Right(b).GetLength() == std::clamp(b, 0, s.GetLength()));
  CStdStrW edited = s;
  edited.Insert(a, s.Left(b));
  edited.Delete(b, a);
  edited.Replace(u",", u",,");
  edited.Trim();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t count = data[0] % 48;
  const CStdStrW text(Decode(data + 1, size - 1));
  const char16_t* units = text.c_str();  // ends at the first 0 unit, as C text does
  CheckNumbers(units);
  CheckTokens(units);
  CheckBoundedAgrees(count, u"%s|%.12g|%d|%-8.3s|%05x", text, _wtof(units), _wtoi(units), units, _wtoi(units));
  CheckBoundedAgrees(count, units, 42, -7LL, 2.5, u"ž", "narrow", nullptr, 'c', 1e300, 3u);
  CheckStrings(text, static_cast<int>(data[0]) - 128, static_cast<int>(size % 64) - 8);
  return 0;
}
