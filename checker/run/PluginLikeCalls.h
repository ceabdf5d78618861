#pragma once

#include "APICheckEngine/Facade.h"

// Whether an application in which no element of a plug-in is known has calls that look like those on plug-ins: of a
// documented method, or, on what was looked up in a page, of one whose name begins with a capital letter as theirs do.
// Without the page that has the elements, nobody knows what such calls are on.
bool hasCallsWithoutPlugin(const FlashEngine_1_00::APIAnalysis& engine);
