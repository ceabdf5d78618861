#pragma once

#include <string>
#include <string_view>
#include <vector>

// Words: what can be told of a file without parsing it.

namespace flow {

// Whether a class identifier stands in it.
bool namesPlugin(std::string_view text, const std::vector<std::string>& identifiers);

// Whether one of these ids stands in it, not as a part of another word. Of one or two letters: looked up.
bool namesAny(std::string_view text, const std::vector<std::string>& ids);

// Whether script in it may mean an element by one of these ids: as a text, or as a global with something behind it. Of
// one or two letters: looked up.
bool namesIds(std::string_view text, const std::vector<std::string>& ids);

// Whether it does so without doubt: in a look-up, or as a global with a method of a plug-in. For scripts that have
// words like "video" anyway.
bool looksUpIds(std::string_view text, const std::vector<std::string>& ids);

// Where a tag may begin in it, not before `from`: a bracket with a letter behind it.
std::size_t findTag(std::string_view text, std::size_t from = 0);

bool isScriptPath(std::string_view path);

// Whether it has the statements of a module.
bool looksLikeModule(std::string_view text);

// Whether it asks for modules, or gives what it exports, by the names that CommonJS has for that.
bool looksLikeCommonJs(std::string_view text);

// The well-known library that the script is, with its version; empty if it is none. Such a script is not analysed: what
// it does stands in the models. A bundle with application code behind a library is none.
std::string libraryOf(std::string_view text);

// Makes blanks of what browsers take for comments besides those of the language: "<!--" to the end of its line, and
// "-->" where nothing stands before it in its line.
void blankHtmlComments(std::string& text);

}  // namespace flow
