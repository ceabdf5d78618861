// Call extraction: the methods that script calls on plug-in objects.
//
// FindAPIFunctionName4JS searches for calls on the bound variables, FindAPIFunctionName4JSSpe for calls on a look-up
// itself. Reads objectVariableList, declareList and the cleaned sources; fills foundCallList, lookupCandidateList and,
// through the verdict on each call, resultList. Test: tests/APICheckEngine/CallExtraction_test.cpp.

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <tuple>
#include <unordered_map>
#include <unordered_set>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CallText.h"
#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Knowledge.h"
#include "APICheckEngine/Tables.h"
#include "platform/Limits.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {
namespace {

using detail::Key;
using detail::makeKey;
using detail::splitKey;
using detail::without;
using detail::withoutBlanks;

// Helper objects of the platform's script library: a variable near one of these holds that, not a plug-in.
constexpr std::string_view kCommonObjects[] = {"Common.API.Plugin", "Common.API.Widget", "Common.API.TVKeyValue"};
constexpr std::ptrdiff_t kCommonWindow = 50;

// What may stand before a variable; of a longer name that ends in it, only "_" may.
constexpr const char* kSeparator = R"([\+\-\_\*\/\%\(\{\[\;\:\,\?\s])";
// `Execute( "Start"`; not `Execute (`.
constexpr const char* kExecuteCall = R"(Execute\(\s*["']*[\w\s\_]*["']*)";
// `getElementById("tv` and `$_('tv`; not `embeds[1]`.
constexpr const char* kLookedUpId = R"((getElementById|[\$]\s*[\_]*)\s*[(]["'\s]*[\w\_]+)";

// A call on `variable`, with arguments or without: " tv.SetVolume(x, 1)", "(tv.GetModel()"; not "mytv.GetModel()".
std::string callOn(const std::string& variable) {
  const std::string call = kSeparator + variable + R"(\s*\.\s*[\w\_]+\s*)";
  return "(" + call + R"(\([\[\.\]\d"',\s\w\_\(\)/]*\))" + ")|(" + call + R"(\([\s]*\))" + ")";
}

// A call on a look-up of `id`: `("tv").GetModel(`.
std::string callOnLookupOf(const std::string& id) {
  return detail::lookupOf(id) + R"(\s*[\w\d\_]+\s*\()";
}

bool contains(std::string_view text, std::string_view piece) {
  return text.find(piece) != std::string_view::npos;
}

// Whether a name stands in a text with the whole name of a common object in the 50 bytes from there on. The common
// objects of a source are looked for once.
class CommonObjects {
 public:
  // `text` is a part of `source`, of which an index may be at hand.
  bool follow(const std::string& name, std::string_view text, std::string_view source, const TextIndex* index) {
    const auto [known, isNew] = objects_.try_emplace(source.data());
    if (isNew) known->second = objectsIn(source);
    const std::vector<std::string_view>& objects = known->second;
    const char* const end = text.data() + text.size();
    auto next = objects.begin();
    const auto skipTo = [&](const char* at) {
      next = std::partition_point(next, objects.end(), [&](std::string_view object) { return object.data() < at; });
      return next != objects.end() && endOf(*next) <= end;
    };
    for (const char* at = text.data(); skipTo(at); ++at) {
      at = std::max(at, endOf(*next) - std::min<std::ptrdiff_t>(kCommonWindow, endOf(*next) - at));
      at = find(name, at, end, source, index);
      if (at == nullptr || !skipTo(at)) return false;
      if (endOf(*next) - at <= kCommonWindow) return true;
    }
    return false;
  }

 private:
  static const char* endOf(std::string_view object) { return object.data() + object.size(); }

  static const char* find(const std::string& name, const char* from, const char* to, std::string_view source,
                          const TextIndex* index) {
    const auto begin = static_cast<std::size_t>(from - source.data());
    const auto end = static_cast<std::size_t>(to - source.data());
    const std::size_t place =
        index != nullptr ? index->find(name, begin, end) : source.substr(0, end).find(name, begin);
    return place == std::string_view::npos ? nullptr : source.data() + place;
  }

  static std::vector<std::string_view> objectsIn(std::string_view source) {
    std::vector<std::string_view> objects;
    for (const std::string_view object : kCommonObjects) {
      for (std::size_t at = source.find(object); at != std::string::npos; at = source.find(object, at + 1))
        objects.push_back(source.substr(at, object.size()));
    }
    std::sort(objects.begin(), objects.end(), [](auto a, auto b) { return a.data() < b.data(); });
    return objects;
  }

