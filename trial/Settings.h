#pragma once

#include <string>
#include <vector>

#include "trial/PackageServer.h"

namespace trial {

// What the scripts that run in a page are told.
struct Settings {
  std::string secret;  // what their messages begin with; no page learns it
  std::string mark;    // the text that made up values have
  World world = World::unreachable;
};

// The script that runs first in every frame: recorder and driver, in a function of their own, with these settings.
std::string recorderScript(const Input& input, const Settings& settings, const std::vector<std::string>& keys);

// The keys that the application may wait for: those of a remote control, and the numbers and names that its scripts
// compare with, as texts of script: "13", "\"Enter\"". At most 160.
std::vector<std::string> keysOf(const std::vector<File>& files);

}  // namespace trial
