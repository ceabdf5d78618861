#pragma once

#include <memory>
#include <vector>

#include "checker/formats/OutputFile.h"
#include "checker/formats/ReportWriter.h"
#include "checker/options/Options.h"

// Everything that is written about the reports of a run: to files, and to standard output.
class Outputs {
 public:
  // Throws UserError if a file cannot be written, or an option does not fit the others.
  explicit Outputs(const Options& options);

  // The same for reports of runs that were made before: of `run`, or of several `parts`, which it says the common of.
  Outputs(const Options& options, const RunFacts& run, const std::vector<RunFacts>& parts);

  // Whether a report is asked for that says what the run was.
  static bool hasEvidence(const Options& options);

  // Whether reports go to standard output.
  bool isPrinting() const { return isPrinting_; }

  void add(const ApplicationReport& report);

  // Throws UserError if not all could be written.
  void end(bool wasInterrupted);

 private:
  std::vector<std::unique_ptr<OutputFile>> files_;
  std::vector<std::unique_ptr<ReportWriter>> writers_;
  bool isPrinting_ = false;
};
