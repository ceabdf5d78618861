#pragma once

#include <cstddef>
#include <string>

namespace bench {

// The last statement of a replayed flashMovie: who finds it knows that no bound cut the work short.
constexpr const char* kLastStatement = "allReplayed()";

// A plain SWF file with about `bytes` of byte code in blocks as authoring tools make them: constant pools, pushes,
// member reads and writes, calls, branches, functions.
std::string flashMovie(std::size_t bytes);

// The image of a SWF file as it would be uncompressed; empty if it is damaged. And how many bytes of it are script that
// the engine is sure to list: those ahead of the first sprite, whose id it reads as a tag.
std::string plainMovie(const std::string& file);
std::size_t scriptBytes(const std::string& image);

// A plain SWF file whose one script block is `code`.
std::string movieOf(const std::string& code);

// `count` jumps, each to a place of its own.
std::string jumps(std::size_t count);

}  // namespace bench
