// Variable binding: which script variables hold a plug-in object, and in which function.
//
// Reads objectIdList, objectTagList, objectAccessList, embedsAccessList, functionBlockList and the cleaned sources;
// fills declareList (embedsDeclareList on the way) and objectVariableList. Test:
// tests/APICheckEngine/VariableBinding_test.cpp.

#include <algorithm>
#include <map>
#include <optional>
#include <queue>
#include <tuple>
#include <unordered_map>
#include <unordered_set>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Knowledge.h"
#include "platform/Limits.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {
namespace {

using detail::Key;
using detail::makeKey;
using detail::splitKey;
using detail::without;
using detail::withoutBlanks;

// A look-up whose result is used on the spot: `document.getElementById("tv").`, `$("tv") .`; not `$("tv") +`.
constexpr const char* kDirectUse = R"((\s*document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.+))"
                                   "|"
                                   R"((\s*[\$]\s*[(]["'\s]*[\w\_]+["'\s]*\)\s*\.+))";

// "this.tv ="; in "tv == null", "tv =" and then the second "=" alone, which names nothing.
constexpr const char* kAssignment = R"((([\w\_]+)[\.]*)*\s*(=))";

// The symbol in parentheses, quoted or not: ("tv"), ( tv ); not (tv2).
std::string parenthesised(const std::string& symbol) {
  return R"([\(][\s"']*)" + symbol + R"([\s"']*[\)])";
}

std::unique_ptr<SWFStateMentInfo> makeDeclaration(const std::string& classId, const SWFStateMentInfo& access) {
  auto record = std::make_unique<SWFStateMentInfo>();
  record->expression = std::make_unique<std::string>(makeKey(withoutBlanks(classId), *access.expression));
  record->scope = "Global";
  record->path = access.path;
  record->access = *access.expression;
  return record;
}

// Which function of a source stands last in the list of functions, of those around a place.
class LastFunctionAround {
 public:
  // With the functions of one source, in the order of the list.
  LastFunctionAround(const std::vector<const FlashFunctionInfo*>& functions, const std::string& source) {
    std::vector<std::pair<std::size_t, std::size_t>> begins;  // of bodies, with positions in the list
    std::vector<std::size_t> bounds;
    const auto beginOf = [&](std::size_t i) {
      return static_cast<std::size_t>(functions[i]->body.data() - source.data());
    };
    const auto endOf = [&](std::size_t i) { return beginOf(i) + functions[i]->body.size(); };
    for (std::size_t i = 0; i < functions.size(); ++i) {
      begins.push_back({beginOf(i), i});
      bounds.push_back(beginOf(i));
      bounds.push_back(endOf(i));
    }
    std::sort(begins.begin(), begins.end());
    std::sort(bounds.begin(), bounds.end());
    std::priority_queue<std::size_t> around;
    auto next = begins.begin();
    for (const std::size_t at : bounds) {
      for (; next != begins.end() && next->first == at; ++next)
        around.push(next->second);
      while (!around.empty() && endOf(around.top()) <= at)
        around.pop();
      stretches_.push_back({at, around.empty() ? kNone : around.top()});
    }
  }

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  // Its position in the list; kNone if there is none.
  std::size_t at(std::size_t place) const {
    const auto behind = std::partition_point(stretches_.begin(), stretches_.end(),
                                             [&](const Stretch& stretch) { return stretch.begin <= place; });
    return behind == stretches_.begin() ? kNone : behind[-1].function;
  }

 private:
  struct Stretch {
    std::size_t begin;
    std::size_t function;
  };
  std::vector<Stretch> stretches_;
};

// Finds the function around an access: of those in the same file whose body holds the access expression, the last one.
// Bodies end with a brace and accesses hold none, so a body that holds the first byte of one holds all of it.
class EnclosingFunctions {
 public:
  EnclosingFunctions(const std::vector<FlashFunctionInfo*>& functions, detail::Knowledge& known) : engine_(known) {
    // Of a function that is in the list several times, its last place counts.
    std::vector<const FlashFunctionInfo*> distinct;
    std::unordered_set<const FlashFunctionInfo*> seen;
    for (auto function = functions.rbegin(); function != functions.rend(); ++function) {
      if (seen.insert(*function).second) distinct.push_back(*function);
    }
    for (auto function = distinct.rbegin(); function != distinct.rend(); ++function) {
      std::vector<OfSource>& sources = byPath_[(*function)->path];
      if (sources.empty() || sources.back().source != (*function)->source) {
        sources.push_back({(*function)->source, {}, {}});
      }
      sources.back().functions.push_back(*function);
    }
  }