  std::unordered_map<const char*, std::vector<std::string_view>> objects_;  // by source
};

// The element id in an access expression; empty if it looks none up.
std::string lookedUpId(const Pattern& lookedUp, const std::string& access) {
  const std::string match(lookedUp.search(access.c_str()));
  return match.substr(match.find_last_of("(\"' \t\n\v\f\r") + 1);
}

std::unique_ptr<SWFStateMentInfo> makeCall(const std::string& path, int line) {
  auto call = std::make_unique<SWFStateMentInfo>();
  call->scope = "Src";
  call->path = path;
  call->line = line;
  return call;
}

// The calls on a look-up of one element in one source: searched for and checked once, for all look-ups of that element.
struct LookupCalls {
  struct Candidate {
    std::string text;      // as matched
    std::string callText;  // what follows the look-up in it
    bool builtIn;
    SWFStateMentInfo* record;  // once it is in lookupCandidateList
    int count;
  };
  struct Call {
    SWFStateMentInfo* record = nullptr;  // the last one in foundCallList
    int count = 0;
  };
  struct OfClass {
    int rounds = 0;           // look-ups for which the calls were reported
    std::vector<Call> calls;  // one per candidate
  };
  struct Find {
    std::size_t candidate;   // its position
    std::string_view place;  // in the source
  };
  std::string_view text;  // the source
  std::vector<Candidate> candidates;
  std::vector<Find> finds;  // of equal ones not more than are asked for
  std::map<std::string, OfClass> classes;
};

LookupCalls findLookupCalls(const std::string& id, detail::SourceIndex& source, int mostEqual) {
  LookupCalls calls;
  calls.text = source.text();
  std::unordered_map<std::string_view, std::size_t> known;
  std::vector<int> times;
  const Pattern pattern(callOnLookupOf(id));
  const Pattern lookup(detail::lookupOf(id));
  for (MatchCursor at(pattern, calls.text, source.forSearchOf(calls.text.size())); at.next();) {
    const auto [place, isNew] = known.try_emplace(at.view(), calls.candidates.size());
    if (isNew) {
      const std::string found = at.match();
      const std::string callText = found.substr(lookup.search(found.c_str()).size());
      calls.candidates.push_back({found, callText, detail::holdsBuiltIn(found), nullptr, 0});
      times.push_back(0);
    }
    if (times[place->second]++ < mostEqual) calls.finds.push_back({place->second, at.view()});
  }
  return calls;
}

}  // namespace

std::string detail::lookupOf(const std::string& id) {
  return R"([\(][\s"']*)" + id + R"([\s"']*[\)]\s*\.)";
}

bool detail::holdsBuiltIn(const std::string& callText) {
  struct Names {
    std::unordered_set<std::string_view> texts{std::begin(SystemFunctionPool), std::end(SystemFunctionPool)};
    std::set<std::size_t> sizes;
  };
  static const Names names = [] {
    Names all;
    for (const std::string_view name : all.texts)
      all.sizes.insert(name.size());
    return all;
  }();
  const std::string_view text = callText;
  for (std::size_t open = text.find('('); open != std::string_view::npos; open = text.find('(', open + 1)) {
    for (const std::size_t size : names.sizes) {
      if (size > open) break;
      if (names.texts.count(text.substr(open - size, size)) > 0) return true;
    }
  }
  return false;
}

RunResult APIAnalysis::FindAPIFunctionName4JS() {
  CommonObjects commonObjects;
  detail::FoundCalls found;
  std::unordered_map<const SWFStateMentInfo*, bool> isCommon;  // by binding
  for (const SWFStateMentInfo* binding : objectVariableList) {
    const std::string* source = sourceOf(binding->path, worthfulSourceList);
    detail::SourceIndex* index = source == nullptr ? nullptr : &known_->indexOf(*source);
    std::string_view text = binding->text;
    if (binding->scope == "Src" && index != nullptr) text = index->text();
    if (text.empty()) continue;
    // In a second run of one engine a path may lead to the source of another file.
    const bool isPart =
        index != nullptr && text.data() >= source->data() && text.data() < source->data() + source->size();
    if (!isPart) index = nullptr;
    const auto [common, isNew] = isCommon.try_emplace(binding, false);
    if (isNew) {
      const TextIndex* textIndex = index == nullptr ? nullptr : index->forSearchOf(0);
      common->second = commonObjects.follow(splitKey(*binding->expression).symbol, text,
                                            index == nullptr ? text : index->text(), textIndex);
    }
    if (common->second) {
      if (watchesAll() && isNew) {
        tellOfCommonObject(*binding, text, index == nullptr ? nullptr : index->forSearchOf(text.size()));
      }
      continue;
    }
    // KEPT: a finding does not end this scanner, so one run can record several. Hosts read the whole list.
    // (test ScriptScannerGoesOnAfterAFinding)
    findCallsOn(binding, text, index, binding->path, FoundCall::On::variable, found);
  }
  return RUN_SUCCESS;
}

