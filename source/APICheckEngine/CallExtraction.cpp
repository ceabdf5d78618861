// Call extraction: the methods that script calls on plug-in objects.
//
// FindAPIFunctionName4JS searches for calls on the bound variables, FindAPIFunctionName4JSSpe for calls on a look-up
// itself. Reads objectVariableList, declareList and the cleaned sources; fills foundCallList, lookupCandidateList and,
// through the verdict on each call, resultList. The rules make many equal records; of those, one is made and judged,
// and takes a bounded number of places. Test: tests/APICheckEngine/CallExtraction_test.cpp.

#include <limits>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CallText.h"
#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Knowledge.h"
#include "APICheckEngine/MethodName.h"
#include "APICheckEngine/Tables.h"
#include "APICheckEngine/search/AccessText.h"
#include "APICheckEngine/search/CommonObjects.h"
#include "APICheckEngine/search/LookupCalls.h"
#include "platform/Limits.h"

namespace FlashEngine_1_00 {

using detail::Key;
using detail::LookupCalls;
using detail::makeKey;
using detail::splitKey;
using detail::viewKey;
using detail::without;
using detail::withoutBlanks;

// A part of a source, or another text; then there is no source.
struct APIAnalysis::SearchedText {
  std::string_view text;
  detail::SourceIndex* source = nullptr;

  // To search the text with; null if there is none.
  TextIndex* index(std::size_t bytes) const { return source == nullptr ? nullptr : source->forSearchOf(bytes); }
};

namespace {

// Records that are made in equal rounds.
struct Round {
  int rounds = 0;
  std::vector<std::optional<detail::EqualRecords<SWFStateMentInfo>>> records;  // by position of the candidate
};

// The rounds of the look-ups of one class, by their lines.
using RoundsOfClass = std::unordered_map<int, Round>;

}  // namespace

// A look-up of a plug-in element: one of declareList. One that looks nothing up in a source that is there has no calls.
struct APIAnalysis::Lookup {
  std::string classId;
  std::string_view path;
  int line = 0;
  const LookupCalls* calls = nullptr;
  Round* candidates = nullptr;  // of LookupRecords, once it was asked for them; like the next two
  RoundsOfClass* ofClass = nullptr;
  Round* ofLine = nullptr;
};

// The records that are made of calls on look-ups. Every look-up of an element goes through the same calls: a round.
// Records of the same call are equal if class and line of the look-up are.
class APIAnalysis::LookupRecords {
 public:
  // Begins the round of a look-up; false if its records would be equal to those of kMaxEqualRecords rounds before, or
  // there are too many that differ in the line alone.
  bool begin(Lookup& lookup) {
    if (lookup.ofClass == nullptr) {
      lookup.candidates = &candidatesOf_[lookup.calls];
      lookup.ofClass = &classes_[{lookup.calls, lookup.classId}];
    }
    candidates_ = lookup.candidates;
    isFirst_ = lookup.ofClass->empty();
    if (!isFirst_ && places_ >= kMaxLookupPlaces) return false;
    if (lookup.ofLine == nullptr) lookup.ofLine = &(*lookup.ofClass)[lookup.line];
    line_ = lookup.ofLine;
    if (line_->rounds++ >= kMaxEqualRecords) return false;
    ++candidates_->rounds;
    return true;
  }

  // Whether calls of this class were not judged before.
  bool isFirst() const { return isFirst_; }

  // The finds to go through: without those whose candidates have all their places, once they do.
  const std::vector<LookupCalls::Find>& finds(const Lookup& lookup) const {
    return isFirst_ || candidates_->rounds <= kMaxEqualRecords ? lookup.calls->finds : lookup.calls->judged;
  }

  // The record of a candidate, and that of its call in this round; `make` makes one that is not there.
  template <typename Make>
  detail::EqualRecords<SWFStateMentInfo>& candidate(std::size_t position, const Make& make) {
    return recordIn(*candidates_, position, make);
  }
  template <typename Make>
  detail::EqualRecords<SWFStateMentInfo>& call(std::size_t position, const Make& make) {
    if (!isFirst_) ++places_;
    return recordIn(*line_, position, make);
  }

 private:
  template <typename Make>
  static detail::EqualRecords<SWFStateMentInfo>& recordIn(Round& round, std::size_t position, const Make& make) {
    if (position >= round.records.size()) round.records.resize(position + 1);
    auto& record = round.records[position];
    if (!record.has_value()) record.emplace(make());
    return *record;
  }

