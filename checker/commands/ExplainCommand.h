#pragma once

#include "checker/options/Options.h"

// tarvo-check explain: prints as JSON all that the engine knows after a run. Returns the exit status: 0, or 2 if the
// application could not be checked. Throws UserError if it cannot begin.
int explainCommand(const Options& options);
