// Test: tests/trial/Places_test.cpp.

#include "trial/Places.h"

#include <algorithm>
#include <cctype>
#include <climits>

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

// A handler in a tag is told to be where the tag ends: looks for the call in the tag.
bool placeInTag(const std::string& bytes, const std::string& method, int units, Frame& frame) {
  constexpr std::size_t kMaxTag = 4000;
  std::size_t end = 0;
  for (int line = 1; line < frame.line && end != std::string::npos; ++line) {
    end = bytes.find('\n', end);
    if (end != std::string::npos) ++end;
  }
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
  return true;
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
                  framesOf(params)};
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
      if (frames.size() > before) continue;
    }
    if (file == nullptr) continue;
    frame.path = file->path;
    const int units = numberOf(given, "columnNumber");
    const bool isHandler = isPage(file->path) && frame.function.compare(0, 2, "on") == 0;
    if (!isHandler || !placeInTag(file->bytes, method, units, frame))
      frame.column = characterColumn(line, units, method);
    frames.push_back(std::move(frame));
  }
}

Frame placeOf(const std::vector<Frame>& frames) {
  for (const Frame& frame : frames)
    if (!isLibrary(frame.path)) return frame;
  return frames.empty() ? Frame() : frames.front();
}

Frame writtenPlace(const std::vector<File>& files, const std::string& method) {
  Frame frame;
  if (method.empty()) return frame;
  for (const File& file : files) {
    const std::string type = contentTypeOf(file.path);
    const bool isCode = type == "text/javascript" || isPage(file.path) || type == "application/octet-stream";
    if (!isCode || isLibrary(file.path)) continue;
    for (std::size_t at = file.bytes.find(method); at != std::string::npos; at = file.bytes.find(method, at + 1)) {
      const auto isWord = [&](std::size_t i) {
        return i < file.bytes.size() &&
               (std::isalnum(static_cast<unsigned char>(file.bytes[i])) != 0 || file.bytes[i] == '_');
      };
      if (at == 0 || file.bytes[at - 1] != '.' || isWord(at + method.size())) continue;
      const std::size_t begin = file.bytes.rfind('\n', at) + 1;
      const auto front = file.bytes.begin();
      frame.path = file.path;
      frame.line = 1 + static_cast<int>(std::count(front, front + static_cast<std::ptrdiff_t>(begin), '\n'));
      frame.column = characterColumn(file.bytes.substr(begin, at - begin), INT_MAX, {});
      return frame;
    }
  }
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
  std::size_t begin = 0;
  for (int i = 1; i < line; ++i) {
    begin = bytes.find('\n', begin);
    if (begin == std::string::npos) return {};
    ++begin;
  }
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
