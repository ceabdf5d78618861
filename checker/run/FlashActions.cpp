// ActionScript byte code as script: a stack of expressions, and a statement for each that is taken off it without use.
// Test: tests/checker/FlashMovie_test.cpp.

#include "checker/run/FlashActions.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string_view>
#include <vector>

#include "checker/run/MovieBytes.h"

using FlashEngine_1_00::ByteView;
using FlashEngine_1_00::Position;

namespace {

constexpr std::size_t kMaxScript = 2'000'000;
constexpr std::size_t kMaxExpression = 4000;  // longer ones get a variable, so that none grows without end
constexpr std::size_t kMaxRecords = 1'000'000;
constexpr int kMaxNesting = 100;
constexpr std::size_t kMaxOddBranches = 64;

enum Action : int {
  kPop = 0x17,
  kGetVariable = 0x1C,
  kSetVariable = 0x1D,
  kStringAdd = 0x21,
  kThrow = 0x2A,
  kCastOp = 0x2B,
  kImplements = 0x2C,
  kDefineLocal = 0x3C,
  kCallFunction = 0x3D,
  kReturn = 0x3E,
  kNewObject = 0x40,
  kDefineLocal2 = 0x41,
  kInitArray = 0x42,
  kInitObject = 0x43,
  kAdd2 = 0x47,
  kPushDuplicate = 0x4C,
  kStackSwap = 0x4D,
  kGetMember = 0x4E,
  kSetMember = 0x4F,
  kCallMethod = 0x52,
  kNewMethod = 0x53,
  kExtends = 0x69,
  kGetUrl = 0x83,
  kStoreRegister = 0x87,
  kConstantPool = 0x88,
  kDefineFunction2 = 0x8E,
  kTry = 0x8F,
  kWith = 0x94,
  kPush = 0x96,
  kJump = 0x99,
  kGetUrl2 = 0x9A,
  kDefineFunction = 0x9B,
  kIf = 0x9D,
};

// Actions that objects do not go through: how many values they take, and whether they leave one.
struct Plain {
  int code;
  std::size_t takes;
  bool leaves;
};
constexpr Plain kPlain[] = {
    {0x0A, 2, true},  {0x0B, 2, true},  {0x0C, 2, true}, {0x0D, 2, true},  {0x0E, 2, true},  {0x0F, 2, true},
    {0x10, 2, true},  {0x11, 2, true},  {0x12, 1, true}, {0x13, 2, true},  {0x14, 1, true},  {0x15, 3, true},
    {0x18, 1, true},  {0x20, 1, false}, {0x22, 2, true}, {0x23, 3, false}, {0x24, 3, false}, {0x25, 1, false},
    {0x26, 1, false}, {0x29, 2, true},  {0x30, 1, true}, {0x31, 1, true},  {0x32, 1, true},  {0x33, 1, true},
    {0x34, 0, true},  {0x35, 3, true},  {0x36, 1, true}, {0x37, 1, true},  {0x3A, 2, true},  {0x3B, 1, true},
    {0x3F, 2, true},  {0x44, 1, true},  {0x45, 1, true}, {0x46, 1, true},  {0x48, 2, true},  {0x49, 2, true},
    {0x4A, 1, true},  {0x4B, 1, true},  {0x50, 1, true}, {0x51, 1, true},  {0x54, 2, true},  {0x55, 1, true},
    {0x60, 2, true},  {0x61, 2, true},  {0x62, 2, true}, {0x63, 2, true},  {0x64, 2, true},  {0x65, 2, true},
    {0x66, 2, true},  {0x67, 2, true},  {0x68, 2, true}, {0x8D, 1, false}, {0x9D, 1, false}, {0x9E, 1, false},
    {0x9F, 1, false},
};

bool isWord(std::string_view text) {
  const auto isLetter = [](char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$'; };
  return !text.empty() && isLetter(text[0]) && std::all_of(text.begin(), text.end(), [&](char c) {
    return isLetter(c) || std::isdigit(static_cast<unsigned char>(c)) != 0;
  });
}

bool isReserved(std::string_view word) {
  static constexpr const char* kWords[] = {
      "break", "case",   "catch", "class",      "const",   "continue", "debugger", "default", "delete",
      "do",    "else",   "enum",  "export",     "extends", "false",    "finally",  "for",     "function",
      "if",    "import", "in",    "instanceof", "new",     "null",     "return",   "super",   "switch",
      "throw", "true",   "try",   "typeof",     "var",     "void",     "while",    "with",    "yield"};
  return std::any_of(std::begin(kWords), std::end(kWords), [&](const char* other) { return word == other; });
}

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    if (static_cast<unsigned char>(c) >= ' ')
      result += c;
    else
      result += c == '\n' ? "\\n" : " ";
  }
  return result + '"';
}

