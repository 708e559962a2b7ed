#include "qt/OutputSurface.h"

#include <algorithm>
#include <cmath>

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QSvgGenerator>

namespace {

constexpr double kInchesPerMetre = 1.0 / 0.0254;

QString Title(const QString& path) { return QFileInfo(path).completeBaseName(); }

// PDF and SVG writers take whole dots per inch; the mapping must use the same number.
int WholeDpi(double dpi) { return static_cast<int>(std::lround(std::clamp(dpi, 1.0, 1e6))); }

}  // namespace

std::optional<OutputSurface::Format> OutputSurface::FormatOf(const QString& path) {
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (suffix == QLatin1String("png")) return Format::Png;
  if (suffix == QLatin1String("pdf")) return Format::Pdf;
  if (suffix == QLatin1String("svg")) return Format::Svg;
  return std::nullopt;
}

std::unique_ptr<OutputSurface> OutputSurface::Open(const QString& path, const LogicalWindow& window,
                                                   double dotsPerInch, double unitsPerMm) {
  const std::optional<Format> format = FormatOf(path);
  if (!format) return nullptr;
  std::unique_ptr<OutputSurface> surface(new OutputSurface(path, *format));
  if (!surface->Begin(window, dotsPerInch, unitsPerMm)) {
    if (surface->m_file) surface->m_file->remove();  // no empty file behind a refusal
    return nullptr;
  }
  return surface;
}

OutputSurface::OutputSurface(const QString& path, Format format) : m_path(path), m_format(format) {}

OutputSurface::~OutputSurface() {
  if (m_device) Finish();
}

bool OutputSurface::Begin(const LogicalWindow& window, double dotsPerInch, double unitsPerMm) {
  if (!std::isfinite(dotsPerInch) || dotsPerInch <= 0.0) return false;
  const double dpi = m_format == Format::Png ? dotsPerInch : WholeDpi(dotsPerInch);
  const PageMapping mapping(window, unitsPerMm, dpi);
  m_size = mapping.DeviceSize();
  if (!mapping.IsValid() || m_size.isEmpty()) return false;
  switch (m_format) {
    case Format::Png: return BeginPng(mapping);
    case Format::Pdf: return BeginPdf(mapping);
    case Format::Svg: return BeginSvg(mapping);
  }
  return false;
}

bool OutputSurface::BeginPng(const PageMapping& mapping) {
  if (m_size.width() > kMaxImageSide || m_size.height() > kMaxImageSide ||
      static_cast<long long>(m_size.width()) * m_size.height() > kMaxImagePixels)
    return false;
  auto image = std::make_unique<QImage>(m_size, QImage::Format_RGB32);
  if (image->isNull()) return false;
  image->fill(Qt::white);
  const int dotsPerMetre = static_cast<int>(std::lround(mapping.DotsPerInch() * kInchesPerMetre));
  image->setDotsPerMeterX(dotsPerMetre);
  image->setDotsPerMeterY(dotsPerMetre);
  m_device = QPainterDevice::ForPaintDevice(*image, mapping);
  m_target = std::move(image);
  return m_device != nullptr;
}

bool OutputSurface::OpenFile() {
  m_file = std::make_unique<QFile>(m_path);
  return m_file->open(QIODevice::WriteOnly | QIODevice::Truncate);
}

bool OutputSurface::BeginPdf(const PageMapping& mapping) {
  if (!OpenFile()) return false;
  auto writer = std::make_unique<QPdfWriter>(m_file.get());
  writer->setResolution(static_cast<int>(mapping.DotsPerInch()));
  writer->setCreator(QStringLiteral("vantrel1"));
  writer->setTitle(Title(m_path));
  const QPageSize page(mapping.PaperSizeMm(), QPageSize::Millimeter, QString(), QPageSize::ExactMatch);
  const QPageLayout layout(page, QPageLayout::Portrait, QMarginsF(), QPageLayout::Millimeter);
  if (!writer->setPageLayout(layout)) return false;
  m_device = QPainterDevice::ForPaintDevice(*writer, mapping);
  m_target = std::move(writer);
  return m_device != nullptr;
}

bool OutputSurface::BeginSvg(const PageMapping& mapping) {
  if (!OpenFile()) return false;
  auto generator = std::make_unique<QSvgGenerator>();
  generator->setOutputDevice(m_file.get());
  generator->setSize(m_size);
  generator->setViewBox(QRect(QPoint(0, 0), m_size));
  generator->setResolution(static_cast<int>(mapping.DotsPerInch()));
  generator->setTitle(Title(m_path));
  m_device = QPainterDevice::ForPaintDevice(*generator, mapping);
  m_target = std::move(generator);
  return m_device != nullptr;
}

bool OutputSurface::Finish() {
  if (m_finished) return *m_finished;
  bool written = m_device->End();
  if (m_format == Format::Png) written = written && static_cast<QImage&>(*m_target).save(m_path, "PNG");
  if (m_file) {
    m_file->close();
    written = written && m_file->error() == QFileDevice::NoError;
  }
  m_finished = written;
  return written;
}
