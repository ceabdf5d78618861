// tarvo-check: vets applications from the command line with the engine that the host loads.
//
// Exit status of an application: 2 it could not be checked at all, else 1 an undocumented API is used, else 3 a part of
// it was not checked, else 0. Of all applications together: the first of these.

#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>

#include "checker/CheckCommand.h"
#include "checker/DatabaseCommand.h"
#include "checker/EngineRun.h"
#include "checker/Explain.h"
#include "checker/Flash.h"
#include "checker/Options.h"
#include "checker/UserError.h"
#include "checker/formats/Text.h"

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 2;

void printLog(const std::vector<LogLine>& log) {
  for (const LogLine& line : log)
    std::cerr << line.function << ": " << printable(line.text) << '\n';
}

int explainOne(const Options& options) {
  requireDatabase(options);
  try {
    const EngineRun run(options.database, options.file);
    if (options.log) printLog(run.log());
    std::cout << explain(run) << '\n';
    return run.verdict() == Verdict::notChecked ? kFailed : kDone;
  } catch (const std::exception& error) {
    std::cerr << "tarvo-check: " << printable(options.file + ": " + error.what()) << '\n';
    return kFailed;
  }
}

int printFlash(const Options& options, const FlashText& text, const char* key) {
  std::cout << (options.json ? jsonText(text, key) : plainText(text));
  for (const std::string& gap : text.gaps)
    std::cerr << "tarvo-check: " << printable(options.file) << ": " << gap << '\n';
  return text.code == RUN_SUCCESS ? kDone : kFailed;
}

// The commands other than the check itself.
struct Command {
  const char* name;
  const char* description;
  const char* argument;
  bool takesJson;
  int (*run)(const Options& options);
};

constexpr Command kCommands[] = {
    {"explain", "Print as JSON all that the engine knows after a run", "APPLICATION", false, explainOne},
    {"disassemble", "Print the action records of a Flash file", "FILE", true,
     [](const Options& options) { return printFlash(options, disassemble(options.file), "lines"); }},
    {"decompile", "Print the call statements of a Flash file", "FILE", true,
     [](const Options& options) { return printFlash(options, decompile(options.file), "statements"); }},
};

void addDatabaseCommand(CLI::App& app, Options& options, const Command*& chosen) {
  static constexpr Command kList = {
      "database", "List the API database and warn of what the engine does not read in it", "", true,
      [](const Options& options) { return printDatabase(options.database, options.json, std::cout, std::cerr); }};
  static constexpr Command kDiff = {"diff", "List what became documented or undocumented between two databases", "",
                                    true, [](const Options& options) {
                                      return printDatabaseDiff(options.older, options.newer, options.json, std::cout,
                                                               std::cerr);
                                    }};
  CLI::App* list = app.add_subcommand(kList.name, kList.description);
  list->add_option("--database", options.database, "API database")->type_name("FILE");
  CLI::App* diff = list->add_subcommand(kDiff.name, kDiff.description);
  diff->add_option("OLD", options.older, "the database that was in use")->type_name("")->required();
  diff->add_option("NEW", options.newer, "the one that takes its place")->type_name("")->required();
  for (CLI::App* command : {list, diff}) {
    command->add_flag("--json", options.json, "as JSON");
    command->footer("");
  }
  list->callback([list, &chosen] { chosen = list->got_subcommand(kDiff.name) ? &kDiff : &kList; });
}

// The next files that are opened must not take the place of standard streams that are closed.
void openStandardStreams() {
  int descriptor = 0;
  while ((descriptor = open("/dev/null", O_RDWR)) >= 0 && descriptor <= STDERR_FILENO) {
  }
  if (descriptor > STDERR_FILENO) close(descriptor);
}

// `status`, if all that was printed has arrived.
int printedWith(int status) {
  if (std::cout.flush()) return status;
  std::cerr << "tarvo-check: cannot write all to standard output\n";
  return kFailed;
}

}  // namespace

int main(int argc, char** argv) {  // NOLINT(bugprone-exception-escape): no memory to read the options
  openStandardStreams();
  Options options;
  CLI::App app("Finds calls of undocumented platform APIs in web applications.", "tarvo-check");
  addOptions(app, options);
  const Command* chosen = nullptr;
  for (const Command& command : kCommands) {
    CLI::App* sub = app.add_subcommand(command.name, command.description);
    sub->add_option(command.argument, options.file, "")->type_name("")->required();
    if (command.takesJson) {
      sub->add_flag("--json", options.json, "as JSON, bytes as the code points U+0000 to U+00FF");
    } else {
      sub->add_option("--database", options.database, "API database to check against")->type_name("FILE");
    }
    sub->footer("");
    sub->callback([&chosen, &command] { chosen = &command; });
  }
  addDatabaseCommand(app, options, chosen);
  app.require_subcommand(0, 1);
  try {
    app.parse(argc, argv);
    readConfig(app, options);
    if (options.printConfig) {
      std::cout << configText(app, options);
      return printedWith(kDone);
    }
    if (chosen != nullptr && !options.applications.empty()) throw CLI::ExtrasError(options.applications);
    if (chosen == nullptr && options.applications.empty() && options.lists.empty())
      throw CLI::RequiredError("APPLICATION");
    return chosen == nullptr ? check(options) : printedWith(chosen->run(options));
  } catch (const CLI::CallForHelp&) {
    std::cout << helpText(app);
    return printedWith(kDone);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == kDone) return printedWith(app.exit(error));
    std::cerr << "tarvo-check: " << printable(explained(app, error)) << "\nSee tarvo-check --help.\n";
  } catch (const std::exception& error) {
    std::cerr << "tarvo-check: " << printable(error.what()) << '\n';
  }
  return kFailed;
}
