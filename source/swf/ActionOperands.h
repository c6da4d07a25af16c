// What the record listers share: the state of the script block being listed,
// a bounded reader over one record's operands, the line writer, and the
// listers of each kind of operand.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

// Action codes whose records are listed with field lines.
enum ActionCode : uint8_t {
  kActionGotoFrame = 0x81,
  kActionGetURL = 0x83,
  kActionStoreRegister = 0x87,
  kActionConstantPool = 0x88,
  kActionStrictMode = 0x89,
  kActionWaitForFrame = 0x8A,
  kActionSetTarget = 0x8B,
  kActionGoToLabel = 0x8C,
  kActionWaitForFrame2 = 0x8D,
  kActionDefineFunction2 = 0x8E,
  kActionTry = 0x8F,
  kActionWith = 0x94,
  kActionPush = 0x96,
  kActionJump = 0x99,
  kActionGetURL2 = 0x9A,
  kActionDefineFunction = 0x9B,
  kActionIf = 0x9D,
  kActionGotoFrame2 = 0x9F,
};

// One action record: its code, where it starts in the block and where its
// operands lie (they always lie inside the block).
struct ActionRecord {
  uint8_t code = 0;
  uint32_t offset = 0;
  uint32_t operandStart = 0;
  uint32_t operandLength = 0;
};

// The script block being listed.
struct ActionBlock {
  const uint8_t* data = nullptr;
  uint32_t length = 0;
  uint32_t origin = 0;              // offset of the block in the file image
  std::vector<bool> targetMarks;    // record offsets that branches target (empty: none)
  bool hasPool = false;             // a ConstantPool record was listed
  std::vector<std::string_view> pool;  // its entries (each NUL-terminated in `data`)

  bool isTarget(uint32_t offset) const { return offset < targetMarks.size() && targetMarks[offset]; }
};

// Reads the operands of one record; a value that is not wholly inside them
// is not read (the call answers false and the position stays).
class OperandReader {
 public:
  OperandReader(const uint8_t* data, uint32_t size) : data_(data), size_(size) {}

  bool atEnd() const { return position_ >= size_; }
  bool u8(uint8_t& value) {
    if (size_ - position_ < 1) return false;
    value = data_[position_++];
    return true;
  }
  bool u16(uint16_t& value) {
    if (size_ - position_ < 2) return false;
    value = static_cast<uint16_t>(data_[position_] | (data_[position_ + 1] << 8));
    position_ += 2;
    return true;
  }
  bool u32(uint32_t& value) {
    uint16_t low = 0;
    uint16_t high = 0;
    if (size_ - position_ < 4) return false;
    u16(low);
    u16(high);
    value = low | (static_cast<uint32_t>(high) << 16);
    return true;
  }
  // A NUL-terminated string; the view's bytes are followed by their NUL.
  bool cstring(std::string_view& value) {
    const void* nul = memchr(data_ + position_, 0, size_ - position_);
    if (nul == nullptr) return false;
    uint32_t length = static_cast<uint32_t>(static_cast<const uint8_t*>(nul) - (data_ + position_));
    value = std::string_view(reinterpret_cast<const char*>(data_ + position_), length);
    position_ += length + 1;
    return true;
  }

 private:
  const uint8_t* data_;
  uint32_t size_;
  uint32_t position_ = 0;
};

// Appends one line made with snprintf into a 1,256-byte buffer: a longer
// line keeps its first 1,255 bytes.
void appendLine(std::vector<std::string>& lines, const char* format, ...) __attribute__((format(printf, 2, 3)));

// The name line of an action code ("[ActionPush]"), or nullptr for a code
// that is not an action.
const char* actionNameLine(uint8_t code);

// Listers of the field lines of each kind of record.
void listPushValues(const ActionBlock& block, OperandReader& operands, std::vector<std::string>& lines);
void listConstantPool(ActionBlock& block, OperandReader& operands, std::vector<std::string>& lines);
void listDefineFunction(OperandReader& operands, std::vector<std::string>& lines);
void listDefineFunction2(OperandReader& operands, std::vector<std::string>& lines);
void listTry(OperandReader& operands, std::vector<std::string>& lines);
void listWith(std::vector<std::string>& lines);
// GotoFrame, GetURL, StoreRegister, strict mode, WaitForFrame, SetTarget,
// GoToLabel, WaitForFrame2, GetURL2, GotoFrame2; nothing for other codes.
void listPlainOperands(uint8_t code, OperandReader& operands, std::vector<std::string>& lines);
void listUnknownAction(uint8_t code, std::vector<std::string>& lines);
