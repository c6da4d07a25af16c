// An engine object whose lists a test fills directly, as the earlier scanners
// would have left them, before running one scanner on it.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"

class ScannerFixture : public ::testing::Test {
 protected:
  using Record = FlashEngine_1_00::SWFStateMentInfo;

  // A file worth scanning; its cleaned text ends with one zero byte, as the
  // cleaning step leaves it.
  void addSource(const std::string& path, const std::string& text) {
    std::string* cleaned = new std::string(text);
    cleaned->push_back('\0');
    engine.cleanedSourceList.push_back(cleaned);
    engine.worthfulSourceList.push_back(cleaned);
    engine.worthfulPathList.push_back(new std::string(path));
    engine.worthfulExtList.push_back(new std::string(engine.stringUtil.findFileExtention(path)));
  }

  static Record* record(const char* expression, const std::string& scope = "Global", const std::string& path = "",
                        const std::string& text = "", const std::string& access = "") {
    Record* r = new Record;
    r->expression = expression ? new std::string(expression) : nullptr;
    r->scope = scope;
    r->text = text;
    r->filePath = path;
    r->accessText = access;
    return r;
  }

  void document(std::initializer_list<const char*> names) {
    for (const char* name : names) engine.whiteAPIList.push_back(new std::string(name));
  }

  void addFunction(const std::string& path, const std::string& header, const std::string& body) {
    auto* block = new FlashEngine_1_00::FlashFunctionInfo;
    block->header = header;
    block->body = new std::string(body);
    block->filePath = path;
    engine.functionBlockList.push_back(block);
  }

  static std::vector<std::string> expressions(const std::vector<Record*>& list) {
    std::vector<std::string> out;
    for (const Record* r : list) out.push_back(r->expression ? *r->expression : std::string("<null>"));
    return out;
  }

  // Empties a list of the engine, deleting what it owns.
  static void drop(std::vector<Record*>& list) {
    for (Record* r : list) {
      delete r->expression;
      delete r;
    }
    list.clear();
  }
  static void drop(std::vector<std::string*>& list) {
    for (std::string* s : list) delete s;
    list.clear();
  }

  std::vector<std::string> results() const {
    std::vector<std::string> out;
    for (const std::string* line : engine.resultList) out.push_back(*line);
    return out;
  }

  FlashEngine_1_00::APIAnalysis engine;
};
