// The table itself, and how a value comes into its field. Test: tests/checker/OptionTable_test.cpp.

#include "checker/options/OptionTable.h"

#include <algorithm>

#include "checker/options/Suggestion.h"
#include "checker/options/UserError.h"

namespace {

constexpr unsigned kMaxSeconds = 1'000'000;
constexpr unsigned kMaxMemory = 1 << 20;  // MiB
constexpr unsigned kMaxTrialSeconds = 3600;
constexpr unsigned kMaxUnpacked = 4096;  // the engine's own bound

constexpr unsigned only(Command command) {
  return 1U << static_cast<unsigned>(command);
}

constexpr unsigned kCheck = only(Command::check);
constexpr unsigned kExplain = only(Command::explain);
constexpr unsigned kFlash = only(Command::disassemble) | only(Command::decompile);
constexpr unsigned kDatabase = only(Command::database);
constexpr unsigned kDiff = only(Command::databaseDiff);
constexpr unsigned kJudge = only(Command::judge);
constexpr unsigned kCatalogue = only(Command::catalogue);
constexpr unsigned kMerge = only(Command::merge);
constexpr unsigned kTypes = only(Command::types);
constexpr unsigned kLsp = only(Command::lsp);
constexpr unsigned kReport = only(Command::report);
constexpr unsigned kCompare = only(Command::compare);

constexpr const char* kWhat = "What is checked";
constexpr const char* kHow = "How it is checked";
constexpr const char* kPrinted = "What is printed";
constexpr const char* kFrom = "Where options come from";

// "1, 2 or 3"
std::string listed(const std::vector<std::string>& names) {
  std::string text = names.front();
  for (std::size_t i = 1; i < names.size(); ++i)
    text += (i + 1 < names.size() ? ", " : " or ") + names[i];
  return text;
}

unsigned numberIn(const OptionRow& option, const std::string& value) {
  const std::string name = std::string("--") + option.name;
  if (value.empty() || value.find_first_not_of("0123456789") != std::string::npos)
    throw UserError(name + ": '" + value + "' is not a whole number");
  unsigned long long number = 0;
  for (const char digit : value)
    number = std::min<unsigned long long>(number * 10 + static_cast<unsigned>(digit - '0'), option.max + 1ULL);
  if (number < 1 || number > option.max)
    throw UserError(name + ": " + value + " is not in the range from 1 to " + std::to_string(option.max));
  return static_cast<unsigned>(number);
}

}  // namespace

const std::vector<CommandRow> kCommands{
    {Command::check, "check", "check applications; the word may be left out"},
    {Command::explain, "explain", "print as JSON all that the engine knows after a run"},
    {Command::disassemble, "disassemble", "print the action records of a Flash file"},
    {Command::decompile, "decompile", "print the call statements of a Flash file"},
    {Command::database, "database", "list the API database and warn of what is not read in it"},
    {Command::databaseDiff, "database diff", "list what became documented or undocumented between two databases"},
    {Command::judge, "judge", "list which applications of a store another database changes, and why"},
    {Command::catalogue, "catalogue", "count what a store holds, or list who uses a method"},
    {Command::merge, "merge", "make one store of stores and reports as JSON lines"},
    {Command::types, "types", "write the plug-ins and the ids of an application as TypeScript declarations"},
    {Command::lsp, "lsp", "serve an editor with the Language Server Protocol"},
    {Command::report, "report", "write reports of earlier runs in another format, put together"},
    {Command::compare, "compare", "list what is new, gone and moved between two versions"},
};

