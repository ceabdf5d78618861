// Decompiler machine: which line of a listing is a record, which lines are its arguments, and who handles it.
//
// The order of the table decides where a line holds more than one name. Test: tests/decompiler/DeCompiler_test.cpp.

#include "decompiler/DeCompiler.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>

#include "decompiler/FieldLine.h"
#include "platform/Limits.h"
#include "platform/TimeBudget.h"
#include "tarvo/RunResult.h"

namespace FlashEngine_1_00 {

struct ReplayRow {
  enum class Fields { ignored, pushed, ofFunction };

  std::string_view name;                                      // the record's header is this in brackets
  unsigned (DeCompiler::*handler)(std::vector<std::string>);  // null: passed over. It gets no argument lines:
  Fields fields = Fields::ignored;                            // what is done with each of them
};

namespace {

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
    {"ActionPush", &DeCompiler::handleActionPush, ReplayRow::Fields::pushed},
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
    {"ActionDefineFunction2", &DeCompiler::handleActionDefineFunction2, ReplayRow::Fields::ofFunction},
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

const ReplayRow* rowNamed(std::string_view name) {
  static const auto rows = [] {
    std::unordered_map<std::string_view, const ReplayRow*> byName;
    for (const ReplayRow& row : kReplayOrder)
      byName.emplace(row.name, &row);
    return byName;
  }();
  const auto found = rows.find(name);
  return found != rows.end() ? found->second : nullptr;
}

// The row that handles the record with the action code `code`, null if there is none.
const ReplayRow* rowOf(int code) {
  static const auto rows = [] {
    std::array<const ReplayRow*, 256> byCode{};
    for (std::size_t i = 0; i < byCode.size(); ++i)
      byCode[i] = rowNamed(actionName(static_cast<int>(i)));
    return byCode;
  }();
  return rows[static_cast<std::size_t>(code)];
}

// The row that handles `line`: of those whose header stands anywhere in it, the first; null if there is none.
const ReplayRow* rowFor(std::string_view line) {
  const ReplayRow* first = nullptr;
  for (std::size_t open = line.find('['); open != std::string_view::npos; open = line.find('[', open + 1)) {
    const std::size_t close = line.find(']', open + 1);
    if (close == std::string_view::npos) break;
    const ReplayRow* const found = rowNamed(line.substr(open + 1, close - open - 1));  // no name holds a bracket
    if (found != nullptr && (first == nullptr || found < first)) first = found;
  }
  return first;
}

// Whether the text of a field line has the separators that its fields have, and no more.
bool isPlain(const ListedLine& line) {
  return line.fullSize() <= kMaxFieldLine && std::none_of(line.begin(), line.end(), [](const ListedLine::Field& field) {
           return field.value.find('#') != std::string_view::npos;
         });
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
  row_ = nullptr;
  builtBytes_ = 0;
  full_ = false;
}

unsigned DeCompiler::SWFDeCompilerMain(Lines& listing, Lines& statements) {
  InitVirtualMachine();
  BudgetWatch budget;
  for (std::size_t i = 0; i < listing.size() && !full_ && !budget.spent(); ++i)
    takeText(listing[i]);
  statements = std::move(statements_);
  return RUN_SUCCESS;
}

void DeCompiler::beginReplay() {
  InitVirtualMachine();
}

void DeCompiler::endReplay(Lines& statements) {
  statements = std::move(statements_);
  stack_.release();
}

// An argument line of the current record.
template <typename Line>
void DeCompiler::takeFields(const Line& line) {
  if (row_->fields == ReplayRow::Fields::pushed) pushFields(line);
  if (row_->fields == ReplayRow::Fields::ofFunction) readFunctionFields(line);
}

// The next line of a listing in the making. Its text is asked for only where more than its parts could decide.
void DeCompiler::takeLine(const ListedLine& line) {
  if (full_) return;
  const bool isName = line.kind() == ListedLine::Kind::name;
  if (isName && (row_ == nullptr || !holds(line.name(), row_->name))) return startRecord(rowOf(line.code()));
  const bool isField = line.kind() == ListedLine::Kind::fields && row_ != nullptr && line.name() == row_->name;
  if (isField && row_->fields == ReplayRow::Fields::ignored) return;
  if (isField && isPlain(line)) return takeFields(line);
  takeText(line.text());
}

void DeCompiler::takeText(std::string_view line) {
  // KEPT: every line that holds the bare name is an argument line, the next record's header too if its name begins
  // with this one's, which then is not replayed. Statements depend on it. (test HeadersThatBeginAlikeAreSwallowed)
  if (row_ != nullptr && holds(line, row_->name)) return takeFields(line);
  startRecord(rowFor(line));
}

void DeCompiler::startRecord(const ReplayRow* row) {
  row_ = row != nullptr && row->handler != nullptr ? row : nullptr;
  if (row_ != nullptr) (void)(this->*row_->handler)({});
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
