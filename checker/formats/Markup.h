#pragma once

#include <string>
#include <string_view>

// Text of an application between tags and in attributes of a page: visible, and nothing in it is markup.
std::string markup(std::string_view text);

// The same for lines of source: tabs stay.
std::string markupOfSource(std::string_view text);
