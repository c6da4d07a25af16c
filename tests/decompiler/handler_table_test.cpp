// Every record's pops and pushes, on a deep and on a short stack, reached
// through its header as the listing walk reaches it.
#include <gtest/gtest.h>

#include "ListingText.h"

using namespace listing;

namespace {

struct Fixed {
  const char* name;
  size_t pops;
  std::vector<std::string> pushes;
};

const Fixed kFixed[] = {
    {"Pop", 1, {}},
    {"Add", 2, {"addResult#@x441#+"}},
    {"Subtract", 2, {"subResult#@x441#-"}},
    {"Multiply", 2, {"multyResult#@x441#*"}},
    {"Divide", 2, {"divideResult#@x441#/"}},
    {"Add2", 2, {"addResult2#@x441#+"}},
    {"StringAdd", 2, {"concatStr#@x441#"}},
    {"Modulo", 2, {"modulo#@x441#0"}},
    {"BitAnd", 2, {"BitAnd#@x441#0"}},
    {"BitOr", 2, {"BitOr#@x441#0"}},
    {"BitXor", 2, {"BitXor#@x441#0"}},
    {"BitLShift", 2, {"BitLShift#@x441#0"}},
    {"BitRShift", 2, {"BitRShift#@x441#0"}},
    {"BitURShift", 2, {"BitURShift#@x441#0"}},
    {"Equals", 2, {"bool#@x441#true"}},
    {"Equals2", 2, {"bool#@x441#true"}},
    {"StrictEquals", 2, {"bool#@x441#true"}},
    {"Less", 2, {"bool#@x441#true"}},
    {"Less2", 2, {"bool#@x441#true"}},
    {"Greater", 2, {"bool#@x441#true"}},
    {"And", 2, {"bool#@x441#true"}},
    {"Or", 2, {"bool#@x441#true"}},
    {"StringEquals", 2, {"bool#@x441#true"}},
    {"StringGreater", 2, {"bool#@x441#true"}},
    {"InstanceOf", 2, {"bool#@x441#true"}},
    {"StringLess", 2, {"strLess#@x441#true"}},
    {"GetProperty", 2, {"PropertyValue#@x441#0"}},
    {"Not", 1, {"bool#@x441#true"}},
    {"Increment", 1, {"Increment#@x441#0"}},
    {"Decrement", 1, {"Decrement#@x441#0"}},
    {"ToString", 1, {"ToString#@x441#NULL"}},
    {"ToNumber", 1, {"ToNumber#@x441#0"}},
    {"ToInteger", 1, {"ToInt#@x441#0"}},
    {"TypeOf", 1, {"StrType#@x441#undefined"}},
    {"StringLength", 1, {"strLen#@x441#0"}},
    {"MBStringLength", 1, {"MBStrLength#@x441#0"}},
    {"CharToAscii", 1, {"ToAscii#@x441#0"}},
    {"MBCharToAscii", 1, {"ToAscii#@x441#0"}},
    {"AsciiToChar", 1, {"ToChar#@x441#NULL"}},
    {"MBAsciiToChar", 1, {"ToChar#@x441#NULL"}},
    {"RandomNumber", 1, {"randomNumber#@x441#0"}},
    {"Enumerate", 1, {"enumerator#@x441#0"}},
    {"Enumerate2", 1, {"enumerator#@x441#0"}},
    {"TargetPath", 1, {"targetPath#@x441#"}},
    {"StringExtract", 3, {"extractedStr#@x441#NULL"}},
    {"MBStringExtract", 3, {"MBExtractedStr#@x441#NULL"}},
    {"GetTime", 0, {"msTime#@x441#0"}},
    {"SetMember", 3, {}},
    {"SetProperty", 3, {}},
    {"CloneSprite", 3, {}},
    {"DefineLocal", 2, {}},
    {"SetVariable", 2, {}},
    {"GetURL2", 2, {}},
    {"Delete", 2, {}},
    {"Extends", 2, {}},
    {"DefineLocal2", 1, {}},
    {"If", 1, {}},
    {"Call", 1, {}},
    {"GotoFrame2", 1, {}},
    {"SetTarget2", 1, {}},
    {"RemoveSprite", 1, {}},
    {"WaitForFrame2", 1, {}},
    {"Trace", 1, {}},
    {"Delete2", 1, {}},
    {"With", 1, {}},
    {"Return", 1, {}},
    {"Throw", 1, {}},
    {"DefineFunction", 0, {}},
    {"Jump", 0, {}},
    {"EndDrag", 0, {}},
    {"StoreRegister", 0, {}},
    {"StackSwap", 0, {}},
};

std::vector<std::string> entries(size_t count) {
  std::vector<std::string> e;
  for (size_t i = 0; i < count; ++i) e.push_back("0#@x441#e" + std::to_string(i));
  return e;
}

std::vector<std::string> replayOn(size_t depth, const char* name) {
  std::vector<std::string> lines{header("Push")};
  for (size_t i = 0; i < depth; ++i) lines.push_back(str("e" + std::to_string(i)));
  lines.push_back(header(name));
  return Replay(lines).stack();
}

TEST(HandlerTable, FixedRecordsPopTheirDepthAndPushTheirPlaceholder) {
  for (const Fixed& row : kFixed) {
    SCOPED_TRACE(row.name);
    // Deep stack: exactly `pops` entries go, the one below stays.
    std::vector<std::string> deep = entries(1);
    deep.insert(deep.end(), row.pushes.begin(), row.pushes.end());
    EXPECT_EQ(replayOn(row.pops + 1, row.name), deep);
    // One entry short: nothing is popped, the placeholder still comes.
    if (row.pops > 0) {
      std::vector<std::string> shortStack = entries(row.pops - 1);
      shortStack.insert(shortStack.end(), row.pushes.begin(), row.pushes.end());
      EXPECT_EQ(replayOn(row.pops - 1, row.name), shortStack);
    }
  }
}

struct Built {
  const char* what;
  std::vector<std::string> pushes;  // field lines of one Push record
  const char* record;
  std::vector<std::string> stack;
  std::vector<std::string> statements;
};

const Built kBuilt[] = {
    {"method call", {num(7), num(0), str("obj"), str("play")}, "CallMethod",
     {"7#@x441#7", "returnValueOfFunction#@x441#obj.play()"}, {"obj.play()"}},
    {"method call, two arguments in pop order", {str("b"), str("a"), num(2), str("o"), str("m")}, "CallMethod",
     {"returnValueOfFunction#@x441#o.m(a,b)"}, {"o.m(a,b)"}},
    {"method call, stack dry before the count", {str("a"), num(3), str("o"), str("m")}, "CallMethod",
     {"returnValueOfFunction#@x441#o.m(a,)"}, {"o.m(a,)"}},
    {"method call on a short stack", {str("o"), str("m")}, "CallMethod",
     {"0#@x441#o", "0#@x441#m", "returnValueOfFunction#@x441#.()"}, {".()"}},
    {"function call, one of two arguments", {str("x"), num(2), str("f")}, "CallFunction",
     {"returnValueOfFunction#@x441#f(x,)"}, {"f(x,)"}},
    {"function call on a short stack", {str("f")}, "CallFunction",
     {"0#@x441#f", "returnValueOfFunction#@x441#()"}, {"()"}},
    {"construction, dry stack leaves no comma", {str("a"), num(3), str("Sound")}, "NewObject",
     {"newObject#@x441#new Sound(a)"}, {}},
    {"construction on a short stack", {str("Sound")}, "NewObject",
     {"0#@x441#Sound", "newObject#@x441#new ()"}, {}},
    {"method construction", {str("b"), str("a"), num(2), str("pkg"), str("C")}, "NewMethod",
     {"New Method#@x441#new pkg.C(a,b)"}, {}},
    {"object literal", {str("a"), num(1), str("b"), num(2), num(2)}, "InitObject",
     {"InitObject#@x441#{b:\"2\",a:\"1\"}"}, {}},
    {"object literal, count past the stack", {str("a"), num(1), num(5)}, "InitObject",
     {"InitObject#@x441#{a:\"1\"}"}, {}},
    {"object literal on an empty stack", {}, "InitObject", {"InitObject#@x441#{}"}, {}},
    {"array literal pops count and elements", {str("keep"), str("x"), str("y"), num(2)}, "InitArray",
     {"0#@x441#keep"}, {}},
    {"array literal, count past the stack", {str("x"), num(9)}, "InitArray", {}, {}},
    {"implements pops constructor, count, interfaces", {str("keep"), str("i1"), num(1), str("C")}, "ImplementsOp",
     {"0#@x441#keep"}, {}},
    {"implements on a short stack", {str("C")}, "ImplementsOp", {"0#@x441#C"}, {}},
    {"member read", {str("o"), str("m")}, "GetMember", {"valueOfProperty#@x441#o.m"}, {}},
    {"member read on a short stack", {str("m")}, "GetMember", {"0#@x441#m", "valueOfProperty#@x441#."}, {}},
    {"variable read keeps the name entry", {str("v")}, "GetVariable", {"0#@x441#v"}, {}},
    {"variable read on an empty stack", {}, "GetVariable", {""}, {}},
    {"cast keeps the object", {str("C"), str("obj")}, "CastOp", {"0#@x441#obj"}, {}},
    {"cast on a short stack", {str("obj")}, "CastOp", {"0#@x441#obj", ""}, {}},
    {"drag without constraint", {str("keep"), num(0), num(1), str("t")}, "StartDrag", {"0#@x441#keep"}, {}},
    {"drag with constraint rectangle", {str("keep"), num(1), num(2), num(3), num(4), num(1), num(0), str("t")},
     "StartDrag", {"0#@x441#keep"}, {}},
    {"constraint flag TRUE reads as zero",
     {str("a"), str("b"), str("c"), str("d"), pushField("5", "TRUE"), num(0), str("t")}, "StartDrag",
     {"0#@x441#a", "0#@x441#b", "0#@x441#c", "0#@x441#d"}, {}},
    {"duplicate", {str("a")}, "PushDuplicate", {"0#@x441#a", "0#@x441#a"}, {}},
    {"duplicate on an empty stack", {}, "PushDuplicate", {"", ""}, {}},
    {"swap leaves the order", {str("a"), str("b")}, "StackSwap", {"0#@x441#a", "0#@x441#b"}, {}},
    {"function definition empties the stack", {str("a"), str("b")}, "DefineFunction2", {}, {}},
};

TEST(HandlerTable, RecordsThatBuildTextFromTheirOperands) {
  for (const Built& row : kBuilt) {
    SCOPED_TRACE(row.what);
    std::vector<std::string> lines;
    if (!row.pushes.empty()) lines = push(row.pushes);
    lines.push_back("[ActionPlay]");  // ends the push's argument lines
    lines.push_back(header(row.record));
    Replay run(lines);
    EXPECT_EQ(run.stack(), row.stack);
    EXPECT_EQ(run.statements, row.statements);
    EXPECT_EQ(run.code, 1000u);
  }
}

}  // namespace
