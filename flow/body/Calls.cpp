// Body: calls, and what they are given. Test: tests/flow/Analysis_test.cpp.

#include "flow/Strings.h"
#include "flow/body/Body.h"

namespace flow {
namespace {

constexpr std::size_t kMaxHanded = 200'000;

}  // namespace

// What a tagged template hands its function first: the texts around its values.
NodeId Body::templateTexts(Ast ast) {
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

Args Body::arguments(Ast ast) {
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

NodeId Body::newExpression(Ast ast) {
  const NodeId callee = expression(childIn(nodes_, ast, Field::constructor));
  const Args args = arguments(childIn(nodes_, ast, Field::arguments));
  const NodeId result = s_.make(at(ast), Step::result);
  const Site site{at(ast), at(ast), id_, 0};
  a_.call(site, callee, 0, args, result, true);
  forgetWritten();
  handOver(site, callee, args);
  return result;
}

// a.b().c[d](): from the left end on, without calling ourselves.
NodeId Body::chain(Ast ast) {
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
      const bool isChain =
          inner != 0 && (nodes_[inner].kind == Kind::memberExpression ||
                         nodes_[inner].kind == Kind::subscriptExpression || nodes_[inner].kind == Kind::callExpression);
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
        forgetWritten();
      }
      continue;
    }
    if (isCalled) {
      const Ast call = spine[--i];
      const Args args = arguments(childIn(nodes_, call, Field::arguments));
      const NodeId result = s_.make(at(property), Step::result, key.name);
      a_.callMember({at(call), at(property), id_, 0}, value, key.node, key.name, args, result);
      forgetWritten(base);
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
void Body::handOver(const Site& site, NodeId callee, const Args& args) {
  if (!args->nodes.empty() && !unit_.isModel && a_.handed.size() < kMaxHanded)
    a_.handed.push_back({site, callee, args});
}

NodeId Body::plainCall(Ast ast, NodeId callee, Ast base) {
  const Args args = arguments(childIn(nodes_, ast, Field::arguments));
  const NodeId result = s_.make(at(ast), Step::result);
  const Site site{at(ast), base ? at(base) : at(ast), id_, 0};
  NodeId self = 0;
  if (base != 0 && nodes_[base].kind == Kind::identifier && !withs_.empty()) self = withs_.back();
  if (self == 0) self = a_.single(window());
  a_.call(site, callee, self, args, result);
  forgetWritten();
  handOver(site, callee, args);
  return result;
}

NodeId Body::superProto() {
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

NodeId Body::superCall(Ast ast) {
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

NodeId Body::importCall(Ast ast) {
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

}  // namespace flow
