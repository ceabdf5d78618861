#pragma once

#include <array>
#include <csetjmp>
#include <memory>
#include <string>
#include <vector>

#include "regex/trex.h"
#include "regex/trex_literal.h"

// The compiled form that the compiler (trex_compile.cpp) hands to the matcher (trex_match.cpp).

// A set of bytes, for single-byte tests without a walk over class items.
class TrexByteSet {
 public:
  void add(unsigned char byte) { words_[byte >> 6] |= std::uint64_t{1} << (byte & 63); }
  void add(const TrexByteSet& other) {
    for (std::size_t i = 0; i < words_.size(); ++i)
      words_[i] |= other.words_[i];
  }
  void invert() {
    for (std::uint64_t& bits : words_)
      bits = ~bits;
  }
  bool contains(unsigned char byte) const { return (words_[byte >> 6] >> (byte & 63)) & 1; }
  bool intersects(const TrexByteSet& other) const {
    std::uint64_t common = 0;
    for (std::size_t i = 0; i < words_.size(); ++i)
      common |= words_[i] & other.words_[i];
    return common != 0;
  }

 private:
  std::array<std::uint64_t, 4> words_{};
};

// What can stand in a match before some place of it: stages in a row, each of a number of bytes of a set.
class TrexLead {
 public:
  static constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

  // Everything that may stand there.
  static TrexLead anything();

  // Behind what is there comes one byte of a set; or up to `most` of them, or none.
  void addByte(const TrexByteSet& bytes) { add({bytes, 1, true}); }
  void addRun(const TrexByteSet& bytes, std::size_t most) { add({bytes, most, false}); }

  // Adds what one of two leads can be.
  static TrexLead either(const TrexLead& a, const TrexLead& b);

  // The bytes of all stages.
  TrexByteSet bytes() const { return merged().bytes; }

  // The first place, not before `first`, from which a match can come to `place`. Null if it cannot, of which notice is
  // only taken if `testsNeeded`.
  const char* walkBack(const char* place, const char* first, bool testsNeeded) const;

 private:
  static constexpr std::size_t kMaxStages = 8;

  struct Stage {
    TrexByteSet bytes;
    std::size_t most = 0;
    bool isNeeded = false;  // at least one byte of it, of which no later stage can take any
  };

  void add(const Stage& stage);
  static Stage merge(const Stage& a, const Stage& b);
  Stage merged() const;

  std::array<Stage, kMaxStages> stages_;
  std::size_t count_ = 0;
};

// A match holds `literal`, with `before` in front of it and a byte of `after` behind it. It also holds `required`, in
// front of that or behind it; empty if no other literal is known.
struct TrexAnchor {
  TrexLead before;
  TrexLiteral literal;
  TrexByteSet after;
  TrexLiteral required;
};

// What became of the elements behind a repetition in its group, once they were tried from where it had ended.
struct TrexRest {
  std::uint32_t search = 0;        // the search in which they were; 0: in none
  std::int32_t continuation = -1;  // the node that was to be matched behind the group
  const char* from = nullptr;
  const char* to = nullptr;  // where the group ended; null if they did not match
};

// How far a repetition went, so that a later attempt that comes to it in the same place need not go there again.
struct TrexRun {
  std::uint32_t search = 0;         // the search in which it went
  std::int32_t continuation = -1;   // the node that was to be matched behind it
  bool ended = false;               // whether more rounds would have gone further
  const char* from = nullptr;       // of a single byte: where it started ...
  const char* to = nullptr;         // ... and how far it, or what went on from there, got
  std::vector<const char*> places;  // of more: where it stood between its rounds
  std::vector<const char*> fresh;   // the same of the attempt that is under way
  TrexRest rest;
};

struct TrexExpression {
  // A list of elements whose closing parenthesis has not come yet. `group` is the open group node, `owner` the node
  // (that group or an alternation) whose operand the list becomes, `tail` the last node of the list so far.
  struct OpenList {
    std::int32_t group;
    std::int32_t owner;
    std::int32_t tail;
  };

  struct JumpBuffer {
    std::jmp_buf place;
  };

  // The text of the current match, and the pattern while compiling.
  const char* end = nullptr;
  const char* begin = nullptr;
  const char* cursor = nullptr;

  std::int32_t first = 0;  // always node 0: the whole pattern is group 0
  std::vector<TrexNode> nodes;
  std::int32_t groups = 0;
  std::vector<TrexSubMatch> subMatches;  // one per group
  std::int32_t groupCounter = 0;         // the group that the current attempt records next
  std::unique_ptr<JumpBuffer> abort = std::make_unique<JumpBuffer>();  // where a compilation that fails goes
  const char** error = nullptr;

  std::vector<OpenList> open;  // while compiling: nesting is the pattern's, so it lives here and not on our stack
  std::int32_t depth = 0;      // nested matcher calls, bounded by kMaxMatchDepth

  // What a node is to the matcher.
  struct Trait {
    bool isByte = false;      // matches a single byte: one of its set
    bool isOptional = false;  // a repetition of no rounds and more
    std::int32_t stop = -1;   // of a repetition of single bytes in a greedy expression: the byte that ends it earlier
  };

  // What trexAnalyse found out.
  std::vector<Trait> traits;        // one per node
  std::vector<TrexByteSet> sets;    // one per node: what it matches, if that is a single byte
  TrexByteSet firstBytes;           // the bytes at which an attempt can get anywhere
  std::vector<TrexAnchor> anchors;  // one of them holds for every match; none if no literals are known

  bool testsBegin = false;  // whether what matches depends on where the text begins
  bool isGreedy = false;    // whether each repetition takes all that it can, up to a single byte that ends it earlier

  // What the attempts of one search leave to each other.
  std::uint32_t search = 0;   // its number
  std::vector<TrexRun> runs;  // one per node

  // The starts at which a greedy attempt of the search `longSearch` would come to a long repetition, most likely.
  std::uint32_t longSearch = 0;
  const char* longFrom = nullptr;
  const char* longTo = nullptr;
};

// Whether `byte` is in the class of `letter`, one of "aAcCdDlpPsSuwWxX". The tests are those of <cctype>.
bool trexClassLetterMatches(char letter, unsigned char byte);

// Finds out what saves work in matching an expression whose nodes are complete.
void trexAnalyse(TrexExpression& expression);

// Bytes of a repetition over which attempts should go that remember.
constexpr std::ptrdiff_t kLongRun = 64;

// One attempt of a greedy expression, which keeps no groups. `isLong`: it was given up at a long repetition.
struct TrexGreedyAttempt {
  const char* end;  // of the match, or null
  bool isLong;
};
TrexGreedyAttempt trexGreedyAttempt(const TrexExpression& expression, const char* end, const char* position);

// The number of anchors that are worth following at a time.
constexpr std::size_t kMaxAnchors = 4;

// One attempt at `position` of the text [begin, end): the end of the match, or null. `remembers`: it may rely on what
// earlier attempts of the search with the number `expression.search`, in the same text, found out; then it keeps no
// groups.
const char* trexAttempt(TrexExpression& expression, const char* begin, const char* end, const char* position,
                        bool remembers);
