// All inputs are read before the first byte is written: the formats begin with what the runs were, which reports in
// the format jsonl say at their end, and what cannot be read must leave nothing behind that is half a report.
// Test: tests/checker/ReportCommand_test.cpp.

#include "checker/commands/ReportCommand.h"

#include <iostream>
#include <iterator>

#include "checker/commands/EarlierReport.h"
#include "checker/commands/Outputs.h"
#include "checker/commands/StandardStreams.h"
#include "checker/formats/Wording.h"
#include "checker/options/ExitStatus.h"
#include "checker/report/Characters.h"

int reportCommand(const Options& options) {
  EarlierReport all;
  for (const std::string& input : options.inputs)
    all.add(earlierReport(input));
  const std::vector<RunFacts> parts = all.runs.size() > 1 ? all.runs : std::vector<RunFacts>();
  Outputs outputs(options, together(all.runs), parts);
  Totals totals;
  for (const ApplicationReport& report : all.applications) {
    outputs.add(report);
    totals.add(report);
  }
  outputs.end(all.wasInterrupted);
  if (!outputs.isPrinting() && !options.quiet) std::cout << printable(summaryOf(totals)) << '\n';
  return printedWith(kDone);
}
