#pragma once
// Geometric helpers of the suite's core library: normals and corners of polylines, the
// angle at which text is made, decimal rounding and elevation on a triangle's plane.
// Angles are radians, counter-clockwise from +x, in coordinates whose y axis points up.
#include "platform/Export.h"

// The direction of the normal to a polyline at one of its points, on the right-hand side
// of the direction of travel: the result plus π/2 is the direction of travel, so an
// offset along it lies to the right (for a segment pointing east the normal points south,
// −π/2). The result is normalised to (−π, π].
//   hasPrev 0, hasNext 1: a start point; the normal of cur → next (prev is not read).
//   hasPrev 1, hasNext 0: an end point; the normal of prev → cur (next is not read).
//   hasPrev 1, hasNext 1: an interior point; the direction of the bisector of the corner
//                         on the same (right-hand) side, halfway between the normals of the
//                         two segments.
// A segment of zero length (or with non-finite coordinates) has no direction: at an
// interior point the other segment decides; a lone segment without direction counts as
// pointing east. At a full reversal the two normals cancel and the result is the
// direction of travel of the incoming segment, the tip of the spike. The ninth argument is
// reserved and ignored. Returns 1; 0 (and `angle` untouched) when `angle` is null or the
// point has neither neighbour.
VANTREL1_EXPORT int PerpAng(int hasPrev, int hasNext, double prevX, double prevY, double curX,
                            double curY, double nextX, double nextY, int reserved, double* angle);

// The corner angle b at (x2, y2) between the segments to (x1, y1) and to (x3, y3), in
// [0, π]: π for a straight continuation, π/2 for a right angle, 0 for a full reversal.
// A mitred offset at distance d from both segments lies d / sin(b / 2) from the corner.
// When either segment has zero length there is no corner and b is π (the offset stays d).
// The optional outputs receive the directions of travel of the two segments, (x1, y1) →
// (x2, y2) and (x2, y2) → (x3, y3), in (−π, π], 0 for a segment without direction. Every
// output may be null. Returns 1, or 0 when a segment has no direction.
VANTREL1_EXPORT int BisectAngle(double x1, double y1, double x2, double y2, double x3, double y3,
                                double* angle, double* inDirection, double* outDirection);

// The angle at which a text's font is made for a text that runs in direction `angle`, and
// the cosine and sine of that angle in *cosA and *sinA (either may be null). The text's
// reference point is moved along them, so they always describe the returned angle.
//   adjust 0: keep the text readable. A text that would read upside down (pointing left)
//             is turned half round, and a vertical text reads upwards: the result lies in
//             (−π/2 + 1e-9, π/2 + 1e-9], so that a direction computed a little past the
//             vertical does not make neighbouring labels read in opposite directions.
//   otherwise: the text is made exactly at `angle`, normalised to (−π, π], never turned.
// A non-finite angle gives 0.
VANTREL1_EXPORT double AdjustTextAngle(int adjust, double angle, double* cosA, double* sinA);

// `value` rounded to `decimals` decimal places, halves away from zero: 0.5 → 1, 2.5 → 3,
// −0.5 → −1, −2.5 → −3. The double's exact value decides, not a rounded product, so
// 2.675 (stored just below) gives 2.67. NaN and infinities come back unchanged, and so
// does a value too large to have digits at that many places (|value| × 10^decimals ≥ 2^52).
VANTREL1_EXPORT double Round(double value, unsigned int decimals);

// The elevation at (x, y) on the plane through the three points. When the points lie on
// one line (twice the triangle's area is at most 1e-12 × its longest edge squared) there is
// no plane: the elevation is interpolated along the longest edge (the first of equal
// longest ones, edges taken in the order 1–2, 2–3, 3–1) at the projection of (x, y),
// clamped to the edge's ends; when all three points coincide it is z1.
VANTREL1_EXPORT double InterpolateElevOnTriangle(double x, double y, double x1, double y1, double z1,
                                                 double x2, double y2, double z2, double x3,
                                                 double y3, double z3);
