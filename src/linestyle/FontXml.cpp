#include "linestyle/FontXml.h"

#include <string_view>

#include "linestyle/ItemXml.h"
#include "markup/Markup.h"
#include "platform/StdStr.h"
#include "platform/WideCrt.h"
#include "platform/WideFormat.h"

namespace vantrel1 {

namespace {

struct FontField {
  const WCHAR* name;
  LONG LOGFONTW::*longField;
  BYTE LOGFONTW::*byteField;
};

// Alphabetical, as documents have always stored them; LFFACE is text and stands apart.
constexpr FontField kFontFields[] = {
    {u"LFCHAR", nullptr, &LOGFONTW::lfCharSet},
    {u"LFCLIP", nullptr, &LOGFONTW::lfClipPrecision},
    {u"LFESCA", &LOGFONTW::lfEscapement, nullptr},
    {u"LFFACE", nullptr, nullptr},
    {u"LFHEIG", &LOGFONTW::lfHeight, nullptr},
    {u"LFITAL", nullptr, &LOGFONTW::lfItalic},
    {u"LFORIE", &LOGFONTW::lfOrientation, nullptr},
    {u"LFOUTP", nullptr, &LOGFONTW::lfOutPrecision},
    {u"LFPITC", nullptr, &LOGFONTW::lfPitchAndFamily},
    {u"LFQUAL", nullptr, &LOGFONTW::lfQuality},
    {u"LFSTRI", nullptr, &LOGFONTW::lfStrikeOut},
    {u"LFUNDE", nullptr, &LOGFONTW::lfUnderline},
    {u"LFWEIG", &LOGFONTW::lfWeight, nullptr},
    {u"LFWIDT", &LOGFONTW::lfWidth, nullptr},
};

CStdStrW FaceName(const LOGFONTW& lf) {
  return CStdStrW(std::u16string_view(lf.lfFaceName, ArrayTextLength(lf.lfFaceName)));
}

}  // namespace

void WriteFontXml(CMarkup& xml, const LOGFONTW& lf) {
  for (const FontField& field : kFontFields) {
    if (field.longField != nullptr)
      AddNumberElem(xml, field.name, lf.*field.longField);
    else if (field.byteField != nullptr)
      AddNumberElem(xml, field.name, lf.*field.byteField);
    else
      xml.AddElem(field.name, FaceName(lf).c_str());
  }
}

LOGFONTW ReadFontXml(CMarkup& xml, const LOGFONTW& defaults) {
  LOGFONTW lf = defaults;
  for (const FontField& field : kFontFields) {
    if (field.longField != nullptr)
      lf.*field.longField = xml.GetDataInt(field.name, lf.*field.longField);
    else if (field.byteField != nullptr)
      lf.*field.byteField = static_cast<BYTE>(xml.GetDataInt(field.name, lf.*field.byteField));
    else
      lstrcpynW(lf.lfFaceName, xml.GetDataStr(field.name, FaceName(lf)).c_str(), LF_FACESIZE);
  }
  return lf;
}

}  // namespace vantrel1
