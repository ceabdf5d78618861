// Report: what was recorded, judged and placed. Test: tests/flow/Analysis_test.cpp.

#include <algorithm>
#include <cctype>
#include <tuple>

#include "flow/Analysis.h"

namespace flow {
namespace {

constexpr std::size_t kMaxCode = 160;
constexpr std::size_t kMaxSteps = 40;

std::size_t distance(const std::string& left, const std::string& right) {
  std::vector<std::size_t> row(right.size() + 1);
  for (std::size_t i = 0; i <= right.size(); ++i)
    row[i] = i;
  for (std::size_t i = 1; i <= left.size(); ++i) {
    std::size_t corner = row[0];
    row[0] = i;
    for (std::size_t k = 1; k <= right.size(); ++k) {
      const std::size_t above = row[k];
      row[k] = std::min({row[k] + 1, row[k - 1] + 1, corner + (left[i - 1] == right[k - 1] ? 0 : 1)});
      corner = above;
    }
  }
  return row[right.size()];
}

}  // namespace

struct ReportMaker {
  Analysis& a;
  std::map<std::uint32_t, std::vector<std::size_t>> lineStarts;
  std::map<std::string, std::set<std::string>> documented;
  std::set<std::string> anyDocumented;

  explicit ReportMaker(Analysis& analysis) : a(analysis) {
    for (const auto& [plugin, methods] : a.database.methods) {
      documented[plugin].insert(methods.begin(), methods.end());
      anyDocumented.insert(methods.begin(), methods.end());
    }
  }

