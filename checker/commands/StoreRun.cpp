// A check with a store. The worker hashes the content first and is done if the store has it; the parent alone writes.
// What comes back is judged by the database of this run, whoever checked it.
// Test: tests/checker/Store_test.cpp.

#include "checker/commands/StoreRun.h"

#include <algorithm>
#include <filesystem>

#include "APICheckEngine/APIAnalysis.h"
#include "checker/commands/DatabaseCommand.h"
#include "checker/options/UserError.h"
#include "store/Content.h"
#include "store/Judge.h"

namespace {

std::vector<std::string> rulesOf(const InspectionOptions& inspection) {
  std::vector<std::string> rules{"engine"};
  if (inspection.flow.isOn) rules.emplace_back("flow");
  return rules;
}

// All that changes what is found in some content; not what makes that it cannot be checked, which is tried again.
store::Settings settingsOf(const InspectionOptions& inspection) {
  return {TARVO_VERSION, FlashEngine_1_00::kEngineVersion, store::optionsOf(rulesOf(inspection))};
}

void setContent(ApplicationReport& report, const store::Content& content) {
  report.content = store::hexOf(content.sha256);
  report.contentSuffix = content.suffix;
  report.size = content.size;
}

}  // namespace

store::Database databaseOf(const std::string& path) {
  const auto content = store::contentOf(path);
  if (!content) throw UserError("the database '" + path + "' cannot be read");
  store::Database database{std::filesystem::absolute(path).lexically_normal().string(), content->sha256, {}};
  for (const DatabaseGroup& group : listDatabase(path).groups) {
    for (const DatabaseFunction& function : group.functions)
      database.methods.emplace_back(group.name, function.name);
  }
  return database;
}

void accept(ApplicationReport& report, const std::set<std::string>& accepted) {
  for (Finding& finding : report.findings) {
    const bool isAccepted = accepted.count(finding.call.method) > 0;
    if (isAccepted && finding.status == Finding::Status::reported) finding.status = Finding::Status::accepted;
  }
  conclude(report);
}

StoreRun::StoreRun(const Options& options, const InspectionOptions& inspection)
    : inspection_(inspection),
      wishes_(inspection.flow),
      accepted_(inspection.accepted),
      database_(databaseOf(options.database)),
      judge_(store::judgeBy(database_)),
      store_(options.store, store::Store::Mode::write),
      run_(store_, settingsOf(inspection), database_, options.run),
      known_(run_.knownContents()) {
  inspection_.all = true;
  inspection_.documented = inspection_.flow.isDocumented = inspection_.flow.isPossible = true;
  inspection_.accepted.clear();  // a store knows no exceptions: they are made when a report is shown
}

ApplicationReport StoreRun::inspect(const std::string& application,
                                    const std::function<ApplicationReport()>& check) const {
  ApplicationReport report;
  report.application = application;
  const auto before = store::contentOf(application);
  if (before && known_.contains(*before)) {
    report.isStored = true;
    setContent(report, *before);
    return report;
  }
  report = check();
  for (Finding& finding : report.documented) {  // a store has neither
    finding.trace.clear();
    forgetSource(finding.call);
  }
  if (!before) return report;
  const auto after = store::contentOf(application);
  if (after && *after == *before) {
    setContent(report, *before);
  } else {
    report.failure = "it changed while it was read";
    conclude(report);
  }
  return report;
}

// A store has documented calls; which of them are deprecated is the database's to say, as which are documented is.
void StoreRun::addDeprecated(ApplicationReport& report) const {
  for (Finding finding : report.documented) {
    if (!inspection_.deprecations.has(finding.call.plugin, finding.call.method)) continue;
    inspection_.deprecations.judge(finding);
    if (accepted_.count(finding.call.method) > 0) finding.status = Finding::Status::accepted;
    report.findings.push_back(std::move(finding));
  }
}

// A store also has calls that are only possible, and does not know what counts for whom.
void StoreRun::applyWishes(ApplicationReport& report) const {
  auto& findings = report.findings;
  findings.erase(std::remove_if(findings.begin(), findings.end(),
                                [&](const Finding& finding) {
                                  return finding.confidence == Finding::Confidence::possible && !wishes_.isPossible;
                                }),
                 findings.end());
  for (Finding& finding : findings)
    if (finding.kind == Finding::Kind::otherPlugin) finding.status = statusFor(finding, wishes_.isPerPlugin);
}

ApplicationReport StoreRun::keep(const ApplicationReport& report) {
  ApplicationReport shown = report;
  if (report.isStored) {
    auto stored = run_.stored(report.application, store::bytesOfHex(report.content), report.contentSuffix,
                              rulesOf(inspection_), judge_);
    if (stored) {
      shown = std::move(*stored);
    } else {  // a worker can send anything
      shown = {};
      shown.application = report.application;
      shown.failure = "the process that checked it told of a result that the store does not have";
    }
  }
  if (!report.brokenOff.empty()) {  // no result: it is tried again
    ApplicationReport failed = shown;
    failed.failure = report.brokenOff;
    run_.add(failed);
  } else {
    run_.add(shown);
  }
  applyWishes(shown);
  addDeprecated(shown);
  accept(shown, accepted_);
  return shown;
}
