#pragma once
// Clearing the upper halves of the x86 vector registers after calling into code built for
// AVX that leaves them dirty (Qt's raster engine does, after filling an image or stroking
// lines). While they are dirty, every SSE instruction that follows (this library's own
// arithmetic and the C library's atan2 wrapper among it) waits on a merge with them: on
// recent Intel processors a dash walk then runs about seven times slower. Elsewhere, and on
// processors without AVX, this does nothing.
#include "platform/Export.h"

namespace vantrel1 {

VANTREL1_EXPORT void ClearUpperVectorState();

// Clears the state on leaving the scope that calls into such code, on every way out.
class VectorStateScope {
 public:
  VectorStateScope() = default;
  VectorStateScope(const VectorStateScope&) = delete;
  VectorStateScope& operator=(const VectorStateScope&) = delete;
  ~VectorStateScope() { ClearUpperVectorState(); }
};

}  // namespace vantrel1