const std::vector<OptionRow> kOptions{
    {"database", "FILE", kWhat, kCheck | kExplain | kDatabase | kJudge | kCatalogue | kTypes | kLsp | kCompare, true,
     &Options::database, 0, "use this API database instead of the installed one", ""},
    {"from", "FILE", kWhat, kCheck, false, &Options::lists, 0, "also check what this file lists",
     ": one path in a line, or a NUL behind each; - is standard input"},
    {"store", "FILE", kWhat, kCheck | kJudge | kCatalogue, true, &Options::store, 0, "file that results are kept in",
     "; a check passes over what is in it"},
    {"run", "NAME", kWhat, kCheck, false, &Options::run, 0, "name of this run in the store", ", instead of the date"},
    {"shard", "PART", kWhat, kCheck, false, &Options::shard, 0, "check only a part of the applications",
     ": 3/16 is the third of 16; auto, the one that the scheduler's environment names"},
    {"uses", "METHOD", kWhat, kCatalogue, false, &Options::uses, 0, "list the calls of a method instead",
     ": TUNER.GetSerial, or GetSerial of any plug-in"},
    {"as-one", "", kWhat, kCheck | kCompare, true, &Options::asOne, 0,
     "check a directory of packages as one application",
     "; otherwise, each package in a directory without web sources is an application"},
    {"exclude", "GLOB", kWhat, kCheck | kLsp | kCompare, true, &Options::excludes, 0,
     "do not look at these files and folders of a directory", ", such as node_modules; can be repeated"},
    {"exclude-in-packages", "", kWhat, kCheck | kLsp | kCompare, true, &Options::excludeInPackages, 0,
     "do the same with the files of packages", ""},
    {"all", "", kWhat, kCheck, true, &Options::all, 0, "also report the calls behind one at which the engine stops",
     ""},
    {"allow-incomplete", "", kWhat, kCheck | kCompare, true, &Options::allowIncomplete, 0, "exit status 0 instead of 3",
     ""},
    {"deny-deprecated", "", kWhat, kCheck | kLsp | kCompare, true, &Options::denyDeprecated, 0,
     "count calls of methods that the database calls deprecated", ""},
    {"baseline", "FILE", kWhat, kCheck, true, &Options::baseline, 0,
     "count only findings that this earlier report does not have", "; it is in the format json or jsonl"},
    {"accept", "NAME[,NAME]", kWhat, kCheck | kJudge | kLsp | kCompare, true, &Options::accept, 0,
     "take these methods for documented ones", "; can be repeated"},
    {"accept-file", "FILE", kWhat, kCheck | kJudge | kLsp | kCompare, true, &Options::acceptFiles, 0,
     "accept the methods or the calls that this file names", ": a method in a line, or TOML; can be repeated"},

    {"device", "", kWhat, kCheck | kCompare, true, &Options::device, 0, "check by the rules of the device alone",
     ", without flow analysis"},
    {"possible", "", kWhat, kCheck | kCompare, true, &Options::possible, 0, "also show calls that are only possible",
     ""},
    {"per-plugin", "", kWhat, kCheck | kLsp | kCompare, true, &Options::perPlugin, 0,
     "count methods that are documented for another plug-in only", ", where the plug-in is known"},
    {"trial", "", kWhat, kCheck | kCompare, true, &Options::trial, 0,
     "also run the pages in a real browser, and report what they call", ""},
    {"trial-uncalled", "", kWhat, kCheck | kCompare, true, &Options::trialUncalled, 0,
     "with --trial, also call functions that never ran", "; what that finds is marked, and not confirmed"},
    {"browser", "FILE", kWhat, kCheck | kCompare, false, &Options::browser, 0, "run them in this Chromium",
     ", not in the chromium of the PATH"},
    {"trial-seconds", "SECONDS", kWhat, kCheck | kCompare, true, &Options::trialSeconds, kMaxTrialSeconds,
     "time for a page in the browser", "; three times that for all pages of an application, beside --timeout"},

    {"jobs", "N", kHow, kCheck | kExplain | kCompare, true, &Options::jobs, kMaxJobs,
     "how many applications to check at the same time",
     "; where there are fewer, several threads work on each, with the same result"},
    {"timeout", "SECONDS", kHow, kCheck | kExplain | kFlash | kTypes | kLsp | kCompare, true, &WorkerBounds::timeout,
     kMaxSeconds, "time for an application", ""},
    {"memory", "MIB", kHow, kCheck | kExplain | kFlash | kTypes | kLsp | kCompare, true, &WorkerBounds::memory,
     kMaxMemory, "memory for an application", ""},
    {"unpacked", "MIB", kHow, kCheck | kExplain | kTypes | kLsp | kCompare, true, &WorkerBounds::unpacked, kMaxUnpacked,
     "how much the packages of an application may unpack to", ""},

    {"format", "text|json|jsonl|sarif|junit|html|github|gitlab", kPrinted, kCheck | kJudge | kReport, true,
     &Options::format, 0, "format of the report", ": on standard output, or in --output files whose suffix tells none"},
    {"output", "FILE", kPrinted, kCheck | kJudge | kReport, true, &Options::outputs, 0,
     "write a report in the format of the suffix",
     ": .txt, .json, .jsonl, .sarif, .xml (junit) or .html; can be repeated"},
    {"format", "text|json|csv|html", kPrinted, kCatalogue, false, &Options::format, 0, "format of the catalogue", ""},
    {"output", "FILE", kPrinted, kCatalogue, false, &Options::outputs, 0, "write the catalogue to this file",
     ", in the format of the suffix: .txt, .json, .csv or .html"},
    {"output", "FILE", kPrinted, kTypes, false, &Options::outputs, 0, "write the declarations to this file", ""},
    {"format", "text|json|html", kPrinted, kCompare, false, &Options::format, 0, "format of the comparison", ""},
    {"output", "FILE", kPrinted, kCompare, false, &Options::outputs, 0, "write the comparison to this file",
     ", in the format of the suffix: .txt, .json or .html; can be repeated"},
    {"map", "PREFIX=DIR", kPrinted, kCheck | kReport, true, &Options::maps, 0,
     "name files below PREFIX as those of this directory, where they are there",
     ": in github, gitlab and SARIF reports; app.wgt!/www=src; can be repeated"},
    {"engine-lines", "", kPrinted, kCheck | kReport, true, &Options::engineLines, 0,
     "print findings as the engine writes them on the device", ""},
    {"trace", "", kPrinted, kCheck | kReport, true, &Options::trace, 0,
     "print how the plug-in object of each finding came to the call", ""},
    {"log", "", kPrinted, kCheck, true, &Options::log, 0, "print the log of the engine to standard error", ""},
    {"quiet", "", kPrinted, kCheck | kJudge | kMerge | kCompare | kReport, true, &Options::quiet, 0,
     "print error messages only", "; exit status and --output files tell the rest"},
    {"no-progress", "", kPrinted, kCheck, true, &Options::noProgress, 0,
     "do not show on the terminal how far the run is", ""},
    {"color", "auto|always|never", kPrinted, kCheck | kJudge | kCompare | kReport, true, &Options::color, 0,
     "whether text is coloured", "; auto: on a terminal, unless NO_COLOR is set"},
    {"json", "", kPrinted, kFlash | kDatabase | kDiff, false, &Options::json, 0, "print JSON",
     "; of Flash files, bytes are the code points U+0000 to U+00FF"},

    {"config", "FILE", kFrom, kCheck | kExplain | kDatabase | kTypes | kLsp | kCompare, false, &Options::config, 0,
     "take options from this file", ", not from the nearest .tarvo-check.toml in or above the working directory"},
    {"no-config", "", kFrom, kCheck | kExplain | kDatabase | kTypes | kCompare, false, &Options::noConfig, 0,
     "take no options from a file", ""},
    {"print-config", "", kFrom, kCheck, false, &Options::printConfig, 0, "print the options in effect as a config file",
     ""},
};

