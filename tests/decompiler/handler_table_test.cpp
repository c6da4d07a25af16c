// Every record's pops and pushes, on a deep and on a short stack, reached
// through its header as the listing walk reaches it.
#include <gtest/gtest.h>

#include "ListingText.h"

using namespace listing;

namespace {

// Records grouped by depth and placeholder ("" for none; "*" in a
// placeholder stands for the record's name).
struct Fixed {
  std::vector<const char*> names;
  size_t pops;
  std::string placeholder;
};

const Fixed kFixed[] = {
    {{"Add"}, 2, "addResult#@x441#+"},
    {{"Subtract"}, 2, "subResult#@x441#-"},
    {{"Multiply"}, 2, "multyResult#@x441#*"},
    {{"Divide"}, 2, "divideResult#@x441#/"},
    {{"Add2"}, 2, "addResult2#@x441#+"},
    {{"StringAdd"}, 2, "concatStr#@x441#"},
    {{"Modulo"}, 2, "modulo#@x441#0"},
    {{"BitAnd", "BitOr", "BitXor", "BitLShift", "BitRShift", "BitURShift"}, 2, "*#@x441#0"},
    {{"Equals", "Equals2", "StrictEquals", "Less", "Less2", "Greater", "And", "Or", "StringEquals",
      "StringGreater", "InstanceOf"}, 2, "bool#@x441#true"},
    {{"StringLess"}, 2, "strLess#@x441#true"},
    {{"GetProperty"}, 2, "PropertyValue#@x441#0"},
    {{"Not"}, 1, "bool#@x441#true"},
    {{"Increment", "Decrement", "ToNumber"}, 1, "*#@x441#0"},
    {{"ToString"}, 1, "ToString#@x441#NULL"},
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

// The stack after `depth` pushed entries e0, e1, ... and the record.
Lines replayOn(size_t depth, const std::string& name) {
  Lines lines{"[ActionPush]"};
  for (size_t i = 0; i < depth; ++i) lines.push_back(str("e" + std::to_string(i)));
  lines.push_back("[Action" + name + "]");
  return Replay(lines).stack();
}

TEST(HandlerTable, FixedRecordsPopTheirDepthAndPushTheirPlaceholder) {
  for (const Fixed& row : kFixed) {
    for (const std::string name : row.names) {
      std::string placeholder = row.placeholder[0] == '*' ? name + row.placeholder.substr(1) : row.placeholder;
      // Deep stack: exactly `pops` entries go, the one below stays. One entry
      // short: nothing is popped, the placeholder still comes.
      Lines deep{"0#@x441#e0"};
      Lines shortStack;
      for (size_t i = 0; i + 1 < row.pops; ++i) shortStack.push_back("0#@x441#e" + std::to_string(i));
      for (Lines* stack : {&deep, &shortStack}) {
        if (!placeholder.empty()) stack->push_back(placeholder);
      }
      EXPECT_EQ(replayOn(row.pops + 1, name), deep) << name;
      if (row.pops > 0) {
        EXPECT_EQ(replayOn(row.pops - 1, name), shortStack) << name;
      }
    }
  }
}

// Records that read their operands, from a stack pushed bottom first. The
// calls also record their statement, the value part of the entry they push.
struct Built {
  const char* record;
  Lines pushes;
  Lines stack;
};

const Built kBuilt[] = {
    {"CallMethod", {num("7"), num("0"), str("obj"), str("play")},
     {"7#@x441#7", "returnValueOfFunction#@x441#obj.play()"}},
    {"CallMethod", {str("b"), str("a"), num("2"), str("o"), str("m")}, {"returnValueOfFunction#@x441#o.m(a,b)"}},
    {"CallMethod", {str("o"), str("m")}, {"0#@x441#o", "0#@x441#m", "returnValueOfFunction#@x441#.()"}},
    // A three-field entry, an undefined push (written without separators) and
    // an empty string all have an empty value part.
    {"CallMethod",
     {str("x"), "ActionPush#type:3#value:undefined", str("y#@x441#z#@x442#w"), str(""), num("4"), str("o"), str("m")},
     {"returnValueOfFunction#@x441#o.m(,,,x)"}},
    {"CallFunction", {str("x"), num("2"), str("f")}, {"returnValueOfFunction#@x441#f(x,)"}},
    {"CallFunction", {str("f")}, {"0#@x441#f", "returnValueOfFunction#@x441#()"}},
    // Counts are read as long: beyond 32 bits they are huge or negative,
    // never narrowed (2^32 + 1 is not 1).
    {"CallFunction", {str("x"), num("4294967297"), str("f")}, {"returnValueOfFunction#@x441#f(x,)"}},
    {"CallFunction", {str("x"), num("99999999999999999999"), str("f")}, {"returnValueOfFunction#@x441#f(x,)"}},
    {"CallFunction", {str("x"), num("-4294967295"), str("f")}, {"0#@x441#x", "returnValueOfFunction#@x441#f()"}},
    {"NewObject", {str("a"), num("3"), str("Sound")}, {"newObject#@x441#new Sound(a)"}},
    {"NewObject", {str("Sound")}, {"0#@x441#Sound", "newObject#@x441#new ()"}},
    {"NewMethod", {str("b"), str("a"), num("2"), str("pkg"), str("C")}, {"New Method#@x441#new pkg.C(a,b)"}},
    {"InitObject", {str("a"), num("1"), str("b"), num("2"), num("2")}, {"InitObject#@x441#{b:\"2\",a:\"1\"}"}},
    {"InitObject", {str("a"), num("1"), num("5")}, {"InitObject#@x441#{a:\"1\"}"}},
    {"InitObject", {}, {"InitObject#@x441#{}"}},
    {"InitArray", {str("keep"), str("x"), str("y"), num("2")}, {"0#@x441#keep"}},
    {"InitArray", {str("x"), num("9")}, {}},
    {"ImplementsOp", {str("keep"), str("i1"), num("1"), str("C")}, {"0#@x441#keep"}},
    {"ImplementsOp", {str("C")}, {"0#@x441#C"}},
    {"GetMember", {str("o"), str("m")}, {"valueOfProperty#@x441#o.m"}},
    {"GetMember", {str("m")}, {"0#@x441#m", "valueOfProperty#@x441#."}},
    {"GetVariable", {str("v")}, {"0#@x441#v"}},
    {"GetVariable", {}, {""}},
    {"CastOp", {str("C"), str("obj")}, {"0#@x441#obj"}},
    {"CastOp", {str("obj")}, {"0#@x441#obj", ""}},
    {"StartDrag", {str("keep"), num("1"), num("2"), num("3"), num("4"), num("1"), num("0"), str("t")},
     {"0#@x441#keep"}},
    // A boolean constrain flag reads "TRUE", which is no number: no rectangle.
    {"StartDrag", {str("a"), str("b"), str("c"), str("d"), pushField("5", "TRUE"), num("0"), str("t")},
     {"0#@x441#a", "0#@x441#b", "0#@x441#c", "0#@x441#d"}},
    // Registers are resolved at push time; a number out of range, also one
    // beyond 32 bits (read as long, never narrowed), names no register.
    {"Play", {reg("0"), reg("256"), reg("-1"), reg("4294967296"), reg("4294967297"), reg("-4294967295")},
     {"4#@x441#NullValue", "4#@x441#", "4#@x441#", "4#@x441#", "4#@x441#", "4#@x441#"}},
    {"PushDuplicate", {str("a")}, {"0#@x441#a", "0#@x441#a"}},
    {"PushDuplicate", {}, {"", ""}},
    {"StackSwap", {str("a"), str("b")}, {"0#@x441#a", "0#@x441#b"}},
    {"DefineFunction2", {str("a"), str("b")}, {}},
};

TEST(HandlerTable, RecordsThatBuildTextFromTheirOperands) {
  for (const Built& row : kBuilt) {
    SCOPED_TRACE(std::string(row.record) + " on " + std::to_string(row.pushes.size()) + " entries");
    // "[ActionPlay]" ends the push's argument lines.
    Replay run(push(row.pushes, {"[ActionPlay]", std::string("[Action") + row.record + "]"}));
    EXPECT_EQ(run.stack(), row.stack);
    Lines statements;
    const std::string returned = "returnValueOfFunction#@x441#";
    if (std::string(row.record).rfind("Call", 0) == 0) statements.push_back(row.stack.back().substr(returned.size()));
    EXPECT_EQ(run.statements, statements);
  }
}

}  // namespace
