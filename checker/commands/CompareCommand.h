#pragma once

#include "checker/options/Options.h"

// tarvo-check compare: two versions of applications, each checked or taken from a report. Returns the exit status: 2 if
// an application could not be checked, else 1 if there is a new finding that counts, else 3 if a part is newly not
// looked at, else 0. Throws UserError if a version cannot be read.
int compareCommand(const Options& options);
