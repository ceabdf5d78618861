// Models: what the language itself brings. Test: tests/flow/Analysis_test.cpp.

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "flow/Analysis.h"
#include "flow/Strings.h"

namespace flow {
namespace {

constexpr std::size_t kMaxJoined = 100'000;    // bytes of a text that is put together
constexpr std::size_t kMaxTexts = 64'000'000;  // bytes of all texts, past which none is put together

NodeId arg(Analysis& a, const CallInfo& info, std::size_t index) {
  return a.argument(info.args, index, info.site.where);
}

NodeId fresh(Analysis& a, const CallInfo& info) {
  return a.solver.make(info.site.where, Step::none);
}

void texts(Analysis& a, NodeId node, std::function<void(const std::string&)> take) {
  a.solver.listen(node, [&a, take](const Arrival& value) {
    if (isText(value.value)) take(a.names.text(nameIn(value.value)));
  });
}

void objectsIn(Analysis& a, NodeId node, std::function<void(ObjectId)> take) {
  a.solver.listen(node, [take](const Arrival& value) {
    if (isObject(value.value)) take(value.value);
  });
}

bool isHidden(const std::string& text) {
  return !text.empty() && text[0] == '%';
}

// ---- functions
// ----------------------------------------------------------------------------------------------------------

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

// ---- objects
// ------------------------------------------------------------------------------------------------------------

void objectAssign(Analysis& a, const CallInfo& info) {
  const NodeId to = arg(a, info, 0);
  a.solver.edge(to, info.result);
  for (std::size_t i = 1; i < info.args->nodes.size(); ++i) {
    const NodeId from =
        info.args->isSpread[i] ? a.elementsOf(info.site.where, info.args->nodes[i]) : info.args->nodes[i];
    const Site site = info.site;
    objectsIn(a, to, [&a, from, site](ObjectId target) { a.assignProperties(site.where, site.act, from, target); });
  }
}

void defineFrom(Analysis& a, const Site& site, ObjectId target, Name name, NodeId descriptor) {
  const NodeId value = a.solver.make(site.where, Step::property, name);
  a.read(site.where, site.act, descriptor, 0, a.known.value, value);
  a.solver.edge(value, a.defineProperty(target, name));
  const NodeId getter = a.solver.make(site.where, Step::none);
  const NodeId setter = a.solver.make(site.where, Step::none);
  a.read(site.where, site.act, descriptor, 0, a.known.get, getter);
  a.read(site.where, site.act, descriptor, 0, a.known.set, setter);
  const ObjectId accessor = a.newObject(Class::accessor, site.where, getter, setter);
  const auto once = std::make_shared<bool>(false);
  const auto add = [&a, once, target, name, accessor](const Arrival& function) {
    if (*once || !isObject(function.value)) return;
    *once = true;
    a.solver.add(a.defineProperty(target, name), accessor);
  };
  a.solver.listen(getter, add);
  a.solver.listen(setter, add);
}

// __defineGetter__ and __defineSetter__: the older way to the same.
template <bool isSetter>
void defineAccessor(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const ObjectId target = info.selfValue;
  const NodeId function = arg(a, info, 1);
  const Where where = info.site.where;
  texts(a, arg(a, info, 0), [&a, target, function, where](const std::string& name) {
    const NodeId none = a.solver.make(where, Step::none);
    a.solver.add(a.defineProperty(target, a.names.of(name)),
                 a.newObject(Class::accessor, where, isSetter ? none : function, isSetter ? function : none));
  });
}

void objectDefineProperty(Analysis& a, const CallInfo& info) {
  const NodeId key = arg(a, info, 1);
  const NodeId descriptor = arg(a, info, 2);
  const Site site = info.site;
  a.solver.edge(arg(a, info, 0), info.result);
  objectsIn(a, arg(a, info, 0), [&a, key, descriptor, site](ObjectId target) {
    a.solver.listen(key, [&a, target, descriptor, site](const Arrival& name) {
      if (isText(name.value)) defineFrom(a, site, target, nameIn(name.value), descriptor);
    });
  });
}

void defineAll(Analysis& a, const Site& site, ObjectId target, NodeId descriptors) {
  objectsIn(a, descriptors, [&a, site, target](ObjectId all) {
    a.watch(all, [&a, site, target](Name name, NodeId descriptor) { defineFrom(a, site, target, name, descriptor); });
  });
}

void objectDefineProperties(Analysis& a, const CallInfo& info) {
  const Site site = info.site;
  const NodeId descriptors = arg(a, info, 1);
  a.solver.edge(arg(a, info, 0), info.result);
  objectsIn(a, arg(a, info, 0), [&a, site, descriptors](ObjectId target) { defineAll(a, site, target, descriptors); });
}

void objectCreate(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::plain, info.site.where);
  a.solver.edge(arg(a, info, 0), a.protoNode(made));
  a.solver.add(info.result, made);
  if (const NodeId descriptors = arg(a, info, 1)) defineAll(a, info.site, made, descriptors);
}

void setPrototypeOf(Analysis& a, const CallInfo& info) {
  const NodeId proto = arg(a, info, 1);
  a.solver.edge(arg(a, info, 0), info.result);
  objectsIn(a, arg(a, info, 0), [&a, proto](ObjectId target) { a.solver.edge(proto, a.protoNode(target)); });
}

void getPrototypeOf(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  objectsIn(a, arg(a, info, 0), [&a, result](ObjectId of) { a.solver.edge(a.protoNode(of), result); });
}

void firstArgument(Analysis& a, const CallInfo& info) {
  a.solver.edge(arg(a, info, 0), info.result);
}
void self(Analysis& a, const CallInfo& info) {
  a.solver.edge(info.self, info.result);
}
void none(Analysis&, const CallInfo&) {}

ObjectId newArray(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::array, info.site.where);
  a.solver.add(info.result, made);
  return made;
}

