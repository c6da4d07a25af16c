// Builds SWF files for tests: plain ("FWS") and zlib-compressed ("CWS")
// files with chosen tags, and the action byte code of their script blocks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace swf {

// Little-endian field encodings.
std::string u8(uint8_t value);
std::string u16(uint16_t value);
std::string u32(uint32_t value);
std::string cstr(const std::string& text);  // the text and its NUL
std::string f32(float value);
// A double as action records store it: two little-endian words, high word first.
std::string avmDouble(double value);

// One value of a Push record: its type byte and its payload.
struct PushValue {
  std::string bytes;
  static PushValue string(const std::string& text) { return {u8(0) + cstr(text)}; }
  static PushValue float32(float value) { return {u8(1) + f32(value)}; }
  static PushValue null() { return {u8(2)}; }
  static PushValue undefined() { return {u8(3)}; }
  static PushValue registerNumber(uint8_t reg) { return {u8(4) + u8(reg)}; }
  static PushValue boolean(uint8_t value) { return {u8(5) + u8(value)}; }
  static PushValue float64(double value) { return {u8(6) + avmDouble(value)}; }
  static PushValue integer(int32_t value) { return {u8(7) + u32(static_cast<uint32_t>(value))}; }
  static PushValue constant8(uint8_t index) { return {u8(8) + u8(index)}; }
  static PushValue constant16(uint16_t index) { return {u8(9) + u16(index)}; }
  static PushValue raw(uint8_t type, const std::string& payload) { return {u8(type) + payload}; }
};

// A DefineFunction2 parameter: register (0: none) and name.
struct RegisterParam {
  uint8_t reg;
  std::string name;
};

// The action records of one script block, in order.
class ActionBuilder {
 public:
  ActionBuilder& op(uint8_t code);                                  // a record without operands
  ActionBuilder& record(uint8_t code, const std::string& operands);  // code, UI16 length, operands
  ActionBuilder& raw(const std::string& bytes);                      // bytes as they are

  ActionBuilder& push(const std::vector<PushValue>& values);
  ActionBuilder& constantPool(const std::vector<std::string>& entries);
  ActionBuilder& gotoFrame(uint16_t frame);
  ActionBuilder& getURL(const std::string& url, const std::string& target);
  ActionBuilder& getURL2(uint8_t flags);
  ActionBuilder& gotoFrame2(uint8_t flags, uint16_t sceneBias = 0);  // bias written when bit 1 is set
  ActionBuilder& storeRegister(uint8_t reg);
  ActionBuilder& jump(int16_t offset);
  ActionBuilder& branchIf(int16_t offset);
  ActionBuilder& defineFunction(const std::string& name, const std::vector<std::string>& params, uint16_t codeSize);
  ActionBuilder& defineFunction2(const std::string& name, uint8_t registers, uint16_t flags,
                                 const std::vector<RegisterParam>& params, uint16_t codeSize);
  ActionBuilder& tryBlock(uint8_t flags, uint16_t trySize, uint16_t catchSize, uint16_t finallySize,
                          const std::string& catchName, uint8_t catchRegister);
  ActionBuilder& with(uint16_t size);

  const std::string& bytes() const { return bytes_; }
  size_t size() const { return bytes_.size(); }

 private:
  std::string bytes_;
};

// A SWF file: header, then tags in the order added.
class SwfWriter {
 public:
  explicit SwfWriter(uint8_t version = 8);

  // Frame size rectangle with `bits` bits per field (5-bit count first).
  SwfWriter& frameSize(int bits, int32_t xMin, int32_t xMax, int32_t yMin, int32_t yMax);
  SwfWriter& tag(uint16_t code, const std::string& body);      // short header when the body is below 63 bytes
  SwfWriter& longTag(uint16_t code, const std::string& body);  // header with the 32-bit length
  SwfWriter& raw(const std::string& bytes);                    // bytes as they are
  SwfWriter& doAction(const ActionBuilder& actions) { return tag(12, actions.bytes()); }
  // A sprite (code 39) with its identifier, frame count and the tags of `body`.
  SwfWriter& sprite(uint16_t id, uint16_t frames, const SwfWriter& body);
  SwfWriter& end() { return tag(0, std::string()); }

  // File offset at which the next tag's header would start.
  size_t nextTagOffset() const { return header().size() + tags_.size(); }
  const std::string& tags() const { return tags_; }
  std::string fws() const;
  std::string cws() const;
  // Writes fws() or cws() to `path`.
  bool write(const std::string& path, bool compressed = false) const;

 private:
  std::string header() const;  // the first 8 bytes are signature, version and length
  uint8_t version_;
  std::string frameSize_;
  std::string tags_;
};

}  // namespace swf
