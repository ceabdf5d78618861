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

// What came out of an application; of several, the last one of these counts.
enum class Verdict { clean, incomplete, findings, notChecked };

// "clean", "incomplete", "findings", "could not check"
const char* nameOf(Verdict verdict);

// `failure` as below.
Verdict verdictOf(const EngineRun& run, const std::string& failure);

// Why an application could not be checked at all; empty if it could.
std::string failureOf(const EngineRun& run, const std::string& database);
