#pragma once

#include <functional>
#include <set>
#include <string>

#include "checker/options/Options.h"
#include "checker/report/Report.h"
#include "checker/run/Inspection.h"
#include "store/Store.h"

// A check that keeps its results in a store (docs/store.md): what the store has is not checked again.

// The database at `path`, as a store keeps it. Throws what listDatabase throws.
store::Database databaseOf(const std::string& path);

// Takes the accepted methods among the findings of `report` out of what counts.
void accept(ApplicationReport& report, const std::set<std::string>& accepted);

class StoreRun {
 public:
  // Throws store::StoreError if the store cannot be used.
  StoreRun(const Options& options, const InspectionOptions& inspection);

  // How applications are to be inspected: the store wants all calls.
  InspectionOptions inspection() const { return inspection_; }

  // In a worker: the report that `check` makes of an application, or one that says that the store has its result. An
  // application that changes while it is read could not be checked.
  ApplicationReport inspect(const std::string& application, const std::function<ApplicationReport()>& check) const;

  // In the parent: `report` as it came from the worker. Writes it, and gives back what is to be shown.
  ApplicationReport keep(const ApplicationReport& report);

  // No application is left.
  void finish() { run_.finish(); }

 private:
  void addDeprecated(ApplicationReport& report) const;
  void applyWishes(ApplicationReport& report) const;

  InspectionOptions inspection_;
  FlowOptions wishes_;
  std::set<std::string> accepted_;
  store::Database database_;
  store::Judge judge_;
  store::Store store_;
  store::RunWriter run_;
  store::KnownContents known_;
};
