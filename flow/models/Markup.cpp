// Models: markup that script puts together of known and unknown parts, and that templates make. What is not known is a
// hole in it, so that the handlers around it are read all the same. Test: tests/flow/Analysis_test.cpp.

#include <algorithm>

#include "flow/Words.h"
#include "flow/models/Models.h"

namespace flow {
namespace {

constexpr std::size_t kMaxTemplate = 100'000;  // bytes

struct Tag {
  const char* begin;
  const char* end;
  const char* silent;  // what follows `begin` where nothing is put in the tag's place
};

constexpr Tag kTags[] = {{"<%", "%>", ""}, {"{{{", "}}}", "#/^!>"}, {"{{", "}}", "#/^!>"}};

bool isSilent(const Tag& tag, const std::string& inside) {
  if (tag.begin[0] == '<') return inside.empty() || (inside[0] != '=' && inside[0] != '-');
  return inside.empty() || std::string(tag.silent).find(inside[0]) != std::string::npos;
}

// A template's text with a hole for each value.
std::string rendered(std::string text) {
  for (const Tag& tag : kTags) {
    const std::string begin = tag.begin;
    const std::string end = tag.end;
    for (std::size_t at = text.find(begin); at != std::string::npos; at = text.find(begin, at)) {
      const std::size_t close = text.find(end, at);
      if (close == std::string::npos) break;
      const std::string inside = text.substr(at + begin.size(), close - at - begin.size());
      text.replace(at, close + end.size() - at, isSilent(tag, inside) ? "" : kHole);
    }
  }
  return text;
}

// __tarvoRendered(text): what a template gives, whatever it is given.
void renderText(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  a.solver.listen(arg(a, info, 0), [&a, result](const Arrival& value) {
    if (!isText(value.value)) return;
    const std::string& text = a.names.text(nameIn(value.value));
    if (text.size() <= kMaxTemplate) a.solver.add(result, textValue(a.names.of(rendered(text))), 0, value.level);
  });
}

// The elements of a page, or of a text with markup, that have a `ref`, under these names.
void addReferences(Analysis& a, const CallInfo& info, ObjectId references, const Page& page, std::uint32_t realm) {
  for (std::uint32_t i = 0; i < page.elements.size(); ++i) {
    const PageElement& element = page.elements[i];
    const std::string name = element.valueOf("ref");
    if (name.empty()) continue;
    ObjectId made = kNobody;
    if (realm != kNone) {
      made = a.elementObject(realm, i);
    } else {
      const Where where = a.placeOutsideModels(info.site).where;
      made = a.makeElement(a.realmOf(info.site.act), element.tag, where);
      for (const PageAttribute& attribute : element.attributes)
        a.setAttribute(made, attribute.name, attribute.value, where);
    }
    a.solver.add(a.defineProperty(references, a.names.of(name)), made);
  }
}

// __tarvoReferences(object, template?)
void references(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const std::uint32_t realm = a.realmOf(info.site.act);
  const NodeId given = arg(a, info, 1);
  a.solver.listen(arg(a, info, 0), [&a, copy, realm, given](const Arrival& object) {
    if (!isObject(object.value)) return;
    const ObjectId of = object.value;
    if (a.realms[realm].page != kNone) addReferences(a, copy, of, a.pages[a.realms[realm].page], realm);
    a.solver.listen(given, [&a, copy, of](const Arrival& text) {
      if (isText(text.value)) addReferences(a, copy, of, parsePage(a.names.text(nameIn(text.value))), kNone);
    });
  });
}

}  // namespace

// The texts of a node, with a hole where one is not known, or none comes.
NodeId Analysis::withHoles(Where where, NodeId node) {
  const Value hole = textValue(names.of(kHole));
  if (node == 0) return single(hole);
  const NodeId made = solver.make(where, Step::none);
  solver.listen(node, [this, made, hole, node](const Arrival& value) {
    solver.add(made, isText(value.value) ? value.value : hole, node, value.level);
  });
  whenEmpty(node, [this, made, hole] { solver.add(made, hole); });
  return made;
}

bool Analysis::isMarkup(std::string_view text) {
  return findTag(text) != std::string_view::npos;
}

void addMarkupModels(Analysis& analysis) {
  analysis.natives.emplace("__tarvoRendered", renderText);
  analysis.natives.emplace("__tarvoReferences", references);
}

}  // namespace flow
