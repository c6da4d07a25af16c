#include "support/RawZip.h"

#include <zlib.h>

#include <algorithm>

namespace {

void put16(std::string& out, uint32_t value) {
  out += static_cast<char>(value & 0xFF);
  out += static_cast<char>((value >> 8) & 0xFF);
}

void put32(std::string& out, uint32_t value) {
  put16(out, value & 0xFFFF);
  put16(out, value >> 16);
}

constexpr uint32_t kDosDate = 0x5021;  // 2020-01-01

// The fields shared by the local and the central header, from "version
// needed" to the extra field length.
std::string commonFields(uint16_t method, uint32_t crc, uint32_t compressed, uint32_t size, size_t nameLength) {
  std::string out;
  put16(out, 20);
  put16(out, 0);
  put16(out, method);
  put16(out, 0);
  put16(out, kDosDate);
  put32(out, crc);
  put32(out, compressed);
  put32(out, size);
  put16(out, static_cast<uint32_t>(nameLength));
  put16(out, 0);
  return out;
}

std::string localHeader(uint16_t method, uint32_t crc, uint32_t compressed, uint32_t size, const std::string& name) {
  std::string out;
  put32(out, 0x04034b50);
  out += commonFields(method, crc, compressed, size, name.size());
  return out + name;
}

std::string centralHeader(uint16_t method, uint32_t crc, uint32_t compressed, uint32_t size, const std::string& name,
                          uint32_t external, uint32_t offset) {
  std::string out;
  put32(out, 0x02014b50);
  put16(out, 0x031E);  // made by Unix, so that the external attributes hold a mode
  out += commonFields(method, crc, compressed, size, name.size());
  put16(out, 0);  // comment length
  put16(out, 0);  // disk
  put16(out, 0);  // internal attributes
  put32(out, external);
  put32(out, offset);
  return out + name;
}

std::string endRecord(uint32_t entries, uint32_t centralSize, uint32_t centralOffset) {
  std::string out;
  put32(out, 0x06054b50);
  put16(out, 0);
  put16(out, 0);
  put16(out, entries);
  put16(out, entries);
  put32(out, centralSize);
  put32(out, centralOffset);
  put16(out, 0);
  return out;
}

uint32_t crcOf(const std::string& data) {
  return static_cast<uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(data.data()), static_cast<uInt>(data.size())));
}

}  // namespace

