#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

// Runs the pages of an application in a real browser, with plug-in objects that record what is called on them.
//
// Knows neither the engine nor the checker: files, class identifiers and documented methods come in, calls with their
// stacks go out. What it finds was called; what it does not find may be called all the same.
namespace trial {

// A file of the application. Paths are unique, relative, with '/'; files of a package inside it are below its name.
struct File {
  std::string path;
  std::string bytes;
};

struct Input {
  std::vector<File> files;
  std::vector<std::string> startPages;  // paths; the first is the application's own
  std::vector<std::string> classIds;    // of the plug-ins
  std::string extension;                // the one of them whose methods go through Execute
  std::set<std::string> documented;     // methods, of whatever plug-in
};

// All pages of an application together have so many times the time of one.
constexpr unsigned kPagesOfTime = 3;

struct Options {
  std::string browser;    // empty: chromium of the PATH
  std::string directory;  // empty, and the caller's to remove
  unsigned secondsPerPage = 20;
  unsigned memory = 1024;      // MiB that all processes of the browser may take together
  bool callsUncalled = false;  // also calls functions that never ran, after all else
};

// A place in a file as it was shipped; both numbers count from 1, columns in characters of UTF-8.
struct Frame {
  std::string function;
  std::string path;
  int line = 0;
  int column = 0;
  bool isMade = false;     // by code of its own, at run time; the place is where that was done
  bool isSpelled = false;  // the name of the method stands there
};

// A call that was made on a plug-in object. Texts are the page's: escape them when they are shown.
struct Call {
  std::string plugin;     // class identifier
  std::string method;     // of one that could not be determined: with "…" where nobody knows
  std::string arguments;  // as "1, "text", function"; at most 8, texts cut
  // The innermost frame in code of the application that is no library, of those that spell the method if one does. For
  // code that was made, where its text stands. No path: unknown.
  Frame place;
  std::vector<Frame> trace;  // innermost first
  bool isForced = false;     // seen only after the trial itself had called functions that never ran
};

struct Incomplete {
  std::string page;
  std::string reason;
};

// How much of the script in a file has run.
struct FileCoverage {
  std::string path;
  std::uint64_t functions = 0;
  std::uint64_t functionsRun = 0;
  std::uint64_t bytes = 0;
  std::uint64_t bytesRun = 0;
};

struct Result {
  std::string failure;             // why there was no trial at all; empty if there was
  std::string browser;             // its name and version
  std::vector<Call> calls;         // of methods that are not documented; sorted by place
  std::vector<Call> undetermined;  // whose method only the network, the user or a plug-in knows
  std::vector<Incomplete> incomplete;
  std::vector<FileCoverage> coverage;  // sorted by path; of all files with script
  std::vector<std::string> pages;      // that were run
  double seconds = 0;
  std::uint64_t memory = 0;  // bytes, at most at any time that it was looked at
};

// Never throws, but for want of memory in this process; a report always comes.
Result run(const Input& input, const Options& options);

}  // namespace trial
