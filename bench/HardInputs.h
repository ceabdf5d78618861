#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace bench {

// One application of the kind that a search without bounds would choke on.
struct HardInput {
  const char* name;
  // Its files, by name; about `bytes` of the text that is hard.
  std::function<std::vector<std::pair<std::string, std::string>>(std::size_t bytes)> files;
  int documented = 300;  // names in the database
};

// In the order in which they are reported. Every application also holds plugInPage(), unless it brings a page.
const std::vector<HardInput>& hardInputs();

}  // namespace bench
