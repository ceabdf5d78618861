// Body: statements but loops. Test: tests/flow/Analysis_test.cpp.

#include <algorithm>
#include <cstdlib>

#include "flow/body/Body.h"

namespace flow {
namespace {

constexpr int kMaxNesting = 420;  // of what is read by calling ourselves

}  // namespace

bool Body::isTooDeep() {
  if (depth_ < kMaxNesting && !s_.isSpent()) return false;
  if (depth_ >= kMaxNesting) a_.notRead.emplace(a_.files[unit_.file].path, "part of its script is nested too deeply");
  return true;
}

void Body::children(Ast ast) {
  for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last)
    statement(child);
}

void Body::statement(Ast ast) {
  if (ast == 0 || isTooDeep()) return;
  const Nesting nesting(depth_);
  const Node& node = nodes_[ast];
  switch (node.kind) {
    case Kind::functionDeclaration:
    case Kind::generatorFunctionDeclaration:
    case Kind::importStatement:
      return;
    case Kind::statementBlock:
    case Kind::elseClause:
    case Kind::finallyClause:
    case Kind::error:
    case Kind::program:
      return children(ast);
    case Kind::labeledStatement:
      targets_.push_back({});
      statement(childIn(nodes_, ast, Field::body));
      endBreaks(ast);
      return;
    case Kind::variableDeclaration:
    case Kind::lexicalDeclaration:
      for (Ast child = ast + 1; child < node.last; child = nodes_[child].last)
        if (nodes_[child].kind == Kind::variableDeclarator) declarator(child);
      return;
    case Kind::ifStatement:
      return ifStatement(ast);
    case Kind::forStatement:
      statementOrExpression(childIn(nodes_, ast, Field::initializer));
      return forStatement(ast);
    case Kind::whileStatement:
    case Kind::doStatement:
      return loop(ast, [&] {
        if (node.kind == Kind::whileStatement) expression(childIn(nodes_, ast, Field::condition));
        statement(childIn(nodes_, ast, Field::body));
        if (node.kind == Kind::doStatement) expression(childIn(nodes_, ast, Field::condition));
      });
    case Kind::forInStatement:
      return forIn(ast);
    case Kind::switchStatement:
      return switchStatement(ast);
    case Kind::tryStatement:
      return tryStatement(ast);
    case Kind::withStatement: {
      withs_.push_back(expression(childIn(nodes_, ast, Field::object)));
      statement(childIn(nodes_, ast, Field::body));
      withs_.pop_back();
      return;
    }
    case Kind::returnStatement:
      if (const Ast value = firstChild(nodes_, ast)) returned(expression(value));
      state_.isDead = true;
      return;
    case Kind::throwStatement:
      if (const Ast value = firstChild(nodes_, ast)) s_.edge(expression(value), thrown());
      state_.isDead = true;
      return;
    case Kind::breakStatement:
    case Kind::continueStatement:
      return leave(node.kind == Kind::continueStatement);
    case Kind::classDeclaration: {
      const NodeId value = classValue(ast);
      if (const Ast name = childIn(nodes_, ast, Field::name)) assign(name, value);
      return;
    }
    case Kind::exportStatement:
      return exportStatement(ast);
    case Kind::expressionStatement:
      for (Ast child = ast + 1; child < node.last; child = nodes_[child].last)
        expression(child);
      return;
    default:
      expression(ast);
  }
}

void Body::statementOrExpression(Ast ast) {
  if (ast != 0) statement(ast);
}

void Body::endBreaks(Ast ast) {
  Target target = std::move(targets_.back());
  targets_.pop_back();
  for (const State& other : target.breaks)
    state_ = join(state_, other, ast);
}

void Body::leave(bool isContinue) {
  for (std::size_t i = targets_.size(); i-- > 0;) {
    if (isContinue && !targets_[i].isLoop) continue;
    auto& states = isContinue ? targets_[i].continues : targets_[i].breaks;
    if (!state_.isDead && states.size() < 40) states.push_back(state_);
    break;
  }
  state_.isDead = true;
}

NodeId Body::thrown() {
  if (thrown_ == 0) thrown_ = s_.make(at(def_.ast), Step::none);
  return thrown_;
}

void Body::returned(NodeId value) {
  const Activation& of = a_.acts[function(false)];
  s_.edge(value, of.result);
}

void Body::declarator(Ast ast) {
  const Ast name = childIn(nodes_, ast, Field::name);
  const Ast value = childIn(nodes_, ast, Field::value);
  if (name == 0) return;
  if (value == 0) return;
  const NodeId node = expression(value);
  keepOrigin(value, node);
  if (nodes_[name].kind == Kind::identifier)
    assign(name, node);
  else
    pattern(name, node);
}

void Body::ifStatement(Ast ast) {
  const Ast condition = childIn(nodes_, ast, Field::condition);
  expression(condition);
  const Truth truth = decided(condition);
  if (truth == Truth::always) return statement(childIn(nodes_, ast, Field::consequence));
  if (truth == Truth::never) return statement(childIn(nodes_, ast, Field::alternative));
  const State before = state_;
  const Ast consequence = childIn(nodes_, ast, Field::consequence);
  const Ast alternative = childIn(nodes_, ast, Field::alternative);
  narrow(condition, true, consequence);
  statement(consequence);
  const State then = state_;
  state_ = before;
  if (alternative != 0) {
    narrow(condition, false, alternative);
    statement(alternative);
  } else if (then.isDead) {
    narrowRest(condition, ast);
  }
  const bool isDead = then.isDead && state_.isDead;
  state_ = join(then, state_, ast);
  state_.isDead = isDead;
}

void Body::switchStatement(Ast ast) {
  const Ast value = childIn(nodes_, ast, Field::value);
  expression(value);
  const Ast body = childIn(nodes_, ast, Field::body);
  if (body == 0) return;
  const State before = state_;
  targets_.push_back({});
  state_.isDead = true;
  for (Ast part = body + 1; part < nodes_[body].last; part = nodes_[part].last) {
    const State fallen = state_;
    state_ = before;
    narrowCase(value, body, part);
    state_ = join(fallen, state_, part);
    state_.isDead = false;
    for (Ast child = part + 1; child < nodes_[part].last; child = nodes_[child].last) {
      if (nodes_[child].field == Field::value)
        expression(child);
      else
        statement(child);
    }
  }
  state_ = join(state_, before, ast);
  state_.isDead = false;
  endBreaks(ast);
}

void Body::tryStatement(Ast ast) {
  const State before = state_;
  const NodeId outer = thrown_;
  thrown_ = 0;
  statement(childIn(nodes_, ast, Field::body));
  const NodeId inner = thrown_;
  thrown_ = outer;
  const State after = state_;
  if (const Ast handler = childIn(nodes_, ast, Field::handler)) {
    State start = after;
    start.isDead = false;
    state_ = join(before, start, handler);
    if (const Ast parameter = childIn(nodes_, handler, Field::parameter)) {
      if (inner != 0) pattern(parameter, inner);
    }
    statement(childIn(nodes_, handler, Field::body));
    state_ = join(after, state_, ast);
  }
  if (const Ast finalizer = childIn(nodes_, ast, Field::finalizer)) statement(finalizer);
}

}  // namespace flow
