// One pass over the tokens. A block whose size stands in front of it is made on its own first, so that nothing but the
// offsets of branches is filled in later.

#include "swf-assembler/ActionRecords.h"

#include <cstdint>
#include <string_view>
#include <utility>

namespace swf_assembler {
namespace {

using namespace std::string_view_literals;

constexpr int kFirstCodeWithOperands = 0x80;
constexpr int kDefineFunction2 = 0x8E;
constexpr int kCodeInText = -1;

std::string sizeWord(std::size_t size, const Override& instead, int line) {
  if (!instead && size > UINT16_MAX)
    throw AssemblyError(line, std::to_string(size) + " is too much for a size of 16 bits");
  return instead ? little(*instead, 2) : little(size, 2);
}

class ActionParser {
 public:
  explicit ActionParser(TokenReader& reader) : in_(reader) {}

  Code actions();

 private:
  struct Record {
    int code;
    int line;
    Override length;
  };
  struct SizedCode {
    std::string size = little(0, 2);
    Code code;
  };

  // Rows of the tables. `operands` are letters that TokenReader::fields knows.
  struct Action {
    const char* name;
    int code;
    const char* operands = "";
    void (ActionParser::*write)(const Record&, Code&) = nullptr;  // for what letters cannot say
  };
  struct Value {
    const char* name;
    std::string_view start;
    const char* operands;
  };
  static const Action kActions[];
  static const Value kValues[];

  void labels(Code& code);
  void action(Code& code);
  void write(const Record& record, const std::string& operands, Code& code) const;
  SizedCode sizedCode();
  std::string pushValue();
  std::string parameters(bool withRegisters, int& count);

  void push(const Record& record, Code& code);
  void constantPool(const Record& record, Code& code);
  void branch(const Record& record, Code& code);
  void with(const Record& record, Code& code);
  void tryCatch(const Record& record, Code& code);
  void function(const Record& record, Code& code);
  void raw(const Record& record, Code& code);
  void plainBytes(const Record&, Code& code) { code.bytes += in_.hexWords(); }

