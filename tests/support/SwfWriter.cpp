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

ActionBuilder& ActionBuilder::op(uint8_t code) {
  bytes_ += u8(code);
  return *this;
}

ActionBuilder& ActionBuilder::record(uint8_t code, const std::string& operands) {
  bytes_ += u8(code) + u16(static_cast<uint16_t>(operands.size())) + operands;
  return *this;
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

ActionBuilder& ActionBuilder::gotoFrame(uint16_t frame) { return record(0x81, u16(frame)); }

ActionBuilder& ActionBuilder::getURL(const std::string& url, const std::string& target) {
  return record(0x83, cstr(url) + cstr(target));
}

ActionBuilder& ActionBuilder::getURL2(uint8_t flags) { return record(0x9A, u8(flags)); }

ActionBuilder& ActionBuilder::gotoFrame2(uint8_t flags, uint16_t sceneBias) {
  return record(0x9F, u8(flags) + ((flags & 2) ? u16(sceneBias) : std::string()));
}

ActionBuilder& ActionBuilder::storeRegister(uint8_t reg) { return record(0x87, u8(reg)); }

ActionBuilder& ActionBuilder::jump(int16_t offset) { return record(0x99, u16(static_cast<uint16_t>(offset))); }

ActionBuilder& ActionBuilder::branchIf(int16_t offset) { return record(0x9D, u16(static_cast<uint16_t>(offset))); }

ActionBuilder& ActionBuilder::defineFunction(const std::string& name, const std::vector<std::string>& params,
                                             uint16_t codeSize) {
  std::string operands = cstr(name) + u16(static_cast<uint16_t>(params.size()));
  for (const std::string& param : params) operands += cstr(param);
  return record(0x9B, operands + u16(codeSize));
}

ActionBuilder& ActionBuilder::defineFunction2(const std::string& name, uint8_t registers, uint16_t flags,
                                              const std::vector<RegisterParam>& params, uint16_t codeSize) {
  std::string operands = cstr(name) + u16(static_cast<uint16_t>(params.size())) + u8(registers) + u16(flags);
  for (const RegisterParam& param : params) operands += u8(param.reg) + cstr(param.name);
  return record(0x8E, operands + u16(codeSize));
}

ActionBuilder& ActionBuilder::tryBlock(uint8_t flags, uint16_t trySize, uint16_t catchSize, uint16_t finallySize,
                                       const std::string& catchName, uint8_t catchRegister) {
  std::string operands = u8(flags) + u16(trySize) + u16(catchSize) + u16(finallySize);
  operands += (flags & 4) ? u8(catchRegister) : cstr(catchName);
  return record(0x8F, operands);
}

ActionBuilder& ActionBuilder::with(uint16_t size) { return record(0x94, u16(size)); }

SwfWriter::SwfWriter(uint8_t version) : version_(version) { frameSize(15, 0, 11000, 0, 8000); }

SwfWriter& SwfWriter::frameSize(int bits, int32_t xMin, int32_t xMax, int32_t yMin, int32_t yMax) {
  std::vector<bool> stream;
  auto put = [&stream](uint32_t value, int count) {
    for (int i = count - 1; i >= 0; --i) stream.push_back((value >> i) & 1u);
  };
  put(static_cast<uint32_t>(bits), 5);
  for (int32_t field : {xMin, xMax, yMin, yMax}) put(static_cast<uint32_t>(field), bits);
  frameSize_.assign((stream.size() + 7) / 8, '\0');
  for (size_t i = 0; i < stream.size(); ++i) {
    if (stream[i]) frameSize_[i / 8] = static_cast<char>(frameSize_[i / 8] | (0x80 >> (i % 8)));
  }
  return *this;
}

SwfWriter& SwfWriter::tag(uint16_t code, const std::string& body) {
  if (body.size() >= 63) return longTag(code, body);
  tags_ += u16(static_cast<uint16_t>((code << 6) | body.size())) + body;
  return *this;
}

SwfWriter& SwfWriter::longTag(uint16_t code, const std::string& body) {
  tags_ += u16(static_cast<uint16_t>((code << 6) | 63)) + u32(static_cast<uint32_t>(body.size())) + body;
  return *this;
}

SwfWriter& SwfWriter::raw(const std::string& bytes) {
  tags_ += bytes;
  return *this;
}

SwfWriter& SwfWriter::sprite(uint16_t id, uint16_t frames, const SwfWriter& body) {
  return tag(39, u16(id) + u16(frames) + body.tags());
}

std::string SwfWriter::header() const {
  std::string rest = frameSize_ + u16(0x1800) + u16(1);
  uint32_t length = static_cast<uint32_t>(8 + rest.size() + tags_.size());
  return "FWS" + u8(version_) + u32(length) + rest;
}

std::string SwfWriter::fws() const { return header() + tags_; }

std::string SwfWriter::cws() const {
  std::string plain = fws();
  std::string body = plain.substr(8);
  uLongf size = compressBound(body.size());
  std::string packed(size, '\0');
  compress2(reinterpret_cast<Bytef*>(&packed[0]), &size, reinterpret_cast<const Bytef*>(body.data()), body.size(),
            Z_BEST_COMPRESSION);
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

}  // namespace swf
