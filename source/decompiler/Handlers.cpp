// Action handlers: what each record does to the stack, the registers and the statements.
//
// Those that only pop and push a placeholder are rows of SimpleHandlers.h. Test: tests/decompiler/DeCompiler_test.cpp.

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>

#include "decompiler/DeCompiler.h"
#include "decompiler/FieldLine.h"
#include "platform/Limits.h"
#include "tarvo/RunResult.h"

namespace FlashEngine_1_00 {
namespace {

constexpr const char* kRegisterNames[] = {"this", "arguments", "super", "_root", "_parent", "_global"};

// A decimal count or register number; clamped to 32 bits on every machine, 0 if it is none.
long number(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  std::int32_t value = 0;
  const std::from_chars_result end = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end.ec != std::errc::result_out_of_range) return value;
  using Limits = std::numeric_limits<std::int32_t>;
  return text[0] == '-' ? Limits::min() : Limits::max();
}

bool contains(std::string_view text, std::string_view piece) {
  return text.find(piece) != std::string_view::npos;
}

bool namesAPreload(std::string_view text) {
  return std::any_of(std::begin(kRegisterNames), std::end(kRegisterNames),
                     [&](const char* name) { return contains(text, name); });
}

}  // namespace

// ---- the stack ------------------------------------------------------------------------------------------------------

// The value part of the top of the stack, which is not empty, is taken off it: "string#@x441#tv" is "tv"; an entry that
// has no kind has no value. To be used before the next entry is pushed.
std::string_view DeCompiler::popValue() {
  std::string_view kind;
  std::string_view value;
  return splitInTwo(stack_.pop(), kFieldSeparator, kind, value) ? value : std::string_view();
}

// Takes `count` entries off the stack, or all if there are fewer.
void DeCompiler::popUpTo(long count) {
  if (count > 0) stack_.drop(std::min(static_cast<std::size_t>(count), stack_.size()));
}

// Takes `pops` entries off the stack, none if there are fewer, and puts `pushed` there unless it is null.
unsigned DeCompiler::popAndPush(std::size_t pops, const char* pushed) {
  if (has(pops)) stack_.drop(pops);
  if (pushed != nullptr) pushKept(pushed);
  return RUN_SUCCESS;
}

// Whether `bytes` more of text may be made. If not, the replay ends.
bool DeCompiler::fits(std::size_t bytes) {
  full_ = full_ || bytes > kMaxReplayBytes - builtBytes_;
  return !full_;
}

// Appends `piece` to a text under construction, if that fits.
bool DeCompiler::build(std::string& text, std::string_view piece) {
  if (fits(text.size() + piece.size())) text += piece;
  return !full_;
}

// Puts a finished text on the stack, if it still fits.
void DeCompiler::pushKept(std::string_view entry) {
  if (!fits(entry.size())) return;
  builtBytes_ += entry.size();
  stack_.push(entry);
}

// The same for a result of the kind `kind`; `text` is no part of the stack's.
void DeCompiler::pushBuilt(std::string_view kind, std::string_view text) {
  const std::size_t size = kind.size() + kFieldSeparator.size() + text.size();
  if (!fits(size)) return;
  builtBytes_ += size;
  stack_.pushRoom().assign(kind).append(kFieldSeparator).append(text);
}

// Pops up to `count` arguments and appends their value parts, with a comma behind each but the `count`-th; or, without
// `commaBehindTheLast`, behind each but the last one there is.
void DeCompiler::appendArguments(std::string& text, long count, bool commaBehindTheLast) {
  for (long taken = 1; taken <= count && has(1) && !full_; ++taken) {
    build(text, popValue());
    if (taken < count && (commaBehindTheLast || has(1))) build(text, ",");
  }
}

// The value of the first variable whose name contains `name`, or null.
const std::string* DeCompiler::findVariable(std::string_view name, bool withValue) const {
  for (std::size_t i = 0; i < variableNames_.size(); ++i) {
    if (contains(variableNames_[i], name) && !(withValue && variableValues_[i].empty())) return &variableValues_[i];
  }
  return nullptr;
}

