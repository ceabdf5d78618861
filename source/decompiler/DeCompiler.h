#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "decompiler/SimpleHandlers.h"

namespace FlashEngine_1_00 {

// Replays a listing of DeAssembler on a symbolic stack and collects the call statements in it: "myObj.getValue(0,abc)".
//
// Nothing is executed. The listing is walked once, line by line; branches do not branch, and a function's body is
// replayed where it is listed. A stack entry is "<kind>#@x441#<text>"; its value part is the text, or empty if the
// entry does not split into exactly two pieces. Results of operations are fixed placeholders, save for calls, member
// reads, constructions and object literals, which build their text from value parts.
//
// A replay ends quietly, with the statements made so far, when the time budget is spent or when the texts it builds
// exceed kMaxReplayBytes together.
class DeCompiler {
 public:
  using Lines = std::vector<std::string>;

  // Some consecutive lines of a listing.
  struct ArgumentLines {
    const std::string* first;
    const std::string* last;  // one past them
    const std::string* begin() const { return first; }
    const std::string* end() const { return last; }
  };

  DeCompiler();
  virtual ~DeCompiler();

  // ---- machine: DeCompiler.cpp --------------------------------------------------------------------------------------

  // Registers to "NullValue"; stack, variables, statements and constant pool empty.
  void InitVirtualMachine();

  // Sets `statements` to the call statements of `listing`, in the order of the calls. Always RUN_SUCCESS.
  unsigned SWFDeCompilerMain(Lines& listing, Lines& statements);

  // Whether kMaxReplayBytes ended the last replay.
  bool isCut() const { return full_; }

  // Appends the keys and values of one argument line, "ActionPush#@x441#type#@x442#0#@x441#value#@x442#x".
  void parserKeyValuePair(std::string line, Lines& keys, Lines& values);

  // Does nothing: a place for a debugger to stop at.
  void showState(std::string);

  // ---- handlers with logic: Handlers.cpp ----------------------------------------------------------------------------
  //
  // One member for each action record; `argumentLines` are the record's field lines, in which what is no field is
  // passed over. Always RUN_SUCCESS. A handler that finds fewer entries on the stack than it needs pops none and still
  // pushes its result.

  unsigned handleActionPush(Lines argumentLines);
  unsigned handleActionCallMethod(Lines argumentLines);
  unsigned handleActionCallFunction(Lines argumentLines);
  unsigned handleActionNewObject(Lines argumentLines);
  unsigned handleActionNewMethod(Lines argumentLines);
  unsigned handleActionInitObject(Lines argumentLines);
  unsigned handleActionInitArray(Lines argumentLines);
  unsigned handleActionGetMember(Lines argumentLines);
  unsigned handleActionGetVariable(Lines argumentLines);
  unsigned handleActionConstantPool(Lines argumentLines);
  unsigned handleActionStoreRegister(Lines argumentLines);
  unsigned handleActionDefineFunction2(Lines argumentLines);
  unsigned handleActionPushDuplicate(Lines argumentLines);
  unsigned handleActionStackSwap(Lines argumentLines);
  unsigned handleActionImplementsOp(Lines argumentLines);
  unsigned handleActionStartDrag(Lines argumentLines);
  unsigned handleActionCastOp(Lines argumentLines);

  // The handlers of the records whose field lines are read, for lines that stay where they are.
  unsigned readActionPush(ArgumentLines lines);
  unsigned readActionDefineFunction2(ArgumentLines lines);

  // ---- simple handlers: rows of SimpleHandlers.h --------------------------------------------------------------------

#define TARVO_DECLARE_HANDLER(action, pops, pushed) unsigned handleAction##action(Lines argumentLines);
  TARVO_SIMPLE_HANDLERS(TARVO_DECLARE_HANDLER)
#undef TARVO_DECLARE_HANDLER

 private:
  bool has(std::size_t entries) const {
    return stack_.size() >= entries;
  }
  std::string pop();
  std::string popValue();
  void popUpTo(long count);
  unsigned popAndPush(std::size_t pops, const char* pushed);
  static std::string valuePart(std::string entry);
  bool build(std::string& text, std::string_view piece);
  void keepBuilt(std::deque<std::string>& place, std::string text);
  void pushBuilt(const char* kind, const std::string& text);
  void appendArguments(std::string& text, long count, bool commaBehindTheLast);
  void recordCall(std::string text, long count);
  const std::string* findVariable(const std::string& name, bool withValue) const;

  std::array<std::string, 256> registers_;
  std::deque<std::string> stack_;  // the top is at the back
  Lines variableNames_;
  Lines variableValues_;  // parallel to the names
  std::deque<std::string> statements_;
  std::size_t builtBytes_ = 0;
  bool full_ = false;
};

}  // namespace FlashEngine_1_00
