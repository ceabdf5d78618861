// Decompiler machine: which line of a listing is a record, which lines are its arguments, and who handles it.
//
// The order of the table decides where a line holds more than one name. Test: tests/decompiler/DeCompiler_test.cpp.

#include "decompiler/DeCompiler.h"

#include <string_view>
#include <unordered_map>

#include "decompiler/FieldLine.h"
#include "platform/Limits.h"
#include "platform/TimeBudget.h"
#include "tarvo/RunResult.h"

namespace FlashEngine_1_00 {
namespace {

struct ReplayRow {
  std::string_view name;                                                // the record's header is this in brackets
  unsigned (DeCompiler::*handler)(std::vector<std::string>);            // null: passed over, or read
  unsigned (DeCompiler::*reader)(DeCompiler::ArgumentLines) = nullptr;  // the handler of a record whose lines are read
};

// KEPT: four names differ from those of the listing ("ActionPreviousFrame", "ActionGotoLabel", "ActionGetUrl",
// "ActionLess"), so that those records match nothing; statements depend on it for ActionLess. (test
// LessThanChangesNothing)
constexpr ReplayRow kReplayOrder[] = {
    {"ActionPlay", nullptr},
    {"ActionStop", nullptr},
    {"ActionNextFrame", nullptr},
    {"ActionPreviousFrame", nullptr},
    {"ActionGotoFrame", nullptr},
    {"ActionGotoLabel", nullptr},
    {"ActionWaitForFrame", nullptr},
    {"ActionGetUrl", nullptr},
    {"ActionStopSounds", nullptr},
    {"ActionToggleQuality", nullptr},
    {"ActionSetTarget", nullptr},
    {"ActionPush", nullptr, &DeCompiler::readActionPush},
    {"ActionPop", &DeCompiler::handleActionPop},
    {"ActionAdd", &DeCompiler::handleActionAdd},
    {"ActionDivide", &DeCompiler::handleActionDivide},
    {"ActionMultiply", &DeCompiler::handleActionMultiply},
    {"ActionSubtract", &DeCompiler::handleActionSubtract},
    {"ActionEquals", &DeCompiler::handleActionEquals},
    {"ActionLess", &DeCompiler::handleActionLess},
    {"ActionAnd", &DeCompiler::handleActionAnd},
    {"ActionOr", &DeCompiler::handleActionOr},
    {"ActionNot", &DeCompiler::handleActionNot},
    {"ActionStringEquals", &DeCompiler::handleActionStringEquals},
    {"ActionStringLength", &DeCompiler::handleActionStringLength},
    {"ActionStringAdd", &DeCompiler::handleActionStringAdd},
    {"ActionStringExtract", &DeCompiler::handleActionStringExtract},
    {"ActionStringLess", &DeCompiler::handleActionStringLess},
    {"ActionMBStringLength", &DeCompiler::handleActionMBStringLength},
    {"ActionMBStringExtract", &DeCompiler::handleActionMBStringExtract},
    {"ActionToInteger", &DeCompiler::handleActionToInteger},
    {"ActionCharToAscii", &DeCompiler::handleActionCharToAscii},
    {"ActionAsciiToChar", &DeCompiler::handleActionAsciiToChar},
    {"ActionMBCharToAscii", &DeCompiler::handleActionMBCharToAscii},
    {"ActionMBAsciiToChar", &DeCompiler::handleActionMBAsciiToChar},
    {"ActionIf", &DeCompiler::handleActionIf},
    {"ActionJump", &DeCompiler::handleActionJump},
    {"ActionCall", &DeCompiler::handleActionCall},
    {"ActionGetVariable", &DeCompiler::handleActionGetVariable},
    {"ActionSetVariable", &DeCompiler::handleActionSetVariable},
    {"ActionGetURL2", &DeCompiler::handleActionGetURL2},
    {"ActionGotoFrame2", &DeCompiler::handleActionGotoFrame2},
    {"ActionSetTarget2", &DeCompiler::handleActionSetTarget2},
    {"ActionGetProperty", &DeCompiler::handleActionGetProperty},
    {"ActionSetProperty", &DeCompiler::handleActionSetProperty},
    {"ActionCloneSprite", &DeCompiler::handleActionCloneSprite},
    {"ActionRemoveSprite", &DeCompiler::handleActionRemoveSprite},
    {"ActionStartDrag", &DeCompiler::handleActionStartDrag},
    {"ActionEndDrag", &DeCompiler::handleActionEndDrag},
    {"ActionWaitForFrame2", &DeCompiler::handleActionWaitForFrame2},
    {"ActionTrace", &DeCompiler::handleActionTrace},
    {"ActionGetTime", &DeCompiler::handleActionGetTime},
    {"ActionRandomNumber", &DeCompiler::handleActionRandomNumber},
    {"ActionCallFunction", &DeCompiler::handleActionCallFunction},
    {"ActionCallMethod", &DeCompiler::handleActionCallMethod},
    {"ActionConstantPool", &DeCompiler::handleActionConstantPool},
    {"ActionDefineFunction", &DeCompiler::handleActionDefineFunction},
    {"ActionDefineLocal", &DeCompiler::handleActionDefineLocal},
    {"ActionDefineLocal2", &DeCompiler::handleActionDefineLocal2},
    {"ActionDelete", &DeCompiler::handleActionDelete},
    {"ActionDelete2", &DeCompiler::handleActionDelete2},
    {"ActionEnumerate", &DeCompiler::handleActionEnumerate},
    {"ActionEquals2", &DeCompiler::handleActionEquals2},
    {"ActionGetMember", &DeCompiler::handleActionGetMember},
    {"ActionInitArray", &DeCompiler::handleActionInitArray},
    {"ActionInitObject", &DeCompiler::handleActionInitObject},
    {"ActionNewMethod", &DeCompiler::handleActionNewMethod},
    {"ActionNewObject", &DeCompiler::handleActionNewObject},
    {"ActionSetMember", &DeCompiler::handleActionSetMember},
    {"ActionTargetPath", &DeCompiler::handleActionTargetPath},
    {"ActionWith", &DeCompiler::handleActionWith},
    {"ActionToNumber", &DeCompiler::handleActionToNumber},
    {"ActionToString", &DeCompiler::handleActionToString},
    {"ActionTypeOf", &DeCompiler::handleActionTypeOf},
    {"ActionAdd2", &DeCompiler::handleActionAdd2},
    {"ActionLess2", &DeCompiler::handleActionLess2},
    {"ActionModulo", &DeCompiler::handleActionModulo},
    {"ActionBitAnd", &DeCompiler::handleActionBitAnd},
    {"ActionBitLShift", &DeCompiler::handleActionBitLShift},
    {"ActionBitOr", &DeCompiler::handleActionBitOr},
    {"ActionBitRShift", &DeCompiler::handleActionBitRShift},
    {"ActionBitURShift", &DeCompiler::handleActionBitURShift},
    {"ActionBitXor", &DeCompiler::handleActionBitXor},
    {"ActionDecrement", &DeCompiler::handleActionDecrement},
    {"ActionIncrement", &DeCompiler::handleActionIncrement},
    {"ActionPushDuplicate", &DeCompiler::handleActionPushDuplicate},
    {"ActionReturn", &DeCompiler::handleActionReturn},
    {"ActionStackSwap", &DeCompiler::handleActionStackSwap},
    {"ActionStoreRegister", &DeCompiler::handleActionStoreRegister},
    {"ActionInstanceOf", &DeCompiler::handleActionInstanceOf},
    {"ActionEnumerate2", &DeCompiler::handleActionEnumerate2},
    {"ActionStrictEquals", &DeCompiler::handleActionStrictEquals},
    {"ActionGreater", &DeCompiler::handleActionGreater},
    {"ActionStringGreater", &DeCompiler::handleActionStringGreater},
    {"ActionDefineFunction2", nullptr, &DeCompiler::readActionDefineFunction2},
    {"ActionExtends", &DeCompiler::handleActionExtends},
    {"ActionCastOp", &DeCompiler::handleActionCastOp},
    {"ActionImplementsOp", &DeCompiler::handleActionImplementsOp},
    {"ActionTry", nullptr},
    {"ActionThrow", &DeCompiler::handleActionThrow},
};
static_assert(std::size(kReplayOrder) == 99);

// Whether `text` holds `name`, which it mostly begins with.
bool holds(std::string_view text, std::string_view name) {
  return text.substr(0, name.size()) == name || text.find(name) != std::string_view::npos;
}

// The row that handles `line`: of those whose header stands anywhere in it, the first; null if there is none.
const ReplayRow* rowFor(std::string_view line) {
  static const auto rows = [] {
    std::unordered_map<std::string_view, const ReplayRow*> byName;
    for (const ReplayRow& row : kReplayOrder)
      byName.emplace(row.name, &row);
    return byName;
  }();
  const ReplayRow* first = nullptr;
  for (std::size_t open = line.find('['); open != std::string_view::npos; open = line.find('[', open + 1)) {
    const std::size_t close = line.find(']', open + 1);
    if (close == std::string_view::npos) break;
    const auto found = rows.find(line.substr(open + 1, close - open - 1));  // no name holds a bracket
    if (found == rows.end()) continue;
    if (first == nullptr || found->second < first) first = found->second;
  }
  return first;
}

}  // namespace

DeCompiler::DeCompiler() {
  InitVirtualMachine();
}
DeCompiler::~DeCompiler() = default;

void DeCompiler::InitVirtualMachine() {
  registers_.fill("NullValue");
  stack_.clear();
  variableNames_.clear();
  variableValues_.clear();
  statements_.clear();
  builtBytes_ = 0;
  full_ = false;
}

unsigned DeCompiler::SWFDeCompilerMain(Lines& listing, Lines& statements) {
  InitVirtualMachine();
  BudgetWatch budget;
  for (std::size_t i = 0; i < listing.size() && !full_ && !budget.spent();) {
    const ReplayRow* row = rowFor(listing[i++]);
    if (row == nullptr || (row->handler == nullptr && row->reader == nullptr)) continue;
    // KEPT: every line that holds the bare name is an argument line, the next record's header too if its name begins
    // with this one's, which then is not replayed. Statements depend on it. (test HeadersThatBeginAlikeAreSwallowed)
    const std::size_t first = i;
    while (i < listing.size() && holds(listing[i], row->name) && !budget.spent())
      ++i;
    if (row->reader != nullptr) {
      (void)(this->*row->reader)({listing.data() + first, listing.data() + i});
    } else {
      (void)(this->*row->handler)({});
    }
  }
  statements.assign(statements_.begin(), statements_.end());
  return RUN_SUCCESS;
}

void DeCompiler::parserKeyValuePair(std::string line, Lines& keys, Lines& values) {
  forEachPair(line, [&](std::string_view key, std::string_view value) {
    keys.emplace_back(key);
    values.emplace_back(value);
    return true;
  });
}

void DeCompiler::showState(std::string) {}

}  // namespace FlashEngine_1_00
