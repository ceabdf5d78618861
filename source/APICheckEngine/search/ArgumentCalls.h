#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "APICheckEngine/search/SourceIndex.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00::detail {

// A call with `symbol` among its arguments, as a pattern: "init ( 'tv', 3)"; not "init(a + tv)".
std::string callWithArgument(const std::string& symbol);

// A symbol that is looked for in many sources. The pattern is compiled once, when a source asks for it.
class PassedSymbol {
 public:
  explicit PassedSymbol(std::string text) : text_(std::move(text)) {}

  const std::string& text() const { return text_; }
  const Pattern& pattern();

 private:
  std::string text_;
  std::optional<Pattern> pattern_;
};

// Finds the calls in one source that pass a symbol.
class ArgumentCalls {
 public:
  explicit ArgumentCalls(SourceIndex& source) : source_(source) {}

  // The matches of callWithArgument(symbol.text()), in order.
  std::vector<std::string_view> passing(PassedSymbol& symbol);

 private:
  // A call, as far as what stands in its parentheses goes.
  struct Head {
    const char* name;       // the first byte of the word before the parenthesis
    const char* open;       // the parenthesis
    const char* arguments;  // the first byte behind it that is no white space
    const char* close;      // the other parenthesis; nothing but bytes of arguments in front of it
    const char* behind;     // the first byte behind it that is no white space
  };

  // Where a symbol can stand that begins with a certain byte, and the call there.
  struct Place {
    std::string_view text;  // from there on, as far as it is compared
    std::size_t head;       // position in heads_
  };

  std::vector<std::string_view> plainlyPassing(PassedSymbol& symbol);
  void findHeads();
  const std::vector<Place>& placesBeginningWith(char first);
  std::map<std::size_t, const char*> placesOf(const std::string& symbol);

  SourceIndex& source_;
  int searches_ = 0;
  std::vector<Head> heads_;                              // in order; found when there were many searches
  std::unordered_map<char, std::vector<Place>> places_;  // by first byte, sorted by text
};

}  // namespace FlashEngine_1_00::detail