// Finds and judges the calls on a variable in a text. What `found` knows of the text is only recorded again.
void APIAnalysis::findCallsOn(const SWFStateMentInfo* binding, std::string_view text, detail::SourceIndex* source,
                              const std::string& path, FoundCall::On on, detail::FoundCalls& found) {
  const auto [place, isNew] = found.positions.try_emplace(binding, foundCallList.size(), 0);
  auto& [begin, end] = place->second;
  if (isNew) {
    const Key key = splitKey(*binding->expression);
    const TextIndex* index = source == nullptr ? nullptr : source->forSearchOf(text.size());
    (void)findCalls(key.classId, key.symbol, text, index, path, on);
    end = foundCallList.size();
  } else {
    for (std::size_t i = begin; i < end; ++i)
      foundCallList.push_back(foundCallList[i]);
  }
}

RunResult APIAnalysis::findAPIsFromPool(std::string classId, std::string name, std::string* source, std::string path) {
  return findCalls(classId, name, source->c_str(), nullptr, path, FoundCall::On::variable);
}

// The text is zero-terminated or followed by more of its source. With an index of it or of that source, or null.
RunResult APIAnalysis::findCalls(const std::string& classId, const std::string& variable, std::string_view text,
                                 const TextIndex* index, const std::string& path, FoundCall::On on) {
  const Pattern pattern(callOn(withoutBlanks(variable)));
  struct Equal {
    int count = 0;
    SWFStateMentInfo* record = nullptr;  // of the last one that is kept
  };
  std::unordered_map<std::string, Equal> known;
  for (MatchCursor at(pattern, text, index); at.next();) {
    std::string callText = at.match();
    const CallPlace place{on, classId, text, at.view()};
    Equal& equal = known[callText];
    if (++equal.count > kMaxEqualRecords) {  // judged before, and documented, unless a watch lets the engine go on
      if (watchesAll()) (void)judge(*equal.record, place);
      continue;
    }
    const std::string extensionCall = contains(callText, "Execute") ? findAPINameForKOBCase(&callText) : std::string();
    auto call = makeCall(path, foundSymbolLineNumber(const_cast<std::string*>(&path), &callText));
    if (!extensionCall.empty()) {
      call->expression = std::make_unique<std::string>(withoutBlanks(makeKey(classId, extensionCall)));
    } else if (!contains(callText, ".Open")) {
      call->expression = std::make_unique<std::string>(withoutBlanks(makeKey(classId, callText)));
    }
    equal.record = call.get();
    const RunResult code = report(foundCallList, std::move(call), place);
    if (code != RUN_SUCCESS) return code;
  }
  return RUN_SUCCESS;
}

std::string APIAnalysis::findAPINameForKOBCase(std::string* callText) {
  std::string name(Pattern(kExecuteCall).search(callText->c_str()));
  // KEPT: single quotes stay in the name. Databases list such names with them. (test SingleQuotesStayInExtensionNames)
  for (const char* removed : {"\n", "Execute", " ", "(", "\""})
    name = without(name, removed);
  return name;
}

