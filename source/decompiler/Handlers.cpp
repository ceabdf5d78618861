// Action handlers: what each record does to the stack, the registers and the statements.
//
// Those that only pop and push a placeholder are rows of SimpleHandlers.h. Test: tests/decompiler/DeCompiler_test.cpp.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
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
  return static_cast<long>(std::clamp<long long>(std::strtoll(std::string(text).c_str(), nullptr, 10),
                                                 std::numeric_limits<std::int32_t>::min(),
                                                 std::numeric_limits<std::int32_t>::max()));
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

// The top of the stack, which is not empty, is taken off it.
std::string DeCompiler::pop() {
  std::string top = std::move(stack_.back());
  stack_.pop_back();
  return top;
}

// The same without its kind: "string#@x441#tv" is "tv".
std::string DeCompiler::popValue() {
  return valuePart(pop());
}

// Takes `count` entries off the stack, or all if there are fewer.
void DeCompiler::popUpTo(long count) {
  for (; count > 0 && has(1); --count)
    stack_.pop_back();
}

// Takes `pops` entries off the stack, none if there are fewer, and puts `pushed` there unless it is null.
unsigned DeCompiler::popAndPush(std::size_t pops, const char* pushed) {
  if (has(pops)) popUpTo(static_cast<long>(pops));
  if (pushed != nullptr) keepBuilt(stack_, pushed);
  return RUN_SUCCESS;
}

// What stands behind the kind of a stack entry; empty if it has none.
std::string DeCompiler::valuePart(std::string entry) {
  std::string_view kind;
  std::string_view value;
  if (!splitInTwo(entry, kFieldSeparator, kind, value)) return std::string();
  const auto begin = static_cast<std::size_t>(value.data() - entry.data());
  return entry.erase(begin + value.size()).erase(0, begin);
}

// Appends `piece` to a text under construction. False, and the end of the replay, if it would be one too many.
bool DeCompiler::build(std::string& text, std::string_view piece) {
  full_ = full_ || text.size() + piece.size() > kMaxReplayBytes - builtBytes_;
  if (!full_) text += piece;
  return !full_;
}

// Puts a finished text on the stack, or on the list of statements, if it still fits.
void DeCompiler::keepBuilt(std::deque<std::string>& place, std::string text) {
  full_ = full_ || text.size() > kMaxReplayBytes - builtBytes_;
  if (full_) return;
  builtBytes_ += text.size();
  place.push_back(std::move(text));
}

void DeCompiler::pushBuilt(const char* kind, const std::string& text) {
  std::string entry;
  if (build(entry, kind) && build(entry, kFieldSeparator) && build(entry, text)) keepBuilt(stack_, std::move(entry));
}

// Pops up to `count` arguments and appends their value parts, with a comma behind each but the `count`-th; or, without
// `commaBehindTheLast`, behind each but the last one there is.
void DeCompiler::appendArguments(std::string& text, long count, bool commaBehindTheLast) {
  for (long taken = 1; taken <= count && has(1) && !full_; ++taken) {
    build(text, popValue());
    if (taken < count && (commaBehindTheLast || has(1))) build(text, ",");
  }
}

// Records the statement that `text`, up to its parenthesis, and `count` arguments make, and pushes its result.
void DeCompiler::recordCall(std::string text, long count) {
  appendArguments(text, count, true);
  if (!build(text, ")")) return;
  pushBuilt("returnValueOfFunction", text);
  keepBuilt(statements_, std::move(text));
}

// The value of the first variable whose name holds `name` (and that has a value, if asked for); null if there is none.
const std::string* DeCompiler::findVariable(const std::string& name, bool withValue) const {
  for (std::size_t i = 0; i < variableNames_.size(); ++i) {
    if (contains(variableNames_[i], name) && !(withValue && variableValues_[i].empty())) {
      return &variableValues_[i];
    }
  }
  return nullptr;
}

// ---- handlers with logic --------------------------------------------------------------------------------------------

unsigned DeCompiler::handleActionPush(Lines argumentLines) {
  return readActionPush({argumentLines.data(), argumentLines.data() + argumentLines.size()});
}

