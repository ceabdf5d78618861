#pragma once

#include <string>

// Test builds only (TARVO_TEST_FAULTS): does what the name of the application asks for, so that tests see how a run
// goes on when a worker hangs, crashes, takes all memory, or answers with what is no report. "fault-hang.wgt" hangs.
void TESTING_ONLY_triggerFault(const std::string& application, int pipe);

// The same behind what the worker sends first: "late-fault-hang.wgt" hangs there.
void TESTING_ONLY_triggerLateFault(const std::string& application);
