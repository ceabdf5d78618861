#pragma once

#include <optional>
#include <string>
#include <string_view>

// What does a place hold? Analyses a text in which a method is called there that no plug-in has: the report then has a
// call of it, with the plug-in.

constexpr const char* kPlaceholder = "tarvoMemberThatNobodyHas";

// `text` with that call in place of the member that is being typed at `offset`, behind a dot; none if there is no dot.
std::optional<std::string> withMember(std::string_view text, std::size_t offset);

// `text` with that call behind the identifier at `offset`; none if there is no identifier, or if it is called.
std::optional<std::string> withCallBehind(std::string_view text, std::size_t offset);
