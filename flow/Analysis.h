#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "flow/Flow.h"
#include "flow/Guards.h"
#include "flow/Heap.h"
#include "flow/Pages.h"
#include "flow/Relevance.h"
#include "flow/Scopes.h"
#include "flow/Solver.h"

// Analysis: one application's constraint graph, and what the models need to add to it.
//
// Functions are read once for each way in which they are called, as far as the budget goes; each reading
// is an Activation with nodes of its own for its variables. What is read becomes nodes and edges (body/), calls are
// linked as functions come to where they are called (Calls.cpp), and what the browser and well-known libraries do
// stands in tables of natives (models/).

namespace flow {

// Stands in markup for what is not known: where a name has it, that is not known either.
constexpr const char* kHole = "__tarvoHole";

// A function value: code and the activation around it.
struct Closure {
  std::uint32_t unit = 0;
  DefIndex def = 0;
  ActId env = kNobody;
  ObjectId home = kNobody;           // of a method: where `super` starts
  std::uint32_t klass = kNone;       // of a class: entry in `classes`
  ObjectId owner = kNobody;          // the object it was first stored in
  std::uint32_t constructs = kNone;  // of a constructor: entry in `classes`
  bool isEntered = false;
};

struct ClassField {
  NodeId key = 0;
  Name name = 0;
  DefIndex def = kNone;
};

struct ClassInfo {
  NodeId heritage = 0;
  ObjectId constructor = kNobody;  // its method, if it has one
  std::vector<ClassField> fields;
  std::uint32_t unit = 0;
  ActId env = kNobody;
};

struct Activation {
  std::uint32_t unit = 0;
  DefIndex def = 0;
  ActId env = kNobody;
  ActId caller = kNobody;
  Where calledAt;  // the call that it was made for, and
  Where calledAtMethod;
  ActId calledIn = kNobody;  // the activation that call is in
  ObjectId closure = kNobody;
  std::uint32_t realm = 0;
  std::uint32_t depth = 0;
  NodeId self = 0;    // this
  NodeId result = 0;  // what it returns
  NodeId yielded = 0;
  NodeId sent = 0;  // what next() is given
  NodeId argumentsObject = 0;
  ObjectId argumentsArray = kNobody;
  ObjectId module = kNobody;  // of a module: its `module` object
  std::vector<NodeId> parameters;
  std::vector<NodeId> variables;
  NodeId scope = 0;         // of a template: the object whose properties are names in it
  bool isInstance = false;  // called with `new`: `this` is an instance of it
  int argumentCount = -1;   // where all calls that it is read for have as many
  // Of one round of a loop over names or values: the variable that the loop writes, which is declared further out.
  std::uint64_t loopVariable = 0;
  NodeId loopValue = 0;
};

struct Arguments {
  std::vector<NodeId> nodes;
  std::vector<bool> isSpread;
};
using Args = std::shared_ptr<Arguments>;

// A call in one activation.
struct Site {
  Where where;   // of the call
  Where method;  // of the method's name
  ActId act = kNobody;
  std::uint32_t salt = 0;  // tells calls of one place from each other: the rounds of a loop
};

struct BoundCall {
  NodeId target = 0;
  NodeId self = 0;
  Args args;
};

struct CallInfo {
  Site site;
  NodeId self = 0;
  Value selfValue = kUnknown;  // where the receiver is one value
  Args args;
  NodeId result = 0;
  bool isNew = false;
  Value callee = kUnknown;
};

// An element of a page, or one that script makes.
struct ElementInfo {
  std::string tag;
  std::uint32_t realm = 0;
  std::uint32_t page = kNone;     // the page's number, and
  std::uint32_t index = kNone;    // its number there
  std::set<std::string> plugins;  // class identifiers
  std::set<Name> ids;
  Place place;
};

// A page's world.
struct Realm {
  std::uint32_t page = kNone;
  ObjectId window = 0;
  ObjectId document = 0;
  std::unordered_map<Name, NodeId> byId;
  std::unordered_map<Name, NodeId> events;  // details of events that are sent
  std::vector<ObjectId> elements;           // by number in the page
  std::vector<ObjectId> plugins;            // object and embed elements in order
  NodeId embeds = 0;
  ObjectId embedsList = kNobody;
  ObjectId body = kNobody;
  ObjectId storage = kNobody;
  ObjectId location = kNobody;
  NodeId messages = 0;
  bool isReached = true;
  bool hasFrames = false;
  bool hasToDoWithPlugins = false;  // one is in it, or a file that names one
};

// A script that a page loads.
struct PageScript {
  std::uint32_t realm = 0;
  std::uint32_t file = 0;
};

// What a module loader was configured with.
struct ModuleSettings {
  std::map<std::string, std::string> aliases;  // name, or its beginning, to path or name
  std::set<std::string> bases;                 // folders that names count from
};

struct Recorded {
  Site site;
  ObjectId element = 0;
  Name method = 0;
  NodeId from = 0;  // where the element, or its method, came to
  Value value = 0;  // which of the two
  std::uint8_t level = 0;
  Args args;
  bool isNameKnown = true;
  NodeId first = 0;  // argument, where it names the method
  NodeId key = 0;    // of what stands in brackets
};

// A call with arguments: of a function, or of a method of what `callee` holds.
struct Handed {
  Site site;
  NodeId callee = 0;
  Args args;
};

// A file as it is read: as UTF-8, and of a movie within what it stands in.
struct ReadFile {
  std::string path;
  std::string_view bytes;  // of the file, of one of `texts`, or of a model
  bool isMovie = false;
};

class Analysis {
 public:
  using Native = void (*)(Analysis&, const CallInfo&);

