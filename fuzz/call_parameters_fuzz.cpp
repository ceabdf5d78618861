// A symbol, a line feed and a call: its arguments, and the position of the symbol among them.

#include "APICheckEngine/Keys.h"
#include "Support.h"

using namespace FlashEngine_1_00;

namespace {

std::string cleaned(std::string text) {
  for (const char* removed : {" ", "\"", "'", "\n"})
    text = detail::without(text, removed);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static APIAnalysis engine;  // it keeps nothing of a call
  const auto [symbol, call] = fuzz::splitAt('\n', fuzz::viewOf(data, size));
  std::string name = "unchanged";
  const int position = engine.funcParameterParsing(call, symbol, name);
  const std::size_t parenthesis = call.find('(');
  fuzz::require(name == (parenthesis == std::string::npos ? "unchanged" : call.substr(0, parenthesis)),
                "the name stands before the first parenthesis");

  std::size_t from = std::min(parenthesis, call.size());
  for (int i = 1; i < position; ++i) {
    const std::string argument = engine.getParamterByPosition(call, i);
    from = call.find(argument, from);
    fuzz::require(from != std::string::npos, "arguments stand in the call one behind the other");
    fuzz::require(cleaned(argument) != cleaned(symbol), "a position is that of the first argument like the symbol");
    from += argument.size();
  }
  const std::string argument = engine.getParamterByPosition(call, position);
  fuzz::require(argument.empty() || cleaned(argument) == cleaned(symbol), "a position is that of the symbol");
  for (const int outside : {-1, 0, static_cast<int>(call.size()) + 1})
    fuzz::require(engine.getParamterByPosition(call, outside).empty(), "there is nothing outside");
  return 0;
}
