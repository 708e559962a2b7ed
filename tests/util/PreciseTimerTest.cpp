#include "util/PreciseTimer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <thread>

namespace {

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();

std::int64_t MicrosecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start)
      .count();
}

}  // namespace

TEST(PreciseTimer, ReadsZeroBeforeTheFirstStart) {
  CPreciseTimer timer;
  EXPECT_EQ(timer.GetTime(), 0);
  EXPECT_EQ(timer.GetTime(), 0);
  EXPECT_TRUE(CPreciseTimer::SupportsHighResCounter());
}

TEST(PreciseTimer, MeasuresASleepInMicroseconds) {
  CPreciseTimer timer;
  const auto outerStart = std::chrono::steady_clock::now();
  timer.StartTimer();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  timer.StopTimer();
  const std::int64_t outer = MicrosecondsSince(outerStart);
  EXPECT_GE(timer.GetTime(), 20000);
  EXPECT_LE(timer.GetTime(), outer + 1);
}

TEST(PreciseTimer, GrowsWhileRunningAndFreezesWhenStopped) {
  CPreciseTimer timer;
  timer.StartTimer();
  std::this_thread::sleep_for(std::chrono::milliseconds(2));
  std::int64_t previous = timer.GetTime();
  EXPECT_GE(previous, 2000);
  for (int i = 0; i < 1000; ++i) {
    const std::int64_t now = timer.GetTime();
    ASSERT_GE(now, previous);
    previous = now;
  }
  timer.StopTimer();
  const std::int64_t frozen = timer.GetTime();
  EXPECT_GE(frozen, previous);
  std::this_thread::sleep_for(std::chrono::milliseconds(2));
  EXPECT_EQ(timer.GetTime(), frozen);

  CPreciseTimer copy;
  copy = timer;
  EXPECT_EQ(copy.GetTime(), frozen);
}

// A stop in the same microsecond as the start is taken for a wrapped counter: the result
// is the largest value, never 0.
TEST(PreciseTimer, StopInTheSameMicrosecondGivesTheLargestValue) {
  CPreciseTimer timer;
  bool sawLargest = false;
  for (int i = 0; i < 100000 && !sawLargest; ++i) {
    timer.StartTimer();
    timer.StopTimer();
    const std::int64_t elapsed = timer.GetTime();
    ASSERT_NE(elapsed, 0);
    ASSERT_TRUE(elapsed == kLargest || (elapsed > 0 && elapsed < 1'000'000)) << elapsed;
    sawLargest = elapsed == kLargest;
  }
  EXPECT_TRUE(sawLargest);
}
