// An engine object whose lists a test fills directly, as the earlier scanners
// would have left them, before running one scanner on it.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"

using Texts = std::vector<std::string>;

// The expression text of every record of a list, in order.
inline Texts expressionsOf(const std::vector<FlashEngine_1_00::SWFStateMentInfo*>& list) {
  Texts out;
  for (const auto* record : list) out.push_back(record->expression ? *record->expression : "<null>");
  return out;
}

class ScannerFixture : public ::testing::Test {
 protected:
  using Record = FlashEngine_1_00::SWFStateMentInfo;

  // A file worth scanning; its cleaned text ends with one zero byte, as the
  // cleaning step leaves it.
  void addSource(const std::string& path, const std::string& text) {
    std::string* cleaned = new std::string(text + '\0');
    engine.cleanedSourceList.push_back(cleaned);
    engine.worthfulSourceList.push_back(cleaned);
    engine.worthfulPathList.push_back(new std::string(path));
    engine.worthfulExtList.push_back(new std::string(engine.stringUtil.findFileExtention(path)));
  }

  static Record* record(const char* expression, const std::string& scope = "Global", const std::string& path = "",
                        const std::string& text = "", const std::string& access = "") {
    return new Record{expression ? new std::string(expression) : nullptr, scope, text, path, access};
  }

  void document(std::initializer_list<const char*> names) {
    for (const char* name : names) engine.whiteAPIList.push_back(new std::string(name));
  }

  void addFunction(const std::string& path, const std::string& header, const std::string& body) {
    engine.functionBlockList.push_back(new FlashEngine_1_00::FlashFunctionInfo{header, new std::string(body), path});
  }

  Texts results() const {
    Texts out;
    for (const std::string* line : engine.resultList) out.push_back(*line);
    return out;
  }

  FlashEngine_1_00::APIAnalysis engine;
};
