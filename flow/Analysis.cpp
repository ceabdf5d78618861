// Analysis: files to pages and scripts, pages to worlds, then rounds until nothing is added: what is called is read as
// calls are linked, then what nobody calls. Test: tests/flow/Analysis_test.cpp.

#include "flow/Analysis.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include "flow/ParseCache.h"
#include "flow/Words.h"

namespace flow {
namespace {

// A movie's variables are no globals of the page.
constexpr int kMaxRounds = 16;  // of coming to rest and going on
constexpr const char* kMovieHead =
    "(function (flash, ExternalInterface, getURL, setInterval, _root, _global, _level0) {";
constexpr const char* kMovieTail =
    "})(__tarvoMovie.flash, __tarvoMovie.ExternalInterface, __tarvoMovie.getURL, __tarvoMovie.setInterval, window, "
    "window, window);";
// Whether a file may hold values that script asks for.
bool isData(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  return begin != std::string_view::npos && (text[begin] == '{' || text[begin] == '[');
}

constexpr std::size_t kMaxMoviePages = 8;  // that run a movie which none names

}  // namespace

Analysis::Analysis(const std::vector<File>& given, const Database& documented, const Limits& bounds,
                   const Extras& wanted)
    : database(documented), limits(bounds), extras(wanted) {
  for (const File& file : given)
    files.push_back({file.path, file.bytes, file.isMovie});
  std::sort(files.begin(), files.end(), [](const ReadFile& a, const ReadFile& b) { return a.path < b.path; });
  const auto name = [this](const char* text) { return names.of(text); };
  known = {name("prototype"), name("constructor"), name("length"),  name("value"),     name("done"),
           name("next"),      name("@@iterator"),  name("then"),    name("get"),       name("set"),
           name("call"),      name("apply"),       name("bind"),    name("id"),        name("%star"),
           name("%resolved"), name("default"),     name("exports"), name("arguments"), name("%keys")};
  solver.maxNodes = limits.nodes;
  solver.maxSteps = limits.steps;
  arrayProto = newObject(Class::plain, {});
  functionProto = newObject(Class::plain, {});
  stringProto = newObject(Class::plain, {});
  objectProto = newObject(Class::plain, {});
  addFunctionModels(*this);
  addObjectModels(*this);
  addArrayModels(*this);
  addCollectionModels(*this);
  addPromiseModels(*this);
  addTextModels(*this);
  addPatternModels(*this);
  addMarkupModels(*this);
  addDomModels(*this);
  addModuleModels(*this);
  addTemplateModels(*this);
  addLibraryModels(*this);
}

Result Analysis::run() {
  loadFiles();
  bool hasPlugin = false;
  for (const ReadFile& file : files)
    hasPlugin = hasPlugin || namesPlugin(file.bytes, database.identifiers);
  if (!hasPlugin) return std::move(result);
  prepare();
  runPages();
  for (int round = 0; round < kMaxRounds && !solver.isSpent(); ++round) {
    areGuardsOpen = round >= kMaxRounds / 2;
    solver.run();
    bool isMore = runWaitingScripts();
    if (!isMore) isMore = linkGlobals();
    if (!isMore) isMore = linkForeignIds();
    if (!isMore && !late.empty()) {
      const auto pending = std::move(late);
      late.clear();
      for (const auto& [node, then] : pending) {
        if (!solver.isEmpty(node)) continue;
        then();
        isMore = true;
      }
      solver.run();
    }
    if (!isMore) isMore = enterUncalled();
    if (!isMore) {
      const std::size_t before = units.size() + realms.size();
      runUnreached();
      runMovies();
      isMore = units.size() + realms.size() != before;
    }
    if (!isMore) break;
  }
  if (solver.isSpent()) notRead.emplace("", "flow analysis ended before all was followed");
  makeReport(*this);
  finish();
  return std::move(result);
}

void Analysis::finish() {
  for (const auto& [part, reason] : notRead)
    result.notRead.push_back({part, reason});
}

void Analysis::loadFiles() {
  for (std::uint32_t i = 0; i < files.size(); ++i)
    fileByPath.emplace(files[i].path, i);
}

void Analysis::prepare() {
  for (std::uint32_t i = 0; i < files.size(); ++i) {
    ReadFile& file = files[i];
    if (file.isMovie) {
      file.bytes = texts.emplace_back(kMovieHead + std::string(file.bytes) + kMovieTail);
      continue;
    }
    const bool isPage = looksLikePage(file.path, file.bytes);
    if (isPage || isScriptPath(file.path)) decodeFile(file);
    if (!isPage) continue;
    if (file.bytes.size() > limits.pageBytes) {
      notRead.emplace(file.path, "the page is too large");
      continue;
    }
    Page page = parsePage(file.bytes);
    page.file = i;
    if (!page.gap.empty()) notRead.emplace(file.path, page.gap);
    pages.push_back(std::move(page));
  }
}

void Analysis::decodeFile(ReadFile& file) {
  std::optional<std::string> text = decode(file.bytes);
  if (text) file.bytes = texts.emplace_back(std::move(*text));
}

void Analysis::runPages() {
  for (std::uint32_t i = 0; i < pages.size(); ++i)
    newRealm(i);
  std::set<std::string> ids;
  for (const ElementInfo& element : elements)
    if (!element.plugins.empty())
      for (const Name id : element.ids)
        ids.insert(names.text(id));
  pluginIds.assign(ids.begin(), ids.end());
  chooseScripts();
  const bool hasData = std::any_of(files.begin(), files.end(), [](const ReadFile& file) { return isData(file.bytes); });
  for (std::uint32_t i = 0; i < pages.size(); ++i) {
    if (hasData)
      loadModels(i,
                 "\x01"
                 "browser");
    loadPage(i);
  }
  linkTopPages();
}

// Movies that may come to a plug-in, by what they say themselves, by what they ask their page, or by what that gives
// them: each in the pages that name it. Where none does, script shows it, in any.
void Analysis::runMovies() {
  if (std::exchange(haveMoviesRun_, true)) return;
  const auto says = [](const ReadFile& file, const char* word) {
    return file.bytes.find(word) != std::string_view::npos;
  };
  const bool isGiven = std::any_of(files.begin(), files.end(),
                                   [&](const ReadFile& file) { return !file.isMovie && says(file, ".SetVariable("); });
  const auto isAboutPlugins = [&](const ReadFile& movie) {
    return isGiven || says(movie, "\ngetURL(") || says(movie, "ExternalInterface.") ||
           namesPlugin(movie.bytes, database.identifiers) || namesAny(movie.bytes, pluginIds);
  };
  const std::size_t count = std::min(pages.size(), kMaxMoviePages);
  for (std::uint32_t i = 0; i < files.size(); ++i) {
    if (!files[i].isMovie || !isAboutPlugins(files[i])) continue;
    const std::string name = files[i].path.substr(files[i].path.rfind('/') + 1);
    const auto isNamed = [&](std::uint32_t page) {
      return files[pages[page].file].bytes.find(name) != std::string_view::npos;
    };
    bool isNamedAtAll = false;
    for (std::uint32_t page = 0; page < pages.size(); ++page) {
      if (!isNamed(page)) continue;
      isNamedAtAll = true;
      runMovie(i, page);
    }
    for (std::uint32_t page = 0; page < count && !isNamedAtAll; ++page)
      runMovie(i, page);
  }
}

void Analysis::runMovie(std::uint32_t file, std::uint32_t realm) {
  const ObjectId shown = newObject(Class::array, {});
  solver.add(property(realms[realm].window, names.of("__tarvoMovies")).node, shown);
  for (const ObjectId element : realms[realm].plugins)
    if (elements[objects[element].a].plugins.empty()) solver.add(starNode(shown), element);
  loadModels(realm, "\x01movie");
  filesRun.insert(file);
  const std::uint32_t unit = unitOfFile(file, false);
  if (unit != kNone) runScript(unit, realm, single(realms[realm].window));
}

// Which script files are read at all.
void Analysis::chooseScripts() {
  std::vector<Script> scripts;
  std::vector<std::uint32_t> numbers;
  for (std::uint32_t i = 0; i < files.size(); ++i) {
    if (!isScriptPath(files[i].path) || looksLikePage(files[i].path, files[i].bytes)) continue;
    const std::string_view path = files[i].path;
    std::string_view name = path.substr(path.rfind('/') + 1);
    name = name.substr(0, name.find('.'));
    scripts.push_back({files[i].bytes, false, !libraryOf(files[i].bytes).empty(), name});
    numbers.push_back(i);
  }
  for (const Page& page : pages)
    scripts.push_back({files[page.file].bytes, true, false, {}});
  for (const ReadFile& file : files)
    if (file.isMovie) scripts.push_back({file.bytes, true, false, {}});
  const std::vector<Relevance> found = relevanceOf(scripts, database.identifiers, pluginIds, extras.forEach);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    relevances[numbers[i]] = found[i];
    if (found[i] == Relevance::none && !scripts[i].isLibrary) files[numbers[i]].bytes = {};
  }
}

