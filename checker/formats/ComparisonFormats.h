#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "checker/report/Comparison.h"

// What `tarvo-check compare` prints. Names are bytes of applications: each format makes them visible and harmless.

enum class ComparisonFormat { text, json, html };

// By its name, "text", and by the suffix of a file, ".txt"; nothing if there is none.
std::optional<ComparisonFormat> comparisonFormatNamed(const std::string& name);
std::optional<ComparisonFormat> comparisonFormatOfFile(const std::string& path);

// `isColored` is about text.
void write(const Comparison& comparison, ComparisonFormat format, bool isColored, std::ostream& out);

// One page, without script and without anything from elsewhere.
void writePage(const Comparison& comparison, std::ostream& out);

// "1 new, 2 gone, 1 moved, 12 the same"
std::string summaryOf(const ApplicationComparison& application);
std::string summaryOf(const Comparison& comparison);

// "new: undocumented API 'Run' on TUNER (variable)", with where it was before, if that is known.
std::string lineOn(const FindingChange& change);

// "app-1.wgt, now app-2.wgt", "app.wgt, which is new": the name of an application in both versions.
std::string titleOf(const ApplicationComparison& application);

// "TUNER.GetVolume: 3 calls, before 2"
std::string lineOn(const CallChange& change);
