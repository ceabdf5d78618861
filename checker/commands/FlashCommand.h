#pragma once

#include "checker/options/Options.h"

// tarvo-check disassemble, and decompile: print what the engine makes of a Flash file. They return the exit status: 0,
// or 2 if the file cannot be read whole. What is missing is said on standard error.
int disassembleCommand(const Options& options);
int decompileCommand(const Options& options);
