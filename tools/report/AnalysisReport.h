// What the tools report of one analysis: a plain copy of the documented
// interface's result, with the inputs and mode it ran with.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

struct ReportFinding {
  std::string line;  // the finding line, "\n" included
  std::string file;
  std::string entry;
  uint32_t lineNumber = 0;
  std::string method;
  std::string classId;
  std::string variable;
  std::string origin;  // "web" or "swf"
  bool deep = false;   // found by the deep analysis only
  std::string elementId;
  std::string binding;
  bool operator==(const ReportFinding& o) const {
    return line == o.line && file == o.file && entry == o.entry && lineNumber == o.lineNumber &&
           method == o.method && classId == o.classId && variable == o.variable && origin == o.origin &&
           deep == o.deep && elementId == o.elementId && binding == o.binding;
  }
};

struct ReportNote {
  std::string kind, cause, path;
  bool operator==(const ReportNote& o) const { return kind == o.kind && cause == o.cause && path == o.path; }
};

struct AnalysisReport {
  std::vector<std::string> inputs;
  bool reportAll = false;
  bool deep = false;
  int32_t code = 0;
  std::vector<ReportFinding> findings;
  std::vector<ReportNote> notes;
  std::vector<std::pair<std::string, uint64_t>> stages;  // microseconds
  bool operator==(const AnalysisReport& o) const {
    return inputs == o.inputs && reportAll == o.reportAll && code == o.code && findings == o.findings &&
           notes == o.notes && stages == o.stages && deep == o.deep;
  }
};

// "clean", "undocumented", "refused" or "error", from the code.
const char* VerdictOf(int32_t code);
