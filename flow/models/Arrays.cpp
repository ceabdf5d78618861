// Models: what the language itself brings: arrays. Test: tests/flow/Analysis_test.cpp.

#include <cstdlib>
#include <cstring>
#include <memory>

#include "flow/models/Models.h"

namespace flow {
namespace {

constexpr std::uint32_t kMaxRounds = 32;  // of a list that is gone through place by place

NodeId indexNode(Analysis& a, Name name) {
  return name ? a.single(numberValue(name)) : 0;
}

bool isKnownByPlaces(Analysis& a, Value list) {
  if (!isObject(list) || a.object(list).cls != Class::array) return false;
  const Object& of = a.object(list);
  return of.star == 0 && of.b > 0 && of.b <= kMaxRounds;
}

// What a callback gives for each element, into a list where `isKept`.
void eachCall(Analysis& a, const CallInfo& info, NodeId list, NodeId callback, std::size_t selfAt,
              std::function<void(NodeId element, NodeId result, std::uint32_t salt, Name name)> take) {
  const CallInfo copy = info;
  const NodeId self = arg(a, info, selfAt);
  eachElement(a, info.site.where, list,
              [&a, copy, callback, self, take, list](NodeId element, std::uint32_t salt, Name name) {
                const NodeId result = a.solver.make(copy.site.where, Step::none);
                a.invoke(copy, callback, self, {element, indexNode(a, name), list}, result, salt);
                if (take) take(element, result, salt, name);
              });
}

void arrayForEach(Analysis& a, const CallInfo& info) {
  eachCall(a, info, info.self, arg(a, info, 0), 1, nullptr);
}

void arrayMap(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  eachCall(a, info, info.self, arg(a, info, 0), 1, [&a, made](NodeId, NodeId result, std::uint32_t, Name name) {
    a.solver.edge(result, name ? a.defineProperty(made, name) : a.starNode(made));
  });
}

void arrayFlatMap(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  const Where where = info.site.where;
  eachCall(a, info, info.self, arg(a, info, 0), 1, [&a, made, where](NodeId, NodeId result, std::uint32_t, Name) {
    a.solver.edge(a.elementsOf(where, result), a.starNode(made));
  });
}

// Those elements that the callback does not turn down, as far as its answers are known.
void eachChosen(Analysis& a, const CallInfo& info, NodeId to) {
  eachCall(a, info, info.self, arg(a, info, 0), 1, [&a, to](NodeId element, NodeId result, std::uint32_t, Name) {
    const NodeId isChosen = a.passing({}, result, {Test::What::isTrue, true, 0});
    a.whenEmpty(isChosen, [&a, result, isChosen] {
      if (a.solver.isEmpty(result)) a.solver.add(isChosen, kUnknown);
    });
    a.solver.edge(a.guarded({}, isChosen, element), to);
  });
}

void arrayFilter(Analysis& a, const CallInfo& info) {
  eachChosen(a, info, a.starNode(newArray(a, info)));
}

// With a function: with a text, it is another's method of that name.
void arrayFind(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const auto once = std::make_shared<bool>(false);
  objectsIn(a, arg(a, info, 0), [&a, copy, once](ObjectId) {
    if (!*once) eachChosen(a, copy, copy.result);
    *once = true;
  });
}

// Lists that are known by their places: each round is given what the one before it made.
void reduceInOrder(Analysis& a, const CallInfo& info, ObjectId list, bool isFromEnd) {
  const std::uint32_t count = a.object(list).b;
  NodeId held = arg(a, info, 1);
  for (std::uint32_t i = 0; i < count; ++i) {
    const Name index = a.names.of(std::to_string(isFromEnd ? count - 1 - i : i));
    const NodeId element = a.readNode(list, index);
    if (i == 0 && info.args->nodes.size() < 2) {
      held = element;
      continue;
    }
    const NodeId result = fresh(a, info);
    a.invoke(info, arg(a, info, 0), 0, {held, element, indexNode(a, index)}, result, index + 1);
    held = result;
  }
  a.solver.edge(held, info.result);
}

template <bool isFromEnd>
void arrayReduce(Analysis& a, const CallInfo& info) {
  if (isKnownByPlaces(a, info.selfValue)) return reduceInOrder(a, info, info.selfValue, isFromEnd);
  const NodeId held = fresh(a, info);
  const bool hasStart = info.args->nodes.size() > 1;
  a.solver.edge(arg(a, info, 1), held);
  const CallInfo copy = info;
  const NodeId callback = arg(a, info, 0);
  eachElement(a, info.site.where, info.self,
              [&a, copy, callback, held, hasStart](NodeId element, std::uint32_t salt, Name name) {
                if (!hasStart) a.solver.edge(element, held);
                const NodeId result = a.solver.make(copy.site.where, Step::none);
                a.invoke(copy, callback, 0, {held, element, indexNode(a, name)}, result, salt);
                // Texts put together in rounds are not known; objects are.
                a.solver.listen(result, [&a, held, result](const Arrival& value) {
                  if (isObject(value.value)) a.solver.add(held, value.value, result, value.level);
                });
              });
  a.solver.edge(held, info.result);
}

void arrayPush(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  for (std::size_t i = 0; i < info.args->nodes.size(); ++i) {
    const NodeId value =
        info.args->isSpread[i] ? a.elementsOf(info.site.where, info.args->nodes[i]) : info.args->nodes[i];
    a.writeUnknown(info.selfValue, value, 0);
  }
}

void arrayElement(Analysis& a, const CallInfo& info) {
  a.solver.edge(a.elementsOf(info.site.where, info.self), info.result);
}

// at(n), item(n): the one of that number, where it is known.
void arrayAt(Analysis& a, const CallInfo& info) {
  const NodeId index = arg(a, info, 0);
  if (index == 0 || !isObject(info.selfValue)) return arrayElement(a, info);
  const ObjectId list = info.selfValue;
  const NodeId result = info.result;
  const CallInfo copy = info;
  a.solver.listen(index, [&a, copy, list, result](const Arrival& by) {
    if (isNumber(by.value) && a.names.text(nameIn(by.value))[0] != '-')
      a.solver.edge(a.readNode(list, nameIn(by.value)), result);
    else
      arrayElement(a, copy);
  });
  a.whenEmpty(index, [&a, copy] { arrayElement(a, copy); });
}

void arrayShift(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const Class cls = a.object(info.selfValue).cls;
  if (cls == Class::array || cls == Class::jquery) a.moveElements(info.selfValue);
  a.solver.edge(a.elementsOf(info.site.where, info.self), info.result);
}

// The last of those that are known by their place, or any.
void arrayPop(Analysis& a, const CallInfo& info) {
  if (!isKnownByPlaces(a, info.selfValue)) return arrayElement(a, info);
  const ObjectId list = info.selfValue;
  a.solver.edge(a.readNode(list, a.names.of(std::to_string(a.object(list).b - 1))), info.result);
  a.solver.edge(a.starNode(list), info.result);
}

void arrayCopy(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  a.solver.edge(a.elementsOf(info.site.where, info.self), a.starNode(made));
  for (std::size_t i = 0; i < info.args->nodes.size(); ++i) {
    const NodeId value = info.args->nodes[i];
    a.solver.edge(a.elementsOf(info.site.where, value), a.starNode(made));
  }
}

// slice(1): what is known by its place moves down.
void arraySlice(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  long from = 0;
  bool isKnown = info.args->nodes.empty();
  for (const Arrival& value : a.solver.values(arg(a, info, 0))) {
    if (!isNumber(value.value)) continue;
    from = std::strtol(a.names.text(nameIn(value.value)).c_str(), nullptr, 10);
    isKnown = from >= 0;
  }
  objectsIn(a, info.self, [&a, made, from, isKnown](ObjectId of) {
    a.watch(of, [&a, made, from, isKnown](Name name, NodeId node) {
      const std::string& text = a.names.text(name);
      if (isHidden(text) || text.empty() || text[0] < '0' || text[0] > '9') return;
      const long index = std::strtol(text.c_str(), nullptr, 10);
      if (isKnown && index < from) return;
      a.solver.edge(node,
                    isKnown ? a.defineProperty(made, a.names.of(std::to_string(index - from))) : a.starNode(made));
    });
    a.solver.edge(a.starNode(of), a.starNode(made));
  });
}

void arrayConcat(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  // What is known by its place in the first list stays there.
  const Where where = info.site.where;
  const bool isInPlace = isObject(info.selfValue) && a.object(info.selfValue).cls == Class::array &&
                         a.object(info.selfValue).star == 0 && a.object(info.selfValue).b > 0;
  if (isInPlace) {
    const ObjectId from = info.selfValue;
    a.object(made).b = a.object(from).b;
    for (std::uint32_t i = 0; i < a.object(from).b; ++i)
      a.solver.edge(a.readNode(from, a.names.of(std::to_string(i))),
                    a.defineProperty(made, a.names.of(std::to_string(i))));
  } else {
    a.solver.edge(a.elementsOf(where, info.self), a.starNode(made));
  }
  for (std::size_t i = 0; i < info.args->nodes.size(); ++i) {
    const NodeId node = info.args->nodes[i];
    a.solver.listen(node, [&a, made, node, where](const Arrival& value) {
      if (isObject(value.value) && a.object(value.value).cls == Class::array)
        a.elementsOfValue(where, value.value, a.starNode(made));
      else
        a.solver.add(a.starNode(made), value.value, node, value.level);
    });
  }
}

void arrayReverse(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  // Where all places are known, they are turned round once values have come to rest.
  const ObjectId from = info.selfValue;
  if (!isObject(from)) return;
  std::vector<NodeId> nodes;
  for (std::size_t i = 0;; ++i) {
    const auto at = a.object(from).index.find(a.names.of(std::to_string(i)));
    if (at == a.object(from).index.end()) break;
    nodes.push_back(a.object(from).properties[at->second].node);
  }
  for (std::size_t i = 0; i < nodes.size(); ++i)
    a.solver.edge(nodes[nodes.size() - 1 - i], a.defineProperty(made, a.names.of(std::to_string(i))));
  if (a.object(from).star) a.solver.edge(a.starNode(from), a.starNode(made));
}

// Markup in a list whose order is not known: each part of it for itself.
void joinMarkup(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  texts(a, a.elementsOf(info.site.where, info.self), [&a, result](const std::string& text) {
    if (Analysis::isMarkup(text)) a.solver.add(result, textValue(a.names.of(text)));
  });
}

// The texts of a list that is known by its places, put together: as often as all of them are one text each.
void arrayJoin(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const CallInfo copy = info;
  const auto work = [&a, copy] {
    std::string separator = ",";
    const NodeId given = a.argument(copy.args, 0, copy.site.where);
    for (const Arrival& value : given ? a.solver.values(given) : std::vector<Arrival>())
      if (isText(value.value)) separator = a.names.text(nameIn(value.value));
    std::string text;
    const Object& of = a.object(copy.selfValue);
    for (std::size_t i = 0;; ++i) {
      const auto at = of.index.find(a.names.of(std::to_string(i)));
      if (at == of.index.end() || !of.properties[at->second].isWritten) {
        if (i == 0) joinMarkup(a, copy);
        if (i > 0) a.solver.add(copy.result, textValue(a.names.of(text)));
        break;
      }
      const auto& values = a.solver.values(of.properties[at->second].node);
      if (values.size() != 1 || !isText(values[0].value)) return joinMarkup(a, copy);
      text += (i ? separator : "") + a.names.text(nameIn(values[0].value));
    }
  };
  // Elements that come one by one would give beginnings of the text: later, when they are all there.
  a.whenEmpty(copy.result, work);
}

void arrayFrom(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  const CallInfo copy = info;
  const NodeId callback = arg(a, info, 1);
  const bool hasCallback = info.args->nodes.size() > 1;
  eachElement(a, info.site.where, arg(a, info, 0),
              [&a, copy, made, callback, hasCallback](NodeId element, std::uint32_t salt, Name name) {
                NodeId value = element;
                if (hasCallback) {
                  value = a.solver.make(copy.site.where, Step::none);
                  a.invoke(copy, callback, 0, {element, indexNode(a, name)}, value, salt);
                }
                a.solver.edge(value, name ? a.defineProperty(made, name) : a.starNode(made));
              });
}

void arrayOfArguments(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  for (std::size_t i = 0; i < info.args->nodes.size(); ++i) {
    if (info.args->isSpread[i])
      a.solver.edge(a.elementsOf(info.site.where, info.args->nodes[i]), a.starNode(made));
    else
      a.solver.edge(info.args->nodes[i], a.defineProperty(made, a.names.of(std::to_string(i))));
  }
}

void arrayFill(Analysis& a, const CallInfo& info) {
  if (isObject(info.selfValue)) a.solver.edge(arg(a, info, 0), a.starNode(info.selfValue));
  a.solver.edge(info.self, info.result);
}

void arraySplice(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  a.solver.edge(a.elementsOf(info.site.where, info.self), a.starNode(made));
  if (!isObject(info.selfValue)) return;
  for (std::size_t i = 2; i < info.args->nodes.size(); ++i)
    a.writeUnknown(info.selfValue, info.args->nodes[i], 0);
}

void arrayEntries(Analysis& a, const CallInfo& info) {
  const ObjectId made = newArray(a, info);
  const Where where = info.site.where;
  eachElement(a, where, info.self, [&a, made, where](NodeId element, std::uint32_t salt, Name name) {
    const ObjectId pair = a.arrayOf(where, {indexNode(a, name), element});
    const Name at = a.names.of("e" + std::to_string(salt));
    a.solver.add(a.defineProperty(made, at), pair);
  });
}

void arraySort(Analysis& a, const CallInfo& info) {
  const NodeId elements = a.elementsOf(info.site.where, info.self);
  a.invoke(info, arg(a, info, 0), 0, {elements, elements});
  a.solver.edge(info.self, info.result);
}

const Row kRows[] = {
    {"Array", arrayOfArguments},
    {"Array.from", arrayFrom},
    {"Array.of", arrayOfArguments},
    {"Array.isArray", none},
    {"Array#forEach", arrayForEach},
    {"Array#map", arrayMap},
    {"Array#flatMap", arrayFlatMap},
    {"Array#filter", arrayFilter},
    {"Array#find", arrayFind},
    {"Array#findLast", arrayFind},
    {"Array#some", arrayForEach},
    {"Array#every", arrayForEach},
    {"Array#findIndex", arrayForEach},
    {"Array#reduce", arrayReduce<false>},
    {"Array#reduceRight", arrayReduce<true>},
    {"Array#push", arrayPush},
    {"Array#unshift", arrayPush},
    {"Array#pop", arrayPop},
    {"Array#shift", arrayShift},
    {"Array#at", arrayAt},
    {"Array#item", arrayAt},
    {"Array#namedItem", arrayElement},
    {"Array#slice", arraySlice},
    {"Array#concat", arrayConcat},
    {"Array#reverse", arrayReverse},
    {"Array#toReversed", arrayReverse},
    {"Array#join", arrayJoin},
    {"Array#fill", arrayFill},
    {"Array#splice", arraySplice},
    {"Array#flat", arrayCopy},
    {"Array#sort", arraySort},
    {"Array#toSorted", arraySort},
    {"Array#values", arrayCopy},
    {"Array#entries", arrayEntries},
    {"Array#@@iterator", arrayCopy},
    {"Array#indexOf", none},
};

}  // namespace

void addArrayModels(Analysis& analysis) {
  addRows(analysis, kRows);
}

}  // namespace flow