// Scripts that no page loads, and that have to do with plug-ins: in a world of their own, with the elements of all.
void Analysis::runUnreached() {
  std::uint32_t realm = kNone;
  for (std::uint32_t i = 0; i < files.size(); ++i) {
    if (filesRun.count(i) || !isScriptPath(files[i].path) || looksLikePage(files[i].path, files[i].bytes)) continue;
    const std::string_view text = files[i].bytes;
    if (!isAboutPlugins(i)) continue;
    filesRun.insert(i);
    if (realm == kNone) {
      realm = newRealm(kNone);
      realms[realm].isReached = false;
    }
    const std::uint32_t unit = unitOfFile(i, looksLikeModule(text));
    if (unit == kNone) continue;
    if (units[unit].isModule || looksLikeCommonJs(text))
      moduleExports(realm, i, units[unit].isModule);
    else
      runScript(unit, realm, single(realms[realm].window));
  }
}

// Large scripts of pages that turned out to have to do with plug-ins.
bool Analysis::runWaitingScripts() {
  // Frames see each other's worlds.
  const bool haveFrames = std::any_of(realms.begin(), realms.end(), [](const Realm& realm) { return realm.hasFrames; });
  std::vector<PageScript> ready;
  std::vector<PageScript> waiting;
  for (const PageScript& script : waitingScripts) {
    if (haveFrames || realms[script.realm].hasToDoWithPlugins)
      ready.push_back(script);
    else
      waiting.push_back(script);
  }
  waitingScripts = std::move(waiting);
  for (const auto& [realm, file] : ready) {
    const std::uint32_t unit = unitOfFile(file, false);
    if (unit != kNone) runScript(unit, realm, single(realms[realm].window));
  }
  return !ready.empty();
}

