// Numbers in listing lines that do not fit in 32 bits. The target reads them
// with a 32-bit long (strtol saturates there), so a count or register number
// must never be narrowed by truncation: 2^32 + 1 is a huge count, not 1, and
// register 2^32 does not exist, it is not register 0.
#include <gtest/gtest.h>

#include "ListingText.h"

using namespace listing;

namespace {

TEST(NumberWidth, CallArgumentCountsBeyond32Bits) {
  struct Case {
    const char* count;
    const char* statement;
  } cases[] = {
      {"1", "o.m(a)"},
      {"2", "o.m(a,)"},  // the stack runs dry before the count
      {"4294967296", "o.m(a,)"},
      {"4294967297", "o.m(a,)"},
      {"99999999999999999999", "o.m(a,)"},
      {"-1", "o.m()"},
      {"-4294967295", "o.m()"},
  };
  for (const Case& c : cases) {
    Replay run(join({push({str("a"), pushField("7", c.count), str("o"), str("m")}), {"[ActionCallMethod]"}}));
    EXPECT_EQ(run.statements, std::vector<std::string>{c.statement}) << c.count;
  }
}

TEST(NumberWidth, RegisterNumbersBeyond32BitsNameNoRegister) {
  // Register 1 holds "this" (preloaded) and register 0 "NullValue", so a
  // number narrowed to 0 or 1 would show a register's content.
  const std::vector<std::string> preload = {
      "[ActionDefineFunction2]",
      "ActionDefineFunction2#@x441#oper#@x442#start",
      "ActionDefineFunction2#@x441#Preloaded#@x442#this",
      "ActionDefineFunction2#@x441#oper#@x442#end",
  };
  for (const char* number : {"4294967296", "4294967297", "-4294967296", "-4294967295", "18446744073709551616"}) {
    std::string line = "ActionPush#@x441#type#@x442#4#@x441#reg$#@x442#";
    Replay run(join({preload, push({line + number, line + "1"})}));
    EXPECT_EQ(run.stack(), (std::vector<std::string>{"4#@x441#", "4#@x441#this"})) << number;
  }
}

}  // namespace
