// tarvo-check: vets applications from the command line with the engine that the host loads.
//
// Exit status of an application: 2 it could not be checked at all, else 1 an undocumented API is used, else 3 a part of
// it was not checked, else 0. Of all applications together: the first of these.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "checker/EngineRun.h"
#include "checker/Explain.h"
#include "checker/Flash.h"
#include "checker/Inspection.h"
#include "checker/Report.h"
#include "checker/ReportWriter.h"
#include "checker/formats/Text.h"

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 2;
constexpr int kStatusOf[] = {0, 3, 1, 2};  // of each Verdict

struct Options {
  std::string database;
  bool log = false;
  bool engineLines = false;
  bool allowIncomplete = false;
  bool all = false;
  std::string format = "text";
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

void printLog(const std::vector<LogLine>& log) {
  for (const LogLine& line : log)
    std::cerr << line.function << ": " << printable(line.text) << '\n';
}

int explainOne(const Options& options) {
  try {
    const EngineRun run(options.database, options.file);
    if (options.log) printLog(run.log());
    std::cout << explain(run) << '\n';
    return run.verdict() == Verdict::notChecked ? kFailed : kDone;
  } catch (const std::exception& error) {
    std::cerr << "tarvo-check: " << options.file << ": " << error.what() << '\n';
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

}  // namespace

int main(int argc, char** argv) {
  Options options;
  options.database = ownDatabase();
  CLI::App app("Finds calls of undocumented platform APIs in web applications.");
  app.footer(
      "Exit status: 0 only documented APIs, 1 an undocumented one is used, 2 could not be checked at all, 3 "
      "incomplete: "
      "no undocumented one, but a part was not checked; of several applications the first of 2, 1, 3, 0. The commands: "
      "0 or 2.");
  app.add_option("--database", options.database, "API database to check against")->type_name("FILE");
  app.add_flag("--log", options.log, "print the engine's log lines to standard error");
  app.add_flag("--engine-lines", options.engineLines, "print findings as the engine writes them on the device");
  app.add_flag("--allow-incomplete", options.allowIncomplete, "exit status 0 instead of 3");
  app.add_flag("--all", options.all, "report the calls behind one at which the engine stops, too");
  app.add_option("--format", options.format, "text, json, jsonl, sarif, junit or html");
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
    return app.exit(error) == 0 ? kDone : kFailed;
  }

  if (chosen != nullptr) return chosen->run(options);
  Verdict worst = Verdict::clean;
  const std::unique_ptr<ReportWriter> writer =
      makeWriter(formatNamed(options.format).value_or(Format::text), std::cout,
                 {options.database, false, options.engineLines, options.all, false, options.allowIncomplete});
  for (const std::string& application : options.applications) {
    const ApplicationReport report = inspect(application, {options.database, options.all, options.log, {}});
    printLog(report.log);
    writer->add(report);
    const bool isAllowed = report.verdict == Verdict::incomplete && options.allowIncomplete;
    if (!isAllowed) worst = std::max(worst, report.verdict);
  }
  writer->end(false);
  return kStatusOf[static_cast<std::size_t>(worst)];
}
