// Whole listings replayed to their statements: the walk, its header tests,
// argument-line collection, registers and the guards.
#include <gtest/gtest.h>

#include "ListingText.h"

using namespace listing;

namespace {

TEST(Replay, MemberReadsAndCallResultsNameTheirParts) {
  // trace(_root.ext.Play()), with a branch label and a jump in the way.
  Replay run(push({num("0"), str("_root")},
                  {"[ActionGetVariable]", "----EMPTY----", "Label#@x442#0x1f", "[ActionPush]", str("ext"),
                   "[ActionGetMember]", "[ActionJump]", "ActionJump#@x441#offset#@x442#4#@x441#address#@x442#1f",
                   "[ActionPush]", str("Play"), "[ActionCallMethod]", "[ActionPush]", num("1"), str("trace"),
                   "[ActionCallFunction]"}));
  EXPECT_EQ(run.statements, (Lines{"_root.ext.Play()", "trace(_root.ext.Play())"}));
}

TEST(Replay, FunctionBodyUsesPreloadedAndParameterRegisters) {
  const std::string f2 = "ActionDefineFunction2#@x441#";
  // player.start(this, _root, <unset register>)
  Replay run(push({str("left over")},
                  {"[ActionDefineFunction2]", f2 + "oper#@x442#start", f2 + "fName#@x442#thisIsNotAPreload",
                   f2 + "Preloaded#@x442#this", f2 + "Suppressed#@x442#arguments", f2 + "Preloaded#@x442#_root",
                   f2 + "reg$#@x442#3#@x441#param#@x442#player", f2 + "reg$#@x442#300#@x441#param#@x442#ignored",
                   f2 + "oper#@x442#end", "[ActionPush]", reg("0"), reg("2"), reg("1"), num("3"), reg("3"),
                   str("start"), "[ActionCallMethod]"}));
  EXPECT_EQ(run.statements, Lines{"player.start(this,_root,NullValue)"});
  EXPECT_EQ(run.stack(), Lines{"returnValueOfFunction#@x441#player.start(this,_root,NullValue)"});
}

TEST(Replay, HeaderQuirks) {
  struct Case {
    const char* what;
    Lines lines;
    Lines stack;
  };
  const Case cases[] = {
      {"push takes a duplicate header as an empty push", push({str("a")}, {"[ActionPushDuplicate]"}),
       {"0#@x441#a", ""}},
      {"add swallows add2", {"[ActionAdd]", "[ActionAdd2]"}, {"addResult#@x441#+"}},
      {"delete swallows delete2", push({str("a")}, {"[ActionPlay]", "[ActionDelete]", "[ActionDelete2]"}),
       {"0#@x441#a"}},
      {"call swallows a function call", push({num("0"), str("f")}, {"[ActionCall]", "[ActionCallFunction]"}),
       {"7#@x441#0"}},
      {"less-than is passed over", push({str("a"), str("b")}, {"[ActionLessThan]"}), {"0#@x441#a", "0#@x441#b"}},
      {"listed spellings of skipped records", {"[ActionPrevFrame]", "[ActionGoToLabel]", "[ActionGetURL]"}, {}},
      {"skip group comes first", {"[ActionStop][ActionGetTime]"}, {}},
      {"first header of the order wins", {"[ActionGetTime] [ActionPush]"}, {}},
      {"try is passed over, throw pops",
       push({str("a"), str("b")}, {"[ActionTry]", "ActionTry#@x441#oper#@x442#start", "[ActionThrow]"}), {"0#@x441#a"}},
      {"lines without a header are passed over", push({str("a")}, {"garbage", "ActionPush"}), {"0#@x441#a"}},
      {"headers are found anywhere in a line", {"  x[ActionGetTime]y"}, {"msTime#@x441#0"}},
      {"a header inside other brackets", {"[x[ActionPop[ActionGetTime]]"}, {"msTime#@x441#0"}},
  };
  for (const Case& c : cases) {
    Replay run(c.lines);
    EXPECT_EQ(run.stack(), c.stack) << c.what;
    EXPECT_TRUE(run.statements.empty()) << c.what;
  }
}

TEST(Replay, RunsStartFromAResetMachineAndStopAtTheBudget) {
  DeCompiler machine;
  Lines statements{"stale"};
  Lines call = push({num("0"), str("f")}, {"[ActionCallFunction]"});
  firstTimeVal = TimeBudget::nowMicros() - 20000001u;
  machine.SWFDeCompilerMain(call, statements);
  EXPECT_TRUE(statements.empty());
  // A run that leaves register 1 set and an entry on the stack, then a fresh one.
  firstTimeVal = TimeBudget::nowMicros();
  Lines preload = push({}, {"[ActionDefineFunction2]", "ActionDefineFunction2#@x441#Preloaded#@x442#this",
                            "[ActionPush]", str("left")});
  machine.SWFDeCompilerMain(preload, statements);
  machine.SWFDeCompilerMain(call, statements);
  EXPECT_EQ(statements, Lines{"f()"});
  EXPECT_EQ(machine.registers[1], "NullValue");
  EXPECT_EQ(machine.operandStack.size(), 1u);
}

TEST(Replay, DoublingListingStopsAtTheGuard) {
  // Each round doubles the top entry: duplicate it, call f with both copies.
  Lines lines = push({str(std::string(1000, 'x'))});
  for (int round = 0; round < 40; ++round) {
    lines.insert(lines.end(), {"[ActionPlay]", "[ActionPushDuplicate]", "[ActionPush]", num("2"), str("f"),
                               "[ActionCallFunction]"});
  }
  Replay run(lines);
  EXPECT_TRUE(run.machine.limitReached);
  // Every statement kept is whole; the one that would pass the bound is not.
  ASSERT_GT(run.statements.size(), 5u);
  EXPECT_LT(run.statements.size(), 40u);
  EXPECT_LE(run.statements.back().size(), DeCompiler::kMaxTextBytes);
  EXPECT_EQ(run.statements.back().back(), ')');
}

}  // namespace
