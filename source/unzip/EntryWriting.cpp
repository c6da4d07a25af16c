// Writing one package entry below the extraction directory.
//
// Paths are never handed to the kernel whole: each directory is opened from
// its parent's descriptor with O_NOFOLLOW, and a file is always created anew
// with O_CREAT | O_EXCL, so a symbolic link, a hard link or anything else
// found on the way (planted by whoever could write there) is never followed
// or written through.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <memory>
#include <new>
#include <string>

#include "APICheckEngine/EngineLog.h"
#include "unzip/EntryPath.h"
#include "unzip/UnzipJob.h"

namespace {

// True when `bytes` more fit the budget; otherwise stops the job with one log
// line. Nothing is added: the caller adds what it did write.
bool fitsBudget(ExtractJob& job, uint64_t bytes, const char* function) {
  ExtractionBudget& budget = *job.budget;
  if (budget.bytesUsed <= budget.maxBytes && bytes <= budget.maxBytes - budget.bytesUsed) return true;
  if (!job.stopped) {
    ENGINE_LOG(function, " [%s] limit of [%llu] bytes reached, extraction stopped ", job.packageName,
               static_cast<unsigned long long>(budget.maxBytes));
  }
  refuseRest(job, "more than " + std::to_string(budget.maxBytes) + " bytes to extract");
  return false;
}

// Opens the first `count` components of `path` as a directory below the
// extraction directory, creating the missing ones when `create` is set.
// Returns a descriptor the caller closes, or -1.
int openDirectory(ExtractJob& job, const EntryPath& path, size_t count, bool create) {
  int current = fcntl(job.rootFd, F_DUPFD_CLOEXEC, 0);
  for (size_t i = 0; i < count && current >= 0; ++i) {
    const char* name = path.components[i].c_str();
    if (create) {
      struct stat st;
      if (fstatat(current, name, &st, AT_SYMLINK_NOFOLLOW) != 0) {
        if (!fitsBudget(job, kEntryCharge, "makedir")) {
          close(current);
          return -1;
        }
        if (mymkdir(current, name) == 0) job.budget->bytesUsed += kEntryCharge;
      }
    }
    int next = openat(current, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    close(current);
    current = next;
  }
  return current;
}

enum class Output { kCreated, kKept, kFailed };

// Creates the entry's file as a new regular file: its directory is opened,
// or made with makedir and opened once more; with overwriting, whatever is
// there under that name (a file, a link) is unlinked first.
Output createOutputFile(ExtractJob& job, const EntryPath& path, int& fd) {
  size_t parents = path.components.size() - 1;
  int directory = openDirectory(job, path, parents, false);
  if (directory < 0 && parents > 0) {
    EntryPath parentPath = path;
    parentPath.components.pop_back();
    makedir(job, parentPath.joined().c_str());
    directory = openDirectory(job, path, parents, false);
  }
  if (directory < 0) return Output::kFailed;
  if (!fitsBudget(job, kEntryCharge, "do_extract_currentfile")) {
    close(directory);
    return Output::kFailed;
  }

  const char* leaf = path.components.back().c_str();
  if (job.overwrite) unlinkat(directory, leaf, 0);
  fd = openat(directory, leaf, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
  int error = errno;
  close(directory);
  if (fd >= 0) return Output::kCreated;
  return error == EEXIST && !job.overwrite ? Output::kKept : Output::kFailed;
}

bool writeAll(int fd, const char* data, size_t size) {
  while (size > 0) {
    ssize_t written = write(fd, data, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    data += written;
    size -= static_cast<size_t>(written);
  }
  return true;
}

// Copies the open entry into `fd` in chunks of the copy buffer, within the
// budget. Returns UNZ_OK (also when a limit stopped the copy), the read error,
// or UNZ_ERRNO for a write error; the cause is recorded either way.
int copyEntry(ExtractJob& job, int fd, char* buffer, const std::string& name) {
  for (;;) {
    int got = unzReadCurrentFile(job.package, buffer, kCopyBufferSize);
    if (got < 0) {
      refuseRest(job, "damaged data in entry [" + name + "]");
      return got;
    }
    if (got == 0) return UNZ_OK;
    if (!fitsBudget(job, static_cast<uint64_t>(got), "do_extract_currentfile")) return UNZ_OK;
    if (!writeAll(fd, buffer, static_cast<size_t>(got))) {
      refuseRest(job, "entry [" + name + "] cannot be written: " + strerror(errno));
      return UNZ_ERRNO;
    }
    job.budget->bytesUsed += static_cast<uint64_t>(got);
  }
}

}  // namespace

int mymkdir(int parentFd, const char* name) { return mkdirat(parentFd, name, 0775); }

int makedir(ExtractJob& job, const char* path) {
  if (path == nullptr || path[0] == '\0') return 0;
  // Parsed as a directory name: one trailing separator is dropped, and an
  // unsafe path is refused like one that cannot be made.
  std::string name(path);
  name += '/';
  EntryPath directory = ParseEntryPath(name.c_str(), false);
  if (directory.kind != EntryPath::kDirectory) return 0;
  int fd = openDirectory(job, directory, directory.components.size(), true);
  if (fd < 0) return 0;
  close(fd);
  return 1;
}

int change_file_date(int fd, const tm_unz& date) {
  struct tm local = {};
  local.tm_sec = static_cast<int>(date.tm_sec);
  local.tm_min = static_cast<int>(date.tm_min);
  local.tm_hour = static_cast<int>(date.tm_hour);
  local.tm_mday = static_cast<int>(date.tm_mday);
  local.tm_mon = static_cast<int>(date.tm_mon);
  local.tm_year = static_cast<int>(date.tm_year) - (date.tm_year >= 1900 ? 1900 : 0);
  local.tm_isdst = -1;
  time_t when = mktime(&local);
  if (when == static_cast<time_t>(-1)) return -1;
  struct timespec times[2] = {{when, 0}, {when, 0}};
  return futimens(fd, times);
}

int do_extract_currentfile(ExtractJob& job) {
  char name[kNameBufferSize] = {};
  unz_file_info info;
  int err = unzGetCurrentFileInfo(job.package, &info, name, sizeof(name), nullptr, 0, nullptr, 0);
  if (err != UNZ_OK) return err;
  name[sizeof(name) - 1] = '\0';

  std::unique_ptr<char[]> buffer(new (std::nothrow) char[kCopyBufferSize]);
  if (!buffer) return UNZ_INTERNALERROR;

  // A name cut by the buffer or holding a NUL byte is not the stored name:
  // it is refused like an unsafe one.
  EntryPath path;
  if (info.size_filename < sizeof(name) && strlen(name) == info.size_filename) {
    path = ParseEntryPath(name, job.withoutPath);
  }
  switch (path.kind) {
    case EntryPath::kUnsafe:
      // Whatever the name was meant to hide stays unexamined: the package is
      // refused rather than extracted without it.
      ENGINE_LOG("do_extract_currentfile", " [%s] unsafe entry name [%s], extraction stopped ", job.packageName,
                 name);
      refuseRest(job, "entry name [" + std::string(name) + "] leaves the extraction directory");
      return UNZ_OK;
    case EntryPath::kNothing:
      if (info.uncompressed_size > 0) refuseRest(job, "entry name [" + std::string(name) + "] names no file");
      return UNZ_OK;
    case EntryPath::kDirectory:
      makedir(job, path.joined().c_str());
      return UNZ_OK;
    case EntryPath::kFile:
      break;
  }

  const std::string entry(name);
  // A second entry under a name already written would replace the first,
  // which then goes unexamined.
  if (!job.written.insert(path.joined()).second) {
    refuseRest(job, "entry [" + entry + "] stored twice");
    return UNZ_OK;
  }
  if ((info.flag & 1u) != 0 && job.password == nullptr) {
    refuseRest(job, "entry [" + entry + "] is encrypted");
    return UNZ_OK;
  }
  // What the stored size announces is refused before anything is written.
  if (!fitsBudget(job, static_cast<uint64_t>(info.uncompressed_size) + kEntryCharge, "do_extract_currentfile")) {
    return UNZ_OK;
  }
  err = unzOpenCurrentFilePassword(job.package, job.password);
  if (err != UNZ_OK) {
    refuseRest(job, "entry [" + entry + "] cannot be read (method " + std::to_string(info.compression_method) + ")");
    return err;
  }

  int fd = -1;
  switch (createOutputFile(job, path, fd)) {
    case Output::kCreated:
      break;
    case Output::kKept:
      unzCloseCurrentFile(job.package);
      return UNZ_OK;
    case Output::kFailed:
      unzCloseCurrentFile(job.package);
      if (job.stopped) return UNZ_OK;
      refuseRest(job, "entry [" + entry + "] cannot be written");
      return UNZ_ERRNO;
  }
  job.budget->bytesUsed += kEntryCharge;

  err = copyEntry(job, fd, buffer.get(), entry);
  if (err == UNZ_OK && !job.stopped) change_file_date(fd, info.tmu_date);
  close(fd);
  int closed = unzCloseCurrentFile(job.package);
  if (err == UNZ_OK && !job.stopped) {
    err = closed;
    if (closed == UNZ_CRCERROR) refuseRest(job, "checksum mismatch in entry [" + entry + "]");
    else if (closed != UNZ_OK) refuseRest(job, "damaged data in entry [" + entry + "]");
  }
  return err;
}
