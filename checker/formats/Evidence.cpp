// The command line is that of this process, quoted for a shell, so that it can be pasted; a very long one is cut.
// Test: tests/checker/Formats_test.cpp.

#include "checker/formats/Evidence.h"

#include <ctime>
#include <fstream>
#include <iterator>

#include "APICheckEngine/Facade.h"
#include "checker/report/Sha256.h"

namespace {

std::string now() {
  const std::time_t time = std::time(nullptr);
  std::tm parts{};
  char text[32];
  if (gmtime_r(&time, &parts) == nullptr) return "";
  return std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts) > 0 ? text : "";
}

// `word` as a shell takes it for one argument.
std::string quoted(const std::string& word) {
  static constexpr const char* kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/=:,+@%";
  if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
  std::string text = "'";
  for (const char c : word) {
    if (c == '\'') {
      text += R"('\'')";
    } else {
      text += c;
    }
  }
  return text + "'";
}

// The arguments of this process, each with a NUL behind it.
std::string commandLine() {
  constexpr std::size_t kMax = 10'000;  // a shell's pattern can give a thousand packages
  std::ifstream file("/proc/self/cmdline", std::ios::binary);
  const std::string words{std::istreambuf_iterator<char>(file), {}};
  std::string text;
  for (std::size_t at = 0; at < words.size();) {
    const std::size_t end = words.find('\0', at);
    if (end == std::string::npos) break;
    text += (text.empty() ? "" : " ") + quoted(words.substr(at, end - at));
    at = end + 1;
    if (text.size() > kMax) return text.substr(0, kMax) + " ...";
  }
  return text;
}

}  // namespace

RunFacts thisProgram() {
  RunFacts run;
  run.tool = TARVO_VERSION;
  run.engine = FlashEngine_1_00::kEngineVersion;
  return run;
}

void addEvidence(RunFacts& run) {
  run.started = now();
  run.commandLine = commandLine();
  run.databaseSha256 = sha256OfFile(run.database);
}
