#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "APICheckEngine/CallText.h"
#include "APICheckEngine/search/ListIndex.h"
#include "APICheckEngine/search/SourceIndex.h"
#include "platform/Limits.h"

namespace FlashEngine_1_00::detail {

// What the engine remembers about its lists, so that it need not search them through for every question.
struct Knowledge {
  using List = std::vector<std::string*>;

  // Of these lists of the engine, which outlive it: documented names, finding lines, and paths of the web sources.
  Knowledge(const List& documentedNames, const List& findingLines, const List& sourcePaths)
      : documented(documentedNames), findings(findingLines), paths(sourcePaths) {}

  // The lists that Init empties are about to be emptied.
  void forget() {
    documented.forget();
    findings.forget();
    sources.clear();
    recordPaths.clear();
    indexRoom = kMaxIndexedBytes;
  }

  // The path, as records have it: it stays as long as they do.
  std::string_view pathOfRecords(std::string_view path) {
    const auto known = recordPaths.find(path);
    return known != recordPaths.end() ? *known : *recordPaths.emplace(path).first;
  }

  // Of a text of cleanedSourceList. Stays where it is until the lists are emptied.
  SourceIndex& indexOf(const std::string& source) {
    return sources.try_emplace(&source, source, indexRoom).first->second;
  }

  ListIndex documented;
  ListIndex findings;
  ListIndex paths;
  std::unordered_map<const std::string*, SourceIndex> sources;
  std::set<std::string, std::less<>> recordPaths;
  std::size_t indexRoom = kMaxIndexedBytes;  // bytes that may still be indexed
  const NamePattern callsOnVariables = detail::callsOnVariables();
};

}  // namespace FlashEngine_1_00::detail
