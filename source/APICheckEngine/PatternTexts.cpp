#include "APICheckEngine/PatternTexts.h"

namespace patterns {

namespace {

// A call `name.method(...)` needs one of these bytes (or white space) right
// before the name, so that a longer identifier ending in the name is not taken.
const char kSeparatorBeforeName[] = R"re([\+\-\_\*\/\%\(\{\[\;\:\,\?\s])re";
// `.method(` with a simple argument list, closed by `)`.
const char kCallWithArguments[] = R"re(\s*\.\s*[\w\_]+\s*\([\[\.\]\d"',\s\w\_\(\)/]*\))re";
// `.method()` with only blanks inside.
const char kCallWithoutArguments[] = R"re(\s*\.\s*[\w\_]+\s*\([\s]*\))re";

const char kLookUpOpen[] = R"re([\(][\s"']*)re";
const char kLookUpMemberTail[] = R"re([\s"']*[\)]\s*\.)re";
const char kLookUpMethodCallTail[] = R"re([\s"']*[\)]\s*\.\s*[\w\d\_]+\s*\()re";
const char kLookUpMethodNameTail[] = "[\\s\"']*[\\)]\\s*\\.\\s*[\\w\\d\\_]+";

const char kCallBefore[] = R"PAT([\w\d\_]+\s*\(\s*[\d\w\_"'\s,\.]*)PAT";
const char kCallAfter[] = R"PAT(\s*[\d\w\_"'\s,\.]*\)\s*)PAT";

const char kDirectUseById[] = R"(\s*document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.+)";
const char kDirectUseByDollar[] = R"(\s*[\$]\s*[(]["'\s]*[\w\_]+["'\s]*\)\s*\.+)";

}  // namespace

const char kFunctionHeader[] =
    R"PAT((function\s*[\w\_]*\s*\([\w\_"'\s,]*\))|([\w\_]+\s*[\:]\s*function\s*\([\w\_"'\s,]*\)))PAT";

const char kTag[] = "<.*>";
const char kObjectStart[] = "<[Oo][Bb][Jj][Ee][Cc][Tt]";
const char kObjectEnd[] = "[Oo][Bb][Jj][Ee][Cc][Tt]>";
const char* const kQuotedIdForms[2] = {R"PAT(id\s*=\s*"[\w\s\_]*")PAT", R"PAT(id\s*=\s*'[\w\s\_]*')PAT"};

std::string CallWithArgument(const std::string& symbol) { return std::string(kCallBefore) + symbol + kCallAfter; }

const char kGetElementByIdForm[] =
    R"PAT((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)PAT";
const char kDollarForm[] =
    R"PAT((([\w\_]+)[\.]*)*\s*=*\s*[\$]\s*[\_]*\s*[(]["'\s]*[\w\_]+["'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)PAT";
const char kEmbedsForm[] =
    R"PAT((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*embeds\s*\[\s*[\d]*\s*\]\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)PAT";

std::string ElementAccessForm() { return std::string("(") + kGetElementByIdForm + ")|(" + kDollarForm + ")"; }

std::string DirectUse() { return std::string("(") + kDirectUseById + ")|(" + kDirectUseByDollar + ")"; }

const char kAssignmentTarget[] = R"((([\w\_]+)[\.]*)*\s*(=))";

std::string SymbolArgument(const std::string& symbol) { return R"([\(][\s"']*)" + symbol + R"([\s"']*[\)])"; }

std::string CallsOn(const std::string& name) {
  return std::string("(") + kSeparatorBeforeName + name + kCallWithArguments + ")|(" + kSeparatorBeforeName + name +
         kCallWithoutArguments + ")";
}

const char kExecuteCall[] = R"re(Execute\(\s*["']*[\w\s\_]*["']*)re";

std::string LookUpMethodCall(const std::string& id) { return kLookUpOpen + id + kLookUpMethodCallTail; }
std::string LookUpMember(const std::string& id) { return kLookUpOpen + id + kLookUpMemberTail; }
std::string LookUpMethodName(const std::string& id) { return kLookUpOpen + id + kLookUpMethodNameTail; }

const char kMethodCall[] = "[\\.]\\s*[\\w\\d\\_]+\\s*\\(";

}  // namespace patterns
