// The command line, declared to its parser from the table of options, and what is said about mistakes in it.
//
// The options of the check are those of the program itself, because the word "check" may be left out; so they can also
// stand in front of another command. Whatever stands in the command line is taken first. Then the lists of applications
// are read, because a config file must be known to lie outside of all applications before it counts.
// Test: tests/checker/CommandLine_test.cpp.

#include "checker/options/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>

#include "checker/options/Applications.h"
#include "checker/options/ConfigFile.h"
#include "checker/options/ExitStatus.h"
#include "checker/options/OptionTable.h"
#include "checker/options/Suggestion.h"
#include "checker/options/UserError.h"
#include "checker/report/Characters.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kTextWidth = 55;

constexpr const char* kFooter = R"(
Exit status:
  0  only documented APIs are used
  1  an undocumented API is used
  2  an application could not be checked at all, or the program could not do its work
  3  incomplete: no undocumented API was found, but a part was not looked at
Of several applications together it is the first of 2, 1, 3 and 0. It is 128 and the signal's number
if a signal ended the run. explain, disassemble, decompile and types give 0 or 2. database also gives 1, for
a warning or a difference; judge, if an application changes; merge, for a conflict; lsp, if the
editor goes without a word. report gives 0 when all is written; compare gives 1 for a new finding and 3 for a
part that is newly not looked at.

Examples:
  tarvo-check app.wgt                             one application
  tarvo-check --jobs 4 packages                   all packages in a directory, four at a time
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

// `text` in lines that fit beside the names of options.
std::string wrapped(const std::string& text) {
  std::string lines, line;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    if (!line.empty() && line.size() + 1 + end - at > kTextWidth) {
      lines += line + '\n';
      line.clear();
    }
    line += (line.empty() ? "" : " ") + text.substr(at, end - at);
    at = end + 1;
  }
  return lines + line;
}

std::string inCapitals(std::string text) {
  if (!text.empty() && text.front() >= 'a' && text.front() <= 'z') text.front() = static_cast<char>(text.front() - 32);
  return text;
}

// What this program was built with.
#ifdef TARVO_FLOW
constexpr const char* kRules = "\nrules: engine, flow";
#else
constexpr const char* kRules = "\nrules: engine (built without flow analysis)";
#endif

// The parser of the command line, with a part for each command.
class Parser {
 public:
  explicit Parser(Options& options)
      : options_(options), app_("Finds calls of undocumented platform APIs in web applications.", "tarvo-check") {
    app_.formatter(std::make_shared<Help>());
    app_.footer(kFooter);
    app_.set_version_flag("--version", std::string("tarvo-check ") + TARVO_VERSION + kRules);
    app_.add_option("APPLICATION", options.applications,
                    wrapped("zip package, directory or single file; - reads a list of them, as --from does"))
        ->type_name("");
    for (const OptionRow& row : kOptions) {
      if (takes(Command::check, row)) declare(app_, row)->group(row.group);
    }
    for (const CommandRow& row : kCommands)
      declare(row);
    app_.require_subcommand(0, 1);
  }

  CLI::App& app() { return app_; }

  // The command that was named; the check if none was.
  Command command() const { return commands_.at(&named()); }

  // The names of all options that stand in the command line.
  std::set<std::string> given() const {
    std::set<std::string> names;
    const CLI::App* part = &app_;
    for (bool isLast = false; !isLast;) {
      for (const CLI::Option* option : part->get_options()) {
        if (option->count() > 0 && !option->get_lnames().empty()) names.insert(option->get_lnames().front());
      }
      isLast = part->get_subcommands().empty();
      if (!isLast) part = part->get_subcommands().front();
    }
    return names;
  }

  // What --help prints: about the command that was named.
  std::string help() const {
    const bool isAboutAll = command() == Command::check;
    return isAboutAll ? app_.get_formatter()->make_help(&app_, app_.get_name(), CLI::AppFormatMode::Normal)
                      : app_.help();
  }

  // What the user did wrong, and what was probably meant.
  std::string explained(const CLI::ParseError& error) const {
    if (dynamic_cast<const CLI::ExtrasError*>(&error) == nullptr) return error.what();
    for (const std::string& extra : app_.remaining(true)) {
      std::error_code noFile;
      if (!extra.empty() && extra.front() == '-' && fs::exists(extra, noFile))
        return "there is no option " + extra + "; the file is ./" + extra;
      if (extra.size() < 3 || extra.compare(0, 2, "--") != 0) continue;
      return "there is no option " + extra + didYouMean(extra.substr(0, extra.find('=')), optionNames());
    }
    const auto words = app_.remaining(true);
    return error.what() + (words.empty() ? "" : didYouMean(words.front(), commandNames(named())));
  }

  // The commands that can stand behind what was named.
  static std::vector<std::string> commandNames(const CLI::App& part) {
    std::vector<std::string> names;
    for (const CLI::App* command : part.get_subcommands([](const CLI::App*) { return true; }))
      names.push_back(command->get_name());
    return names;
  }

