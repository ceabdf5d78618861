// Objects: properties, prototypes, and what reading and writing do to the graph.
// Test: tests/flow/Analysis_test.cpp.

#include <algorithm>

#include "flow/Analysis.h"

namespace flow {
namespace {

constexpr std::size_t kMaxProperties = 4000;  // of one object

bool isIndex(const std::string& text) {
  return !text.empty() && text.size() < 8 &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

const char* familyOf(Class cls) {
  switch (cls) {
    case Class::array:
      return "Array#";
    case Class::function:
    case Class::native:
    case Class::bound:
    case Class::pluginMethod:
      return "Function#";
    case Class::element:
      return "Element#";
    case Class::window:
      return "";
    case Class::document:
      return "Document#";
    case Class::promise:
      return "Promise#";
    case Class::map:
      return "Map#";
    case Class::iterator:
      return "Iterator#";
    case Class::jquery:
      return "jQuery#";
    case Class::event:
      return "Event#";
    case Class::pattern:
      return "RegExp#";
    default:
      return "Object#";
  }
}

}  // namespace

ObjectId Analysis::newObject(Class cls, Where where, std::uint32_t a, std::uint32_t b) {
  objects.emplace_back();
  Object& made = objects.back();
  made.cls = cls;
  made.where = where;
  made.a = a;
  made.b = b;
  if (objects.size() > 400'000) solver.spend();
  return static_cast<ObjectId>(objects.size() - 1);
}

Property& Analysis::property(ObjectId id, Name name) {
  Object& of = objects[id];
  const auto found = of.index.find(name);
  if (found != of.index.end()) return of.properties[found->second];
  Property made;
  made.name = name;
  made.node = solver.make(of.where, Step::property, name);
  of.index.emplace(name, static_cast<std::uint32_t>(of.properties.size()));
  of.properties.push_back(made);
  return of.properties.back();
}

NodeId Analysis::defineProperty(ObjectId id, Name name, bool isDefinite) {
  if (objects[id].properties.size() >= kMaxProperties) return starNode(id);
  Property& made = property(id, name);
  const NodeId node = made.node;
  if (isDefinite) made.isDefinite = true;
  if (!made.isWritten) {
    made.isWritten = true;
    const std::size_t count = objects[id].watchers.size();
    for (std::size_t i = 0; i < count; ++i) {
      const auto watcher = objects[id].watchers[i];
      watcher(name, node);
    }
  }
  return node;
}

void Analysis::watch(ObjectId id, std::function<void(Name, NodeId)> watcher) {
  objects[id].watchers.push_back(watcher);
  for (std::size_t i = 0; i < objects[id].properties.size(); ++i) {
    const Property each = objects[id].properties[i];
    if (each.isWritten) watcher(each.name, each.node);
  }
}

NodeId Analysis::starNode(ObjectId id) {
  if (objects[id].star == 0) objects[id].star = solver.make(objects[id].where, Step::property);
  return objects[id].star;
}

NodeId Analysis::protoNode(ObjectId id) {
  if (objects[id].proto == 0) objects[id].proto = solver.make(objects[id].where, Step::none);
  return objects[id].proto;
}

NodeId Analysis::allNode(ObjectId id) {
  if (objects[id].all != 0) return objects[id].all;
  const NodeId all = solver.make(objects[id].where, Step::property);
  objects[id].all = all;
  solver.edge(starNode(id), all);
  watch(id, [this, all](Name name, NodeId node) {
    const std::string& text = names.text(name);
    if (text.empty() || text[0] != '%') solver.edge(node, all);
  });
  return all;
}

NodeId Analysis::single(Value value, Where where) {
  NodeId& node = singles[value];
  if (node == 0) {
    node = solver.make(where, Step::none);
    solver.add(node, value);
  }
  return node;
}

bool Analysis::hasNative(const std::string& name) const {
  return natives.count(name) != 0;
}

ObjectId Analysis::nativeObject(std::string_view name) {
  const std::string key(name);
  const auto found = nativeObjects.find(key);
  if (found != nativeObjects.end()) return found->second;
  nativeTable.push_back(natives.count(key) ? natives[key] : nullptr);
  const ObjectId made = newObject(Class::native, {}, static_cast<std::uint32_t>(nativeTable.size() - 1));
  nativeObjects.emplace(key, made);
  // What is reached through it: Object.keys, Array.prototype.
  for (auto row = natives.lower_bound(key + ".");
       row != natives.end() && row->first.compare(0, key.size() + 1, key + ".") == 0; ++row) {
    const std::string rest = row->first.substr(key.size() + 1);
    if (rest.find('.') != std::string::npos) continue;
    solver.add(defineProperty(made, names.of(rest)), nativeObject(row->first));
  }
  const auto prototype = [&](const char* owner, ObjectId object) {
    if (key == owner) solver.add(defineProperty(made, known.prototype), object);
  };
  if (key == "Symbol") {
    for (const char* symbol : {"iterator", "asyncIterator", "toPrimitive"})
      solver.add(defineProperty(made, names.of(symbol)),
                 textValue(names.of(std::string("@@") + (symbol[0] == 'a' ? "iterator" : symbol))));
  }
  if (key == "EventTarget") {
    const ObjectId events = newObject(Class::plain, {});
    for (const char* method : {"addEventListener", "dispatchEvent"})
      solver.add(defineProperty(events, names.of(method)), nativeObject(method));
    prototype("EventTarget", events);
  }
  prototype("Array", arrayProto);
  prototype("Function", functionProto);
  prototype("String", stringProto);
  prototype("Object", objectProto);
  return made;
}

// The length of a text, or the letter at a place.
Value Analysis::partOfText(Name whole, const std::string& name) {
  const std::string& text = names.text(whole);
  if (name == "length") return numberValue(names.of(std::to_string(text.size())));
  if (!isIndex(name) || std::stoul(name) >= text.size()) return kUnknown;
  return textValue(names.of(text.substr(std::stoul(name), 1)));
}

// What reading `name` of `value` gives: its own property, those of its prototypes, and what is built in.
NodeId Analysis::readNode(Value value, Name name) {
  if (isText(value)) {
    const Value part = partOfText(nameIn(value), names.text(name));
    if (part != kUnknown) return single(part);
    const std::string native = "String#" + names.text(name);
    if (natives.count(native)) return single(nativeObject(native));
    return readNode(stringProto, name);
  }
  if (!isObject(value)) return 0;
  const ObjectId id = value;
  {
    const auto found = objects[id].reads.find(name);
    if (found != objects[id].reads.end()) return found->second;
  }
  const NodeId node = solver.make(objects[id].where, Step::none, name);
  objects[id].reads.emplace(name, node);
  const Class cls = objects[id].cls;
  Property& own = property(id, name);
  const NodeId ownNode = own.node;
  const bool isDefinite = own.isDefinite;
  solver.edge(ownNode, node);
  const std::string& text = names.text(name);
  if (objects[id].isMoved && isIndex(text)) solver.edge(allNode(id), node);
  if (isDefinite) return node;
  // Neither a place that is known nor a method of lists is among what is written under names that nobody knows.
  const bool isInPlace =
      cls == Class::array && (isIndex(text) ? std::stoul(text) < objects[id].b : natives.count("Array#" + text) != 0);
  // Names that begin with a dollar are those of a library, and not made while the script runs.
  if (!isInPlace && (text.empty() || (text[0] != '%' && text[0] != '$')))
    solver.edge(starNode(id), node, cls == Class::array || cls == Class::jquery ? 0 : 1);
  if (cls == Class::function && name == known.prototype) {
    const ObjectId prototype = newObject(Class::plain, objects[id].where);
    solver.add(defineProperty(id, name), prototype);
    solver.add(defineProperty(prototype, known.constructor), id);
    return node;
  }
  if (cls == Class::window || cls == Class::document || cls == Class::element) readDom(id, name, node);
  if (cls == Class::window) globalReads.emplace_back(id, name);
  if (name == known.prototype && cls != Class::plain) return node;
  solver.listen(protoNode(id), [this, node, name, id](const Arrival& proto) {
    if (isObject(proto.value) && proto.value != id) solver.edge(readNode(proto.value, name), node);
  });
  const ObjectId implied = cls == Class::array ? arrayProto : cls == Class::function ? functionProto : kNobody;
  if (implied != kNobody && implied != id) solver.edge(readNode(implied, name), node);
  std::string native = familyOf(cls) + text;
  if (id == arrayProto) native = "Array#" + text;
  if (id == functionProto) native = "Function#" + text;
  if (id == stringProto) native = "String#" + text;
  if (cls == Class::jquery && !natives.count(native)) native = "Array#" + text;
  if (cls == Class::document && !natives.count(native)) native = "Element#" + text;
  if (cls != Class::window && !natives.count(native)) native = "Object#" + text;
  if (native != text && natives.count(native)) {
    solver.add(node, nativeObject(native));
    return node;
  }
  if (cls == Class::window && text.find_first_of("#.") == std::string::npos && natives.count(text)) {
    solver.add(node, nativeObject(text));
    return node;
  }
  if (cls == Class::element && !isElementMember(text) && !isIndex(text)) {
    const std::uint64_t key = static_cast<std::uint64_t>(id) << 32 | name;
    auto found = methodByKey.find(key);
    if (found == methodByKey.end())
      found = methodByKey.emplace(key, newObject(Class::pluginMethod, objects[id].where, id, name)).first;
    solver.add(node, found->second);
  }
  return node;
}

void Analysis::readUnknown(Value value, NodeId target) {
  if (!isObject(value)) return;
  // Everything that a window holds says nothing.
  const Class cls = objects[value].cls;
  if (cls == Class::window || cls == Class::document || cls == Class::element || cls == Class::native) return;
  const bool isList = objects[value].cls == Class::array || objects[value].cls == Class::jquery;
  solver.edge(allNode(value), target, isList ? 0 : 1);
}

void Analysis::readValue(Where where, ActId act, Value value, NodeId from, std::uint8_t level, Name name,
                         NodeId target) {
  if (isObject(value) && objects[value].cls == Class::proxy) {
    const struct { NodeId a, b; } proxy = {objects[value].a, objects[value].b};
    const NodeId traps = solver.make(where, Step::none);
    read(where, act, proxy.b, 0, known.get, traps);
    Site site{where, where, act, 0};
    const NodeId key = single(textValue(name), where);
    call(site, traps, proxy.b, makeArgs({proxy.a, key, single(value)}), target);
    if (solver.isEmpty(traps) && solver.isEmpty(proxy.b)) read(where, act, proxy.a, 0, name, target);
    solver.listen(proxy.b, [this, where, act, proxy, name, target](const Arrival& handler) {
      // Without a trap, the target answers.
      if (isObject(handler.value) && !property(handler.value, known.get).isWritten)
        read(where, act, proxy.a, 0, name, target);
    });
    return;
  }
  const NodeId node = readNode(value, name);
  if (node == 0) return;
  solver.listen(node, [this, where, act, value, from, level, name, target, node](const Arrival& read) {
    if (!isObject(read.value)) return solver.add(target, read.value, node, std::max(level, read.level));
    const Object& got = objects[read.value];
    if (got.cls == Class::accessor) {
      const Site site{where, where, act, name};
      call(site, got.a, single(value), makeArgs({}), target);
      return;
    }
    const bool isMethod = got.cls == Class::pluginMethod && isObject(value) && objects[value].cls == Class::element;
    solver.add(target, read.value, isMethod ? from : node, std::max(level, read.level));
  });
}

void Analysis::read(Where where, ActId act, NodeId of, NodeId key, Name name, NodeId target) {
  if (of == 0) return;
  if (key == 0) {
    solver.listen(of, [=](const Arrival& from) {
      if (from.value == kUnknown) return solver.add(target, kUnknown, of, from.level);
      readValue(where, act, from.value, of, from.level, name, target);
    });
    return;
  }
  solver.listen(of, [=](const Arrival& from) {
    solver.listen(key, [=](const Arrival& by) {
      if (isText(by.value))
        readValue(where, act, from.value, of, std::max(from.level, by.level), nameIn(by.value), target);
      else
        readUnknown(from.value, target);
    });
    // A key that nobody can tell: everything in it, where it is one of the objects made to be asked so.
    const Value value = from.value;
    if (isObject(value) && objects[value].cls != Class::element && objects[value].cls != Class::window)
      whenEmpty(key, [=] { readUnknown(value, target); });
  });
}

void Analysis::writeValue(Where where, ActId act, Value of, Name name, NodeId value, std::uint8_t level) {
  if (!isObject(of)) return;
  const Class cls = objects[of].cls;
  if (cls == Class::proxy) {
    const NodeId handlers = objects[of].b;
    const NodeId targets = objects[of].a;
    const NodeId traps = solver.make(where, Step::none);
    read(where, act, handlers, 0, known.set, traps);
    call({where, where, act, 1}, traps, handlers, makeArgs({targets, single(textValue(name), where), value}), 0);
    write(where, act, targets, 0, name, value);
    return;
  }
  const NodeId node = defineProperty(of, name);
  solver.edge(value, node, level);
  // Setters, its own and those of its prototypes.
  solver.listen(readNode(of, name), [this, where, act, of, name, value](const Arrival& there) {
    if (!isObject(there.value) || objects[there.value].cls != Class::accessor) return;
    call({where, where, act, name}, objects[there.value].b, single(of), makeArgs({value}), 0);
  });
  solver.listen(value, [this, of](const Arrival& stored) {
    if (isObject(stored.value) && objects[stored.value].cls == Class::function) {
      Closure& closure = closures[objects[stored.value].a];
      if (closure.owner == kNobody) closure.owner = of;
    }
  });
  const std::string& text = names.text(name);
  if (cls == Class::element || cls == Class::document || cls == Class::window) {
    if (text.size() > 2 && text[0] == 'o' && text[1] == 'n') {
      const NodeId self = single(of);
      const ObjectId event = newObject(Class::event, where);
      addTargets(of, defineProperty(event, names.of("target")));
      solver.add(defineProperty(event, names.of("currentTarget")), of);
      if (text == "onmessage") solver.edge(realms[realmOf(act)].messages, defineProperty(event, names.of("data")));
      call({where, where, act, name}, value, self, makeArgs({single(event)}), 0);
    }
  }
  if (cls == Class::element) {
    static const std::set<std::string> kAttributes = {"id",        "classid", "classId", "type",        "innerHTML",
                                                      "outerHTML", "srcdoc",  "text",    "textContent", "innerText",
                                                      "href",      "data",    "src",     "codeType"};
    if (kAttributes.count(text)) {
      solver.listen(value, [this, of, text, where](const Arrival& set) {
        if (isText(set.value)) setAttribute(of, text, names.text(nameIn(set.value)), where);
      });
    }
  }
}

void Analysis::write(Where where, ActId act, NodeId of, NodeId key, Name name, NodeId value) {
  if (of == 0) return;
  solver.listen(of, [=](const Arrival& to) {
    if (!isObject(to.value)) return;
    if (key == 0) return writeValue(where, act, to.value, name, value, to.level);
    solver.listen(key, [=](const Arrival& by) {
      if (isText(by.value))
        writeValue(where, act, to.value, nameIn(by.value), value, std::max(to.level, by.level));
      else
        writeUnknown(to.value, value, to.level);
    });
    const Value of = to.value;
    const std::uint8_t level = to.level;
    whenEmpty(key, [=] { writeUnknown(of, value, level); });
  });
}

void Analysis::writeUnknown(ObjectId of, NodeId value, std::uint8_t level) {
  const Class cls = objects[of].cls;
  if (cls != Class::plain && cls != Class::array && cls != Class::jquery && cls != Class::map) return;
  objects[of].isAddedTo = true;
  solver.edge(value, starNode(of), level);
}

ObjectId Analysis::arrayOf(Where where, const std::vector<NodeId>& nodes) {
  const ObjectId made = newObject(Class::array, where);
  objects[made].b = static_cast<std::uint32_t>(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i)
    solver.edge(nodes[i], defineProperty(made, names.of(std::to_string(i))));
  return made;
}

void Analysis::elementsOfValue(Where where, Value list, NodeId target) {
  if (!isObject(list)) return;
  const Object& of = objects[list];
  switch (of.cls) {
    case Class::array:
    case Class::jquery:
    case Class::plain:
      if (of.cls == Class::plain) {
        // An iterator of its own.
        const NodeId factory = readNode(list, known.iterator);
        const NodeId iterator = solver.make(where, Step::none);
        call({where, where, kNobody, 7}, factory, single(list), makeArgs({}), iterator);
        solver.listen(iterator, [this, where, target](const Arrival& made) {
          if (isObject(made.value) && objects[made.value].cls == Class::iterator)
            return elementsOfValue(where, made.value, target);
          const NodeId next = solver.make(where, Step::none);
          callMember({where, where, kNobody, 8}, single(made.value), 0, known.next, makeArgs({}), next);
          read(where, kNobody, next, 0, known.value, target);
        });
        return;
      }
      solver.edge(allNode(list), target);
      return;
    case Class::iterator:
    case Class::map:
      solver.edge(property(list, known.value).node, target);
      return;
    default:
      return;
  }
}

void Analysis::moveElements(ObjectId list) {
  if (objects[list].isMoved) return;
  objects[list].isMoved = true;
  std::vector<NodeId> nodes;
  for (const auto& [name, node] : objects[list].reads)
    if (isIndex(names.text(name))) nodes.push_back(node);
  std::sort(nodes.begin(), nodes.end());
  for (const NodeId node : nodes)
    solver.edge(allNode(list), node);
}

NodeId Analysis::elementsOf(Where where, NodeId list) {
  if (list == 0) return 0;
  const NodeId target = solver.make(where, Step::none);
  solver.listen(list, [=](const Arrival& from) { elementsOfValue(where, from.value, target); });
  return target;
}

}  // namespace flow
