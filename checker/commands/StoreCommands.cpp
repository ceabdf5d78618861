// Puts together the questions to a store (store/) and what shows the answers (formats/). Test:
// tests/checker/Store_test.cpp.

#include "checker/commands/StoreCommands.h"

#include <iostream>
#include <memory>
#include <unordered_set>

#include "checker/commands/DatabaseCommand.h"
#include "checker/commands/Outputs.h"
#include "checker/commands/StandardStreams.h"
#include "checker/commands/StoreRun.h"
#include "checker/formats/CatalogueFormats.h"
#include "checker/formats/OutputFile.h"
#include "checker/formats/Wording.h"
#include "checker/options/Accept.h"
#include "checker/options/ExitStatus.h"
#include "checker/options/UserError.h"
#include "checker/report/Characters.h"
#include "store/Catalogue.h"
#include "store/Judge.h"
#include "store/Merge.h"

namespace {

void requireStore(const Options& options) {
  if (options.store.empty()) throw UserError("which store? pass --store FILE");
}

// "GetSerial is no longer documented (3 calls); Tune is documented now (1 call)"
std::string reasonsOf(const store::Change& change) {
  std::string text;
  for (const store::ChangedMethod& method : change.methods) {
    text += (text.empty() ? "'" : "; '") + method.name + "' on " + method.plugin +
            (method.isDocumented ? " is documented now (" : " is no longer documented (") +
            counted(method.calls, "call", "calls") + ")";
  }
  return text;
}

std::string textOf(const store::Change& change) {
  const bool isSame = change.before == change.after;
  const std::string now = isSame ? std::string("still ") + nameOf(change.after)
                                 : std::string("was ") + nameOf(change.before) + ", now " + nameOf(change.after);
  return change.path + ": " + now + ": " + reasonsOf(change);
}

std::string summaryOf(const store::Judgement& judgement) {
  return counted(judgement.applications, "application", "applications") + ", " +
         counted(judgement.calls, "judged call", "judged calls") + ": " + std::to_string(judgement.changes) +
         " changed; " + std::to_string(judgement.worse) + " with findings now, " + std::to_string(judgement.better) +
         " without any now";
}

// Writes the reports of changed applications in the formats that were asked for.
class ChangedReports {
 public:
  ChangedReports(const Options& options, store::Store& store, const store::Database& database,
                 std::set<std::string> accepted)
      : store_(store),
        results_(store.connection()),
        judge_(store::judgeBy(database)),
        accepted_(std::move(accepted)),
        outputs_(options) {}

  void add(std::int64_t application, const std::string& change) {
    ApplicationReport report = store::latestReport(store_, results_, application, judge_);
    accept(report, accepted_);
    report.change = change;
    outputs_.add(report);
  }

  void end() { outputs_.end(false); }

 private:
  store::Store& store_;
  store::Results results_;
  store::Judge judge_;
  std::set<std::string> accepted_;
  Outputs outputs_;
};

// The methods that are accepted wherever they are called. What is meant for one application or file only can be shown
// in a report, but a judgement knows methods alone.
std::set<std::string> acceptedMethods(const Options& options) {
  Accepted accepted = readAccepted(options.accept, options.acceptFiles);
  if (!accepted.calls.isEmpty())
    throw UserError("judge takes names of methods only: --accept, or --accept-file with one name in a line");
  return std::move(accepted.names);
}

// The method that "TUNER.GetSerial" or "GetSerial" asks for.
std::pair<std::string, std::string> methodIn(const std::string& text) {
  const std::size_t dot = text.rfind('.');
  if (dot == std::string::npos) return {"", text};
  return {text.substr(0, dot), text.substr(dot + 1)};
}

CatalogueFormat catalogueFormat(const Options& options) {
  constexpr std::pair<const char*, CatalogueFormat> kNames[] = {{"text", CatalogueFormat::text},
                                                                {"json", CatalogueFormat::json},
                                                                {"csv", CatalogueFormat::csv},
                                                                {"html", CatalogueFormat::html}};
  std::string name = options.format;
  if (name.empty() && !options.outputs.empty()) {
    const std::string& path = options.outputs.front();
    name = path.substr(path.rfind('.') + 1);
    if (name == "txt") name = "text";
    if (name == "htm") name = "html";
  }
  if (name.empty()) return CatalogueFormat::text;
  for (const auto& [known, format] : kNames) {
    if (name == known) return format;
  }
  throw UserError("no format is known by the name of '" + options.outputs.front() +
                  "'; call it .txt, .json, .csv or .html, or pass --format");
}

}  // namespace

int judgeCommand(const Options& options) {
  requireStore(options);
  requireSoundDatabase(options);
  store::Store opened(options.store, store::Store::Mode::read);
  const store::Database database = databaseOf(options.database);
  const std::set<std::string> accepted = acceptedMethods(options);
  const bool hasReports = !options.format.empty() || !options.outputs.empty();
  std::unique_ptr<ChangedReports> reports;
  if (hasReports) reports = std::make_unique<ChangedReports>(options, opened, database, accepted);
  const store::Judgement judgement =
      store::judge(opened, database, {accepted.begin(), accepted.end()}, [&](const store::Change& change) {
        if (reports != nullptr) reports->add(change.application, textOf(change));
        if (options.format.empty() && !options.quiet) std::cout << printable(textOf(change)) << '\n';
      });
  if (reports != nullptr) reports->end();
  if (options.format.empty() && !options.quiet) std::cout << summaryOf(judgement) << '\n';
  return printedWith(judgement.changes > 0 ? kDiffers : kDone);
}

int catalogueCommand(const Options& options) {
  requireStore(options);
  if (options.outputs.size() > 1) throw UserError("a catalogue is written to one --output file at a time");
  const CatalogueFormat format = catalogueFormat(options);
  if (format == CatalogueFormat::html && !options.uses.empty())
    throw UserError("--uses has no page; there are text, json and csv");
  store::Store opened(options.store, store::Store::Mode::read);
  std::unique_ptr<OutputFile> file;
  if (!options.outputs.empty()) file = std::make_unique<OutputFile>(options.outputs.front());
  std::ostream& out = file == nullptr ? std::cout : file->stream();
  if (!options.uses.empty()) {
    const auto [plugin, method] = methodIn(options.uses);
    write(store::usesOf(opened, plugin, method), options.uses, format, out);
  } else {
    auto database = store::lastDatabase(opened);
    if (options.given.count("database") > 0) {
      requireSoundDatabase(options);
      database = databaseOf(options.database);
    }
    write(store::catalogueOf(opened, database.value_or(store::Database{})), format, out);
  }
  if (file != nullptr) file->finish();
  return printedWith(kDone);
}

int mergeCommand(const Options& options) {
  const store::Merged merged = store::merge(options.file, options.inputs);
  for (const std::string& content : merged.conflicts)
    std::cerr << "tarvo-check: the inputs have different results for the content with the SHA-256 " << content << '\n';
  if (merged.withoutContent > 0) {
    std::cerr << "tarvo-check: " << counted(merged.withoutContent, "report does", "reports do")
              << " not say what was checked, and will be checked again\n";
  }
  if (!options.quiet) {
    std::cout << printable(options.file) << ": " << counted(merged.applications, "application", "applications") << ", "
              << counted(merged.results, "different content", "different contents") << '\n';
  }
  return printedWith(merged.conflicts.empty() && merged.withoutContent == 0 ? kDone : kDiffers);
}
