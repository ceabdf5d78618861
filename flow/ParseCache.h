#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "flow/Syntax.h"

namespace flow {

// Trees of scripts, for those who analyse one application again and again. Parsing is most of the work, and most
// scripts stay as they were.
class ParseCache {
 public:
  // What parseScript gives for `text`, where limits differ in work and tokens only.
  Tree parse(const std::string& text, const ParseLimits& limits) {
    Entry& entry = entries_[text];
    const bool isSame = (entry.work == limits.work && entry.tokens == limits.tokens) ||
                        (entry.tree.isWhole && entry.tree.work <= std::min(limits.work, limits.tokens));
    if (!entry.isThere || !isSame) {
      entry.tree = parseScript(text, limits);
      entry.work = limits.work;
      entry.tokens = limits.tokens;
    }
    entry.isThere = entry.isUsed = true;
    return entry.tree;
  }

  // An analysis is over: forgets what it did not ask for.
  void endRun() {
    for (auto entry = entries_.begin(); entry != entries_.end();) {
      if (!entry->second.isUsed) {
        entry = entries_.erase(entry);
      } else {
        entry->second.isUsed = false;
        ++entry;
      }
    }
  }

 private:
  struct Entry {
    Tree tree;
    std::uint64_t work = 0;  // what it was allowed
    std::uint64_t tokens = 0;
    bool isThere = false;
    bool isUsed = false;
  };
  std::unordered_map<std::string, Entry> entries_;
};

}  // namespace flow
