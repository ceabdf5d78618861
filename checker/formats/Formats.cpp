// A table of the formats: name, suffixes of files, and what makes the writer.
// Test: tests/checker/Formats_test.cpp.

#include "checker/formats/Formats.h"

#include <algorithm>

#include "checker/formats/GitHub.h"
#include "checker/formats/GitLab.h"
#include "checker/formats/Html.h"
#include "checker/formats/JUnit.h"
#include "checker/formats/JsonFormats.h"
#include "checker/formats/Sarif.h"
#include "checker/formats/Text.h"

namespace {

using Make = std::unique_ptr<ReportWriter> (*)(std::ostream& out, const WriterOptions& options);

struct Row {
  Format format;
  const char* name;
  const char* suffixes[2];
  Make make;
};
constexpr Row kFormats[] = {
    {Format::text, "text", {".txt", nullptr}, makeTextWriter},
    {Format::sarif, "sarif", {".sarif", ".sarif.json"}, makeSarifWriter},  // before .json
    {Format::json, "json", {".json", nullptr}, makeJsonWriter},
    {Format::jsonl, "jsonl", {".jsonl", nullptr}, makeJsonLinesWriter},
    {Format::junit, "junit", {".xml", nullptr}, makeJUnitWriter},
    {Format::html, "html", {".html", ".htm"}, makeHtmlWriter},
    {Format::github, "github", {nullptr, nullptr}, makeGitHubWriter},
    {Format::gitlab, "gitlab", {nullptr, nullptr}, makeGitLabWriter},
};

bool endsIn(const std::string& path, const std::string& suffix) {
  return path.size() > suffix.size() && path.compare(path.size() - suffix.size(), suffix.size(), suffix) == 0;
}

}  // namespace

std::optional<Format> formatNamed(const std::string& name) {
  for (const Row& row : kFormats) {
    if (row.name == name) return row.format;
  }
  return std::nullopt;
}

std::optional<Format> formatOfFile(const std::string& path) {
  for (const Row& row : kFormats) {
    for (const char* suffix : row.suffixes) {
      if (suffix != nullptr && endsIn(path, suffix)) return row.format;
    }
  }
  return std::nullopt;
}

std::unique_ptr<ReportWriter> makeWriter(Format format, std::ostream& out, const WriterOptions& options) {
  const auto row =
      std::find_if(std::begin(kFormats), std::end(kFormats), [&](const Row& each) { return each.format == format; });
  return row->make(out, options);
}
