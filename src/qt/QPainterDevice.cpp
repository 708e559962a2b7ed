#include "qt/QPainterDevice.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPaintEngine>

#include "platform/VectorState.h"
#include "qt/DeviceClip.h"
#include "qt/DeviceFont.h"

using vantrel1::DeviceFont;

namespace {

// Beyond this the painter is given a polygon instead of an ellipse, so that its curve
// flattening never works on coordinates far off the page.
constexpr double kEllipseLimit = 1e6;
constexpr int kEllipseSides = 4096;
// Room around the page for round caps and joins and antialiasing, in device pixels.
constexpr double kClipMargin = 2.0;
constexpr double kMaxTextEmPixels = 1048576.0;
// Held lines are drawn in batches of at most this many, so that holding costs bounded memory.
constexpr std::size_t kMaxHeldLines = 4096;

// GDI's cosmetic dash styles, on and off lengths in screen pixels.
struct DashStyle {
  int style;
  int count;
  double lengths[6];
};
constexpr DashStyle kDashStyles[] = {
    {PS_DASH, 2, {18, 6}},                   // long dashes
    {PS_DOT, 2, {3, 3}},                     // dots
    {PS_DASHDOT, 4, {9, 6, 3, 6}},           // dash, dot
    {PS_DASHDOTDOT, 6, {9, 3, 3, 3, 3, 3}},  // dash, dot, dot
};

const DashStyle* FindDashStyle(UINT style) {
  for (const DashStyle& d : kDashStyles)
    if (static_cast<UINT>(d.style) == style) return &d;
  return nullptr;
}

QColor Colour(COLORREF c) { return QColor(GetRValue(c), GetGValue(c), GetBValue(c)); }

double Magnitude(LONG value) { return std::fabs(static_cast<double>(value)); }

bool HasGuiApplication() { return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr; }

bool SameFont(const LOGFONTW& a, const LOGFONTW& b) {
  return a.lfHeight == b.lfHeight && a.lfWidth == b.lfWidth && a.lfEscapement == b.lfEscapement &&
         a.lfOrientation == b.lfOrientation && a.lfWeight == b.lfWeight && a.lfItalic == b.lfItalic &&
         a.lfUnderline == b.lfUnderline && a.lfStrikeOut == b.lfStrikeOut && a.lfCharSet == b.lfCharSet &&
         a.lfOutPrecision == b.lfOutPrecision && a.lfClipPrecision == b.lfClipPrecision &&
         a.lfQuality == b.lfQuality && a.lfPitchAndFamily == b.lfPitchAndFamily &&
         std::equal(std::begin(a.lfFaceName), std::end(a.lfFaceName), std::begin(b.lfFaceName));
}

// A solid pen one device pixel wide, as dash walks and most lines of a drawing use.
bool IsHairline(const QPen& pen) { return pen.style() == Qt::SolidLine && pen.widthF() == 1.0; }

bool SamePen(const LOGPEN& a, const LOGPEN& b) {
  return a.lopnStyle == b.lopnStyle && a.lopnWidth.x == b.lopnWidth.x && a.lopnWidth.y == b.lopnWidth.y &&
         a.lopnColor == b.lopnColor;
}

// Inclusive, as the clipper keeps a segment that touches the bounds; false for NaN.
bool Contains(const QRectF& r, const QPointF& p) {
  return p.x() >= r.left() && p.x() <= r.right() && p.y() >= r.top() && p.y() <= r.bottom();
}

// Inclusive, so that a flat box (a degenerate ellipse drawn as a line) still counts.
bool Overlaps(const QRectF& a, const QRectF& b) {
  return a.left() <= b.right() && a.right() >= b.left() && a.top() <= b.bottom() && a.bottom() >= b.top();
}

QPolygonF EllipsePolygon(const QRectF& box) {
  QPolygonF polygon;
  polygon.reserve(kEllipseSides);
  const QPointF c = box.center();
  for (int i = 0; i < kEllipseSides; ++i) {
    const double a = 2.0 * std::numbers::pi * i / kEllipseSides;
    polygon << QPointF(c.x() + 0.5 * box.width() * std::cos(a), c.y() + 0.5 * box.height() * std::sin(a));
  }
  return polygon;
}

// The text's reference-size cell relative to the reference point (y down), placed by the
// horizontal and vertical alignment flags.
QRectF TextCell(UINT align, double advance, double ascent, double descent) {
  double left = 0.0;
  if ((align & TA_CENTER) == TA_CENTER)
    left = -advance / 2.0;
  else if ((align & TA_CENTER) == TA_RIGHT)
    left = -advance;
  double top = 0.0;  // TA_TOP
  if ((align & TA_BASELINE) == TA_BASELINE)
    top = -ascent;
  else if ((align & TA_BASELINE) == TA_BOTTOM)
    top = -(ascent + descent);
  return QRectF(left, top, advance, ascent + descent);
}

}  // namespace