// The names, values or both of an object, each at an index of its own, so that loops over them tell them apart.
enum class Parts { keys, values, entries };

void partsOf(Analysis& a, const CallInfo& info, Parts parts) {
  const ObjectId list = newArray(a, info);
  const Where where = info.site.where;
  const auto next = std::make_shared<std::uint32_t>(0);
  objectsIn(a, arg(a, info, 0), [&a, list, where, parts, next](ObjectId of) {
    if (a.object(of).cls == Class::element || a.object(of).cls == Class::window) return;
    a.watch(of, [&a, list, where, parts, next](Name name, NodeId node) {
      if (isHidden(a.names.text(name)) || *next > 400) return;
      NodeId value = node;
      if (parts != Parts::values) {
        value = a.solver.make(where, Step::value);
        a.solver.add(value, textValue(name));
      }
      if (parts == Parts::entries) {
        const ObjectId pair = a.arrayOf(where, {value, node});
        value = a.solver.make(where, Step::none);
        a.solver.add(value, pair);
      }
      a.solver.edge(value, a.defineProperty(list, a.names.of(std::to_string((*next)++))));
    });
  });
}

void objectKeys(Analysis& a, const CallInfo& info) {
  partsOf(a, info, Parts::keys);
}
void objectValues(Analysis& a, const CallInfo& info) {
  partsOf(a, info, Parts::values);
}
void objectEntries(Analysis& a, const CallInfo& info) {
  partsOf(a, info, Parts::entries);
}

// For each element of a list: its node, and a number that tells it from the others.
void eachElement(Analysis& a, Where where, NodeId list, std::function<void(NodeId, std::uint32_t, Name)> take) {
  a.solver.listen(list, [&a, where, take](const Arrival& of) {
    if (!isObject(of.value)) return;
    const Class cls = a.object(of.value).cls;
    if (cls == Class::array || cls == Class::jquery || cls == Class::plain) {
      a.watch(of.value, [&a, take](Name name, NodeId node) {
        if (!isHidden(a.names.text(name))) take(node, name + 1, name);
      });
      const NodeId star = a.starNode(of.value);
      const auto once = std::make_shared<bool>(false);
      a.solver.listen(star, [take, star, once](const Arrival&) {
        if (!*once) take(star, 0, 0);
        *once = true;
      });
      return;
    }
    const NodeId element = a.solver.make(where, Step::none);
    a.elementsOfValue(where, of.value, element);
    a.solver.listen(element,
                    [&a, take, where](const Arrival& value) { take(a.single(value.value, where), value.value, 0); });
  });
}

void fromEntries(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::plain, info.site.where);
  a.solver.add(info.result, made);
  const Site site = info.site;
  eachElement(a, site.where, arg(a, info, 0), [&a, site, made](NodeId pair, std::uint32_t, Name) {
    const NodeId key = a.solver.make(site.where, Step::none);
    const NodeId value = a.solver.make(site.where, Step::none);
    a.read(site.where, site.act, pair, 0, a.names.of("0"), key);
    a.read(site.where, site.act, pair, 0, a.names.of("1"), value);
    a.write(site.where, site.act, a.single(made), key, 0, value);
  });
}

// ---- arrays
// -------------------------------------------------------------------------------------------------------------

constexpr std::uint32_t kMaxRounds = 32;  // of a list that is gone through place by place

NodeId indexNode(Analysis& a, Name name) {
  return name ? a.single(numberValue(name)) : 0;
}

bool isKnownByPlaces(Analysis& a, Value list) {
  if (!isObject(list) || a.object(list).cls != Class::array) return false;
  const Object& of = a.object(list);
  return of.star == 0 && of.b > 0 && of.b <= kMaxRounds;
}

