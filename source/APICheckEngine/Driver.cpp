// The analysis driver: package expansion, the four stages, clean-up and
// publication of the finding lines.
#include <cstdio>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/DirectoryRemoval.h"
#include "APICheckEngine/EngineConfig.h"
#include "APICheckEngine/EngineLog.h"

namespace FlashEngine_1_00 {

namespace {
bool HasRefusal(const std::vector<AnalysisNote>& notes) {
  for (const AnalysisNote& note : notes) {
    if (note.kind == "refused") return true;
  }
  return false;
}
}  // namespace

RunResult APIAnalysis::StartAnalysis(std::vector<std::string>* files) {
  std::vector<std::string> workingFiles(files->begin(), files->end());
  noteList.clear();

  addFilePathbyUnzipping(workingFiles);
  for (const std::string& path : extractedFileList) {
    ENGINE_LOG("StartAnalysis", " additionally added path : [%s]", path.c_str());
    workingFiles.push_back(path);
  }

  RunResult code = Init();
  if (code != RUN_SUCCESS) {
    ENGINE_LOG("StartAnalysis", "[%s] Init-returnCode [%d] ", "StartAnalysis", code);
  } else if ((code = Prepare(&workingFiles)) != RUN_SUCCESS) {
    ENGINE_LOG("StartAnalysis", "[%s] Prepare-returnCode [%d] ", "StartAnalysis", code);
  } else if ((code = StartRun(&workingFiles)) != RUN_SUCCESS) {
    ENGINE_LOG("StartAnalysis", "[%s] StartRun-returnCode [%d] ", "StartAnalysis", code);
  } else {
    code = Finish(resultList);
  }
  // Fail closed: an application that was not examined in full is never clean.
  if (code == RUN_SUCCESS && HasRefusal(noteList)) code = RUN_INPUT_REFUSED;

  // Clean-up, whatever the code: the extracted files, then each extraction
  // directory with everything below it.
  for (const std::string& path : extractedFileList) remove(path.c_str());
  for (const std::string& dir : extractedDirList) RemoveDirectoryTree(dir);

  std::vector<std::string> lines;
  lines.reserve(resultList.size());
  for (const std::string* line : resultList) lines.push_back(*line);

  ENGINE_LOG("StartAnalysis", " outPutFileFullPath [%s]", EngineConfig::kResultPath);
  if (FILE* out = fopen(EngineConfig::kResultPath, "w")) {
    for (const std::string& line : lines) fwrite(line.data(), 1, line.size(), out);
    fclose(out);
  } else {
    ENGINE_LOG("StartAnalysis", " file[%s] Open Error ", EngineConfig::kResultPath);
  }

  g_SWFResultVector->clear();
  for (const std::string& line : lines) g_SWFResultVector->push_back(line);

  if (code != RUN_SUCCESS) {
    ENGINE_LOG("StartAnalysis", "[%d][%s] returnCode [%d] ", static_cast<int>(g_SWFResultVector->size()),
               "StartAnalysis", code);
  }
  return code;
}

void APIAnalysis::RefuseInput(const std::string& cause, const std::string& path) {
  ENGINE_LOG("RefuseInput", " input refused [%s] : %s ", path.c_str(), cause.c_str());
  noteList.push_back(AnalysisNote{"refused", cause, path});
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
    deAssembler.SWFDeAssemblerMain(path, lines);
    if (!deAssembler.cutCause.empty()) RefuseInput(deAssembler.cutCause, path);
    r = static_cast<RunResult>(deCompiler.SWFDeCompilerMain(lines, statements));
    if (deCompiler.limitReached) RefuseInput("SWF replay beyond its memory limit", path);
    if (r == RUN_SUCCESS) r = FindAPIFunctionName4SWF(statements, path);
  }

  PrintProcessingTime("Finished");
  return r;
}

}  // namespace FlashEngine_1_00
