// The walk over the tags of a plain image and over the tags of a sprite body.
#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "APICheckEngine/TimeBudget.h"
#include "swf/DeAssembler.h"

namespace {

constexpr int32_t kSignatureBytes = 3;
constexpr uint32_t kTagDoAction = 12;
constexpr uint32_t kTagDefineSprite = 39;
constexpr uint32_t kLastWalkedTagCode = 91;

const char kDoActionStart[] = " ------------ ActionScript ASM Code From TAG_DOACTION Start ------------- \r";
const char kDoActionEnd[] = " ------------ ActionScript ASM Code From TAG_DOACTION End   ------------- \r";
const char kSpriteStart[] = " ------------ ActionScript ASM Code From TAG_DEFINEMOVIECLIP Start ------------- \r";
const char kSpriteEnd[] = " ------------ ActionScript ASM Code From TAG_DEFINEMOVIECLIP End   ------------- \r";

// The end tag and every code past the last known one end a walk.
bool endsWalk(uint32_t code) { return code < 1 || code > kLastWalkedTagCode; }

// A script block is listed when it holds 1 to kMaxScriptBlockBytes bytes;
// otherwise the walk goes on right after its header.
bool isListedBlock(uint32_t length) { return length - 1u <= DeAssembler::kMaxScriptBlockBytes - 1u; }

}  // namespace

void DeAssembler::TagHeaderParsing(const uint8_t* data, int32_t& position, uint32_t* code, uint32_t* length,
                                   int32_t total) {
  uint16_t word = util.getWord(data, position, total);
  *code = word >> 6;
  *length = word & 63u;
  if (*length == 63u) *length = util.getDoubleWord(data, position, total);
}

RunResult DeAssembler::SWFDeAssemble(const uint8_t* data, std::vector<std::string>& lines, int32_t length) {
  // Header: file length, frame size (a bit-packed rectangle), frame rate,
  // frame count; none of them is used.
  int32_t position = 1;
  util.getDoubleWord(data, position, length);
  int32_t bitsLeft = 8;
  uint8_t current = util.getByte(data, position, length);
  int32_t fieldBits = static_cast<int32_t>(util.getBitsValue(bitsLeft, current, data, position, length, 5));
  for (int field = 0; field < 4; ++field) util.getBitsValue(bitsLeft, current, data, position, length, fieldBits);
  position += 2;
  util.getWord(data, position, length);

  return walkTags(data, position, lines, length, false);
}

// The sprite's own identifier and frame-count words are not stepped over:
// they are read as the first tag header, as this reader always has done, so
// the walk leaves the sprite wherever that reading ends it.
RunResult DeAssembler::movieClipTagParse(const uint8_t* data, int32_t& position, std::vector<std::string>& lines,
                                         int32_t total) {
  return walkTags(data, position, lines, total, true);
}

// One walk for the file and for a sprite body: inside a sprite, script blocks
// get no banners and a nested sprite is skipped like any other tag.
RunResult DeAssembler::walkTags(const uint8_t* data, int32_t& position, std::vector<std::string>& lines,
                                int32_t total, bool inSprite) {
  for (;;) {
    if (TimeBudget::spent() || position >= total || listingFull(lines)) return RUN_SUCCESS;
    uint32_t code = 0;
    uint32_t tagLength = 0;
    TagHeaderParsing(data, position, &code, &tagLength, total);
    if (endsWalk(code)) return RUN_SUCCESS;
    if (code == kTagDoAction) {
      if (!isListedBlock(tagLength)) {
        if (tagLength != 0) noteCut("script block larger than " + std::to_string(kMaxScriptBlockBytes) + " bytes");
        continue;
      }
      RunResult result = listScriptBlock(data, position, tagLength, total, lines, !inSprite);
      if (result != RUN_SUCCESS) return result;
    } else if (code == kTagDefineSprite && !inSprite) {
      lines.emplace_back(kSpriteStart);
      RunResult result = movieClipTagParse(data, position, lines, total);
      lines.emplace_back(kSpriteEnd);
      if (result != RUN_SUCCESS) return result;
    } else {
      util.skipTagLengh(data, position, tagLength, total);
    }
  }
}

// The block is listed from a copy of the bytes that are really there (a body
// that runs past the data is listed as far as it goes), then the position
// moves past the body without a log line.
RunResult DeAssembler::listScriptBlock(const uint8_t* data, int32_t& position, uint32_t length, int32_t total,
                                       std::vector<std::string>& lines, bool banners) {
  int64_t end = static_cast<int64_t>(position) + length;
  uint32_t available = static_cast<uint32_t>(std::max<int64_t>(0, std::min<int64_t>(end, total) - position));
  std::unique_ptr<uint8_t[]> copy(new (std::nothrow) uint8_t[std::max<uint32_t>(available, 1u)]);
  if (!copy) return RUN_SWF_TAG_ALLOC_FAILED;
  if (available > 0) memcpy(copy.get(), data + position, available);

  if (banners) lines.emplace_back(kDoActionStart);
  getActionBlock(copy.get(), available, lines, static_cast<uint32_t>(position + kSignatureBytes));
  if (banners) lines.emplace_back(kDoActionEnd);
  position = static_cast<int32_t>(std::max<int64_t>(position, std::min<int64_t>(end, total)));
  return RUN_SUCCESS;
}