  // Its body; empty if there is none.
  std::string_view body(const std::string& path, const std::string& access) {
    const auto [place, isNew] = known_.try_emplace({path, access});
    if (isNew) place->second = find(path, access);
    return place->second;
  }

 private:
  struct OfSource {
    const std::string* source;
    std::vector<const FlashFunctionInfo*> functions;
    std::optional<LastFunctionAround> last;
  };

  std::string_view find(const std::string& path, const std::string& access) {
    const auto sources = byPath_.find(path);
    if (sources == byPath_.end()) return {};
    if (access.empty()) return sources->second.back().functions.back()->body;
    for (auto of = sources->second.rbegin(); of != sources->second.rend(); ++of) {
      const std::string_view body = lastHolding(*of, access);
      if (body.data() != nullptr) return body;
    }
    return {};
  }

  std::string_view lastHolding(OfSource& of, const std::string& access) {
    if (!of.last.has_value()) of.last.emplace(of.functions, *of.source);
    detail::SourceIndex& index = engine_.indexOf(*of.source);
    const FlashFunctionInfo* last = nullptr;
    std::size_t lastPosition = 0;
    for (std::size_t at = index.find(access); at != std::string::npos; at = index.find(access, at + 1)) {
      const std::size_t position = of.last->at(at);
      if (position == LastFunctionAround::kNone || (last != nullptr && position < lastPosition)) continue;
      lastPosition = position;
      last = of.functions[position];
    }
    return last == nullptr ? std::string_view() : last->body;
  }

  detail::Knowledge& engine_;
  std::unordered_map<std::string_view, std::vector<OfSource>> byPath_;
  std::map<std::pair<std::string, std::string>, std::string_view> known_;
};

// Finds the symbol that an access names: of those that stand in parentheses in it, the first one.
class NamedSymbol {
 public:
  explicit NamedSymbol(const std::vector<Key>& symbols) {
    for (std::size_t i = 0; i < symbols.size(); ++i) {
      const std::string& symbol = symbols[i].symbol;
      const bool isWord = !symbol.empty() && symbol.find_first_not_of(kWordBytes) == std::string::npos;
      if (isWord) {
        words_.emplace(symbol, i);
      } else if (const std::string word = quotedWord(symbol); !word.empty()) {
        quotedWords_[word].push_back({i, Pattern(parenthesised(symbol))});
      } else {
        others_.push_back({i, Pattern(parenthesised(symbol))});
      }
    }
  }

  // Its position; kNone if there is none.
  std::size_t in(const std::string& access) const {
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

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

 private:
  static constexpr const char* kWordBytes = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
  static constexpr const char* kAroundSymbol = " \t\n\v\f\r\"'";

  using Patterns = std::vector<std::pair<std::size_t, Pattern>>;  // with the positions of their symbols

  // The word in a symbol of one word and quotes, like the parameter of "function f('tv')"; else empty.
  static std::string quotedWord(const std::string& symbol) {
    const std::size_t begin = symbol.find_first_not_of("\"'");
    if (begin == std::string::npos) return {};
    const std::string word = symbol.substr(begin, symbol.find_last_not_of("\"'") + 1 - begin);
    return word.find_first_not_of(kWordBytes) == std::string::npos ? word : std::string();
  }

  // The first position before `end` whose pattern matches; kNone if there is none.
  static std::size_t firstIn(const Patterns& patterns, const std::string& access, std::size_t end) {
    for (const auto& [i, pattern] : patterns) {
      if (i >= end) break;
      if (pattern.matchesIn(access.c_str())) return i;
    }
    return kNone;
  }

  std::unordered_map<std::string, std::size_t> words_;  // with the first position of each
  std::unordered_map<std::string, Patterns> quotedWords_;
  Patterns others_;
};

}  // namespace

