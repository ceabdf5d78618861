// Worlds: a page's window, its elements, and the scripts that a browser would run in it.
// Test: tests/flow/Analysis_test.cpp.

#include <algorithm>
#include <cstring>

#include "flow/Analysis.h"
#include "flow/Words.h"

namespace flow {
namespace {

bool isPluginTag(const std::string& tag) {
  return tag == "object" || tag == "embed" || tag == "applet";
}

// Bytes of the text of an element that script may read.
constexpr std::size_t kMaxElementText = 200;
constexpr std::size_t kMaxTemplateText = 20'000;
constexpr std::size_t kMaxTargets = 40;  // of events that are heard around them

bool isOneOf(const std::string& text, std::initializer_list<const char*> others) {
  return std::any_of(others.begin(), others.end(), [&](const char* other) { return text == other; });
}

bool isFrameTag(const std::string& tag) {
  return tag == "iframe" || tag == "frame";
}

bool isScriptType(const std::string& type) {
  if (type.empty() || type == "module") return true;
  std::string lower = type;
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower.find("javascript") != std::string::npos || lower.find("ecmascript") != std::string::npos ||
         lower == "text/jscript" || lower == "text/livescript";
}

}  // namespace

std::uint32_t Analysis::newRealm(std::uint32_t page) {
  const auto id = static_cast<std::uint32_t>(realms.size());
  realms.emplace_back();
  Realm& realm = realms.back();
  realm.page = page;
  realm.window = newObject(Class::window, {}, id);
  realm.document = newObject(Class::document, {}, id);
  realm.embeds = solver.make({}, Step::none);
  realm.messages = solver.make({}, Step::none);
  for (const char* self : {"window", "self", "globalThis", "global"})
    solver.add(property(realm.window, names.of(self)).node, realm.window);
  solver.add(property(realm.window, names.of("document")).node, realm.document);
  solver.add(property(realm.document, names.of("defaultView")).node, realm.window);
  solver.add(property(realm.document, names.of("parentWindow")).node, realm.window);
  if (page == kNone) {
    realm.hasToDoWithPlugins = true;
    return id;
  }
  const Page& of = pages[page];
  realm.elements.assign(of.elements.size(), kNobody);
  for (std::uint32_t i = 0; i < of.elements.size(); ++i) {
    const PageElement& element = of.elements[i];
    const std::string name = element.valueOf("id");
    if (!name.empty()) solver.add(idNode(id, names.of(name)), elementObject(id, i));
    const std::string other = element.valueOf("name");
    if (!other.empty() && other != name &&
        (isPluginTag(element.tag) || element.tag == "iframe" || element.tag == "frame"))
      solver.add(idNode(id, names.of(other)), elementObject(id, i));
    if (isPluginTag(element.tag)) (void)elementObject(id, i);
  }
  return id;
}

NodeId Analysis::idNode(std::uint32_t realm, Name id) {
  NodeId& node = realms[realm].byId[id];
  if (node == 0) node = solver.make({}, Step::lookUp, id);
  return node;
}

void Analysis::addPlugin(ElementInfo& element, const std::string& text) {
  std::string upper = text;
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  const std::string* best = nullptr;
  for (const std::string& identifier : database.identifiers)
    if (upper.find(identifier) != std::string::npos && (!best || identifier.size() > best->size())) best = &identifier;
  if (!best) return;
  element.plugins.insert(*best);
  realms[element.realm].hasToDoWithPlugins = true;
}

bool Analysis::isAboutPlugins(std::uint32_t file) {
  const auto [kept, isNew] = aboutPlugins.emplace(file, false);
  if (isNew)
    kept->second = namesPlugin(files[file].bytes, database.identifiers) || namesAny(files[file].bytes, pluginIds);
  return kept->second;
}

void Analysis::enterFile(std::uint32_t realm, std::uint32_t file) {
  if (!realms[realm].hasToDoWithPlugins) realms[realm].hasToDoWithPlugins = isAboutPlugins(file);
}

ObjectId Analysis::elementObject(std::uint32_t realm, std::uint32_t index) {
  ObjectId& kept = realms[realm].elements[index];
  if (kept != kNobody) return kept;
  const Page& page = pages[realms[realm].page];
  const PageElement& of = page.elements[index];
  elements.emplace_back();
  const auto info = static_cast<std::uint32_t>(elements.size() - 1);
  ElementInfo& element = elements.back();
  element.tag = of.tag;
  element.realm = realm;
  element.page = realms[realm].page;
  element.index = index;
  element.place.path = files[page.file].path;
  element.place.offset = of.begin;
  const ObjectId made = newObject(Class::element, {}, info);
  kept = made;
  for (const PageAttribute& attribute : of.attributes) {
    if (isPluginTag(of.tag)) addPlugin(element, attribute.value);
    if (attribute.name == "id") element.ids.insert(names.of(attribute.value));
    if (attribute.name.compare(0, 5, "data-") == 0 || attribute.name == "name" || attribute.name == "title" ||
        attribute.name == "value" || attribute.name == "class" || attribute.name == "rel")
      solver.add(property(made, names.of("%attribute:" + attribute.name)).node, textValue(names.of(attribute.value)));
    // What the viewer may change is not known.
    if (attribute.name == "value" && (of.tag == "input" || of.tag == "select" || of.tag == "textarea"))
      solver.add(property(made, names.of("value")).node, kUnknown);
    else if (attribute.name == "id" || attribute.name == "value" || attribute.name == "name" ||
             attribute.name == "title")
      solver.add(property(made, names.of(attribute.name)).node, textValue(names.of(attribute.value)));
  }
  const bool isTemplate = of.tag == "script" && !isScriptType(of.valueOf("type"));
  if (!of.text.empty() && of.text.size() < (isTemplate ? kMaxTemplateText : kMaxElementText))
    for (const char* name : {"textContent", "innerText", "innerHTML", "text"})
      solver.add(property(made, names.of(name)).node, textValue(names.of(of.text)));
  if (isPluginTag(of.tag)) {
    for (const std::uint32_t child : of.children) {
      const PageElement& parameter = page.elements[child];
      if (parameter.tag == "param") addPlugin(elements[info], parameter.valueOf("value"));
    }
    realms[realm].plugins.push_back(made);
    solver.add(realms[realm].embeds, made);
  }
  return made;
}

ObjectId Analysis::makeElement(std::uint32_t realm, const std::string& tag, Where where) {
  elements.emplace_back();
  ElementInfo& element = elements.back();
  element.tag = tag;
  std::transform(element.tag.begin(), element.tag.end(), element.tag.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  element.realm = realm;
  if (where.unit < units.size()) {
    const Unit& unit = units[where.unit];
    element.place.path = files[unit.file].path;
    element.place.offset = unit.base + (unit.isExact ? where.offset : 0);
  }
  return newObject(Class::element, where, static_cast<std::uint32_t>(elements.size() - 1));
}

void Analysis::setAttribute(Value of, const std::string& attribute, const std::string& value, Where where) {
  if (!isObject(of) || objects[of].cls != Class::element) return;
  ElementInfo& element = elements[objects[of].a];
  std::string name = attribute;
  std::transform(name.begin(), name.end(), name.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (name == "id" || name == "name") {
    if (name == "id") element.ids.insert(names.of(value));
    solver.add(idNode(element.realm, names.of(value)), of);
  } else if (name == "innerhtml" || name == "outerhtml" || name == "srcdoc") {
    addMarkup(element.realm, value, where, of);
  } else if (name == "text" || name == "textcontent" || name == "innertext") {
    if (element.tag == "script") runText(value, where, element.realm, 0, kNobody);
  } else if (name.size() > 2 && name.compare(0, 2, "on") == 0) {
    addHandlerText(element.realm, value, where, single(of));
  } else if (name == "src" || name == "href" || name == "data") {
    if (value.compare(0, 11, "javascript:") == 0) runText(value.substr(11), where, element.realm, 0, kNobody);
    if (isFrameTag(element.tag)) loadFrame(of, value, "");
    if (element.tag == "script" && where.unit < units.size()) {
      const Unit& from = units[where.unit];
      const std::uint32_t page = realms[element.realm].page;
      std::uint32_t file = page != kNone ? findFile(pages[page].file, value) : kNone;
      if (file == kNone) file = findFile(from.file, value);
      if (file != kNone && filesRun.insert(file).second) {
        const std::uint32_t unit = unitOfFile(file, false);
        if (unit != kNone) runScript(unit, element.realm, single(realms[element.realm].window));
      }
    }
  } else if (isPluginTag(element.tag)) {
    addPlugin(element, value);
    if (!element.plugins.empty()) solver.add(realms[element.realm].embeds, of);
  }
}

void Analysis::addHandlerText(std::uint32_t realm, const std::string& text, Where where, NodeId self) {
  if (where.unit >= units.size()) return;
  const std::uint32_t unit =
      unitOfText(text, units[where.unit].file, units[where.unit].base + (units[where.unit].isExact ? where.offset : 0),
                 false, true);
  if (unit != kNone) runScript(unit, realm, self);
}

void Analysis::addMarkup(std::uint32_t realm, const std::string& markup, Where where, ObjectId around) {
  if (markup.find('<') == std::string::npos || markup.size() > 500'000 || where.unit >= units.size()) return;
  const std::uint32_t file = units[where.unit].file;
  const std::uint32_t base = units[where.unit].base + (units[where.unit].isExact ? where.offset : 0);
  const Page part = parsePage(markup);
  for (const PageElement& element : part.elements) {
    const std::string id = element.valueOf("id");
    bool hasHandler = false;
    for (const PageAttribute& attribute : element.attributes)
      hasHandler = hasHandler || attribute.name.compare(0, 2, "on") == 0;
    if (element.tag == "script" && !element.text.empty()) {
      const std::uint32_t unit = unitOfText(element.text, file, base, false, false);
      if (unit != kNone) runScript(unit, realm, single(realms[realm].window));
    }
    if (id.empty() && !isPluginTag(element.tag) && !isFrameTag(element.tag) && !hasHandler) continue;
    const ObjectId made = makeElement(realm, element.tag, where);
    if (around != kNobody) {
      solver.add(property(around, names.of("%children")).node, made);
      solver.add(property(made, names.of("parentNode")).node, around);
    }
    if (isFrameTag(element.tag)) loadFrame(made, element.valueOf("src"), element.valueOf("name"));
    for (const PageAttribute& attribute : element.attributes)
      setAttribute(made, attribute.name, attribute.value, where);
    for (const std::uint32_t child : element.children)
      if (part.elements[child].tag == "param")
        addPlugin(elements[objects[made].a], part.elements[child].valueOf("value"));
  }
}

void Analysis::readDom(ObjectId id, Name name, NodeId target) {
  const std::string& text = names.text(name);
  const Class cls = objects[id].cls;
  if (cls == Class::window) {
    Realm& realm = realms[objects[id].a];
    if (text == "frames") solver.add(target, id);
    if (text == "location") {
      if (realm.location == kNobody) realm.location = makeElement(objects[id].a, "location", {});
      solver.add(target, realm.location);
    }
    if (isOneOf(text, {"localStorage", "sessionStorage"})) {
      if (realm.storage == kNobody) realm.storage = newObject(Class::map, {}, 0, 1);
      solver.add(target, realm.storage);
    }
    const bool isNumber = !text.empty() && text.size() < 4 &&
                          std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (isNumber) solver.edge(property(id, names.of("%frames")).node, target, 1);
    if (text.empty() || text[0] != '%') solver.edge(property(id, names.of("%frame:" + text)).node, target);
    return;
  }
  if (cls == Class::document) {
    Realm& realm = realms[objects[id].a];
    if (isOneOf(text, {"embeds", "plugins", "applets"})) {
      if (realm.embedsList == kNobody) {
        realm.embedsList = newObject(Class::array, {});
        std::size_t next = 0;
        for (const ObjectId element : realm.plugins) {
          solver.add(defineProperty(realm.embedsList, names.of(std::to_string(next++))), element);
          const ElementInfo& info = elements[objects[element].a];
          for (const Name own : info.ids)
            solver.add(defineProperty(realm.embedsList, own), element);
          if (info.index != kNone) {
            const std::string other = pages[info.page].elements[info.index].valueOf("name");
            if (!other.empty()) solver.add(defineProperty(realm.embedsList, names.of(other)), element);
          }
        }
        const NodeId star = starNode(realm.embedsList);
        solver.listen(realm.embeds, [this, star](const Arrival& element) {
          if (elements[objects[element.value].a].page == kNone) solver.add(star, element.value, 0, element.level);
        });
      }
      solver.add(target, realm.embedsList);
    } else if (isOneOf(text, {"body", "documentElement", "head", "activeElement", "scrollingElement"})) {
      if (realm.body == kNobody) realm.body = makeElement(objects[id].a, "body", {});
      solver.add(target, realm.body);
    } else if (isOneOf(text, {"all", "forms", "anchors"})) {
      solver.add(target, id);
    } else if (!text.empty() && text[0] != '%' && !hasNative("Document#" + text) && !hasNative("Element#" + text)) {
      solver.edge(idNode(objects[id].a, name), target);
    }
    return;
  }
  readElement(id, name, target);
}

// What an event that is heard at `heard` may have been sent to: that, and elements in it that carry data for handlers.
void Analysis::addTargets(ObjectId heard, NodeId target) {
  solver.add(target, heard);
  const Object& of = objects[heard];
  const bool isElement = of.cls == Class::element;
  if (!isElement && of.cls != Class::document && of.cls != Class::window) return;
  const std::uint32_t realm = isElement ? elements[of.a].realm : of.a;
  const std::uint32_t index = isElement ? elements[of.a].index : kNone;
  if (realms[realm].page == kNone || (isElement && index == kNone && elements[of.a].tag != "body")) return;
  const Page& page = pages[realms[realm].page];
  const auto isBelow = [&](std::uint32_t at) {
    if (index == kNone || page.elements[index].tag == "body") return true;
    for (at = page.elements[at].parent; at != kNone && at != index;)
      at = page.elements[at].parent;
    return at == index;
  };
  const auto isData = [](const PageAttribute& attribute) { return attribute.name.compare(0, 5, "data-") == 0; };
  std::size_t count = 0;
  for (std::uint32_t i = 0; i < page.elements.size() && count < kMaxTargets; ++i) {
    const auto& attributes = page.elements[i].attributes;
    if (i == index || isPluginTag(page.elements[i].tag) || !isBelow(i)) continue;
    if (std::none_of(attributes.begin(), attributes.end(), isData)) continue;
    solver.add(target, elementObject(realm, i));
    ++count;
  }
}

// Elements around, in and beside an element.
void Analysis::readElement(ObjectId id, Name name, NodeId target) {
  const std::string& text = names.text(name);
  const ElementInfo info = elements[objects[id].a];
  if ((text == "contentWindow" || text == "contentDocument") && info.index == kNone && info.tag == "iframe") {
    // A frame that script makes: a world without a page.
    const std::uint32_t realm = newRealm(kNone);
    for (const char* up : {"parent", "top"})
      solver.add(property(realms[realm].window, names.of(up)).node, realms[info.realm].window);
    solver.add(property(id, names.of("contentWindow")).node, realms[realm].window);
    solver.add(property(id, names.of("contentDocument")).node, realms[realm].document);
    return;
  }
  if (text == "shadowRoot" || (text == "content" && info.tag == "template")) solver.add(target, id);
  if (text == "ownerDocument") solver.add(target, realms[info.realm].document);
  if (text == "dataset") {
    const ObjectId set = newObject(Class::plain, objects[id].where);
    solver.add(target, set);
    if (info.index == kNone) return;
    for (const PageAttribute& attribute : pages[info.page].elements[info.index].attributes) {
      if (attribute.name.compare(0, 5, "data-") != 0) continue;
      std::string camel;
      for (std::size_t i = 5; i < attribute.name.size(); ++i) {
        if (attribute.name[i] == '-' && i + 1 < attribute.name.size())
          camel += static_cast<char>(std::toupper(static_cast<unsigned char>(attribute.name[++i])));
        else
          camel += attribute.name[i];
      }
      solver.add(defineProperty(set, names.of(camel)), textValue(names.of(attribute.value)));
    }
    return;
  }
  const bool isList = isOneOf(text, {"children", "childNodes"});
  const bool isUp = isOneOf(text, {"parentNode", "parentElement", "offsetParent"});
  const bool isChild = isOneOf(text, {"firstChild", "firstElementChild", "lastChild", "lastElementChild"});
  const bool isBeside =
      isOneOf(text, {"nextSibling", "nextElementSibling", "previousSibling", "previousElementSibling"});
  if (!isList && !isUp && !isChild && !isBeside) return;
  const NodeId made = property(id, names.of("%children")).node;
  if (isList) {
    const ObjectId list = newObject(Class::array, objects[id].where);
    solver.add(target, list);
    solver.edge(made, starNode(list));
    if (info.index == kNone) return;
    std::size_t next = 0;
    for (const std::uint32_t child : pages[info.page].elements[info.index].children)
      solver.add(defineProperty(list, names.of(std::to_string(next++))), elementObject(info.realm, child));
    return;
  }
  if (isChild) solver.edge(made, target);
  if (info.index == kNone) return;
  const PageElement& own = pages[info.page].elements[info.index];
  if (isUp && own.parent != kNone) solver.add(target, elementObject(info.realm, own.parent));
  if (isChild && !own.children.empty())
    solver.add(target, elementObject(info.realm, text[0] == 'f' ? own.children.front() : own.children.back()));
  if (isBeside && own.parent != kNone) {
    const auto& all = pages[info.page].elements[own.parent].children;
    const auto at = std::find(all.begin(), all.end(), info.index);
    if (text[0] == 'n' && at != all.end() && at + 1 != all.end())
      solver.add(target, elementObject(info.realm, *(at + 1)));
    if (text[0] == 'p' && at != all.end() && at != all.begin())
      solver.add(target, elementObject(info.realm, *(at - 1)));
  }
}

void Analysis::loadPage(std::uint32_t index) {
  const std::uint32_t realm = index;  // the first realms are those of pages
  enterFile(realm, pages[index].file);
  for (std::uint32_t i = 0; i < pages[index].elements.size(); ++i) {
    const PageElement& element = pages[index].elements[i];
    if (element.tag == "script") {
      loadScript(realm, element);
      continue;
    }
    for (const PageAttribute& attribute : element.attributes)
      loadAttribute(realm, i, attribute);
    if (element.tag == "object")
      loadFrame(elementObject(realm, i), element.valueOf("data"), "");
    else if (isFrameTag(element.tag))
      loadFrame(elementObject(realm, i), element.valueOf("src"), element.valueOf("name"));
  }
}

// Code that stands in the page.
void Analysis::runInPage(std::uint32_t realm, const std::string& code, std::uint32_t base, bool isExact, bool isLocal,
                         NodeId self) {
  const std::uint32_t unit = unitOfText(code, pages[realms[realm].page].file, base, isExact, isLocal);
  if (unit != kNone) runScript(unit, realm, self);
}

void Analysis::loadScript(std::uint32_t realm, const PageElement& element) {
  const std::string type = element.valueOf("type");
  if (!isScriptType(type)) return;
  std::string source;
  for (const char* name : {"src", "xlink:href", "href"})
    if (source.empty()) source = element.valueOf(name);
  const bool isModule = type == "module";
  const NodeId window = single(realms[realm].window);
  if (source.empty()) {
    if (element.text.empty()) return;
    if (isModule) return runModuleInPage(realm, element);
    return runInPage(realm, element.text, element.textBegin, element.isTextExact, false, window);
  }
  const std::string data = decodeDataUrl(source);
  if (!data.empty()) {
    const PageAttribute* at = element.attribute("src");
    return runInPage(realm, data, at ? at->begin : element.begin, false, isModule, window);
  }
  const std::uint32_t page = pages[realms[realm].page].file;
  const std::uint32_t target = findFile(page, source);
  if (target == kNone) {
    loadModels(realm, source);
    notRead.emplace(files[page].path,
                    (isRemote(source) ? "script from elsewhere: " : "script that is not there: ") + source);
    return;
  }
  loadScriptFile(realm, target, isModule);
  if (const PageAttribute* main = element.attribute("data-main")) loadMainModule(realm, main->value);
}

void Analysis::loadScriptFile(std::uint32_t realm, std::uint32_t file, bool isModule) {
  filesRun.insert(file);
  const auto relevance = relevances.find(file);
  const bool isShared = relevance != relevances.end() && relevance->second == Relevance::shared;
  // A library that a page without plug-ins shows off may be as much work as all else.
  if (isShared && !isModule && !realms[realm].hasToDoWithPlugins && !isAboutPlugins(file)) {
    waitingScripts.push_back({realm, file});
    return;
  }
  if (isModule) {
    (void)moduleExports(realm, file, true);
    return;
  }
  const std::uint32_t unit = unitOfFile(file, false);
  if (libraryFiles.count(file)) loadModels(realm, files[file].bytes);
  if (unit != kNone) runScript(unit, realm, single(realms[realm].window));
}

// RequireJS: data-main names the first module, and the folder that others are in.
void Analysis::loadMainModule(std::uint32_t realm, const std::string& name) {
  const std::string path = name.compare(0, 1, ".") == 0 ? name : "./" + name;
  const std::size_t slash = path.rfind('/');
  if (slash > 1) moduleSettings.bases.insert(path.substr(0, slash));
  const std::uint32_t first = findModule(pages[realms[realm].page].file, path);
  if (first == kNone || !filesRun.insert(first).second) return;
  const std::uint32_t unit = unitOfFile(first, false);
  if (unit != kNone) runScript(unit, realm, single(realms[realm].window));
}

void Analysis::runModuleInPage(std::uint32_t realm, const PageElement& element) {
  const std::uint32_t unit =
      unitOfText(element.text, pages[realms[realm].page].file, element.textBegin, element.isTextExact, true);
  if (unit == kNone) return;
  const ObjectId module = newObject(Class::plain, {unit, 0});
  solver.add(defineProperty(module, known.exports), newObject(Class::plain, {unit, 0}));
  acts.emplace_back();
  acts.back().unit = unit;
  acts.back().realm = realm;
  acts.back().module = module;
  acts.back().self = single(realms[realm].window);
  build(static_cast<ActId>(acts.size() - 1));
}

void Analysis::loadAttribute(std::uint32_t realm, std::uint32_t index, const PageAttribute& attribute) {
  const std::string& name = attribute.name;
  if (name.size() > 2 && name.compare(0, 2, "on") == 0)
    return runInPage(realm, attribute.value, attribute.begin, attribute.isExact, true,
                     single(elementObject(realm, index)));
  const bool isSourceDocument = name == "srcdoc";
  if (!isSourceDocument && !isOneOf(name, {"href", "src", "action", "data", "xlink:href"})) return;
  if (!isSourceDocument && loadScriptUrl(realm, attribute)) return;
  const std::string& tag = pages[realms[realm].page].elements[index].tag;
  if (!isSourceDocument && isOneOf(tag, {"a", "link", "img"})) return;
  const std::string markup = isSourceDocument ? attribute.value : decodeDataUrl(attribute.value);
  if (markup.find('<') == std::string::npos) return;
  const std::uint32_t unit = unitOfText(" ", pages[realms[realm].page].file, attribute.begin, false, false);
  addMarkup(realm, markup, {unit, 0});
}

// Whether the address is script.
bool Analysis::loadScriptUrl(std::uint32_t realm, const PageAttribute& attribute) {
  std::size_t at = 0;
  while (at < attribute.value.size() && static_cast<unsigned char>(attribute.value[at]) <= ' ')
    ++at;
  std::string head = attribute.value.substr(at, 11);
  std::transform(head.begin(), head.end(), head.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (head != "javascript:") return false;
  const std::string code = attribute.value.substr(at + 11);
  const bool isEncoded = code.find('%') != std::string::npos;
  runInPage(realm, isEncoded ? decodePercent(code) : code, attribute.begin + static_cast<std::uint32_t>(at) + 11,
            attribute.isExact && !isEncoded, false, single(realms[realm].window));
  return true;
}

// The window inside an element, and the one around.
void Analysis::loadFrame(ObjectId element, const std::string& source, const std::string& name) {
  const std::uint32_t realm = elements[objects[element].a].realm;
  if (realms[realm].page == kNone) return;
  const std::uint32_t target = source.empty() ? kNone : findFile(pages[realms[realm].page].file, source);
  for (std::uint32_t other = 0; target != kNone && other < pages.size(); ++other) {
    if (pages[other].file != target || other == realm) continue;
    const ObjectId outer = realms[realm].window;
    const ObjectId inner = realms[other].window;
    solver.add(property(element, names.of("contentWindow")).node, inner);
    solver.add(property(element, names.of("contentDocument")).node, realms[other].document);
    solver.add(property(inner, names.of("parent")).node, outer);
    solver.edge(property(outer, names.of("top")).node, property(inner, names.of("top")).node);
    solver.add(property(inner, names.of("frameElement")).node, element);
    solver.add(property(outer, names.of("%frames")).node, inner);
    if (!name.empty()) solver.add(property(outer, names.of("%frame:" + name)).node, inner);
    realms[realm].hasFrames = true;
  }
}

// A page that no other shows is its own parent. Links and scripts may show it in a frame as well.
void Analysis::linkTopPages() {
  for (const Realm& realm : realms) {
    if (!solver.isEmpty(property(realm.window, names.of("parent")).node)) continue;
    for (const char* up : {"parent", "top"}) {
      const NodeId node = property(realm.window, names.of(up)).node;
      solver.add(node, realm.window);
      if (realm.hasFrames) continue;
      for (const Realm& other : realms)
        if (other.hasFrames) solver.add(node, other.window, 0, 1);
    }
  }
}

}  // namespace flow
