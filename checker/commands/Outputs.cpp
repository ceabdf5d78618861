// All reports of a run at once: each writer gets every report as it comes, so that nothing is kept. Files are made
// before anything is checked, so that one that cannot be written costs no run.
// Test: tests/checker/CommandLine_test.cpp.

#include "checker/commands/Outputs.h"

#include <filesystem>
#include <iostream>
#include <optional>
#include <set>

#include "checker/formats/Evidence.h"
#include "checker/formats/Formats.h"
#include "checker/options/UserError.h"

namespace {

// What --map says. A directory that is not there would leave all as it is without a word.
RepositoryPaths::Map mapOf(const std::vector<std::string>& pairs) {
  RepositoryPaths::Map map;
  for (const std::string& pair : pairs) {
    const std::size_t sign = pair.rfind('=');
    if (sign == std::string::npos || sign == 0) throw UserError("--map '" + pair + "' is not PREFIX=DIR");
    const std::string folder = sign + 1 == pair.size() ? "." : pair.substr(sign + 1);
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error))
      throw UserError("--map '" + pair + "': there is no directory '" + folder + "'");
    map.emplace_back(pair.substr(0, sign), folder);
  }
  return map;
}

// What a check with these options is.
RunFacts factsOf(const Options& options) {
  RunFacts run = thisProgram();
  run.database = options.database;
  run.configFile = options.configFile;
  run.all = options.all;
  run.hasBaseline = !options.baseline.empty();
  run.allowIncomplete = options.allowIncomplete;
  if (Outputs::hasEvidence(options)) addEvidence(run);
  return run;
}

}  // namespace

Outputs::Outputs(const Options& options) : Outputs(options, factsOf(options), {}) {}

Outputs::Outputs(const Options& options, const RunFacts& run, const std::vector<RunFacts>& parts) {
  WriterOptions writerOptions;
  writerOptions.run = run;
  writerOptions.parts = parts;
  writerOptions.engineLines = options.engineLines;
  writerOptions.trace = options.trace;
  writerOptions.paths = RepositoryPaths(mapOf(options.maps));
  bool isFormatTaken = false;
  std::set<std::filesystem::path> taken;
  for (const std::string& path : options.outputs) {
    if (!taken.insert(std::filesystem::absolute(path).lexically_normal()).second)
      throw UserError("--output '" + path + "' is given twice; a file holds one report");
    std::optional<Format> format = formatOfFile(path);
    if (!format) {
      if (options.format.empty())
        throw UserError("no format is known by the name of '" + path +
                        "'; call it .txt, .json, .jsonl, .sarif, .xml or .html, or pass --format");
      format = formatNamed(options.format);
      isFormatTaken = true;
    }
    files_.push_back(std::make_unique<OutputFile>(path));
    writers_.push_back(makeWriter(*format, files_.back()->stream(), writerOptions));
  }
  const bool hasFormat = !options.format.empty() && !isFormatTaken;
  if (!options.quiet && (hasFormat || options.outputs.empty())) {
    writerOptions.color = wantsColor(options);
    const Format format = hasFormat ? *formatNamed(options.format) : Format::text;
    writers_.push_back(makeWriter(format, std::cout, writerOptions));
    isPrinting_ = true;
  }
}

bool Outputs::hasEvidence(const Options& options) {
  return !options.outputs.empty() || (!options.format.empty() && options.format != "text");
}

void Outputs::add(const ApplicationReport& report) {
  for (const auto& writer : writers_)
    writer->add(report);
}

void Outputs::end(bool wasInterrupted) {
  for (const auto& writer : writers_)
    writer->end(wasInterrupted);
  for (const auto& file : files_)
    file->finish();
}
