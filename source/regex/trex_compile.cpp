// Pattern compiler: reads a pattern once, left to right, and appends a node for each thing it reads.
//
// The order in which nodes are made is part of the dialect (the "invalid range" rule compares a node's index), so each
// function below makes its node where the text of the pattern asks for it. An error jumps straight back into
// trex_compile; between there and trexFail no frame holds anything that needs a destructor.
// Test: tests/regex/trex_test.cpp.

#include <cctype>
#include <cstring>

#include "regex/trex_expression.h"

TrexExpression* g_exp = nullptr;

namespace {

constexpr std::int32_t kNone = -1;
constexpr std::int32_t kUnbounded = 0xFFFF;
constexpr int kMaxDigits = 9;
constexpr const char* kClassLetters = "aAcCdDlpPsSuwWxX";

[[noreturn]] void fail(TrexExpression& e, const char* message) {
  if (e.error != nullptr) *e.error = message;
  std::longjmp(e.abort->place, 1);
}

std::int32_t newNode(TrexExpression& e, std::int32_t kind, std::int32_t left = kNone, std::int32_t right = kNone) {
  e.nodes.push_back({kind, left, right, kNone});
  return static_cast<std::int32_t>(e.nodes.size()) - 1;
}

unsigned char current(const TrexExpression& e) {
  return static_cast<unsigned char>(*e.cursor);
}

bool accept(TrexExpression& e, char byte) {
  if (*e.cursor != byte) return false;
  ++e.cursor;
  return true;
}

void expect(TrexExpression& e, char byte, const char* message) {
  if (!accept(e, byte)) fail(e, message);
}

unsigned char takePrintable(TrexExpression& e) {
  const unsigned char byte = current(e);
  if (!std::isprint(byte)) fail(e, "letter expected");
  ++e.cursor;
  return byte;
}

// The byte that `letter` stands for after a backslash: a control character for f, n, r, t and v, else itself.
unsigned char escapedByte(unsigned char letter) {
  switch (letter) {
    case 'f':
      return '\f';
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    case 'v':
      return '\v';
    default:
      return letter;
  }
}

unsigned char takeEscape(TrexExpression& e) {
  const unsigned char letter = current(e);
  if (letter == 0) fail(e, "unexpected character");  // a lone backslash at the end
  ++e.cursor;
  return letter;
}

std::int32_t parseCharacter(TrexExpression& e, bool inClass) {
  if (!accept(e, '\\')) return newNode(e, takePrintable(e));
  const unsigned char letter = takeEscape(e);
  if (std::strchr(kClassLetters, letter) != nullptr) return newNode(e, TREX_NODE_CLASS_ESCAPE, letter);
  if (!inClass && (letter == 'b' || letter == 'B')) return newNode(e, TREX_NODE_BOUNDARY, letter);
  return newNode(e, escapedByte(letter));
}

unsigned char parseRangeEnd(TrexExpression& e) {
  return accept(e, '\\') ? escapedByte(takeEscape(e)) : takePrintable(e);
}

// A range whose low end is the item node `low`; the cursor stands behind the hyphen.
std::int32_t parseRange(TrexExpression& e, std::int32_t low) {
  if (*e.cursor == ']') fail(e, "unfinished range");
  // KEPT: the index of the low end's node is compared, not its byte, so "z-a" compiles and matches nothing. Which
  // patterns compile is part of the exported interface. (test RangeCheckComparesTheNodeIndex)
  if (low > current(e)) fail(e, "invalid range");
  const std::int32_t lowKind = e.nodes[static_cast<std::size_t>(low)].kind;
  if (lowKind == TREX_NODE_CLASS_ESCAPE) fail(e, "cannot use character classes in ranges");
  return newNode(e, TREX_NODE_RANGE, lowKind, parseRangeEnd(e));
}

std::int32_t parseClass(TrexExpression& e) {
  const std::int32_t node = newNode(e, accept(e, '^') ? TREX_NODE_CLASS_NEGATED : TREX_NODE_CLASS);
  if (*e.cursor == ']') fail(e, "empty class");
  std::int32_t last = kNone;
  do {
    std::int32_t item = parseCharacter(e, true);
    if (accept(e, '-')) item = parseRange(e, item);
    if (last == kNone) {
      e.nodes[static_cast<std::size_t>(node)].left = item;
    } else {
      e.nodes[static_cast<std::size_t>(last)].next = item;
    }
    last = item;
  } while (*e.cursor != ']' && *e.cursor != '\0');
  expect(e, ']', "expected paren");
  return node;
}

std::int32_t parseNumber(TrexExpression& e) {
  std::int32_t value = 0;
  for (int digits = 0; std::isdigit(current(e)); ++digits) {
    if (digits == kMaxDigits) fail(e, "overflow in numeric constant");
    value = value * 10 + (*e.cursor++ - '0');
  }
  return value;
}

// Wraps `element` in a repetition if a quantifier follows; otherwise returns it as it is.
std::int32_t parseQuantifier(TrexExpression& e, std::int32_t element) {
  std::int32_t min = 0;
  std::int32_t max = kUnbounded;
  if (accept(e, '+')) {
    min = 1;
  } else if (accept(e, '?')) {
    max = 1;
  } else if (accept(e, '{')) {
    if (!std::isdigit(current(e))) fail(e, "number expected");
    min = max = parseNumber(e);
    if (accept(e, ',')) {
      max = std::isdigit(current(e)) ? parseNumber(e) : kUnbounded;
      expect(e, '}', "expected paren");
    } else {
      expect(e, '}', ", or } expected");
    }
  } else if (!accept(e, '*')) {
    return element;
  }
  const std::uint32_t bounds = static_cast<std::uint32_t>(min) << 16 | (static_cast<std::uint32_t>(max) & kUnbounded);
  return newNode(e, TREX_NODE_REPEAT, element, static_cast<std::int32_t>(bounds));
}

// Appends `node` to the list that is open last.
void append(TrexExpression& e, std::int32_t node) {
  TrexExpression::OpenList& list = e.open.back();
  TrexNode& owner = e.nodes[static_cast<std::size_t>(list.owner)];
  if (list.tail != kNone) {
    e.nodes[static_cast<std::size_t>(list.tail)].next = node;
  } else if (owner.kind == TREX_NODE_ALTERNATION) {
    owner.right = node;
  } else {
    owner.left = node;
  }
  list.tail = node;
}

// A list starts: at the start of the pattern, after "(" or after "|". It may open with its own "^".
void startList(TrexExpression& e) {
  if (accept(e, '^')) append(e, newNode(e, TREX_NODE_BEGIN));
}

void openGroup(TrexExpression& e, std::int32_t group) {
  e.open.push_back({group, group, kNone});
  startList(e);
}

// The node of a group; the cursor stands behind its "(".
std::int32_t parseGroupHead(TrexExpression& e) {
  if (!accept(e, '?')) return newNode(e, TREX_NODE_GROUP, kNone, e.groups++);
  expect(e, ':', "expected paren");
  return newNode(e, TREX_NODE_GROUP_NOCAPTURE);
}

// "|": what was parsed so far becomes the left side of an alternation whose right side is the list that follows.
void startAlternative(TrexExpression& e) {
  TrexExpression::OpenList& list = e.open.back();
  const std::int32_t alternation = newNode(e, TREX_NODE_ALTERNATION);
  TrexNode& owner = e.nodes[static_cast<std::size_t>(list.owner)];
  std::int32_t& operand = owner.kind == TREX_NODE_ALTERNATION ? owner.right : owner.left;
  e.nodes[static_cast<std::size_t>(alternation)].left = operand;
  operand = alternation;
  list.owner = alternation;
  list.tail = kNone;
  startList(e);
}

// One element other than a group.
std::int32_t parseElement(TrexExpression& e) {
  if (accept(e, '$')) return newNode(e, TREX_NODE_END);
  if (accept(e, '.')) return newNode(e, TREX_NODE_ANY);
  if (accept(e, '[')) return parseClass(e);
  return parseCharacter(e, false);
}

// Whether the list goes on with a further element; if not, a "|", a ")" or the end of the pattern decides.
bool listGoesOn(const TrexExpression& e) {
  return std::strchr("|)*+", *e.cursor) == nullptr;
}

void parsePattern(TrexExpression& e) {
  if (*e.cursor == '\0') fail(e, "unexpected character");
  openGroup(e, newNode(e, TREX_NODE_GROUP, kNone, e.groups++));
  for (;;) {
    if (accept(e, '(')) {
      openGroup(e, parseGroupHead(e));
      continue;
    }
    append(e, parseQuantifier(e, parseElement(e)));
    while (!listGoesOn(e)) {  // the terminator is in strchr's string, too
      if (accept(e, '|')) {
        startAlternative(e);
        break;
      }
      if (e.open.size() == 1) {
        if (*e.cursor != '\0') fail(e, "unexpected character");
        return;
      }
      expect(e, ')', "expected paren");
      const std::int32_t group = e.open.back().group;
      e.open.pop_back();
      append(e, parseQuantifier(e, group));
    }
  }
}

}  // namespace