// A variable's name as script has it: "tv", or "_root.tv", which is a path.
std::string variable(std::string_view name) {
  std::string result;
  for (std::size_t at = 0; at <= name.size();) {
    const std::size_t end = std::min(name.find_first_of(".:/", at), name.size());
    const std::string_view part = name.substr(at, end - at);
    at = end + 1;
    if (part.empty()) continue;
    if (!isWord(part)) return "$unnamed";
    result += result.empty() ? "" : ".";
    result += result.empty() && isReserved(part) ? "$" : "";
    result += part;
  }
  return result.empty() ? "$unnamed" : result;
}

struct Value {
  std::string text = "undefined";
  bool isString = false;
  std::string string = {};  // what it is, if it is a constant text
  long number = 0;
};

Value expression(std::string text) {
  return {std::move(text), false, {}, 0};
}

// Whether using an expression twice says nothing else than using it once.
bool isPlainText(const Value& value) {
  return value.isString || (value.text.size() < 60 && value.text.find_first_of("({[") == std::string::npos);
}

// As what stands before a '.', '[' or '('.
std::string asObject(const Value& value) {
  const char first = value.text[0];
  const bool isOpen = value.text.compare(0, 8, "function") == 0 || first == '{' || first == '-' ||
                      std::isdigit(static_cast<unsigned char>(first)) != 0;
  return isOpen ? '(' + value.text + ')' : value.text;
}

}  // namespace

class FlashActions::Writer {
 public:
  void add(const ByteView& block) {
    block_ = block;
    starts_.assign(static_cast<std::size_t>(block.size()) + 1, false);
    branches_.clear();
    run(0, block.size());
    flush();
    for (std::size_t i = 0; i < branches_.size(); ++i) {
      if (starts_[static_cast<std::size_t>(branches_[i])]) continue;
      if (++oddBranches_ > kMaxOddBranches) isWhole_ = false;
      if (!isWhole_) return;
      run(branches_[i], block.size());
      flush();
    }
  }

  void emit(const std::string& statement) {
    const bool isOpen = statement.compare(0, 8, "function") == 0 || statement[0] == '{';
    write(isOpen ? '(' + statement + ");\n" : statement + ";\n");
  }

  bool isWhole() const { return isWhole_; }

  std::string text() const {
    if (out_.empty()) return out_;
    std::string declarations = "var $0, $1, $2, $3";
    for (const std::string& name : declared_)
      declarations += ", " + name;
    return out_ + declarations + ";\n";
  }

 private:
  void write(const std::string& text) {
    isWhole_ = isWhole_ && out_.size() + text.size() <= kMaxScript;
    if (isWhole_) out_ += text;
  }

  // ---- the stack

  Value pop() {
    if (stack_.empty()) return {};
    Value top = std::move(stack_.back());
    stack_.pop_back();
    return top;
  }

  void push(Value value) {
    if (!value.isString && value.text.size() > kMaxExpression && value.text.compare(0, 8, "function") != 0)
      value = named(std::move(value));
    stack_.push_back(std::move(value));
  }
  void push(std::string text) { push(expression(std::move(text))); }

  // The value of a variable that is given this one.
  Value named(Value value) {
    const std::string name = "$t" + std::to_string(++temporaries_);
    emit("var " + name + " = " + value.text);
    return expression(name);
  }

  // A value that nothing uses: what it calls is a statement.
  void drop(const Value& value) {
    if (value.text.find('(') != std::string::npos && !value.isString) emit(value.text);
  }

  void flush() {
    while (!stack_.empty())
      drop(pop());
  }

  std::string arguments(long count) {
    std::string text;
    for (long i = 0; i < count && !stack_.empty(); ++i)
      text += (i > 0 ? ", " : "") + pop().text;
    return text;
  }