// What a callback gives for each element, into a list where `isKept`.
void eachCall(Analysis& a, const CallInfo& info, NodeId list, NodeId callback, std::size_t selfAt,
              std::function<void(NodeId element, NodeId result, std::uint32_t salt, Name name)> take) {
  const CallInfo copy = info;
  const NodeId self = arg(a, info, selfAt);
  eachElement(a, info.site.where, list,
              [&a, copy, callback, self, take, list](NodeId element, std::uint32_t salt, Name name) {
                const NodeId result = a.solver.make(copy.site.where, Step::none);
                a.invoke(copy, callback, self, {element, indexNode(a, name), list}, result, salt);
                if (take) take(element, result, salt, name);
              });
}

void arrayForEach(Analysis& a, const CallInfo& info) {
  eachCall(a, info, info.self, arg(a, info, 0), 1, nullptr);
}

void arrayMap(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  eachCall(a, info, info.self, arg(a, info, 0), 1, [&a, made](NodeId, NodeId result, std::uint32_t, Name name) {
    a.solver.edge(result, name ? a.defineProperty(made, name) : a.starNode(made));
  });
}

void arrayFlatMap(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  const Where where = info.site.where;
  eachCall(a, info, info.self, arg(a, info, 0), 1, [&a, made, where](NodeId, NodeId result, std::uint32_t, Name) {
    a.solver.edge(a.elementsOf(where, result), a.starNode(made));
  });
}

void arrayFilter(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  eachCall(a, info, info.self, arg(a, info, 0), 1,
           [&a, made](NodeId element, NodeId, std::uint32_t, Name) { a.solver.edge(element, a.starNode(made)); });
}

void arrayFind(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  eachCall(a, info, info.self, arg(a, info, 0), 1,
           [&a, result](NodeId element, NodeId, std::uint32_t, Name) { a.solver.edge(element, result); });
}

// Lists that are known by their places: each round is given what the one before it made.
void reduceInOrder(Analysis& a, const CallInfo& info, ObjectId list, bool isFromEnd) {
  const std::uint32_t count = a.object(list).b;
  NodeId held = arg(a, info, 1);
  for (std::uint32_t i = 0; i < count; ++i) {
    const Name index = a.names.of(std::to_string(isFromEnd ? count - 1 - i : i));
    const NodeId element = a.readNode(list, index);
    if (i == 0 && info.args->nodes.size() < 2) {
      held = element;
      continue;
    }
    const NodeId result = fresh(a, info);
    a.invoke(info, arg(a, info, 0), 0, {held, element, indexNode(a, index)}, result, index + 1);
    held = result;
  }
  a.solver.edge(held, info.result);
}

template <bool isFromEnd>
void arrayReduce(Analysis& a, const CallInfo& info) {
  if (isKnownByPlaces(a, info.selfValue)) return reduceInOrder(a, info, info.selfValue, isFromEnd);
  const NodeId held = fresh(a, info);
  const bool hasStart = info.args->nodes.size() > 1;
  a.solver.edge(arg(a, info, 1), held);
  const CallInfo copy = info;
  const NodeId callback = arg(a, info, 0);
  eachElement(a, info.site.where, info.self,
              [&a, copy, callback, held, hasStart](NodeId element, std::uint32_t salt, Name name) {
                if (!hasStart) a.solver.edge(element, held);
                const NodeId result = a.solver.make(copy.site.where, Step::none);
                a.invoke(copy, callback, 0, {held, element, indexNode(a, name)}, result, salt);
                // Texts put together in rounds are not known; objects are.
                a.solver.listen(result, [&a, held, result](const Arrival& value) {
                  if (isObject(value.value)) a.solver.add(held, value.value, result, value.level);
                });
              });
  a.solver.edge(held, info.result);
}

void arrayPush(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  for (std::size_t i = 0; i < info.args->nodes.size(); ++i) {
    const NodeId value =
        info.args->isSpread[i] ? a.elementsOf(info.site.where, info.args->nodes[i]) : info.args->nodes[i];
    a.solver.edge(value, a.starNode(info.selfValue));
  }
}

void arrayElement(Analysis& a, const CallInfo& info) {
  a.solver.edge(a.elementsOf(info.site.where, info.self), info.result);
}

// at(n), item(n): the one of that number, where it is known.
void arrayAt(Analysis& a, const CallInfo& info) {
  const NodeId index = arg(a, info, 0);
  if (index == 0 || !isObject(info.selfValue)) return arrayElement(a, info);
  const ObjectId list = info.selfValue;
  const NodeId result = info.result;
  const CallInfo copy = info;
  a.solver.listen(index, [&a, copy, list, result](const Arrival& by) {
    if (isNumber(by.value) && a.names.text(nameIn(by.value))[0] != '-')
      a.solver.edge(a.readNode(list, nameIn(by.value)), result);
    else
      arrayElement(a, copy);
  });
  a.whenEmpty(index, [&a, copy] { arrayElement(a, copy); });
}

