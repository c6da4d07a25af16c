// The Init stage and the documented-API database.
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <tinyxml.h>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/EngineLog.h"
#include "APICheckEngine/RecordLists.h"

namespace FlashEngine_1_00 {

namespace {

// The line-end pass checks its invariants in every build; a broken one ends
// the process with the usual assertion message.
void checkInvariant(bool holds, const char* text, unsigned line) {
  if (holds) return;
  fprintf(stderr, "%s: %s:%u: %s: Assertion `%s' failed.\n", program_invocation_short_name,
          "APICheckEngine/APIAnalysis", line, "swfloadWhiteAPIInfo", text);
  abort();
}

// Turns every CR LF pair and every lone CR of the zero-terminated buffer into
// one LF, in place. Returns the new length, or -1 when the write cursor would
// leave the buffer.
long normaliseLineEnds(char* dbBuff, long ftellLen) {
  char* p = dbBuff;
  char* q = dbBuff;
  while (*p != '\0') {
    checkInvariant(p < (dbBuff + ftellLen), "p < (dbBuff+ftellLen)", __LINE__);
    checkInvariant(q <= (dbBuff + ftellLen), "q <= (dbBuff+ftellLen)", __LINE__);
    checkInvariant(q <= p, "q <= p", __LINE__);
    if (*p == '\r') {
      *q++ = '\n';
      if (p[1] == '\n') ++p;
    } else {
      *q++ = *p;
    }
    ++p;
  }
  if (q > dbBuff + ftellLen) return -1;
  *q = '\0';
  return q - dbBuff;
}

}  // namespace

RunResult APIAnalysis::Init() {
  // Lists 3, 4, 19 and 20 (paths and extensions of files worth scanning,
  // extracted files and directories) keep what earlier runs put there.
  ReleaseStrings(whiteAPIList);
  ReleaseStrings(resultList);
  worthfulSourceList.clear();  // its texts belong to cleanedSourceList
  ReleaseStrings(cleanedSourceList);
  for (auto* list : {&objectTagList, &objectClassList, &objectIdList, &declareList, &embedsDeclareList,
                     &objectVariableList, &foundCallList, &swfCallList, &spareCallList, &objectAccessList,
                     &embedsAccessList}) {
    ReleaseRecords(*list);
  }
  ReleaseFunctionBlocks(functionBlockList);

  RunResult code = swfloadWhiteAPIInfo(whiteAPIList);
  if (code != RUN_SUCCESS) ENGINE_LOG("Init", " loadDeviceAPIInfo Error [%d] ", code);
  PrintProcessingTime("Init");
  return code;
}

RunResult APIAnalysis::swfloadWhiteAPIInfo(std::vector<std::string*>& list) {
  FILE* file = fopen(config.databasePath.c_str(), "r");
  if (file == nullptr) return RUN_DB_LOAD_FAILED;

  fseek(file, 0, SEEK_END);
  long length = ftell(file);
  if (length < 1) {
    fclose(file);
    return RUN_SUCCESS;
  }
  char* buffer = static_cast<char*>(malloc(static_cast<size_t>(length) + 1));
  if (buffer == nullptr) {
    fclose(file);
    return RUN_DB_LOAD_FAILED;
  }
  fseek(file, 0, SEEK_SET);
  if (fread(buffer, 1, static_cast<size_t>(length), file) < static_cast<size_t>(length)) {
    fclose(file);
    free(buffer);
    return RUN_DB_LOAD_FAILED;
  }
  buffer[length] = '\0';
  if (normaliseLineEnds(buffer, length) < 0) {
    fclose(file);
    free(buffer);
    return RUN_DB_LOAD_FAILED;
  }

  TiXmlDocument document;
  document.Parse(buffer, nullptr, TIXML_DEFAULT_ENCODING);
  free(buffer);

  TiXmlNode* root = document.FirstChild("APIAnalysisDB");
  if (root == nullptr) {
    document.Clear();
    fclose(file);
    return RUN_DB_NO_ROOT;
  }
  for (TiXmlNode* group = root->FirstChild(); group != nullptr; group = group->NextSibling()) {
    for (TiXmlNode* entry = group->FirstChild(); entry != nullptr; entry = entry->NextSibling()) {
      TiXmlElement* element = entry->ToElement();
      if (element == nullptr || std::string(entry->Value()) != "Function") continue;
      const char* name = element->GetText();
      if (name != nullptr) list.push_back(new std::string(name));
    }
  }
  document.Clear();
  fclose(file);
  return RUN_SUCCESS;
}

}  // namespace FlashEngine_1_00
