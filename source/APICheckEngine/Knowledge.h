#pragma once

#include <string>
#include <unordered_map>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/ListIndex.h"
#include "APICheckEngine/SourceIndex.h"
#include "APICheckEngine/Verdicts.h"
#include "platform/Limits.h"

namespace FlashEngine_1_00::detail {

// What the engine remembers about its lists, so that it need not search them through for every question.
struct Knowledge {
  explicit Knowledge(const APIAnalysis& engine)
      : documented(engine.whiteAPIList), findings(engine.resultList), paths(engine.worthfulPathList) {}

  // The lists that Init empties are about to be emptied.
  void forget() {
    documented.forget();
    findings.forget();
    sources.clear();
    indexRoom = kMaxIndexedBytes;
  }

  SourceIndex& indexOf(const std::string& source) {
    return sources.try_emplace(&source, source, indexRoom).first->second;
  }

  ListIndex documented;
  ListIndex findings;
  ListIndex paths;
  std::unordered_map<const std::string*, SourceIndex> sources;
  std::size_t indexRoom = kMaxIndexedBytes;
  MethodNames methodNames;
};

}  // namespace FlashEngine_1_00::detail
