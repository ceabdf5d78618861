// The functions of a source, block by block.
//
// The plain search cuts a block out of the source around every "function" keyword, and searches each block for headers
// and, behind each, for the brace that balances its body. With blocks inside each other that is done again and again.
// Here headers are searched for once, in the whole source, and the end of each body is looked up in an index of the
// braces. A block then has those headers that lie in it and whose bodies end in it. Both searches find the same
// headers, since a search that begins somewhere in the middle agrees with that of the whole source from the first
// header on that they have in common; what a block finds before that (because it begins inside a header) is searched
// for by itself.
//
// Of a function that many blocks hold, the first finds and the last one are kept. The first ones are those of the first
// blocks; so blocks are gone through in their order, and a header that has been found often enough is taken out of a
// tree of those that are left (Remaining), so that it costs nothing in the blocks that follow. For the last ones blocks
// are gone through the other way round. Test:
// tests/APICheckEngine/SourceScan_test.cpp; against the plain search: fuzz/source_scan_fuzz.cpp.

#include "APICheckEngine/search/ScriptFunctions.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "APICheckEngine/search/BraceIndex.h"
#include "APICheckEngine/search/NextByte.h"
#include "APICheckEngine/search/Remaining.h"
#include "platform/Limits.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00::detail {
namespace {

constexpr std::size_t kBlockLead = 100;
constexpr std::string_view kFunctionKeyword = "function";

// "function init(a, b)", "function (e)", "init : function (a)"; not "function init(a = 1)".
constexpr const char* kFunctionHeader =
    R"((function\s*[\w\_]*\s*\([\w\_"'\s,]*\))|([\w\_]+\s*[\:]\s*function\s*\([\w\_"'\s,]*\)))";

class FunctionFinder {
 public:
  FunctionFinder(std::string_view text, const Pattern& pattern) : text_(text), braces_(text), pattern_(pattern) {
    for (MatchCursor at(pattern_, text.data()); at.next();)
      headers_.push_back(headerOf(at.view()));
    findBlocks();
    findFirst();
    findLast();
    findCut();
    insertOthers();
  }

  ScriptFunctions functions() {
    ScriptFunctions found;
    found.functions.reserve(headers_.size());
    for (const auto [begin, end, bodyEnd] : headers_) {
      const std::size_t known = bodyEnd == BraceIndex::kNone ? end : bodyEnd;
      found.functions.push_back({text_.substr(begin, end - begin), text_.substr(end, known - end)});
    }
    found.finds = std::move(finds_);
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
    std::size_t firstFind;  // of those by findFirst
    std::size_t endOfFinds;
  };

  // A header found in a block by another search than findFirst; by their positions.
  struct Find {
    std::size_t block;
    std::size_t header;
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
      blocks_.push_back({end, 0, 0, 0});
      blocks_.back().firstHeader = firstHeaderFrom(keyword - std::min(keyword, kBlockLead));
    }
  }

  // The first header that the search of the last block, which begins at `begin`, has in common with that of the whole
  // text. A block may begin inside a header; what is found before they agree again are cut headers. One that begins in
  // the rest of that header has its keyword there, too: a header ends with a parenthesis, and none stands before a
  // keyword.
  std::size_t firstHeaderFrom(std::size_t begin) {
    const auto firstFrom = [&](std::size_t at) {
      return std::partition_point(headers_.begin(), headers_.end(), [&](const Header& h) { return h.end <= at; });
    };
    auto next = firstFrom(begin);
    while (next != headers_.end() && next->begin < begin) {
      if (text_.substr(begin, next->end - begin).find(kFunctionKeyword) == std::string_view::npos) {
        ++next;
        break;
      }
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
      blocks_[block].firstFind = finds_.size();
      forEachIn(blocks_[block], left, [&](std::size_t i) {
        finds_.push_back(static_cast<std::uint32_t>(i));
        seen_[i] = {seen_[i].times + 1, block};
        if (seen_[i].times == kFirstKept) left.take(i);
      });
      blocks_[block].endOfFinds = finds_.size();
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
        if (seen_[i].block != block) others_.push_back({block, i});
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
      if (++cut.seen <= kFirstKept || cut.seen == cut.finds) others_.push_back({block, cut.header});
    }
  }

  // Puts the finds of the other searches where they belong: in their blocks, by the places of their headers.
  void insertOthers() {
    std::sort(others_.begin(), others_.end(), [&](const Find& a, const Find& b) {
      return std::tie(a.block, headers_[a.header].begin) < std::tie(b.block, headers_[b.header].begin);
    });
    const auto findAt = [&](std::size_t i) { return finds_.begin() + static_cast<std::ptrdiff_t>(i); };
    std::size_t end = finds_.size();
    finds_.resize(end + others_.size());
    for (std::size_t left = others_.size(); left-- > 0;) {
      const auto [block, header] = others_[left];
      const std::size_t place = headers_[header].begin;
      const auto behind =
          std::partition_point(findAt(blocks_[block].firstFind), findAt(std::min(end, blocks_[block].endOfFinds)),
                               [&](std::uint32_t find) { return headers_[find].begin <= place; });
      std::move_backward(behind, findAt(end), findAt(end + left + 1));
      end = static_cast<std::size_t>(behind - finds_.begin());
      finds_[end + left] = static_cast<std::uint32_t>(header);
    }
  }

  struct Seen {
    int times;
    std::size_t block;  // of the last time
  };

  std::string_view text_;
  const BraceIndex braces_;
  const Pattern& pattern_;
  std::vector<Header> headers_;
  std::vector<Block> blocks_;
  std::vector<Seen> seen_;            // one per header
  std::vector<std::uint32_t> finds_;  // positions of headers: those of findFirst, in the end all, block by block
  std::vector<Find> others_;
  std::vector<std::pair<std::size_t, Header>> cut_;  // with their blocks
};

}  // namespace

FunctionHeaders::FunctionHeaders() : pattern_(kFunctionHeader) {}

ScriptFunctions findFunctions(std::string_view source, const FunctionHeaders& headers) {
  if (source.find(kFunctionKeyword) == std::string_view::npos) return {};
  return FunctionFinder(source, headers.pattern()).functions();
}

}  // namespace FlashEngine_1_00::detail
