// The database and the ids of an application as declarations of TypeScript. Tests: tests/checker/Types_test.cpp, and
// with the compiler itself tests/groups/types.

#include "checker/commands/Declarations.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string_view>

#include "APICheckEngine/Tables.h"
#include "checker/commands/BrowserGlobals.h"

namespace {

constexpr const char* kNamespace = "TarvoPlugins";
constexpr const char* kExecute = "Execute";

// What no variable can be called.
constexpr std::string_view kReserved[] = {
    "arguments", "await",  "break",    "case",    "catch",      "class",     "const",  "continue",   "debugger",
    "default",   "delete", "do",       "else",    "enum",       "eval",      "export", "extends",    "false",
    "finally",   "for",    "function", "if",      "implements", "import",    "in",     "instanceof", "interface",
    "let",       "new",    "null",     "package", "private",    "protected", "public", "return",     "static",
    "super",     "switch", "this",     "throw",   "true",       "try",       "typeof", "undefined",  "globalThis",
    "var",       "void",   "while",    "with",    "yield"};

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isIdentifier(const std::string& name) {
  return !name.empty() && !isDigit(name.front()) &&
         std::all_of(name.begin(), name.end(), [](char c) { return isLetter(c) || isDigit(c) || c == '$'; });
}

// Whether "#id" is the selector of that id, without escapes.
bool isSelector(const std::string& id) {
  return !id.empty() && isLetter(id.front()) &&
         std::all_of(id.begin(), id.end(), [](char c) { return isLetter(c) || isDigit(c) || c == '-'; });
}

// A name of a line each, those that the browser declares itself.
bool isBrowserGlobal(const std::string& name) {
  return std::string_view(kGlobals).find('\n' + name + '\n') != std::string_view::npos;
}

bool canBeDeclared(const std::string& id) {
  return isIdentifier(id) && !isBrowserGlobal(id) &&
         std::find(std::begin(kReserved), std::end(kReserved), id) == std::end(kReserved);
}

std::string literal(const std::string& text) {
  return nlohmann::json(text).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

std::string unquoted(const std::string& name) {
  const std::size_t begin = name.find_first_not_of('\'');
  return begin == std::string::npos ? "" : name.substr(begin, name.find_last_not_of('\'') + 1 - begin);
}

std::string joined(const std::vector<std::string>& parts, const char* between) {
  std::string text;
  for (const std::string& part : parts)
    text += (text.empty() ? "" : between) + part;
  return text;
}

// The interfaces of all plug-ins.
class Interfaces {
 public:
  Interfaces(const DatabaseListing& database, const std::vector<PluginId>& ids) {
    for (const DatabaseGroup& group : database.groups) {
      std::vector<std::string>& methods = methodsOf(group.name);
      for (const DatabaseFunction& function : group.functions) {
        const std::string name = unquoted(function.name);
        if (!name.empty() && std::find(methods.begin(), methods.end(), name) == methods.end()) methods.push_back(name);
        if (function.isDeprecated) replacements_[{group.name, name}] = function.replacement;
      }
    }
    for (const PluginId& id : ids)
      (void)methodsOf(id.plugin);
    const auto extension = methods_.find(FlashEngine_1_00::kExtensionPlugin);
    if (extension == methods_.end()) return;
    std::vector<std::string>& names = extension->second;
    if (!names.empty() && std::find(names.begin(), names.end(), kExecute) == names.end()) names.emplace_back(kExecute);
  }

  // The type of a plug-in.
  std::string typeOf(const std::string& plugin) const { return std::string(kNamespace) + '.' + names_.at(plugin); }

  void write(std::ostream& out) const {
    out << "declare namespace " << kNamespace << " {\n";
    for (const std::string& plugin : order_)
      write(plugin, out);
    out << "}\n";
  }

 private:
  std::vector<std::string>& methodsOf(const std::string& plugin) {
    const auto [name, isNew] = names_.try_emplace(plugin);
    if (isNew) {
      name->second = newName(plugin);
      order_.push_back(plugin);
    }
    return methods_[plugin];
  }

  // "MORVANE-NAVERTIX-TUNER" as an identifier that no other plug-in has.
  std::string newName(const std::string& plugin) {
    std::string name = plugin;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !isLetter(c) && !isDigit(c); }, '_');
    if (!isIdentifier(name)) name.insert(0, 1, '_');
    while (!taken_.insert(name).second)
      name += '_';
    return name;
  }

