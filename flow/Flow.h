#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "flow/Relevance.h"

// Flow analysis: which methods an application's script calls on plug-in objects.
//
// Text in, calls with traces out. Nothing is run: the scripts of each page are read into a graph along which plug-in
// elements, functions, objects and constant texts go, from the elements of the page to the calls.

namespace flow {

struct File {
  std::string path;  // within the application, with '/'
  std::string bytes;
  // Its bytes are what the script of a Flash movie says, in the language of pages. It has a world of its own in each
  // page that shows it, and what a player gives it: getURL, ExternalInterface, _root. What it does not declare, the
  // page may have set.
  bool isMovie = false;
};

// The documented API: class identifiers with the methods that are documented for each.
struct Database {
  std::map<std::string, std::vector<std::string>> methods;
  std::vector<std::string> identifiers;  // of all plug-ins, documented or not
};

struct Limits {
  std::size_t scriptBytes = 3'000'000;  // of one script; its tree takes a hundred times that
  std::size_t pageBytes = 8'000'000;
  std::size_t parsedBytes = 12'000'000;  // of all scripts that are read
  std::uint64_t parseWork = 6'000'000;   // for all of them (ParseLimits)
  std::size_t nodes = 700'000;           // of the graph
  std::uint64_t steps = 12'000'000;      // values that go along edges, and what hears of them
};

// A place in a file as it was shipped; both count from 1. A column is a character.
struct Place {
  std::string path;
  int line = 0;
  int column = 0;
  std::size_t offset = 0;  // bytes in the text of the file
};

enum class Judgement { documented, documentedForOther, undocumented };
enum class Confidence { certain, likely, possible };

struct TraceStep {
  std::string what;  // "element", "look-up", "variable 'tv'", "parameter 'x'", ...
  Place place;
};

struct FoundCall {
  std::string plugin;  // class identifier
  std::string method;
  Place place;        // of the first byte of the call
  Place methodPlace;  // of the name of the method, or of what stands for it
  std::string code;   // the call, at most 160 bytes
  Judgement judgement = Judgement::undocumented;
  Confidence confidence = Confidence::certain;
  std::vector<TraceStep> trace;  // from the element to the call
  std::string advice;            // may be empty
  bool isReached = true;         // whether a page reaches the script
};

// Something that could not be determined, and why.
struct Open {
  std::string plugin;
  Place place;
  std::string reason;
  std::string code;
  bool isOnPlugin = false;  // the name of a method that is called on a plug-in
};

struct NotRead {
  std::string part;
  std::string reason;
};

struct Library {
  std::string name;
  std::string path;
};

// An element of a plug-in, once for each of its ids; with an empty one where it has none.
struct Element {
  std::string plugin;
  std::string id;
  Place place;
  bool isDeclared = false;  // whether a script file that is no module declares a global variable of that name
};

struct Result {
  std::vector<FoundCall> calls;  // by path, line, column
  std::vector<Open> open;
  std::vector<NotRead> notRead;
  std::vector<Library> libraries;
  std::vector<Element> elements;
};

class ParseCache;

// What editors want besides.
struct Extras {
  bool hasDocumentedTraces = false;  // calls of documented methods have their traces, too
  ParseCache* cache = nullptr;       // of earlier runs
  ForEach forEach = {};              // reads scripts in several threads (Relevance.h)
  bool isLast = false;               // the process ends soon, and its memory as a whole: none is given back before
};

// The result does not depend on the order of files, nor on the cache or the threads. `files` stay as they are: they may
// be as large as the application, and are not copied.
Result analyse(const std::vector<File>& files, const Database& database, const Limits& limits = {},
               const Extras& extras = {});

}  // namespace flow
