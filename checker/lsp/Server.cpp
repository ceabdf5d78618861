// Test: tests/checker/Lsp_test.cpp; with a real client tests/groups/editor.

#include "checker/lsp/Server.h"

#include <algorithm>

#include "checker/lsp/MessageReader.h"
#include "checker/lsp/Placeholder.h"
#include "checker/report/Characters.h"

namespace {

using Json = nlohmann::json;

// Numbers of the protocol.
constexpr int kParseError = -32700;
constexpr int kInvalidRequest = -32600;
constexpr int kMethodNotFound = -32601;
constexpr int kInvalidParams = -32602;
constexpr int kNotInitialized = -32002;
constexpr int kContentModified = -32801;
constexpr int kRequestCancelled = -32800;
constexpr int kErrorMessage = 1;
constexpr int kInfoMessage = 3;
constexpr int kWarning = 2;
constexpr int kMethodItem = 2;
constexpr int kIncremental = 2;

// A key that is pressed is often followed by another.
constexpr auto kTyping = std::chrono::milliseconds(50);
constexpr auto kAtOnce = std::chrono::milliseconds(0);

constexpr std::size_t kMaxWaiting = 100;       // requests
constexpr std::size_t kMaxDiagnostics = 1000;  // of a file

constexpr const char* kSource = "tarvo-check";
constexpr const char* kWithoutFlow =
    "tarvo-check was built without flow analysis: it shows what the engine finds, and neither completes methods nor "
    "knows where a variable comes from.";

Json jsonOf(const TextPosition& position) {
  return {{"line", position.line}, {"character", position.character}};
}

Json jsonOf(const TextRange& range) {
  return {{"start", jsonOf(range.start)}, {"end", jsonOf(range.end)}};
}

TextPosition positionIn(const Json& json) {
  return {json.at("line").get<int>(), json.at("character").get<int>()};
}

std::string uriIn(const Json& params) {
  return params.at("textDocument").at("uri").get<std::string>();
}

bool isWithin(const std::string& path, const std::string& folder) {
  return path == folder || folder == "/" || path.compare(0, folder.size() + 1, folder + '/') == 0;
}

// A file in a package is shown at the package.
std::string fileOf(const std::string& path) {
  return path.substr(0, path.find("!/"));
}

// A call whose place is in a file that can be opened.
bool isIn(const LookCall& call, const std::string& path) {
  return call.place.path == path;
}

}  // namespace

// ---- messages ------------------------------------------------------------------------------------------------------

const std::map<std::string, Server::Handler>& Server::handlers() {
  static const std::map<std::string, Handler> kHandlers{
      {"initialize", &Server::initialize},
      {"initialized", &Server::initialized},
      {"shutdown", &Server::shutDown},
      {"exit", &Server::exit},
      {"$/cancelRequest", &Server::cancel},
      {"textDocument/didOpen", &Server::openDocument},
      {"textDocument/didChange", &Server::changeDocument},
      {"textDocument/didClose", &Server::closeDocument},
      {"textDocument/didSave", &Server::ignore},
      {"textDocument/hover", &Server::hover},
      {"textDocument/definition", &Server::definition},
      {"textDocument/completion", &Server::completion},
      {"textDocument/codeAction", &Server::codeAction},
      {"workspace/didChangeWatchedFiles", &Server::filesChanged},
      {"workspace/didChangeWorkspaceFolders", &Server::foldersChanged},
  };
  return kHandlers;
}

void Server::receive(const std::string& body, Clock::time_point now) {
  now_ = now;
  const Json message = Json::parse(body, nullptr, false);
  if (message.is_discarded()) return replyError(nullptr, kParseError, "this is no JSON");
  if (!message.is_object()) return replyError(nullptr, kInvalidRequest, "this is no message");
  handle(message);
  answerReady();
}

void Server::receiveTooLarge() {
  replyError(nullptr, kInvalidRequest, "the message is too large");
}

