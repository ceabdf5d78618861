#pragma once

#include <string>
#include <vector>

#include "checker/lsp/TextPosition.h"
#include "checker/options/AcceptedCalls.h"
#include "checker/run/ApplicationFiles.h"
#include "checker/run/Inspection.h"

namespace flow {
class ParseCache;
}

// A look at an application as an editor has it: what the server asks for, and what comes back from the process that
// does it, as bytes between the two.

struct LookRequest {
  std::string application;
  UnsavedTexts unsaved;
  bool isQuestion = false;  // only what the placeholder (Placeholder.h) is called on is asked for
};

struct LookPlace {
  std::string path;
  TextRange range;
};

struct LookStep {
  std::string text;
  LookPlace place;
};

// A call on a plug-in.
struct LookCall {
  enum class Severity { none = 0, error = 1, information = 3 };  // as the protocol has them

  LookPlace place;  // from the object to the end of the method's name
  TextRange name;   // of the method
  std::string plugin;
  std::string method;
  std::string state;                   // "documented", "undocumented", ...
  Severity severity = Severity::none;  // none: nothing is to be shown unless it is asked for
  std::string message;                 // for people
  std::string replacement;             // the method that is suggested in its place; may be empty
  std::vector<LookStep> trace;         // from the element to the call; may be empty
};

struct LookNote {
  std::string path;
  std::string text;
};

struct Look {
  std::string failure;  // why there is nothing else
  std::vector<LookCall> calls;
  std::vector<LookNote> notes;  // what was not checked
};

// Does it, in this process. `cache` may be null; `inspection` says how an application is checked.
Look look(const LookRequest& request, const InspectionOptions& inspection, AcceptedCalls& accepted,
          flow::ParseCache* cache);

std::string bytesOf(const LookRequest& request);
std::string bytesOf(const Look& look);

// Throw std::exception if these are no such bytes.
LookRequest requestOf(const std::string& bytes);
Look lookOf(const std::string& bytes);