void arrayShift(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const Class cls = a.object(info.selfValue).cls;
  if (cls == Class::array || cls == Class::jquery) a.moveElements(info.selfValue);
  a.solver.edge(a.elementsOf(info.site.where, info.self), info.result);
}

// The last of those that are known by their place, or any.
void arrayPop(Analysis& a, const CallInfo& info) {
  if (!isKnownByPlaces(a, info.selfValue)) return arrayElement(a, info);
  const ObjectId list = info.selfValue;
  a.solver.edge(a.readNode(list, a.names.of(std::to_string(a.object(list).b - 1))), info.result);
  a.solver.edge(a.starNode(list), info.result);
}

void arrayCopy(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  a.solver.edge(a.elementsOf(info.site.where, info.self), a.starNode(made));
  for (std::size_t i = 0; i < info.args->nodes.size(); ++i) {
    const NodeId value = info.args->nodes[i];
    a.solver.edge(a.elementsOf(info.site.where, value), a.starNode(made));
  }
}

// slice(1): what is known by its place moves down.
void arraySlice(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  long from = 0;
  bool isKnown = info.args->nodes.empty();
  for (const Arrival& value : a.solver.values(arg(a, info, 0))) {
    if (!isNumber(value.value)) continue;
    from = std::strtol(a.names.text(nameIn(value.value)).c_str(), nullptr, 10);
    isKnown = from >= 0;
  }
  objectsIn(a, info.self, [&a, made, from, isKnown](ObjectId of) {
    a.watch(of, [&a, made, from, isKnown](Name name, NodeId node) {
      const std::string& text = a.names.text(name);
      if (isHidden(text) || text.empty() || text[0] < '0' || text[0] > '9') return;
      const long index = std::strtol(text.c_str(), nullptr, 10);
      if (isKnown && index < from) return;
      a.solver.edge(node,
                    isKnown ? a.defineProperty(made, a.names.of(std::to_string(index - from))) : a.starNode(made));
    });
    a.solver.edge(a.starNode(of), a.starNode(made));
  });
}

void arrayConcat(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  // What is known by its place in the first list stays there.
  const Where where = info.site.where;
  const bool isInPlace = isObject(info.selfValue) && a.object(info.selfValue).cls == Class::array &&
                         a.object(info.selfValue).star == 0 && a.object(info.selfValue).b > 0;
  if (isInPlace) {
    const ObjectId from = info.selfValue;
    a.object(made).b = a.object(from).b;
    for (std::uint32_t i = 0; i < a.object(from).b; ++i)
      a.solver.edge(a.readNode(from, a.names.of(std::to_string(i))),
                    a.defineProperty(made, a.names.of(std::to_string(i))));
  } else {
    a.solver.edge(a.elementsOf(where, info.self), a.starNode(made));
  }
  for (std::size_t i = 0; i < info.args->nodes.size(); ++i) {
    const NodeId node = info.args->nodes[i];
    a.solver.listen(node, [&a, made, node, where](const Arrival& value) {
      if (isObject(value.value) && a.object(value.value).cls == Class::array)
        a.elementsOfValue(where, value.value, a.starNode(made));
      else
        a.solver.add(a.starNode(made), value.value, node, value.level);
    });
  }
}

void arrayReverse(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  // Where all places are known, they are turned round once values have come to rest.
  const ObjectId from = info.selfValue;
  if (!isObject(from)) return;
  std::vector<NodeId> nodes;
  for (std::size_t i = 0;; ++i) {
    const auto at = a.object(from).index.find(a.names.of(std::to_string(i)));
    if (at == a.object(from).index.end()) break;
    nodes.push_back(a.object(from).properties[at->second].node);
  }
  for (std::size_t i = 0; i < nodes.size(); ++i)
    a.solver.edge(nodes[nodes.size() - 1 - i], a.defineProperty(made, a.names.of(std::to_string(i))));
  if (a.object(from).star) a.solver.edge(a.starNode(from), a.starNode(made));
}

// Markup in a list whose order is not known: each part of it for itself.
void joinMarkup(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  texts(a, a.elementsOf(info.site.where, info.self), [&a, result](const std::string& text) {
    if (Analysis::isMarkup(text)) a.solver.add(result, textValue(a.names.of(text)));
  });
}

