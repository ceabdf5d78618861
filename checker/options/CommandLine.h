#pragma once

#include <optional>

#include "checker/options/Options.h"

// Reads the command line, the lists of applications that it names and the config file into `options`, which hold the
// defaults. Help, version, config text and mistakes are printed here: then the exit status comes back. Nothing comes
// back if the command is to be run.
std::optional<int> readCommandLine(int argc, const char* const* argv, Options& options);
