#pragma once
// Elapsed time in microseconds from the high-resolution counter, or from the millisecond
// tick count where there is none. A timer belongs to one thread.
#include <cstdint>

#include "platform/Types.h"

class VANTREL1_EXPORT CPreciseTimer {
 public:
  CPreciseTimer();

  void StartTimer();
  void StopTimer();
  // The running time so far, or the time frozen by StopTimer; 0 before the first start.
  std::int64_t GetTime();
  static bool SupportsHighResCounter();

 private:
  void UpdateElapsed();

  int m_bRunning = 0;
  std::int64_t m_i64Start = 0;
  std::int64_t m_i64Elapsed = 0;
  std::int64_t m_i64Now = 0;
};
