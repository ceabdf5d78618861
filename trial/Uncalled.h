#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "trial/Coverage.h"
#include "trial/Places.h"
#include "trial/Protocol.h"

namespace trial {

// The driver of a frame.
struct Driver {
  std::string session;
  std::int64_t context = 0;
  std::string object;
  int round = -1;  // that it was last driven in
};

// Hands the functions of a page that never ran to the drivers of its frames, which call them. Those of libraries are
// left out.
class Uncalled {
 public:
  // `coverage`: what has run in other pages; it is not changed. `protocol` and `places` outlive the object, and so does
  // the object its last answer.
  Uncalled(Protocol& protocol, const Places& places, Coverage coverage)
      : protocol_(protocol), places_(places), coverage_(std::move(coverage)) {}

  // Asks the browser what never ran, and for all functions and objects in the memory of the page. `done` is called when
  // the drivers have them; `isMore` is false if nothing ran since the last time that had not run before.
  void prepare(const std::string& session, std::vector<Driver> drivers, std::function<void(bool isMore)> done);

  // No more answers are wanted.
  void end() { ++generation_; }

 private:
  void ask(const std::string& session, const std::string& method, const Json& params,
           std::function<void(const Json& result)> answer);
  void wantScripts();
  void want(const Driver& driver, const std::string& source, const Json& ranges);
  void lookIntoMemory();
  void list(const Driver& driver, const std::string& name, std::function<void(const std::string& object)> listed);

  Protocol& protocol_;
  const Places& places_;
  Coverage coverage_;
  std::vector<Driver> drivers_;
  std::function<void(bool isMore)> done_;
  std::uint64_t generation_ = 0;
  int open_ = 0;                        // questions
  void (Uncalled::*next_)() = nullptr;  // when all of these are answered; null: done
  bool isFirst_ = true;
  bool isMore_ = true;
};

}  // namespace trial
