// Package expansion: every zip package among the paths (recognised by its
// first bytes) is extracted into its own numbered directory, the files found
// there join the run, and packages among them are expanded in turn.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/DirectoryWalk.h"
#include "APICheckEngine/EngineLog.h"
#include "APICheckEngine/PackageSignature.h"
#include "unzip/UnzipJob.h"

namespace FlashEngine_1_00 {

namespace {

constexpr size_t kArgumentBufferSize = 1024;

// Runs the extraction job as a command line: "uzip -x PACKAGE -o -d DIR".
// Returns the job's result: 0, or 1 when the package could not be opened.
int runExtractionJob(const std::string& package, const char* directory, ExtractionBudget& budget) {
  const char* texts[6] = {"uzip", "-x", package.c_str(), "-o", "-d", directory};
  char buffers[6][kArgumentBufferSize];
  char* argv[6];
  for (int i = 0; i < 6; ++i) {
    snprintf(buffers[i], sizeof(buffers[i]), "%s", texts[i]);
    argv[i] = buffers[i];
  }
  return do_UnzipJob(6, argv, budget);
}

// An extraction directory is used only when it is a directory of the engine's
// own user, not a link: /tmp is shared, and a name someone else made first
// could lead the extraction, the scan or the clean-up into their tree.
bool isOwnDirectory(const char* path) {
  struct stat st;
  return lstat(path, &st) == 0 && S_ISDIR(st.st_mode) && st.st_uid == geteuid();
}

// Returns false when a directory was too deep to be walked.
bool collectFiles(int fd, const std::string& dir, std::vector<std::string>& found, int depth) {
  bool whole = true;
  for (const std::string& name : ListDirectory(fd)) {
    struct stat st;
    if (fstatat(fd, name.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0) continue;
    std::string path = dir + "/" + name;
    if (S_ISDIR(st.st_mode)) {
      if (depth >= kMaxDirectoryDepth) {
        whole = false;
        continue;
      }
      int sub = OpenSubdirectory(fd, name.c_str());
      if (sub < 0) continue;
      whole = collectFiles(sub, path, found, depth + 1) && whole;
      close(sub);
    } else if (S_ISREG(st.st_mode)) {
      found.push_back(path);
    }
  }
  return whole;
}

class DepthScope {
 public:
  explicit DepthScope(int32_t& depth) : depth_(depth) { ++depth_; }
  ~DepthScope() { --depth_; }
  DepthScope(const DepthScope&) = delete;
  DepthScope& operator=(const DepthScope&) = delete;

 private:
  int32_t& depth_;
};

// Extracts one package found at the current nesting level, within the
// analysis's limits, and expands the packages found inside it.
void expandPackage(APIAnalysis& engine, const std::string& path) {
  if (engine.expansionDepth >= engine.config.maxPackageDepth) {
    ENGINE_LOG("addFilePathbyUnzipping", " [%s] package nesting limit [%d] reached, not expanded ", path.c_str(),
               static_cast<int>(engine.config.maxPackageDepth));
    engine.RefuseInput("packages nested more than " + std::to_string(engine.config.maxPackageDepth) + " deep", path);
    return;
  }
  ExtractionBudget budget;
  budget.maxBytes = engine.config.maxExtractedBytes;
  budget.maxEntries = engine.config.maxPackageEntries;
  budget.bytesUsed = engine.expansionBytes;
  if (budget.bytesUsed >= budget.maxBytes || budget.maxBytes - budget.bytesUsed < kEntryCharge) {
    ENGINE_LOG("addFilePathbyUnzipping", " [%s] limit of [%llu] bytes reached, extraction stopped ", path.c_str(),
               static_cast<unsigned long long>(budget.maxBytes));
    engine.RefuseInput("more than " + std::to_string(budget.maxBytes) + " bytes to extract", path);
    return;
  }

  char directory[kArgumentBufferSize];
  snprintf(directory, sizeof(directory), engine.config.extractDirFormat.c_str(), static_cast<int>(engine.extractionCounter));
  ++engine.extractionCounter;
  mkdir(directory, 0755);  // an existing directory is used as it is
  if (!isOwnDirectory(directory)) {
    ENGINE_LOG("addFilePathbyUnzipping", " [%s] extraction directory [%s] not usable, package skipped ",
               path.c_str(), directory);
    engine.RefuseInput("extraction directory [" + std::string(directory) + "] not usable", path);
    return;
  }
  budget.bytesUsed += kEntryCharge;

  if (runExtractionJob(path, directory, budget) != 0) engine.RefuseInput("not a readable zip package", path);
  if (!budget.refusal.empty()) engine.RefuseInput(budget.refusal, path);
  engine.expansionBytes = budget.bytesUsed;
  engine.extractedDirList.push_back(directory);
  engine.extractionSources.emplace_back(directory, path);

  std::vector<std::string> found;
  engine.FindAppsFilesLocation(directory, found);
  engine.extractedFileList.insert(engine.extractedFileList.end(), found.begin(), found.end());
  DepthScope nested(engine.expansionDepth);
  engine.addFilePathbyUnzipping(found);
}

}  // namespace

void APIAnalysis::addFilePathbyUnzipping(std::vector<std::string> files) {
  ENGINE_LOG("addFilePathbyUnzipping", " \n [%s] [%d]", "addFilePathbyUnzipping", static_cast<int>(files.size()));
  // The limits count per analysis: the outermost call starts them afresh.
  if (expansionDepth == 0) expansionBytes = 0;

  for (const std::string& path : files) {
    FILE* file = fopen(path.c_str(), "rb");
    if (file == nullptr) {
      ENGINE_LOG("addFilePathbyUnzipping", " [%s] Open Error ", path.c_str());
      continue;
    }
    if (path.find(".fla") != std::string::npos) {
      fclose(file);
      continue;
    }
    fseek(file, 0, SEEK_END);
    long size = ftell(file);
    fseek(file, 0, SEEK_SET);
    unsigned char head[8];
    size_t got = fread(head, 1, sizeof(head), file);
    fclose(file);
    if (!IsPackageSignature(head, got)) continue;

    ENGINE_LOG("addFilePathbyUnzipping", " zip file found [%s]/ Size [%d]", path.c_str(), static_cast<int>(size));
    expandPackage(*this, path);
  }
}

void APIAnalysis::FindAppsFilesLocation(std::string dir, std::vector<std::string>& found) {
  int fd = open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (fd < 0) return;
  if (!collectFiles(fd, dir, found, 0)) {
    RefuseInput("directories nested more than " + std::to_string(kMaxDirectoryDepth) + " deep", dir);
  }
  close(fd);
}

}  // namespace FlashEngine_1_00