  // ---- records

  void run(Position begin, Position end) {
    if (++nesting_ <= kMaxNesting) {
      for (Position at = begin; at < end && isWhole_;)
        at = step(at, end);
    } else {
      isWhole_ = false;
    }
    --nesting_;
  }

  // A block in braces, which leaves nothing on the stack.
  void runAs(const std::string& head, Position begin, Position end) {
    write(head + " {\n");
    const std::size_t height = stack_.size();
    run(begin, end);
    while (stack_.size() > height)
      drop(pop());
    write("}\n");
  }

  // The place behind the record at `at`, and behind the blocks in it.
  Position step(Position at, Position end) {
    if (++records_ > kMaxRecords) isWhole_ = false;
    starts_[static_cast<std::size_t>(at)] = true;
    const int code = block_.at(at);
    const bool hasOperands = code >= 0x80;
    const Position begin = at + (hasOperands ? 3 : 1);
    const Position behind = begin + (hasOperands ? block_.at(at + 1) | block_.at(at + 2) << 8 : 0);
    if (behind > end) return end;
    MovieBytes operands(block_, begin, behind);
    switch (code) {
      case kDefineFunction:
      case kDefineFunction2:
        return defineFunction(operands, behind, end, code == kDefineFunction2);
      case kWith: {
        const Position last = std::min<Position>(behind + operands.word(), end);
        runAs("with (" + pop().text + ")", behind, last);
        return last;
      }
      case kTry:
        return tryBlocks(operands, behind, end);
      case kJump:
      case kIf:
        noteBranch(behind + static_cast<std::int16_t>(operands.word()));
        break;
      default:
        break;
    }
    act(code, operands);
    return behind;
  }

  void noteBranch(Position target) {
    if (target >= 0 && target < block_.size() && branches_.size() < kMaxRecords) branches_.push_back(target);
  }

  void act(int code, MovieBytes& operands) {
    switch (code) {
      case kConstantPool:
        return readPool(operands);
      case kPush:
        while (!operands.isAtEnd())
          pushOperand(operands);
        return;
      case kStoreRegister:
        return store(operands.byte());
      case kGetUrl:
        return emit("getURL(" + quoted(operands.string()) + ')');
      case kGetUrl2:
        (void)pop();
        return emit("getURL(" + pop().text + ')');
      case kPop:
        return drop(pop());
      case kPushDuplicate: {
        Value top = pop();
        if (!isPlainText(top)) top = named(std::move(top));
        stack_.push_back(top);
        return stack_.push_back(std::move(top));
      }
      case kStackSwap:
        if (stack_.size() > 1) std::swap(stack_.back(), stack_[stack_.size() - 2]);
        return;
      case kThrow:
      case kReturn:
        return emit((code == kThrow ? "throw " : "return ") + pop().text);
      case kAdd2:
      case kStringAdd: {
        const Value right = pop();
        return push('(' + pop().text + " + " + right.text + ')');
      }
      default:
        return actOnObjects(code);
    }
  }

  void actOnObjects(int code) {
    switch (code) {
      case kGetVariable:
        return push(variableOf(pop()));
      case kSetVariable:
      case kDefineLocal: {
        const Value value = pop();
        return assign(pop(), value.text, code == kDefineLocal);
      }
      case kDefineLocal2:
        return declare(variableOf(pop()));
      case kGetMember: {
        const Value name = pop();
        return push(member(pop(), name));
      }
      case kSetMember: {
        const Value value = pop();
        const Value name = pop();
        return emit(member(pop(), name) + " = " + value.text);
      }
      case kCallFunction:
      case kNewObject: {
        const std::string name = variableOf(pop());
        const long count = pop().number;
        return push((code == kNewObject ? "new " : "") + name + '(' + arguments(count) + ')');
      }
      case kCallMethod:
      case kNewMethod: {
        const Value name = pop();
        const Value object = pop();
        const bool isItself = (name.isString && name.string.empty()) || name.text == "undefined";
        const std::string callee = isItself ? asObject(object) : member(object, name);
        const long count = pop().number;
        return push((code == kNewMethod ? "new " : "") + callee + '(' + arguments(count) + ')');
      }
      case kInitArray:
        return push('[' + arguments(pop().number) + ']');
      case kInitObject:
        return initObject(pop().number);
      case kCastOp: {
        Value object = pop();
        drop(pop());
        return push(std::move(object));
      }
      case kExtends: {
        const Value parent = pop();
        return emit(asObject(pop()) + ".prototype = Object.create(" + asObject(parent) + ".prototype)");
      }
      case kImplements:
        (void)pop();
        return (void)arguments(pop().number);
      default:
        return actPlainly(code);
    }
  }

