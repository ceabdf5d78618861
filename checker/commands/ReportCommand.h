#pragma once

#include "checker/options/Options.h"

// tarvo-check report: writes reports of earlier runs, put together, in any format. Nothing is checked. Returns the exit
// status; throws UserError, before anything is written, if one cannot be read.
int reportCommand(const Options& options);
