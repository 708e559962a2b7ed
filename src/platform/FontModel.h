#pragma once
// The fixed font model with which the recording device measures text. Every size follows
// from the LOGFONTW alone, in whole logical units, so that drawing tests can state exact
// text positions:
//
//   h          = |lfHeight|, or 12 when lfHeight is 0. The sign (cell height or character
//                height in GDI) makes no difference here.
//   w          = |lfWidth|, or round(h / 2) = (h + 1) / 2 when lfWidth is 0.
//   tmHeight   = h
//   tmAscent   = round(4h / 5) = (4h + 2) / 5, tmDescent = h - tmAscent
//                (h = 12: ascent 10, descent 2; h = 10: ascent 8, descent 2)
//   tmAveCharWidth = tmMaxCharWidth = w
//   tmInternalLeading = tmExternalLeading = tmOverhang = 0
//   tmWeight   = lfWeight, or FW_NORMAL when lfWeight is 0
//   tmItalic, tmUnderlined, tmStruckOut, tmCharSet, tmPitchAndFamily = the font's own
//                fields, so a LOGFONTW rebuilt from the metrics measures the same
//   extent     = (n × w, h) for n UTF-16 code units: every unit, a space or a surrogate
//                half alike, is w wide. Escapement does not change an extent (GDI measures
//                along the baseline), nor do weight, italic, underline or strike-out.
//   face name  = lfFaceName up to its terminator (an empty name stays empty).
//
// Heights and widths beyond the 32-bit range are held at 2147483647 and an extent that
// would exceed it saturates there.
#include <string>

#include "platform/Types.h"

namespace vantrel1 {

constexpr LONG kModelDefaultHeight = 12;

VANTREL1_EXPORT TEXTMETRICW ModelTextMetrics(const LOGFONTW& font);
// The metrics every device reports alike: a 96-dpi aspect, the character range, and the
// request's own flags, pitch and character set, so that a LOGFONTW rebuilt from the
// metrics asks for the same font.
VANTREL1_EXPORT void CopyRequestIntoMetrics(const LOGFONTW& font, TEXTMETRICW& tm);
VANTREL1_EXPORT SIZE ModelTextExtent(const LOGFONTW& font, int count);
VANTREL1_EXPORT std::u16string ModelFaceName(const LOGFONTW& font);

}  // namespace vantrel1
