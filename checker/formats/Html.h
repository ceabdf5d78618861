#pragma once

#include <memory>
#include <ostream>

#include "checker/ReportWriter.h"

// One page that needs nothing else: totals, a table of applications, their calls with the lines around them. It stands
// in memory until the end, for its totals come first; at most 500 calls of an application are in it.
std::unique_ptr<ReportWriter> makeHtmlWriter(std::ostream& out, const WriterOptions& options);
