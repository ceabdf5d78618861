// Parts are compared one by one, by the C library's fnmatch where a part has a pattern in it. The program sets no
// locale, so that a name is bytes.
// Test: tests/checker/PathGlob_test.cpp.

#include "checker/options/PathGlob.h"

#include <fnmatch.h>

#include <algorithm>

#include "checker/options/UserError.h"

namespace {

constexpr std::string_view kAnyFolders = "**";

}  // namespace

PathGlob::Parts PathGlob::partsOf(std::string_view path) {
  Parts parts;
  for (std::size_t at = 0; at < path.size();) {
    const std::size_t end = std::min(path.find('/', at), path.size());
    const std::string_view part = path.substr(at, end - at);
    if (!part.empty() && part != ".") parts.push_back(part);
    at = end + 1;
  }
  return parts;
}

PathGlob::PathGlob(const std::string& glob) {
  Parts texts = partsOf(glob);
  while (texts.size() > 1 && texts.back() == kAnyFolders)
    texts.pop_back();
  const auto first =
      std::find_if(texts.begin(), texts.end(), [](std::string_view text) { return text != kAnyFolders; });
  const bool hasAnyFolders = first != texts.begin();
  texts.erase(texts.begin(), first);
  if (texts.empty() && hasAnyFolders) texts.emplace_back("*");
  if (texts.empty()) throw UserError("it names no file");
  if (std::find(texts.begin(), texts.end(), kAnyFolders) != texts.end())
    throw UserError("'**' can stand at its beginning and at its end only");
  if (glob.find('\0') != std::string::npos) throw UserError("it holds a zero byte");
  const bool isName = texts.size() == 1 && glob.front() != '/' && glob.compare(0, 2, "./") != 0;
  isAnywhere_ = hasAnyFolders || isName;
  for (const std::string_view text : texts)
    parts_.push_back(partOf(text));
}

PathGlob::Part PathGlob::partOf(std::string_view text) {
  std::string literal;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (std::string_view("*?[").find(text[i]) != std::string_view::npos) return {std::string(text), false};
    if (text[i] == '\\' && i + 1 < text.size()) ++i;
    literal += text[i];
  }
  return {literal, true};
}

bool PathGlob::Part::matches(std::string_view name) const {
  return isLiteral ? text == name : fnmatch(text.c_str(), std::string(name).c_str(), 0) == 0;
}

bool PathGlob::matchesAt(const Parts& path, std::size_t first) const {
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    if (!parts_[i].matches(path[first + i])) return false;
  }
  return true;
}

std::size_t PathGlob::partsMeant(const Parts& path) const {
  if (path.size() < parts_.size()) return 0;
  const std::size_t last = isAnywhere_ ? path.size() - parts_.size() : 0;
  for (std::size_t first = 0; first <= last; ++first) {
    if (matchesAt(path, first)) return first + parts_.size();
  }
  return 0;
}
