// Body: literals of objects, lists and classes. Test: tests/flow/Analysis_test.cpp.

#include "flow/body/Body.h"

namespace flow {

void Body::own(NodeId value, ObjectId owner) {
  for (const Arrival& arrival : s_.values(value)) {
    if (!isObject(arrival.value) || a_.objects[arrival.value].cls != Class::function) continue;
    Closure& closure = a_.closures[a_.objects[arrival.value].a];
    if (closure.owner == kNobody) closure.owner = owner;
  }
}

NodeId Body::objectLiteral(Ast ast) {
  const ObjectId made = a_.newObject(Class::plain, at(ast));
  for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last)
    objectPart(child, made);
  return this->made(at(ast), made);
}

void Body::objectPart(Ast part, ObjectId of) {
  switch (nodes_[part].kind) {
    case Kind::pair: {
      const Ast key = childIn(nodes_, part, Field::key);
      if (key == 0) return;
      const KeyOf name = keyOf(key);
      const NodeId value = expression(childIn(nodes_, part, Field::value));
      own(value, of);
      if (name.node != 0) return a_.write(at(part), id_, a_.single(of), name.node, 0, value);
      if (a_.names.text(name.name) == "__proto__") return s_.edge(value, a_.protoNode(of));
      s_.edge(value, a_.defineProperty(of, name.name, true));
      return;
    }
    case Kind::shorthandProperty:
      s_.edge(readVariable(part), a_.defineProperty(of, nameOf(part), true));
      return;
    case Kind::methodDefinition:
      (void)method(part, of, of);
      return;
    case Kind::spreadElement:
      a_.assignProperties(at(part), id_, expression(firstChild(nodes_, part)), of);
      return;
    default:
      expression(part);
  }
}

// A method, getter or setter of `of`.
ObjectId Body::method(Ast ast, ObjectId of, ObjectId home, bool isConstructor) {
  const ObjectId function = a_.closureObject(act_.unit, unit_.link[ast], id_, at(ast));
  Closure& closure = a_.closures[a_.objects[function].a];
  closure.home = home;
  closure.owner = of;
  if (isConstructor) return function;
  const Ast name = childIn(nodes_, ast, Field::name);
  if (name == 0) return function;
  const KeyOf key = keyOf(name);
  const std::uint16_t marks = nodes_[ast].marks;
  NodeId value = this->made(at(ast), function);
  if (marks & (kGet | kSet)) {
    const NodeId getters = (marks & kGet) ? value : 0;
    const NodeId setters = (marks & kSet) ? value : 0;
    value = this->made(at(ast), a_.newObject(Class::accessor, at(ast), getters, setters));
  }
  if (key.node != 0)
    a_.write(at(ast), id_, a_.single(of), key.node, 0, value);
  else
    s_.edge(value, a_.defineProperty(of, key.name, true));
  return function;
}

NodeId Body::arrayLiteral(Ast ast) {
  const ObjectId made = a_.newObject(Class::array, at(ast));
  std::uint32_t from = nodes_[ast].begin;
  std::size_t index = 0;
  bool isSpread = false;
  std::size_t count = 0;
  for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last) {
    index += commasBefore(child, from);
    count = index + 1;
    from = nodes_[child].end;
    const NodeId value = expression(child);
    if (nodes_[child].kind == Kind::spreadElement) {
      isSpread = true;
      s_.edge(a_.elementsOf(at(child), value), a_.starNode(made));
    } else if (isSpread) {
      s_.edge(value, a_.starNode(made));
    } else if (index < 3000) {
      own(value, made);
      s_.edge(value, a_.defineProperty(made, a_.names.of(std::to_string(index)), true));
    }
  }
  if (!isSpread) a_.objects[made].b = static_cast<std::uint32_t>(count);
  return this->made(at(ast), made);
}

NodeId Body::classValue(Ast ast) {
  ClassInfo info;
  info.unit = act_.unit;
  info.env = id_;
  for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last)
    if (nodes_[child].kind == Kind::classHeritage) info.heritage = lastOf(child);
  Closure closure;
  closure.unit = act_.unit;
  closure.env = id_;
  closure.klass = static_cast<std::uint32_t>(a_.classes.size());
  a_.classes.push_back(info);
  a_.closures.push_back(closure);
  const ObjectId made = a_.newObject(Class::function, at(ast), static_cast<std::uint32_t>(a_.closures.size() - 1));
  a_.closureObjects.push_back(made);
  const ObjectId prototype = a_.newObject(Class::plain, at(ast));
  s_.add(a_.defineProperty(made, a_.known.prototype, true), prototype);
  s_.add(a_.defineProperty(prototype, a_.known.constructor), made);
  const NodeId value = this->made(at(ast), made);
  if (const Ast name = childIn(nodes_, ast, Field::name)) assign(name, value);
  if (info.heritage != 0) {
    const NodeId base = s_.make(at(ast), Step::none);
    a_.read(at(ast), id_, info.heritage, 0, a_.known.prototype, base);
    s_.edge(base, a_.protoNode(prototype));
    s_.edge(info.heritage, a_.protoNode(made));
  }
  const Ast body = childIn(nodes_, ast, Field::body);
  if (body == 0) return value;
  for (Ast member = body + 1; member < nodes_[body].last; member = nodes_[member].last)
    classMember(member, made, prototype, closure.klass);
  return value;
}

void Body::classMember(Ast member, ObjectId made, ObjectId prototype, std::uint32_t klass) {
  const bool isStatic = (nodes_[member].marks & kStatic) != 0;
  const ObjectId of = isStatic ? made : prototype;
  if (nodes_[member].kind == Kind::methodDefinition) {
    const Ast name = childIn(nodes_, member, Field::name);
    const bool isConstructor = !isStatic && name != 0 && unit_.textOf(name) == "constructor";
    const ObjectId function = method(member, of, of, isConstructor);
    if (isConstructor) {
      a_.closures[a_.objects[function].a].constructs = klass;
      a_.classes[klass].constructor = function;
    }
    return;
  }
  if (nodes_[member].kind == Kind::classStaticBlock) {
    const ObjectId block = a_.closureObject(act_.unit, unit_.link[member], id_, at(member));
    a_.callValue({at(member), at(member), id_, 0}, block, a_.single(made), made, a_.makeArgs({}), 0, false, 0, 0);
    return;
  }
  if (nodes_[member].kind != Kind::fieldDefinition) return;
  const Ast property = childIn(nodes_, member, Field::property);
  if (property == 0) return;
  const KeyOf key = keyOf(property);
  ClassField field;
  field.key = key.node;
  field.name = key.name;
  field.def = unit_.link[member] < unit_.defs.size() ? unit_.link[member] : kNone;
  if (!isStatic) {
    a_.classes[klass].fields.push_back(field);
    return;
  }
  if (field.def == kNone) return;
  const ObjectId initial = a_.closureObject(act_.unit, field.def, id_, at(member));
  a_.closures[a_.objects[initial].a].home = made;
  const NodeId value = s_.make(at(member), Step::property, key.name);
  a_.callValue({at(member), at(member), id_, 0}, initial, a_.single(made), made, a_.makeArgs({}), value, false, 0, 0);
  a_.write(at(member), id_, a_.single(made), key.node, key.name, value);
}

}  // namespace flow
