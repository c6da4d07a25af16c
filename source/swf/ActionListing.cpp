// The record walk of one script block, and the branch targets that give
// records their label lines.
#include "APICheckEngine/TimeBudget.h"
#include "swf/ActionOperands.h"
#include "swf/DeAssembler.h"

namespace {

// A code with the high bit set carries a 16-bit operand length.
constexpr uint8_t kFirstCodeWithOperands = 0x80;

}  // namespace

void DeAssembler::getActionBlock(const uint8_t* data, uint32_t length, std::vector<std::string>& lines,
                                 uint32_t origin) {
  if (length == 0) return;
  ActionBlock block;
  block.data = data;
  block.length = length;
  block.origin = origin;
  uint32_t offset = 0;
  for (;;) {
    if (TimeBudget::spent() || listingFull(lines)) return;
    if (block.isTarget(offset)) {
      lines.emplace_back("----EMPTY----");
      appendLine(lines, "%s#@x442#0x%x", "Label", origin + offset);
    }
    ActionRecord record;
    record.code = data[offset];
    record.offset = offset;
    if (record.code >= kFirstCodeWithOperands) {
      if (length - offset < 3) return;
      record.operandLength = static_cast<uint32_t>(data[offset + 1] | (data[offset + 2] << 8));
      record.operandStart = offset + 3;
    } else {
      record.operandLength = 0;
      record.operandStart = offset + 1;
    }
    if (record.operandLength > length - record.operandStart) return;

    printActionRecord(block, record, lines);
    ++listedRecordCount;
    offset = record.operandStart + record.operandLength;
    if (listedRecordCount >= kMaxListedRecords || offset >= length) return;
  }
}

void DeAssembler::printActionRecord(ActionBlock& block, const ActionRecord& record, std::vector<std::string>& lines) {
  const char* nameLine = actionNameLine(record.code);
  if (nameLine == nullptr) {
    listUnknownAction(record.code, lines);
    return;
  }
  lines.emplace_back(nameLine);
  OperandReader operands(block.data + record.operandStart, record.operandLength);
  switch (record.code) {
    case kActionJump:
    case kActionIf: {
      // The offset counts from the end of the record; a record too short to
      // hold it lists no field line and records no target.
      uint16_t raw = 0;
      if (!operands.u16(raw)) return;
      int32_t branch = static_cast<int16_t>(raw);
      int64_t target = static_cast<int64_t>(record.operandStart) + record.operandLength + branch;
      appendLine(lines, "%s#@x441#offset#@x442#%x#@x441#address#@x442#%x",
                 record.code == kActionIf ? "ActionIf" : "ActionJump", static_cast<uint32_t>(branch),
                 static_cast<uint32_t>(block.origin + target));
      recordBranchTarget(block, target);
      return;
    }
    case kActionPush:
      listPushValues(block, operands, lines);
      return;
    case kActionConstantPool:
      listConstantPool(block, operands, lines);
      return;
    case kActionDefineFunction:
      listDefineFunction(operands, lines);
      return;
    case kActionDefineFunction2:
      listDefineFunction2(operands, lines);
      return;
    case kActionTry:
      listTry(operands, lines);
      return;
    case kActionWith:
      listWith(lines);
      return;
    default:
      listPlainOperands(record.code, operands, lines);
      return;
  }
}

// Every target takes an entry of the table while it has room; a target
// inside the block also marks the record that gets the label lines, so
// labels appear only in the block of their branch.
void DeAssembler::recordBranchTarget(ActionBlock& block, int64_t target) {
  if (branchTargetCount >= kBranchTargetCapacity) return;
  branchTargets[branchTargetCount++] = static_cast<uint32_t>(block.origin + target);
  if (target < 0 || target >= block.length) return;
  if (block.targetMarks.empty()) block.targetMarks.resize(block.length, false);
  block.targetMarks[static_cast<size_t>(target)] = true;
}

void listUnknownAction(uint8_t code, std::vector<std::string>& lines) {
  lines.emplace_back("[UnknownAction]");
  appendLine(lines, "%s#@x441#type#@x442#%d", "UnknownAction", code);
  appendLine(lines, "%s#@x441#Oper#@x442#%s", "UnknownAction", "Show_Hex_Data");
}
