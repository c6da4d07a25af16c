// Splitting the argument list of one call text or function header.
//
// One left-to-right scan with no knowledge of string literals. The byte right
// after a `(` or `)` is only tested for being a comma and then passed over,
// so a parenthesis that directly follows another one is not counted; the
// call's own `(` is not counted either, and the last argument is kept only
// when exactly one `)` was counted after the last top-level comma. Arguments
// therefore come out cut short in some nested cases (`f(g(x))` gives "g(x"),
// which callers rely on.
#include "APICheckEngine/APIAnalysis.h"

namespace FlashEngine_1_00 {

namespace {

// Splits `text` into `arguments`; returns true and sets `name` to the text
// before the first `(` when there is one.
bool splitArguments(const std::string& text, std::string* name, std::vector<std::string>& arguments) {
  arguments.clear();
  const size_t n = text.size();
  size_t open = text.find('(');
  if (open == std::string::npos) return false;
  *name = text.substr(0, open);

  size_t opens = 0;
  size_t closes = 0;
  size_t start = open;     // delimiter before the current argument
  size_t lastClose = open;  // last `)` counted
  for (size_t i = open + 1; i < n; ++i) {
    if (text[i] == '(') {
      ++opens;
      ++i;
    } else if (text[i] == ')') {
      ++closes;
      lastClose = i;
      ++i;
    }
    if (i < n && opens == closes && text[i] == ',') {
      arguments.push_back(text.substr(start + 1, i - start - 1));
      opens = closes = 0;
      start = i;
    }
  }
  if (closes == 1) arguments.push_back(text.substr(start + 1, lastClose - start - 1));
  return true;
}

std::string cleanArgument(CStringUtil& util, std::string text) {
  text = util.customReplace(text, " ", "");
  text = util.customReplace(text, "\"", "");
  text = util.customReplace(text, "'", "");
  return util.customReplace(text, "\n", "");
}

}  // namespace

int APIAnalysis::funcParameterParsing(std::string text, std::string symbol, std::string& functionName) {
  std::vector<std::string> arguments;
  std::string name;
  if (splitArguments(text, &name, arguments)) functionName = name;
  std::string wanted = cleanArgument(stringUtil, symbol);
  for (size_t i = 0; i < arguments.size(); ++i) {
    if (cleanArgument(stringUtil, arguments[i]) == wanted) return static_cast<int>(i + 1);
  }
  return static_cast<int>(arguments.size() + 1);
}

std::string APIAnalysis::getParamterByPosition(std::string text, int position) {
  std::vector<std::string> arguments;
  std::string name;
  splitArguments(text, &name, arguments);
  if (position < 1 || static_cast<size_t>(position) > arguments.size()) return std::string();
  return arguments[static_cast<size_t>(position) - 1];
}

}  // namespace FlashEngine_1_00
