#pragma once

#include <functional>

#include "checker/options/Options.h"
#include "checker/report/Report.h"

// Checks the applications of `options`, and shows the reports. Returns the exit status. Throws UserError if it cannot
// begin, or if a report cannot be written.
int checkCommand(const Options& options);

// Checks the applications as that does, and hands each report over, in their order; nothing is written. Returns 0, or
// 128 and the number of the signal that ended it.
int checkAll(const Options& options, const std::function<void(ApplicationReport&&)>& take);
