#pragma once

#include <memory>
#include <ostream>

#include "checker/formats/ReportWriter.h"

// JUnit XML with one test case for each application: findings fail it, so does a part that was not checked unless that
// is allowed, and then it is skipped; one that could not be checked is an error. Written at the end, behind its counts.
std::unique_ptr<ReportWriter> makeJUnitWriter(std::ostream& out, const WriterOptions& options);
