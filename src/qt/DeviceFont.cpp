#include "qt/DeviceFont.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>

#include "platform/FontModel.h"

namespace vantrel1 {
namespace {

LONG Round(double value) {
  if (!(value > -2147483648.0)) return -2147483647 - 1;
  if (value >= 2147483647.0) return 2147483647;
  return static_cast<LONG>(std::lround(value));
}

double Magnitude(LONG value) { return std::fabs(static_cast<double>(value)); }

QString RequestedFace(const LOGFONTW& font) {
  const WCHAR* end = std::find(font.lfFaceName, font.lfFaceName + LF_FACESIZE, u'\0');
  return QString::fromUtf16(font.lfFaceName, end - font.lfFaceName);
}

QString InstalledFace(const LOGFONTW& font) {
  const QString face = RequestedFace(font).trimmed();
  if (!face.isEmpty() && QFontDatabase::hasFamily(face)) return face;
  return QString::fromLatin1(kFallbackFace);
}

QFont ReferenceFont(const LOGFONTW& lf) {
  QFont font(InstalledFace(lf));
  font.setPixelSize(kReferencePixelSize);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setKerning(true);
  const LONG weight = lf.lfWeight == 0 ? FW_NORMAL : std::clamp<LONG>(lf.lfWeight, 1, 1000);
  font.setWeight(static_cast<QFont::Weight>(weight));
  font.setItalic(lf.lfItalic != 0);
  font.setUnderline(lf.lfUnderline != 0);
  font.setStrikeOut(lf.lfStrikeOut != 0);
  return font;
}

}  // namespace

DeviceFont::DeviceFont(const LOGFONTW& font) : m_logFont(font), m_font(ReferenceFont(font)) {
  m_family = QFontInfo(m_font).family();
  const QFontMetricsF metrics(m_font);
  m_ascent = metrics.ascent();
  m_descent = metrics.descent();
  m_leading = std::max(0.0, metrics.leading());
  m_averageWidth = metrics.averageCharWidth();
  m_maxWidth = metrics.maxWidth();

  const double cell = m_ascent + m_descent;
  if (font.lfHeight < 0)
    m_scale = Magnitude(font.lfHeight) / kReferencePixelSize;
  else if (cell > 0.0)
    m_scale = (font.lfHeight > 0 ? Magnitude(font.lfHeight) : kModelDefaultHeight) / cell;
  if (font.lfWidth != 0 && m_averageWidth > 0.0)
    m_stretch = Magnitude(font.lfWidth) / (m_averageWidth * m_scale);
}

double DeviceFont::ReferenceAdvance(std::u16string_view text) const {
  if (text.empty()) return 0.0;
  const QString s = QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
  return QFontMetricsF(m_font).horizontalAdvance(s);
}

double DeviceFont::Advance(std::u16string_view text) const {
  return ReferenceAdvance(text) * m_scale * m_stretch;
}

TEXTMETRICW DeviceFont::Metrics() const {
  TEXTMETRICW tm{};
  // The height is rounded as a whole, so that a cell height request comes back exactly.
  tm.tmHeight = Round(Ascent() + Descent());
  tm.tmAscent = std::min(tm.tmHeight, Round(Ascent()));
  tm.tmDescent = tm.tmHeight - tm.tmAscent;
  tm.tmInternalLeading = std::max<LONG>(0, Round(tm.tmHeight - kReferencePixelSize * m_scale));
  tm.tmExternalLeading = Round(m_leading * m_scale);
  tm.tmAveCharWidth = Round(m_averageWidth * m_scale * m_stretch);
  tm.tmMaxCharWidth = Round(m_maxWidth * m_scale * m_stretch);
  tm.tmWeight = m_logFont.lfWeight == 0 ? FW_NORMAL : std::clamp<LONG>(m_logFont.lfWeight, 1, 1000);
  CopyRequestIntoMetrics(m_logFont, tm);
  return tm;
}

}  // namespace vantrel1