  Place placeIn(std::uint32_t file, std::size_t offset) {
    const std::string_view text = a.files[file].bytes;
    auto& starts = lineStarts[file];
    if (starts.empty()) {
      starts.push_back(0);
      for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == '\n') starts.push_back(i + 1);
    }
    offset = std::min(offset, text.size());
    const auto next = std::upper_bound(starts.begin(), starts.end(), offset);
    Place place;
    place.path = a.files[file].path;
    place.line = static_cast<int>(next - starts.begin());
    place.column = 1;
    for (std::size_t i = *std::prev(next); i < offset; ++i)
      if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) ++place.column;
    place.offset = offset;
    return place;
  }

  Place place(const Where& where) {
    if (where.unit >= a.units.size()) return {};
    const Unit& unit = a.units[where.unit];
    return placeIn(unit.file, unit.base + (unit.isExact ? where.offset : 0));
  }

  std::string codeAt(const Where& where) const {
    if (where.unit >= a.units.size()) return {};
    const Unit& unit = a.units[where.unit];
    // The outermost node that begins there and is a call.
    std::string best;
    for (Ast ast = 0; ast < unit.nodes.size(); ++ast) {
      const Node& node = unit.nodes[ast];
      if (node.begin != where.offset || (node.kind != Kind::callExpression && node.kind != Kind::newExpression))
        continue;
      best = unit.text.substr(node.begin, std::min<std::size_t>(node.end - node.begin, kMaxCode));
      break;
    }
    return best;
  }

  std::string advice(const std::string& plugin, const std::string& method) const {
    const auto own = documented.find(plugin);
    if (anyDocumented.count(method)) {
      for (const auto& [other, methods] : documented)
        if (other != plugin && methods.count(method)) return "documented for " + other + ", not for " + plugin;
      return {};
    }
    if (own == documented.end()) return {};
    std::string best;
    std::size_t least = std::max<std::size_t>(2, method.size() / 3) + 1;
    for (const std::string& candidate : own->second) {
      const std::size_t far = distance(method.substr(0, 80), candidate.substr(0, 80));
      if (far < least) {
        least = far;
        best = candidate;
      }
    }
    return best.empty() ? best : "did you mean '" + best + "'?";
  }

  void addStep(std::vector<TraceStep>& trace, const std::string& what, const Place& where) {
    if (where.line == 0 || where.path[0] == '\x01') return;
    if (!trace.empty() && trace.back().place.path == where.path && trace.back().place.offset == where.offset) return;
    trace.push_back({what, where});
  }

  std::vector<TraceStep> traceOf(NodeId node, Value value, ObjectId element) {
    std::vector<TraceStep> trace;
    std::set<NodeId> seen;
    while (node != 0 && trace.size() < kMaxSteps && seen.insert(node).second) {
      const std::string name = a.names.text(a.solver.name(node));
      std::string what;
      switch (a.solver.step(node)) {
        case Step::lookUp:
          what = "look-up '" + name + "'";
          break;
        case Step::variable:
          what = "variable '" + name + "'";
          break;
        case Step::property:
          what = name.empty() ? "property" : "property '" + name + "'";
          break;
        case Step::parameter:
          what = "parameter '" + name + "'";
          break;
        case Step::result:
          what = name.empty() ? "result" : "result of '" + name + "'";
          break;
        default:
          break;
      }
      if (!what.empty()) addStep(trace, what, place(a.solver.where(node)));
      NodeId from = 0;
      for (const Arrival& arrival : a.solver.values(node))
        if (arrival.value == value) from = arrival.from;
      // A method that was read off an element: on with the element.
      if (from != 0 && !a.solver.has(from, value) && isObject(value) && a.object(value).cls == Class::pluginMethod)
        value = a.object(value).a;
      node = from;
    }
    const ElementInfo& info = a.elements[a.object(element).a];
    if (!info.place.path.empty()) {
      const auto file = a.fileByPath.find(info.place.path);
      if (file != a.fileByPath.end()) addStep(trace, "element", placeIn(file->second, info.place.offset));
    }
    std::reverse(trace.begin(), trace.end());
    return trace;
  }

  bool isOwnProperty(ObjectId element, Name method) const {
    const Object& of = a.object(element);
    const auto found = of.index.find(method);
    if (found == of.index.end()) return false;
    const Property& property = of.properties[found->second];
    return property.isWritten && !a.solver.isEmpty(property.node);
  }

  bool isExact(const Where& where) const { return where.unit < a.units.size() && a.units[where.unit].isExact; }

  bool isReached(const Recorded& recorded) const {
    return recorded.site.act == kNobody || a.realms[a.acts[recorded.site.act].realm].isReached;
  }

  using CallKey = std::tuple<std::string, std::size_t, std::string>;
  std::map<CallKey, FoundCall> calls;
  std::map<std::tuple<std::string, std::size_t, std::string>, Open> open;

  // Where code that a text holds is placed: where the file spells the method, if it does so once; else where it is run.
  Place spelled(const Where& where, const std::string& method) {
    Place other = place(where);
    if (where.unit >= a.units.size() || a.units[where.unit].isExact) return other;
    const std::uint32_t file = a.units[where.unit].file;
    const std::string_view text = a.files[file].bytes;
    const auto isPart = [&](std::size_t at) {
      if (at >= text.size()) return false;
      const auto c = static_cast<unsigned char>(text[at]);
      return std::isalnum(c) != 0 || c == '_' || c == '$';
    };
    std::size_t only = std::string::npos;
    for (std::size_t at = text.find(method); at != std::string::npos; at = text.find(method, at + method.size())) {
      if ((at > 0 && isPart(at - 1)) || isPart(at + method.size())) continue;
      if (only != std::string::npos) return other;
      only = at;
    }
    return only == std::string::npos ? other : placeIn(file, only);
  }

  void addCall(const Recorded& recorded, const std::string& plugin, const std::string& method, std::uint8_t level) {
    const Place methodPlace = spelled(recorded.site.method, method);
    // One call is one finding, on the plug-in that is surest.
    const CallKey key{methodPlace.path, methodPlace.offset, method};
    const auto confidence = level == 0 ? Confidence::certain : level == 1 ? Confidence::likely : Confidence::possible;
    const auto judgement = documented[plugin].count(method) ? Judgement::documented
                           : anyDocumented.count(method)    ? Judgement::documentedForOther
                                                            : Judgement::undocumented;
    // Where a plug-in that has the method comes, others came along.
    const auto known = calls.find(key);
    if (known != calls.end()) {
      const bool isSurer = judgement != known->second.judgement ? judgement == Judgement::documented
                                                                : confidence < known->second.confidence;
      if (!isSurer) return;
      calls.erase(known);
    }
    FoundCall call;
    call.plugin = plugin;
    call.method = method;
    call.place = isExact(recorded.site.where) ? place(recorded.site.where) : methodPlace;
    call.methodPlace = methodPlace;
    call.code = codeAt(recorded.site.where);
    call.judgement = judgement;
    call.confidence = confidence;
    call.isReached = isReached(recorded);
    if (call.judgement != Judgement::documented || a.extras.hasDocumentedTraces) {
      call.trace = traceOf(recorded.from, recorded.value, recorded.element);
      addStep(call.trace, "call of '" + method + "'", methodPlace);
    }
    if (call.judgement != Judgement::documented) call.advice = advice(plugin, method);
    calls.emplace(key, std::move(call));
  }

  void addOpen(const Recorded& recorded, const std::string& plugin, const std::string& reason, bool isOnPlugin) {
    Open made;
    made.plugin = plugin;
    made.place = place(recorded.site.where);
    made.reason = reason;
    made.code = codeAt(recorded.site.where);
    made.isOnPlugin = isOnPlugin;
    open.emplace(std::make_tuple(made.place.path, made.place.offset, reason), made);
  }

  NodeId origin(NodeId node, Value value) const {
    for (const Arrival& arrival : a.solver.values(node))
      if (arrival.value == value) return arrival.from;
    return 0;
  }

  // Whether `other` has a method of that name, of its own or built in.
  bool hasMethod(Value other, Name method) const {
    if (!isObject(other) || a.objects[other].cls == Class::element) return false;
    const auto read = a.objects[other].reads.find(method);
    if (read == a.objects[other].reads.end()) return false;
    const auto& values = a.solver.values(read->second);
    return std::any_of(values.begin(), values.end(), [&](const Arrival& value) {
      return isObject(value.value) && a.objects[value.value].cls != Class::pluginMethod;
    });
  }

  // Whether two values that are in one node met where the graph is coarser than the program: in a function, a list or a
  // table that many use, and not in a variable or property that the program gives the one or the other.
  bool isMixed(NodeId node, Value one, Value other) const {
    for (std::size_t i = 0; i < kMaxSteps; ++i) {
      const NodeId from = origin(node, one);
      if (from == 0 || from != origin(node, other) || !a.solver.has(from, one) || !a.solver.has(from, other)) break;
      node = from;
    }
    switch (a.solver.step(node)) {
      case Step::result:
        return true;
      case Step::property: {
        // Of a list; of all modules that one loader makes; of all that one iterator gives.
        const Name name = a.solver.name(node);
        return name == 0 || name == a.known.exports || name == a.known.value;
      }
      case Step::none:
        return a.solver.name(node) != 0;
      default:
        return false;
    }
  }

  // Where the element was whose method is called: there, or where the method was read off it. 0 if that is not known.
  NodeId elementNode(const Recorded& recorded) const {
    NodeId node = recorded.from;
    if (recorded.value == recorded.element) return node;
    for (std::size_t i = 0; i < kMaxSteps && node != 0; ++i) {
      node = origin(node, recorded.value);
      if (node != 0 && !a.solver.has(node, recorded.value)) break;
    }
    return node != 0 && a.solver.has(node, recorded.element) ? node : 0;
  }

  // Where an element was before it was taken from others one by one, which says nothing of where it belongs.
  NodeId togetherNode(NodeId node, Value element) const {
    NodeId at = node;
    for (std::size_t i = 0; i < kMaxSteps && at != 0; ++i) {
      const NodeId from = origin(at, element);
      if (a.takenApart.count(at) != 0) return from != 0 ? from : node;
      at = from;
    }
    return node;
  }

  // A call that another object explains, which came the same way by accident.
  bool isExplained(const Recorded& recorded) const {
    const NodeId last = elementNode(recorded);
    if (last == 0) return false;
    const NodeId node = togetherNode(last, recorded.element);
    const auto& values = a.solver.values(node);
    return std::any_of(values.begin(), values.end(), [&](const Arrival& other) {
      return hasMethod(other.value, recorded.method) && isMixed(node, recorded.element, other.value);
    });
  }

  // What the language itself calls: on what is iterated or awaited, which this may be by accident.
  static bool isProtocol(const std::string& method) {
    static const std::set<std::string> kNames{"next", "return", "throw", "then", "catch", "finally"};
    return kNames.count(method) != 0;
  }

  // Whether a name may be another than the texts that came to it.
  bool isOpen(NodeId key) const {
    if (key == 0 || a.solver.has(key, kUnknown)) return true;
    const auto& values = a.solver.values(key);
    return std::none_of(values.begin(), values.end(), [](const Arrival& value) { return isText(value.value); });
  }

  bool hasSeveralTexts(NodeId node) const {
    const auto& values = a.solver.values(node);
    return std::count_if(values.begin(), values.end(), [](const Arrival& value) { return isText(value.value); }) > 1;
  }

  // Whether a text was put together of parts that are several texts each. Which of them go together is not known.
  bool isOfAnyParts(NodeId node, Value text, std::size_t depth = 0) const {
    for (std::size_t i = 0; i < kMaxSteps && node != 0; ++i) {
      const auto join = a.joins.find(node);
      if (join == a.joins.end()) {
        node = origin(node, text);
        continue;
      }
      const auto [left, right] = join->second;
      if (hasSeveralTexts(left) && hasSeveralTexts(right)) return true;
      if (depth > kMaxSteps) return false;
      for (const NodeId part : {left, right})
        if (!a.solver.isEmpty(part) && isOfAnyParts(part, a.solver.values(part)[0].value, depth + 1)) return true;
      return false;
    }
    return false;
  }

  void take(const Recorded& recorded) {
    const ElementInfo& info = a.elements[a.object(recorded.element).a];
    for (const std::string& plugin : info.plugins) {
      if (!recorded.isNameKnown) {
        const NodeId key = recorded.args->nodes[0];
        if (isOpen(key)) addOpen(recorded, plugin, "the name of the method is not known", true);
        continue;
      }
      const std::string& method = a.names.text(recorded.method);
      if (method.find(kHole) != std::string::npos) {
        addOpen(recorded, plugin, "the name of the method is not known", true);
        continue;
      }
      if (isOwnProperty(recorded.element, recorded.method)) continue;
      if (method == "Execute") {
        takeExecute(recorded, plugin);
        continue;
      }
      const bool isOfAny = recorded.key != 0 && isOfAnyParts(recorded.key, textValue(recorded.method));
      if (isOfAny) addOpen(recorded, plugin, "the name of the method is not known", true);
      const bool isUnsure = isOfAny || isProtocol(method) || isExplained(recorded);
      addCall(recorded, plugin, method, isUnsure ? 2 : recorded.level);
    }
  }

  // The extension call: its first text names the method.
  void takeExecute(const Recorded& recorded, const std::string& plugin) {
    const NodeId first = recorded.first;
    bool isKnown = false;
    for (const Arrival& value : first ? a.solver.values(first) : std::vector<Arrival>()) {
      if (!isText(value.value) || isNumber(value.value)) continue;
      std::string name = a.names.text(nameIn(value.value));
      if (name.find(kHole) != std::string::npos) continue;
      name.resize(std::min(name.size(),
                           name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_ ")));
      name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
      if (name.empty()) continue;
      isKnown = true;
      addCall(recorded, plugin, name, std::max(recorded.level, value.level));
    }
    if (!isKnown || a.solver.has(first, kUnknown))
      addOpen(recorded, plugin, "the name that is passed to Execute is not known", true);
  }

  bool holdsPlugin(NodeId node, std::string& plugin) const {
    for (const Arrival& value : node ? a.solver.values(node) : std::vector<Arrival>()) {
      if (!isObject(value.value) || a.objects[value.value].cls != Class::element) continue;
      const ElementInfo& info = a.elements[a.objects[value.value].a];
      if (info.plugins.empty()) continue;
      plugin = *info.plugins.begin();
      return true;
    }
    return false;
  }

  // A plug-in is given to a function that nobody knows.
  void takeHanded(const Handed& handed) {
    const auto& callees = handed.callee ? a.solver.values(handed.callee) : std::vector<Arrival>();
    if (std::any_of(callees.begin(), callees.end(), [](const Arrival& value) { return isObject(value.value); })) return;
    for (const NodeId node : handed.args->nodes) {
      Recorded recorded;
      recorded.site = handed.site;
      std::string plugin;
      if (!holdsPlugin(node, plugin)) continue;
      return addOpen(recorded, plugin, "the plug-in is given to code that is not known", false);
    }
  }

  void takeText(const Site& site, NodeId text) {
    if (!isOpen(text)) return;
    Recorded recorded;
    recorded.site = a.placeOutsideModels(site);
    addOpen(recorded, "", "a text that is not constant is run as script", false);
  }

  // The global variables that script files declare.
  std::set<Name> declaredGlobals() const {
    std::set<Name> names;
    for (const Unit& unit : a.units) {
      const ReadFile& file = a.files[unit.file];
      if (unit.isModel || unit.isModule || unit.base != 0 || unit.defs.empty() || looksLikePage(file.path, file.bytes))
        continue;
      for (const Variable& variable : unit.defs.front().variables)
        if (variable.isGlobal) names.insert(variable.name);
    }
    return names;
  }

  void addElements() {
    const std::set<Name> declared = declaredGlobals();
    for (const ElementInfo& info : a.elements) {
      Element element;
      const auto file = a.fileByPath.find(info.place.path);
      if (file != a.fileByPath.end()) element.place = placeIn(file->second, info.place.offset);
      for (const std::string& plugin : info.plugins) {
        element.plugin = plugin;
        if (info.ids.empty()) a.result.elements.push_back(element);
        for (const Name id : info.ids) {
          a.result.elements.push_back(element);
          a.result.elements.back().id = a.names.text(id);
          a.result.elements.back().isDeclared = declared.count(id) != 0;
        }
      }
    }
  }

  void run() {
    for (const Handed& handed : a.handed)
      takeHanded(handed);
    for (const auto& [site, text] : a.textsRun)
      takeText(site, text);
    for (std::size_t i = 0; i < a.recorded.size(); ++i)
      take(a.recorded[i]);
    a.solver.run();
    for (auto& [key, call] : calls)
      a.result.calls.push_back(std::move(call));
    std::stable_sort(a.result.calls.begin(), a.result.calls.end(), [](const FoundCall& x, const FoundCall& y) {
      return std::tie(x.place.path, x.place.line, x.place.column, x.method, x.plugin) <
             std::tie(y.place.path, y.place.line, y.place.column, y.method, y.plugin);
    });
    for (auto& [key, made] : open)
      a.result.open.push_back(std::move(made));
    addElements();
  }
};

void makeReport(Analysis& analysis) {
  ReportMaker(analysis).run();
}

}  // namespace flow
