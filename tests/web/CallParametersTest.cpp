// Argument splitting of call texts and function headers.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"

namespace {

using FlashEngine_1_00::APIAnalysis;

// Every argument, read back position by position; the count comes from the
// position that a symbol matching nothing gets (count + 1).
std::vector<std::string> argumentsOf(APIAnalysis& engine, const std::string& text) {
  std::string name;
  int count = engine.funcParameterParsing(text, "\x01", name) - 1;
  std::vector<std::string> out;
  for (int i = 1; i <= count; ++i) out.push_back(engine.getParamterByPosition(text, i));
  EXPECT_EQ(engine.getParamterByPosition(text, count + 1), "");
  EXPECT_EQ(engine.getParamterByPosition(text, 0), "");
  EXPECT_EQ(engine.getParamterByPosition(text, -1), "");
  return out;
}

TEST(CallParameters, SplitsArgumentsWithTheExactBookkeeping) {
  APIAnalysis engine;
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"f(a, b)", {"a", " b"}},
      {"f()", {""}},
      {"f", {}},
      {"f(g(x), y)", {"g(x)", " y"}},
      {"f(g(x))", {"g(x"}},          // the second `)` follows the first and is not counted
      {"f(a, g(x))", {"a", " g(x"}},
      {"f(a, (b)+(c))", {"a"}},      // two closes after the comma drop the last argument
      {"f((a),b)", {"(a)", "b"}},    // a `(` right after the call's own is counted
      {"f(a,b", {"a"}},              // no close: no last argument
      {"init( 'tv' )", {" 'tv' "}},  // blanks and quotes kept
      {"f(a,(b,c),d)", {"a", "(b,c)", "d"}},
  };
  for (const auto& c : cases) EXPECT_EQ(argumentsOf(engine, c.first), c.second) << c.first;
}

TEST(CallParameters, FindsTheSymbolsPositionAndTheCalledName) {
  APIAnalysis engine;
  struct Case {
    std::string text, symbol;
    int position;
    std::string name;
  };
  const std::vector<Case> cases = {
      {"init( 'tv' )", "tv", 1, "init"},
      {"init(a,\"tv\")", "'tv'", 2, "init"},  // quotes are removed on both sides
      {"init(a,b)", "tv", 3, "init"},
      {"init (a)", "a", 1, "init "},           // the name keeps its blank
      {"run(x,\n tv)", "tv", 2, "run"},        // line feeds are removed
      {"noCall", "x", 1, "unchanged"},
  };
  for (const Case& c : cases) {
    std::string name = "unchanged";
    EXPECT_EQ(engine.funcParameterParsing(c.text, c.symbol, name), c.position) << c.text;
    EXPECT_EQ(name, c.name) << c.text;
  }
  EXPECT_EQ(engine.getParamterByPosition("init(obj,n)", 2), "n");
}

}  // namespace
