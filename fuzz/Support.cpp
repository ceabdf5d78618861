#include "Support.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "APICheckEngine/Verdicts.h"
#include "platform/File.h"
#include "platform/Paths.h"
#include "platform/RemoveTree.h"
#include "tarvo/Print_Log.h"

using namespace FlashEngine_1_00;

void Print_Log(const char*, unsigned, char* format, ...) {
  char text[256];
  va_list arguments;
  va_start(arguments, format);
  (void)std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
}

const EnginePaths& FlashEngine_1_00::enginePaths() {
  static const EnginePaths paths{fuzz::scratch() + "/database.xml", fuzz::scratch() + "/around/root",
                                 fuzz::scratch() + "/AnalysisResult"};
  return paths;
}

namespace fuzz {
namespace {

struct Scratch {
  Scratch() {
    const char* chosen = std::getenv("TMPDIR");
    const char* memory = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    path = std::string(chosen != nullptr ? chosen : memory) + "/tarvo-fuzz-XXXXXX";
    require(mkdtemp(path.data()) != nullptr, "a scratch directory can be made");
    std::filesystem::create_directories(path + "/around/root");
  }
  ~Scratch() { removeTree(path); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  std::string path;
};

bool isKnown(const APIAnalysis::Strings& list, const std::string& text) {
  return std::any_of(list.begin(), list.end(), [&](const std::string* known) { return *known == text; });
}

// Whether `call` is documented, or opens something and so is no call of a method. One that is neither must have its
// finding line.
bool isFine(const APIAnalysis& engine, const SWFStateMentInfo& call) {
  const std::string_view text = detail::callTextOf(call);
  const std::string method = detail::methodName(text);
  if (text.empty() || isKnown(engine.whiteAPIList, method)) return true;
  require(isKnown(engine.resultList, detail::findingLine(call.path, call.line, method)), "each finding is listed");
  return false;
}

}  // namespace

void require(bool holds, const char* what) {
  if (holds) return;
  (void)std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

const std::string& scratch() {
  static const Scratch directory;
  return directory.path;
}

void writeFile(const std::string& path, std::string_view bytes) {
  const File file = openFile(path, "wb");
  require(file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size(),
          "files are written");
}

std::pair<std::string, std::string> splitAt(char separator, std::string_view input) {
  const std::size_t at = std::min(input.find(separator), input.size());
  const std::string_view rest = input.substr(std::min(at + 1, input.size()));
  return {std::string(input.substr(0, std::min(at, input.find('\0')))), std::string(rest.substr(0, rest.find('\0')))};
}

void loadDocumentedNames(APIAnalysis& engine) {
  for (const char* name : {"GetVersion", "GetVolume", "SetVolume", "Play"})
    append(engine.whiteAPIList, std::make_unique<std::string>(name));
}

void finishAndCheckVerdicts(APIAnalysis& engine) {
  const RunResult code = engine.Finish(engine.resultList);
  bool fine = true;
  for (const SWFStateMentInfo* call : engine.foundCallList)
    fine = isFine(engine, *call) && fine;
  require((code == RUN_SUCCESS) == fine, "the end's code tells whether an undocumented call was found");
  for (const SWFStateMentInfo* call : engine.flashCallList)
    (void)isFine(engine, *call);
  for (const APIAnalysis::Records* list : {&engine.foundCallList, &engine.flashCallList, &engine.objectVariableList}) {
    for (const SWFStateMentInfo* record : *list)
      require(record->line >= -1, "a record has a line, or none");
  }
}

int OpenFilesCheck::lowestFree() {
  const int descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
  close(descriptor);
  return descriptor;
}

}  // namespace fuzz
