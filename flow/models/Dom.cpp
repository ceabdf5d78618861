// Models: what documents, elements and windows do. Test: tests/flow/Analysis_test.cpp.

#include <algorithm>
#include <cstring>

#include "flow/models/Models.h"

namespace flow {
namespace {

// The realm of the document or element that a method is called on.
std::uint32_t realmOfSelf(Analysis& a, const CallInfo& info) {
  if (isObject(info.selfValue)) {
    const Object& self = a.object(info.selfValue);
    if (self.cls == Class::document || self.cls == Class::window) return self.a;
    if (self.cls == Class::element) return a.elements[self.a].realm;
  }
  return a.realmOf(info.site.act);
}

void texts(Analysis& a, NodeId node, std::function<void(const std::string&, std::uint8_t)> take) {
  a.solver.listen(node, [&a, take](const Arrival& value) {
    if (isText(value.value)) take(a.names.text(nameIn(value.value)), value.level);
  });
}

void getElementById(Analysis& a, const CallInfo& info) {
  const std::uint32_t realm = realmOfSelf(a, info);
  const NodeId result = info.result;
  const Where where = info.site.where;
  a.solver.listen(arg(a, info, 0), [&a, realm, result, where](const Arrival& id) {
    if (!isText(id.value)) return;
    const NodeId through = a.solver.make(where, Step::lookUp, nameIn(id.value));
    a.solver.edge(a.idNode(realm, nameIn(id.value)), through, id.level);
    a.solver.edge(through, result);
  });
}

bool isPluginTag(const std::string& tag) {
  return tag == "object" || tag == "embed" || tag == "applet";
}

// ---- selectors

struct Simple {
  std::string tag, id;
  std::vector<std::string> classes;
  std::vector<std::pair<std::string, std::string>> attributes;  // name and value; an operator stands before the value
};

// The last compound of each alternative: what an element itself must be.
std::vector<Simple> parseSelector(const std::string& text) {
  std::vector<Simple> all;
  Simple current;
  bool hasAny = false;
  const auto finish = [&] {
    if (hasAny) all.push_back(current);
    current = {};
    hasAny = false;
  };
  const auto word = [&](std::size_t& at) {
    std::string name;
    while (at < text.size() && (std::isalnum(static_cast<unsigned char>(text[at])) || text[at] == '-' ||
                                text[at] == '_' || text[at] == '\\' || (text[at] & 0x80))) {
      if (text[at] == '\\' && at + 1 < text.size()) ++at;
      name += text[at++];
    }
    return name;
  };
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at];
    if (c == ',') {
      finish();
      ++at;
    } else if (c == ' ' || c == '>' || c == '+' || c == '~') {
      std::size_t next = text.find_first_not_of(" >+~", at);
      if (next != std::string::npos && text[next] != ',') {
        current = {};
        hasAny = false;
      }
      at = next == std::string::npos ? text.size() : next;
    } else if (c == '#') {
      current.id = word(++at);
      hasAny = true;
    } else if (c == '.') {
      current.classes.push_back(word(++at));
      hasAny = true;
    } else if (c == '[') {
      const std::size_t end = text.find(']', at);
      std::string inside = text.substr(at + 1, end == std::string::npos ? std::string::npos : end - at - 1);
      const std::size_t equals = inside.find('=');
      std::string name = inside.substr(0, equals);
      std::string value = equals == std::string::npos ? "" : inside.substr(equals + 1);
      std::string sign = "=";
      if (!name.empty() && std::strchr("~|^$*", name.back())) {
        sign = std::string(1, name.back());
        name.pop_back();
      }
      value.erase(std::remove_if(value.begin(), value.end(), [](char q) { return q == '"' || q == '\''; }),
                  value.end());
      current.attributes.emplace_back(name, equals == std::string::npos ? "" : sign + value);
      hasAny = true;
      at = end == std::string::npos ? text.size() : end + 1;
    } else if (c == ':') {
      ++at;
      (void)word(at);
      if (at < text.size() && text[at] == '(')
        at = text.find(')', at) == std::string::npos ? text.size() : text.find(')', at) + 1;
    } else if (c == '*') {
      hasAny = true;
      ++at;
    } else {
      const std::string tag = word(at);
      if (tag.empty())
        ++at;
      else
        current.tag = tag, hasAny = true;
    }
  }
  finish();
  return all;
}

