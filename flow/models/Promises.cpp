// Models: what the language itself brings: iterators, promises and symbols. Test: tests/flow/Analysis_test.cpp.

#include <cstring>

#include "flow/models/Models.h"

namespace flow {
namespace {

void iteratorNext(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const ObjectId step = a.newObject(Class::plain, info.site.where);
  a.solver.edge(a.property(info.selfValue, a.known.value).node, a.defineProperty(step, a.known.value));
  a.solver.edge(a.property(info.selfValue, a.names.of("%returned")).node, a.defineProperty(step, a.known.value));
  a.solver.edge(arg(a, info, 0), a.object(info.selfValue).a);
  a.solver.add(info.result, step);
}

ObjectId newPromise(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::promise, info.site.where);
  (void)a.defineProperty(made, a.known.resolved);
  a.solver.add(info.result, made);
  return made;
}

// Values that are promises stand for what they give.
void settle(Analysis& a, NodeId value, NodeId resolved) {
  a.solver.listen(value, [&a, resolved, value](const Arrival& came) {
    if (isObject(came.value) && a.object(came.value).cls == Class::promise)
      a.solver.edge(a.property(came.value, a.known.resolved).node, resolved);
    else
      a.solver.add(resolved, came.value, value, came.level);
  });
}

void promiseThen(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const NodeId value = a.property(info.selfValue, a.known.resolved).node;
  const NodeId result = fresh(a, info);
  a.invoke(info, arg(a, info, 0), 0, {value}, result);
  a.invoke(info, arg(a, info, 1), 0, {a.property(info.selfValue, a.names.of("%rejected")).node}, result, 1);
  settle(a, result, a.property(newPromise(a, info), a.known.resolved).node);
}

void promiseCatch(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const NodeId result = fresh(a, info);
  a.invoke(info, arg(a, info, 0), 0, {a.property(info.selfValue, a.names.of("%rejected")).node}, result);
  const NodeId resolved = a.property(newPromise(a, info), a.known.resolved).node;
  settle(a, result, resolved);
  a.solver.edge(a.property(info.selfValue, a.known.resolved).node, resolved);
}

// Symbol('a') is a key of its own; Symbol.for('a') the same everywhere.
void symbolNew(Analysis& a, const CallInfo& info) {
  const std::string place = std::to_string(info.site.where.unit) + ':' + std::to_string(info.site.where.offset);
  a.solver.add(info.result, textValue(a.names.of("@@" + place)));
}

void symbolFor(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  texts(a, arg(a, info, 0),
        [&a, result](const std::string& name) { a.solver.add(result, textValue(a.names.of("@@for:" + name))); });
}

void promiseFinally(Analysis& a, const CallInfo& info) {
  a.invoke(info, arg(a, info, 0), 0, {});
  a.solver.edge(info.self, info.result);
}

void resolveIt(Analysis& a, const CallInfo& info) {
  // The promise is the object that this function was made for: see promiseNew.
  if (!isObject(info.callee)) return;
  settle(a, arg(a, info, 0), a.property(info.callee, a.known.resolved).node);
}

ObjectId resolver(Analysis& a, const CallInfo& info, NodeId resolved) {
  const ObjectId shared = a.nativeObject("%resolve");
  const ObjectId made = a.newObject(Class::native, info.site.where, a.object(shared).a);
  a.solver.edge(a.property(made, a.known.resolved).node, resolved);
  return made;
}

void promiseNew(Analysis& a, const CallInfo& info) {
  const ObjectId promise = newPromise(a, info);
  const NodeId resolve = a.single(resolver(a, info, a.property(promise, a.known.resolved).node));
  const NodeId reject = a.single(resolver(a, info, a.property(promise, a.names.of("%rejected")).node));
  a.invoke(info, arg(a, info, 0), 0, {resolve, reject});
}

void promiseResolve(Analysis& a, const CallInfo& info) {
  settle(a, arg(a, info, 0), a.property(newPromise(a, info), a.known.resolved).node);
}

void promiseReject(Analysis& a, const CallInfo& info) {
  a.solver.edge(arg(a, info, 0), a.property(newPromise(a, info), a.names.of("%rejected")).node);
}

void promiseAll(Analysis& a, const CallInfo& info) {
  const ObjectId list = a.newObject(Class::array, info.site.where);
  a.solver.add(a.property(newPromise(a, info), a.known.resolved).node, list);
  eachElement(a, info.site.where, arg(a, info, 0), [&a, list](NodeId element, std::uint32_t, Name name) {
    settle(a, element, name ? a.defineProperty(list, name) : a.starNode(list));
  });
}

void promiseAllSettled(Analysis& a, const CallInfo& info) {
  const ObjectId list = a.newObject(Class::array, info.site.where);
  a.solver.add(a.property(newPromise(a, info), a.known.resolved).node, list);
  const Where where = info.site.where;
  eachElement(a, where, arg(a, info, 0), [&a, list, where](NodeId element, std::uint32_t, Name name) {
    const ObjectId outcome = a.newObject(Class::plain, where);
    settle(a, element, a.defineProperty(outcome, a.known.value));
    a.solver.add(name ? a.defineProperty(list, name) : a.starNode(list), outcome);
  });
}

void promiseRace(Analysis& a, const CallInfo& info) {
  const NodeId resolved = a.property(newPromise(a, info), a.known.resolved).node;
  eachElement(a, info.site.where, arg(a, info, 0),
              [&a, resolved](NodeId element, std::uint32_t, Name) { settle(a, element, resolved); });
}

void promiseWithResolvers(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::plain, info.site.where);
  const ObjectId promise = a.newObject(Class::promise, info.site.where);
  a.solver.add(a.defineProperty(made, a.names.of("promise")), promise);
  a.solver.add(a.defineProperty(made, a.names.of("resolve")),
               resolver(a, info, a.property(promise, a.known.resolved).node));
  a.solver.add(info.result, made);
}

