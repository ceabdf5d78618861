#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "flow/Syntax.h"

namespace flow {

// Trees of scripts, for those who analyse one application again and again. Parsing is most of the work, and most
// scripts stay as they were.
class ParseCache {
 public:
  // What parseScript gives for `text`.
  Tree parse(const std::string& text, const ParseLimits& limits) {
    Entry& entry = entries_[text];
    if (!entry.isThere) entry.tree = parseScript(text, limits);
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
    bool isThere = false;
    bool isUsed = false;
  };
  std::unordered_map<std::string, Entry> entries_;
};

}  // namespace flow
