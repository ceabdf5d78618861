// The function around an access.
//
// The plain search goes through the list from its end, and searches each body of the file for the access. Here the
// source is searched for the access instead, and at each of its places the last function around that is looked up. This
// finds the same: bodies are parts of the source that end with a brace, and accesses hold none, so a body that holds
// the first byte of an access holds all of it; and every place of the access is looked at.
//
// For the look-up the source is cut into stretches at all places where a body begins or ends. Within a stretch the
// bodies around are the same ones. Going through the stretches, those that have begun and not ended are kept in a heap
// by their positions in the list; ended ones are dropped when they come to its top. Test:
// tests/APICheckEngine/Search_test.cpp, against the plain search.

#include "APICheckEngine/search/EnclosingFunctions.h"

#include <algorithm>
#include <queue>
#include <unordered_set>

#include "APICheckEngine/Knowledge.h"

namespace FlashEngine_1_00::detail {

LastFunctionAround::LastFunctionAround(const std::vector<const FlashFunctionInfo*>& functions,
                                       const std::string& source) {
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

std::size_t LastFunctionAround::at(std::size_t place) const {
  const auto behind = std::partition_point(stretches_.begin(), stretches_.end(),
                                           [&](const Stretch& stretch) { return stretch.begin <= place; });
  return behind == stretches_.begin() ? kNone : behind[-1].function;
}

void EnclosingFunctions::sortBySource() {
  // Of a function that is in the list several times, its last place counts.
  std::vector<const FlashFunctionInfo*> distinct;
  std::unordered_set<const FlashFunctionInfo*> seen;
  for (auto function = functions_.rbegin(); function != functions_.rend(); ++function) {
    if (seen.insert(*function).second) distinct.push_back(*function);
  }
  std::vector<OfSource>* sources = nullptr;  // of the path of the function before
  std::string_view path;
  for (auto function = distinct.rbegin(); function != distinct.rend(); ++function) {
    if (sources == nullptr || path.data() != (*function)->path.data()) {
      path = (*function)->path;
      sources = &byPath_[path];
    }
    if (sources->empty() || sources->back().source != (*function)->source) {
      sources->push_back({(*function)->source, {}, {}});
    }
    sources->back().functions.push_back(*function);
  }
}

std::string_view EnclosingFunctions::body(std::string_view path, std::string_view access) {
  if (byPath_.empty()) sortBySource();
  const auto sources = byPath_.find(path);
  if (sources == byPath_.end()) return {};
  if (access.empty()) return sources->second.back().functions.back()->body;
  for (auto of = sources->second.rbegin(); of != sources->second.rend(); ++of) {
    const std::string_view body = lastHolding(*of, access);
    if (body.data() != nullptr) return body;
  }
  return {};
}

std::string_view EnclosingFunctions::lastHolding(OfSource& of, std::string_view access) {
  if (!of.last.has_value()) of.last.emplace(of.functions, *of.source);
  SourceIndex& index = engine_.indexOf(*of.source);
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

}  // namespace FlashEngine_1_00::detail
