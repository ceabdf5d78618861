// Call parameters: the arguments of one call or function header, without knowledge of string literals.
//
// Pure functions of their arguments. Test: tests/APICheckEngine/CallParameters_test.cpp.

#include "APICheckEngine/CallParameters.h"

#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Keys.h"

namespace FlashEngine_1_00 {
namespace {

// The arguments of `text` as they stand, blanks and quotes included; none if it has no parenthesis.
//
// KEPT: the byte right after a parenthesis is only looked at as a comma, so that a parenthesis there is not counted:
// "f(g(x))" has the argument "g(x". Aliases that hosts have on record depend on it. (test ParenthesisAfterParenthesis)
std::vector<std::string> splitArguments(const std::string& text) {
  std::vector<std::string> arguments;
  std::size_t start = text.find('(');
  if (start == std::string::npos) return arguments;
  int opened = 0;
  int closed = 0;
  std::size_t lastClose = start;
  for (std::size_t i = start + 1; i < text.size(); ++i) {
    if (text[i] == '(') {
      ++opened;
      ++i;
    } else if (text[i] == ')') {
      ++closed;
      lastClose = i;
      ++i;
    }
    if (opened == closed && i < text.size() && text[i] == ',') {
      arguments.push_back(text.substr(start + 1, i - start - 1));
      opened = closed = 0;
      start = i;
    }
  }
  if (closed == 1) arguments.push_back(text.substr(start + 1, lastClose - start - 1));
  return arguments;
}

std::string cleaned(std::string argument) {
  for (const char* removed : {" ", "\"", "'", "\n"})
    argument = detail::without(argument, removed);
  return argument;
}

}  // namespace

detail::PassedArgument detail::passedArgument(const std::string& callText, const std::string& symbol) {
  const std::size_t parenthesis = callText.find('(');
  PassedArgument passed{callText.substr(0, parenthesis == std::string::npos ? 0 : parenthesis), 1};
  const std::string wanted = cleaned(symbol);
  for (const std::string& argument : splitArguments(callText)) {
    if (cleaned(argument) == wanted) break;
    ++passed.position;
  }
  return passed;
}

std::string detail::argumentAt(const std::string& callText, int position) {
  const std::vector<std::string> arguments = splitArguments(callText);
  if (position < 1 || static_cast<std::size_t>(position) > arguments.size()) return std::string();
  return arguments[static_cast<std::size_t>(position) - 1];
}

int APIAnalysis::funcParameterParsing(std::string callText, std::string symbol, std::string& functionName) {
  detail::PassedArgument passed = detail::passedArgument(callText, symbol);
  if (callText.find('(') != std::string::npos) functionName = std::move(passed.function);
  return passed.position;
}

std::string APIAnalysis::getParamterByPosition(std::string callText, int position) {
  return detail::argumentAt(callText, position);
}

}  // namespace FlashEngine_1_00
