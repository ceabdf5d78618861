// A host without a log function: loads the library given as its argument, builds an engine and destroys it. The weak
// Print_Log of the library must then do, and print nothing.

#include <dlfcn.h>

#include <cstdio>

#include "tarvo/api_check_engine.h"

int main(int count, char** arguments) {
  void* library = count == 2 ? dlopen(arguments[1], RTLD_NOW) : nullptr;
  if (library == nullptr) {
    std::fprintf(stderr, "plain-host: %s\n", count == 2 ? dlerror() : "usage: plain-host LIBRARY");
    return 1;
  }
  const auto create = reinterpret_cast<decltype(&createInstance)>(dlsym(library, "createInstance"));
  const auto destroy = reinterpret_cast<decltype(&destoryInstance)>(dlsym(library, "destoryInstance"));
  destroy(create());
  return 0;
}
