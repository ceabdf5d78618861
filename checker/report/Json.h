#pragma once

#include <string>

// JSON holds text, the engine's strings are bytes: each byte is written as the code point of its value, U+0000 to
// U+00FF, so that nothing is lost. Returns UTF-8.
std::string codePoints(const std::string& bytes);
