// The analysis driver: package expansion, the four stages, clean-up and
// publication of the finding lines.
#include <chrono>
#include <cstdio>
#include <string>
#include <utility>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/DirectoryRemoval.h"
#include "APICheckEngine/EngineLog.h"
#include "APICheckEngine/TimeBudget.h"

namespace FlashEngine_1_00 {

namespace {
// Times the stages of an analysis: each lap records the time since the last.
class StageClock {
 public:
  explicit StageClock(std::vector<std::pair<std::string, uint64_t>>& times)
      : times_(times), last_(std::chrono::steady_clock::now()) {}
  void lap(const char* stage) {
    auto now = std::chrono::steady_clock::now();
    times_.emplace_back(stage, std::chrono::duration_cast<std::chrono::microseconds>(now - last_).count());
    last_ = now;
  }

 private:
  std::vector<std::pair<std::string, uint64_t>>& times_;
  std::chrono::steady_clock::time_point last_;
};

bool HasRefusal(const std::vector<AnalysisNote>& notes) {
  for (const AnalysisNote& note : notes) {
    if (note.kind == "refused") return true;
  }
  return false;
}
}  // namespace

RunResult APIAnalysis::StartAnalysis(std::vector<std::string>* files) {
  RunResult code = Analyse(files);

  std::vector<std::string> lines;
  lines.reserve(resultList.size());
  for (const std::string* line : resultList) lines.push_back(*line);

  ENGINE_LOG("StartAnalysis", " outPutFileFullPath [%s]", config.resultPath.c_str());
  if (FILE* out = fopen(config.resultPath.c_str(), "w")) {
    for (const std::string& line : lines) fwrite(line.data(), 1, line.size(), out);
    fclose(out);
  } else {
    ENGINE_LOG("StartAnalysis", " file[%s] Open Error ", config.resultPath.c_str());
  }

  g_SWFResultVector->clear();
  for (const std::string& line : lines) g_SWFResultVector->push_back(line);

  if (code != RUN_SUCCESS) {
    ENGINE_LOG("StartAnalysis", "[%d][%s] returnCode [%d] ", static_cast<int>(g_SWFResultVector->size()),
               "StartAnalysis", code);
  }
  return code;
}

RunResult APIAnalysis::Analyse(std::vector<std::string>* files) {
  std::vector<std::string> workingFiles(files->begin(), files->end());
  noteList.clear();
  findingList.clear();
  extractionSources.clear();
  stageTimes.clear();
  swfStatements.clear();
  StageClock clock(stageTimes);

  addFilePathbyUnzipping(workingFiles);
  for (const std::string& path : extractedFileList) {
    ENGINE_LOG("StartAnalysis", " additionally added path : [%s]", path.c_str());
    workingFiles.push_back(path);
  }
  clock.lap("expansion");

  RunResult code = Init();
  clock.lap("database");
  if (code != RUN_SUCCESS) {
    ENGINE_LOG("StartAnalysis", "[%s] Init-returnCode [%d] ", "StartAnalysis", code);
  } else if ((code = Prepare(&workingFiles), clock.lap("first pass"), code) != RUN_SUCCESS) {
    ENGINE_LOG("StartAnalysis", "[%s] Prepare-returnCode [%d] ", "StartAnalysis", code);
  } else if ((code = StartRun(&workingFiles), clock.lap("scan"), code) != RUN_SUCCESS) {
    ENGINE_LOG("StartAnalysis", "[%s] StartRun-returnCode [%d] ", "StartAnalysis", code);
  } else {
    code = Finish(resultList);
    clock.lap("verdicts");
  }
  if (config.deep && (code == RUN_SUCCESS || code == RUN_UNDOCUMENTED_API)) {
    RunDeepAnalysis(workingFiles);
    clock.lap("deep");
  }
  // Reporting every call, the findings make the code (an error stays).
  if ((config.reportAll || config.deep) && !findingList.empty() &&
      (code == RUN_SUCCESS || code == RUN_UNDOCUMENTED_API)) {
    code = RUN_UNDOCUMENTED_API;
  }
  // Fail closed: an application that was not examined in full is never clean.
  if (code == RUN_SUCCESS && HasRefusal(noteList)) code = RUN_INPUT_REFUSED;

  // Clean-up, whatever the code: the extracted files, then each extraction
  // directory with everything below it.
  for (const std::string& path : extractedFileList) remove(path.c_str());
  for (const std::string& dir : extractedDirList) RemoveDirectoryTree(dir);
  clock.lap("clean-up");
  return code;
}

void APIAnalysis::RefuseInput(const std::string& cause, const std::string& path) {
  ENGINE_LOG("RefuseInput", " input refused [%s] : %s ", path.c_str(), cause.c_str());
  noteList.push_back(AnalysisNote{"refused", cause, path});
}

void APIAnalysis::NoteInput(const std::string& kind, const std::string& cause, const std::string& path) {
  noteList.push_back(AnalysisNote{kind, cause, path});
}

RunResult APIAnalysis::Prepare(std::vector<std::string>* files) {
  RunResult code = FirstScanSource(files);
  PrintProcessingTime("Prepare");
  return code;
}

RunResult APIAnalysis::StartRun(std::vector<std::string>* files) { return APIAnalysisFromSWFMain(files); }

RunResult APIAnalysis::APIAnalysisFromSWFMain(std::vector<std::string>* files) {
  PrintProcessingTime("GetDeviceAPIsFromSWFMain");

  RunResult r = FindObjectTagToken();
  PrintProcessingTime("AfterFindObjectTagToken");
  if (r != RUN_SUCCESS) return r;
  FindObjectID();
  if ((r = FindDeclareListValidation()) != RUN_SUCCESS) return r;
  if ((r = FindObjectVariable()) != RUN_SUCCESS) return r;
  if ((r = FindAPIFunctionName4JS()) != RUN_SUCCESS) return r;
  if ((r = FindAPIFunctionName4JSSpe()) != RUN_SUCCESS) return r;
  PrintProcessingTime("AfterFindAPIFunctionName4JS");

  // Every SWF file is processed; only the last one's code is returned.
  for (const std::string& path : *files) {
    std::string extension = stringUtil.findFileExtention(path);
    if (extension != "SWF" && extension != "swf") continue;
    std::vector<std::string> lines;
    std::vector<std::string> statements;
    deAssembler.maxImageBytes = config.maxInflatedSwfBytes;
    RunResult listed = deAssembler.SWFDeAssemblerMain(path, lines);
    if (!deAssembler.cutCause.empty()) RefuseInput(deAssembler.cutCause, path);
    if (listed == RUN_SWF_OPEN_FAILED || listed == RUN_SWF_BAD_SIGNATURE || listed == RUN_SWF_UNCOMPRESS_FAILED) {
      NoteInput("unreadable", "SWF file cannot be read (code " + std::to_string(listed) + ")", path);
    }
    r = static_cast<RunResult>(deCompiler.SWFDeCompilerMain(lines, statements));
    if (deCompiler.limitReached) RefuseInput("SWF replay beyond its memory limit", path);
    if (TimeBudget::spent()) NoteInput("time budget", "SWF work stopped: the time budget is spent", path);
    if (config.deep) swfStatements.emplace_back(path, statements);
    if (r == RUN_SUCCESS) r = FindAPIFunctionName4SWF(statements, path);
  }

  PrintProcessingTime("Finished");
  return r;
}

}  // namespace FlashEngine_1_00
