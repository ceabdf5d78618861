#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "flow/Analysis.h"

// Body: reads one activation's code into nodes and edges. Variables that only their own function writes have a node for
// each place that does, joined where ways meet; others have one. A file for each kind of code; all work on the same
// state, which is where reading stands. Test: tests/flow/Analysis_test.cpp.

namespace flow {

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

  void run();

 private:
  // A variable that other functions write as well: a global by its name, others by where they are declared.
  struct Shared {
    std::uint32_t def = kNone;
    std::uint32_t slot = 0;
    bool operator==(const Shared& other) const { return def == other.def && slot == other.slot; }
  };

  // The nodes of the variables at a place of the code.
  struct State {
    std::vector<NodeId> defs;
    std::vector<std::pair<Shared, NodeId>> shared;  // those just written, until other code may write them
    bool isDead = false;
  };

  // What `break` and `continue` lead to.
  struct Target {
    std::vector<State> breaks;
    std::vector<State> continues;
    bool isLoop = false;
  };

  struct Nesting {
    explicit Nesting(int& depth) : depth(depth) { ++depth; }
    ~Nesting() { --depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    int& depth;
  };

  struct KeyOf {
    Name name = 0;
    NodeId node = 0;  // 0: the name is it
  };

  // A test of what an expression gives.
  struct Asked {
    Ast subject = 0;
    Test test;
  };

  // The property that a value was read from, of what `base` holds; `ast` says that, where it is an expression.
  struct Origin {
    Ast ast = 0;
    NodeId base = 0;
    Name property = 0;
  };

  enum class Truth { unknown, always, never };
  static Truth truthOf(bool isTrue) { return isTrue ? Truth::always : Truth::never; }

  Where at(Ast ast) const { return {act_.unit, ast < nodes_.size() ? nodes_[ast].begin : 0}; }
  NodeId unknown(Ast) { return a_.single(kUnknown); }
  Name nameOf(Ast ast) { return a_.names.of(unit_.textOf(ast)); }
  NodeId variable(std::uint32_t slot) { return a_.variableNode(id_, slot); }
  NodeId self() { return a_.acts[function(true)].self; }
  ObjectId window() const { return a_.realms[act_.realm].window; }
  // Whether markup stands in an expression.
  bool hasMarkup(Ast ast) const { return unit_.hasTag(ast); }

  // Variables and states (Body.cpp).
  NodeId made(Where where, Value value, Step step = Step::made, Name name = 0);
  NodeId scopeAround() const;
  ActId home(DefIndex def) const;
  ActId function(bool isPastArrows) const;
  ObjectId module() const;
  static std::uint64_t loopKey(const VariableRef& ref, Name name);
  Activation* roundOf(const VariableRef& ref, Name name);
  void keepLoopVariable(Ast left, NodeId value);
  Ast soleName(Ast ast) const;
  NodeId readVariable(Ast ast);
  Shared sharedOf(const VariableRef& ref, Name name) const;
  NodeId lastWritten(const Shared& shared) const;
  void keepWritten(const Shared& shared, NodeId node);
  void forgetWritten(Ast but = 0);
  NodeId readGlobal(Ast ast, Name name);
  void assign(Ast ast, NodeId value);
  void writeGlobal(Ast ast, Name name, NodeId node);
  void takeParameters();
  void takeParameter(Ast ast);
  void hoist(Ast ast);
  State join(const State& left, const State& right, Ast ast);
  std::vector<std::uint32_t> writtenIn(Ast ast) const;

  // Statements.cpp
  bool isTooDeep();
  void children(Ast ast);
  void statement(Ast ast);
  void statementOrExpression(Ast ast);
  void endBreaks(Ast ast);
  void leave(bool isContinue);
  NodeId thrown();
  void returned(NodeId value);
  void declarator(Ast ast);
  void ifStatement(Ast ast);
  void switchStatement(Ast ast);
  void tryStatement(Ast ast);

