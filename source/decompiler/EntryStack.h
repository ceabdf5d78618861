#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace FlashEngine_1_00 {

// The symbolic stack of a replay. What was popped keeps its place and its memory until something is pushed there, so
// that a push seldom allocates, and views of popped entries can be used up to the next push.
class EntryStack {
 public:
  std::size_t size() const { return size_; }

  // Appends an entry that is `text`, which is no part of this stack's.
  void push(std::string_view text) { pushRoom().assign(text); }
  // The same for whoever writes the entry: what is there is left over from earlier entries.
  std::string& pushRoom() {
    if (size_ == entries_.size()) entries_.emplace_back();
    return entries_[size_++];
  }

  // Takes off the top entry; there has to be one.
  const std::string& pop() { return entries_[--size_]; }
  void drop(std::size_t count) { size_ -= count; }

  void clear() { size_ = 0; }
  // The same, and gives back the memory.
  void release() {
    size_ = 0;
    entries_ = {};
  }

 private:
  std::vector<std::string> entries_;
  std::size_t size_ = 0;  // of them, those that are on the stack
};

}  // namespace FlashEngine_1_00
