#pragma once
// OutputSurface: a drawing written to a file. The file's extension chooses the format:
//   .png  a raster image of the window at the given resolution on a white background,
//         antialiased, with the resolution recorded in the file;
//   .pdf  one page exactly the window's size on paper, without margins;
//   .svg  a vector image of the window's size, its width and height given in millimetres.
// Draw through Dc() with the GDI functions; Finish() writes the file.
#include <memory>
#include <optional>

#include <QFile>
#include <QPaintDevice>
#include <QSize>
#include <QString>

#include "qt/PageMapping.h"
#include "qt/QPainterDevice.h"

class VANTREL1_QT_EXPORT OutputSurface {
 public:
  enum class Format { Png, Pdf, Svg };

  // Raster images beyond these are refused rather than allocated.
  static constexpr int kMaxImageSide = 32767;
  static constexpr long long kMaxImagePixels = 1LL << 28;

  // The format of a path by its extension, case ignored; none for any other extension.
  static std::optional<Format> FormatOf(const QString& path);

  // Null when the extension is unknown, the window or a scale is invalid, a raster image
  // would be too large, no QGuiApplication runs, or a PDF or SVG file cannot be opened.
  static std::unique_ptr<OutputSurface> Open(const QString& path, const LogicalWindow& window,
                                             double dotsPerInch = 300.0, double unitsPerMm = kDefaultUnitsPerMm);

  // An unfinished surface is finished.
  ~OutputSurface();
  OutputSurface(const OutputSurface&) = delete;
  OutputSurface& operator=(const OutputSurface&) = delete;

  HDC Dc() { return m_device.get(); }
  QPainterDevice& Device() { return *m_device; }
  Format GetFormat() const { return m_format; }
  const QString& Path() const { return m_path; }
  // The drawing area in device pixels (dots of the resolution).
  QSize PixelSize() const { return m_size; }

  // Ends drawing and writes the file. False when the file could not be written; a second
  // call only repeats the first result.
  bool Finish();

 private:
  OutputSurface(const QString& path, Format format);
  bool Begin(const LogicalWindow& window, double dotsPerInch, double unitsPerMm);
  bool OpenFile();
  bool BeginPng(const PageMapping& mapping);
  bool BeginPdf(const PageMapping& mapping);
  bool BeginSvg(const PageMapping& mapping);

  QString m_path;
  Format m_format;
  QSize m_size;
  // In order of destruction from the last: the device ends before its target goes, and the
  // target before the file it writes to.
  std::unique_ptr<QFile> m_file;
  std::unique_ptr<QPaintDevice> m_target;
  std::unique_ptr<QPainterDevice> m_device;
  std::optional<bool> m_finished;
};
