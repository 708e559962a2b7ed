#include "platform/RecordingDevice.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "platform/FontModel.h"
#include "platform/Utf.h"

namespace {

const char* KindName(PrimitiveKind kind) {
  switch (kind) {
    case PrimitiveKind::Polyline: return "polyline";
    case PrimitiveKind::Polygon: return "polygon";
    case PrimitiveKind::Rectangle: return "rectangle";
    case PrimitiveKind::Ellipse: return "ellipse";
    case PrimitiveKind::Text: return "text";
  }
  return "?";
}

std::string PenStyleName(UINT style) {
  static const char* const names[] = {"solid", "dash", "dot", "dashdot", "dashdotdot", "null", "insideframe"};
  return style < std::size(names) ? names[style] : "style" + std::to_string(style);
}

// Shortest text that reads back as the same double.
std::string Number(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

std::string Colour(COLORREF c) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "RGB(%u,%u,%u)", GetRValue(c), GetGValue(c), GetBValue(c));
  return buffer;
}

std::string Quoted(std::u16string_view text) {
  std::string out = "\"";
  for (const char c : vantrel1::ToUtf8(text)) {
    if (c == '"' || c == '\\') out += '\\';
    if (c == '\n') {
      out += "\\n";
      continue;
    }
    out += c;
  }
  return out + '"';
}

std::string Points(const RecordedPrimitive& p) {
  std::string out;
  for (std::size_t i = 0; i < p.x.size() && i < p.y.size(); ++i)
    out += " (" + Number(p.x[i]) + "," + Number(p.y[i]) + ")";
  return out;
}

std::string PenPart(const LOGPEN& pen) {
  return " | pen " + PenStyleName(pen.lopnStyle) + " " + std::to_string(pen.lopnWidth.x) + " " +
         Colour(pen.lopnColor);
}

std::string BrushPart(const LOGBRUSH& brush) {
  return brush.lbStyle == BS_NULL ? " | brush null" : " | brush solid " + Colour(brush.lbColor);
}

std::string FontPart(const LOGFONTW& f) {
  std::string out = " | font " + Quoted(vantrel1::ModelFaceName(f)) + " h" + std::to_string(f.lfHeight) +
                    " w" + std::to_string(f.lfWidth) + " esc" + std::to_string(f.lfEscapement) +
                    " wt" + std::to_string(f.lfWeight);
  if (f.lfItalic) out += " italic";
  if (f.lfUnderline) out += " underline";
  if (f.lfStrikeOut) out += " strikeout";
  return out;
}

std::string TextStatePart(const RecordedPrimitive& p) {
  std::string out = " | color " + Colour(p.textColor);
  out += p.bkMode == OPAQUE ? " | bk opaque " + Colour(p.bkColor) : std::string(" | bk transparent");
  return out + " | align " + std::to_string(p.textAlign);
}

}  // namespace

std::string DescribePrimitive(const RecordedPrimitive& p) {
  std::string out = KindName(p.kind) + Points(p);
  if (p.kind == PrimitiveKind::Text) return out + " " + Quoted(p.text) + FontPart(p.font) + TextStatePart(p);
  out += PenPart(p.pen);
  if (p.kind != PrimitiveKind::Polyline) out += BrushPart(p.brush);
  return out;
}

CRecordingDevice::CRecordingDevice() : m_clip{-2147483647 - 1, 2147483647, 2147483647, -2147483647 - 1} {}

std::size_t CRecordingDevice::CountOf(PrimitiveKind kind) const {
  return static_cast<std::size_t>(std::count_if(m_primitives.begin(), m_primitives.end(),
                                                [kind](const RecordedPrimitive& p) { return p.kind == kind; }));
}

void CRecordingDevice::Clear() {
  m_primitives.clear();
  m_count = 0;
}

std::string CRecordingDevice::ToString() const {
  std::string out;
  for (const RecordedPrimitive& p : m_primitives) out += DescribePrimitive(p) + "\n";
  return out;
}

RecordedPrimitive* CRecordingDevice::Record(PrimitiveKind kind) {
  ++m_count;
  if (!m_recording) return nullptr;
  const GdiDcState& s = State();
  RecordedPrimitive& p = m_primitives.emplace_back();
  p.kind = kind;
  p.pen = s.pen;
  p.brush = s.brush;
  p.font = s.font;
  p.textColor = s.textColor;
  p.bkColor = s.bkColor;
  p.bkMode = s.bkMode;
  p.textAlign = s.textAlign;
  return &p;
}

void CRecordingDevice::RecordShape(PrimitiveKind kind, const double* x, const double* y, int count) {
  RecordedPrimitive* p = Record(kind);
  if (!p) return;
  p->x.assign(x, x + count);
  p->y.assign(y, y + count);
}

void CRecordingDevice::DrawPolyline(const double* x, const double* y, int count) {
  RecordShape(PrimitiveKind::Polyline, x, y, count);
}

void CRecordingDevice::DrawPolygon(const double* x, const double* y, int count) {
  RecordShape(PrimitiveKind::Polygon, x, y, count);
}

void CRecordingDevice::DrawRectangle(int left, int top, int right, int bottom) {
  const double x[] = {static_cast<double>(left), static_cast<double>(right)};
  const double y[] = {static_cast<double>(top), static_cast<double>(bottom)};
  RecordShape(PrimitiveKind::Rectangle, x, y, 2);
}

void CRecordingDevice::DrawEllipse(int left, int top, int right, int bottom) {
  const double x[] = {static_cast<double>(left), static_cast<double>(right)};
  const double y[] = {static_cast<double>(top), static_cast<double>(bottom)};
  RecordShape(PrimitiveKind::Ellipse, x, y, 2);
}

void CRecordingDevice::DrawString(int x, int y, std::u16string_view text) {
  RecordedPrimitive* p = Record(PrimitiveKind::Text);
  if (!p) return;
  p->x = {static_cast<double>(x)};
  p->y = {static_cast<double>(y)};
  p->text = std::u16string(text);
}

SIZE CRecordingDevice::TextExtent(const LOGFONTW& font, std::u16string_view text) const {
  const std::size_t n = std::min<std::size_t>(text.size(), 0x7FFFFFFF);
  return vantrel1::ModelTextExtent(font, static_cast<int>(n));
}

TEXTMETRICW CRecordingDevice::TextMetrics(const LOGFONTW& font) const {
  return vantrel1::ModelTextMetrics(font);
}

std::u16string CRecordingDevice::FaceName(const LOGFONTW& font) const {
  return vantrel1::ModelFaceName(font);
}
