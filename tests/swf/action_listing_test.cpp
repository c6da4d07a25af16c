#include "swf/ListingFixture.h"

using swf::ActionBuilder;
using swf::cstr;
using swf::u16;
using swf::u8;

namespace {

std::string rec(uint8_t code, const std::string& operands) { return ActionBuilder().record(code, operands).bytes(); }
std::string df2(const std::string& name, uint16_t params, uint8_t regs, uint16_t flags, const std::string& rest) {
  return rec(0x8E, cstr(name) + u16(params) + u8(regs) + u16(flags) + rest + u16(0));
}

// One record: its name line, then a line per field, each the field name,
// "#@x441#" and the field's text.
struct Record {
  std::string bytes;
  const char* nameLine;
  const char* fieldName;
  std::vector<std::string> fields;
};

TEST_F(ListingTest, EveryKindOfRecordWithItsFieldLines) {
  const std::string start = "oper#@x442#start", end = "oper#@x442#end";
  const Record records[] = {
      {rec(0x9E, ""), "[ActionCall]", "", {}},
      {"\x16", "[UnknownAction]", "UnknownAction", {"type#@x442#22", "Oper#@x442#Show_Hex_Data"}},
      {rec(0xA0, "xy"), "[UnknownAction]", "UnknownAction", {"type#@x442#160", "Oper#@x442#Show_Hex_Data"}},
      {rec(0x81, u16(513)), "[ActionGotoFrame]", "ActionGotoFrame", {"value#@x442#513"}},
      {rec(0x83, cstr("http://a/b") + cstr("_self")), "[ActionGetURL]", "ActionGetURL",
       {"urlString#@x442#http://a/b", "targetString#@x442#_self"}},
      {rec(0x87, u8(200)), "[ActionStoreRegister]", "ActionStoreRegister", {"reg#@x442#200"}},
      {rec(0x89, u8(1)), "[strictMode]", "strictMode", {"oper#@x442#On"}},
      {rec(0x89, u8(0)), "[strictMode]", "strictMode", {"oper#@x442#Off"}},
      {rec(0x8A, u16(300) + u8(2)), "[ActionWaitForFrame]", "ActionWaitForFrame", {"start#@x442#300", "end#@x442#2"}},
      {rec(0x8D, u8(4)), "[ActionWaitForFrame2]", "ActionWaitForFrame2", {start, end}},
      {rec(0x8B, cstr("_root.a")), "[ActionSetTarget]", "ActionSetTarget", {"targetName#@x442#_root.a"}},
      {rec(0x8C, cstr("intro")), "[ActionGoToLabel]", "ActionGoToLabel", {"label#@x442#intro"}},
      {rec(0x94, u16(7)), "[ActionWith]", "ActionWith", {start, end}},
      {rec(0x8F, u8(5) + u16(1) + u16(2) + u16(3) + u8(2)), "[ActionTry]", "ActionTry",
       {start, "oper#@x442#catch#@x441#InRegNum#@x442#2", "oper#@x442#catch_block", "oper#@x442#finally_block", end}},
      {rec(0x8F, u8(2) + u16(1) + u16(0) + u16(3) + cstr("e")), "[ActionTry]", "ActionTry",
       {start, "oper#@x442#catch#@x441#InMem#@x442#e", "oper#@x442#catch_block", "oper#@x442#finally_block", end}},
      {rec(0x9B, cstr("f") + u16(2) + cstr("a") + cstr("b") + u16(0)), "[ActionDefineFunction]",
       "ActionDefineFunction", {start, "fName#@x442#f", "argname#@x442#a", "argname#@x442#b", end}},
      // Preloads take registers 1, 2, ...; a parameter in a taken register is
      // listed after its error line; register 0 means no register.
      {df2("g", 4, 4, 0x0005, u8(1) + cstr("x") + u8(3) + cstr("y") + u8(0) + cstr("z") + u8(3) + cstr("w")),
       "[ActionDefineFunction2]", "ActionDefineFunction2",
       {start, "nregisters#@x442#4#@x441#numParams#@x442#4", "fName#@x442#g", "Preloaded#@x442#this",
        "Preloaded#@x442#arguments", "error#@x442#Duplicate register allocation", "reg$#@x442#1#@x441#param#@x442#x",
        "reg$#@x442#3#@x441#param#@x442#y", "mem#@x442#fix#@x441#param#@x442#z",
        "error#@x442#Duplicate register allocation", "reg$#@x442#3#@x441#param#@x442#w", end}},
      // Flags in table order: both bits of "this", suppressed "arguments",
      // "_parent" and "_global" preloaded, then an unknown bit.
      {df2("", 2, 3, 0x038B, u8(1) + cstr("p") + u8(3) + cstr("q")), "[ActionDefineFunction2]", "ActionDefineFunction2",
       {start, "nregisters#@x442#3#@x441#numParams#@x442#2", "fName#@x442#",
        "error#@x442#Preload and suppress flags are both set", "Suppressed#@x442#arguments", "Preloaded#@x442#_parent",
        "Preloaded#@x442#_global", "error#@x442#unknown Register flag", "error#@x442#Duplicate register allocation",
        "reg$#@x442#1#@x441#param#@x442#p", "reg$#@x442#3#@x441#param#@x442#q", end}},
      // GetURL2 flags are matched as a whole byte.
      {rec(0x9A, u8(0x00)), "[ActionGetURL2]", "ActionGetURL2", {"flag#@x442#None"}},
      {rec(0x9A, u8(0x41)), "[ActionGetURL2]", "ActionGetURL2", {"flag#@x442#loadMovie GET"}},
      {rec(0x9A, u8(0x82)), "[ActionGetURL2]", "ActionGetURL2", {"flag#@x442#loadVariablesNum POST"}},
      {rec(0x9A, u8(0xC0)), "[ActionGetURL2]", "ActionGetURL2", {"flag#@x442#loadVariables"}},
      {rec(0x9A, u8(0x44)), "[ActionGetURL2]", "ActionGetURL2", {"flag#@x442#unknown"}},
      // GotoFrame2 writes its fields under the name ActionGetProperty.
      {rec(0x9F, u8(0)), "[ActionGotoFrame2]", "ActionGetProperty", {"oper#@x442#AndStop"}},
      {rec(0x9F, u8(2) + u16(258)), "[ActionGotoFrame2]", "ActionGetProperty",
       {"oper#@x442#AndStopSkip#@x441#value#@x442#258"}},
      {rec(0x9F, u8(6)), "[ActionGotoFrame2]", "ActionGetProperty", {"oper#@x442#unknown#@x441#value#@x442#6"}},
      // Operands running past the block end the walk before their record.
      {std::string("\x06\x96\x10\x00" "ab", 6), "[ActionPlay]", "", {}},
      {"\x06\x96\x01", "[ActionPlay]", "", {}},
      // Operands cut inside their record: what could be read is listed.
      {rec(0x96, u8(0) + cstr("a") + u8(6) + "\x01\x02\x03\x04"), "[ActionPush]", "ActionPush",
       {"type#@x442#0#@x441#value#@x442#a"}},
      {rec(0x96, u8(0) + "no end"), "[ActionPush]", "", {}},
      {rec(0x88, u8(1)), "[ActionConstantPool]", "ActionConstantPool", {"value#@x442#constant pool length error"}},
      {rec(0x99, "\x01"), "[ActionJump]", "", {}},
      {rec(0x8A, u8(1)), "[ActionWaitForFrame]", "", {}},
      {rec(0x83, cstr("u") + "t"), "[ActionGetURL]", "ActionGetURL", {"urlString#@x442#u"}},
      {rec(0x9F, u8(2) + u8(1)), "[ActionGotoFrame2]", "", {}},
      {rec(0x8E, cstr("f") + u16(2)), "[ActionDefineFunction2]", "ActionDefineFunction2",
       {start, "fName#@x442#f", end}},
      {rec(0x9B, cstr("f") + u16(3) + cstr("a") + "b"), "[ActionDefineFunction]", "ActionDefineFunction",
       {start, "fName#@x442#f", "argname#@x442#a", end}},
      {rec(0x8F, u8(0)), "[ActionTry]", "ActionTry",
       {start, "oper#@x442#catch_block", "oper#@x442#finally_block", end}},
  };
  for (const Record& r : records) {
    Lines expected{r.nameLine};
    for (const std::string& field : r.fields) expected.push_back(std::string(r.fieldName) + "#@x441#" + field);
    EXPECT_EQ(listBlock(r.bytes), expected) << r.nameLine;
  }
  // Irregular names; the end record does not end the block.
  EXPECT_EQ(listBlock(ActionBuilder().op(0x05).op(0x0F).op(0x2D).op(0x48).op(0x00).op(0x06)),
            (Lines{"[ActionPrevFrame]", "[ActionLessThan]", "[FSCommand2]", "[ActionLess2]", "[ActionEnd]",
                   "[ActionPlay]"}));
}

TEST_F(ListingTest, PushValuesOfEveryType) {
  // Each value's bytes and its field line.
  const std::pair<std::string, std::string> values[] = {
      {u8(0) + cstr("abc"), str("abc")},
      {u8(1) + swf::f32(0.0f), pushField("1", "X_PROPERTY")},
      {u8(1) + swf::f32(21.0f), pushField("1", "YMOUSE_PROPERTY")},
      {u8(1) + swf::f32(22.0f), pushField("1", "22.000000")},
      {u8(1) + swf::f32(7.5f), pushField("1", "7.500000")},
      {u8(1) + swf::f32(-1.0f), pushField("1", "-1.000000")},
      {u8(2), pushField("2", "null")},
      {u8(3), "ActionPush#type:3#value:undefined"},
      {u8(4) + u8(3), reg("3")},
      {u8(5) + u8(1), pushField("5", "TRUE")},
      {u8(5) + u8(0), pushField("5", "FALSE")},
      {u8(6) + swf::avmDouble(-2.25), pushField("6", "-2.250000")},
      {u8(7) + swf::u32(static_cast<uint32_t>(-7)), num("-7")},
      // An unknown type ends the values: the bytes after it are not read.
      {u8(10) + cstr("never read"), "ActionPush#@x441#type#@x442#@#@x441#type#@x442#10"},
  };
  std::string operands;
  Lines expected{"[ActionPush]"};
  for (const auto& [bytes, line] : values) {
    operands += bytes;
    expected.push_back(line);
  }
  EXPECT_EQ(listBlock(rec(0x96, operands)), expected);
}

TEST_F(ListingTest, ConstantsComeFromTheLastPoolOfTheSameBlock) {
  ActionBuilder first;
  first.record(0x96, u8(8) + u8(0)).constantPool({"old"}).constantPool({"a", "b"});
  first.record(0x96, u8(8) + u8(1) + u8(9) + u16(0) + u8(8) + u8(2));
  const std::string pool = "ActionConstantPool#@x441#value#@x442#";
  EXPECT_EQ(listBlock(first), (Lines{"[ActionPush]", pushField("8", "Abnormal_ConstData"),
                                     "[ActionConstantPool]",
                                     pool + "old", "[ActionConstantPool]", pool + "a", pool + "b", "[ActionPush]",
                                     pushField("8", "b"), pushField("9", "a"),
                                     pushField("8", "error")}));
  // A later block does not see the pool of an earlier one.
  EXPECT_EQ(listBlock(rec(0x96, u8(9) + u16(0))),
            (Lines{"[ActionPush]", pushField("9", "Abnormal_ConstData")}));
  // Entries that do not fit end the list with an error; the pool keeps the others.
  ActionBuilder cut;
  cut.record(0x88, u16(3) + cstr("a") + cstr("b") + "unterminated").record(0x96, u8(8) + u8(1) + u8(8) + u8(2));
  EXPECT_EQ(listBlock(cut), (Lines{"[ActionConstantPool]", pool + "a", pool + "b", pool + "constant pool length error",
                                   "[ActionPush]", pushField("8", "b"), pushField("8", "error")}));
}

TEST_F(ListingTest, ForwardBranchTargetsGetALabelBeforeTheirRecord) {
  // If at 0 (5 bytes) skips the Play at 5 to the Stop at 6; the Jump at 7
  // goes back to itself (offset -5) and gets no label.
  ActionBuilder actions;
  actions.branchIf(1).op(0x06).op(0x07).jump(-5).op(0x06);
  EXPECT_EQ(listBlock(actions, 0x100),
            (Lines{"[ActionIf]", "ActionIf#@x441#offset#@x442#1#@x441#address#@x442#106", "[ActionPlay]",
                   "----EMPTY----", "Label#@x442#0x106", "[ActionStop]", "[ActionJump]",
                   "ActionJump#@x441#offset#@x442#fffffffb#@x441#address#@x442#107", "[ActionPlay]"}));
  // A target past the block's end labels nothing in the next block.
  EXPECT_EQ(listBlock(ActionBuilder().jump(10), 0)[1], "ActionJump#@x441#offset#@x442#a#@x441#address#@x442#f");
  EXPECT_EQ(listBlock(std::string(5, '\x06') + "\x07", 10),
            (Lines{"[ActionPlay]", "[ActionPlay]", "[ActionPlay]", "[ActionPlay]", "[ActionPlay]", "[ActionStop]"}));
}

TEST_F(ListingTest, AnEmptyBlockListsNothingAndLongLinesAreCut) {
  EXPECT_TRUE(listBlock(std::string()).empty());
  // Field lines keep their first 1,255 bytes.
  std::string text(2000, 'a');
  Lines lines = listBlock(rec(0x96, u8(0) + cstr(text)));
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1], str(text).substr(0, 1255));
}

}  // namespace
