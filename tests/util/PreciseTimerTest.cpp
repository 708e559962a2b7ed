#include "util/PreciseTimer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <thread>

TEST(PreciseTimer, ReadsZeroUntilStartedThenRunsUntilStopped) {
  EXPECT_TRUE(CPreciseTimer::SupportsHighResCounter());
  CPreciseTimer timer;
  EXPECT_EQ(timer.GetTime(), 0);
  const auto outerStart = std::chrono::steady_clock::now();
  timer.StartTimer();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  const std::int64_t running = timer.GetTime();
  EXPECT_GE(running, 20000);
  std::this_thread::sleep_for(std::chrono::milliseconds(2));
  timer.StopTimer();
  const auto outer =
      std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - outerStart);
  const std::int64_t frozen = timer.GetTime();
  EXPECT_GE(frozen, running + 2000);
  EXPECT_LE(frozen, outer.count() + 1);
  std::this_thread::sleep_for(std::chrono::milliseconds(2));
  EXPECT_EQ(timer.GetTime(), frozen);
}

// A stop in the same microsecond as the start is taken for a wrapped counter: the result
// is the largest value, never 0.
TEST(PreciseTimer, StopInTheSameMicrosecondGivesTheLargestValue) {
  constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
  CPreciseTimer timer;
  bool sawLargest = false;
  for (int i = 0; i < 100000 && !sawLargest; ++i) {
    timer.StartTimer();
    timer.StopTimer();
    const std::int64_t elapsed = timer.GetTime();
    ASSERT_TRUE(elapsed == kLargest || (elapsed > 0 && elapsed < 1'000'000)) << elapsed;
    sawLargest = elapsed == kLargest;
  }
  EXPECT_TRUE(sawLargest);
}
