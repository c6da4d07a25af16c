// Whole listings replayed to their statements: the walk, its header tests,
// argument-line collection, registers and the guards.
#include <gtest/gtest.h>

#include "ListingText.h"

using namespace listing;

namespace {

using Lines = std::vector<std::string>;

TEST(Replay, NestedCallOnALookedUpObject) {
  // getObj("myExt").GetVersion(1), as the lister writes it.
  Replay run({
      "[ActionConstantPool]",
      "ActionConstantPool#@x441#value#@x442#getObj#@x441#value#@x442#myExt",
      "[ActionPush]",
      "ActionPush#@x441#type#@x442#7#@x441#value#@x442#1",
      "ActionPush#@x441#type#@x442#7#@x441#value#@x442#1",
      "ActionPush#@x441#type#@x442#8#@x441#value#@x442#myExt",
      "ActionPush#@x441#type#@x442#7#@x441#value#@x442#1",
      "ActionPush#@x441#type#@x442#8#@x441#value#@x442#getObj",
      "[ActionCallFunction]",
      "[ActionPush]",
      "ActionPush#@x441#type#@x442#0#@x441#value#@x442#GetVersion",
      "[ActionCallMethod]",
      "[ActionPop]",
  });
  EXPECT_EQ(run.statements, (Lines{"getObj(myExt)", "getObj(myExt).GetVersion(1)"}));
  EXPECT_TRUE(run.stack().empty());
  EXPECT_EQ(run.machine.constantPool, (Lines{"getObj", "myExt"}));
}

TEST(Replay, MemberReadsAndCallResultsNameTheirParts) {
  // trace(_root.ext.Play()), with a branch label and a jump in the way.
  Replay run({
      "[ActionPush]", num(0), str("_root"), "[ActionGetVariable]",
      "----EMPTY----", "Label#@x442#0x1f",
      "[ActionPush]", str("ext"), "[ActionGetMember]",
      "[ActionJump]", "ActionJump#@x441#offset#@x442#4#@x441#address#@x442#1f",
      "[ActionPush]", str("Play"), "[ActionCallMethod]",
      "[ActionPush]", num(1), str("trace"), "[ActionCallFunction]",
  });
  EXPECT_EQ(run.statements, (Lines{"_root.ext.Play()", "trace(_root.ext.Play())"}));
}

TEST(Replay, FunctionBodyUsesPreloadedAndParameterRegisters) {
  Replay run({
      "[ActionPush]", str("left over"),
      "[ActionDefineFunction2]",
      "ActionDefineFunction2#@x441#oper#@x442#start",
      "ActionDefineFunction2#@x441#nregisters#@x442#4#@x441#numParams#@x442#1",
      "ActionDefineFunction2#@x441#fName#@x442#thisIsNotAPreload",
      "ActionDefineFunction2#@x441#Preloaded#@x442#this",
      "ActionDefineFunction2#@x441#Suppressed#@x442#arguments",
      "ActionDefineFunction2#@x441#Preloaded#@x442#_root",
      "ActionDefineFunction2#@x441#reg$#@x442#3#@x441#param#@x442#player",
      "ActionDefineFunction2#@x441#reg$#@x442#300#@x441#param#@x442#ignored",
      "ActionDefineFunction2#@x441#oper#@x442#end",
      // player.start(this, _root, <unset register>)
      "[ActionPush]", reg(300), reg(-1), reg(0), reg(2), reg(1), num(3), reg(3), str("start"),
      "[ActionCallMethod]",
  });
  EXPECT_EQ(run.statements, Lines{"player.start(this,_root,NullValue)"});
  EXPECT_EQ(run.stack(), (Lines{"4#@x441#", "4#@x441#", "returnValueOfFunction#@x441#player.start(this,_root,NullValue)"}));
}

TEST(Replay, ValuePartNeedsExactlyTwoFields) {
  // A three-field entry, an undefined push (written without separators) and an
  // empty string all give an empty value part.
  Replay run(join({push({str("x"), "ActionPush#type:3#value:undefined",
                         "ActionPush#@x441#type#@x442#0#@x441#value#@x442#y#@x441#more#@x442#z", str(""), num(4),
                         str("o"), str("m")}),
                   {"[ActionCallMethod]"}}));
  EXPECT_EQ(run.statements, Lines{"o.m(,,,x)"});
}

TEST(Dispatch, HeaderQuirks) {
  struct Case {
    const char* what;
    Lines lines;
    Lines stack;
  };
  const Case cases[] = {
      {"a lone play changes nothing", {"[ActionPlay]"}, {}},
      {"push takes a duplicate header as an empty push", {"[ActionPush]", str("a"), "[ActionPushDuplicate]"},
       {"0#@x441#a", ""}},
      {"add swallows add2", {"[ActionAdd]", "[ActionAdd2]"}, {"addResult#@x441#+"}},
      {"delete swallows delete2", {"[ActionPush]", str("a"), "[ActionPlay]", "[ActionDelete]", "[ActionDelete2]"},
       {"0#@x441#a"}},
      {"call swallows a function call", {"[ActionPush]", num(0), str("f"), "[ActionCall]", "[ActionCallFunction]"},
       {"7#@x441#0"}},
      {"less-than is passed over", {"[ActionPush]", str("a"), str("b"), "[ActionLessThan]"}, {"0#@x441#a", "0#@x441#b"}},
      {"listed spellings of skipped records", {"[ActionPrevFrame]", "[ActionGoToLabel]", "[ActionGetURL]"}, {}},
      {"skip group comes first", {"[ActionStop][ActionGetTime]"}, {}},
      {"first header of the order wins", {"[ActionGetTime] [ActionPush]"}, {}},
      {"try is passed over, throw pops",
       {"[ActionPush]", str("a"), str("b"), "[ActionTry]", "ActionTry#@x441#oper#@x442#start", "[ActionThrow]"},
       {"0#@x441#a"}},
      {"lines without a header are passed over", {"[ActionPush]", str("a"), "garbage", "ActionPush"}, {"0#@x441#a"}},
      {"headers are found anywhere in a line", {"  x[ActionGetTime]y"}, {"msTime#@x441#0"}},
      {"a header inside other brackets", {"[x[ActionPop[ActionGetTime]]"}, {"msTime#@x441#0"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Replay run(c.lines);
    EXPECT_EQ(run.stack(), c.stack);
    EXPECT_TRUE(run.statements.empty());
  }
}

TEST(Replay, SpentBudgetStopsBeforeTheFirstLine) {
  DeCompiler machine;
  Lines lines = join({push({num(0), str("f")}), {header("CallFunction")}});
  Lines statements{"stale"};
  firstTimeVal = TimeBudget::nowMicros() - 20000001u;
  EXPECT_EQ(machine.SWFDeCompilerMain(lines, statements), 1000u);
  EXPECT_TRUE(statements.empty());
  firstTimeVal = TimeBudget::nowMicros();
  machine.SWFDeCompilerMain(lines, statements);
  EXPECT_EQ(statements, Lines{"f()"});
}

TEST(Replay, RunsStartFromAResetMachine) {
  DeCompiler machine;
  firstTimeVal = TimeBudget::nowMicros();
  Lines first = join({push({str("x")}), {"[ActionDefineFunction2]", "ActionDefineFunction2#@x441#Preloaded#@x442#this"}});
  Lines statements;
  machine.SWFDeCompilerMain(first, statements);
  ASSERT_EQ(machine.registers[1], "this");
  Lines empty;
  machine.SWFDeCompilerMain(empty, statements);
  EXPECT_EQ(machine.registers[1], "NullValue");
  EXPECT_TRUE(machine.operandStack.empty() && machine.constantPool.empty() && statements.empty());
}

TEST(Replay, DoublingListingStopsAtTheGuard) {
  // Each round doubles the top entry: duplicate it, call f with both copies.
  Lines lines = push({str(std::string(1000, 'x'))});
  for (int round = 0; round < 40; ++round) {
    lines.insert(lines.end(), {"[ActionPlay]", "[ActionPushDuplicate]"});
    lines.insert(lines.end(), {"[ActionPush]", num(2), str("f"), "[ActionCallFunction]"});
  }
  Replay run(lines);
  EXPECT_EQ(run.code, 1000u);
  EXPECT_TRUE(run.machine.limitReached);
  // Every statement kept is whole; the one that would pass the bound is not.
  ASSERT_GT(run.statements.size(), 5u);
  EXPECT_LT(run.statements.size(), 40u);
  EXPECT_LE(run.statements.back().size(), DeCompiler::kMaxTextBytes);
  EXPECT_EQ(run.statements.back().back(), ')');
}

}  // namespace
