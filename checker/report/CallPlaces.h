#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "checker/report/Report.h"

// A call that the engine found, in the text in which it found it.
struct Sighting {
  std::size_t offset;  // of the call in that text
  std::size_t length;
  Call* call;  // its place, code, excerpt and lines around are filled in
};

// Finds the places of calls in the web source at `path` as it was shipped; `cleaned` is what the engine made of it.
// They stay unknown, and the excerpts are of the cleaned text, if the file is not there any more or is another.
void placeInSource(const std::string& path, std::string_view cleaned, std::vector<Sighting> sightings);

// Takes the excerpt of a call from the statements of a Flash file.
void placeInStatements(std::string_view statements, const Sighting& sighting);
