#include "report/JsonReport.h"

const char* VerdictOf(int32_t code) {
  switch (code) {
    case 1000:
      return "clean";
    case 1001:
      return "undocumented";
    case 1030:
      return "refused";
    default:
      return "error";
  }
}

nlohmann::ordered_json ToJson(const AnalysisReport& report) {
  nlohmann::ordered_json findings = nlohmann::ordered_json::array();
  for (const ReportFinding& f : report.findings) {
    findings.push_back({{"line", f.line},
                        {"file", f.file},
                        {"entry", f.entry},
                        {"lineNumber", f.lineNumber},
                        {"method", f.method},
                        {"classId", f.classId},
                        {"variable", f.variable},
                        {"origin", f.origin},
                        {"deep", f.deep},
                        {"elementId", f.elementId},
                        {"binding", f.binding}});
  }
  nlohmann::ordered_json notes = nlohmann::ordered_json::array();
  for (const ReportNote& n : report.notes) notes.push_back({{"kind", n.kind}, {"cause", n.cause}, {"path", n.path}});
  nlohmann::ordered_json stages = nlohmann::ordered_json::array();
  for (const auto& stage : report.stages) stages.push_back({{"stage", stage.first}, {"micros", stage.second}});
  return {{"inputs", report.inputs}, {"mode", report.reportAll ? "all" : "exact"}, {"deep", report.deep},
          {"code", report.code},     {"verdict", VerdictOf(report.code)},
          {"findings", findings},    {"notes", notes},
          {"stages", stages}};
}

AnalysisReport FromJson(const nlohmann::ordered_json& json) {
  AnalysisReport report;
  report.inputs = json.at("inputs").get<std::vector<std::string>>();
  report.reportAll = json.at("mode").get<std::string>() == "all";
  report.deep = json.at("deep").get<bool>();
  report.code = json.at("code").get<int32_t>();
  for (const auto& f : json.at("findings")) {
    report.findings.push_back(ReportFinding{f.at("line"), f.at("file"), f.at("entry"), f.at("lineNumber"),
                                            f.at("method"), f.at("classId"), f.at("variable"), f.at("origin"),
                                            f.at("deep"), f.at("elementId"), f.at("binding")});
  }
  for (const auto& n : json.at("notes")) report.notes.push_back(ReportNote{n.at("kind"), n.at("cause"), n.at("path")});
  for (const auto& s : json.at("stages")) report.stages.emplace_back(s.at("stage"), s.at("micros"));
  return report;
}
