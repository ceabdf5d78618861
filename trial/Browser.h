#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace trial {

// No browser could be started; the message is for the user.
class BrowserError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What all processes of a browser take together.
struct ProcessSum {
  std::size_t processes = 0;
  std::uint64_t memory = 0;    // bytes of their own and shared ones, without mapped files
  pid_t largestRenderer = -1;  // -1: none
  std::vector<pid_t> renderers;
};

// A running Chromium, in namespaces of its own: no network but an empty one, no processes but its own, temporary
// directories that are its own and bounded, and the rights of an ordinary user. Chromium's own sandbox is on besides.
//
// The first process of the process namespace is ours: when it ends, the kernel ends all others. It ends with this
// object, with the browser, and with this process, whatever ends that.
class Browser {
 public:
  // Starts `program` (empty: "chromium" of the PATH). `directory` is empty, the caller's, and is removed by the caller
  // when this object is gone; where the system allows no temporary file system, the profile is in it. Throws
  // BrowserError.
  Browser(const std::string& program, const std::string& directory);
  ~Browser();
  Browser(const Browser&) = delete;
  Browser& operator=(const Browser&) = delete;

  int input() const { return input_; }    // to read from
  int output() const { return output_; }  // to write to

  // As it is now; by walking over all processes of the system.
  ProcessSum measure() const;

  // Ends one of its processes, if it is one of its own.
  void endProcess(pid_t process) const;

  // Ends all of them, and waits for that.
  void end();

  // What it last wrote to standard error, at most 1000 bytes; escaped.
  std::string lastWords() const;

 private:
  int input_ = -1;
  int output_ = -1;
  int errors_ = -1;
  pid_t process_ = -1;
};

// The processor time that a process has taken, in seconds; 0 for one that is gone.
double processorSeconds(pid_t process);

// The full path of the browser to start; empty if there is none.
std::string findBrowser(const std::string& program);

}  // namespace trial
