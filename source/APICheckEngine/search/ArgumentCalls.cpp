// Calls that pass a symbol.
//
// The plain search looks for the symbol, goes back over the arguments before it to the call's name, and tries the
// pattern there. With thousands of symbols in the same long call, each of them goes through the whole call. After a few
// symbols the source is therefore prepared for many: all places where a call can begin (a word, white space, a
// parenthesis) are found, with the bytes behind it that the pattern lets stand among arguments.
//
// The pattern's repetition before the symbol takes at least one byte and stops at the first one behind it with which
// the symbol begins; it does not try other places. So a call can only pass a symbol that stands where its first byte
// occurs for the first time, the very first argument byte left aside. For each first byte, there is at most one such
// place in a call; they are sorted by the text there, and a symbol's are next to each other. Behind the symbol, the
// pattern takes the rest of the arguments, the parenthesis that has to end them, and white space. All of that is known
// without the pattern, as long as no repetition takes as much as it can. In a call so long the very first byte is a
// place as well, since more white space may come before it than a repetition takes, and there the pattern is tried, as
// the plain search would, from the word before the parenthesis or, if that is further on, the end of the match before.
// Test: tests/APICheckEngine/Search_test.cpp, against the plain search.

#include "APICheckEngine/search/ArgumentCalls.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace FlashEngine_1_00::detail {
namespace {

constexpr int kPlainSearches = 16;
constexpr std::size_t kCompared = 256;         // bytes of a symbol by which places are sorted
constexpr std::ptrdiff_t kMostTaken = 65'536;  // bytes, by a repetition

bool isSpace(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}
bool isWordByte(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}
bool isArgumentByte(char c) {
  return isWordByte(c) || isSpace(c) || c == '"' || c == '\'' || c == ',' || c == '.';
}

}  // namespace

std::string callWithArgument(const std::string& symbol) {
  return R"([\w\d\_]+\s*\(\s*[\d\w\_"'\s,\.]*)" + symbol + R"(\s*[\d\w\_"'\s,\.]*\)\s*)";
}

const Pattern& PassedSymbol::pattern() {
  if (!pattern_) pattern_.emplace(callWithArgument(text_));
  return *pattern_;
}

std::vector<std::string_view> ArgumentCalls::passing(PassedSymbol& symbol) {
  const std::string& text = symbol.text();
  const bool isWord = !text.empty() && std::all_of(text.begin(), text.end(), isWordByte);
  if (!isWord || searches_++ < kPlainSearches) return plainlyPassing(symbol);
  std::vector<std::string_view> calls;
  std::optional<MatchCursor> inLong;
  const char* from = source_.text().data();
  for (const auto& [head, place] : placesOf(text)) {
    const Head& call = heads_[head];
    from = std::max(from, call.name);
    if (from == call.name && call.behind - call.name < kMostTaken) {
      if (place == call.arguments) continue;
      calls.emplace_back(call.name, static_cast<std::size_t>(call.behind - call.name));
    } else {
      if (!inLong) inLong.emplace(symbol.pattern(), source_.text(), source_.forSearchOf(source_.text().size()));
      if (from >= call.open || !inLong->nextIn(from, call.open)) continue;
      calls.push_back(inLong->view());
    }
    from = calls.back().data() + calls.back().size();
  }
  return calls;
}

std::vector<std::string_view> ArgumentCalls::plainlyPassing(PassedSymbol& symbol) {
  std::vector<std::string_view> calls;
  for (MatchCursor at(symbol.pattern(), source_.text(), source_.forSearchOf(source_.text().size())); at.next();)
    calls.push_back(at.view());
  return calls;
}

void ArgumentCalls::findHeads() {
  const std::string_view text = source_.text();
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  for (std::size_t place = text.find('('); place != std::string_view::npos; place = text.find('(', place + 1)) {
    const char* const open = begin + place;
    const char* nameEnd = open;
    while (nameEnd > begin && isSpace(nameEnd[-1]))
      --nameEnd;
    const char* name = nameEnd;
    while (name > begin && isWordByte(name[-1]))
      --name;
    if (name == nameEnd) continue;
    const char* const arguments = std::find_if_not(open + 1, end, isSpace);
    const char* const close = std::find_if_not(arguments, end, isArgumentByte);
    if (arguments == close || *close != ')') continue;
    heads_.push_back({name, open, arguments, close, std::find_if_not(close + 1, end, isSpace)});
  }
}

// Those of the symbols that begin with `first`.
const std::vector<ArgumentCalls::Place>& ArgumentCalls::placesBeginningWith(char first) {
  const auto [known, isNew] = places_.try_emplace(first);
  std::vector<Place>& places = known->second;
  if (!isNew) return places;
  if (places_.size() == 1) findHeads();
  for (std::size_t i = 0; i < heads_.size(); ++i) {
    const Head& head = heads_[i];
    const auto add = [&](const char* at) {
      places.push_back({{at, std::min(static_cast<std::size_t>(head.close - at), kCompared)}, i});
    };
    if (*head.arguments == first) add(head.arguments);
    const char* const behind = head.arguments + 1;
    const void* at = std::memchr(behind, first, static_cast<std::size_t>(head.close - behind));
    if (at != nullptr) add(static_cast<const char*>(at));
  }
  std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) { return a.text < b.text; });
  return places;
}

// The calls at whose places the symbol stands, each once and in order, with the last of its places.
std::map<std::size_t, const char*> ArgumentCalls::placesOf(const std::string& symbol) {
  const std::vector<Place>& places = placesBeginningWith(symbol[0]);
  const std::string_view compared = std::string_view(symbol).substr(0, kCompared);
  std::map<std::size_t, const char*> found;
  for (auto place = std::lower_bound(places.begin(), places.end(), compared,
                                     [](const Place&a, std::string_view b) { return a.text < b; });
       place != places.end() && place->text.substr(0, compared.size()) == compared; ++place) {
    const char* const at = place->text.data();
    const auto room = static_cast<std::size_t>(heads_[place->head].close - at);
    if (std::string_view(at, std::min(room, symbol.size())) != symbol) continue;
    const auto [known, isNew] = found.try_emplace(place->head, at);
    if (!isNew) known->second = std::max(known->second, at);
  }
  return found;
}

}  // namespace FlashEngine_1_00::detail
