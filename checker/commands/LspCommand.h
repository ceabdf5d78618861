#pragma once

#include "checker/options/Options.h"

// tarvo-check lsp: serves an editor with the Language Server Protocol on standard input and output, until it says that
// it wants no more. Returns the exit status: 0, 1 if the client went without a word, 128 and its number if a signal
// came. Throws UserError if it cannot begin.
int lspCommand(const Options& options);
