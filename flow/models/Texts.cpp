// Models: what the language itself brings: texts and numbers. Test: tests/flow/Analysis_test.cpp.

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "flow/Strings.h"
#include "flow/models/Models.h"

namespace flow {
namespace {

constexpr std::size_t kMaxJoined = 100'000;    // bytes of a text that is put together
constexpr std::size_t kMaxTexts = 64'000'000;  // bytes of all texts, past which none is put together

// Does `work` for each way to give the receiver and up to two arguments one text each. Arguments that are not given
// are empty; those that nobody knows keep the result unknown.
using TextWork = std::string (*)(const std::string&, const std::string&, const std::string&);

void onTexts(Analysis& a, const CallInfo& info, TextWork work, Value (*as)(Name)) {
  const NodeId result = info.result;
  const NodeId first = info.args->nodes.empty() ? a.single(textValue(0)) : arg(a, info, 0);
  const NodeId second = info.args->nodes.size() < 2 ? a.single(textValue(0)) : arg(a, info, 1);
  texts(a, info.self, [&a, work, as, result, first, second](const std::string& self) {
    texts(a, first, [&a, work, as, result, second, self](const std::string& one) {
      texts(a, second, [&a, work, as, result, self, one](const std::string& two) {
        a.solver.add(result, as(a.names.of(work(self, one, two))));
      });
    });
  });
}

long number(const std::string& text, long otherwise) {
  return text.empty() ? otherwise : std::strtol(text.c_str(), nullptr, 10);
}

std::string cut(const std::string& text, long from, long to) {
  const long size = static_cast<long>(text.size());
  from = std::max(0L, std::min(from, size));
  to = std::max(from, std::min(to, size));
  return text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
}

std::string slice(const std::string& text, const std::string& from, const std::string& to) {
  const long size = static_cast<long>(text.size());
  long begin = number(from, 0);
  long end = number(to, size);
  if (begin < 0) begin += size;
  if (end < 0) end += size;
  return cut(text, begin, end);
}

std::string substring(const std::string& text, const std::string& from, const std::string& to) {
  long begin = std::max(0L, number(from, 0));
  long end = std::max(0L, number(to, static_cast<long>(text.size())));
  if (begin > end) std::swap(begin, end);
  return cut(text, begin, end);
}

std::string substr(const std::string& text, const std::string& from, const std::string& count) {
  long begin = number(from, 0);
  if (begin < 0) begin += static_cast<long>(text.size());
  return cut(text, begin, begin + number(count, static_cast<long>(text.size())));
}

std::string charAt(const std::string& text, const std::string& at, const std::string&) {
  const long begin = number(at, 0);
  return cut(text, begin, begin + 1);
}

std::string charCodeAt(const std::string& text, const std::string& at, const std::string&) {
  const std::string c = charAt(text, at, {});
  return c.empty() ? std::string() : std::to_string(static_cast<unsigned char>(c[0]));
}

std::string toUpper(const std::string& text, const std::string&, const std::string&) {
  std::string result = text;
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return result;
}

std::string toLower(const std::string& text, const std::string&, const std::string&) {
  std::string result = text;
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return result;
}

std::string trim(const std::string& text, const std::string&, const std::string&) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

std::string concat(const std::string& text, const std::string& one, const std::string& two) {
  return text + one + two;
}

std::string repeat(const std::string& text, const std::string& times, const std::string&) {
  std::string result;
  for (long i = 0; i < number(times, 0) && result.size() < 2000; ++i)
    result += text;
  return result;
}

std::string same(const std::string& text, const std::string&, const std::string&) {
  return text;
}

template <TextWork work>
void onText(Analysis& a, const CallInfo& info) {
  onTexts(a, info, work, textValue);
}

// What gives a number.
template <TextWork work>
void inText(Analysis& a, const CallInfo& info) {
  onTexts(a, info, work, numberValue);
}

std::string placeText(std::size_t place) {
  return place == std::string::npos ? "-1" : std::to_string(place);
}

std::string indexOf(const std::string& text, const std::string& part, const std::string& from) {
  return placeText(text.find(part, static_cast<std::size_t>(std::max(0L, number(from, 0)))));
}

std::string lastIndexOf(const std::string& text, const std::string& part, const std::string&) {
  return placeText(text.rfind(part));
}

void fromCharCode(Analysis& a, const CallInfo& info) {
  NodeId text = a.single(textValue(0));
  if (info.args->nodes.size() == 1 && info.args->isSpread[0]) {
    // A list that is known by its places, once it is all there.
    const CallInfo copy = info;
    a.whenEmpty(info.result, [&a, copy] {
      for (const Arrival& list : std::vector<Arrival>(a.solver.values(copy.args->nodes[0]))) {
        if (!isObject(list.value)) continue;
        std::string made;
        const Object& of = a.object(list.value);
        for (std::size_t i = 0; i < 200; ++i) {
          const auto at = of.index.find(a.names.of(std::to_string(i)));
          if (at == of.index.end()) break;
          const auto& values = a.solver.values(of.properties[at->second].node);
          if (values.size() != 1 || !isNumber(values[0].value)) return;
          appendPoint(
              static_cast<std::uint32_t>(std::strtoul(a.names.text(nameIn(values[0].value)).c_str(), nullptr, 10)),
              made);
        }
        if (!made.empty()) a.solver.add(copy.result, textValue(a.names.of(made)));
      }
    });
    return;
  }
  for (std::size_t i = 0; i < info.args->nodes.size() && i < 200; ++i) {
    const NodeId letter = fresh(a, info);
    a.solver.listen(info.args->nodes[i], [&a, letter](const Arrival& code) {
      if (!isNumber(code.value)) return;
      std::string one;
      appendPoint(static_cast<std::uint32_t>(std::strtoul(a.names.text(nameIn(code.value)).c_str(), nullptr, 10)), one);
      a.solver.add(letter, textValue(a.names.of(one)));
    });
    text = a.concatenate(info.site.where, text, letter);
  }
  a.solver.edge(text, info.result);
}

void atob(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  texts(a, arg(a, info, 0), [&a, result](const std::string& text) {
    a.solver.add(result, textValue(a.names.of(decodeDataUrl("data:;base64," + text))));
  });
}

void escapeUrl(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  texts(a, arg(a, info, 0), [&a, result](const std::string& text) {
    static const char* const kDigits = "0123456789ABCDEF";
    std::string made;
    for (const char c : text) {
      const auto byte = static_cast<unsigned char>(c);
      if (std::isalnum(byte) || std::strchr("-_.!~*'()/", c))
        made += c;
      else
        made += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    a.solver.add(result, textValue(a.names.of(made)));
  });
}

void unescapeUrl(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  texts(a, arg(a, info, 0),
        [&a, result](const std::string& text) { a.solver.add(result, textValue(a.names.of(decodePercent(text)))); });
}

void jsonParse(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  texts(a, arg(a, info, 0), [&a, copy](const std::string& text) {
    a.runText("(" + text + ")", copy.site.where, a.realmOf(copy.site.act), copy.result, copy.site.act);
  });
  // What was made a text before is what it was.
  a.solver.listen(arg(a, info, 0), [&a, copy](const Arrival& value) {
    if (isObject(value.value)) a.solver.add(copy.result, value.value, 0, value.level);
  });
  a.whenEmpty(copy.result, [&a, copy] { a.solver.add(copy.result, kUnknown); });
}

void parseInt(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  const NodeId base = arg(a, info, 1);
  texts(a, arg(a, info, 0), [&a, result, base](const std::string& text) {
    int radix = 10;
    for (const Arrival& value : base ? a.solver.values(base) : std::vector<Arrival>())
      if (isNumber(value.value)) radix = static_cast<int>(number(a.names.text(nameIn(value.value)), 10));
    if (radix < 2 || radix > 36) return;
    a.solver.add(result, numberValue(a.names.of(std::to_string(std::strtol(text.c_str(), nullptr, radix)))));
  });
}

const Row kRows[] = {
    {"Number", firstArgument},
    {"String.fromCharCode", fromCharCode},
    {"String.fromCodePoint", fromCharCode},
    {"String.raw", firstArgument},
    {"String#slice", onText<slice>},
    {"String#substring", onText<substring>},
    {"String#substr", onText<substr>},
    {"String#charAt", onText<charAt>},
    {"String#at", onText<charAt>},
    {"String#charCodeAt", inText<charCodeAt>},
    {"String#codePointAt", inText<charCodeAt>},
    {"String#indexOf", inText<indexOf>},
    {"String#lastIndexOf", inText<lastIndexOf>},
    {"String#toUpperCase", onText<toUpper>},
    {"String#toLowerCase", onText<toLower>},
    {"String#toLocaleUpperCase", onText<toUpper>},
    {"String#toLocaleLowerCase", onText<toLower>},
    {"String#trim", onText<trim>},
    {"String#trimStart", onText<trim>},
    {"String#trimEnd", onText<trim>},
    {"String#concat", onText<concat>},
    {"String#repeat", onText<repeat>},
    {"String#toString", onText<same>},
    {"String#valueOf", onText<same>},
    {"atob", atob},
    {"escape", escapeUrl},
    {"encodeURI", escapeUrl},
    {"encodeURIComponent", escapeUrl},
    {"unescape", unescapeUrl},
    {"decodeURI", unescapeUrl},
    {"decodeURIComponent", unescapeUrl},
    {"JSON", none},
    {"JSON.parse", jsonParse},
    {"JSON.stringify", firstArgument},
    {"parseInt", parseInt},
    {"Math", none},
};

}  // namespace

NodeId Analysis::concatenate(Where where, NodeId left, NodeId right) {
  if (left == 0 || right == 0) return 0;
  const NodeId made = solver.make(where, Step::value);
  joins.emplace(made, std::make_pair(left, right));
  solver.listen(left, [this, right, made](const Arrival& one) {
    // fn + "" is the function's text.
    if (const Value text = functionText(one.value); text != kUnknown) solver.add(made, text);
    if (!isText(one.value)) {
      if (one.value == kUnknown) solver.add(made, kUnknown);
      return;
    }
    solver.listen(right, [this, one, made](const Arrival& two) {
      if (!isText(two.value)) {
        if (two.value == kUnknown) solver.add(made, kUnknown);
        return;
      }
      const std::string& before = names.text(nameIn(one.value));
      const std::string& after = names.text(nameIn(two.value));
      if (isNumber(one.value) && isNumber(two.value)) {
        const double sum = std::strtod(before.c_str(), nullptr) + std::strtod(after.c_str(), nullptr);
        return solver.add(made, numberValue(names.of(numberText(std::to_string(sum)))));
      }
      if (before.size() + after.size() > kMaxJoined || names.bytes() > kMaxTexts) return solver.add(made, kUnknown);
      solver.add(made, textValue(names.of(before + after)), 0, std::max(one.level, two.level));
    });
  });
  return made;
}

void addTextModels(Analysis& analysis) {
  addRows(analysis, kRows);
}

}  // namespace flow
