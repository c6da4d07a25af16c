// What compiles, into which nodes, and the fixed message of each failure.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "regex/trex.h"

namespace {

std::string nested(int depth) { return std::string(depth, '(') + "a" + std::string(depth, ')'); }

std::string compileError(const std::string& pattern) {
  const char* error = "untouched";
  TrexExpression* exp = trex_compile(pattern.c_str(), &error);
  std::string result = exp == nullptr ? error : "compiled";
  if (exp == nullptr) {
    EXPECT_EQ(g_exp, nullptr) << pattern;
  }
  trex_free(exp);
  return result;
}

struct ErrorCase {
  std::string pattern;
  const char* message;
};

class CompileErrors : public testing::TestWithParam<ErrorCase> {};

TEST_P(CompileErrors, FixedMessage) { EXPECT_EQ(compileError(GetParam().pattern), GetParam().message) << GetParam().pattern; }

INSTANTIATE_TEST_SUITE_P(Messages, CompileErrors, testing::Values(
    ErrorCase{"a|", "letter expected"},
    ErrorCase{"(", "letter expected"},
    ErrorCase{"\x01", "letter expected"},
    ErrorCase{"a\xe9", "letter expected"},
    ErrorCase{"[a-\t]", "letter expected"},
    ErrorCase{"a{1234567890}", "overflow in numeric constant"},
    ErrorCase{"a{123456789}", "compiled"},
    ErrorCase{"(?x)", "expected paren"},
    ErrorCase{"()", "expected paren"},  // the ')' is a literal, the group stays open
    ErrorCase{"(a", "expected paren"},
    ErrorCase{"[a", "expected paren"},
    ErrorCase{"a{1,2", "expected paren"},
    ErrorCase{"a{1,x}", "expected paren"},
    ErrorCase{"[]", "empty class"},
    ErrorCase{"[^]", "empty class"},
    ErrorCase{"[a-]", "unfinished range"},
    ErrorCase{"[a-", "invalid range"},  // the terminator is below the item's node index
    ErrorCase{std::string(55, 'a') + "[0-9]", "compiled"},  // item node 57, end byte '9' (57)
    ErrorCase{std::string(56, 'a') + "[0-9]", "invalid range"},
    ErrorCase{"[\\d-z]", "cannot use character classes in ranges"},
    ErrorCase{"a{,2}", "number expected"},
    ErrorCase{"a{1x}", ", or } expected"},
    ErrorCase{"a**", "unexpected character"},
    ErrorCase{"a)", "unexpected character"},
    ErrorCase{"", "unexpected character"},
    ErrorCase{"a\\", "unexpected character"},
    ErrorCase{"[a-\\", "unexpected character"},
    ErrorCase{nested(200), "compiled"},
    ErrorCase{nested(201), "unexpected character"}));

TEST(Compile, GlobalExpressionFollowsTheLastCompilation) {
  TrexExpression* good = trex_compile("a", nullptr);
  EXPECT_EQ(g_exp, good);
  EXPECT_EQ(trex_compile("[", nullptr), nullptr);  // no error slot: still fails quietly
  EXPECT_EQ(g_exp, nullptr);
  trex_free(good);
  trex_free(nullptr);
}

// Node kinds and numbers are the public layout: node 0 wraps the pattern in
// group 0, nodes are numbered in the order the pattern is read, a range
// replaces the item before its '-' in the chain (that item keeps its number).
TEST(Compile, NodeLayout) {
  TrexExpression* exp = trex_compile("^a|[b-c\\d]*", nullptr);
  ASSERT_NE(exp, nullptr);
  const std::vector<TrexNode> expected = {
      {TREX_NODE_GROUP, 3, 0, -1},        {TREX_NODE_BEGIN, -1, -1, 2},   {'a', -1, -1, -1},
      {TREX_NODE_ALTERNATION, 1, 8, -1},  {TREX_NODE_CLASS, 6, -1, -1},   {'b', -1, -1, -1},
      {TREX_NODE_RANGE, 'b', 'c', 7},     {TREX_NODE_CLASS_ESCAPE, 'd', -1, -1},
      {TREX_NODE_REPEAT, 4, 0xFFFF, -1}};
  ASSERT_EQ(exp->nodeCount, static_cast<int32_t>(expected.size()));
  for (size_t i = 0; i < expected.size(); ++i) {
    const TrexNode& n = exp->nodes[i];
    EXPECT_EQ(std::vector<int32_t>({n.kind, n.left, n.right, n.next}),
              std::vector<int32_t>({expected[i].kind, expected[i].left, expected[i].right, expected[i].next}))
        << "node " << i;
  }
  EXPECT_EQ(exp->nodeCapacity, 11);  // one slot per pattern byte
  trex_free(exp);

  exp = trex_compile("a{3,7}b*", nullptr);  // bounds packed min:max
  ASSERT_NE(exp, nullptr);
  EXPECT_EQ(exp->nodes[2].right, (3 << 16) | 7);
  trex_free(exp);

  exp = trex_compile("a*", nullptr);  // three nodes in two slots: doubled once
  EXPECT_EQ(exp->nodeCapacity, 4);
  trex_free(exp);
}

}  // namespace
