// A table of names and of what goes wrong for an application of that name, in builds for tests.

#include "checker/run/TestFaults.h"

#ifdef TARVO_TEST_FAULTS

#include <signal.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <vector>

#include "checker/run/PrivateDirectory.h"

namespace {

struct Fault {
  const char* name;
  void (*happen)(int pipe);
};

// Sends `text` so many times, as if that were a report.
[[noreturn]] void answer(int pipe, const std::string& text, int times) {
  const auto length = std::uint64_t{text.size()} * static_cast<unsigned>(times);
  if (write(pipe, &length, sizeof length) < 0) _exit(1);
  for (int i = 0; i < times; ++i) {
    if (write(pipe, text.data(), text.size()) < 0) _exit(1);
  }
  _exit(0);
}

constexpr Fault kFaults[] = {
    {"fault-hang",
     [](int) {
       for (;;)
         pause();
     }},
    {"fault-crash",
     [](int) {
       (void)signal(SIGSEGV, SIG_DFL);  // a sanitizer has a handler of its own
       (void)raise(SIGSEGV);
     }},
    {"fault-memory",
     [](int) {
       std::vector<std::string> taken;
       for (;;)
         taken.emplace_back(16 << 20, 'x');
     }},
    {"fault-exit", [](int) { _exit(7); }},
    {"fault-silent", [](int) { _exit(0); }},
    {"fault-garbage", [](int pipe) { answer(pipe, "garbage", 1); }},
    {"fault-deep", [](int pipe) { answer(pipe, std::string(1 << 20, '\x81'), 64); }},  // a list in a list in a list ...
    {"fault-flood", [](int pipe) { answer(pipe, std::string(1 << 20, '\x80'), 300); }},  // larger than any report
};

}  // namespace

void TESTING_ONLY_triggerLateFault(const std::string& application) {
  const std::string name = std::filesystem::path(application).stem().string();
  for (const Fault& fault : kFaults)
    if (name == "late-" + std::string(fault.name)) fault.happen(-1);
}

void TESTING_ONLY_triggerFault(const std::string& application, int pipe) {
  const std::string name = std::filesystem::path(application).stem().string();
  for (const Fault& fault : kFaults) {
    if (name != fault.name) continue;
    const PrivateDirectory directory;  // there is something to be removed
    fault.happen(pipe);
  }
}

#endif
