// Loads the library given as its argument, builds an engine, and prints what scripts/footprint reports of that: the
// size of the object in bytes, and the milliseconds that loading and building took.

#include <dlfcn.h>

#include <chrono>
#include <cstdio>

#include "APICheckEngine/APIAnalysis.h"
#include "tarvo/api_check_engine.h"

int main(int count, char** arguments) {
  using Clock = std::chrono::steady_clock;
  using Milliseconds = std::chrono::duration<double, std::milli>;
  const Clock::time_point start = Clock::now();
  void* library = count == 2 ? dlopen(arguments[1], RTLD_NOW) : nullptr;
  if (library == nullptr) {
    std::fprintf(stderr, "start-up: %s\n", count == 2 ? dlerror() : "usage: start-up LIBRARY");
    return 1;
  }
  const auto create = reinterpret_cast<decltype(&createInstance)>(dlsym(library, "createInstance"));
  const auto destroy = reinterpret_cast<decltype(&destoryInstance)>(dlsym(library, "destoryInstance"));
  const Clock::time_point loaded = Clock::now();
  IAppAnalysis* engine = create();
  const Clock::time_point built = Clock::now();
  destroy(engine);
  std::printf("%zu %f %f\n", sizeof(FlashEngine_1_00::APIAnalysis), Milliseconds(loaded - start).count(),
              Milliseconds(built - loaded).count());
  return 0;
}
