// Body: reads one activation's code into nodes and edges. Variables that only their own function writes have a node for
// each place that does, joined where ways meet; others have one. Test: tests/flow/Analysis_test.cpp.

#include <algorithm>

#include "flow/Analysis.h"
#include "flow/Strings.h"

namespace flow {
namespace {

constexpr int kMaxNesting = 420;  // of what is read by calling ourselves
constexpr std::size_t kMaxHanded = 200'000;
constexpr long kMaxCounted = 64;  // rounds of a loop that counts

class Body {
 public:
  Body(Analysis& analysis, ActId act)
      : a_(analysis),
        s_(analysis.solver),
        id_(act),
        act_(analysis.acts[act]),
        unit_(analysis.units[act_.unit]),
        nodes_(unit_.nodes),
        def_(unit_.defs[act_.def]) {}

  void run() {
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
    } else {
      s_.edge(expression(def_.body), act_.result);
    }
  }

 private:
  struct State {
    std::vector<NodeId> defs;
    bool isDead = false;
  };

  struct Target {
    std::vector<State> breaks;
    std::vector<State> continues;
    bool isLoop = false;
  };

  Where at(Ast ast) const { return {act_.unit, ast < nodes_.size() ? nodes_[ast].begin : 0}; }

  NodeId made(Where where, Value value, Step step = Step::made, Name name = 0) {
    const NodeId node = s_.make(where, step, name);
    s_.add(node, value);
    return node;
  }

  // The object whose properties are names in a template, and in the functions inside it.
  NodeId scopeAround() const {
    for (ActId at = id_; at != kNobody; at = a_.acts[at].env)
      if (a_.acts[at].scope != 0) return a_.acts[at].scope;
    return 0;
  }

  Name nameOf(Ast ast) { return a_.names.of(unit_.textOf(ast)); }

  // ---- variables ----------------------------------------------------------------------------------------------------

  NodeId variable(std::uint32_t slot) { return a_.variableNode(id_, slot); }

  ActId home(DefIndex def) const {
    ActId at = id_;
    while (at != kNobody && (a_.acts[at].unit != act_.unit || a_.acts[at].def != def))
      at = a_.acts[at].env;
    return at;
  }

  // The activation of the function around: past arrows, and bodies of loops.
  ActId function(bool isPastArrows) const {
    ActId at = id_;
    for (;;) {
      const Def& def = a_.units[a_.acts[at].unit].defs[a_.acts[at].def];
      const bool isInside = def.what == Def::What::loopBody || (isPastArrows && def.what == Def::What::arrow);
      if (!isInside || a_.acts[at].env == kNobody) return at;
      at = a_.acts[at].env;
    }
  }

  NodeId self() { return a_.acts[function(true)].self; }

  ObjectId window() const { return a_.realms[act_.realm].window; }

  ObjectId module() const {
    ActId at = id_;
    while (a_.acts[at].env != kNobody)
      at = a_.acts[at].env;
    return a_.acts[at].module;
  }

  // Names a variable that is declared further out than a loop. Never 0.
  static std::uint64_t loopKey(const VariableRef& ref, Name name) {
    return (static_cast<std::uint64_t>(ref.def) << 32 | (ref.def == kNone ? name : ref.slot)) + 1;
  }

  // The round of a loop around that writes the variable, if there is one.
  Activation* roundOf(const VariableRef& ref, Name name) {
    const std::uint64_t key = loopKey(ref, name);
    for (ActId at = id_; at != kNobody && a_.acts[at].unit == act_.unit && a_.acts[at].def != ref.def;
         at = a_.acts[at].env)
      if (a_.acts[at].loopVariable == key) return &a_.acts[at];
    return nullptr;
  }

  // What a round of a loop reads is what that round was made for, and not what other rounds write.
  void keepLoopVariable(Ast left, NodeId value) {
    if (nodes_[left].kind != Kind::identifier) left = soleName(left);
    if (left == 0) return;
    const std::uint32_t link = unit_.link[left];
    const VariableRef ref = link < unit_.refs.size() ? unit_.refs[link] : VariableRef();
    if (ref.def == act_.def) return;
    act_.loopVariable = loopKey(ref, nameOf(left));
    act_.loopValue = value;
  }

  // The identifier of `var name`, or 0.
  Ast soleName(Ast ast) const {
    while (ast != 0 && (nodes_[ast].kind == Kind::variableDeclaration || nodes_[ast].kind == Kind::variableDeclarator))
      ast = firstChild(nodes_, ast);
    return ast != 0 && nodes_[ast].kind == Kind::identifier ? ast : 0;
  }

