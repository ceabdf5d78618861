// Writes generated inputs to files, for compare-speed.
//
//   make-bench-input script|movie BYTES > FILE
//   make-bench-input page ELEMENTS > FILE
//   make-bench-input use CALLS DIRECTORY

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "bench/FlashCode.h"
#include "bench/PlugInUse.h"
#include "bench/ScriptText.h"

namespace {

bool writeUse(std::size_t calls, const std::filesystem::path& directory) {
  for (const auto& [name, text] : bench::plugInUse(calls)) {
    std::filesystem::create_directories((directory / name).parent_path());
    std::ofstream file(directory / name, std::ios::binary);
    if (!(file << text).flush()) return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const long count = argc == 3 || argc == 4 ? std::strtol(argv[2], nullptr, 10) : 0;
  if (count > 0 && argc == 4 && std::strcmp(argv[1], "use") == 0)
    return writeUse(static_cast<std::size_t>(count), argv[3]) ? 0 : 1;
  const bool writes = count > 0 && argc == 3;
  std::string text;
  if (writes && std::strcmp(argv[1], "script") == 0) text = bench::ordinaryScript(static_cast<std::size_t>(count));
  if (writes && std::strcmp(argv[1], "movie") == 0) text = bench::flashMovie(static_cast<std::size_t>(count));
  if (writes && std::strcmp(argv[1], "page") == 0) text = bench::plugInPage(static_cast<int>(count));
  if (text.empty()) {
    (void)std::fputs(
        "Usage: make-bench-input script|movie BYTES, or page ELEMENTS; writes to standard output\n"
        "       make-bench-input use CALLS DIRECTORY\n",
        stderr);
    return 2;
  }
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  return written ? 0 : 1;
}
