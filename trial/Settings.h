#pragma once

#include <string>
#include <vector>

#include "trial/Answers.h"
#include "trial/PackageServer.h"

namespace trial {

// What the scripts that run in a page are told.
struct Settings {
  std::string secret;  // what their messages begin with; no page learns it
  std::string mark;    // the text that made up values have
  World world = World::unreachable;
};

// What the application may wait for, as texts of script: 13, "Enter", [38,38,40].
struct Vocabulary {
  std::vector<std::string> keys;       // of a remote control, and what scripts compare with; at most 160
  std::vector<std::string> sequences;  // of keys, as a hidden menu wants them; at most 20
  std::vector<std::string> modifiers;  // of key events: "shiftKey"
  std::vector<std::string> words;      // that scripts compare with; at most 40
  std::vector<std::string> compared;   // keys that scripts compare with, and those that move; at most 48
  std::vector<std::string> origins;    // of addresses
  Answers answers;
};

// The script that runs first in every frame: recorder and driver, in a function of their own, with these settings.
std::string recorderScript(const Input& input, const Settings& settings, const Vocabulary& vocabulary);

// Found by how it is written, in pages and scripts that are no libraries.
Vocabulary vocabularyOf(const std::vector<File>& files);

}  // namespace trial
