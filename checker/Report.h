#pragma once

#include <cstdint>
#include <string>
#include <vector>

// What came out of one application, as plain data: a worker process makes it, the formats show it.
//
// Texts are bytes as the application has them, of any encoding and with control characters: whoever shows one escapes
// it. Paths are the user's: "app.wgt!/www/js/main.js" is a file in a package.

// What came out of an application; of several, the last one of these counts.
enum class Verdict { clean, incomplete, findings, notChecked };

// A part of an application that the engine did not look at, and why.
struct NotChecked {
  std::string part;
  std::string reason;
};

struct LogLine {
  std::string function;
  std::string text;
};

// A place in a file as it was shipped, comments and all. Both count from 1; 0 is unknown, as in Flash files. A column
// is a character of UTF-8, and each byte that is part of none.
struct Place {
  int line = 0;
  int column = 0;
};

// One line of a file around a call, or as much of it as is shown.
struct SourceLine {
  int number = 0;
  std::string text;
};

// A call on a plug-in object.
struct Call {
  enum class Found { variable, lookUp, flashVariable, flashLookUp };

  std::string path;
  Place place;         // of the first byte of `code`
  int engineLine = 0;  // as the device counts: without the lines that block comments take; 0 or less: unknown
  std::string plugin;  // class identifier
  std::string method;  // empty if it has none
  Found found = Found::variable;
  std::string code;    // the call as it stands in the script or among the statements of a Flash file, at most 160 bytes
  SourceLine excerpt;  // at most 160 bytes of the call's line, around the call
  std::size_t mark = 0;            // where the call stands in the excerpt: offset and
  std::size_t markLength = 0;      // bytes
  std::vector<SourceLine> before;  // up to two lines, each cut to 160 bytes
  std::vector<SourceLine> after;
};

// A call of a method that is not documented.
struct Finding {
  enum class Status {
    reported,
    accepted,  // its method is excepted for this run
    known,     // it was in the baseline
  };

  Call call;
  Status status = Status::reported;
  bool isOnDevice = true;   // whether the device's host gets it; else it stands behind one where the engine stops
  std::string engineText;   // the line that the host gets, with its line feed; empty if it gets none
  std::string fingerprint;  // the same in a later version in which lines have moved
};

// A call that no verdict is made on.
struct Undetermined {
  Call call;
  std::string reason;
};

// An element of a plug-in in a page.
struct PluginElement {
  std::string plugin;
  std::string id;  // may be empty
  std::string path;
};

// A variable that holds a plug-in.
struct Binding {
  std::string plugin;
  std::string variable;
  std::string path;
};

struct ApplicationReport {
  std::string application;  // as the user named it
  Verdict verdict = Verdict::clean;
  std::string failure;                     // why it could not be checked at all
  std::vector<Finding> findings;           // in the order in which the engine made them
  std::vector<Undetermined> undetermined;  // if all calls were asked for
  std::vector<NotChecked> notChecked;
  std::vector<PluginElement> elements;
  std::vector<Binding> bindings;
  std::vector<LogLine> log;   // if it was asked for
  std::uint64_t sources = 0;  // web sources that were looked at
  std::uint64_t flashFiles = 0;
  double seconds = 0;  // that the check took
};

Verdict verdictOf(bool hasFailed, bool hasFindings, bool hasGaps);

// Sets the verdict from what the report holds.
void conclude(ApplicationReport& report);

// How many findings have this status.
std::size_t countOf(const ApplicationReport& report, Finding::Status status);

// "clean", "incomplete", "findings", "could not check"
const char* nameOf(Verdict verdict);

// "variable", "look-up", "flash-variable", "flash-look-up"
const char* nameOf(Call::Found found);

// "reported", "accepted", "known"
const char* nameOf(Finding::Status status);