bool trexClassLetterMatches(char letter, unsigned char byte) {
  switch (letter) {
    case 'a':
      return std::isalpha(byte) != 0;
    case 'A':
      return std::isalpha(byte) == 0;
    case 'c':
      return std::iscntrl(byte) != 0;
    case 'C':
      return std::iscntrl(byte) == 0;
    case 'd':
      return std::isdigit(byte) != 0;
    case 'D':
      return std::isdigit(byte) == 0;
    case 'l':
      return std::islower(byte) != 0;
    case 'p':
      return std::ispunct(byte) != 0;
    case 'P':
      return std::ispunct(byte) == 0;
    case 's':
      return std::isspace(byte) != 0;
    case 'S':
      return std::isspace(byte) == 0;
    case 'u':
      return std::isupper(byte) != 0;
    case 'w':
      return std::isalnum(byte) != 0 || byte == '_';
    case 'W':
      return std::isalnum(byte) == 0 && byte != '_';
    case 'x':
      return std::isxdigit(byte) != 0;
    case 'X':
      return std::isxdigit(byte) == 0;
    default:
      return false;
  }
}

extern "C" TrexExpression* trex_compile(const char* pattern, const char** error) {
  auto expression = std::make_unique<TrexExpression>();
  expression->cursor = pattern;
  expression->error = error;
  expression->nodes.reserve(std::strlen(pattern));
  g_exp = expression.get();
  if (setjmp(expression->abort->place) != 0) {
    g_exp = nullptr;
    return nullptr;
  }
  parsePattern(*expression);
  expression->subMatches.resize(static_cast<std::size_t>(expression->groups), TrexSubMatch{nullptr, 0});
  trexAnalyse(*expression);
  return expression.release();
}

extern "C" void trex_free(TrexExpression* expression) {
  delete expression;
}
