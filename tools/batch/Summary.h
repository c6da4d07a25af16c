// What a batch tells on standard error: a progress line while it runs (on a
// terminal only) and a summary at the end.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <vector>

class BatchSummary {
 public:
  BatchSummary(size_t total, bool progress);
  void done(const std::string& package, const std::string& verdict, double seconds);
  void showProgress();
  // Counts per verdict, the slowest packages, total time and rate.
  void print(bool interrupted);
  size_t count(const std::string& verdict) const;

 private:
  size_t total_;
  size_t done_ = 0;
  bool progress_;
  std::chrono::steady_clock::time_point started_;
  std::map<std::string, size_t> verdicts_;
  std::vector<std::pair<double, std::string>> times_;
};