void Server::handle(const Json& message) {
  const Json id = message.value("id", Json());
  const bool isRequest = message.contains("id");
  if (!message.contains("method")) return;  // an answer to a request of ours
  if (!message["method"].is_string()) return replyError(id, kInvalidRequest, "its method is no text");
  const auto& method = message["method"].get_ref<const std::string&>();
  if (!isInitialized_ && method != "initialize" && method != "exit") {
    if (isRequest) replyError(id, kNotInitialized, "initialize comes first");
    return;
  }
  if ((isShutDown_ && method != "exit") || (isInitialized_ && method == "initialize")) {
    if (isRequest) replyError(id, kInvalidRequest, "not at this time");
    return;
  }
  const auto handler = handlers().find(method);
  if (handler == handlers().end()) {
    if (isRequest) replyError(id, kMethodNotFound, "there is no method '" + method + "'");
    return;
  }
  try {
    (this->*handler->second)(message.value("params", Json::object()), id);
  } catch (const Json::exception& error) {
    if (isRequest) return replyError(id, kInvalidParams, error.what());
    tell(kWarning, method + ": " + error.what(), false);
  }
}

void Server::send(const Json& message) {
  output_ += framed(message.dump(-1, ' ', false, Json::error_handler_t::replace));
}

void Server::reply(const Json& id, const Json& result) {
  send({{"jsonrpc", "2.0"}, {"id", id}, {"result", result}});
}

