// Any text as one cleaned source: its excerpts and functions are those that a scan from every place by itself finds.

#include <algorithm>
#include <map>

#include "APICheckEngine/search/Excerpts.h"
#include "APICheckEngine/search/ScriptFunctions.h"
#include "Support.h"
#include "platform/Limits.h"
#include "regex/Pattern.h"

using namespace FlashEngine_1_00;

namespace {

using Texts = std::vector<std::string>;

const std::string kFunctionHeader =
    R"((function\s*[\w\_]*\s*\([\w\_"'\s,]*\))|([\w\_]+\s*[\:]\s*function\s*\([\w\_"'\s,]*\)))";

bool isHit(const std::string& text, std::size_t at) {
  std::string word = text.substr(at, 8);
  for (char& c : word)
    c = static_cast<char>(static_cast<unsigned char>(c) & 0xDF);
  const char next = text[at + 1] == ' ' ? text[at + 2] : text[at + 1];
  return word == "DOCUMENT" || (text[at] == '$' && (next == '_' || next == '('));
}

// Where the "name =" begins whose "=" is next to the white space at `blank`, before or behind it; `blank` if there is
// none.
std::size_t assignment(const std::string& text, std::size_t blank) {
  if (text[blank] != ' ') return blank;
  std::size_t equals = text.substr(0, blank).find_last_not_of(" \t\n\v\f\r");
  if (equals == std::string::npos || text[equals] != '=') {
    equals = text.find_first_not_of(" \t\n\v\f\r", blank);
    if (equals == std::string::npos || text[equals] != '=') return blank;
    if (equals + 1 < text.size() && (text[equals + 1] == '=' || text[equals + 1] == '>')) return blank;
  }
  const std::size_t last = text.substr(0, equals).find_last_not_of(" \t\n\v\f\r");
  std::size_t begin = last + 1;  // 0 if there is nothing
  while (begin > 0 && (std::isalnum(static_cast<unsigned char>(text[begin - 1])) != 0 || text[begin - 1] == '_' ||
                       text[begin - 1] == '.'))
    --begin;
  return begin == last + 1 ? blank : begin;
}

Texts excerptsOf(const std::string& text) {
  Texts excerpts;
  for (std::size_t at = 0; at + 8 < text.size(); ++at) {
    if (!isHit(text, at)) continue;
    const std::size_t blank = text.rfind(' ', at);
    const std::size_t from = blank == std::string::npos ? 0 : blank;
    std::size_t end = from + std::min<std::size_t>(text.size() - at - 1, 430);
    while (end + 1 < text.size() && text[end] != ' ')
      ++end;
    excerpts.push_back(text.substr(assignment(text, from), end - assignment(text, from)));
  }
  return excerpts;
}

// One past the brace at which the braces from `from` on balance, before `end`; npos if they do not.
std::size_t balanced(const std::string& text, std::size_t from, std::size_t end) {
  int opened = 0;
  int closed = 0;
  for (std::size_t at = from; at < end; ++at) {
    opened += text[at] == '{';
    closed += text[at] == '}';
    if (opened > 0 && opened == closed) return at + 1;
  }
  return std::string::npos;
}

using Function = std::pair<std::size_t, std::string>;  // where its header stands, header and body

void addFunctions(const std::string& text, std::size_t begin, std::size_t end, std::vector<Function>& functions) {
  const std::string block = text.substr(begin, end - begin);
  const Pattern headers(kFunctionHeader);
  for (MatchCursor at(headers, block.c_str()); at.next();) {
    const auto place = static_cast<std::size_t>(at.view().data() - block.data());
    const std::size_t bodyEnd = balanced(block, place + at.view().size(), block.size());
    if (bodyEnd != std::string::npos) functions.emplace_back(begin + place, block.substr(place, bodyEnd - place));
  }
}

std::vector<Function> functionsOf(const std::string& text) {
  std::vector<Function> all;
  for (std::size_t at = text.find("function"); at != std::string::npos; at = text.find("function", at + 1)) {
    const std::size_t parentheses = std::max(text.find('(', at), text.find(')', at));
    const std::size_t end = balanced(text, parentheses, text.size());
    if (parentheses != std::string::npos && end != std::string::npos)
      addFunctions(text, at - std::min<std::size_t>(at, 100), end, all);
  }
  std::vector<Function> kept;
  std::map<std::size_t, int> left;
  std::map<std::size_t, int> seen;
  for (const Function& function : all)
    ++left[function.first];
  for (const Function& function : all) {
    if (++seen[function.first] < kMaxEqualRecords || left[function.first] == 1) kept.push_back(function);
    --left[function.first];
  }
  return kept;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::splitAt('\0', fuzz::viewOf(data, size)).first;
  Texts excerpts;
  for (const detail::Excerpt& excerpt : detail::findExcerpts(text))
    excerpts.insert(excerpts.end(), static_cast<std::size_t>(excerpt.hits), std::string(excerpt.text));
  fuzz::require(excerpts == excerptsOf(text), "the same excerpts");

  std::vector<Function> functions;
  const detail::ScriptFunctions found = detail::findFunctions(text);
  for (const std::uint32_t find : found.finds) {
    const detail::ScriptFunction& function = found.functions[find];
    fuzz::require(function.body.data() == function.header.data() + function.header.size(), "a body follows its header");
    functions.emplace_back(function.header.data() - text.data(),
                           std::string(function.header) + std::string(function.body));
  }
  fuzz::require(functions == functionsOf(text), "the same functions");
  return 0;
}
