#pragma once

#include <memory>
#include <ostream>

#include "checker/formats/ReportWriter.h"

// A Code Quality report of GitLab: an array of issues, each with description, check_name, fingerprint, severity and
// location. Only what counts: findings that are reported, parts that were not checked, applications that could not be.
std::unique_ptr<ReportWriter> makeGitLabWriter(std::ostream& out, const WriterOptions& options);
