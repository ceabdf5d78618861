// Body: expressions, names of properties, operators. Test: tests/flow/Analysis_test.cpp.

#include <algorithm>

#include "flow/Strings.h"
#include "flow/body/Body.h"

namespace flow {

NodeId Body::expression(Ast ast) {
  if (ast == 0 || isTooDeep()) return 0;
  const Nesting nesting(depth_);
  const Node& node = nodes_[ast];
  switch (node.kind) {
    case Kind::identifier:
    case Kind::shorthandProperty:
      return readVariable(ast);
    case Kind::string:
      return made(at(ast), textValue(a_.names.of(unescape(contentOf(ast)))), Step::value);
    case Kind::number:
      return made(at(ast), numberValue(a_.names.of(numberText(unit_.textOf(ast)))), Step::value);
    case Kind::regex:
      return made(at(ast), a_.newObject(Class::pattern, at(ast), a_.names.of(unit_.textOf(ast))));
    case Kind::templateString:
      return templateString(ast);
    case Kind::thisWord:
      return self();
    case Kind::parenthesizedExpression:
    case Kind::templateSubstitution:
    case Kind::spreadElement:
    case Kind::error:
    case Kind::sequenceExpression:
      return lastOf(ast);
    case Kind::object:
      return objectLiteral(ast);
    case Kind::array:
      return arrayLiteral(ast);
    case Kind::functionExpression:
    case Kind::generatorFunction:
    case Kind::arrowFunction:
    case Kind::functionDeclaration:
    case Kind::generatorFunctionDeclaration:
      return made(at(ast), a_.closureObject(act_.unit, unit_.link[ast], id_, at(ast)));
    case Kind::classExpression:
    case Kind::classDeclaration: {
      const NodeId value = classValue(ast);
      if (const Ast name = childIn(nodes_, ast, Field::name)) assign(name, value);
      return value;
    }
    case Kind::memberExpression:
    case Kind::subscriptExpression:
    case Kind::callExpression:
      return chain(ast);
    case Kind::newExpression:
      return newExpression(ast);
    case Kind::awaitExpression: {
      const NodeId promise = expression(firstChild(nodes_, ast));
      a_.throwRejected(promise, thrown());
      forgetWritten();
      return a_.awaited(at(ast), promise);
    }
    case Kind::yieldExpression:
      return yieldExpression(ast);
    case Kind::assignmentExpression:
      return assignment(ast);
    case Kind::augmentedAssignmentExpression:
      return augmented(ast);
    case Kind::ternaryExpression:
      return ternary(ast);
    case Kind::binaryExpression:
      return binary(ast);
    case Kind::unaryExpression:
      return unary(ast);
    case Kind::updateExpression: {
      const Ast argument = childIn(nodes_, ast, Field::argument);
      if (argument != 0 && nodes_[argument].kind == Kind::identifier) {
        assign(argument, unknown(ast));
      } else {
        expression(argument);
      }
      return unknown(ast);
    }
    case Kind::literalWord: {
      const std::string_view word = unit_.textOf(ast);
      const bool isKnown = word == "true" || word == "false";
      return isKnown ? a_.single(numberValue(a_.names.of(word))) : 0;
    }
    case Kind::statementBlock:
    case Kind::expressionStatement:
    case Kind::returnStatement:
    case Kind::ifStatement:
      statement(ast);
      return 0;
    default:
      for (Ast child = ast + 1; child < node.last; child = nodes_[child].last)
        expression(child);
      return 0;
  }
}

NodeId Body::lastOf(Ast ast) {
  NodeId last = 0;
  for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last)
    last = expression(child);
  return last;
}

NodeId Body::templateString(Ast ast) {
  NodeId result = 0;
  const bool isInMarkup = hasMarkup(ast);
  for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last) {
    NodeId part = 0;
    if (nodes_[child].kind == Kind::templateSubstitution)
      part = isInMarkup ? a_.withHoles(at(child), lastOf(child)) : lastOf(child);
    else
      part = made(at(child), textValue(a_.names.of(unescape(unit_.textOf(child)))), Step::value);
    if (result == 0 && child == ast + 1)
      result = nodes_[child].kind == Kind::templateSubstitution
                   ? a_.concatenate(at(child), a_.single(textValue(0)), part)
                   : part;
    else
      result = a_.concatenate(at(child), result, part);
  }
  return result != 0 ? result : made(at(ast), textValue(0), Step::value);
}

