#include "suite/VantrelFont.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kFaceMax = LF_FACESIZE - 1;

// ---- writing

void AppendNumber(std::u16string& out, long long value) {
  const std::string digits = std::to_string(value);
  out.append(digits.begin(), digits.end());
  out.push_back(u',');
}

bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLowSurrogate(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

void AppendUnitEscape(std::u16string& out, char16_t c) {
  static const char16_t kHex[] = u"0123456789ABCDEF";
  out += u"\\u";
  for (int shift = 12; shift >= 0; shift -= 4) out.push_back(kHex[(c >> shift) & 0xF]);
}

void AppendFace(std::u16string& out, const WCHAR* face) {
  int n = 0;
  while (n < kFaceMax && face[n] != 0) ++n;
  out.push_back(u'"');
  for (int i = 0; i < n; ++i) {
    const char16_t c = face[i];
    const bool pairStart = IsHighSurrogate(c) && i + 1 < n && IsLowSurrogate(face[i + 1]);
    const bool pairEnd = IsLowSurrogate(c) && i > 0 && IsHighSurrogate(face[i - 1]);
    if (c == u'\\' || c == u'"') {
      out.push_back(u'\\');
      out.push_back(c);
    } else if (c < 0x20 || c == 0x7F || ((IsHighSurrogate(c) || IsLowSurrogate(c)) && !pairStart && !pairEnd)) {
      AppendUnitEscape(out, c);
    } else {
      out.push_back(c);
    }
  }
  out.push_back(u'"');
}

// ---- reading

class Reader {
 public:
  explicit Reader(const WCHAR* text) : m_p(text) {}

  bool Number(long long min, long long max, long long* value) {
    const bool negative = *m_p == u'-';
    if (negative) ++m_p;
    if (*m_p < u'0' || *m_p > u'9') return false;
    long long magnitude = 0;
    for (; *m_p >= u'0' && *m_p <= u'9'; ++m_p) {
      magnitude = magnitude * 10 + (*m_p - u'0');
      if (magnitude > 1LL << 40) return false;  // far beyond every field's range
    }
    *value = negative ? -magnitude : magnitude;
    return *value >= min && *value <= max && Take(u',');
  }

  bool Face(WCHAR* face) {
    if (!Take(u'"')) return false;
    int n = 0;
    while (*m_p != u'"') {
      char16_t c = 0;
      if (!Unit(&c) || n == kFaceMax) return false;
      face[n++] = c;
    }
    ++m_p;
    for (int i = n; i < LF_FACESIZE; ++i) face[i] = 0;
    return *m_p == 0;
  }

 private:
  bool Take(char16_t c) {
    if (*m_p != c) return false;
    ++m_p;
    return true;
  }

  // One unit of the face, escaped or not; a terminator ends the text before its quote.
  bool Unit(char16_t* c) {
    if (*m_p == 0) return false;
    if (*m_p != u'\\') {
      *c = *m_p++;
      return true;
    }
    ++m_p;
    if (*m_p == u'\\' || *m_p == u'"') {
      *c = *m_p++;
      return true;
    }
    if (!Take(u'u')) return false;
    unsigned value = 0;
    for (int i = 0; i < 4; ++i) {
      const int digit = HexDigit(*m_p);
      if (digit < 0) return false;  // the terminator is no digit either
      value = value * 16 + static_cast<unsigned>(digit);
      ++m_p;
    }
    *c = static_cast<char16_t>(value);
    return value != 0;  // an escaped terminator would cut the name short
  }

  static int HexDigit(char16_t c) {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    return -1;
  }

  const WCHAR* m_p;
};

}  // namespace

HFONT FntGraphic2(double angle, const LOGFONTW& font, HWND /*window*/) {
  if (!std::isfinite(angle)) return nullptr;
  double tenths = std::round(std::remainder(angle, 2 * kPi) * 1800.0 / kPi);
  if (tenths <= -1800.0) tenths += 3600.0;
  LOGFONTW turned = font;
  turned.lfEscapement = static_cast<LONG>(tenths);
  turned.lfOrientation = turned.lfEscapement;
  return CreateFontIndirectW(&turned);
}

WCHAR* FntToString(const LOGFONTW* font, WCHAR* text) {
  if (!font || !text) return nullptr;
  std::u16string out;
  for (const long long v : {font->lfHeight, font->lfWidth, font->lfEscapement, font->lfOrientation, font->lfWeight})
    AppendNumber(out, v);
  for (const BYTE v : {font->lfItalic, font->lfUnderline, font->lfStrikeOut, font->lfCharSet, font->lfOutPrecision,
                       font->lfClipPrecision, font->lfQuality, font->lfPitchAndFamily})
    AppendNumber(out, v);
  AppendFace(out, font->lfFaceName);
  out.copy(text, out.size());
  text[out.size()] = 0;
  return text;
}

int FntFromString(const WCHAR* text, LOGFONTW* font) {
  if (!text || !font) return 0;
  Reader reader(text);
  long long v[13] = {};
  for (int i = 0; i < 13; ++i) {
    const bool isLong = i < 5;
    if (!reader.Number(isLong ? INT32_MIN : 0, isLong ? INT32_MAX : 255, &v[i])) return 0;
  }
  LOGFONTW read{};
  if (!reader.Face(read.lfFaceName)) return 0;
  LONG* longs[] = {&read.lfHeight, &read.lfWidth, &read.lfEscapement, &read.lfOrientation, &read.lfWeight};
  BYTE* bytes[] = {&read.lfItalic,       &read.lfUnderline,      &read.lfStrikeOut, &read.lfCharSet,
                   &read.lfOutPrecision, &read.lfClipPrecision, &read.lfQuality,   &read.lfPitchAndFamily};
  for (int i = 0; i < 5; ++i) *longs[i] = static_cast<LONG>(v[i]);
  for (int i = 0; i < 8; ++i) *bytes[i] = static_cast<BYTE>(v[5 + i]);
  *font = read;
  return 1;
}
