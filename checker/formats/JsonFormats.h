#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "checker/formats/ReportWriter.h"

// One object with all applications and a summary (docs/json.md).
std::unique_ptr<ReportWriter> makeJsonWriter(std::ostream& out, const WriterOptions& options);

// A line for each application, then one for the run.
std::unique_ptr<ReportWriter> makeJsonLinesWriter(std::ostream& out, const WriterOptions& options);

// JSON text, each byte that is part of no character as U+FFFD, and characters that are not seen as escapes. Lines after
// the first are indented by `indent` blanks, their depth included; all is one line if it is negative.
std::string jsonText(nlohmann::ordered_json json, int indent = -1);
