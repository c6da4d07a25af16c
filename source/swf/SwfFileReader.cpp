// Reading one SWF file into the image of a plain file: plain files are read
// whole, compressed ones inflated, then the image's tags are walked.
#include <sys/stat.h>
#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "APICheckEngine/EngineConfig.h"
#include "APICheckEngine/EngineLog.h"
#include "APICheckEngine/TimeBudget.h"
#include "swf/DeAssembler.h"
#include "swf/ImageBuffer.h"

namespace {

constexpr int32_t kSignatureBytes = 3;
// Signature, version byte and file length: what precedes the zlib stream.
constexpr uint32_t kPlainHeaderBytes = 8;
// Bytes of the compressed file read at a time.
constexpr uint32_t kInflateChunkBytes = 65536;
// Images stay well inside signed 32-bit positions whatever the configuration.
constexpr uint64_t kLargestImage = 0x40000000u;

// The size of a regular file; 0 for anything else (a directory opens too).
uint64_t regularFileSize(FILE* file) {
  struct stat status;
  if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size < 0) return 0;
  return static_cast<uint64_t>(status.st_size);
}

struct FileCloser {
  void operator()(FILE* file) const { fclose(file); }
};
using FileHandle = std::unique_ptr<FILE, FileCloser>;

}  // namespace

DeAssembler::DeAssembler()
    : maxImageBytes(EngineConfig::kMaxInflatedSwfBytes),
      maxListingBytes(kMaxListingBytes),
      branchTargets(kBranchTargetCapacity, 0u),
      branchTargetCount(0),
      listedRecordCount(0),
      countedLines(0),
      listingBytes(0) {}

DeAssembler::~DeAssembler() {}

int32_t DeAssembler::checkByteOrder() { return 1; }

void DeAssembler::CheckProcessingTime(std::string checkpoint) {}

void DeAssembler::resetMemberVariable() {
  branchTargetCount = 0;
  listedRecordCount = 0;
  countedLines = 0;
  listingBytes = 0;
  cutCause.clear();
}

void DeAssembler::noteCut(const std::string& cause) {
  if (cutCause.empty()) cutCause = cause;
}

bool DeAssembler::listingFull(const std::vector<std::string>& lines) {
  if (countedLines > lines.size()) countedLines = lines.size();  // another list than last time
  for (; countedLines < lines.size(); ++countedLines) listingBytes += lines[countedLines].size() + kListingLineOverhead;
  if (listingBytes < maxListingBytes) return false;
  noteCut("SWF listing longer than " + std::to_string(maxListingBytes) + " bytes");
  return true;
}

std::string DeAssembler::getSWFHeader(FILE* file) {
  char signature[kSignatureBytes];
  if (fread(signature, 1, sizeof(signature), file) != sizeof(signature)) return std::string();
  return std::string(signature, sizeof(signature));
}

// The working buffer is sized to the file (within the image limit) instead
// of a fixed size: nothing reads past the data, and a compressed image grows
// as it is inflated.
RunResult DeAssembler::SWFDeAssemblerMain(std::string path, std::vector<std::string>& lines) {
  cutCause.clear();
  if (TimeBudget::spent()) return RUN_TIME_LIMIT;
  FileHandle file(fopen(path.c_str(), "rb"));
  if (!file) return RUN_SWF_OPEN_FAILED;
  const uint64_t fileBytes = regularFileSize(file.get());
  const uint32_t imageBytes = static_cast<uint32_t>(std::min(fileBytes, imageLimit()));

  ImageBuffer buffer;
  if (!buffer.allocate(std::max(imageBytes, kPlainHeaderBytes))) {
    ENGINE_LOG("SWFDeAssemblerMain", "[%s] Memory Allocation(malloc) Fail ", "SWFDeAssemblerMain");
    return RUN_SWF_BUFFER_ALLOC_FAILED;
  }
  resetMemberVariable();
  countedLines = lines.size();  // only this file's lines count
  std::string signature = getSWFHeader(file.get());
  ENGINE_LOG("SWFDeAssemblerMain", "[%s] [swfHeader] [%s]", "SWFDeAssemblerMain", signature.c_str());
  CheckProcessingTime(" ---->DeAssemble_AfterGetHeader");

  if (signature == "FWS") {
    // The whole file, signature included, up to the image limit.
    if (fileBytes > imageBytes) noteCut("SWF file larger than " + std::to_string(imageLimit()) + " bytes");
    fseek(file.get(), 0, SEEK_SET);
    if (fread(buffer.data(), 1, imageBytes, file.get()) != imageBytes) return RUN_SUCCESS;
    RunResult code = SWFDeAssemble(buffer.data() + kSignatureBytes, lines,
                                   static_cast<int32_t>(imageBytes) - kSignatureBytes);
    CheckProcessingTime(" ---->DeAssemble_AfterSWFDeAssemble");
    return code;
  }

  if (signature == "CWS") {
    int32_t size = 0;
    RunResult inflated = unCompressSWF(file.get(), buffer, size);
    CheckProcessingTime(" ---->DeAssemble_AfterUnCompress");
    file.reset();
    RunResult walked = SWFDeAssemble(buffer.data() + kSignatureBytes, lines, size - kSignatureBytes);
    CheckProcessingTime(" ---->DeAssemble_AfterSWFDeAssemble");
    return walked == RUN_SUCCESS ? inflated : walked;
  }

  return RUN_SWF_BAD_SIGNATURE;
}

