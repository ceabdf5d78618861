// Puts together the engine's listing or its statements (Flash.h) and the printing, in a worker.
// Test: tests/checker/Flash_test.cpp.

#include "checker/commands/FlashCommand.h"

#include "checker/commands/BoundedOutput.h"
#include "checker/commands/Flash.h"
#include "checker/options/ExitStatus.h"
#include "checker/report/Characters.h"

namespace {

CommandOutput outputOf(const FlashText& text, const char* key, const Options& options, const std::string& file) {
  CommandOutput output{text.code == RUN_SUCCESS ? kDone : kFailed, options.json ? jsonText(text, key) : plainText(text),
                       ""};
  for (const std::string& gap : text.gaps)
    output.err += "tarvo-check: " + printable(file + ": " + gap) + '\n';
  return output;
}

}  // namespace

int disassembleCommand(const Options& options) {
  return printFromWorker(options,
                         [&](const std::string& file) { return outputOf(disassemble(file), "lines", options, file); });
}

int decompileCommand(const Options& options) {
  return printFromWorker(
      options, [&](const std::string& file) { return outputOf(decompile(file), "statements", options, file); });
}
