#pragma once
// Clipped output of double-precision polylines and polygons, as the suite's drawing
// library provides it: the drawing code computes exact coordinates in logical units and
// hands them over with the clip rectangle; only what lies inside reaches the device.
//
// A clip rectangle is read as left, top, right, bottom with top the larger y (a rectangle
// given the other way round is taken as the same area). No rectangle means the bounds
// -2147483648.0 ... 2147483647.0, the device's integer range: coordinates beyond it are
// clipped too, never converted out of range. Points on the boundary are inside.
#include "platform/Gdi.h"
#include "platform/Types.h"

// Draws the visible parts of the polyline (x[i], y[i]), i < n.
//   fill 0:   with the current pen, as open polylines: each segment is cut to the
//             rectangle and the visible pieces go to PolylineD in maximal runs - two
//             visible pieces join when the first ends where the second begins at an
//             uncut vertex. A segment with a non-finite coordinate is not drawn and
//             breaks the run.
//   fill ≠ 0: as one closed polygon cut to the rectangle (an edge of the rectangle takes
//             the place of the outside part), drawn with PolygonD: filled with the
//             current brush, or, when `colour` is given, with a solid brush of *colour
//             made for the call, and outlined with the current pen. Vertices with a
//             non-finite coordinate are left out; fewer than three vertices after
//             cutting draw nothing.
// Returns the number of primitives drawn (0 also for a null array, n < 2 or a device
// context that refuses to draw).
VANTREL1_EXPORT int PolylineClip(HDC dc, const double* x, const double* y, long n, const RECT* clip, int fill,
                                 const COLORREF* colour);

// The bounds within which output is visible: the clip rectangle when given, otherwise
// the device context's clip box (the whole integer plane when it has none, for example
// for a null device context). Returns `out`, or null when `out` is null.
VANTREL1_EXPORT RECT* GetClipBounds(RECT* out, HDC dc, const RECT* clip);