std::string RawDeflate(const std::string& data) {
  z_stream stream = {};
  deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -15, 9, Z_DEFAULT_STRATEGY);
  std::string out(deflateBound(&stream, static_cast<uLong>(data.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
  stream.avail_in = static_cast<uInt>(data.size());
  stream.next_out = reinterpret_cast<Bytef*>(&out[0]);
  stream.avail_out = static_cast<uInt>(out.size());
  deflate(&stream, Z_FINISH);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

std::string RawZip(const std::vector<RawZipEntry>& entries) {
  std::string body;
  std::string central;
  for (const RawZipEntry& entry : entries) {
    std::string stored = entry.deflate ? RawDeflate(entry.content) : entry.content;
    uint16_t method = entry.deflate ? 8 : 0;
    uint32_t size = entry.declaredSize < 0 ? static_cast<uint32_t>(entry.content.size())
                                           : static_cast<uint32_t>(entry.declaredSize);
    uint32_t crc = crcOf(entry.content);
    uint32_t offset = static_cast<uint32_t>(body.size());
    body += localHeader(method, crc, static_cast<uint32_t>(stored.size()), size, entry.name) + stored;
    central += centralHeader(method, crc, static_cast<uint32_t>(stored.size()), size, entry.name,
                             entry.externalAttributes, offset);
  }
  uint32_t centralOffset = static_cast<uint32_t>(body.size());
  return body + central +
         endRecord(static_cast<uint32_t>(entries.size()), static_cast<uint32_t>(central.size()), centralOffset);
}

// The quine ---------------------------------------------------------------
//
// The entry's deflate stream is a program of two kinds of instruction, each
// byte-aligned: a stored block ("literal", a 5-byte header and its bytes) and
// a fixed-Huffman block that copies the last k bytes once more ("repeat",
// 5 bytes, the last one 4). With P the local header and S the central
// directory and end record, the program
//
//   lit[P lit(a)]  rep(a)  lit[rep(a)]  lit[lit(5)]  lit[rep(a) lit(5) lit(5) lit(20)]  rep(20)
//   lit[rep(20) lit(20) rep(20) lit(20)]  rep(20)  lit[rep(20) lit(0) lit(0) lit(b)]  rep(20)
//   lit[]  lit[]  lit[rep(b) S]  rep(b)
//
// (a = |P| + 5, b = |S| + |rep(b)|) inflates to P, the program itself, and S:
// the whole file. A 40-bit repeat exists only for some k, so P is made 60
// bytes long (a = 65) by the length of the name. The CRC, which the file
// holds twice, is the solution of a linear system over GF(2).

namespace {

class BitWriter {
 public:
  void bits(uint32_t value, int count) {  // least significant bit first
    for (int i = 0; i < count; ++i) bits_.push_back((value >> i) & 1);
  }
  void code(uint32_t value, int count) {  // Huffman codes: most significant bit first
    for (int i = count - 1; i >= 0; --i) bits_.push_back((value >> i) & 1);
  }
  size_t size() const { return bits_.size(); }
  std::string bytes() const {
    std::string out((bits_.size() + 7) / 8, '\0');
    for (size_t i = 0; i < bits_.size(); ++i) out[i / 8] = static_cast<char>(out[i / 8] | (bits_[i] << (i % 8)));
    return out;
  }

 private:
  std::vector<int> bits_;
};

// One length/distance pair of a fixed-Huffman block; lengths up to 130 and
// distances up to 128 are all the quine needs.
void writeMatch(BitWriter& out, uint32_t length, uint32_t distance) {
  static const uint32_t kLengthBase[] = {3,  4,  5,  6,  7,  8,  9,  10, 11, 13,  15,  17,
                                         19, 23, 27, 31, 35, 43, 51, 59, 67, 83, 99, 115};
  static const int kLengthExtra[] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4};
  static const uint32_t kDistanceBase[] = {1, 2, 3, 4, 5, 7, 9, 13, 17, 25, 33, 49, 65, 97};
  static const int kDistanceExtra[] = {0, 0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5};
  int l = 23;
  while (kLengthBase[l] > length) --l;
  uint32_t symbol = 257 + static_cast<uint32_t>(l);
  if (symbol < 280) {
    out.code(symbol - 256, 7);
  } else {
    out.code(0xC0 + symbol - 280, 8);
  }
  out.bits(length - kLengthBase[l], kLengthExtra[l]);
  int d = 13;
  while (kDistanceBase[d] > distance) --d;
  out.code(static_cast<uint32_t>(d), 5);
  out.bits(distance - kDistanceBase[d], kDistanceExtra[d]);
}

std::string literalHeader(uint32_t length) {
  std::string out(1, '\0');
  put16(out, length);
  put16(out, ~length & 0xFFFF);
  return out;
}

// Copies the last `k` bytes once, as matches of the given lengths, in a
// fixed-Huffman block; an empty fixed block pads a non-final one to a byte.
std::string repeat(uint32_t k, std::vector<uint32_t> lengths, bool final) {
  BitWriter out;
  out.bits(final ? 1 : 0, 1);
  out.bits(1, 2);
  for (uint32_t length : lengths) writeMatch(out, length, k);
  out.code(0, 7);
  if (!final && out.size() % 8 != 0) {
    out.bits(0, 1);
    out.bits(1, 2);
    out.code(0, 7);
  }
  return out.bytes();
}

const std::string kQuineName = "self-containing-package-00.zip";  // 30 bytes: P is 60 bytes

std::string quineFile(uint32_t crc) {
  const uint32_t p = 30 + static_cast<uint32_t>(kQuineName.size());
  const uint32_t s = 46 + static_cast<uint32_t>(kQuineName.size()) + 22;
  const uint32_t a = p + 5;
  const std::string repA = repeat(a, {a}, false);
  const std::string rep20 = repeat(20, {10, 10}, false);
  const uint32_t b = s + 4;
  const std::string repB = repeat(b, {b}, true);
  const std::string lit0 = literalHeader(0), lit5 = literalHeader(5), lit20 = literalHeader(20);

  auto program = [&](const std::string& P, const std::string& S) {
    return literalHeader(a) + P + literalHeader(a) + repA + lit5 + repA + lit5 + lit5 + lit20 + repA + lit5 + lit5 +
           lit20 + rep20 + lit20 + rep20 + lit20 + rep20 + lit20 + rep20 + lit20 + rep20 + lit0 + lit0 +
           literalHeader(b) + rep20 + lit0 + lit0 + literalHeader(b) + repB + S + repB;
  };
  const uint32_t programSize = static_cast<uint32_t>(program(std::string(p, '\0'), std::string(s, '\0')).size());
  const uint32_t fileSize = p + programSize + s;
  std::string P = localHeader(8, crc, programSize, fileSize, kQuineName);
  std::string S = centralHeader(8, crc, programSize, fileSize, kQuineName, 0, 0) +
                  endRecord(1, 46 + static_cast<uint32_t>(kQuineName.size()), p + programSize);
  return P + program(P, S) + S;
}

}  // namespace

std::string ZipQuine() {
  // crc(file(c)) is affine in c: crc(file(0)) ^ sum of columns. Solve
  // crc(file(c)) == c by elimination over GF(2).
  const uint32_t base = crcOf(quineFile(0));
  std::vector<std::pair<uint32_t, uint32_t>> rows;  // (vector, which bits of c make it), by pivot
  for (int i = 0; i < 32; ++i) {
    uint32_t vector = (crcOf(quineFile(1u << i)) ^ base) ^ (1u << i);
    uint32_t combination = 1u << i;
    for (const auto& row : rows) {
      if ((vector ^ row.first) < vector) {
        vector ^= row.first;
        combination ^= row.second;
      }
    }
    if (vector == 0) continue;
    rows.emplace_back(vector, combination);
    std::sort(rows.begin(), rows.end(), [](const auto& x, const auto& y) { return x.first > y.first; });
  }
  uint32_t target = base;
  uint32_t crc = 0;
  for (const auto& row : rows) {
    if ((target ^ row.first) < target) {
      target ^= row.first;
      crc ^= row.second;
    }
  }
  return quineFile(crc);
}
