// Writes generated inputs to files, for compare-speed.
//
//   make-bench-input script|movie BYTES > FILE
//   make-bench-input page ELEMENTS > FILE

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bench/FlashCode.h"
#include "bench/ScriptText.h"

int main(int argc, char** argv) {
  const long count = argc == 3 ? std::strtol(argv[2], nullptr, 10) : 0;
  std::string text;
  if (count > 0 && std::strcmp(argv[1], "script") == 0) text = bench::ordinaryScript(static_cast<std::size_t>(count));
  if (count > 0 && std::strcmp(argv[1], "movie") == 0) text = bench::flashMovie(static_cast<std::size_t>(count));
  if (count > 0 && std::strcmp(argv[1], "page") == 0) text = bench::plugInPage(static_cast<int>(count));
  if (text.empty()) {
    (void)std::fputs("Usage: make-bench-input script|movie BYTES, or page ELEMENTS; writes to standard output\n",
                     stderr);
    return 2;
  }
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  return written ? 0 : 1;
}
