#include "APICheckEngine/TimeBudget.h"

#include "tarvo/HostInterface.h"

namespace TimeBudget {

uint32_t microsOf(const struct timespec& ts) {
  return static_cast<uint32_t>(ts.tv_nsec / 1000) + 1000000u * static_cast<uint32_t>(ts.tv_sec);
}

uint32_t nowMicros() {
  struct timespec ts;
  clock_gettime(CLOCK_MONOTONIC, &ts);
  return microsOf(ts);
}

bool exceeded(uint32_t now, uint32_t start) { return static_cast<uint32_t>(now - start) > kBudgetMicros; }

bool spent() { return exceeded(nowMicros(), firstTimeVal); }

}  // namespace TimeBudget
