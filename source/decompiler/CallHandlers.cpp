// Calls, constructions, member and variable reads, object literals and the
// records whose depth depends on an operand. These build their texts from the
// value parts of the operands.
#include <cstdlib>

#include "decompiler/DeCompiler.h"

namespace {
long countOf(const std::string& valuePart) { return strtol(valuePart.c_str(), nullptr, 10); }
}  // namespace

std::vector<std::string> DeCompiler::popOperands(size_t count) {
  std::vector<std::string> operands(count);
  if (operandStack.size() >= count) {
    for (std::string& operand : operands) operand = pop();
  }
  return operands;
}

std::string DeCompiler::invocation(const std::string& target, const std::string& countEntry, bool commaAfterShort) {
  std::string text;
  appendBounded(text, target);
  appendBounded(text, "(");
  appendBounded(text, popArguments(countOf(valuePart(countEntry)), commaAfterShort));
  appendBounded(text, ")");
  return text;
}

unsigned DeCompiler::recordCall(const std::string& statement) {
  push("returnValueOfFunction#@x441#" + statement);
  appendStatement(statement);
  return 1000;
}

unsigned DeCompiler::handleActionCallMethod(std::vector<std::string>) {
  std::vector<std::string> op = popOperands(3);  // method, object, count
  return recordCall(invocation(valuePart(op[1]) + "." + valuePart(op[0]), op[2], true));
}

unsigned DeCompiler::handleActionCallFunction(std::vector<std::string>) {
  std::vector<std::string> op = popOperands(2);  // function, count
  return recordCall(invocation(valuePart(op[0]), op[1], true));
}

unsigned DeCompiler::handleActionNewObject(std::vector<std::string>) {
  std::vector<std::string> op = popOperands(2);  // class, count
  push("newObject#@x441#" + invocation("new " + valuePart(op[0]), op[1], false));
  return 1000;
}

unsigned DeCompiler::handleActionNewMethod(std::vector<std::string>) {
  std::vector<std::string> op = popOperands(3);  // method, object, count
  push("New Method#@x441#" + invocation("new " + valuePart(op[1]) + "." + valuePart(op[0]), op[2], false));
  return 1000;
}

unsigned DeCompiler::handleActionInitObject(std::vector<std::string>) {
  long count = 0;
  if (!operandStack.empty()) count = countOf(valuePart(pop()));
  std::string text = "{";
  bool first = true;
  // Properties are taken while a value and a name are left; "," only stands
  // between properties that were written.
  for (long i = 0; i < count && operandStack.size() >= 2; ++i) {
    std::string value = valuePart(pop());
    std::string name = valuePart(pop());
    if (!first) appendBounded(text, ",");
    first = false;
    appendBounded(text, name);
    appendBounded(text, ":\"");
    appendBounded(text, value);
    appendBounded(text, "\"");
  }
  appendBounded(text, "}");
  push("InitObject#@x441#" + text);
  return 1000;
}

unsigned DeCompiler::handleActionInitArray(std::vector<std::string>) {
  if (operandStack.empty()) return 1000;
  long count = countOf(valuePart(pop()));
  for (long i = 0; i < count && !operandStack.empty(); ++i) pop();
  return 1000;
}

unsigned DeCompiler::handleActionImplementsOp(std::vector<std::string>) {
  if (operandStack.size() < 2) return 1000;
  pop();  // the constructor
  long count = countOf(valuePart(pop()));
  for (long i = 0; i < count && !operandStack.empty(); ++i) pop();
  return 1000;
}

unsigned DeCompiler::handleActionGetMember(std::vector<std::string>) {
  std::vector<std::string> op = popOperands(2);  // member, object
  std::string fullName;
  appendBounded(fullName, valuePart(op[1]));
  appendBounded(fullName, ".");
  appendBounded(fullName, valuePart(op[0]));
  for (size_t i = 0; i < variableNames.size() && i < variableValues.size(); ++i) {
    if (variableNames[i].find(fullName) != std::string::npos) {
      push(variableValues[i]);
      return 1000;
    }
  }
  push("valueOfProperty#@x441#" + fullName);
  return 1000;
}

unsigned DeCompiler::handleActionGetVariable(std::vector<std::string>) {
  std::string entry;
  if (!operandStack.empty()) entry = pop();
  const std::string name = valuePart(entry);
  for (size_t i = 0; i < variableNames.size() && i < variableValues.size(); ++i) {
    if (variableNames[i].find(name) != std::string::npos && !variableValues[i].empty()) {
      push(variableValues[i]);
      return 1000;
    }
  }
  // The table is never filled: the variable's own entry stands for its value.
  push(entry);
  return 1000;
}

unsigned DeCompiler::handleActionCastOp(std::vector<std::string>) {
  if (operandStack.size() < 2) {
    push(std::string());
    return 1000;
  }
  std::string object = pop();
  pop();  // the constructor
  push(object);
  return 1000;
}

unsigned DeCompiler::handleActionStartDrag(std::vector<std::string>) {
  if (operandStack.size() < 3) return 1000;
  pop();  // target
  pop();  // lock-centre flag
  // The constrain flag counts as set when its value part reads as a non-zero
  // number; the four bounds of the rectangle follow it.
  if (countOf(valuePart(pop())) != 0) popIfDeep(4);
  return 1000;
}
