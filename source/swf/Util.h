// Byte and bit reader over the image of a SWF file.
//
// The position is a signed 32-bit index held by the caller. Every read is
// bounded by `total`, the real number of bytes: a byte at or past it (or
// before 0) reads as zero and is never touched, while the position advances
// as for a real byte, so a walk that runs off the data ends at its next
// end-of-data test.
#pragma once

#include <cstdint>

class Util {
 public:
  // One byte; position + 1.
  uint8_t getByte(const uint8_t* data, int32_t& position, int32_t total) const;
  // Two bytes, low byte first; position + 2.
  uint16_t getWord(const uint8_t* data, int32_t& position, int32_t total) const;
  // Two words, the first the low half; position + 4.
  uint32_t getDoubleWord(const uint8_t* data, int32_t& position, int32_t total) const;
  // Takes `count` bits, most significant first, from `current` and then from
  // the following bytes (each fetch advances the position and refills 8 bits).
  // The caller primes `bitsLeft` with 8 and `current` with the first byte.
  // Returns the value masked to 16 bits.
  uint32_t getBitsValue(int32_t& bitsLeft, uint8_t& current, const uint8_t* data, int32_t& position,
                        int32_t total, int32_t count) const;
  // Moves the position past a tag body of `length` bytes. When that reaches
  // or passes `total` it logs the end of the data and stops at `total`.
  void skipTagLengh(const uint8_t* data, int32_t& position, uint32_t length, int32_t total) const;
};
