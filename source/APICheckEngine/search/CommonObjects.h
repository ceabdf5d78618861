#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "regex/trex_literal.h"

namespace FlashEngine_1_00::detail {

// Finds whether a variable holds a helper object of the platform's script library.
class CommonObjects {
 public:
  // Whether `name` stands in `text` with the whole name of a common object in the 50 bytes that begin with it, fewer at
  // the end of `text`. With the source of which `text` is a part (or `text` itself) and an index of that, or null.
  bool follow(std::string_view name, std::string_view text, std::string_view source, TextIndex* index);

 private:
  std::unordered_map<const char*, std::vector<std::string_view>> objects_;  // by source, in order of their places
};

}  // namespace FlashEngine_1_00::detail
