// Pattern matcher: recursive descent over the nodes, and the search loop around it.
//
// A node is matched at a position with a continuation, the node that will be matched after it. Only repetitions look at
// the continuation, to see whether they may stop. Recursion follows the nesting of the pattern, never the text.
// Test: tests/regex/trex_test.cpp, and tests/regex/trex_differential_test.cpp against a second, slow matcher.

#include <algorithm>
#include <cctype>
#include <cstring>

#include "platform/Limits.h"
#include "regex/trex_expression.h"

const char* g_limitAddress = nullptr;

namespace {

using FlashEngine_1_00::kMaxMatchDepth;

constexpr std::int32_t kNone = -1;
constexpr std::int32_t kUnbounded = 0xFFFF;
constexpr std::int32_t kMostRounds = kUnbounded + 1;

std::int32_t minRounds(const TrexNode& repeat) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(repeat.right) >> 16);
}
std::int32_t maxRounds(const TrexNode& repeat) {
  return repeat.right & kUnbounded;
}

bool isSpace(char byte) {
  return std::isspace(static_cast<unsigned char>(byte)) != 0;
}

class Matcher {
 public:
  explicit Matcher(TrexExpression& expression) : e_(expression) {}

  // One attempt at `position`: the end of the match, or null.
  const char* attempt(const char* position) {
    e_.groupCounter = 0;
    e_.depth = 0;
    const char* end = matchNode(e_.first, position, kNone);
    return tooDeep_ ? nullptr : end;
  }

 private:
  const TrexNode& node(std::int32_t index) const { return e_.nodes[static_cast<std::size_t>(index)]; }

  const char* matchNode(std::int32_t index, const char* position, std::int32_t continuation) {
    switch (node(index).kind) {
      case TREX_NODE_BEGIN:
        return position == e_.begin ? position : nullptr;
      case TREX_NODE_END:
        return position == e_.end ? position : nullptr;
      case TREX_NODE_BOUNDARY:
        return isBoundary(position) == (node(index).left == 'b') ? position : nullptr;
      case TREX_NODE_GROUP:
      case TREX_NODE_GROUP_NOCAPTURE:
      case TREX_NODE_ALTERNATION:
      case TREX_NODE_REPEAT:
        return matchNested(index, position, continuation);
      default:
        return matchByte(index, position);
    }
  }

  const char* matchByte(std::int32_t index, const char* position) const {
    if (position > e_.end) return nullptr;
    const TrexNode& n = node(index);
    const auto byte = static_cast<unsigned char>(*position);
    if (n.kind < TREX_NODE_REPEAT) return byte == n.kind ? position + 1 : nullptr;
    if (n.kind == TREX_NODE_ANY) return position + 1;
    return e_.sets[static_cast<std::size_t>(index)].contains(byte) ? position + 1 : nullptr;
  }

  // A boundary is where white space meets something else, judged by the byte here and the next one, which is not
  // looked at when the byte here is already the one at the end.
  bool isBoundary(const char* position) const {
    if (position > e_.end) return false;
    if (position == e_.begin && !isSpace(*position)) return true;
    if (position == e_.end) return position > e_.begin && !isSpace(position[-1]);
    return isSpace(position[0]) != isSpace(position[1]);
  }

  const char* matchNested(std::int32_t index, const char* position, std::int32_t continuation) {
    tooDeep_ = tooDeep_ || e_.depth >= kMaxMatchDepth;
    if (tooDeep_) return nullptr;
    ++e_.depth;
    const TrexNode& n = node(index);
    const char* result = n.kind == TREX_NODE_REPEAT        ? matchRepeat(n, position, continuation)
                         : n.kind == TREX_NODE_ALTERNATION ? matchAlternation(n, position)
                                                           : matchGroup(n, position, continuation);
    --e_.depth;
    return result;
  }

  // A capturing group is recorded once in an attempt, when it is entered in the order of its number. A look ahead
  // from a repetition counts as an entry.
  const char* matchGroup(const TrexNode& group, const char* position, std::int32_t continuation) {
    TrexSubMatch* record = nullptr;
    if (group.kind == TREX_NODE_GROUP && group.right == e_.groupCounter) {
      record = &e_.subMatches[static_cast<std::size_t>(e_.groupCounter++)];
      record->begin = position;
    }
    const char* at = position;
    for (std::int32_t i = group.left; i != kNone && at != nullptr; i = node(i).next) {
      at = matchNode(i, at, node(i).next != kNone ? node(i).next : continuation);
    }
    if (record != nullptr) {
      *record =
          at == nullptr ? TrexSubMatch{nullptr, 0} : TrexSubMatch{position, static_cast<std::int32_t>(at - position)};
    }
    return at;
  }

