// Matches around a name.
//
// The plain search compiles the pattern of each name and goes through the text with it. Names are almost always words,
// or words with dots between: text that can be searched for as it is. What stands behind the name is one pattern for
// all of them, compiled once and tried where the name is found. In front of the name are bytes of `between`, back to a
// byte of `first`: that is one place at most, since neither the name nor `first` may begin with a byte of `between`.
// The places of a name come in ascending order, and so do the matches around them. Other names have their pattern
// compiled. Test: tests/APICheckEngine/Search_test.cpp, against the plain search.

#include "APICheckEngine/search/NamePattern.h"

#include <algorithm>

namespace FlashEngine_1_00::detail {
namespace {

bool isWordByte(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

// Whether a name is made of words and dots, with a word at both ends.
bool isDottedWord(const std::string& name) {
  return !name.empty() && isWordByte(name.front()) && isWordByte(name.back()) &&
         std::all_of(name.begin(), name.end(), [](char c) { return isWordByte(c) || c == '.'; });
}

}  // namespace

NamePattern::Bytes::Bytes(const std::string& characterClass) {
  const Pattern pattern(characterClass);
  for (std::size_t byte = 1; byte < contained_.size(); ++byte)
    contained_[byte] = !characterClass.empty() && pattern.matchesIn(std::string(1, static_cast<char>(byte)).c_str());
}

NameMatches::NameMatches(const NamePattern& pattern, const std::string& name, std::string_view text, TextIndex* index)
    : pattern_(pattern), name_(name), at_(text.data()), nextName_(at_), end_(at_ + text.size()), index_(index) {
  if (isDottedWord(name)) {
    literalAt_ = name.rfind('.') + 1;
    literal_ = TrexLiteral(name.substr(literalAt_));
    behind_.emplace(pattern.behind_, text, nullptr);
  } else {
    compiled_.emplace(pattern.whole_(name));
    plain_.emplace(*compiled_, text, index);
  }
}

bool NameMatches::nextAroundName() {
  while (const char* const name = nameFrom(nextName_)) {
    nextName_ = name + 1;
    if (!matchesAround(name)) continue;
    at_ = nextName_ = match_.data() + match_.size();
    return true;
  }
  return false;
}

// The first place of the name at or after `at`; null if there is none. The byte behind the text can belong to a match.
const char* NameMatches::nameFrom(const char* at) const {
  const char* const behind = end_ + 1;
  const std::size_t rest = name_.size() - literalAt_;
  while (at <= end_ && static_cast<std::size_t>(behind - at) >= name_.size()) {
    const char* const literal = literal_.find(at + literalAt_, behind, index_);
    if (static_cast<std::size_t>(behind - literal) < rest || literal == behind) return nullptr;
    at = literal - literalAt_;
    const bool isName = std::equal(name_.begin(), name_.begin() + static_cast<std::ptrdiff_t>(literalAt_), at,
                                   [](char wanted, char there) { return wanted == '.' || wanted == there; });
    if (isName) return at;
    ++at;
  }
  return nullptr;
}

// Whether a match around the name at a place starts where the last one ended, or behind.
bool NameMatches::matchesAround(const char* name) {
  const char* begin = name;
  while (begin > at_ && pattern_.between_.contains(begin[-1]))
    --begin;
  if (begin == at_ || !pattern_.first_.contains(begin[-1])) return false;
  if (!behind_->startsAt(name + name_.size())) return false;
  match_ = {begin - 1, static_cast<std::size_t>(behind_->view().data() + behind_->view().size() - (begin - 1))};
  return match_.data() < end_;
}

}  // namespace FlashEngine_1_00::detail
