#include "bench/HardRuns.h"

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>

#include "APICheckEngine/APIAnalysis.h"
#include "bench/Application.h"
#include "bench/HardInputs.h"
#include "bench/ScriptText.h"
#include "tarvo/api_check_engine.h"

namespace bench {
namespace {

constexpr std::size_t kMegabyte = 1'000'000;
constexpr rlim_t kMaxAddressSpace = rlim_t{6} << 30;  // what asks for more than that fails, and not the machine

struct Cost {
  double seconds = 0;  // of processor time
  double megabytes = 0;
  enum { kDone, kTooSlow, kFailed } outcome = kFailed;
};

rlim_t secondsAllowed() {
  const char* given = std::getenv("TARVO_BENCH_LIMIT");
  return static_cast<rlim_t>(given == nullptr ? 60 : std::max(1L, std::strtol(given, nullptr, 10)));
}

std::size_t hardBytes() {
  const char* given = std::getenv("TARVO_BENCH_BYTES");
  return given == nullptr ? kMegabyte : static_cast<std::size_t>(std::max(1L, std::strtol(given, nullptr, 10)));
}

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double residentMegabytes() {
  long total = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / 1e6;
}

// The child: its limits, one run, and out without the parent's clean-up.
[[noreturn]] void runAlone(std::vector<std::string> files) {
  const rlimit time{secondsAllowed(), secondsAllowed() + 1};
  const rlimit memory{kMaxAddressSpace, kMaxAddressSpace};
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CPU, &time);
  setrlimit(RLIMIT_AS, &memory);
  setrlimit(RLIMIT_CORE, &noCore);
  createResultVector();
  FlashEngine_1_00::APIAnalysis engine;
  const RunResult code = engine.StartAnalysis(&files);
  _exit(code == RUN_SUCCESS || code == RUN_UNDOCUMENTED_API ? 0 : 1);
}

Cost costOf(const Application& application) {
  const double before = residentMegabytes();
  const pid_t child = fork();
  if (child == 0) runAlone(application.paths());
  Cost cost;
  int status = 0;
  rusage used{};
  if (child < 0 || wait4(child, &status, 0, &used) != child) return cost;
  cost.seconds = seconds(used.ru_utime) + seconds(used.ru_stime);
  cost.megabytes = std::max(0.0, static_cast<double>(used.ru_maxrss) * 1024 / 1e6 - before);
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) cost.outcome = Cost::kDone;
  if (WIFSIGNALED(status) && (WTERMSIG(status) == SIGXCPU || WTERMSIG(status) == SIGKILL))
    cost.outcome = Cost::kTooSlow;
  return cost;
}

// Of ordinary script, the median of three.
double ordinarySeconds() {
  static const double measured = [] {
    const Application application({{"index.html", plugInPage()}, {"main.js", ordinaryScript(hardBytes())}});
    std::array<double, 3> runs{};
    for (double& run : runs) {
      const Cost cost = costOf(application);
      if (cost.outcome != Cost::kDone) return 0.0;
      run = cost.seconds;
    }
    std::sort(runs.begin(), runs.end());
    return runs[1];
  }();
  return measured;
}

void hardRun(benchmark::State& state, const HardInput& input) {
  const double ordinary = ordinarySeconds();
  const Application application(input.files(hardBytes()), input.documented);
  for (auto _ : state) {
    const Cost cost = costOf(application);
    state.SetIterationTime(cost.seconds);
    if (ordinary <= 0 || cost.outcome == Cost::kFailed) return state.SkipWithError("the run failed");
    state.counters["times_ordinary"] = cost.seconds / ordinary;
    state.counters["peak_mb"] = cost.megabytes;
    if (cost.outcome == Cost::kTooSlow) state.SetLabel("> " + std::to_string(secondsAllowed()) + " s");
  }
}

void ordinaryRun(benchmark::State& state) {
  for (auto _ : state)
    state.SetIterationTime(ordinarySeconds());
  if (ordinarySeconds() <= 0) state.SkipWithError("the run failed");
  state.counters["times_ordinary"] = 1;
}

}  // namespace

void registerHardRuns() {
  const auto once = [](benchmark::internal::Benchmark* registered) {
    registered->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
  };
  once(benchmark::RegisterBenchmark("blow-up/ordinary script", ordinaryRun));
  for (const HardInput& input : hardInputs()) {
    once(benchmark::RegisterBenchmark((std::string("blow-up/") + input.name).c_str(), hardRun, input));
  }
}

}  // namespace bench
