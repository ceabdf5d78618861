// Calls without an object: every "<name> . <method> (" of the sources is looked at. Test:
// tests/checker/Inspection_test.cpp.

#include "checker/run/PluginLikeCalls.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <unordered_set>

namespace {

using Names = std::unordered_set<std::string_view>;

bool isBlank(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool isWord(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$';
}

bool beginsWithCapital(std::string_view word) {
  return !word.empty() && std::isupper(static_cast<unsigned char>(word.front())) != 0;
}

// The word at `at`, behind blanks; `at` moves behind it.
std::string_view wordFrom(std::string_view text, std::size_t& at) {
  while (at < text.size() && isBlank(text[at]))
    ++at;
  const std::size_t begin = at;
  while (at < text.size() && isWord(text[at]))
    ++at;
  return text.substr(begin, at - begin);
}

// The word that ends before `end`, without blanks between.
std::string_view wordBefore(std::string_view text, std::size_t end) {
  while (end > 0 && isBlank(text[end - 1]))
    --end;
  std::size_t begin = end;
  while (begin > 0 && isWord(text[begin - 1]))
    --begin;
  return text.substr(begin, end - begin);
}

bool isCall(std::string_view text, std::size_t at) {
  while (at < text.size() && isBlank(text[at]))
    ++at;
  return at < text.size() && text[at] == '(';
}

// Whether `expression`, an access to an element, goes on with a call: `$('tv').GetModel(`.
bool callsOnLookUp(std::string_view expression) {
  const std::size_t close = expression.find(')');
  const std::size_t dot = close == std::string_view::npos ? close : expression.find('.', close);
  if (dot == std::string_view::npos) return false;
  std::size_t at = dot + 1;
  const std::string_view method = wordFrom(expression, at);
  return beginsWithCapital(method) && isCall(expression, at);
}

bool hasCall(std::string_view text, const Names& documented, const Names& lookedUp) {
  for (std::size_t dot = text.find('.'); dot != std::string_view::npos; dot = text.find('.', dot + 1)) {
    std::size_t at = dot + 1;
    const std::string_view method = wordFrom(text, at);
    if (method.empty() || !isCall(text, at)) continue;
    if (documented.count(method) > 0) return true;
    if (beginsWithCapital(method) && lookedUp.count(wordBefore(text, dot)) > 0) return true;
  }
  return false;
}

}  // namespace

bool hasCallsWithoutPlugin(const FlashEngine_1_00::APIAnalysis& engine) {
  if (!engine.objectIdList.empty()) return false;
  Names documented;
  for (const std::string* name : engine.whiteAPIList)
    documented.insert(*name);
  Names lookedUp;  // variables that hold an element
  for (const auto* accesses : {&engine.objectAccessList, &engine.embedsAccessList}) {
    for (const FlashEngine_1_00::SWFStateMentInfo* access : *accesses) {
      const std::string_view expression = *access->expression;
      if (callsOnLookUp(expression)) return true;
      const std::size_t assignment = expression.find('=');
      if (assignment != std::string_view::npos) lookedUp.insert(wordBefore(expression, assignment));
    }
  }
  return std::any_of(engine.worthfulSourceList.begin(), engine.worthfulSourceList.end(),
                     [&](const std::string* text) { return hasCall(text->c_str(), documented, lookedUp); });
}
