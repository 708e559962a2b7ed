#pragma once
// The nineteen old-style point symbols of the suite, drawn from fixed outlines:
//   1, 5, 12  square              3, 6, 11  cross            17, 18  vertical tick
//   9, 15     square and cross    7, 13     circle           10, 16  circle and cross
//   8, 14     triangle            19        filled circle    2, 4    no outline
// centred on the point, with half-size h = s × scale logical units, where s is 6, or 10
// for 11, 12, 13, 15, 16 and 17, 20 for 18, 4 for 8 and 160 for 3 (14 and 19 keep 6 though
// their names say large, as in the suite's exchange form of these symbols). The circle is
// a closed 19-gon; the triangle has its apex at (0, 2h) and its base at y = -h from
// x = -1.7205h to 1.7205h.
#include "platform/Gdi.h"
#include "platform/Types.h"

// Draws old-style symbol `index` at (x, y), turned by `angle` radians counter-clockwise,
// with `pen` (the current pen when null), clipped to `clip` (suite/PolylineClip.h). The
// filled circle is filled with a solid brush of *colour, or with the current brush when
// `colour` is null. Other indices draw nothing.
VANTREL1_EXPORT void DrawSymbol(HDC hdc, double x, double y, int index, void* pen, double scale, const RECT* clip,
                                double angle, const COLORREF* colour);
