#pragma once

#include <sys/types.h>

#include <string>

// A new directory that only this user can read, for everything one run writes. It is removed with the object, and also
// when this process is killed or crashes: a helper process makes it, and waits for our end.
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
  int endHelper() const;  // the status it ended with

  std::string path_;
  int lifeline_ = -1;  // end of a socket pair that closes with this process
  pid_t helper_ = -1;
};
