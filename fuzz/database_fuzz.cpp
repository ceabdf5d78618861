// Any bytes as the API database. Behind a "*" they are repeated many times, so that few bytes make a deep nest.

#include "Support.h"
#include "platform/Paths.h"

using namespace FlashEngine_1_00;

namespace {

constexpr std::size_t kRepeatedBytes = 200'000;

// Whatever stands before the last "*" once, and what is behind it until there is enough of it.
std::string repeated(std::string_view input) {
  const std::size_t star = input.rfind('*');
  std::string text(input.substr(0, star));
  const std::string_view piece = star == std::string_view::npos ? std::string_view() : input.substr(star + 1);
  while (!piece.empty() && text.size() < kRepeatedBytes)
    text += piece;
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::writeFile(enginePaths().database, repeated(fuzz::viewOf(data, size)));
  const fuzz::OpenFilesCheck openFiles;
  APIAnalysis engine;
  const RunResult code = engine.Init();
  fuzz::require(code == RUN_SUCCESS || code == RUN_DB_NO_ROOT, "a database is loaded, or has no root");
  fuzz::require(code == RUN_SUCCESS || engine.whiteAPIList.empty(), "without a root there are no names");
  return 0;
}
