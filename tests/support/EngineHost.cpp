#include "support/EngineHost.h"

#include "tarvo/analysis.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <ftw.h>
#include <limits.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "APICheckEngine/EngineConfig.h"

void LockFixedPaths() {
  static int fd = [] {
    int handle = open("/tmp/.tarvo-fixed-paths.lock", O_CREAT | O_RDWR | O_CLOEXEC, 0666);
    if (handle >= 0) flock(handle, LOCK_EX);
    return handle;
  }();
  (void)fd;
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

static void makeParents(const std::string& path) {
  for (size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
    mkdir(path.substr(0, slash).c_str(), 0755);
  }
}

void WriteFile(const std::string& path, const std::string& content) {
  makeParents(path);
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!out) throw std::runtime_error("cannot write " + path);
}

static int removeEntry(const char* path, const struct stat*, int, struct FTW*) {
  remove(path);
  return 0;
}

void RemoveTree(const std::string& path) { nftw(path.c_str(), removeEntry, 16, FTW_DEPTH | FTW_PHYS); }

bool EngineHost::Run::logged(const std::string& text) const {
  for (const LogLine& line : log) {
    if (line.text == text) return true;
  }
  return false;
}

std::vector<std::string> EngineHost::Run::logTexts() const {
  std::vector<std::string> out;
  for (const LogLine& line : log) out.push_back(line.text);
  return out;
}

EngineHost::EngineHost() {
  LockFixedPaths();
  static void* loaded = dlopen(TARVO_ENGINE_PATH, RTLD_NOW | RTLD_LOCAL);
  handle = loaded;
  if (handle == nullptr) throw std::runtime_error(std::string("dlopen failed: ") + dlerror());
  createInstance = reinterpret_cast<decltype(createInstance)>(symbol("createInstance"));
  destoryInstance = reinterpret_cast<decltype(destoryInstance)>(symbol("destoryInstance"));
  createResultVector = reinterpret_cast<decltype(createResultVector)>(symbol("createResultVector"));
  destoryResultVector = reinterpret_cast<decltype(destoryResultVector)>(symbol("destoryResultVector"));
  resultVector = reinterpret_cast<decltype(resultVector)>(symbol("g_SWFResultVector"));
  firstTimeVal = reinterpret_cast<uint32_t*>(symbol("firstTimeVal"));
  firstCheckTime = reinterpret_cast<struct timespec*>(symbol("firstCheckTime"));
}

void* EngineHost::symbol(const char* name) const {
  void* address = dlsym(handle, name);
  if (address == nullptr) throw std::runtime_error(std::string("missing export ") + name);
  return address;
}

EngineHost::Run EngineHost::analyse(const std::vector<std::string>& files) {
  char cwd[PATH_MAX];
  if (getcwd(cwd, sizeof(cwd)) == nullptr) cwd[0] = '\0';
  Run run;
  LogCapture::clear();
  std::vector<std::string>* results = createResultVector();
  IAppAnalysis* engine = createInstance();
  std::vector<std::string> input(files);
  run.code = engine->StartAnalysis(&input);
  run.results = *results;
  char after[PATH_MAX];
  run.cwdAfter = getcwd(after, sizeof(after)) ? after : "";
  destoryInstance(engine);
  destoryResultVector();
  run.log = LogCapture::lines();
  run.resultFile = ReadFile(EngineConfig::kResultPath);
  if (cwd[0] != '\0' && chdir(cwd) != 0) perror("chdir");
  return run;
}

void DatabaseFile::saveExisting() {
  LockFixedPaths();
  struct stat st;
  hadFile_ = stat(EngineConfig::kDatabasePath, &st) == 0;
  if (hadFile_) saved_ = ReadFile(EngineConfig::kDatabasePath);
  active_ = true;
}

DatabaseFile::DatabaseFile(const std::string& content) {
  saveExisting();
  WriteFile(EngineConfig::kDatabasePath, content);
}

DatabaseFile DatabaseFile::Missing() {
  DatabaseFile file;
  file.saveExisting();
  remove(EngineConfig::kDatabasePath);
  return file;
}

DatabaseFile::DatabaseFile(DatabaseFile&& other) noexcept
    : hadFile_(other.hadFile_), active_(other.active_), saved_(std::move(other.saved_)) {
  other.active_ = false;
}

DatabaseFile::~DatabaseFile() {
  if (!active_) return;
  if (hadFile_) {
    WriteFile(EngineConfig::kDatabasePath, saved_);
  } else {
    remove(EngineConfig::kDatabasePath);
  }
}

TempDir::TempDir() {
  char pattern[] = "/tmp/tarvo-test-XXXXXX";
  char* made = mkdtemp(pattern);
  if (made == nullptr) throw std::runtime_error("mkdtemp failed");
  path_ = made;
}

TempDir::~TempDir() { RemoveTree(path_); }

EngineHost::Documented EngineHost::analyseDocumented(const std::vector<std::string>& files, bool reportAll,
                                                     const std::string& workDir, const std::string& database,
                                                     bool deep) const {
  auto init = reinterpret_cast<decltype(&tarvo_options_init)>(symbol("tarvo_options_init"));
  auto analyse = reinterpret_cast<decltype(&tarvo_analyse)>(symbol("tarvo_analyse"));
  auto findingCount = reinterpret_cast<decltype(&tarvo_finding_count)>(symbol("tarvo_finding_count"));
  auto findingAt = reinterpret_cast<decltype(&tarvo_finding_at)>(symbol("tarvo_finding_at"));
  auto noteCount = reinterpret_cast<decltype(&tarvo_note_count)>(symbol("tarvo_note_count"));
  auto noteAt = reinterpret_cast<decltype(&tarvo_note_at)>(symbol("tarvo_note_at"));
  auto release = reinterpret_cast<decltype(&tarvo_result_free)>(symbol("tarvo_result_free"));

  tarvo_options options;
  init(&options);
  options.report_all = reportAll ? 1 : 0;
  options.deep = deep ? 1 : 0;
  if (!workDir.empty()) options.work_dir = workDir.c_str();
  if (!database.empty()) options.database_path = database.c_str();
  std::vector<const char*> paths;
  for (const std::string& file : files) paths.push_back(file.c_str());
  tarvo_result* result = nullptr;
  Documented run;
  run.code = analyse(&options, paths.data(), paths.size(), &result);
  for (size_t i = 0; i < findingCount(result); ++i) {
    const tarvo_finding* f = findingAt(result, i);
    run.findings.push_back(Finding{f->line, f->file, f->entry, f->method, f->class_id, f->variable, f->origin,
                                   f->line_number, f->deep != 0, f->element_id, f->binding});
    run.lines.push_back(f->line);
  }
  for (size_t i = 0; i < noteCount(result); ++i) {
    const tarvo_note* n = noteAt(result, i);
    run.notes.push_back(std::string(n->kind) + ": " + n->path + ": " + n->cause);
  }
  release(result);
  return run;
}
