#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "flow/Analysis.h"

// Models: what functions do that no script of the application defines. A file has a table of those of one subject, by
// the names that `Analysis::natives` knows: `Array.from`, and `Array#map` for a method of each list. Here is what they
// share.

namespace flow {

struct Row {
  const char* name;
  Analysis::Native native;
};

template <std::size_t count>
void addRows(Analysis& analysis, const Row (&rows)[count]) {
  for (const Row& row : rows)
    analysis.natives.emplace(row.name, row.native);
}

// The argument at `index`, or 0 where there is none.
inline NodeId arg(Analysis& a, const CallInfo& info, std::size_t index) {
  return a.argument(info.args, index, info.site.where);
}

inline NodeId fresh(Analysis& a, const CallInfo& info) {
  return a.solver.make(info.site.where, Step::none);
}

// Each text, and each object, that comes to a node, also later.
void texts(Analysis& a, NodeId node, const std::function<void(const std::string&)>& take);
void objectsIn(Analysis& a, NodeId node, const std::function<void(ObjectId)>& take);

// Whether a property is one of the models' own, which scripts do not see.
inline bool isHidden(const std::string& text) {
  return !text.empty() && text[0] == '%';
}

// For each element of a list: its node, a number that tells it from the others, and the name of its place, or 0.
void eachElement(Analysis& a, Where where, NodeId list, std::function<void(NodeId, std::uint32_t, Name)> take);

// The same for the values of a node that stands for many.
void eachValue(Analysis& a, Where where, NodeId node, const std::function<void(NodeId, std::uint32_t)>& take);

// A new list, as what the call gives.
ObjectId newArray(Analysis& a, const CallInfo& info);

// Models that many names have: what they are given first, and nothing.
void firstArgument(Analysis& a, const CallInfo& info);
void none(Analysis& a, const CallInfo& info);

}  // namespace flow
