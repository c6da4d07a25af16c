// The machine's state: reset, the operand stack with its byte accounting, the
// value part of an entry and the splitting of argument lines.
#include "decompiler/DeCompiler.h"

#include <cstdlib>

DeCompiler::DeCompiler() { InitVirtualMachine(); }

DeCompiler::~DeCompiler() {}

void DeCompiler::InitVirtualMachine() {
  for (std::string& reg : registers) reg = "NullValue";
  while (!operandStack.empty()) operandStack.pop_back();
  variableNames.clear();
  variableValues.clear();
  statementList.clear();
  constantPool.clear();
  machineBytes = 0;
  limitReached = false;
}

void DeCompiler::parserKeyValuePair(std::string line, std::vector<std::string>& keys,
                                    std::vector<std::string>& values) {
  std::vector<std::string> fields;
  std::vector<std::string> parts;
  stringUtil.stringTokenizer(kFieldSeparator, line, fields);
  for (const std::string& field : fields) {
    stringUtil.stringTokenizer(kPairSeparator, field, parts);
    if (parts.size() != 2) continue;  // the leading record name, or a malformed field
    keys.push_back(parts[0]);
    values.push_back(stringUtil.customReplace(parts[1], "", ""));
  }
}

void DeCompiler::showState(std::string) {
  std::deque<std::string> stack(operandStack);
  std::vector<std::string> names(variableNames);
  std::vector<std::string> values(variableValues);
  std::vector<std::string> statements(statementList);
  std::vector<std::string> pool(constantPool);
}

void DeCompiler::push(std::string entry) {
  if (machineBytes + entry.size() + kEntryOverhead > kMaxMachineBytes) {
    limitReached = true;
    return;
  }
  machineBytes += entry.size() + kEntryOverhead;
  operandStack.push_back(std::move(entry));
}

std::string DeCompiler::pop() {
  std::string entry = std::move(operandStack.back());
  operandStack.pop_back();
  machineBytes -= entry.size() + kEntryOverhead;
  return entry;
}

void DeCompiler::clearStack() {
  while (!operandStack.empty()) pop();
}

void DeCompiler::appendStatement(const std::string& statement) {
  if (limitReached || machineBytes + statement.size() + kEntryOverhead > kMaxMachineBytes) {
    limitReached = true;
    return;
  }
  machineBytes += statement.size() + kEntryOverhead;
  statementList.push_back(statement);
}

void DeCompiler::appendBounded(std::string& text, const std::string& piece) {
  if (text.size() + piece.size() > kMaxTextBytes) {
    limitReached = true;
    return;
  }
  text += piece;
}

std::string DeCompiler::valuePart(const std::string& entry) {
  std::vector<std::string> fields;
  stringUtil.stringTokenizer(kFieldSeparator, entry, fields);
  return fields.size() == 2 ? std::move(fields[1]) : std::string();
}

bool DeCompiler::popIfDeep(size_t count) {
  if (operandStack.size() < count) return false;
  for (size_t i = 0; i < count; ++i) pop();
  return true;
}

std::string DeCompiler::popArguments(long count, bool commaAfterShort) {
  std::string text;
  for (long taken = 0; taken < count && !operandStack.empty();) {
    if (taken > 0) appendBounded(text, ",");
    appendBounded(text, valuePart(pop()));
    ++taken;
    if (commaAfterShort && taken < count && operandStack.empty()) appendBounded(text, ",");
  }
  return text;
}

unsigned DeCompiler::replaceOperands(size_t pops, const char* placeholder) {
  popIfDeep(pops);
  if (placeholder != nullptr) push(placeholder);
  return 1000;
}

bool DeCompiler::splitLine(const std::string& line, std::vector<std::string>& keys, std::vector<std::string>& values) {
  keys.clear();
  values.clear();
  parserKeyValuePair(line, keys, values);
  return keys.size() == values.size();
}

int DeCompiler::registerIndex(const std::string& text) {
  long number = strtol(text.c_str(), nullptr, 10);
  return (number >= 0 && number < 256) ? static_cast<int>(number) : -1;
}
