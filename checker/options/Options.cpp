// Test: tests/checker/CommandLine_test.cpp.

#include "checker/options/Options.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "checker/options/OptionTable.h"
#include "checker/options/Suggestion.h"
#include "checker/options/UserError.h"
#include "checker/report/Progress.h"

namespace fs = std::filesystem;

namespace {

// The database that is installed with this program. Empty if the system does not tell where the program is: a path
// that counts from the working directory could be a stranger's file.
std::string ownDatabase() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  if (error || !program.is_absolute()) return {};
  return (program.parent_path().parent_path() / "share/tarvo/APIAnalEngineDB.xml").string();
}

}  // namespace

// Each job is a processor; those without an application of their own are shared.
unsigned Options::threadsFor(std::size_t applications) const {
  constexpr std::size_t kMostThreads = 16;  // what one application can make use of
  const std::size_t share = jobs / std::clamp<std::size_t>(applications, 1, jobs);
  return static_cast<unsigned>(std::min(share, kMostThreads));
}

Options defaultOptions() {
  Options options;
  options.database = ownDatabase();
  options.jobs = std::clamp(std::thread::hardware_concurrency(), 1U, kMaxJobs);
  return options;
}

void requireDatabase(const Options& options) {
  if (options.database.empty())
    throw UserError(
        "the database cannot be found, because /proc does not tell where this program is; pass --database FILE");
  std::error_code error;
  const fs::file_status status = fs::status(options.database, error);
  if (!fs::exists(status))
    throw UserError("no database at '" + options.database +
                    "'; pass --database FILE, or install the one that comes with tarvo-check" +
                    didYouMeanFile(options.database));
  if (!fs::is_regular_file(status) || access(options.database.c_str(), R_OK) != 0)
    throw UserError("the database '" + options.database + "' cannot be read; pass --database FILE");
}

bool wantsColor(const Options& options) {
  if (options.color != "auto") return options.color == "always";
  const char* none = std::getenv("NO_COLOR");
  return (none == nullptr || *none == '\0') && isCapableTerminal(STDOUT_FILENO);
}