// Records the statement that `text`, up to its parenthesis, and `count` arguments make, and pushes its result.
void DeCompiler::recordCall(std::string text, long count) {
  appendArguments(text, count, true);
  if (!build(text, ")")) return;
  pushBuilt("returnValueOfFunction", text);
  if (!fits(text.size())) return;
  builtBytes_ += text.size();
  statements_.push_back(std::move(text));
}

// ---- handlers with logic --------------------------------------------------------------------------------------------

unsigned DeCompiler::handleActionPush(Lines argumentLines) {
  for (const std::string& line : argumentLines)
    if (!full_) pushFields(std::string_view(line));
  return RUN_SUCCESS;
}

// Pushes the entry that an argument line makes.
template <typename Line>
void DeCompiler::pushFields(const Line& line) {
  std::string& entry = stack_.pushRoom();
  entry.clear();
  bool isFirst = true;
  bool copiesRegister = false;
  forEachPair(line, [&](std::string_view key, std::string_view value) {
    if (!isFirst) entry += kFieldSeparator;
    isFirst = false;
    if (!contains(key, "reg$")) {
      entry += value;
      return true;
    }
    const auto n = static_cast<unsigned long>(number(value));
    if (n >= registers_.size()) return true;
    copiesRegister = true;
    return build(entry, registers_[n]);
  });
  // A short line can ask for a long register many times.
  if (copiesRegister && fits(entry.size())) builtBytes_ += entry.size();
  if (full_) stack_.drop(1);
}

