// Scopes: two passes over the flat tree, declarations first, then what each identifier means.
// Test: tests/flow/Analysis_test.cpp.

#include "flow/Scopes.h"

#include <unordered_map>

namespace flow {
namespace {

bool isFunction(Kind kind) {
  switch (kind) {
    case Kind::functionExpression:
    case Kind::functionDeclaration:
    case Kind::generatorFunction:
    case Kind::generatorFunctionDeclaration:
    case Kind::arrowFunction:
    case Kind::methodDefinition:
    case Kind::classStaticBlock:
      return true;
    default:
      return false;
  }
}

bool hasBlockScope(Kind kind) {
  switch (kind) {
    case Kind::statementBlock:
    case Kind::forStatement:
    case Kind::forInStatement:
    case Kind::switchBody:
    case Kind::catchClause:
    case Kind::classExpression:
    case Kind::classDeclaration:
      return true;
    default:
      return false;
  }
}

class Resolver {
 public:
  Resolver(Unit& unit, Names& names) : unit_(unit), nodes_(unit.nodes), names_(names) {}

  void run() {
    unit_.link.assign(nodes_.size(), kNone);
    scopeAt_.assign(nodes_.size(), kNone);
    Def script;
    script.what = Def::What::script;
    unit_.defs.push_back(script);
    unit_.scopes.push_back({});
    if (nodes_.empty()) return;
    declareAll();
    resolveAll();
  }

 private:
  struct Open {
    Ast last;
    ScopeIndex scope;
  };

  ScopeIndex newScope(ScopeIndex parent, DefIndex def) {
    Scope scope;
    scope.parent = parent;
    scope.def = def;
    unit_.scopes.push_back(scope);
    return static_cast<ScopeIndex>(unit_.scopes.size() - 1);
  }

  static std::uint32_t slotIn(const Scope& scope, Name name) {
    for (const auto& [known, slot] : scope.slots)
      if (known == name) return slot;
    return kNone;
  }

  std::uint32_t declare(ScopeIndex in, Name name) {
    Scope& scope = unit_.scopes[in];
    const std::uint32_t known = slotIn(scope, name);
    if (known != kNone) return known;
    Def& def = unit_.defs[scope.def];
    Variable variable;
    variable.name = name;
    def.variables.push_back(variable);
    const auto slot = static_cast<std::uint32_t>(def.variables.size() - 1);
    scope.slots.emplace_back(name, slot);
    if (in == 0 && !unit_.isModule) def.variables[slot].isGlobal = true;
    return slot;
  }

  // Where `var` declares: the scope of the function around, past bodies of loops.
  ScopeIndex varScope(ScopeIndex scope) const {
    DefIndex def = unit_.scopes[scope].def;
    while (unit_.defs[def].what == Def::What::loopBody)
      def = unit_.defs[def].parent;
    return unit_.defs[def].scope;
  }

  void declareVar(ScopeIndex from, Name name) {
    const ScopeIndex scope = varScope(from);
    declare(scope, name);
  }

  // Declares every name of a pattern; defaults in it are expressions.
  void declarePattern(Ast pattern, ScopeIndex scope, bool isVar) {
    std::vector<Ast> open{pattern};
    while (!open.empty()) {
      const Ast ast = open.back();
      open.pop_back();
      switch (nodes_[ast].kind) {
        case Kind::identifier:
        case Kind::shorthandPattern:
          if (isVar)
            declareVar(scope, names_.of(unit_.textOf(ast)));
          else
            declare(scope, names_.of(unit_.textOf(ast)));
          break;
        case Kind::assignmentPattern:
        case Kind::objectAssignmentPattern:
          if (const Ast left = childIn(nodes_, ast, Field::left)) open.push_back(left);
          break;
        case Kind::pairPattern:
          if (const Ast value = childIn(nodes_, ast, Field::value)) open.push_back(value);
          break;
        case Kind::formalParameters:
        case Kind::objectPattern:
        case Kind::arrayPattern:
        case Kind::restPattern:
          for (Ast child = ast + 1; child < nodes_[ast].last; child = nodes_[child].last)
            open.push_back(child);
          break;
        default:
          break;
      }
    }
  }

  Name nameOf(Ast ast) const {
    const Ast name = childIn(nodes_, ast, Field::name);
    return name ? names_.of(unit_.textOf(name)) : 0;
  }

