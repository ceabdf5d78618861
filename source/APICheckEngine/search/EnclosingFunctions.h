#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "APICheckEngine/Records.h"

namespace FlashEngine_1_00::detail {

struct Knowledge;

// Which function stands last in a list of functions of one source, of those around a place.
class LastFunctionAround {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  LastFunctionAround(const std::vector<const FlashFunctionInfo*>& functions, const std::string& source);

  // Its position in the list; kNone if there is none. A body holds its first byte, and not the one behind its last.
  std::size_t at(std::size_t place) const;

 private:
  struct Stretch {
    std::size_t begin;
    std::size_t function;
  };
  std::vector<Stretch> stretches_;  // of the source, each up to the next one, with the answer for all of its places
};

// Finds the function around an access: of those in the same file whose body holds the access expression, the last one
// of the list.
class EnclosingFunctions {
 public:
  // Both outlive it.
  EnclosingFunctions(const std::vector<FlashFunctionInfo*>& functions, Knowledge& known)
      : functions_(functions), engine_(known) {}

  // Its body; a null view if there is none. With the first question, the list is gone through.
  std::string_view body(std::string_view path, std::string_view access);

 private:
  // The functions of one source; a path can have several sources, in a second run on one engine.
  struct OfSource {
    const std::string* source;
    std::vector<const FlashFunctionInfo*> functions;
    std::optional<LastFunctionAround> last;  // once it is asked for
  };

  void sortBySource();
  std::string_view lastHolding(OfSource& of, std::string_view access);

  const std::vector<FlashFunctionInfo*>& functions_;
  Knowledge& engine_;
  std::unordered_map<std::string_view, std::vector<OfSource>> byPath_;
};

}  // namespace FlashEngine_1_00::detail
