// Variable binding: which script variables hold a plug-in object, and in which function.
//
// Reads objectIdList, objectTagList, objectAccessList, embedsAccessList, functionBlockList and the cleaned sources;
// fills declareList (embedsDeclareList on the way) and objectVariableList. Test:
// tests/APICheckEngine/VariableBinding_test.cpp.

#include <algorithm>
#include <map>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/EqualRecords.h"
#include "APICheckEngine/Keys.h"
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
const std::string kDirectUse = R"((\s*document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.+))"
                               "|"
                               R"((\s*[\$]\s*[(]["'\s]*[\w\_]+["'\s]*\)\s*\.+))";

// "this.tv ="; in "tv == null", "tv =" and then the second "=" alone, which names nothing.
const std::string kAssignment = R"((([\w\_]+)[\.]*)*\s*(=))";

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

// Finds the function around an access: of those in the same file whose body holds the access expression, the last one.
class EnclosingFunction {
 public:
  explicit EnclosingFunction(const std::vector<FlashFunctionInfo*>& functions) : functions_(functions) {}

  // Its body; empty if there is none.
  std::string_view body(const std::string& path, const std::string& access) {
    const auto [place, isNew] = known_.try_emplace({path, access});
    if (isNew) place->second = find(path, access);
    return place->second;
  }

 private:
  std::string_view find(const std::string& path, const std::string& access) const {
    for (auto function = functions_.rbegin(); function != functions_.rend(); ++function) {
      if ((*function)->path == path && (*function)->body.find(access) != std::string_view::npos) {
        return (*function)->body;
      }
    }
    return {};
  }

  const std::vector<FlashFunctionInfo*>& functions_;
  std::map<std::pair<std::string, std::string>, std::string_view> known_;
};

}  // namespace

RunResult APIAnalysis::FindDeclareListValidation() {
  std::vector<Key> symbols;
  std::vector<Pattern> patterns;
  for (const SWFStateMentInfo* record : objectIdList) {
    if (record->text == "Func") continue;
    symbols.push_back(splitKey(*record->expression));
    patterns.emplace_back(parenthesised(symbols.back().symbol));
  }

  for (const SWFStateMentInfo* access : objectAccessList) {
    const auto named = std::find_if(patterns.begin(), patterns.end(), [&](const Pattern& pattern) {
      return pattern.matchesIn(access->expression->c_str());
    });
    if (named == patterns.end()) continue;
    append(declareList, makeDeclaration(symbols[static_cast<std::size_t>(named - patterns.begin())].classId, *access));
  }

  for (const SWFStateMentInfo* access : embedsAccessList) {
    const int index = parseEmbedsTagIndex(access->expression.get());
    if (index < 0) continue;
    const auto n = static_cast<std::size_t>(index);
    if (n >= objectTagList.size() || n >= symbols.size()) continue;
    // KEPT: one equal record for every symbol. Whoever counts the records sees as many. (test EmbedsRepeatPerSymbol)
    for (std::size_t i = 0; i < std::min<std::size_t>(symbols.size(), kMaxEqualRecords); ++i) {
      append(embedsDeclareList, makeDeclaration(symbols[n].classId, *access));
    }
  }

  declareList.reserve(declareList.size() + embedsDeclareList.size());
  declareList.insert(declareList.end(), embedsDeclareList.rbegin(), embedsDeclareList.rend());
  embedsDeclareList.clear();
  return RUN_SUCCESS;
}

RunResult APIAnalysis::FindObjectVariable() {
  const Pattern directUse(kDirectUse);
  const Pattern assignments(kAssignment);
  EnclosingFunction enclosing(functionBlockList);
  detail::EqualRecords kept;
  for (SWFStateMentInfo* declared : declareList) {
    const std::string& expression = *declared->expression;
    if (directUse.matchesIn(expression.c_str())) continue;
    const std::string classId = splitKey(withoutBlanks(without(expression, "\n"))).classId;
    for (MatchCursor at(assignments, expression.c_str()); at.next();) {
      std::string variable = without(withoutBlanks(at.match()), "=");
      if (variable.empty()) continue;
      const bool wholeFile = variable.find("this.") != std::string::npos;
      const std::string_view body =
          wholeFile ? std::string_view() : enclosing.body(declared->path, splitKey(expression).symbol);
      const std::string key = makeKey(withoutBlanks(classId), variable);
      const auto bodyPlace = std::to_string(reinterpret_cast<std::uintptr_t>(body.data()));
      if (!kept.keep(key + '\n' + bodyPlace + '\n' + declared->path)) continue;
      auto binding = std::make_unique<SWFStateMentInfo>();
      binding->expression = std::make_unique<std::string>(key);
      binding->scope = wholeFile ? "Src" : "Func";
      binding->text = body;
      binding->path = declared->path;
      binding->line = foundSymbolLineNumber(&declared->path, &variable);
      append(objectVariableList, std::move(binding));
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
  const std::size_t at = source->find(wanted);
  if (at == std::string::npos) return 0;
  // KEPT: a line feed at the very start of the file is not counted. Hosts show these numbers.
  // (test LineFeedAtTheStartIsNotCounted)
  const auto first = source->begin() + (source->empty() ? 0 : 1);
  return 1 + static_cast<int>(
                 std::count(first, std::max(first, source->begin() + static_cast<std::ptrdiff_t>(at) + 1), '\n'));
}

std::string* APIAnalysis::sourceOf(const std::string& path, const Strings& sources) const {
  const auto found = std::find_if(worthfulPathList.begin(), worthfulPathList.end(),
                                  [&](const std::string* known) { return *known == path; });
  const auto position = static_cast<std::size_t>(found - worthfulPathList.begin());
  return found == worthfulPathList.end() || position >= sources.size() ? nullptr : sources[position];
}

}  // namespace FlashEngine_1_00
