// tarvo-check: vets applications from the command line with the engine that the host loads.

#include <iostream>

#include "checker/commands/CheckCommand.h"
#include "checker/commands/CompareCommand.h"
#include "checker/commands/DatabaseCommand.h"
#include "checker/commands/ExplainCommand.h"
#include "checker/commands/FlashCommand.h"
#include "checker/commands/LspCommand.h"
#include "checker/commands/ReportCommand.h"
#include "checker/commands/StandardStreams.h"
#include "checker/commands/StoreCommands.h"
#include "checker/commands/TypesCommand.h"
#include "checker/options/CommandLine.h"
#include "checker/options/ExitStatus.h"
#include "checker/report/Characters.h"

namespace {

struct Row {
  Command command;
  int (*run)(const Options& options);  // returns the exit status
};
constexpr Row kRows[] = {
    {Command::check, checkCommand},
    {Command::explain, explainCommand},
    {Command::disassemble, disassembleCommand},
    {Command::decompile, decompileCommand},
    {Command::database, databaseCommand},
    {Command::databaseDiff, databaseDiffCommand},
    {Command::judge, judgeCommand},
    {Command::catalogue, catalogueCommand},
    {Command::merge, mergeCommand},
    {Command::types, typesCommand},
    {Command::lsp, lspCommand},
    {Command::report, reportCommand},
    {Command::compare, compareCommand},
};

}  // namespace

int main(int argc, char** argv) {  // NOLINT(bugprone-exception-escape): no memory to say what is wrong
  openStandardStreams();
  try {
    Options options = defaultOptions();
    if (const auto status = readCommandLine(argc, argv, options)) return printedWith(*status);
    for (const Row& row : kRows) {
      if (row.command == options.command) return row.run(options);
    }
  } catch (const std::exception& error) {
    std::cerr << "tarvo-check: " << printable(error.what()) << '\n';
  }
  return kFailed;
}
