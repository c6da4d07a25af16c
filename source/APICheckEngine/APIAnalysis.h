// The API check engine: the engine object that a host creates through
// createInstance, its lists, and every stage and scanner of an analysis.
//
// Member definitions are spread over the files of this directory by concern:
// EngineObject.cpp (construction, destruction, time budget), Driver.cpp,
// PackageExpansion.cpp, ApiDatabase.cpp, Verdicts.cpp, SourceSelection.cpp,
// ObjectDiscovery.cpp, CallParameters.cpp, Bindings.cpp, CallExtraction.cpp,
// SwfCallExtraction.cpp.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tarvo/HostInterface.h"
#include "core/AnalysisConfig.h"
#include "decompiler/DeCompiler.h"
#include "strutil/CStringUtil.h"
#include "swf/DeAssembler.h"

namespace FlashEngine_1_00 {

// One found item of the web scanners and one found call, web or SWF.
struct SWFStateMentInfo {
  std::string* expression = nullptr;  // owned by whoever empties the list that holds the record
  std::string scope;                  // "Global", "Func", "Src" or empty
  std::string text;                   // body of the enclosing script function
  std::string filePath;
  std::string accessText;             // the element look-up expression
  int32_t line = 0;                   // 1-based
};

// Something the analysis could not examine in full, or did not examine at all.
struct AnalysisNote {
  std::string kind;   // "refused": the run answers 1030 rather than 1000
  std::string cause;  // what stopped the examination, in the log's words
  std::string path;   // the file, package or entry concerned
};

// One undocumented call: the finding line and what it was made from.
struct AnalysisFinding {
  std::string line;      // the finding line, as the host sees it
  std::string filePath;  // the file as the analysis saw it (extracted files under their directory)
  int32_t lineNumber = 0;
  std::string method;
  std::string classId;   // the plug-in's class identifier
  std::string receiver;  // the variable the call is made on, when the call text names one
  bool fromSwf = false;
  // Found by the deep analysis: the element id and how the binding was found.
  bool deep = false;
  std::string elementId;
  std::string binding;
};

// A script function block of a web source.
struct FlashFunctionInfo {
  std::string header;
  std::string* body = nullptr;  // owned
  std::string filePath;
};

class APIAnalysis : public IAppAnalysis {
 public:
  APIAnalysis();
  ~APIAnalysis() override;
  // The host's door: Analyse, then the result file and g_SWFResultVector.
  RunResult StartAnalysis(std::vector<std::string>* files) override;
  // One analysis with `config`: package expansion, the four stages, the
  // fail-closed and report-all verdicts, clean-up. The finding lines are in
  // resultList, the findings in findingList, the notes in noteList.
  RunResult Analyse(std::vector<std::string>* files);

  // Records a part of the input left unexamined, with one log line; a run
  // with a refusal never answers 1000 (see the driver).
  void RefuseInput(const std::string& cause, const std::string& path);
  // Records something not examined that leaves the verdict as it is (an
  // unreadable SWF file, the time budget spent); nothing is logged.
  void NoteInput(const std::string& kind, const std::string& cause, const std::string& path);

  // Time budget and checkpoints.
  RunResult LimitProcessingTimeNResource();
  void PrintProcessingTime(std::string name);

  // Driver stages.
  RunResult Init();
  RunResult Prepare(std::vector<std::string>* files);
  RunResult StartRun(std::vector<std::string>* files);
  RunResult APIAnalysisFromSWFMain(std::vector<std::string>* files);
  RunResult Finish(std::vector<std::string*>& results);

  // Package expansion.
  void addFilePathbyUnzipping(std::vector<std::string> files);
  void FindAppsFilesLocation(std::string dir, std::vector<std::string>& found);

  // API database.
  RunResult swfloadWhiteAPIInfo(std::vector<std::string*>& list);

  // Verdicts.
  RunResult DetermineAPISecurity(std::vector<std::string*>& results, SWFStateMentInfo* call);
  std::string shownPath(const std::string& path) const;
  // The finding line of an undocumented call of `method` at `line` of `path`.
  std::string FindingLine(const std::string& path, int32_t line, const std::string& method);
  RunResult undocumentAPICheckerMain(std::vector<std::string*> whiteList, std::string apiName, bool& undocumented);

  // Source selection and cleaning.
  RunResult FirstScanSource(std::vector<std::string>* files);
  int CheckFileAnalysisWorth(std::string path, std::string*& cleaned);
  int documentExtentionChecker(std::string extension);