  NodeId readVariable(Ast ast) {
    const std::uint32_t link = unit_.link[ast];
    const VariableRef ref = link < unit_.refs.size() ? unit_.refs[link] : VariableRef();
    const Name name = nameOf(ast);
    if (const Activation* round = roundOf(ref, name)) return round->loopValue;
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

  NodeId readGlobal(Ast ast, Name name) {
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

  void assign(Ast ast, NodeId value) {
    const std::uint32_t link = unit_.link[ast];
    const VariableRef ref = link < unit_.refs.size() ? unit_.refs[link] : VariableRef();
    const Name name = nameOf(ast);
    if (Activation* round = roundOf(ref, name)) round->loopValue = either(ast, round->loopValue, value);
    if (ref.def == kNone) {
      a_.writeValue(at(ast), id_, window(), name, value, 0);
      return;
    }
    NodeId node = value;
    if (value != 0) {
      node = s_.make(at(ast), Step::variable, name);
      s_.edge(value, node);
    }
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

  void writeGlobal(Ast ast, Name name, NodeId node) {
    if (node != 0) a_.writeValue(at(ast), id_, window(), name, node, 0);
  }

  void takeParameters() {
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

  void takeParameter(Ast ast) {
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

  void hoist(Ast ast) {
    const Ast name = childIn(nodes_, ast, Field::name);
    if (name == 0) return;
    assign(name, made(at(ast), a_.closureObject(act_.unit, unit_.link[ast], id_, at(ast))));
  }

  // ---- states -------------------------------------------------------------------------------------------------------

  State join(const State& left, const State& right, Ast ast) {
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
    return joined;
  }

  std::vector<std::uint32_t> writtenIn(Ast ast) const {
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

  template <typename Content>
  void loop(Ast ast, Content content) {
    const std::vector<std::uint32_t> slots = writtenIn(ast);
    std::vector<NodeId> heads;
    for (const std::uint32_t slot : slots) {
      const NodeId head = s_.make(at(ast), Step::none);
      s_.edge(state_.defs[slot], head);
      state_.defs[slot] = head;
      heads.push_back(head);
      loopHeads_.push_back(head);
    }
    const State before = state_;
    targets_.push_back({});
    targets_.back().isLoop = true;
    content();
    Target target = std::move(targets_.back());
    targets_.pop_back();
    State end = state_;
    for (const State& other : target.continues)
      end = join(end, other, ast);
    for (std::size_t i = 0; i < slots.size(); ++i)
      s_.edge(end.defs[slots[i]], heads[i]);
    State after = end.isDead ? before : join(before, end, ast);
    for (const State& other : target.breaks)
      after = join(after, other, ast);
    state_ = std::move(after);
    state_.isDead = false;
    loopHeads_.resize(loopHeads_.size() - heads.size());
  }

  // ---- statements ---------------------------------------------------------------------------------------------------

  struct Nesting {
    explicit Nesting(int& depth) : depth(depth) { ++depth; }
    ~Nesting() { --depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    int& depth;
  };

  bool isTooDeep() {
    if (depth_ < kMaxNesting && !s_.isSpent()) return false;
    if (depth_ >= kMaxNesting) a_.notRead.emplace(a_.files[unit_.file].path, "part of its script is nested too deeply");
    return true;
  }

  void children(Ast ast) {
    for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last)
      statement(child);
  }

  void statement(Ast ast) {
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

  void forStatement(Ast ast) {
    const Ast increment = childIn(nodes_, ast, Field::increment);
    const std::uint32_t slot = counterOf(ast);
    const NodeId counter = slot == kNone ? 0 : counted(ast, slot);
    if (slot != kNone) counters_.push_back(slot);
    loop(ast, [&] {
      if (counter != 0) setCounter(slot, counter);
      statementOrExpression(childIn(nodes_, ast, Field::condition));
      statement(childIn(nodes_, ast, Field::body));
      if (counter == 0) statementOrExpression(increment);
    });
    if (slot != kNone) counters_.pop_back();
    if (counter != 0) setCounter(slot, unknown(ast));
  }

  void setCounter(std::uint32_t slot, NodeId value) {
    state_.defs[slot] = value;
    if (def_.variables[slot].isReadInside || act_.def == 0) s_.edge(value, variable(slot));
  }

  // The binary expression of a loop's condition, or 0.
  Ast conditionOf(Ast ast) const {
    Ast condition = childIn(nodes_, ast, Field::condition);
    if (condition != 0 && nodes_[condition].kind == Kind::expressionStatement)
      condition = firstChild(nodes_, condition);
    return condition != 0 && nodes_[condition].kind == Kind::binaryExpression ? condition : 0;
  }

  // The variable of the function that a loop counts up one by one, to less than a bound: its slot, or kNone.
  std::uint32_t counterOf(Ast ast) const {
    const Ast increment = childIn(nodes_, ast, Field::increment);
    const Ast condition = conditionOf(ast);
    if (increment == 0 || condition == 0 || nodes_[increment].kind != Kind::updateExpression) return kNone;
    if (unit_.textOf(increment).find("++") == std::string_view::npos) return kNone;
    const Ast left = childIn(nodes_, condition, Field::left);
    const Ast name = childIn(nodes_, increment, Field::argument);
    if (left == 0 || name == 0 || nodes_[left].kind != Kind::identifier || nodes_[name].kind != Kind::identifier)
      return kNone;
    const std::uint32_t one = unit_.link[left];
    const std::uint32_t other = unit_.link[name];
    if (one >= unit_.refs.size() || other >= unit_.refs.size()) return kNone;
    const VariableRef& ref = unit_.refs[one];
    const bool isSame = unit_.refs[other].def == ref.def && unit_.refs[other].slot == ref.slot;
    if (!isSame || ref.def != act_.def || def_.variables[ref.slot].isWrittenInside) return kNone;
    return ref.slot;
  }

  // The numbers that the counter has, where the bound is known: a number, or the length of a list.
  NodeId counted(Ast ast, std::uint32_t slot) {
    const Ast condition = conditionOf(ast);
    const Ast left = childIn(nodes_, condition, Field::left);
    const Ast right = childIn(nodes_, condition, Field::right);
    if (right == 0 || nodes_[right].begin <= nodes_[left].end) return 0;
    std::string sign(std::string_view(unit_.text).substr(nodes_[left].end, nodes_[right].begin - nodes_[left].end));
    sign.erase(std::remove(sign.begin(), sign.end(), ' '), sign.end());
    const NodeId start = state_.defs[slot];
    if ((sign != "<" && sign != "<=") || start == 0) return 0;
    const NodeId counter = s_.make(at(ast), Step::value);
    const long more = sign == "<=" ? 1 : 0;
    const Ast property = childIn(nodes_, right, Field::property);
    const bool isLength =
        nodes_[right].kind == Kind::memberExpression && property != 0 && unit_.textOf(property) == "length";
    const NodeId bound = expression(isLength ? childIn(nodes_, right, Field::object) : right);
    if (bound == 0) return 0;
    Analysis& a = a_;
    s_.listen(start, [&a, bound, isLength, more, counter](const Arrival& first) {
      if (!isNumber(first.value)) return a.solver.add(counter, kUnknown);
      const long from = std::strtol(a.names.text(nameIn(first.value)).c_str(), nullptr, 10);
      if (isLength)
        countList(a, bound, from, more, counter);
      else
        countTo(a, bound, from, more, counter);
    });
    a.whenEmpty(counter, [&a, counter] { a.solver.add(counter, kUnknown); });
    return counter;
  }

  static void addNumbers(Analysis& a, long from, long end, NodeId counter) {
    if (end - from > kMaxCounted) return a.solver.add(counter, kUnknown);
    for (long i = from; i < end; ++i)
      a.solver.add(counter, numberValue(a.names.of(std::to_string(i))));
  }

  static void countTo(Analysis& a, NodeId bound, long from, long more, NodeId counter) {
    a.solver.listen(bound, [&a, from, more, counter](const Arrival& value) {
      if (!isNumber(value.value)) return a.solver.add(counter, kUnknown);
      addNumbers(a, from, std::strtol(a.names.text(nameIn(value.value)).c_str(), nullptr, 10) + more, counter);
    });
  }

  static bool hasOnlyPlaces(const Analysis& a, ObjectId list) {
    const Object& of = a.objects[list];
    return of.cls == Class::array && of.b > 0 && (of.star == 0 || a.solver.isEmpty(of.star));
  }

  static void countList(Analysis& a, NodeId list, long from, long more, NodeId counter) {
    a.solver.listen(list, [&a, from, more, counter](const Arrival& value) {
      if (!isObject(value.value) || !hasOnlyPlaces(a, value.value)) return a.solver.add(counter, kUnknown);
      addNumbers(a, from, static_cast<long>(a.objects[value.value].b) + more, counter);
      // What is added to the list later.
      const ObjectId of = value.value;
      a.whenEmpty(a.solver.make({}, Step::none), [&a, of, counter] {
        if (!hasOnlyPlaces(a, of)) a.solver.add(counter, kUnknown);
      });
    });
  }

  void statementOrExpression(Ast ast) {
    if (ast != 0) statement(ast);
  }

  void endBreaks(Ast ast) {
    Target target = std::move(targets_.back());
    targets_.pop_back();
    for (const State& other : target.breaks)
      state_ = join(state_, other, ast);
  }

  void leave(bool isContinue) {
    for (std::size_t i = targets_.size(); i-- > 0;) {
      if (isContinue && !targets_[i].isLoop) continue;
      auto& states = isContinue ? targets_[i].continues : targets_[i].breaks;
      if (!state_.isDead && states.size() < 40) states.push_back(state_);
      break;
    }
    state_.isDead = true;
  }

  NodeId thrown() {
    if (thrown_ == 0) thrown_ = s_.make(at(def_.ast), Step::none);
    return thrown_;
  }

  void returned(NodeId value) {
    const Activation& of = a_.acts[function(false)];
    s_.edge(value, of.result);
  }

  void declarator(Ast ast) {
    const Ast name = childIn(nodes_, ast, Field::name);
    const Ast value = childIn(nodes_, ast, Field::value);
    if (name == 0) return;
    if (value == 0) return;
    const NodeId node = expression(value);
    if (nodes_[name].kind == Kind::identifier)
      assign(name, node);
    else
      pattern(name, node);
  }

  enum class Truth { unknown, always, never };

  static Truth truthOf(bool isTrue) { return isTrue ? Truth::always : Truth::never; }

  // Conditions that the way in which the function is called decides: whether it is called with `new`, and with how
  // many arguments.
  Truth decided(Ast ast) {
    while (ast != 0 && nodes_[ast].kind == Kind::parenthesizedExpression)
      ast = firstChild(nodes_, ast);
    if (ast == 0) return Truth::unknown;
    if (nodes_[ast].kind == Kind::unaryExpression && unit_.text[nodes_[ast].begin] == '!') {
      const Truth inner = decided(childIn(nodes_, ast, Field::argument));
      return inner == Truth::unknown ? inner : truthOf(inner == Truth::never);
    }
    return nodes_[ast].kind == Kind::binaryExpression ? decidedBinary(ast) : Truth::unknown;
  }

  Truth decidedBinary(Ast ast) {
    const Ast left = childIn(nodes_, ast, Field::left);
    const Ast right = childIn(nodes_, ast, Field::right);
    if (left == 0 || right == 0 || nodes_[right].begin <= nodes_[left].end) return Truth::unknown;
    std::string sign(std::string_view(unit_.text).substr(nodes_[left].end, nodes_[right].begin - nodes_[left].end));
    sign.erase(std::remove(sign.begin(), sign.end(), ' '), sign.end());
    const Activation& of = a_.acts[function(true)];
    if (sign == "instanceof" && nodes_[left].kind == Kind::thisWord && of.isInstance) return Truth::always;
    if (of.argumentCount < 0 || unit_.textOf(left) != "arguments.length" || nodes_[right].kind != Kind::number)
      return Truth::unknown;
    const double count = of.argumentCount;
    const double other = std::strtod(std::string(unit_.textOf(right)).c_str(), nullptr);
    if (sign == ">") return truthOf(count > other);
    if (sign == ">=") return truthOf(count >= other);
    if (sign == "<") return truthOf(count < other);
    if (sign == "<=") return truthOf(count <= other);
    if (sign == "===" || sign == "==") return truthOf(count == other);
    if (sign == "!==" || sign == "!=") return truthOf(count != other);
    return Truth::unknown;
  }

  void ifStatement(Ast ast) {
    const Ast condition = childIn(nodes_, ast, Field::condition);
    expression(condition);
    const Truth truth = decided(condition);
    if (truth == Truth::always) return statement(childIn(nodes_, ast, Field::consequence));
    if (truth == Truth::never) return statement(childIn(nodes_, ast, Field::alternative));
    const State before = state_;
    statement(childIn(nodes_, ast, Field::consequence));
    const State then = state_;
    state_ = before;
    if (const Ast alternative = childIn(nodes_, ast, Field::alternative)) statement(alternative);
    const bool isDead = then.isDead && state_.isDead;
    state_ = join(then, state_, ast);
    state_.isDead = isDead;
  }

  void switchStatement(Ast ast) {
    expression(childIn(nodes_, ast, Field::value));
    const Ast body = childIn(nodes_, ast, Field::body);
    if (body == 0) return;
    const State before = state_;
    targets_.push_back({});
    state_.isDead = true;
    for (Ast part = body + 1; part < nodes_[body].last; part = nodes_[part].last) {
      state_ = join(state_, before, part);
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

  void tryStatement(Ast ast) {
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

  // The body is read once for each name or value that comes.
  void forIn(Ast ast) {
    const Ast right = childIn(nodes_, ast, Field::right);
    const NodeId given = expression(right);
    const NodeId list = (nodes_[ast].marks & kAsync) ? settledElements(ast, given) : given;
    const std::uint32_t link = unit_.link[ast];
    if (link == kNone || link >= unit_.defs.size()) return;
    const ObjectId body = a_.closureObject(act_.unit, link, id_, at(ast));
    const Site site{at(ast), at(ast), id_, 0};
    if (nodes_[ast].marks & kOf)
      forOf(site, list, body);
    else
      forNames(site, list, body);
    a_.whenEmpty(list, [&a = a_, body, site] {
      if (!a.closures[a.objects[body].a].isEntered)
        a.callValue(site, body, 0, kUnknown, a.makeArgs({0}), 0, false, 0, 0);
    });
  }

  // What `for await` goes through: promises in a list stand for what they give.
  NodeId settledElements(Ast ast, NodeId list) {
    const ObjectId settled = a_.newObject(Class::array, at(ast));
    s_.edge(a_.awaited(at(ast), a_.elementsOf(at(ast), list)), a_.starNode(settled));
    return made(at(ast), settled);
  }

  void forNames(const Site& site, NodeId list, ObjectId body) {
    Analysis& a = a_;
    a.solver.listen(list, [&a, site, body](const Arrival& of) {
      if (!isObject(of.value)) return;
      const Class cls = a.objects[of.value].cls;
      if (cls != Class::plain && cls != Class::array && cls != Class::function && cls != Class::jquery) return;
      a.watch(of.value, [&a, site, body](Name name, NodeId) {
        const std::string& text = a.names.text(name);
        if (text.empty() || text[0] == '%' || text == "constructor") return;
        Site own = site;
        own.salt = name + 1;
        a.callValue(own, body, 0, kUnknown, a.makeArgs({a.single(textValue(name), site.where)}), 0, false, 0, 0);
      });
    });
  }

  void forOf(const Site& site, NodeId list, ObjectId body) {
    Analysis& a = a_;
    a.solver.listen(list, [&a, site, body](const Arrival& of) {
      if (!isObject(of.value)) return;
      const Class cls = a.objects[of.value].cls;
      if (cls == Class::array || cls == Class::jquery) {
        a.watch(of.value, [&a, site, body](Name name, NodeId node) {
          Site own = site;
          own.salt = name + 1;
          a.callValue(own, body, 0, kUnknown, a.makeArgs({node}), 0, false, 0, 0);
        });
        Site own = site;
        own.salt = 0;
        const NodeId star = a.starNode(of.value);
        a.solver.listen(star, [&a, own, body, star](const Arrival&) {
          a.callValue(own, body, 0, kUnknown, a.makeArgs({star}), 0, false, 0, 0);
        });
        return;
      }
      const NodeId element = a.solver.make(site.where, Step::none);
      a.elementsOfValue(site.where, of.value, element);
      a.solver.listen(element, [&a, site, body](const Arrival& value) {
        Site own = site;
        own.salt = value.value;
        a.callValue(own, body, 0, kUnknown, a.makeArgs({a.single(value.value, site.where)}), 0, false, 0, 0);
      });
    });
  }

  // ---- modules ------------------------------------------------------------------------------------------------------

  void hoistImports() {
    for (Ast child = 1; child < nodes_[0].last; child = nodes_[child].last)
      if (nodes_[child].kind == Kind::importStatement) importStatement(child);
  }

  NodeId moduleValue(Ast source) {
    const std::string target = unescape(contentOf(source));
    const std::uint32_t file = a_.findModule(unit_.file, target);
    if (file == kNone) return 0;
    const ObjectId module = a_.moduleExports(act_.realm, file, true);
    return module == kNobody ? 0 : a_.readNode(module, a_.known.exports);
  }

  std::string_view contentOf(Ast string) const {
    std::string_view text = unit_.textOf(string);
    return text.size() >= 2 ? text.substr(1, text.size() - 2) : std::string_view();
  }

  Name textOfName(Ast ast) {
    return nodes_[ast].kind == Kind::string ? a_.names.of(unescape(contentOf(ast))) : nameOf(ast);
  }

  void importStatement(Ast ast) {
    const Ast source = childIn(nodes_, ast, Field::source);
    if (source == 0) return;
    const NodeId module = moduleValue(source);
    for (Ast inner = ast; inner < nodes_[ast].last; ++inner) {
      const Node& node = nodes_[inner];
      if (node.kind == Kind::importClause) {
        for (Ast child = inner + 1; child < node.last; child = nodes_[child].last)
          if (nodes_[child].kind == Kind::identifier) importName(child, module, a_.known.defaultName);
      } else if (node.kind == Kind::namespaceImport) {
        if (const Ast name = firstChild(nodes_, inner)) assign(name, module);
      } else if (node.kind == Kind::importSpecifier) {
        const Ast name = childIn(nodes_, inner, Field::name);
        const Ast alias = childIn(nodes_, inner, Field::alias);
        if (name != 0) importName(alias ? alias : name, module, textOfName(name));
      }
    }
  }

  void importName(Ast local, NodeId module, Name name) {
    const NodeId value = s_.make(at(local), Step::variable, nameOf(local));
    a_.read(at(local), id_, module, 0, name, value);
    if (name == a_.known.defaultName) s_.edge(module, value, 1);
    assign(local, value);
  }

  void exportValue(Name name, NodeId value, Ast ast) {
    const ObjectId own = module();
    if (own == kNobody) return;
    a_.write(at(ast), id_, a_.readNode(own, a_.known.exports), 0, name, value);
  }

  void exportStatement(Ast ast) {
    const Ast source = childIn(nodes_, ast, Field::source);
    const NodeId from = source ? moduleValue(source) : 0;
    if (const Ast declaration = childIn(nodes_, ast, Field::declaration)) {
      statement(declaration);
      exportDeclared(declaration, (nodes_[ast].marks & kDefault) != 0);
    } else if (const Ast value = childIn(nodes_, ast, Field::value)) {
      exportValue(a_.known.defaultName, expression(value), ast);
    }
    if ((nodes_[ast].marks & kStar) && from != 0) {
      const ObjectId own = module();
      if (own != kNobody) {
        const NodeId exports = a_.readNode(own, a_.known.exports);
        Analysis& a = a_;
        const Where where = at(ast);
        const ActId act = id_;
        s_.listen(exports,
                  [&a, from, where, act](const Arrival& to) { a.assignProperties(where, act, from, to.value); });
      }
    }
    for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last) {
      if (nodes_[child].kind == Kind::namespaceExport) {
        if (const Ast name = firstChild(nodes_, child)) exportValue(textOfName(name), from, child);
      }
      if (nodes_[child].kind != Kind::exportClause) continue;
      for (Ast part = child + 1; part < nodes_[child].last; part = nodes_[part].last)
        exportSpecifier(part, source != 0, from);
    }
  }

  void exportSpecifier(Ast ast, bool isFromOther, NodeId from) {
    const Ast name = childIn(nodes_, ast, Field::name);
    const Ast alias = childIn(nodes_, ast, Field::alias);
    if (name == 0) return;
    NodeId value = 0;
    if (isFromOther) {
      value = s_.make(at(name), Step::none);
      a_.read(at(name), id_, from, 0, textOfName(name), value);
    } else {
      const std::uint32_t link = unit_.link[name];
      if (link < unit_.refs.size() && unit_.refs[link].def == 0)
        value = a_.variableNode(function(true), unit_.refs[link].slot);
    }
    exportValue(textOfName(alias ? alias : name), value, ast);
  }

  void exportDeclared(Ast declaration, bool isDefault) {
    const Kind kind = nodes_[declaration].kind;
    if (kind == Kind::variableDeclaration || kind == Kind::lexicalDeclaration) {
      for (Ast child = declaration + 1; child < nodes_[declaration].last; ++child) {
        if (nodes_[child].kind != Kind::identifier && nodes_[child].kind != Kind::shorthandPattern) continue;
        const std::uint32_t link = unit_.link[child];
        if (link >= unit_.refs.size() || unit_.refs[link].def != 0 || !unit_.refs[link].isWrite) continue;
        exportValue(nameOf(child), variable(unit_.refs[link].slot), child);
      }
      return;
    }
    const Ast name = childIn(nodes_, declaration, Field::name);
    NodeId value = 0;
    if (name != 0) value = readVariable(name);
    if (kind == Kind::functionDeclaration || kind == Kind::generatorFunctionDeclaration)
      value = made(at(declaration), a_.closureObject(act_.unit, unit_.link[declaration], id_, at(declaration)));
    exportValue(isDefault || name == 0 ? a_.known.defaultName : nameOf(name), value, declaration);
  }

  // ---- patterns -----------------------------------------------------------------------------------------------------

  void pattern(Ast ast, NodeId value) {
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

  NodeId either(Ast ast, NodeId left, NodeId right) {
    if (left == 0 || left == right) return right;
    if (right == 0) return left;
    const NodeId node = s_.make(at(ast), Step::none);
    s_.edge(left, node);
    s_.edge(right, node);
    return node;
  }

  void objectPatternPart(Ast part, NodeId value) {
    const Node& node = nodes_[part];
    NodeId got = s_.make(at(part), Step::property);
    switch (node.kind) {
      case Kind::shorthandPattern:
      case Kind::shorthandProperty:
        a_.read(at(part), id_, value, 0, nameOf(part), got);
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
  std::size_t commasBefore(Ast part, std::uint32_t from) const {
    std::size_t commas = 0;
    for (std::uint32_t at = from; at < nodes_[part].begin && at < unit_.text.size(); ++at)
      if (unit_.text[at] == ',') ++commas;
    return commas;
  }

  void arrayPattern(Ast ast, NodeId value) {
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

  // ---- expressions --------------------------------------------------------------------------------------------------

  NodeId unknown(Ast) { return a_.single(kUnknown); }

  NodeId expression(Ast ast) {
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

  NodeId lastOf(Ast ast) {
    NodeId last = 0;
    for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last)
      last = expression(child);
    return last;
  }

  NodeId templateString(Ast ast) {
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

  struct KeyOf {
    Name name = 0;
    NodeId node = 0;  // 0: the name is it
  };

  KeyOf keyOf(Ast ast) {
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
        if (inner != 0 && (nodes_[inner].kind == Kind::string || nodes_[inner].kind == Kind::number))
          return keyOf(inner);
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
  KeyOf indexOf(Ast subscript) {
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

  void own(NodeId value, ObjectId owner) {
    for (const Arrival& arrival : s_.values(value)) {
      if (!isObject(arrival.value) || a_.objects[arrival.value].cls != Class::function) continue;
      Closure& closure = a_.closures[a_.objects[arrival.value].a];
      if (closure.owner == kNobody) closure.owner = owner;
    }
  }

  NodeId objectLiteral(Ast ast) {
    const ObjectId made = a_.newObject(Class::plain, at(ast));
    for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last)
      objectPart(child, made);
    return this->made(at(ast), made);
  }

  void objectPart(Ast part, ObjectId of) {
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
  ObjectId method(Ast ast, ObjectId of, ObjectId home, bool isConstructor = false) {
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

  NodeId arrayLiteral(Ast ast) {
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

  NodeId classValue(Ast ast) {
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

  void classMember(Ast member, ObjectId made, ObjectId prototype, std::uint32_t klass) {
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

  NodeId yieldExpression(Ast ast) {
    const NodeId value = expression(firstChild(nodes_, ast));
    const ActId of = function(false);
    const NodeId sent = a_.acts[of].sent;
    const bool isAll = (nodes_[ast].marks & kStar) != 0;
    s_.edge(isAll ? a_.elementsOf(at(ast), value) : value, a_.acts[of].yielded);
    return isAll ? yieldedAll(ast, value, sent) : answered(ast, value, sent);
  }

  // What the other generator returns; it is sent what this one is.
  NodeId yieldedAll(Ast ast, NodeId value, NodeId sent) {
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
  NodeId answered(Ast ast, NodeId value, NodeId sent) {
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

  NodeId ternary(Ast ast) {
    const Ast condition = childIn(nodes_, ast, Field::condition);
    expression(condition);
    const Truth truth = decided(condition);
    if (truth != Truth::unknown)
      return expression(childIn(nodes_, ast, truth == Truth::always ? Field::consequence : Field::alternative));
    const State before = state_;
    const NodeId left = expression(childIn(nodes_, ast, Field::consequence));
    const State then = state_;
    state_ = before;
    const NodeId right = expression(childIn(nodes_, ast, Field::alternative));
    state_ = join(then, state_, ast);
    return either(ast, left, right);
  }

  NodeId unary(Ast ast) {
    const Ast argument = childIn(nodes_, ast, Field::argument);
    const NodeId value = expression(argument);
    const char sign = unit_.text[nodes_[ast].begin];
    if (sign == '-' && argument != 0 && nodes_[argument].kind == Kind::number)
      return made(at(ast), numberValue(a_.names.of('-' + numberText(unit_.textOf(argument)))), Step::value);
    return sign == '+' ? value : 0;
  }

  // The rest of a division walks round a list: which place it is at is not known.
  bool isRest(Ast ast) const {
    const Ast left = childIn(nodes_, ast, Field::left);
    const Ast right = childIn(nodes_, ast, Field::right);
    if (left == 0 || right == 0) return false;
    const std::string_view sign = std::string_view(unit_.text).substr(0, nodes_[right].begin);
    return sign.find('%', nodes_[left].end) != std::string_view::npos;
  }

  NodeId binary(Ast ast) {
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

  std::set<std::uint32_t> countersIn(Ast ast) const {
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
  bool isCountedApart(Ast sum) const {
    if (counters_.size() < 2) return false;
    const std::set<std::uint32_t> left = countersIn(childIn(nodes_, sum, Field::left));
    const std::set<std::uint32_t> right = countersIn(childIn(nodes_, sum, Field::right));
    return !left.empty() && !right.empty() &&
           std::none_of(left.begin(), left.end(), [&](std::uint32_t slot) { return right.count(slot) != 0; });
  }

  // Whether markup stands in an expression.
  bool hasMarkup(Ast ast) const { return unit_.hasTag(ast); }

  // Texts that a loop puts together are not known; of markup, each round's part is.
  NodeId plus(Ast ast, NodeId left, NodeId right) {
    const bool isCarried = std::find(loopHeads_.begin(), loopHeads_.end(), left) != loopHeads_.end() ||
                           std::find(loopHeads_.begin(), loopHeads_.end(), right) != loopHeads_.end();
    const bool isInMarkup = hasMarkup(ast);
    if (isCarried) return isInMarkup ? either(ast, unknown(ast), right) : unknown(ast);
    if (isInMarkup) return a_.concatenate(at(ast), a_.withHoles(at(ast), left), a_.withHoles(at(ast), right));
    const NodeId made = a_.concatenate(at(ast), left, right);
    if (isCountedApart(ast)) a_.joins.erase(made);
    return made;
  }

  NodeId assignment(Ast ast) {
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

  void writeTo(Ast ast, NodeId value) {
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

  NodeId augmented(Ast ast) {
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

  // ---- calls --------------------------------------------------------------------------------------------------------

  // What a tagged template hands its function first: the texts around its values.
  NodeId templateTexts(Ast ast) {
    const ObjectId list = a_.newObject(Class::array, at(ast));
    std::string text;
    std::uint32_t count = 0;
    const auto add = [&] {
      s_.add(a_.defineProperty(list, a_.names.of(std::to_string(count++)), true), textValue(a_.names.of(text)));
      text.clear();
    };
    for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last) {
      if (nodes_[child].kind == Kind::templateSubstitution)
        add();
      else
        text += unescape(unit_.textOf(child));
    }
    add();
    a_.objects[list].b = count;
    s_.add(a_.property(list, a_.names.of("raw")).node, list);
    return made(at(ast), list);
  }

  Args arguments(Ast ast) {
    Args args = a_.makeArgs({});
    if (ast == 0) return args;
    if (nodes_[ast].kind == Kind::templateString) {
      args->nodes.push_back(templateTexts(ast));
      args->isSpread.push_back(false);
      for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last) {
        if (nodes_[child].kind != Kind::templateSubstitution) continue;
        args->nodes.push_back(lastOf(child));
        args->isSpread.push_back(false);
      }
      return args;
    }
    for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last) {
      args->nodes.push_back(expression(child));
      args->isSpread.push_back(nodes_[child].kind == Kind::spreadElement);
    }
    return args;
  }

  NodeId newExpression(Ast ast) {
    const NodeId callee = expression(childIn(nodes_, ast, Field::constructor));
    const Args args = arguments(childIn(nodes_, ast, Field::arguments));
    const NodeId result = s_.make(at(ast), Step::result);
    const Site site{at(ast), at(ast), id_, 0};
    a_.call(site, callee, 0, args, result, true);
    handOver(site, callee, args);
    return result;
  }

  // a.b().c[d](): from the left end on, without calling ourselves.
  NodeId chain(Ast ast) {
    std::vector<Ast> spine;
    Ast base = ast;
    for (;;) {
      const Kind kind = nodes_[base].kind;
      Ast next = 0;
      if (kind == Kind::callExpression) next = childIn(nodes_, base, Field::function);
      if (kind == Kind::memberExpression || kind == Kind::subscriptExpression)
        next = childIn(nodes_, base, Field::object);
      if (kind == Kind::parenthesizedExpression && !spine.empty()) {
        // (a.b)() calls b on a.
        const Ast inner = firstChild(nodes_, base);
        const bool isChain = inner != 0 && (nodes_[inner].kind == Kind::memberExpression ||
                                            nodes_[inner].kind == Kind::subscriptExpression ||
                                            nodes_[inner].kind == Kind::callExpression);
        if (isChain) {
          base = inner;
          continue;
        }
      }
      if (next == 0) break;
      spine.push_back(base);
      base = next;
    }
    NodeId value = 0;
    const Kind baseKind = nodes_[base].kind;
    const bool isSuper = baseKind == Kind::superWord;
    if (!isSuper && baseKind != Kind::importWord) value = expression(base);
    for (std::size_t i = spine.size(); i-- > 0;) {
      const Ast part = spine[i];
      const bool isFirst = i + 1 == spine.size();
      if (nodes_[part].kind == Kind::callExpression) {
        if (isFirst && isSuper)
          value = superCall(part);
        else if (isFirst && baseKind == Kind::importWord)
          value = importCall(part);
        else
          value = plainCall(part, value, isFirst ? base : 0);
        continue;
      }
      const bool isCalled = i > 0 && nodes_[spine[i - 1]].kind == Kind::callExpression &&
                            childIn(nodes_, spine[i - 1], Field::function) != 0;
      KeyOf key;
      Ast property = part;
      if (nodes_[part].kind == Kind::memberExpression) {
        property = childIn(nodes_, part, Field::property);
        if (property == 0) return 0;
        key = keyOf(property);
      } else {
        key = indexOf(part);
        if (const Ast index = childIn(nodes_, part, Field::index)) property = index;
      }
      if (isFirst && isSuper) {
        const NodeId method = s_.make(at(property), Step::none);
        a_.read(at(property), id_, superProto(), key.node, key.name, method);
        value = method;
        if (isCalled) {
          const Ast call = spine[--i];
          const Args args = arguments(childIn(nodes_, call, Field::arguments));
          value = s_.make(at(call), Step::result);
          a_.call({at(call), at(property), id_, 0}, method, self(), args, value);
        }
        continue;
      }
      if (isCalled) {
        const Ast call = spine[--i];
        const Args args = arguments(childIn(nodes_, call, Field::arguments));
        const NodeId result = s_.make(at(property), Step::result, key.name);
        a_.callMember({at(call), at(property), id_, 0}, value, key.node, key.name, args, result);
        handOver({at(call), at(property), id_, 0}, value, args);
        value = result;
      } else {
        const NodeId result = s_.make(at(property), Step::property, key.name);
        a_.read(at(property), id_, value, key.node, key.name, result);
        value = result;
      }
    }
    return value;
  }

  // Kept for the report: whether anybody knows what is called shows in the end only.
  void handOver(const Site& site, NodeId callee, const Args& args) {
    if (!args->nodes.empty() && !unit_.isModel && a_.handed.size() < kMaxHanded)
      a_.handed.push_back({site, callee, args});
  }

  NodeId plainCall(Ast ast, NodeId callee, Ast base) {
    const Args args = arguments(childIn(nodes_, ast, Field::arguments));
    const NodeId result = s_.make(at(ast), Step::result);
    const Site site{at(ast), base ? at(base) : at(ast), id_, 0};
    NodeId self = 0;
    if (base != 0 && nodes_[base].kind == Kind::identifier && !withs_.empty()) self = withs_.back();
    if (self == 0) self = a_.single(window());
    a_.call(site, callee, self, args, result);
    handOver(site, callee, args);
    return result;
  }

  NodeId superProto() {
    const Activation& of = a_.acts[function(true)];
    const NodeId result = s_.make(at(def_.ast), Step::none);
    if (of.closure == kNobody) return result;
    const ObjectId home = a_.closures[a_.objects[of.closure].a].home;
    if (home != kNobody) s_.edge(a_.protoNode(home), result);
    const std::uint32_t klass = a_.closures[a_.objects[of.closure].a].constructs;
    if (klass != kNone) {
      const NodeId base = a_.classes[klass].heritage;
      a_.read(at(def_.ast), id_, base, 0, a_.known.prototype, result);
    }
    return result;
  }

  NodeId superCall(Ast ast) {
    const Args args = arguments(childIn(nodes_, ast, Field::arguments));
    const Activation& of = a_.acts[function(true)];
    if (of.closure == kNobody) return 0;
    const std::uint32_t klass = a_.closures[a_.objects[of.closure].a].constructs;
    if (klass == kNone) return 0;
    const NodeId self = this->self();
    const Site site{at(ast), at(ast), id_, 0};
    Analysis& a = a_;
    s_.listen(a_.classes[klass].heritage, [&a, site, self, args](const Arrival& base) {
      if (!isObject(base.value) || a.objects[base.value].cls != Class::function) return;
      const Value function = base.value;
      a.solver.listen(self, [&a, site, function, args](const Arrival& object) {
        a.construct(site, function, a.single(object.value), object.value, args, 0);
      });
    });
    return self;
  }

  NodeId importCall(Ast ast) {
    const Args args = arguments(childIn(nodes_, ast, Field::arguments));
    const NodeId result = s_.make(at(ast), Step::result);
    if (args->nodes.empty()) return result;
    const ObjectId promise = a_.newObject(Class::promise, at(ast));
    const NodeId resolved = a_.defineProperty(promise, a_.known.resolved);
    s_.add(result, promise);
    Analysis& a = a_;
    const std::uint32_t file = unit_.file;
    const std::uint32_t realm = act_.realm;
    s_.listen(args->nodes[0], [&a, file, realm, resolved](const Arrival& target) {
      if (!isText(target.value)) return;
      const std::uint32_t found = a.findModule(file, a.names.text(nameIn(target.value)));
      if (found == kNone) return;
      const ObjectId module = a.moduleExports(realm, found, true);
      if (module != kNobody) a.solver.edge(a.readNode(module, a.known.exports), resolved);
    });
    return result;
  }

  Analysis& a_;
  Solver& s_;
  ActId id_;
  Activation& act_;
  const Unit& unit_;
  const std::vector<Node>& nodes_;
  const Def& def_;
  State state_;
  std::vector<Target> targets_;
  std::vector<NodeId> loopHeads_;
  std::vector<std::uint32_t> counters_;  // of the loops around
  std::vector<NodeId> withs_;
  NodeId thrown_ = 0;
  int depth_ = 0;
};

}  // namespace

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
