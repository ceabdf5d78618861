// Models: which well-known libraries a text is, or holds. What they do is written as script (models/), which is read
// into the graph in place of the library's own. Test: tests/flow/Analysis_test.cpp.

#include "flow/ModelTexts.h"
#include "flow/models/Models.h"

namespace flow {
namespace {

struct Model {
  const char* name;
  const char* sign;  // stands in what is recognised as a library, or in the address of a script from elsewhere
  const char* text;
};

// In the order in which they are read: later ones use earlier ones.
const Model kModels[] = {
    {"jquery", "jquery", kJquery},
    {"jquery", "jQuery", kJquery},
    {"jquery", "Zepto", kJquery},
    {"underscore", "nderscore", kUnderscore},
    {"underscore", "odash", kUnderscore},
    {"backbone", "Backbone.", kBackbone},
    {"backbone", "backbone", kBackbone},
    {"angular", "angular", kAngular},
    {"knockout", "nockout", kKnockout},
    {"vue", "Vue.js v", kVue},
    {"vue", "vue@", kVue},
    {"vue", "vue.", kVue},
    {"vue", "var Vue=", kVue},
    {"vue", "* vue v", kVue},
    {"react", "React v", kReact},
    {"react", "react.", kReact},
    {"react", "@license React", kReact},
    {"react", "preact", kReact},
    {"mithril", "ithril", kMithril},
    {"mithril", "window.m=", kMithril},
    {"rxjs", "RxJS", kRxjs},
    {"rxjs", "rxjs", kRxjs},
    {"templates", "ustache", kTemplates},
    {"templates", "andlebars", kTemplates},
    {"templates", "Hogan", kTemplates},
    {"templates", "ejs.", kTemplates},
    {"movie", "\x01movie", kMovie},
    {"browser",
     "\x01"
     "browser",
     kBrowser},
};

constexpr std::size_t kMaxData = 200'000;  // bytes of a file whose text is a value

// Elements of a text that begins with one.
void markup(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  const std::uint32_t realm = a.realmOf(info.site.act);
  a.solver.listen(arg(a, info, 0), [&a, copy, realm](const Arrival& value) {
    if (!isText(value.value)) return;
    const std::string& text = a.names.text(nameIn(value.value));
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string::npos || text[begin] != '<') return;
    const Page part = parsePage(text);
    for (const PageElement& element : part.elements) {
      if (element.tag == "html" || element.tag == "head" || element.tag == "body") continue;
      const ObjectId made = a.makeElement(realm, element.tag, a.placeOutsideModels(copy.site).where);
      for (const PageAttribute& attribute : element.attributes)
        a.setAttribute(made, attribute.name, attribute.value, a.placeOutsideModels(copy.site).where);
      a.solver.add(copy.result, made, 0, value.level);
    }
  });
}

// The names of a function's parameters.
void parameters(Analysis& a, const CallInfo& info) {
  const CallInfo copy = info;
  a.solver.listen(arg(a, info, 0), [&a, copy](const Arrival& function) {
    if (!isObject(function.value) || a.object(function.value).cls != Class::function) return;
    Closure closure = a.closures[a.object(function.value).a];
    if (closure.klass != kNone) {
      const ObjectId constructor = a.classes[closure.klass].constructor;
      if (constructor == kNobody) return;
      closure = a.closures[a.object(constructor).a];
    }
    const Unit& unit = a.units[closure.unit];
    const Def& def = unit.defs[closure.def];
    if (def.parameters == 0) return;
    const ObjectId list = a.newObject(Class::array, copy.site.where);
    std::size_t next = 0;
    for (Ast child = def.parameters + 1; child < unit.nodes[def.parameters].last; child = unit.nodes[child].last)
      a.solver.add(a.defineProperty(list, a.names.of(std::to_string(next++))),
                   textValue(a.names.of(unit.textOf(child))));
    a.solver.add(copy.result, list);
  });
}

// The text of a file of the application.
void fileText(Analysis& a, const CallInfo& info) {
  const NodeId result = info.result;
  const Site site = a.placeOutsideModels(info.site);
  const std::uint32_t realm = a.realmOf(info.site.act);
  a.solver.listen(arg(a, info, 0), [&a, result, site, realm](const Arrival& url) {
    if (!isText(url.value)) return;
    const std::string target = a.names.text(nameIn(url.value));
    const std::string path = target.substr(0, target.find_first_of("?#"));
    const std::uint32_t page = a.realms[realm].page;
    std::uint32_t file = page == kNone ? kNone : a.findFile(a.pages[page].file, path);
    if (file == kNone && site.where.unit < a.units.size()) file = a.findFile(a.units[site.where.unit].file, path);
    if (file == kNone || a.files[file].bytes.size() > kMaxData) return;
    a.enterFile(realm, file);
    a.solver.add(result, textValue(a.names.of(a.files[file].bytes)), 0, url.level);
  });
}

}  // namespace

void Analysis::loadModels(std::uint32_t realm, std::string_view of) {
  for (const Model& model : kModels) {
    if (of.find(model.sign) == std::string_view::npos) continue;
    if (!modelsLoaded.emplace(realm, model.name).second) continue;
    const std::string path = std::string("\x01") + model.name;
    auto file = fileByPath.find(path);
    if (file == fileByPath.end()) {
      files.push_back({path, model.text});
      file = fileByPath.emplace(path, static_cast<std::uint32_t>(files.size() - 1)).first;
      units.emplace_back();
      Unit& unit = units.back();
      unit.file = file->second;
      unit.isModel = true;
      unit.text = model.text;
      unitByFile[file->second * 2] = static_cast<std::uint32_t>(units.size() - 1);
      filesRun.insert(file->second);
      addUnit(unit, false);
    }
    runScript(unitByFile[file->second * 2], realm, single(realms[realm].window));
  }
}

Site Analysis::placeOutsideModels(Site site) const {
  for (int i = 0; i < 40 && site.where.unit < units.size() && units[site.where.unit].isModel && site.act != kNobody;
       ++i) {
    const ActId act = site.act;
    site.where = acts[act].calledAt;
    site.method = acts[act].calledAtMethod;
    site.act = acts[act].calledIn;
  }
  return site;
}

void addLibraryModels(Analysis& analysis) {
  analysis.natives.emplace("__tarvoMarkup", markup);
  analysis.natives.emplace("__tarvoParameters", parameters);
  analysis.natives.emplace("__tarvoFile", fileText);
}

}  // namespace flow
