// Body: what is assigned to: patterns, variables, properties. Test: tests/flow/Analysis_test.cpp.

#include "flow/body/Body.h"

namespace flow {

void Body::pattern(Ast ast, NodeId value) {
  if (ast == 0 || isTooDeep()) return;
  const Nesting nesting(depth_);
  const Node& node = nodes_[ast];
  switch (node.kind) {
    case Kind::identifier:
    case Kind::shorthandPattern:
      return assign(ast, value);
    case Kind::parenthesizedExpression:
      return pattern(firstChild(nodes_, ast), value);
    case Kind::assignmentPattern:
    case Kind::objectAssignmentPattern:
      return pattern(childIn(nodes_, ast, Field::left),
                     either(ast, value, expression(childIn(nodes_, ast, Field::right))));
    case Kind::memberExpression:
    case Kind::subscriptExpression:
      return writeTo(ast, value);
    case Kind::arrayPattern:
    case Kind::array:
      return arrayPattern(ast, value);
    case Kind::objectPattern:
    case Kind::object:
      for (Ast child = ast + 1; child < node.last; child = nodes_[child].last)
        objectPatternPart(child, value);
      return;
    case Kind::restPattern:
      return pattern(firstChild(nodes_, ast), value);
    case Kind::variableDeclarator:
      return pattern(childIn(nodes_, ast, Field::name), value);
    case Kind::variableDeclaration:
    case Kind::lexicalDeclaration:
      return pattern(firstChild(nodes_, ast), value);
    default:
      return;
  }
}

NodeId Body::either(Ast ast, NodeId left, NodeId right) {
  if (left == 0 || left == right) return right;
  if (right == 0) return left;
  const NodeId node = s_.make(at(ast), Step::none);
  s_.edge(left, node);
  s_.edge(right, node);
  return node;
}

void Body::objectPatternPart(Ast part, NodeId value) {
  const Node& node = nodes_[part];
  NodeId got = s_.make(at(part), Step::property);
  switch (node.kind) {
    case Kind::shorthandPattern:
    case Kind::shorthandProperty:
      a_.read(at(part), id_, value, 0, nameOf(part), got);
      origins_.emplace(got, std::make_pair(value, nameOf(part)));
      return assign(part, got);
    case Kind::objectAssignmentPattern: {
      const Ast left = childIn(nodes_, part, Field::left);
      if (left == 0) return;
      a_.read(at(part), id_, value, 0, nameOf(left), got);
      return pattern(left, either(part, got, expression(childIn(nodes_, part, Field::right))));
    }
    case Kind::pairPattern:
    case Kind::pair: {
      const Ast key = childIn(nodes_, part, Field::key);
      if (key == 0) return;
      const KeyOf name = keyOf(key);
      a_.read(at(key), id_, value, name.node, name.name, got);
      return pattern(childIn(nodes_, part, Field::value), got);
    }
    case Kind::restPattern:
      return pattern(firstChild(nodes_, part), value);
    default:
      return;
  }
}

// The number of each part of a list: what is left out has one, too.
std::size_t Body::commasBefore(Ast part, std::uint32_t from) const {
  std::size_t commas = 0;
  for (std::uint32_t at = from; at < nodes_[part].begin && at < unit_.text.size(); ++at)
    if (unit_.text[at] == ',') ++commas;
  return commas;
}

void Body::arrayPattern(Ast ast, NodeId value) {
  std::uint32_t from = nodes_[ast].begin;
  std::size_t index = 0;
  Analysis& a = a_;
  for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last) {
    index += commasBefore(child, from);
    from = nodes_[child].end;
    const NodeId got = s_.make(at(child), Step::property);
    const Where where = at(child);
    const ActId act = id_;
    if (nodes_[child].kind == Kind::restPattern) {
      const ObjectId rest = a_.newObject(Class::array, where);
      s_.edge(a_.elementsOf(where, value), a_.starNode(rest));
      s_.add(got, rest);
      pattern(firstChild(nodes_, child), got);
      continue;
    }
    const Name name = a_.names.of(std::to_string(index));
    s_.listen(value, [&a, where, act, value, name, got](const Arrival& list) {
      if (!isObject(list.value)) return;
      const Class cls = a.objects[list.value].cls;
      if (cls == Class::array || cls == Class::jquery)
        a.readValue(where, act, list.value, value, list.level, name, got);
      else
        a.elementsOfValue(where, list.value, got);
    });
    pattern(child, got);
  }
}

NodeId Body::assignment(Ast ast) {
  // a = b = c: from the right end on.
  std::vector<Ast> targets;
  Ast at = ast;
  while (at != 0 && nodes_[at].kind == Kind::assignmentExpression) {
    targets.push_back(childIn(nodes_, at, Field::left));
    at = childIn(nodes_, at, Field::right);
  }
  const NodeId value = expression(at);
  while (!targets.empty()) {
    pattern(targets.back(), value);
    targets.pop_back();
  }
  return value;
}

void Body::writeTo(Ast ast, NodeId value) {
  const Ast of = childIn(nodes_, ast, Field::object);
  if (of == 0) return;
  const NodeId object = nodes_[of].kind == Kind::superWord ? self() : expression(of);
  if (nodes_[ast].kind == Kind::memberExpression) {
    const Ast property = childIn(nodes_, ast, Field::property);
    if (property != 0) a_.write(this->at(property), id_, object, 0, keyOf(property).name, value);
  } else {
    const KeyOf key = indexOf(ast);
    a_.write(this->at(ast), id_, object, key.node, key.name, value);
  }
}

NodeId Body::augmented(Ast ast) {
  const Ast left = childIn(nodes_, ast, Field::left);
  const std::uint16_t marks = nodes_[ast].marks;
  const bool isName = left != 0 && nodes_[left].kind == Kind::identifier;
  const NodeId old = expression(left);
  const NodeId right = expression(childIn(nodes_, ast, Field::right));
  NodeId value = unknown(ast);
  if (marks & kLogical) {
    value = either(ast, old, right);
  } else if ((marks & kPlus) && isName) {
    const std::uint32_t link = unit_.link[left];
    const bool isOwn = link < unit_.refs.size() && unit_.refs[link].def == act_.def &&
                       !def_.variables[unit_.refs[link].slot].isWrittenInside;
    if (isOwn)
      value = plus(ast, old, right);
    else if (hasMarkup(ast))
      value = either(ast, value, right);
  } else if ((marks & kPlus) && hasMarkup(ast)) {
    value = either(ast, value, right);
  }
  pattern(left, value);
  return value;
}

}  // namespace flow
