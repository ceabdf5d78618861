#pragma once

#include <cstddef>
#include <cstdint>

// The values that a DefineFunction2 record can put into registers before its body runs, with the bits of its 16-bit
// flags field (SWF file format, DefineFunction2: little-endian). Exported tables, one row a name.

constexpr std::size_t kRegisterNameCount = 6;

extern const char* const arNames[kRegisterNameCount];
extern const std::uint16_t arPreFlags[kRegisterNameCount];  // preload bit
extern const std::uint16_t arSupFlags[kRegisterNameCount];  // suppress bit; 0 where there is none
