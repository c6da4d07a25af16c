// The engine library as the tools load it: by path with dlopen, through the
// documented analysis interface (and the SWF diagnostics of the command-line
// host).
#pragma once

#include <string>
#include <vector>

#include "APICheckEngine/Diagnostics.h"
#include "report/AnalysisReport.h"
#include "tarvo/analysis.h"

class EngineLibrary {
 public:
  // Loads the library; false (with a message on standard error) when it
  // cannot be loaded or lacks an entry point.
  bool load(const std::string& path);

  // One analysis; `workDir` empty: the product's /tmp/<n>, `database` empty:
  // the product's fixed path. A code of -1 means the engine refused the arguments.
  AnalysisReport analyse(const std::vector<std::string>& paths, const std::string& database,
                         const std::string& workDir, bool reportAll, bool deep = false) const;

  // The listing or the call statements of one SWF file.
  RunResult swfLines(bool statements, const std::string& path, std::vector<std::string>& lines) const;

  const char* engineVersion() const { return engineVersion_(); }

 private:
  template <typename T>
  bool resolve(T& function, const char* name);

  void* handle_ = nullptr;
  IAppAnalysis* (*createInstance_)() = nullptr;
  void (*destoryInstance_)(IAppAnalysis*) = nullptr;
  decltype(&tarvo_swf_listing) listing_ = nullptr;
  decltype(&tarvo_swf_statements) statements_ = nullptr;
  decltype(&tarvo_options_init) optionsInit_ = nullptr;
  decltype(&tarvo_analyse) analyse_ = nullptr;
  decltype(&tarvo_finding_count) findingCount_ = nullptr;
  decltype(&tarvo_finding_at) findingAt_ = nullptr;
  decltype(&tarvo_note_count) noteCount_ = nullptr;
  decltype(&tarvo_note_at) noteAt_ = nullptr;
  decltype(&tarvo_stage_count) stageCount_ = nullptr;
  decltype(&tarvo_stage_at) stageAt_ = nullptr;
  decltype(&tarvo_result_free) resultFree_ = nullptr;
  decltype(&tarvo_engine_version) engineVersion_ = nullptr;
};
