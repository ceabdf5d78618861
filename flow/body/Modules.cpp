// Body: imports and exports. Test: tests/flow/Analysis_test.cpp.

#include "flow/Strings.h"
#include "flow/body/Body.h"

namespace flow {

void Body::hoistImports() {
  for (Ast child = 1; child < nodes_[0].last; child = nodes_[child].last)
    if (nodes_[child].kind == Kind::importStatement) importStatement(child);
}

NodeId Body::moduleValue(Ast source) {
  const std::string target = unescape(contentOf(source));
  const std::uint32_t file = a_.findModule(unit_.file, target);
  if (file == kNone) return 0;
  const ObjectId module = a_.moduleExports(act_.realm, file, true);
  return module == kNobody ? 0 : a_.readNode(module, a_.known.exports);
}

std::string_view Body::contentOf(Ast string) const {
  std::string_view text = unit_.textOf(string);
  return text.size() >= 2 ? text.substr(1, text.size() - 2) : std::string_view();
}

Name Body::textOfName(Ast ast) {
  return nodes_[ast].kind == Kind::string ? a_.names.of(unescape(contentOf(ast))) : nameOf(ast);
}

void Body::importStatement(Ast ast) {
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

void Body::importName(Ast local, NodeId module, Name name) {
  const NodeId value = s_.make(at(local), Step::variable, nameOf(local));
  a_.read(at(local), id_, module, 0, name, value);
  if (name == a_.known.defaultName) s_.edge(module, value, 1);
  assign(local, value);
}

void Body::exportValue(Name name, NodeId value, Ast ast) {
  const ObjectId own = module();
  if (own == kNobody) return;
  a_.write(at(ast), id_, a_.readNode(own, a_.known.exports), 0, name, value);
}

void Body::exportStatement(Ast ast) {
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
      s_.listen(exports, [&a, from, where, act](const Arrival& to) { a.assignProperties(where, act, from, to.value); });
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

void Body::exportSpecifier(Ast ast, bool isFromOther, NodeId from) {
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

void Body::exportDeclared(Ast declaration, bool isDefault) {
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

}  // namespace flow
