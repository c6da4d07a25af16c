// Every record's pops and pushes, on a deep and on a short stack, reached
// through its header as the listing walk reaches it.
#include <gtest/gtest.h>

#include <cstring>

#include "ListingText.h"

using namespace listing;

namespace {

// Records grouped by depth and placeholder ("" for none).
struct Fixed {
  std::vector<const char*> names;
  size_t pops;
  const char* placeholder;
};

const Fixed kFixed[] = {
    {{"Add"}, 2, "addResult#@x441#+"},
    {{"Subtract"}, 2, "subResult#@x441#-"},
    {{"Multiply"}, 2, "multyResult#@x441#*"},
    {{"Divide"}, 2, "divideResult#@x441#/"},
    {{"Add2"}, 2, "addResult2#@x441#+"},
    {{"StringAdd"}, 2, "concatStr#@x441#"},
    {{"Modulo"}, 2, "modulo#@x441#0"},
    {{"BitAnd"}, 2, "BitAnd#@x441#0"},
    {{"BitOr"}, 2, "BitOr#@x441#0"},
    {{"BitXor"}, 2, "BitXor#@x441#0"},
    {{"BitLShift"}, 2, "BitLShift#@x441#0"},
    {{"BitRShift"}, 2, "BitRShift#@x441#0"},
    {{"BitURShift"}, 2, "BitURShift#@x441#0"},
    {{"Equals", "Equals2", "StrictEquals", "Less", "Less2", "Greater", "And", "Or", "StringEquals",
      "StringGreater", "InstanceOf"}, 2, "bool#@x441#true"},
    {{"StringLess"}, 2, "strLess#@x441#true"},
    {{"GetProperty"}, 2, "PropertyValue#@x441#0"},
    {{"Not"}, 1, "bool#@x441#true"},
    {{"Increment"}, 1, "Increment#@x441#0"},
    {{"Decrement"}, 1, "Decrement#@x441#0"},
    {{"ToString"}, 1, "ToString#@x441#NULL"},
    {{"ToNumber"}, 1, "ToNumber#@x441#0"},
    {{"ToInteger"}, 1, "ToInt#@x441#0"},
    {{"TypeOf"}, 1, "StrType#@x441#undefined"},
    {{"StringLength"}, 1, "strLen#@x441#0"},
    {{"MBStringLength"}, 1, "MBStrLength#@x441#0"},
    {{"CharToAscii", "MBCharToAscii"}, 1, "ToAscii#@x441#0"},
    {{"AsciiToChar", "MBAsciiToChar"}, 1, "ToChar#@x441#NULL"},
    {{"RandomNumber"}, 1, "randomNumber#@x441#0"},
    {{"Enumerate", "Enumerate2"}, 1, "enumerator#@x441#0"},
    {{"TargetPath"}, 1, "targetPath#@x441#"},
    {{"StringExtract"}, 3, "extractedStr#@x441#NULL"},
    {{"MBStringExtract"}, 3, "MBExtractedStr#@x441#NULL"},
    {{"GetTime"}, 0, "msTime#@x441#0"},
    {{"SetMember", "SetProperty", "CloneSprite"}, 3, ""},
    {{"DefineLocal", "SetVariable", "GetURL2", "Delete", "Extends"}, 2, ""},
    {{"Pop", "DefineLocal2", "If", "Call", "GotoFrame2", "SetTarget2", "RemoveSprite", "WaitForFrame2", "Trace",
      "Delete2", "With", "Return", "Throw"}, 1, ""},
    {{"DefineFunction", "Jump", "EndDrag", "StoreRegister", "StackSwap"}, 0, ""},
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
    for (const char* name : row.names) {
      SCOPED_TRACE(name);
      // Deep stack: exactly `pops` entries go, the one below stays.
      std::vector<std::string> deep = entries(1);
      if (*row.placeholder) deep.push_back(row.placeholder);
      EXPECT_EQ(replayOn(row.pops + 1, name), deep);
      // One entry short: nothing is popped, the placeholder still comes.
      if (row.pops == 0) continue;
      std::vector<std::string> shortStack = entries(row.pops - 1);
      if (*row.placeholder) shortStack.push_back(row.placeholder);
      EXPECT_EQ(replayOn(row.pops - 1, name), shortStack);
    }
  }
}