RunResult APIAnalysis::FindAPIFunctionName4JSSpe() {
  struct Lookup {
    std::string classId;
    LookupCalls* calls;  // null if it looks nothing up in a source that is there
    LookupCalls::OfClass* ofClass;
    int line;
  };
  std::map<std::pair<std::string, const std::string*>, LookupCalls> known;  // by id and source
  std::unordered_map<const SWFStateMentInfo*, Lookup> lookups;              // by declaration
  const Pattern lookedUp(kLookedUpId);
  for (SWFStateMentInfo* declared : declareList) {
    const auto [entry, isNew] = lookups.try_emplace(declared, Lookup{{}, nullptr, nullptr, 0});
    Lookup& lookup = entry->second;
    if (isNew) {
      const Key key = splitKey(*declared->expression);
      const std::string id = lookedUpId(lookedUp, key.symbol);
      const std::string* source = sourceOf(declared->path, worthfulSourceList);
      if (id.empty() || source == nullptr) continue;
      const auto [calls, isFirst] = known.try_emplace({id, source});
      if (isFirst) {
        calls->second = findLookupCalls(id, known_->indexOf(*source),
                                        watchesAll() ? std::numeric_limits<int>::max() : kMaxEqualRecords);
      }
      LookupCalls::OfClass& ofClass = calls->second.classes[key.classId];
      ofClass.calls.resize(calls->second.candidates.size());
      lookup = {key.classId, &calls->second, &ofClass, foundSymbolLineNumber(&declared->path, &declared->access)};
    }
    // Each round reports the same calls again, which were all documented so far.
    if (lookup.calls == nullptr || ++lookup.ofClass->rounds > kMaxEqualRecords) continue;

    const bool tellsOfAll = watchesAll() && lookup.ofClass->rounds == 1;
    for (const LookupCalls::Find& find : lookup.calls->finds) {
      LookupCalls::Candidate& candidate = lookup.calls->candidates[find.candidate];
      const CallPlace place{FoundCall::On::lookUp, lookup.classId, lookup.calls->text, find.place};
      if (candidate.record == nullptr) {
        auto found = makeCall(declared->path, 0);
        found->expression = std::make_unique<std::string>(candidate.text);
        candidate.record = found.get();
        append(lookupCandidateList, std::move(found));
        ++candidate.count;
      } else if (candidate.count++ < kMaxEqualRecords) {
        lookupCandidateList.push_back(candidate.record);
      }
      if (candidate.builtIn) {
        if (tellsOfAll) tellOfBuiltIn(declared->path, lookup.line, place);
        continue;
      }
      LookupCalls::Call& judged = lookup.ofClass->calls[find.candidate];
      const bool isKept = judged.count++ < kMaxEqualRecords;
      if (!isKept || (judged.record != nullptr && judged.record->line == lookup.line)) {
        if (isKept) foundCallList.push_back(judged.record);
        if (tellsOfAll) (void)judge(*judged.record, place);
        continue;
      }
      const std::string dummyCall = withoutBlanks(without("DummyObject." + candidate.callText + ")", ")"));
      auto call = makeCall(declared->path, lookup.line);
      call->expression = nameLookupCall(lookup.classId, candidate.callText, dummyCall);
      judged.record = call.get();
      const RunResult code = report(foundCallList, std::move(call), place);
      if (code != RUN_SUCCESS) return code;
    }
  }
  return RUN_SUCCESS;
}

// For a watch: calls that no verdict is made on.
void APIAnalysis::tellOfBuiltIn(const std::string& path, int line, const CallPlace& place) const {
  watch->found({place.on, FoundCall::Verdict::builtIn, place.classId, path, place.text, place.call, line,
                known_->methodNames(std::string(place.call))});
}

void APIAnalysis::tellOfCommonObject(const SWFStateMentInfo& binding, std::string_view text, const TextIndex* index) {
  const Key key = splitKey(*binding.expression);
  const Pattern pattern(callOn(withoutBlanks(key.symbol)));
  for (MatchCursor at(pattern, text, index); at.next();) {
    std::string callText = at.match();
    const int line = foundSymbolLineNumber(const_cast<std::string*>(&binding.path), &callText);
    watch->found({FoundCall::On::variable, FoundCall::Verdict::common, key.classId, binding.path, text, at.view(), line,
                  known_->methodNames(callText)});
  }
}

// The expression of a call on a look-up, whose text in full is `dummyCall`; null if the call opens something.
std::unique_ptr<std::string> APIAnalysis::nameLookupCall(const std::string& classId, const std::string& callText,
                                                         std::string dummyCall) {
  if (classId == kExtensionPlugin || contains(callText, "Execute")) {
    return std::make_unique<std::string>(makeKey(classId, findAPINameForKOBCase(&dummyCall)));
  }
  return contains(callText, ".Open") ? nullptr : std::make_unique<std::string>(makeKey(classId, dummyCall));
}

}  // namespace FlashEngine_1_00
