// The commands that print what the engine makes of one file: in a worker, like a check, because the file is a
// stranger's and may be made to take all memory or all time.
//
// The worker sends its exit status, the length of what is for standard error, a line feed, and both texts.
// Test: tests/checker/Catalogue_test.cpp.

#include "checker/commands/BoundedOutput.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <utility>

#include "checker/commands/StandardStreams.h"
#include "checker/options/ExitStatus.h"
#include "checker/report/Characters.h"
#include "checker/run/Signals.h"
#include "checker/run/WorkerPool.h"

namespace {

constexpr int kSignalled = 128;
constexpr std::size_t kMaxHead = 20;  // bytes, with its line feed

// Takes no second copy of what may be hundreds of megabytes; nor does outputOf.
std::string bytesOf(CommandOutput output) {
  output.out.insert(0, std::to_string(output.status) + ' ' + std::to_string(output.err.size()) + '\n' + output.err);
  return std::move(output.out);
}

// Nothing if these are no output of a command: the worker was broken into.
std::optional<CommandOutput> outputOf(std::string bytes) {
  const std::size_t end = bytes.substr(0, kMaxHead).find('\n');
  if (end == std::string::npos || bytes[1] != ' ') return std::nullopt;
  const std::string length = bytes.substr(2, end - 2);
  const bool isNumber = !length.empty() && length.find_first_not_of("0123456789") == std::string::npos;
  if (bytes[0] < '0' || bytes[0] > '9' || !isNumber) return std::nullopt;
  const unsigned long long errors = std::stoull(length);
  if (errors > bytes.size() - end - 1) return std::nullopt;
  const auto count = static_cast<std::size_t>(errors);
  CommandOutput output{bytes[0] - '0', {}, bytes.substr(end + 1, count)};
  output.out = std::move(bytes.erase(0, end + 1 + count));
  return output;
}

class Printer : public RunListener {
 public:
  explicit Printer(std::ostream& out) : out_(out) {}

  bool take(const std::string& application, WorkerResult result) override {
    const std::optional<CommandOutput> output = outputOf(std::move(result.sent));
    if (result.failure.empty() && !output)
      result.failure = "the process that worked on it gave nothing that can be read";
    if (!result.failure.empty()) {
      std::cerr << "tarvo-check: " << printable(application + ": " + result.failure) << '\n';
      return true;
    }
    out_ << output->out;
    std::cerr << output->err;
    status_ = printedWith(output->status);
    return true;
  }

  void showState(const RunState&) override {}

  int status() const { return status_; }

 private:
  std::ostream& out_;
  int status_ = kFailed;
};

}  // namespace

int printFromWorker(const Options& options, const std::function<CommandOutput(const std::string& file)>& work,
                    std::ostream& out) {
  WorkerBounds bounds = options.bounds;
  bounds.sent = bounds.memory;  // it cannot be more
  PathList file;
  file.add(options.file);
  Printer printer(out);
  const Signals signals;
  const int signal = workOnEach(
      file, 1, bounds, [&](const std::string& name, const SendFirst&) { return bytesOf(work(name)); }, signals,
      printer);
  return signal != 0 ? kSignalled + signal : printer.status();
}
