// Words: plain searches. Test: tests/flow/Analysis_test.cpp.

#include "flow/Words.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace flow {
namespace {

struct LibrarySign {
  const char* name;
  const char* sign;    // stands at its beginning
  const char* second;  // stands somewhere in it
};

constexpr int kMaxBanners = 32;  // that are looked for behind the first

// What the banners and the insides of libraries have.
constexpr LibrarySign kLibraries[] = {
    {"jQuery", "jQuery v", "fn.init"},
    {"jQuery", "jQuery JavaScript Library", "fn.init"},
    {"jQuery Migrate", "jQuery Migrate", "migrate"},
    {"jQuery UI", "jQuery UI", "widget"},
    {"Zepto", "Zepto", "zepto"},
    {"AngularJS", "AngularJS v", "$injector"},
    {"Bootstrap", "Bootstrap v", "dropdown"},
    {"video.js", "Video.js", "techOrder"},
    {"lodash", "lodash", "lodash"},
    {"Lodash", "Lodash", "lodash"},
    {"Underscore", "Underscore.js", "_.each"},
    {"Backbone", "Backbone.js", "Backbone"},
    {"Knockout", "Knockout JavaScript library", "observable"},
    {"Vue", "Vue.js v", "$mount"},
    {"React", "React v", "createElement"},
    {"React", "react.production", "createElement"},
    {"React DOM", "react-dom", "createElement"},
    {"Handlebars", "handlebars", "registerHelper"},
    {"Mustache", "mustache.js", "render"},
    {"RequireJS", "RequireJS", "requirejs"},
    {"Moment", "moment.js", "duration"},
    {"MooTools", "MooTools", "implement"},
    {"Prototype", "Prototype JavaScript framework", "Ajax"},
    {"Dojo", "Dojo", "dojo/_base"},
    {"three.js", "three.js", "WebGLRenderer"},
    {"three.js", "Three.js Authors", "WebGLRenderer"},
    {"TinyMCE", "TinyMCE", "tinymce"},
    {"TinyMCE", "Tiny Technologies", "tinymce"},
    {"D3", "d3js.org", "selectAll"},
    {"Modernizr", "Modernizr", "modernizr"},
    {"Hammer.js", "Hammer.JS", "Hammer"},
    {"GSAP", "GreenSock", "TweenLite"},
    {"core-js", "core-js", "Symbol"},
    {"RxJS", "ReactiveX/RxJS", "mergeMap"},
};

// Those that are shipped without a banner: what stands in no other script.
constexpr LibrarySign kPlainLibraries[] = {
    {"Preact", ".preact=", "__k"},
    {"Mithril", "window.m=", "onbeforeremove"},
};

constexpr std::size_t kMaxPlainLibrary = 60'000;  // bytes: a larger script may have one in it

bool isWordByte(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '$';
}

// Where `word` begins in the text, not before `from`. std::string_view stops at each byte that a word begins with: in
// megabytes of libraries, that takes far longer.
std::size_t find(std::string_view text, std::string_view word, std::size_t from = 0) {
  if (from >= text.size()) return std::string_view::npos;
  const void* found = memmem(text.data() + from, text.size() - from, word.data(), word.size());
  if (found == nullptr) return std::string_view::npos;
  return static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

// Whether a whole word of these stands where `fits` says.
template <typename Fits>
bool anyWord(std::string_view text, const std::vector<std::string>& words, Fits fits) {
  for (const std::string& word : words) {
    if (word.empty()) continue;
    for (std::size_t at = find(text, word); at != std::string_view::npos; at = find(text, word, at + 1)) {
      const std::size_t end = at + word.size();
      const bool isWhole = (at == 0 || !isWordByte(text[at - 1])) && (end >= text.size() || !isWordByte(text[end]));
      if (isWhole && fits(at, end)) return true;
    }
  }
  return false;
}

// Minified code is full of words that short: they say something only where they are looked up as texts.
constexpr std::size_t kShortId = 2;

// Whether what stands there is looked up as an id, or a global with a method of a plug-in.
bool looksUp(std::string_view text, std::size_t begin, std::size_t end) {
  const char before = begin == 0 ? ' ' : text[begin - 1];
  const char after = end < text.size() ? text[end] : ' ';
  if (after == '"' || after == '\'')
    return before == '#' || (begin > 7 && text.substr(begin - 7, 6).find("ById(") != std::string_view::npos);
  const char next = end + 1 < text.size() ? text[end + 1] : ' ';
  return end - begin > kShortId && before != '.' && after == '.' && next >= 'A' && next <= 'Z';
}

}  // namespace

bool namesPlugin(std::string_view text, const std::vector<std::string>& identifiers) {
  // What all of them begin with is searched once.
  if (identifiers.empty()) return false;
  std::string_view common = identifiers[0];
  for (const std::string& identifier : identifiers) {
    std::size_t same = 0;
    while (same < common.size() && same < identifier.size() && common[same] == identifier[same])
      ++same;
    common = common.substr(0, same);
  }
  if (common.size() >= 4) return find(text, common) != std::string_view::npos;
  return std::any_of(identifiers.begin(), identifiers.end(),
                     [&](const std::string& identifier) { return find(text, identifier) != std::string_view::npos; });
}

bool namesAny(std::string_view text, const std::vector<std::string>& ids) {
  return anyWord(text, ids, [&](std::size_t begin, std::size_t end) {
    return end - begin > kShortId || looksUp(text, begin, end);
  });
}

bool namesIds(std::string_view text, const std::vector<std::string>& ids) {
  return anyWord(text, ids, [&](std::size_t begin, std::size_t end) {
    if (end - begin <= kShortId) return looksUp(text, begin, end);
    const char before = begin == 0 ? ' ' : text[begin - 1];
    const char after = end < text.size() ? text[end] : ' ';
    const bool isText = (after == '"' || after == '\'' || after == '`') && (before == after || before == '#');
    return isText || (before != '.' && (after == '.' || after == '['));
  });
}

bool looksUpIds(std::string_view text, const std::vector<std::string>& ids) {
  return anyWord(text, ids, [&](std::size_t begin, std::size_t end) { return looksUp(text, begin, end); });
}

std::size_t findTag(std::string_view text, std::size_t from) {
  for (std::size_t at = text.find('<', from); at != std::string_view::npos; at = text.find('<', at + 1)) {
    const char next = at + 1 < text.size() ? static_cast<char>(text[at + 1] | 0x20) : ' ';
    if (next >= 'a' && next <= 'z') return at;
  }
  return std::string_view::npos;
}

bool isScriptPath(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  const std::size_t slash = path.rfind('/');
  if (dot == std::string_view::npos || (slash != std::string_view::npos && dot < slash)) return false;
  std::string extension(path.substr(dot + 1));
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension == "js" || extension == "mjs" || extension == "cjs" || extension == "jsx" || extension == "es6";
}

bool looksLikeModule(std::string_view text) {
  for (const std::string_view word : {std::string_view("import"), std::string_view("export")}) {
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
      std::size_t before = at;
      while (before > 0 && (text[before - 1] == ' ' || text[before - 1] == '\t'))
        --before;
      const bool isBegin = before == 0 || text[before - 1] == '\n' || text[before - 1] == ';' ||
                           text[before - 1] == '}' || text[before - 1] == '/';
      const std::size_t after = at + word.size();
      if (!isBegin || after >= text.size() || isWordByte(text[after])) continue;
      std::size_t next = after;
      while (next < text.size() && (text[next] == ' ' || text[next] == '\t'))
        ++next;
      if (next < text.size() && text[next] != '(' && text[next] != '.' && text[next] != ':' && text[next] != '=' &&
          text[next] != ')' && text[next] != ',' && text[next] != ';')
        return true;
    }
  }
  return false;
}