const Row kRows[] = {
    {"Iterator#next", iteratorNext},
    {"Iterator#return", iteratorNext},
    {"Promise", promiseNew},
    {"Promise.resolve", promiseResolve},
    {"Promise.reject", promiseReject},
    {"Promise.all", promiseAll},
    {"Promise.allSettled", promiseAllSettled},
    {"Promise.race", promiseRace},
    {"Promise.any", promiseRace},
    {"Promise.withResolvers", promiseWithResolvers},
    {"Promise#then", promiseThen},
    {"Promise#catch", promiseCatch},
    {"Promise#finally", promiseFinally},
    {"%resolve", resolveIt},
    {"Symbol", symbolNew},
    {"Symbol.for", symbolFor},
};

}  // namespace

void Analysis::throwRejected(NodeId promise, NodeId thrown) {
  solver.listen(promise, [this, thrown](const Arrival& value) {
    if (isObject(value.value) && objects[value.value].cls == Class::promise)
      solver.edge(property(value.value, names.of("%rejected")).node, thrown);
  });
}

NodeId Analysis::awaited(Where where, NodeId value) {
  if (value == 0) return 0;
  const NodeId made = solver.make(where, Step::none);
  settle(*this, value, made);
  // Objects with a `then` of their own.
  solver.listen(value, [this, where, made](const Arrival& came) {
    if (!isObject(came.value) || objects[came.value].cls != Class::plain) return;
    const NodeId then = readNode(came.value, known.then);
    CallInfo info;
    info.site = {where, where, kNobody, 0};
    const ObjectId resolve = resolver(*this, info, made);
    call({where, where, kNobody, 3}, then, single(came.value), makeArgs({single(resolve)}), 0);
  });
  return made;
}

void addPromiseModels(Analysis& analysis) {
  addRows(analysis, kRows);
}

}  // namespace flow