bool takes(Command command, const OptionRow& option) {
  return (option.commands & only(command)) != 0;
}

const OptionRow* optionNamed(const std::string& name) {
  const auto row =
      std::find_if(kOptions.begin(), kOptions.end(), [&](const OptionRow& each) { return each.name == name; });
  return row == kOptions.end() ? nullptr : &*row;
}

std::vector<std::string> choicesOf(const OptionRow& option) {
  std::vector<std::string> choices;
  const std::string argument = option.argument;
  if (argument.find('|') == std::string::npos) return choices;
  for (std::size_t at = 0; at <= argument.size();) {
    const std::size_t end = std::min(argument.find('|', at), argument.size());
    choices.push_back(argument.substr(at, end - at));
    at = end + 1;
  }
  return choices;
}

void setOption(Options& options, const OptionRow& option, const std::string& value) {
  const std::vector<std::string> choices = choicesOf(option);
  if (!choices.empty() && std::find(choices.begin(), choices.end(), value) == choices.end()) {
    throw UserError(std::string("--") + option.name + ": there is no '" + value + "', but " + listed(choices) +
                    didYouMean(value, choices));
  }
  if (const auto* number = std::get_if<unsigned Options::*>(&option.field)) {
    options.*(*number) = numberIn(option, value);
  } else if (const auto* bound = std::get_if<unsigned WorkerBounds::*>(&option.field)) {
    options.bounds.*(*bound) = numberIn(option, value);
  } else if (const auto* text = std::get_if<std::string Options::*>(&option.field)) {
    options.*(*text) = value;
  } else if (const auto* list = std::get_if<std::vector<std::string> Options::*>(&option.field)) {
    (options.*(*list)).push_back(value);
  }
}
