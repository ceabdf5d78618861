// Body: an activation from its beginning on, its variables, and their states where ways meet. Test:
// tests/flow/Analysis_test.cpp.

#include "flow/body/Body.h"

#include <algorithm>

namespace flow {
namespace {

constexpr std::size_t kMaxShared = 16;

}  // namespace

void Body::run() {
  state_.defs.assign(def_.variables.size(), 0);
  act_.variables.assign(def_.variables.size(), 0);
  const Where where = at(def_.ast);
  if (const NodeId scope = scopeAround()) withs_.push_back(scope);
  const bool hasSelf = def_.what != Def::What::arrow && def_.what != Def::What::loopBody;
  if (hasSelf && act_.self == 0) act_.self = s_.make(where, Step::none);
  if (act_.result == 0) act_.result = s_.make(where, Step::result, def_.name);
  if (def_.isGenerator) {
    act_.yielded = s_.make(where, Step::result, def_.name);
    act_.sent = s_.make(where, Step::none);
  }
  if (nodes_.empty()) return;
  if (def_.selfSlot != kNone && act_.closure != kNobody) {
    const NodeId self = made(where, act_.closure);
    state_.defs[def_.selfSlot] = self;
    s_.edge(self, variable(def_.selfSlot));
  }
  if (def_.usesArguments && hasSelf) {
    act_.argumentsArray = a_.newObject(Class::array, where);
    act_.argumentsObject = made(where, act_.argumentsArray);
    if (act_.closure != kNobody) s_.add(a_.property(act_.argumentsArray, a_.names.of("callee")).node, act_.closure);
  }
  takeParameters();
  for (const Ast ast : def_.functions)
    hoist(ast);
  if (def_.what == Def::What::script) {
    hoistImports();
    NodeId last = 0;
    for (Ast child = 1; child < nodes_[0].last; child = nodes_[child].last) {
      if (nodes_[child].kind == Kind::expressionStatement)
        last = expression(firstChild(nodes_, child));
      else
        statement(child);
    }
    s_.edge(last, act_.result);  // what eval gives
    return;
  }
  if (def_.body == 0) {
    for (Ast child = def_.ast + 1; child < nodes_[def_.ast].last; child = nodes_[child].last)
      statement(child);
    return;
  }
  const Kind kind = nodes_[def_.body].kind;
  if (def_.what == Def::What::loopBody || kind == Kind::statementBlock) {
    statement(def_.body);
    const Ast only = firstChild(nodes_, def_.body);
    const bool isOnlyReturn = only != 0 && nodes_[only].kind == Kind::returnStatement;
    if (isOnlyReturn && def_.what != Def::What::loopBody) answer(firstChild(nodes_, only));
  } else {
    s_.edge(expression(def_.body), act_.result);
    answer(def_.body);
  }
}

NodeId Body::made(Where where, Value value, Step step, Name name) {
  const NodeId node = s_.make(where, step, name);
  s_.add(node, value);
  return node;
}

// The object whose properties are names in a template, and in the functions inside it.
NodeId Body::scopeAround() const {
  for (ActId at = id_; at != kNobody; at = a_.acts[at].env)
    if (a_.acts[at].scope != 0) return a_.acts[at].scope;
  return 0;
}

ActId Body::home(DefIndex def) const {
  ActId at = id_;
  while (at != kNobody && (a_.acts[at].unit != act_.unit || a_.acts[at].def != def))
    at = a_.acts[at].env;
  return at;
}

// The activation of the function around: past arrows, and bodies of loops.
ActId Body::function(bool isPastArrows) const {
  ActId at = id_;
  for (;;) {
    const Def& def = a_.units[a_.acts[at].unit].defs[a_.acts[at].def];
    const bool isInside = def.what == Def::What::loopBody || (isPastArrows && def.what == Def::What::arrow);
    if (!isInside || a_.acts[at].env == kNobody) return at;
    at = a_.acts[at].env;
  }
}

ObjectId Body::module() const {
  ActId at = id_;
  while (a_.acts[at].env != kNobody)
    at = a_.acts[at].env;
  return a_.acts[at].module;
}

// Names a variable that is declared further out than a loop. Never 0.
std::uint64_t Body::loopKey(const VariableRef& ref, Name name) {
  return (static_cast<std::uint64_t>(ref.def) << 32 | (ref.def == kNone ? name : ref.slot)) + 1;
}

// The round of a loop around that writes the variable, if there is one.
Activation* Body::roundOf(const VariableRef& ref, Name name) {
  const std::uint64_t key = loopKey(ref, name);
  for (ActId at = id_; at != kNobody && a_.acts[at].unit == act_.unit && a_.acts[at].def != ref.def;
       at = a_.acts[at].env)
    if (a_.acts[at].loopVariable == key) return &a_.acts[at];
  return nullptr;
}

// What a round of a loop reads is what that round was made for, and not what other rounds write.
void Body::keepLoopVariable(Ast left, NodeId value) {
  if (nodes_[left].kind != Kind::identifier) left = soleName(left);
  if (left == 0) return;
  const std::uint32_t link = unit_.link[left];
  const VariableRef ref = link < unit_.refs.size() ? unit_.refs[link] : VariableRef();
  if (ref.def == act_.def) return;
  act_.loopVariable = loopKey(ref, nameOf(left));
  act_.loopValue = value;
}

// The identifier of `var name`, or 0.
Ast Body::soleName(Ast ast) const {
  while (ast != 0 && (nodes_[ast].kind == Kind::variableDeclaration || nodes_[ast].kind == Kind::variableDeclarator))
    ast = firstChild(nodes_, ast);
  return ast != 0 && nodes_[ast].kind == Kind::identifier ? ast : 0;
}

NodeId Body::readVariable(Ast ast) {
  const std::uint32_t link = unit_.link[ast];
  const VariableRef ref = link < unit_.refs.size() ? unit_.refs[link] : VariableRef();
  const Name name = nameOf(ast);
  if (const Activation* round = roundOf(ref, name)) return round->loopValue;
  if (const NodeId written = lastWritten(sharedOf(ref, name))) return written;
  if (ref.def == kNone) return readGlobal(ast, name);
  if (ref.def == act_.def) {
    const Variable& variable = def_.variables[ref.slot];
    if (!variable.isWrittenInside && state_.defs[ref.slot] != 0) return state_.defs[ref.slot];
    if (variable.isGlobal) return a_.readNode(window(), name);
    return variable.isWrittenInside ? this->variable(ref.slot) : 0;
  }
  const ActId where = home(ref.def);
  if (where == kNobody) return 0;
  if (unit_.defs[ref.def].variables[ref.slot].isGlobal) return a_.readNode(window(), name);
  return a_.variableNode(where, ref.slot);
}

Body::Shared Body::sharedOf(const VariableRef& ref, Name name) const {
  return ref.def == kNone ? Shared{kNone, name} : Shared{ref.def, ref.slot};
}

// (Models count on hearing of all that is ever written.)
// What this code wrote into a variable that is not its own alone, where no other code can have written it since; or 0.
NodeId Body::lastWritten(const Shared& shared) const {
  for (const auto& [variable, node] : state_.shared)
    if (variable == shared) return node;
  return 0;
}

void Body::keepWritten(const Shared& shared, NodeId node) {
  const auto is = [&shared](const auto& one) { return one.first == shared; };
  state_.shared.erase(std::remove_if(state_.shared.begin(), state_.shared.end(), is), state_.shared.end());
  const bool isOwn = shared.def == act_.def && !def_.variables[shared.slot].isWrittenInside;
  const bool isKept = node != 0 && !isOwn && !unit_.isModel && state_.shared.size() < kMaxShared;
  if (isKept) state_.shared.emplace_back(shared, node);
}

// Other code runs, and may write all of them; but a method is taken not to replace its receiver in the variable `but`.
void Body::forgetWritten(Ast but) {
  if (state_.shared.empty()) return;
  std::vector<std::pair<Shared, NodeId>> kept;
  if (but != 0 && nodes_[but].kind == Kind::identifier) {
    const std::uint32_t link = unit_.link[but];
    const Shared shared = sharedOf(link < unit_.refs.size() ? unit_.refs[link] : VariableRef(), nameOf(but));
    if (const NodeId node = lastWritten(shared)) kept.emplace_back(shared, node);
  }
  state_.shared = std::move(kept);
}

NodeId Body::readGlobal(Ast ast, Name name) {
  const std::string& text = a_.names.text(name);
  if (text == "arguments") return a_.acts[function(true)].argumentsObject;
  if (text == "undefined") return 0;
  const ObjectId own = module();
  if (own != kNobody) {
    if (text == "module") return a_.single(own);
    if (text == "exports") return a_.readNode(own, a_.known.exports);
  }
  for (const NodeId scope : withs_) {
    const NodeId result = s_.make(at(ast), Step::none, name);
    if (!a_.hasNative(text)) a_.read(at(ast), id_, scope, 0, name, result);
    s_.edge(a_.readNode(window(), name), result);
    return result;
  }
  return a_.readNode(window(), name);
}

void Body::assign(Ast ast, NodeId value) {
  const std::uint32_t link = unit_.link[ast];
  const VariableRef ref = link < unit_.refs.size() ? unit_.refs[link] : VariableRef();
  const Name name = nameOf(ast);
  if (Activation* round = roundOf(ref, name)) round->loopValue = either(ast, round->loopValue, value);
  if (ref.def == kNone) {
    a_.writeValue(at(ast), id_, window(), name, value, 0);
    return keepWritten(sharedOf(ref, name), value);
  }
  NodeId node = value;
  if (value != 0) {
    node = s_.make(at(ast), Step::variable, name);
    s_.edge(value, node);
    if (const auto origin = origins_.find(value); origin != origins_.end()) origins_.emplace(node, origin->second);
  }
  keepWritten(sharedOf(ref, name), node);
  if (ref.def != act_.def) {
    const ActId where = home(ref.def);
    if (where == kNobody) return;
    if (unit_.defs[ref.def].variables[ref.slot].isGlobal) return writeGlobal(ast, name, node);
    s_.edge(node, a_.variableNode(where, ref.slot));
    return;
  }
  const Variable& variable = def_.variables[ref.slot];
  if (variable.isGlobal) writeGlobal(ast, name, node);
  if (!variable.isWrittenInside) state_.defs[ref.slot] = node;
  if (!variable.isGlobal && (variable.isWrittenInside || variable.isReadInside || act_.def == 0))
    s_.edge(node, this->variable(ref.slot));
}

void Body::writeGlobal(Ast ast, Name name, NodeId node) {
  if (node != 0) a_.writeValue(at(ast), id_, window(), name, node, 0);
}

void Body::takeParameters() {
  if (def_.parameters == 0) return;
  if (def_.what == Def::What::loopBody) {
    const NodeId node = s_.make(at(def_.parameters), Step::parameter, nameOf(def_.parameters));
    act_.parameters.push_back(node);
    pattern(def_.parameters, node);
    keepLoopVariable(def_.parameters, node);
    return;
  }
  if (nodes_[def_.parameters].kind != Kind::formalParameters) {
    takeParameter(def_.parameters);
    return;
  }
  for (Ast child = def_.parameters + 1; child < nodes_[def_.parameters].last; child = nodes_[child].last)
    takeParameter(child);
}

void Body::takeParameter(Ast ast) {
  const bool isName = nodes_[ast].kind == Kind::identifier;
  const NodeId node = s_.make(at(ast), Step::parameter, isName ? nameOf(ast) : 0);
  act_.parameters.push_back(node);
  if (isName) {
    const std::uint32_t link = unit_.link[ast];
    if (link >= unit_.refs.size() || unit_.refs[link].def != act_.def) return;
    const std::uint32_t slot = unit_.refs[link].slot;
    state_.defs[slot] = node;
    if (def_.variables[slot].isReadInside || def_.variables[slot].isWrittenInside) s_.edge(node, variable(slot));
  } else {
    pattern(nodes_[ast].kind == Kind::restPattern ? firstChild(nodes_, ast) : ast, node);
  }
}

void Body::hoist(Ast ast) {
  const Ast name = childIn(nodes_, ast, Field::name);
  if (name == 0) return;
  assign(name, made(at(ast), a_.closureObject(act_.unit, unit_.link[ast], id_, at(ast))));
}

Body::State Body::join(const State& left, const State& right, Ast ast) {
  if (left.isDead) return right;
  if (right.isDead) return left;
  State joined = left;
  for (std::size_t i = 0; i < joined.defs.size(); ++i) {
    if (left.defs[i] == right.defs[i]) continue;
    if (left.defs[i] == 0 || right.defs[i] == 0) {
      joined.defs[i] = std::max(left.defs[i], right.defs[i]);
      continue;
    }
    joined.defs[i] = s_.make(at(ast), Step::none);
    s_.edge(left.defs[i], joined.defs[i]);
    s_.edge(right.defs[i], joined.defs[i]);
  }
  const auto isApart = [&right](const auto& one) {
    return std::find(right.shared.begin(), right.shared.end(), one) == right.shared.end();
  };
  joined.shared.erase(std::remove_if(joined.shared.begin(), joined.shared.end(), isApart), joined.shared.end());
  return joined;
}

std::vector<std::uint32_t> Body::writtenIn(Ast ast) const {
  std::vector<std::uint32_t> slots;
  for (Ast inner = ast; inner < nodes_[ast].last; ++inner) {
    const Kind kind = nodes_[inner].kind;
    if (kind != Kind::identifier && kind != Kind::shorthandPattern) continue;
    const std::uint32_t link = unit_.link[inner];
    if (link >= unit_.refs.size() || !unit_.refs[link].isWrite || unit_.refs[link].def != act_.def) continue;
    slots.push_back(unit_.refs[link].slot);
  }
  std::sort(slots.begin(), slots.end());
  slots.erase(std::unique(slots.begin(), slots.end()), slots.end());
  return slots;
}

void Analysis::build(ActId act) {
  Body(*this, act).run();
}

NodeId Analysis::variableNode(ActId id, std::uint32_t slot) {
  Activation& act = acts[id];
  if (slot >= act.variables.size()) return 0;
  if (act.variables[slot] == 0) {
    const Unit& unit = units[act.unit];
    const Variable& variable = unit.defs[act.def].variables[slot];
    act.variables[slot] = variable.isGlobal ? readNode(realms[act.realm].window, variable.name)
                                            : solver.make({act.unit, unit.nodes[unit.defs[act.def].ast].begin},
                                                          Step::none, variable.name);
  }
  return act.variables[slot];
}

}  // namespace flow