// The texts of a list that is known by its places, put together: as often as all of them are one text each.
void arrayJoin(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const CallInfo copy = info;
  const auto work = [&a, copy] {
    std::string separator = ",";
    const NodeId given = a.argument(copy.args, 0, copy.site.where);
    for (const Arrival& value : given ? a.solver.values(given) : std::vector<Arrival>())
      if (isText(value.value)) separator = a.names.text(nameIn(value.value));
    std::string text;
    const Object& of = a.object(copy.selfValue);
    for (std::size_t i = 0;; ++i) {
      const auto at = of.index.find(a.names.of(std::to_string(i)));
      if (at == of.index.end() || !of.properties[at->second].isWritten) {
        if (i == 0) joinMarkup(a, copy);
        if (i > 0) a.solver.add(copy.result, textValue(a.names.of(text)));
        break;
      }
      const auto& values = a.solver.values(of.properties[at->second].node);
      if (values.size() != 1 || !isText(values[0].value)) return joinMarkup(a, copy);
      text += (i ? separator : "") + a.names.text(nameIn(values[0].value));
    }
  };
  // Elements that come one by one would give beginnings of the text: later, when they are all there.
  a.whenEmpty(copy.result, work);
}

void arrayFrom(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  const CallInfo copy = info;
  const NodeId callback = arg(a, info, 1);
  const bool hasCallback = info.args->nodes.size() > 1;
  eachElement(a, info.site.where, arg(a, info, 0),
              [&a, copy, made, callback, hasCallback](NodeId element, std::uint32_t salt, Name name) {
                NodeId value = element;
                if (hasCallback) {
                  value = a.solver.make(copy.site.where, Step::none);
                  a.invoke(copy, callback, 0, {element, indexNode(a, name)}, value, salt);
                }
                a.solver.edge(value, name ? a.defineProperty(made, name) : a.starNode(made));
              });
}

void arrayOfArguments(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  for (std::size_t i = 0; i < info.args->nodes.size(); ++i) {
    if (info.args->isSpread[i])
      a.solver.edge(a.elementsOf(info.site.where, info.args->nodes[i]), a.starNode(made));
    else
      a.solver.edge(info.args->nodes[i], a.defineProperty(made, a.names.of(std::to_string(i))));
  }
}

void arrayFill(Analysis& a, const CallInfo& info) {
  if (isObject(info.selfValue)) a.solver.edge(arg(a, info, 0), a.starNode(info.selfValue));
  a.solver.edge(info.self, info.result);
}

void arraySplice(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  a.solver.edge(a.elementsOf(info.site.where, info.self), a.starNode(made));
  if (!isObject(info.selfValue)) return;
  for (std::size_t i = 2; i < info.args->nodes.size(); ++i)
    a.solver.edge(info.args->nodes[i], a.starNode(info.selfValue));
}

void arrayEntries(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  const Where where = info.site.where;
  eachElement(a, where, info.self, [&a, made, where](NodeId element, std::uint32_t salt, Name name) {
    const ObjectId pair = a.arrayOf(where, {indexNode(a, name), element});
    const Name at = a.names.of("e" + std::to_string(salt));
    a.solver.add(a.defineProperty(made, at), pair);
  });
}

void arraySort(Analysis& a, const CallInfo& info) {
  const NodeId elements = a.elementsOf(info.site.where, info.self);
  a.invoke(info, arg(a, info, 0), 0, {elements, elements});
  a.solver.edge(info.self, info.result);
}

// ---- maps, sets
// ---------------------------------------------------------------------------------------------------------

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

// ---- iterators, promises
// --------------------------------------------------------------------------------------------------

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

void proxyNew(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::proxy, info.site.where, arg(a, info, 0), arg(a, info, 1));
  a.solver.add(info.result, made);
}

void newWeakRef(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::map, info.site.where);
  a.solver.edge(arg(a, info, 0), a.property(made, a.known.value).node);
  a.solver.add(info.result, made);
}

void deref(Analysis& a, const CallInfo& info) {
  if (isObject(info.selfValue)) a.solver.edge(a.property(info.selfValue, a.known.value).node, info.result);
}

// ---- texts
// ------------------------------------------------------------------------------------------------------------------

// Does `work` for each way to give the receiver and up to two arguments one text each. Arguments that are not given
// are empty; those that nobody knows keep the result unknown.
using TextWork = std::string (*)(const std::string&, const std::string&, const std::string&);

void onTexts(Analysis& a, const CallInfo& info, TextWork work, Value (*as)(Name)) {
  const NodeId result = info.result;
  const NodeId first = info.args->nodes.empty() ? a.single(textValue(0)) : arg(a, info, 0);
  const NodeId second = info.args->nodes.size() < 2 ? a.single(textValue(0)) : arg(a, info, 1);
  texts(a, info.self, [&a, work, as, result, first, second](const std::string& self) {
    texts(a, first, [&a, work, as, result, second, self](const std::string& one) {
      texts(a, second, [&a, work, as, result, self, one](const std::string& two) {
        a.solver.add(result, as(a.names.of(work(self, one, two))));
      });
    });
  });
}

