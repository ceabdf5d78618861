#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Strings: literals as the language reads them.

namespace flow {

// The text of a string literal without its quotes, escapes decoded.
std::string unescape(std::string_view literal);

// The canonical text of a number literal, as it is as a property name: 0x10 gives "16".
std::string numberText(std::string_view literal);

// Appends a code point as UTF-8.
void appendPoint(std::uint32_t point, std::string& text);

}  // namespace flow