  void actPlainly(int code) {
    const auto* row = std::find_if(std::begin(kPlain), std::end(kPlain),
                                   [&](const Plain& candidate) { return candidate.code == code; });
    if (row == std::end(kPlain)) return;
    for (std::size_t i = 0; i < row->takes && !stack_.empty(); ++i)
      drop(pop());
    if (row->leaves) push("0");
  }

  void initObject(long count) {
    std::string text;
    for (long i = 0; i < count && stack_.size() > 1; ++i) {
      const Value value = pop();
      const Value name = pop();
      text += (i > 0 ? ", " : "") + quoted(name.isString ? name.string : name.text) + ": " + value.text;
    }
    push('{' + text + '}');
  }

  static std::string variableOf(const Value& name) { return name.isString ? variable(name.string) : "$unnamed"; }

  static std::string member(const Value& object, const Value& name) {
    const bool isPlain = name.isString && isWord(name.string);
    return asObject(object) + (isPlain ? '.' + name.string : '[' + name.text + ']');
  }

  // A movie's variables are its own: they are declared, once.
  void declare(const std::string& name) {
    if (functions_ > 0) return emit("var " + name);
    if (name.find('.') == std::string::npos && name != "this") declared_.insert(name);
  }

  void assign(const Value& to, const std::string& value, bool isLocal) {
    const std::string name = variableOf(to);
    const bool isPath = name.find('.') != std::string::npos;
    if (isLocal && functions_ > 0 && !isPath) return emit("var " + name + " = " + value);
    if (!isPath && name != "this") declared_.insert(name);
    emit(name + " = " + value);
  }

  std::string registerName(unsigned number) {
    registers_.insert(number);
    return '$' + std::to_string(number);
  }

  void store(unsigned number) {
    Value top = pop();
    emit(registerName(number) + " = " + top.text);
    push(isPlainText(top) ? std::move(top) : expression(registerName(number)));
  }

  void readPool(MovieBytes& operands) {
    pool_.clear();
    for (unsigned left = operands.word(); left > 0 && !operands.isAtEnd(); --left)
      pool_.emplace_back(operands.string());
  }

  void pushString(const std::string& text) {
    stack_.push_back({quoted(text), true, text, std::strtol(text.c_str(), nullptr, 10)});
  }
  void pushConstant(std::size_t index) { pushString(index < pool_.size() ? pool_[index] : std::string()); }

  void pushNumber(double number) {
    Value value;
    value.number = number > -1e9 && number < 1e9 ? static_cast<long>(number) : 0;
    value.text = std::to_string(value.number);
    stack_.push_back(std::move(value));
  }

  void pushOperand(MovieBytes& operands) {
    switch (operands.byte()) {
      case 0:
        return pushString(std::string(operands.string()));
      case 1: {
        const std::uint32_t bits = operands.doubleWord();
        float number = 0;
        std::memcpy(&number, &bits, sizeof number);
        return pushNumber(static_cast<double>(number));
      }
      case 2:
        return push("null");
      case 4:
        return push(registerName(operands.byte()));
      case 5:
        return push(operands.byte() != 0 ? "true" : "false");
      case 6: {
        const std::uint64_t high = operands.doubleWord();
        const std::uint64_t bits = high << 32 | operands.doubleWord();
        double number = 0;
        std::memcpy(&number, &bits, sizeof number);
        return pushNumber(number);
      }
      case 7:
        return pushNumber(static_cast<double>(static_cast<std::int32_t>(operands.doubleWord())));
      case 8:
        return pushConstant(operands.byte());
      case 9:
        return pushConstant(operands.word());
      default:
        return push("undefined");
    }
  }

  // ---- nested blocks

