#pragma once

#include <memory>
#include <ostream>

#include "checker/formats/ReportWriter.h"

// SARIF 2.1.0: one run with one rule. Results come first, what they refer to stands behind them.
std::unique_ptr<ReportWriter> makeSarifWriter(std::ostream& out, const WriterOptions& options);