// A global that no script writes is the element of that id.
bool Analysis::linkGlobals() {
  bool isMore = false;
  std::vector<std::pair<ObjectId, Name>> reads;
  reads.swap(globalReads);
  for (const auto& [window, name] : reads) {
    Object& of = objects[window];
    const auto own = of.index.find(name);
    const bool isWritten = own != of.index.end() && of.properties[own->second].isWritten;
    if (isWritten && !solver.isEmpty(of.properties[own->second].node)) continue;
    const std::string& text = names.text(name);
    if (hasNative(text)) continue;
    const std::uint32_t realm = of.a;
    const auto found = realms[realm].byId.find(name);
    if (found == realms[realm].byId.end()) {
      if (!pages.empty()) globalReads.emplace_back(window, name);
      continue;
    }
    solver.edge(found->second, readNode(window, name), isWritten ? 1 : 0);
    isMore = true;
  }
  return isMore;
}

// Elements that are looked up by an id that their own page does not have: those of other pages.
bool Analysis::linkForeignIds() {
  bool isMore = false;
  const std::size_t count = realms.size();
  for (std::size_t r = 0; r < count; ++r) {
    std::vector<std::pair<Name, NodeId>> open;
    for (const auto& [id, node] : realms[r].byId)
      if (solver.isEmpty(node)) open.emplace_back(id, node);
    for (const auto& [id, node] : open) {
      for (std::size_t other = 0; other < count; ++other) {
        if (other == r) continue;
        const auto found = realms[other].byId.find(id);
        if (found == realms[other].byId.end() || solver.isEmpty(found->second)) continue;
        for (const Arrival& arrival : std::vector<Arrival>(solver.values(found->second)))
          solver.add(node, arrival.value, 0, 1);
        realms[r].hasToDoWithPlugins = true;
        isMore = true;
      }
    }
  }
  return isMore;
}

