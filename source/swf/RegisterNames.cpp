#include "swf/RegisterNames.h"

constexpr const char* arNames[] = {"this", "arguments", "super", "_root", "_parent", "_global"};
constexpr std::uint16_t arPreFlags[] = {0x0001, 0x0004, 0x0010, 0x0040, 0x0080, 0x0100};
constexpr std::uint16_t arSupFlags[] = {0x0002, 0x0008, 0x0020, 0, 0, 0};

// A name or a bit too few would leave zeroes at the end.
static_assert(arNames[kRegisterNameCount - 1] != nullptr && arPreFlags[kRegisterNameCount - 1] != 0);
static_assert(arSupFlags[2] != 0);
