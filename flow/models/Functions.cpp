// Models: what the language itself brings: functions and Reflect. Test: tests/flow/Analysis_test.cpp.

#include <cstdlib>
#include <cstring>

#include "flow/models/Models.h"

namespace flow {
namespace {

// What a list holds behind its first place.
NodeId behindFirst(Analysis& a, Where where, NodeId list) {
  const NodeId result = a.solver.make(where, Step::none);
  objectsIn(a, list, [&a, where, result](ObjectId of) {
    const ObjectId made = a.newObject(Class::array, where);
    if (a.object(of).cls == Class::array && a.object(of).b > 0) a.object(made).b = a.object(of).b - 1;
    a.watch(of, [&a, made](Name name, NodeId node) {
      const std::string& text = a.names.text(name);
      if (text.empty() || text[0] < '0' || text[0] > '9' || text == "0") return;
      const long index = std::strtol(text.c_str(), nullptr, 10);
      a.solver.edge(node, a.defineProperty(made, a.names.of(std::to_string(index - 1))));
    });
    a.solver.edge(a.starNode(of), a.starNode(made));
    a.solver.add(result, made);
  });
  return result;
}

Args withoutFirst(Analysis& a, const CallInfo& info) {
  Args args = a.makeArgs({});
  if (!info.args->nodes.empty() && info.args->isSpread[0]) {
    args->nodes.push_back(behindFirst(a, info.site.where, info.args->nodes[0]));
    args->isSpread.push_back(true);
  }
  for (std::size_t i = 1; i < info.args->nodes.size(); ++i) {
    args->nodes.push_back(info.args->nodes[i]);
    args->isSpread.push_back(info.args->isSpread[i]);
  }
  return args;
}

// The receiver of a call is one value where it can be, so that methods are told apart by it.
void callOn(Analysis& a, const CallInfo& info, NodeId function, NodeId self, const Args& args, NodeId result) {
  const Site site = info.site;
  if (self == 0) return a.call(site, function, self, args, result);
  a.solver.listen(function, [&a, site, self, args, result, function](const Arrival& callee) {
    if (isObject(callee.value) && a.object(callee.value).cls != Class::function)
      return a.callValue(site, callee.value, self, kUnknown, args, result, false, function, callee.level);
    const Value value = callee.value;
    const std::uint8_t level = callee.level;
    a.solver.listen(self, [&a, site, value, level, args, result, function](const Arrival& receiver) {
      const Value one = isObject(receiver.value) ? receiver.value : kUnknown;
      a.callValue(site, value, a.single(receiver.value), one, args, result, false, function, level);
    });
    a.whenEmpty(self, [&a, site, value, level, args, result, function] {
      a.callValue(site, value, 0, kUnknown, args, result, false, function, level);
    });
  });
}

void natively(Analysis& a, const CallInfo& info, NodeId self, const Args& args) {
  // A method of the language on a receiver that is given: [].slice.call(list).
  const CallInfo copy = info;
  a.solver.listen(info.self, [&a, copy, self, args](const Arrival& function) {
    if (!isObject(function.value) || a.object(function.value).cls != Class::native) return;
    const std::uint32_t native = a.object(function.value).a;
    const Value callee = function.value;
    a.solver.listen(self, [&a, copy, args, native, callee](const Arrival& receiver) {
      CallInfo own = copy;
      own.self = a.single(receiver.value);
      own.selfValue = receiver.value;
      own.args = args;
      own.callee = callee;
      if (a.nativeTable[native]) a.nativeTable[native](a, own);
    });
  });
}

// The functions that a method of functions is called on, but those of the language.
NodeId codeIn(Analysis& a, const CallInfo& info) {
  const NodeId code = fresh(a, info);
  const NodeId self = info.self;
  a.solver.listen(self, [&a, code, self](const Arrival& function) {
    if (isObject(function.value) && a.object(function.value).cls != Class::native)
      a.solver.add(code, function.value, self, function.level);
  });
  return code;
}

void functionCall(Analysis& a, const CallInfo& info) {
  const Args args = withoutFirst(a, info);
  const NodeId self = arg(a, info, 0);
  callOn(a, info, codeIn(a, info), self, args, info.result);
  natively(a, info, self, args);
}

Args spreadOf(const Analysis& a, NodeId list) {
  Args args = a.makeArgs({list});
  args->isSpread[0] = true;
  return args;
}

void functionApply(Analysis& a, const CallInfo& info) {
  const NodeId list = arg(a, info, 1);
  const Args args = list ? spreadOf(a, list) : a.makeArgs({});
  const NodeId self = arg(a, info, 0);
  callOn(a, info, codeIn(a, info), self, args, info.result);
  natively(a, info, self, args);
}

void makeBound(Analysis& a, const CallInfo& info, NodeId function, NodeId self, const Args& args) {
  BoundCall bound;
  bound.target = function;
  bound.self = self;
  bound.args = args;
  a.bounds.push_back(bound);
  a.solver.add(info.result,
               a.newObject(Class::bound, info.site.where, static_cast<std::uint32_t>(a.bounds.size() - 1)));
}

void functionBind(Analysis& a, const CallInfo& info) {
  makeBound(a, info, info.self, arg(a, info, 0), withoutFirst(a, info));
}

void reflectApply(Analysis& a, const CallInfo& info) {
  CallInfo own = info;
  own.self = arg(a, info, 0);
  const Args args = spreadOf(a, arg(a, info, 2));
  callOn(a, own, codeIn(a, own), arg(a, info, 1), args, info.result);
  natively(a, own, arg(a, info, 1), args);
  a.handed.push_back({info.site, own.self, a.makeArgs({arg(a, info, 1)})});
}

void reflectConstruct(Analysis& a, const CallInfo& info) {
  a.call(info.site, arg(a, info, 0), 0, spreadOf(a, arg(a, info, 1)), info.result, true);
}

void reflectGet(Analysis& a, const CallInfo& info) {
  const NodeId key = arg(a, info, 1);
  if (key) a.read(info.site.where, info.site.act, arg(a, info, 0), key, 0, info.result);
}

void reflectSet(Analysis& a, const CallInfo& info) {
  const NodeId key = arg(a, info, 1);
  if (key) a.write(info.site.where, info.site.act, arg(a, info, 0), key, 0, arg(a, info, 2));
}

const Row kRows[] = {
    {"Function#call", functionCall}, {"Function#apply", functionApply},
    {"Function#bind", functionBind}, {"Reflect", none},
    {"Reflect.apply", reflectApply}, {"Reflect.construct", reflectConstruct},
    {"Reflect.get", reflectGet},     {"Reflect.set", reflectSet},
};

}  // namespace

void addFunctionModels(Analysis& analysis) {
  addRows(analysis, kRows);
}

}  // namespace flow
