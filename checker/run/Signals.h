#pragma once

#include <csignal>

// SIGINT, SIGTERM and SIGHUP as something to wait for, in place of the end of the process; those that were ignored
// stay ignored. As long as this object lives, SIGPIPE is ignored, too.
class Signals {
 public:
  Signals();
  ~Signals();
  Signals(const Signals&) = delete;
  Signals& operator=(const Signals&) = delete;

  // Readable when there is one.
  int descriptor() const { return descriptor_; }

  // The signal that came, or 0.
  int take() const;

  // In a child: the terminal's signals are for the parent, which ends us.
  void leaveToParent() const;

 private:
  sigset_t set_{};
  sigset_t before_{};
  struct sigaction pipeBefore_ {};
  int descriptor_ = -1;
};
