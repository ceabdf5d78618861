#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "APICheckEngine/Keys.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00::detail {

// The symbol in parentheses, quoted or not, as a pattern: ("tv"), ( tv ); not (tv2).
std::string parenthesised(const std::string& symbol);

// Finds the symbol that an access names: of those that stand in parentheses in it, the first one of a list.
class NamedSymbol {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  explicit NamedSymbol(const std::vector<Key>& symbols);

  // Its position; kNone if there is none.
  std::size_t in(const std::string& access);

 private:
  struct Symbol {
    std::size_t position;
    std::string text;
    std::optional<Pattern> pattern;  // once it is asked for
  };
  using Symbols = std::vector<Symbol>;  // by their positions, ascending

  static std::size_t firstIn(Symbols& symbols, const std::string& access, std::size_t end);

  std::unordered_map<std::string, std::size_t> words_;    // with the first position of each
  std::unordered_map<std::string, Symbols> quotedWords_;  // by the word between the quotes
  Symbols others_;
};

}  // namespace FlashEngine_1_00::detail
