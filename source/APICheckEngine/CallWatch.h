#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

// What a program that shows more than the host needs learns while the engine works. The host sets no watch; the engine
// then costs and does the same as without this file.

namespace FlashEngine_1_00 {

struct SWFStateMentInfo;

// A call on a plug-in object that a scanner found.
struct FoundCall {
  enum class On { variable, lookUp, flashVariable, flashLookUp };
  enum class Verdict {
    documented,
    undocumented,
    accepted,  // undocumented, and among CallWatch::accepted
    builtIn,   // passed over: the name of a built-in function stands in it
    opening,   // passed over: the call opens something
    unnamed,   // passed over: an extension call without a name
    common,    // passed over: the variable holds a helper object of the platform's script library
  };

  On on;
  Verdict verdict;
  const std::string& classId;
  const std::string& path;
  std::string_view text;  // a cleaned source or a part of it; the statements of a Flash file
  std::string_view call;  // the part of that text which was found
  int line;               // as in the finding line of the call
  std::string method;     // of a call that was passed over, what is taken for its name
};

struct CallWatch {
  // Told of every call, in the order in which the engine finds them; the same call as often as it is found.
  std::function<void(const FoundCall&)> found;

  // Methods that are taken for documented ones.
  std::set<std::string> accepted;

  // Whether the engine goes on where an undocumented call would have ended a scanner.
  bool all = false;
};

}  // namespace FlashEngine_1_00
