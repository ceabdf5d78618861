#pragma once

#include <bitset>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct SlowNode {
  enum Kind { kByte, kBegin, kEnd, kBoundary, kNoBoundary, kGroup, kAlternation, kRepeat } kind;
  std::bitset<256> bytes;  // kByte: whatever takes exactly one byte takes one of these
  int group = -1;          // kGroup: its number, -1 if it does not capture
  int min = 0, max = 0;    // kRepeat
  const SlowNode* left = nullptr;
  const SlowNode* right = nullptr;
  const SlowNode* next = nullptr;
};

// A second matcher for the pattern dialect, written from the rules with no eye on speed and sharing nothing with the
// engine but the rules. Where the two differ, one of them misreads the dialect.
//
// It works inside the caller's bytes, so its groups can be compared with the engine's as pointers, groups that an
// earlier text left behind included. Keep the texts alive as long as the pattern.
class SlowPattern {
 public:
  using Found = std::pair<const char*, const char*>;  // begin and end, both null for none

  // Nothing, and a message in `error`, when the pattern is not of the dialect.
  static std::optional<SlowPattern> compile(const std::string& pattern, std::string* error);

  // The byte after the text is never looked at; it counts as 0.
  bool match(std::string_view text);

  // Searches text[begin, end). An `end` inside the text lets the pattern see and take the byte there.
  Found search(std::string_view text, std::size_t begin, std::size_t end);

  const std::vector<Found>& groups() const { return groups_; }

 private:
  std::deque<SlowNode> nodes_;  // a deque: nodes point at each other while more are added
  std::vector<Found> groups_;
};
