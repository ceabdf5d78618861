#pragma once

#include <memory>
#include <ostream>

#include "checker/formats/ReportWriter.h"

// Workflow commands of GitHub Actions, one line each: an annotation for each finding (an error; a notice if it does not
// count) and for each part that was not checked (a warning), then the verdicts as plain lines.
std::unique_ptr<ReportWriter> makeGitHubWriter(std::ostream& out, const WriterOptions& options);
