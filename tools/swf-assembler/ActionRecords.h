#pragma once

#include "swf-assembler/Bytes.h"
#include "swf-assembler/TokenReader.h"

namespace swf_assembler {

// The action records of a text from here to the end of the block or file.
Code readActions(TokenReader& reader);

}  // namespace swf_assembler
