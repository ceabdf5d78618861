// Test: tests/APICheckEngine/Verdicts_test.cpp.

#include "APICheckEngine/MethodName.h"

#include <vector>

#include "APICheckEngine/Keys.h"

namespace FlashEngine_1_00::detail {
namespace {

// "tv.GetModel (1)"; not "GetModel(1)", which has no dot.
constexpr const char* kMethodCall = R"([\.]\s*[\w\d\_]+\s*\()";

constexpr std::size_t kHiddenComponents = 4;  // tmp, the package's number, and two more

}  // namespace

MethodNames::MethodNames() : call_(kMethodCall) {}

std::string MethodNames::operator()(const std::string& callText) const {
  const std::string_view match = call_.search(callText.c_str());
  std::string name = match.data() == nullptr ? callText : std::string(match);
  for (const char* removed : {".", " ", "("})
    name = without(name, removed);
  return name;
}

std::string findingLine(const std::string& path, int line, const std::string& method) {
  const std::vector<std::string> components = split(path, "/");
  std::string shown = "../";
  for (std::size_t i = kHiddenComponents; i < components.size(); ++i) {
    if (i > kHiddenComponents) shown += '/';
    shown += components[i];
  }
  return shown + "(" + std::to_string(line) + ") : UndocumentedAPI '" + method + "' used\n";
}

}  // namespace FlashEngine_1_00::detail
