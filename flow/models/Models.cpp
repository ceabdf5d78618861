// Models: what all of them share. Test: tests/flow/Analysis_test.cpp.

#include "flow/models/Models.h"

#include <memory>

namespace flow {

void texts(Analysis& a, NodeId node, const std::function<void(const std::string&)>& take) {
  a.solver.listen(node, [&a, take](const Arrival& value) {
    if (isText(value.value)) take(a.names.text(nameIn(value.value)));
  });
}

void objectsIn(Analysis& a, NodeId node, const std::function<void(ObjectId)>& take) {
  a.solver.listen(node, [take](const Arrival& value) {
    if (isObject(value.value)) take(value.value);
  });
}

void firstArgument(Analysis& a, const CallInfo& info) {
  a.solver.edge(arg(a, info, 0), info.result);
}

void none(Analysis&, const CallInfo&) {}

// Objects are taken one by one, so that what one of them holds does not meet what another does; so many at most.
void eachValue(Analysis& a, Where where, NodeId node, const std::function<void(NodeId, std::uint32_t)>& take) {
  constexpr int kMaxApart = 24;
  constexpr std::uint32_t kValueSalt = 0x40000000;
  const auto apart = std::make_shared<int>(0);
  const NodeId rest = a.solver.make(where, Step::none);
  a.takenApart.insert(rest);
  a.solver.listen(node, [&a, where, node, take, apart, rest](const Arrival& value) {
    const bool isApart = isObject(value.value) && a.object(value.value).cls == Class::plain && *apart < kMaxApart;
    const NodeId own = isApart ? a.solver.make(where, Step::none) : rest;
    const bool isFirst = isApart || a.solver.isEmpty(rest);
    a.solver.add(own, value.value, node, value.level);
    if (isApart) ++*apart;
    if (isFirst) take(own, isApart ? kValueSalt | value.value : 0);
  });
}

ObjectId newArray(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::array, info.site.where);
  a.solver.add(info.result, made);
  return made;
}

void eachElement(Analysis& a, Where where, NodeId list, std::function<void(NodeId, std::uint32_t, Name)> take) {
  a.solver.listen(list, [&a, where, take](const Arrival& of) {
    if (!isObject(of.value)) return;
    const Class cls = a.object(of.value).cls;
    if (cls == Class::array || cls == Class::jquery || cls == Class::plain) {
      a.watch(of.value, [&a, take](Name name, NodeId node) {
        if (!isHidden(a.names.text(name))) take(node, name + 1, name);
      });
      return eachValue(a, where, a.starNode(of.value),
                       [take](NodeId node, std::uint32_t salt) { take(node, salt, 0); });
    }
    const NodeId element = a.solver.make(where, Step::none);
    a.elementsOfValue(where, of.value, element);
    a.solver.listen(element,
                    [&a, take, where](const Arrival& value) { take(a.single(value.value, where), value.value, 0); });
  });
}
}  // namespace flow
