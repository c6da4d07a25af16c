#include "batch/Summary.h"

#include <algorithm>
#include <cstdio>

namespace {
const char* const kVerdicts[] = {"clean", "undocumented", "refused", "error"};
}

BatchSummary::BatchSummary(size_t total, bool progress)
    : total_(total), progress_(progress), started_(std::chrono::steady_clock::now()) {}

void BatchSummary::done(const std::string& package, const std::string& verdict, double seconds) {
  ++done_;
  ++verdicts_[verdict];
  times_.emplace_back(seconds, package);
}

size_t BatchSummary::count(const std::string& verdict) const {
  auto found = verdicts_.find(verdict);
  return found == verdicts_.end() ? 0 : found->second;
}

void BatchSummary::showProgress() {
  if (!progress_) return;
  double elapsed = std::chrono::duration<double>(std::chrono::steady_clock::now() - started_).count();
  double rate = elapsed > 0 ? done_ / elapsed : 0;
  long eta = rate > 0 ? static_cast<long>((total_ - done_) / rate) : 0;
  fprintf(stderr, "\r\033[K[%zu/%zu] %.1f/s ETA %ldm%02lds  clean %zu  undocumented %zu  refused %zu  error %zu", done_,
          total_, rate, eta / 60, eta % 60, count("clean"), count("undocumented"), count("refused"), count("error"));
  fflush(stderr);
}

void BatchSummary::print(bool interrupted) {
  if (progress_) fputs("\r\033[K", stderr);
  double elapsed = std::chrono::duration<double>(std::chrono::steady_clock::now() - started_).count();
  fprintf(stderr, "tarvo-api-check: %zu of %zu packages in %.1f s (%.1f packages/s)%s:", done_, total_, elapsed,
          elapsed > 0 ? done_ / elapsed : 0.0, interrupted ? ", interrupted" : "");
  const char* separator = " ";
  for (const char* verdict : kVerdicts) {
    fprintf(stderr, "%s%zu %s", separator, count(verdict), verdict);
    separator = ", ";
  }
  fputc('\n', stderr);
  std::sort(times_.begin(), times_.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
  for (size_t i = 0; i < times_.size() && i < 5; ++i) {
    fprintf(stderr, "  %s %.2f s %s\n", i == 0 ? "slowest:" : "        ", times_[i].first, times_[i].second.c_str());
  }
}
