#include "platform/FontModel.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace vantrel1 {
namespace {

constexpr std::int64_t kLongMax = std::numeric_limits<LONG>::max();

// |value| without the overflow of -2147483648.
std::int64_t Magnitude(LONG value) {
  return std::min<std::int64_t>(value < 0 ? -static_cast<std::int64_t>(value) : value, kLongMax);
}

std::int64_t ModelHeight(const LOGFONTW& font) {
  return font.lfHeight == 0 ? kModelDefaultHeight : Magnitude(font.lfHeight);
}

std::int64_t ModelWidth(const LOGFONTW& font) {
  return font.lfWidth == 0 ? (ModelHeight(font) + 1) / 2 : Magnitude(font.lfWidth);
}

}  // namespace

TEXTMETRICW ModelTextMetrics(const LOGFONTW& font) {
  const std::int64_t h = ModelHeight(font);
  const std::int64_t ascent = (4 * h + 2) / 5;
  const LONG w = static_cast<LONG>(ModelWidth(font));
  TEXTMETRICW tm{};
  tm.tmHeight = static_cast<LONG>(h);
  tm.tmAscent = static_cast<LONG>(ascent);
  tm.tmDescent = static_cast<LONG>(h - ascent);
  tm.tmAveCharWidth = w;
  tm.tmMaxCharWidth = w;
  tm.tmWeight = font.lfWeight == 0 ? FW_NORMAL : font.lfWeight;
  CopyRequestIntoMetrics(font, tm);
  return tm;
}

void CopyRequestIntoMetrics(const LOGFONTW& font, TEXTMETRICW& tm) {
  tm.tmDigitizedAspectX = 96;
  tm.tmDigitizedAspectY = 96;
  tm.tmFirstChar = u' ';
  tm.tmLastChar = u'\uFFFC';
  tm.tmDefaultChar = u'?';
  tm.tmBreakChar = u' ';
  tm.tmItalic = font.lfItalic;
  tm.tmUnderlined = font.lfUnderline;
  tm.tmStruckOut = font.lfStrikeOut;
  tm.tmPitchAndFamily = font.lfPitchAndFamily;
  tm.tmCharSet = font.lfCharSet;
}

SIZE ModelTextExtent(const LOGFONTW& font, int count) {
  const std::int64_t n = std::max(count, 0);
  return SIZE{static_cast<LONG>(std::min(n * ModelWidth(font), kLongMax)),
              static_cast<LONG>(ModelHeight(font))};
}

std::u16string ModelFaceName(const LOGFONTW& font) {
  const WCHAR* end = std::find(font.lfFaceName, font.lfFaceName + LF_FACESIZE, u'\0');
  return std::u16string(font.lfFaceName, end);
}

}  // namespace vantrel1
