// Where a frame of the browser's stack stands in a file of the application. Inline scripts begin in the middle of a
// page; handlers and code made at run time have no file: the text that they were made of is looked for.
// Test: tests/trial/Places_test.cpp.

#include "trial/Places.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <string_view>

namespace trial {

namespace {

bool isMarkup(const File& file) {
  return contentTypeOf(file.path) != "text/javascript";
}

constexpr std::size_t kMaxScripts = 20'000;
constexpr std::size_t kMaxFrames = 20;
constexpr int kMaxMade = 5;  // code made by code made by code
constexpr std::size_t kMaxName = 100;
constexpr int kMaxNumber = 1'000'000'000;

// Names of files, without folder, that begin so; what follows is a version, ".min", and so on.
constexpr const char* kLibraries[] = {"jquery",
                                      "zepto",
                                      "prototype.",
                                      "prototype-",
                                      "scriptaculous",
                                      "mootools",
                                      "dojo",
                                      "yui",
                                      "underscore",
                                      "lodash",
                                      "backbone",
                                      "angular",
                                      "react.",
                                      "react-dom",
                                      "react-",
                                      "preact",
                                      "vue.",
                                      "vue-",
                                      "ember",
                                      "knockout",
                                      "handlebars",
                                      "mustache",
                                      "require.",
                                      "require-",
                                      "requirejs",
                                      "almond",
                                      "bluebird",
                                      "rsvp",
                                      "es5-shim",
                                      "es6-shim",
                                      "es6-promise",
                                      "core-js",
                                      "polyfill",
                                      "modernizr",
                                      "system.",
                                      "moment",
                                      "hammer",
                                      "iscroll",
                                      "sizzle",
                                      "ext-all",
                                      "regenerator-runtime",
                                      "tslib",
                                      "zone.",
                                      "rxjs",
                                      "redux",
                                      "q.min",
                                      "async.min",
                                      "d3."};

int numberOf(const Json& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end() || !found->is_number_integer()) return 0;
  return static_cast<int>(std::clamp<std::int64_t>(found->get<std::int64_t>(), 0, kMaxNumber));
}

std::string textOf(const Json& object, const char* key) {
  const auto found = object.find(key);
  return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

bool isWordByte(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$';
}

bool isWordAt(const std::string& text, std::size_t at, const std::string& word) {
  return (at == 0 || !isWordByte(text[at - 1])) &&
         (at + word.size() >= text.size() || !isWordByte(text[at + word.size()]));
}

// Whether the word stands in the line; in a long one, around the byte.
bool spells(const std::string& line, std::size_t byte, const std::string& word) {
  constexpr std::size_t kBefore = 100;
  constexpr std::size_t kBehind = 300;
  if (word.empty()) return false;
  const std::size_t begin = byte > kBefore && line.size() > kBefore + kBehind ? byte - kBefore : 0;
  for (std::size_t at = line.find(word, begin); at < begin + kBefore + kBehind; at = line.find(word, at + 1))
    if (isWordAt(line, at, word)) return true;
  return false;
}

// Where the line begins; npos if there are not so many.
std::size_t beginOfLine(const std::string& bytes, int line) {
  std::size_t begin = 0;
  for (int i = 1; i < line; ++i) {
    begin = bytes.find('\n', begin);
    if (begin == std::string::npos) return begin;
    ++begin;
  }
  return begin;
}

// A handler in a tag is told to be where the tag ends: whether the tag there has it. One of a tag that code made is
// told to be somewhere.
bool isInTag(const std::string& bytes, int line, int units, std::string handler) {
  const std::size_t begin = beginOfLine(bytes, line);
  if (begin == std::string::npos) return false;
  const std::size_t end = std::min(bytes.size(), begin + static_cast<std::size_t>(units) + 1);
  const std::size_t open = bytes.rfind('<', end);
  std::string tag = open == std::string::npos ? std::string() : bytes.substr(open, end - open);
  const auto lower = [](unsigned char c) { return static_cast<char>(std::tolower(c)); };
  std::transform(tag.begin(), tag.end(), tag.begin(), lower);
  handler.erase(0, handler.rfind('.') + 1);
  return tag.find(handler) != std::string::npos;
}

// A handler in a tag is told to be where the tag ends: looks for the call in the tag.
bool placeInTag(const std::string& bytes, const std::string& method, int units, Frame& frame) {
  constexpr std::size_t kMaxTag = 4000;
  std::size_t end = beginOfLine(bytes, frame.line);
  if (end == std::string::npos || method.empty()) return false;
  const std::size_t lineBegin = end;
  end = std::min(bytes.size(), end + static_cast<std::size_t>(units));
  std::size_t found = bytes.rfind('.' + method, end);
  if (found == std::string::npos || found + kMaxTag < end) found = bytes.rfind(".Execute", end);
  if (found == std::string::npos || found + kMaxTag < end) return false;
  if (found < lineBegin)
    frame.line -= static_cast<int>(std::count(bytes.begin() + static_cast<std::ptrdiff_t>(found),
                                              bytes.begin() + static_cast<std::ptrdiff_t>(lineBegin), '\n'));
  const std::size_t begin = bytes.rfind('\n', found) + 1;
  frame.column = characterColumn(bytes.substr(begin, found + 1 - begin), INT_MAX, {});
  frame.isSpelled = true;
  return true;
}

// How a method is written, the better ones first.
enum class Written { inText, passed, called, none };

bool isText(const File& file) {
  const std::string type = contentTypeOf(file.path);
  return type.compare(0, 5, "text/") == 0 || type.find("xml") != std::string::npos ||
         type == "application/octet-stream";
}

// Whether the byte stands outside of the scripts of a page.
bool isInMarkup(const File& file, std::size_t at) {
  if (!isMarkup(file)) return false;
  const std::size_t open = file.bytes.rfind("<script", at);
  const std::size_t close = file.bytes.rfind("</script", at);
  return open == std::string::npos || (close != std::string::npos && close > open);
}

// What a byte of a script stands in, as the line in front of it tells: '/' a comment, a quote a text, ' ' else.
char insideOf(const std::string& bytes, std::size_t begin, std::size_t at) {
  char inside = ' ';
  for (std::size_t i = begin; i < at; ++i) {
    const char c = bytes[i];
    if (inside != ' ') {
      if (c == '\\') ++i;
      if (c == inside) inside = ' ';
    } else if (c == '\'' || c == '"' || c == '`') {
      inside = c;
    } else if (c == '/' && (bytes[i + 1] == '/' || bytes[i + 1] == '*')) {
      const std::size_t end = bytes[i + 1] == '*' ? bytes.find("*/", i + 2) : std::string::npos;
      if (end >= at) return '/';
      i = end + 1;
    }
  }
  return inside;
}

Written kindOf(const File& file, std::size_t at, std::size_t length) {
  const std::string& bytes = file.bytes;
  const bool isMember = at > 0 && bytes[at - 1] == '.';
  const bool isCalled = at + length < bytes.size() && bytes[at + length] == '(';
  constexpr std::string_view kExecute = "Execute(";
  const bool isExecuted =
      at > kExecute.size() && bytes.compare(at - kExecute.size() - 1, kExecute.size(), kExecute) == 0;
  if (!isMember && !isCalled && !isExecuted) return Written::none;
  if (isInMarkup(file, at)) {
    const std::size_t comment = bytes.rfind("<!--", at);
    const bool isComment = comment != std::string::npos && bytes.find("-->", comment) > at;
    return isComment ? Written::none : Written::inText;
  }
  const char inside = insideOf(bytes, bytes.rfind('\n', at) + 1, isExecuted ? at - 1 : at);
  if (inside == '/') return Written::none;
  if (inside != ' ') return Written::inText;
  return isCalled || isExecuted ? Written::called : Written::passed;
}

// The byte at a column.
std::size_t byteOf(const std::string& line, int column) {
  std::size_t byte = 0;
  for (int left = column - 1; left > 0 && byte < line.size(); --left) {
    ++byte;
    while (byte < line.size() && (static_cast<unsigned char>(line[byte]) & 0xC0) == 0x80)
      ++byte;
  }
  return byte;
}

std::vector<Json> framesOf(const Json& params) {
  std::vector<Json> frames;
  const auto stack = params.find("stackTrace");
  if (stack == params.end() || !stack->is_object()) return frames;
  const auto list = stack->find("callFrames");
  if (list == stack->end() || !list->is_array()) return frames;
  for (const Json& frame : *list)
    if (frame.is_object() && frames.size() < kMaxFrames) frames.push_back(frame);
  return frames;
}

}  // namespace

void Places::add(const Json& params) {
  const std::string id = textOf(params, "scriptId");
  if (id.empty() || scripts_.size() >= kMaxScripts) return;
  scripts_[id] = {textOf(params, "embedderName"), numberOf(params, "startLine"), numberOf(params, "startColumn"),
                  numberOf(params, "executionContextId"), framesOf(params)};
}

const Script* Places::find(const std::string& id) const {
  const auto found = scripts_.find(id);
  return found == scripts_.end() ? nullptr : &found->second;
}

std::vector<Frame> Places::frames(const Json& callFrames, const std::string& method) const {
  std::vector<Frame> frames;
  append(callFrames, method, 0, frames);
  return frames;
}

void Places::append(const Json& callFrames, const std::string& method, int depth, std::vector<Frame>& frames) const {
  if (!callFrames.is_array() || depth > kMaxMade) return;
  for (const Json& given : callFrames) {
    if (frames.size() >= kMaxFrames) return;
    if (!given.is_object()) continue;
    const Script* script = find(textOf(given, "scriptId"));
    if (script == nullptr) continue;
    const File* file = fileOf(*script);
    Frame frame;
    frame.function = textOf(given, "functionName").substr(0, kMaxName);
    frame.line = numberOf(given, "lineNumber") + 1;
    std::string line;
    if (file != nullptr) line = lineOf(file->bytes, frame.line);
    const bool isMade =
        !script->made.empty() && (file == nullptr || (isMarkup(*file) && line.find(method) == std::string::npos));
    if (isMade) {
      const std::size_t before = frames.size();
      append(Json(script->made), method, depth + 1, frames);
      for (std::size_t i = before; i < frames.size(); ++i)
        frames[i].isMade = true;
      if (frames.size() > before) continue;
    }
    if (file == nullptr) continue;
    frame.path = file->path;
    const int units = numberOf(given, "columnNumber");
    const bool isHandler = isMarkup(*file) && frame.function.compare(0, 2, "on") == 0;
    if (!isHandler || !placeInTag(file->bytes, method, units, frame)) {
      frame.column = characterColumn(line, units, method);
      frame.isSpelled = spells(line, byteOf(line, frame.column), method);
      frame.isMade = isHandler && !frame.isSpelled && !isInTag(file->bytes, frame.line, units, frame.function);
    }
    frames.push_back(std::move(frame));
  }
}

Frame placeOf(const std::vector<Frame>& frames) {
  const auto isOwn = [](const Frame& frame) { return !isLibrary(frame.path); };
  const auto isBest = [&](const Frame& frame) { return frame.isSpelled && isOwn(frame); };
  auto found = std::find_if(frames.begin(), frames.end(), isBest);
  if (found == frames.end()) found = std::find_if(frames.begin(), frames.end(), isOwn);
  if (found != frames.end()) return *found;
  return frames.empty() ? Frame() : frames.front();
}

Frame writtenPlace(const std::vector<File>& files, const std::string& method, const Frame& user) {
  const File* best = nullptr;
  std::size_t bestAt = 0;
  Written bestKind = Written::none;
  for (const File& file : files) {
    if (method.empty() || !isText(file) || isLibrary(file.path)) continue;
    const std::size_t end = file.path == user.path ? beginOfLine(file.bytes, user.line) : std::string::npos;
    for (std::size_t at = file.bytes.find(method); at < end; at = file.bytes.find(method, at + 1)) {
      const Written kind = isWordAt(file.bytes, at, method) ? kindOf(file, at, method.size()) : Written::none;
      if (kind >= bestKind) continue;
      best = &file;
      bestAt = at;
      bestKind = kind;
    }
  }
  Frame frame;
  if (best == nullptr) return frame;
  const std::size_t begin = best->bytes.rfind('\n', bestAt) + 1;
  const auto front = best->bytes.begin();
  frame.path = best->path;
  frame.line = 1 + static_cast<int>(std::count(front, front + static_cast<std::ptrdiff_t>(begin), '\n'));
  frame.column = characterColumn(best->bytes.substr(begin, bestAt - begin), INT_MAX, {});
  frame.isSpelled = true;
  return frame;
}

bool isLibrary(const std::string& path) {
  std::string name = path;
  std::transform(name.begin(), name.end(), name.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (isPage(name)) return false;
  for (const char* folder :
       {"node_modules/", "vendor/", "vendors/", "third_party/", "thirdparty/", "bower_components/"}) {
    const std::size_t at = name.find(folder);
    if (at != std::string::npos && (at == 0 || name[at - 1] == '/')) return true;
  }
  name.erase(0, name.rfind('/') + 1);
  return std::any_of(std::begin(kLibraries), std::end(kLibraries),
                     [&](const char* library) { return name.rfind(library, 0) == 0; });
}

std::string lineOf(const std::string& bytes, int line) {
  const std::size_t begin = beginOfLine(bytes, line);
  if (begin == std::string::npos) return {};
  return bytes.substr(begin, std::min(bytes.find('\n', begin), bytes.size()) - begin);
}

int characterColumn(const std::string& line, int units, const std::string& expected) {
  std::size_t inText = 0;  // the byte, if the browser has read UTF-8
  for (int left = units; inText < line.size() && left > 0;) {
    const auto byte = static_cast<unsigned char>(line[inText]);
    const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
    left -= length == 4 ? 2 : 1;
    inText = std::min(inText + length, line.size());
  }
  // A page that says nothing is read byte by byte.
  const std::size_t inBytes = std::min(line.size(), static_cast<std::size_t>(std::max(units, 0)));
  const bool isBytes = !expected.empty() && line.compare(inText, expected.size(), expected) != 0 &&
                       line.compare(inBytes, expected.size(), expected) == 0;
  const std::size_t end = isBytes ? inBytes : inText;
  const auto isFirst = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return 1 + static_cast<int>(std::count_if(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(end), isFirst));
}

}  // namespace trial
