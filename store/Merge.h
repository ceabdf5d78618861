#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "store/Store.h"

// Stores, and reports as JSON lines, made one store.

namespace store {

struct Merged {
  std::uint64_t applications = 0;  // paths
  std::uint64_t results = 0;
  std::uint64_t withoutContent = 0;    // reports of JSON lines that do not say what was checked
  std::vector<std::string> conflicts;  // SHA-256 of contents for which there are several results, in hexadecimal
};

// Makes `out` the store of all that it and `inputs` hold. What comes out is the same, byte by byte, in whatever order
// the inputs are named, and however often. Runs of the same name, settings and database become one, in the order in
// which they began.
//
// The new store is written beside its place and takes it when it is whole; after a failure `out` is what it was.
// Memory: some MiB for each input.
Merged merge(const std::string& out, const std::vector<std::string>& inputs);

// Writes the reports of JSON lines to a new store at `path`. Returns how many do not say what was checked: the store
// has them as applications that could not be. Throws StoreError if a line is no report.
std::uint64_t importJsonLines(const std::string& lines, const std::string& path);

}  // namespace store
