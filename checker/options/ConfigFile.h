#pragma once

#include <string>

#include "checker/options/Options.h"

// Config files: TOML with the names of options as keys.

// Sets what the command line leaves open from the config file that it names. If it names none, from the nearest
// .tarvo-check.toml in the working directory and the directories above that can be trusted: it is this user's own and
// no part of an application under check. Files that are passed over, and the one that was found, are named on standard
// error. Does nothing for a command that has no --config. Throws UserError with file, line and column.
void readConfig(Options& options);

// The options in effect, as a config file for the working directory. Throws UserError if a value cannot stand in one.
std::string configText(const Options& options);
