#include "bench/ScriptText.h"

namespace bench {
namespace {

constexpr const char* kNouns[] = {"item",  "node",   "list",   "value", "index",  "state",  "option", "event",
                                  "frame", "handle", "buffer", "range", "target", "offset", "result", "channel"};
constexpr const char* kVerbs[] = {"get",   "set",    "update",  "render", "create", "remove", "parse",
                                  "build", "handle", "resolve", "attach", "format", "merge",  "reset"};
constexpr const char* kStrings[] = {
    "click",  "px",           "ready",     "data-index", "Cannot read the list",       "auto",
    "hidden", "#menu .entry", "text/html", "absolute",   "The value is out of range: "};
constexpr const char* kComments[] = {
    "// Keep the old one until the new one is there.\n", "// see the note above\n",
    "/* The order matters here:\n * what was added last is drawn first.\n */\n",
    "/**\n * Returns the entry for a name, or null.\n * @param {string} name\n * @return {Object}\n */\n"};

struct PlugIn {
  const char* id;
  const char* classId;
  const char* method;  // documented
};
constexpr PlugIn kPlugIns[] = {{"tvTuner", "MORVANE-NAVERTIX-TUNER", "GetChannel"},
                               {"tvAudio", "MORVANE-NAVERTIX-AUDIO", "GetVolume"},
                               {"tvPlayer", "MORVANE-NAVERTIX-PLAYER", "GetDuration"},
                               {"tvNetwork", "MORVANE-NAVERTIX-NETWORK", "GetAddress"},
                               {"tvDisplay", "MORVANE-NAVERTIX-DISPLAY", "GetBrightness"}};

class Script {
 public:
  std::string text(std::size_t bytes) {
    while (text_.size() < bytes)
      function();
    return std::move(text_);
  }

 private:
  std::string noun() { return picks_.oneOf(kNouns); }
  std::string name() {
    std::string name = noun();
    name += static_cast<char>('A' + picks_.below(26));
    return name + noun();
  }
  std::string method() {
    return picks_.oneOf(kVerbs) + std::string(1, static_cast<char>('A' + picks_.below(26))) + noun();
  }
  std::string string() { return "\"" + std::string(picks_.oneOf(kStrings)) + "\""; }
  std::string number() { return std::to_string(picks_.below(1000)); }

  std::string expression(int depth) {
    switch (picks_.below(depth > 0 ? 10 : 5)) {
      case 0:
        return number();
      case 1:
        return string();
      case 2:
        return "this." + noun();
      case 3:
        return name() + "[" + noun() + "]";
      case 4:
        return noun();
      case 5:
        return expression(depth - 1) + " + " + expression(depth - 1);
      case 6:
        return method() + "(" + expression(depth - 1) + ", " + expression(depth - 1) + ")";
      case 7:
        return noun() + "." + method() + "(" + expression(depth - 1) + ")";
      case 8:
        return "(" + expression(depth - 1) + " < " + expression(depth - 1) + " ? " + noun() + " : null)";
      default:
        return "{ " + noun() + ": " + expression(depth - 1) + ", " + noun() + ": " + expression(depth - 1) + " }";
    }
  }

  void statement(int indent) {
    const std::string blanks(static_cast<std::size_t>(indent) * 4, ' ');
    text_ += blanks;
    const std::size_t kind = picks_.below(60);
    if (kind < 20) {
      text_ += "var " + name() + " = " + expression(2) + ";\n";
    } else if (kind < 34) {
      text_ += noun() + "." + method() + "(" + expression(2) + ");\n";
    } else if (kind < 42 && indent < 4) {
      text_ += "if (" + expression(1) + " === " + expression(0) + " && !" + noun() + ") {\n";
      block(indent, "}\n");
    } else if (kind < 46 && indent < 4) {
      text_ += "for (var i = 0, l = " + noun() + ".length; i < l; i++) {\n";
      block(indent, "}\n");
    } else if (kind < 49 && indent < 4) {
      text_ += noun() + ".on(" + string() + ", function (" + noun() + ") {\n";
      block(indent, "});\n");
    } else if (kind < 52) {
      text_ += picks_.oneOf(kComments);
    } else if (kind == 52) {
      text_ += "var " + noun() + " = document.getElementById(\"" + noun() + "\");\n";
    } else if (kind == 53) {
      text_ += noun() + ".appendChild(document.createElement(\"div\"));\n";
    } else if (kind == 54) {
      text_ += "$(\"#" + noun() + "\").html(\"<b>\" + " + noun() + " + \"</b>\");\n";
    } else {
      text_ += "this." + noun() + "." + noun() + " = " + expression(2) + ";\n";
    }
  }

  void block(int indent, const char* end) {
    for (std::size_t n = 1 + picks_.below(3); n > 0; --n)
      statement(indent + 1);
    text_.append(static_cast<std::size_t>(indent) * 4, ' ').append(end);
  }

  void function() {
    text_ += picks_.oneOf(kComments);
    const std::string owner = noun();
    switch (picks_.below(3)) {
      case 0:
        text_ += "function " + method() + "(" + noun() + ", " + noun() + ") {\n";
        break;
      case 1:
        text_ += owner + ".prototype." + method() + " = function (" + noun() + ") {\n";
        break;
      default:
        text_ += owner + "." + method() + " = function () {\n";
        break;
    }
    if (picks_.below(50) == 0) plugIn();
    for (std::size_t n = 2 + picks_.below(8); n > 0; --n)
      statement(1);
    text_ += "    return " + expression(1) + ";\n}\n\n";
  }

  void plugIn() {
    const PlugIn& used = kPlugIns[picks_.below(std::size(kPlugIns))];
    const std::string variable = std::string(used.id) + "Object";
    text_ += "    var " + variable + " = document.getElementById(\"" + used.id + "\");\n";
    text_ += "    document.title = " + variable + "." + used.method + "();\n";
  }

  Picks picks_{1};
  std::string text_;
};

}  // namespace

std::string ordinaryScript(std::size_t bytes) {
  return Script().text(bytes);
}

std::string plugInPage(int elements) {
  std::string page =
      "<!DOCTYPE html>\n<html><head><title>Television</title>\n<script src=\"main.js\"></script></head><body>\n";
  for (int i = 0; i < elements; ++i) {
    const PlugIn& plugIn = kPlugIns[static_cast<std::size_t>(i) % std::size(kPlugIns)];
    const std::string number = i < static_cast<int>(std::size(kPlugIns)) ? "" : std::to_string(i);
    page += "<object id=\"" + (plugIn.id + number) + "\" classid=\"clsid:" + plugIn.classId + "\"></object>\n";
  }
  return page + "</body></html>\n";
}

}  // namespace bench
