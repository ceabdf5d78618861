// Variable binding: which script variables hold a plug-in object, and in which function.
//
// An access that names a plug-in symbol is a declaration; what stands before a "=" in it is a variable. Reads
// objectIdList, objectTagList, objectAccessList, embedsAccessList, functionBlockList and the cleaned sources; fills
// declareList (embedsDeclareList on the way) and objectVariableList. What was found out for a record holds for every
// place that it has in a list. Test: tests/APICheckEngine/VariableBinding_test.cpp.

#include <algorithm>
#include <functional>
#include <optional>
#include <unordered_map>
#include <utility>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Knowledge.h"
#include "APICheckEngine/search/AccessText.h"
#include "APICheckEngine/search/EnclosingFunctions.h"
#include "APICheckEngine/search/NamedSymbol.h"

namespace FlashEngine_1_00 {

using detail::EqualRecords;
using detail::Key;
using detail::makeKey;
using detail::splitKey;
using detail::without;
using detail::withoutBlanks;

namespace {

std::unique_ptr<SWFStateMentInfo> makeDeclaration(const std::string& classId, const SWFStateMentInfo& access) {
  auto record = std::make_unique<SWFStateMentInfo>();
  record->expression = std::make_unique<std::string>(makeKey(withoutBlanks(classId), *access.expression));
  record->scope = "Global";
  record->path = access.path;
  record->access = *access.expression;
  return record;
}

// The variables to which a declaration's element is assigned.
std::vector<std::string> variablesIn(const std::string& expression) {
  return detail::isUsedDirectly(expression) ? std::vector<std::string>() : detail::assignedVariables(expression);
}

}  // namespace

// ---- declarations
// ----------------------------------------------------------------------------------------------------

RunResult APIAnalysis::FindDeclareListValidation() {
  std::vector<Key> symbols;
  for (const SWFStateMentInfo* record : objectIdList) {
    if (record->text != "Func") symbols.push_back(splitKey(*record->expression));
  }
  declareLookUps(symbols);
  declareEmbeds(symbols);
  declareList.insert(declareList.end(), embedsDeclareList.begin(), embedsDeclareList.end());
  embedsDeclareList.clear();
  return RUN_SUCCESS;
}

// Appends a declaration for each access that names one of the symbols.
void APIAnalysis::declareLookUps(const std::vector<Key>& symbols) {
  detail::NamedSymbol named(symbols);
  std::unordered_map<const SWFStateMentInfo*, std::optional<EqualRecords<SWFStateMentInfo>>> declarations;  // by access
  for (const SWFStateMentInfo* access : objectAccessList) {
    const auto [known, isNew] = declarations.try_emplace(access);
    if (isNew) {
      const std::size_t symbol = named.in(*access->expression);
      if (symbol != detail::NamedSymbol::kNone) {
        known->second.emplace(makeDeclaration(symbols[symbol].classId, *access));
      }
    }
    if (known->second.has_value()) (void)known->second->addTo(declareList);
  }
}

// Appends declarations for the accesses of embedded elements to embedsDeclareList, the last access first.
void APIAnalysis::declareEmbeds(const std::vector<Key>& symbols) {
  std::unordered_map<const SWFStateMentInfo*, EqualRecords<SWFStateMentInfo>> declarations;  // by access
  for (auto access = embedsAccessList.rbegin(); access != embedsAccessList.rend(); ++access) {
    const auto n = static_cast<std::size_t>(parseEmbedsTagIndex((*access)->expression.get()));
    if (n >= objectTagList.size() || n >= symbols.size()) continue;
    auto declared = declarations.find(*access);
    if (declared == declarations.end()) {
      declared = declarations.emplace(*access, makeDeclaration(symbols[n].classId, **access)).first;
    }
    // KEPT: one equal record for every symbol. Whoever counts the records sees as many. (test EmbedsRepeatPerSymbol)
    for (std::size_t i = 0; i < symbols.size() && declared->second.addTo(embedsDeclareList); ++i) {
    }
  }
}

// ---- variables
// -------------------------------------------------------------------------------------------------------

// The bindings made so far, by what they are made of.
struct APIAnalysis::Bindings {
  struct MadeOf {
    std::string key;
    std::string path;
    const char* body;

    bool operator==(const MadeOf& other) const { return body == other.body && key == other.key && path == other.path; }
  };
  struct Hash {
    std::size_t operator()(const MadeOf& madeOf) const {
      return std::hash<std::string>()(madeOf.key) ^ std::hash<const char*>()(madeOf.body);
    }
  };
  detail::EnclosingFunctions enclosing;
  std::unordered_map<MadeOf, EqualRecords<SWFStateMentInfo>, Hash> known;
};

RunResult APIAnalysis::FindObjectVariable() {
  Bindings bindings{{functionBlockList, *known_}, {}};
  std::unordered_map<const SWFStateMentInfo*, std::vector<EqualRecords<SWFStateMentInfo>*>> bindingsOf;  // declarations
  for (const SWFStateMentInfo* declared : declareList) {
    const auto [known, isNew] = bindingsOf.try_emplace(declared);
    if (isNew) {
      for (std::string& variable : variablesIn(*declared->expression))
        known->second.push_back(&bindingOf(*declared, variable, bindings));
    }
    for (EqualRecords<SWFStateMentInfo>* binding : known->second)
      (void)binding->addTo(objectVariableList);
  }
  return RUN_SUCCESS;
}

// The binding of a variable to what a declaration declares.
EqualRecords<SWFStateMentInfo>& APIAnalysis::bindingOf(const SWFStateMentInfo& declared, std::string& variable,
                                                       Bindings& bindings) {
  const bool wholeFile = variable.find("this.") != std::string::npos;
  const std::string classId = splitKey(withoutBlanks(without(*declared.expression, "\n"))).classId;
  std::string key = makeKey(withoutBlanks(classId), variable);
  std::string_view body;
  if (!wholeFile) body = bindings.enclosing.body(declared.path, splitKey(*declared.expression).symbol);
  Bindings::MadeOf madeOf{key, declared.path, body.data()};
  const auto known = bindings.known.find(madeOf);
  if (known != bindings.known.end()) return known->second;

  auto record = std::make_unique<SWFStateMentInfo>();
  record->expression = std::make_unique<std::string>(std::move(key));
  record->scope = wholeFile ? "Src" : "Func";
  record->text = body;
  record->path = declared.path;
  record->line = foundSymbolLineNumber(&record->path, &variable);
  return bindings.known.emplace(std::move(madeOf), std::move(record)).first->second;
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
