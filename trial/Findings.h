#pragma once

#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "trial/Places.h"

namespace trial {

// What the recorder of a page told with one call.
struct Message {
  enum class Kind { none, call, unknown, navigation, broken };

  Kind kind = Kind::none;
  std::string first;  // class identifier, address, or name of a built-in that does not work
  std::string method;
  std::string arguments;
  bool isGiven = false;  // the method is a word that the trial gave as an answer: one only where it is spelled
};

// Reads a text that begins with the recorder's secret. What is not as the recorder makes it is none.
Message messageOf(const std::string& text, const std::string& secret);

// The calls of all pages, each told once for a place; at most as many as anybody reads.
class Findings {
 public:
  // `files` outlive it.
  Findings(std::string mark, const std::vector<File>& files) : mark_(std::move(mark)), files_(files) {}

  // `isForced`: the trial has called functions in that page that never ran. A call that is seen without that, too, is
  // none of those; and what such a function takes for a name says nothing about names that cannot be determined.
  void add(const Message& message, const Json& callFrames, const Places& places, bool isForced = false);

  // Sorted by place, then by method, so that two runs give the same. Without those whose name is what is left of one
  // that could not be determined when nothing is put in: "Get" beside "Get…".
  std::vector<Call> calls() const;
  std::vector<Call> undetermined() const { return sorted(undetermined_); }

  // Whether there were more than are kept.
  bool isCut() const { return isCut_; }

 private:
  using Key = std::tuple<std::string, int, int, std::string, std::string>;  // path, line, column, method, plug-in
  using Calls = std::map<Key, Call>;

  static std::vector<Call> sorted(const Calls& calls);
  Frame written(const std::string& method, const Frame& user);
  std::string shown(std::string text) const;

  std::string mark_;
  const std::vector<File>& files_;
  Calls calls_;
  Calls undetermined_;
  std::map<std::tuple<std::string, std::string, int>, Frame> written_;  // by method, and place that ran it
  std::set<Key> empty_;  // names that could not be determined, with nothing put in
  bool isCut_ = false;
};

}  // namespace trial