// Functions that are bound to an object and that nothing calls. Gives whether there were new ones.
bool Analysis::enterUncalledBounds() {
  const std::size_t count = bounds.size();
  const std::size_t first = boundsEntered_;
  boundsEntered_ = count;
  for (std::size_t i = first; i < count && !solver.isSpent(); ++i) {
    const BoundCall bound = bounds[i];
    const Where where = solver.where(bound.self);
    solver.listen(bound.target, [this, bound, where](const Arrival& function) {
      if (!isObject(function.value) || objects[function.value].cls != Class::function) return;
      const Closure& closure = closures[objects[function.value].a];
      if (closure.isEntered || units[closure.unit].isModel) return;
      callValue({where, where, closure.env, function.value}, function.value, bound.self, kUnknown, bound.args, 0, false,
                0, 0);
    });
  }
  return count != first;
}

// Functions that nothing calls: with parameters that nobody knows, on the objects that hold them.
bool Analysis::enterUncalled() {
  std::unordered_map<ObjectId, std::vector<ObjectId>> heirs;
  for (ObjectId id = 0; id < objects.size(); ++id)
    for (const Arrival& proto : objects[id].proto ? solver.values(objects[id].proto) : std::vector<Arrival>())
      if (isObject(proto.value)) heirs[proto.value].push_back(id);
  const auto receivers = [&](ObjectId owner) {
    std::vector<ObjectId> found{owner};
    for (std::size_t i = 0; i < found.size() && found.size() < 24; ++i) {
      const auto of = heirs.find(found[i]);
      if (of == heirs.end()) continue;
      for (const ObjectId heir : of->second)
        if (std::find(found.begin(), found.end(), heir) == found.end() && found.size() < 24) found.push_back(heir);
    }
    return found;
  };
  bool isMore = enterUncalledBounds();
  // What has the looks of a class first: its methods need an object.
  for (int pass = 0; pass < 2 && !isMore; ++pass) {
    const std::size_t count = closureObjects.size();
    for (std::size_t i = 0; i < count && !solver.isSpent(); ++i) {
      const ObjectId function = closureObjects[i];
      const Closure closure = closures[objects[function].a];
      if (closure.isEntered || closure.constructs != kNone || units[closure.unit].isModel) continue;
      const auto relevance = relevances.find(units[closure.unit].file);
      if (relevance != relevances.end() && relevance->second == Relevance::shared) continue;
      const bool isClass = closure.klass != kNone;
      bool hasMethods = isClass;
      const auto prototype = objects[function].index.find(known.prototype);
      if (!hasMethods && prototype != objects[function].index.end())
        for (const Arrival& value : solver.values(objects[function].properties[prototype->second].node))
          hasMethods = hasMethods || (isObject(value.value) && objects[value.value].properties.size() > 1);
      if ((pass == 0) != hasMethods) continue;
      const Where where = objects[function].where;
      closures[objects[function].a].isEntered = true;
      Site site{where, where, closure.env, function};
      isMore = true;
      if (hasMethods) {
        callValue(site, function, 0, kUnknown, makeArgs({}), 0, true, 0, 0);
        continue;
      }
      site.act = kNobody;
      std::vector<ObjectId> selves;
      if (closure.owner != kNobody) selves = receivers(closure.owner);
      const Def& def = units[closure.unit].defs[closure.def];
      if (def.what == Def::What::arrow || selves.empty()) {
        callValue(site, function, 0, kUnknown, makeArgs({}), 0, false, 0, 0);
        continue;
      }
      for (const ObjectId self : selves)
        callValue(site, function, single(self), self, makeArgs({}), 0, false, 0, 0);
    }
  }
  return isMore;
}

