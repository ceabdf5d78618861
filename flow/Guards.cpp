// Guards: values as they pass conditions. Test: tests/flow/Analysis_test.cpp.

#include "flow/Guards.h"

#include <memory>

#include "flow/Analysis.h"

namespace flow {
namespace {

bool isFalse(const Names& names, Value value) {
  if (isObject(value) || value == kUnknown) return false;
  const std::string& text = names.text(nameIn(value));
  return isNumber(value) ? text == "0" || text == "false" : text.empty();
}

bool areEqual(Value one, Value other) {
  return isObject(one) || isObject(other) ? one == other : nameIn(one) == nameIn(other);
}

// Whether `typeof` may give `word` for a value. Of elements nobody can say: browsers differ for plug-ins.
bool mayBeOfType(const std::string& word, Value value, Class cls) {
  if (isNumber(value)) return word == "number" || word == "boolean";
  if (!isObject(value)) return word == "string";
  if (cls == Class::element || cls == Class::pluginMethod) return word == "function" || word == "object";
  const bool isFunction = cls == Class::function || cls == Class::native || cls == Class::bound;
  return word == (isFunction ? "function" : "object");
}

bool isSurelyOfType(const std::string& word, Value value, Class cls) {
  return !isNumber(value) && cls != Class::element && cls != Class::proxy && mayBeOfType(word, value, cls);
}

}  // namespace

// `node` is where the value came to, which is what traces show.
void Analysis::passValue(const Test& test, const Arrival& value, NodeId node, NodeId to) {
  const auto pass = [this, value, node, to] { solver.add(to, value.value, node, value.level); };
  if (value.value == kUnknown) return pass();
  const bool holds = test.holds;
  const NodeId other = test.other;
  switch (test.what) {
    case Test::What::isTrue:
      if (isFalse(names, value.value) != holds) pass();
      return;
    case Test::What::equals:
      solver.listen(other, [value, holds, pass](const Arrival& constant) {
        if (constant.value == kUnknown || areEqual(value.value, constant.value) == holds) pass();
      });
      return whenEmpty(other, pass);
    case Test::What::isOfType: {
      const Class cls = isObject(value.value) ? objects[value.value].cls : Class::plain;
      solver.listen(other, [this, value, holds, cls, pass](const Arrival& type) {
        const std::string word = isText(type.value) ? names.text(nameIn(type.value)) : "";
        const bool mayPass = holds ? mayBeOfType(word, value.value, cls) || cls == Class::proxy
                                   : !isSurelyOfType(word, value.value, cls);
        if (mayPass) pass();
      });
      return whenEmpty(other, pass);
    }
    case Test::What::isInstance:
      return passInstance(holds, other, value, pass);
    case Test::What::isAmong:
    case Test::What::isNameIn:
      return passListed(test, value, pass);
  }
}

// What `new` made is an instance of what made it. An element of a page is none of what a script defines.
void Analysis::passInstance(bool holds, NodeId other, const Arrival& value, const std::function<void()>& pass) {
  if (!isObject(value.value)) {
    if (!holds) pass();
    return;
  }
  const ObjectId object = value.value;
  const bool isElement = objects[object].cls == Class::element;
  solver.listen(other, [this, holds, isElement, object, pass](const Arrival& function) {
    const bool isScript = isObject(function.value) && objects[function.value].cls == Class::function;
    const bool isInstance = isScript && instancesOf.count({object, function.value}) != 0;
    const bool isOther = isScript && isElement;
    if (holds ? !isOther : !isInstance) pass();
  });
  whenEmpty(other, pass);
}

// What a list or an object is made with is in it. What is added later need not be there yet where it is asked for: that
// is how things are done once.
void Analysis::passListed(const Test& test, const Arrival& value, const std::function<void()>& pass) {
  if (!isText(value.value)) return pass();
  const Name name = nameIn(value.value);
  const bool isElement = test.what == Test::What::isAmong;
  const Class cls = isElement ? Class::array : Class::plain;
  if (!test.holds) {
    solver.listen(test.other, [this, isElement, cls, name, pass](const Arrival& list) {
      const bool isKnown = isObject(list.value) && objects[list.value].cls == cls;
      if (!isKnown || !isMadeWith(list.value, isElement, name)) pass();
    });
    return whenEmpty(test.other, pass);
  }
  const NodeId found = solver.make({}, Step::none);
  solver.listen(test.other, [this, isElement, cls, name, found](const Arrival& list) {
    if (!isObject(list.value) || objects[list.value].cls != cls) return solver.add(found, kUnknown);
    whenEmpty(found, [this, list, found] {
      if (objects[list.value].isAddedTo) solver.add(found, kUnknown);
    });
    if (!isElement) return solver.edge(readNode(list.value, name), found);
    solver.listen(elementsOf({}, single(list.value)), [this, name, found](const Arrival& element) {
      const bool isEqual = isText(element.value) && nameIn(element.value) == name;
      if (isEqual || element.value == kUnknown) solver.add(found, element.value);
    });
  });
  solver.listen(found, [pass](const Arrival&) { pass(); });
  whenEmpty(test.other, pass);
}

// Whether a literal had that text among its elements, or that name among its properties.
bool Analysis::isMadeWith(ObjectId of, bool isElement, Name name) const {
  for (const Property& property : objects[of].properties) {
    if (!property.isDefinite) continue;
    if (!isElement && property.name == name) return true;
    if (isElement && solver.has(property.node, textValue(name))) return true;
  }
  return false;
}

NodeId Analysis::passing(Where where, NodeId node, const Test& test) {
  const NodeId made = solver.make(where, Step::none);
  solver.listen(node, [this, test, node, made](const Arrival& value) { passValue(test, value, node, made); });
  return made;
}

// Whether all that a property can be is known: of objects that scripts make, and the id of an element. Where a
// condition must not hold, a property that an object is not made with may still be missing.
bool Analysis::isKnownBy(Value of, Name property, const Test& test) const {
  if (!isObject(of)) return false;
  const Class cls = objects[of].cls;
  if (cls == Class::element) return property == known.id;
  return cls == Class::plain && (test.holds || isMadeWith(of, false, property));
}

NodeId Analysis::passingBy(Where where, NodeId node, Name property, const Test& test) {
  const NodeId made = solver.make(where, Step::none);
  solver.listen(node, [this, test, node, made, property](const Arrival& of) {
    const auto pass = [this, of, node, made] { solver.add(made, of.value, node, of.level); };
    if (!isKnownBy(of.value, property, test)) return pass();
    const NodeId value = readNode(of.value, property);
    const NodeId passed = passing({}, value, test);
    solver.listen(passed, [pass](const Arrival&) { pass(); });
    whenEmpty(value, pass);
  });
  return made;
}

NodeId Analysis::guard(Where where, NodeId node, NodeId base, Name property, const Test& test) {
  const NodeId open = passing(where, node, test);
  const bool isDecided = test.what == Test::What::equals && test.holds;
  whenEmpty(open, [this, open, node, base, isDecided] {
    if (areGuardsOpen || solver.isEmpty(node) || (base == 0 && !isDecided)) solver.add(open, kUnknown);
  });
  if (base == 0 || isDecided) return open;
  // A property that an object does not have is as good as any other value.
  solver.listen(base, [this, open, property, test](const Arrival& of) {
    if (!isKnownBy(of.value, property, test)) return solver.add(open, kUnknown);
    whenEmpty(readNode(of.value, property), [this, open] { solver.add(open, kUnknown); });
  });
  return open;
}

NodeId Analysis::guarded(Where where, NodeId open, NodeId node) {
  const NodeId made = solver.make(where, Step::none);
  const auto once = std::make_shared<bool>(false);
  solver.listen(open, [this, node, made, once](const Arrival&) {
    if (!*once) solver.edge(node, made);
    *once = true;
  });
  return made;
}

}  // namespace flow
