// The 20-second time budget: 32-bit microsecond arithmetic that wraps, the
// boundary at exactly 20,000,000 microseconds, and the engine object's start
// of the budget. These must hold alike where long and time_t are 32 bits.
#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>
#include <ctime>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/TimeBudget.h"
#include "support/LogCapture.h"

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

TEST(TimeBudget, LimitProcessingTimeNResourceAgainstFirstTimeVal) {
  FlashEngine_1_00::APIAnalysis engine;
  const uint32_t margin = 2000000u;  // generous for a slow (emulated) run
  struct Case {
    uint32_t startBeforeNow;
    RunResult code;
  } cases[] = {
      {0u, RUN_SUCCESS},
      {kBudget - margin, RUN_SUCCESS},
      {kBudget + margin, RUN_TIME_LIMIT},
      {0x80000000u, RUN_TIME_LIMIT},
  };
  for (const Case& c : cases) {
    firstTimeVal = TimeBudget::nowMicros() - c.startBeforeNow;  // may wrap below zero
    EXPECT_EQ(engine.LimitProcessingTimeNResource(), c.code) << c.startBeforeNow;
  }
}

TEST(TimeBudget, ConstructionStartsTheBudgetAndLogsTheClock) {
  LogCapture::clear();
  firstTimeVal = TimeBudget::nowMicros() - 2 * kBudget;
  FlashEngine_1_00::APIAnalysis engine;

  EXPECT_EQ(firstTimeVal, TimeBudget::microsOf(firstCheckTime));
  EXPECT_FALSE(TimeBudget::spent());

  // Both clock fields reach the log intact: a value passed with the wrong
  // width for %ld would print garbage on a 32-bit target.
  char expected[96];
  snprintf(expected, sizeof expected, "[APIAnalysis] [sec:usec] : %" PRId64 ":%" PRId64 " ",
           static_cast<int64_t>(firstCheckTime.tv_sec), static_cast<int64_t>(firstCheckTime.tv_nsec));
  EXPECT_TRUE(LogCapture::contains(expected)) << expected;
}

TEST(TimeBudget, CheckpointLogsTheMonotonicClock) {
  FlashEngine_1_00::APIAnalysis engine;
  struct timespec before;
  clock_gettime(CLOCK_MONOTONIC, &before);
  LogCapture::clear();
  engine.PrintProcessingTime("Checkpoint");
  struct timespec after;
  clock_gettime(CLOCK_MONOTONIC, &after);

  ASSERT_EQ(LogCapture::lines().size(), 1u);
  long long sec = -1;
  long long nsec = -1;
  char tail = 0;
  ASSERT_EQ(sscanf(LogCapture::lines()[0].text.c_str(), "Time [Checkpoint]:%lld:%lld%c", &sec, &nsec, &tail), 3);
  EXPECT_EQ(tail, ' ');
  EXPECT_GE(sec, static_cast<long long>(before.tv_sec));
  EXPECT_LE(sec, static_cast<long long>(after.tv_sec));
  EXPECT_GE(nsec, 0);
  EXPECT_LT(nsec, 1000000000);
}

}  // namespace