  Position defineFunction(MovieBytes& operands, Position behind, Position end, bool isSecond) {
    const std::string name(operands.string());
    const unsigned count = operands.word();
    if (isSecond) (void)operands.byte();
    const unsigned flags = isSecond ? operands.word() : 0;
    std::string head;
    std::string parameters;
    unsigned next = 1;
    static constexpr std::pair<unsigned, const char*> kPreloads[] = {{1, "this"},   {4, "arguments"}, {16, "$super"},
                                                                     {64, "_root"}, {128, "_parent"}, {256, "_global"}};
    for (const auto& [bit, value] : kPreloads)
      if ((flags & bit) != 0) head += '$' + std::to_string(next++) + " = " + value + ";\n";
    for (unsigned i = 0; i < count && !operands.isAtEnd(); ++i) {
      const unsigned number = isSecond ? operands.byte() : 0;
      const std::string given = variable(operands.string());
      const std::string parameter = given.find('.') == std::string::npos ? given : "$unnamed";
      parameters += (parameters.empty() ? "" : ", ") + parameter;
      if (number == 0) continue;
      head += '$' + std::to_string(number) + " = " + parameter + ";\n";
      next = std::max(next, number + 1);
    }
    const Position last = std::min<Position>(behind + operands.word(), end);
    const std::string made =
        "function (" + parameters + ") {\n" + bodyOf(behind, last, head, isSecond ? next : 0) + '}';
    if (name.empty())
      push(made);
    else
      assign({quoted(name), true, name, 0}, made, true);
    return last;
  }

  // The text of a function's body, with registers of its own where it has some.
  std::string bodyOf(Position begin, Position end, const std::string& head, unsigned registers) {
    std::string outer = std::move(out_);
    std::vector<Value> outerStack = std::move(stack_);
    const std::set<unsigned> outerRegisters = std::move(registers_);
    out_ = head;
    stack_.clear();
    registers_.clear();
    ++functions_;
    run(begin, end);
    flush();
    --functions_;
    for (unsigned i = 1; i < registers; ++i)
      registers_.insert(i);
    if (registers > 0)
      for (const unsigned number : registers_)
        out_ += "var $" + std::to_string(number) + ";\n";
    std::string body = std::move(out_);
    if (outer.size() + body.size() > kMaxScript) isWhole_ = false;
    out_ = std::move(outer);
    stack_ = std::move(outerStack);
    registers_ = outerRegisters;
    return isWhole_ ? body : std::string();
  }

  Position tryBlocks(MovieBytes& operands, Position behind, Position end) {
    const unsigned flags = operands.byte();
    const std::array<unsigned, 3> sizes{operands.word(), operands.word(), operands.word()};
    const std::string given = (flags & 4) != 0 ? registerName(operands.byte()) : variable(operands.string());
    const std::string caught = given.find('.') == std::string::npos ? given : "$unnamed";
    Position at = behind;
    const auto block = [&](const std::string& head, unsigned size) {
      const Position last = std::min<Position>(at + size, end);
      runAs(head, at, last);
      at = last;
    };

    block("try", sizes[0]);
    if ((flags & 1) != 0) block("catch (" + caught + ")", sizes[1]);
    if ((flags & 2) != 0) block("finally", sizes[2]);
    return at;
  }

  ByteView block_{nullptr, 0};
  std::vector<bool> starts_;        // of records, by their place in the block
  std::vector<Position> branches_;  // where branches of the block lead
  std::vector<std::string> pool_;   // of constants
  std::vector<Value> stack_;
  std::set<std::string> declared_;  // variables of the movie
  std::set<unsigned> registers_;    // that the function uses
  std::string out_;
  std::size_t temporaries_ = 0;
  std::size_t records_ = 0;
  std::size_t oddBranches_ = 0;
  int nesting_ = 0;
  int functions_ = 0;
  bool isWhole_ = true;
};

FlashActions::FlashActions() : writer_(std::make_unique<Writer>()) {}
FlashActions::~FlashActions() = default;

void FlashActions::add(const ByteView& block) {
  writer_->add(block);
}

void FlashActions::addUrl(const std::string& url) {
  writer_->emit("getURL(" + quoted(url) + ')');
}

bool FlashActions::isWhole() const {
  return writer_->isWhole();
}

std::string FlashActions::text() const {
  return writer_->text();
}
