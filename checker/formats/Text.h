#pragma once

#include <memory>
#include <ostream>

#include "checker/formats/ReportWriter.h"
#include "checker/report/Characters.h"

// One line for each finding, in the form that editors and CI logs understand, then the verdict; a summary of several
// applications at the end.
std::unique_ptr<ReportWriter> makeTextWriter(std::ostream& out, const WriterOptions& options);
