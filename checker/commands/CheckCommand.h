#pragma once

#include "checker/options/Options.h"

// Checks the applications of `options`, and shows the reports. Returns the exit status. Throws UserError if it cannot
// begin, or if a report cannot be written.
int checkCommand(const Options& options);
