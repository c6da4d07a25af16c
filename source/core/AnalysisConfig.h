// The configuration of one analysis. Its defaults are the product's: the
// fixed paths of the host interface and the guards against hostile input
// (build-time values of EngineConfig). The host interface always runs with
// them; the documented analysis interface changes the paths and the mode.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "APICheckEngine/EngineConfig.h"

struct AnalysisConfig {
  std::string databasePath = EngineConfig::kDatabasePath;
  // The file that receives the finding lines; empty: none is written.
  std::string resultPath = EngineConfig::kResultPath;
  // printf format of the extraction directories, with one %d.
  std::string extractDirFormat = EngineConfig::kExtractDirFormat;
  // Report every undocumented call (each finding line once, in the order
  // found) instead of stopping at the first, as the host sees it.
  bool reportAll = false;
  // Also run the deep analysis of web sources and SWF statements (findings
  // marked as deep; the exact findings stay as they are).
  bool deep = false;

  int32_t maxPackageDepth = EngineConfig::kMaxPackageDepth;
  uint64_t maxExtractedBytes = EngineConfig::kMaxExtractedBytes;
  uint32_t maxPackageEntries = EngineConfig::kMaxPackageEntries;
  uint64_t maxInflatedSwfBytes = EngineConfig::kMaxInflatedSwfBytes;
  size_t maxSourceFileBytes = EngineConfig::kMaxSourceFileBytes;
};
