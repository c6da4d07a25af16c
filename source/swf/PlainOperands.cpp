// Records whose operands are a few plain values: each value that is wholly
// inside the record gives its field line, in operand order.
#include "swf/ActionOperands.h"

namespace {

// The GetURL2 flag byte, matched whole: method in bits 1-0, load-target
// flag in bit 6, load-variables flag in bit 7.
const char* getURL2FlagName(uint8_t flags) {
  switch (flags) {
    case 0x00: return "None";
    case 0x01: return "GET";
    case 0x02: return "POST";
    case 0x40: return "loadMovie";
    case 0x41: return "loadMovie GET";
    case 0x42: return "loadMovie POST";
    case 0x80: return "loadVariablesNum";
    case 0x81: return "loadVariablesNum GET";
    case 0x82: return "loadVariablesNum POST";
    case 0xC0: return "loadVariables";
    case 0xC1: return "loadVariables GET";
    case 0xC2: return "loadVariables POST";
    default: return "unknown";
  }
}

void stringField(OperandReader& operands, std::vector<std::string>& lines, const char* format, const char* name) {
  std::string_view text;
  if (operands.cstring(text)) appendLine(lines, format, name, text.data());
}

// GotoFrame2's field lines carry the name "ActionGetProperty"; readers of the
// listing rely on it.
void listGotoFrame2(OperandReader& operands, std::vector<std::string>& lines) {
  const char kName[] = "ActionGetProperty";
  uint8_t flags = 0;
  if (!operands.u8(flags)) return;
  if (flags == 0 || flags == 1) {
    appendLine(lines, "%s#@x441#oper#@x442#%s", kName, flags == 0 ? "AndStop" : "AndPlay");
    return;
  }
  if (flags == 2 || flags == 3) {
    uint16_t sceneBias = 0;
    if (operands.u16(sceneBias)) {
      appendLine(lines, "%s#@x441#oper#@x442#%s#@x441#value#@x442#%d", kName,
                 flags == 2 ? "AndStopSkip" : "AndPlaySkip", sceneBias);
    }
    return;
  }
  appendLine(lines, "%s#@x441#oper#@x442#%s#@x441#value#@x442#%d", kName, "unknown", flags);
}

}  // namespace

void listPlainOperands(uint8_t code, OperandReader& operands, std::vector<std::string>& lines) {
  uint8_t byte = 0;
  uint16_t word = 0;
  switch (code) {
    case kActionGotoFrame:
      if (operands.u16(word)) appendLine(lines, "%s#@x441#value#@x442#%d", "ActionGotoFrame", word);
      break;
    case kActionGetURL:
      stringField(operands, lines, "%s#@x441#urlString#@x442#%s", "ActionGetURL");
      stringField(operands, lines, "%s#@x441#targetString#@x442#%s", "ActionGetURL");
      break;
    case kActionStoreRegister:
      if (operands.u8(byte)) appendLine(lines, "%s#@x441#reg#@x442#%d", "ActionStoreRegister", byte);
      break;
    case kActionStrictMode:
      if (operands.u8(byte)) appendLine(lines, "%s#@x441#oper#@x442#%s", "strictMode", byte != 0 ? "On" : "Off");
      break;
    case kActionWaitForFrame:
      if (!operands.u16(word)) break;
      appendLine(lines, "%s#@x441#start#@x442#%d", "ActionWaitForFrame", word);
      if (operands.u8(byte)) appendLine(lines, "%s#@x441#end#@x442#%d", "ActionWaitForFrame", byte);
      break;
    case kActionSetTarget:
      stringField(operands, lines, "%s#@x441#targetName#@x442#%s", "ActionSetTarget");
      break;
    case kActionGoToLabel:
      stringField(operands, lines, "%s#@x441#label#@x442#%s", "ActionGoToLabel");
      break;
    case kActionWaitForFrame2:
      appendLine(lines, "%s#@x441#oper#@x442#%s", "ActionWaitForFrame2", "start");
      appendLine(lines, "%s#@x441#oper#@x442#%s", "ActionWaitForFrame2", "end");
      break;
    case kActionGetURL2:
      if (operands.u8(byte)) appendLine(lines, "%s#@x441#flag#@x442#%s", "ActionGetURL2", getURL2FlagName(byte));
      break;
    case kActionGotoFrame2:
      listGotoFrame2(operands, lines);
      break;
    default:
      break;
  }
}