// Records that read their operands, from a stack pushed bottom first. The
// calls also record their statement, the value part of the entry they push.
struct Built {
  const char* record;
  std::vector<std::string> pushes;
  std::vector<std::string> stack;
};

const char* const kReturned = "returnValueOfFunction#@x441#";

const Built kBuilt[] = {
    {"CallMethod", {num(7), num(0), str("obj"), str("play")}, {"7#@x441#7", "returnValueOfFunction#@x441#obj.play()"}},
    {"CallMethod", {str("b"), str("a"), num(2), str("o"), str("m")}, {"returnValueOfFunction#@x441#o.m(a,b)"}},
    {"CallMethod", {str("a"), num(3), str("o"), str("m")}, {"returnValueOfFunction#@x441#o.m(a,)"}},
    {"CallMethod", {str("o"), str("m")}, {"0#@x441#o", "0#@x441#m", "returnValueOfFunction#@x441#.()"}},
    {"CallFunction", {str("x"), num(2), str("f")}, {"returnValueOfFunction#@x441#f(x,)"}},
    {"CallFunction", {str("f")}, {"0#@x441#f", "returnValueOfFunction#@x441#()"}},
    {"NewObject", {str("a"), num(3), str("Sound")}, {"newObject#@x441#new Sound(a)"}},
    {"NewObject", {str("Sound")}, {"0#@x441#Sound", "newObject#@x441#new ()"}},
    {"NewMethod", {str("b"), str("a"), num(2), str("pkg"), str("C")}, {"New Method#@x441#new pkg.C(a,b)"}},
    {"InitObject", {str("a"), num(1), str("b"), num(2), num(2)}, {"InitObject#@x441#{b:\"2\",a:\"1\"}"}},
    {"InitObject", {str("a"), num(1), num(5)}, {"InitObject#@x441#{a:\"1\"}"}},
    {"InitObject", {}, {"InitObject#@x441#{}"}},
    {"InitArray", {str("keep"), str("x"), str("y"), num(2)}, {"0#@x441#keep"}},
    {"InitArray", {str("x"), num(9)}, {}},
    {"ImplementsOp", {str("keep"), str("i1"), num(1), str("C")}, {"0#@x441#keep"}},
    {"ImplementsOp", {str("C")}, {"0#@x441#C"}},
    {"GetMember", {str("o"), str("m")}, {"valueOfProperty#@x441#o.m"}},
    {"GetMember", {str("m")}, {"0#@x441#m", "valueOfProperty#@x441#."}},
    {"GetVariable", {str("v")}, {"0#@x441#v"}},
    {"GetVariable", {}, {""}},
    {"CastOp", {str("C"), str("obj")}, {"0#@x441#obj"}},
    {"CastOp", {str("obj")}, {"0#@x441#obj", ""}},
    {"StartDrag", {str("keep"), num(0), num(1), str("t")}, {"0#@x441#keep"}},
    {"StartDrag", {str("keep"), num(1), num(2), num(3), num(4), num(1), num(0), str("t")}, {"0#@x441#keep"}},
    // A boolean constrain flag reads "TRUE", which is no number: no rectangle.
    {"StartDrag", {str("a"), str("b"), str("c"), str("d"), pushField("5", "TRUE"), num(0), str("t")},
     {"0#@x441#a", "0#@x441#b", "0#@x441#c", "0#@x441#d"}},
    {"PushDuplicate", {str("a")}, {"0#@x441#a", "0#@x441#a"}},
    {"PushDuplicate", {}, {"", ""}},
    {"StackSwap", {str("a"), str("b")}, {"0#@x441#a", "0#@x441#b"}},
    {"DefineFunction2", {str("a"), str("b")}, {}},
};

TEST(HandlerTable, RecordsThatBuildTextFromTheirOperands) {
  for (const Built& row : kBuilt) {
    SCOPED_TRACE(std::string(row.record) + " on " + std::to_string(row.pushes.size()) + " entries");
    std::vector<std::string> lines;
    if (!row.pushes.empty()) lines = push(row.pushes);
    lines.push_back("[ActionPlay]");  // ends the push's argument lines
    lines.push_back(header(row.record));
    Replay run(lines);
    EXPECT_EQ(run.stack(), row.stack);
    std::vector<std::string> statements;
    if (std::string(row.record).rfind("Call", 0) == 0) statements.push_back(row.stack.back().substr(strlen(kReturned)));
    EXPECT_EQ(run.statements, statements);
  }
}

}  // namespace
