#include "support/RawZip.h"

#include <zlib.h>

#include <algorithm>

namespace {

std::string u16(uint32_t value) { return {static_cast<char>(value & 0xFF), static_cast<char>((value >> 8) & 0xFF)}; }
std::string u32(uint32_t value) { return u16(value & 0xFFFF) + u16(value >> 16); }

struct Header {
  uint16_t method;  // 0 stored, 8 deflated
  uint32_t crc, compressed, size;
  std::string name;
};

// The fields both headers share, from "version needed" to the extra field
// length; dated 2020-01-01.
std::string common(const Header& h) {
  return u16(20) + u16(0) + u16(h.method) + u16(0) + u16(0x5021) + u32(h.crc) + u32(h.compressed) + u32(h.size) +
         u16(static_cast<uint32_t>(h.name.size())) + u16(0);
}
std::string localHeader(const Header& h) { return u32(0x04034b50) + common(h) + h.name; }
// Made by Unix (0x031E), so that the external attributes hold a mode.
std::string centralHeader(const Header& h, uint32_t external, uint32_t offset) {
  return u32(0x02014b50) + u16(0x031E) + common(h) + u16(0) + u16(0) + u16(0) + u32(external) + u32(offset) + h.name;
}
std::string endRecord(uint32_t entries, uint32_t centralSize, uint32_t centralOffset) {
  return u32(0x06054b50) + u32(0) /* disk numbers */ + u16(entries) + u16(entries) + u32(centralSize) +
         u32(centralOffset) + u16(0);
}

uint32_t crcOf(const std::string& data) {
  return static_cast<uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(data.data()), static_cast<uInt>(data.size())));
}

std::string rawDeflate(const std::string& data) {
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

}  // namespace

std::string RawZip(const std::vector<RawZipEntry>& entries) {
  std::string body, central;
  for (const RawZipEntry& entry : entries) {
    std::string stored = entry.deflate ? rawDeflate(entry.content) : entry.content;
    Header h{static_cast<uint16_t>(entry.deflate ? 8 : 0), crcOf(entry.content), static_cast<uint32_t>(stored.size()),
             static_cast<uint32_t>(entry.content.size()), entry.name};
    central += centralHeader(h, entry.externalAttributes, static_cast<uint32_t>(body.size()));
    body += localHeader(h) + stored;
  }
  auto count = static_cast<uint32_t>(entries.size());
  return body + central + endRecord(count, static_cast<uint32_t>(central.size()), static_cast<uint32_t>(body.size()));
}

// The quine ---------------------------------------------------------------
//
// The entry's deflate stream is a program of two kinds of instruction, each
// byte-aligned: a stored block ("literal", a 5-byte header and its bytes) and
// a fixed-Huffman block that copies the last k bytes once more ("repeat",
// 5 bytes). With P the local header and S the central directory and end
// record, the program
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
  static const uint32_t kLengthBase[] = {3,  4,  5,  6,  7,  8,  9,  10, 11, 13, 15, 17,
                                         19, 23, 27, 31, 35, 43, 51, 59, 67, 83, 99, 115};
  static const uint32_t kDistanceBase[] = {1, 2, 3, 4, 5, 7, 9, 13, 17, 25, 33, 49, 65, 97};
  int l = 23, d = 13;
  while (kLengthBase[l] > length) --l;
  while (kDistanceBase[d] > distance) --d;
  if (l < 23) {  // symbols 257 to 279: 7-bit codes; 280 on: 8-bit codes from 0xC0
    out.code(static_cast<uint32_t>(l + 1), 7);
  } else {
    out.code(0xC0, 8);
  }
  out.bits(length - kLengthBase[l], l < 8 ? 0 : (l - 4) / 4);
  out.code(static_cast<uint32_t>(d), 5);
  out.bits(distance - kDistanceBase[d], d < 4 ? 0 : (d - 2) / 2);
}

std::string literalHeader(uint32_t length) { return std::string(1, '\0') + u16(length) + u16(~length & 0xFFFF); }

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
  const auto n = static_cast<uint32_t>(kQuineName.size());
  const uint32_t p = 30 + n, s = 46 + n + 22;
  const uint32_t a = p + 5, b = s + 4;
  const std::string repA = repeat(a, {a}, false), rep20 = repeat(20, {10, 10}, false), repB = repeat(b, {b}, true);
  const std::string lit0 = literalHeader(0), lit5 = literalHeader(5), lit20 = literalHeader(20);
  auto program = [&](const std::string& P, const std::string& S) {
    return literalHeader(a) + P + literalHeader(a) + repA + lit5 + repA + lit5 + lit5 + lit20 + repA + lit5 + lit5 +
           lit20 + rep20 + lit20 + rep20 + lit20 + rep20 + lit20 + rep20 + lit20 + rep20 + lit0 + lit0 +
           literalHeader(b) + rep20 + lit0 + lit0 + literalHeader(b) + repB + S + repB;
  };
  const auto programSize = static_cast<uint32_t>(program(std::string(p, '\0'), std::string(s, '\0')).size());
  const Header h{8, crc, programSize, p + programSize + s, kQuineName};
  const std::string P = localHeader(h), S = centralHeader(h, 0, 0) + endRecord(1, s - 22, p + programSize);
  return P + program(P, S) + S;
}

}  // namespace

std::string ZipQuine() {
  // crc(file(c)) is affine in c: crc(file(0)) ^ sum of columns. Solve
  // crc(file(c)) == c by elimination over GF(2).
  const uint32_t base = crcOf(quineFile(0));
  std::vector<std::pair<uint32_t, uint32_t>> rows;  // (vector, which bits of c make it), by pivot
  for (int i = 0; i < 32; ++i) {
    uint32_t vector = (crcOf(quineFile(1u << i)) ^ base) ^ (1u << i), combination = 1u << i;
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
  uint32_t target = base, crc = 0;
  for (const auto& row : rows) {
    if ((target ^ row.first) < target) {
      target ^= row.first;
      crc ^= row.second;
    }
  }
  return quineFile(crc);
}
