#include "report/SarifReport.h"

#include <cctype>
#include <cstdio>
#include <cstring>

#include "report/JsonReport.h"

namespace {

const char* const kWebRule = "undocumented-api-web";
const char* const kSwfRule = "undocumented-api-swf";

// Percent-encodes what may not stand in a URI path as it is.
std::string uriPath(const std::string& path) {
  static const char kKept[] = "-._~/!$&'()*+,;=:@";
  std::string uri;
  for (unsigned char c : path) {
    if (isalnum(c) || (c != 0 && strchr(kKept, c) != nullptr)) {
      uri += static_cast<char>(c);
    } else {
      char escaped[4];
      snprintf(escaped, sizeof escaped, "%%%02X", c);
      uri += escaped;
    }
  }
  return uri;
}

// Where a finding is: the file inside the package (a relative URI), or the
// file given, absolute ones as file URIs.
nlohmann::ordered_json location(const ReportFinding& f) {
  std::string uri = !f.entry.empty() ? uriPath(f.entry) : (f.file[0] == '/' ? "file://" : "") + uriPath(f.file);
  nlohmann::ordered_json physical = {{"artifactLocation", {{"uri", uri}}}};
  if (f.lineNumber > 0) physical["region"] = {{"startLine", f.lineNumber}};
  return {{"physicalLocation", physical}};
}

nlohmann::ordered_json rule(const char* id, const char* name, const char* text) {
  return {{"id", id}, {"name", name}, {"shortDescription", {{"text", text}}},
          {"defaultConfiguration", {{"level", "error"}}}};
}

}  // namespace

nlohmann::ordered_json ToSarif(const std::vector<AnalysisReport>& reports, const std::string& toolVersion) {
  nlohmann::ordered_json results = nlohmann::ordered_json::array();
  nlohmann::ordered_json invocations = nlohmann::ordered_json::array();
  for (const AnalysisReport& report : reports) {
    for (const ReportFinding& f : report.findings) {
      bool swf = f.origin == "swf";
      std::string text = "Undocumented platform API '" + f.method + "' called";
      if (!f.classId.empty()) text += " on plug-in " + f.classId;
      if (!f.variable.empty()) text += " through '" + f.variable + "'";
      results.push_back({{"ruleId", swf ? kSwfRule : kWebRule},
                         {"ruleIndex", swf ? 1 : 0},
                         {"level", "error"},
                         {"message", {{"text", text}}},
                         {"locations", {location(f)}},
                         {"properties",
                          {{"package", f.entry.empty() ? "" : f.file},
                           {"findingLine", f.line},
                           {"classId", f.classId},
                           {"variable", f.variable},
                           {"deep", f.deep},
                           {"elementId", f.elementId},
                           {"binding", f.binding}}}});
    }
    nlohmann::ordered_json json = ToJson(report);
    nlohmann::ordered_json notifications = nlohmann::ordered_json::array();
    for (const ReportNote& note : report.notes) {
      notifications.push_back({{"level", note.kind == "refused" ? "error" : "warning"},
                               {"message", {{"text", note.kind + ": " + note.path + ": " + note.cause}}}});
    }
    invocations.push_back({{"executionSuccessful", std::string(VerdictOf(report.code)) != "error"},
                           {"toolExecutionNotifications", notifications},
                           {"properties",
                            {{"inputs", json["inputs"]},
                             {"code", report.code},
                             {"verdict", json["verdict"]},
                             {"notes", json["notes"]}}}});
  }
  nlohmann::ordered_json driver = {
      {"name", "tarvo-api-check"},
      {"version", toolVersion},
      {"rules",
       {rule(kWebRule, "UndocumentedApiFromWebSource",
             "A web source (HTML, JavaScript, XML) calls a platform API that the database does not document"),
        rule(kSwfRule, "UndocumentedApiFromSwf",
             "A Flash SWF file calls a platform API that the database does not document")}}};
  return {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
          {"version", "2.1.0"},
          {"runs", {{{"tool", {{"driver", driver}}}, {"invocations", invocations}, {"results", results}}}}};
}