bool looksLikeCommonJs(std::string_view text) {
  const auto has = [&](std::string_view word) { return text.find(word) != std::string_view::npos; };
  return has("module.exports") || has("exports.") || has("exports[") || (has("require(") && !has("define("));
}

namespace {

// The library whose banner that is, or null.
const char* bannerOf(std::string_view banner, std::string_view text) {
  for (const LibrarySign& library : kLibraries)
    if (banner.find(library.sign) != std::string_view::npos && text.find(library.second) != std::string_view::npos)
      return library.name;
  return nullptr;
}

}  // namespace

std::string libraryOf(std::string_view text) {
  if (text.size() < 1500) return {};
  const std::string_view head = text.substr(0, 700);
  if (head.substr(0, 20).find("var Vue=") != std::string_view::npos) return "Vue";
  if (text.size() < kMaxPlainLibrary)
    for (const LibrarySign& library : kPlainLibraries)
      if (text.find(library.sign) != std::string_view::npos && text.find(library.second) != std::string_view::npos)
        return library.name;
  const std::size_t comment = head.find("/*");
  if (head.compare(0, 6, "//    ") == 0 || (comment != std::string_view::npos && comment <= 200))
    if (const char* name = bannerOf(head, text)) return name;
  // Of several that were joined, the first may have none.
  std::size_t at = text.find("/*!");
  for (int i = 0; i < kMaxBanners && at != std::string_view::npos; ++i, at = text.find("/*!", at + 1)) {
    const bool isBegin = at == 0 || text[at - 1] == '\n' || text[at - 1] == ';';
    const char* name = isBegin ? bannerOf(text.substr(at, 200), text) : nullptr;
    if (name != nullptr) return name;
  }
  return {};
}

void blankHtmlComments(std::string& text) {
  const auto blank = [&](std::size_t from) {
    for (std::size_t at = from; at < text.size() && text[at] != '\n' && text[at] != '\r'; ++at)
      text[at] = ' ';
  };
  for (std::size_t at = text.find("<!--"); at != std::string::npos; at = text.find("<!--", at + 4)) {
    // In a literal, it is a part of it: quotes before it in its line decide.
    const std::size_t begin = text.rfind('\n', at);
    const std::string_view before(text.data() + (begin == std::string::npos ? 0 : begin + 1),
                                  at - (begin == std::string::npos ? 0 : begin + 1));
    if (before.find_first_of("'\"`/") == std::string_view::npos) blank(at);
  }
  for (std::size_t at = text.find("-->"); at != std::string::npos; at = text.find("-->", at + 3)) {
    std::size_t before = at;
    while (before > 0 && (text[before - 1] == ' ' || text[before - 1] == '\t'))
      --before;
    if (before == 0 || text[before - 1] == '\n') blank(at);
  }
}

}  // namespace flow