void Server::replyError(const Json& id, int code, const std::string& text) {
  send({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", code}, {"message", text}}}});
}

void Server::notify(const char* method, const Json& params) {
  send({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
}

void Server::tell(int type, const std::string& text, bool isShown) {
  notify(isShown ? "window/showMessage" : "window/logMessage", {{"type", type}, {"message", printable(text)}});
}

std::string Server::takeOutput() {
  return std::exchange(output_, {});
}

// ---- the beginning and the end -------------------------------------------------------------------------------------

void Server::initialize(const Json& params, const Json& id) {
  const Json capabilities = params.value("capabilities", Json::object());
  const auto can = [&](const char* pointer) { return capabilities.value(Json::json_pointer(pointer), false); };
  hasRelated_ = can("/textDocument/publishDiagnostics/relatedInformation");
  canWatch_ = can("/workspace/didChangeWatchedFiles/dynamicRegistration");
  const Json folders = params.value("workspaceFolders", Json());
  const Json root = params.value("rootUri", Json());
  if (folders.is_array()) {
    for (const Json& folder : folders)
      addFolder(folder.at("uri").get<std::string>());
  } else if (root.is_string()) {
    addFolder(root.get<std::string>());
  }
  isInitialized_ = true;
  Json server{{"textDocumentSync", {{"openClose", true}, {"change", kIncremental}}},
              {"hoverProvider", true},
              {"codeActionProvider", {{"codeActionKinds", {"quickfix"}}}},
              {"workspace", {{"workspaceFolders", {{"supported", true}, {"changeNotifications", true}}}}}};
  if (hasFlow_) {
    server["definitionProvider"] = true;
    server["completionProvider"] = {{"triggerCharacters", {"."}}};
  }
  reply(id, {{"capabilities", server}, {"serverInfo", {{"name", "tarvo-check"}, {"version", TARVO_VERSION}}}});
}

void Server::initialized(const Json&, const Json&) {
  if (!hasFlow_) tell(kInfoMessage, kWithoutFlow, true);
  if (!canWatch_) return;
  const Json watchers = {{{"globPattern", "**/*"}}};
  send({{"jsonrpc", "2.0"},
        {"id", "watch"},
        {"method", "client/registerCapability"},
        {"params",
         {{"registrations",
           {{{"id", "watch"},
             {"method", "workspace/didChangeWatchedFiles"},
             {"registerOptions", {{"watchers", watchers}}}}}}}}});
}

void Server::shutDown(const Json&, const Json& id) {
  isShutDown_ = true;
  applications_.clear();
  for (const Waiting& request : waiting_)
    replyError(request.id, kRequestCancelled, "the server shuts down");
  waiting_.clear();
  reply(id, nullptr);
}

void Server::exit(const Json&, const Json&) {
  isEnded_ = true;
}

void Server::cancel(const Json& params, const Json&) {
  const auto request =
      std::find_if(waiting_.begin(), waiting_.end(), [&](const Waiting& each) { return each.id == params.at("id"); });
  if (request == waiting_.end()) return;
  replyError(request->id, kRequestCancelled, "cancelled");
  waiting_.erase(request);
}

// ---- applications and their texts ----------------------------------------------------------------------------------

void Server::addFolder(const std::string& uri) {
  const std::optional<std::string> path = pathOfUri(uri);
  if (path) applications_[*path].due = now_;
}

void Server::removeApplication(const std::string& path) {
  const auto found = applications_.find(path);
  if (found == applications_.end()) return;
  found->second.look = {};
  publish(found->second, path);
  applications_.erase(found);
  if (looked_ == path) isLookStale_ = true;
}

// The innermost one.
std::string Server::applicationOf(const std::string& path) const {
  std::string found;
  for (const auto& [application, state] : applications_)
    if (isWithin(path, application) && application.size() > found.size()) found = application;
  return found;
}

// A folder can lie in another one: both change.
void Server::textChanged(const std::string& path, Clock::duration delay) {
  for (auto& [application, state] : applications_) {
    if (!isWithin(path, application)) continue;
    state.isChanged = true;
    state.due = now_ + delay;
    if (looked_ == application) isLookStale_ = true;
  }
}

void Server::openDocument(const Json& params, const Json&) {
  const Json& document = params.at("textDocument");
  const std::string uri = document.at("uri");
  const std::optional<std::string> path = pathOfUri(uri);
  if (!path) return;  // not saved anywhere: no part of an application
  if (!documents_.open(*path, uri, document.at("text"))) return tell(kErrorMessage, *path + " is too large", true);
  if (applicationOf(*path).empty()) applications_[*path].isFile = true;
  textChanged(*path, kAtOnce);
}

void Server::changeDocument(const Json& params, const Json&) {
  const std::optional<std::string> path = pathOfUri(uriIn(params));
  if (!path || documents_.text(*path) == nullptr) return;
  if (!documents_.change(*path, params.at("contentChanges"))) return tell(kErrorMessage, *path + " is too large", true);
  textChanged(*path, kTyping);
}

void Server::closeDocument(const Json& params, const Json&) {
  const std::optional<std::string> path = pathOfUri(uriIn(params));
  if (!path) return;
  documents_.close(*path);
  const auto own = applications_.find(*path);
  if (own != applications_.end() && own->second.isFile) return removeApplication(*path);
  textChanged(*path, kAtOnce);
}

void Server::filesChanged(const Json& params, const Json&) {
  for (const Json& change : params.at("changes")) {
    const std::optional<std::string> path = pathOfUri(change.at("uri").get<std::string>());
    if (path && documents_.text(*path) == nullptr) textChanged(*path, kTyping);
  }
}

void Server::foldersChanged(const Json& params, const Json&) {
  const Json& event = params.at("event");
  for (const Json& folder : event.at("removed")) {
    const std::optional<std::string> path = pathOfUri(folder.at("uri").get<std::string>());
    if (path) removeApplication(*path);
  }
  for (const Json& folder : event.at("added"))
    addFolder(folder.at("uri").get<std::string>());
}

// ---- looks ---------------------------------------------------------------------------------------------------------

std::optional<Server::Clock::time_point> Server::nextTime() const {
  std::optional<Clock::time_point> next;
  for (const auto& [path, application] : applications_)
    if (application.isChanged && (!next || application.due < *next)) next = application.due;
  return next;
}

std::optional<LookRequest> Server::nextLook(Clock::time_point now) {
  now_ = now;
  if (auto question = nextQuestion()) return question;
  for (auto& [path, application] : applications_) {
    const bool isAwaited = std::any_of(waiting_.begin(), waiting_.end(), [&, name = path](const Waiting& request) {
      return applicationOf(request.path) == name;
    });
    if (!application.isChanged || (application.due > now && !isAwaited)) continue;
    looked_ = path;
    isLookStale_ = false;
    return LookRequest{path, documents_.within(path), false};
  }
  return std::nullopt;
}

// The newest one; older completions are of texts that nobody looks at any more.
std::optional<LookRequest> Server::nextQuestion() {
  const auto last =
      std::find_if(waiting_.rbegin(), waiting_.rend(), [this](const Waiting& request) { return isQuestion(request); });
  if (last == waiting_.rend()) return std::nullopt;
  asked_ = *last;
  std::deque<Waiting> others;
  for (const Waiting& request : waiting_) {
    if (!isQuestion(request)) {
      others.push_back(request);
    } else if (request.id != asked_->id) {
      replyError(request.id, kContentModified, "another question came");
    }
  }
  waiting_ = std::move(others);
  const std::optional<std::string> text = questionText(*asked_);
  const std::string application = applicationOf(asked_->path);
  if (!text || application.empty()) {
    reply(std::exchange(asked_, std::nullopt)->id, nullptr);
    return std::nullopt;
  }
  LookRequest request{application, documents_.within(application), true};
  request.unsaved[asked_->path] = *text;
  return request;
}

void Server::takeLook(Look look) {
  if (asked_) {
    answerQuestion(*std::exchange(asked_, std::nullopt), look);
  } else if (const auto application = applications_.find(std::exchange(looked_, {}));
             application != applications_.end() && !isLookStale_) {
    takeCheck(application->second, application->first, std::move(look));
  }
  answerReady();
}

void Server::takeCheck(Application& application, const std::string& path, Look look) {
  application.isChanged = false;
  application.look = std::move(look);
  tellFailure(application, path);
  publish(application, path);
}

void Server::tellFailure(Application& application, const std::string& path) {
  const std::string& failure = application.look.failure;
  if (!failure.empty() && failure != application.failure)
    tell(kErrorMessage, "tarvo-check: " + path + ": " + failure, true);
  application.failure = failure;
}

// ---- diagnostics ---------------------------------------------------------------------------------------------------

Server::Json Server::locationOf(const LookPlace& place) const {
  return {{"uri", documents_.uriOf(fileOf(place.path))}, {"range", jsonOf(place.range)}};
}

Server::Json Server::diagnosticOf(const LookCall& call) const {
  const bool isInPackage = fileOf(call.place.path) != call.place.path;
  Json diagnostic{{"range", jsonOf(isInPackage ? TextRange() : call.name)},
                  {"severity", static_cast<int>(call.severity)},
                  {"source", kSource},
                  {"message", printable((isInPackage ? call.place.path + ": " : "") + call.message)}};
  if (!hasRelated_ || call.trace.empty()) return diagnostic;
  Json related = Json::array();
  for (const LookStep& step : call.trace)
    related.push_back({{"location", locationOf(step.place)}, {"message", printable(step.text)}});
  diagnostic["relatedInformation"] = related;
  return diagnostic;
}

void Server::publish(Application& application, const std::string& path) {
  std::map<std::string, Json> byFile;
  for (const std::string& file : application.marked)
    byFile[file] = Json::array();
  const auto add = [&](const std::string& file, const Json& diagnostic) {
    Json& list = byFile.try_emplace(file, Json::array()).first->second;
    if (list.size() < kMaxDiagnostics) list.push_back(diagnostic);
  };
  for (const LookCall& call : application.look.calls)
    if (call.severity != LookCall::Severity::none) add(fileOf(call.place.path), diagnosticOf(call));
  for (const LookNote& note : application.look.notes) {
    if (note.path == path && !application.isFile) {
      tell(kWarning, "not checked: " + note.path + ": " + note.text, false);
      continue;
    }
    add(fileOf(note.path), {{"range", jsonOf(TextRange())},
                            {"severity", static_cast<int>(LookCall::Severity::information)},
                            {"source", kSource},
                            {"message", printable("not checked: " + note.text)}});
  }
  application.marked.clear();
  for (const auto& [file, list] : byFile) {
    if (!list.empty()) application.marked.insert(file);
    notify("textDocument/publishDiagnostics", {{"uri", documents_.uriOf(file)}, {"diagnostics", list}});
  }
}

// ---- requests ------------------------------------------------------------------------------------------------------

void Server::wait(Waiting::Kind kind, const Json& params, const Json& id) {
  const std::optional<std::string> path = pathOfUri(uriIn(params));
  TextRange range;
  if (kind == Waiting::Kind::codeAction) {
    range = {positionIn(params.at("range").at("start")), positionIn(params.at("range").at("end"))};
  } else {
    range.start = range.end = positionIn(params.at("position"));
  }
  if (!path || applicationOf(*path).empty()) return reply(id, nullptr);
  if (waiting_.size() >= kMaxWaiting) {
    replyError(waiting_.front().id, kContentModified, "too many requests");
    waiting_.pop_front();
  }
  waiting_.push_back({id, kind, *path, range});
}

void Server::answerReady() {
  std::deque<Waiting> others;
  for (Waiting& request : std::exchange(waiting_, {})) {
    if (answer(request)) continue;
    others.push_back(std::move(request));
  }
  // Some have become questions.
  others.insert(others.end(), waiting_.begin(), waiting_.end());
  waiting_ = std::move(others);
}

bool Server::isQuestion(const Waiting& request) const {
  return request.kind == Waiting::Kind::completion || request.kind == Waiting::Kind::origin;
}

bool Server::answer(const Waiting& request) {
  const auto application = applications_.find(applicationOf(request.path));
  if (application == applications_.end()) {
    reply(request.id, nullptr);
    return true;
  }
  if (isQuestion(request) || application->second.isChanged) return false;
  const Look& look = application->second.look;
  switch (request.kind) {
    case Waiting::Kind::hover:
      reply(request.id, hoverOn(request, look));
      return true;
    case Waiting::Kind::codeAction:
      reply(request.id, actionsOn(request, look));
      return true;
    default:
      break;
  }
  const Json place = definitionOf(request, look);
  if (place.is_null() && hasFlow_) {
    Waiting question = request;
    question.kind = Waiting::Kind::origin;
    waiting_.push_back(std::move(question));
  } else {
    reply(request.id, place);
  }
  return true;
}

std::optional<std::string> Server::questionText(const Waiting& request) const {
  const std::string* text = documents_.text(request.path);
  if (text == nullptr) return std::nullopt;
  const std::size_t offset = offsetOf(*text, request.range.start);
  return request.kind == Waiting::Kind::completion ? withMember(*text, offset) : withCallBehind(*text, offset);
}

void Server::answerQuestion(const Waiting& request, const Look& look) {
  if (request.kind == Waiting::Kind::completion) return reply(request.id, completionOf(look));
  for (const LookCall& call : look.calls)
    if (!call.trace.empty()) return reply(request.id, locationOf(call.trace.front().place));
  reply(request.id, nullptr);
}

Server::Json Server::completionOf(const Look& look) const {
  std::map<std::string, std::string> plugins;  // by method
  for (const LookCall& call : look.calls) {
    const auto methods = methods_.find(call.plugin);
    if (methods == methods_.end()) continue;
    for (const std::string& method : methods->second) {
      std::string& on = plugins[method];
      if (on.find(call.plugin) == std::string::npos) on += (on.empty() ? "" : ", ") + call.plugin;
    }
  }
  Json items = Json::array();
  for (const auto& [method, plugin] : plugins)
    items.push_back({{"label", method}, {"kind", kMethodItem}, {"detail", plugin}});
  return items;
}

Server::Json Server::hoverOn(const Waiting& request, const Look& look) const {
  for (const LookCall& call : look.calls) {
    if (!isIn(call, request.path) || !touches(call.place.range, request.range.start)) continue;
    std::string text = call.plugin + (call.method.empty() ? "" : "." + call.method) + ": " + call.state;
    if (call.severity != LookCall::Severity::none) text += '\n' + call.message;
    for (const LookStep& step : call.trace)
      text += '\n' + step.text + ": " + step.place.path + ':' + std::to_string(step.place.range.start.line + 1);
    std::string shown;
    for (std::size_t at = 0; at <= text.size();) {
      const std::size_t end = std::min(text.find('\n', at), text.size());
      shown += (at == 0 ? "" : "\n") + printable(text.substr(at, end - at));
      at = end + 1;
    }
    return {{"contents", {{"kind", "plaintext"}, {"value", shown}}}, {"range", jsonOf(call.place.range)}};
  }
  return nullptr;
}

// Where the object of the call there comes from, or what is one step on its way.
Server::Json Server::definitionOf(const Waiting& request, const Look& look) const {
  const auto isThere = [&](const LookStep& step) {
    return step.place.path == request.path && touches(step.place.range, request.range.start);
  };
  for (const LookCall& call : look.calls) {
    if (call.trace.empty()) continue;
    const bool isCall = isIn(call, request.path) && touches(call.place.range, request.range.start);
    if (isCall || std::any_of(call.trace.begin(), call.trace.end(), isThere))
      return locationOf(call.trace.front().place);
  }
  return nullptr;
}

Server::Json Server::actionsOn(const Waiting& request, const Look& look) const {
  Json actions = Json::array();
  for (const LookCall& call : look.calls) {
    const bool isThere = isIn(call, request.path) && !(call.place.range.end < request.range.start) &&
                         !(request.range.end < call.place.range.start);
    if (!isThere || call.replacement.empty()) continue;
    const Json edit{{"range", jsonOf(call.name)}, {"newText", call.replacement}};
    actions.push_back({{"title", "Replace by '" + call.replacement + "'"},
                       {"kind", "quickfix"},
                       {"diagnostics", {diagnosticOf(call)}},
                       {"isPreferred", true},
                       {"edit", {{"changes", {{documents_.uriOf(request.path), {edit}}}}}}});
  }
  return actions;
}
