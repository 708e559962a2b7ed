#pragma once
// The high-resolution counter of this platform behind the Windows interface the timer is
// written against. The counter is CLOCK_MONOTONIC in steps of 100 ns, so its frequency is
// the 10 MHz that current Windows reports, and conversions to microseconds overflow at
// the same uptime as there.
#include <cstdint>

#include "platform/Types.h"

namespace vantrel1 {

// False when the platform has no such counter.
bool QueryPerformanceFrequency(std::int64_t* frequency);
bool QueryPerformanceCounter(std::int64_t* count);
// Milliseconds since boot, wrapping every 49.7 days.
DWORD GetTickCount();

}  // namespace vantrel1
