#pragma once

#include <string_view>

#include "APICheckEngine/MethodName.h"

// Verdicts on records (Verdicts.cpp).

namespace FlashEngine_1_00 {
struct SWFStateMentInfo;
}

namespace FlashEngine_1_00::detail {

// The call text of a record, a part of its expression; empty if its expression is null or has no second part.
std::string_view callTextOf(const SWFStateMentInfo& call);

}  // namespace FlashEngine_1_00::detail
