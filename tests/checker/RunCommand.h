#pragma once

#include <sys/wait.h>

#include <cstdio>
#include <string>

struct Output {
  int status;        // exit status
  std::string text;  // standard output
};

// Runs a shell command to its end.
inline Output runCommand(const std::string& command) {
  FILE* pipe = popen(command.c_str(), "r");
  Output output{0, ""};
  char buffer[4096];
  for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;)
    output.text.append(buffer, n);
  output.status = WEXITSTATUS(pclose(pipe));
  return output;
}
