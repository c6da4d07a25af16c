// The 20-second time budget's arithmetic: 32-bit microseconds that wrap, and
// the boundary at exactly 20,000,000 microseconds, the same where long and
// time_t are 32 bits as where they are 64.
#include <gtest/gtest.h>

#include <ctime>

#include "APICheckEngine/TimeBudget.h"

namespace {

TEST(TimeBudget, ElapsedIsComparedModulo2To32) {
  constexpr uint32_t kBudget = 20000000u;
  constexpr uint32_t kNearWrap = 0xFFFFFFFFu - 5000000u;
  const struct {
    uint32_t start, elapsed;
    bool exceeded;
  } cases[] = {
      {1000u, kBudget, false},     {1000u, kBudget + 1u, true},     {kNearWrap, kBudget, false},
      {kNearWrap, kBudget + 1u, true}, {0xFFFFFFFFu, 1u, false},   {12345u, 0xFFFFFFFFu, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(TimeBudget::exceeded(c.start + c.elapsed, c.start), c.exceeded) << c.start << "+" << c.elapsed;
  }
}

TEST(TimeBudget, MicrosecondsWrapAt2To32) {
  const struct {
    long sec, nsec;
    uint32_t micros;
  } cases[] = {
      {0, 1999, 1u},                         // nanoseconds are truncated
      {4294, 967295000, 0xFFFFFFFFu},        // the last value before the wrap
      {4295, 0, 32704u},                     // 4,295,000,000 - 2^32
      {2147483647, 999999999, 0xFFFFFFFFu},  // (2^31 - 1) * 10^6 + 999999 modulo 2^32
  };
  for (const auto& c : cases) {
    struct timespec ts;
    ts.tv_sec = static_cast<time_t>(c.sec);
    ts.tv_nsec = c.nsec;
    EXPECT_EQ(TimeBudget::microsOf(ts), c.micros) << c.sec << "s " << c.nsec << "ns";
  }
}

}  // namespace
