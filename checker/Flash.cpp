// Test: tests/checker/Flash_test.cpp.

#include "checker/Flash.h"

#include <nlohmann/json.hpp>

#include "checker/Json.h"
#include "decompiler/DeCompiler.h"
#include "platform/TimeBudget.h"
#include "swf/DeAssembler.h"

FlashText disassemble(const std::string& path) {
  FlashEngine_1_00::startTimeBudget();
  FlashText listing{RUN_SUCCESS, {}};
  listing.code = FlashEngine_1_00::DeAssembler().SWFDeAssemblerMain(path, listing.lines);
  return listing;
}

FlashText decompile(const std::string& path) {
  FlashText listing = disassemble(path);
  FlashText statements{listing.code, {}};
  (void)FlashEngine_1_00::DeCompiler().SWFDeCompilerMain(listing.lines, statements.lines);
  return statements;
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

std::string failureOf(RunResult code) {
  switch (code) {
    case RUN_SWF_OPEN_FAILED:
      return "cannot be opened";
    case RUN_SWF_BAD_SIGNATURE:
      return "not a Flash file that the engine reads: its first bytes are neither FWS nor CWS";
    case RUN_SWF_UNCOMPRESS_FAILED:
      return "its compressed body is damaged; this is what could be inflated";
    case RUN_SUCCESS:
      return "";
    default:
      return "code " + std::to_string(code);
  }
}
