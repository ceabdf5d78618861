// Test: tests/checker/CommandLine_test.cpp.

#include "checker/Options.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

#include "checker/Progress.h"
#include "checker/Suggestion.h"
#include "checker/UserError.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kConfigName = ".tarvo-check.toml";
constexpr const char* kCheck = "check";
constexpr unsigned kMaxJobs = 1024;
constexpr unsigned kMaxSeconds = 1'000'000;
constexpr unsigned kMaxMemory = 1 << 20;  // MiB
constexpr unsigned kMaxUnpacked = 4096;   // the engine's own bound

constexpr const char* kFooter = R"(
Exit status:
  0  only documented APIs are used
  1  an undocumented API is used
  2  an application could not be checked at all, or the program could not do its work
  3  incomplete: no undocumented API was found, but a part was not looked at
Of several applications together it is the first of 2, 1, 3 and 0; 128 and the signal's number
if a signal ended the run. explain, disassemble and decompile give 0 or 2, database also 1 for a warning
or a difference.

Examples:
  tarvo-check app.wgt                             one application
  tarvo-check --jobs 4 packages/*.wgt             many, four at a time
  find . -name '*.wgt' -print0 | tarvo-check -    those of a list
  tarvo-check --all app.wgt                       every undocumented call
  tarvo-check --output report.json --output findings.sarif app.wgt
  tarvo-check --timeout 10 --unpacked 200 from-strangers/*.wgt
  tarvo-check --jobs 2 --print-config > .tarvo-check.toml)";

class Help : public CLI::Formatter {
 public:
  std::string make_usage(const CLI::App* app, std::string name) const override {
    if (app->get_parent() != nullptr) return Formatter::make_usage(app, name);
    return "Usage: tarvo-check [check] [OPTIONS] APPLICATION...\n       tarvo-check COMMAND ...\n";
  }
};

// In a config file these count from its directory.
bool isPath(const std::string& key) {
  static const std::set<std::string> kPaths{"database", "output", "baseline", "accept-file"};
  return kPaths.count(key) > 0;
}

// The database that is installed with this program.
std::string ownDatabase() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  return (program.parent_path().parent_path() / "share/tarvo/APIAnalEngineDB.xml").string();
}

std::vector<std::string> namesOf(const CLI::App& app, bool configurableOnly) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    if (configurableOnly && !option->get_configurable()) continue;
    for (const std::string& name : option->get_lnames())
      names.push_back(name);
  }
  return names;
}

bool isCheck(const CLI::App* command) {
  return command->get_name() == kCheck;
}

// One that another user can have put there is not taken.
bool isTrusted(const fs::path& file) {
  struct stat info {};
  struct stat directory {};
  if (lstat(file.c_str(), &info) != 0 || stat(file.parent_path().c_str(), &directory) != 0) return false;
  return info.st_uid == geteuid() || (directory.st_mode & S_IWOTH) == 0;
}

fs::path nearestConfig() {
  std::error_code error;
  for (fs::path directory = fs::current_path(error); !error; directory = directory.parent_path()) {
    fs::path file = directory / kConfigName;
    if (fs::is_regular_file(file, error)) {
      if (isTrusted(file)) return file;
      throw UserError("'" + file.string() +
                      "' is another user's, in a directory where everybody can write; pass --config '" + file.string() +
                      "' if you want it, or --no-config");
    }
    error.clear();
    if (directory == directory.root_path()) break;
  }
  return {};
}

// Whether the command line has it, also behind the name of a command.
bool isGiven(const CLI::App& app, const std::string& key) {
  const std::string name = "--" + key;
  const auto isIn = [&](const CLI::App* part) {
    const CLI::Option* option = part->get_option_no_throw(name);
    return option != nullptr && option->count() > 0;
  };
  const auto commands = app.get_subcommands();
  return isIn(&app) || std::any_of(commands.begin(), commands.end(), isIn);
}

void take(CLI::App& app, CLI::ConfigItem item, const fs::path& directory) {
  const auto names = namesOf(app, true);
  if (!item.parents.empty()) throw UserError("there are no sections, but [" + item.parents.front() + "]");
  if (std::find(names.begin(), names.end(), item.name) == names.end())
    throw UserError("no option is called '" + item.name + "'" + didYouMean(item.name, names));
  for (std::string& input : item.inputs) {
    if (!input.empty() && (input.front() == '"' || input.front() == '\''))
      throw UserError("the quotes of '" + item.name + "' are not closed; '#' begins a comment, in quotes, too");
    if (isPath(item.name)) input = (directory / input).lexically_normal().string();
  }
  if (isGiven(app, item.name)) return;
  CLI::Option* option = app.get_option("--" + item.name);
  try {
    if (option->get_expected_min() == 0) {
      option->add_result(option->get_flag_value(item.name, CLI::ConfigTOML().to_flag(item)));
    } else {
      option->add_result(item.inputs);
    }
    option->run_callback();
  } catch (const CLI::Error& error) {
    throw UserError(item.name + ": " + error.what());
  }
}

}  // namespace

void addOptions(CLI::App& app, Options& options) {
  options.database = ownDatabase();
  options.jobs = std::clamp(std::thread::hardware_concurrency(), 1U, kMaxJobs);
  app.formatter(std::make_shared<Help>());
  app.footer(kFooter);
  app.get_help_ptr()->configurable(false);
  app.set_version_flag("--version", "tarvo-check " TARVO_VERSION)->configurable(false);
  app.add_option("APPLICATION", options.applications,
                 "zip package, directory or single file; - reads a list of\nthem, as --from does")
      ->type_name("")
      ->configurable(false);

  app.add_subcommand(kCheck, "Check applications; the word may be left out")->fallthrough()->set_help_flag();

  app.option_defaults()->group("What is checked");
  app.add_option("--database", options.database, "API database to check against")->type_name("FILE");
  app.add_option("--from", options.lists,
                 "also check what FILE lists, one path a line or each with\na NUL behind it; - is standard input")
      ->type_name("FILE")
      ->allow_extra_args(false)
      ->configurable(false);
  app.add_flag("--all", options.all, "report the calls behind one at which the engine stops, too");
  app.add_flag("--allow-incomplete", options.allowIncomplete, "exit status 0 instead of 3");
  app.add_option("--baseline", options.baseline, "only what an earlier report, json or jsonl, does not have\ncounts")
      ->type_name("FILE");
  app.add_option("--accept", options.accept, "methods to take for documented ones; can be repeated")
      ->type_name("NAME[,NAME]")
      ->allow_extra_args(false);
  app.add_option("--accept-file", options.acceptFiles, "the same from a file, one a line; can be repeated")
      ->type_name("FILE")
      ->allow_extra_args(false);

  app.option_defaults()->group("How it is checked");
  const auto addNumber = [&app](const char* name, unsigned& number, unsigned max, const char* type, const char* text) {
    app.add_option(name, number, text)
        ->type_name(type)
        ->check(CLI::Range(1U, max).description(""))
        ->capture_default_str();
  };
  addNumber("--jobs", options.jobs, kMaxJobs, "N", "applications at the same time");
  addNumber("--timeout", options.bounds.timeout, kMaxSeconds, "SECONDS", "time for an application");
  addNumber("--memory", options.bounds.memory, kMaxMemory, "MIB", "memory for an application");
  addNumber("--unpacked", options.bounds.unpacked, kMaxUnpacked, "MIB",
            "what the packages of an application may unpack to");

  app.option_defaults()->group("What is printed");
  app.add_option(
         "--format", options.format,
         "text, json, jsonl, sarif, junit or html: for standard\noutput, or for --output files whose suffix tells none")
      ->type_name("NAME");
  app.add_option("--output", options.outputs,
                 "write a report to FILE, in the format of its suffix:\n.txt, .json, .jsonl, .sarif, .xml (junit), "
                 ".html; can be\nrepeated")
      ->type_name("FILE")
      ->allow_extra_args(false);
  app.add_flag("--engine-lines", options.engineLines, "print findings as the engine writes them on the device");
  app.add_flag("--log", options.log, "print the engine's log lines to standard error");
  app.add_flag("--quiet", options.quiet, "print error messages only; exit status and --output\nfiles tell the rest");
  app.add_flag("--no-progress", options.noProgress, "do not show on the terminal how far the run is");
  app.add_option("--color", options.color, "auto, always or never; auto: on a terminal, unless\nNO_COLOR is set")
      ->type_name("WHEN")
      ->check(CLI::IsMember({"auto", "always", "never"}).description(""));

  app.option_defaults()->group("Where options come from")->configurable(false);
  app.add_option("--config", options.config,
                 std::string("take options from FILE, not from the nearest\n ") + kConfigName +
                     " in or above the working directory")
      ->type_name("FILE");
  app.add_flag("--no-config", options.noConfig, "take none from a file");
  app.add_flag("--print-config", options.printConfig, "print the options in effect as such a file");
  app.option_defaults()->group("Options")->configurable(true);
}

void readConfig(CLI::App& app, const Options& options) {
  const auto commands = app.get_subcommands();
  const bool isOfUse =
      commands.empty() || isCheck(commands.front()) || commands.front()->get_option_no_throw("--database") != nullptr;
  if (options.noConfig || !isOfUse) return;
  const fs::path file = options.config.empty() ? nearestConfig() : fs::absolute(options.config);
  if (file.empty()) return;
  std::ifstream stream(file);
  if (!fs::is_regular_file(file) || !stream)
    throw UserError("cannot read the config file '" + options.config + "'" + didYouMeanFile(options.config));
  try {
    std::set<std::string> taken;
    for (CLI::ConfigItem& item : CLI::ConfigTOML().from_config(stream)) {
      if (!taken.insert(item.name).second) throw UserError("'" + item.name + "' stands there twice");
      take(app, std::move(item), file.parent_path());
    }
  } catch (const std::exception& error) {
    throw UserError(file.string() + ": " + error.what());
  }
}

std::string configText(const CLI::App& app, const Options& options) {
  std::string text;
  const auto add = [&](const std::string& key, const std::string& value) { text += key + " = " + value + '\n'; };
  for (const CLI::Option* option : app.get_options()) {
    if (!option->get_configurable()) continue;
    const std::string key = option->get_lnames().front();
    const CLI::results_t& given = option->results();
    const auto shown = [&](const std::string& value) -> std::string {
      if (value.find_first_not_of("0123456789") == std::string::npos) return value;
      return '"' + (isPath(key) ? fs::absolute(value).string() : value) + '"';
    };
    if (option->get_expected_min() == 0) {
      add(key, option->as<bool>() ? "true" : "false");
    } else if (key == "database") {
      add(key, shown(options.database));
    } else if (given.empty()) {
      if (!option->get_default_str().empty()) add(key, option->get_default_str());
    } else if (option->get_items_expected_max() > 1) {
      std::string list;
      for (const std::string& value : given)
        list += (list.empty() ? "" : ", ") + shown(value);
      add(key, "[" + list + "]");
    } else {
      add(key, shown(given.back()));
    }
  }
  return text;
}

std::string helpText(const CLI::App& app) {
  const auto commands = app.get_subcommands();
  const bool isAboutAll = commands.empty() || isCheck(commands.front());
  return isAboutAll ? app.get_formatter()->make_help(&app, app.get_name(), CLI::AppFormatMode::Normal) : app.help();
}

std::string explained(const CLI::App& app, const CLI::ParseError& error) {
  std::string text = error.what();
  if (dynamic_cast<const CLI::ExtrasError*>(&error) == nullptr) return text;
  for (const std::string& extra : app.remaining(true)) {
    std::error_code noFile;
    if (!extra.empty() && extra.front() == '-' && fs::exists(extra, noFile))
      return "there is no option " + extra + "; the file is ./" + extra;
    if (extra.size() < 3 || extra.compare(0, 2, "--") != 0) continue;
    const CLI::App* part = &app;
    while (!part->get_subcommands().empty() && !isCheck(part->get_subcommands().front()))
      part = part->get_subcommands().front();
    auto names = namesOf(*part, false);
    for (std::string& name : names)
      name.insert(0, "--");
    return "there is no option " + extra + didYouMean(extra.substr(0, extra.find('=')), names);
  }
  return text;
}

void requireDatabase(const Options& options) {
  std::error_code error;
  const fs::file_status status = fs::status(options.database, error);
  if (!fs::exists(status))
    throw UserError("no database at '" + options.database +
                    "'; pass --database FILE, or install the one that comes with tarvo-check" +
                    didYouMeanFile(options.database));
  if (fs::is_directory(status) || access(options.database.c_str(), R_OK) != 0)
    throw UserError("the database '" + options.database + "' cannot be read; pass --database FILE");
}

bool wantsColor(const Options& options) {
  if (options.color != "auto") return options.color == "always";
  const char* none = std::getenv("NO_COLOR");
  return (none == nullptr || *none == '\0') && isCapableTerminal(STDOUT_FILENO);
}
