#pragma once
// A LOGFONTW made real: the Qt font that draws it and its measures in logical units.
//
// Every font is opened at one large reference size with hinting off, so that its measures
// scale linearly, and is drawn through a transform that scales it to the requested size.
// What GetTextExtentPoint32W reports is therefore exactly what TextOutW covers.
#include <string_view>

#include <QFont>
#include <QString>

#include "platform/Types.h"

namespace vantrel1 {

constexpr int kReferencePixelSize = 256;
// Faces that are not installed fall back to this one, which every machine running the
// library has.
inline const char* const kFallbackFace = "DejaVu Sans";

class DeviceFont {
 public:
  // GDI's height rule: a negative lfHeight is the character (em) height, a positive one the
  // cell height (ascent + descent), 0 the default cell height of the recording device's
  // font model. A non-zero lfWidth stretches the glyphs to that average character width.
  explicit DeviceFont(const LOGFONTW& font);

  const QFont& Font() const { return m_font; }
  QString Family() const { return m_family; }
  // Logical units per reference pixel, vertically; horizontally also times Stretch().
  double Scale() const { return m_scale; }
  double Stretch() const { return m_stretch; }

  // In logical units.
  double Ascent() const { return m_ascent * m_scale; }
  double Descent() const { return m_descent * m_scale; }
  double Advance(std::u16string_view text) const;

  TEXTMETRICW Metrics() const;

  // Reference pixels (before Scale and Stretch).
  double ReferenceAscent() const { return m_ascent; }
  double ReferenceDescent() const { return m_descent; }
  double ReferenceAdvance(std::u16string_view text) const;

 private:
  LOGFONTW m_logFont;
  QFont m_font;
  QString m_family;
  double m_scale = 1.0;
  double m_stretch = 1.0;
  double m_ascent = 0.0;
  double m_descent = 0.0;
  double m_leading = 0.0;
  double m_averageWidth = 0.0;
  double m_maxWidth = 0.0;
};

}  // namespace vantrel1
