// Test: tests/checker/Types_test.cpp.

#include "checker/run/PluginIds.h"

#include <set>
#include <stdexcept>
#include <utility>

#include "checker/run/EngineRun.h"

namespace {

#ifndef TARVO_FLOW
// Those of elements in pages. None of them is a global variable for sure.
std::vector<PluginId> idsOf(const FlashEngine_1_00::APIAnalysis& engine) {
  std::set<std::pair<std::string, std::string>> known;
  std::vector<PluginId> ids;
  for (const FlashEngine_1_00::SWFStateMentInfo* record : engine.objectIdList) {
    if (record->scope != "Global") continue;  // a parameter that is given such an id
    const FlashEngine_1_00::detail::Key key = FlashEngine_1_00::detail::splitKey(*record->expression);
    if (known.emplace(key.symbol, key.classId).second) ids.push_back({key.symbol, key.classId, false});
  }
  return ids;
}
#endif

}  // namespace

std::vector<PluginId> pluginIdsOf(const std::string& application, const std::string& database, unsigned unpacked) {
  FlowRun flow(application, {});
  EngineRunOptions options{database, {}, true, unpacked};
  options.keeps = FlowRun::reads;
  options.beforeRemoval = [&](const FlashEngine_1_00::APIAnalysis& engine) { flow.takeFiles(engine); };
  const Outcome run = runEngine(application, options);
  if (!run.failure.empty()) throw std::runtime_error(run.failure);
#ifdef TARVO_FLOW
  return flow.pluginIds(listDatabase(database), run.names);
#else
  return idsOf(*run.engine);
#endif
}
