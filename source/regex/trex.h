#pragma once

#include <cstdint>

// The pattern engine: the small regular-expression dialect in which every pattern of this system is written.
//
// Patterns and texts are bytes. docs/patterns.md describes the dialect; what matters most to whoever writes a pattern:
//   * a repetition takes as few rounds as it can once the element after it would match, and never gives rounds back:
//     "a*a" against "aaa" matches "aa"; if the next element is itself optional, the repetition runs to its own end;
//   * an alternation commits to the first alternative that matches by itself: "(a|ab)c" never matches "abc".
//
// The end of the text. An element does not test for it (only `$` does), so `.`, a negated class and a negative class
// letter can consume the one byte at the end, the terminator of a zero-terminated text. Nothing is read or consumed
// beyond that byte: a match ends at most one past the end.
//
// Callers compile, search as often as they like, take the groups, and free. An expression is written to while it
// matches, and g_exp is process-wide: one thread only.
extern "C" {

// Node kinds; 0 to 255 are literal bytes. 265 is not used.
enum TrexNodeKind : std::int32_t {
  TREX_NODE_REPEAT = 256,           // left: the node repeated; right: min << 16 | max, max 65535 for no bound
  TREX_NODE_ALTERNATION = 257,      // left, right: first node of each alternative; next: unused
  TREX_NODE_GROUP = 258,            // left: first node inside; right: group number
  TREX_NODE_GROUP_NOCAPTURE = 259,  // left: first node inside
  TREX_NODE_ANY = 260,              // any byte
  TREX_NODE_CLASS = 261,            // left: first item
  TREX_NODE_CLASS_ESCAPE = 262,     // left: class letter
  TREX_NODE_CLASS_NEGATED = 263,    // left: first item
  TREX_NODE_RANGE = 264,            // left: low byte; right: high byte; inside classes only
  TREX_NODE_END = 266,              // end of the text
  TREX_NODE_BEGIN = 267,            // start of the text
  TREX_NODE_BOUNDARY = 268,         // left: 'b' or 'B'
};

// One node of a compiled pattern. Unused operands are -1; `next` is the following node of the same sequence, or the
// next item of the same class, -1 at the end.
struct TrexNode {
  std::int32_t kind;
  std::int32_t left;
  std::int32_t right;
  std::int32_t next;
};

// What a group matched: `length` bytes from `begin`, which points into the caller's text; null if the group took no
// part.
struct TrexSubMatch {
  const char* begin;
  std::int32_t length;
};

// A compiled pattern; opaque to callers.
struct TrexExpression;

// Compiles the zero-terminated `pattern`, which is not kept. The caller owns the result (trex_free). Returns null if
// the pattern is not of the dialect, and then stores one of these fixed messages in `*error` (if `error` is not
// null): "letter expected", "overflow in numeric constant", "expected paren", "empty class", "unfinished range",
// "invalid range", "cannot use character classes in ranges", "number expected", ", or } expected",
// "unexpected character". On success `*error` is not written. Throws std::bad_alloc.
TrexExpression* trex_compile(const char* pattern, const char** error);

// Releases an expression; null does nothing.
void trex_free(TrexExpression* expression);

// 1 when the whole zero-terminated `text` matches, else 0.
int trex_match(TrexExpression* expression, const char* text);

// Finds the leftmost match in the zero-terminated `text`. Returns 1 and stores its first byte and its end in
// `*outBegin` and `*outEnd` (each pointer may be null), or returns 0. An empty text never matches, and no match
// starts at the terminator. Sets g_limitAddress.
int trex_search(TrexExpression* expression, const char* text, const char** outBegin, const char** outEnd);

// The same over [begin, end). The byte at `end` must be readable: an element may look at it and consume it.
int trex_searchrange(TrexExpression* expression, const char* begin, const char* end, const char** outBegin,
                     const char** outEnd);

// The number of groups, group 0 (the whole match) included.
int trex_getsubexpcount(TrexExpression* expression);

// Copies what group `n` matched last into `*submatch` and returns 1, or returns 0 if there is no group `n`. A group
// that took no part in the last match keeps what an earlier one left, unless it was entered and failed.
int trex_getsubexp(TrexExpression* expression, int n, TrexSubMatch* submatch);
}

// The expression that was compiled last; null after a compilation that failed. Not owned, may dangle.
extern TrexExpression* g_exp;

// Where the text of the last trex_search ended (its terminator). Kept for the host.
extern const char* g_limitAddress;
