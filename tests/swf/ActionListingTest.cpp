#include <cstring>

#include "swf/ListingFixture.h"

using swf::ActionBuilder;
using swf::PushValue;
using swf::u16;
using swf::u8;

namespace {

struct Case {
  const char* what;
  std::string bytes;
  Lines expected;
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.what; }

const std::string P = "ActionPush#@x441#type#@x442#";
const std::string F2 = "ActionDefineFunction2#@x441#";

class RecordListing : public ListingTest, public ::testing::WithParamInterface<Case> {};

TEST_P(RecordListing, WritesTheExpectedLines) { EXPECT_EQ(listBlock(GetParam().bytes), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(
    ActionKinds, RecordListing,
    ::testing::Values(
        Case{"irregular names", ActionBuilder().op(0x05).op(0x0F).op(0x2D).op(0x48).op(0x00).op(0x06).bytes(),
             {"[ActionPrevFrame]", "[ActionLessThan]", "[FSCommand2]", "[ActionLess2]", "[ActionEnd]", "[ActionPlay]"}},
        Case{"call has a length but no fields", ActionBuilder().record(0x9E, "").op(0x07).bytes(),
             {"[ActionCall]", "[ActionStop]"}},
        Case{"unknown codes, with and without operands", ActionBuilder().op(0x16).record(0xA0, "xy").op(0x56).bytes(),
             {"[UnknownAction]", "UnknownAction#@x441#type#@x442#22", "UnknownAction#@x441#Oper#@x442#Show_Hex_Data",
              "[UnknownAction]", "UnknownAction#@x441#type#@x442#160", "UnknownAction#@x441#Oper#@x442#Show_Hex_Data",
              "[UnknownAction]", "UnknownAction#@x441#type#@x442#86", "UnknownAction#@x441#Oper#@x442#Show_Hex_Data"}},
        Case{"goto frame", ActionBuilder().gotoFrame(513).bytes(),
             {"[ActionGotoFrame]", "ActionGotoFrame#@x441#value#@x442#513"}},
        Case{"get url", ActionBuilder().getURL("http://a/b", "_self").bytes(),
             {"[ActionGetURL]", "ActionGetURL#@x441#urlString#@x442#http://a/b",
              "ActionGetURL#@x441#targetString#@x442#_self"}},
        Case{"store register", ActionBuilder().storeRegister(200).bytes(),
             {"[ActionStoreRegister]", "ActionStoreRegister#@x441#reg#@x442#200"}},
        Case{"strict mode", ActionBuilder().record(0x89, u8(1)).record(0x89, u8(0)).bytes(),
             {"[strictMode]", "strictMode#@x441#oper#@x442#On", "[strictMode]", "strictMode#@x441#oper#@x442#Off"}},
        Case{"wait for frame", ActionBuilder().record(0x8A, u16(300) + u8(2)).bytes(),
             {"[ActionWaitForFrame]", "ActionWaitForFrame#@x441#start#@x442#300", "ActionWaitForFrame#@x441#end#@x442#2"}},
        Case{"wait for frame 2", ActionBuilder().record(0x8D, u8(4)).bytes(),
             {"[ActionWaitForFrame2]", "ActionWaitForFrame2#@x441#oper#@x442#start",
              "ActionWaitForFrame2#@x441#oper#@x442#end"}},
        Case{"set target and label", ActionBuilder().record(0x8B, swf::cstr("_root.a")).record(0x8C, swf::cstr("intro")).bytes(),
             {"[ActionSetTarget]", "ActionSetTarget#@x441#targetName#@x442#_root.a", "[ActionGoToLabel]",
              "ActionGoToLabel#@x441#label#@x442#intro"}},
        Case{"with", ActionBuilder().with(7).bytes(),
             {"[ActionWith]", "ActionWith#@x441#oper#@x442#start", "ActionWith#@x441#oper#@x442#end"}},
        Case{"try, catch in register", ActionBuilder().tryBlock(0x05, 1, 2, 3, "", 2).bytes(),
             {"[ActionTry]", "ActionTry#@x441#oper#@x442#start", "ActionTry#@x441#oper#@x442#catch#@x441#InRegNum#@x442#2",
              "ActionTry#@x441#oper#@x442#catch_block", "ActionTry#@x441#oper#@x442#finally_block",
              "ActionTry#@x441#oper#@x442#end"}},
        Case{"try, catch variable", ActionBuilder().tryBlock(0x02, 1, 0, 3, "e", 0).bytes(),
             {"[ActionTry]", "ActionTry#@x441#oper#@x442#start", "ActionTry#@x441#oper#@x442#catch#@x441#InMem#@x442#e",
              "ActionTry#@x441#oper#@x442#catch_block", "ActionTry#@x441#oper#@x442#finally_block",
              "ActionTry#@x441#oper#@x442#end"}},
        Case{"define function", ActionBuilder().defineFunction("f", {"a", "b"}, 0).bytes(),
             {"[ActionDefineFunction]", "ActionDefineFunction#@x441#oper#@x442#start",
              "ActionDefineFunction#@x441#fName#@x442#f", "ActionDefineFunction#@x441#argname#@x442#a",
              "ActionDefineFunction#@x441#argname#@x442#b", "ActionDefineFunction#@x441#oper#@x442#end"}},
        Case{"define function 2: preloads take registers 1, 2; params",
             ActionBuilder().defineFunction2("g", 4, 0x0005, {{1, "x"}, {3, "y"}, {0, "z"}, {3, "w"}}, 0).bytes(),
             {"[ActionDefineFunction2]", F2 + "oper#@x442#start", F2 + "nregisters#@x442#4#@x441#numParams#@x442#4",
              F2 + "fName#@x442#g", F2 + "Preloaded#@x442#this", F2 + "Preloaded#@x442#arguments",
              F2 + "error#@x442#Duplicate register allocation", F2 + "reg$#@x442#1#@x441#param#@x442#x",
              F2 + "reg$#@x442#3#@x441#param#@x442#y", F2 + "mem#@x442#fix#@x441#param#@x442#z",
              F2 + "error#@x442#Duplicate register allocation", F2 + "reg$#@x442#3#@x441#param#@x442#w",
              F2 + "oper#@x442#end"}},
        Case{"define function 2: flags in table order, both set, unknown bit",
             ActionBuilder().defineFunction2("", 3, 0x0288 | 0x0003, {{1, "p"}, {2, "q"}}, 0).bytes(),
             {"[ActionDefineFunction2]", F2 + "oper#@x442#start", F2 + "nregisters#@x442#3#@x441#numParams#@x442#2",
              F2 + "fName#@x442#", F2 + "error#@x442#Preload and suppress flags are both set",
              F2 + "Suppressed#@x442#arguments", F2 + "Preloaded#@x442#_parent", F2 + "error#@x442#unknown Register flag",
              F2 + "error#@x442#Duplicate register allocation", F2 + "reg$#@x442#1#@x441#param#@x442#p",
              F2 + "reg$#@x442#2#@x441#param#@x442#q", F2 + "oper#@x442#end"}},
        Case{"define function 2: suppress bits and _global",
             ActionBuilder().defineFunction2("h", 0, 0x0122, {}, 0).bytes(),
             {"[ActionDefineFunction2]", F2 + "oper#@x442#start", F2 + "nregisters#@x442#0#@x441#numParams#@x442#0",
              F2 + "fName#@x442#h", F2 + "Suppressed#@x442#this", F2 + "Suppressed#@x442#super",
              F2 + "Preloaded#@x442#_global", F2 + "oper#@x442#end"}}));

struct FlagCase {
  uint8_t flags;
  const char* line;  // nullptr: no field line
};

class GetURL2Flags : public ListingTest, public ::testing::WithParamInterface<FlagCase> {};

TEST_P(GetURL2Flags, MatchTheWholeByte) {
  Lines expected = {"[ActionGetURL2]", std::string("ActionGetURL2#@x441#flag#@x442#") + GetParam().line};
  EXPECT_EQ(listBlock(ActionBuilder().getURL2(GetParam().flags)), expected);
}

INSTANTIATE_TEST_SUITE_P(
    All, GetURL2Flags,
    ::testing::Values(FlagCase{0x00, "None"}, FlagCase{0x01, "GET"}, FlagCase{0x02, "POST"},
                      FlagCase{0x40, "loadMovie"}, FlagCase{0x41, "loadMovie GET"}, FlagCase{0x42, "loadMovie POST"},
                      FlagCase{0x80, "loadVariablesNum"}, FlagCase{0x81, "loadVariablesNum GET"},
                      FlagCase{0x82, "loadVariablesNum POST"}, FlagCase{0xC0, "loadVariables"},
                      FlagCase{0xC1, "loadVariables GET"}, FlagCase{0xC2, "loadVariables POST"},
                      FlagCase{0x03, "unknown"}, FlagCase{0x44, "unknown"}, FlagCase{0xFF, "unknown"}));

class GotoFrame2Flags : public ListingTest, public ::testing::WithParamInterface<FlagCase> {};

TEST_P(GotoFrame2Flags, WriteTheirLinesUnderGetProperty) {
  Lines expected = {"[ActionGotoFrame2]"};
  if (GetParam().line) expected.push_back(std::string("ActionGetProperty#@x441#oper#@x442#") + GetParam().line);
  EXPECT_EQ(listBlock(ActionBuilder().gotoFrame2(GetParam().flags, 258)), expected);
}

INSTANTIATE_TEST_SUITE_P(All, GotoFrame2Flags,
                         ::testing::Values(FlagCase{0, "AndStop"}, FlagCase{1, "AndPlay"},
                                           FlagCase{2, "AndStopSkip#@x441#value#@x442#258"},
                                           FlagCase{3, "AndPlaySkip#@x441#value#@x442#258"},
                                           FlagCase{6, "unknown#@x441#value#@x442#6"},
                                           FlagCase{0x80, "unknown#@x441#value#@x442#128"}));

TEST_F(ListingTest, PushValuesOfEveryType) {
  Lines lines = listBlock(ActionBuilder().push({PushValue::string("abc"), PushValue::float32(1.5f),
                                                PushValue::float32(0.0f), PushValue::float32(21.0f),
                                                PushValue::float32(22.0f), PushValue::float32(7.5f),
                                                PushValue::float32(-1.0f), PushValue::null(), PushValue::undefined(),
                                                PushValue::registerNumber(3), PushValue::boolean(1),
                                                PushValue::boolean(0), PushValue::float64(1.0), PushValue::float64(-2.25),
                                                PushValue::integer(-7), PushValue::integer(2147483647),
                                                PushValue::raw(10, swf::cstr("never read"))}));
  Lines expected = {"[ActionPush]",
                    P + "0#@x441#value#@x442#abc",
                    P + "1#@x441#value#@x442#1.500000",
                    P + "1#@x441#value#@x442#X_PROPERTY",
                    P + "1#@x441#value#@x442#YMOUSE_PROPERTY",
                    P + "1#@x441#value#@x442#22.000000",
                    P + "1#@x441#value#@x442#7.500000",
                    P + "1#@x441#value#@x442#-1.000000",
                    P + "2#@x441#value#@x442#null",
                    "ActionPush#type:3#value:undefined",
                    P + "4#@x441#reg$#@x442#3",
                    P + "5#@x441#value#@x442#TRUE",
                    P + "5#@x441#value#@x442#FALSE",
                    P + "6#@x441#value#@x442#1.000000",
                    P + "6#@x441#value#@x442#-2.250000",
                    P + "7#@x441#value#@x442#-7",
                    P + "7#@x441#value#@x442#2147483647",
                    P + "@#@x441#type#@x442#10"};
  EXPECT_EQ(lines, expected);
}

TEST_F(ListingTest, ConstantsComeFromTheLastPoolOfTheSameBlock) {
  ActionBuilder first;
  first.push({PushValue::constant8(0)})
      .constantPool({"old"})
      .constantPool({"a", "b"})
      .push({PushValue::constant8(1), PushValue::constant16(0), PushValue::constant8(2)});
  Lines expected = {"[ActionPush]",
                    P + "8#@x441#value#@x442#Abnormal_ConstData",
                    "[ActionConstantPool]",
                    "ActionConstantPool#@x441#value#@x442#old",
                    "[ActionConstantPool]",
                    "ActionConstantPool#@x441#value#@x442#a",
                    "ActionConstantPool#@x441#value#@x442#b",
                    "[ActionPush]",
                    P + "8#@x441#value#@x442#b",
                    P + "9#@x441#value#@x442#a",
                    P + "8#@x441#value#@x442#error"};
  EXPECT_EQ(listBlock(first), expected);
  // A later block does not see the pool of an earlier one.
  EXPECT_EQ(listBlock(ActionBuilder().push({PushValue::constant16(0)})),
            (Lines{"[ActionPush]", P + "9#@x441#value#@x442#Abnormal_ConstData"}));
}

TEST_F(ListingTest, APoolWhoseEntriesDoNotFitKeepsTheOnesThatDo) {
  ActionBuilder actions;
  actions.record(0x88, u16(3) + swf::cstr("a") + swf::cstr("b") + "unterminated")
      .push({PushValue::constant8(1), PushValue::constant8(2)});
  Lines expected = {"[ActionConstantPool]",
                    "ActionConstantPool#@x441#value#@x442#a",
                    "ActionConstantPool#@x441#value#@x442#b",
                    "ActionConstantPool#@x441#value#@x442#constant pool length error",
                    "[ActionPush]",
                    P + "8#@x441#value#@x442#b",
                    P + "8#@x441#value#@x442#error"};
  EXPECT_EQ(listBlock(actions), expected);
}

TEST_F(ListingTest, ForwardBranchTargetsGetALabelBeforeTheirRecord) {
  // If at 0 (5 bytes) skips the Play at 5 to the Stop at 6; the Jump at 7
  // goes back to itself (offset -5) and gets no label.
  ActionBuilder actions;
  actions.branchIf(1).op(0x06).op(0x07).jump(-5).op(0x06);
  Lines expected = {"[ActionIf]",
                    "ActionIf#@x441#offset#@x442#1#@x441#address#@x442#106",
                    "[ActionPlay]",
                    "----EMPTY----",
                    "Label#@x442#0x106",
                    "[ActionStop]",
                    "[ActionJump]",
                    "ActionJump#@x441#offset#@x442#fffffffb#@x441#address#@x442#107",
                    "[ActionPlay]"};
  EXPECT_EQ(listBlock(actions, 0x100), expected);
}

TEST_F(ListingTest, LabelsStayInTheBlockOfTheirBranch) {
  // The first block jumps 10 bytes past its own end: the identifier of a
  // record of the second block, which must not get a label.
  Lines first = listBlock(ActionBuilder().jump(10), 0);
  EXPECT_EQ(first[1], "ActionJump#@x441#offset#@x442#a#@x441#address#@x442#f");
  Lines second = listBlock(ActionBuilder().op(0x06).op(0x06).op(0x06).op(0x06).op(0x06).op(0x07), 10);
  EXPECT_EQ(second, (Lines{"[ActionPlay]", "[ActionPlay]", "[ActionPlay]", "[ActionPlay]", "[ActionPlay]", "[ActionStop]"}));
  // A branch into the middle of a record labels nothing.
  Lines inside = listBlock(ActionBuilder().jump(1).gotoFrame(1).op(0x07));
  EXPECT_EQ(inside.size(), 5u);
}

TEST_F(ListingTest, TruncatedRecordsListWhatCouldBeRead) {
  struct Truncated {
    std::string bytes;
    Lines expected;
  };
  const Truncated cases[] = {
      // operands running past the block end the walk before the record
      {ActionBuilder().op(0x06).raw(u8(0x96) + u16(16) + "ab").bytes(), {"[ActionPlay]"}},
      {ActionBuilder().op(0x06).raw("\x96\x01").bytes(), {"[ActionPlay]"}},
      // values cut inside their record
      {ActionBuilder().push({PushValue::string("a"), PushValue::raw(6, "\x01\x02\x03\x04")}).bytes(),
       {"[ActionPush]", P + "0#@x441#value#@x442#a"}},
      {ActionBuilder().push({PushValue::raw(0, "no end")}).bytes(), {"[ActionPush]"}},
      {ActionBuilder().record(0x99, "\x01").op(0x07).bytes(), {"[ActionJump]", "[ActionStop]"}},
      {ActionBuilder().record(0x8A, u8(1)).bytes(), {"[ActionWaitForFrame]"}},
      {ActionBuilder().record(0x83, swf::cstr("u") + "t").bytes(),
       {"[ActionGetURL]", "ActionGetURL#@x441#urlString#@x442#u"}},
      {ActionBuilder().record(0x9F, u8(2) + u8(1)).bytes(), {"[ActionGotoFrame2]"}},
      {ActionBuilder().record(0x88, u8(1)).bytes(),
       {"[ActionConstantPool]", "ActionConstantPool#@x441#value#@x442#constant pool length error"}},
      {ActionBuilder().record(0x8E, swf::cstr("f") + u16(2)).bytes(),
       {"[ActionDefineFunction2]", F2 + "oper#@x442#start", F2 + "fName#@x442#f", F2 + "oper#@x442#end"}},
      {ActionBuilder().record(0x9B, swf::cstr("f") + u16(3) + swf::cstr("a") + "b").bytes(),
       {"[ActionDefineFunction]", "ActionDefineFunction#@x441#oper#@x442#start", "ActionDefineFunction#@x441#fName#@x442#f",
        "ActionDefineFunction#@x441#argname#@x442#a", "ActionDefineFunction#@x441#oper#@x442#end"}},
      {ActionBuilder().record(0x8F, u8(0)).bytes(),
       {"[ActionTry]", "ActionTry#@x441#oper#@x442#start", "ActionTry#@x441#oper#@x442#catch_block",
        "ActionTry#@x441#oper#@x442#finally_block", "ActionTry#@x441#oper#@x442#end"}},
  };
  for (const Truncated& c : cases) EXPECT_EQ(listBlock(c.bytes), c.expected);
  EXPECT_TRUE(listBlock(std::string()).empty());
}

TEST_F(ListingTest, LongFieldLinesAreCutAt1255Bytes) {
  std::string text(2000, 'a');
  Lines lines = listBlock(ActionBuilder().push({PushValue::string(text)}));
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1].size(), 1255u);
  EXPECT_EQ(lines[1], (P + "0#@x441#value#@x442#" + text).substr(0, 1255));
}

}  // namespace
