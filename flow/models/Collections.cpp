// Models: what the language itself brings: maps, sets and what else keeps values. Test: tests/flow/Analysis_test.cpp.

#include "flow/models/Models.h"

namespace flow {
namespace {

// A map is an object with a hidden property for each known key, and the elements of the whole as its value.
void newMap(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::map, info.site.where);
  a.solver.add(info.result, made);
  eachElement(a, info.site.where, arg(a, info, 0), [&a, made](NodeId pair, std::uint32_t, Name) {
    a.solver.edge(pair, a.property(made, a.known.value).node);
    objectsIn(a, pair, [&a, made](ObjectId of) {
      if (a.object(of).cls != Class::array) return;
      const NodeId key = a.readNode(of, a.names.of("0"));
      const NodeId value = a.readNode(of, a.names.of("1"));
      a.solver.edge(value, a.starNode(made));
      a.solver.listen(key, [&a, made, value](const Arrival& name) {
        a.solver.edge(value, a.property(made, a.names.of("%key:" + std::to_string(name.value))).node);
      });
    });
  });
}

void mapSet(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const ObjectId map = info.selfValue;
  const NodeId key = arg(a, info, 0);
  const NodeId value = arg(a, info, 1);
  a.solver.edge(info.self, info.result);
  a.solver.edge(value, a.starNode(map));
  const ObjectId pair = a.arrayOf(info.site.where, {key, value});
  a.solver.add(a.property(map, a.known.value).node, pair);
  a.solver.listen(key, [&a, map, value](const Arrival& name) {
    a.solver.edge(value, a.property(map, a.names.of("%key:" + std::to_string(name.value))).node);
  });
  a.whenEmpty(key, [&a, map, value] { a.solver.edge(value, a.property(map, a.names.of("%key:?")).node); });
}

void mapGet(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const ObjectId map = info.selfValue;
  const NodeId result = info.result;
  const NodeId key = arg(a, info, 0);
  a.solver.listen(key, [&a, map, result](const Arrival& name) {
    if (name.value == kUnknown) return a.solver.edge(a.starNode(map), result);
    a.solver.edge(a.property(map, a.names.of("%key:" + std::to_string(name.value))).node, result);
  });
  a.solver.edge(a.property(map, a.names.of("%key:?")).node, result);
  if (a.object(map).b == 1) a.solver.add(result, kUnknown);  // what was stored in an earlier run
  a.whenEmpty(key, [&a, map, result] { a.solver.edge(a.starNode(map), result); });
}

void mapForEach(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const CallInfo copy = info;
  const ObjectId map = info.selfValue;
  const NodeId callback = arg(a, info, 0);
  a.solver.listen(a.property(map, a.known.value).node, [&a, copy, callback](const Arrival& element) {
    NodeId value = a.single(element.value);
    NodeId key = 0;
    if (isObject(element.value) && a.object(element.value).cls == Class::array) {
      value = a.readNode(element.value, a.names.of("1"));
      key = a.readNode(element.value, a.names.of("0"));
    }
    a.invoke(copy, callback, 0, {value, key, copy.self}, 0, element.value);
  });
}

void mapPart(Analysis& a, const CallInfo& info, const char* index) {
  if (!isObject(info.selfValue)) return;
  const ObjectId iterator = a.newObject(Class::iterator, info.site.where);
  a.solver.add(info.result, iterator);
  const NodeId values = a.property(iterator, a.known.value).node;
  a.solver.listen(a.property(info.selfValue, a.known.value).node, [&a, values, index](const Arrival& element) {
    if (isObject(element.value) && a.object(element.value).cls == Class::array && index)
      a.solver.edge(a.readNode(element.value, a.names.of(index)), values);
    else
      a.solver.add(values, element.value);
  });
}

void mapValues(Analysis& a, const CallInfo& info) {
  mapPart(a, info, "1");
}
void mapKeys(Analysis& a, const CallInfo& info) {
  mapPart(a, info, "0");
}
void mapEntries(Analysis& a, const CallInfo& info) {
  mapPart(a, info, nullptr);
}

void newSet(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::map, info.site.where);
  a.solver.add(info.result, made);
  a.solver.edge(a.elementsOf(info.site.where, arg(a, info, 0)), a.property(made, a.known.value).node);
}

void setAdd(Analysis& a, const CallInfo& info) {
  if (isObject(info.selfValue)) a.solver.edge(arg(a, info, 0), a.property(info.selfValue, a.known.value).node);
  a.solver.edge(info.self, info.result);
}

void newWeakRef(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::map, info.site.where);
  a.solver.edge(arg(a, info, 0), a.property(made, a.known.value).node);
  a.solver.add(info.result, made);
}

void deref(Analysis& a, const CallInfo& info) {
  if (isObject(info.selfValue)) a.solver.edge(a.property(info.selfValue, a.known.value).node, info.result);
}

void storageSet(Analysis& a, const CallInfo& info) {
  mapSet(a, info);
}

const Row kRows[] = {
    {"Map", newMap},
    {"WeakMap", newMap},
    {"Map#set", mapSet},
    {"Map#get", mapGet},
    {"Map#has", none},
    {"Map#forEach", mapForEach},
    {"Map#values", mapValues},
    {"Map#keys", mapKeys},
    {"Map#entries", mapEntries},
    {"Map#add", setAdd},
    {"Map#deref", deref},
    {"Map#@@iterator", mapEntries},
    {"Map#setItem", storageSet},
    {"Map#getItem", mapGet},
    {"Set", newSet},
    {"WeakSet", newSet},
    {"WeakRef", newWeakRef},
};

}  // namespace

void addCollectionModels(Analysis& analysis) {
  addRows(analysis, kRows);
}

}  // namespace flow
