#pragma once

#include <map>
#include <string>
#include <vector>

#include "trial/PackageServer.h"
#include "trial/Protocol.h"

namespace trial {

// A script as the browser told of it when it was compiled.
struct Script {
  std::string url;  // of the file or page that it stands in; empty for code that was made by code
  int line = 0;     // where it begins, from 0
  int column = 0;
  std::int64_t context = 0;  // that it runs in
  std::vector<Json> made;    // the stack that made it, innermost first; empty for one that the page loaded
};

// The scripts of one session, and where their code stands in the files of the application.
//
// What is told as a name by the code itself ("//# sourceURL") is not believed.
class Places {
 public:
  explicit Places(const PackageServer& server) : server_(&server) {}

  // For `Debugger.scriptParsed`.
  void add(const Json& params);

  // Null if it is not known.
  const Script* find(const std::string& id) const;

  // All of them, by their identifiers.
  const std::map<std::string, Script>& scripts() const { return scripts_; }

  // The frames of a stack in files of the application, innermost first, at most 20. Code that was made stands where it
  // was made. `method` is what was called: a line of a page that does not hold it is not believed if the code was made.
  std::vector<Frame> frames(const Json& callFrames, const std::string& method) const;

  // The file of a script; null if it is none of the application's.
  const File* fileOf(const Script& script) const { return server_->fileOf(script.url); }

 private:
  void append(const Json& callFrames, const std::string& method, int depth, std::vector<Frame>& frames) const;

  const PackageServer* server_;
  std::map<std::string, Script> scripts_;
};

// The frame that a call is shown at. The innermost outside libraries that spells the method: what stands further in is
// a helper that many calls go through. Else the innermost outside libraries; else the innermost; else none.
Frame placeOf(const std::vector<Frame>& frames);

// Where a call of `method` is written, outside libraries and comments: for calls that no script of a file makes by
// itself, such as texts that are run, templates, addresses of script, and what the browser calls. Texts and markup go
// before functions that are passed on, these before calls; of equals the first. No path if it is nowhere. In the file
// of `user`, which ran it, only what stands in front of that line counts.
Frame writtenPlace(const std::vector<File>& files, const std::string& method, const Frame& user);

// Whether a file is a library, as its name tells: jquery-1.8.min.js, vendor/backbone.js.
bool isLibrary(const std::string& path);

// The text of a line, from 1; empty if there is none.
std::string lineOf(const std::string& bytes, int line);

// The column, from 1, in characters of UTF-8, of one that the browser counts from 0 in its own units: those of UTF-16,
// or bytes where `expected`, which stands there, stands at that byte.
int characterColumn(const std::string& line, int units, const std::string& expected);

}  // namespace trial
