#include "suite/OldStyleSymbol.h"

#include <cmath>
#include <vector>

#include "suite/PolylineClip.h"

namespace {

struct Outline {
  std::vector<double> x, y;
  void Add(double px, double py) {
    x.push_back(px);
    y.push_back(py);
  }
};

constexpr double kPi = 3.14159265358979323846;
constexpr int kCircleSides = 19;

double HalfSizeUnits(int index) {
  switch (index) {
    case 11: case 12: case 13: case 15: case 16: case 17: return 10;
    case 18: return 20;
    case 8: return 4;
    case 3: return 160;
    default: return 6;
  }
}

Outline Square(double r) { return {{-r, r, r, -r, -r}, {r, r, -r, -r, r}}; }
Outline VerticalStroke(double r) { return {{0, 0}, {r, -r}}; }
Outline HorizontalStroke(double r) { return {{r, -r}, {0, 0}}; }
Outline Triangle(double r) { return {{0, -1.7205 * r, 1.7205 * r, 0}, {2 * r, -r, -r, 2 * r}}; }

Outline Circle(double r) {
  Outline circle;
  for (int i = 0; i < kCircleSides; ++i) {
    const double a = i * (2 * kPi / kCircleSides);
    circle.Add(r * std::cos(a), r * std::sin(a));
  }
  circle.Add(r, 0);
  return circle;
}

std::vector<Outline> OutlinesOf(int index, double r) {
  switch (index) {
    case 1: case 5: case 12: return {Square(r)};
    case 9: case 15: return {Square(r), VerticalStroke(r), HorizontalStroke(r)};
    case 3: case 6: case 11: return {VerticalStroke(r), HorizontalStroke(r)};
    case 17: case 18: return {VerticalStroke(r)};
    case 7: case 13: case 19: return {Circle(r)};
    case 10: case 16: return {Circle(r), VerticalStroke(r), HorizontalStroke(r)};
    case 8: case 14: return {Triangle(r)};
    default: return {};
  }
}

void Place(Outline& outline, double x, double y, double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  for (std::size_t i = 0; i < outline.x.size(); ++i) {
    const double lx = outline.x[i], ly = outline.y[i];
    outline.x[i] = x + lx * c - ly * s;
    outline.y[i] = y + lx * s + ly * c;
  }
}

}  // namespace

void DrawSymbol(HDC hdc, double x, double y, int index, void* pen, double scale, const RECT* clip, double angle,
                const COLORREF* colour) {
  std::vector<Outline> outlines = OutlinesOf(index, HalfSizeUnits(index) * scale);
  if (outlines.empty()) return;
  HGDIOBJ previousPen = pen ? SelectObject(hdc, pen) : nullptr;
  const int fill = index == 19 ? 1 : 0;
  for (Outline& outline : outlines) {
    Place(outline, x, y, angle);
    PolylineClip(hdc, outline.x.data(), outline.y.data(), static_cast<long>(outline.x.size()), clip, fill, colour);
  }
  if (previousPen) SelectObject(hdc, previousPen);
}
