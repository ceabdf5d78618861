// Models: regular expressions, and texts that are searched, cut and filled in by them; the text of a function.
// Test: tests/flow/Analysis_test.cpp.

#include "flow/Patterns.h"

#include <algorithm>

#include "flow/models/Models.h"

namespace flow {
namespace {

constexpr std::size_t kMaxSearched = 4'000;  // bytes of a text that is searched
constexpr std::size_t kMaxMatches = 24;      // of one text
constexpr std::size_t kMaxFunction = 1'000;  // bytes of a function's text

// `/source/flags`, as a literal stands in a script.
std::optional<Pattern> patternOf(std::string_view literal) {
  const std::size_t end = literal.rfind('/');
  if (literal.size() < 2 || end == 0 || end == std::string_view::npos) return std::nullopt;
  return Pattern::of(literal.substr(1, end - 1), literal.substr(end + 1));
}

using Matched = std::function<void(const std::string& text, const Pattern& pattern)>;

// For each text and each pattern that come to two nodes.
void onMatches(Analysis& a, NodeId subject, NodeId patterns, const Matched& take) {
  a.solver.listen(patterns, [&a, subject, take](const Arrival& value) {
    if (!isObject(value.value) || a.object(value.value).cls != Class::pattern) return;
    const std::optional<Pattern> pattern = patternOf(a.names.text(a.object(value.value).a));
    if (!pattern) return;
    texts(a, subject, [take, pattern](const std::string& text) {
      if (text.size() <= kMaxSearched) take(text, *pattern);
    });
  });
}

std::vector<PatternMatch> allMatches(const Pattern& pattern, const std::string& text, bool isGlobal) {
  std::vector<PatternMatch> all;
  for (std::size_t from = 0; all.size() < kMaxMatches;) {
    std::optional<PatternMatch> match = pattern.find(text, from);
    if (!match) break;
    from = match->end() + (match->end() == match->begin() ? 1 : 0);
    all.push_back(std::move(*match));
    if (!isGlobal) break;
  }
  return all;
}

NodeId textNode(Analysis& a, const std::string& text) {
  return a.single(textValue(a.names.of(text)));
}

// What exec gives: a list of the whole and its groups.
ObjectId listOf(Analysis& a, Where where, const Pattern& pattern, const PatternMatch& match, const std::string& text) {
  const ObjectId list = a.newObject(Class::array, where);
  const ObjectId groups = a.newObject(Class::plain, where);
  a.object(list).b = static_cast<std::uint32_t>(match.count());
  for (std::size_t i = 0; i < match.count(); ++i) {
    const NodeId place = a.defineProperty(list, a.names.of(std::to_string(i)), true);
    if (!match.has(i)) continue;
    const Value part = textValue(a.names.of(match.textOf(i, text)));
    a.solver.add(place, part);
    const std::string& name = pattern.groupNames()[i];
    if (!name.empty()) a.solver.add(a.defineProperty(groups, a.names.of(name)), part);
  }
  a.solver.add(a.property(list, a.names.of("groups")).node, groups);
  a.solver.add(a.property(list, a.names.of("index")).node, numberValue(a.names.of(std::to_string(match.begin()))));
  return list;
}

void makeLists(Analysis& a, Where where, NodeId subject, NodeId patterns, NodeId result) {
  onMatches(a, subject, patterns, [&a, where, result](const std::string& text, const Pattern& pattern) {
    for (const PatternMatch& match : allMatches(pattern, text, pattern.isGlobal()))
      a.solver.add(result, listOf(a, where, pattern, match, text));
  });
}

void patternExec(Analysis& a, const CallInfo& info) {
  makeLists(a, info.site.where, arg(a, info, 0), info.self, info.result);
}

void stringMatch(Analysis& a, const CallInfo& info) {
  const Where where = info.site.where;
  const NodeId result = info.result;
  onMatches(a, info.self, arg(a, info, 0), [&a, where, result](const std::string& text, const Pattern& pattern) {
    const std::vector<PatternMatch> all = allMatches(pattern, text, pattern.isGlobal());
    if (all.empty()) return;
    if (!pattern.isGlobal()) return a.solver.add(result, listOf(a, where, pattern, all.front(), text));
    std::vector<NodeId> parts;
    std::transform(all.begin(), all.end(), std::back_inserter(parts),
                   [&](const PatternMatch& match) { return textNode(a, match.textOf(0, text)); });
    a.solver.add(result, a.arrayOf(where, parts));
  });
}

void stringMatchAll(Analysis& a, const CallInfo& info) {
  const Where where = info.site.where;
  const NodeId result = info.result;
  onMatches(a, info.self, arg(a, info, 0), [&a, where, result](const std::string& text, const Pattern& pattern) {
    std::vector<NodeId> lists;
    for (const PatternMatch& match : allMatches(pattern, text, true))
      lists.push_back(a.single(listOf(a, where, pattern, match, text)));
    a.solver.add(result, a.arrayOf(where, lists));
  });
}

void stringSearch(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  onMatches(a, info.self, arg(a, info, 0), [&a, result](const std::string& text, const Pattern& pattern) {
    const std::optional<PatternMatch> match = pattern.find(text);
    const std::string place = match ? std::to_string(match->begin()) : "-1";
    a.solver.add(result, numberValue(a.names.of(place)));
  });
}

// ---- cutting --------------------------------------------------------------------------------------------------------

std::vector<std::string> partsBy(const std::string& text, const Pattern& pattern) {
  std::vector<std::string> parts;
  std::size_t from = 0;
  for (const PatternMatch& match : allMatches(pattern, text, true)) {
    if (match.end() == match.begin()) continue;
    parts.push_back(text.substr(from, match.begin() - from));
    for (std::size_t i = 1; i < match.count(); ++i)
      parts.push_back(match.textOf(i, text));
    from = match.end();
  }
  parts.push_back(text.substr(from));
  return parts;
}

std::vector<std::string> partsBy(const std::string& text, const std::string& by) {
  std::vector<std::string> parts;
  std::size_t from = 0;
  for (std::size_t at = text.find(by); at != std::string::npos && parts.size() < 300; at = text.find(by, from)) {
    if (by.empty()) {
      if (from >= text.size()) return parts;
      parts.emplace_back(1, text[from++]);
      continue;
    }
    parts.push_back(text.substr(from, at - from));
    from = at + by.size();
  }
  if (!by.empty() || from < text.size()) parts.push_back(text.substr(from));
  return parts;
}

void addParts(Analysis& a, const CallInfo& info, const std::vector<std::string>& parts) {
  const ObjectId list = a.newObject(Class::array, info.site.where);
  a.object(list).b = static_cast<std::uint32_t>(parts.size());
  for (std::size_t i = 0; i < parts.size(); ++i)
    a.solver.add(a.defineProperty(list, a.names.of(std::to_string(i)), true), textValue(a.names.of(parts[i])));
  a.solver.add(info.result, list);
}

void stringSplit(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const NodeId by = arg(a, info, 0);
  const NodeId self = info.self;
  texts(a, by, [&a, copy, self](const std::string& separator) {
    texts(a, self, [&a, copy, separator](const std::string& text) { addParts(a, copy, partsBy(text, separator)); });
  });
  onMatches(a, self, by,
            [&a, copy](const std::string& text, const Pattern& pattern) { addParts(a, copy, partsBy(text, pattern)); });
}

// ---- replacing ------------------------------------------------------------------------------------------------------

// $1, $&, $<name> in a text that takes a match's place.
std::string filledIn(const std::string& with, const Pattern& pattern, const PatternMatch& match,
                     const std::string& text) {
  std::string made;
  for (std::size_t at = 0; at < with.size(); ++at) {
    const char next = with[at] == '$' && at + 1 < with.size() ? with[at + 1] : '\0';
    if (next == '$' || next == '&') {
      made += next == '$' ? "$" : match.textOf(0, text);
      ++at;
    } else if (next >= '1' && next <= '9' && static_cast<std::size_t>(next - '0') < match.count()) {
      made += match.textOf(static_cast<std::size_t>(next - '0'), text);
      ++at;
    } else if (next == '<' && with.find('>', at) != std::string::npos) {
      const std::size_t end = with.find('>', at);
      const auto& names = pattern.groupNames();
      const auto name = std::find(names.begin() + 1, names.end(), with.substr(at + 2, end - at - 2));
      if (name != names.end()) made += match.textOf(static_cast<std::size_t>(name - names.begin()), text);
      at = end;
    } else {
      made += with[at];
    }
  }
  return made;
}

// The text with what `of` gives for each match in its place.
NodeId joined(Analysis& a, Where where, const std::string& text, const std::vector<PatternMatch>& all,
              const std::function<NodeId(const PatternMatch&, std::size_t)>& of) {
  NodeId made = textNode(a, text.substr(0, all.front().begin()));
  for (std::size_t i = 0; i < all.size(); ++i) {
    const std::size_t end = i + 1 < all.size() ? all[i + 1].begin() : text.size();
    made = a.concatenate(where, made, of(all[i], i));
    made = a.concatenate(where, made, textNode(a, text.substr(all[i].end(), end - all[i].end())));
  }
  return made;
}

// What the function gives for each match: it is called with the match, its groups, the place and the text.
void replaceByCalls(Analysis& a, const CallInfo& info, Value function, const std::string& text,
                    const std::vector<PatternMatch>& all) {
  const Name subject = a.names.of(text);
  const auto called = [&](const PatternMatch& match, std::size_t index) {
    std::vector<NodeId> given;
    for (std::size_t i = 0; i < match.count(); ++i)
      given.push_back(textNode(a, match.textOf(i, text)));
    given.push_back(a.single(numberValue(a.names.of(std::to_string(match.begin())))));
    given.push_back(textNode(a, text));
    const NodeId result = a.solver.make(info.site.where, Step::none);
    a.invoke(info, a.single(function), 0, given, result, subject * 31 + static_cast<std::uint32_t>(index));
    return result;
  };
  a.solver.edge(joined(a, info.site.where, text, all, called), info.result);
}

void replaceMatches(Analysis& a, const CallInfo& info, const std::string& text, const Pattern& pattern,
                    const std::vector<PatternMatch>& all) {
  if (all.empty()) return a.solver.add(info.result, textValue(a.names.of(text)));
  const CallInfo copy = info;
  const NodeId with = arg(a, info, 1);
  a.solver.listen(with, [&a, copy, text, pattern, all](const Arrival& value) {
    if (isObject(value.value)) return replaceByCalls(a, copy, value.value, text, all);
    if (!isText(value.value)) return a.solver.add(copy.result, value.value);
    const std::string by = a.names.text(nameIn(value.value));
    const NodeId made = joined(a, copy.site.where, text, all, [&](const PatternMatch& match, std::size_t) {
      return textNode(a, filledIn(by, pattern, match, text));
    });
    a.solver.edge(made, copy.result);
  });
}

// A text that is searched as it is: each place of it, or the first.
std::vector<PatternMatch> placesOf(const std::string& part, const std::string& text, bool isEach) {
  std::vector<PatternMatch> all;
  for (std::size_t at = text.find(part); at != std::string::npos && all.size() < kMaxMatches;
       at = text.find(part, at + part.size())) {
    PatternMatch match;
    match.places = {at, at + part.size()};
    all.push_back(match);
    if (!isEach || part.empty()) break;
  }
  return all;
}

template <bool isEach>
void stringReplace(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const NodeId what = arg(a, info, 0);
  const NodeId self = info.self;
  texts(a, what, [&a, copy, self](const std::string& part) {
    texts(a, self, [&a, copy, part](const std::string& text) {
      static const Pattern kNone = *Pattern::of("", "");
      replaceMatches(a, copy, text, kNone, placesOf(part, text, isEach));
    });
  });
  onMatches(a, self, what, [&a, copy](const std::string& text, const Pattern& pattern) {
    replaceMatches(a, copy, text, pattern, allMatches(pattern, text, pattern.isGlobal()));
  });
}

// ---- making ---------------------------------------------------------------------------------------------------------

// new RegExp(text, flags), or of another expression.
void patternNew(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const NodeId flags = info.args->nodes.size() > 1 ? arg(a, info, 1) : textNode(a, "");
  a.solver.listen(arg(a, info, 0), [&a, copy, flags](const Arrival& source) {
    if (isObject(source.value) && a.object(source.value).cls == Class::pattern)
      return a.solver.add(copy.result, source.value);
    if (!isText(source.value)) return;
    const std::string text = a.names.text(nameIn(source.value));
    texts(a, flags, [&a, copy, text](const std::string& given) {
      const Name literal = a.names.of('/' + text + '/' + given);
      a.solver.add(copy.result, a.newObject(Class::pattern, copy.site.where, literal));
    });
  });
}

void functionToString(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  a.solver.listen(info.self, [&a, result](const Arrival& function) {
    const Value text = a.functionText(function.value);
    if (text != kUnknown) a.solver.add(result, text);
  });
}

// String(value): a function's text; what is a text stays one.
void stringOf(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  const NodeId given = arg(a, info, 0);
  a.solver.listen(given, [&a, result, given](const Arrival& value) {
    const Value text = a.functionText(value.value);
    a.solver.add(result, text == kUnknown ? value.value : text, given, value.level);
  });
}

const Row kRows[] = {
    {"RegExp", patternNew},
    {"RegExp#exec", patternExec},
    {"String", stringOf},
    {"String#match", stringMatch},
    {"String#matchAll", stringMatchAll},
    {"String#search", stringSearch},
    {"String#split", stringSplit},
    {"String#replace", stringReplace<false>},
    {"String#replaceAll", stringReplace<true>},
    {"Function#toString", functionToString},
};

}  // namespace

Value Analysis::functionText(Value function) {
  if (!isObject(function) || objects[function].cls != Class::function) return kUnknown;
  const Closure& closure = closures[objects[function].a];
  const Unit& unit = units[closure.unit];
  if (unit.isModel || unit.nodes.empty()) return kUnknown;
  const bool isClass = closure.klass != kNone;
  const std::size_t begin = isClass ? objects[function].where.offset : unit.nodes[unit.defs[closure.def].ast].begin;
  const std::size_t end = isClass ? unit.text.size() : unit.nodes[unit.defs[closure.def].ast].end;
  return textValue(names.of(std::string_view(unit.text).substr(begin, std::min(end - begin, kMaxFunction))));
}

void addPatternModels(Analysis& analysis) {
  addRows(analysis, kRows);
}

}  // namespace flow
