#pragma once

#include "checker/formats/ReportWriter.h"

// Fills in what a reader needs to repeat a run: when it started, the command line and the database's digest. What
// cannot be found out stays empty.
void addEvidence(WriterOptions& options);
