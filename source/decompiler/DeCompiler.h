// ActionScript decompiler: replays a disassembly listing on a symbolic stack
// machine and collects the call statements it rebuilds.
//
// Nothing is executed. Every stack entry is a text "<kind>#@x441#<text>": values
// from the listing keep their push type as kind, results of operations are
// placeholders. Only calls, member reads, constructions and object literals
// build text from their operands; CallMethod and CallFunction also append
// their statement to the statement list, the one product of a run.
//
// Member definitions by family: DeCompiler.cpp (machine state, stack, line
// splitting), Dispatch.cpp (the walk over the listing and its header table),
// PlaceholderHandlers.cpp (records that pop a fixed depth and push a fixed
// text), CallHandlers.cpp (calls, constructions, member and variable reads,
// object literals), RegisterHandlers.cpp (pushes, registers, functions).
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "strutil/CStringUtil.h"

class DeCompiler {
 public:
  // Guards against listings that would make the machine's texts grow without
  // bound (doubling an entry by duplication and a two-argument call costs a
  // few records). A run that would pass either limit ends like a run whose
  // time budget is spent: the statements made so far are returned. Each stack
  // entry and statement counts its text plus kEntryOverhead for the string
  // that holds it, so a flood of empty entries is bounded too.
  static constexpr size_t kMaxTextBytes = 256u << 10;    // one built text
  static constexpr size_t kMaxMachineBytes = 16u << 20;  // stack plus statements
  static constexpr size_t kEntryOverhead = 48;

  // Separates the fields of listing lines and of stack entries, and the key
  // from the value inside a field.
  static constexpr const char* kFieldSeparator = "#@x441#";
  static constexpr const char* kPairSeparator = "#@x442#";

  DeCompiler();
  virtual ~DeCompiler();

  // Registers to "NullValue"; stack, variable tables, statements and constant
  // pool emptied.
  void InitVirtualMachine();

  // Runs the listing; `statements` receives a copy of the statement list.
  // Always 1000.
  unsigned SWFDeCompilerMain(std::vector<std::string>& listing, std::vector<std::string>& statements);

  // Appends the key and value of every "key#@x442#value" field of `line`
  // (fields separated by "#@x441#") to `keys` and `values`.
  void parserKeyValuePair(std::string line, std::vector<std::string>& keys, std::vector<std::string>& values);

  // Debugging hook: copies the machine's state and discards the copies.
  void showState(std::string label);

  // One handler per action record; each returns 1000, or 1024 on an argument
  // line whose keys and values differ in number.
  // Pushes, registers and functions.
  unsigned handleActionPush(std::vector<std::string> argumentLines);
  unsigned handleActionPushDuplicate(std::vector<std::string> argumentLines);
  unsigned handleActionStackSwap(std::vector<std::string> argumentLines);
  unsigned handleActionConstantPool(std::vector<std::string> argumentLines);
  unsigned handleActionStoreRegister(std::vector<std::string> argumentLines);
  unsigned handleActionDefineFunction2(std::vector<std::string> argumentLines);
  unsigned handleActionDefineFunction(std::vector<std::string> argumentLines);
  unsigned handleActionJump(std::vector<std::string> argumentLines);
  unsigned handleActionEndDrag(std::vector<std::string> argumentLines);

  // Calls, constructions, member and variable reads, object literals.
  unsigned handleActionCallMethod(std::vector<std::string> argumentLines);
  unsigned handleActionCallFunction(std::vector<std::string> argumentLines);
  unsigned handleActionNewObject(std::vector<std::string> argumentLines);
  unsigned handleActionNewMethod(std::vector<std::string> argumentLines);
  unsigned handleActionInitObject(std::vector<std::string> argumentLines);
  unsigned handleActionInitArray(std::vector<std::string> argumentLines);
  unsigned handleActionImplementsOp(std::vector<std::string> argumentLines);
  unsigned handleActionGetMember(std::vector<std::string> argumentLines);
  unsigned handleActionGetVariable(std::vector<std::string> argumentLines);
  unsigned handleActionCastOp(std::vector<std::string> argumentLines);
  unsigned handleActionStartDrag(std::vector<std::string> argumentLines);

