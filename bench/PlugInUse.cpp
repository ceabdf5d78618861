// Names are ones that no well-known library uses: a library's call on a variable of the same name would be a finding,
// behind which the engine has nothing more to do.

#include "bench/PlugInUse.h"

#include <string_view>

#include "bench/ScriptText.h"

namespace bench {
namespace {

constexpr std::size_t kCallsInScript = 40;
constexpr std::size_t kCallsInPage = 10;
constexpr std::size_t kScriptsInPage = 5;
constexpr std::string_view kEach = "{each}";

struct PlugIn {
  const char* name;
  const char* classId;
  const char* methods[4];  // documented
};
constexpr PlugIn kUsed[] = {
    {"Tuner", "TUNER", {"GetVersion", "GetChannel", "SetChannel", "GetSignalLevel"}},
    {"Audio", "AUDIO", {"GetVolume", "SetVolume", "GetMute", "SetMute"}},
    {"Player", "PLAYER", {"Play", "Stop", "Pause", "GetDuration"}},
    {"Network", "NETWORK", {"GetAddress", "GetHostName", "GetGateway", "GetConnectionType"}},
    {"Display", "DISPLAY", {"GetBrightness", "SetBrightness", "GetContrast", "SetContrast"}},
    {"Extension",
     "KOB",
     {"Execute(\"Start\")", "Execute(\"Stop\")", "Execute(\"GetState\")", "Execute(\"GetVersion\")"}},
};

// The ways in which a script comes to an object: {id} is the element's, {name} a name for this object in this piece,
// {n} the piece's number, {call} a call of a method. A line that begins with {each} stands there as often as there are
// calls.
constexpr const char* kPieces[] = {
    "function show{n}() {\n    var {name} = document.getElementById(\"{id}\");\n{each}    document.title = "
    "{name}.{call};\n}\n",
    "function read{n}() {\n    var {name} = document.getElementById('{id}'), old = 0;\n    if (!{name}) { return null; "
    "}\n"
    "{each}    old += Number({name}.{call});\n    return old;\n}\n",
    "function start{n}(key) {\n    {name}Bound = $('{id}');\n    switch (key) {\n{each}    case 29{n}: "
    "{name}Bound.{call}; "
    "break;\n    }\n}\n",
    "var {name}Held = { start: function () {\n    this.held{n} = document.getElementById('{id}');\n{each}    "
    "this.held{n}.{call};\n} };\n",
    "function embedded{n}() {\n    var {name}Embed = document.embeds[{embed}];\n{each}    {name}Embed.{call};\n}\n",
    "function direct{n}() {\n{each}    document.getElementById(\"{id}\").{call};\n}\n",
    "function {name}Helper() {\n    return document.getElementById('{id}');\n}\nfunction helped{n}() {\n"
    "    var {name}Helped = {name}Helper();\n{each}    {name}Helped.{call};\n}\n",
    "function init{n}({name}Id) {\n    var {name}Passed = document.getElementById({name}Id);\n{each}    "
    "{name}Passed.{call};\n}\n"
    "init{n}('{id}');\n",
    "App.prototype.update{n} = function (event) {\n    var first{n} = {name}Last = document.getElementById(\"{id}\");\n"
    "    try {\n{each}        {name}Last.{call};\n    } catch (error) {\n        this.log(error);\n    }\n};\n",
};
constexpr const char* kHandlers[] = {
    "<a href=\"#\" onclick=\"document.getElementById('{id}').{call}; return false\">Item {n}</a>\n",
    "<button onclick=\"var {name}Here = document.getElementById('{id}'); {name}Here.{call}\">Key {n}</button>\n",
};
constexpr const char* kAround[] = {
    "// What the list shows next, see the note above.\n", "/* Old firmware needs a moment here. */\n",
    "function format{n}(value, unit) {\n    if (value === undefined || value === null) { return '-'; }\n"
    "    return String(value).replace(/\\s+/g, ' ') + ' ' + (unit || '');\n}\n",
    "List.prototype.move{n} = function (step) {\n    this.index = (this.index + step + this.items.length) % "
    "this.items.length;\n    this.render(this.items[this.index], { focus: true });\n    return this;\n};\n",
    "$(\".menu li\").each(function (index, item) {\n    item.className = index === selected ? \"on\" : \"\";\n});\n"};

std::string replaced(std::string text, const std::string& what, const std::string& with) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
    text.replace(at, what.size(), with);
  return text;
}

class Use {
 public:
  explicit Use(std::size_t calls) : left_(calls) {}

