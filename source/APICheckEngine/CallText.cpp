// Call texts: patterns assembled from their pieces, and the names of built-in functions. Read by the script and the
// Flash scanners. Test: tests/APICheckEngine/CallExtraction_test.cpp, tests/APICheckEngine/FlashCalls_test.cpp.

#include "APICheckEngine/CallText.h"

#include <array>
#include <iterator>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Tables.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00::detail {
namespace {

// What may stand before a variable; of a longer name that ends in it, only "_" may.
constexpr const char* kSeparator = R"([\+\-\_\*\/\%\(\{\[\;\:\,\?\s])";
// What stands behind the variable: `.SetVolume(x, 1)`, `.GetModel()`.
constexpr const char* kCallWithArguments = R"(\s*\.\s*[\w\_]+\s*\([\[\.\]\d"',\s\w\_\(\)/]*\))";
constexpr const char* kCallWithout = R"(\s*\.\s*[\w\_]+\s*\([\s]*\))";
// A look-up around its id, `("` and `").`, and what stands behind it: `GetModel(`.
constexpr const char* kOpening = R"([\(])";
constexpr const char* kQuotes = R"([\s"'])";
constexpr const char* kLookUpEnd = R"([\s"']*[\)]\s*\.)";
constexpr const char* kCallOpening = R"(\s*[\w\d\_]+\s*\()";
// `Execute( "Start"`; not `Execute (`.
constexpr const char* kExecuteCall = R"(Execute\(\s*["']*[\w\s\_]*["']*)";

// The names of SystemFunctionPool, and by their last byte how long they are.
struct BuiltInNames {
  BuiltInNames() : texts(std::begin(SystemFunctionPool), std::end(SystemFunctionPool)) {
    std::set<std::pair<unsigned char, std::size_t>> ends;
    for (const std::string_view name : texts)
      ends.emplace(static_cast<unsigned char>(name.back()), name.size());
    for (const auto& [last, size] : ends)
      sizes[last].push_back(size);
  }
  std::unordered_set<std::string_view> texts;
  std::array<std::vector<std::size_t>, 256> sizes;  // ascending
};

}  // namespace

std::string callOn(const std::string& variable) {
  return "(" + (kSeparator + variable + kCallWithArguments) + ")|(" + (kSeparator + variable + kCallWithout) + ")";
}

NamePattern callsOnVariables() {
  return {callOn, kSeparator, "", std::string("(") + kCallWithArguments + ")|(" + kCallWithout + ")"};
}

std::string lookupOf(const std::string& id) {
  return std::string(kOpening) + kQuotes + "*" + id + kLookUpEnd;
}

std::string callOnLookupOf(const std::string& id) {
  return lookupOf(id) + kCallOpening;
}

NamePattern callsOnLookUps() {
  return {callOnLookupOf, kOpening, kQuotes, std::string(kLookUpEnd) + kCallOpening};
}

// Instead of each name in the text, what stands before each parenthesis is looked up, in all the lengths that names
// with that last byte have: a name before a parenthesis is found in both ways.
bool holdsBuiltIn(const std::string& callText) {
  static const BuiltInNames names;
  const std::string_view text = callText;
  for (std::size_t open = text.find('(', 1); open != std::string_view::npos; open = text.find('(', open + 1)) {
    for (const std::size_t size : names.sizes[static_cast<unsigned char>(text[open - 1])]) {
      if (size > open) break;
      if (names.texts.count(text.substr(open - size, size)) > 0) return true;
    }
  }
  return false;
}

std::string executedMethod(const std::string& callText) {
  std::string name(Pattern(kExecuteCall).search(callText.c_str()));
  // KEPT: single quotes stay in the name. Databases list such names with them. (test SingleQuotesStayInExtensionNames)
  for (const char* removed : {"\n", "Execute", " ", "(", "\""})
    name = without(name, removed);
  return name;
}

}  // namespace FlashEngine_1_00::detail
