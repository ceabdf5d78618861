#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <unordered_set>
#include <vector>

#include "flow/Names.h"

// Solver: nodes that hold values, edges along which values go, and listeners that hear of each value that comes.
//
// Values only ever come, so that the order in which they do decides nothing but which way of several is shown.

namespace flow {

using NodeId = std::uint32_t;  // 0: holds nothing, and takes nothing
using Value = std::uint32_t;

// Values: objects by their index; texts, numbers by their text; and what nobody knows.
constexpr Value kText = 0x80000000;
constexpr Value kNumber = 0xC0000000;
constexpr Value kUnknown = 0x7FFFFFFF;

inline bool isText(Value value) {
  return (value & kText) != 0;
}
inline bool isNumber(Value value) {
  return (value & kNumber) == kNumber;
}
inline Name nameIn(Value value) {
  return value & 0x3FFFFFFF;
}
inline bool isObject(Value value) {
  return value < kUnknown;
}
inline Value textValue(Name name) {
  return kText | name;
}
inline Value numberValue(Name name) {
  return kNumber | name;
}

// A place in a script.
struct Where {
  std::uint32_t unit = 0xFFFFFFFF;
  std::uint32_t offset = 0;
};

// What a node is, for traces.
enum class Step : std::uint8_t {
  none,
  element,
  lookUp,
  variable,
  property,
  parameter,
  result,
  made,
  value,
};

struct Arrival {
  Value value;
  NodeId from;
  std::uint8_t level;  // 0 certain, 1 likely, 2 possible
};

class Solver {
 public:
  using Listener = std::function<void(const Arrival&)>;

  Solver() { nodes_.emplace_back(); }

  NodeId make(Where where, Step step, Name name = 0);

  // Each does nothing where a node is 0.
  void add(NodeId to, Value value, NodeId from = 0, std::uint8_t level = 0);
  void edge(NodeId from, NodeId to, std::uint8_t level = 0);

  // `listener` hears of what is there and of what comes; never from inside this call.
  void listen(NodeId node, Listener listener);

  // Until nothing is left to do, or the budget is spent.
  void run();

  const std::vector<Arrival>& values(NodeId node) const { return nodes_[node].values; }
  bool isEmpty(NodeId node) const { return nodes_[node].values.empty(); }
  bool has(NodeId node, Value value) const;
  Where where(NodeId node) const { return nodes_[node].where; }
  Step step(NodeId node) const { return nodes_[node].step; }
  Name name(NodeId node) const { return nodes_[node].name; }
  std::size_t size() const { return nodes_.size(); }

  // What the run may take. No clock: what is found does not depend on the machine.
  std::size_t maxNodes = 1'500'000;
  std::uint64_t maxSteps = 30'000'000;
  bool isHalfSpent() const { return steps_ > maxSteps / 2 || nodes_.size() > maxNodes / 2; }
  bool isSpent() const { return isSpent_; }
  void spend() { isSpent_ = true; }

 private:
  struct Edge {
    NodeId to;
    std::uint8_t level;
  };

  struct Listening {
    Listener call;
    std::uint32_t seen = 0;
  };

  struct Node {
    std::vector<Arrival> values;
    std::vector<Edge> edges;
    std::unique_ptr<std::deque<Listening>> listeners;
    std::unique_ptr<std::unordered_set<Value>> known;
    Where where;
    Name name = 0;
    std::uint32_t sent = 0;  // values that went along all edges
    std::uint16_t texts = 0;
    Step step = Step::none;
    bool isWaiting = false;
  };

  void wait(NodeId node);
  void work(NodeId node);

  std::deque<Node> nodes_;
  std::deque<NodeId> waiting_;
  std::uint64_t steps_ = 0;
  bool isSpent_ = false;
};

}  // namespace flow
