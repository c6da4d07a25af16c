// The 20-second time budget's arithmetic: 32-bit microseconds that wrap, and
// the boundary at exactly 20,000,000 microseconds. It must give the same
// answers where long and time_t are 32 bits as where they are 64.
#include <gtest/gtest.h>

#include <ctime>

#include "APICheckEngine/TimeBudget.h"

namespace {

constexpr uint32_t kBudget = 20000000u;
constexpr uint32_t kNearWrap = 0xFFFFFFFFu - 5000000u;  // 5 s before the counter wraps

struct BudgetCase {
  const char* name;
  uint32_t start;
  uint32_t elapsed;  // added to start modulo 2^32
  bool exceeded;
};

TEST(TimeBudget, ElapsedIsComparedModulo2To32) {
  const BudgetCase cases[] = {
      {"no time", 1000u, 0u, false},
      {"exactly the budget", 1000u, kBudget, false},
      {"one microsecond over", 1000u, kBudget + 1u, true},
      {"far over", 1000u, 0x7FFFFFFFu, true},
      {"exactly the budget across the wrap", kNearWrap, kBudget, false},
      {"one over across the wrap", kNearWrap, kBudget + 1u, true},
      {"within across the wrap", 0xFFFFFFFFu, 1u, false},
      {"start at the top, exactly the budget", 0xFFFFFFFFu, kBudget, false},
      {"start at zero, one over", 0u, kBudget + 1u, true},
      {"largest elapsed", 12345u, 0xFFFFFFFFu, true},
  };
  for (const BudgetCase& c : cases) {
    uint32_t now = c.start + c.elapsed;
    EXPECT_EQ(TimeBudget::exceeded(now, c.start), c.exceeded) << c.name;
  }
}

struct MicrosCase {
  long sec;
  long nsec;
  uint32_t micros;
};

TEST(TimeBudget, MicrosecondsWrapAt2To32) {
  const MicrosCase cases[] = {
      {0, 0, 0u},
      {0, 999, 0u},                   // nanoseconds are truncated, not rounded
      {0, 1999, 1u},
      {0, 999999999, 999999u},
      {4294, 967295000, 0xFFFFFFFFu},  // the last value before the wrap
      {4294, 967296000, 0u},           // 2^32 microseconds
      {4295, 0, 32704u},               // 4,295,000,000 - 2^32
      {8589, 934592000, 0u},           // 2 * 2^32
      {100000, 500000, 1215752692u},   // 100,000,000,000 mod 2^32, plus 500 us
      {2147483647, 999999999, 0xFFFFFFFFu},  // (2^31 - 1) * 10^6 is -10^6 modulo 2^32,
  };
  for (const MicrosCase& c : cases) {
    struct timespec ts;
    ts.tv_sec = static_cast<time_t>(c.sec);
    ts.tv_nsec = c.nsec;
    EXPECT_EQ(TimeBudget::microsOf(ts), c.micros) << c.sec << "s " << c.nsec << "ns";
  }
}

}  // namespace
