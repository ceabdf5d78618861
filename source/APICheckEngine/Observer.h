#pragma once

#include <set>
#include <string>
#include <string_view>

#include "platform/PartObserver.h"

// What a program that shows more than the host needs learns while the engine works. A host sets no observer; the engine
// then costs and does the same as without this file.

namespace FlashEngine_1_00 {

class APIAnalysis;

// A call on a plug-in object that a scanner found.
struct FoundCall {
  enum class On { variable, lookUp, flashVariable, flashLookUp };
  enum class Verdict {
    documented,
    undocumented,
    accepted,  // undocumented, and among the observer's accepted methods
    builtIn,   // passed over: the name of a built-in function stands in it
    opening,   // passed over: the call opens something
    unnamed,   // passed over: an extension call without a name
    common,    // passed over: the variable holds a helper object of the platform's script library
  };

  On on;
  Verdict verdict;
  bool isOnDevice;  // found for a host, too: before its scanner stops, and not as one of many equal calls
  const std::string& classId;
  std::string_view path;
  std::string_view text;  // a cleaned source or a part of it; the statements of a Flash file
  std::string_view call;  // the part of that text which was found
  int line;               // as in the finding line of the call
  std::string method;     // of a call that was passed over, what is taken for its name
};

// Set before a run, and there until it is over. Whatever it throws ends the run like std::bad_alloc: what was extracted
// is removed, and the exception comes out of StartAnalysis.
class Observer : public PartObserver {
 public:
  // Methods that are taken for documented ones.
  std::set<std::string> accepted;

  // Whether the engine goes on where an undocumented call ends a scanner, or the run. The code, the lists and the
  // finding lines are those of a run that stops; the observer alone is told of what stands behind.
  bool all = false;

  // Told of each call that is judged, in the order in which the engine finds them, and as often as it is found; with
  // `all`, also of those that are not judged or stand behind a stop.
  virtual void callFound(const FoundCall&) {}

  // The package at `path` is about to be extracted into `directory`.
  virtual void packageFound(const std::string& /*path*/, const std::string& /*directory*/) {}

  // A run for a host has stopped: until the stage ends, the engine works because of `all` only. What it logs then, no
  // host gets.
  virtual void stopPassed() {}
  virtual void stageEnded() {}

  // All stages are over. The lists are full, and extracted files are still there. Script of Flash files that is in no
  // listing is told of after this: it takes none of the engine's time budget.
  virtual void beforeRemoval(const APIAnalysis&) {}
};

}  // namespace FlashEngine_1_00
