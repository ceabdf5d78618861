#pragma once

#include "APICheckEngine/Facade.h"

// Why a part of an application was not checked, in words.
struct GapReason {
  enum class Kind {
    none,   // another reason says it better
    entry,  // of a package
    file,
    cut,       // of a file; its text is that of cutReason
    unlisted,  // script of a Flash file, or a file that the engine passes over
  };
  Kind kind;
  const char* text;
};

GapReason reasonOf(FlashEngine_1_00::Gap gap, int code);

const char* cutReason(bool isFlash);
