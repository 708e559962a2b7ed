#pragma once
// Shared pieces of the painter device tests: a GUI application for fonts, an image canvas
// with a known mapping, and pixel probes.
#include <cmath>
#include <functional>
#include <memory>

#include <QApplication>
#include <QImage>
#include <QRect>

#include "platform/Gdi.h"
#include "qt/PageMapping.h"
#include "qt/QPainterDevice.h"

namespace vantrel1::test {

// Fonts and painting need a GUI application; the test program makes one the first time
// any test asks and keeps it to the end.
inline void EnsureGuiApp() {
  if (QCoreApplication::instance()) return;
  static int argc = 1;
  static char name[] = "test_qt";
  static char* argv[] = {name, nullptr};
  static QApplication* app = new QApplication(argc, argv);
  (void)app;
}

// A white image of w × h pixels on which logical units are whole pixels by default:
// 254 dpi and 10 units per millimetre give one pixel per unit, the window's bottom-left
// corner at the image's bottom-left corner. Logical (x, y) is pixel (x, h - y).
struct Canvas {
  QImage image;
  std::unique_ptr<QPainterDevice> device;

  Canvas(int w, int h) : Canvas(w, h, PageMapping(LogicalWindow{0, 0, double(w), double(h)}, 10.0, 254.0)) {}
  Canvas(int w, int h, const PageMapping& mapping) : image(w, h, QImage::Format_RGB32) {
    EnsureGuiApp();
    image.fill(Qt::white);
    device = QPainterDevice::ForPaintDevice(image, mapping);
  }
  HDC dc() { return device.get(); }
  // Ends painting so the image may be read.
  const QImage& Done() {
    device->End();
    return image;
  }
};

inline bool IsWhite(QRgb c) { return c == qRgb(255, 255, 255); }
inline bool IsDark(QRgb c) { return qRed(c) < 96 && qGreen(c) < 96 && qBlue(c) < 96; }
inline bool IsInk(QRgb c) { return !IsWhite(c); }

// The smallest rectangle of pixels that satisfy `test`; null when none do.
inline QRect InkBox(const QImage& image, const std::function<bool(QRgb)>& test = IsInk) {
  QRect box;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (test(image.pixel(x, y))) box = box.united(QRect(x, y, 1, 1));
  return box;
}

inline LOGFONTW MakeFont(LONG height, LONG escapement = 0, const char16_t* face = u"DejaVu Sans") {
  LOGFONTW font{};
  font.lfHeight = height;
  font.lfEscapement = escapement;
  font.lfWeight = FW_NORMAL;
  for (int i = 0; face[i] && i < LF_FACESIZE - 1; ++i) font.lfFaceName[i] = face[i];
  return font;
}

// Selects a new object for the life of a scope, then puts the previous one back and
// deletes the new one, as drawing code does.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) : m_dc(dc), m_object(object), m_previous(SelectObject(dc, object)) {}
  ~Selected() {
    SelectObject(m_dc, m_previous);
    DeleteObject(m_object);
  }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC m_dc;
  HGDIOBJ m_object;
  HGDIOBJ m_previous;
};

inline BOOL Text(HDC dc, int x, int y, const char16_t* text) {
  return TextOutW(dc, x, y, text, static_cast<int>(std::char_traits<char16_t>::length(text)));
}

}  // namespace vantrel1::test
