// Puts together one run of the engine (run/) and its JSON (Explain.h), in a worker. Test:
// tests/checker/Checker_test.cpp.

#include "checker/commands/ExplainCommand.h"

#include <stdexcept>

#include "checker/commands/BoundedOutput.h"
#include "checker/commands/DatabaseCommand.h"
#include "checker/commands/Explain.h"
#include "checker/options/ExitStatus.h"
#include "checker/report/Characters.h"
#include "checker/run/EngineRun.h"

namespace {

CommandOutput explained(const Options& options, const std::string& application) {
  CommandOutput output;
  try {
    EngineRunOptions runOptions{options.database, {}, false, options.bounds.unpacked};
    runOptions.threads = options.bounds.threads;
    const Outcome run = runEngine(application, runOptions);
    if (options.log) {
      for (const LogLine& line : run.log)
        output.err += line.function + ": " + printable(line.text) + '\n';
    }
    output.out = explain(run);
    output.status = run.verdict() == Verdict::notChecked ? kFailed : kDone;
  } catch (const std::runtime_error& error) {
    output.err += "tarvo-check: " + printable(application + ": " + error.what()) + '\n';
    output.status = kFailed;
  }
  return output;
}

}  // namespace

int explainCommand(const Options& given) {
  Options options = given;
  options.bounds.threads = options.threadsFor(1);
  requireSoundDatabase(options);
  return printFromWorker(options, [&](const std::string& application) { return explained(options, application); });
}