unsigned DeCompiler::handleActionCallMethod(Lines) {
  const bool complete = has(3);
  const std::string_view method = complete ? popValue() : std::string_view();
  const std::string_view object = complete ? popValue() : std::string_view();
  const long count = complete ? number(popValue()) : 0;
  std::string text;
  if (build(text, object) && build(text, ".") && build(text, method) && build(text, "(")) recordCall(text, count);
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionCallFunction(Lines) {
  const bool complete = has(2);
  const std::string_view function = complete ? popValue() : std::string_view();
  const long count = complete ? number(popValue()) : 0;
  std::string text;
  if (build(text, function) && build(text, "(")) recordCall(text, count);
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionNewObject(Lines) {
  const bool complete = has(2);
  const std::string_view className = complete ? popValue() : std::string_view();
  const long count = complete ? number(popValue()) : 0;
  std::string text;
  build(text, "new ");
  build(text, className);
  build(text, "(");
  appendArguments(text, count, false);
  build(text, ")");
  pushBuilt("newObject", text);
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionNewMethod(Lines) {
  const bool complete = has(3);
  const std::string_view method = complete ? popValue() : std::string_view();
  const std::string_view object = complete ? popValue() : std::string_view();
  const long count = complete ? number(popValue()) : 0;
  std::string text;
  build(text, "new ");
  build(text, object);
  build(text, ".");
  build(text, method);
  build(text, "(");
  appendArguments(text, count, false);
  build(text, ")");
  pushBuilt("New Method", text);
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionInitObject(Lines) {
  const long count = has(1) ? number(popValue()) : 0;
  std::string text = "{";
  for (long taken = 0; taken < count && has(2) && !full_; ++taken) {
    const std::string_view value = popValue();
    const std::string_view name = popValue();
    if (taken > 0) build(text, ",");
    build(text, name);
    build(text, ":\"");
    build(text, value);
    build(text, "\"");
  }
  build(text, "}");
  pushBuilt("InitObject", text);
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionInitArray(Lines) {
  if (has(1)) popUpTo(number(popValue()));
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionGetMember(Lines) {
  const bool complete = has(2);
  const std::string_view member = complete ? popValue() : std::string_view();
  const std::string_view object = complete ? popValue() : std::string_view();
  member_.clear();
  if (!build(member_, object) || !build(member_, ".") || !build(member_, member)) return RUN_SUCCESS;
  if (const std::string* value = findVariable(member_, false)) {
    stack_.push(*value);
  } else {
    pushBuilt("valueOfProperty", member_);
  }
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionGetVariable(Lines) {
  if (!has(1)) stack_.push("");
  if (const std::string* value = findVariable(popValue(), true)) {
    stack_.push(*value);
  } else {
    (void)stack_.pushRoom();  // the entry that was there
  }
  return RUN_SUCCESS;
}

// The listing has the constants in the place of their numbers.
unsigned DeCompiler::handleActionConstantPool(Lines) {
  return RUN_SUCCESS;
}

// KEPT: the register is named and the value is on the stack, but nothing is stored. Statements depend on it.
// (test StoreRegisterStoresNothing)
unsigned DeCompiler::handleActionStoreRegister(Lines) {
  return RUN_SUCCESS;
}

// A function's body starts on an empty stack, with the preloaded names and its parameters' names in the registers.
unsigned DeCompiler::handleActionDefineFunction2(Lines argumentLines) {
  preloads_ = 1;
  for (const std::string& line : argumentLines)
    readFunctionFields(std::string_view(line));
  stack_.clear();
  return RUN_SUCCESS;
}

// Stores what a line of a function's head puts into a register.
template <typename Line>
void DeCompiler::readFunctionFields(const Line& line) {
  const auto store = [&](unsigned long n, std::string_view value) {
    if (n < registers_.size()) registers_[n] = value;
  };
  std::string_view parameter;  // the number of the register that the next field's value goes to
  forEachPair(line, [&](std::string_view key, std::string_view value) {
    if (parameter.data() != nullptr) {
      store(static_cast<unsigned long>(number(parameter)), value);
      parameter = {};
      return true;
    }
    if (contains(key, "Preloaded") && namesAPreload(value)) store(preloads_++, value);
    if (contains(key, "reg$")) parameter = value;
    return true;
  });
}

// For lines in parts and as text.
template void DeCompiler::pushFields(const ListedLine& line);
template void DeCompiler::pushFields(const std::string_view& line);
template void DeCompiler::readFunctionFields(const ListedLine& line);
template void DeCompiler::readFunctionFields(const std::string_view& line);

unsigned DeCompiler::handleActionPushDuplicate(Lines) {
  const std::string top = has(1) ? stack_.pop() : std::string();
  stack_.push(top);
  pushKept(top);
  return RUN_SUCCESS;
}

// KEPT: the two entries come back in their former order. Statements depend on it. (test StackSwapSwapsNothing)
unsigned DeCompiler::handleActionStackSwap(Lines) {
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionImplementsOp(Lines) {
  if (!has(2)) return RUN_SUCCESS;
  stack_.drop(1);
  popUpTo(number(popValue()));
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionStartDrag(Lines) {
  constexpr long kRectangle = 4;
  if (!has(3)) return RUN_SUCCESS;
  popUpTo(2);
  const bool constrained = number(popValue()) != 0;
  if (constrained && has(kRectangle)) popUpTo(kRectangle);
  return RUN_SUCCESS;
}

// The value that is cast stays.
unsigned DeCompiler::handleActionCastOp(Lines) {
  if (has(2)) {
    stack_.drop(1);
  } else {
    stack_.push("");
  }
  return RUN_SUCCESS;
}

// ---- simple handlers ------------------------------------------------------------------------------------------------

#define TARVO_DEFINE_HANDLER(action, pops, pushed)   \
  unsigned DeCompiler::handleAction##action(Lines) { \
    return popAndPush(pops, pushed);                 \
  }
TARVO_SIMPLE_HANDLERS(TARVO_DEFINE_HANDLER)
#undef TARVO_DEFINE_HANDLER

}  // namespace FlashEngine_1_00
