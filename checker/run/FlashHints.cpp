// Test: tests/checker/FlashMovie_test.cpp.

#include "checker/run/FlashHints.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace {

constexpr std::size_t kMaxHints = 200;  // of one movie

// "Get" of "GetVolume"; empty if that is no name of several words.
std::string verbOf(const std::string& name) {
  const auto isCapital = [&](std::size_t i) { return std::isupper(static_cast<unsigned char>(name[i])) != 0; };
  if (name.size() < 3 || !isCapital(0) || isCapital(1)) return {};
  const auto isLetter = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; };
  if (!std::all_of(name.begin(), name.end(), isLetter)) return {};
  std::size_t end = 1;
  while (end < name.size() && !isCapital(end))
    ++end;
  return end < name.size() ? name.substr(0, end) : std::string();
}

}  // namespace

FlashHints::FlashHints(std::vector<std::string> identifiers,
                       const std::map<std::string, std::vector<std::string>>& methods)
    : identifiers_(std::move(identifiers)) {
  for (const auto& [plugin, names] : methods) {
    for (const std::string& name : names) {
      plugins_.emplace(name, plugin);
      verbs_.insert(verbOf(name));
    }
  }
  verbs_.erase("");
}

const char* FlashHints::reasonFor(const std::string& text) const {
  const auto names = [&](const std::string& identifier) { return text.find(identifier) != std::string::npos; };
  if (std::any_of(identifiers_.begin(), identifiers_.end(), names))
    return "ActionScript 3, which is not read, has the class identifier of a plug-in";
  if (plugins_.count(text) != 0) return "ActionScript 3, which is not read, has the name of a documented method";
  if (verbs_.count(verbOf(text)) != 0)
    return "ActionScript 3, which is not read, has a name like those of methods, which is not documented";
  return nullptr;
}

std::vector<Undetermined> FlashHints::in(const FlashMovie& movie, const std::string& path) const {
  std::vector<Undetermined> hints;
  const std::set<std::string> strings(movie.strings.begin(), movie.strings.end());
  bool isAboutPlugins = false;
  for (const std::string& text : strings) {
    const char* const reason = reasonFor(text);
    if (reason == nullptr || hints.size() == kMaxHints) continue;
    Undetermined hint;
    hint.call.path = path;
    hint.call.found = Call::Found::flow;
    hint.call.code = text.substr(0, 160);
    hint.reason = reason;
    const auto documented = plugins_.find(text);
    if (documented != plugins_.end()) hint.call.plugin = documented->second;
    isAboutPlugins = isAboutPlugins || documented != plugins_.end() || text.find('-') != std::string::npos;
    hints.push_back(std::move(hint));
  }
  // Names like "GetData" are everywhere: they say something beside one of a plug-in.
  return isAboutPlugins ? hints : std::vector<Undetermined>();
}
