// Body: loops, and what counts in them. Test: tests/flow/Analysis_test.cpp.

#include <algorithm>
#include <cstdlib>

#include "flow/body/Body.h"
#include "flow/models/Models.h"

namespace flow {
namespace {

constexpr long kMaxCounted = 64;  // rounds of a loop that counts

}  // namespace

void Body::loop(Ast ast, const std::function<void()>& content) {
  const std::vector<std::uint32_t> slots = writtenIn(ast);
  std::vector<NodeId> heads;
  for (const std::uint32_t slot : slots) {
    const NodeId head = s_.make(at(ast), Step::none);
    s_.edge(state_.defs[slot], head);
    state_.defs[slot] = head;
    heads.push_back(head);
    loopHeads_.push_back(head);
  }
  forgetWritten();
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
  forgetWritten();
}

void Body::forStatement(Ast ast) {
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

void Body::setCounter(std::uint32_t slot, NodeId value) {
  state_.defs[slot] = value;
  if (def_.variables[slot].isReadInside || act_.def == 0) s_.edge(value, variable(slot));
}

// The binary expression of a loop's condition, or 0.
Ast Body::conditionOf(Ast ast) const {
  Ast condition = childIn(nodes_, ast, Field::condition);
  if (condition != 0 && nodes_[condition].kind == Kind::expressionStatement) condition = firstChild(nodes_, condition);
  return condition != 0 && nodes_[condition].kind == Kind::binaryExpression ? condition : 0;
}

// The variable of the function that a loop counts up one by one, to less than a bound: its slot, or kNone.
std::uint32_t Body::counterOf(Ast ast) const {
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
NodeId Body::counted(Ast ast, std::uint32_t slot) {
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

void Body::addNumbers(Analysis& a, long from, long end, NodeId counter) {
  if (end - from > kMaxCounted) return a.solver.add(counter, kUnknown);
  for (long i = from; i < end; ++i)
    a.solver.add(counter, numberValue(a.names.of(std::to_string(i))));
}

void Body::countTo(Analysis& a, NodeId bound, long from, long more, NodeId counter) {
  a.solver.listen(bound, [&a, from, more, counter](const Arrival& value) {
    if (!isNumber(value.value)) return a.solver.add(counter, kUnknown);
    addNumbers(a, from, std::strtol(a.names.text(nameIn(value.value)).c_str(), nullptr, 10) + more, counter);
  });
}

bool Body::hasOnlyPlaces(const Analysis& a, ObjectId list) {
  const Object& of = a.objects[list];
  return of.cls == Class::array && of.b > 0 && (of.star == 0 || a.solver.isEmpty(of.star));
}

void Body::countList(Analysis& a, NodeId list, long from, long more, NodeId counter) {
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

// The body is read once for each name or value that comes.
void Body::forIn(Ast ast) {
  const Ast right = childIn(nodes_, ast, Field::right);
  const NodeId given = expression(right);
  const NodeId list = (nodes_[ast].marks & kAsync) ? settledElements(ast, given) : given;
  const std::uint32_t link = unit_.link[ast];
  if (link == kNone || link >= unit_.defs.size()) return;
  forgetWritten();
  const ObjectId body = a_.closureObject(act_.unit, link, id_, at(ast));
  const Site site{at(ast), at(ast), id_, 0};
  if (nodes_[ast].marks & kOf)
    forOf(site, list, body);
  else
    forNames(site, list, body);
  a_.whenEmpty(list, [&a = a_, body, site] {
    if (!a.closures[a.objects[body].a].isEntered) a.callValue(site, body, 0, kUnknown, a.makeArgs({0}), 0, false, 0, 0);
  });
}

// What `for await` goes through: promises in a list stand for what they give.
NodeId Body::settledElements(Ast ast, NodeId list) {
  const ObjectId settled = a_.newObject(Class::array, at(ast));
  s_.edge(a_.awaited(at(ast), a_.elementsOf(at(ast), list)), a_.starNode(settled));
  return made(at(ast), settled);
}

void Body::forNames(const Site& site, NodeId list, ObjectId body) {
  Analysis& a = a_;
  a.solver.listen(list, [&a, site, body](const Arrival& of) {
    if (!isObject(of.value)) return;
    const Class cls = a.objects[of.value].cls;
    if (cls != Class::plain && cls != Class::array && cls != Class::function && cls != Class::jquery) return;
    const bool isFunction = cls == Class::function;
    a.watch(of.value, [&a, site, body, isFunction](Name name, NodeId) {
      const std::string& text = a.names.text(name);
      if (text.empty() || text[0] == '%' || text == "constructor") return;
      if (isFunction && name == a.known.prototype) return;
      Site own = site;
      own.salt = name + 1;
      a.callValue(own, body, 0, kUnknown, a.makeArgs({a.single(textValue(name), site.where)}), 0, false, 0, 0);
    });
  });
}

void Body::forOf(const Site& site, NodeId list, ObjectId body) {
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
      return eachValue(a, site.where, a.starNode(of.value), [&a, site, body](NodeId node, std::uint32_t salt) {
        Site own = site;
        own.salt = salt;
        a.callValue(own, body, 0, kUnknown, a.makeArgs({node}), 0, false, 0, 0);
      });
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

}  // namespace flow