  std::vector<std::pair<std::string, std::string>> files() {
    while (left_ > 0) {
      std::vector<std::string> names;
      while (names.size() < kScriptsInPage && left_ > 0) {
        names.push_back("script" + std::to_string(files_.size()) + ".js");
        files_.emplace_back("js/" + names.back(), script(kCallsInScript));
      }
      files_.emplace_back("page" + std::to_string(files_.size()) + ".html", page(names));
    }
    return std::move(files_);
  }

 private:
  std::string call(const PlugIn& used) {
    left_ -= left_ > 0 ? 1 : 0;
    const std::string method = used.methods[picks_.below(std::size(used.methods))];
    return method.back() == ')' ? method : method + (method.rfind("Set", 0) == 0 ? "(step + 1)" : "()");
  }

  std::string piece(const char* form, std::size_t calls) {
    const std::size_t which = picks_.below(std::size(kUsed));
    const PlugIn& used = kUsed[which];
    std::string text = form;
    const std::size_t each = text.find(kEach);
    if (each != std::string::npos) {
      const std::size_t end = text.find('\n', each) + 1;
      const std::string line = text.substr(each + kEach.size(), end - each - kEach.size());
      std::string lines;
      for (std::size_t i = 0; i < calls; ++i)
        lines += replaced(line, "{call}", call(used));
      text.replace(each, end - each, lines);
    } else if (text.find("{call}") != std::string::npos) {
      text = replaced(text, "{call}", call(used));
    }
    const std::string number = std::to_string(++pieces_);
    text = replaced(text, "{name}", std::string("app") + used.name + number);
    text = replaced(text, "{embed}", std::to_string(which));
    text = replaced(text, "{id}", std::string("app") + used.name);
    return replaced(text, "{n}", number);
  }

  std::string script(std::size_t calls) {
    std::string text = "\"use strict\";\n";
    for (std::size_t made = 0; made < calls && left_ > 0;) {
      const std::size_t several = 1 + picks_.below(6);
      text += piece(picks_.oneOf(kPieces), several);
      made += several;
      for (std::size_t i = picks_.below(4); i > 0; --i)
        text += piece(picks_.oneOf(kAround), 0);
    }
    return text;
  }

  std::string page(const std::vector<std::string>& scripts) {
    std::string text = "<!DOCTYPE html>\n<html><head><title>Television</title>\n";
    for (const std::string& name : scripts)
      text += "<script src=\"js/" + name + "\"></script>\n";
    text += "</head><body>\n";
    for (const PlugIn& used : kUsed) {
      text += std::string("<object id=\"app") + used.name + "\" classid=\"clsid:MORVANE-NAVERTIX-" + used.classId +
              "\"></object>\n";
    }
    for (std::size_t i = 0; i < kCallsInPage / 2; ++i)
      text += piece(picks_.oneOf(kHandlers), 1);
    return text + "<script>\n" + script(kCallsInPage / 2) + "</script>\n</body></html>\n";
  }

  std::size_t left_;
  std::size_t pieces_ = 0;
  Picks picks_{3};
  std::vector<std::pair<std::string, std::string>> files_;
};

}  // namespace

std::vector<std::pair<std::string, std::string>> plugInUse(std::size_t calls) {
  return Use(calls).files();
}

}  // namespace bench
