// Reads comparisons by how they are written, without understanding the code around them: what is found too much costs
// a little time in a trial, and what is missed is tried with values that nobody knows.
// Test: tests/trial/PackageServer_test.cpp.

#include "trial/Answers.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>

#include "trial/Protocol.h"

namespace trial {

namespace {

constexpr std::size_t kMaxNames = 80;
constexpr std::size_t kMaxValues = 12;
constexpr std::size_t kMaxValue = 24;
constexpr std::size_t kMaxSubject = 80;   // bytes between the brackets
constexpr std::size_t kMaxSwitch = 4000;  // bytes behind one
constexpr std::size_t kMaxTable = 4000;
constexpr std::size_t kMaxOrigins = 8;

bool isWordByte(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$';
}

bool isBlank(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

std::size_t skipBlanks(const std::string& text, std::size_t at) {
  while (at < text.size() && isBlank(text[at]))
    ++at;
  return at;
}

// The word that ends at `end`, blanks in front of that passed over; with "()" if it is called there.
std::string nameBefore(const std::string& text, std::size_t end) {
  while (end > 0 && isBlank(text[end - 1]))
    --end;
  const bool isCall = end > 0 && text[end - 1] == ')';
  if (isCall) {
    const std::size_t open = text.rfind('(', end);
    if (open == std::string::npos || end - open > kMaxSubject) return {};
    end = open;
  }
  std::size_t begin = end;
  while (begin > 0 && isWordByte(text[begin - 1]))
    --begin;
  const std::string name = text.substr(begin, end - begin);
  const bool isName = !name.empty() && name.size() <= 40 && std::isdigit(static_cast<unsigned char>(name[0])) == 0;
  return isName ? name + (isCall ? "()" : "") : std::string();
}

// The text or number that begins at `at`, behind blanks, as script; empty if there is something else.
std::string valueAt(const std::string& text, std::size_t at) {
  at = skipBlanks(text, at);
  if (at >= text.size()) return {};
  if (text[at] == '\'' || text[at] == '"') {
    const std::size_t end = text.find(text[at], at + 1);
    if (end == std::string::npos || end - at - 1 > kMaxValue || end == at + 1) return {};
    const std::string value = text.substr(at + 1, end - at - 1);
    return value.find_first_of("\\\n") == std::string::npos
               ? Json(value).dump(-1, ' ', true, Json::error_handler_t::replace)
               : std::string();
  }
  const std::size_t end = text.find_first_not_of("0123456789", at);
  if (end == at || end == std::string::npos || end - at > 6 || isWordByte(text[end]) || text[end] == '.') return {};
  return end - at > 1 && text[at] == '0' ? std::string() : text.substr(at, end - at);
}

void addValue(const std::string& name, const std::string& value, Answers& answers) {
  static constexpr const char* kNever[] = {"keyCode", "which",    "charCode", "key",       "code", "nodeType",
                                           "tagName", "nodeName", "length",   "__proto__", "then", "prototype"};
  if (name.empty() || value.empty() || std::find(std::begin(kNever), std::end(kNever), name) != std::end(kNever))
    return;
  if (answers.size() >= kMaxNames && answers.count(name) == 0) return;
  std::vector<std::string>& values = answers[name];
  if (values.size() < kMaxValues && std::find(values.begin(), values.end(), value) == values.end())
    values.push_back(value);
}

// Whether what stands in front is typeof, whose answer is none of the world's.
bool isTypeOf(const std::string& text, std::size_t at) {
  const std::size_t begin = at > kMaxSubject ? at - kMaxSubject : 0;
  const std::size_t found = text.rfind("typeof ", at);
  return found != std::string::npos && found >= begin && text.find_first_of(";{}&|?=!", found) >= at;
}

void addComparisons(const std::string& text, Answers& answers) {
  for (std::size_t at = text.find('='); at != std::string::npos; at = text.find('=', at + 1)) {
    const bool isSame = at + 1 < text.size() && text[at + 1] == '=';
    const bool isNot = at > 0 && text[at - 1] == '!';
    if (!isSame && !isNot) continue;
    const std::size_t begin = isNot ? at - 1 : at;
    const std::size_t end = std::min(text.find_first_not_of('=', at), text.size());
    if (!isTypeOf(text, begin)) addValue(nameBefore(text, begin), valueAt(text, end), answers);
    at = end - 1;
  }
}

void addSwitches(const std::string& text, Answers& answers) {
  for (std::size_t at = text.find("switch"); at != std::string::npos; at = text.find("switch", at + 6)) {
    const std::size_t open = skipBlanks(text, at + 6);
    const std::size_t body = text.find('{', open);
    if (open >= text.size() || text[open] != '(' || body == std::string::npos || body - open > kMaxSubject) continue;
    const std::string name = nameBefore(text, text.rfind(')', body));
    const std::size_t end = std::min({text.find("switch", body), body + kMaxSwitch, text.size()});
    for (std::size_t one = text.find("case", body); one < end; one = text.find("case", one + 4))
      addValue(name, valueAt(text, one + 4), answers);
  }
}

// The names in the object that is written from `at` on.
std::vector<std::string> keysOfObject(const std::string& text, std::size_t at) {
  std::vector<std::string> keys;
  int depth = 0;
  bool isFirst = false;  // a name may stand here
  const std::size_t end = std::min(text.size(), at + kMaxTable);
  for (std::size_t i = at; i < end; ++i) {
    const char c = text[i];
    if (c == '{' || c == '(' || c == '[') ++depth;
    if ((c == '}' || c == ')' || c == ']') && --depth == 0) break;
    if (depth == 1 && isFirst && (isWordByte(c) || c == '\'' || c == '"')) {
      const std::size_t begin = isWordByte(c) ? i : i + 1;
      std::size_t last = begin;
      while (last < end && isWordByte(text[last]))
        ++last;
      const std::size_t behind = skipBlanks(text, isWordByte(c) ? last : last + 1);
      if (behind < end && (text[behind] == ':' || text[behind] == '(') && keys.size() < kMaxValues)
        keys.push_back('"' + text.substr(begin, last - begin) + '"');
      i = last - 1;
    }
    if (!isBlank(c)) isFirst = depth == 1 && (c == ',' || c == '{');
  }
  return keys;
}

// Where an object of that name is written: "name = {", "name: {".
std::size_t objectNamed(const std::string& text, const std::string& name) {
  for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + name.size())) {
    if (at > 0 && isWordByte(text[at - 1])) continue;
    std::size_t next = skipBlanks(text, at + name.size());
    if (next >= text.size() || (text[next] != '=' && text[next] != ':')) continue;
    next = skipBlanks(text, next + 1);
    if (next < text.size() && text[next] == '{') return next;
  }
  return std::string::npos;
}

// handlers[reply.kind], where there is handlers = { ... }.
void addLookUps(const std::string& text, Answers& answers) {
  for (std::size_t at = text.find('['); at != std::string::npos; at = text.find('[', at + 1)) {
    const std::string table = nameBefore(text, at);
    const std::size_t end =
        text.find_first_not_of("._$abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789", at + 1);
    if (table.empty() || end == std::string::npos || text[end] != ']' || end - at > kMaxSubject) continue;
    const std::string name = nameBefore(text, end);
    if (name.size() < 3 || (answers.count(name) != 0 && answers[name].size() >= kMaxValues)) continue;
    const std::size_t object = objectNamed(text, table);
    if (object == std::string::npos) continue;
    for (const std::string& key : keysOfObject(text, object))
      addValue(name, key, answers);
  }
}

// What the value is called that is written at `at`: "state" of reply.state, "GetState()" of tv.GetState(1).
std::string nameOfValue(const std::string& text, std::size_t at) {
  at = skipBlanks(text, at);
  if (text.compare(at, 6, "await ") == 0) at += 6;
  std::size_t end = at;
  while (end < text.size() && (isWordByte(text[end]) || text[end] == '.'))
    ++end;
  if (end == at || end >= text.size()) return {};
  if (text[end] != '(') return nameBefore(text, end);
  const std::size_t close = text.find(')', end);
  return close == std::string::npos || close - end > kMaxSubject ? std::string() : nameBefore(text, close + 1);
}

// state = tv.GetState(): what state is compared with is an answer of the method.
void addAssigned(const std::string& text, Answers& answers) {
  static constexpr std::string_view kOperators = "=!<>+-*/%&|^?";
  for (std::size_t at = text.find('='); at != std::string::npos; at = text.find('=', at + 1)) {
    const bool isOther = at == 0 || at + 1 >= text.size() || kOperators.find(text[at - 1]) != std::string_view::npos ||
                         text[at + 1] == '=' || text[at + 1] == '>';
    const auto known = isOther ? answers.end() : answers.find(nameBefore(text, at));
    if (known == answers.end()) continue;
    const std::string name = nameOfValue(text, at + 1);
    const std::vector<std::string> values = known->second;
    for (const std::string& value : values)
      if (name != known->first) addValue(name, value, answers);
  }
}

}  // namespace

void addAnswers(const std::string& text, Answers& answers) {
  addComparisons(text, answers);
  addSwitches(text, answers);
  addLookUps(text, answers);
  addAssigned(text, answers);
}

void addOrigins(const std::string& text, std::vector<std::string>& origins) {
  for (std::size_t at = text.find("://"); at != std::string::npos; at = text.find("://", at + 3)) {
    std::size_t begin = at;
    while (begin > 0 && std::isalpha(static_cast<unsigned char>(text[begin - 1])) != 0)
      --begin;
    std::size_t end = at + 3;
    while (end < text.size() && (isWordByte(text[end]) || text[end] == '.' || text[end] == '-' || text[end] == ':'))
      ++end;
    std::string scheme = text.substr(begin, at - begin);
    if (scheme == "ws" || scheme == "wss") scheme.replace(0, 2, "http");
    const std::string origin = scheme + text.substr(at, end - at);
    const bool isUsual = (scheme == "http" || scheme == "https") && end > at + 3 && end - at < 80;
    if (isUsual && origins.size() < kMaxOrigins && std::find(origins.begin(), origins.end(), origin) == origins.end())
      origins.push_back(origin);
  }
}

}  // namespace trial
