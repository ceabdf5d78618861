// Test: tests/APICheckEngine/SourceScan_test.cpp.

#include "APICheckEngine/SourceScan.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "APICheckEngine/BraceIndex.h"
#include "APICheckEngine/NextByte.h"
#include "platform/Limits.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00::detail {
namespace {

constexpr std::size_t kExcerptLength = 430;
constexpr std::size_t kHitLength = 8;  // bytes of "document"; hits are only looked for where that many follow
constexpr std::size_t kBlockLead = 100;
constexpr std::string_view kFunctionKeyword = "function";

// "function init(a, b)", "function (e)", "init : function (a)"; not "function init(a = 1)".
constexpr const char* kFunctionHeader =
    R"((function\s*[\w\_]*\s*\([\w\_"'\s,]*\))|([\w\_]+\s*[\:]\s*function\s*\([\w\_"'\s,]*\)))";

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

// A list of places from which some are taken, and that is asked many times for the next one up to some bound: a tree of
// minima, the places at its leaves.
class Remaining {
 public:
  static constexpr std::size_t kTaken = static_cast<std::size_t>(-1);

  explicit Remaining(const std::vector<std::size_t>& places) : count_(places.size()) {
    while (leaves_ < count_)
      leaves_ *= 2;
    least_.assign(2 * leaves_, kTaken);
    std::copy(places.begin(), places.end(), least_.begin() + static_cast<std::ptrdiff_t>(leaves_));
    for (std::size_t node = leaves_; --node > 0;)
      least_[node] = std::min(least_[2 * node], least_[2 * node + 1]);
  }

  // The position of the first place left that is not before position `from` and at most `bound`; their number if there
  // is none.
  std::size_t next(std::size_t from, std::size_t bound) const {
    if (from >= count_) return count_;
    std::size_t node = leaves_ + from;
    while (least_[node] > bound) {
      while (node % 2 == 1)
        node /= 2;
      if (node == 0) return count_;
      ++node;
    }
    while (node < leaves_) {
      node *= 2;
      if (least_[node] > bound) ++node;
    }
    return node - leaves_;
  }

  void take(std::size_t position) {
    least_[leaves_ + position] = kTaken;
    for (std::size_t node = (leaves_ + position) / 2; node > 0; node /= 2)
      least_[node] = std::min(least_[2 * node], least_[2 * node + 1]);
  }

 private:
  std::size_t count_;
  std::size_t leaves_ = 1;
  std::vector<std::size_t> least_;
};

// The functions of a source, block by block. The headers are searched for once, not once for every block around them.
class FunctionFinder {
 public:
  explicit FunctionFinder(std::string_view text) : text_(text), braces_(text) {
    for (MatchCursor at(pattern_, text.data()); at.next();)
      headers_.push_back(headerOf(at.view()));
    findBlocks();
    findFirst();
    const auto inOrder = static_cast<std::ptrdiff_t>(finds_.size());
    findLast();
    findCut();
    const auto isBefore = [&](const Find& a, const Find& b) {
      return std::tie(a.block, headers_[a.header].begin) < std::tie(b.block, headers_[b.header].begin);
    };
    std::sort(finds_.begin() + inOrder, finds_.end(), isBefore);
    std::inplace_merge(finds_.begin(), finds_.begin() + inOrder, finds_.end(), isBefore);
  }

  ScriptFunctions functions() const {
    ScriptFunctions found;
    for (const auto [begin, end, bodyEnd] : headers_) {
      const std::size_t known = bodyEnd == BraceIndex::kNone ? end : bodyEnd;
      found.functions.push_back({text_.substr(begin, end - begin), text_.substr(end, known - end)});
    }
    for (const Find& find : finds_)
      found.finds.push_back(find.header);
    return found;
  }

 private:
  static constexpr int kFirstKept = kMaxEqualRecords - 1;
  static_assert(BraceIndex::kNone == Remaining::kTaken);  // a function without an end is none

  struct Header {
    std::size_t begin;
    std::size_t end;
    std::size_t bodyEnd;
  };

  // The text that is searched for headers on account of one keyword: those from `firstHeader` on that lie before its
  // end, which is right behind a brace, so that no header reaches over it.
  struct Block {
    std::size_t end;
    std::size_t firstHeader;
  };

  // A header found in a block; by their positions.
  struct Find {
    std::uint32_t block;
    std::uint32_t header;
  };

  Header headerOf(std::string_view match) const {
    const auto begin = static_cast<std::size_t>(match.data() - text_.data());
    return {begin, begin + match.size(), braces_.balancedEnd(begin + match.size())};
  }

  void findBlocks() {
    const TrexLiteral keywords{std::string(kFunctionKeyword)};
    const char* const textEnd = text_.data() + text_.size();
    NextByte opening(text_, '(');
    NextByte closing(text_, ')');
    for (const char* at = text_.data(); (at = keywords.find(at, textEnd, nullptr)) != textEnd; ++at) {
      // The block ends at the brace that balances those behind the keyword's first parentheses.
      const auto keyword = static_cast<std::size_t>(at - text_.data());
      const std::size_t parentheses = std::max(opening.from(keyword), closing.from(keyword));
      if (parentheses == std::string_view::npos) return;
      const std::size_t end = braces_.balancedEnd(parentheses);
      if (end == BraceIndex::kNone) continue;
      blocks_.push_back({end, 0});
      blocks_.back().firstHeader = firstHeaderFrom(keyword - std::min(keyword, kBlockLead));
    }
  }

