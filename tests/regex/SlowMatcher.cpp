#include "SlowMatcher.h"

#include <cctype>
#include <cstring>
#include <stdexcept>

namespace {

using Found = SlowPattern::Found;
using Node = SlowNode;

constexpr int kUnbounded = 65535;

template <typename Test>
std::bitset<256> bytesWith(Test test) {
  std::bitset<256> bytes;
  for (int byte = 0; byte < 256; ++byte)
    bytes[static_cast<std::size_t>(byte)] = test(byte);
  return bytes;
}

bool isOfLetter(int letter, int byte) {
  if (std::isupper(letter) != 0) return !isOfLetter(std::tolower(letter), byte);
  if (letter == 'a') return std::isalpha(byte) != 0;
  if (letter == 'c') return std::iscntrl(byte) != 0;
  if (letter == 'd') return std::isdigit(byte) != 0;
  if (letter == 'l') return std::islower(byte) != 0;
  if (letter == 'p') return std::ispunct(byte) != 0;
  if (letter == 's') return std::isspace(byte) != 0;
  if (letter == 'u') return std::isupper(byte) != 0;
  if (letter == 'w') return std::isalnum(byte) != 0 || byte == '_';
  return std::isxdigit(byte) != 0;
}

// One function for each rule of the grammar. `made_` counts the nodes that an engine has made, items of classes
// included: a range compares the number of its first item with a byte.
class Parser {
 public:
  Parser(const std::string& pattern, std::deque<Node>& nodes) : pattern_(pattern), nodes_(nodes) {}

  // Returns the number of groups. Throws a message.
  std::size_t parse() {
    if (pattern_.empty()) fail("unexpected character");
    Node& whole = make({Node::kGroup, {}, groups_++});
    whole.left = list();
    if (here() != 0) fail("unexpected character");
    return static_cast<std::size_t>(groups_);
  }

 private:
  // What a single character of the pattern stands for; `byte` is -1 if that is no byte of its own.
  struct Single {
    Node::Kind kind;
    std::bitset<256> bytes;
    int byte;
  };

  [[noreturn]] static void fail(const char* message) { throw std::invalid_argument(message); }

  int here() const { return at_ < pattern_.size() ? static_cast<unsigned char>(pattern_[at_]) : 0; }
  bool isHere(const char* bytes) const { return here() != 0 && std::strchr(bytes, here()) != nullptr; }
  bool take(char byte) { return here() == byte && ++at_ != 0; }

  Node& make(const Node& node) {
    ++made_;
    return nodes_.emplace_back(node);
  }

  const Node* list() {
    const Node* first = nullptr;
    const Node** next = &first;
    const auto append = [&next](Node& node) {
      *next = &node;
      next = &node.next;
    };
    if (take('^')) append(make({Node::kBegin, {}}));
    do {
      append(quantified());
    } while (here() != 0 && !isHere("|)*+"));
    if (!take('|')) return first;
    Node& either = make({Node::kAlternation, {}});
    either.left = first;
    either.right = list();
    return &either;
  }

  Node& quantified() {
    Node& node = element();
    if (take('*')) return repeat(node, 0, kUnbounded);
    if (take('+')) return repeat(node, 1, kUnbounded);
    if (take('?')) return repeat(node, 0, 1);
    if (!take('{')) return node;
    const int min = number();
    if (take('}')) return repeat(node, min, min);
    if (!take(',')) fail(", or } expected");
    const int max = std::isdigit(here()) != 0 ? number() : kUnbounded;
    if (!take('}')) fail("expected paren");
    return repeat(node, min, max);
  }

  int number() {
    if (std::isdigit(here()) == 0) fail("number expected");
    int value = 0;
    for (int digits = 1; std::isdigit(here()) != 0; ++digits, ++at_) {
      if (digits == 10) fail("overflow in numeric constant");
      value = value * 10 + (here() - '0');
    }
    return value;
  }

  Node& repeat(const Node& node, int min, int max) {
    return make({Node::kRepeat, {}, -1, min % 65536, max % 65536, &node});
  }

  Node& element() {
    if (take('$')) return make({Node::kEnd, {}});
    if (take('.')) return make({Node::kByte, bytesWith([](int) { return true; })});
    if (take('(')) return group();
    if (take('[')) return bracket();
    const Single read = single(false);
    return make({read.kind, read.bytes});
  }

  Node& group() {
    const bool captures = !take('?');
    if (!captures && !take(':')) fail("expected paren");
    Node& node = make({Node::kGroup, {}, captures ? groups_++ : -1});
    node.left = list();
    if (!take(')')) fail("expected paren");
    return node;
  }

  Node& bracket() {
    const bool negated = take('^');
    Node& node = make({Node::kByte, {}});
    if (here() == ']') fail("empty class");
    do {
      const Single item = single(true);
      const int index = made_++;
      node.bytes |= take('-') ? range(item, index) : item.bytes;
      if (here() == 0) fail("expected paren");
    } while (!take(']'));
    if (negated) node.bytes.flip();
    return node;
  }

  std::bitset<256> range(const Single& low, int index) {
    if (here() == ']') fail("unfinished range");
    if (index > here()) fail("invalid range");
    if (low.byte < 0) fail("cannot use character classes in ranges");
    ++made_;
    const int high = take('\\') ? escaped() : printable();
    return bytesWith([&](int byte) { return low.byte <= byte && byte <= high; });
  }

