#pragma once

#include "checker/options/Options.h"
#include "checker/run/DatabaseListing.h"

// Throws UserError with file, line and column if the database is missing, empty, not well-formed, or documents no
// method. A verdict by such a file would be wrong about every call.
void requireSoundDatabase(const Options& options);

// tarvo-check database: lists the database to standard output and its warnings, "file:line: warning: ...", to standard
// error; as JSON all to standard output. Returns the exit status: 0, 1 if there are warnings, 2 if it is not sound.
int databaseCommand(const Options& options);

// tarvo-check database diff: lists what became documented or undocumented. Returns the exit status: 0 if nothing did,
// 1, or 2 if one of the files is not sound.
int databaseDiffCommand(const Options& options);