Body::KeyOf Body::keyOf(Ast ast) {
  KeyOf key;
  switch (nodes_[ast].kind) {
    case Kind::string:
      key.name = a_.names.of(unescape(contentOf(ast)));
      return key;
    case Kind::number:
      key.name = a_.names.of(numberText(unit_.textOf(ast)));
      return key;
    case Kind::computedPropertyName: {
      const Ast inner = firstChild(nodes_, ast);
      if (inner != 0 && (nodes_[inner].kind == Kind::string || nodes_[inner].kind == Kind::number)) return keyOf(inner);
      key.node = expression(inner);
      if (key.node == 0) key.node = s_.make(at(ast), Step::none);
      return key;
    }
    case Kind::propertyIdentifier:
    case Kind::privatePropertyIdentifier:
    case Kind::identifier:
    case Kind::shorthandPattern:
    case Kind::shorthandProperty: {
      const std::string_view text = unit_.textOf(ast);
      key.name = text.find('\\') == std::string_view::npos ? a_.names.of(text) : a_.names.of(unescape(text));
      return key;
    }
    default:
      key.name = nameOf(ast);
      return key;
  }
}

// What stands in the brackets of a subscript.
Body::KeyOf Body::indexOf(Ast subscript) {
  const Ast index = childIn(nodes_, subscript, Field::index);
  KeyOf key;
  if (index == 0) {
    key.node = s_.make(at(subscript), Step::none);
    return key;
  }
  if (nodes_[index].kind == Kind::string || nodes_[index].kind == Kind::number) return keyOf(index);
  key.node = expression(index);
  if (key.node == 0) key.node = s_.make(at(index), Step::none);
  return key;
}

NodeId Body::yieldExpression(Ast ast) {
  forgetWritten();
  const NodeId value = expression(firstChild(nodes_, ast));
  const ActId of = function(false);
  const NodeId sent = a_.acts[of].sent;
  const bool isAll = (nodes_[ast].marks & kStar) != 0;
  s_.edge(isAll ? a_.elementsOf(at(ast), value) : value, a_.acts[of].yielded);
  return isAll ? yieldedAll(ast, value, sent) : answered(ast, value, sent);
}

// What the other generator returns; it is sent what this one is.
NodeId Body::yieldedAll(Ast ast, NodeId value, NodeId sent) {
  const NodeId result = s_.make(at(ast), Step::result);
  Analysis& a = a_;
  s_.listen(value, [&a, result, sent](const Arrival& inner) {
    if (!isObject(inner.value) || a.objects[inner.value].cls != Class::iterator) return;
    a.solver.edge(a.property(inner.value, a.names.of("%returned")).node, result);
    a.solver.edge(sent, a.objects[inner.value].a);
  });
  return result;
}

// Who drives a generator mostly gives back what the promise that it yields comes to; else anything that is sent.
NodeId Body::answered(Ast ast, NodeId value, NodeId sent) {
  const NodeId result = s_.make(at(ast), Step::none);
  Solver& s = s_;
  s_.listen(a_.awaited(at(ast), value), [&s, sent, result](const Arrival& one) {
    s.listen(sent, [&s, sent, result, one](const Arrival& other) {
      if (one.value == other.value) s.add(result, one.value, sent, std::max(one.level, other.level));
    });
  });
  a_.whenEmpty(result, [&s, sent, result] { s.edge(sent, result); });
  return result;
}

// One of two values, which nobody may know while the other is known.
NodeId Body::branchOf(Ast ast) {
  const NodeId value = expression(ast);
  ast = insideOf(ast);
  if (ast == 0 || value == 0 || nodes_[ast].kind == Kind::literalWord) return value;
  const NodeId branch = s_.make(at(ast), Step::none);
  s_.edge(value, branch);
  a_.whenEmpty(branch, [&s = s_, branch] { s.add(branch, kUnknown); });
  return branch;
}

NodeId Body::ternary(Ast ast) {
  const Ast condition = childIn(nodes_, ast, Field::condition);
  expression(condition);
  const Truth truth = decided(condition);
  if (truth != Truth::unknown)
    return expression(childIn(nodes_, ast, truth == Truth::always ? Field::consequence : Field::alternative));
  const State before = state_;
  const Ast consequence = childIn(nodes_, ast, Field::consequence);
  const Ast alternative = childIn(nodes_, ast, Field::alternative);
  narrow(condition, true, consequence);
  const NodeId left = branchOf(consequence);
  const State then = state_;
  state_ = before;
  narrow(condition, false, alternative);
  const NodeId right = branchOf(alternative);
  state_ = join(then, state_, ast);
  return either(ast, left, right);
}

