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
  EnclosingFunctions(const std::vector<FlashFunctionInfo*>& functions, Knowledge& known);

  // Its body; a null view if there is none.
  std::string_view body(const std::string& path, const std::string& access);

 private:
  // The functions of one source; a path can have several sources, in a second run on one engine.
  struct OfSource {
    const std::string* source;
    std::vector<const FlashFunctionInfo*> functions;
    std::optional<LastFunctionAround> last;  // once it is asked for
  };

  std::string_view find(const std::string& path, const std::string& access);
  std::string_view lastHolding(OfSource& of, const std::string& access);

  Knowledge& engine_;
  std::unordered_map<std::string_view, std::vector<OfSource>> byPath_;
  std::unordered_map<std::string, std::unordered_map<std::string, std::string_view>> known_;  // by path and access
};

}  // namespace FlashEngine_1_00::detail