bool fits(const Simple& simple, const PageElement& element) {
  if (!simple.tag.empty() && simple.tag != element.tag) return false;
  if (!simple.id.empty() && element.valueOf("id") != simple.id) return false;
  const std::string classes = " " + element.valueOf("class") + " ";
  for (const std::string& name : simple.classes)
    if (classes.find(" " + name + " ") == std::string::npos) return false;
  for (const auto& [name, wanted] : simple.attributes) {
    const PageAttribute* attribute = element.attribute(name);
    if (!attribute) return false;
    if (wanted.empty()) continue;
    const std::string value = wanted.substr(1);
    const std::string& has = attribute->value;
    const char sign = wanted[0];
    if (sign == '=' && has != value) return false;
    if (sign == '^' && has.compare(0, value.size(), value) != 0) return false;
    if (sign == '$' && (has.size() < value.size() || has.compare(has.size() - value.size(), value.size(), value) != 0))
      return false;
    if ((sign == '*' || sign == '~' || sign == '|') && has.find(value) == std::string::npos) return false;
  }
  return true;
}

}  // namespace

// Puts what a selector finds into `target`: one after the other, or into the indexes of a list.
void selectInto(Analysis& a, std::uint32_t realm, const std::string& selector, Where where,
                std::function<void(ObjectId)> take, std::function<void(NodeId)> takeNode) {
  for (const Simple& simple : parseSelector(selector)) {
    if (!simple.id.empty()) {
      const NodeId through = a.solver.make(where, Step::lookUp, a.names.of(simple.id));
      a.solver.edge(a.idNode(realm, a.names.of(simple.id)), through);
      takeNode(through);
      continue;
    }
    const std::uint32_t page = a.realms[realm].page;
    if (page != kNone) {
      for (std::uint32_t i = 0; i < a.pages[page].elements.size(); ++i)
        if (fits(simple, a.pages[page].elements[i])) take(a.elementObject(realm, i));
    }
    if (isPluginTag(simple.tag)) {
      // Those that script makes, too.
      const NodeId made = a.solver.make(where, Step::lookUp, a.names.of(simple.tag));
      a.solver.listen(a.realms[realm].embeds, [&a, made, simple](const Arrival& element) {
        const ElementInfo& info = a.elements[a.object(element.value).a];
        if (info.page == kNone && info.tag == simple.tag && simple.attributes.empty() && simple.classes.empty())
          a.solver.add(made, element.value, 0, element.level);
      });
      takeNode(made);
    }
  }
}

