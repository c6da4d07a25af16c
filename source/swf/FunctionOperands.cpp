// The header records of functions and blocks: DefineFunction, DefineFunction2,
// Try and With. Their bodies follow as ordinary records; the "start" and
// "end" lines enclose the header's own field lines and are always written.
#include <bitset>

#include "swf/ActionOperands.h"
#include "swf/DeAssembler.h"

extern "C" TARVO_EXPORT const char* const arNames[6] = {"this", "arguments", "super", "_root", "_parent", "_global"};
extern "C" TARVO_EXPORT const uint16_t arPreFlags[6] = {0x0001, 0x0004, 0x0010, 0x0040, 0x0080, 0x0100};
extern "C" TARVO_EXPORT const uint16_t arSupFlags[6] = {0x0002, 0x0008, 0x0020, 0, 0, 0};

namespace {

void operLine(std::vector<std::string>& lines, const char* name, const char* oper) {
  appendLine(lines, "%s#@x441#oper#@x442#%s", name, oper);
}

// One line per register name whose preload or suppress bit is set; the
// preloaded names take registers 1, 2, ... in table order.
void listRegisterFlags(uint16_t flags, std::bitset<256>& allocated, std::vector<std::string>& lines) {
  const char kName[] = "ActionDefineFunction2";
  uint32_t known = 0;
  uint32_t nextRegister = 1;
  for (int i = 0; i < 6; ++i) {
    known |= arPreFlags[i] | arSupFlags[i];
    bool preloaded = (flags & arPreFlags[i]) != 0;
    bool suppressed = (flags & arSupFlags[i]) != 0;
    if (preloaded && suppressed) {
      appendLine(lines, "%s#@x441#error#@x442#%s", kName, "Preload and suppress flags are both set");
    } else if (preloaded) {
      appendLine(lines, "%s#@x441#Preloaded#@x442#%s", kName, arNames[i]);
      allocated.set(nextRegister++);
    } else if (suppressed) {
      appendLine(lines, "%s#@x441#Suppressed#@x442#%s", kName, arNames[i]);
    }
  }
  if ((flags & ~known) != 0) appendLine(lines, "%s#@x441#error#@x442#%s", kName, "unknown Register flag");
}

}  // namespace

void listDefineFunction(OperandReader& operands, std::vector<std::string>& lines) {
  const char kName[] = "ActionDefineFunction";
  operLine(lines, kName, "start");
  std::string_view name;
  uint16_t count = 0;
  if (operands.cstring(name)) {
    appendLine(lines, "%s#@x441#fName#@x442#%s", kName, name.data());
    if (operands.u16(count)) {
      std::string_view parameter;
      for (uint32_t i = 0; i < count && operands.cstring(parameter); ++i) {
        appendLine(lines, "%s#@x441#argname#@x442#%s", kName, parameter.data());
      }
    }
  }
  operLine(lines, kName, "end");
}

void listDefineFunction2(OperandReader& operands, std::vector<std::string>& lines) {
  const char kName[] = "ActionDefineFunction2";
  operLine(lines, kName, "start");
  std::string_view name;
  uint16_t count = 0;
  uint8_t registers = 0;
  uint16_t flags = 0;
  if (operands.cstring(name)) {
    if (operands.u16(count) && operands.u8(registers)) {
      appendLine(lines, "%s#@x441#nregisters#@x442#%d#@x441#numParams#@x442#%d", kName, registers, count);
    }
    appendLine(lines, "%s#@x441#fName#@x442#%s", kName, name.data());
    std::bitset<256> allocated;
    if (operands.u16(flags)) {
      listRegisterFlags(flags, allocated, lines);
      for (uint32_t i = 0; i < count; ++i) {
        uint8_t reg = 0;
        std::string_view parameter;
        if (!operands.u8(reg) || !operands.cstring(parameter)) break;
        if (reg == 0) {
          appendLine(lines, "%s#@x441#mem#@x442#fix#@x441#param#@x442#%s", kName, parameter.data());
          continue;
        }
        if (allocated.test(reg)) {
          appendLine(lines, "%s#@x441#error#@x442#%s", kName, "Duplicate register allocation");
        }
        allocated.set(reg);
        appendLine(lines, "%s#@x441#reg$#@x442#%u#@x441#param#@x442#%s", kName, static_cast<unsigned>(reg),
                   parameter.data());
      }
    }
  }
  operLine(lines, kName, "end");
}

void listTry(OperandReader& operands, std::vector<std::string>& lines) {
  const char kName[] = "ActionTry";
  constexpr uint8_t kCatchInRegister = 0x04;
  operLine(lines, kName, "start");
  uint8_t flags = 0;
  uint16_t trySize = 0;
  uint16_t catchSize = 0;
  uint16_t finallySize = 0;
  if (operands.u8(flags) && operands.u16(trySize) && operands.u16(catchSize) && operands.u16(finallySize)) {
    if (flags & kCatchInRegister) {
      uint8_t reg = 0;
      if (operands.u8(reg)) {
        appendLine(lines, "%s#@x441#oper#@x442#%s#@x441#InRegNum#@x442#%d", kName, "catch", reg);
      }
    } else {
      std::string_view catchName;
      if (operands.cstring(catchName)) {
        appendLine(lines, "%s#@x441#oper#@x442#%s#@x441#InMem#@x442#%s", kName, "catch", catchName.data());
      }
    }
  }
  operLine(lines, kName, "catch_block");
  operLine(lines, kName, "finally_block");
  operLine(lines, kName, "end");
}

void listWith(std::vector<std::string>& lines) {
  operLine(lines, "ActionWith", "start");
  operLine(lines, "ActionWith", "end");
}
