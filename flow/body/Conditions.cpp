// Body: conditions, and what they say of the values in the code that they guard. Test: tests/flow/Analysis_test.cpp.

#include <algorithm>
#include <cstdlib>

#include "flow/body/Body.h"

namespace flow {
namespace {

constexpr int kMaxNarrowed = 400;    // conditions of one activation
constexpr Ast kMaxGuarded = 20'000;  // nodes of code behind one
constexpr std::size_t kMaxTests = 32;
constexpr int kMaxDepth = 16;  // of a condition

bool isEquality(std::string_view sign) {
  return sign == "===" || sign == "==" || sign == "!==" || sign == "!=";
}

}  // namespace

// Conditions that the way in which the function is called decides: whether it is called with `new`, and with how
// many arguments.
Body::Truth Body::decided(Ast ast) {
  ast = insideOf(ast);
  if (ast == 0) return Truth::unknown;
  if (nodes_[ast].kind == Kind::unaryExpression && unit_.text[nodes_[ast].begin] == '!') {
    const Truth inner = decided(childIn(nodes_, ast, Field::argument));
    return inner == Truth::unknown ? inner : truthOf(inner == Truth::never);
  }
  return nodes_[ast].kind == Kind::binaryExpression ? decidedBinary(ast) : Truth::unknown;
}

Body::Truth Body::decidedBinary(Ast ast) {
  const Ast left = childIn(nodes_, ast, Field::left);
  const Ast right = childIn(nodes_, ast, Field::right);
  if (left == 0 || right == 0 || nodes_[right].begin <= nodes_[left].end) return Truth::unknown;
  const std::string sign = signOf(ast);
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

// What stands between the two sides of a binary expression.
std::string Body::signOf(Ast ast) const {
  const Ast left = childIn(nodes_, ast, Field::left);
  const Ast right = childIn(nodes_, ast, Field::right);
  if (left == 0 || right == 0 || nodes_[right].begin <= nodes_[left].end) return {};
  std::string sign(std::string_view(unit_.text).substr(nodes_[left].end, nodes_[right].begin - nodes_[left].end));
  sign.erase(std::remove_if(sign.begin(), sign.end(), [](char c) { return c == ' ' || c == '(' || c == ')'; }),
             sign.end());
  return sign;
}

// Past the brackets around an expression.
Ast Body::insideOf(Ast ast) const {
  while (ast != 0 && nodes_[ast].kind == Kind::parenthesizedExpression)
    ast = firstChild(nodes_, ast);
  return ast;
}

// Whether an expression can be read once more: names, and properties of them.
bool Body::isPlainRead(Ast ast) const {
  for (ast = insideOf(ast); ast != 0; ast = insideOf(childIn(nodes_, ast, Field::object))) {
    if (nodes_[ast].kind == Kind::identifier || nodes_[ast].kind == Kind::thisWord) return true;
    if (nodes_[ast].kind != Kind::memberExpression) return false;
  }
  return false;
}

bool Body::isConstant(Ast ast) const {
  ast = insideOf(ast);
  if (ast == 0) return false;
  const Kind kind = nodes_[ast].kind;
  if (kind == Kind::literalWord) return unit_.textOf(ast) == "true" || unit_.textOf(ast) == "false";
  return kind == Kind::string || kind == Kind::number;
}

// The variable of this activation that an expression is, or kNone.
std::uint32_t Body::slotOf(Ast ast) const {
  if (ast == 0) return kNone;
  const Kind kind = nodes_[ast].kind;
  if (kind != Kind::identifier && kind != Kind::shorthandProperty) return kNone;
  const std::uint32_t link = unit_.link[ast];
  if (link >= unit_.refs.size() || unit_.refs[link].def != act_.def) return kNone;
  const std::uint32_t slot = unit_.refs[link].slot;
  return state_.defs[slot] != 0 && !def_.variables[slot].isWrittenInside ? slot : kNone;
}

// Which tests hold where a condition is true, or where it is not.
void Body::findTests(Ast condition, bool holds, std::vector<Asked>& tests, int depth) {
  const Ast ast = insideOf(condition);
  if (ast == 0 || depth > kMaxDepth) return;
  const Node& node = nodes_[ast];
  if (node.kind == Kind::unaryExpression && unit_.text[node.begin] == '!')
    return findTests(childIn(nodes_, ast, Field::argument), !holds, tests, depth + 1);
  if (node.kind == Kind::callExpression) return findMembership(ast, holds, tests);
  if (isPlainRead(ast)) {
    tests.push_back({ast, {Test::What::isTrue, holds, 0}});
    return;
  }
  if (node.kind == Kind::subscriptExpression) return findEntry(ast, holds, tests);
  if (node.kind != Kind::binaryExpression) return;
  const Ast left = insideOf(childIn(nodes_, ast, Field::left));
  const Ast right = insideOf(childIn(nodes_, ast, Field::right));
  if (left == 0 || right == 0) return;
  if (node.marks & kLogical) {
    const std::string sign = signOf(ast);
    if (sign != (holds ? "&&" : "||")) return;
    findTests(left, holds, tests, depth + 1);
    return findTests(right, holds, tests, depth + 1);
  }
  findComparison(ast, left, right, holds, tests);
}

void Body::findComparison(Ast ast, Ast left, Ast right, bool holds, std::vector<Asked>& tests) {
  const std::string sign = signOf(ast);
  if (sign == "instanceof" && isPlainRead(left) && isPlainRead(right))
    tests.push_back({left, {Test::What::isInstance, holds, expression(right)}});
  else if (sign == "in" && isPlainRead(left) && isPlainRead(right))
    tests.push_back({left, {Test::What::isNameIn, holds, expression(right)}});
  else if (nodes_[left].kind == Kind::callExpression)
    findIndex(left, sign, unit_.textOf(right), holds, tests);
  if (!isEquality(sign)) return;
  if (isConstant(left)) std::swap(left, right);
  const bool isTypeof = nodes_[left].kind == Kind::unaryExpression &&
                        unit_.text.compare(nodes_[left].begin, 6, "typeof") == 0 && isConstant(right);
  const Ast typed = isTypeof ? insideOf(childIn(nodes_, left, Field::argument)) : 0;
  if (typed != 0 && nodes_[typed].kind == Kind::identifier)
    tests.push_back({typed, {Test::What::isOfType, holds == (sign[0] == '='), expression(right)}});
  if (!isPlainRead(left) || !(isConstant(right) || nodes_[right].kind == Kind::memberExpression)) return;
  if (!isConstant(right) && !isPlainRead(right)) return;
  tests.push_back({left, {Test::What::equals, holds == (sign[0] == '='), expression(right)}});
}

// list.includes(name), names.hasOwnProperty(name)
void Body::findMembership(Ast call, bool holds, std::vector<Asked>& tests) {
  const Ast method = childIn(nodes_, call, Field::function);
  const Ast arguments = childIn(nodes_, call, Field::arguments);
  if (method == 0 || arguments == 0 || nodes_[method].kind != Kind::memberExpression) return;
  const Ast list = childIn(nodes_, method, Field::object);
  const Ast property = childIn(nodes_, method, Field::property);
  const Ast name = firstChild(nodes_, arguments);
  if (property == 0 || list == 0 || !isPlainRead(name)) return;
  if (!isPlainRead(list) && nodes_[insideOf(list)].kind != Kind::array) return;
  const std::string_view word = unit_.textOf(property);
  if (word == "includes" || word == "indexOf")
    tests.push_back({name, {Test::What::isAmong, holds, expression(list)}});
  else if (word == "hasOwnProperty")
    tests.push_back({name, {Test::What::isNameIn, holds, expression(list)}});
}

// names[name]
void Body::findEntry(Ast subscript, bool holds, std::vector<Asked>& tests) {
  const Ast names = childIn(nodes_, subscript, Field::object);
  const Ast name = insideOf(childIn(nodes_, subscript, Field::index));
  if (isPlainRead(names) && name != 0 && nodes_[name].kind == Kind::identifier)
    tests.push_back({name, {Test::What::isNameIn, holds, expression(names)}});
}

// list.indexOf(name) >= 0
void Body::findIndex(Ast call, std::string_view sign, std::string_view number, bool holds, std::vector<Asked>& tests) {
  const Ast method = childIn(nodes_, call, Field::function);
  const Ast property = method == 0 ? 0 : childIn(nodes_, method, Field::property);
  if (property == 0 || unit_.textOf(property) != "indexOf") return;
  const bool isThere =
      number == "-1" ? sign == ">" || sign == "!==" || sign == "!=" : number == "0" && (sign == ">=" || sign == ">");
  const bool isNot = number == "-1" ? sign == "===" || sign == "==" : number == "0" && sign == "<";
  if (isThere || isNot) findMembership(call, holds == isThere, tests);
}

// Remembers which property of what a value was read from.
void Body::keepOrigin(Ast ast, NodeId value) {
  ast = insideOf(ast);
  if (ast == 0 || value == 0 || nodes_[ast].kind != Kind::memberExpression) return;
  const Ast of = insideOf(childIn(nodes_, ast, Field::object));
  const Ast property = childIn(nodes_, ast, Field::property);
  if (of != 0 && property != 0 && nodes_[of].kind == Kind::identifier)
    origins_.emplace(value, std::make_pair(expression(of), keyOf(property).name));
}

// The variables that stand in a part of the code: those whose values are worth telling apart there.
std::vector<std::uint32_t> Body::usedIn(Ast begin, Ast end) const {
  std::vector<std::uint32_t> slots;
  for (Ast inner = begin; inner < end; ++inner)
    if (const std::uint32_t slot = slotOf(inner); slot != kNone) slots.push_back(slot);
  std::sort(slots.begin(), slots.end());
  slots.erase(std::unique(slots.begin(), slots.end()), slots.end());
  return slots;
}

// The property that a subject is, or was read from, and what has it.
Body::Origin Body::originOf(Ast subject, NodeId value) {
  if (nodes_[subject].kind != Kind::memberExpression) {
    const auto origin = origins_.find(value);
    return origin != origins_.end() ? Origin{0, origin->second.first, origin->second.second} : Origin{};
  }
  const Ast of = insideOf(childIn(nodes_, subject, Field::object));
  const Ast property = childIn(nodes_, subject, Field::property);
  if (of == 0 || property == 0) return {};
  return {of, expression(of), keyOf(property).name};
}

// What a function that is nothing but a test gives.
void Body::answer(Ast condition) {
  if (condition == 0 || unit_.isModel) return;
  std::vector<Asked> tests;
  findTests(condition, true, tests);
  if (tests.size() != 1 || tests[0].test.what != Test::What::equals) return;
  const NodeId result = act_.result;
  for (const bool isSo : {true, false}) {
    Asked asked = tests[0];
    if (!isSo) asked.test.holds = !asked.test.holds;
    const Where where = at(asked.subject);
    const NodeId on = expression(asked.subject);
    if (on == 0) return;
    const Origin origin = originOf(asked.subject, on);
    const Value value = numberValue(a_.names.of(isSo ? "true" : "false"));
    s_.listen(a_.guard(where, on, origin.base, origin.property, asked.test),
              [&s = s_, result, value](const Arrival&) { s.add(result, value); });
  }
}

// From here on a variable has what `node` holds; also one of a function around, until other code may write it.
void Body::narrowVariable(Ast ast, NodeId node) {
  if (nodes_[ast].kind != Kind::identifier) return;
  if (const std::uint32_t own = slotOf(ast); own != kNone) {
    state_.defs[own] = node;
    return;
  }
  const std::uint32_t link = unit_.link[ast];
  if (link < unit_.refs.size()) keepWritten(sharedOf(unit_.refs[link], nameOf(ast)), node);
}

void Body::narrowFor(const Asked& asked, const std::vector<std::uint32_t>& slots) {
  const bool isOfValue = asked.test.what == Test::What::equals || asked.test.what == Test::What::isTrue;
  if (isOfValue && slots.empty()) return;
  const Where where = at(asked.subject);
  const NodeId on = expression(asked.subject);
  if (on == 0) return;
  const std::uint32_t own = slotOf(asked.subject);
  if (!isOfValue) return narrowVariable(asked.subject, a_.passing(where, on, asked.test));
  const Origin origin = originOf(asked.subject, on);
  if (asked.test.what == Test::What::isTrue && origin.base == 0) return;
  const std::uint32_t baseSlot = origin.ast == 0 ? kNone : slotOf(origin.ast);
  const NodeId open = a_.guard(where, on, origin.base, origin.property, asked.test);
  for (const std::uint32_t slot : slots) {
    const NodeId old = state_.defs[slot];
    if (slot == baseSlot)
      state_.defs[slot] = a_.passingBy(where, old, origin.property, asked.test);
    else if (slot != own)
      state_.defs[slot] = a_.guarded(where, open, old);
  }
}

void Body::narrow(const std::vector<Asked>& tests, Ast begin, Ast end) {
  if (tests.empty() || tests.size() > kMaxTests || narrowed_ >= kMaxNarrowed || a_.areGuardsOpen) return;
  if (end - begin > kMaxGuarded) return;
  ++narrowed_;
  const std::vector<std::uint32_t> slots = usedIn(begin, end);
  for (const Asked& asked : tests)
    narrowFor(asked, slots);
}

void Body::narrow(Ast condition, bool holds, Ast code) {
  if (code == 0) return;
  std::vector<Asked> tests;
  findTests(condition, holds, tests);
  narrow(tests, code, nodes_[code].last);
}

// What follows a statement that ends where its condition holds.
void Body::narrowRest(Ast condition, Ast statement) {
  std::vector<Asked> tests;
  findTests(condition, false, tests);
  narrow(tests, nodes_[statement].last, nodes_[def_.ast].last);
}

void Body::narrowCase(Ast value, Ast body, Ast part) {
  const Ast subject = insideOf(value);
  if (!isPlainRead(subject) || narrowed_ >= kMaxNarrowed) return;
  std::vector<Asked> tests;
  const auto add = [&](Ast constant, bool holds) {
    if (constant == 0) return true;
    if (!isConstant(constant) && !isPlainRead(constant)) return false;
    tests.push_back({subject, {Test::What::equals, holds, expression(constant)}});
    return tests.size() <= kMaxTests;
  };
  if (nodes_[part].kind == Kind::switchCase) {
    if (!add(childIn(nodes_, part, Field::value), true)) return;
  } else {
    for (Ast other = body + 1; other < nodes_[body].last; other = nodes_[other].last)
      if (!add(childIn(nodes_, other, Field::value), false)) return;
  }
  // A case without code of its own falls into the next.
  Ast end = part;
  for (std::size_t i = 0; i < kMaxTests && end < nodes_[body].last && nodes_[end].last - end <= 3; ++i)
    end = nodes_[end].last;
  narrow(tests, part, end < nodes_[body].last ? nodes_[end].last : end);
}

}  // namespace flow
