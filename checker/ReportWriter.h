#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "checker/Report.h"

enum class Format { text, json, jsonl, sarif, junit, html };

// The format of that name: "text", "json", ...
std::optional<Format> formatNamed(const std::string& name);

// The format for a file of that name, by its suffix: .txt, .json, .jsonl, .sarif or .sarif.json, .xml (junit), .html or
// .htm.
std::optional<Format> formatOfFile(const std::string& path);

struct WriterOptions {
  std::string database;          // path, as shown
  bool color = false;            // text
  bool engineLines = false;      // text: findings as the device prints them
  bool all = false;              // whether all calls were asked for
  bool hasBaseline = false;      // sarif: whether findings are new or known
  bool allowIncomplete = false;  // junit: whether an incomplete application passes
};

// Writes the reports of a run in one format: each in the order of the arguments, then the end.
class ReportWriter {
 public:
  virtual ~ReportWriter() = default;
  virtual void add(const ApplicationReport& report) = 0;
  virtual void end(bool wasInterrupted) = 0;
};

// `out` must outlive the writer.
std::unique_ptr<ReportWriter> makeWriter(Format format, std::ostream& out, const WriterOptions& options);
