// The symbol that an access names.
//
// The plain search tries the pattern of each symbol on the access, in order. Almost all symbols are words, though, and
// a pattern of a word matches exactly where an opening parenthesis, blanks and quotes, that whole word, blanks and
// quotes, and a closing parenthesis follow each other. So the words in parentheses are read out of the access and
// looked up: of those that are symbols, the one with the lowest position is the first that would match. A symbol that
// is a word in quotes can only match where its word does; its pattern is tried there. All others are tried in order, as
// far as they come before what was found. Test:
// tests/APICheckEngine/Search_test.cpp, against the plain search.

#include "APICheckEngine/search/NamedSymbol.h"

#include <algorithm>

namespace FlashEngine_1_00::detail {
namespace {

constexpr const char* kWordBytes = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
constexpr const char* kAroundSymbol = " \t\n\v\f\r\"'";

// The word in a symbol of one word and quotes, like the parameter of "function f('tv')"; else empty.
std::string quotedWord(const std::string& symbol) {
  const std::size_t begin = symbol.find_first_not_of("\"'");
  if (begin == std::string::npos) return {};
  const std::string word = symbol.substr(begin, symbol.find_last_not_of("\"'") + 1 - begin);
  return word.find_first_not_of(kWordBytes) == std::string::npos ? word : std::string();
}

}  // namespace

std::string parenthesised(const std::string& symbol) {
  return R"([\(][\s"']*)" + symbol + R"([\s"']*[\)])";
}

NamedSymbol::NamedSymbol(const std::vector<Key>& symbols) {
  for (std::size_t i = 0; i < symbols.size(); ++i) {
    const std::string& symbol = symbols[i].symbol;
    const bool isWord = !symbol.empty() && symbol.find_first_not_of(kWordBytes) == std::string::npos;
    if (isWord) {
      words_.emplace(symbol, i);
    } else if (const std::string word = quotedWord(symbol); !word.empty()) {
      quotedWords_[word].push_back({i, symbol, {}});
    } else {
      others_.push_back({i, symbol, {}});
    }
  }
}

std::size_t NamedSymbol::in(const std::string& access) {
  std::size_t first = kNone;
  for (std::size_t open = access.find('('); open != std::string::npos; open = access.find('(', open + 1)) {
    const std::size_t begin = access.find_first_not_of(kAroundSymbol, open + 1);
    if (begin == std::string::npos) break;
    const std::size_t end = std::min(access.find_first_not_of(kWordBytes, begin), access.size());
    const std::size_t close = access.find_first_not_of(kAroundSymbol, end);
    if (close == std::string::npos || access[close] != ')') continue;
    const std::string text = access.substr(begin, end - begin);
    const auto word = words_.find(text);
    if (word != words_.end()) first = std::min(first, word->second);
    const auto quoted = quotedWords_.find(text);
    if (quoted != quotedWords_.end()) first = std::min(first, firstIn(quoted->second, access, first));
  }
  return std::min(first, firstIn(others_, access, first));
}

// The first position before `end` whose symbol's pattern matches; kNone if there is none.
std::size_t NamedSymbol::firstIn(Symbols& symbols, const std::string& access, std::size_t end) {
  for (Symbol& symbol : symbols) {
    if (symbol.position >= end) break;
    if (!symbol.pattern.has_value()) symbol.pattern.emplace(parenthesised(symbol.text));
    if (symbol.pattern->matchesIn(access.c_str())) return symbol.position;
  }
  return kNone;
}

}  // namespace FlashEngine_1_00::detail