long number(const std::string& text, long otherwise) {
  return text.empty() ? otherwise : std::strtol(text.c_str(), nullptr, 10);
}

std::string cut(const std::string& text, long from, long to) {
  const long size = static_cast<long>(text.size());
  from = std::max(0L, std::min(from, size));
  to = std::max(from, std::min(to, size));
  return text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
}

std::string slice(const std::string& text, const std::string& from, const std::string& to) {
  const long size = static_cast<long>(text.size());
  long begin = number(from, 0);
  long end = number(to, size);
  if (begin < 0) begin += size;
  if (end < 0) end += size;
  return cut(text, begin, end);
}

std::string substring(const std::string& text, const std::string& from, const std::string& to) {
  long begin = std::max(0L, number(from, 0));
  long end = std::max(0L, number(to, static_cast<long>(text.size())));
  if (begin > end) std::swap(begin, end);
  return cut(text, begin, end);
}

std::string substr(const std::string& text, const std::string& from, const std::string& count) {
  long begin = number(from, 0);
  if (begin < 0) begin += static_cast<long>(text.size());
  return cut(text, begin, begin + number(count, static_cast<long>(text.size())));
}

std::string charAt(const std::string& text, const std::string& at, const std::string&) {
  const long begin = number(at, 0);
  return cut(text, begin, begin + 1);
}

std::string charCodeAt(const std::string& text, const std::string& at, const std::string&) {
  const std::string c = charAt(text, at, {});
  return c.empty() ? std::string() : std::to_string(static_cast<unsigned char>(c[0]));
}

std::string toUpper(const std::string& text, const std::string&, const std::string&) {
  std::string result = text;
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return result;
}

std::string toLower(const std::string& text, const std::string&, const std::string&) {
  std::string result = text;
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return result;
}

std::string trim(const std::string& text, const std::string&, const std::string&) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

std::string concat(const std::string& text, const std::string& one, const std::string& two) {
  return text + one + two;
}

std::string repeat(const std::string& text, const std::string& times, const std::string&) {
  std::string result;
  for (long i = 0; i < number(times, 0) && result.size() < 2000; ++i)
    result += text;
  return result;
}

std::string same(const std::string& text, const std::string&, const std::string&) {
  return text;
}

template <TextWork work>
void onText(Analysis& a, const CallInfo& info) {
  onTexts(a, info, work, textValue);
}

// What gives a number.
template <TextWork work>
void inText(Analysis& a, const CallInfo& info) {
  onTexts(a, info, work, numberValue);
}

std::string placeText(std::size_t place) {
  return place == std::string::npos ? "-1" : std::to_string(place);
}

std::string indexOf(const std::string& text, const std::string& part, const std::string& from) {
  return placeText(text.find(part, static_cast<std::size_t>(std::max(0L, number(from, 0)))));
}

std::string lastIndexOf(const std::string& text, const std::string& part, const std::string&) {
  return placeText(text.rfind(part));
}

void fromCharCode(Analysis& a, const CallInfo& info) {
  NodeId text = a.single(textValue(0));
  if (info.args->nodes.size() == 1 && info.args->isSpread[0]) {
    // A list that is known by its places, once it is all there.
    const CallInfo copy = info;
    a.whenEmpty(info.result, [&a, copy] {
      for (const Arrival& list : std::vector<Arrival>(a.solver.values(copy.args->nodes[0]))) {
        if (!isObject(list.value)) continue;
        std::string made;
        const Object& of = a.object(list.value);
        for (std::size_t i = 0; i < 200; ++i) {
          const auto at = of.index.find(a.names.of(std::to_string(i)));
          if (at == of.index.end()) break;
          const auto& values = a.solver.values(of.properties[at->second].node);
          if (values.size() != 1 || !isNumber(values[0].value)) return;
          appendPoint(
              static_cast<std::uint32_t>(std::strtoul(a.names.text(nameIn(values[0].value)).c_str(), nullptr, 10)),
              made);
        }
        if (!made.empty()) a.solver.add(copy.result, textValue(a.names.of(made)));
      }
    });
    return;
  }
  for (std::size_t i = 0; i < info.args->nodes.size() && i < 200; ++i) {
    const NodeId letter = fresh(a, info);
    a.solver.listen(info.args->nodes[i], [&a, letter](const Arrival& code) {
      if (!isNumber(code.value)) return;
      std::string one;
      appendPoint(static_cast<std::uint32_t>(std::strtoul(a.names.text(nameIn(code.value)).c_str(), nullptr, 10)), one);
      a.solver.add(letter, textValue(a.names.of(one)));
    });
    text = a.concatenate(info.site.where, text, letter);
  }
  a.solver.edge(text, info.result);
}

