#include "checker/ReportWriter.h"

#include "checker/formats/Text.h"

std::unique_ptr<ReportWriter> makeWriter(Format, std::ostream& out, const WriterOptions& options) {
  return makeTextWriter(out, options);
}
