// The values of a Push record, one field line each.
#include <cmath>

#include "swf/ActionOperands.h"

namespace {

const char kPush[] = "ActionPush";

const char* const kPropertyNames[] = {
    "X_PROPERTY",          "Y_PROPERTY",           "XSCALE_PROPERTY",   "YSCALE_PROPERTY",
    "CURRENTFRAME_PROPERTY", "TOTALFRAMES_PROPERTY", "ALPHA_PROPERTY",    "VISIBLE_PROPERTY",
    "WIDTH_PROPERTY",      "HEIGHT_PROPERTY",      "ROTATION_PROPERTY", "TARGET_PROPERTY",
    "FRAMESLOADED_PROPERTY", "NAME_PROPERTY",      "DROPTARGET_PROPERTY", "URL_PROPERTY",
    "HIGHQUALITY_PROPERTY", "FOCUSRECT_PROPERTY",  "SOUNDBUFTIME_PROPERTY", "QUALITY_PROPERTY",
    "XMOUSE_PROPERTY",     "YMOUSE_PROPERTY",
};
constexpr int kPropertyCount = sizeof(kPropertyNames) / sizeof(kPropertyNames[0]);

// A float pushed for GetProperty/SetProperty is a property index: a whole
// number from 0 to 21 is written as the property's name.
const char* propertyName(float value) {
  if (!(value >= 0.0f && value <= static_cast<float>(kPropertyCount - 1))) return nullptr;
  if (std::floor(value) != value) return nullptr;
  return kPropertyNames[static_cast<int>(value)];
}

// The constant a type-8 or type-9 value refers to.
const char* poolEntry(const ActionBlock& block, uint32_t index) {
  if (!block.hasPool) return "Abnormal_ConstData";
  if (index >= block.pool.size()) return "error";
  return block.pool[index].data();
}

}  // namespace

// A value whose bytes run past the record ends the list; so does a value of
// a type this lister does not know, after its own line.
void listPushValues(const ActionBlock& block, OperandReader& operands, std::vector<std::string>& lines) {
  while (!operands.atEnd()) {
    uint8_t type = 0;
    operands.u8(type);
    switch (type) {
      case 0: {
        std::string_view text;
        if (!operands.cstring(text)) return;
        appendLine(lines, "%s#@x441#type#@x442#0#@x441#value#@x442#%s", kPush, text.data());
        break;
      }
      case 1: {
        uint32_t bits = 0;
        if (!operands.u32(bits)) return;
        float value;
        memcpy(&value, &bits, sizeof(value));
        if (const char* name = propertyName(value)) {
          appendLine(lines, "%s#@x441#type#@x442#1#@x441#value#@x442#%s", kPush, name);
        } else {
          appendLine(lines, "%s#@x441#type#@x442#1#@x441#value#@x442#%f", kPush, static_cast<double>(value));
        }
        break;
      }
      case 2:
        appendLine(lines, "%s#@x441#type#@x442#2#@x441#value#@x442#%s", kPush, "null");
        break;
      case 3:
        appendLine(lines, "%s#type:3#value:%s", kPush, "undefined");
        break;
      case 4: {
        uint8_t reg = 0;
        if (!operands.u8(reg)) return;
        appendLine(lines, "%s#@x441#type#@x442#4#@x441#reg$#@x442#%d", kPush, reg);
        break;
      }
      case 5: {
        uint8_t flag = 0;
        if (!operands.u8(flag)) return;
        appendLine(lines, "%s#@x441#type#@x442#5#@x441#value#@x442#%s", kPush, flag != 0 ? "TRUE" : "FALSE");
        break;
      }
      case 6: {
        // Two little-endian words, the high word first.
        uint32_t high = 0;
        uint32_t low = 0;
        if (!operands.u32(high) || !operands.u32(low)) return;
        uint64_t bits = (static_cast<uint64_t>(high) << 32) | low;
        double value;
        memcpy(&value, &bits, sizeof(value));
        appendLine(lines, "%s#@x441#type#@x442#6#@x441#value#@x442#%f", kPush, value);
        break;
      }
      case 7: {
        uint32_t bits = 0;
        if (!operands.u32(bits)) return;
        int32_t value;
        memcpy(&value, &bits, sizeof(value));
        appendLine(lines, "%s#@x441#type#@x442#7#@x441#value#@x442#%d", kPush, value);
        break;
      }
      case 8: {
        uint8_t index = 0;
        if (!operands.u8(index)) return;
        appendLine(lines, "%s#@x441#type#@x442#8#@x441#value#@x442#%s", kPush, poolEntry(block, index));
        break;
      }
      case 9: {
        uint16_t index = 0;
        if (!operands.u16(index)) return;
        appendLine(lines, "%s#@x441#type#@x442#9#@x441#value#@x442#%s", kPush, poolEntry(block, index));
        break;
      }
      default:
        appendLine(lines, "%s#@x441#type#@x442#@#@x441#type#@x442#%d", kPush, type);
        return;
    }
  }
}

// The pool that the type-8 and type-9 values of the following records of
// this block refer to. Entries that do not fit in the record end the list
// with an error line; the pool keeps the entries that did fit.
void listConstantPool(ActionBlock& block, OperandReader& operands, std::vector<std::string>& lines) {
  const char kPool[] = "ActionConstantPool";
  block.hasPool = true;
  block.pool.clear();
  uint16_t count = 0;
  bool fits = operands.u16(count);
  for (uint32_t i = 0; fits && i < count; ++i) {
    std::string_view entry;
    fits = operands.cstring(entry);
    if (fits) {
      block.pool.push_back(entry);
      appendLine(lines, "%s#@x441#value#@x442#%s", kPool, entry.data());
    }
  }
  if (!fits) appendLine(lines, "%s#@x441#value#@x442#%s", kPool, "constant pool length error");
}
