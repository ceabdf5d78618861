// Models: expressions in the attributes and texts of pages that AngularJS, Vue and Knockout evaluate. Each is read like
// a script that stands where it stands, with the properties of a model as its names.
// Test: tests/flow/Analysis_test.cpp.

#include <algorithm>
#include <cctype>

#include "flow/models/Models.h"

namespace flow {
namespace {

constexpr std::size_t kMaxExpressions = 2000;  // of one page or text
constexpr std::size_t kMaxDirectives = 24;     // elements that one directive is for

enum class Use { value, handler, loop, bindings };

struct Expression {
  std::string code;
  std::uint32_t begin = 0;
  bool isExact = true;
  Use use = Use::value;
  std::string attribute;  // without what marks it
};

// A page, or a text with markup, that is evaluated with a scope.
struct Run {
  std::uint32_t file = 0;
  std::uint32_t base = 0;
  bool isExact = true;
  std::uint32_t realm = 0;
  Site site;
  ObjectId locals = kNobody;  // the scope, and what loops name
  NodeId scope = 0;           // holds `locals`
  NodeId given = 0;           // object that takes what attributes are given
  NodeId sent = 0;            // object that holds what events are sent
};

bool beginsWith(const std::string& text, const char* begin) {
  return text.rfind(begin, 0) == 0;
}

std::string trimmed(const std::string& text) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

// Without filters: "a | b" calls a function b that models do not know.
std::string withoutFilters(const std::string& code) {
  for (std::size_t at = code.find('|'); at != std::string::npos; at = code.find('|', at + 1)) {
    if (at + 1 < code.size() && code[at + 1] == '|')
      ++at;
    else
      return code.substr(0, at);
  }
  return code;
}

// ---- what stands in a page ------------------------------------------------------------------------------------------

// How a library marks the attributes that it evaluates.
struct Mark {
  const char* library;
  const char* begin;
  Use use;
};

const Mark kMarks[] = {
    {"angular", "ng-repeat", Use::loop},
    {"angular", "data-ng-repeat", Use::loop},
    {"angular", "ng-", Use::value},
    {"angular", "data-ng-", Use::value},
    {"vue", "v-for", Use::loop},
    {"vue", "@", Use::handler},
    {"vue", "v-on:", Use::handler},
    {"vue", "v-bind:", Use::value},
    {"vue", ":", Use::value},
    {"vue", "v-", Use::value},
    {"knockout", "data-bind", Use::bindings},
};

void takeAttribute(const std::string& library, const PageAttribute& attribute, std::vector<Expression>& found) {
  for (const Mark& mark : kMarks) {
    if (library != mark.library || !beginsWith(attribute.name, mark.begin)) continue;
    std::string name = attribute.name.substr(std::string(mark.begin).size());
    name.resize(std::min(name.size(), name.find('.')));
    found.push_back({attribute.value, attribute.begin, attribute.isExact, mark.use, name});
    return;
  }
}

// {{ expression }} in a text that begins at `begin` of the page.
void takeBraces(const std::string& text, std::uint32_t begin, bool isExact, std::vector<Expression>& found) {
  for (std::size_t at = text.find("{{"); at != std::string::npos; at = text.find("{{", at + 2)) {
    const std::size_t end = text.find("}}", at);
    if (end == std::string::npos) return;
    const auto offset = static_cast<std::uint32_t>(at + 2);
    found.push_back({text.substr(at + 2, end - at - 2), isExact ? begin + offset : begin, isExact, Use::value, ""});
  }
}

void takeComments(const Page& page, std::vector<Expression>& found) {
  for (const PageComment& comment : page.comments) {
    const std::size_t begin = comment.text.find_first_not_of(" \t\r\n");
    if (begin == std::string::npos || comment.text.compare(begin, 3, "ko ") != 0) continue;
    const auto offset = static_cast<std::uint32_t>(begin + 3);
    found.push_back({comment.text.substr(offset), comment.begin + offset, true, Use::bindings, ""});
  }
}

std::vector<Expression> expressionsOf(const std::string& library, const Page& page, std::string_view source) {
  std::vector<Expression> found;
  const bool hasBraces = library != "knockout";
  for (const PageElement& element : page.elements) {
    for (const PageAttribute& attribute : element.attributes) {
      takeAttribute(library, attribute, found);
      if (hasBraces) takeBraces(attribute.value, attribute.begin, attribute.isExact, found);
    }
    if (!hasBraces || element.tag == "script" || element.tag == "style") continue;
    const std::size_t before = found.size();
    takeBraces(element.text, element.textBegin, false, found);
    // Elements may stand between the parts of the text: the page itself says where each is.
    std::size_t from = element.textBegin;
    for (std::size_t i = before; i < found.size(); ++i) {
      const std::size_t at = source.find("{{" + found[i].code + "}}", from);
      if (at == std::string::npos) continue;
      found[i].begin = static_cast<std::uint32_t>(at + 2);
      found[i].isExact = true;
      from = at;
    }
  }
  if (library == "knockout") takeComments(page, found);
  if (found.size() > kMaxExpressions) found.resize(kMaxExpressions);
  return found;
}

// ---- evaluating -----------------------------------------------------------------------------------------------------

NodeId evaluate(Analysis& a, const Run& run, const std::string& code, std::uint32_t begin, bool isExact) {
  if (trimmed(code).empty()) return 0;
  const std::uint32_t unit =
      a.unitOfText(code, run.file, run.isExact ? run.base + begin : run.base, isExact && run.isExact, true);
  if (unit == kNone) return 0;
  return a.acts[a.runScript(unit, run.realm, run.scope, run.scope)].result;
}

// "one in list", "(one, index) of list": `one` names an element of the list from here on.
void evaluateLoop(Analysis& a, const Run& run, const Expression& expression) {
  const std::string& code = expression.code;
  std::size_t at = code.find(" in ");
  if (at == std::string::npos) at = code.find(" of ");
  if (at == std::string::npos) return;
  std::string list = withoutFilters(code.substr(at + 4));
  list.resize(std::min({list.size(), list.find(" track by "), list.find(" as ")}));
  std::string name = code.substr(0, at);
  const std::size_t begin = name.find_first_not_of(" (");
  if (begin == std::string::npos) return;
  name = trimmed(name.substr(begin, name.find_first_of(",)", begin) - begin));
  const NodeId all = evaluate(a, run, list, expression.begin + static_cast<std::uint32_t>(at) + 4, expression.isExact);
  a.solver.edge(a.elementsOf(run.site.where, all), a.defineProperty(run.locals, a.names.of(name)));
}

// What a handler names is called with what the event was sent with.
void evaluateHandler(Analysis& a, const Run& run, const Expression& expression) {
  const NodeId handler = evaluate(a, run, expression.code, expression.begin, expression.isExact);
  const NodeId detail = a.solver.make(run.site.where, Step::none);
  if (run.sent != 0) a.read(run.site.where, run.site.act, run.sent, 0, a.names.of(expression.attribute), detail);
  a.solver.edge(detail, a.defineProperty(run.locals, a.names.of("$event")));
  a.call(run.site, handler, run.scope, a.makeArgs({detail}), 0);
}

// "click: send, foreach: list": handlers are called, lists and objects make the names of what is inside.
void evaluateBindings(Analysis& a, const Run& run, const Expression& expression) {
  const NodeId made = evaluate(a, run, "({" + expression.code + "\n})", expression.begin, false);
  const Site site = run.site;
  const ObjectId locals = run.locals;
  const NodeId scope = run.scope;
  a.solver.listen(made, [&a, site, locals, scope](const Arrival& bindings) {
    if (!isObject(bindings.value)) return;
    a.watch(bindings.value, [&a, site, locals, scope](Name name, NodeId value) {
      const std::string& text = a.names.text(name);
      if (text == "click" || text == "submit") return a.call(site, value, scope, a.makeArgs({scope}), 0);
      if (text != "foreach" && text != "with" && text != "using" && text != "let") return;
      // Observables hold it.
      const NodeId inner = a.solver.make(site.where, Step::none);
      a.solver.edge(value, inner);
      a.call(site, value, scope, a.makeArgs({}), inner);
      const NodeId one = text == "foreach" ? a.elementsOf(site.where, inner) : inner;
      a.solver.edge(one, a.protoNode(locals));
      a.solver.edge(one, a.defineProperty(locals, a.names.of("$data")));
    });
  });
}

void evaluateAll(Analysis& a, const Run& run, const std::vector<Expression>& all) {
  for (const Expression& expression : all) {
    if (expression.use == Use::loop) {
      evaluateLoop(a, run, expression);
    } else if (expression.use == Use::handler) {
      evaluateHandler(a, run, expression);
    } else if (expression.use == Use::bindings) {
      evaluateBindings(a, run, expression);
    } else {
      const NodeId value = evaluate(a, run, withoutFilters(expression.code), expression.begin, expression.isExact);
      if (run.given != 0 && !expression.attribute.empty())
        a.write(run.site.where, run.site.act, run.given, 0, a.names.of(expression.attribute), value);
    }
  }
}

// ---- what models call -----------------------------------------------------------------------------------------------

Run runFor(Analysis& a, const CallInfo& info) {
  Run run;
  run.site = a.placeOutsideModels(info.site);
  run.realm = a.realmOf(info.site.act);
  run.locals = a.newObject(Class::plain, run.site.where);
  for (const char* name : {"$root", "$parent", "$data"})
    a.solver.edge(arg(a, info, 1), a.defineProperty(run.locals, a.names.of(name)));
  a.solver.edge(arg(a, info, 1), a.protoNode(run.locals));
  run.scope = a.single(run.locals);
  run.given = arg(a, info, 3);
  run.sent = arg(a, info, 4);
  return run;
}

void evaluatePage(Analysis& a, Run run, const std::string& library) {
  const std::uint32_t page = a.realms[run.realm].page;
  if (page == kNone) return;
  run.file = a.pages[page].file;
  evaluateAll(a, run, expressionsOf(library, a.pages[page], a.files[run.file].bytes));
}

// The script in a text with <% code %> and <%= values %>.
std::string codeIn(const std::string& text) {
  std::string code;
  for (std::size_t at = text.find("<%"); at != std::string::npos; at = text.find("<%", at)) {
    const std::size_t end = text.find("%>", at);
    if (end == std::string::npos) break;
    const bool isValue = text[at + 2] == '=' || text[at + 2] == '-';
    const std::size_t begin = at + (isValue ? 3 : 2);
    const std::string part = text.substr(begin, end - std::min(begin, end));
    code += isValue ? "(" + part + "\n);" : part + "\n";
    at = end;
  }
  return code;
}

void evaluateText(Analysis& a, Run run, const std::string& library, const std::string& text) {
  if (run.site.where.unit >= a.units.size()) return;
  const Unit& unit = a.units[run.site.where.unit];
  run.file = unit.file;
  run.base = unit.base + (unit.isExact ? run.site.where.offset : 0);
  run.isExact = false;
  if (library == "underscore") {
    (void)evaluate(a, run, codeIn(text), 0, false);
    return;
  }
  evaluateAll(a, run, expressionsOf(library, parsePage(text), text));
}

// __tarvoTemplate(library, scope, text?, given?, sent?): the page's expressions, and those of a text with markup.
void evaluateTemplate(Analysis& a, const CallInfo& info) {
  const NodeId kind = arg(a, info, 0);
  if (kind == 0 || a.solver.isEmpty(kind)) return;
  const std::string library = a.names.text(nameIn(a.solver.values(kind)[0].value));
  const Run run = runFor(a, info);
  if (library != "underscore") evaluatePage(a, run, library);
  if (const NodeId text = arg(a, info, 2))
    a.solver.listen(text, [&a, run, library](const Arrival& value) {
      if (isText(value.value) && !isNumber(value.value))
        evaluateText(a, run, library, a.names.text(nameIn(value.value)));
    });
}

// __tarvoTemplateName(controller, scope, instance): "controller as name" in the page puts the instance into the scope.
void nameInTemplate(Analysis& a, const CallInfo& info) {
  const std::uint32_t page = a.realms[a.realmOf(info.site.act)].page;
  if (page == kNone) return;
  const CallInfo copy = info;
  a.solver.listen(arg(a, info, 0), [&a, copy, page](const Arrival& controller) {
    if (!isText(controller.value)) return;
    const std::string begin = a.names.text(nameIn(controller.value)) + " as ";
    for (const PageElement& element : a.pages[page].elements) {
      std::string value = element.valueOf("ng-controller");
      if (value.empty()) value = element.valueOf("data-ng-controller");
      if (beginsWith(value, begin.c_str()))
        a.write(copy.site.where, copy.site.act, arg(a, copy, 1), 0, a.names.of(trimmed(value.substr(begin.size()))),
                arg(a, copy, 2));
    }
  });
}

// The attribute as AngularJS names it: tv-plugin and data-tv-plugin are tvPlugin.
std::string camelOf(const std::string& name) {
  std::string camel;
  for (std::size_t i = beginsWith(name, "data-") ? 5 : 0; i < name.size(); ++i) {
    if (name[i] == '-' && i + 1 < name.size())
      camel += static_cast<char>(std::toupper(static_cast<unsigned char>(name[++i])));
    else
      camel += name[i];
  }
  return camel;
}

// __tarvoDirective(name): for each element of the page that the directive is for, its attributes; without one, an
// object without any.
void attributesOfDirective(Analysis& a, const CallInfo& info) {
  const std::uint32_t page = a.realms[a.realmOf(info.site.act)].page;
  const CallInfo copy = info;
  a.solver.listen(arg(a, info, 0), [&a, copy, page](const Arrival& name) {
    if (!isText(name.value)) return;
    const std::string& directive = a.names.text(nameIn(name.value));
    const ObjectId list = a.newObject(Class::array, copy.site.where);
    std::size_t next = 0;
    const auto add = [&] {
      const ObjectId one = a.newObject(Class::plain, copy.site.where);
      a.solver.add(a.defineProperty(list, a.names.of(std::to_string(next++))), one);
      return one;
    };
    for (const PageElement& element : page == kNone ? std::vector<PageElement>() : a.pages[page].elements) {
      const bool isFor = camelOf(element.tag) == directive ||
                         std::any_of(element.attributes.begin(), element.attributes.end(),
                                     [&](const PageAttribute& one) { return camelOf(one.name) == directive; });
      if (!isFor || next >= kMaxDirectives) continue;
      const ObjectId given = add();
      for (const PageAttribute& attribute : element.attributes)
        a.solver.add(a.defineProperty(given, a.names.of(camelOf(attribute.name))),
                     textValue(a.names.of(attribute.value)));
    }
    if (next == 0) (void)add();
    a.solver.add(copy.result, list);
  });
}

}  // namespace

void addTemplateModels(Analysis& analysis) {
  analysis.natives.emplace("__tarvoTemplate", evaluateTemplate);
  analysis.natives.emplace("__tarvoTemplateName", nameInTemplate);
  analysis.natives.emplace("__tarvoDirective", attributesOfDirective);
}

}  // namespace flow
