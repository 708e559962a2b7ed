#pragma once
// The vertex of a polyline or point list nearest to a point. Only vertices count, not the
// segments between them.
#include <vector>

#include "platform/Export.h"
#include "suite/DoubleArray.h"

// Returns the index of the nearest vertex (xs[i], ys[i]), or −1.
//  - Ties keep the lower index. A vertex whose squared distance reaches the largest
//    single-precision value (about 3.4e38) is never taken.
//  - skip: when given, vertex i is ignored where (*skip)[i] is true. A mask shorter than
//    the arrays is refused: −1.
//  - toleranceX, toleranceY: half-widths of a search box round (x, y); 0 or less switches
//    that direction off. The box judges the nearest vertex only: when it lies outside,
//    the result is −1 even if a farther vertex lies inside.
//  - distance: when given, receives the distance to the chosen vertex; untouched on −1.
// Empty arrays, or arrays of different sizes, give −1.
VANTREL1_EXPORT long NearestPoint(double x, double y, const CdoubleArray& xs, const CdoubleArray& ys,
                                  double* distance, double toleranceX, double toleranceY,
                                  std::vector<bool>* skip);
