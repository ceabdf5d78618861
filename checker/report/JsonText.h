#pragma once

#include <nlohmann/json.hpp>

// JSON holds characters, a report holds bytes of any encoding (checker/report/Report.h). Where the bytes of a text are
// no UTF-8, JSON has U+FFFD in their place.

// Replaces bytes that are no characters in all texts of `json`. A `mark` counts bytes of the `text` beside it, and is
// counted anew.
void makeText(nlohmann::ordered_json& json);

// The same, and nothing is lost: an object with such texts gets the field `raw`, an object with the bytes of each as
// hexadecimal digits, and with marks as they were.
void makeTextAndRaw(nlohmann::ordered_json& json);

// Puts back what `raw` fields hold. Throws std::invalid_argument if one does not fit the texts beside it.
void takeRaw(nlohmann::ordered_json& json);