  // `given` must outlive this.
  Analysis(const std::vector<File>& given, const Database& database, const Limits& limits, const Extras& extras);
  Result run();

  // ---- Units: scripts, parsed once --------------------------------------------------------------------------------

  // The script of a file, or kNone where it is not analysed.
  std::uint32_t unitOfFile(std::uint32_t file, bool isModule);
  std::uint32_t unitOfText(const std::string& text, std::uint32_t file, std::uint32_t base, bool isExact, bool isLocal);

  // ---- Objects (Objects.cpp) --------------------------------------------------------------------------------------

  ObjectId newObject(Class cls, Where where, std::uint32_t a = 0, std::uint32_t b = 0);
  Object& object(ObjectId id) { return objects[id]; }
  Property& property(ObjectId id, Name name);
  NodeId defineProperty(ObjectId id, Name name, bool isDefinite = false);  // its node, to be written to
  NodeId readNode(Value value, Name name);
  Value partOfText(Name whole, const std::string& name);
  NodeId allNode(ObjectId id);  // every value in it
  NodeId starNode(ObjectId id);
  NodeId protoNode(ObjectId id);
  void watch(ObjectId id, std::function<void(Name, NodeId)> watcher);
  NodeId single(Value value, Where where = {});

  // What reading and writing do, for each object that comes to a node. `key` may be 0: then `name` is it.
  void read(Where where, ActId act, NodeId object, NodeId key, Name name, NodeId result);
  void readValue(Where where, ActId act, Value value, NodeId from, std::uint8_t level, Name name, NodeId result);
  void write(Where where, ActId act, NodeId object, NodeId key, Name name, NodeId value);
  void writeValue(Where where, ActId act, Value object, Name name, NodeId value, std::uint8_t level);
  void readDom(ObjectId id, Name name, NodeId target);  // what documents, windows and elements have
  void writeUnknown(ObjectId of, NodeId value, std::uint8_t level);
  void readElement(ObjectId id, Name name, NodeId target);
  void addTargets(ObjectId heard, NodeId target);
  void readUnknown(Value value, NodeId result);
  ObjectId nativeObject(std::string_view name);
  bool hasNative(const std::string& name) const;
  NodeId elementsOf(Where where, NodeId list);  // of arrays, sets, iterators
  void elementsOfValue(Where where, Value list, NodeId result);
  ObjectId arrayOf(Where where, const std::vector<NodeId>& nodes);
  void moveElements(ObjectId list);  // from now on, any of them may stand at each place

  // ---- Calls (Calls.cpp) ------------------------------------------------------------------------------------------

  void call(const Site& site, NodeId callee, NodeId self, const Args& args, NodeId result, bool isNew = false);
  void mapUnknown(const Site& site, const Args& args, NodeId target);
  void callMember(const Site& site, NodeId object, NodeId key, Name name, const Args& args, NodeId result);
  void callValue(const Site& site, Value callee, NodeId self, Value selfValue, const Args& args, NodeId result,
                 bool isNew, NodeId from, std::uint8_t level);
  // Calls `then` once values have come to rest, if none came to `node` by then.
  void whenEmpty(NodeId node, std::function<void()> then) { late.emplace_back(node, std::move(then)); }
  NodeId variableNode(ActId act, std::uint32_t slot);
  void assignProperties(Where where, ActId act, NodeId from, Value to);
  NodeId concatenate(Where where, NodeId left, NodeId right);
  NodeId withHoles(Where where, NodeId node);  // its texts; kHole stands for what is not known
  static bool isMarkup(std::string_view text);
  Value functionText(Value function);  // its beginning, or kUnknown
  NodeId awaited(Where where, NodeId value);
  void throwRejected(NodeId promise, NodeId thrown);
  NodeId argument(const Args& args, std::size_t index, Where where);
  Args makeArgs(std::vector<NodeId> nodes) const;
  void callFunction(const Site& site, ObjectId function, NodeId self, Value selfValue, const Args& args, NodeId result);
  std::uint32_t recursionOf(const Site& site, const Closure& closure) const;  // calls of it that the call is in
  std::uint32_t partedParameter(std::uint32_t unit, DefIndex def);
  void construct(const Site& site, ObjectId function, NodeId self, Value selfValue, const Args& args, NodeId result);
  ActId enter(const Site& site, ObjectId function, Value selfValue, const Args& args);
  void bind(ActId act, NodeId self, const Args& args, Where where);
  void record(const Site& site, ObjectId element, Name method, NodeId from, Value value, std::uint8_t level,
              const Args& args, NodeId key = 0);
  void invoke(const CallInfo& info, NodeId callback, NodeId self, std::vector<NodeId> nodes, NodeId result = 0,
              std::uint32_t salt = 0);

