#include "swf/RegisterNames.h"

const char* const arNames[] = {"this", "arguments", "super", "_root", "_parent", "_global"};
const std::uint16_t arPreFlags[] = {0x0001, 0x0004, 0x0010, 0x0040, 0x0080, 0x0100};
const std::uint16_t arSupFlags[] = {0x0002, 0x0008, 0x0020, 0, 0, 0};
