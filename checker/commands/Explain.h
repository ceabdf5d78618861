#pragma once

#include <string>

#include "checker/run/EngineRun.h"

// All that the engine knows after a run, as JSON text with a line feed at its end: the code, the verdict, what was not
// checked (part, reason), the findings as the engine prints them, the log lines, and every list of the engine by its
// name. Bytes are written as the code points U+0000 to U+00FF, paths as on the device.
std::string explain(const Outcome& run);
