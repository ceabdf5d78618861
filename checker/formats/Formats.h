#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "checker/formats/ReportWriter.h"

// The formats of reports, by name and by the suffix of a file.

enum class Format { text, json, jsonl, sarif, junit, html, github, gitlab };

// The format of that name: "text", "json", ...
std::optional<Format> formatNamed(const std::string& name);

// The format for a file of that name, by its suffix: .txt, .json, .jsonl, .sarif or .sarif.json, .xml (junit), .html or
// .htm. No suffix stands for github and gitlab.
std::optional<Format> formatOfFile(const std::string& path);

// `out` must outlive the writer.
std::unique_ptr<ReportWriter> makeWriter(Format format, std::ostream& out, const WriterOptions& options);