  // ---- Guards (Guards.cpp) ----------------------------------------------------------------------------------------

  // Those values of a node that pass a test; those objects whose property does, or that do not have it.
  NodeId passing(Where where, NodeId node, const Test& test);
  NodeId passingBy(Where where, NodeId node, Name property, const Test& test);
  // A node that holds something once code behind a test of `node` may run. Where the value was read from a property of
  // what `base` holds, objects that do not have it are looked at; `base` may be 0.
  NodeId guard(Where where, NodeId node, NodeId base, Name property, const Test& test);
  // What `node` holds, once `open` holds something.
  NodeId guarded(Where where, NodeId open, NodeId node);

  // Runs code: the script of a unit in a realm.
  ActId runScript(std::uint32_t unit, std::uint32_t realm, NodeId self, NodeId scope = 0);
  void build(ActId act);  // reads the body (body/)
  ObjectId closureObject(std::uint32_t unit, DefIndex def, ActId env, Where where);

  // ---- Modules ----------------------------------------------------------------------------------------------------

  // The exports object of a module, which is run if it was not yet; kNobody if it is not there.
  ObjectId moduleExports(std::uint32_t realm, std::uint32_t file, bool isEs);
  std::uint32_t findFile(std::uint32_t from, const std::string& target) const;
  std::uint32_t findModule(std::uint32_t from, const std::string& target) const;

  // ---- Pages ------------------------------------------------------------------------------------------------------

  std::uint32_t newRealm(std::uint32_t page);
  void loadPage(std::uint32_t page);
  void loadScript(std::uint32_t realm, const PageElement& element);
  void loadScriptFile(std::uint32_t realm, std::uint32_t file, bool isModule);
  void enterFile(std::uint32_t realm, std::uint32_t file);  // what it says comes into that world
  void loadMainModule(std::uint32_t realm, const std::string& name);
  void loadAttribute(std::uint32_t realm, std::uint32_t index, const PageAttribute& attribute);
  bool loadScriptUrl(std::uint32_t realm, const PageAttribute& attribute);
  void loadFrame(ObjectId element, const std::string& source, const std::string& name);
  void linkTopPages();
  void runInPage(std::uint32_t realm, const std::string& code, std::uint32_t base, bool isExact, bool isLocal,
                 NodeId self);
  void runModuleInPage(std::uint32_t realm, const PageElement& element);
  ObjectId elementObject(std::uint32_t realm, std::uint32_t index);
  ObjectId makeElement(std::uint32_t realm, const std::string& tag, Where where);
  NodeId idNode(std::uint32_t realm, Name id);
  void addMarkup(std::uint32_t realm, const std::string& markup, Where where, ObjectId around = kNobody);
  void setAttribute(Value element, const std::string& attribute, const std::string& value, Where where);
  void addHandlerText(std::uint32_t realm, const std::string& text, Where where, NodeId self);
  void addPlugin(ElementInfo& element, const std::string& text);
  bool isAboutPlugins(std::uint32_t file);  // whether it names one, or an id of one
  std::uint32_t realmOf(ActId act) const { return act == kNobody ? 0 : acts[act].realm; }
  void runText(const std::string& text, const Where& where, std::uint32_t realm, NodeId result, ActId act);
  void loadModels(std::uint32_t realm, std::string_view of);  // those of the libraries that a text has
  Site placeOutsideModels(Site site) const;
  bool isSpelledInModel(const Site& site, const std::string& method) const;
  bool isElementMember(const std::string& name) const;

  // ---- State ------------------------------------------------------------------------------------------------------