  // Fixed pops and placeholders.
  unsigned handleActionGetTime(std::vector<std::string> argumentLines);
  unsigned handleActionPop(std::vector<std::string> argumentLines);
  unsigned handleActionAdd(std::vector<std::string> argumentLines);
  unsigned handleActionSubtract(std::vector<std::string> argumentLines);
  unsigned handleActionMultiply(std::vector<std::string> argumentLines);
  unsigned handleActionDivide(std::vector<std::string> argumentLines);
  unsigned handleActionAdd2(std::vector<std::string> argumentLines);
  unsigned handleActionStringAdd(std::vector<std::string> argumentLines);
  unsigned handleActionModulo(std::vector<std::string> argumentLines);
  unsigned handleActionBitAnd(std::vector<std::string> argumentLines);
  unsigned handleActionBitOr(std::vector<std::string> argumentLines);
  unsigned handleActionBitXor(std::vector<std::string> argumentLines);
  unsigned handleActionBitLShift(std::vector<std::string> argumentLines);
  unsigned handleActionBitRShift(std::vector<std::string> argumentLines);
  unsigned handleActionBitURShift(std::vector<std::string> argumentLines);
  unsigned handleActionEquals(std::vector<std::string> argumentLines);
  unsigned handleActionEquals2(std::vector<std::string> argumentLines);
  unsigned handleActionStrictEquals(std::vector<std::string> argumentLines);
  unsigned handleActionLess(std::vector<std::string> argumentLines);
  unsigned handleActionLess2(std::vector<std::string> argumentLines);
  unsigned handleActionGreater(std::vector<std::string> argumentLines);
  unsigned handleActionAnd(std::vector<std::string> argumentLines);
  unsigned handleActionOr(std::vector<std::string> argumentLines);
  unsigned handleActionStringEquals(std::vector<std::string> argumentLines);
  unsigned handleActionStringGreater(std::vector<std::string> argumentLines);
  unsigned handleActionInstanceOf(std::vector<std::string> argumentLines);
  unsigned handleActionStringLess(std::vector<std::string> argumentLines);
  unsigned handleActionGetProperty(std::vector<std::string> argumentLines);
  unsigned handleActionNot(std::vector<std::string> argumentLines);
  unsigned handleActionIncrement(std::vector<std::string> argumentLines);
  unsigned handleActionDecrement(std::vector<std::string> argumentLines);
  unsigned handleActionToString(std::vector<std::string> argumentLines);
  unsigned handleActionToNumber(std::vector<std::string> argumentLines);
  unsigned handleActionToInteger(std::vector<std::string> argumentLines);
  unsigned handleActionTypeOf(std::vector<std::string> argumentLines);
  unsigned handleActionStringLength(std::vector<std::string> argumentLines);
  unsigned handleActionMBStringLength(std::vector<std::string> argumentLines);
  unsigned handleActionCharToAscii(std::vector<std::string> argumentLines);
  unsigned handleActionMBCharToAscii(std::vector<std::string> argumentLines);
  unsigned handleActionAsciiToChar(std::vector<std::string> argumentLines);
  unsigned handleActionMBAsciiToChar(std::vector<std::string> argumentLines);
  unsigned handleActionRandomNumber(std::vector<std::string> argumentLines);
  unsigned handleActionEnumerate(std::vector<std::string> argumentLines);
  unsigned handleActionEnumerate2(std::vector<std::string> argumentLines);
  unsigned handleActionTargetPath(std::vector<std::string> argumentLines);
  unsigned handleActionStringExtract(std::vector<std::string> argumentLines);
  unsigned handleActionMBStringExtract(std::vector<std::string> argumentLines);
  unsigned handleActionSetMember(std::vector<std::string> argumentLines);
  unsigned handleActionSetProperty(std::vector<std::string> argumentLines);
  unsigned handleActionCloneSprite(std::vector<std::string> argumentLines);
  unsigned handleActionDefineLocal(std::vector<std::string> argumentLines);
  unsigned handleActionSetVariable(std::vector<std::string> argumentLines);
  unsigned handleActionGetURL2(std::vector<std::string> argumentLines);
  unsigned handleActionDelete(std::vector<std::string> argumentLines);
  unsigned handleActionExtends(std::vector<std::string> argumentLines);
  unsigned handleActionDefineLocal2(std::vector<std::string> argumentLines);
  unsigned handleActionIf(std::vector<std::string> argumentLines);
  unsigned handleActionCall(std::vector<std::string> argumentLines);
  unsigned handleActionGotoFrame2(std::vector<std::string> argumentLines);
  unsigned handleActionSetTarget2(std::vector<std::string> argumentLines);
  unsigned handleActionRemoveSprite(std::vector<std::string> argumentLines);
  unsigned handleActionWaitForFrame2(std::vector<std::string> argumentLines);
  unsigned handleActionTrace(std::vector<std::string> argumentLines);
  unsigned handleActionDelete2(std::vector<std::string> argumentLines);
  unsigned handleActionWith(std::vector<std::string> argumentLines);
  unsigned handleActionReturn(std::vector<std::string> argumentLines);
  unsigned handleActionThrow(std::vector<std::string> argumentLines);

