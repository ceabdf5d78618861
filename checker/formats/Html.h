#pragma once

#include <memory>
#include <ostream>

#include "checker/formats/ReportWriter.h"

// One page that needs nothing else, with all applications and all their calls: to search, filter, decide on and print.
// Written as reports come.
std::unique_ptr<ReportWriter> makeHtmlWriter(std::ostream& out, const WriterOptions& options);
