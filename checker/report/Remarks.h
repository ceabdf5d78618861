#pragma once

#include "checker/report/Report.h"

// What can be said of a finding by its call alone.

// Whether `method` is one that every element of a page has, as "focus" and "setAttribute".
bool isElementMethod(const std::string& method);

// Whether the call carries its method as the value of a variable, as Execute(cmd) does: the engine takes "cmd" for the
// name.
bool hasComputedName(const Call& call);

// Gives each finding that needs one its kind (`computed`) and its advice. What another rule advised stays.
void addRemarks(ApplicationReport& report);
