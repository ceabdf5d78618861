#pragma once

#include <cstddef>
#include <string>

// Text to measure with, the same on every machine and in every run.

namespace bench {

// Picks for generated text. Not <random>'s distributions, whose numbers differ between libraries.
class Picks {
 public:
  explicit Picks(unsigned seed) : state_(seed) {}

  // 0 to `count` - 1.
  std::size_t below(std::size_t count) {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<std::size_t>(state_ >> 33) % count;
  }

  template <std::size_t N>
  const char* oneOf(const char* const (&words)[N]) {
    return words[below(N)];
  }

 private:
  unsigned long long state_;
};

// At least `bytes` of ordinary-looking script: functions, strings, comments, calls, look-ups of elements, and in every
// fiftieth function or so a plug-in that plugInPage() holds, of which it calls documented methods only.
std::string ordinaryScript(std::size_t bytes);

// A page with `elements` plug-in elements: ids tvTuner, tvAudio, tvPlayer, tvNetwork, tvDisplay, then tvTuner5, ...
std::string plugInPage(int elements = 5);

}  // namespace bench
