#pragma once

#include "platform/FilePlace.h"

// The place of a host's runs: the file system, through no_follow.h.

namespace FlashEngine_1_00 {

FilePlace& diskPlace();

// The place that goes with enginePaths().
FilePlace& currentPlace();

}  // namespace FlashEngine_1_00
