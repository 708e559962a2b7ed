#include "platform/Utf.h"

namespace vantrel1 {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

void AppendUtf16(std::u16string& out, char32_t cp) {
  if (cp < 0x10000) {
    out += static_cast<char16_t>(cp);
  } else {
    cp -= 0x10000;
    out += static_cast<char16_t>(0xD800 + (cp >> 10));
    out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
  }
}

bool IsHigh(char16_t u) { return u >= 0xD800 && u <= 0xDBFF; }
bool IsLow(char16_t u) { return u >= 0xDC00 && u <= 0xDFFF; }

// Decodes one UTF-8 sequence at text[i]; advances i past it (by one byte when invalid).
char32_t DecodeUtf8(std::string_view text, std::size_t& i) {
  const auto lead = static_cast<unsigned char>(text[i++]);
  if (lead < 0x80) return lead;
  int extra = 0;
  char32_t cp = 0;
  char32_t min = 0;
  if ((lead & 0xE0) == 0xC0) { extra = 1; cp = lead & 0x1F; min = 0x80; }
  else if ((lead & 0xF0) == 0xE0) { extra = 2; cp = lead & 0x0F; min = 0x800; }
  else if ((lead & 0xF8) == 0xF0) { extra = 3; cp = lead & 0x07; min = 0x10000; }
  else return kReplacement;
  std::size_t j = i;
  for (int k = 0; k < extra; ++k, ++j) {
    if (j >= text.size()) return kReplacement;
    const auto c = static_cast<unsigned char>(text[j]);
    if ((c & 0xC0) != 0x80) return kReplacement;
    cp = (cp << 6) | (c & 0x3F);
  }
  // Overlong forms, surrogates and values past U+10FFFF are not characters.
  if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return kReplacement;
  i = j;
  return cp;
}

}  // namespace

std::string ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t u = text[i];
    if (IsHigh(u) && i + 1 < text.size() && IsLow(text[i + 1])) {
      AppendUtf8(out, 0x10000 + ((char32_t(u) - 0xD800) << 10) + (char32_t(text[i + 1]) - 0xDC00));
      ++i;
    } else if (IsHigh(u) || IsLow(u)) {
      AppendUtf8(out, kReplacement);
    } else {
      AppendUtf8(out, u);
    }
  }
  return out;
}

std::u16string FromUtf8(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) AppendUtf16(out, DecodeUtf8(text, i));
  return out;
}

}  // namespace vantrel1
