// The ids are found in a worker, because the application may be a stranger's. Test: tests/checker/Types_test.cpp.

#include "checker/commands/TypesCommand.h"

#include <stdexcept>

#include "checker/commands/BoundedOutput.h"
#include "checker/commands/DatabaseCommand.h"
#include "checker/commands/Declarations.h"
#include "checker/formats/OutputFile.h"
#include "checker/options/ExitStatus.h"
#include "checker/options/UserError.h"
#include "checker/report/Characters.h"
#include "checker/run/PluginIds.h"

namespace {

CommandOutput declared(const Options& options, const std::string& application) {
  CommandOutput output;
  try {
    output.out = declarations(listDatabase(options.database),
                              pluginIdsOf(application, options.database, options.bounds.unpacked));
    output.status = kDone;
  } catch (const std::runtime_error& error) {
    output.err = "tarvo-check: " + printable(application + ": " + error.what()) + '\n';
    output.status = kFailed;
  }
  return output;
}

}  // namespace

int typesCommand(const Options& options) {
  requireSoundDatabase(options);
  const auto work = [&](const std::string& application) { return declared(options, application); };
  // A config file names outputs for reports.
  if (options.given.count("output") == 0) return printFromWorker(options, work);
  if (options.outputs.size() > 1) throw UserError("--output is given twice; the declarations go to one file");
  OutputFile file(options.outputs.front());
  const int status = printFromWorker(options, work, file.stream());
  if (status == kDone) file.finish();
  return status;
}
