#pragma once

#include <string>
#include <string_view>
#include <vector>

// What is read out of the text of an access to an element.

namespace FlashEngine_1_00::detail {

// A look-up whose result is used on the spot: `document.getElementById("tv").`, `$("tv") .`; not `$("tv") +`.
constexpr const char* kDirectUse = R"((document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.+))"
                                   "|"
                                   R"(([\$]\s*[(]["'\s]*[\w\_]+["'\s]*\)\s*\.+))";

// "this.tv ="; in "tv == null", "tv =" and then the second "=" alone, which names nothing.
constexpr const char* kAssignment = R"((([\w\_]+)[\.]*)*\s*(=))";

// `getElementById("tv` and `$_('tv`; not `embeds[1]`.
constexpr const char* kLookedUpId = R"((getElementById|[\$]\s*[\_]*)\s*[(]["'\s]*[\w\_]+)";

// Whether kDirectUse matches in an access.
bool isUsedDirectly(std::string_view access);

// The matches of kAssignment, without their blanks and "="; those of which nothing is left are left out.
std::vector<std::string> assignedVariables(std::string_view access);

// The word at the end of the first match of kLookedUpId: the element id; empty if the access looks none up.
std::string lookedUpId(std::string_view access);

}  // namespace FlashEngine_1_00::detail