unsigned DeCompiler::readActionPush(ArgumentLines lines) {
  for (const std::string& line : lines) {
    std::string entry;
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
    if (full_) return RUN_SUCCESS;
    if (copiesRegister) {
      keepBuilt(stack_, std::move(entry));  // a short line can ask for a long register many times
    } else {
      stack_.push_back(std::move(entry));
    }
  }
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionCallMethod(Lines) {
  const bool complete = has(3);
  const std::string method = complete ? popValue() : std::string();
  const std::string object = complete ? popValue() : std::string();
  const long count = complete ? number(popValue()) : 0;
  std::string text;
  if (build(text, object) && build(text, ".") && build(text, method) && build(text, "(")) recordCall(text, count);
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionCallFunction(Lines) {
  const bool complete = has(2);
  const std::string function = complete ? popValue() : std::string();
  const long count = complete ? number(popValue()) : 0;
  std::string text;
  if (build(text, function) && build(text, "(")) recordCall(text, count);
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionNewObject(Lines) {
  const bool complete = has(2);
  const std::string className = complete ? popValue() : std::string();
  const long count = complete ? number(popValue()) : 0;
  std::string text;
  build(text, "new " + className + "(");
  appendArguments(text, count, false);
  build(text, ")");
  pushBuilt("newObject", text);
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionNewMethod(Lines) {
  const bool complete = has(3);
  const std::string method = complete ? popValue() : std::string();
  const std::string object = complete ? popValue() : std::string();
  const long count = complete ? number(popValue()) : 0;
  std::string text;
  build(text, "new " + object + "." + method + "(");
  appendArguments(text, count, false);
  build(text, ")");
  pushBuilt("New Method", text);
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionInitObject(Lines) {
  const long count = has(1) ? number(popValue()) : 0;
  std::string text = "{";
  for (long taken = 0; taken < count && has(2) && !full_; ++taken) {
    const std::string value = popValue();
    const std::string name = popValue();
    build(text, (taken > 0 ? "," : "") + name + ":\"" + value + "\"");
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
  const std::string member = complete ? popValue() : std::string();
  const std::string object = complete ? popValue() : std::string();
  std::string name;
  if (!build(name, object) || !build(name, ".") || !build(name, member)) return RUN_SUCCESS;
  if (const std::string* value = findVariable(name, false)) {
    stack_.push_back(*value);
  } else {
    pushBuilt("valueOfProperty", name);
  }
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionGetVariable(Lines) {
  std::string entry = has(1) ? pop() : std::string();
  const std::string* value = findVariable(valuePart(entry), true);
  if (value != nullptr) entry = *value;
  stack_.push_back(std::move(entry));
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

unsigned DeCompiler::handleActionDefineFunction2(Lines argumentLines) {
  return readActionDefineFunction2({argumentLines.data(), argumentLines.data() + argumentLines.size()});
}

// A function's body starts on an empty stack, with the preloaded names and its parameters' names in the registers.
unsigned DeCompiler::readActionDefineFunction2(ArgumentLines lines) {
  std::size_t preloads = 1;
  const auto store = [&](unsigned long n, std::string_view value) {
    if (n < registers_.size()) registers_[n] = value;
  };
  for (const std::string& line : lines) {
    std::string_view parameter;  // the number of the register that the next field's value goes to
    forEachPair(line, [&](std::string_view key, std::string_view value) {
      if (parameter.data() != nullptr) {
        store(static_cast<unsigned long>(number(parameter)), value);
        parameter = {};
        return true;
      }
      if (contains(key, "Preloaded") && namesAPreload(value)) store(preloads++, value);
      if (contains(key, "reg$")) parameter = value;
      return true;
    });
  }
  stack_.clear();
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionPushDuplicate(Lines) {
  const std::string top = has(1) ? pop() : std::string();
  stack_.push_back(top);
  keepBuilt(stack_, top);
  return RUN_SUCCESS;
}

// KEPT: the two entries come back in their former order. Statements depend on it. (test StackSwapSwapsNothing)
unsigned DeCompiler::handleActionStackSwap(Lines) {
  return RUN_SUCCESS;
}

unsigned DeCompiler::handleActionImplementsOp(Lines) {
  if (!has(2)) return RUN_SUCCESS;
  (void)pop();
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

unsigned DeCompiler::handleActionCastOp(Lines) {
  std::string kept;
  if (has(2)) {
    (void)pop();
    kept = pop();
  }
  stack_.push_back(std::move(kept));
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