namespace {

void querySelector(Analysis& a, const CallInfo& info) {
  const std::uint32_t realm = realmOfSelf(a, info);
  const CallInfo copy = info;
  texts(a, arg(a, info, 0), [&a, realm, copy](const std::string& selector, std::uint8_t level) {
    bool isFirst = true;
    const NodeId through = a.solver.make(copy.site.where, Step::lookUp, a.names.of(selector));
    a.solver.edge(through, copy.result, level);
    selectInto(
        a, realm, selector, copy.site.where,
        [&](ObjectId element) {
          if (isFirst) a.solver.add(through, element);
          isFirst = false;
        },
        [&](NodeId node) { a.solver.edge(node, through); });
  });
}

void listOf(Analysis& a, const CallInfo& info, std::uint32_t realm, NodeId selector, const std::string& prefix) {
  const CallInfo copy = info;
  texts(a, selector, [&a, realm, copy, prefix](const std::string& text, std::uint8_t level) {
    const ObjectId list = a.newObject(Class::array, copy.site.where);
    std::size_t next = 0;
    selectInto(
        a, realm,
        prefix.empty()     ? text
        : prefix == "name" ? "[name=\"" + text + "\"]"
                           : prefix + text,
        copy.site.where,
        [&](ObjectId element) {
          const NodeId node = a.solver.make(copy.site.where, Step::lookUp, a.names.of(text));
          a.solver.add(node, element);
          a.solver.edge(node, a.defineProperty(list, a.names.of(std::to_string(next++))));
        },
        [&](NodeId node) {
          a.solver.edge(node, next == 0 && text[0] == '#' ? a.defineProperty(list, a.names.of("0")) : a.starNode(list));
        });
    a.solver.add(copy.result, list, 0, level);
  });
}

void querySelectorAll(Analysis& a, const CallInfo& info) {
  listOf(a, info, realmOfSelf(a, info), arg(a, info, 0), "");
}
void getElementsByTagName(Analysis& a, const CallInfo& info) {
  listOf(a, info, realmOfSelf(a, info), arg(a, info, 0), "");
}
void getElementsByClassName(Analysis& a, const CallInfo& info) {
  listOf(a, info, realmOfSelf(a, info), arg(a, info, 0), ".");
}
void getElementsByName(Analysis& a, const CallInfo& info) {
  listOf(a, info, realmOfSelf(a, info), arg(a, info, 0), "name");
}

void createElement(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const std::uint32_t realm = realmOfSelf(a, info);
  texts(a, arg(a, info, 0), [&a, realm, copy](const std::string& tag, std::uint8_t level) {
    std::string name = tag;
    // Older browsers took a whole element.
    if (!name.empty() && name[0] == '<') {
      const Page part = parsePage(tag);
      for (const PageElement& element : part.elements) {
        if (element.tag == "html" || element.tag == "head" || element.tag == "body") continue;
        const ObjectId made = a.makeElement(realm, element.tag, copy.site.where);
        for (const PageAttribute& attribute : element.attributes)
          a.setAttribute(made, attribute.name, attribute.value, copy.site.where);
        return a.solver.add(copy.result, made, 0, level);
      }
      return;
    }
    a.solver.add(copy.result, a.makeElement(realm, name, copy.site.where), 0, level);
  });
}

void elementSetAttribute(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const CallInfo copy = info;
  const NodeId value = arg(a, info, 1);
  texts(a, arg(a, info, 0), [&a, copy, value](const std::string& name, std::uint8_t) {
    a.solver.edge(value, a.property(copy.selfValue, a.names.of("%attribute:" + name)).node);
    texts(a, value, [&a, copy, name](const std::string& text, std::uint8_t) {
      a.setAttribute(copy.selfValue, name, text, copy.site.where);
    });
  });
}

void elementGetAttribute(Analysis& a, const CallInfo& info) {
  if (!isObject(info.selfValue)) return;
  const CallInfo copy = info;
  texts(a, arg(a, info, 0), [&a, copy](const std::string& name, std::uint8_t) {
    a.solver.edge(a.property(copy.selfValue, a.names.of("%attribute:" + name)).node, copy.result);
    if (name == "id" || name == "value") a.solver.edge(a.property(copy.selfValue, a.names.of(name)).node, copy.result);
  });
}

void documentWrite(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const std::uint32_t realm = realmOfSelf(a, info);
  texts(a, arg(a, info, 0),
        [&a, copy, realm](const std::string& text, std::uint8_t) { a.addMarkup(realm, text, copy.site.where); });
}

void insertAdjacentHtml(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const std::uint32_t realm = realmOfSelf(a, info);
  texts(a, arg(a, info, 1),
        [&a, copy, realm](const std::string& text, std::uint8_t) { a.addMarkup(realm, text, copy.site.where); });
}

void returnArgument(Analysis& a, const CallInfo& info) {
  const NodeId child = arg(a, info, 0);
  a.solver.edge(child, info.result);
  if (!isObject(info.selfValue)) return;
  const ObjectId self = info.selfValue;
  // What is put into an element is found below it.
  a.solver.edge(child, a.property(self, a.names.of("%children")).node);
  a.solver.listen(child, [&a, self](const Arrival& value) {
    if (isObject(value.value) && a.object(value.value).cls == Class::element)
      a.solver.add(a.property(value.value, a.names.of("parentNode")).node, self);
  });
}

void returnSelf(Analysis& a, const CallInfo& info) {
  a.solver.edge(info.self, info.result);
}

// Calls a handler with an event whose target is the object that it listens on.
void addEventListener(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const ObjectId event = a.newObject(Class::event, info.site.where);
  if (isObject(info.selfValue)) {
    a.addTargets(info.selfValue, a.defineProperty(event, a.names.of("target")));
    a.solver.add(a.defineProperty(event, a.names.of("currentTarget")), info.selfValue);
  }
  const std::uint32_t realm = a.realmOf(info.site.act);
  texts(a, arg(a, info, 0), [&a, event, realm](const std::string& name, std::uint8_t) {
    if (name == "message" || name == "onmessage")
      a.solver.edge(a.realms[realm].messages, a.defineProperty(event, a.names.of("data")));
    NodeId& details = a.realms[realm].events[a.names.of(name)];
    if (details == 0) details = a.solver.make({}, Step::none);
    a.solver.edge(details, a.defineProperty(event, a.names.of("detail")));
  });
  const NodeId handler = arg(a, info, 1);
  a.invoke(info, handler, info.self, {a.single(event)});
  a.solver.listen(handler, [&a, copy, event](const Arrival& object) {
    if (isObject(object.value) && (a.object(object.value).cls == Class::plain))
      a.callMember(copy.site, a.single(object.value), 0, a.names.of("handleEvent"), a.makeArgs({a.single(event)}), 0);
  });
}

// new EventTarget(), and what classes inherit from it.
void eventTarget(Analysis& a, const CallInfo& info) {
  const ObjectId made = a.newObject(Class::plain, info.site.where);
  a.solver.edge(a.readNode(info.callee, a.known.prototype), a.protoNode(made));
  a.solver.add(info.result, made);
}

void customEvent(Analysis& a, const CallInfo& info) {
  const ObjectId event = a.newObject(Class::event, info.site.where);
  a.solver.edge(arg(a, info, 0), a.defineProperty(event, a.names.of("type")));
  a.read(info.site.where, info.site.act, arg(a, info, 1), 0, a.names.of("detail"),
         a.defineProperty(event, a.names.of("detail")));
  a.solver.add(info.result, event);
}

void dispatchEvent(Analysis& a, const CallInfo& info) {
  const std::uint32_t realm = a.realmOf(info.site.act);
  a.solver.listen(arg(a, info, 0), [&a, realm](const Arrival& event) {
    if (!isObject(event.value)) return;
    const NodeId detail = a.property(event.value, a.names.of("detail")).node;
    texts(a, a.property(event.value, a.names.of("type")).node,
          [&a, realm, detail](const std::string& name, std::uint8_t) {
            NodeId& details = a.realms[realm].events[a.names.of(name)];
            if (details == 0) details = a.solver.make({}, Step::none);
            a.solver.edge(detail, details);
          });
  });
}

void postMessage(Analysis& a, const CallInfo& info) {
  for (const Realm& realm : a.realms)
    a.solver.edge(arg(a, info, 0), realm.messages, 1);
}

void later(Analysis& a, const CallInfo& info) {
  const NodeId callback = arg(a, info, 0);
  std::vector<NodeId> rest;
  for (std::size_t i = 2; i < info.args->nodes.size(); ++i)
    rest.push_back(info.args->nodes[i]);
  a.invoke(info, callback, a.single(a.realms[a.realmOf(info.site.act)].window), rest);
  const CallInfo copy = info;
  texts(a, callback, [&a, copy](const std::string& text, std::uint8_t) {
    a.runText(text, copy.site.where, a.realmOf(copy.site.act), 0, copy.site.act);
  });
}

void evalText(Analysis& a, const CallInfo& info) {
  a.textsRun.emplace_back(info.site, arg(a, info, 0));
  const CallInfo copy = info;
  texts(a, arg(a, info, 0), [&a, copy](const std::string& text, std::uint8_t) {
    a.runText(text, copy.site.where, a.realmOf(copy.site.act), copy.result, copy.site.act);
  });
}

// new Function('a', 'b', 'return a.Foo()')
void functionOfText(Analysis& a, const CallInfo& info) {
  if (info.args->nodes.empty()) return;
  std::string head = "(function(";
  const std::size_t last = info.args->nodes.size() - 1;
  a.textsRun.emplace_back(info.site, info.args->nodes[last]);
  for (std::size_t i = 0; i < last; ++i) {
    for (const Arrival& value : a.solver.values(info.args->nodes[i]))
      if (isText(value.value)) {
        head += (i ? "," : "") + a.names.text(nameIn(value.value));
        break;
      }
  }
  head += "){";
  const CallInfo copy = info;
  texts(a, info.args->nodes[last], [&a, copy, head](const std::string& text, std::uint8_t) {
    a.runText(head + text + "\n})", copy.site.where, a.realmOf(copy.site.act), copy.result, copy.site.act);
  });
}

void cloneNode(Analysis& a, const CallInfo& info) {
  a.solver.edge(info.self, info.result);
}

void importScripts(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  for (std::size_t i = 0; i < info.args->nodes.size(); ++i) {
    texts(a, info.args->nodes[i], [&a, copy](const std::string& path, std::uint8_t) {
      const std::uint32_t file = a.findFile(a.units[copy.site.where.unit].file, path);
      if (file == kNone || !a.filesRun.insert(file).second) return;
      const std::uint32_t unit = a.unitOfFile(file, false);
      const std::uint32_t realm = a.realmOf(copy.site.act);
      if (unit != kNone) a.runScript(unit, realm, a.single(a.realms[realm].window));
    });
  }
}

void none(Analysis&, const CallInfo&) {}

// customElements.define: the elements of that name are objects of that class.
void defineElement(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const std::uint32_t realm = a.realmOf(info.site.act);
  const NodeId klass = arg(a, info, 1);
  texts(a, arg(a, info, 0), [&a, copy, realm, klass](const std::string& tag, std::uint8_t) {
    std::vector<ObjectId> all;
    const std::uint32_t page = a.realms[realm].page;
    if (page != kNone)
      for (std::uint32_t i = 0; i < a.pages[page].elements.size(); ++i)
        if (a.pages[page].elements[i].tag == tag) all.push_back(a.elementObject(realm, i));
    if (all.empty()) all.push_back(a.makeElement(realm, tag, copy.site.where));
    a.solver.listen(klass, [&a, copy, all](const Arrival& value) {
      if (!isObject(value.value) || a.object(value.value).cls != Class::function) return;
      for (const ObjectId element : all) {
        const NodeId self = a.single(element);
        a.solver.edge(a.readNode(value.value, a.known.prototype), a.protoNode(element));
        a.construct(copy.site, value.value, self, element, a.makeArgs({}), 0);
        for (const char* callback : {"connectedCallback", "disconnectedCallback", "adoptedCallback"})
          a.callMember(copy.site, self, 0, a.names.of(callback), a.makeArgs({}), 0);
        const ElementInfo& own = a.elements[a.object(element).a];
        if (own.index == kNone) continue;
        for (const PageAttribute& attribute : a.pages[own.page].elements[own.index].attributes)
          a.callMember(copy.site, self, 0, a.names.of("attributeChangedCallback"),
                       a.makeArgs({a.single(textValue(a.names.of(attribute.name))), 0,
                                   a.single(textValue(a.names.of(attribute.value)))}),
                       0);
      }
    });
  });
}

void createRange(Analysis& a, const CallInfo& info) {
  a.solver.add(info.result, a.makeElement(realmOfSelf(a, info), "range", info.site.where));
}

void contextualFragment(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const std::uint32_t realm = realmOfSelf(a, info);
  texts(a, arg(a, info, 0),
        [&a, copy, realm](const std::string& text, std::uint8_t) { a.addMarkup(realm, text, copy.site.where); });
}

// What elements have of their own: calls of these are no calls of a plug-in.
const char* const kElementMembers[] = {"accessKey",
                                       "accessKeyLabel",
                                       "addEventListener",
                                       "after",
                                       "align",
                                       "animate",
                                       "append",
                                       "appendChild",
                                       "applyElement",
                                       "archive",
                                       "ariaLabel",
                                       "attachEvent",
                                       "attachShadow",
                                       "attributes",
                                       "autofocus",
                                       "baseURI",
                                       "before",
                                       "blur",
                                       "border",
                                       "checkValidity",
                                       "childElementCount",
                                       "childNodes",
                                       "children",
                                       "classList",
                                       "className",
                                       "clearAttributes",
                                       "click",
                                       "clientHeight",
                                       "clientLeft",
                                       "clientTop",
                                       "clientWidth",
                                       "cloneNode",
                                       "closest",
                                       "code",
                                       "codeBase",
                                       "codeType",
                                       "compareDocumentPosition",
                                       "contains",
                                       "contentDocument",
                                       "contentEditable",
                                       "contentWindow",
                                       "constructor",
                                       "currentStyle",
                                       "data",
                                       "dataset",
                                       "declare",
                                       "detachEvent",
                                       "dir",
                                       "dispatchEvent",
                                       "draggable",
                                       "fireEvent",
                                       "firstChild",
                                       "firstElementChild",
                                       "focus",
                                       "form",
                                       "getAnimations",
                                       "getAttribute",
                                       "getAttributeNS",
                                       "getAttributeNames",
                                       "getAttributeNode",
                                       "getBoundingClientRect",
                                       "getClientRects",
                                       "getElementsByClassName",
                                       "getElementsByName",
                                       "getElementsByTagName",
                                       "getElementsByTagNameNS",
                                       "getRootNode",
                                       "getSVGDocument",
                                       "hasAttribute",
                                       "hasAttributeNS",
                                       "hasAttributes",
                                       "hasChildNodes",
                                       "hasOwnProperty",
                                       "hasPointerCapture",
                                       "height",
                                       "hidden",
                                       "hspace",
                                       "id",
                                       "inert",
                                       "innerHTML",
                                       "innerText",
                                       "insertAdjacentElement",
                                       "insertAdjacentHTML",
                                       "insertAdjacentText",
                                       "insertBefore",
                                       "isConnected",
                                       "isContentEditable",
                                       "isDefaultNamespace",
                                       "isEqualNode",
                                       "isPrototypeOf",
                                       "isSameNode",
                                       "lang",
                                       "lastChild",
                                       "lastElementChild",
                                       "localName",
                                       "lookupNamespaceURI",
                                       "lookupPrefix",
                                       "matches",
                                       "matchesSelector",
                                       "mergeAttributes",
                                       "msMatchesSelector",
                                       "mozMatchesSelector",
                                       "oMatchesSelector",
                                       "eval",
                                       "name",
                                       "namespaceURI",
                                       "nextElementSibling",
                                       "nextSibling",
                                       "nodeName",
                                       "nodeType",
                                       "nodeValue",
                                       "nonce",
                                       "normalize",
                                       "offsetHeight",
                                       "offsetLeft",
                                       "offsetParent",
                                       "offsetTop",
                                       "offsetWidth",
                                       "outerHTML",
                                       "outerText",
                                       "ownerDocument",
                                       "parentElement",
                                       "parentNode",
                                       "prefix",
                                       "prepend",
                                       "previousElementSibling",
                                       "previousSibling",
                                       "propertyIsEnumerable",
                                       "querySelector",
                                       "querySelectorAll",
                                       "releasePointerCapture",
                                       "remove",
                                       "removeAttribute",
                                       "removeAttributeNS",
                                       "removeAttributeNode",
                                       "removeChild",
                                       "removeEventListener",
                                       "removeNode",
                                       "replaceChild",
                                       "replaceChildren",
                                       "replaceNode",
                                       "replaceWith",
                                       "reportValidity",
                                       "requestFullscreen",
                                       "requestPointerLock",
                                       "runtimeStyle",
                                       "scroll",
                                       "scrollBy",
                                       "scrollHeight",
                                       "scrollIntoView",
                                       "scrollIntoViewIfNeeded",
                                       "scrollLeft",
                                       "scrollTo",
                                       "scrollTop",
                                       "scrollWidth",
                                       "setActive",
                                       "setAttribute",
                                       "setAttributeNS",
                                       "setAttributeNode",
                                       "setAttributeNodeNS",
                                       "setCapture",
                                       "setCustomValidity",
                                       "setPointerCapture",
                                       "shadowRoot",
                                       "slot",
                                       "sourceIndex",
                                       "spellcheck",
                                       "standby",
                                       "src",
                                       "style",
                                       "swapNode",
                                       "tabIndex",
                                       "tagName",
                                       "textContent",
                                       "title",
                                       "toLocaleString",
                                       "toString",
                                       "toggleAttribute",
                                       "toggleAttributes",
                                       "translate",
                                       "type",
                                       "uniqueID",
                                       "useMap",
                                       "validationMessage",
                                       "validity",
                                       "valueOf",
                                       "vspace",
                                       "webkitMatchesSelector",
                                       "webkitRequestFullscreen",
                                       "width",
                                       "willValidate",
                                       "readyState",
                                       "classid",
                                       "classId",
                                       "releaseCapture",
                                       "hasOwn",
                                       "call",
                                       "apply",
                                       "bind",
                                       "length",
                                       "__proto__",
                                       "__defineGetter__",
                                       "__defineSetter__",
                                       "__lookupGetter__",
                                       "__lookupSetter__",
                                       "value",
                                       "checked",
                                       "disabled",
                                       "then"};

const Row kRows[] = {
    {"Document#getElementById", getElementById},
    {"Document#querySelector", querySelector},
    {"Document#querySelectorAll", querySelectorAll},
    {"Document#getElementsByTagName", getElementsByTagName},
    {"Document#getElementsByTagNameNS", getElementsByTagName},
    {"Document#getElementsByClassName", getElementsByClassName},
    {"Document#getElementsByName", getElementsByName},
    {"Document#createElement", createElement},
    {"Document#createElementNS", none},
    {"Document#write", documentWrite},
    {"Document#writeln", documentWrite},
    {"Document#importNode", returnArgument},
    {"Document#adoptNode", returnArgument},
    {"Element#querySelector", querySelector},
    {"Element#querySelectorAll", querySelectorAll},
    {"Element#getElementsByTagName", getElementsByTagName},
    {"Element#getElementsByClassName", getElementsByClassName},
    {"Element#getElementById", getElementById},
    {"Element#setAttribute", elementSetAttribute},
    {"Element#getAttribute", elementGetAttribute},
    {"Element#appendChild", returnArgument},
    {"Element#insertBefore", returnArgument},
    {"Element#replaceChild", returnArgument},
    {"Element#removeChild", returnArgument},
    {"Element#append", returnArgument},
    {"Element#prepend", returnArgument},
    {"Element#cloneNode", cloneNode},
    {"Element#insertAdjacentHTML", insertAdjacentHtml},
    {"Element#addEventListener", addEventListener},
    {"Element#attachEvent", addEventListener},
    {"Element#dispatchEvent", dispatchEvent},
    {"Element#closest", querySelector},
    {"customElements", none},
    {"customElements.define", defineElement},
    {"Document#createRange", createRange},
    {"Element#createContextualFragment", contextualFragment},
    {"Element#attachShadow", returnSelf},
    {"addEventListener", addEventListener},
    {"attachEvent", addEventListener},
    {"dispatchEvent", dispatchEvent},
    {"EventTarget", eventTarget},
    {"CustomEvent", customEvent},
    {"Event", customEvent},
    {"postMessage", postMessage},
    {"setTimeout", later},
    {"setInterval", later},
    {"setImmediate", later},
    {"requestAnimationFrame", later},
    {"requestIdleCallback", later},
    {"queueMicrotask", later},
    {"eval", evalText},
    {"execScript", evalText},
    {"Function", functionOfText},
    {"importScripts", importScripts},
    {"alert", none},
    {"confirm", none},
    {"prompt", none},
    {"Event#preventDefault", none},
};

}  // namespace

bool Analysis::isElementMember(const std::string& name) const {
  static const std::set<std::string> members(std::begin(kElementMembers), std::end(kElementMembers));
  if (name.size() > 2 && name[0] == 'o' && name[1] == 'n' && name[2] >= 'a' && name[2] <= 'z') return true;
  return members.count(name) != 0 || name.empty() || name[0] == '%' || name.compare(0, 2, "@@") == 0;
}

void addDomModels(Analysis& analysis) {
  addRows(analysis, kRows);
}

}  // namespace flow
