// A host: loads the engine, checks the application whose files are its arguments, prints the findings and the code.
//
//   cmake -S . -B build && cmake --build build
//   c++ -std=c++17 -rdynamic $(pkg-config --cflags tarvo-api-check-engine) host.cpp -o host    # or so
//   ./host /path/of/app.wgt

#include <dlfcn.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "tarvo/Print_Log.h"
#include "tarvo/api_check_engine.h"

// The engine's log; the library finds this one because the program exports it.
void Print_Log(const char* function, unsigned line, char* format, ...) {
  std::fprintf(stderr, "%s:%u: ", function, line);
  va_list arguments;
  va_start(arguments, format);
  std::vfprintf(stderr, format, arguments);
  va_end(arguments);
  std::fputc('\n', stderr);
}

// The headers declare what the library has, and so say of what type it is.
template <typename Type>
Type* find(void* library, const char* name) {
  void* found = library == nullptr ? nullptr : dlsym(library, name);
  if (found != nullptr) return reinterpret_cast<Type*>(found);
  std::fprintf(stderr, "%s\n", dlerror());
  std::exit(2);
}

int main(int count, char** arguments) {
  std::vector<std::string> files;
  for (int i = 1; i < count; ++i)
    files.push_back(std::filesystem::absolute(arguments[i]));

  void* library = dlopen("libtarvo-api-check-engine.so", RTLD_NOW);
  const std::vector<std::string>* findings = find<decltype(createResultVector)>(library, "createResultVector")();
  IAppAnalysis* engine = find<decltype(createInstance)>(library, "createInstance")();
  const RunResult code = engine->StartAnalysis(&files);
  for (const std::string& line : *findings)
    std::fputs(line.c_str(), stdout);
  std::printf("code %d\n", static_cast<int>(code));
  find<decltype(destoryInstance)>(library, "destoryInstance")(engine);
  find<decltype(destoryResultVector)>(library, "destoryResultVector")();
  return code == RUN_SUCCESS ? 0 : code == RUN_UNDOCUMENTED_API ? 1 : 2;
}
