#pragma once

#include <chrono>
#include <cstddef>
#include <string>

// How far a run is.
struct RunState {
  std::size_t done = 0;
  std::size_t total = 0;
  std::string current;  // the application that has been worked on longest; may be empty
};

// Whether `descriptor` is a terminal that understands control sequences.
bool isCapableTerminal(int descriptor);

// The line that shows how far a run is, of at most `width` columns: "123/500  24.6/s  0:15 left  packages/app.wgt".
std::string progressLine(const RunState& state, double seconds, std::size_t width);

// That line on standard error, once a run takes longer than a second.
class Progress {
 public:
  explicit Progress(bool isShown) : isShown_(isShown) {}
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void show(const RunState& state);

  // Makes room for other output.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  bool isShown_;
  bool isThere_ = false;
  Clock::time_point start_ = Clock::now();
  Clock::time_point lastShown_;
};
