#pragma once

#include <string>
#include <vector>

#include "checker/EngineRun.h"

// What a person reads of a run.

struct Finding {
  std::string engineLine;  // as the engine prints it on the device, with its line feed
  std::string path;        // as the user names it: "app.wgt!/www/js/main.js"
  int line;                // 1-based; 0 or less: unknown
  std::string method;
  std::string plugin;  // class identifier
};

// The findings of a run, in the order in which the engine made them.
std::vector<Finding> findingsOf(const EngineRun& run);

// `text` for a terminal: control characters, which a file's name can hold, as "\x1b".
std::string printable(const std::string& text);

// "app.wgt!/www/js/main.js:57: undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER"
std::string textOf(const Finding& finding);

// Why an application of this code got no verdict; empty for the codes that are one.
std::string failureOf(RunResult code, const std::string& database);
