// Matcher of greedy patterns: a walk over the nodes in their order. Of the elements behind a repetition, one byte at
// most has a say in where it ends, so that looking ahead is cheap, and short repetitions need not be remembered. Test:
// tests/regex/trex_differential_test.cpp.

#include <algorithm>

#include "regex/trex_expression.h"

namespace {

constexpr std::int32_t kNone = -1;

class GreedyMatcher {
 public:
  GreedyMatcher(const TrexExpression& expression, const char* end)
      : nodes_(expression.nodes.data()),
        traits_(expression.traits.data()),
        sets_(expression.sets.data()),
        end_(end),
        first_(expression.first) {}

  TrexGreedyAttempt attempt(const char* position) {
    const char* const end = matchNode(first_, position);
    return {end, isLong_};
  }

 private:
  const char* matchSequence(std::int32_t index, const char* at) {
    for (; index != kNone && at != nullptr; index = nodes_[index].next)
      at = matchNode(index, at);
    return at;
  }

  const char* matchNode(std::int32_t index, const char* at) {
    const TrexNode& n = nodes_[index];
    switch (n.kind) {
      case TREX_NODE_REPEAT:
        return matchRepeat(index, at);
      case TREX_NODE_GROUP:
      case TREX_NODE_GROUP_NOCAPTURE:
        return matchSequence(n.left, at);
      case TREX_NODE_ALTERNATION:
        return matchAlternation(n, at);
      default:  // a single byte
        return at <= end_ && sets_[index].contains(static_cast<unsigned char>(*at)) ? at + 1 : nullptr;
    }
  }

  const char* matchAlternation(const TrexNode& alternation, const char* at) {
    const char* const left = matchSequence(alternation.left, at);
    return left != nullptr || isLong_ ? left : matchSequence(alternation.right, at);
  }

  const char* matchRepeat(std::int32_t index, const char* at) {
    const TrexNode& repeat = nodes_[index];
    const std::int32_t kind = nodes_[repeat.left].kind;
    const bool isGroup = kind == TREX_NODE_GROUP || kind == TREX_NODE_GROUP_NOCAPTURE;
    const std::int32_t stop = traits_[index].stop;
    const char* const to = isGroup         ? endOfRounds(nodes_[repeat.left].left, at)
                           : stop == kNone ? endOfRun(sets_[repeat.left], at)
                                           : endOfRunTo(sets_[stop], sets_[repeat.left], at);
    isLong_ = isLong_ || to - at >= kLongRun;
    const bool isNeeded = (static_cast<std::uint32_t>(repeat.right) >> 16) > 0;
    return isLong_ || (isNeeded && to == at) ? nullptr : to;
  }

  // Where a repetition of a byte of a set ends, or has become long. Only one that begins at the end of the text takes
  // the byte there.
  const char* endOfRun(const TrexByteSet& taken, const char* at) const {
    const char* const last = lastOf(at);
    while (at < last && taken.contains(static_cast<unsigned char>(*at)))
      ++at;
    return at;
  }

  // The same for one that ends before a byte of `stop`, its first byte aside.
  const char* endOfRunTo(const TrexByteSet& stop, const TrexByteSet& taken, const char* at) const {
    const char* const last = lastOf(at);
    if (at >= last || !taken.contains(static_cast<unsigned char>(*at))) return at;
    for (++at; at < last; ++at) {
      const auto byte = static_cast<unsigned char>(*at);
      if (stop.contains(byte) || !taken.contains(byte)) break;
    }
    return at;
  }

  const char* lastOf(const char* at) const { return at < end_ ? at + std::min(end_ - at, kLongRun) : end_ + 1; }

  // The same for a repetition of a sequence, which does not match empty.
  const char* endOfRounds(std::int32_t sequence, const char* at) {
    const char* const begin = at;
    for (const char* after = at; after != nullptr && !isLong_ && at - begin < kLongRun;) {
      at = after;
      after = at >= end_ && at > begin ? nullptr : matchSequence(sequence, at);
    }
    return at;
  }

  const TrexNode* const nodes_;
  const TrexExpression::Trait* const traits_;
  const TrexByteSet* const sets_;
  const char* const end_;
  const std::int32_t first_;
  bool isLong_ = false;
};

}  // namespace

TrexGreedyAttempt trexGreedyAttempt(const TrexExpression& expression, const char* end, const char* position) {
  return GreedyMatcher(expression, end).attempt(position);
}
