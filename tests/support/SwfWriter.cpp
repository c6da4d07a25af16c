#include "support/SwfWriter.h"

#include <zlib.h>

#include <cstdio>
#include <cstring>

namespace swf {

std::string u8(uint8_t value) { return std::string(1, static_cast<char>(value)); }

std::string u16(uint16_t value) { return u8(value & 0xFF) + u8(value >> 8); }

std::string u32(uint32_t value) { return u16(value & 0xFFFF) + u16(value >> 16); }

std::string cstr(const std::string& text) { return text + std::string(1, '\0'); }

std::string f32(float value) {
  uint32_t bits;
  memcpy(&bits, &value, sizeof(bits));
  return u32(bits);
}

std::string avmDouble(double value) {
  uint64_t bits;
  memcpy(&bits, &value, sizeof(bits));
  return u32(static_cast<uint32_t>(bits >> 32)) + u32(static_cast<uint32_t>(bits));
}

ActionBuilder& ActionBuilder::op(uint8_t code) { return raw(u8(code)); }

ActionBuilder& ActionBuilder::record(uint8_t code, const std::string& operands) {
  return raw(u8(code) + u16(static_cast<uint16_t>(operands.size())) + operands);
}

ActionBuilder& ActionBuilder::raw(const std::string& bytes) {
  bytes_ += bytes;
  return *this;
}

ActionBuilder& ActionBuilder::push(const std::vector<PushValue>& values) {
  std::string operands;
  for (const PushValue& value : values) operands += value.bytes;
  return record(0x96, operands);
}

ActionBuilder& ActionBuilder::constantPool(const std::vector<std::string>& entries) {
  std::string operands = u16(static_cast<uint16_t>(entries.size()));
  for (const std::string& entry : entries) operands += cstr(entry);
  return record(0x88, operands);
}

ActionBuilder& ActionBuilder::defineFunction2(const std::string& name, uint8_t registers, uint16_t flags,
                                              const std::vector<RegisterParam>& params, uint16_t codeSize) {
  std::string operands = cstr(name) + u16(static_cast<uint16_t>(params.size())) + u8(registers) + u16(flags);
  for (const RegisterParam& param : params) operands += u8(param.reg) + cstr(param.name);
  return record(0x8E, operands + u16(codeSize));
}

SwfWriter& SwfWriter::tag(uint16_t code, const std::string& body) {
  if (body.size() >= 63) return longTag(code, body);
  return raw(u16(static_cast<uint16_t>((code << 6) | body.size())) + body);
}

SwfWriter& SwfWriter::longTag(uint16_t code, const std::string& body) {
  return raw(u16(static_cast<uint16_t>((code << 6) | 63)) + u32(static_cast<uint32_t>(body.size())) + body);
}

SwfWriter& SwfWriter::raw(const std::string& bytes) {
  tags_ += bytes;
  return *this;
}

// Signature, version 8, file length, frame size, frame rate 24, one frame.
std::string SwfWriter::fws() const {
  std::string rest = frameRect_ + u16(0x1800) + u16(1) + tags_;
  return "FWS" + u8(8) + u32(static_cast<uint32_t>(8 + rest.size())) + rest;
}

std::string SwfWriter::cws() const {
  std::string plain = fws();
  uLongf size = compressBound(plain.size() - 8);
  std::string packed(size, '\0');
  compress2(reinterpret_cast<Bytef*>(&packed[0]), &size, reinterpret_cast<const Bytef*>(plain.data() + 8),
            plain.size() - 8, Z_BEST_COMPRESSION);
  packed.resize(size);
  return "CWS" + plain.substr(3, 5) + packed;
}

bool SwfWriter::write(const std::string& path, bool compressed) const {
  std::string bytes = compressed ? cws() : fws();
  FILE* file = fopen(path.c_str(), "wb");
  if (file == nullptr) return false;
  bool ok = fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  return fclose(file) == 0 && ok;
}

ActionBuilder& callOnPlugin(ActionBuilder& actions, const std::string& id, const std::string& method) {
  enum : uint8_t { kCallFunction = 0x3D, kCallMethod = 0x52, kPop = 0x17 };
  return actions
      .push({PushValue::integer(1), PushValue::integer(1), PushValue::string(id), PushValue::integer(1),
             PushValue::string("getPlugin")})
      .op(kCallFunction)
      .push({PushValue::string(method)})
      .op(kCallMethod)
      .op(kPop);
}

}  // namespace swf
