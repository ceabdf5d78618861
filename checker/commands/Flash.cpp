// tarvo-check disassemble and decompile: what the engine makes of one Flash file, and what is missing in that.
// Test: tests/checker/Flash_test.cpp.

#include "checker/commands/Flash.h"

#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "APICheckEngine/Facade.h"
#include "checker/report/Characters.h"
#include "checker/report/Json.h"
#include "checker/run/GapReasons.h"

namespace {

constexpr const char* kListingCut = "its listing was cut by a bound or by the time for Flash files";
constexpr const char* kReplayCut = "its replay was cut by a bound or by the time for Flash files";

std::string failureOf(RunResult code) {
  switch (code) {
    case RUN_SUCCESS:
    case RUN_TIME_LIMIT:         // told by the clock
    case RUN_SWF_BAD_SIGNATURE:  // and by what is not listed
      return "";
    case RUN_SWF_OPEN_FAILED:
      return "cannot be opened";
    case RUN_SWF_UNCOMPRESS_FAILED:
      return "its compressed body is damaged or too large; this is what could be inflated";
    default:
      return "code " + std::to_string(code);
  }
}

// What is made of a file, and what is missing in it. After the work, so that this takes none of its time.
FlashText withGaps(FlashEngine_1_00::FlashLines made, const std::string& path) {
  FlashText text{made.code, std::move(made.lines), {}};
  if (made.isListingCut) text.gaps.emplace_back(kListingCut);
  if (made.isReplayCut) text.gaps.emplace_back(kReplayCut);
  const std::string failure = failureOf(text.code);
  if (!failure.empty()) {
    text.gaps.push_back(failure);
    return text;
  }
  for (const FlashEngine_1_00::Gap gap : FlashEngine_1_00::unlistedScript(path))
    text.gaps.emplace_back(reasonOf(gap, 0).text);
  return text;
}

}  // namespace

FlashText disassemble(const std::string& path) {
  return withGaps(FlashEngine_1_00::listFlash(path), path);
}

FlashText decompile(const std::string& path) {
  return withGaps(FlashEngine_1_00::decompileFlash(path), path);
}

std::string plainText(const FlashText& text) {
  std::string joined;
  for (const std::string& line : text.lines) {
    // Some lines of a listing end with a carriage return, which hosts know; there it does no harm.
    const std::string_view end = !line.empty() && line.back() == '\r' ? "\r\n" : "\n";
    joined += printableSource(std::string_view(line).substr(0, line.size() + 1 - end.size()));
    joined += end;
  }
  return joined;
}

std::string jsonText(const FlashText& text, const char* key) {
  auto lines = nlohmann::ordered_json::array();
  for (const std::string& line : text.lines)
    lines.push_back(codePoints(line));
  return escapedJson(nlohmann::ordered_json{{"code", text.code}, {key, std::move(lines)}}.dump(2)) + '\n';
}
