// Builds SWF files for tests: plain ("FWS") and zlib-compressed ("CWS")
// files with chosen tags, and the action byte code of their script blocks.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
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
  static PushValue float64(double value) { return {u8(6) + avmDouble(value)}; }
  static PushValue integer(int32_t value) { return {u8(7) + u32(static_cast<uint32_t>(value))}; }
  static PushValue constant8(uint8_t index) { return {u8(8) + u8(index)}; }
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
  ActionBuilder& jump(int16_t offset) { return record(0x99, u16(static_cast<uint16_t>(offset))); }
  ActionBuilder& branchIf(int16_t offset) { return record(0x9D, u16(static_cast<uint16_t>(offset))); }
  ActionBuilder& defineFunction2(const std::string& name, uint8_t registers, uint16_t flags,
                                 const std::vector<RegisterParam>& params, uint16_t codeSize);

  const std::string& bytes() const { return bytes_; }
  size_t size() const { return bytes_.size(); }

 private:
  std::string bytes_;
};

// Appends getPlugin(id).method(1) with its result dropped: the call form the
// decompiler turns into "getPlugin(id).method(1)".
ActionBuilder& callOnPlugin(ActionBuilder& actions, const std::string& id, const std::string& method);

// A SWF file: header, then tags in the order added.
class SwfWriter {
 public:
  // `frameRect`: the bit-packed frame size as it is written (default: 15-bit
  // fields, 0 11000 0 8000).
  explicit SwfWriter(std::string frameRect = std::string("\x78\x00\x05\x5f\x00\x00\x0f\xa0\x00", 9))
      : frameRect_(std::move(frameRect)) {}

  SwfWriter& tag(uint16_t code, const std::string& body);      // short header when the body is below 63 bytes
  SwfWriter& longTag(uint16_t code, const std::string& body);  // header with the 32-bit length
  SwfWriter& raw(const std::string& bytes);                    // bytes as they are
  SwfWriter& doAction(const ActionBuilder& actions) { return tag(12, actions.bytes()); }
  // A sprite (code 39) with its identifier, frame count and the tags of `body`.
  SwfWriter& sprite(uint16_t id, uint16_t frames, const SwfWriter& body) {
    return tag(39, u16(id) + u16(frames) + body.tags_);
  }
  SwfWriter& end() { return tag(0, std::string()); }

  std::string fws() const;
  std::string cws() const;
  // Writes fws() or cws() to `path`.
  bool write(const std::string& path, bool compressed = false) const;

 private:
  std::string frameRect_;
  std::string tags_;
};

}  // namespace swf
