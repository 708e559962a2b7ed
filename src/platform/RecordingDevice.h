#pragma once
// CRecordingDevice: a device context that draws nothing and remembers everything. Each
// primitive is kept in order with its exact coordinates and the state in force when it was
// drawn, so a drawing test can assert the output to the last coordinate and pen. Text is
// measured with the fixed font model of platform/FontModel.h.
//
// With recording switched off the device only counts primitives, for benchmarks of the
// drawing walk itself.
#include <cstddef>
#include <string>
#include <vector>

#include "platform/Gdi.h"
#include "platform/GdiDevice.h"

enum class PrimitiveKind { Polyline, Polygon, Rectangle, Ellipse, Text };

struct RecordedPrimitive {
  PrimitiveKind kind = PrimitiveKind::Polyline;
  // The points as drawn: a line's or polygon's vertices; the two corners of a rectangle or
  // ellipse; the reference point of a text.
  std::vector<double> x;
  std::vector<double> y;
  std::u16string text;
  LOGPEN pen{};
  LOGBRUSH brush{};  // style BS_NULL: no fill
  LOGFONTW font{};
  COLORREF textColor = 0;
  COLORREF bkColor = 0;
  int bkMode = 0;
  UINT textAlign = 0;

  bool Filled() const { return brush.lbStyle != BS_NULL; }
};

class VANTREL1_EXPORT CRecordingDevice : public GdiDevice {
 public:
  // Clip box of a new device: the whole 32-bit plane, left -2147483648, top 2147483647,
  // right 2147483647, bottom -2147483648.
  CRecordingDevice();

  const std::vector<RecordedPrimitive>& Primitives() const { return m_primitives; }
  // Every primitive drawn since construction or Clear, recorded or not.
  std::size_t PrimitiveCount() const { return m_count; }
  std::size_t CountOf(PrimitiveKind kind) const;
  void Clear();

  void SetRecording(bool on) { m_recording = on; }
  bool IsRecording() const { return m_recording; }
  void SetClipBox(const RECT& box) { m_clip = box; }

  // One line per primitive, for failure messages.
  std::string ToString() const;

  void DrawPolyline(const double* x, const double* y, int count) override;
  void DrawPolygon(const double* x, const double* y, int count) override;
  void DrawRectangle(int left, int top, int right, int bottom) override;
  void DrawEllipse(int left, int top, int right, int bottom) override;
  void DrawString(int x, int y, std::u16string_view text) override;
  SIZE TextExtent(const LOGFONTW& font, std::u16string_view text) const override;
  TEXTMETRICW TextMetrics(const LOGFONTW& font) const override;
  std::u16string FaceName(const LOGFONTW& font) const override;
  RECT ClipBox() const override { return m_clip; }

 private:
  RecordedPrimitive* Record(PrimitiveKind kind);
  void RecordShape(PrimitiveKind kind, const double* x, const double* y, int count);

  std::vector<RecordedPrimitive> m_primitives;
  std::size_t m_count = 0;
  bool m_recording = true;
  RECT m_clip;
};

// "polyline (0,0) (30,0) | pen solid 1 RGB(0,0,0)" and the like: the primitive's kind, its
// points with every digit a double needs to read back the same, and the state that matters
// for its kind.
VANTREL1_EXPORT std::string DescribePrimitive(const RecordedPrimitive& primitive);
