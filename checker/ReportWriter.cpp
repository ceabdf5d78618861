#include "checker/ReportWriter.h"

#include "checker/formats/Text.h"

std::unique_ptr<ReportWriter> makeWriter(Format, std::ostream& out, const WriterOptions& options) {
  return makeTextWriter(out, options);
}

std::optional<Format> formatNamed(const std::string& name) {
  return name == "text" ? std::optional(Format::text) : std::nullopt;
}

std::optional<Format> formatOfFile(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  return dot != std::string::npos && path.substr(dot) == ".txt" ? std::optional(Format::text) : std::nullopt;
}
