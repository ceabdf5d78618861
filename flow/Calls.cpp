// Calls: links calls to functions as these come to where they are called, each function read anew for each way to it as
// far as the budget goes. Test: tests/flow/Analysis_test.cpp.

#include <algorithm>

#include "flow/Analysis.h"

namespace flow {
namespace {

// Functions of so many nodes are read once for each call, up to a depth; those of so many once for each receiver.
constexpr std::uint32_t kSmall = 400;
constexpr std::uint32_t kMedium = 6000;
constexpr std::uint32_t kMaxDepth = 9;
constexpr std::uint32_t kMaxRecursion = 2;
constexpr std::uint32_t kMaxSmallActs = 100;  // of one function
constexpr std::uint32_t kMaxModelActs = 500;  // of a function of a model: these hand names and callbacks on for all
constexpr std::uint32_t kMaxMediumActs = 24;
constexpr std::size_t kMaxActs = 12'000;
constexpr std::uint32_t kMaxParted = 24;  // texts that a function that takes them apart is read for

class Key {
 public:
  Key& add(std::uint64_t part) {
    hash_ = (hash_ ^ part) * 0x9E3779B97F4A7C15U;
    hash_ ^= hash_ >> 29;
    return *this;
  }
  std::uint64_t get() const { return hash_; }

