#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "APICheckEngine/APIAnalysis.h"

// What the fuzz targets share: a host whose paths lie in a scratch directory, and checks that hold in every build.
// The host's log function formats each line, so that the sanitizers see the engine's log arguments.

namespace fuzz {

// Aborts and names `what` was expected unless it holds.
void require(bool holds, const char* what);

// A directory of this process below $TMPDIR, else in memory, else below /tmp; removed at exit.
//   database.xml, AnalysisResult     the engine's files
//   around/root                      where packages are expanded
const std::string& scratch();

void writeFile(const std::string& path, std::string_view bytes);

inline std::string_view viewOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// What stands before the first `separator`, and what behind it; all and nothing without one. Both end at a zero byte,
// as the texts of the engine do.
std::pair<std::string, std::string> splitAt(char separator, std::string_view input);

// Makes the engine know a few documented names, which the seeds and dictionaries use.
void loadDocumentedNames(FlashEngine_1_00::APIAnalysis& engine);

// Ends a run whose stages are done: each call that was found must be judged, and each place be a line or none.
void finishAndCheckVerdicts(FlashEngine_1_00::APIAnalysis& engine);

// Requires that as many files are open at its end as were at its beginning.
class OpenFilesCheck {
 public:
  OpenFilesCheck() : lowestFree_(lowestFree()) {}
  ~OpenFilesCheck() { require(lowestFree() == lowestFree_, "no file stays open"); }
  OpenFilesCheck(const OpenFilesCheck&) = delete;
  OpenFilesCheck& operator=(const OpenFilesCheck&) = delete;

 private:
  static int lowestFree();
  int lowestFree_;
};

}  // namespace fuzz
