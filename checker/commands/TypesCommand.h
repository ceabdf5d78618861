#pragma once

#include "checker/options/Options.h"

// tarvo-check types: prints declarations of the plug-ins and of an application's ids for TypeScript, or writes them to
// the file of --output. Returns the exit status: 0, or 2 if the application cannot be read. Throws UserError if it
// cannot begin, or if the file cannot be written.
int typesCommand(const Options& options);