void atob(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  texts(a, arg(a, info, 0), [&a, result](const std::string& text) {
    a.solver.add(result, textValue(a.names.of(decodeDataUrl("data:;base64," + text))));
  });
}

void escapeUrl(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  texts(a, arg(a, info, 0), [&a, result](const std::string& text) {
    static const char* const kDigits = "0123456789ABCDEF";
    std::string made;
    for (const char c : text) {
      const auto byte = static_cast<unsigned char>(c);
      if (std::isalnum(byte) || std::strchr("-_.!~*'()/", c))
        made += c;
      else
        made += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    a.solver.add(result, textValue(a.names.of(made)));
  });
}

void unescapeUrl(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  texts(a, arg(a, info, 0),
        [&a, result](const std::string& text) { a.solver.add(result, textValue(a.names.of(decodePercent(text)))); });
}

void jsonParse(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  texts(a, arg(a, info, 0), [&a, copy](const std::string& text) {
    a.runText("(" + text + ")", copy.site.where, a.realmOf(copy.site.act), copy.result, copy.site.act);
  });
  // What was made a text before is what it was.
  a.solver.listen(arg(a, info, 0), [&a, copy](const Arrival& value) {
    if (isObject(value.value)) a.solver.add(copy.result, value.value, 0, value.level);
  });
}

void parseInt(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  const NodeId base = arg(a, info, 1);
  texts(a, arg(a, info, 0), [&a, result, base](const std::string& text) {
    int radix = 10;
    for (const Arrival& value : base ? a.solver.values(base) : std::vector<Arrival>())
      if (isNumber(value.value)) radix = static_cast<int>(number(a.names.text(nameIn(value.value)), 10));
    if (radix < 2 || radix > 36) return;
    a.solver.add(result, numberValue(a.names.of(std::to_string(std::strtol(text.c_str(), nullptr, radix)))));
  });
}

void storageSet(Analysis& a, const CallInfo& info) {
  mapSet(a, info);
}

struct Row {
  const char* name;
  Analysis::Native native;
};

const Row kRows[] = {
    {"Function#call", functionCall},
    {"Function#apply", functionApply},
    {"Function#bind", functionBind},
    {"Reflect", none},
    {"Reflect.apply", reflectApply},
    {"Reflect.construct", reflectConstruct},
    {"Reflect.get", reflectGet},
    {"Reflect.set", reflectSet},
    {"Reflect.ownKeys", objectKeys},
    {"Reflect.defineProperty", objectDefineProperty},
    {"Reflect.getPrototypeOf", getPrototypeOf},
    {"Reflect.setPrototypeOf", setPrototypeOf},
    {"Object", firstArgument},
    {"Object.assign", objectAssign},
    {"Object.create", objectCreate},
    {"Object.defineProperty", objectDefineProperty},
    {"Object.defineProperties", objectDefineProperties},
    {"Object.keys", objectKeys},
    {"Object.getOwnPropertyNames", objectKeys},
    {"Object.values", objectValues},
    {"Object.entries", objectEntries},
    {"Object.fromEntries", fromEntries},
    {"Object.freeze", firstArgument},
    {"Object.seal", firstArgument},
    {"Object.preventExtensions", firstArgument},
    {"Object.setPrototypeOf", setPrototypeOf},
    {"Object.getPrototypeOf", getPrototypeOf},
    {"Object#hasOwnProperty", none},
    {"Object#__defineGetter__", defineAccessor<false>},
    {"Object#__defineSetter__", defineAccessor<true>},
    {"Object#isPrototypeOf", none},
    {"Object#toString", none},
    {"Array", arrayOfArguments},
    {"Array.from", arrayFrom},
    {"Array.of", arrayOfArguments},
    {"Array.isArray", none},
    {"Array#forEach", arrayForEach},
    {"Array#map", arrayMap},
    {"Array#flatMap", arrayFlatMap},
    {"Array#filter", arrayFilter},
    {"Array#find", arrayFind},
    {"Array#findLast", arrayFind},
    {"Array#some", arrayForEach},
    {"Array#every", arrayForEach},
    {"Array#findIndex", arrayForEach},
    {"Array#reduce", arrayReduce<false>},
    {"Array#reduceRight", arrayReduce<true>},
    {"Array#push", arrayPush},
    {"Array#unshift", arrayPush},
    {"Array#pop", arrayPop},
    {"Array#shift", arrayShift},
    {"Array#at", arrayAt},
    {"Array#item", arrayAt},
    {"Array#namedItem", arrayElement},
    {"Array#slice", arraySlice},
    {"Array#concat", arrayConcat},
    {"Array#reverse", arrayReverse},
    {"Array#toReversed", arrayReverse},
    {"Array#join", arrayJoin},
    {"Array#fill", arrayFill},
    {"Array#splice", arraySplice},
    {"Array#flat", arrayCopy},
    {"Array#sort", arraySort},
    {"Array#toSorted", arraySort},
    {"Array#values", arrayCopy},
    {"Array#entries", arrayEntries},
    {"Array#@@iterator", arrayCopy},
    {"Array#indexOf", none},
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
    {"Iterator#next", iteratorNext},
    {"Iterator#return", iteratorNext},
    {"Iterator#@@iterator", self},
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
    {"Proxy", proxyNew},
    {"Number", firstArgument},
    {"String.fromCharCode", fromCharCode},
    {"String.fromCodePoint", fromCharCode},
    {"String.raw", firstArgument},
    {"String#slice", onText<slice>},
    {"String#substring", onText<substring>},
    {"String#substr", onText<substr>},
    {"String#charAt", onText<charAt>},
    {"String#at", onText<charAt>},
    {"String#charCodeAt", inText<charCodeAt>},
    {"String#codePointAt", inText<charCodeAt>},
    {"String#indexOf", inText<indexOf>},
    {"String#lastIndexOf", inText<lastIndexOf>},
    {"String#toUpperCase", onText<toUpper>},
    {"String#toLowerCase", onText<toLower>},
    {"String#toLocaleUpperCase", onText<toUpper>},
    {"String#toLocaleLowerCase", onText<toLower>},
    {"String#trim", onText<trim>},
    {"String#trimStart", onText<trim>},
    {"String#trimEnd", onText<trim>},
    {"String#concat", onText<concat>},
    {"String#repeat", onText<repeat>},
    {"String#toString", onText<same>},
    {"String#valueOf", onText<same>},
    {"atob", atob},
    {"escape", escapeUrl},
    {"encodeURI", escapeUrl},
    {"encodeURIComponent", escapeUrl},
    {"unescape", unescapeUrl},
    {"decodeURI", unescapeUrl},
    {"decodeURIComponent", unescapeUrl},
    {"JSON", none},
    {"JSON.parse", jsonParse},
    {"JSON.stringify", firstArgument},
    {"structuredClone", firstArgument},
    {"parseInt", parseInt},
    {"Math", none},
    {"console", none},
    {"Date", none},
    {"Symbol", symbolNew},
    {"Symbol.for", symbolFor},
};

}  // namespace

