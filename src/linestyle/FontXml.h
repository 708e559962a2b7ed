#pragma once
// The XML form of a font, shared by line types and point symbols: fourteen child elements
// LF..., one per LOGFONT member, all as element data.
#include "platform/Types.h"

class CMarkup;

namespace vantrel1 {

void WriteFontXml(CMarkup& xml, const LOGFONTW& lf);
// A member whose element the document lacks keeps its value from `defaults`.
LOGFONTW ReadFontXml(CMarkup& xml, const LOGFONTW& defaults);

}  // namespace vantrel1
