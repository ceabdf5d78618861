// Test: tests/checker/CommandLine_test.cpp, tests/checker/Catalogue_test.cpp.

#include "checker/commands/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <iostream>

#include "checker/options/ExitStatus.h"

void openStandardStreams() {
  int descriptor = 0;
  while ((descriptor = open("/dev/null", O_RDWR)) >= 0 && descriptor <= STDERR_FILENO) {
  }
  if (descriptor > STDERR_FILENO) close(descriptor);
}

int printedWith(int status) {
  if (std::cout.flush()) return status;
  std::cerr << "tarvo-check: cannot write all to standard output\n";
  return kFailed;
}
