#pragma once

#include "checker/options/Options.h"

// What is asked of a store, and done with stores (docs/store.md). Each returns the exit status, and throws what keeps
// it from its work.

// tarvo-check judge: which applications another database changes, and why. 0 if none does, else 1.
int judgeCommand(const Options& options);

// tarvo-check catalogue: what the store holds, counted; or who uses a method. 0.
int catalogueCommand(const Options& options);

// tarvo-check merge: makes one store of several. 0, or 1 if there are conflicts, or reports that say too little.
int mergeCommand(const Options& options);
