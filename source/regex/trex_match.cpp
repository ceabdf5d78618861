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
  Matcher(TrexExpression& expression, bool remembers) : e_(expression), remembers_(remembers) {}

  // One attempt at `position`: the end of the match, or null.
  const char* attempt(const char* position) {
    e_.groupCounter = 0;
    e_.depth = 0;
    const char* end = matchNode(e_.first, position, kNone);
    if (!tooDeep_) return end;
    ++e_.search;  // what was given up is not to be remembered
    return nullptr;
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
    return e_.sets[static_cast<std::size_t>(index)].contains(static_cast<unsigned char>(*position)) ? position + 1
                                                                                                    : nullptr;
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
    const char* result = n.kind == TREX_NODE_REPEAT        ? matchRepeat(index, position, continuation)
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

  // What a repetition needs to know of the nodes behind it. The element that may end it is not looked for if it is
  // itself optional.
  struct Behind {
    std::int32_t stop;
    std::int32_t afterStop;
    bool looksAhead;
  };

  Behind behind(const TrexNode& repeat, std::int32_t continuation) const {
    const std::int32_t stop = repeat.next != kNone ? repeat.next : continuation;
    const bool looksAhead = stop != kNone && !(node(stop).kind == TREX_NODE_REPEAT && minRounds(node(stop)) == 0);
    const std::int32_t afterContinuation = continuation == kNone ? kNone : node(continuation).next;
    return {stop, stop == kNone || node(stop).next == kNone ? afterContinuation : node(stop).next, looksAhead};
  }

  const char* matchRepeat(std::int32_t index, const char* position, std::int32_t continuation) {
    const TrexNode& repeat = node(index);
    const std::int32_t min = minRounds(repeat);
    const std::int32_t max = maxRounds(repeat);
    const Behind behind = this->behind(repeat, continuation);
    if (remembers_ && min <= 1 && max == kUnbounded) {
      TrexRun& run = runOf(index, continuation);
      if (isByte(node(repeat.left))) {
        const char* end = matchRun(run, repeat.left, behind, position);
        return end - position >= min ? end : nullptr;
      }
      if (!behind.looksAhead) return matchRounds(run, repeat.left, behind.stop, position, min);
    }
    const auto acceptable = [&](std::int32_t count) { return count >= min && (max == kUnbounded || count <= max); };
    std::int32_t count = 0;
    while (count < max || count == kUnbounded) {
      const std::int32_t recorded = e_.groupCounter;
      const char* after = matchNode(repeat.left, position, behind.stop);
      if (after == nullptr) break;
      ++count;
      const bool tookNothing = after == position;
      position = after;
      if (behind.looksAhead && matchNode(behind.stop, position, behind.afterStop) != nullptr && acceptable(count)) {
        break;
      }
      if (position >= e_.end) break;
      if (tookNothing && recorded == e_.groupCounter) {  // every further round would do the same
        count = max == kUnbounded ? kMostRounds : max;
        break;
      }
    }
    return acceptable(count) ? position : nullptr;
  }

  // ---- repetitions of a search that remembers ----------------------------------------------------------------------
  //
  // How a repetition goes on from a place depends on nothing but the place. So once it went from one place to another
  // and the attempt failed later, an attempt that enters it in between ends up where that one did.

  static bool isByte(const TrexNode& node) {
    return node.kind < TREX_NODE_REPEAT || node.kind == TREX_NODE_ANY || node.kind == TREX_NODE_CLASS ||
           node.kind == TREX_NODE_CLASS_ESCAPE || node.kind == TREX_NODE_CLASS_NEGATED;
  }

  TrexRun& runOf(std::int32_t index, std::int32_t continuation) {
    TrexRun& run = e_.runs[static_cast<std::size_t>(index)];
    if (run.search != e_.search || run.continuation != continuation) {
      run.search = e_.search;
      run.continuation = continuation;
      run.from = run.to = nullptr;
      run.places.clear();
    }
    return run;
  }

  // A repetition of a single byte from `position` on: where it ends.
  const char* matchRun(TrexRun& run, std::int32_t operand, const Behind& behind, const char* position) {
    const bool isInside = position >= run.from && (position < run.to || (position == run.to && !run.ended));
    if (!isInside) {
      run.from = run.to = position;
      run.ended = position > e_.end;
    }
    const bool toByte =
        node(operand).kind == TREX_NODE_ANY && behind.looksAhead && node(behind.stop).kind < TREX_NODE_REPEAT;
    const TrexByteSet& taken = e_.sets[static_cast<std::size_t>(operand)];
    const std::ptrdiff_t most = kMostRounds;
    while (!run.ended && run.to - position < most) {
      run.ended = !taken.contains(static_cast<unsigned char>(*run.to));
      if (run.ended) break;
      if (toByte) {
        const char* const last = position + std::min(most, e_.end - position);
        run.to = nextByte(run.to + 1, last, static_cast<char>(node(behind.stop).kind));
      } else {
        ++run.to;
      }
      run.ended =
          run.to >= e_.end || (behind.looksAhead && matchNode(behind.stop, run.to, behind.afterStop) != nullptr);
    }
    return run.to - position > most ? position + most : run.to;
  }

  // The place of `byte` in [from, last], `last` if it is not there. At least `from`.
  static const char* nextByte(const char* from, const char* last, char byte) {
    if (from >= last) return from;
    const void* hit = std::memchr(from, byte, static_cast<std::size_t>(last - from));
    return hit == nullptr ? last : static_cast<const char*>(hit);
  }

  // A repetition of anything else that does not look ahead, from `position` on: where it ends, or null.
  const char* matchRounds(TrexRun& run, std::int32_t operand, std::int32_t stop, const char* position,
                          std::int32_t min) {
    std::vector<const char*>& fresh = run.fresh;
    std::vector<const char*>* walk = &fresh;  // the earlier one, once we are on it
    fresh.clear();
    bool ended = false;
    std::int32_t count = 0;
    for (; !ended && count < kMostRounds; ++count) {
      if (walk == &fresh) {
        const auto known = std::lower_bound(run.places.begin(), run.places.end(), position);
        const auto left = run.places.end() - known - 1;
        if (left >= 0 && *known == position && count + left > 0) {
          const auto taken = std::min<std::ptrdiff_t>(left, kMostRounds - count);
          position = known[taken];
          count += static_cast<std::int32_t>(taken);
          if (count == kMostRounds || run.ended) return position;
          walk = &run.places;
        } else {
          fresh.push_back(position);
        }
      }
      const char* after = matchNode(operand, position, stop);
      ended = after == nullptr || after == position || after >= e_.end;
      if (after == nullptr) break;
      position = after;
      if (ended || walk == &run.places) walk->push_back(position);
    }
    if (walk == &fresh) run.places.swap(fresh);
    run.ended = ended;
    return count >= min ? position : nullptr;
  }

  TrexExpression& e_;
  const bool remembers_;
  bool tooDeep_ = false;
};

}  // namespace

const char* trexAttempt(TrexExpression& expression, const char* begin, const char* end, const char* position,
                        bool remembers) {
  expression.begin = begin;
  expression.end = end;
  if (remembers) expression.runs.resize(expression.nodes.size());
  return Matcher(expression, remembers).attempt(position);
}

extern "C" int trex_match(TrexExpression* expression, const char* text) {
  const char* end = text + std::strlen(text);
  return trexAttempt(*expression, text, end, text, false) == end ? 1 : 0;
}

extern "C" int trex_searchrange(TrexExpression* expression, const char* begin, const char* end, const char** outBegin,
                                const char** outEnd) {
  // Every position is attempted: one that fails still decides what the groups hold that take no part in the match.
  for (const char* at = begin; at < end; ++at) {
    if (const char* matchEnd = trexAttempt(*expression, begin, end, at, false)) {
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
