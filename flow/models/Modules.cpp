// Models: modules that script defines and asks for by name, as RequireJS and CommonJS loaders do.
// Test: tests/flow/Analysis_test.cpp.

#include <algorithm>

#include "flow/Words.h"
#include "flow/models/Models.h"

namespace flow {
namespace {

constexpr std::size_t kMaxDependencies = 200;  // of one module

// Where the exports of all that is defined under a name come to.
NodeId namedModule(Analysis& a, std::uint32_t realm, const std::string& name) {
  NodeId& node = a.namedModules[{realm, a.names.of(name)}];
  if (node == 0) node = a.solver.make({}, Step::property, a.names.of(name));
  return node;
}

ObjectId newModule(Analysis& a, Where where) {
  const ObjectId made = a.newObject(Class::plain, where);
  a.solver.add(a.defineProperty(made, a.known.exports), a.newObject(Class::plain, where));
  return made;
}

// ---- names to files -------------------------------------------------------------------------------------------------

// What the loader's configuration makes of a name: the longest of its paths that the name begins with decides.
std::string withAlias(const Analysis& a, const std::string& name) {
  std::string best;
  std::string made = name;
  for (const auto& [from, to] : a.moduleSettings.aliases) {
    const bool isPart =
        name.compare(0, from.size(), from) == 0 && (name.size() == from.size() || name[from.size()] == '/');
    if (!isPart || from.size() < best.size() || from.empty()) continue;
    best = from;
    made = to + name.substr(from.size());
  }
  return made;
}

// Names count from the base that the configuration gives, or from the page; else from the file around.
std::uint32_t fileOfModule(const Analysis& a, const Site& site, const std::string& name) {
  const std::uint32_t own = a.units[site.where.unit].file;
  const std::string target = withAlias(a, name);
  const std::uint32_t page = a.realms[a.realmOf(site.act)].page;
  const bool isRelative = target == name && name[0] == '.';
  if (!isRelative && page != kNone) {
    for (const std::string& base : a.moduleSettings.bases) {
      const std::uint32_t found = a.findModule(a.pages[page].file, "./" + base + '/' + target);
      if (found != kNone) return found;
    }
  }
  const std::uint32_t found = a.findModule(own, target);
  return found != kNone || page == kNone ? found : a.findModule(a.pages[page].file, "./" + target);
}

// Whether the name led to a module.
bool linkFile(Analysis& a, const Site& site, const std::string& name, NodeId to) {
  const std::uint32_t realm = a.realmOf(site.act);
  const std::uint32_t file = fileOfModule(a, site, name);
  if (file == kNone) return false;
  const ObjectId module = a.moduleExports(realm, file, false);
  if (module != kNobody) a.solver.edge(a.readNode(module, a.known.exports), to);
  return true;
}

// The exports of the module of that name go to `to`, whenever it is defined.
void link(Analysis& a, const Site& site, const std::string& whole, NodeId to) {
  if (whole.empty() || site.where.unit >= a.units.size()) return;
  // A loader's plug-in before the name: "text!a.html".
  const std::size_t mark = whole.rfind('!');
  const std::string name = mark == std::string::npos ? whole : whole.substr(mark + 1);
  if (name.empty()) return;
  const std::uint32_t realm = a.realmOf(site.act);
  a.solver.edge(namedModule(a, realm, name), to);
  if (linkFile(a, site, name, to)) return;
  // Its own folder's name before it, or a path that is configured later.
  const std::size_t begin = name.find_first_not_of("./");
  if (name[0] == '.' && begin != std::string::npos) a.solver.edge(namedModule(a, realm, name.substr(begin)), to, 1);
  a.whenEmpty(to, [&a, site, name, to] { (void)linkFile(a, site, name, to); });
}

// ---- define and require ---------------------------------------------------------------------------------------------

struct Definition {
  ObjectId module = kNobody;  // of define
  NodeId name = 0;            // where a define with a name puts it
  std::vector<NodeId> dependencies;
  bool hasList = false;
  NodeId factory = 0;
};

Value firstValue(Analysis& a, const CallInfo& info, std::size_t index) {
  const NodeId node = arg(a, info, index);
  if (node == 0 || a.solver.isEmpty(node)) return kUnknown;
  return a.solver.values(node)[0].value;
}

void linkDependency(Analysis& a, const Site& site, ObjectId module, const std::string& name, NodeId to) {
  if (name == "require") return a.solver.add(to, a.nativeObject("require"));
  if (module != kNobody && name == "exports") return a.solver.edge(a.readNode(module, a.known.exports), to);
  if (module != kNobody && name == "module") return a.solver.add(to, module);
  link(a, site, name, to);
}

void takeDependencies(Analysis& a, const CallInfo& info, ObjectId list, Definition& of) {
  of.hasList = true;
  for (std::size_t i = 0; i < kMaxDependencies; ++i) {
    const auto index = a.object(list).index.find(a.names.of(std::to_string(i)));
    if (index == a.object(list).index.end()) break;
    const NodeId value = a.solver.make(info.site.where, Step::none);
    of.dependencies.push_back(value);
    const Site site = info.site;
    const ObjectId module = of.module;
    texts(a, a.object(list).properties[index->second].node,
          [&a, site, module, value](const std::string& name) { linkDependency(a, site, module, name, value); });
  }
}

// The module that a define without a name is: that of its file.
ObjectId moduleOfFile(Analysis& a, const Site& site) {
  if (site.where.unit >= a.units.size()) return newModule(a, site.where);
  const auto key = std::make_pair(a.realmOf(site.act), a.units[site.where.unit].file);
  const auto known = a.modules.find(key);
  if (known != a.modules.end() && known->second != kNobody) return known->second;
  return a.modules[key] = newModule(a, site.where);
}

void runFactory(Analysis& a, const CallInfo& info, const Definition& of) {
  const NodeId made = a.solver.make(info.site.where, Step::result);
  a.invoke(info, of.factory, 0, of.dependencies, made);
  if (of.module == kNobody) return;
  const NodeId exports = a.defineProperty(of.module, a.known.exports);
  a.solver.edge(made, exports);
  a.solver.listen(of.factory, [&a, exports, of](const Arrival& value) {
    if (isObject(value.value) && a.object(value.value).cls != Class::function)
      a.solver.add(exports, value.value, of.factory, value.level);
  });
  a.solver.edge(exports, of.name);
}

// define(name?, dependencies?, factory) and require(dependencies, callback).
void amd(Analysis& a, const CallInfo& info, bool isDefine) {
  Definition of;
  std::size_t at = 0;
  const Value name = isDefine ? firstValue(a, info, 0) : kUnknown;
  if (isText(name)) {
    of.module = newModule(a, info.site.where);
    of.name = namedModule(a, a.realmOf(info.site.act), a.names.text(nameIn(name)));
    ++at;
  } else if (isDefine) {
    of.module = moduleOfFile(a, info.site);
  }
  const Value list = firstValue(a, info, at);
  if (isObject(list) && a.object(list).cls == Class::array) {
    ++at;
    takeDependencies(a, info, list, of);
  } else if (isDefine) {
    of.dependencies = {a.single(a.nativeObject("require")), a.readNode(of.module, a.known.exports),
                       a.single(of.module)};
  }
  of.factory = arg(a, info, at);
  runFactory(a, info, of);
}

void define(Analysis& a, const CallInfo& info) {
  amd(a, info, true);
}

// { baseUrl, paths: {name: path}, map: {"*": {name: name}}, shim: {name: {exports: global}} }
void requireConfig(Analysis& a, const CallInfo& info) {
  const Site site = info.site;
  const NodeId given = arg(a, info, 0);
  const auto eachIn = [&a, site](NodeId of, const char* name,
                                 const std::function<void(const std::string&, NodeId)>& take) {
    const NodeId value = a.solver.make(site.where, Step::none);
    a.read(site.where, site.act, of, 0, a.names.of(name), value);
    a.solver.listen(value, [&a, take](const Arrival& all) {
      if (!isObject(all.value)) return;
      a.watch(all.value, [&a, take](Name key, NodeId node) { take(a.names.text(key), node); });
    });
  };
  const auto addAlias = [&a](const std::string& name, NodeId path) {
    texts(a, path, [&a, name](const std::string& to) { a.moduleSettings.aliases.emplace(name, to); });
  };
  const NodeId base = a.solver.make(site.where, Step::none);
  a.read(site.where, site.act, given, 0, a.names.of("baseUrl"), base);
  texts(a, base, [&a](const std::string& to) { a.moduleSettings.bases.insert(to); });
  eachIn(given, "paths", addAlias);
  const NodeId map = a.solver.make(site.where, Step::none);
  a.read(site.where, site.act, given, 0, a.names.of("map"), map);
  eachIn(map, "*", addAlias);
  eachIn(given, "shim", [&a, site](const std::string& name, NodeId shim) {
    const NodeId global = a.solver.make(site.where, Step::none);
    a.read(site.where, site.act, shim, 0, a.known.exports, global);
    texts(a, global, [&a, site, name](const std::string& to) {
      const std::uint32_t realm = a.realmOf(site.act);
      a.solver.edge(a.readNode(a.realms[realm].window, a.names.of(to)), namedModule(a, realm, name));
    });
  });
}

// require(name), require(dependencies, callback), require(configuration, dependencies, callback).
void require(Analysis& a, const CallInfo& info) {
  const Site site = info.site;
  const NodeId result = info.result;
  texts(a, arg(a, info, 0), [&a, site, result](const std::string& name) { link(a, site, name, result); });
  const Value first = firstValue(a, info, 0);
  if (!isObject(first)) return;
  if (a.object(first).cls == Class::array) return amd(a, info, false);
  requireConfig(a, info);
  if (info.args->nodes.size() < 2) return;
  CallInfo rest = info;
  rest.args = a.makeArgs({info.args->nodes.begin() + 1, info.args->nodes.end()});
  amd(a, rest, false);
}

const Row kRows[] = {
    {"require", require},
    {"requirejs", require},
    {"require.config", requireConfig},
    {"requirejs.config", requireConfig},
    {"define", define},
};

}  // namespace

void addModuleModels(Analysis& analysis) {
  addRows(analysis, kRows);
}

}  // namespace flow
