// Puts together the check of many applications: a worker for each (run/), which makes its report; exceptions and the
// baseline (options/), which say what counts; the writers (report/, formats/); and the exit status.
//
// Of an application: 2 if it could not be checked at all, else 1 if an undocumented API is used, else 3 if a part of it
// was not checked, else 0. Of all together: the first of these.
// Test: tests/checker/Catalogue_test.cpp.

#include "checker/commands/CheckCommand.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>

#include "checker/commands/DatabaseCommand.h"
#include "checker/commands/Outputs.h"
#include "checker/commands/StoreRun.h"
#include "checker/formats/Wording.h"
#include "checker/options/Accept.h"
#include "checker/options/Applications.h"
#include "checker/options/Baseline.h"
#include "checker/options/ExitStatus.h"
#include "checker/options/Suggestion.h"
#include "checker/options/UserError.h"
#include "checker/report/Characters.h"
#include "checker/report/Progress.h"
#include "checker/run/Inspection.h"
#include "checker/run/SentReport.h"
#include "checker/run/WorkerPool.h"
#include "store/Shard.h"
#include "trial/Browser.h"

namespace {

constexpr ExitStatus kStatusOf[] = {kDone, kIncomplete, kDiffers, kFailed};  // of each Verdict
constexpr int kSignalled = 128;

// ---- which applications --------------------------------------------------------------------------------------------

// What is checked, in order.
struct Applications {
  PathList names;
  std::map<std::string, std::string> refused;  // of these, those that are not looked at, with the reason
};

// The applications as named, with those of a pile in its place; of these, the ones in this part.
Applications applicationsOf(const Options& options) {
  Applications all;
  const store::Shard shard = options.shard.empty() ? store::Shard{} : store::shardOf(options.shard);
  const auto add = [&](const std::string& name) {
    if (shard.has(name)) all.names.add(name);
  };
  PathList::Reader named(*options.named);
  for (std::string name; named.next(name);) {
    std::error_code error;
    const bool isDirectory = !options.asOne && std::filesystem::is_directory(name, error);
    Pile pile = isDirectory ? pileIn(name) : Pile{};
    if (pile.applications.empty()) {
      add(name);
      continue;
    }
    if (!options.quiet) {
      std::cerr << printable(
                       "tarvo-check: '" + name + "' holds " + counted(pile.applications.size(), "package", "packages") +
                       " and no web source of its own: each is checked as an application; --as-one checks all as one")
                << '\n';
    }
    for (const std::string& application : pile.applications)
      add(application);
    all.refused.merge(pile.refused);
  }
  return all;
}

ApplicationReport reportOn(const std::string& application, const Applications& all, const InspectionOptions& options,
                           const SendFirst& sendFirst) {
  const auto refused = all.refused.find(application);
  const auto soFar = [&](const ApplicationReport& report) { sendFirst(bytesOf(report)); };
  ApplicationReport report = refused == all.refused.end() ? inspect(application, options, soFar) : ApplicationReport();
  report.application = application;
  if (refused != all.refused.end()) report.failure = refused->second;
  if (isFalselyCalledPackage(application) && report.notChecked.empty())
    report.failure = "it is not a zip package, although its name says so";
  conclude(report);
  return report;
}

// ---- the run -------------------------------------------------------------------------------------------------------

void printLines(const std::vector<std::string>& lines) {
  for (const std::string& line : lines)
    std::cerr << printable("tarvo-check: " + line) << '\n';
}

void printLog(const std::vector<LogLine>& log) {
  for (const LogLine& line : log)
    std::cerr << line.function << ": " << printable(line.text) << '\n';
}

// Whether all calls are looked at. With a baseline or exceptions they are: what stands behind a call that is known, or
// accepted where it stands, may be new.
bool seesAll(const Options& options, const Accepted& accepted) {
  return options.all || !options.baseline.empty() || !accepted.calls.isEmpty();
}

// Each report passes through `take`, on its way from its worker to the outputs.
class Run : public RunListener {
 public:
  // `store` may be null.
  Run(const Options& options, const Accepted& accepted, bool isOnlyApplication, StoreRun* store)
      : isOnlyApplication_(isOnlyApplication),
        store_(store),
        acceptedCalls_(accepted.calls),
        unused_(accepted.names),
        seesAll_(seesAll(options, accepted)),
        allowsIncomplete_(options.allowIncomplete),
        isQuiet_(options.quiet),
        baseline_(options.baseline.empty() ? std::nullopt : std::optional<Baseline>(options.baseline)),
        outputs_(options),
        progress_(!options.quiet && !options.noProgress && isCapableTerminal(STDERR_FILENO)) {}