  // Machine state, in this order. Public so that the engine and its tests can
  // look at a run.
  std::string registers[256];             // "NullValue" after a reset
  std::deque<std::string> operandStack;   // top at the back
  std::vector<std::string> variableNames;   // never filled, searched all the same
  std::vector<std::string> variableValues;  // parallel to variableNames
  std::vector<std::string> statementList;   // the product of a run
  std::vector<std::string> constantPool;    // filled, never read
  CStringUtil stringUtil;

  // Bytes held by the stack entries and the statements, and whether a guard
  // limit was reached in this run.
  size_t machineBytes = 0;
  bool limitReached = false;

 private:
  // Stack and statement list, with the byte accounting of the guards.
  void push(std::string entry);
  std::string pop();
  void clearStack();
  void appendStatement(const std::string& statement);
  // Appends `piece` to a text being built unless that would pass
  // kMaxTextBytes, in which case the run is marked as ended.
  void appendBounded(std::string& text, const std::string& piece);

  // The second "#@x441#" field of an entry that has exactly two, else "".
  std::string valuePart(const std::string& entry);
  // Pops `count` entries when the stack holds that many, else none.
  bool popIfDeep(size_t count);
  // Pops up to `count` entries (as many as there are) and returns their value
  // parts joined by ","; with `commaAfterShort` a comma also follows the last
  // one taken when it was not the count-th (the statement rule of calls).
  std::string popArguments(long count, bool commaAfterShort);
  // Pops `count` entries (top first) when the stack holds that many, else
  // returns as many empty entries.
  std::vector<std::string> popOperands(size_t count);
  // target + "(" + up to the count's value part of arguments + ")".
  std::string invocation(const std::string& target, const std::string& countEntry, bool commaAfterShort);
  // Pushes the call's result placeholder and records its statement.
  unsigned recordCall(const std::string& statement);
  // Pops `pops` entries when the stack is deep enough; pushes `placeholder`
  // unless it is null.
  unsigned replaceOperands(size_t pops, const char* placeholder);
  // Splits each argument line; false when one has unequal key and value counts.
  bool splitLine(const std::string& line, std::vector<std::string>& keys, std::vector<std::string>& values);
  // Reads a register number; -1 unless it is 0 to 255.
  static int registerIndex(const std::string& text);
};
