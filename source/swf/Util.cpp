#include "swf/Util.h"

#include "APICheckEngine/EngineLog.h"

uint8_t Util::getByte(const uint8_t* data, int32_t& position, int32_t total) const {
  uint8_t value = (position >= 0 && position < total) ? data[position] : 0;
  ++position;
  return value;
}

uint16_t Util::getWord(const uint8_t* data, int32_t& position, int32_t total) const {
  uint16_t low = getByte(data, position, total);
  uint16_t high = getByte(data, position, total);
  return static_cast<uint16_t>(low | (high << 8));
}

uint32_t Util::getDoubleWord(const uint8_t* data, int32_t& position, int32_t total) const {
  uint32_t low = getWord(data, position, total);
  uint32_t high = getWord(data, position, total);
  return low | (high << 16);
}

uint32_t Util::getBitsValue(int32_t& bitsLeft, uint8_t& current, const uint8_t* data, int32_t& position,
                            int32_t total, int32_t count) const {
  uint32_t value = 0;
  for (int32_t i = 0; i < count; ++i) {
    if (bitsLeft <= 0) {
      current = getByte(data, position, total);
      bitsLeft = 8;
    }
    --bitsLeft;
    value = (value << 1) | ((current >> bitsLeft) & 1u);
  }
  return value & 0xFFFFu;
}

void Util::skipTagLengh(const uint8_t* data, int32_t& position, uint32_t length, int32_t total) const {
  int64_t next = static_cast<int64_t>(position) + length;
  if (next >= total) {
    ENGINE_LOG("skipTagLengh", "[%s] Unexpected end of Data  ", "skipTagLengh");
    next = total > position ? total : position;
  }
  position = static_cast<int32_t>(next);
}
