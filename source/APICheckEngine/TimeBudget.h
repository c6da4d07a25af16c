// The engine's time budget: 20,000,000 microseconds of CLOCK_MONOTONIC time,
// counted from the construction of the engine object (firstTimeVal).
#pragma once

#include <cstdint>
#include <ctime>

namespace TimeBudget {
constexpr uint32_t kBudgetMicros = 20000000u;

// tv_nsec / 1000 + 1000000 * tv_sec in 32-bit unsigned arithmetic (wraps).
uint32_t microsOf(const struct timespec& ts);
// The monotonic clock now, in the same 32-bit microseconds.
uint32_t nowMicros();
// True when more than kBudgetMicros have passed since `start` (modulo 2^32).
bool exceeded(uint32_t now, uint32_t start);
// True when the budget that began at firstTimeVal is spent.
bool spent();
}  // namespace TimeBudget
