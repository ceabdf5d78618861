#pragma once

#include <array>

namespace FlashEngine_1_00 {

struct TagName {
  int code;
  const char* name;
};

constexpr std::size_t kTagNameCount = 72;

// Names of tag codes (SWF file format, tag types, under this engine's names), in the order of their codes.
extern const std::array<TagName, kTagNameCount> kTagNames;

}  // namespace FlashEngine_1_00