QPainterDevice::QPainterDevice(QPainter& painter, const PageMapping& mapping)
    : m_painter(&painter), m_mapping(mapping) {
  Prepare();
}

QPainterDevice::QPainterDevice(std::unique_ptr<QPainter> painter, const PageMapping& mapping)
    : m_ownPainter(std::move(painter)), m_painter(m_ownPainter.get()), m_mapping(mapping) {
  Prepare();
}

QPainterDevice::~QPainterDevice() { End(); }

void QPainterDevice::Prepare() {
  const vantrel1::VectorStateScope vectorState;
  if (!m_painter->isActive()) {
    m_ended = true;
    return;
  }
  m_painter->save();
  m_painter->setRenderHint(QPainter::Antialiasing, true);
  m_painter->setRenderHint(QPainter::TextAntialiasing, true);
  m_base = m_painter->worldTransform();
  const QPaintDevice* target = m_painter->device();
  const QRectF deviceRect(0.0, 0.0, target->width(), target->height());
  bool invertible = false;
  const QTransform toPainter = m_base.inverted(&invertible);
  m_page = invertible ? toPainter.mapRect(deviceRect) : deviceRect;
  // Only the raster engine strokes a batch of one-pixel lines exactly as it strokes them
  // one at a time, and only without scaling (a scaled pen is no longer one pixel wide). A
  // borrowed painter may be drawn on by its owner between two calls, so nothing is held.
  m_holdLines = m_ownPainter && m_painter->paintEngine() != nullptr &&
                m_painter->paintEngine()->type() == QPaintEngine::Raster &&
                m_painter->combinedTransform().type() <= QTransform::TxTranslate &&
                m_painter->deviceTransform().type() <= QTransform::TxTranslate;
  QPaintDevice* device = m_painter->device();
  if (m_holdLines && device->devType() == QInternal::Image && !m_painter->hasClipping() &&
      m_painter->opacity() == 1.0 && m_painter->compositionMode() == QPainter::CompositionMode_SourceOver) {
    m_raster = vantrel1::HairlineRaster(static_cast<QImage*>(device));
    const QTransform toImage = m_painter->combinedTransform();
    m_rasterOffset = QPointF(toImage.dx(), toImage.dy());
  }
}

std::unique_ptr<QPainterDevice> QPainterDevice::ForPaintDevice(QPaintDevice& target, const PageMapping& mapping) {
  if (!mapping.IsValid() || !HasGuiApplication()) return nullptr;
  auto painter = std::make_unique<QPainter>();
  if (!painter->begin(&target)) return nullptr;
  return std::unique_ptr<QPainterDevice>(new QPainterDevice(std::move(painter), mapping));
}

std::unique_ptr<QPainterDevice> QPainterDevice::ForImage(QImage& image, const LogicalWindow& window,
                                                         double unitsPerMm) {
  if (image.isNull()) return nullptr;
  const double dpi = image.dotsPerMeterX() > 0 ? image.dotsPerMeterX() * 0.0254 : 96.0;
  return ForPaintDevice(image, PageMapping(window, unitsPerMm, dpi));
}

bool QPainterDevice::End() {
  if (m_ended) return true;
  DrawHeldLines();
  m_ended = true;
  m_painter->restore();
  return m_ownPainter ? m_ownPainter->end() : true;
}

bool QPainterDevice::IsActive() const { return !m_ended && m_painter->isActive() && m_mapping.IsValid(); }

double QPainterDevice::PenWidthPixels() const {
  const LONG width = State().pen.lopnWidth.x;
  if (width == 0) return 1.0;
  const double limit = std::max(1.0, 4.0 * std::hypot(m_page.width(), m_page.height()));
  return std::clamp(Magnitude(width) * m_mapping.DevicePerUnit(), 1.0, limit);
}