  const char* matchAlternation(const TrexNode& alternation, const char* position) {
    const TrexNode* n = &alternation;
    for (;; n = &node(n->right)) {
      const char* left = matchAlternative(n->left, position);
      if (left != nullptr) return left;
      if (n->right == kNone || node(n->right).kind != TREX_NODE_ALTERNATION) break;
    }
    return matchAlternative(n->right, position);
  }

  const char* matchAlternative(std::int32_t index, const char* position) {
    for (; index != kNone && position != nullptr; index = node(index).next) {
      position = matchNode(index, position, kNone);
    }
    return position;
  }

  const char* matchRepeat(const TrexNode& repeat, const char* position, std::int32_t continuation) {
    const std::int32_t min = minRounds(repeat);
    const std::int32_t max = maxRounds(repeat);
    const auto acceptable = [&](std::int32_t count) { return count >= min && (max == kUnbounded || count <= max); };
    const std::int32_t stop = repeat.next != kNone ? repeat.next : continuation;
    const bool looksAhead = stop != kNone && !(node(stop).kind == TREX_NODE_REPEAT && minRounds(node(stop)) == 0);
    const std::int32_t afterContinuation = continuation == kNone ? kNone : node(continuation).next;
    const std::int32_t afterStop = stop == kNone || node(stop).next == kNone ? afterContinuation : node(stop).next;

    if (node(repeat.left).kind == TREX_NODE_ANY && looksAhead && node(stop).kind < TREX_NODE_REPEAT) {
      return matchAnyUntil(static_cast<char>(node(stop).kind), position, min, max);
    }

    std::int32_t count = 0;
    while (count < max || count == kUnbounded) {
      const std::int32_t recorded = e_.groupCounter;
      const char* after = matchNode(repeat.left, position, stop);
      if (after == nullptr) break;
      ++count;
      const bool tookNothing = after == position;
      position = after;
      if (looksAhead && matchNode(stop, position, afterStop) != nullptr && acceptable(count)) break;
      if (position >= e_.end) break;
      if (tookNothing && recorded == e_.groupCounter) {  // every further round would do the same
        count = max == kUnbounded ? kMostRounds : max;
        break;
      }
    }
    return acceptable(count) ? position : nullptr;
  }

  // ".*x" up to the "x", without looking at each byte in turn.
  const char* matchAnyUntil(char stop, const char* position, std::int32_t min, std::int32_t max) const {
    if (position > e_.end) return min == 0 ? position : nullptr;
    const std::ptrdiff_t there = std::max<std::ptrdiff_t>(e_.end - position, 1);  // one round may take the end's byte
    const std::ptrdiff_t most = std::min<std::ptrdiff_t>(max == kUnbounded ? kMostRounds : max, there);
    const std::ptrdiff_t from = std::max<std::ptrdiff_t>(min, 1);
    const std::ptrdiff_t last = std::min<std::ptrdiff_t>(most, e_.end - position);  // where the stop byte may stand
    if (from <= last) {
      const void* hit = std::memchr(position + from, stop, static_cast<std::size_t>(last - from) + 1);
      if (hit != nullptr) return static_cast<const char*>(hit);
    }
    return min <= max && most >= min ? position + most : nullptr;
  }

  TrexExpression& e_;
  bool tooDeep_ = false;
};

}  // namespace

const char* trexAttempt(TrexExpression& expression, const char* begin, const char* end, const char* position) {
  expression.begin = begin;
  expression.end = end;
  return Matcher(expression).attempt(position);
}

extern "C" int trex_match(TrexExpression* expression, const char* text) {
  const char* end = text + std::strlen(text);
  return trexAttempt(*expression, text, end, text) == end ? 1 : 0;
}

extern "C" int trex_searchrange(TrexExpression* expression, const char* begin, const char* end, const char** outBegin,
                                const char** outEnd) {
  // Every position is attempted: one that fails still decides what the groups hold that take no part in the match.
  for (const char* at = begin; at < end; ++at) {
    if (const char* matchEnd = trexAttempt(*expression, begin, end, at)) {
      if (outBegin != nullptr) *outBegin = at;
      if (outEnd != nullptr) *outEnd = matchEnd;
      return 1;
    }
  }
  return 0;
}

extern "C" int trex_search(TrexExpression* expression, const char* text, const char** outBegin, const char** outEnd) {
  g_limitAddress = text + std::strlen(text);
  return trex_searchrange(expression, text, g_limitAddress, outBegin, outEnd);
}

extern "C" int trex_getsubexpcount(TrexExpression* expression) {
  return expression->groups;
}

extern "C" int trex_getsubexp(TrexExpression* expression, int n, TrexSubMatch* submatch) {
  if (n < 0 || n >= expression->groups) return 0;
  *submatch = expression->subMatches[static_cast<std::size_t>(n)];
  return 1;
}
