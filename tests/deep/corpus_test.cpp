// Recall and precision of the deep analysis over the labelled applications of
// corpus/: each folder is one application, calls.txt lists every plug-in call
// it makes as "file line method".
#include "deep/DeepAnalysis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <tuple>

using namespace tarvo_deep;
namespace fs = std::filesystem;

namespace {

std::string ReadFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace

TEST(DeepCorpus, RecallAndPrecisionStayAboveTheirFloors) {
  size_t made = 0, found = 0, reported = 0;
  std::vector<fs::path> apps;
  for (const auto& entry : fs::directory_iterator(TARVO_DEEP_CORPUS)) apps.push_back(entry.path());
  std::sort(apps.begin(), apps.end());
  ASSERT_FALSE(apps.empty());
  for (const fs::path& app : apps) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(app))
      if (entry.path().filename() != "calls.txt") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::vector<DeepSource> sources;
    for (const fs::path& file : files) sources.push_back({file.filename().string(), ReadFile(file)});

    std::set<std::tuple<std::string, uint32_t, std::string>> labelled;
    std::istringstream labels(ReadFile(app / "calls.txt"));
    std::string file, method;
    uint32_t line = 0;
    while (labels >> file >> line >> method) labelled.insert({file, line, method});

    DeepResult result = AnalyseWebSources(sources, [](const std::string&) { return false; });
    EXPECT_TRUE(result.notes.empty()) << app;
    size_t correct = 0;
    for (const DeepFinding& f : result.findings) {
      bool right = labelled.count({f.path, f.line, f.method}) > 0;
      correct += right;
      if (!right) ADD_FAILURE() << "not a plug-in call: " << app.filename() << " " << f.path << " " << f.line << " " << f.method;
    }
    made += labelled.size();
    found += correct;
    reported += result.findings.size();
  }
  double recall = made ? 100.0 * found / made : 0, precision = reported ? 100.0 * found / reported : 0;
  std::printf("deep corpus: %zu calls made, %zu found, %zu reported: recall %.1f %%, precision %.1f %%\n", made, found,
              reported, recall, precision);
  EXPECT_GE(recall, 95.0);
  EXPECT_GE(precision, 98.0);
}