  ScopeIndex openFunction(Ast ast, ScopeIndex outer) {
    const Node& node = nodes_[ast];
    Def def;
    def.ast = ast;
    def.parent = unit_.scopes[outer].def;
    def.name = nameOf(ast);
    def.body = childIn(nodes_, ast, Field::body);
    def.parameters = childIn(nodes_, ast, Field::parameters);
    if (!def.parameters) def.parameters = childIn(nodes_, ast, Field::parameter);
    def.isAsync = (node.marks & kAsync) != 0;
    def.isGenerator = node.kind == Kind::generatorFunction || node.kind == Kind::generatorFunctionDeclaration ||
                      (node.kind == Kind::methodDefinition && (node.marks & kStar));
    if (node.kind == Kind::arrowFunction) def.what = Def::What::arrow;
    if (node.kind == Kind::methodDefinition) def.what = Def::What::method;
    const auto index = static_cast<DefIndex>(unit_.defs.size());
    const bool isDeclaration =
        node.kind == Kind::functionDeclaration || node.kind == Kind::generatorFunctionDeclaration;
    if (isDeclaration) {
      declare(outer, def.name);
      unit_.defs[def.parent].functions.push_back(ast);
    }
    unit_.defs.push_back(def);
    unit_.link[ast] = index;
    const ScopeIndex scope = newScope(outer, index);
    unit_.defs[index].scope = scope;
    const bool isExpression = node.kind == Kind::functionExpression || node.kind == Kind::generatorFunction;
    if (def.parameters) declarePattern(def.parameters, scope, false);
    if (isExpression && def.name) unit_.defs[index].selfSlot = declare(scope, def.name);
    return scope;
  }

  ScopeIndex openField(Ast ast, Ast value, ScopeIndex outer) {
    Def def;
    def.what = Def::What::field;
    def.ast = ast;
    def.body = value;
    def.parent = unit_.scopes[outer].def;
    const auto index = static_cast<DefIndex>(unit_.defs.size());
    unit_.defs.push_back(def);
    unit_.link[ast] = index;
    const ScopeIndex scope = newScope(outer, index);
    unit_.defs[index].scope = scope;
    return scope;
  }

  // The body of a loop over names or values, with its variable as the parameter.
  ScopeIndex openLoopBody(Ast loop, Ast body, ScopeIndex outer) {
    Def def;
    def.what = Def::What::loopBody;
    def.ast = loop;
    def.body = body;
    def.parameters = childIn(nodes_, loop, Field::left);
    def.parent = unit_.scopes[outer].def;
    const auto index = static_cast<DefIndex>(unit_.defs.size());
    unit_.defs.push_back(def);
    unit_.link[loop] = index;
    const ScopeIndex scope = newScope(outer, index);
    unit_.defs[index].scope = scope;
    if (nodes_[loop].marks & kLexical) declarePattern(def.parameters, scope, false);
    return scope;
  }

  void declareAll() {
    std::vector<Open> open{{nodes_[0].last, 0}};
    std::vector<std::pair<Ast, ScopeIndex>> later;  // bodies that open a scope of their own
    for (Ast ast = 0; ast < nodes_.size(); ++ast) {
      while (open.size() > 1 && ast >= open.back().last)
        open.pop_back();
      ScopeIndex scope = open.back().scope;
      while (!later.empty() && later.back().first < ast)
        later.pop_back();
      if (!later.empty() && later.back().first == ast) {
        scope = later.back().second;
        later.pop_back();
        open.push_back({nodes_[ast].last, scope});
      }
      const Node& node = nodes_[ast];
      if (isFunction(node.kind)) {
        const ScopeIndex inner = openFunction(ast, scope);
        open.push_back({node.last, inner});
        scopeAt_[ast] = inner;
        continue;
      }
      if (hasBlockScope(node.kind)) {
        const ScopeIndex inner = newScope(scope, unit_.scopes[scope].def);
        declareOf(ast, scope, inner);
        open.push_back({node.last, inner});
        scopeAt_[ast] = inner;
        scope = inner;
        if (node.kind == Kind::forInStatement) {
          if (const Ast body = childIn(nodes_, ast, Field::body)) {
            const ScopeIndex bodyScope = openLoopBody(ast, body, inner);
            later.emplace_back(body, bodyScope);
            scopeAtBody_.emplace_back(body, bodyScope);
            if (const Ast left = childIn(nodes_, ast, Field::left)) scopeAtBody_.emplace_back(left, bodyScope);
          }
        }
        continue;
      }
      if (node.kind == Kind::fieldDefinition) {
        if (const Ast value = childIn(nodes_, ast, Field::value)) {
          const ScopeIndex inner = openField(ast, value, scope);
          later.emplace_back(value, inner);
          scopeAtBody_.emplace_back(value, inner);
        }
        continue;
      }
      declareOf(ast, scope, scope);
    }
  }

