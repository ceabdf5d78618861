#pragma once

#include "tarvo/Print_Log.h"

// Log lines go to the host under the bare name of the engine function that logs ("StartAnalysis", "~APIAnalysis"). The
// host compares the formats, blanks included: they are part of the interface.
#define TARVO_LOG(format, ...) TARVO_LOG_AS(__func__, format, __VA_ARGS__)
#define TARVO_LOG_TEXT(text) Print_Log(__func__, __LINE__, const_cast<char*>(text))

// For a part of the engine function `function` that is a function of its own.
#define TARVO_LOG_AS(function, format, ...) Print_Log(function, __LINE__, const_cast<char*>(format), __VA_ARGS__)
