#pragma once
// Every allocation of the benchmark program passes through a counting operator new, so
// that a benchmark can report how many allocations one operation makes.
#include <cstdint>

namespace vantrel1::bench {

// Allocations made by the whole process since it started.
std::uint64_t AllocationCount();

}  // namespace vantrel1::bench
