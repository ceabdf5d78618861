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

// A file that the user excluded from the check, or a folder with so many files.
struct Excluded {
  std::string path;
  std::uint64_t files = 1;
};

struct LogLine {
  std::string function;
  std::string text;
};

// A line and a column in a file as it was shipped, comments and all. Both count from 1; 0 is unknown, as in Flash
// files. A column is a character of UTF-8, and each byte that is part of none.
struct Position {
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
  // The rule that found it: four of the engine, then flow analysis and a trial run, for calls that only they found.
  enum class Found {
    variable,
    lookUp,
    flashVariable,
    flashLookUp,
    flow,
    trial,
    trialUncalled,  // the trial called functions that never ran: nobody showed that the application does
  };

  std::string path;
  Position place;      // of the first byte of `code`
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

// A step on the way from a page to a call: what the plug-in object went through.
struct TraceStep {
  enum class What { element, lookUp, variable, property, parameter, returned, call };

  What what = What::element;
  std::string text;  // for people: "the element 'tv'", "the parameter 'player' of 'start'"
  std::string path;
  Position place;
  std::string source;  // the line that it stands in, at most 160 bytes; may be empty
};

// Why a finding is accepted, as far as somebody said so; each may be empty.
struct Acceptance {
  std::string reason;
  std::string owner;    // who answers for it
  std::string expires;  // the last day on which it counts, "2026-12-31"
};

// A call of a method that is not documented, or deprecated.
struct Finding {
  enum class Status {
    reported,
    accepted,  // it, or its method wherever it is called, is excepted for this run
    known,     // it was in the baseline
    noted,     // shown and not counted: it is only possible, documented for another plug-in, or deprecated
  };

  // How sure it is that this method is called on this plug-in.
  enum class Confidence {
    possible,
    likely,     // also: only the engine says so
    certain,    // flow analysis followed the object all the way
    confirmed,  // a trial run saw the call
  };

  enum class Kind {
    undocumented,  // for every plug-in
    otherPlugin,   // documented, but not for this one; the device's list is one for all
    computed,      // its name is a value, which the engine took for the name: Execute(cmd)
    deprecated,    // documented, and advised against
  };

  Call call;
  Status status = Status::reported;
  bool isOnDevice = true;        // whether the device's host gets it; else it stands behind one where the engine stops
  std::string engineText;        // the line that the host gets, with its line feed; empty if it gets none
  std::string fingerprint = {};  // the same in a later version in which lines have moved
  Confidence confidence = Confidence::likely;
  Kind kind = Kind::undocumented;
  std::vector<TraceStep> trace = {};  // from the element to the call; empty if nobody followed it
  std::string arguments = {};         // what it was called with, as text; empty if it is not known
  std::string advice = {};            // what to do, for people: "did you mean 'GetVolume'?"; may be empty
  Acceptance acceptance = {};         // of an accepted one
};

// A call that no verdict is made on.
struct Undetermined {
  Call call;
  std::string reason;
  std::vector<TraceStep> trace = {};
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

// A well-known library that was recognised by its content.
struct Library {
  std::string name;  // with its version, if that is known
  std::string path;
};

// How much of a file ran during a trial.
struct Coverage {
  std::string path;
  std::uint64_t functions = 0;
  std::uint64_t functionsRun = 0;
  std::uint64_t bytes = 0;
  std::uint64_t bytesRun = 0;
};

// How often a documented method is called in a file.
struct DocumentedUse {
  std::string plugin;
  std::string method;
  std::string path;
  std::uint64_t calls = 0;
};

// What a run was, as evidence. What is not known is empty.
struct RunFacts {
  std::string tool;  // version of tarvo-check
  std::string engine;
  std::string database;        // path, as shown
  std::string databaseSha256;  // in hexadecimal
  std::string configFile;      // path of the one that options were taken from
  std::string started;         // date and time, "2026-11-21T22:06:32Z"
  std::string commandLine;
  bool all = false;  // whether all calls were asked for
  bool hasBaseline = false;
  bool allowIncomplete = false;
};

struct ApplicationReport {
  std::string application;  // as the user named it
  std::string sha256 = {};  // of its bytes, in hexadecimal; empty for a folder and for what cannot be read
  Verdict verdict = Verdict::clean;
  std::string failure;                     // why it could not be checked at all
  std::string brokenOff = {};              // why rules did not come to an end that were to run behind others
  std::vector<Finding> findings;           // by path, line and column
  std::vector<Undetermined> undetermined;  // if all calls were asked for, or other rules than the engine's ran
  std::vector<NotChecked> notChecked;
  std::vector<Excluded> excluded;  // what the user did not want to be looked at
  std::vector<PluginElement> elements;
  std::vector<Binding> bindings;
  std::vector<LogLine> log;   // if it was asked for
  std::uint64_t sources = 0;  // web sources that were looked at
  std::uint64_t flashFiles = 0;
  double seconds = 0;  // that the check took

