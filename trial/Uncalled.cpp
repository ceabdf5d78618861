// In three steps: the coverage, the texts of what never ran, and the lists of what is in memory. A step ends when all
// its questions are answered; an error is an answer that says nothing. Test: with a real Chromium, tests/groups/trial.

#include "trial/Uncalled.h"

#include <algorithm>
#include <utility>

namespace trial {

namespace {

constexpr std::size_t kMaxSource = std::size_t{4} << 20;    // bytes of a file
constexpr std::size_t kMaxSources = std::size_t{16} << 20;  // of all that a page is sent
constexpr std::size_t kMaxRanges = 5000;                    // of a script
constexpr const char* kGroup = "uncalled";                  // of objects that the browser keeps for us

std::string objectIn(const Json& result, const char* key) {
  const auto found = result.find(key);
  if (found == result.end() || !found->is_object()) return {};
  const auto id = found->find("objectId");
  return id != found->end() && id->is_string() ? id->get<std::string>() : std::string();
}

Json callOf(const Driver& driver, const Json& arguments) {
  return {{"objectId", driver.object},
          {"functionDeclaration", "function (command, first, second) { return this(command, first, second); }"},
          {"arguments", arguments},
          {"silent", true},
          {"objectGroup", kGroup}};
}

}  // namespace

void Uncalled::prepare(const std::string& session, std::vector<Driver> drivers, std::function<void(bool)> done) {
  ++generation_;
  open_ = 0;
  drivers_ = std::move(drivers);
  done_ = std::move(done);
  next_ = &Uncalled::wantScripts;
  ask(session, "Profiler.takePreciseCoverage", Json::object(), [this](const Json& result) {
    isMore_ = coverage_.add(result.value("result", Json()), places_) > 0 || isFirst_;
    isFirst_ = false;
  });
}

void Uncalled::ask(const std::string& session, const std::string& method, const Json& params,
                   std::function<void(const Json&)> answer) {
  ++open_;
  protocol_.send(session, method, params,
                 [this, generation = generation_, answer = std::move(answer)](const Json& result, const std::string&) {
                   if (generation != generation_) return;
                   if (result.is_object()) answer(result);
                   if (--open_ > 0) return;
                   if (next_ != nullptr) return (this->*next_)();
                   done_(isMore_);
                 });
}

void Uncalled::wantScripts() {
  next_ = &Uncalled::lookIntoMemory;
  if (!isMore_) return done_(false);
  std::size_t bytes = 0;
  for (const auto& [id, script] : places_.scripts()) {
    const File* file = places_.fileOf(script);
    if (file == nullptr || isLibrary(file->path) || file->bytes.size() > kMaxSource) continue;
    const auto driver = std::find_if(drivers_.begin(), drivers_.end(),
                                     [context = script.context](const Driver& one) { return one.context == context; });
    Json ranges = Json::array();
    for (const auto& [begin, end] : coverage_.notRun(script, file->path)) {
      if (ranges.size() >= 2 * kMaxRanges) break;
      ranges.push_back(begin);
      ranges.push_back(end);
    }
    if (driver == drivers_.end() || ranges.empty() || (bytes += file->bytes.size()) > kMaxSources) continue;
    ask(driver->session, "Debugger.getScriptSource", {{"scriptId", id}},
        [this, driver = *driver, ranges = std::move(ranges)](const Json& result) {
          const auto source = result.find("scriptSource");
          if (source != result.end() && source->is_string()) want(driver, source->get<std::string>(), ranges);
        });
  }
  if (open_ == 0) done_(false);
}

void Uncalled::want(const Driver& driver, const std::string& source, const Json& ranges) {
  const Json arguments = Json::array({{{"value", "want"}}, {{"value", source}}, {{"value", ranges}}});
  ask(driver.session, "Runtime.callFunctionOn", callOf(driver, arguments), [](const Json&) {});
}

void Uncalled::lookIntoMemory() {
  next_ = nullptr;
  for (const Driver& driver : drivers_) {
    list(driver, "function prototype", [this, driver](const std::string& functions) {
      list(driver, "object prototype", [this, driver, functions](const std::string& objects) {
        const Json arguments =
            Json::array({{{"value", "in memory"}}, {{"objectId", functions}}, {{"objectId", objects}}});
        ask(driver.session, "Runtime.callFunctionOn", callOf(driver, arguments), [this, driver](const Json&) {
          ask(driver.session, "Runtime.releaseObjectGroup", {{"objectGroup", kGroup}}, [](const Json&) {});
        });
      });
    });
  }
}

// The objects that inherit from a prototype, which the driver knows by that name.
void Uncalled::list(const Driver& driver, const std::string& name, std::function<void(const std::string&)> listed) {
  ask(driver.session, "Runtime.callFunctionOn", callOf(driver, Json::array({{{"value", name}}})),
      [this, driver, listed = std::move(listed)](const Json& result) {
        const std::string prototype = objectIn(result, "result");
        if (prototype.empty()) return;
        ask(driver.session, "Runtime.queryObjects", {{"prototypeObjectId", prototype}, {"objectGroup", kGroup}},
            [listed](const Json& found) {
              const std::string objects = objectIn(found, "objects");
              if (!objects.empty()) listed(objects);
            });
      });
}

}  // namespace trial
