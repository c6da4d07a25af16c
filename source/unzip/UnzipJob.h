// The package extraction job: expands (or lists) one zip package over minizip,
// driven by command-line style arguments.
//
//   do_UnzipJob(argc, argv)   argv[0] is a program name, then in any order:
//     -x            extract (the default)
//     -l, -v        list the entries instead of extracting
//     -e            extract files without their stored directories
//     -o            overwrite existing files (otherwise an existing file is kept)
//     -d DIR        extract into DIR, which becomes the process's working
//                   directory and stays so after the job
//     -p PASSWORD   password of encrypted entries
//   Option letters are case-insensitive and may be grouped ("-xo"). The first
//   other argument is the package, the second (optional) names the one entry
//   to extract. Returns 0 on success, 1 on a usage error, a package that
//   cannot be opened or an extraction directory that cannot be entered.
//
// Hostile packages: every entry is written below the extraction directory
// through directory descriptors opened without following symbolic links, as a
// new regular file. The budget bounds what the jobs of one analysis write
// (content bytes plus kEntryCharge for every file and directory made) and how
// many entries one job handles; reaching a limit stops that job with one log
// line. A job that leaves any entry of its package unextracted says why in
// the budget's `refusal`: a limit, a name that is absolute, has a ".."
// component, holds a NUL byte or is longer than 255 bytes, a name stored twice
// (the later entry would hide the earlier), content under a name that names
// nothing, an encrypted entry
// without a password, damaged data, a checksum mismatch, an unsupported
// method, a write error, or a damaged package directory. It stops there.
#pragma once

#include <unzip.h>

#include <cstdint>
#include <set>
#include <string>

#include "APICheckEngine/EngineConfig.h"

// Every file and directory a job creates is charged this much on top of its
// content: one file-system block, so that empty entries cannot be made in
// unbounded numbers.
constexpr uint64_t kEntryCharge = 4096;
constexpr unsigned kCopyBufferSize = 8192;
constexpr unsigned kNameBufferSize = 256;

// What the extraction jobs of one analysis may still write; shared by every
// job that is given it.
struct ExtractionBudget {
  uint64_t maxBytes = EngineConfig::kMaxExtractedBytes;  // for all jobs together
  uint32_t maxEntries = EngineConfig::kMaxPackageEntries;  // for each job
  uint64_t bytesUsed = 0;
  // Why the last job left part of its package unextracted; empty when it
  // extracted (or listed) the package whole. Each job clears it first.
  std::string refusal;
};

int do_UnzipJob(int argc, char** argv);  // with a budget of its own
int do_UnzipJob(int argc, char** argv, ExtractionBudget& budget);

// State of one job, shared by its helpers.
struct ExtractJob {
  unzFile package = nullptr;
  const char* packageName = "";
  int rootFd = -1;  // the extraction directory; every path is resolved below it
  bool withoutPath = false;
  bool overwrite = false;
  const char* password = nullptr;
  ExtractionBudget* budget = nullptr;
  bool stopped = false;  // a limit was reached: nothing more is written
  std::set<std::string> written;  // files this job made, by path below the extraction directory
};

// Records why the job leaves the rest of its package unextracted (the first
// cause counts) and stops it.
void refuseRest(ExtractJob& job, const std::string& cause);

// Every entry in stored order, stopping at the first that fails or at a
// limit (see the budget's refusal). Returns 0.
int do_extract(ExtractJob& job);
// The entry stored under exactly `entryName`: 0 when it was extracted, 1 when
// it is missing or failed.
int do_extract_onefile(ExtractJob& job, const char* entryName);
// The entry at the package cursor: UNZ_OK when written or passed over (an
// existing file kept, a limit or an unsafe name: see job.stopped), otherwise a
// minizip error, UNZ_ERRNO for a file that cannot be made or written, or
// UNZ_INTERNALERROR when the copy buffer cannot be had.
int do_extract_currentfile(ExtractJob& job);
// Logs one line per entry (name, size, compressed size). Returns 0, or the
// minizip error that ended the walk.
int do_list(ExtractJob& job);
// Creates `path` (relative to the extraction directory) and its missing
// parents; 1 on success, 0 on failure, an empty or unsafe path, or a limit.
int makedir(ExtractJob& job, const char* path);
// Creates one directory `name` in `parentFd` with mode 0775; mkdirat's result.
int mymkdir(int parentFd, const char* name);
// Sets the access and modification time of the open file to the entry's
// stored local date; 0 on success, -1 otherwise.
int change_file_date(int fd, const tm_unz& date);
