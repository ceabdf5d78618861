#pragma once

#include <nlohmann/json.hpp>

#include "checker/report/Report.h"

// A report as JSON (docs/json.md). Strings are the report's bytes: `dump` needs an error handler for those that are not
// UTF-8, CBOR carries them as they are.
nlohmann::ordered_json toJson(const ApplicationReport& report);

// The parts of it.
nlohmann::ordered_json toJson(const Finding& finding);
nlohmann::ordered_json toJson(const NotChecked& item);

// The report in `json`. Throws std::exception if `json` is not one.
ApplicationReport reportFrom(const nlohmann::ordered_json& json);
