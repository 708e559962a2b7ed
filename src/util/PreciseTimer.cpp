#include "util/PreciseTimer.h"

#include <limits>

#include "util/PerformanceCounter.h"

namespace {

struct SharedCounter {
  bool highResolution = false;
  std::int64_t frequency = 0;
};

// Probed once, by the first timer constructed, and shared by all timers of the process.
const SharedCounter& Counter() {
  static const SharedCounter counter = [] {
    SharedCounter c;
    c.highResolution = vantrel1::QueryPerformanceFrequency(&c.frequency) && c.frequency > 0;
    return c;
  }();
  return counter;
}

std::int64_t ReadMicroseconds() {
  const SharedCounter& counter = Counter();
  if (!counter.highResolution) return static_cast<std::int64_t>(vantrel1::GetTickCount()) * 1000;
  std::int64_t count = 0;
  vantrel1::QueryPerformanceCounter(&count);
  // Multiplying first keeps every count. Nothing guards the product from leaving the
  // signed range after about 10.7 days of uptime; it wraps as two's complement does
  // rather than being undefined, and UpdateElapsed's wrap correction takes it from there.
  const auto scaled = static_cast<std::int64_t>(static_cast<std::uint64_t>(count) * 1'000'000u);
  return scaled / counter.frequency;
}

}  // namespace

CPreciseTimer::CPreciseTimer() { Counter(); }

void CPreciseTimer::StartTimer() {
  m_i64Start = ReadMicroseconds();
  m_bRunning = 1;
}

void CPreciseTimer::StopTimer() {
  UpdateElapsed();
  m_bRunning = 0;
}

std::int64_t CPreciseTimer::GetTime() {
  if (m_bRunning) UpdateElapsed();
  return m_i64Elapsed;
}

bool CPreciseTimer::SupportsHighResCounter() { return Counter().highResolution; }

void CPreciseTimer::UpdateElapsed() {
  m_i64Now = ReadMicroseconds();
  m_i64Elapsed = m_i64Now - m_i64Start;
  // A reading not past the start is taken for a counter that wrapped around. That
  // includes an equal reading, which therefore gives the largest value rather than 0.
  if (m_i64Now <= m_i64Start) m_i64Elapsed += std::numeric_limits<std::int64_t>::max();
}
