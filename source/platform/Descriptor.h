#pragma once

#include <unistd.h>

#include <utility>

namespace FlashEngine_1_00 {

// A file descriptor that closes itself. False if opening failed; errno is the opener's.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) (void)close(number_);
  }
  Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  explicit operator bool() const { return number_ >= 0; }
  int number() const { return number_; }
  int release() { return std::exchange(number_, -1); }

 private:
  int number_;
};

}  // namespace FlashEngine_1_00