  void declareOf(Ast ast, ScopeIndex outer, ScopeIndex inner) {
    const Node& node = nodes_[ast];
    switch (node.kind) {
      case Kind::variableDeclaration:
      case Kind::lexicalDeclaration:
        for (Ast child = ast + 1; child < node.last; child = nodes_[child].last) {
          if (nodes_[child].kind != Kind::variableDeclarator) continue;
          if (const Ast name = childIn(nodes_, child, Field::name))
            declarePattern(name, inner, node.kind == Kind::variableDeclaration);
        }
        break;
      case Kind::forInStatement:
        if (node.marks & kVar) declarePattern(childIn(nodes_, ast, Field::left), outer, true);
        break;
      case Kind::catchClause:
        if (const Ast parameter = childIn(nodes_, ast, Field::parameter)) declarePattern(parameter, inner, false);
        break;
      case Kind::classDeclaration:
        if (const Name name = nameOf(ast)) declare(outer, name);
        break;
      case Kind::classExpression:
        if (const Name name = nameOf(ast)) declare(inner, name);
        break;
      case Kind::importClause:
        for (Ast child = ast + 1; child < node.last; child = nodes_[child].last)
          if (nodes_[child].kind == Kind::identifier) declare(0, names_.of(unit_.textOf(child)));
        break;
      case Kind::namespaceImport:
        if (const Ast child = firstChild(nodes_, ast)) declare(0, names_.of(unit_.textOf(child)));
        break;
      case Kind::importSpecifier: {
        Ast name = childIn(nodes_, ast, Field::alias);
        if (!name) name = childIn(nodes_, ast, Field::name);
        if (name) declare(0, names_.of(unit_.textOf(name)));
        break;
      }
      default:
        break;
    }
  }

  void resolveAll() {
    std::vector<Open> open{{nodes_[0].last, 0}};
    std::vector<Ast> around{0};
    const std::unordered_map<Ast, ScopeIndex> byBody(scopeAtBody_.begin(), scopeAtBody_.end());
    for (Ast ast = 0; ast < nodes_.size(); ++ast) {
      while (open.size() > 1 && ast >= open.back().last)
        open.pop_back();
      while (around.size() > 1 && ast >= nodes_[around.back()].last)
        around.pop_back();
      if (const auto body = byBody.find(ast); body != byBody.end()) open.push_back({nodes_[ast].last, body->second});
      if (scopeAt_[ast] != kNone) open.push_back({nodes_[ast].last, scopeAt_[ast]});
      const Kind parent = nodes_[around.back()].kind;
      const bool isNameOfFunction = nodes_[ast].field == Field::name && (parent == Kind::functionDeclaration ||
                                                                         parent == Kind::generatorFunctionDeclaration);
      // `function e(e)`: the name is one of the scope around.
      resolve(ast, parent, isNameOfFunction ? unit_.scopes[open.back().scope].parent : open.back().scope);
      around.push_back(ast);
    }
  }

  void resolve(Ast ast, Kind parent, ScopeIndex scope) {
    const Kind kind = nodes_[ast].kind;
    if (kind != Kind::identifier && kind != Kind::shorthandProperty && kind != Kind::shorthandPattern) return;
    const std::string_view text = unit_.textOf(ast);
    const Name name = names_.of(text);
    const DefIndex from = unit_.scopes[scope].def;
    if (text == "arguments") markArguments(from);
    VariableRef ref;
    for (ScopeIndex at = scope; at != kNone; at = unit_.scopes[at].parent) {
      const std::uint32_t slot = slotIn(unit_.scopes[at], name);
      if (slot == kNone) continue;
      ref.def = unit_.scopes[at].def;
      ref.slot = slot;
      ref.isWrite = isWritten(ast, parent);
      if (ref.def != from) {
        Variable& variable = unit_.defs[ref.def].variables[slot];
        variable.isReadInside = true;
        if (ref.isWrite) variable.isWrittenInside = true;
      }
      break;
    }
    unit_.link[ast] = static_cast<std::uint32_t>(unit_.refs.size());
    unit_.refs.push_back(ref);
  }

  void markArguments(DefIndex def) {
    while (def != kNone && (unit_.defs[def].what == Def::What::loopBody || unit_.defs[def].what == Def::What::arrow))
      def = unit_.defs[def].parent;
    if (def != kNone) unit_.defs[def].usesArguments = true;
  }

  // Whether the identifier is assigned to.
  bool isWritten(Ast ast, Kind parent) const {
    switch (parent) {
      case Kind::assignmentExpression:
      case Kind::augmentedAssignmentExpression:
      case Kind::forInStatement:
      case Kind::assignmentPattern:
      case Kind::objectAssignmentPattern:
        return nodes_[ast].field == Field::left;
      case Kind::variableDeclarator:
        return nodes_[ast].field == Field::name;
      case Kind::updateExpression:
      case Kind::arrayPattern:
      case Kind::objectPattern:
      case Kind::pairPattern:
      case Kind::restPattern:
        return true;
      default:
        return false;
    }
  }

  Unit& unit_;
  const std::vector<Node>& nodes_;
  Names& names_;
  std::vector<ScopeIndex> scopeAt_;
  std::vector<std::pair<Ast, ScopeIndex>> scopeAtBody_;
};

}  // namespace

void resolveScopes(Unit& unit, Names& names) {
  Resolver(unit, names).run();
}

}  // namespace flow
