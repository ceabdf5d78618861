// tarvo-check: vets applications from the command line with the engine that the host loads.
//
// Exit status of an application: 1 an undocumented API is used, else 2 something could not be checked, else 0. Of all
// applications together: the highest.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "checker/EngineRun.h"
#include "checker/Explain.h"
#include "checker/Flash.h"
#include "checker/Report.h"

namespace {

enum ExitStatus { kDocumented = 0, kUndocumented = 1, kNotChecked = 2 };

struct Options {
  std::string database;
  bool log = false;
  bool engineLines = false;
  std::vector<std::string> applications;
  std::string file;  // of a command that takes one
  bool json = false;
};

// The database that is installed with this program.
std::string ownDatabase() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  return (program.parent_path().parent_path() / "share/tarvo/APIAnalEngineDB.xml").string();
}

void printLog(const EngineRun& run) {
  for (const LogLine& line : run.log())
    std::cerr << line.function << ": " << printable(line.text) << '\n';
}

ExitStatus verdict(const std::string& application, ExitStatus status, const std::string& text) {
  std::cout << printable(application + ": " + text) << '\n';
  return status;
}

ExitStatus report(const std::string& application, const EngineRun& run, const Options& options) {
  const std::string failure = failureOf(run.code(), options.database);
  if (!failure.empty()) return verdict(application, kNotChecked, "could not check: " + failure);
  const std::vector<Finding> findings = findingsOf(run);
  for (const Finding& finding : findings) {
    if (options.engineLines) {
      std::cout << finding.engineLine;
    } else {
      std::cout << printable(textOf(finding)) << '\n';
    }
  }
  for (const std::string& missed : run.notChecked())
    std::cout << "not checked: " << printable(missed) << '\n';
  if (!findings.empty()) {
    const std::string calls = findings.size() == 1 ? " use" : " uses";
    return verdict(application, kUndocumented, std::to_string(findings.size()) + calls + " of undocumented APIs");
  }
  if (!run.notChecked().empty()) return verdict(application, kNotChecked, "could not check all of it");
  return verdict(application, kDocumented, "only documented APIs");
}

ExitStatus check(const std::string& application, const Options& options) {
  try {
    const EngineRun run(options.database, application);
    if (options.log) printLog(run);
    return report(application, run, options);
  } catch (const std::exception& error) {
    return verdict(application, kNotChecked, std::string("could not check: ") + error.what());
  }
}

ExitStatus explainOne(const Options& options) {
  try {
    const EngineRun run(options.database, options.file);
    if (options.log) printLog(run);
    std::cout << explain(run) << '\n';
    return failureOf(run.code(), options.database).empty() ? kDocumented : kNotChecked;
  } catch (const std::exception& error) {
    std::cerr << "tarvo-check: " << options.file << ": " << error.what() << '\n';
    return kNotChecked;
  }
}

ExitStatus printFlash(const Options& options, const FlashText& text, const char* key) {
  std::cout << (options.json ? jsonText(text, key) : plainText(text));
  const std::string failure = failureOf(text.code);
  if (failure.empty()) return kDocumented;
  std::cerr << "tarvo-check: " << printable(options.file) << ": " << failure << '\n';
  return kNotChecked;
}

// The commands other than the check itself.
struct Command {
  const char* name;
  const char* description;
  const char* argument;
  bool takesJson;
  ExitStatus (*run)(const Options& options);
};

constexpr Command kCommands[] = {
    {"explain", "Print as JSON all that the engine knows after a run", "APPLICATION", false, explainOne},
    {"disassemble", "Print the action records of a Flash file", "FILE", true,
     [](const Options& options) { return printFlash(options, disassemble(options.file), "lines"); }},
    {"decompile", "Print the call statements of a Flash file", "FILE", true,
     [](const Options& options) { return printFlash(options, decompile(options.file), "statements"); }},
};

}  // namespace

int main(int argc, char** argv) {
  Options options;
  options.database = ownDatabase();
  CLI::App app("Finds calls of undocumented platform APIs in web applications.");
  app.footer(
      "Exit status: 0 only documented APIs, 1 an undocumented one is used, 2 could not check all of it; explain: 0 or "
      "2.");
  app.add_option("--database", options.database, "API database to check against")->type_name("FILE");
  app.add_flag("--log", options.log, "print the engine's log lines to standard error");
  app.add_flag("--engine-lines", options.engineLines, "print findings as the engine writes them on the device");
  app.add_option("APPLICATION", options.applications, "zip package, directory or single file");
  const Command* chosen = nullptr;
  for (const Command& command : kCommands) {
    CLI::App* sub = app.add_subcommand(command.name, command.description);
    sub->add_option(command.argument, options.file, "")->required();
    if (command.takesJson) {
      sub->add_flag("--json", options.json, "as JSON, bytes as the code points U+0000 to U+00FF");
    } else {
      sub->add_option("--database", options.database, "API database to check against")->type_name("FILE");
    }
    sub->callback([&chosen, &command] { chosen = &command; });
  }
  app.require_subcommand(0, 1);
  try {
    app.parse(argc, argv);
    if (chosen == nullptr && options.applications.empty()) throw CLI::RequiredError("APPLICATION");
    if (chosen != nullptr && !options.applications.empty()) throw CLI::ExtrasError(options.applications);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kDocumented : kNotChecked;
  }

  if (chosen != nullptr) return chosen->run(options);
  ExitStatus worst = kDocumented;
  for (const std::string& application : options.applications)
    worst = std::max(worst, check(application, options));
  return worst;
}
