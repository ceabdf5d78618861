#pragma once

#include <string>

#include "APICheckEngine/search/NamePattern.h"

// The texts of calls: the patterns that find them, and what a found one says.

namespace FlashEngine_1_00::detail {

// The pattern of a call on a variable, with arguments or without: " tv.SetVolume(x, 1)", "(tv.GetModel()"; not
// "mytv.GetModel()". Of one variable, and of any.
std::string callOn(const std::string& variable);
NamePattern callsOnVariables();

// The pattern of a look-up of `id` up to the dot behind it: `("tv").`.
std::string lookupOf(const std::string& id);

// The pattern of a call on a look-up of an id: `("tv").GetModel(`. Of one id, and of any.
std::string callOnLookupOf(const std::string& id);
NamePattern callsOnLookUps();

// Whether `callText` calls a built-in function: one of SystemFunctionPool stands before a "(".
bool holdsBuiltIn(const std::string& callText);

// The method that an "Execute" call of the extension plug-in carries; empty if there is none.
std::string executedMethod(const std::string& callText);

}  // namespace FlashEngine_1_00::detail
