#pragma once

#include <sys/types.h>

#include <string>

// A new directory that only this user can read, for everything one run writes. It is removed with the object, and also
// when this process is killed or crashes: a helper process waits for its end.
class PrivateDirectory {
 public:
  // Made in $TMPDIR where the engine can work there, else in /tmp. Throws std::runtime_error with a message for the
  // user if that fails.
  PrivateDirectory();
  ~PrivateDirectory();
  PrivateDirectory(const PrivateDirectory&) = delete;
  PrivateDirectory& operator=(const PrivateDirectory&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
  int lifeline_ = -1;  // write end of a pipe that closes with this process
  pid_t remover_ = -1;
};