  std::unordered_map<const LookupCalls*, Round> candidatesOf_;
  std::map<std::pair<const LookupCalls*, std::string>, RoundsOfClass> classes_;
  Round* candidates_ = nullptr;  // of this round
  Round* line_ = nullptr;        // of this round
  bool isFirst_ = false;
  std::size_t places_ = 0;  // taken or asked for in other rounds than the first of a class
};

namespace {

bool contains(std::string_view text, std::string_view piece) {
  return text.find(piece) != std::string_view::npos;
}

std::unique_ptr<SWFStateMentInfo> makeCall(std::string_view path, int line, std::unique_ptr<std::string> expression) {
  auto call = std::make_unique<SWFStateMentInfo>();
  call->expression = std::move(expression);
  call->scope = "Src";
  call->path = path;
  call->line = line;
  return call;
}

}  // namespace

// ---- calls on variables ----

RunResult APIAnalysis::FindAPIFunctionName4JS() {
  detail::CommonObjects commonObjects;
  FoundCalls found(objectVariableList);
  for (SWFStateMentInfo* binding : objectVariableList) {
    SearchedText searched;
    if (found.isNew(*binding)) {
      searched = textOf(*binding);
      const std::string_view around = searched.source == nullptr ? searched.text : searched.source->text();
      if (!searched.text.empty() &&
          commonObjects.follow(viewKey(*binding->expression).symbol, searched.text, around, searched.index(0))) {
        observeCommonObject(*binding, searched);
        searched.text = {};
      }
    }
    // KEPT: a finding does not end this scanner, so one run can record several. Hosts read the whole list.
    // (test ScriptScannerGoesOnAfterAFinding)
    findCallsOn(*binding, searched.text, searched.source, binding->path, FoundCall::On::variable, found);
  }
  return RUN_SUCCESS;
}

// The text in which the calls on a variable are: the function around its binding, or the whole file.
APIAnalysis::SearchedText APIAnalysis::textOf(const SWFStateMentInfo& binding) {
  const std::string* source = sourceOf(binding.path, worthfulSourceList);
  if (source == nullptr) return {binding.text, nullptr};
  detail::SourceIndex& index = known_->indexOf(*source);
  const std::string_view text = binding.scope == "Src" ? index.text() : binding.text;
  // In a second run of one engine a path may lead to the source of another file.
  const bool isPart = text.data() >= source->data() && text.data() < source->data() + source->size();
  return {text, isPart ? &index : nullptr};
}

// Finds and judges the calls on a variable in a text. What `found` knows of the text is only recorded again.
void APIAnalysis::findCallsOn(SWFStateMentInfo& binding, std::string_view text, detail::SourceIndex* source,
                              std::string_view path, FoundCall::On on, FoundCalls& found) {
  const auto [positions, isNew] = found.of(binding);
  auto& [begin, end] = positions;
  if (isNew) {
    begin = foundCallList.size();
    if (!text.empty()) {
      const Key key = splitKey(*binding.expression);
      TextIndex* index = source == nullptr ? nullptr : source->forSearchOf(text.size());
      (void)findCalls(key.classId, key.symbol, text, index, path, on);
    }
    end = foundCallList.size();
  } else {
    for (std::size_t i = begin; i < end && foundCallList.size() < kLongList; ++i)
      foundCallList.push_back(foundCallList[i]);
  }
}

RunResult APIAnalysis::findAPIsFromPool(std::string classId, std::string name, std::string* source, std::string path) {
  return findCalls(classId, name, source->c_str(), nullptr, known_->pathOfRecords(path), FoundCall::On::variable);
}

// The text is zero-terminated or followed by more of its source. With an index of it or of that source, or null.
RunResult APIAnalysis::findCalls(const std::string& classId, const std::string& variable, std::string_view text,
                                 TextIndex* index, std::string_view path, FoundCall::On on) {
  const Stop outer = stop_;
  std::unordered_map<std::string_view, detail::EqualRecords<SWFStateMentInfo>> known;  // by call text
  for (detail::NameMatches at(known_->callsOnVariables, withoutBlanks(variable), text, index); at.next();) {
    auto call = known.find(at.view());
    if (call == known.end()) call = known.emplace(at.view(), makeVariableCall(classId, at.match(), path)).first;
    const bool isKept = keep(call->second, foundCallList);
    if (!isKept && !observesAll()) continue;  // judged before, and documented
    const RunResult code = judge(call->second.record(), {on, classId, text, at.view(), !isKept});
    if (code != RUN_SUCCESS) return code;
  }
  return endScan(outer);
}

// The record of a call on a variable; without an expression if the call opens something.
std::unique_ptr<SWFStateMentInfo> APIAnalysis::makeVariableCall(const std::string& classId, const std::string& callText,
                                                                std::string_view path) {
  const std::string executed = contains(callText, "Execute") ? detail::executedMethod(callText) : std::string();
  std::unique_ptr<std::string> expression;
  if (!executed.empty()) {
    expression = std::make_unique<std::string>(withoutBlanks(makeKey(classId, executed)));
  } else if (!contains(callText, ".Open")) {
    expression = std::make_unique<std::string>(withoutBlanks(makeKey(classId, callText)));
  }
  return makeCall(path, lineOf(callText, path), std::move(expression));
}

std::string APIAnalysis::findAPINameForKOBCase(std::string* callText) {
  return detail::executedMethod(*callText);
}

// ---- calls on look-ups ----

RunResult APIAnalysis::FindAPIFunctionName4JSSpe() {
  const Stop outer = stop_;
  detail::LookupCallFinder finder(observesAll() ? std::numeric_limits<std::size_t>::max() : kMaxEqualRecords);
  LookupRecords records;
  detail::RecordNotes<Lookup> lookups(declareList);
  for (SWFStateMentInfo* declared : declareList) {
    const auto [lookup, isNew] = lookups.of(*declared);
    if (isNew) lookup = lookupIn(*declared, finder);
    if (lookup.calls == nullptr || !records.begin(lookup)) continue;
    const RunResult code = reportCallsOn(lookup, records);
    if (code != RUN_SUCCESS) return code;
  }
  return endScan(outer);
}

// What a declaration looks up, and the calls on that in its source.
APIAnalysis::Lookup APIAnalysis::lookupIn(const SWFStateMentInfo& declared, detail::LookupCallFinder& finder) {
  const detail::KeyView key = viewKey(*declared.expression);
  const std::string id = detail::lookedUpId(key.symbol);
  const std::string* source = sourceOf(declared.path, worthfulSourceList);
  Lookup lookup;
  if (id.empty() || source == nullptr) return lookup;
  lookup.classId = key.classId;
  lookup.path = declared.path;
  lookup.line = lineOf(declared.access, declared.path);
  lookup.calls = &finder.callsOn(id, known_->indexOf(*source));
  return lookup;
}

// One round of a look-up: records its calls, and judges those that are new.
RunResult APIAnalysis::reportCallsOn(const Lookup& lookup, LookupRecords& records) {
  const bool tellsOfAll = observesAll() && records.isFirst();
  for (const LookupCalls::Find& find : records.finds(lookup)) {
    const LookupCalls::Candidate& candidate = lookup.calls->candidates[find.candidate];
    CallPlace place{FoundCall::On::lookUp, lookup.classId, lookup.calls->text, find.place};
    const auto makeCandidate = [&] { return makeCall(lookup.path, 0, std::make_unique<std::string>(candidate.text)); };
    (void)keep(records.candidate(find.candidate, makeCandidate), lookupCandidateList);
    if (candidate.isBuiltIn) {
      if (tellsOfAll) observeBuiltIn(lookup.path, lookup.line, place);
      continue;
    }
    auto& call = records.call(find.candidate, [&] { return makeLookupCall(lookup, candidate.callText); });
    const bool isNew = !call.isInList();
    (void)keep(call, foundCallList);
    place.isRepeated = !isNew;
    const RunResult code = isNew || tellsOfAll ? judge(call.record(), place) : RUN_SUCCESS;
    if (code != RUN_SUCCESS) return code;
  }
  return RUN_SUCCESS;
}

std::unique_ptr<SWFStateMentInfo> APIAnalysis::makeLookupCall(const Lookup& lookup, const std::string& callText) {
  const std::string dummyCall = withoutBlanks(without("DummyObject." + callText + ")", ")"));
  return makeCall(lookup.path, lookup.line, nameLookupCall(lookup.classId, callText, dummyCall));
}

// The expression of a call on a look-up, whose text in full is `dummyCall`; null if the call opens something.
std::unique_ptr<std::string> APIAnalysis::nameLookupCall(const std::string& classId, const std::string& callText,
                                                         std::string dummyCall) {
  if (classId == kExtensionPlugin || contains(callText, "Execute")) {
    return std::make_unique<std::string>(makeKey(classId, detail::executedMethod(dummyCall)));
  }
  return contains(callText, ".Open") ? nullptr : std::make_unique<std::string>(makeKey(classId, dummyCall));
}

// ---- calls that are passed over, for an observer ----

void APIAnalysis::observeBuiltIn(std::string_view path, int line, const CallPlace& place) const {
  observe(FoundCall::Verdict::builtIn, path, line, place, detail::methodName(place.call));
}

// Tells an observer of all calls of those on a variable that holds a helper object.
void APIAnalysis::observeCommonObject(const SWFStateMentInfo& binding, const SearchedText& searched) {
  if (!observesAll()) return;
  const Key key = splitKey(*binding.expression);
  detail::NameMatches at(known_->callsOnVariables, withoutBlanks(key.symbol), searched.text,
                         searched.index(searched.text.size()));
  while (at.next()) {
    const int line = lineOf(at.view(), binding.path);
    observe(FoundCall::Verdict::common, binding.path, line,
            {FoundCall::On::variable, key.classId, searched.text, at.view()}, detail::methodName(at.view()));
  }
}

}  // namespace FlashEngine_1_00
