// Argument handling of the extraction job and its walks over the entries.
#include "unzip/UnzipJob.h"

#include <fcntl.h>
#include <unistd.h>

#include <cctype>
#include <cstring>

#include "APICheckEngine/EngineLog.h"

namespace {

struct JobArguments {
  bool list = false;
  bool withoutPath = false;
  bool overwrite = false;
  const char* directory = nullptr;
  const char* password = nullptr;
  const char* package = nullptr;
  const char* entry = nullptr;
};

JobArguments parseArguments(int argc, char** argv) {
  JobArguments args;
  for (int i = 1; i < argc; ++i) {
    const char* argument = argv[i];
    if (argument[0] != '-') {
      if (args.package == nullptr) {
        args.package = argument;
      } else if (args.entry == nullptr) {
        args.entry = argument;
      }
      continue;
    }
    for (const char* letter = argument + 1; *letter != '\0'; ++letter) {
      switch (std::tolower(static_cast<unsigned char>(*letter))) {
        case 'l':
        case 'v':
          args.list = true;
          break;
        case 'e':
          args.withoutPath = true;
          break;
        case 'o':
          args.overwrite = true;
          break;
        case 'd':
          if (i + 1 < argc) args.directory = argv[++i];
          break;
        case 'p':
          if (i + 1 < argc) args.password = argv[++i];
          break;
        default:  // 'x' and anything unknown: extract
          break;
      }
    }
  }
  return args;
}

// Opens the package under its name, or failing that under the name with
// ".zip" appended. A name that does not fit the 256-byte buffer is refused
// rather than cut, so that no other file is opened in its place.
unzFile openPackage(const char* package) {
  char name[kNameBufferSize];
  size_t length = strlen(package);
  if (length >= sizeof(name)) return nullptr;
  memcpy(name, package, length + 1);
  unzFile file = unzOpen(name);
  if (file == nullptr && length + 4 < sizeof(name)) {
    memcpy(name + length, ".zip", 5);
    file = unzOpen(name);
  }
  return file;
}

// Steps the cursor to the next entry; false at the end or on an error (the
// rest of the package then counts as unextracted).
bool nextEntry(ExtractJob& job, uLong index, uLong count) {
  if (index + 1 >= count) return false;
  if (unzGoToNextFile(job.package) == UNZ_OK) return true;
  refuseRest(job, "damaged package directory");
  return false;
}

bool entryLimitReached(ExtractJob& job, uLong index, const char* function) {
  if (index < job.budget->maxEntries) return false;
  ENGINE_LOG(function, " [%s] limit of [%u] entries reached, extraction stopped ", job.packageName,
             static_cast<unsigned>(job.budget->maxEntries));
  refuseRest(job, "more than " + std::to_string(job.budget->maxEntries) + " entries");
  return true;
}

}  // namespace

int do_UnzipJob(int argc, char** argv) {
  ExtractionBudget budget;
  return do_UnzipJob(argc, argv, budget);
}

void refuseRest(ExtractJob& job, const std::string& cause) {
  if (job.budget->refusal.empty()) job.budget->refusal = cause;
  job.stopped = true;
}

int do_UnzipJob(int argc, char** argv, ExtractionBudget& budget) {
  budget.refusal.clear();
  if (argc == 1) return 0;
  if (argc < 1 || argv == nullptr) return 1;
  JobArguments args = parseArguments(argc, argv);
  if (args.package == nullptr) return 1;

  ExtractJob job;
  job.package = openPackage(args.package);
  if (job.package == nullptr) return 1;
  job.packageName = args.package;
  job.withoutPath = args.withoutPath;
  job.overwrite = args.overwrite;
  job.password = args.password;
  job.budget = &budget;

  int result;
  if (args.list) {
    result = do_list(job);
  } else {
    // The extraction directory is held open (never through a symbolic link)
    // and every entry is resolved below that descriptor, whatever happens to
    // the path meanwhile.
    const char* directory = args.directory != nullptr ? args.directory : ".";
    job.rootFd = open(directory, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (job.rootFd < 0 || (args.directory != nullptr && fchdir(job.rootFd) != 0)) {
      if (job.rootFd >= 0) close(job.rootFd);
      unzClose(job.package);
      return 1;
    }
    result = args.entry != nullptr ? do_extract_onefile(job, args.entry) : do_extract(job);
    close(job.rootFd);
  }
  unzClose(job.package);
  return result;
}

int do_extract(ExtractJob& job) {
  unz_global_info info;
  if (unzGetGlobalInfo(job.package, &info) != UNZ_OK) {
    refuseRest(job, "damaged package directory");
    return 0;
  }
  // A package that announces more entries than the limit is refused before
  // anything of it is written.
  if (info.number_entry > job.budget->maxEntries) {
    entryLimitReached(job, info.number_entry, "do_extract");
    return 0;
  }
  for (uLong index = 0; index < info.number_entry; ++index) {
    if (entryLimitReached(job, index, "do_extract")) break;
    if (do_extract_currentfile(job) != UNZ_OK) {
      refuseRest(job, "entry cannot be extracted");  // the entry's own cause came first
      break;
    }
    if (job.stopped) break;
    if (!nextEntry(job, index, info.number_entry)) break;
  }
  return 0;
}

int do_extract_onefile(ExtractJob& job, const char* entryName) {
  unz_global_info info;
  if (unzGetGlobalInfo(job.package, &info) != UNZ_OK) return 1;
  for (uLong index = 0; index < info.number_entry; ++index) {
    if (entryLimitReached(job, index, "do_extract_onefile")) break;
    char name[kNameBufferSize] = {};
    unz_file_info entry;
    if (unzGetCurrentFileInfo(job.package, &entry, name, sizeof(name), nullptr, 0, nullptr, 0) != UNZ_OK) break;
    if (entry.size_filename < sizeof(name) && strcmp(name, entryName) == 0) {
      return do_extract_currentfile(job) == UNZ_OK && !job.stopped ? 0 : 1;
    }
    if (!nextEntry(job, index, info.number_entry)) break;
  }
  return 1;
}

int do_list(ExtractJob& job) {
  unz_global_info info;
  int err = unzGetGlobalInfo(job.package, &info);
  if (err != UNZ_OK) return err;
  for (uLong index = 0; index < info.number_entry; ++index) {
    if (entryLimitReached(job, index, "do_list")) break;
    char name[kNameBufferSize] = {};
    unz_file_info entry;
    err = unzGetCurrentFileInfo(job.package, &entry, name, sizeof(name), nullptr, 0, nullptr, 0);
    if (err != UNZ_OK) return err;
    name[sizeof(name) - 1] = '\0';
    ENGINE_LOG("do_list", " [%s] [%lu] [%lu] ", name, static_cast<unsigned long>(entry.uncompressed_size),
               static_cast<unsigned long>(entry.compressed_size));
    if (index + 1 < info.number_entry && (err = unzGoToNextFile(job.package)) != UNZ_OK) return err;
  }
  return 0;
}
