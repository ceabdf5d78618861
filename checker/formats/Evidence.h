#pragma once

#include "checker/report/Report.h"

// What a run of this program is: its version and the engine's.
RunFacts thisProgram();

// Fills in what a reader needs to repeat a run: when it started, the command line and the database's digest. What
// cannot be found out stays empty.
void addEvidence(RunFacts& run);
