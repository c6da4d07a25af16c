// Reading one SWF file into the image of a plain file: plain files are read
// whole, compressed ones inflated, then the image's tags are walked.
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
// Images stay well inside signed 32-bit positions whatever the configuration.
constexpr uint64_t kLargestImage = 0x40000000u;

struct FileCloser {
  void operator()(FILE* file) const { fclose(file); }
};
using FileHandle = std::unique_ptr<FILE, FileCloser>;

}  // namespace

DeAssembler::DeAssembler()
    : maxImageBytes(EngineConfig::kMaxInflatedSwfBytes),
      maxListingLines(kMaxListingLines),
      branchTargets(kBranchTargetCapacity, 0u),
      branchTargetCount(0),
      listedRecordCount(0) {}

DeAssembler::~DeAssembler() {}

int32_t DeAssembler::checkByteOrder() { return 1; }

void DeAssembler::CheckProcessingTime(std::string checkpoint) {}

void DeAssembler::resetMemberVariable() {
  branchTargetCount = 0;
  listedRecordCount = 0;
}

std::string DeAssembler::getSWFHeader(FILE* file) {
  char signature[kSignatureBytes];
  if (fread(signature, 1, sizeof(signature), file) != sizeof(signature)) return std::string();
  return std::string(signature, sizeof(signature));
}

RunResult DeAssembler::SWFDeAssemblerMain(std::string path, std::vector<std::string>& lines) {
  if (TimeBudget::spent()) return RUN_TIME_LIMIT;
  FileHandle file(fopen(path.c_str(), "rb"));
  if (!file) return RUN_SWF_OPEN_FAILED;
  ImageBuffer buffer;
  if (!buffer.allocate(kWorkingBufferBytes)) {
    ENGINE_LOG("SWFDeAssemblerMain", "[%s] Memory Allocation(malloc) Fail ", "SWFDeAssemblerMain");
    return RUN_SWF_BUFFER_ALLOC_FAILED;
  }
  resetMemberVariable();
  std::string signature = getSWFHeader(file.get());
  ENGINE_LOG("SWFDeAssemblerMain", "[%s] [swfHeader] [%s]", "SWFDeAssemblerMain", signature.c_str());
  CheckProcessingTime(" ---->DeAssemble_AfterGetHeader");

  if (signature == "FWS") {
    // The whole file, signature included, up to the image limit.
    fseek(file.get(), 0, SEEK_END);
    long fileSize = ftell(file.get());
    fseek(file.get(), 0, SEEK_SET);
    int32_t size = -1;
    if (fileSize > 0) {
      size = static_cast<int32_t>(std::min<uint64_t>(static_cast<uint64_t>(fileSize),
                                                     std::min(maxImageBytes, kLargestImage)));
      if (!buffer.reserve(static_cast<uint32_t>(size))) {
        ENGINE_LOG("SWFDeAssemblerMain", "[%s] Memory Allocation(malloc) Fail ", "SWFDeAssemblerMain");
        return RUN_SWF_BUFFER_ALLOC_FAILED;
      }
      if (fread(buffer.data(), 1, static_cast<size_t>(size), file.get()) != static_cast<size_t>(size)) {
        return RUN_SUCCESS;
      }
    }
    RunResult code = SWFDeAssemble(buffer.data() + kSignatureBytes, lines, size - kSignatureBytes);
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

RunResult DeAssembler::unCompressSWF(FILE* file, ImageBuffer& buffer, int32_t& size) {
  const uint32_t limit = static_cast<uint32_t>(
      std::max<uint64_t>(kPlainHeaderBytes, std::min(maxImageBytes, kLargestImage)));
  size = 0;
  if (!buffer.reserve(kWorkingBufferBytes)) return RUN_SWF_UNCOMPRESS_FAILED;

  // The image of the plain file: "FWS", then the version byte and the file
  // length as they stand in the file; missing bytes stay zero.
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
  std::unique_ptr<uint8_t[]> input(new (std::nothrow) uint8_t[kWorkingBufferBytes]);
  std::unique_ptr<uint8_t[]> output(new (std::nothrow) uint8_t[kWorkingBufferBytes]);
  if (!input || !output) {
    inflateEnd(&stream);
    return RUN_SWF_UNCOMPRESS_FAILED;
  }

  int status = Z_OK;
  bool cut = false;  // the image limit (or memory) stopped the inflating
  for (;;) {
    if (stream.avail_in == 0) {
      size_t read = fread(input.get(), 1, kWorkingBufferBytes, file);
      if (read == 0) {
        // The file ends: whatever was inflated is the image.
        size = static_cast<int32_t>(total);
        return inflateEnd(&stream) == Z_OK ? RUN_SUCCESS : RUN_SWF_UNCOMPRESS_FAILED;
      }
      stream.next_in = input.get();
      stream.avail_in = static_cast<uInt>(read);
    }
    stream.next_out = output.get();
    stream.avail_out = kWorkingBufferBytes;
    status = inflate(&stream, Z_SYNC_FLUSH);
    uint32_t produced = kWorkingBufferBytes - stream.avail_out;
    if (produced > limit - total) {
      produced = limit - total;
      cut = true;
    }
    if (produced > 0) {
      uint64_t wanted = std::max<uint64_t>(total + produced, std::min<uint64_t>(2ull * buffer.capacity(), limit));
      if (!buffer.reserve(static_cast<uint32_t>(wanted))) {
        cut = true;
        produced = 0;
      }
      memcpy(buffer.data() + total, output.get(), produced);
      total += produced;
    }
    if (cut || status != Z_OK) break;
  }
  size = static_cast<int32_t>(total);
  int ended = inflateEnd(&stream);
  if (cut) return RUN_SWF_UNCOMPRESS_FAILED;
  return (status == Z_STREAM_END && ended == Z_OK) ? RUN_SUCCESS : RUN_SWF_UNCOMPRESS_FAILED;
}