  Single single(bool inClass) {
    const bool isEscaped = take('\\');
    if (isEscaped && isHere("aAcCdDlpPsSuwWxX")) {
      const int letter = static_cast<unsigned char>(pattern_[at_++]);
      return {Node::kByte, bytesWith([letter](int byte) { return isOfLetter(letter, byte); }), -1};
    }
    if (isEscaped && !inClass && take('b')) return {Node::kBoundary, {}, -1};
    if (isEscaped && !inClass && take('B')) return {Node::kNoBoundary, {}, -1};
    const int literal = isEscaped ? escaped() : printable();
    return {Node::kByte, bytesWith([literal](int byte) { return byte == literal; }), literal};
  }

  int printable() {
    if (std::isprint(here()) == 0) fail("letter expected");
    return pattern_[at_++];
  }

  // The byte that a backslash in front of the cursor makes of the one under it.
  int escaped() {
    if (here() == 0) fail("unexpected character");
    const std::size_t named = std::string_view("fnrtv").find(pattern_[at_++]);
    return named == std::string_view::npos ? static_cast<unsigned char>(pattern_[at_ - 1]) : "\f\n\r\t\v"[named];
  }

  const std::string& pattern_;
  std::deque<Node>& nodes_;
  std::size_t at_ = 0;
  int made_ = 0;
  int groups_ = 0;
};

// One attempt to match at one start.
class Attempt {
 public:
  Attempt(std::string_view text, const char* begin, const char* end, std::vector<Found>& groups)
      : textEnd_(text.data() + text.size()), begin_(begin), end_(end), groups_(groups) {}

  // The position after what `node` takes at `at`, or null. `then` is the element that comes after `node`, if any.
  const char* match(const Node& node, const char* at, const Node* then) {
    if (node.kind == Node::kByte) return at <= end_ && node.bytes[byteAt(at)] ? at + 1 : nullptr;
    if (node.kind == Node::kBegin) return at == begin_ ? at : nullptr;
    if (node.kind == Node::kEnd) return at == end_ ? at : nullptr;
    if (node.kind == Node::kBoundary) return isBoundary(at) ? at : nullptr;
    if (node.kind == Node::kNoBoundary) return !isBoundary(at) ? at : nullptr;
    if (node.kind == Node::kGroup) return matchGroup(node, at, then);
    if (node.kind == Node::kRepeat) return matchRepeat(node, at, then);
    const char* left = matchAlternative(node.left, at);
    return left != nullptr ? left : matchAlternative(node.right, at);
  }

 private:
  unsigned char byteAt(const char* at) const { return at < textEnd_ ? static_cast<unsigned char>(*at) : 0; }
  bool isSpaceAt(const char* at) const { return std::isspace(byteAt(at)) != 0; }

  bool isBoundary(const char* at) const {
    if (at > end_) return false;  // the byte at the end was taken: nothing here to look at
    if (at == begin_ && !isSpaceAt(at)) return true;
    if (at == end_) return at > begin_ && !isSpaceAt(at - 1);  // what follows the end is not looked at
    return isSpaceAt(at) != isSpaceAt(at + 1);
  }

  // The counter never goes back: a group that a repetition tries ahead is recorded then, and not again.
  const char* matchGroup(const Node& node, const char* at, const Node* then) {
    Found* recorded = node.group == nextGroup_ ? &groups_[static_cast<std::size_t>(nextGroup_++)] : nullptr;
    const char* const start = at;
    for (const Node* inner = node.left; inner != nullptr && at != nullptr; inner = inner->next) {
      at = match(*inner, at, inner->next != nullptr ? inner->next : then);
    }
    if (recorded != nullptr) *recorded = at != nullptr ? Found{start, at} : Found{};
    return at;
  }

  const char* matchAlternative(const Node* node, const char* at) {
    for (; node != nullptr && at != nullptr; node = node->next)
      at = match(*node, at, nullptr);
    return at;
  }

  const char* matchRepeat(const Node& node, const char* at, const Node* then) {
    const Node* stop = node.next != nullptr ? node.next : then;
    const bool looksAhead = stop != nullptr && !(stop->kind == Node::kRepeat && stop->min == 0);
    const int most = node.max == kUnbounded ? kUnbounded + 1 : node.max;
    int count = 0;
    while (count < most) {
      const int groupBefore = nextGroup_;
      const char* const roundStart = at;
      const char* const roundEnd = match(*node.left, at, stop);
      if (roundEnd == nullptr) break;
      at = roundEnd;
      ++count;
      // `then` is the stop element itself or nothing, so no element after it could follow the stop element.
      if (looksAhead && match(*stop, at, stop->next) != nullptr && count >= node.min) break;
      if (at >= end_) break;
      // After a round that took nothing and recorded no group all further rounds are equal to it.
      if (at == roundStart && nextGroup_ == groupBefore) count = most;
    }
    return count >= node.min ? at : nullptr;
  }

  const char* textEnd_;
  const char* begin_;
  const char* end_;
  std::vector<Found>& groups_;
  int nextGroup_ = 0;
};

}  // namespace

std::optional<SlowPattern> SlowPattern::compile(const std::string& pattern, std::string* error) try {
  std::optional<SlowPattern> result(std::in_place);
  result->groups_.resize(Parser(pattern, result->nodes_).parse());
  return result;
} catch (const std::invalid_argument& problem) {
  *error = problem.what();
  return std::nullopt;
}

bool SlowPattern::match(std::string_view text) {
  const char* const end = text.data() + text.size();
  return Attempt(text, text.data(), end, groups_).match(nodes_.front(), text.data(), nullptr) == end;
}

SlowPattern::Found SlowPattern::search(std::string_view text, std::size_t begin, std::size_t end) {
  for (std::size_t start = begin; start < end; ++start) {
    Attempt attempt(text, text.data() + begin, text.data() + end, groups_);
    const char* const matchEnd = attempt.match(nodes_.front(), text.data() + start, nullptr);
    if (matchEnd != nullptr) return {text.data() + start, matchEnd};
  }
  return {};
}