  TokenReader& in_;
};

// clang-format off
// Codes and operands of the SWF file format; "raw" and "bytes" are the language's own.
const ActionParser::Action ActionParser::kActions[] = {
    {"End", 0x00}, {"NextFrame", 0x04}, {"PrevFrame", 0x05}, {"Play", 0x06}, {"Stop", 0x07}, {"ToggleQuality", 0x08},
    {"StopSounds", 0x09}, {"Add", 0x0A}, {"Subtract", 0x0B}, {"Multiply", 0x0C}, {"Divide", 0x0D}, {"Equals", 0x0E},
    {"Less", 0x0F}, {"And", 0x10}, {"Or", 0x11}, {"Not", 0x12}, {"StringEquals", 0x13}, {"StringLength", 0x14},
    {"StringExtract", 0x15}, {"Pop", 0x17}, {"ToInteger", 0x18}, {"GetVariable", 0x1C}, {"SetVariable", 0x1D},
    {"SetTarget2", 0x20}, {"StringAdd", 0x21}, {"GetProperty", 0x22}, {"SetProperty", 0x23}, {"CloneSprite", 0x24},
    {"RemoveSprite", 0x25}, {"Trace", 0x26}, {"StartDrag", 0x27}, {"EndDrag", 0x28}, {"StringLess", 0x29},
    {"Throw", 0x2A}, {"CastOp", 0x2B}, {"ImplementsOp", 0x2C}, {"FSCommand2", 0x2D}, {"RandomNumber", 0x30},
    {"MBStringLength", 0x31}, {"CharToAscii", 0x32}, {"AsciiToChar", 0x33}, {"GetTime", 0x34},
    {"MBStringExtract", 0x35}, {"MBCharToAscii", 0x36}, {"MBAsciiToChar", 0x37}, {"Delete", 0x3A}, {"Delete2", 0x3B},
    {"DefineLocal", 0x3C}, {"CallFunction", 0x3D}, {"Return", 0x3E}, {"Modulo", 0x3F}, {"NewObject", 0x40},
    {"DefineLocal2", 0x41}, {"InitArray", 0x42}, {"InitObject", 0x43}, {"TypeOf", 0x44}, {"TargetPath", 0x45},
    {"Enumerate", 0x46}, {"Add2", 0x47}, {"Less2", 0x48}, {"Equals2", 0x49}, {"ToNumber", 0x4A}, {"ToString", 0x4B},
    {"PushDuplicate", 0x4C}, {"StackSwap", 0x4D}, {"GetMember", 0x4E}, {"SetMember", 0x4F}, {"Increment", 0x50},
    {"Decrement", 0x51}, {"CallMethod", 0x52}, {"NewMethod", 0x53}, {"InstanceOf", 0x54}, {"Enumerate2", 0x55},
    {"BitAnd", 0x60}, {"BitOr", 0x61}, {"BitXor", 0x62}, {"BitLShift", 0x63}, {"BitRShift", 0x64},
    {"BitURShift", 0x65}, {"StrictEquals", 0x66}, {"Greater", 0x67}, {"StringGreater", 0x68}, {"Extends", 0x69},

    {"GotoFrame", 0x81, "w"}, {"GetURL", 0x83, "ss"}, {"StoreRegister", 0x87, "b"}, {"StrictMode", 0x89, "b"},
    {"WaitForFrame", 0x8A, "wb"}, {"SetTarget", 0x8B, "s"}, {"GoToLabel", 0x8C, "s"}, {"WaitForFrame2", 0x8D, "b"},
    {"GetURL2", 0x9A, "b"}, {"Call", 0x9E}, {"GotoFrame2", 0x9F, "b?w"},

    {"ConstantPool", 0x88, "", &ActionParser::constantPool},
    {"Push", 0x96, "", &ActionParser::push},
    {"Jump", 0x99, "", &ActionParser::branch},
    {"If", 0x9D, "", &ActionParser::branch},
    {"With", 0x94, "", &ActionParser::with},
    {"Try", 0x8F, "", &ActionParser::tryCatch},
    {"DefineFunction", 0x9B, "", &ActionParser::function},
    {"function", 0x9B, "", &ActionParser::function},
    {"DefineFunction2", kDefineFunction2, "", &ActionParser::function},
    {"function2", kDefineFunction2, "", &ActionParser::function},
    {"raw", kCodeInText, "", &ActionParser::raw},
    {"bytes", kCodeInText, "", &ActionParser::plainBytes},
};

// What a push can hold besides strings in quotes and bare numbers.
const ActionParser::Value ActionParser::kValues[] = {
    {"string", "\0"sv, "s"}, {"float", "\1"sv, "f"}, {"null", "\2"sv, ""}, {"undefined", "\3"sv, ""},
    {"register", "\4"sv, "b"}, {"reg", "\4"sv, "b"}, {"boolean", "\5"sv, "b"}, {"true", "\5\1"sv, ""},
    {"false", "\5\0"sv, ""}, {"double", "\6"sv, "g"}, {"int", "\7"sv, "i"}, {"const8", "\x8"sv, "b"},
    {"const16", "\x9"sv, "w"}, {"type", ""sv, "b"}, {"hex", ""sv, "h"},
};
// clang-format on

Code ActionParser::actions() {
  Code code;
  for (in_.skipLineEnds(); !in_.atListEnd(); in_.skipLineEnds()) {
    labels(code);
    if (!in_.atRecordEnd()) action(code);
    in_.expectRecordEnd();
  }
  return code;
}

void ActionParser::labels(Code& code) {
  while (in_.beforeColon()) {
    if (in_.atNumber()) in_.fail("a label cannot begin like a number");
    const int line = in_.line();
    code.addLabel(in_.text("a label"), line);
    in_.expect(':');
  }
}

void ActionParser::action(Code& code) {
  Record record{0, in_.line(), std::nullopt};
  const Action* action = in_.acceptRowOf(kActions);
  if (action == nullptr) in_.fail("unknown action " + in_.shown());
  record.code = action->code;
  if (action->code >= kFirstCodeWithOperands) record.length = in_.option("length", 16);
  if (action->write != nullptr) return (this->*action->write)(record, code);
  write(record, in_.fields(action->operands), code);
}

void ActionParser::write(const Record& record, const std::string& operands, Code& code) const {
  code.bytes += static_cast<char>(record.code);
  if (record.code < kFirstCodeWithOperands) return;
  code.bytes += sizeWord(operands.size(), record.length, record.line) + operands;
}

void ActionParser::push(const Record& record, Code& code) {
  std::string values;
  while (!in_.atRecordEnd())
    values += pushValue();
  write(record, values, code);
}

std::string ActionParser::pushValue() {
  if (in_.at(Kind::kString)) return '\0' + in_.field('s');
  if (in_.atNumber()) return in_.atWholeNumber() ? '\7' + in_.field('i') : '\6' + in_.field('g');
  const Value* value = in_.acceptRowOf(kValues);
  if (value == nullptr) in_.failExpected("a value");
  return std::string(value->start) + in_.fields(value->operands);
}

void ActionParser::constantPool(const Record& record, Code& code) {
  const Override wantsCount = in_.option("count", 16);
  std::string strings;
  long long count = 0;
  for (; !in_.atRecordEnd(); ++count)
    strings += in_.field('s');
  write(record, sizeWord(static_cast<std::size_t>(count), wantsCount, record.line) + strings, code);
}

void ActionParser::branch(const Record& record, Code& code) {
  std::string offset = little(0, 2);
  if (in_.atNumber()) {
    offset = in_.field('w');
  } else {
    if (!in_.at(Kind::kWord)) in_.failExpected("a label or a number");
    code.addBranch(code.bytes.size() + 3, in_.text("a label"), record.line);
  }
  write(record, offset, code);
}

ActionParser::SizedCode ActionParser::sizedCode() {
  const Override wantsSize = in_.option("size", 16);
  const int line = in_.line();
  Code code = in_.block([this] { return actions(); });
  return {sizeWord(code.bytes.size(), wantsSize, line), std::move(code)};
}

void ActionParser::with(const Record& record, Code& code) {
  const SizedCode body = sizedCode();
  write(record, body.size, code);
  code.append(body.code);
}

void ActionParser::tryCatch(const Record& record, Code& code) {
  constexpr int kHasCatch = 1, kHasFinally = 2, kCatchInRegister = 4;
  const Override wantsFlags = in_.option("flags", 8);
  const SizedCode body = sizedCode();
  SizedCode caught, last;
  int flags = 0;
  std::string target(1, '\0');
  if (in_.acceptInLaterLine("catch")) {
    const bool inRegister = in_.accept("reg") || in_.accept("register");
    flags |= inRegister ? kHasCatch | kCatchInRegister : kHasCatch;
    target = in_.field(inRegister ? 'b' : 's');
    caught = sizedCode();
  }
  if (in_.acceptInLaterLine("finally")) {
    flags |= kHasFinally;
    last = sizedCode();
  }
  const std::string sizes = body.size + caught.size + last.size;
  write(record, little(wantsFlags.value_or(flags), 1) + sizes + target, code);
  code.append(body.code);
  code.append(caught.code);
  code.append(last.code);
}

void ActionParser::function(const Record& record, Code& code) {
  const bool withRegisters = record.code == kDefineFunction2;
  const std::string name = in_.atMark('(') ? std::string(1, '\0') : in_.field('s');
  const Override registers = withRegisters ? in_.option("registers", 8) : std::nullopt;
  const Override flags = withRegisters ? in_.option("flags", 16) : std::nullopt;
  const Override wantsCount = in_.option("count", 16);
  int count = 0;
  const std::string names = parameters(withRegisters, count);
  const SizedCode body = sizedCode();
  std::string operands = name + little(wantsCount.value_or(count), 2);
  if (withRegisters) operands += little(registers.value_or(0), 1) + little(flags.value_or(0), 2);
  write(record, operands + names + body.size, code);
  code.append(body.code);
}

std::string ActionParser::parameters(bool withRegisters, int& count) {
  std::string names;
  in_.expect('(');
  for (; !in_.atMark(')'); ++count) {
    if (withRegisters && in_.beforeColon()) {
      names += in_.field('b');
      in_.expect(':');
    } else if (withRegisters) {
      names += '\0';  // not in a register
    }
    names += in_.text("a parameter") + '\0';
  }
  in_.expect(')');
  return names;
}

void ActionParser::raw(const Record& record, Code& code) {
  const Override wantsLength = in_.option("length", 16);
  const int actionCode = static_cast<int>(in_.integer(8) & 0xFF);
  const std::string operands = in_.hexWords();
  if (actionCode < kFirstCodeWithOperands && (wantsLength || !operands.empty()))
    in_.fail("a record below 0x80 has no operands");
  write({actionCode, record.line, wantsLength}, operands, code);
}

}  // namespace

Code readActions(TokenReader& reader) {
  return ActionParser(reader).actions();
}

}  // namespace swf_assembler