 private:
  // "database diff" is a part of "database".
  void declare(const CommandRow& row) {
    const std::string words = row.words;
    const std::size_t blank = words.find(' ');
    CLI::App* above = blank == std::string::npos ? &app_ : app_.get_subcommand(words.substr(0, blank));
    CLI::App& part =
        *above->add_subcommand(words.substr(blank == std::string::npos ? 0 : blank + 1), inCapitals(row.text));
    commands_[&part] = row.command;
    if (row.command == Command::check) {
      part.fallthrough()->set_help_flag();
      return;
    }
    part.footer("");
    for (const OptionRow& option : kOptions) {
      if (takes(row.command, option)) declare(part, option);
    }
    const auto add = [&](const char* name, std::string& value, const char* text) {
      part.add_option(name, value, text)->type_name("")->required();
    };
    if (row.command == Command::explain || row.command == Command::types) add("APPLICATION", options_.file, "");
    if (row.command == Command::disassemble || row.command == Command::decompile) add("FILE", options_.file, "");
    if (row.command == Command::databaseDiff) {
      add("OLD", options_.older, "the database that was in use");
      add("NEW", options_.newer, "the one that takes its place");
    }
    if (row.command == Command::merge) {
      add("OUT", options_.file, "the store that is made, or gets the others");
      part.add_option("IN", options_.inputs, "stores, and reports as JSON lines")->type_name("");
    }
    if (row.command == Command::report)
      part.add_option("IN", options_.inputs, "reports in the format json or jsonl; - is standard input")
          ->type_name("")
          ->required();
    if (row.command == Command::compare) {
      add("OLD", options_.older, "application, directory of packages, or report (.json, .jsonl)");
      add("NEW", options_.newer, "the same of what takes its place");
    }
  }

  CLI::Option* declare(CLI::App& part, const OptionRow& row) {
    const std::string name = std::string("--") + row.name;
    const std::string text = wrapped(std::string(row.text) + row.detail + defaultOf(row));
    if (const auto* isOn = std::get_if<bool Options::*>(&row.field))
      return part.add_flag(name, options_.*(*isOn), text);
    const auto take = [this, &row](const CLI::results_t& values) {
      for (const std::string& value : values)
        setOption(options_, row, value);
      return true;
    };
    CLI::Option* option = part.add_option(name, take, text)->type_name(row.argument);
    if (std::holds_alternative<std::vector<std::string> Options::*>(row.field))
      option->expected(1, CLI::detail::expected_max_vector_size)->allow_extra_args(false);
    return option;
  }

  std::string defaultOf(const OptionRow& row) const {
    const auto* number = std::get_if<unsigned Options::*>(&row.field);
    const auto* bound = std::get_if<unsigned WorkerBounds::*>(&row.field);
    if (number != nullptr) return " (" + std::to_string(options_.*(*number)) + ")";
    return bound != nullptr ? " (" + std::to_string(options_.bounds.*(*bound)) + ")" : "";
  }

  // The part of the command that was named; the program's own if none was, or the check.
  const CLI::App& named() const {
    const CLI::App* part = &app_;
    while (!part->get_subcommands().empty() && part->get_subcommands().front()->get_name() != kCommands.front().words)
      part = part->get_subcommands().front();
    return *part;
  }

  std::vector<std::string> optionNames() const {
    std::vector<std::string> names;
    for (const CLI::Option* option : named().get_options()) {
      for (const std::string& name : option->get_lnames())
        names.push_back("--" + name);
    }
    return names;
  }

  Options& options_;
  CLI::App app_;
  std::map<const CLI::App*, Command> commands_{{&app_, Command::check}};
};

// A first word that is no file, but nearly a command, is no application that is missing.
void refuseMisspeltCommand(const Options& options, const CLI::App& app) {
  if (options.applications.empty()) return;
  const std::string& word = options.applications.front();
  std::error_code error;
  if (word.find_first_of("./") != std::string::npos || fs::exists(fs::symlink_status(word, error))) return;
  if (word == "help") throw UserError("there is no command 'help'; did you mean '--help'?");
  const std::string meant = didYouMean(word, Parser::commandNames(app));
  if (!meant.empty()) throw UserError("there is no command and no file '" + word + "'" + meant);
}

std::optional<int> read(Parser& parser, int argc, const char* const* argv, Options& options) {
  parser.app().parse(argc, argv);
  options.command = parser.command();
  options.given = parser.given();
  const bool isCheck = options.command == Command::check;
  if (!isCheck && !options.applications.empty()) throw CLI::ExtrasError(options.applications);
  if (isCheck) {
    refuseMisspeltCommand(options, parser.app());
    options.named = std::make_shared<const PathList>(namedApplications(options));
  }
  readConfig(options);
  if (options.printConfig) {
    std::cout << configText(options);
    return kDone;
  }
  if (isCheck && options.named->size() == 0) throw CLI::RequiredError("APPLICATION");
  return std::nullopt;
}

}  // namespace

std::optional<int> readCommandLine(int argc, const char* const* argv, Options& options) {
  Parser parser(options);
  try {
    return read(parser, argc, argv, options);
  } catch (const CLI::CallForHelp&) {
    std::cout << parser.help();
    return kDone;
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == kDone) return parser.app().exit(error);
    std::cerr << "tarvo-check: " << printable(parser.explained(error)) << "\nSee tarvo-check --help.\n";
    return kFailed;
  }
}
