#pragma once

#include <string>
#include <utility>
#include <vector>

namespace bench {

// An application that uses its plug-ins as applications do, and calls documented methods only: pages with six objects,
// inline script and handlers; scripts with look-ups, bindings of every kind, helper functions and at least `calls`
// calls in all, each in a function among others. File names and texts; the same for the same number.
std::vector<std::pair<std::string, std::string>> plugInUse(std::size_t calls);

}  // namespace bench
