// Between the client's streams, the server (lsp/Server) and the process that looks at applications (lsp/Analyst), in
// one thread that waits for all of them at once. Test: tests/checker/Lsp_test.cpp.

#include "checker/commands/LspCommand.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <memory>
#include <system_error>
#include <utility>

#include "checker/commands/DatabaseCommand.h"
#include "checker/lsp/Analyst.h"
#include "checker/lsp/MessageReader.h"
#include "checker/lsp/Server.h"
#include "checker/options/Accept.h"
#include "checker/options/UserError.h"
#include "checker/run/TestFaults.h"
#ifdef TARVO_FLOW
#include "flow/ParseCache.h"
#endif

namespace {

constexpr int kSignalled = 128;
constexpr std::size_t kMaxMessage = std::size_t{64} << 20;
constexpr std::size_t kMaxOutput = std::size_t{16} << 20;  // that the client does not read: nothing more is read then
constexpr unsigned kMaxSent = 64;                          // MiB that come of a look

std::map<std::string, std::vector<std::string>> methodsOf(const std::string& database) {
  std::map<std::string, std::vector<std::string>> methods;
  for (const DatabaseGroup& group : listDatabase(database).groups)
    for (const DatabaseFunction& function : group.functions)
      methods[group.name].push_back(function.name);
  return methods;
}

WorkerBounds boundsOf(const Options& options) {
  WorkerBounds bounds = options.bounds;
  bounds.sent = kMaxSent;
  return bounds;
}

struct Wanted {
  InspectionOptions inspection;
  AcceptedCalls accepted;
};

Wanted wantedBy(const Options& options) {
  Accepted accepted = readAccepted(options.accept, options.acceptFiles);
  InspectionOptions inspection;
  inspection.database = options.database;
  inspection.accepted = std::move(accepted.names);
  inspection.unpacked = options.bounds.unpacked;
  inspection.flow.isPerPlugin = options.perPlugin;
  inspection.exclusions = Exclusions(options.excludes, options.excludeInPackages);
  inspection.flow.database = std::make_shared<const DatabaseListing>(listDatabase(options.database));
  inspection.deprecations = Deprecations(*inspection.flow.database, options.denyDeprecated);
  return {std::move(inspection), std::move(accepted.calls)};
}

std::string answer(const std::string& bytes, Wanted& wanted, flow::ParseCache* cache) {
  const LookRequest request = requestOf(bytes);
#ifdef TARVO_TEST_FAULTS
  TESTING_ONLY_triggerFault(request.application, -1);
#endif
  return bytesOf(look(request, wanted.inspection, wanted.accepted, cache));
}

// What the other process does. What it keeps of scripts goes with it.
Analyst::Answer answerOf(Wanted wanted) {
  const auto kept = std::make_shared<Wanted>(std::move(wanted));
#ifdef TARVO_FLOW
  const auto cache = std::make_shared<flow::ParseCache>();
  return [kept, cache](const std::string& request) { return answer(request, *kept, cache.get()); };
#else
  return [kept](const std::string& request) { return answer(request, *kept, nullptr); };
#endif
}

// Nothing that is printed by mistake, and no process that was broken into, must get between the messages: the client's
// streams have other numbers from here on.
struct Streams {
  int in = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  int out = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);

  Streams() {
    const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (in < 0 || out < 0 || null < 0 || dup2(null, STDIN_FILENO) < 0 || dup2(null, STDOUT_FILENO) < 0)
      throw UserError("cannot use the standard streams");
    close(null);
  }
  ~Streams() {
    close(in);
    close(out);
  }
  Streams(const Streams&) = delete;
  Streams& operator=(const Streams&) = delete;
};

class Loop {
 public:
  explicit Loop(const Options& options)
      : server_(methodsOf(options.database), FlowRun::isThere()),
        analyst_(boundsOf(options), answerOf(wantedBy(options)), signals_) {}

  int run() {
    while (!isClientGone_ && !(server_.isEnded() && output_.empty())) {
      startLook();
      output_ += server_.takeOutput();
      if (const int signal = waitForNews()) return kSignalled + signal;
      takeLook();
    }
    return server_.exitStatus();
  }

 private:
  using Clock = Server::Clock;

  void startLook() {
    if (analyst_.isBusy()) return;
    const std::optional<LookRequest> request = server_.nextLook(Clock::now());
    if (!request) return;
    try {
      analyst_.ask(bytesOf(*request));
    } catch (const std::system_error& error) {
      Look none;
      none.failure = error.what();
      server_.takeLook(std::move(none));
    }
  }

  void takeLook() {
    if (!analyst_.isBusy()) return;
    const std::optional<Analyst::Result> result = analyst_.poll();
    if (!result) return;
    Look look;
    look.failure = result->failure;
    if (look.failure.empty()) {
      try {
        look = lookOf(result->sent);
      } catch (const std::exception&) {
        look = {};
        look.failure = "the process that checked it gave nothing that can be read";
      }
    }
    server_.takeLook(std::move(look));
  }

  int timeout() const {
    std::optional<Clock::time_point> next = analyst_.isBusy() ? analyst_.deadline() : server_.nextTime();
    if (!next) return -1;
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now()).count();
    return static_cast<int>(std::clamp<long long>(wait, 0, INT_MAX));
  }

  // Returns the signal that came, or 0.
  int waitForNews() {
    const bool reads = output_.size() < kMaxOutput;
    std::array<pollfd, 4> descriptors{{{signals_.descriptor(), POLLIN, 0},
                                       {reads ? streams_.in : -1, POLLIN, 0},
                                       {output_.empty() ? -1 : streams_.out, POLLOUT, 0},
                                       {analyst_.isBusy() ? analyst_.descriptor() : -1, analyst_.events(), 0}}};
    if (poll(descriptors.data(), descriptors.size(), timeout()) < 0) return 0;
    if (const int signal = signals_.take()) return signal;
    if (descriptors[1].revents != 0) readSome();
    if (descriptors[2].revents != 0) writeSome();
    return 0;
  }

  void readSome() {
    std::array<char, 65536> buffer{};
    const ssize_t count = read(streams_.in, buffer.data(), buffer.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (count <= 0) {
      isClientGone_ = true;
      return;
    }
    reader_.feed({buffer.data(), static_cast<std::size_t>(count)});
    while (const auto message = reader_.next()) {
      if (message->isTooLarge) {
        server_.receiveTooLarge();
      } else {
        server_.receive(message->body, Clock::now());
      }
    }
  }

  // As much as a pipe that can be written to takes without waiting.
  void writeSome() {
    const ssize_t count = write(streams_.out, output_.data(), std::min<std::size_t>(output_.size(), PIPE_BUF));
    if (count > 0) output_.erase(0, static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR && errno != EAGAIN) isClientGone_ = true;
  }

  Streams streams_;
  Signals signals_;
  Server server_;
  Analyst analyst_;
  MessageReader reader_{kMaxMessage};
  std::string output_;
  bool isClientGone_ = false;
};

}  // namespace

int lspCommand(const Options& options) {
  requireSoundDatabase(options);
  return Loop(options).run();
}