QPen QPainterDevice::CurrentPen() const {
  const LOGPEN& logPen = State().pen;
  if (logPen.lopnStyle == static_cast<UINT>(PS_NULL)) return QPen(Qt::NoPen);
  const double width = PenWidthPixels();
  QPen pen(QBrush(Colour(logPen.lopnColor)), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  const DashStyle* dashes = FindDashStyle(logPen.lopnStyle);
  if (!dashes || Magnitude(logPen.lopnWidth.x) > 1.0) return pen;
  QList<qreal> pattern;
  for (int i = 0; i < dashes->count; ++i)
    pattern << dashes->lengths[i] * m_mapping.DevicePerScreenPixel() / width;
  pen.setDashPattern(pattern);
  pen.setCapStyle(Qt::FlatCap);
  pen.setJoinStyle(Qt::BevelJoin);
  return pen;
}

const QPen& QPainterDevice::StatePen() {
  if (!m_statePenValid || !SamePen(State().pen, m_statePenKey)) {
    m_statePen = CurrentPen();
    m_statePenKey = State().pen;
    m_statePenValid = true;
  }
  return m_statePen;
}

bool QPainterDevice::HoldLine(const double* x, const double* y) {
  const QPen& pen = StatePen();
  if (!IsHairline(pen)) return false;
  const QPointF a = m_mapping.ToDevice(x[0], y[0]);
  const QPointF b = m_mapping.ToDevice(x[1], y[1]);
  // Qt draws a batched line of (nearly) no length as a dot, a lone one as a stroke.
  if (a == b) return false;
  const QRectF bounds = DrawingBounds(pen.widthF());
  if (!Contains(bounds, a) || !Contains(bounds, b)) return false;
  // Written at once, the pixels' cache misses overlap with the walk that makes the next line.
  if (m_raster.Active()) {
    m_raster.Draw(a + m_rasterOffset, b + m_rasterOffset, pen.color().rgb());
    return true;
  }
  if (!m_heldLines.empty() && (pen != m_heldPen || m_heldLines.size() >= kMaxHeldLines)) DrawHeldLines();
  if (m_heldLines.empty()) m_heldPen = pen;
  m_heldLines.emplace_back(a, b);
  return true;
}

void QPainterDevice::DrawHeldLines() {
  const vantrel1::VectorStateScope vectorState;
  if (m_heldLines.empty()) return;
  m_painter->setPen(m_heldPen);
  m_painter->setBrush(QBrush(Qt::NoBrush));
  m_painter->drawLines(m_heldLines.data(), static_cast<int>(m_heldLines.size()));
  m_heldLines.clear();
}

QRectF QPainterDevice::DrawingBounds(double penWidth) const {
  const double margin = penWidth / 2.0 + kClipMargin;
  return m_page.adjusted(-margin, -margin, margin, margin);
}

QPolygonF QPainterDevice::ToDevice(const double* x, const double* y, int count) const {
  QPolygonF points;
  points.reserve(count);
  for (int i = 0; i < count; ++i) points << m_mapping.ToDevice(x[i], y[i]);
  return points;
}

QRectF QPainterDevice::BoxToDevice(int left, int top, int right, int bottom) const {
  QRectF box = QRectF(m_mapping.ToDevice(left, top), m_mapping.ToDevice(right, bottom)).normalized();
  const LOGPEN& pen = State().pen;
  if (pen.lopnStyle == static_cast<UINT>(PS_INSIDEFRAME) && pen.lopnWidth.x > 1) {
    const double inset = std::min({PenWidthPixels() / 2.0, box.width() / 2.0, box.height() / 2.0});
    box.adjust(inset, inset, -inset, -inset);
  }
  return box;
}

void QPainterDevice::DrawShape(const QPolygonF& device, bool closed) {
  const vantrel1::VectorStateScope vectorState;
  DrawHeldLines();
  const QPen pen = StatePen();
  const bool filled = closed && State().brush.lbStyle != BS_NULL;
  if (pen.style() == Qt::NoPen && !filled) return;
  const QRectF bounds = DrawingBounds(pen.style() == Qt::NoPen ? 0.0 : pen.widthF());
  if (!closed && m_raster.Active() && IsHairline(pen)) {
    for (const QPolygonF& run : vantrel1::ClipPolyline(device, bounds))
      m_raster.DrawPolyline(run.constData(), run.size(), m_rasterOffset, pen.color().rgb());
    return;
  }
  m_painter->setPen(pen);
  m_painter->setBrush(filled ? QBrush(Colour(State().brush.lbColor)) : QBrush(Qt::NoBrush));
  if (!closed) {
    for (const QPolygonF& run : vantrel1::ClipPolyline(device, bounds)) m_painter->drawPolyline(run);
    return;
  }
  const QPolygonF clipped = vantrel1::ClipPolygon(device, bounds);
  if (clipped.size() >= 2) m_painter->drawPolygon(clipped, Qt::OddEvenFill);
}

void QPainterDevice::DrawPolyline(const double* x, const double* y, int count) {
  if (!IsActive() || !x || !y || count < 2) return;
  if (count == 2 && m_holdLines && HoldLine(x, y)) return;
  DrawShape(ToDevice(x, y, count), false);
}

void QPainterDevice::DrawPolygon(const double* x, const double* y, int count) {
  if (IsActive() && x && y && count >= 2) DrawShape(ToDevice(x, y, count), true);
}

void QPainterDevice::DrawRectangle(int left, int top, int right, int bottom) {
  if (!IsActive()) return;
  const QRectF box = BoxToDevice(left, top, right, bottom);
  DrawShape(QPolygonF(box).mid(0, 4), true);
}

void QPainterDevice::DrawEllipse(int left, int top, int right, int bottom) {
  const vantrel1::VectorStateScope vectorState;
  if (!IsActive()) return;
  const QRectF box = BoxToDevice(left, top, right, bottom);
  const QRectF bounds = DrawingBounds(PenWidthPixels());
  if (!Overlaps(box, bounds)) return;
  const QRectF near(-kEllipseLimit, -kEllipseLimit, 2 * kEllipseLimit, 2 * kEllipseLimit);
  if (!near.contains(box)) {
    DrawShape(EllipsePolygon(box), true);
    return;
  }
  DrawHeldLines();
  const QPen pen = StatePen();
  const bool filled = State().brush.lbStyle != BS_NULL;
  if (pen.style() == Qt::NoPen && !filled) return;
  m_painter->setPen(pen);
  m_painter->setBrush(filled ? QBrush(Colour(State().brush.lbColor)) : QBrush(Qt::NoBrush));
  m_painter->drawEllipse(box);
}

const DeviceFont& QPainterDevice::Font(const LOGFONTW& font) const {
  if (!m_font || !SameFont(font, m_fontKey)) {
    m_font = std::make_unique<DeviceFont>(font);
    m_fontKey = font;
  }
  return *m_font;
}

QTransform QPainterDevice::TextTransform(int x, int y, const DeviceFont& font) const {
  const double scale = m_mapping.DevicePerUnit() * font.Scale();
  // Tenths of a degree counter-clockwise on the page; device y runs downwards, so the
  // painter turns the other way.
  const double degrees = std::fmod(static_cast<double>(State().font.lfEscapement), 3600.0) / 10.0;
  QTransform t;
  t.translate(m_mapping.ToDevice(x, y).x(), m_mapping.ToDevice(x, y).y());
  t.rotate(-degrees);
  t.scale(scale * font.Stretch(), scale);
  return t * m_base;
}

void QPainterDevice::DrawString(int x, int y, std::u16string_view text) {
  const vantrel1::VectorStateScope vectorState;
  if (!IsActive() || text.empty()) return;
  const GdiDcState& s = State();
  const DeviceFont& font = Font(s.font);
  const double em = vantrel1::kReferencePixelSize * m_mapping.DevicePerUnit() * font.Scale();
  if (!(em * std::max(1.0, font.Stretch()) <= kMaxTextEmPixels)) return;

  const double ascent = font.ReferenceAscent();
  const QRectF cell = TextCell(s.textAlign, font.ReferenceAdvance(text), ascent, font.ReferenceDescent());
  const QTransform t = TextTransform(x, y, font);
  // Italic overhang, underline and accents may reach a little beyond the cell.
  const double reach = 0.5 * vantrel1::kReferencePixelSize;
  if (!Overlaps(t.mapRect(cell.adjusted(-reach, -reach, reach, reach)), m_page)) return;

  DrawHeldLines();
  m_painter->save();
  m_painter->setWorldTransform(t);
  if (s.bkMode == OPAQUE) m_painter->fillRect(cell, Colour(s.bkColor));
  m_painter->setFont(font.Font());
  m_painter->setPen(Colour(s.textColor));
  m_painter->drawText(QPointF(cell.left(), cell.top() + ascent),
                      QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())));
  m_painter->restore();
}

SIZE QPainterDevice::TextExtent(const LOGFONTW& font, std::u16string_view text) const {
  const vantrel1::VectorStateScope vectorState;
  const DeviceFont& f = Font(font);
  const double advance = std::round(f.Advance(text));
  const LONG cx = advance >= 2147483647.0 ? 2147483647 : static_cast<LONG>(advance);
  return SIZE{cx, f.Metrics().tmHeight};
}

TEXTMETRICW QPainterDevice::TextMetrics(const LOGFONTW& font) const { return Font(font).Metrics(); }

std::u16string QPainterDevice::FaceName(const LOGFONTW& font) const {
  return Font(font).Family().toStdU16String();
}

RECT QPainterDevice::ClipBox() const { return m_mapping.LogicalBounds(m_page); }