  bool take(const std::string& application, WorkerResult result) override {
    ApplicationReport report = reportOf(application, result);
    if (store_ != nullptr && !keep(report)) return false;
    if (!acceptedCalls_.isEmpty()) acceptedCalls_.apply(report);
    if (baseline_) baseline_->apply(report, isOnlyApplication_);
    unused_.see(report);
    if (isPrintedBesideProgress_ || !report.log.empty()) progress_.clear();
    printLog(report.log);
    outputs_.add(report);
    totals_.add(report);
    return hasPrinted();
  }

  void showState(const RunState& state) override { progress_.show(state); }

  // Throws UserError if not all could be written; nobody is told if it is only that nobody reads it any more.
  void end(bool wasInterrupted) {
    progress_.clear();
    outputs_.end(wasInterrupted);
    if (!storeError_.empty()) throw UserError(storeError_);
    if (store_ != nullptr && !wasInterrupted) store_->finish();
    if (!outputs_.isPrinting() && !isQuiet_) std::cout << printable(summaryOf(totals_)) << '\n';
    if (!isQuiet_ && !wasInterrupted && seesAll_) printUnused();
    if (!hasPrinted() && printError_ != EPIPE)
      throw UserError(std::string("cannot write to standard output: ") + std::strerror(printError_));
  }

  int status() const {
    for (const Verdict verdict : {Verdict::notChecked, Verdict::findings, Verdict::incomplete}) {
      const bool isAllowed = verdict == Verdict::incomplete && allowsIncomplete_;
      if (totals_.of(verdict) > 0 && !isAllowed) return kStatusOf[static_cast<std::size_t>(verdict)];
    }
    return kDone;
  }

 private:
  // Whether the run can go on: what cannot be kept need not be checked.
  bool keep(ApplicationReport& report) {
    try {
      report = store_->keep(report);
    } catch (const store::StoreError& error) {
      storeError_ = error.what();
    }
    return storeError_.empty();
  }

  bool hasPrinted() {
    if (printError_ != 0 || std::cout.flush()) return printError_ == 0;
    printError_ = errno;
    return false;
  }

  void printUnused() const {
    for (const std::string& name : unused_.names())
      std::cerr << "tarvo-check: no finding is of '" << printable(name) << "', which is accepted\n";
    printLines(acceptedCalls_.unused());
  }

