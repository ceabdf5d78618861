// Test: tests/checker/Catalogue_test.cpp.

#include "checker/run/Signals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "checker/options/UserError.h"

namespace {

constexpr int kEnding[] = {SIGINT, SIGTERM, SIGHUP};

}  // namespace

Signals::Signals() {
  sigemptyset(&set_);
  for (const int signal : kEnding) {
    // Blocked signals would be taken although the user, or nohup, wants them ignored.
    struct sigaction action {};
    if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) sigaddset(&set_, signal);
  }
  descriptor_ = signalfd(-1, &set_, SFD_CLOEXEC | SFD_NONBLOCK);
  if (descriptor_ < 0) throw UserError(std::string("cannot wait for signals: ") + std::strerror(errno));
  sigprocmask(SIG_BLOCK, &set_, &before_);
  (void)std::signal(SIGCHLD, SIG_DFL);  // who started us may ignore it, and then no child's status is kept
  struct sigaction ignore {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGPIPE, &ignore, &pipeBefore_);
}

Signals::~Signals() {
  sigaction(SIGPIPE, &pipeBefore_, nullptr);
  sigprocmask(SIG_SETMASK, &before_, nullptr);
  close(descriptor_);
}

int Signals::take() const {
  signalfd_siginfo info{};
  return read(descriptor_, &info, sizeof info) == sizeof info ? static_cast<int>(info.ssi_signo) : 0;
}

void Signals::leaveToParent() const {
  for (const int signal : kEnding)
    (void)std::signal(signal, SIG_IGN);
  sigprocmask(SIG_SETMASK, &before_, nullptr);
}
