// Fuzzes the first pass over web sources and plug-in object discovery with
// arbitrary bytes: comment and blank-line removal, excerpt and function-block
// cutting, the access, embeds and function patterns, object elements, ids,
// aliases, embeds indexes and call parameter splitting.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CommentStripping.h"
#include "APICheckEngine/SourceScan.h"

using namespace FlashEngine_1_00;

namespace {
void check(bool ok) {
  if (!ok) std::abort();
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* bytes = reinterpret_cast<const char*>(data);

  // Exactly sized output buffers: any write past the input's length is caught.
  std::vector<char> out(size > 0 ? size : 1);
  check(static_cast<size_t>(delete_comment(bytes, static_cast<int>(size), out.data())) <= size);
  check(static_cast<size_t>(delete_blankline(bytes, static_cast<int>(size), out.data())) <= size);

  // The cleaned text as the loader makes it.
  std::string raw(bytes, size);
  size_t length = std::strlen(raw.c_str());
  std::vector<char> cleanedBytes(length + 1);
  size_t cleanedSize = stripComments(raw.c_str(), length + 1, cleanedBytes.data());
  std::string* cleaned = new std::string(cleanedBytes.data(), cleanedSize);
  const char* text = cleaned->c_str();
  size_t textLength = std::strlen(text);

  sourcescan::forEachExcerpt(text, textLength, [&](const sourcescan::Excerpt& e) {
    check(e.first + e.length < textLength);  // never the last byte
  });
  sourcescan::FunctionBlockCutter cutter(text, textLength);
  cutter.forEachBlock([&](const sourcescan::Block& b) {
    check(b.first <= b.last && b.last < textLength);
    return true;
  });

  APIAnalysis engine;
  engine.cleanedSourceList.push_back(cleaned);
  engine.worthfulSourceList.push_back(cleaned);
  engine.worthfulPathList.push_back(new std::string("/tmp/0/app/www/index.html"));
  engine.worthfulExtList.push_back(new std::string("html"));
  sourcescan::collectAccessExpressions(text, textLength, "/tmp/0/app/www/index.html", engine.objectAccessList,
                                       engine.embedsAccessList);
  sourcescan::collectFunctionBlocks(text, textLength, "/tmp/0/app/www/index.html", engine.functionBlockList);
  engine.FindObjectTagToken();
  engine.FindObjectID();
  for (SWFStateMentInfo* record : engine.embedsAccessList) engine.parseEmbedsTagIndex(record->expression);
  engine.parseEmbedsTagIndex(&raw);

  std::string name;
  int position = engine.funcParameterParsing(raw, "tv", name);
  engine.getParamterByPosition(raw, position);
  engine.getParamterByPosition(raw, 1);
  return 0;
}
