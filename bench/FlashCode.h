#pragma once

#include <cstddef>
#include <string>

namespace bench {

// The last statement of a replayed flashMovie: who finds it knows that no bound cut the work short.
constexpr const char* kLastStatement = "allReplayed()";

// A plain SWF file with about `bytes` of byte code in blocks as authoring tools make them: constant pools, pushes,
// member reads and writes, calls, branches, functions.
std::string flashMovie(std::size_t bytes);

// A plain SWF file whose one script block is `code`.
std::string movieOf(const std::string& code);

// `count` jumps, each to a place of its own.
std::string jumps(std::size_t count);

}  // namespace bench