// The stream is inflated straight into the image, which grows (doubling) up
// to the image limit; an image that reaches the limit is cut there.
RunResult DeAssembler::unCompressSWF(FILE* file, ImageBuffer& buffer, int32_t& size) {
  const uint32_t limit = static_cast<uint32_t>(std::max<uint64_t>(kPlainHeaderBytes, imageLimit()));
  size = 0;
  if (!buffer.reserve(kPlainHeaderBytes)) return RUN_SWF_UNCOMPRESS_FAILED;

  // The image of the plain file: "FWS", then the version byte and the file
  // length as they stand in the file; missing bytes are zero.
  uint8_t* image = buffer.data();
  memcpy(image, "FWS", kSignatureBytes);
  size_t header = fread(image + kSignatureBytes, 1, kPlainHeaderBytes - kSignatureBytes, file);
  memset(image + kSignatureBytes + header, 0, kPlainHeaderBytes - kSignatureBytes - header);
  uint32_t total = kPlainHeaderBytes;
  size = static_cast<int32_t>(total);

  z_stream stream;
  memset(&stream, 0, sizeof(stream));
  if (inflateInit_(&stream, ZLIB_VERSION, static_cast<int>(sizeof(z_stream))) != Z_OK) {
    return RUN_SWF_UNCOMPRESS_FAILED;
  }
  std::unique_ptr<uint8_t[]> input(new (std::nothrow) uint8_t[kInflateChunkBytes]);
  if (!input) {
    inflateEnd(&stream);
    return RUN_SWF_UNCOMPRESS_FAILED;
  }

  int status = Z_OK;
  bool cut = false;  // the image limit (or memory) stopped the inflating
  for (;;) {
    if (stream.avail_in == 0) {
      size_t read = fread(input.get(), 1, kInflateChunkBytes, file);
      if (read == 0) {
        // The file ends: whatever was inflated is the image.
        size = static_cast<int32_t>(total);
        return inflateEnd(&stream) == Z_OK ? RUN_SUCCESS : RUN_SWF_UNCOMPRESS_FAILED;
      }
      stream.next_in = input.get();
      stream.avail_in = static_cast<uInt>(read);
    }
    uint32_t room = std::min(buffer.capacity(), limit) - total;
    if (room == 0) {
      uint64_t grown = std::min<uint64_t>(limit, std::max<uint64_t>(2ull * buffer.capacity(), kInflateChunkBytes));
      if (total >= limit) noteCut("SWF image larger than " + std::to_string(limit) + " bytes once inflated");
      if (total >= limit || !buffer.reserve(static_cast<uint32_t>(grown))) {
        cut = true;
        break;
      }
      room = std::min(buffer.capacity(), limit) - total;
    }
    stream.next_out = buffer.data() + total;
    stream.avail_out = room;
    status = inflate(&stream, Z_SYNC_FLUSH);
    total += room - stream.avail_out;
    if (status != Z_OK) break;
  }
  size = static_cast<int32_t>(total);
  int ended = inflateEnd(&stream);
  if (cut) return RUN_SWF_UNCOMPRESS_FAILED;
  return (status == Z_STREAM_END && ended == Z_OK) ? RUN_SUCCESS : RUN_SWF_UNCOMPRESS_FAILED;
}

uint64_t DeAssembler::imageLimit() const { return std::min(maxImageBytes, kLargestImage); }
