// Relevance: the words of scripts, and the globals that they share. Test: tests/flow/Relevance_test.cpp.

#include "flow/Relevance.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "flow/Words.h"

namespace flow {
namespace {

constexpr std::size_t kSmall = 65'536;   // bytes of a script that is always read
constexpr std::size_t kShortGlobal = 2;  // minified code is full of names that short

using Words = std::unordered_set<std::string_view>;

bool isNameByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '$';
}

std::string_view nameAt(std::string_view text, std::size_t begin) {
  std::size_t end = begin;
  while (end < text.size() && isNameByte(text[end]))
    ++end;
  return text.substr(begin, end - begin);
}

// Calls `take` with each name in the text, and whether it stands behind a dot.
template <typename Take>
void eachName(std::string_view text, Take take) {
  for (std::size_t at = 0; at < text.size();) {
    if (!isNameByte(text[at])) {
      ++at;
      continue;
    }
    const std::string_view name = nameAt(text, at);
    take(name, at > 0 && text[at - 1] == '.');
    at += name.size();
  }
}

// Whether what stands behind a name gives it a value.
bool isAssigned(std::string_view text, std::size_t at) {
  while (at < text.size() && (text[at] == ' ' || text[at] == '\t'))
    ++at;
  return at + 1 < text.size() && text[at] == '=' && text[at + 1] != '=';
}

// Names behind "window." and the like that are assigned to, and what the first column of a line declares.
Words globalsOf(std::string_view text) {
  static constexpr std::array<std::string_view, 4> kObjects = {"window.", "root.", "global.", "globalThis."};
  static constexpr std::array<std::string_view, 5> kDeclarations = {"var ", "function ", "const ", "let ", "class "};
  Words globals;
  const auto add = [&](std::string_view name) {
    if (name.size() > kShortGlobal || name == "$" || name == "_") globals.insert(name);
  };
  for (const std::string_view object : kObjects) {
    for (std::size_t at = text.find(object); at != std::string_view::npos; at = text.find(object, at + 1)) {
      const std::string_view name = nameAt(text, at + object.size());
      if (isAssigned(text, at + object.size() + name.size())) add(name);
    }
  }
  for (const std::string_view word : kDeclarations)
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1))
      if (at == 0 || text[at - 1] == '\n') add(nameAt(text, at + word.size()));
  return globals;
}

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// Whether the script looks for elements without a word of ours: by the names of their tags.
bool looksForPlugins(std::string_view text) {
  if (text.find("document.embeds") != std::string_view::npos) return true;
  for (const std::string_view tag : {"object\"", "object'", "OBJECT\"", "embed\"", "embed'"}) {
    for (std::size_t at = text.find(tag); at != std::string_view::npos; at = text.find(tag, at + 1)) {
      const std::string_view before = text.substr(0, at == 0 ? 0 : at - 1);
      for (const std::string_view lookUp : {"ByTagName(", "querySelector(", "querySelectorAll(", "$("})
        if (endsWith(before, lookUp)) return true;
    }
  }
  return false;
}

// Whether a name is one that an application gives, and that the script does not declare for itself.
bool isForeign(std::string_view name, std::string_view text) {
  const bool isSpecial =
      name.size() > 3 && std::any_of(name.begin(), name.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
  if (!isSpecial) return false;
  for (const char* word : {"var ", "function ", "const ", "let ", "class ", ","})
    if (text.find(word + std::string(name)) != std::string_view::npos) return false;
  return true;
}

bool isOwn(const Script& script, const std::vector<std::string>& identifiers, const std::vector<std::string>& ids) {
  if (script.isInPage || (script.text.size() < kSmall && !script.isLibrary)) return true;
  if (namesPlugin(script.text, identifiers)) return true;
  if (script.isLibrary) return looksUpIds(script.text, ids);
  return namesIds(script.text, ids) || looksForPlugins(script.text);
}

// What is read, by its words, and the globals that it makes.
struct Shared {
  Words names;
  Words moduleNames;
  Words globals;

  void add(const Script& script) {
    const std::string_view text = script.text;
    eachName(text, [&](std::string_view name, bool isProperty) {
      const char before = name.data() > text.data() ? *(name.data() - 1) : ' ';
      if (!script.isInPage && (before == '/' || before == '"' || before == '\'')) moduleNames.insert(name);
      const auto begin = static_cast<std::size_t>(name.data() - text.data());
      if (!isProperty || endsWith(text.substr(0, begin), "window.")) names.insert(name);
    });
    const Words made = globalsOf(text);
    globals.insert(made.begin(), made.end());
  }

  bool isSharedWith(const Script& script) const {
    const std::string_view text = script.text;
    if (script.name.size() > kShortGlobal && moduleNames.count(script.name) != 0 &&
        (looksLikeModule(text) || looksLikeCommonJs(text) || text.find("define(") != std::string_view::npos))
      return true;
    const Words made = globalsOf(text);
    if (std::any_of(made.begin(), made.end(), [&](std::string_view name) { return names.count(name) != 0; }))
      return true;
    Words used;
    eachName(text, [&](std::string_view name, bool isProperty) {
      if (!isProperty && globals.count(name) != 0) used.insert(name);
    });
    return std::any_of(used.begin(), used.end(), [&](std::string_view name) { return isForeign(name, text); });
  }
};

// What `tell` says of each number below `count`; no bits, which threads could not set side by side.
std::vector<char> told(std::size_t count, const ForEach& forEach, const std::function<bool(std::size_t)>& tell) {
  std::vector<char> all(count);
  const auto work = [&](std::size_t i) { all[i] = tell(i) ? 1 : 0; };
  if (forEach) {
    forEach(count, work);
  } else {
    for (std::size_t i = 0; i < count; ++i)
      work(i);
  }
  return all;
}

}  // namespace

std::vector<Relevance> relevanceOf(const std::vector<Script>& scripts, const std::vector<std::string>& identifiers,
                                   const std::vector<std::string>& ids, const ForEach& forEach) {
  std::vector<Relevance> relevance(scripts.size(), Relevance::none);
  std::vector<std::size_t> open;
  Shared shared;
  const std::vector<char> own =
      told(scripts.size(), forEach, [&](std::size_t i) { return isOwn(scripts[i], identifiers, ids); });
  for (std::size_t i = 0; i < scripts.size(); ++i) {
    if (own[i] != 0) {
      relevance[i] = Relevance::own;
      shared.add(scripts[i]);
    } else if (!scripts[i].isLibrary) {
      open.push_back(i);
    }
  }
  // One step only: what a library shares with others is not the application's.
  const std::vector<char> isShared =
      told(open.size(), forEach, [&](std::size_t i) { return shared.isSharedWith(scripts[open[i]]); });
  for (std::size_t i = 0; i < open.size(); ++i)
    if (isShared[i] != 0) relevance[open[i]] = Relevance::shared;
  return relevance;
}

}  // namespace flow
