#pragma once
// Clipping of device-space geometry to a rectangle a little larger than the page, before it
// reaches the painter. Drawing code hands over lines that run millions of units past the
// page (a clipped line type's far vertices, a dash walk's unbounded defaults); stroking,
// dashing or filling those in full costs time and precision for nothing visible.
#include <vector>

#include <QPolygonF>
#include <QRectF>

namespace vantrel1 {

// The visible runs of a polyline: consecutive segments that stay inside the rectangle form
// one run; a run ends where the line leaves it. Non-finite points break the line.
std::vector<QPolygonF> ClipPolyline(const QPolygonF& line, const QRectF& bounds);

// A closed polygon cut to the rectangle (edges along the rectangle's sides where the
// polygon left it). Empty when nothing remains or a point is not finite.
QPolygonF ClipPolygon(const QPolygonF& polygon, const QRectF& bounds);

}  // namespace vantrel1
