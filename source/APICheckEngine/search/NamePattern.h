#pragma once

#include <array>
#include <string>
#include <string_view>

#include "regex/Pattern.h"

namespace FlashEngine_1_00::detail {

// A pattern that is the same for many names: a byte of one class, any number of bytes of another, the name, what
// follows it. Its matches, and where they end, depend on nothing in front of them.
class NamePattern {
 public:
  // The whole pattern of one name, which is taken as a pattern, too: its dots stand for any byte.
  using Whole = std::string (*)(const std::string& name);

  // `first` and `between`: classes of bytes, as patterns; no `between` for none. `behind`: a pattern that cannot match
  // empty. `whole` is made of these.
  NamePattern(Whole whole, const std::string& first, const std::string& between, const std::string& behind)
      : whole_(whole), first_(first), between_(between), behind_(behind) {}

 private:
  friend class NameMatches;

  class Bytes {
   public:
    explicit Bytes(const std::string& characterClass);
    bool contains(char byte) const { return contained_[static_cast<unsigned char>(byte)]; }

   private:
    std::array<bool, 256> contained_{};
  };

  Whole whole_;
  Bytes first_;
  Bytes between_;
  Pattern behind_;
};

// All matches of such a pattern for one name in a text, left to right; each search starts where the match before it
// ended.
class NameMatches {
 public:
  // In `text`, behind which a byte must be readable, with an index of that text or one around it or null. Pattern and
  // text must outlive the matches and their views.
  NameMatches(const NamePattern& pattern, const std::string& name, std::string_view text, TextIndex* index);

  bool next() { return plain_.has_value() ? plain_->next() : nextAroundName(); }

  std::string_view view() const { return plain_.has_value() ? plain_->view() : match_; }
  std::string match() const { return std::string(view()); }

 private:
  bool nextAroundName();
  const char* nameFrom(const char* at) const;
  bool matchesAround(const char* name);

  const NamePattern& pattern_;
  std::string name_;
  std::size_t literalAt_ = 0;  // in the name
  TrexLiteral literal_;        // what stands behind its last dot
  const char* at_;             // where the next search starts
  const char* nextName_;
  const char* end_;
  TextIndex* index_;
  std::string_view match_;
  std::optional<MatchCursor> behind_;
  std::optional<Pattern> compiled_;  // of names that are no words with dots between, with its matches
  std::optional<MatchCursor> plain_;
};

}  // namespace FlashEngine_1_00::detail
