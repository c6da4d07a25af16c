// Every class letter, on its own, inside brackets and negated, over all 256
// byte values against the C library's classification of the unsigned byte.
#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <string>

#include "regex/trex.h"

namespace {

bool matchesByte(const std::string& pattern, unsigned char byte) {
  TrexExpression* exp = trex_compile(pattern.c_str(), nullptr);
  EXPECT_NE(exp, nullptr) << pattern;
  const char subject[2] = {static_cast<char>(byte), '\0'};
  const char* end = nullptr;
  bool hit = trex_searchrange(exp, subject, subject + 1, nullptr, &end) && end == subject + 1;
  trex_free(exp);
  return hit;
}

TEST(ClassLetters, AgreeWithTheCClassificationOnEveryByte) {
  const struct {
    char letter;
    std::function<bool(int)> test;
  } letters[] = {
      {'a', [](int c) { return std::isalpha(c) != 0; }},  {'A', [](int c) { return !std::isalpha(c); }},
      {'c', [](int c) { return std::iscntrl(c) != 0; }},  {'C', [](int c) { return !std::iscntrl(c); }},
      {'d', [](int c) { return std::isdigit(c) != 0; }},  {'D', [](int c) { return !std::isdigit(c); }},
      {'l', [](int c) { return std::islower(c) != 0; }},  {'u', [](int c) { return std::isupper(c) != 0; }},
      {'p', [](int c) { return std::ispunct(c) != 0; }},  {'P', [](int c) { return !std::ispunct(c); }},
      {'s', [](int c) { return std::isspace(c) != 0; }},  {'S', [](int c) { return !std::isspace(c); }},
      {'w', [](int c) { return std::isalnum(c) || c == '_'; }},
      {'W', [](int c) { return !std::isalnum(c) && c != '_'; }},
      {'x', [](int c) { return std::isxdigit(c) != 0; }}, {'X', [](int c) { return !std::isxdigit(c); }},
  };
  for (const auto& l : letters) {
    const std::string escape = std::string("\\") + l.letter;
    for (int byte = 0; byte < 256; ++byte) {
      const bool in = l.test(byte);
      const unsigned char b = static_cast<unsigned char>(byte);
      ASSERT_EQ(matchesByte(escape, b), in) << escape << " on byte " << byte;
      ASSERT_EQ(matchesByte("[" + escape + "]", b), in) << escape << " in brackets, byte " << byte;
      ASSERT_EQ(matchesByte("[^" + escape + "]", b), !in) << escape << " negated, byte " << byte;
    }
  }
}

TEST(ClassLetters, LettersWithoutAClassAreLiterals) {
  for (const char* pattern : {"\\L", "\\U", "\\y", "[\\L]"}) {
    const char letter = pattern[pattern[0] == '[' ? 2 : 1];
    for (int byte = 1; byte < 256; ++byte)
      ASSERT_EQ(matchesByte(pattern, static_cast<unsigned char>(byte)), byte == letter) << pattern << " " << byte;
  }
}

}  // namespace
