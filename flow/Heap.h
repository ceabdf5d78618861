#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "flow/Solver.h"

// Heap: objects as the analysis knows them, one for each place (and way to it) that makes one.

namespace flow {

using ObjectId = std::uint32_t;
using ActId = std::uint32_t;
constexpr std::uint32_t kNobody = 0xFFFFFFFF;

enum class Class : std::uint8_t {
  plain,
  array,
  function,      // a: closure
  native,        // a: native
  bound,         // a: bound call
  element,       // a: element
  pluginMethod,  // a: object of the element, b: name
  window,        // a: realm
  document,      // a: realm
  accessor,      // a: node of getters, b: of setters
  promise,
  map,
  iterator,
  proxy,  // a: node of targets, b: of handlers
  jquery,
  event,
  style,
  pattern,  // a: name, its literal
};

struct Property {
  Name name = 0;
  NodeId node = 0;
  bool isWritten = false;
  bool isDefinite = false;  // what it is made with: nothing of a prototype is seen through it
};

struct Object {
  Class cls = Class::plain;
  std::uint32_t a = 0;
  std::uint32_t b = 0;
  Where where;
  NodeId proto = 0;
  NodeId star = 0;         // what is written under names that nobody knows
  NodeId all = 0;          // everything
  bool isMoved = false;    // of a list: what stands first is taken away, so that all others change places
  bool isAddedTo = false;  // under names that nobody knows
  std::vector<Property> properties;
  std::unordered_map<Name, std::uint32_t> index;
  std::unordered_map<Name, NodeId> reads;
  std::vector<std::function<void(Name, NodeId)>> watchers;
};

}  // namespace flow
