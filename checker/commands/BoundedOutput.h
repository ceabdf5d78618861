#pragma once

#include <functional>
#include <iostream>
#include <string>

#include "checker/options/Options.h"

// What a command prints about one file.
struct CommandOutput {
  int status = 0;
  std::string out;  // for standard output
  std::string err;  // for standard error
};

// Has `work` done in a worker with the bounds of `options`, and prints what comes of it: what is for standard output,
// to `out`. Returns the exit status: 2 with a message if the worker passed a bound or broke, 128 and its number if a
// signal came.
int printFromWorker(const Options& options, const std::function<CommandOutput(const std::string& file)>& work,
                    std::ostream& out = std::cout);
