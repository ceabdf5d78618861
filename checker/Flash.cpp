// Test: tests/checker/Flash_test.cpp.

#include "checker/Flash.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "checker/FlashGaps.h"
#include "checker/Json.h"
#include "decompiler/DeCompiler.h"
#include "platform/TimeBudget.h"
#include "swf/DeAssembler.h"

namespace {

constexpr const char* kListingCut = "its listing was cut by a bound or by the time for Flash files";
constexpr const char* kReplayCut = "its replay was cut by a bound or by the time for Flash files";

std::string failureOf(RunResult code) {
  switch (code) {
    case RUN_SUCCESS:
    case RUN_TIME_LIMIT:         // told by the clock
    case RUN_SWF_BAD_SIGNATURE:  // and by flashGaps
      return "";
    case RUN_SWF_OPEN_FAILED:
      return "cannot be opened";
    case RUN_SWF_UNCOMPRESS_FAILED:
      return "its compressed body is damaged or too large; this is what could be inflated";
    default:
      return "code " + std::to_string(code);
  }
}

FlashText list(const std::string& path) {
  FlashEngine_1_00::startTimeBudget();
  FlashText listing{RUN_SUCCESS, {}, {}};
  FlashEngine_1_00::DeAssembler reader;
  listing.code = reader.SWFDeAssemblerMain(path, listing.lines);
  if (reader.isCut() || FlashEngine_1_00::timeBudgetSpent()) listing.gaps.emplace_back(kListingCut);
  return listing;
}

// What else is missing. After the work, so that this takes none of its time.
FlashText withGaps(FlashText text, const std::string& path) {
  const std::string failure = failureOf(text.code);
  const std::vector<std::string> gaps = failure.empty() ? flashGaps(path) : std::vector<std::string>{failure};
  text.gaps.insert(text.gaps.end(), gaps.begin(), gaps.end());
  return text;
}

}  // namespace

FlashText disassemble(const std::string& path) {
  return withGaps(list(path), path);
}

FlashText decompile(const std::string& path) {
  FlashText listing = list(path);
  FlashText statements{listing.code, {}, std::move(listing.gaps)};
  FlashEngine_1_00::DeCompiler replay;
  (void)replay.SWFDeCompilerMain(listing.lines, statements.lines);
  if (replay.isCut() || FlashEngine_1_00::timeBudgetSpent()) statements.gaps.emplace_back(kReplayCut);
  return withGaps(std::move(statements), path);
}

std::string plainText(const FlashText& text) {
  std::string joined;
  for (const std::string& line : text.lines)
    joined += line + '\n';
  return joined;
}

std::string jsonText(const FlashText& text, const char* key) {
  auto lines = nlohmann::ordered_json::array();
  for (const std::string& line : text.lines)
    lines.push_back(codePoints(line));
  return nlohmann::ordered_json{{"code", text.code}, {key, std::move(lines)}}.dump(2) + '\n';
}
