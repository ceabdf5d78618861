#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Patterns: regular expressions of scripts, with a bound on the steps of a match. The language's own library has none,
// and a script may hold any expression.

namespace flow {

struct PatternMatch {
  static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

  // Begin and end of the whole, then of each group, or kNowhere.
  std::vector<std::size_t> places;

  std::size_t begin() const { return places[0]; }
  std::size_t end() const { return places[1]; }
  std::size_t count() const { return places.size() / 2; }
  bool has(std::size_t group) const { return places[2 * group] != kNowhere && places[2 * group + 1] != kNowhere; }
  std::string textOf(std::size_t group, const std::string& text) const {
    return has(group) ? text.substr(places[2 * group], places[2 * group + 1] - places[2 * group]) : std::string();
  }
};

class Pattern {
 public:
  // From what stands between the slashes, and behind them. Nothing where it is broken, or has what is not known here:
  // looking behind, properties of characters.
  static std::optional<Pattern> of(std::string_view source, std::string_view flags);

  // The first match that begins at `from` or later. Nothing where there is none, or where steps run out.
  std::optional<PatternMatch> find(const std::string& text, std::size_t from = 0) const;

  bool isGlobal() const { return isGlobal_; }
  const std::vector<std::string>& groupNames() const { return names_; }  // empty where a group has none

  enum class Do : std::uint8_t {
    one,
    save,
    split,
    jump,
    begin,
    end,
    word,
    noWord,
    ahead,
    notAhead,
    again,
    mark,
    moved,
    done
  };

  struct Step {
    Do what = Do::done;
    std::uint32_t first = 0;   // set, group, or where to go first
    std::uint32_t second = 0;  // where to go else
  };

  using Set = std::bitset<256>;

 private:
  friend class PatternReader;

  bool run(const std::string& text, std::size_t at, std::uint32_t from, std::vector<std::size_t>& places,
           std::size_t& steps) const;
  static bool isWordEdge(const std::string& text, std::size_t at);
  static std::size_t sizeAgain(const std::string& text, std::size_t at, const std::vector<std::size_t>& places,
                               std::size_t group);
  bool holds(const Step& step, const std::string& text, std::size_t at) const;

  std::vector<Step> steps_;
  std::vector<Set> sets_;
  std::vector<std::string> names_;
  std::size_t groups_ = 1;
  std::size_t loops_ = 0;
  bool isGlobal_ = false;
  bool isManyLines_ = false;
};

}  // namespace flow
