#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// Relevance: which scripts have to do with plug-ins, told by their words.
//
// Applications ship megabytes of libraries that no plug-in ever comes to. Small scripts are always read. A large one is
// read if it names an element of ours or looks for elements of plug-ins, or if it and what is read share a global.

namespace flow {

enum class Relevance : std::uint8_t {
  none,    // is not read
  shared,  // is read, but nothing in it that nobody calls
  own,     // is read as a whole
};

struct Script {
  std::string_view text;
  bool isInPage = false;  // is read whatever it says
  bool isLibrary = false;
  std::string_view name;  // of the file, without folders and extensions: what others ask for it by, if it is a module
};

// Calls `work` once for each number below `count`, in any order and in any threads.
using ForEach = std::function<void(std::size_t count, const std::function<void(std::size_t)>& work)>;

// For each script. `ids` are those of the elements of plug-ins. With `forEach`, scripts are read by that; the result is
// the same.
std::vector<Relevance> relevanceOf(const std::vector<Script>& scripts, const std::vector<std::string>& identifiers,
                                   const std::vector<std::string>& ids, const ForEach& forEach = {});

}  // namespace flow
