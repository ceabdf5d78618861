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
  Matcher(TrexExpression& expression, bool remembers)
      : e_(expression),
        nodes_(expression.nodes.data()),
        traits_(expression.traits.data()),
        sets_(expression.sets.data()),
        runs_(expression.runs.data()),
        remembers_(remembers) {}

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
  const TrexNode& node(std::int32_t index) const { return nodes_[index]; }

  const char* matchNode(std::int32_t index, const char* position, std::int32_t continuation) {
    if (traits_[index].isByte) return matchByte(index, position);
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
      default:  // items of classes, which are matched by the set of their class
        return nullptr;
    }
  }

  const char* matchByte(std::int32_t index, const char* position) const {
    if (position > e_.end) return nullptr;
    return sets_[index].contains(static_cast<unsigned char>(*position)) ? position + 1 : nullptr;
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
    const char* const at = remembers_ ? matchElementsOnce(group.left, position, continuation)
                                      : matchElements(group.left, position, continuation);
    if (record != nullptr) {
      *record =
          at == nullptr ? TrexSubMatch{nullptr, 0} : TrexSubMatch{position, static_cast<std::int32_t>(at - position)};
    }
    return at;
  }

  const char* matchElements(std::int32_t first, const char* at, std::int32_t continuation) {
    for (std::int32_t i = first; i != kNone && at != nullptr; i = node(i).next)
      at = matchNode(i, at, behindElement(i, continuation));
    return at;
  }

  std::int32_t behindElement(std::int32_t index, std::int32_t continuation) const {
    return node(index).next != kNone ? node(index).next : continuation;
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
    const bool looksAhead = stop != kNone && !traits_[stop].isOptional;
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
      if (traits_[repeat.left].isByte) {
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
  // A search makes an attempt at every place where a match could start, and most of them go over the same bytes: those
  // of a long name, or of the blanks before a look-up. Three things are remembered for the attempts to come, for each
  // repetition and for the continuation that it had. All of them rest on this: with one search, one continuation and no
  // groups to fill, what a node does at a place depends on nothing but the place. No node looks back (patterns that
  // test for the begin of the text are not searched this way), and none has an effect on another one. So:
  //
  // - A repetition of a single byte takes one byte a round, and whether it takes another depends on where it stands,
  //   not on where it began. If it went from `from` to `to`, one that begins in between comes to `to` as well, unless
  //   the cap on rounds ends one of them first: matchRun walks on from `to` if it was the cap that ended the other, and
  //   cuts back to `most` rounds if it ends this one. The first round of a repetition does not look ahead: one that
  //   begins exactly at `to`, where looking ahead ended the other, therefore takes a walk of its own.
  // - A repetition of more, which does not look ahead, stands at the same places from the first one on that it has in
  //   common with an earlier walk. matchRounds follows that walk, and continues it if only the cap had ended it.
  // - Where a repetition ended, the elements behind it in its group come next. If they were tried from that place
  //   before, their outcome is known, be it a match or not: matchElementsOnce.
  //
  // What is given up because the pattern is nested too deeply leaves nothing behind: the attempt is counted as another
  // search. At one node the depth is always the same, so that what is remembered was not nearer to the bound.

  // The elements of a group from `first` on, one behind the other.
  const char* matchElementsOnce(std::int32_t first, const char* at, std::int32_t continuation) {
    std::int32_t i = first;
    for (; i != kNone && at != nullptr; i = node(i).next) {
      at = matchNode(i, at, behindElement(i, continuation));
      if (at == nullptr || node(i).kind != TREX_NODE_REPEAT || node(i).next == kNone) continue;
      TrexRest& rest = runs_[i].rest;
      if (rest.search == e_.search && rest.continuation == continuation && rest.from == at) {
        at = rest.to;
        break;
      }
      rest = {0, continuation, at, nullptr};  // of no search until its outcome is there
    }
    for (std::int32_t passed = first; passed != i; passed = node(passed).next) {
      TrexRest& rest = runs_[passed].rest;
      if (node(passed).kind != TREX_NODE_REPEAT || rest.search != 0) continue;
      rest.search = e_.search;
      rest.to = at;
    }
    return at;
  }

  TrexRun& runOf(std::int32_t index, std::int32_t continuation) {
    TrexRun& run = runs_[index];
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
    const TrexByteSet& taken = sets_[operand];
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
  // The expression's, which do not move while it is matched.
  const TrexNode* const nodes_;
  const TrexExpression::Trait* const traits_;
  const TrexByteSet* const sets_;
  TrexRun* const runs_;
  const bool remembers_;
  bool tooDeep_ = false;
};

// An attempt that may be greedy, if the expression is: whether its outcome, which goes to `matchEnd`, is known. Where
// one came to a long repetition, those that start right behind it would most likely do as well.
bool attemptGreedily(TrexExpression& expression, const char* position, const char*& matchEnd) {
  const bool isBehindLong =
      expression.longSearch == expression.search && position >= expression.longFrom && position < expression.longTo;
  if (!expression.isGreedy || isBehindLong) return false;
  const TrexGreedyAttempt attempt = trexGreedyAttempt(expression, expression.end, position);
  matchEnd = attempt.end;
  if (!attempt.isLong) return true;
  expression.longSearch = expression.search;
  expression.longFrom = position;
  expression.longTo = position + std::min(kLongRun, expression.end - position);
  return false;
}

}  // namespace

const char* trexAttempt(TrexExpression& expression, const char* begin, const char* end, const char* position,
                        bool remembers) {
  expression.begin = begin;
  expression.end = end;
  const char* matchEnd = nullptr;
  if (remembers && attemptGreedily(expression, position, matchEnd)) return matchEnd;
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
