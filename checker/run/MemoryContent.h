#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

// Bytes that grow. realloc moves large blocks without copying them.
struct MemoryContent {
  struct Free {
    void operator()(char* block) const { std::free(block); }
  };

  std::unique_ptr<char, Free> bytes;
  std::size_t size = 0;
  std::size_t room = 0;

  // False if there is no memory for so many bytes.
  bool reserve(std::size_t wanted) {
    if (wanted <= room) return true;
    auto* const moved = static_cast<char*>(std::realloc(bytes.get(), wanted));
    if (moved == nullptr) return false;
    (void)bytes.release();
    bytes.reset(moved);
    room = wanted;
    return true;
  }

  // Throws std::bad_alloc.
  void append(const char* added, std::size_t count) {
    if (!reserve(size + count > room ? std::max(size + count, room + room / 2) : room)) throw std::bad_alloc();
    std::memcpy(bytes.get() + size, added, count);
    size += count;
  }

  // Leaves the first `at` bytes, in no more memory than they take.
  void cut(std::size_t at) {
    size = std::min(size, at);
    if (size == 0) return;
    if (auto* const moved = static_cast<char*>(std::realloc(bytes.get(), size))) {
      (void)bytes.release();
      bytes.reset(moved);
      room = size;
    }
  }

  std::string_view view() const { return {bytes.get(), size}; }
};