// ---- units
// ------------------------------------------------------------------------------------------------------------

void Analysis::addUnit(Unit& unit, bool isModule) {
  unit.isModule = isModule;
  if (!isModule) blankHtmlComments(unit.text);
  ParseLimits parse;
  parse.work = std::min(parse.work, limits.parseWork - std::min(limits.parseWork, parseWork_));
  parse.tokens -= std::min(parse.tokens, keptTokens_);
  Tree tree = extras.cache == nullptr ? parseScript(unit.text, parse) : extras.cache->parse(unit.text, parse);
  parsedBytes_ += unit.text.size();
  parseWork_ += tree.work;
  keptTokens_ += tree.keptTokens;
  if (!tree.isWhole) notRead.emplace(files[unit.file].path, "a script in it is too large or too broken to be parsed");
  unit.nodes = std::move(tree.nodes);
  for (std::size_t tag = findTag(unit.text); tag != std::string::npos; tag = findTag(unit.text, tag + 1))
    unit.tags.push_back(static_cast<std::uint32_t>(tag));
  resolveScopes(unit, names);
}

std::uint32_t Analysis::unitOfFile(std::uint32_t file, bool isModule) {
  const std::uint32_t key = file * 2 + (isModule ? 1 : 0);
  const auto found = unitByFile.find(key);
  if (found != unitByFile.end()) return found->second;
  std::uint32_t& made = unitByFile[key];
  made = kNone;
  const std::string_view text = files[file].bytes;
  const std::string library = libraryOf(text);
  if (!library.empty()) {
    result.libraries.push_back({library, files[file].path});
    libraryFiles.insert(file);
  }
  // Of a library, what was put into it besides is the application's.
  const auto relevance = relevances.find(file);
  if (relevance != relevances.end() && relevance->second == Relevance::none) return kNone;
  if (text.size() >= 2 && text[0] == '\x1f' && text[1] == '\x8b') {
    notRead.emplace(files[file].path, "a compressed script");
    return kNone;
  }
  if (text.size() > limits.scriptBytes || parsedBytes_ + text.size() > limits.parsedBytes) {
    notRead.emplace(files[file].path, "the script is too large");
    return kNone;
  }
  units.emplace_back();
  made = static_cast<std::uint32_t>(units.size() - 1);
  Unit& unit = units.back();
  unit.file = file;
  unit.text = text;
  addUnit(unit, isModule);
  return made;
}

std::uint32_t Analysis::unitOfText(const std::string& text, std::uint32_t file, std::uint32_t base, bool isExact,
                                   bool isLocal) {
  const std::string key = std::to_string(file) + ':' + std::to_string(base) + ':' + (isLocal ? 'l' : 'g') + text;
  const auto found = unitByText.find(key);
  if (found != unitByText.end()) return found->second;
  if (text.size() > limits.scriptBytes || parsedBytes_ + text.size() > limits.parsedBytes) {
    notRead.emplace(files[file].path, "a script in it is too large");
    return kNone;
  }
  units.emplace_back();
  const auto made = static_cast<std::uint32_t>(units.size() - 1);
  unitByText.emplace(key, made);
  Unit& unit = units.back();
  unit.file = file;
  unit.base = base;
  unit.isExact = isExact;
  unit.text = text;
  addUnit(unit, isLocal);
  return made;
}

