// The walk over a listing: each line is tested against the record headers in
// a fixed order, by substring; a dispatched record takes the following lines
// that contain its bare name as its argument lines.
#include <cstring>
#include <string_view>
#include <unordered_map>

#include "APICheckEngine/TimeBudget.h"
#include "decompiler/DeCompiler.h"

namespace {

using Handler = unsigned (DeCompiler::*)(std::vector<std::string>);

struct Header {
  const char* text;  // with its brackets
  Handler handler;   // null: the line is passed over
};

// The order decides which header a line that contains several is taken for.
// Some texts differ on purpose from what the lister writes ("[ActionGetUrl]",
// "[ActionLess]", ...): such lines match nothing here and are passed over,
// which is also what the skip group does with them.
const Header kHeaders[] = {
    {"[ActionPlay]", nullptr},
    {"[ActionStop]", nullptr},
    {"[ActionNextFrame]", nullptr},
    {"[ActionPreviousFrame]", nullptr},
    {"[ActionGotoFrame]", nullptr},
    {"[ActionGotoLabel]", nullptr},
    {"[ActionWaitForFrame]", nullptr},
    {"[ActionGetUrl]", nullptr},
    {"[ActionStopSounds]", nullptr},
    {"[ActionToggleQuality]", nullptr},
    {"[ActionSetTarget]", nullptr},
    {"[ActionPush]", &DeCompiler::handleActionPush},
    {"[ActionPop]", &DeCompiler::handleActionPop},
    {"[ActionAdd]", &DeCompiler::handleActionAdd},
    {"[ActionDivide]", &DeCompiler::handleActionDivide},
    {"[ActionMultiply]", &DeCompiler::handleActionMultiply},
    {"[ActionSubtract]", &DeCompiler::handleActionSubtract},
    {"[ActionEquals]", &DeCompiler::handleActionEquals},
    {"[ActionLess]", &DeCompiler::handleActionLess},
    {"[ActionAnd]", &DeCompiler::handleActionAnd},
    {"[ActionOr]", &DeCompiler::handleActionOr},
    {"[ActionNot]", &DeCompiler::handleActionNot},
    {"[ActionStringEquals]", &DeCompiler::handleActionStringEquals},
    {"[ActionStringLength]", &DeCompiler::handleActionStringLength},
    {"[ActionStringAdd]", &DeCompiler::handleActionStringAdd},
    {"[ActionStringExtract]", &DeCompiler::handleActionStringExtract},
    {"[ActionStringLess]", &DeCompiler::handleActionStringLess},
    {"[ActionMBStringLength]", &DeCompiler::handleActionMBStringLength},
    {"[ActionMBStringExtract]", &DeCompiler::handleActionMBStringExtract},
    {"[ActionToInteger]", &DeCompiler::handleActionToInteger},
    {"[ActionCharToAscii]", &DeCompiler::handleActionCharToAscii},
    {"[ActionAsciiToChar]", &DeCompiler::handleActionAsciiToChar},
    {"[ActionMBCharToAscii]", &DeCompiler::handleActionMBCharToAscii},
    {"[ActionMBAsciiToChar]", &DeCompiler::handleActionMBAsciiToChar},
    {"[ActionIf]", &DeCompiler::handleActionIf},
    {"[ActionJump]", &DeCompiler::handleActionJump},
    {"[ActionCall]", &DeCompiler::handleActionCall},
    {"[ActionGetVariable]", &DeCompiler::handleActionGetVariable},
    {"[ActionSetVariable]", &DeCompiler::handleActionSetVariable},
    {"[ActionGetURL2]", &DeCompiler::handleActionGetURL2},
    {"[ActionGotoFrame2]", &DeCompiler::handleActionGotoFrame2},
    {"[ActionSetTarget2]", &DeCompiler::handleActionSetTarget2},
    {"[ActionGetProperty]", &DeCompiler::handleActionGetProperty},
    {"[ActionSetProperty]", &DeCompiler::handleActionSetProperty},
    {"[ActionCloneSprite]", &DeCompiler::handleActionCloneSprite},
    {"[ActionRemoveSprite]", &DeCompiler::handleActionRemoveSprite},
    {"[ActionStartDrag]", &DeCompiler::handleActionStartDrag},
    {"[ActionEndDrag]", &DeCompiler::handleActionEndDrag},
    {"[ActionWaitForFrame2]", &DeCompiler::handleActionWaitForFrame2},
    {"[ActionTrace]", &DeCompiler::handleActionTrace},
    {"[ActionGetTime]", &DeCompiler::handleActionGetTime},
    {"[ActionRandomNumber]", &DeCompiler::handleActionRandomNumber},
    {"[ActionCallFunction]", &DeCompiler::handleActionCallFunction},
    {"[ActionCallMethod]", &DeCompiler::handleActionCallMethod},
    {"[ActionConstantPool]", &DeCompiler::handleActionConstantPool},
    {"[ActionDefineFunction]", &DeCompiler::handleActionDefineFunction},
    {"[ActionDefineLocal]", &DeCompiler::handleActionDefineLocal},
    {"[ActionDefineLocal2]", &DeCompiler::handleActionDefineLocal2},
    {"[ActionDelete]", &DeCompiler::handleActionDelete},
    {"[ActionDelete2]", &DeCompiler::handleActionDelete2},
    {"[ActionEnumerate]", &DeCompiler::handleActionEnumerate},
    {"[ActionEquals2]", &DeCompiler::handleActionEquals2},
    {"[ActionGetMember]", &DeCompiler::handleActionGetMember},
    {"[ActionInitArray]", &DeCompiler::handleActionInitArray},
    {"[ActionInitObject]", &DeCompiler::handleActionInitObject},
    {"[ActionNewMethod]", &DeCompiler::handleActionNewMethod},
    {"[ActionNewObject]", &DeCompiler::handleActionNewObject},
    {"[ActionSetMember]", &DeCompiler::handleActionSetMember},
    {"[ActionTargetPath]", &DeCompiler::handleActionTargetPath},
    {"[ActionWith]", &DeCompiler::handleActionWith},
    {"[ActionToNumber]", &DeCompiler::handleActionToNumber},
    {"[ActionToString]", &DeCompiler::handleActionToString},
    {"[ActionTypeOf]", &DeCompiler::handleActionTypeOf},
    {"[ActionAdd2]", &DeCompiler::handleActionAdd2},
    {"[ActionLess2]", &DeCompiler::handleActionLess2},
    {"[ActionModulo]", &DeCompiler::handleActionModulo},
    {"[ActionBitAnd]", &DeCompiler::handleActionBitAnd},
    {"[ActionBitLShift]", &DeCompiler::handleActionBitLShift},
    {"[ActionBitOr]", &DeCompiler::handleActionBitOr},
    {"[ActionBitRShift]", &DeCompiler::handleActionBitRShift},
    {"[ActionBitURShift]", &DeCompiler::handleActionBitURShift},
    {"[ActionBitXor]", &DeCompiler::handleActionBitXor},
    {"[ActionDecrement]", &DeCompiler::handleActionDecrement},
    {"[ActionIncrement]", &DeCompiler::handleActionIncrement},
    {"[ActionPushDuplicate]", &DeCompiler::handleActionPushDuplicate},
    {"[ActionReturn]", &DeCompiler::handleActionReturn},
    {"[ActionStackSwap]", &DeCompiler::handleActionStackSwap},
    {"[ActionStoreRegister]", &DeCompiler::handleActionStoreRegister},
    {"[ActionInstanceOf]", &DeCompiler::handleActionInstanceOf},
    {"[ActionEnumerate2]", &DeCompiler::handleActionEnumerate2},
    {"[ActionStrictEquals]", &DeCompiler::handleActionStrictEquals},
    {"[ActionGreater]", &DeCompiler::handleActionGreater},
    {"[ActionStringGreater]", &DeCompiler::handleActionStringGreater},
    {"[ActionDefineFunction2]", &DeCompiler::handleActionDefineFunction2},
    {"[ActionExtends]", &DeCompiler::handleActionExtends},
    {"[ActionCastOp]", &DeCompiler::handleActionCastOp},
    {"[ActionImplementsOp]", &DeCompiler::handleActionImplementsOp},
    {"[ActionTry]", nullptr},
    {"[ActionThrow]", &DeCompiler::handleActionThrow},
};

constexpr size_t kHeaderCount = sizeof(kHeaders) / sizeof(kHeaders[0]);

// The first header of the order that occurs in the line. A header has one
// "[" at its start and one "]" at its end, so it occurs at a "[" exactly when
// the text from there to the next "]" is the header: looking up every such
// text finds the same header as testing each header in turn, in one pass.
const Header* findHeader(const std::string& line) {
  static const std::unordered_map<std::string_view, size_t> order = [] {
    std::unordered_map<std::string_view, size_t> map;
    for (size_t i = 0; i < kHeaderCount; ++i) map.emplace(kHeaders[i].text, i);
    return map;
  }();
  const std::string_view text(line);
  size_t best = kHeaderCount;
  size_t close = 0;
  for (size_t open = text.find('['); open != std::string_view::npos; open = text.find('[', open + 1)) {
    if (close <= open && (close = text.find(']', open + 1)) == std::string_view::npos) break;
    auto found = order.find(text.substr(open, close - open + 1));
    if (found != order.end() && found->second < best) best = found->second;
  }
  return best < kHeaderCount ? &kHeaders[best] : nullptr;
}

// The header without its brackets: the text that argument lines contain.
const std::string& bareName(const Header& header) {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (const Header& h : kHeaders) all.emplace_back(h.text + 1, std::strlen(h.text) - 2);
    return all;
  }();
  return names[static_cast<size_t>(&header - kHeaders)];
}

}  // namespace

unsigned DeCompiler::SWFDeCompilerMain(std::vector<std::string>& listing, std::vector<std::string>& statements) {
  InitVirtualMachine();
  size_t i = 0;
  while (i < listing.size()) {
    if (TimeBudget::spent() || limitReached) break;
    const Header* header = findHeader(listing[i]);
    ++i;
    if (header == nullptr || header->handler == nullptr) continue;

    // The test is a plain substring test: it also takes a following header
    // whose name begins with this one ("[ActionPushDuplicate]" after
    // "[ActionPush]", the "2" variants, ...), which is then never dispatched.
    const std::string& name = bareName(*header);
    std::vector<std::string> argumentLines;
    while (i < listing.size() && listing[i].find(name) != std::string::npos) argumentLines.push_back(listing[i++]);
    (this->*(header->handler))(std::move(argumentLines));
  }
  statements = statementList;
  return 1000;
}