NodeId Analysis::concatenate(Where where, NodeId left, NodeId right) {
  if (left == 0 || right == 0) return 0;
  const NodeId made = solver.make(where, Step::value);
  joins.emplace(made, std::make_pair(left, right));
  solver.listen(left, [this, right, made](const Arrival& one) {
    // fn + "" is the function's text.
    if (const Value text = functionText(one.value); text != kUnknown) solver.add(made, text);
    if (!isText(one.value)) {
      if (one.value == kUnknown) solver.add(made, kUnknown);
      return;
    }
    solver.listen(right, [this, one, made](const Arrival& two) {
      if (!isText(two.value)) {
        if (two.value == kUnknown) solver.add(made, kUnknown);
        return;
      }
      const std::string& before = names.text(nameIn(one.value));
      const std::string& after = names.text(nameIn(two.value));
      if (isNumber(one.value) && isNumber(two.value)) {
        const double sum = std::strtod(before.c_str(), nullptr) + std::strtod(after.c_str(), nullptr);
        return solver.add(made, numberValue(names.of(numberText(std::to_string(sum)))));
      }
      if (before.size() + after.size() > kMaxJoined || names.bytes() > kMaxTexts) return solver.add(made, kUnknown);
      solver.add(made, textValue(names.of(before + after)), 0, std::max(one.level, two.level));
    });
  });
  return made;
}

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

void Analysis::assignProperties(Where where, ActId act, NodeId from, Value to) {
  if (!isObject(to)) return;
  solver.listen(from, [this, where, act, to](const Arrival& source) {
    if (!isObject(source.value) || source.value == to) return;
    const Class cls = objects[source.value].cls;
    if (cls == Class::element || cls == Class::window || cls == Class::document) return;
    const ObjectId of = source.value;
    watch(of, [this, where, act, to, of](Name name, NodeId) {
      const std::string& text = names.text(name);
      if (isHidden(text) || text == "constructor") return;
      // Getters are asked.
      const NodeId value = solver.make(where, Step::property, name);
      readValue(where, act, of, 0, 0, name, value);
      solver.edge(value, defineProperty(to, name));
    });
    if (objects[of].star) solver.edge(objects[of].star, starNode(to));
  });
}

void addCoreModels(Analysis& analysis) {
  for (const Row& row : kRows)
    analysis.natives.emplace(row.name, row.native);
}

}  // namespace flow
