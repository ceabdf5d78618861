// Models: what the language itself brings: objects. Test: tests/flow/Analysis_test.cpp.

#include <cstring>
#include <memory>

#include "flow/models/Models.h"

namespace flow {
namespace {

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

void self(Analysis& a, const CallInfo& info) {
  a.solver.edge(info.self, info.result);
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

void proxyNew(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::proxy, info.site.where, arg(a, info, 0), arg(a, info, 1));
  a.solver.add(info.result, made);
}

const Row kRows[] = {
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
    {"Iterator#@@iterator", self},
    {"Proxy", proxyNew},
    {"structuredClone", firstArgument},
    {"console", none},
    {"Date", none},
};

}  // namespace

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
      if (objects[of].cls == Class::function && name == known.prototype) return;
      // Getters are asked.
      const NodeId value = solver.make(where, Step::property, name);
      readValue(where, act, of, 0, 0, name, value);
      solver.edge(value, defineProperty(to, name));
    });
    if (objects[of].star) solver.edge(objects[of].star, starNode(to));
  });
}

void addObjectModels(Analysis& analysis) {
  addRows(analysis, kRows);
}

}  // namespace flow
