#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace FlashEngine_1_00::detail {

// A list of places from which some are taken, and that is asked many times for the next one up to some bound: a tree of
// minima, the places at its leaves.
class Remaining {
 public:
  static constexpr std::size_t kTaken = static_cast<std::size_t>(-1);

  explicit Remaining(const std::vector<std::size_t>& places) : count_(places.size()) {
    while (leaves_ < count_)
      leaves_ *= 2;
    least_.assign(2 * leaves_, kTaken);
    std::copy(places.begin(), places.end(), least_.begin() + static_cast<std::ptrdiff_t>(leaves_));
    for (std::size_t node = leaves_; --node > 0;)
      least_[node] = std::min(least_[2 * node], least_[2 * node + 1]);
  }

  // The position of the first place left that is not before position `from` and at most `bound`; their number if there
  // is none.
  std::size_t next(std::size_t from, std::size_t bound) const {
    if (from >= count_) return count_;
    std::size_t node = leaves_ + from;
    while (least_[node] > bound) {
      while (node % 2 == 1)
        node /= 2;
      if (node == 0) return count_;
      ++node;
    }
    while (node < leaves_) {
      node *= 2;
      if (least_[node] > bound) ++node;
    }
    return node - leaves_;
  }

  void take(std::size_t position) {
    least_[leaves_ + position] = kTaken;
    for (std::size_t node = (leaves_ + position) / 2; node > 0; node /= 2)
      least_[node] = std::min(least_[2 * node], least_[2 * node + 1]);
  }

 private:
  std::size_t count_;
  std::size_t leaves_ = 1;
  std::vector<std::size_t> least_;
};

}  // namespace FlashEngine_1_00::detail