 private:
  std::uint64_t hash_ = 0x1234567;
};

}  // namespace

Args Analysis::makeArgs(std::vector<NodeId> nodes) const {
  auto args = std::make_shared<Arguments>();
  args->isSpread.assign(nodes.size(), false);
  args->nodes = std::move(nodes);
  return args;
}

NodeId Analysis::argument(const Args& args, std::size_t index, Where where) {
  for (std::size_t i = 0; i < args->nodes.size(); ++i) {
    if (!args->isSpread[i]) {
      if (i == index) return args->nodes[i];
      continue;
    }
    if (index < i) return 0;
    const NodeId element = solver.make(where, Step::none);
    const Name at = names.of(std::to_string(index - i));
    // Several lists one after the other: any of their values.
    const bool isOnly = i + 1 == args->nodes.size();
    solver.listen(args->nodes[i], [this, where, at, element, isOnly](const Arrival& list) {
      if (!isObject(list.value)) return;
      if (isOnly && (objects[list.value].cls == Class::array || objects[list.value].cls == Class::jquery))
        solver.edge(readNode(list.value, at), element);
      else
        elementsOfValue(where, list.value, element);
    });
    for (std::size_t later = i + 1; later < args->nodes.size(); ++later) {
      if (args->isSpread[later])
        solver.edge(elementsOf(where, args->nodes[later]), element);
      else
        solver.edge(args->nodes[later], element);
    }
    return element;
  }
  return 0;
}

void Analysis::call(const Site& site, NodeId callee, NodeId self, const Args& args, NodeId target, bool isNew) {
  solver.listen(callee, [=](const Arrival& function) {
    callValue(site, function.value, self, kUnknown, args, target, isNew, callee, function.level);
  });
}

// A list that nobody knows, from a network mostly: what is made of its elements is known all the same.
void Analysis::mapUnknown(const Site& site, const Args& args, NodeId target) {
  const ObjectId list = newObject(Class::array, site.where);
  solver.add(starNode(list), kUnknown);
  callValue(site, nativeObject("Array#map"), single(list), list, args, target, false, 0, 0);
}

void Analysis::callMember(const Site& site, NodeId of, NodeId key, Name name, const Args& args, NodeId target) {
  const auto callNamed = [=](const Arrival& receiver, Name method, std::uint8_t level) {
    if (isObject(receiver.value) && objects[receiver.value].cls == Class::proxy) {
      const NodeId got = solver.make(site.method, Step::none);
      readValue(site.method, site.act, receiver.value, of, level, method, got);
      call(site, got, single(receiver.value), args, target);
      return;
    }
    const NodeId node = readNode(receiver.value, method);
    if (node == 0) return;
    const Value value = receiver.value;
    NodeId self = single(value);
    if (isObject(value) && objects[value].cls == Class::pluginMethod) {  // whose way is to be told
      self = solver.make(site.where, Step::none);
      solver.add(self, value, of, receiver.level);
    }
    solver.listen(node, [=](const Arrival& function) {
      if (isObject(function.value) && objects[function.value].cls == Class::accessor) {
        const NodeId got = solver.make(site.method, Step::none);
        call({site.method, site.method, site.act, method}, objects[function.value].a, self, makeArgs({}), got);
        call(site, got, self, args, target);
        return;
      }
      const bool isOwn = isObject(function.value) && objects[function.value].cls == Class::pluginMethod;
      if (isOwn)
        record(site, objects[function.value].a, objects[function.value].b, of, value, std::max(level, function.level),
               args, key);
      else
        callValue(site, function.value, self, value, args, target, false, node, std::max(level, function.level));
    });
  };
  if (key == 0) {
    solver.listen(of, [=](const Arrival& receiver) { callNamed(receiver, name, receiver.level); });
    if (names.text(name) == "map" && !args->nodes.empty()) whenEmpty(of, [=] { mapUnknown(site, args, target); });
    return;
  }
  solver.listen(of, [=](const Arrival& receiver) {
    if (isObject(receiver.value) && objects[receiver.value].cls == Class::element) {
      Recorded open;
      open.site = placeOutsideModels(site);
      open.element = receiver.value;
      open.from = of;
      open.value = receiver.value;
      open.level = receiver.level;
      open.args = makeArgs({key});
      open.isNameKnown = false;
      recorded.push_back(open);
    }
    solver.listen(key, [=](const Arrival& by) {
      if (isText(by.value)) return callNamed(receiver, nameIn(by.value), std::max(receiver.level, by.level));
      const NodeId any = solver.make(site.method, Step::none);
      readUnknown(receiver.value, any);
      call(site, any, single(receiver.value), args, target);
    });
    const Value value = receiver.value;
    if (!isObject(value) || objects[value].cls == Class::element || objects[value].cls == Class::window) return;
    whenEmpty(key, [=] {
      const NodeId any = solver.make(site.method, Step::none);
      readUnknown(value, any);
      call(site, any, single(value), args, target);
    });
  });
}

void Analysis::callValue(const Site& site, Value callee, NodeId self, Value selfValue, const Args& args, NodeId target,
                         bool isNew, NodeId from, std::uint8_t level) {
  if (!isObject(callee)) return;
  const Object& function = objects[callee];
  switch (function.cls) {
    case Class::function:
      if (isNew) {
        const std::uint64_t key =
            Key().add(site.where.unit).add(site.where.offset).add(site.act).add(site.salt).add(callee).add(77).get();
        const auto found = objectByKey.find(key);
        if (found != objectByKey.end()) {
          solver.add(target, found->second);
          return construct(site, callee, single(found->second), found->second, args, target);
        }
        const ObjectId made = newObject(Class::plain, site.where);
        objectByKey.emplace(key, made);
        instancesOf.emplace(made, callee);
        solver.edge(readNode(callee, known.prototype), protoNode(made));
        solver.add(target, made);
        return construct(site, callee, single(made), made, args, target);
      }
      return callFunction(site, callee, self, selfValue, args, target);
    case Class::native:
      if (const Native native = nativeTable[function.a]) {
        CallInfo info;
        info.site = site;
        info.self = self;
        info.selfValue = selfValue;
        info.args = args;
        info.result = target;
        info.isNew = isNew;
        info.callee = callee;
        native(*this, info);
      }
      return;
    case Class::bound: {
      const BoundCall bound = bounds[function.a];
      Args all = std::make_shared<Arguments>(*bound.args);
      all->nodes.insert(all->nodes.end(), args->nodes.begin(), args->nodes.end());
      all->isSpread.insert(all->isSpread.end(), args->isSpread.begin(), args->isSpread.end());
      return call(site, bound.target, bound.self, all, target, isNew);
    }
    case Class::pluginMethod:
      return record(site, function.a, function.b, from, callee, level, args);
    case Class::proxy: {
      const NodeId traps = solver.make(site.where, Step::none);
      read(site.where, site.act, function.b, 0, known.apply, traps);
      call(site, traps, function.b, makeArgs({function.a, self, single(arrayOf(site.where, args->nodes))}), target);
      return call(site, function.a, self, args, target, isNew);
    }
    default:
      return;
  }
}

// The number of the first parameter that a function takes apart and puts together again, or kNone:
// word.charAt(0).toUpperCase() + word.slice(1). Read for several words at once, it would make what none of them makes.
std::uint32_t Analysis::partedParameter(std::uint32_t unitIndex, DefIndex defIndex) {
  const std::uint64_t key = static_cast<std::uint64_t>(unitIndex) << 32 | defIndex;
  const auto found = partedParameters.find(key);
  if (found != partedParameters.end()) return found->second;
  std::uint32_t& parted = partedParameters[key] = kNone;
  const Unit& unit = units[unitIndex];
  const Def& def = unit.defs[defIndex];
  if (unit.nodes.empty() || def.parameters == 0 || unit.nodes[def.ast].last - def.ast > kSmall) return parted;
  std::map<std::uint32_t, std::pair<std::uint32_t, std::uint32_t>> uses;  // by slot: all, and those of a part of it
  bool doesJoin = false;
  for (Ast ast = def.ast + 1; ast < unit.nodes[def.ast].last; ++ast) {
    const Node& node = unit.nodes[ast];
    doesJoin = doesJoin || (node.marks & kPlus) != 0 || node.kind == Kind::templateString;
    if (node.kind != Kind::identifier || unit.link[ast] >= unit.refs.size()) continue;
    const VariableRef& ref = unit.refs[unit.link[ast]];
    if (ref.def != defIndex || ref.isWrite) continue;
    ++uses[ref.slot].first;
    if (node.field == Field::object) ++uses[ref.slot].second;
  }
  std::uint32_t index = 0;
  const bool isList = unit.nodes[def.parameters].kind == Kind::formalParameters;
  const Ast last = isList ? unit.nodes[def.parameters].last : def.parameters + 1;
  for (Ast child = isList ? def.parameters + 1 : def.parameters; doesJoin && child < last && parted == kNone;
       child = unit.nodes[child].last, ++index) {
    if (unit.nodes[child].kind != Kind::identifier || unit.link[child] >= unit.refs.size()) continue;
    const auto use = uses.find(unit.refs[unit.link[child]].slot);
    if (use != uses.end() && use->second.first > 1 && use->second.second > 0) parted = index;
  }
  return parted;
}

std::uint32_t Analysis::recursionOf(const Site& site, const Closure& closure) const {
  std::uint32_t depth = 0;
  std::uint32_t recursion = 0;
  for (ActId at = site.act; at != kNobody && depth <= kMaxDepth; at = acts[at].caller, ++depth)
    if (acts[at].unit == closure.unit && acts[at].def == closure.def) ++recursion;
  return recursion;
}

void Analysis::callFunction(const Site& site, ObjectId function, NodeId self, Value selfValue, const Args& args,
                            NodeId target) {
  const Closure& closure = closures[objects[function].a];
  std::uint32_t parted = closure.klass == kNone ? partedParameter(closure.unit, closure.def) : kNone;
  // What calls itself again and again is told apart by what it is given first: modules that ask for modules.
  const bool isAgain = parted == kNone && closure.klass == kNone && recursionOf(site, closure) >= kMaxRecursion;
  if (isAgain) parted = 0;
  const bool isOpen = parted >= args->nodes.size() || args->nodes[parted] == 0 ||
                      std::find(args->isSpread.begin(), args->isSpread.end(), true) != args->isSpread.end();
  if (isOpen) return construct(site, function, self, selfValue, args, target);
  const NodeId whole = args->nodes[parted];
  const auto callWith = [this, site, function, self, selfValue, args, target, parted](NodeId part, std::uint32_t salt) {
    const Args own = std::make_shared<Arguments>(*args);
    own->nodes[parted] = part;
    Site made = site;
    made.salt = site.salt * 31 + salt;
    construct(made, function, self, selfValue, own, target);
  };
  const NodeId others = solver.make(site.where, Step::none);
  const auto count = std::make_shared<std::uint32_t>(0);
  solver.listen(whole, [this, callWith, others, whole, count, site, isAgain](const Arrival& value) {
    const bool isOne = isAgain ? value.value != kUnknown : isText(value.value) && !isNumber(value.value);
    if (!isOne || ++*count > kMaxParted) {
      if (solver.isEmpty(others)) callWith(others, 0);
      return solver.add(others, value.value, whole, value.level);
    }
    const NodeId one = solver.make(site.where, Step::none);
    solver.add(one, value.value, whole, value.level);
    callWith(one, value.value);
  });
  whenEmpty(whole, [callWith, others] { callWith(others, 0); });
}

void Analysis::construct(const Site& site, ObjectId function, NodeId self, Value selfValue, const Args& args,
                         NodeId target) {
  const Closure closure = closures[objects[function].a];
  if (closure.klass != kNone) {
    closures[objects[function].a].isEntered = true;
    const ClassInfo klass = classes[closure.klass];
    for (const ClassField& field : klass.fields) {
      if (field.def == kNone) continue;
      const ObjectId initial = closureObject(klass.unit, field.def, klass.env, site.where);
      Site own = site;
      own.salt = field.def + 1000;
      const NodeId value =
          solver.make({klass.unit, units[klass.unit].nodes[units[klass.unit].defs[field.def].ast].begin},
                      Step::property, field.name);
      const ActId act = enter(own, initial, selfValue, makeArgs({}));
      bind(act, self, makeArgs({}), site.where);
      solver.edge(acts[act].result, value);
      write(site.where, act, self, field.key, field.name, value);
    }
    if (klass.constructor == kNobody) {
      // A class that may inherit from itself: once for each object.
      const std::uint64_t key = Key()
                                    .add(site.where.unit)
                                    .add(site.where.offset)
                                    .add(site.act)
                                    .add(site.salt)
                                    .add(function)
                                    .add(selfValue)
                                    .add(82)
                                    .get();
      if (klass.heritage != 0 && inheritedBy.insert(key).second)
        solver.listen(klass.heritage, [=](const Arrival& base) {
          if (isObject(base.value) && objects[base.value].cls == Class::function)
            construct(site, base.value, self, selfValue, args, 0);
        });
      return;
    }
    function = klass.constructor;
  }
  const ActId act = enter(site, function, selfValue, args);
  if (act == kNobody) return;
  bind(act, self, args, site.where);
  const Def& def = units[acts[act].unit].defs[acts[act].def];
  if (def.isGenerator) {
    const std::uint64_t key = Key().add(act).add(site.where.offset).add(78).get();
    if (!objectByKey.count(key)) objectByKey[key] = newObject(Class::iterator, site.where);
    const ObjectId iterator = objectByKey[key];
    solver.edge(acts[act].yielded, defineProperty(iterator, known.value));
    solver.edge(acts[act].result, defineProperty(iterator, names.of("%returned")));
    objects[iterator].a = acts[act].sent;
    solver.add(target, iterator);
  } else if (def.isAsync) {
    const std::uint64_t key = Key().add(act).add(79).get();
    if (!objectByKey.count(key)) {
      const ObjectId promise = newObject(Class::promise, site.where);
      objectByKey[key] = promise;
      const NodeId resolved = defineProperty(promise, known.resolved);
      solver.listen(acts[act].result, [this, resolved](const Arrival& value) {
        if (isObject(value.value) && objects[value.value].cls == Class::promise)
          solver.edge(property(value.value, known.resolved).node, resolved);
        else
          solver.add(resolved, value.value, 0, value.level);
      });
    }
    solver.add(target, objectByKey[key]);
  } else {
    solver.edge(acts[act].result, target);
  }
}

ActId Analysis::enter(const Site& site, ObjectId function, Value selfValue, const Args& args) {
  Closure& closure = closures[objects[function].a];
  closure.isEntered = true;
  const Unit& unit = units[closure.unit];
  const Def& def = unit.defs[closure.def];
  const std::uint32_t size = unit.nodes.empty() ? 0 : unit.nodes[def.ast].last - def.ast;
  const std::uint64_t code = static_cast<std::uint64_t>(closure.unit) << 32 | closure.def;
  std::uint32_t& count = actsOfDef[code];

  std::uint32_t depth = 0;
  std::uint32_t recursion = 0;
  for (ActId at = site.act; at != kNobody && depth <= kMaxDepth; at = acts[at].caller, ++depth)
    if (acts[at].unit == closure.unit && acts[at].def == closure.def) ++recursion;

  Key key;
  key.add(function);
  // What is left when the budget is half spent is read once for all calls, so that all of it is read.
  const bool isRoomy = acts.size() < kMaxActs && !solver.isHalfSpent();
  const std::uint32_t most = unit.isModel ? kMaxModelActs : kMaxSmallActs;
  bool isOwn = true;
  if (size <= kSmall && depth < kMaxDepth && recursion < kMaxRecursion && count < most && isRoomy) {
    key.add(site.where.unit)
        .add(site.where.offset)
        .add(site.act)
        .add(site.salt)
        .add(isObject(selfValue) ? selfValue : 0);
  } else {
    isOwn = false;
    if (size <= kMedium && count < kMaxMediumActs + most && isRoomy) {
      key.add(1).add(isObject(selfValue) && objects[selfValue].cls != Class::window ? selfValue : 0);
      if (args && size <= kSmall) {
        for (std::size_t i = 0; i < args->nodes.size() && i < 3; ++i) {
          const auto& values = solver.values(args->nodes[i]);
          key.add(values.size() == 1 && (i == 0 || isText(values[0].value)) ? values[0].value : 0);
        }
      }
    }
  }
  const auto found = actByKey.find(key.get());
  if (found != actByKey.end()) return found->second;
  ++count;

  acts.emplace_back();
  const auto id = static_cast<ActId>(acts.size() - 1);
  actByKey.emplace(key.get(), id);
  Activation& act = acts.back();
  act.unit = closure.unit;
  act.def = closure.def;
  act.env = closure.env;
  act.caller = isOwn ? site.act : kNobody;
  act.closure = function;
  act.calledAt = site.where;
  act.calledAtMethod = site.method;
  act.calledIn = site.act;
  act.realm = closure.env != kNobody ? acts[closure.env].realm : realmOf(site.act);
  // What the browser and libraries call is given more than models say.
  if (isOwn && site.act != kNobody && site.salt == 0) {
    const bool isSpread = std::find(args->isSpread.begin(), args->isSpread.end(), true) != args->isSpread.end();
    if (!isSpread) act.argumentCount = static_cast<int>(args->nodes.size());
    act.isInstance = isObject(selfValue) && instancesOf.count({selfValue, function}) != 0;
  }
  build(id);
  return id;
}

void Analysis::bind(ActId id, NodeId self, const Args& args, Where where) {
  if (id == kNobody) return;
  const Activation& act = acts[id];
  const Unit& unit = units[act.unit];
  const Def& def = unit.defs[act.def];
  if (def.what != Def::What::arrow && def.what != Def::What::loopBody) solver.edge(self, act.self);
  Ast child = def.parameters ? def.parameters + 1 : 0;
  const bool isList = def.parameters && unit.nodes[def.parameters].kind == Kind::formalParameters;
  for (std::size_t i = 0; i < act.parameters.size(); ++i) {
    const bool isRest = isList && child != 0 && unit.nodes[child].kind == Kind::restPattern;
    if (isRest) {
      std::vector<NodeId> rest;
      bool isSpread = false;
      for (std::size_t k = 0; k < args->nodes.size(); ++k)
        isSpread = isSpread || args->isSpread[k];
      for (std::size_t k = i; k < std::max<std::size_t>(args->nodes.size(), isSpread ? i + 6 : 0); ++k)
        rest.push_back(argument(args, k, where));
      const ObjectId array = arrayOf(where, rest);
      if (isSpread) {
        objects[array].b = 0;
        for (std::size_t k = 0; k < args->nodes.size(); ++k)
          if (args->isSpread[k]) solver.edge(elementsOf(where, args->nodes[k]), starNode(array));
      }
      solver.add(act.parameters[i], array);
    } else {
      solver.edge(argument(args, i, where), act.parameters[i]);
    }
    if (isList && child != 0) child = unit.nodes[child].last;
  }
  if (act.argumentsArray != kNobody) {
    bool isSpread = false;
    for (std::size_t k = 0; k < args->nodes.size(); ++k) {
      if (args->isSpread[k]) {
        isSpread = true;
        for (std::size_t n = 0; n < 5; ++n)
          solver.edge(argument(args, k + n, where),
                      defineProperty(act.argumentsArray, names.of(std::to_string(k + n))));
        break;
      }
      solver.edge(args->nodes[k], defineProperty(act.argumentsArray, names.of(std::to_string(k))));
    }
    (void)isSpread;
  }
}

// What a model calls by a name of its own is none of the application's calls.
bool Analysis::isSpelledInModel(const Site& site, const std::string& method) const {
  if (site.method.unit >= units.size() || !units[site.method.unit].isModel) return false;
  return units[site.method.unit].text.compare(site.method.offset, method.size(), method) == 0;
}

void Analysis::record(const Site& site, ObjectId element, Name method, NodeId from, Value value, std::uint8_t level,
                      const Args& args, NodeId key) {
  if (recorded.size() > 200'000) return;
  Recorded made;
  if (isSpelledInModel(site, names.text(method))) return;
  made.site = placeOutsideModels(site);
  if (made.site.where.unit < units.size() && units[made.site.where.unit].isModel) return;
  made.element = element;
  made.method = method;
  made.from = from;
  made.value = value;
  made.level = level;
  made.args = args;
  made.key = key;
  if (names.text(method) == "Execute" && args) made.first = argument(args, 0, site.where);
  recorded.push_back(made);
}

void Analysis::invoke(const CallInfo& info, NodeId callback, NodeId self, std::vector<NodeId> nodes, NodeId target,
                      std::uint32_t salt) {
  Site site = info.site;
  site.salt = site.salt * 31 + salt + 1;
  call(site, callback, self, makeArgs(std::move(nodes)), target);
}

ObjectId Analysis::closureObject(std::uint32_t unit, DefIndex def, ActId env, Where where) {
  const std::uint64_t key = Key().add(unit).add(def).add(env).add(80).get();
  const auto found = objectByKey.find(key);
  if (found != objectByKey.end()) return found->second;
  Closure closure;
  closure.unit = unit;
  closure.def = def;
  closure.env = env;
  closures.push_back(closure);
  const ObjectId made = newObject(Class::function, where, static_cast<std::uint32_t>(closures.size() - 1));
  objectByKey.emplace(key, made);
  closureObjects.push_back(made);
  return made;
}

ActId Analysis::runScript(std::uint32_t unit, std::uint32_t realm, NodeId self, NodeId scope) {
  if (!units[unit].isModel) enterFile(realm, units[unit].file);
  acts.emplace_back();
  const auto id = static_cast<ActId>(acts.size() - 1);
  Activation& act = acts.back();
  act.unit = unit;
  act.def = 0;
  act.scope = scope;
  act.realm = realm;
  act.self = self;
  build(id);
  return id;
}

void Analysis::runText(const std::string& text, const Where& where, std::uint32_t realm, NodeId target, ActId) {
  if (text.size() < 3 || text.size() > 200'000 || units.size() > 4000) return;
  std::uint32_t file = 0;
  std::uint32_t base = 0;
  if (where.unit < units.size()) {
    file = units[where.unit].file;
    base = units[where.unit].base + (units[where.unit].isExact ? where.offset : 0);
  }
  const std::uint32_t unit = unitOfText(text, file, base, false, false);
  if (unit == kNone) return;
  const std::uint64_t key = Key().add(unit).add(realm).add(81).get();
  if (!actByKey.count(key)) {
    const ActId made = runScript(unit, realm, single(realms[realm].window));
    actByKey[key] = made;
  }
  solver.edge(acts[actByKey[key]].result, target);
}

}  // namespace flow