// ---- modules
// ----------------------------------------------------------------------------------------------------------

std::uint32_t Analysis::findFile(std::uint32_t from, const std::string& target) const {
  std::string path = resolvePath(files[from].path, target);
  auto found = fileByPath.find(path);
  if (found != fileByPath.end()) return found->second;
  if (!target.empty() && target[0] == '/') {
    // An absolute path counts from the application's root, which is a folder of ours.
    for (std::string base = files[from].path; !path.empty();) {
      const std::size_t slash = base.rfind('/');
      if (slash == std::string::npos) break;
      base.resize(slash);
      found = fileByPath.find(base + '/' + path);
      if (found != fileByPath.end()) return found->second;
    }
  }
  return kNone;
}

std::uint32_t Analysis::findModule(std::uint32_t from, const std::string& target) const {
  if (target.empty()) return kNone;
  for (const char* suffix : {"", ".js", ".mjs", "/index.js", ".json", ".ts"}) {
    const std::uint32_t found = findFile(from, target + suffix);
    if (found != kNone) return found;
  }
  if (target[0] == '.' || target[0] == '/') return kNone;
  // A name: a file of that name in a folder around, or in the folders of packages.
  std::string base = files[from].path;
  do {
    const std::size_t slash = base.rfind('/');
    base.resize(slash == std::string::npos ? 0 : slash);
    const std::string folder = base.empty() ? "" : base + '/';
    for (const char* in : {"", "js/", "node_modules/", "lib/", "scripts/", "src/", "app/", "modules/"}) {
      for (const char* suffix : {"", ".js", ".mjs", "/index.js", "/main.js"}) {
        const auto found = fileByPath.find(folder + in + target + suffix);
        if (found != fileByPath.end()) return found->second;
      }
    }
  } while (!base.empty());
  return kNone;
}

ObjectId Analysis::moduleExports(std::uint32_t realm, std::uint32_t file, bool isEs) {
  const auto key = std::make_pair(realm, file);
  const auto found = modules.find(key);
  if (found != modules.end()) return found->second;
  modules[key] = kNobody;
  // What a module loader loads and is no module shares its variables with all.
  const std::string_view text = files[file].bytes;
  const bool isJson = isData(text) && !isScriptPath(files[file].path);
  const std::uint32_t unit =
      isJson ? unitOfText((isEs ? "export default " : "module.exports = ") + std::string(text), file, 0, false, true)
             : unitOfFile(file, isEs || looksLikeModule(text) || looksLikeCommonJs(text));
  if (unit == kNone) return kNobody;
  filesRun.insert(file);
  enterFile(realm, file);
  const Where where{unit, 0};
  const ObjectId module = newObject(Class::plain, where);
  const ObjectId exports = newObject(Class::plain, where);
  solver.add(defineProperty(module, known.exports), exports);
  modules[key] = module;
  acts.emplace_back();
  const auto id = static_cast<ActId>(acts.size() - 1);
  Activation& act = acts.back();
  act.unit = unit;
  act.realm = realm;
  act.module = module;
  act.self = single(exports);
  build(id);
  return module;
}

Result analyse(const std::vector<File>& files, const Database& database, const Limits& limits, const Extras& extras) {
  auto analysis = std::make_unique<Analysis>(files, database, limits, extras);
  Result result = analysis->run();
  if (extras.cache != nullptr) extras.cache->endRun();
  if (extras.isLast) (void)analysis.release();  // a fifth of the time goes into giving back a million small pieces
  return result;
}

}  // namespace flow