  // The first header that the search of the last block, which begins at `begin`, has in common with that of the whole
  // text. A block may begin inside a header; what is found before they agree again are cut headers.
  std::size_t firstHeaderFrom(std::size_t begin) {
    const auto firstFrom = [&](std::size_t at) {
      return std::partition_point(headers_.begin(), headers_.end(), [&](const Header& h) { return h.end <= at; });
    };
    auto next = firstFrom(begin);
    while (next != headers_.end() && next->begin < begin) {
      const std::string_view match = pattern_.searchRange(text_.data() + begin, text_.data() + blocks_.back().end);
      if (match.data() == nullptr) return headers_.size();
      const Header header = headerOf(match);
      next = firstFrom(header.begin);
      if (next != headers_.end() && next->begin == header.begin) break;
      if (header.bodyEnd <= blocks_.back().end) cut_.emplace_back(blocks_.size() - 1, header);
      begin = header.end;
      next = firstFrom(begin);
    }
    return static_cast<std::size_t>(next - headers_.begin());
  }

  // Calls `use` with the headers of a block whose bodies end in it, of those that are left.
  template <typename Use>
  void forEachIn(const Block& block, const Remaining& left, const Use& use) const {
    for (std::size_t i = left.next(block.firstHeader, block.end); i < headers_.size() && headers_[i].begin < block.end;
         i = left.next(i + 1, block.end))
      use(i);
  }

  void findFirst() {
    seen_.resize(headers_.size(), {0, 0});
    std::vector<std::size_t> bodyEnds;
    for (const Header& header : headers_)
      bodyEnds.push_back(header.bodyEnd);
    Remaining left(bodyEnds);
    for (std::size_t block = 0; block < blocks_.size(); ++block) {
      forEachIn(blocks_[block], left, [&](std::size_t i) {
        addFind(block, i);
        seen_[i] = {seen_[i].times + 1, block};
        if (seen_[i].times == kFirstKept) left.take(i);
      });
    }
  }

  // The last find of those that findFirst left.
  void findLast() {
    std::vector<std::size_t> bodyEnds;
    for (std::size_t i = 0; i < headers_.size(); ++i)
      bodyEnds.push_back(seen_[i].times < kFirstKept ? Remaining::kTaken : headers_[i].bodyEnd);
    Remaining left(bodyEnds);
    for (std::size_t block = blocks_.size(); block-- > 0;) {
      forEachIn(blocks_[block], left, [&](std::size_t i) {
        left.take(i);
        if (seen_[i].block != block) addFind(block, i);
      });
    }
  }

  // Behind the headers of the whole text come those that only a block that cuts one of them has.
  void findCut() {
    struct Cut {
      std::size_t header;
      int finds;
      int seen;
    };
    std::unordered_map<std::size_t, Cut> cuts;  // by where the header begins
    for (const auto& [block, header] : cut_) {
      const auto [cut, isNew] = cuts.try_emplace(header.begin, Cut{headers_.size(), 0, 0});
      if (isNew) headers_.push_back(header);
      ++cut->second.finds;
    }
    for (const auto& [block, header] : cut_) {
      Cut& cut = cuts.at(header.begin);
      if (++cut.seen <= kFirstKept || cut.seen == cut.finds) addFind(block, cut.header);
    }
  }

  void addFind(std::size_t block, std::size_t header) {
    finds_.push_back({static_cast<std::uint32_t>(block), static_cast<std::uint32_t>(header)});
  }

  struct Seen {
    int times;
    std::size_t block;  // of the last time
  };

  std::string_view text_;
  const BraceIndex braces_;
  const Pattern pattern_{kFunctionHeader};
  std::vector<Header> headers_;
  std::vector<Block> blocks_;
  std::vector<Seen> seen_;  // one per header
  std::vector<Find> finds_;
  std::vector<std::pair<std::size_t, Header>> cut_;  // with their blocks
};

}  // namespace

std::vector<Excerpt> findExcerpts(std::string_view source) {
  std::vector<Excerpt> excerpts;
  Hits hits(source);
  std::size_t last = 0;      // the hit before
  std::size_t blank = 0;     // the nearest one so far, or the start
  std::size_t begin = 0;     // where an excerpt from there starts
  std::size_t stopFrom = 0;  // the blank after stopFrom is at stop, as far as that is known
  std::size_t stop = 0;
  for (std::size_t at = 0; (at = hits.from(at)) != std::string_view::npos; last = at++) {
    const std::size_t nearest = source.substr(last, at - last).rfind(' ');
    if (nearest != std::string_view::npos || excerpts.empty()) {
      if (nearest != std::string_view::npos) blank = last + nearest;
      begin = source[blank] == ' ' ? assignedVariable(source, blank) : blank;
    }
    const std::size_t from = blank + std::min(source.size() - at - 1, kExcerptLength);
    if (from < stopFrom || from > stop) {
      stopFrom = from;
      stop = std::min(source.find(' ', from), source.size() - 1);
    }
    const std::string_view text = source.substr(begin, stop - begin);
    if (!excerpts.empty() && excerpts.back().text.data() == text.data() && excerpts.back().text.size() == text.size()) {
      ++excerpts.back().hits;
    } else {
      excerpts.push_back({text, 1});
    }
  }
  return excerpts;
}

ScriptFunctions findFunctions(std::string_view source) {
  if (source.find(kFunctionKeyword) == std::string_view::npos) return {};
  return FunctionFinder(source).functions();
}

}  // namespace FlashEngine_1_00::detail
