#pragma once

#include <memory>
#include <ostream>

#include "checker/ReportWriter.h"

// One line for each finding, in the form that editors and CI logs understand, then the verdict; a summary of several
// applications at the end.
std::unique_ptr<ReportWriter> makeTextWriter(std::ostream& out, const WriterOptions& options);

// `text` for a terminal: control characters, which a file's name can hold, as "\x1b".
std::string printable(const std::string& text);
