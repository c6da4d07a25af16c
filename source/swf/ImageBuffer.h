// The byte buffer that holds the image of one SWF file: allocated zero-filled,
// grown with realloc, freed on every way out.
#pragma once

#include <cstdint>
#include <cstdlib>

class ImageBuffer {
 public:
  ImageBuffer() = default;
  ~ImageBuffer() { free(data_); }
  ImageBuffer(const ImageBuffer&) = delete;
  ImageBuffer& operator=(const ImageBuffer&) = delete;

  // A zero-filled buffer of `bytes`; false when there is no memory.
  bool allocate(uint32_t bytes) {
    free(data_);
    data_ = static_cast<uint8_t*>(calloc(bytes, 1));
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