  Names names;
  Solver solver;
  std::deque<Object> objects;
  std::vector<Closure> closures;
  std::vector<ClassInfo> classes;
  std::deque<Activation> acts;
  std::vector<BoundCall> bounds;
  std::deque<ElementInfo> elements;
  std::deque<Realm> realms;
  std::deque<Unit> units;
  std::vector<Page> pages;
  std::deque<ReadFile> files;     // by path; models come as further ones
  std::deque<std::string> texts;  // of files that are not read as they are
  std::vector<Recorded> recorded;
  std::vector<Handed> handed;
  std::vector<std::pair<Site, NodeId>> textsRun;                // by eval and its like
  std::unordered_map<NodeId, std::pair<NodeId, NodeId>> joins;  // texts that are put together of two
  std::map<std::string, Native> natives;
  std::vector<Native> nativeTable;
  std::unordered_map<std::string, ObjectId> nativeObjects;
  std::unordered_map<Value, NodeId> singles;
  std::unordered_set<NodeId> takenApart;  // nodes that have some of the values of one that stands for many
  std::vector<std::pair<NodeId, std::function<void()>>> late;
  bool areGuardsOpen = false;  // in the end, so that each is heard of
  std::unordered_map<std::uint64_t, ActId> actByKey;
  std::unordered_map<std::uint64_t, ObjectId> objectByKey;
  std::unordered_map<std::uint64_t, ObjectId> methodByKey;
  std::unordered_set<std::uint64_t> inheritedBy;        // calls of constructors that classes have from others
  std::set<std::pair<ObjectId, ObjectId>> instancesOf;  // objects with the functions that `new` made them with
  std::vector<ObjectId> closureObjects;                 // functions, in the order in which they came
  std::map<std::pair<std::uint32_t, std::uint32_t>, ObjectId> modules;
  std::map<std::pair<std::uint32_t, Name>, NodeId> namedModules;  // their exports, by realm and name
  std::set<std::pair<std::uint32_t, std::string>> modelsLoaded;
  ModuleSettings moduleSettings;
  std::set<std::uint32_t> filesRun;
  std::map<std::uint32_t, std::uint32_t> unitByFile;
  std::map<std::string, std::uint32_t> unitByText;
  std::map<std::string, std::uint32_t> fileByPath;
  std::unordered_map<std::uint64_t, std::uint32_t> actsOfDef;
  std::unordered_map<std::uint64_t, std::uint32_t> partedParameters;  // by function
  std::vector<std::pair<ObjectId, Name>> globalReads;                 // of windows
  std::set<std::pair<std::string, std::string>> notRead;
  std::set<std::uint32_t> libraryFiles;
  std::vector<std::string> pluginIds;             // of the pages' elements
  std::map<std::uint32_t, Relevance> relevances;  // of script files
  std::map<std::uint32_t, bool> aboutPlugins;     // files that name one, or do not
  std::vector<PageScript> waitingScripts;         // of worlds that may never have to do with plug-ins
  Result result;
  Database database;
  Limits limits;
  Extras extras;

  ObjectId arrayProto = 0;
  ObjectId functionProto = 0;
  ObjectId stringProto = 0;
  ObjectId objectProto = 0;

  struct Known {
    Name prototype, constructor, length, value, done, next, iterator, then, get, set, call, apply, bind, id, star,
        resolved, defaultName, exports, arguments, keys;
  } known;

 private:
  bool isKnownBy(Value of, Name property, const Test& test) const;
  bool isMadeWith(ObjectId of, bool isElement, Name name) const;
  void passValue(const Test& test, const Arrival& value, NodeId node, NodeId to);
  void passInstance(bool holds, NodeId other, const Arrival& value, const std::function<void()>& pass);
  void passListed(const Test& test, const Arrival& value, const std::function<void()>& pass);
  void prepare();
  void loadFiles();
  void decodeFile(ReadFile& file);
  void runPages();
  void runMovies();
  void runMovie(std::uint32_t file, std::uint32_t realm);
  void chooseScripts();
  void runUnreached();
  bool enterUncalled();
  bool enterUncalledBounds();
  bool linkGlobals();
  bool linkForeignIds();
  bool runWaitingScripts();
  void finish();
  void addUnit(Unit& unit, bool isModule);
  std::size_t parsedBytes_ = 0;
  std::uint64_t parseWork_ = 0;
  std::uint64_t keptTokens_ = 0;
  bool haveMoviesRun_ = false;
  std::size_t boundsEntered_ = 0;
  friend struct ReportMaker;
};

void addFunctionModels(Analysis& analysis);
void addObjectModels(Analysis& analysis);
void addArrayModels(Analysis& analysis);
void addCollectionModels(Analysis& analysis);
void addPromiseModels(Analysis& analysis);
void addTextModels(Analysis& analysis);
void addPatternModels(Analysis& analysis);
void addMarkupModels(Analysis& analysis);
void addDomModels(Analysis& analysis);
void addModuleModels(Analysis& analysis);
void addTemplateModels(Analysis& analysis);
void addLibraryModels(Analysis& analysis);
void makeReport(Analysis& analysis);

}  // namespace flow
