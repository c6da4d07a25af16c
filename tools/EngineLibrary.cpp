#include "EngineLibrary.h"

#include <dlfcn.h>

#include <cstdio>

template <typename T>
bool EngineLibrary::resolve(T& function, const char* name) {
  function = reinterpret_cast<T>(dlsym(handle_, name));
  return function != nullptr;
}

bool EngineLibrary::load(const std::string& path) {
  handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) {
    fprintf(stderr, "tarvo-api-check: cannot load the engine: %s\n", dlerror());
    return false;
  }
  bool complete = resolve(createInstance_, "createInstance") && resolve(destoryInstance_, "destoryInstance") &&
                  resolve(listing_, "tarvo_swf_listing") && resolve(statements_, "tarvo_swf_statements") &&
                  resolve(optionsInit_, "tarvo_options_init") && resolve(analyse_, "tarvo_analyse") &&
                  resolve(findingCount_, "tarvo_finding_count") && resolve(findingAt_, "tarvo_finding_at") &&
                  resolve(noteCount_, "tarvo_note_count") && resolve(noteAt_, "tarvo_note_at") &&
                  resolve(stageCount_, "tarvo_stage_count") && resolve(stageAt_, "tarvo_stage_at") &&
                  resolve(resultFree_, "tarvo_result_free") && resolve(engineVersion_, "tarvo_engine_version");
  if (!complete) fprintf(stderr, "tarvo-api-check: %s is not an API check engine\n", path.c_str());
  return complete;
}

AnalysisReport EngineLibrary::analyse(const std::vector<std::string>& paths, const std::string& database,
                                      const std::string& workDir, bool reportAll, bool deep) const {
  AnalysisReport report;
  report.inputs = paths;
  report.reportAll = reportAll;
  report.deep = deep;
  tarvo_options options;
  optionsInit_(&options);
  if (!database.empty()) options.database_path = database.c_str();
  if (!workDir.empty()) options.work_dir = workDir.c_str();
  options.report_all = reportAll ? 1 : 0;
  options.deep = deep ? 1 : 0;
  std::vector<const char*> list;
  for (const std::string& path : paths) list.push_back(path.c_str());

  tarvo_result* result = nullptr;
  report.code = analyse_(&options, list.data(), list.size(), &result);
  if (result == nullptr) return report;
  for (size_t i = 0; i < findingCount_(result); ++i) {
    const tarvo_finding* f = findingAt_(result, i);
    report.findings.push_back(
        ReportFinding{f->line,   f->file,     f->entry,         f->line_number, f->method, f->class_id,
                      f->variable, f->origin, f->deep != 0, f->element_id, f->binding});
  }
  for (size_t i = 0; i < noteCount_(result); ++i) {
    const tarvo_note* n = noteAt_(result, i);
    report.notes.push_back(ReportNote{n->kind, n->cause, n->path});
  }
  for (size_t i = 0; i < stageCount_(result); ++i) {
    uint64_t micros = 0;
    const char* stage = stageAt_(result, i, &micros);
    report.stages.emplace_back(stage, micros);
  }
  resultFree_(result);
  return report;
}

RunResult EngineLibrary::swfLines(bool statements, const std::string& path, std::vector<std::string>& lines) const {
  IAppAnalysis* instance = createInstance_();
  RunResult code = statements ? statements_(instance, path.c_str(), &lines) : listing_(instance, path.c_str(), &lines);
  destoryInstance_(instance);
  return code;
}