  bool isOnlyApplication_;
  StoreRun* store_;
  std::string storeError_;
  AcceptedCalls acceptedCalls_;
  UnusedNames unused_;
  bool seesAll_;  // no call is hidden behind one at which the engine stops
  bool allowsIncomplete_;
  bool isQuiet_;
  std::optional<Baseline> baseline_;
  Outputs outputs_;
  Progress progress_;
  bool isPrintedBesideProgress_ = isatty(STDOUT_FILENO) == 1;
  int printError_ = 0;
  Totals totals_;
};

// Throws UserError if there is no browser for a trial that was asked for.
TrialOptions trialOptions(const Options& options) {
  TrialOptions trial{options.trial, options.browser, options.trialSeconds, options.bounds.memory,
                     options.trialUncalled};
  if (!trial.isOn) return trial;
  trial.browser = trial::findBrowser(options.browser);
  if (!trial.browser.empty()) return trial;
  if (options.browser.empty())
    throw UserError(
        "--trial needs Chromium, and there is none; install it (apt-get install chromium), or pass --browser FILE");
  throw UserError("no browser at '" + options.browser + "'" + didYouMeanFile(options.browser));
}

FlowOptions flowOptions(const Options& options) {
  return {!options.device && FlowRun::isThere(), options.possible, options.perPlugin};
}

InspectionOptions inspectionOf(const Options& options, const Accepted& accepted, bool hasEvidence,
                               std::size_t applications) {
  InspectionOptions inspection{options.database,      seesAll(options, accepted), options.log,
                               accepted.names,        options.bounds.unpacked,    hasEvidence,
                               trialOptions(options), flowOptions(options)};
  inspection.exclusions = Exclusions(options.excludes, options.excludeInPackages);
  inspection.threads = inspection.flow.threads = options.threadsFor(applications);
  inspection.flow.isLast = !inspection.trial.isOn;
  inspection.flow.database = std::make_shared<const DatabaseListing>(listDatabase(options.database));
  inspection.deprecations = Deprecations(*inspection.flow.database, options.denyDeprecated);
  return inspection;
}

// Hands reports on, with what is accepted in them.
class Handover : public RunListener {
 public:
  Handover(AcceptedCalls accepted, const std::function<void(ApplicationReport&&)>& take)
      : accepted_(std::move(accepted)), take_(take) {}

  bool take(const std::string& application, WorkerResult result) override {
    ApplicationReport report = reportOf(application, result);
    accepted_.apply(report);
    take_(std::move(report));
    return true;
  }

  void showState(const RunState& /*state*/) override {}

 private:
  AcceptedCalls accepted_;
  const std::function<void(ApplicationReport&&)>& take_;
};

}  // namespace

int checkAll(const Options& options, const std::function<void(ApplicationReport&&)>& take) {
  requireSoundDatabase(options);
  const Applications applications = applicationsOf(options);
  Accepted accepted = readAccepted(options.accept, options.acceptFiles);
  const InspectionOptions inspection = inspectionOf(options, accepted, true, applications.names.size());
  WorkerBounds bounds = options.bounds;
  bounds.besides = trialSeconds(inspection.trial);
  bounds.threads = inspection.threads;
  Handover handover(std::move(accepted.calls), take);
  const Work work = [&](const std::string& application, const SendFirst& sendFirst) {
    return bytesOf(reportOn(application, applications, inspection, sendFirst));
  };
  const Signals signals;
  const int signal = workOnEach(applications.names, options.jobs, bounds, work, signals, handover);
  return signal == 0 ? 0 : kSignalled + signal;
}

int checkCommand(const Options& given) {
  Options options = given;
  if (!options.store.empty()) {
    options.all = true;  // a store has all calls
    if (options.trial)
      throw UserError("what a browser did is not the same each time; --store does not go with --trial");
    if (!options.excludes.empty())
      throw UserError("a store keeps what is in an application as a whole; --store does not go with --exclude");
  }
  requireSoundDatabase(options);
  const Applications applications = applicationsOf(options);
  const Accepted accepted = readAccepted(options.accept, options.acceptFiles);
  if (!options.quiet) printLines(accepted.calls.expired());
  InspectionOptions inspection =
      inspectionOf(options, accepted, Outputs::hasEvidence(options), applications.names.size());
  WorkerBounds bounds = options.bounds;
  bounds.besides = trialSeconds(inspection.trial);
  bounds.threads = inspection.threads;
  std::optional<StoreRun> store;
  if (!options.store.empty()) {
    store::keepPagesFromForks();
    store.emplace(options, inspection);
    inspection = store->inspection();
  }
  Run run(options, accepted, applications.names.size() == 1, store ? &*store : nullptr);
  const Work work = [&](const std::string& application, const SendFirst& sendFirst) {
    const auto check = [&] { return reportOn(application, applications, inspection, sendFirst); };
    const bool isKept = store && applications.refused.count(application) == 0;
    return bytesOf(isKept ? store->inspect(application, check) : check());
  };
  const Signals signals;  // as long as there are files that are half written
  const int signal = workOnEach(applications.names, options.jobs, bounds, work, signals, run);
  run.end(signal != 0);
  return signal != 0 ? kSignalled + signal : run.status();
}
