#pragma once

#include <chrono>
#include <deque>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "checker/lsp/Documents.h"
#include "checker/lsp/Look.h"

// A server of the Language Server Protocol, without its streams: messages go in, messages come out, and between them
// looks at applications are asked for, one at a time.
//
// Each folder of the editor's workspace is an application; so is each file that is opened outside of them. What was
// found out of texts that have changed since is thrown away: answers wait until the newest texts were looked at.
class Server {
 public:
  using Clock = std::chrono::steady_clock;
  using Json = nlohmann::json;

  // Documented methods by plug-in; whether plug-ins are followed to their calls.
  Server(std::map<std::string, std::vector<std::string>> methods, bool hasFlow)
      : methods_(std::move(methods)), hasFlow_(hasFlow) {}

  // Takes a message of the client.
  void receive(const std::string& body, Clock::time_point now);
  void receiveTooLarge();

  // What is to be looked at now; only if nothing is being looked at. Its result goes to `takeLook`: a failure where
  // there is none.
  std::optional<LookRequest> nextLook(Clock::time_point now);
  void takeLook(Look look);

  // When `nextLook` has something, if nothing comes by then; none: not before a message comes.
  std::optional<Clock::time_point> nextTime() const;

  // What is to be sent; once.
  std::string takeOutput();

  // Whether the client wants no more; and what the exit status is then, or now if the client is gone.
  bool isEnded() const { return isEnded_; }
  int exitStatus() const { return isShutDown_ ? 0 : 1; }

 private:
  struct Application {
    bool isFile = false;  // that was opened outside of all folders
    bool isChanged = true;
    Clock::time_point due;         // when a look is worth while
    Look look;                     // the last one
    std::set<std::string> marked;  // files that diagnostics were sent for
    std::string failure;           // that was told last
  };

  // A request that cannot be answered yet.
  struct Waiting {
    enum class Kind { hover, definition, origin, codeAction, completion };
    Json id;
    Kind kind;
    std::string path;
    TextRange range;
  };

  using Handler = void (Server::*)(const Json& params, const Json& id);
  static const std::map<std::string, Handler>& handlers();

  void handle(const Json& message);
  void initialize(const Json& params, const Json& id);
  void initialized(const Json& params, const Json& id);
  void shutDown(const Json& params, const Json& id);
  void exit(const Json& params, const Json& id);
  void cancel(const Json& params, const Json& id);
  void ignore(const Json&, const Json&) {}
  void openDocument(const Json& params, const Json& id);
  void changeDocument(const Json& params, const Json& id);
  void closeDocument(const Json& params, const Json& id);
  void filesChanged(const Json& params, const Json& id);
  void foldersChanged(const Json& params, const Json& id);
  void hover(const Json& params, const Json& id) { wait(Waiting::Kind::hover, params, id); }
  void definition(const Json& params, const Json& id) { wait(Waiting::Kind::definition, params, id); }
  void completion(const Json& params, const Json& id) { wait(Waiting::Kind::completion, params, id); }
  void codeAction(const Json& params, const Json& id) { wait(Waiting::Kind::codeAction, params, id); }

  void wait(Waiting::Kind kind, const Json& params, const Json& id);
  void answerReady();
  bool answer(const Waiting& request);  // whether it could
  bool isQuestion(const Waiting& request) const;
  std::optional<std::string> questionText(const Waiting& request) const;
  std::optional<LookRequest> nextQuestion();
  void answerQuestion(const Waiting& request, const Look& look);

  void addFolder(const std::string& uri);
  void removeApplication(const std::string& path);
  std::string applicationOf(const std::string& path) const;  // empty: none
  void textChanged(const std::string& path, Clock::duration delay);
  void takeCheck(Application& application, const std::string& path, Look look);
  void publish(Application& application, const std::string& path);
  void tellFailure(Application& application, const std::string& path);

  Json diagnosticOf(const LookCall& call) const;
  Json hoverOn(const Waiting& request, const Look& look) const;
  Json definitionOf(const Waiting& request, const Look& look) const;
  Json actionsOn(const Waiting& request, const Look& look) const;
  Json completionOf(const Look& look) const;
  Json locationOf(const LookPlace& place) const;

  void send(const Json& message);
  void reply(const Json& id, const Json& result);
  void replyError(const Json& id, int code, const std::string& text);
  void notify(const char* method, const Json& params);
  void tell(int type, const std::string& text, bool isShown);

  const std::map<std::string, std::vector<std::string>> methods_;
  const bool hasFlow_;
  bool isInitialized_ = false;
  bool isShutDown_ = false;
  bool isEnded_ = false;
  bool hasRelated_ = false;  // whether the client shows what belongs to a diagnostic
  bool canWatch_ = false;    // whether the client can be asked to tell of files that change
  Clock::time_point now_;
  Documents documents_;
  std::map<std::string, Application> applications_;  // by path
  std::deque<Waiting> waiting_;
  std::optional<Waiting> asked_;  // the question that is being looked at, or
  std::string looked_;            // the application
  bool isLookStale_ = false;      // its texts have changed since
  std::string output_;
};