  void write(const std::string& plugin, std::ostream& out) const {
    const std::vector<std::string>& methods = methods_.at(plugin);
    // Members of elements begin with a small letter or are constants in capitals. A method that may be called like one
    // takes its place.
    std::vector<std::string> hidden;
    for (const std::string& method : methods) {
      const bool isLikeMembers =
          std::none_of(method.begin(), method.end(), [](char c) { return c >= 'a' && c <= 'z'; });
      if (isLikeMembers || !(method.front() >= 'A' && method.front() <= 'Z')) hidden.push_back(literal(method));
    }
    out << "  interface " << names_.at(plugin) << " extends "
        << (hidden.empty() ? "HTMLObjectElement" : "Omit<HTMLObjectElement, " + joined(hidden, " | ") + ">") << " {\n";
    for (const std::string& method : methods)
      writeMethod(plugin, method, out);
    out << "  }\n";
  }

  // The extension plug-in is told by name what to do, and the names are documented among its methods.
  void writeMethod(const std::string& plugin, const std::string& method, std::ostream& out) const {
    std::vector<std::string> names;
    if (plugin == FlashEngine_1_00::kExtensionPlugin && method == kExecute) {
      for (const std::string& name : methods_.at(plugin))
        if (name != kExecute) names.push_back(literal(name));
    }
    const auto replacement = replacements_.find({plugin, method});
    if (replacement != replacements_.end()) {
      const bool isName = isIdentifier(replacement->second);  // nothing else may get into a comment
      out << "    /** @deprecated" << (isName ? " Call " + replacement->second + " instead." : "") << " */\n";
    }
    out << "    " << (isIdentifier(method) ? method : literal(method)) << '(';
    if (!names.empty()) out << "method: " << joined(names, " | ") << ", ";
    out << "...args: any[]): any;\n";
  }

  std::vector<std::string> order_;
  std::map<std::string, std::string> names_;
  std::map<std::string, std::vector<std::string>> methods_;
  std::map<std::pair<std::string, std::string>, std::string> replacements_;  // of deprecated methods; may be empty
  std::set<std::string> taken_{"HTMLObjectElement", "Omit"};                 // that the interfaces themselves name
};

struct Id {
  std::vector<std::string> types;  // one that is in two pages can be two plug-ins
  bool isGlobal = true;
};

}  // namespace

std::string declarations(const DatabaseListing& database, const std::vector<PluginId>& ids) {
  const Interfaces interfaces(database, ids);
  std::map<std::string, Id> byId;
  for (const PluginId& id : ids) {
    Id& of = byId[id.id];
    of.types.push_back(interfaces.typeOf(id.plugin));
    of.isGlobal = of.isGlobal && id.isGlobal;
  }
  std::ostringstream lookUps, selectors, variables;
  for (const auto& [id, of] : byId) {
    const std::string type = joined(of.types, " & ");
    lookUps << "  getElementById(elementId: " << literal(id) << "): " << type << ";\n";
    if (isSelector(id)) selectors << "  querySelector(selectors: " << literal('#' + id) << "): " << type << ";\n";
    if (of.isGlobal && canBeDeclared(id)) variables << "declare var " << id << ": " << type << ";\n";
  }
  std::ostringstream out;
  out << "// The documented methods of the platform's plug-ins, and the ids of this application. Made by tarvo-check "
         "types.\n\n";
  interfaces.write(out);
  if (!byId.empty()) {
    out << "\ninterface Document {\n" << lookUps.str() << "}\n\ninterface ParentNode {\n" << selectors.str() << "}\n";
    if (!variables.str().empty()) out << '\n' << variables.str();
  }
  return out.str();
}
