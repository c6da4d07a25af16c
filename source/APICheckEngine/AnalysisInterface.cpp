// The documented analysis interface (tarvo/analysis.h): the engine core with
// a configuration of the caller's, and its findings, notes and stage times
// copied into a result the caller owns.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <deque>
#include <new>
#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Visibility.h"
#include "tarvo/analysis.h"

struct tarvo_result {
  int32_t code = 0;
  std::deque<std::string> texts;  // every string the views point into; a deque never moves them
  std::vector<tarvo_finding> findings;
  std::vector<tarvo_note> notes;
  std::vector<std::pair<std::string, uint64_t>> stages;

  const char* keep(const std::string& text) {
    texts.push_back(text);
    return texts.back().c_str();
  }
};

namespace {

using FlashEngine_1_00::APIAnalysis;
using Sources = std::vector<std::pair<std::string, std::string>>;

// The package whose extraction directory holds `path`, or nullptr.
const std::pair<std::string, std::string>* extractedFrom(const Sources& sources, const std::string& path) {
  const std::pair<std::string, std::string>* best = nullptr;
  for (const auto& source : sources) {
    const std::string& dir = source.first;
    if (path.size() > dir.size() && path.compare(0, dir.size(), dir) == 0 && path[dir.size()] == '/' &&
        (best == nullptr || dir.size() > best->first.size())) {
      best = &source;
    }
  }
  return best;
}

// Splits a path the engine saw into the path given and the path inside it,
// following packages inside packages up to the one given.
void locate(const Sources& sources, std::string path, std::string& file, std::string& entry) {
  entry.clear();
  while (const auto* source = extractedFrom(sources, path)) {
    std::string inside = path.substr(source->first.size() + 1);
    entry = entry.empty() ? inside : inside + "!/" + entry;
    path = source->second;
  }
  file = path;
}

// A directory name as a printf format: "%" doubled.
std::string asFormat(const std::string& text) {
  std::string format;
  for (char c : text) format += (c == '%') ? std::string("%%") : std::string(1, c);
  return format;
}

bool isDirectory(const char* path) {
  struct stat st;
  return stat(path, &st) == 0 && S_ISDIR(st.st_mode);
}

void collect(APIAnalysis& engine, tarvo_result& result) {
  const Sources& sources = engine.extractionSources;
  std::string file, entry;
  for (const FlashEngine_1_00::AnalysisFinding& found : engine.findingList) {
    locate(sources, found.filePath, file, entry);
    tarvo_finding f;
    f.line = result.keep(found.line);
    f.file = result.keep(file);
    f.entry = result.keep(entry);
    f.line_number = found.lineNumber > 0 ? static_cast<uint32_t>(found.lineNumber) : 0u;
    f.method = result.keep(found.method);
    f.class_id = result.keep(found.classId);
    f.variable = result.keep(found.receiver);
    f.origin = found.fromSwf ? "swf" : "web";
    f.deep = found.deep ? 1 : 0;
    f.element_id = result.keep(found.elementId);
    f.binding = result.keep(found.binding);
    result.findings.push_back(f);
  }
  for (const FlashEngine_1_00::AnalysisNote& note : engine.noteList) {
    locate(sources, note.path, file, entry);
    result.notes.push_back(tarvo_note{result.keep(note.kind), result.keep(note.cause),
                                      result.keep(entry.empty() ? file : file + "!/" + entry)});
  }
  result.stages = engine.stageTimes;
}

}  // namespace

extern "C" {

TARVO_EXPORT void tarvo_options_init(tarvo_options* options) {
  if (options == nullptr) return;
  options->database_path = nullptr;
  options->work_dir = nullptr;
  options->report_all = 0;
  options->deep = 0;
}

TARVO_EXPORT int32_t tarvo_analyse(const tarvo_options* options, const char* const* paths, size_t count,
                                   tarvo_result** result) {
  if (result == nullptr) return -1;
  *result = nullptr;
  if (options == nullptr || (paths == nullptr && count > 0)) return -1;
  if (options->work_dir != nullptr && !isDirectory(options->work_dir)) return -1;
  std::vector<std::string> files;
  for (size_t i = 0; i < count; ++i) {
    if (paths[i] == nullptr) return -1;
    files.emplace_back(paths[i]);
  }

  tarvo_result* made = new (std::nothrow) tarvo_result;
  if (made == nullptr) return -1;
  // Package extraction moves the working directory; the caller gets its own back.
  int cwd = open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  {
    APIAnalysis engine;
    if (options->database_path != nullptr) engine.config.databasePath = options->database_path;
    if (options->work_dir != nullptr) engine.config.extractDirFormat = asFormat(options->work_dir) + "/%d";
    engine.config.resultPath.clear();
    engine.config.reportAll = options->report_all != 0;
    engine.config.deep = options->deep != 0;
    made->code = engine.Analyse(&files);
    collect(engine, *made);
  }
  if (cwd >= 0) {
    if (fchdir(cwd) != 0) made->notes.push_back(tarvo_note{"error", "working directory not restored", ""});
    close(cwd);
  }
  *result = made;
  return made->code;
}

TARVO_EXPORT int32_t tarvo_result_code(const tarvo_result* result) { return result != nullptr ? result->code : -1; }

TARVO_EXPORT size_t tarvo_finding_count(const tarvo_result* result) {
  return result != nullptr ? result->findings.size() : 0;
}

TARVO_EXPORT const tarvo_finding* tarvo_finding_at(const tarvo_result* result, size_t index) {
  return result != nullptr && index < result->findings.size() ? &result->findings[index] : nullptr;
}

TARVO_EXPORT size_t tarvo_note_count(const tarvo_result* result) { return result != nullptr ? result->notes.size() : 0; }

TARVO_EXPORT const tarvo_note* tarvo_note_at(const tarvo_result* result, size_t index) {
  return result != nullptr && index < result->notes.size() ? &result->notes[index] : nullptr;
}

TARVO_EXPORT size_t tarvo_stage_count(const tarvo_result* result) {
  return result != nullptr ? result->stages.size() : 0;
}

TARVO_EXPORT const char* tarvo_stage_at(const tarvo_result* result, size_t index, uint64_t* micros) {
  if (result == nullptr || index >= result->stages.size()) return nullptr;
  if (micros != nullptr) *micros = result->stages[index].second;
  return result->stages[index].first.c_str();
}

TARVO_EXPORT void tarvo_result_free(tarvo_result* result) { delete result; }

TARVO_EXPORT const char* tarvo_engine_version(void) { return EngineConfig::kEngineVersion; }
TARVO_EXPORT const char* tarvo_version(void) { return EngineConfig::kProjectVersion; }

}  // extern "C"
