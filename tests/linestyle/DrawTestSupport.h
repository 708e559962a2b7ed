#pragma once
// What the item drawing tests share: the recorded primitives as plain coordinates, and
// the GDI object tally around a draw call.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Gdi.h"
#include "platform/RecordingDevice.h"

namespace drawtest {

using Coords = std::vector<double>;

constexpr double kSinPi = 1.2246467991473532e-16;  // sin(π) as a double
constexpr double kCosHalfPi = 6.123233995736766e-17;  // cos(π/2) as a double
constexpr double kPi = 3.14159265358979323846;

// The tenths rule spelled out: 0.1 in single precision, widened.
constexpr double kTenth = 0.10000000149011612;

struct Line {
  Coords x, y;
};

inline std::vector<Line> Lines(const CRecordingDevice& dc, PrimitiveKind kind = PrimitiveKind::Polyline) {
  std::vector<Line> lines;
  for (const RecordedPrimitive& p : dc.Primitives())
    if (p.kind == kind) lines.push_back({p.x, p.y});
  return lines;
}

// Proves that a draw call deletes every object it makes: what it created, and nothing left.
class TallyScope {
 public:
  TallyScope() : m_before(GdiObjectCounts()) {}
  GdiObjectTally Delta() const { return GdiObjectCounts() - m_before; }

 private:
  GdiObjectTally m_before;
};

inline void ExpectNothingLeft(const GdiObjectTally& delta) {
  EXPECT_EQ(delta.Live(), 0);
  EXPECT_EQ(delta.refusedDeletes, 0);
}

}  // namespace drawtest
