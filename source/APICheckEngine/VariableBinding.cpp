// Variable binding: which script variables hold a plug-in object, and in which function.
//
// An access that names a plug-in symbol is a declaration; what stands before a "=" in it is a variable. Reads
// objectIdList, objectTagList, objectAccessList, embedsAccessList, functionBlockList and the cleaned sources; fills
// declareList (embedsDeclareList on the way) and objectVariableList. What was found out for a record holds for every
// place that it has in a list. Test: tests/APICheckEngine/VariableBinding_test.cpp.

#include <algorithm>
#include <functional>
#include <iterator>
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
using detail::RecordNotes;
using detail::splitKey;
using detail::viewKey;
using detail::withoutBlanks;

namespace {

// A key in memory of its size.
std::unique_ptr<std::string> newKey(std::string_view classId, std::string_view symbol) {
  auto key = std::make_unique<std::string>();
  key->reserve(classId.size() + 1 + symbol.size());
  key->append(classId).append(1, '#').append(symbol);
  return key;
}

// Sets `bare` to the class identifier in a declaration's expression, once blanks and line feeds are gone.
void readBareClassId(std::string_view expression, std::string& bare) {
  bare.clear();
  std::copy_if(expression.begin(), expression.end(), std::back_inserter(bare),
               [](char c) { return c != ' ' && c != '\n'; });
  const std::size_t size = viewKey(bare).classId.size();
  bare.erase(0, size == 0 ? std::string::npos : bare.find_first_not_of('#'));
  bare.resize(size);
}

// The class identifier has no blanks.
std::unique_ptr<SWFStateMentInfo> makeDeclaration(const std::string& classId, const SWFStateMentInfo& access) {
  auto record = std::make_unique<SWFStateMentInfo>();
  record->expression = newKey(classId, *access.expression);
  record->scope = "Global";
  record->path = access.path;
  record->access = *access.expression;  // goes with it
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
    if (record->text == "Func") continue;
    symbols.push_back(splitKey(*record->expression));
    symbols.back().classId = withoutBlanks(symbols.back().classId);
  }
  declareLookUps(symbols);
  declareEmbeds(symbols);
  declareList.insert(declareList.end(), embedsDeclareList.begin(), embedsDeclareList.end());
  embedsDeclareList.clear();
  return RUN_SUCCESS;
}

// Appends a declaration for each access that names one of the symbols, whose class identifiers have no blanks.
void APIAnalysis::declareLookUps(const std::vector<Key>& symbols) {
  detail::NamedSymbol named(symbols);
  RecordNotes<std::optional<EqualRecords<SWFStateMentInfo>>> declarations(objectAccessList);
  for (SWFStateMentInfo* access : objectAccessList) {
    const auto [declared, isNew] = declarations.of(*access);
    if (isNew) {
      const std::size_t symbol = named.in(*access->expression);
      if (symbol != detail::NamedSymbol::kNone) declared.emplace(makeDeclaration(symbols[symbol].classId, *access));
    }
    if (declared.has_value()) (void)declared->addTo(declareList);
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

// The bindings made so far, by what they are made of: texts of their records and of declarations.
struct APIAnalysis::Bindings {
  struct MadeOf {
    std::string_view key;
    std::string_view path;
    const char* body;

    bool operator==(const MadeOf& other) const { return body == other.body && key == other.key && path == other.path; }
  };
  struct Hash {
    std::size_t operator()(const MadeOf& madeOf) const {
      return std::hash<std::string_view>()(madeOf.key) ^ std::hash<const char*>()(madeOf.body);
    }
  };
  // What all variables of one declaration have in common.
  struct Declaration {
    const SWFStateMentInfo* record = nullptr;
    std::string classId;
    std::optional<std::string_view> body;  // of the function around it, once it is asked for
  };
  const Declaration& of(const SWFStateMentInfo& declared, bool withBody) {
    if (recent.record != &declared) {
      recent.record = &declared;
      readBareClassId(*declared.expression, recent.classId);
      recent.body.reset();
    }
    if (withBody && !recent.body.has_value()) {
      recent.body = enclosing.body(declared.path, viewKey(*declared.expression).symbol);
    }
    return recent;
  }

  detail::EnclosingFunctions enclosing;
  std::unordered_map<MadeOf, EqualRecords<SWFStateMentInfo>, Hash> known;
  Declaration recent;
};

RunResult APIAnalysis::FindObjectVariable() {
  Bindings bindings{{functionBlockList, *known_}, {}, {}};
  RecordNotes<std::vector<EqualRecords<SWFStateMentInfo>*>> bindingsOf(declareList);
  for (SWFStateMentInfo* declared : declareList) {
    const auto [bound, isNew] = bindingsOf.of(*declared);
    if (isNew) {
      for (const std::string& variable : variablesIn(*declared->expression))
        bound.push_back(&bindingOf(*declared, variable, bindings));
    }
    for (EqualRecords<SWFStateMentInfo>* binding : bound)
      (void)binding->addTo(objectVariableList);
  }
  return RUN_SUCCESS;
}

// The binding of a variable to what a declaration declares.
EqualRecords<SWFStateMentInfo>& APIAnalysis::bindingOf(const SWFStateMentInfo& declared, const std::string& variable,
                                                       Bindings& bindings) {
  const bool wholeFile = variable.find("this.") != std::string::npos;
  const Bindings::Declaration& declaration = bindings.of(declared, !wholeFile);
  std::unique_ptr<std::string> key = newKey(declaration.classId, variable);
  const std::string_view body = wholeFile ? std::string_view() : *declaration.body;
  const Bindings::MadeOf madeOf{*key, declared.path, body.data()};
  const auto known = bindings.known.find(madeOf);
  if (known != bindings.known.end()) return known->second;

  auto record = std::make_unique<SWFStateMentInfo>();
  record->expression = std::move(key);
  record->scope = wholeFile ? "Src" : "Func";
  record->text = body;
  record->path = declared.path;
  record->line = lineOf(variable, declared.path);
  return bindings.known.emplace(madeOf, std::move(record)).first->second;
}

int APIAnalysis::foundSymbolLineNumber(std::string* path, std::string* symbol) {
  return lineOf(*symbol, *path);
}

int APIAnalysis::lineOf(std::string_view symbol, std::string_view path) {
  const std::string* source = sourceOf(path, cleanedSourceList);
  if (source == nullptr) return -1;
  const auto isSymbolByte = [](char c) { return c >= '0' && c <= 'z'; };
  const auto start = std::find_if(symbol.begin(), symbol.end(), isSymbolByte);
  const auto skipped = start == symbol.end() ? 0 : static_cast<std::size_t>(start - symbol.begin());
  const std::string_view wanted = symbol.substr(skipped);
  detail::SourceIndex& index = known_->indexOf(*source);
  const std::size_t at = index.find(wanted);
  return at == std::string::npos ? 0 : index.lineOf(at);
}

const std::string* APIAnalysis::sourceOf(std::string_view path, const Strings& sources) const {
  const std::size_t position = known_->paths.find(path);
  return position < sources.size() ? sources[position] : nullptr;
}

}  // namespace FlashEngine_1_00
