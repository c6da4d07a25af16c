// Plug-in API calls in the statements that the decompiler rebuilt from one SWF
// file: calls made on a look-up of the declared plug-in object, judged one by
// one, then the script-style search of the bound variables over all the
// statements together.
#include <memory>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CallForms.h"
#include "APICheckEngine/RecordLists.h"
#include "APICheckEngine/PatternTexts.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {

RunResult APIAnalysis::FindAPIFunctionName4SWF(std::vector<std::string> statements, std::string fileName) {
  std::unique_ptr<std::string> joined(new std::string());
  for (const std::string& statement : statements) *joined += statement;

  // Only the first declared object is ever looked for in the statements.
  std::string classId;
  std::string variableName;
  std::vector<std::string> fields;
  if (!objectIdList.empty() && objectIdList.front()->expression != nullptr) {
    stringUtil.stringTokenizer("#", *objectIdList.front()->expression, fields);
    if (fields.size() >= 2) {
      classId = fields[0];
      variableName = fields[1];
    }
  }

  // With no declared object the statements yield nothing.
  const size_t walked = objectIdList.empty() ? 0 : statements.size();
  Pattern call(patterns::LookUpMethodName(variableName));
  Pattern prefix(patterns::LookUpMember(variableName));
  for (size_t i = 0; i < walked; ++i) {
    const std::string& statement = statements[i];
    if (!call.search(statement)) continue;
    const char* prefixEnd = nullptr;
    if (!prefix.search(statement, nullptr, &prefixEnd) || prefixEnd == nullptr) continue;
    std::string apiText = statement.substr(static_cast<size_t>(prefixEnd - statement.c_str()));
    if (CallsSystemFunction(apiText)) continue;

    std::string* apiName = nullptr;
    std::string dummyCall = "DummyObject." + apiText + "()";
    dummyCall = stringUtil.customReplace(dummyCall, ")", "");
    if (classId == kExtensionFrameworkClassId || apiText.find("Execute") != std::string::npos) {
      apiName = new std::string(classId + "#" + findAPINameForKOBCase(&dummyCall));
    } else if (apiText.find(".Open") == std::string::npos) {
      apiName = new std::string(classId + "#" + dummyCall);
    }

    SWFStateMentInfo* record = NewRecord(apiName, "Global", fileName);
    swfCallList.push_back(record);
    RunResult r = DetermineAPISecurity(resultList, record);
    if (r != RUN_SUCCESS) return r;
  }

  for (SWFStateMentInfo* binding : objectVariableList) {
    std::string bindingClassId;
    std::string bindingName;
    if (binding->expression != nullptr) {
      stringUtil.stringTokenizer("#", *binding->expression, fields);
      if (fields.size() >= 2) {
        bindingClassId = fields[0];
        bindingName = fields[1];
      }
    }
    findAPIsFromPool(bindingClassId, bindingName, joined.get(), fileName);
  }
  return RUN_SUCCESS;
}

}  // namespace FlashEngine_1_00