  // Conditions.cpp
  Truth decided(Ast ast);
  Truth decidedBinary(Ast ast);
  std::string signOf(Ast ast) const;
  Ast insideOf(Ast ast) const;
  bool isPlainRead(Ast ast) const;
  bool isConstant(Ast ast) const;
  std::uint32_t slotOf(Ast ast) const;
  void findTests(Ast condition, bool holds, std::vector<Asked>& tests, int depth = 0);
  void findComparison(Ast ast, Ast left, Ast right, bool holds, std::vector<Asked>& tests);
  void findMembership(Ast call, bool holds, std::vector<Asked>& tests);
  void findEntry(Ast subscript, bool holds, std::vector<Asked>& tests);
  void findIndex(Ast call, std::string_view sign, std::string_view number, bool holds, std::vector<Asked>& tests);
  void keepOrigin(Ast ast, NodeId value);
  std::vector<std::uint32_t> usedIn(Ast begin, Ast end) const;
  Origin originOf(Ast subject, NodeId value);
  void answer(Ast condition);
  void narrowVariable(Ast ast, NodeId node);
  void narrowFor(const Asked& asked, const std::vector<std::uint32_t>& slots);
  void narrow(const std::vector<Asked>& tests, Ast begin, Ast end);
  void narrow(Ast condition, bool holds, Ast code);
  void narrowRest(Ast condition, Ast statement);
  void narrowCase(Ast value, Ast body, Ast part);

  // Loops.cpp
  void loop(Ast ast, const std::function<void()>& content);
  void forStatement(Ast ast);
  void setCounter(std::uint32_t slot, NodeId value);
  Ast conditionOf(Ast ast) const;
  std::uint32_t counterOf(Ast ast) const;
  NodeId counted(Ast ast, std::uint32_t slot);
  static void addNumbers(Analysis& a, long from, long end, NodeId counter);
  static void countTo(Analysis& a, NodeId bound, long from, long more, NodeId counter);
  static bool hasOnlyPlaces(const Analysis& a, ObjectId list);
  static void countList(Analysis& a, NodeId list, long from, long more, NodeId counter);
  void forIn(Ast ast);
  NodeId settledElements(Ast ast, NodeId list);
  void forNames(const Site& site, NodeId list, ObjectId body);
  void forOf(const Site& site, NodeId list, ObjectId body);

  // Modules.cpp
  void hoistImports();
  NodeId moduleValue(Ast source);
  std::string_view contentOf(Ast string) const;
  Name textOfName(Ast ast);
  void importStatement(Ast ast);
  void importName(Ast local, NodeId module, Name name);
  void exportValue(Name name, NodeId value, Ast ast);
  void exportStatement(Ast ast);
  void exportSpecifier(Ast ast, bool isFromOther, NodeId from);
  void exportDeclared(Ast declaration, bool isDefault);

  // Targets.cpp: what is assigned to.
  void pattern(Ast ast, NodeId value);
  NodeId either(Ast ast, NodeId left, NodeId right);
  void objectPatternPart(Ast part, NodeId value);
  std::size_t commasBefore(Ast part, std::uint32_t from) const;
  void arrayPattern(Ast ast, NodeId value);
  NodeId assignment(Ast ast);
  void writeTo(Ast ast, NodeId value);
  NodeId augmented(Ast ast);

  // Expressions.cpp
  NodeId expression(Ast ast);
  NodeId lastOf(Ast ast);
  NodeId templateString(Ast ast);
  KeyOf keyOf(Ast ast);
  KeyOf indexOf(Ast subscript);
  NodeId yieldExpression(Ast ast);
  NodeId yieldedAll(Ast ast, NodeId value, NodeId sent);
  NodeId answered(Ast ast, NodeId value, NodeId sent);
  NodeId branchOf(Ast ast);
  NodeId ternary(Ast ast);
  NodeId unary(Ast ast);
  bool isRest(Ast ast) const;
  NodeId binary(Ast ast);
  std::set<std::uint32_t> countersIn(Ast ast) const;
  bool isCountedApart(Ast sum) const;
  NodeId plus(Ast ast, NodeId left, NodeId right);

  // Literals.cpp: objects, lists and classes.
  void own(NodeId value, ObjectId owner);
  NodeId objectLiteral(Ast ast);
  void objectPart(Ast part, ObjectId of);
  ObjectId method(Ast ast, ObjectId of, ObjectId home, bool isConstructor = false);
  NodeId arrayLiteral(Ast ast);
  NodeId classValue(Ast ast);
  void classMember(Ast member, ObjectId made, ObjectId prototype, std::uint32_t klass);

  // Calls.cpp
  NodeId templateTexts(Ast ast);
  Args arguments(Ast ast);
  NodeId newExpression(Ast ast);
  NodeId chain(Ast ast);
  void handOver(const Site& site, NodeId callee, const Args& args);
  NodeId plainCall(Ast ast, NodeId callee, Ast base);
  NodeId superProto();
  NodeId superCall(Ast ast);
  NodeId importCall(Ast ast);

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
  std::unordered_map<NodeId, std::pair<NodeId, Name>> origins_;  // what was read from a property, and of what
  NodeId thrown_ = 0;
  int narrowed_ = 0;
  int depth_ = 0;
};

}  // namespace flow