RunResult APIAnalysis::FindDeclareListValidation() {
  std::vector<Key> symbols;
  for (const SWFStateMentInfo* record : objectIdList) {
    if (record->text == "Func") continue;
    symbols.push_back(splitKey(*record->expression));
  }

  const NamedSymbol named(symbols);
  std::unordered_map<const SWFStateMentInfo*, SWFStateMentInfo*> declarations;  // by access; null if it names nothing
  for (const SWFStateMentInfo* access : objectAccessList) {
    const auto [known, isNew] = declarations.try_emplace(access, nullptr);
    if (!isNew) {
      if (known->second != nullptr) declareList.push_back(known->second);
      continue;
    }
    const std::size_t symbol = named.in(*access->expression);
    if (symbol == NamedSymbol::kNone) continue;
    append(declareList, makeDeclaration(symbols[symbol].classId, *access));
    known->second = declareList.back();
  }

  struct EmbedsDeclaration {
    SWFStateMentInfo* record;
    std::size_t count;
  };
  std::unordered_map<const SWFStateMentInfo*, EmbedsDeclaration> embeds;  // by access
  for (auto access = embedsAccessList.rbegin(); access != embedsAccessList.rend(); ++access) {
    const auto n = static_cast<std::size_t>(parseEmbedsTagIndex((*access)->expression.get()));
    if (n >= objectTagList.size() || n >= symbols.size()) continue;
    EmbedsDeclaration& declared = embeds.try_emplace(*access, EmbedsDeclaration{nullptr, 0}).first->second;
    // KEPT: one equal record for every symbol. Whoever counts the records sees as many. (test EmbedsRepeatPerSymbol)
    for (std::size_t i = 0; i < symbols.size() && declared.count < kMaxEqualRecords; ++i, ++declared.count) {
      if (declared.record != nullptr) {
        embedsDeclareList.push_back(declared.record);
      } else {
        append(embedsDeclareList, makeDeclaration(symbols[n].classId, **access));
        declared.record = embedsDeclareList.back();
      }
    }
  }

  declareList.reserve(declareList.size() + embedsDeclareList.size());
  declareList.insert(declareList.end(), embedsDeclareList.begin(), embedsDeclareList.end());
  embedsDeclareList.clear();
  return RUN_SUCCESS;
}

RunResult APIAnalysis::FindObjectVariable() {
  struct Binding {
    std::unique_ptr<SWFStateMentInfo> made;  // until it is in the list
    SWFStateMentInfo* record = nullptr;
    int count = 0;
  };
  const Pattern directUse(kDirectUse);
  const Pattern assignments(kAssignment);
  EnclosingFunctions enclosing(functionBlockList, *known_);
  std::map<std::tuple<std::string, std::string, const char*>, Binding> bindings;  // by key, path and body
  std::unordered_map<const SWFStateMentInfo*, std::vector<Binding*>> madeOf;      // by declaration
  for (SWFStateMentInfo* declared : declareList) {
    const auto [made, isNew] = madeOf.try_emplace(declared);
    if (isNew && !directUse.matchesIn(declared->expression->c_str())) {
      const std::string& expression = *declared->expression;
      const std::string classId = splitKey(withoutBlanks(without(expression, "\n"))).classId;
      for (MatchCursor at(assignments, expression.c_str()); at.next();) {
        std::string variable = without(withoutBlanks(at.match()), "=");
        if (variable.empty()) continue;
        const bool wholeFile = variable.find("this.") != std::string::npos;
        const std::string_view body =
            wholeFile ? std::string_view() : enclosing.body(declared->path, splitKey(expression).symbol);
        const std::string key = makeKey(withoutBlanks(classId), variable);
        Binding& binding = bindings[{key, declared->path, body.data()}];
        made->second.push_back(&binding);
        if (binding.record != nullptr) continue;
        auto record = std::make_unique<SWFStateMentInfo>();
        record->expression = std::make_unique<std::string>(key);
        record->scope = wholeFile ? "Src" : "Func";
        record->text = body;
        record->path = declared->path;
        record->line = foundSymbolLineNumber(&declared->path, &variable);
        binding.record = record.get();
        binding.made = std::move(record);
      }
    }
    for (Binding* binding : made->second) {
      if (binding->made != nullptr) {
        append(objectVariableList, std::move(binding->made));
        ++binding->count;
      } else if (binding->count++ < kMaxEqualRecords) {
        objectVariableList.push_back(binding->record);
      }
    }
  }
  return RUN_SUCCESS;
}

int APIAnalysis::foundSymbolLineNumber(std::string* path, std::string* symbol) {
  const std::string* source = sourceOf(*path, cleanedSourceList);
  if (source == nullptr) return -1;
  const auto isSymbolByte = [](char c) { return c >= '0' && c <= 'z'; };
  const auto start = std::find_if(symbol->begin(), symbol->end(), isSymbolByte);
  const std::string wanted(start == symbol->end() ? symbol->begin() : start, symbol->end());
  detail::SourceIndex& index = known_->indexOf(*source);
  const std::size_t at = index.find(wanted);
  return at == std::string::npos ? 0 : index.lineOf(at);
}

const std::string* APIAnalysis::sourceOf(const std::string& path, const Strings& sources) const {
  const std::size_t position = known_->paths.find(path);
  return position < sources.size() ? sources[position] : nullptr;
}

}  // namespace FlashEngine_1_00
