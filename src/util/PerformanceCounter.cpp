#include "util/PerformanceCounter.h"

#include <ctime>

namespace vantrel1 {
namespace {

constexpr std::int64_t kCountsPerSecond = 10'000'000;
constexpr std::int64_t kNanosecondsPerCount = 1'000'000'000 / kCountsPerSecond;

bool ReadMonotonic(timespec& now) { return ::clock_gettime(CLOCK_MONOTONIC, &now) == 0; }

}  // namespace

bool QueryPerformanceFrequency(std::int64_t* frequency) {
  timespec now{};
  const bool available = ReadMonotonic(now);
  if (frequency != nullptr) *frequency = available ? kCountsPerSecond : 0;
  return available;
}

bool QueryPerformanceCounter(std::int64_t* count) {
  timespec now{};
  if (!ReadMonotonic(now)) return false;
  if (count != nullptr)
    *count = static_cast<std::int64_t>(now.tv_sec) * kCountsPerSecond + now.tv_nsec / kNanosecondsPerCount;
  return true;
}

DWORD GetTickCount() {
  timespec now{};
  if (!ReadMonotonic(now)) return 0;
  const auto ms = static_cast<std::uint64_t>(now.tv_sec) * 1000u +
                  static_cast<std::uint64_t>(now.tv_nsec) / 1'000'000u;
  return static_cast<DWORD>(ms);
}

}  // namespace vantrel1
