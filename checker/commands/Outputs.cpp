// Test: tests/checker/CommandLine_test.cpp.

#include "checker/commands/Outputs.h"

#include <filesystem>
#include <iostream>
#include <optional>
#include <set>

#include "checker/formats/Evidence.h"
#include "checker/formats/Formats.h"
#include "checker/options/UserError.h"

Outputs::Outputs(const Options& options) {
  WriterOptions writerOptions{
      options.database, false, options.engineLines, options.all, !options.baseline.empty(), options.allowIncomplete};
  writerOptions.configFile = options.configFile;
  if (hasEvidence(options)) addEvidence(writerOptions);
  writerOptions.trace = options.trace;
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
