// SWF disassembler: reads a plain or compressed SWF file, walks its tags and
// lists the action records of its script blocks as text lines.
//
// Member definitions by concern: SwfFileReader.cpp (file reading, inflating,
// per-file state), TagWalk.cpp (tag headers, the tag walks), TagNames.cpp,
// ActionListing.cpp (the record walk of a script block and branch targets),
// with the operand listers of ActionOperands.h behind printActionRecord
// (PushValues.cpp, FunctionOperands.cpp, PlainOperands.cpp).
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "tarvo/HostInterface.h"
#include "APICheckEngine/Visibility.h"
#include "swf/Util.h"

class ImageBuffer;
struct ActionBlock;
struct ActionRecord;

class DeAssembler {
 public:
  // Entries of the branch-target table.
  static constexpr int32_t kBranchTargetCapacity = 100000;
  // Records listed per file at most.
  static constexpr int32_t kMaxListedRecords = 9999999;
  // A script block longer than this (or empty) is not listed.
  static constexpr uint32_t kMaxScriptBlockBytes = 9999999u;
  // Bytes one file's listing may take before no further record is listed:
  // each line counts its text plus kListingLineOverhead for the string that
  // holds it.
  static constexpr uint64_t kMaxListingBytes = uint64_t(64) << 20;
  static constexpr uint64_t kListingLineOverhead = 48;

  DeAssembler();
  virtual ~DeAssembler();

  // Appends the listing of every script block of the file at `path` to `lines`.
  RunResult SWFDeAssemblerMain(std::string path, std::vector<std::string>& lines);

  // The first three bytes of the file ("" when fewer could be read).
  std::string getSWFHeader(FILE* file);
  // Inflates the rest of a "CWS" file (positioned after its signature) into
  // `buffer` as the image of the plain file; `size` receives the image size.
  RunResult unCompressSWF(FILE* file, ImageBuffer& buffer, int32_t& size);
  // Walks header and tags of a plain image; `data` starts at the version byte
  // (file offset 3) and `length` counts the bytes from there.
  RunResult SWFDeAssemble(const uint8_t* data, std::vector<std::string>& lines, int32_t length);
  // Reads one tag header at `position` (bytes at or past `total` read as zero).
  void TagHeaderParsing(const uint8_t* data, int32_t& position, uint32_t* code, uint32_t* length, int32_t total);
  // Walks the tags that follow `position` as the body of a sprite.
  RunResult movieClipTagParse(const uint8_t* data, int32_t& position, std::vector<std::string>& lines, int32_t total);

  // Name of a tag code, or nullptr.
  const char* getTagStr(int32_t code);
  int32_t checkByteOrder();
  void CheckProcessingTime(std::string checkpoint);
  void resetMemberVariable();

  // Lists the action records of one script block. `origin` is the block's
  // offset in the file image; it makes branch-target identifiers unique per file.
  void getActionBlock(const uint8_t* data, uint32_t length, std::vector<std::string>& lines, uint32_t origin = 0);
  // Writes the name line and field lines of one record.
  void printActionRecord(ActionBlock& block, const ActionRecord& record, std::vector<std::string>& lines);

  // Guards against hostile files (see docs/design.md); tests lower them.
  uint64_t maxImageBytes;
  uint64_t maxListingBytes;
  // Why a guard left part of the last file unlisted; empty when it was
  // listed whole (the time budget is not a guard of this kind).
  std::string cutCause;

 private:
  RunResult walkTags(const uint8_t* data, int32_t& position, std::vector<std::string>& lines, int32_t total,
                     bool inSprite);
  // Lists the body of a DoAction tag at `position` and moves past it.
  RunResult listScriptBlock(const uint8_t* data, int32_t& position, uint32_t length, int32_t total,
                            std::vector<std::string>& lines, bool banners);
  void recordBranchTarget(ActionBlock& block, int64_t target);
  uint64_t imageLimit() const;
  // True once this file's lines in `lines` take maxListingBytes (the listing
  // is then cut).
  bool listingFull(const std::vector<std::string>& lines);
  // Records the first cause that leaves part of the file unlisted.
  void noteCut(const std::string& cause);

  Util util;
  std::vector<uint32_t> branchTargets;  // kBranchTargetCapacity entries
  int32_t branchTargetCount;
  int32_t listedRecordCount;
  size_t countedLines;    // lines of `lines` already counted in listingBytes
  uint64_t listingBytes;  // of this file's lines
};

// DefineFunction2 register flags: the names that can be preloaded into
// registers, with their preload and suppress bits in the 16-bit flags word.
extern "C" {
TARVO_EXPORT extern const char* const arNames[6];
TARVO_EXPORT extern const uint16_t arPreFlags[6];
TARVO_EXPORT extern const uint16_t arSupFlags[6];
}
