// Excerpts: a rule for each hit, found in one pass for all of them.
//
// The plain search goes, for every hit, back to the nearest blank and forth to the one behind the excerpt. Hits come in
// order, so that both blanks only move on: the nearest one is looked for between this hit and the one before, and the
// one at the end is kept as long as the place from which it was looked for does not pass it. Hits without a blank in
// between share their excerpt; it is made once and counted. Test: tests/APICheckEngine/SourceScan_test.cpp; against
// the plain search: fuzz/source_scan_fuzz.cpp.

#include "APICheckEngine/search/Excerpts.h"

#include <algorithm>
#include <cctype>

#include "APICheckEngine/search/NextByte.h"

namespace FlashEngine_1_00::detail {
namespace {

constexpr std::size_t kExcerptLength = 430;
constexpr std::size_t kHitLength = 8;  // bytes of "document"; hits are only looked for where that many follow

bool isSpace(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}
bool isNameByte(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.';
}

// The places of "$(", "$ (", "$_" and "document" in any case, as far as kHitLength bytes and one more follow.
class Hits {
 public:
  explicit Hits(std::string_view text) : text_(text), dollar_(text, '$'), lower_(text, 'm'), upper_(text, 'M') {}

  // The first one that is not before `at`; npos if there is none.
  std::size_t from(std::size_t at) {
    nextDollar_ = std::max(nextDollar_, at);
    while (fits(nextDollar_ = dollar_.from(nextDollar_)) && !isDollarHit(nextDollar_))
      ++nextDollar_;
    nextDocument_ = std::max(nextDocument_, at);
    while (fits(nextDocument_ = nextM(nextDocument_ + kPlaceOfM)) && !isDocumentHit(nextDocument_))
      ++nextDocument_;
    const std::size_t next = std::min(nextDollar_, nextDocument_);
    return fits(next) ? next : std::string_view::npos;
  }

 private:
  static constexpr std::string_view kDocument = "DOCUMENT";
  static constexpr std::size_t kPlaceOfM = 4;  // the letter of it that is rarest in script

  bool fits(std::size_t at) const { return at < text_.size() && text_.size() - at > kHitLength; }

  std::size_t nextM(std::size_t at) {
    const std::size_t place = std::min(lower_.from(at), upper_.from(at));
    return place == std::string_view::npos ? place : place - kPlaceOfM;
  }

  bool isDollarHit(std::size_t at) const {
    const char next = text_[at + 1] == ' ' ? text_[at + 2] : text_[at + 1];
    return next == '_' || next == '(';
  }

  bool isDocumentHit(std::size_t at) const {
    return std::equal(kDocument.begin(), kDocument.end(), text_.data() + at, [](char u, char c) {
      return u == static_cast<char>(static_cast<unsigned char>(c) & 0xDF);  // bit 5 is that of the lower case
    });
  }

  std::string_view text_;
  NextByte dollar_;
  NextByte lower_;
  NextByte upper_;
  std::size_t nextDollar_ = 0;
  std::size_t nextDocument_ = 0;
};

// The end of what stands before `end` without the white space there.
std::size_t withoutSpace(std::string_view text, std::size_t end) {
  while (end > 0 && isSpace(text[end - 1]))
    --end;
  return end;
}

// Where the single "=" stands that is the next byte behind the white space at `blank`; npos if there is none. Neither
// "==" nor "=>" is one.
std::size_t assignmentBehind(std::string_view text, std::size_t blank) {
  while (blank < text.size() && isSpace(text[blank]))
    ++blank;
  const bool isSingle = text.substr(blank, 1) == "=" && text.substr(blank, 2) != "==" && text.substr(blank, 2) != "=>";
  return isSingle ? blank : std::string_view::npos;
}

// Where an excerpt that starts at the blank `blank` has to start to keep the variable that is assigned there: for
// "t = document..." and "t =document..." at the "t". `blank` itself if no name with a single "=" stands there.
std::size_t assignedVariable(std::string_view text, std::size_t blank) {
  const std::size_t end = withoutSpace(text, blank);
  const bool isBehind = end > 0 && text[end - 1] == '=';
  if (!isBehind && assignmentBehind(text, blank) == std::string_view::npos) return blank;
  const std::size_t nameEnd = isBehind ? withoutSpace(text, end - 1) : end;
  std::size_t begin = nameEnd;
  while (begin > 0 && isNameByte(text[begin - 1]))
    --begin;
  return begin < nameEnd ? begin : blank;
}

// Where excerpts begin.
class Begins {
 public:
  explicit Begins(std::string_view source) : source_(source) {}

  // Goes on to the hit at `at`, which is behind the one before.
  void moveTo(std::size_t at) {
    const std::size_t nearest = source_.substr(hit_, at - hit_).rfind(' ');
    if (nearest != std::string_view::npos) blank_ = hit_ + nearest;
    if (nearest != std::string_view::npos || isFirst_) {
      begin_ = source_[blank_] == ' ' ? assignedVariable(source_, blank_) : blank_;
    }
    isFirst_ = false;
    hit_ = at;
  }

  std::size_t blank() const { return blank_; }  // the nearest one before the hit, or the start of the source
  std::size_t begin() const { return begin_; }  // where an excerpt from there begins

 private:
  std::string_view source_;
  bool isFirst_ = true;
  std::size_t hit_ = 0;
  std::size_t blank_ = 0;
  std::size_t begin_ = 0;
};

}  // namespace

std::vector<Excerpt> findExcerpts(std::string_view source) {
  std::vector<Excerpt> excerpts;
  Hits hits(source);
  Begins begins(source);
  std::size_t stopFrom = 0;  // the blank after stopFrom is at stop, as far as that is known
  std::size_t stop = 0;
  for (std::size_t at = 0; (at = hits.from(at)) != std::string_view::npos; ++at) {
    begins.moveTo(at);
    const std::size_t from = begins.blank() + std::min(source.size() - at - 1, kExcerptLength);
    if (from < stopFrom || from > stop) {
      stopFrom = from;
      stop = std::min(source.find(' ', from), source.size() - 1);
    }
    const std::string_view text = source.substr(begins.begin(), stop - begins.begin());
    if (!excerpts.empty() && excerpts.back().text.data() == text.data() && excerpts.back().text.size() == text.size()) {
      ++excerpts.back().hits;
    } else {
      excerpts.push_back({text, 1});
    }
  }
  return excerpts;
}

}  // namespace FlashEngine_1_00::detail
