#pragma once

// What the program returns, for those who call it.
enum ExitStatus : int {
  kDone = 0,        // and nothing was found
  kDiffers = 1,     // findings, differences, warnings
  kFailed = 2,      // a message says why
  kIncomplete = 3,  // nothing was found, but not all was looked at
};