  // Plug-in object discovery.
  RunResult FindObjectTagToken();
  bool FindObjectTags(std::string* text, std::string* path);
  RunResult ObjectStartIDChecker(bool& hasStart, bool& hasEnd, std::string* text);
  std::string parseObjectID(std::string text);
  RunResult FindObjectID();
  int parseEmbedsTagIndex(std::string* text);

  // Object variable binding.
  RunResult FindDeclareListValidation();
  RunResult FindObjectVariable();
  int foundSymbolLineNumber(std::string* path, std::string* symbol);

  // Script API call extraction.
  RunResult FindAPIFunctionName4JS();
  RunResult FindAPIFunctionName4JSSpe();
  RunResult findAPIsFromPool(std::string classId, std::string name, std::string* source, std::string path);
  std::string findAPINameForKOBCase(std::string* callText);

  // Call parameter parsing.
  int funcParameterParsing(std::string text, std::string symbol, std::string& functionName);
  std::string getParamterByPosition(std::string text, int position);

  // Deep analysis (the documented interface's option): adds its findings,
  // marked as deep, to findingList.
  void RunDeepAnalysis(const std::vector<std::string>& files);
  std::vector<std::pair<std::string, std::vector<std::string>>> swfStatements;  // kept for it

  // SWF API extraction.
  RunResult FindAPIFunctionName4SWF(std::vector<std::string> statements, std::string fileName);

  // Members, in this order.
  AnalysisConfig config;      // the product's unless a documented-interface caller sets it
  int32_t extractionCounter;  // names /tmp/<n>; never reset
  CStringUtil stringUtil;
  DeAssembler deAssembler;
  DeCompiler deCompiler;

  std::vector<std::string*> whiteAPIList;        // 1  documented API names
  std::vector<std::string*> resultList;          // 2  finding lines of this run
  std::vector<std::string*> worthfulExtList;     // 3  extension of each file worth scanning
  std::vector<std::string*> worthfulPathList;    // 4  path of each file worth scanning
  std::vector<std::string*> worthfulSourceList;  // 5  cleaned text of each (shared with list 6)
  std::vector<std::string*> cleanedSourceList;   // 6  every cleaned text of the run
  std::vector<SWFStateMentInfo*> objectTagList;       // 7
  std::vector<SWFStateMentInfo*> objectClassList;     // 8
  std::vector<SWFStateMentInfo*> objectIdList;        // 9
  std::vector<SWFStateMentInfo*> declareList;         // 10
  std::vector<SWFStateMentInfo*> embedsDeclareList;   // 11
  std::vector<SWFStateMentInfo*> objectVariableList;  // 12
  std::vector<SWFStateMentInfo*> foundCallList;       // 13 calls judged again by Finish
  std::vector<SWFStateMentInfo*> swfCallList;         // 14 calls found in SWF statements
  std::vector<SWFStateMentInfo*> spareCallList;       // 15 working list, unused
  std::vector<SWFStateMentInfo*> objectAccessList;    // 16
  std::vector<SWFStateMentInfo*> embedsAccessList;    // 17
  std::vector<FlashFunctionInfo*> functionBlockList;  // 18
  std::vector<std::string> extractedFileList;         // 19
  std::vector<std::string> extractedDirList;          // 20

  // Package expansion guards of the current analysis (see docs/design.md).
  int32_t expansionDepth = 0;
  uint64_t expansionBytes = 0;

  // Of the current analysis, emptied when it starts: what could not be
  // examined in full, the findings, each extraction directory with the
  // package extracted there, and the time spent per stage (microseconds).
  std::vector<AnalysisNote> noteList;
  std::vector<AnalysisFinding> findingList;
  std::vector<std::pair<std::string, std::string>> extractionSources;
  std::vector<std::pair<std::string, uint64_t>> stageTimes;
};

}  // namespace FlashEngine_1_00

// Tables and helpers exported with C names.
extern "C" {
extern const char* const documentExtention[12];
extern const char* const SystemFunctionPool[451];
extern const char* const word[26];
extern const char* const word4CapitalSWF[26];

// Copies `length` bytes of `source` into `output` without comments; returns the
// number of bytes written. `output` holds at least `length` bytes.
int delete_comment(const char* source, int length, char* output);
// Copies `length` bytes of `source` into `output` without blank lines.
int delete_blankline(const char* source, int length, char* output);
}
