#pragma once
// Every length a line style stores is an integer in tenths of a drawing unit. The
// conversion is done in single precision and only then widened: 300 gives
// 30.000000447034836, not 30.0. Drawings made by the suite's Windows programs depend on
// those last bits (where a dash ends, whether a placement still fits on a segment), so
// every conversion of a stored length goes through this one function.
namespace vantrel1 {

constexpr double Tenths(int value) {
  return static_cast<double>(static_cast<float>(value)) * static_cast<double>(0.1f);
}

}  // namespace vantrel1
