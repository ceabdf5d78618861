// Test: tests/APICheckEngine/SourceScan_test.cpp.

#include "APICheckEngine/SourceScan.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <unordered_map>

#include "APICheckEngine/BraceIndex.h"
#include "platform/Limits.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00::detail {
namespace {

constexpr std::size_t kExcerptLength = 430;
constexpr std::size_t kHitLength = 8;  // bytes of "document"; hits are only looked for where that many follow
constexpr std::size_t kBlockLead = 100;
constexpr std::string_view kFunctionKeyword = "function";

// "function init(a, b)", "function (e)", "init : function (a)"; not "function init(a = 1)".
const std::string kFunctionHeader =
    R"((function\s*[\w\_]*\s*\([\w\_"'\s,]*\))|([\w\_]+\s*[\:]\s*function\s*\([\w\_"'\s,]*\)))";

bool isSpace(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}
bool isNameByte(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.';
}

bool isDollarHit(std::string_view text, std::size_t at) {
  if (text[at] != '$') return false;
  const char next = text[at + 1] == ' ' ? text[at + 2] : text[at + 1];
  return next == '_' || next == '(';
}

bool isDocumentHit(std::string_view text, std::size_t at) {
  static constexpr std::string_view kUpper = "DOCUMENT";
  return std::equal(kUpper.begin(), kUpper.end(), text.data() + at, [](char u, char c) {
    return u == static_cast<char>(static_cast<unsigned char>(c) & 0xDF);  // bit 5 is that of the lower case
  });
}

// Where an excerpt that starts at the blank `blank` has to start to keep the variable that is assigned there: for
// "t = document..." at the "t". `blank` itself if no name with a single "=" stands there.
std::size_t assignedVariable(std::string_view text, std::size_t blank) {
  std::size_t at = blank;
  const auto skipSpace = [&] {
    while (at > 0 && isSpace(text[at - 1]))
      --at;
  };
  skipSpace();
  if (at == 0 || text[at - 1] != '=') return blank;
  --at;
  skipSpace();
  const std::size_t nameEnd = at;
  while (at > 0 && isNameByte(text[at - 1]))
    --at;
  return at < nameEnd ? at : blank;
}

// The functions whose headers lie in a block, found in the text as a whole: the headers are searched for once, not once
// for every block around them.
class FunctionHeaders {
 public:
  struct Range {
    std::size_t begin;
    std::size_t end;
  };

  explicit FunctionHeaders(std::string_view text) : text_(text) {
    for (MatchCursor at(pattern_, text.data()); at.next();)
      headers_.push_back(rangeOf(at.view()));
  }

  // Calls `use` with each header that a search from `begin` on finds before `end`, which lies right behind a brace: no
  // header reaches over it.
  template <typename Use>
  void forEachIn(std::size_t begin, std::size_t end, const Use& use) const {
    auto next = std::partition_point(headers_.begin(), headers_.end(), [&](Range h) { return h.end <= begin; });
    // A block may begin inside a header; what is found from there on is found again by the search of the whole text as
    // soon as both stand between two headers.
    while (next != headers_.end() && next->begin < begin) {
      const std::string_view match = pattern_.searchRange(text_.data() + begin, text_.data() + end);
      if (match.data() == nullptr) return;
      use(rangeOf(match));
      begin = rangeOf(match).end;
      while (next != headers_.end() && next->end <= begin)
        ++next;
    }
    for (; next != headers_.end() && next->begin < end; ++next)
      use(*next);
  }

 private:
  Range rangeOf(std::string_view match) const {
    const auto begin = static_cast<std::size_t>(match.data() - text_.data());
    return {begin, begin + match.size()};
  }

  std::string_view text_;
  const Pattern pattern_{kFunctionHeader};
  std::vector<Range> headers_;
};

// The next place of a byte, for questions whose places only grow.
class NextByte {
 public:
  NextByte(std::string_view text, char byte) : text_(text), byte_(byte) {}

  std::size_t after(std::size_t at) {
    if (place_ <= at) place_ = text_.find(byte_, at + 1);
    return place_;
  }

 private:
  std::string_view text_;
  char byte_;
  std::size_t place_ = 0;
};

}  // namespace

std::vector<Excerpt> findExcerpts(std::string_view source) {
  struct Range {
    std::size_t begin;
    std::size_t end;
    int hits;
  };
  std::vector<Range> ranges;
  std::size_t blank = 0;                         // the nearest one so far, or the start
  std::size_t begin = 0;                         // where an excerpt from there starts
  std::size_t beginOf = std::string_view::npos;  // the blank for which that is known
  std::size_t stopFrom = 0;                      // the blank after stopFrom is at stop, as far as that is known
  std::size_t stop = 0;
  for (std::size_t at = 0; at + kHitLength < source.size(); ++at) {
    if (source[at] == ' ') blank = at;
    if (!isDollarHit(source, at) && !isDocumentHit(source, at)) continue;
    const std::size_t from = blank + std::min(source.size() - at - 1, kExcerptLength);
    if (from < stopFrom || from > stop) {
      stopFrom = from;
      stop = std::min(source.find(' ', from), source.size() - 1);
    }
    if (beginOf != blank) {
      begin = source[blank] == ' ' ? assignedVariable(source, blank) : blank;
      beginOf = blank;
    }
    if (!ranges.empty() && ranges.back().begin == begin && ranges.back().end == stop) {
      ++ranges.back().hits;
    } else {
      ranges.push_back({begin, stop, 1});
    }
  }
  std::vector<Excerpt> excerpts;
  for (const Range& r : ranges)
    excerpts.push_back({std::string(source.substr(r.begin, r.end - r.begin)), r.hits});
  return excerpts;
}

std::vector<ScriptFunction> findFunctions(std::string_view source) {
  std::vector<ScriptFunction> functions;
  if (source.find(kFunctionKeyword) == std::string_view::npos) return functions;
  const BraceIndex braces(source);
  const FunctionHeaders headers(source);
  const auto forEachFind = [&](const auto& use) {
    NextByte opening(source, '(');
    NextByte closing(source, ')');
    for (std::size_t keyword = source.find(kFunctionKeyword); keyword != std::string_view::npos;
         keyword = source.find(kFunctionKeyword, keyword + 1)) {
      // The block ends at the brace that balances those behind the keyword's first parentheses.
      const std::size_t parentheses = std::max(opening.after(keyword), closing.after(keyword));
      if (parentheses == std::string_view::npos) return;
      const std::size_t end = braces.balancedEnd(parentheses);
      if (end == BraceIndex::kNone) continue;
      headers.forEachIn(keyword - std::min(keyword, kBlockLead), end, [&](FunctionHeaders::Range header) {
        const std::size_t bodyEnd = braces.balancedEnd(header.end);
        if (bodyEnd != BraceIndex::kNone && bodyEnd <= end) use(header, bodyEnd);
      });
    }
  };
  // Of more finds than are kept, the first ones and the last one stay: aliases depend on which function is found first,
  // bindings on which is found last.
  std::unordered_map<std::size_t, int> finds;  // by where the header begins
  forEachFind([&](FunctionHeaders::Range header, std::size_t) { ++finds[header.begin]; });
  std::unordered_map<std::size_t, int> seen;
  forEachFind([&](FunctionHeaders::Range header, std::size_t bodyEnd) {
    const int find = ++seen[header.begin];
    if (find >= kMaxEqualRecords && find < finds[header.begin]) return;
    functions.push_back(
        {source.substr(header.begin, header.end - header.begin), source.substr(header.end, bodyEnd - header.end)});
  });
  return functions;
}

}  // namespace FlashEngine_1_00::detail