  // What the verdict rests on.
  std::vector<std::string> rules;      // that ran, in this order: "engine", "flow", "trial"
  std::uint64_t judgedCalls = 0;       // calls on plug-in objects that a verdict was made on, documented or not
  std::uint64_t judgedPlugins = 0;     // plug-ins, by class identifier, that those were on
  std::uint64_t behindStops = 0;       // uses of undocumented APIs that are not listed: there, the engine has stopped
  bool hasCallsWithoutPlugin = false;  // calls look like plug-in calls, but no element of a plug-in is known
  std::vector<Library> libraries;      // that were recognised
  std::vector<Coverage> coverage;      // of a trial, by file
  std::string browser;                 // name and version of the one that the trial ran in

  // Of a check of all calls: with what two versions are compared.
  std::vector<DocumentedUse> documentedUses;  // by plug-in, method and path
  std::vector<std::string> files;             // by their paths, those in packages, too

  // For a store, if one asked for it.
  std::string content = {};              // hash of the content, in hexadecimal; of a folder, too
  std::string contentSuffix = {};        // by which its kind was told: ".wgt"; "/" for a folder
  std::uint64_t size = 0;                // bytes of its content
  std::vector<Finding> documented = {};  // calls of documented methods, without what stands around them
  std::string change = {};               // what another database changed, for people
  bool isStored = false;                 // not checked now: the store has what comes out for this content
};

Verdict verdictOf(bool hasFailed, bool hasFindings, bool hasGaps);

// The status of a finding that nothing excuses: `noted` or `reported`. `isPerPlugin`: whether a method that is
// documented for another plug-in only counts as undocumented.
Finding::Status statusFor(const Finding& finding, bool isPerPlugin);

// `path` as it counts from the application that it is in: "www/a.js" of "app.wgt!/www/a.js".
std::string pathIn(const std::string& application, const std::string& path);

// Takes out what stands at a call and around it in its file.
void forgetSource(Call& call);

// Sorts findings and undetermined calls by path, line and column; equal ones stay in their order.
void sortByPlace(ApplicationReport& report);

// Sets order, remarks and verdict from what the report holds. To be called whenever that has changed.
void conclude(ApplicationReport& report);

// How many findings have this status; and of those, how many are calls of deprecated methods.
std::size_t countOf(const ApplicationReport& report, Finding::Status status);
std::size_t countDeprecated(const ApplicationReport& report, Finding::Status status);

// "clean", "incomplete", "findings", "could not check"
const char* nameOf(Verdict verdict);

// "variable", "look-up", "flash-variable", "flash-look-up", "flow", "trial", "trial-uncalled"
const char* nameOf(Call::Found found);

// "reported", "accepted", "known", "noted"
const char* nameOf(Finding::Status status);

// "possible", "likely", "certain", "confirmed"
const char* nameOf(Finding::Confidence confidence);

// "undocumented", "otherPlugin", "computed", "deprecated"
const char* nameOf(Finding::Kind kind);

// "element", "look-up", "variable", "property", "parameter", "return", "call"
const char* nameOf(TraceStep::What what);
