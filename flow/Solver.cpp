// Solver: a worklist. Test: tests/flow/Analysis_test.cpp.

#include "flow/Solver.h"

namespace flow {
namespace {

// Values of a node beyond which it says nothing any more: more texts are an unknown text, more objects are left out.
constexpr std::uint16_t kMaxTexts = 48;
constexpr std::size_t kMaxValues = 160;
constexpr std::size_t kLinear = 12;  // values that are searched one by one

}  // namespace

NodeId Solver::make(Where where, Step step, Name name) {
  if (nodes_.size() >= maxNodes) {
    isSpent_ = true;
    return 0;
  }
  nodes_.emplace_back();
  Node& node = nodes_.back();
  node.where = where;
  node.step = step;
  node.name = name;
  return static_cast<NodeId>(nodes_.size() - 1);
}

bool Solver::has(NodeId id, Value value) const {
  const Node& node = nodes_[id];
  if (node.known) return node.known->count(value) != 0;
  for (const Arrival& arrival : node.values)
    if (arrival.value == value) return true;
  return false;
}

void Solver::add(NodeId to, Value value, NodeId from, std::uint8_t level) {
  if (to == 0 || has(to, value)) return;
  Node& node = nodes_[to];
  if (isText(value) && ++node.texts > kMaxTexts) return add(to, kUnknown, from, level);
  if (node.values.size() >= kMaxValues) return;
  node.values.push_back({value, from, level});
  if (node.known) {
    node.known->insert(value);
  } else if (node.values.size() > kLinear) {
    node.known = std::make_unique<std::unordered_set<Value>>();
    for (const Arrival& arrival : node.values)
      node.known->insert(arrival.value);
  }
  wait(to);
}

void Solver::edge(NodeId from, NodeId to, std::uint8_t level) {
  if (from == 0 || to == 0 || from == to) return;
  Node& node = nodes_[from];
  if (node.edges.size() < 64) {
    for (const Edge& known : node.edges)
      if (known.to == to) return;
  }
  node.edges.push_back({to, level});
  for (std::uint32_t i = 0; i < node.sent; ++i) {
    const Arrival arrival = node.values[i];
    if (arrival.level < 2) add(to, arrival.value, from, std::max(arrival.level, level));
  }
}

void Solver::listen(NodeId id, Listener listener) {
  if (id == 0) return;
  Node& node = nodes_[id];
  if (!node.listeners) node.listeners = std::make_unique<std::deque<Listening>>();
  node.listeners->push_back({std::move(listener), 0});
  if (!node.values.empty()) wait(id);
}

void Solver::wait(NodeId id) {
  Node& node = nodes_[id];
  if (node.isWaiting) return;
  node.isWaiting = true;
  waiting_.push_back(id);
}

void Solver::run() {
  while (!waiting_.empty() && !isSpent_) {
    const NodeId id = waiting_.front();
    waiting_.pop_front();
    nodes_[id].isWaiting = false;
    work(id);
  }
}

void Solver::work(NodeId id) {
  // Listeners make nodes, edges and listeners; a deque keeps what is there in its place.
  Node& node = nodes_[id];
  for (; node.sent < node.values.size(); ++node.sent) {
    const Arrival arrival = node.values[node.sent];
    if (arrival.level >= 2) continue;
    for (std::size_t i = 0; i < node.edges.size(); ++i) {
      const Edge edge = node.edges[i];
      add(edge.to, arrival.value, id, std::max(arrival.level, edge.level));
      if (++steps_ > maxSteps) isSpent_ = true;
    }
  }
  if (!node.listeners) return;
  for (std::size_t i = 0; i < node.listeners->size() && !isSpent_; ++i) {
    Listening& listening = (*node.listeners)[i];
    while (listening.seen < node.values.size() && !isSpent_) {
      const Arrival arrival = node.values[listening.seen++];
      listening.call(arrival);
      steps_ += 4;
      if (steps_ > maxSteps) isSpent_ = true;
    }
  }
}

}  // namespace flow
