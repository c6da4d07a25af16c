// The byte buffer that holds the image of one SWF file: allocated, grown with
// realloc, freed on every way out. Its bytes past the image are never read
// (the readers take every byte at or past the end of the image as zero), so
// the buffer is not cleared: a fresh buffer costs no page faults.
#pragma once

#include <cstdint>
#include <cstdlib>

class ImageBuffer {
 public:
  ImageBuffer() = default;
  ~ImageBuffer() { free(data_); }
  ImageBuffer(const ImageBuffer&) = delete;
  ImageBuffer& operator=(const ImageBuffer&) = delete;

  // A buffer of `bytes`; false when there is no memory.
  bool allocate(uint32_t bytes) {
    free(data_);
    data_ = static_cast<uint8_t*>(malloc(bytes));
    capacity_ = data_ != nullptr ? bytes : 0;
    return data_ != nullptr;
  }
  // Makes room for at least `bytes`, keeping the content; false when there is
  // no memory (the buffer is then unchanged).
  bool reserve(uint32_t bytes) {
    if (bytes <= capacity_) return true;
    void* grown = realloc(data_, bytes);
    if (grown == nullptr) return false;
    data_ = static_cast<uint8_t*>(grown);
    capacity_ = bytes;
    return true;
  }
  uint8_t* data() const { return data_; }
  uint32_t capacity() const { return capacity_; }

 private:
  uint8_t* data_ = nullptr;
  uint32_t capacity_ = 0;
};
