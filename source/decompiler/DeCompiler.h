#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "decompiler/EntryStack.h"
#include "decompiler/SimpleHandlers.h"
#include "swf/ListedLine.h"

namespace FlashEngine_1_00 {

struct ReplayRow;

// Replays a listing of DeAssembler on a symbolic stack and collects the call statements in it: "myObj.getValue(0,abc)".
//
// Nothing is executed. The listing is walked once, line by line; branches do not branch, and a function's body is
// replayed where it is listed. A stack entry is "<kind>#@x441#<text>"; its value part is the text, or empty if the
// entry does not split into exactly two pieces. Results of operations are fixed placeholders, save for calls, member
// reads, constructions and object literals, which build their text from value parts.
//
// A replay ends quietly, with the statements made so far, when the time budget is spent or when the texts it builds
// exceed kMaxReplayBytes together. It takes a listing line by line, as it is made or from a list.
class DeCompiler {
 public:
  using Lines = std::vector<std::string>;

  DeCompiler();
  virtual ~DeCompiler();

  // ---- machine: DeCompiler.cpp --------------------------------------------------------------------------------------

  // Registers to "NullValue"; stack, variables and statements empty.
  void InitVirtualMachine();

  // Sets `statements` to the call statements of `listing`, in the order of the calls. Always RUN_SUCCESS.
  unsigned SWFDeCompilerMain(Lines& listing, Lines& statements);

  // A replay of a listing while it is made: its lines go to lineTaker(), between the two calls. It ends where the
  // listing does. `statements` is set as above: a movie that burns the time must not hide the calls before that.
  void beginReplay();
  ListingTaker& lineTaker() { return taker_; }
  void endReplay(Lines& statements);

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

  // ---- simple handlers: rows of SimpleHandlers.h --------------------------------------------------------------------

#define TARVO_DECLARE_HANDLER(action, pops, pushed) unsigned handleAction##action(Lines argumentLines);
  TARVO_SIMPLE_HANDLERS(TARVO_DECLARE_HANDLER)
#undef TARVO_DECLARE_HANDLER

 private:
  class Taker : public ListingTaker {
   public:
    explicit Taker(DeCompiler& replay) : replay_(replay) {}
    void expect(std::size_t) override {}
    void take(const ListedLine& line) override { replay_.takeLine(line); }

   private:
    DeCompiler& replay_;
  };

  void takeLine(const ListedLine& line);
  void takeText(std::string_view line);
  template <typename Line>
  void takeFields(const Line& line);
  void startRecord(const ReplayRow* row);
  template <typename Line>
  void pushFields(const Line& line);
  template <typename Line>
  void readFunctionFields(const Line& line);

  bool has(std::size_t entries) const {
    return stack_.size() >= entries;
  }
  std::string_view popValue();
  void popUpTo(long count);
  const std::string* findVariable(std::string_view name, bool withValue) const;
  unsigned popAndPush(std::size_t pops, const char* pushed);
  bool build(std::string& text, std::string_view piece);
  bool fits(std::size_t bytes);
  void pushKept(std::string_view entry);
  void pushBuilt(std::string_view kind, std::string_view text);
  void appendArguments(std::string& text, long count, bool commaBehindTheLast);
  void recordCall(std::string text, long count);

  std::array<std::string, 256> registers_;
  EntryStack stack_;
  // No record is known to set a variable: the table stays empty, and each name stands for its value.
  Lines variableNames_;
  Lines variableValues_;  // parallel to the names
  std::string member_;    // the text of a member read under construction
  Lines statements_;
  const ReplayRow* row_ = nullptr;  // of the record whose argument lines are being taken
  std::size_t preloads_ = 0;        // of the function whose head is being taken, and one more
  Taker taker_{*this};
  std::size_t builtBytes_ = 0;
  bool full_ = false;
};

}  // namespace FlashEngine_1_00