NodeId Body::unary(Ast ast) {
  const Ast argument = childIn(nodes_, ast, Field::argument);
  const NodeId value = expression(argument);
  const char sign = unit_.text[nodes_[ast].begin];
  if (sign == '-' && argument != 0 && nodes_[argument].kind == Kind::number)
    return made(at(ast), numberValue(a_.names.of('-' + numberText(unit_.textOf(argument)))), Step::value);
  return sign == '+' ? value : 0;
}

// The rest of a division walks round a list: which place it is at is not known.
bool Body::isRest(Ast ast) const {
  const Ast left = childIn(nodes_, ast, Field::left);
  const Ast right = childIn(nodes_, ast, Field::right);
  if (left == 0 || right == 0) return false;
  const std::string_view sign = std::string_view(unit_.text).substr(0, nodes_[right].begin);
  return sign.find('%', nodes_[left].end) != std::string_view::npos;
}

NodeId Body::binary(Ast ast) {
  // Chains are long: from the left end on, without calling ourselves.
  std::vector<Ast> spine;
  Ast left = ast;
  while (left != 0 && nodes_[left].kind == Kind::binaryExpression) {
    spine.push_back(left);
    left = childIn(nodes_, left, Field::left);
  }
  NodeId value = expression(left);
  while (!spine.empty()) {
    const Ast part = spine.back();
    spine.pop_back();
    const std::uint16_t marks = nodes_[part].marks;
    const Ast rightAst = childIn(nodes_, part, Field::right);
    if (marks & kLogical) {
      const State before = state_;
      if (signOf(part) != "??") narrow(childIn(nodes_, part, Field::left), (marks & kOr) == 0, rightAst);
      const NodeId right = expression(rightAst);
      state_ = join(before, state_, part);
      // What && gives of its left side is nothing that could be called.
      value = (marks & kOr) ? either(part, value, right) : right;
    } else {
      const NodeId right = expression(rightAst);
      value = (marks & kPlus) ? plus(part, value, right) : isRest(part) ? unknown(part) : 0;
    }
  }
  return value;
}

std::set<std::uint32_t> Body::countersIn(Ast ast) const {
  std::set<std::uint32_t> found;
  for (Ast inner = ast; inner != 0 && inner < nodes_[ast].last; ++inner) {
    if (nodes_[inner].kind != Kind::identifier || unit_.link[inner] >= unit_.refs.size()) continue;
    const VariableRef& ref = unit_.refs[unit_.link[inner]];
    const bool isCounter = std::find(counters_.begin(), counters_.end(), ref.slot) != counters_.end();
    if (ref.def == act_.def && isCounter) found.insert(ref.slot);
  }
  return found;
}

// Whether loops inside each other count the one part and the other: then all of one meet all of the other.
bool Body::isCountedApart(Ast sum) const {
  if (counters_.size() < 2) return false;
  const std::set<std::uint32_t> left = countersIn(childIn(nodes_, sum, Field::left));
  const std::set<std::uint32_t> right = countersIn(childIn(nodes_, sum, Field::right));
  return !left.empty() && !right.empty() &&
         std::none_of(left.begin(), left.end(), [&](std::uint32_t slot) { return right.count(slot) != 0; });
}

// Texts that a loop puts together are not known; of markup, each round's part is.
NodeId Body::plus(Ast ast, NodeId left, NodeId right) {
  const bool isCarried = std::find(loopHeads_.begin(), loopHeads_.end(), left) != loopHeads_.end() ||
                         std::find(loopHeads_.begin(), loopHeads_.end(), right) != loopHeads_.end();
  const bool isInMarkup = hasMarkup(ast);
  if (isCarried) return isInMarkup ? either(ast, unknown(ast), right) : unknown(ast);
  if (isInMarkup) return a_.concatenate(at(ast), a_.withHoles(at(ast), left), a_.withHoles(at(ast), right));
  const NodeId made = a_.concatenate(at(ast), left, right);
  if (isCountedApart(ast)) a_.joins.erase(made);
  return made;
}

}  // namespace flow
