// Patterns: reads an expression into steps, and follows them with a stack of what else could be tried.
// Test: tests/flow/Patterns_test.cpp.

#include "flow/Patterns.h"

#include <algorithm>
#include <cstdlib>

namespace flow {
namespace {

constexpr std::size_t kMaxSteps = 50'000;   // of one search
constexpr std::size_t kMaxProgram = 2'000;  // steps that an expression becomes
constexpr std::size_t kMaxNesting = 40;
constexpr std::uint32_t kNoEnd = 0xFFFFFFFF;

bool isWordByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

Pattern::Set bytesOf(std::string_view bytes) {
  Pattern::Set set;
  for (const char c : bytes)
    set.set(static_cast<unsigned char>(c));
  return set;
}

Pattern::Set classOf(char letter) {
  Pattern::Set set;
  const char lower = static_cast<char>(letter | 0x20);
  for (int c = 0; c < 256; ++c) {
    const char byte = static_cast<char>(c);
    const bool isIn = lower == 'd'   ? isDigit(byte)
                      : lower == 'w' ? isWordByte(byte)
                                     : byte == ' ' || (byte >= '\t' && byte <= '\r');
    if (isIn) set.set(static_cast<std::size_t>(c));
  }
  return letter == lower ? set : ~set;
}

}  // namespace

class PatternReader {
 public:
  PatternReader(std::string_view source, std::string_view flags, Pattern& made)
      : source_(source),
        isCaseless_(flags.find('i') != std::string_view::npos),
        isDotAll_(flags.find('s') != std::string_view::npos),
        made_(made) {}

  bool read() {
    made_.names_.emplace_back();
    add({Pattern::Do::save, 0, 0});
    if (!alternatives() || at_ != source_.size()) return false;
    add({Pattern::Do::save, 1, 0});
    add({Pattern::Do::done, 0, 0});
    return made_.steps_.size() <= kMaxProgram;
  }

 private:
  using Do = Pattern::Do;

  std::uint32_t add(Pattern::Step step) {
    made_.steps_.push_back(step);
    return here() - 1;
  }
  std::uint32_t here() const { return static_cast<std::uint32_t>(made_.steps_.size()); }
  bool isAt(char c) const { return at_ < source_.size() && source_[at_] == c; }
  bool take(std::string_view text) {
    if (source_.compare(at_, text.size(), text) != 0) return false;
    at_ += text.size();
    return true;
  }

  // Puts a step before those from `begin` on, which move up by one.
  void insert(std::uint32_t begin, Pattern::Step step) {
    auto& steps = made_.steps_;
    for (std::size_t i = begin; i < steps.size(); ++i) {
      const bool doesGo = steps[i].what == Do::split || steps[i].what == Do::jump || steps[i].what == Do::ahead ||
                          steps[i].what == Do::notAhead;
      if (doesGo && steps[i].first >= begin) ++steps[i].first;
      if (doesGo && steps[i].second >= begin) ++steps[i].second;
    }
    steps.insert(steps.begin() + begin, step);
  }

  bool alternatives() {
    if (++nesting_ > kMaxNesting) return false;
    const std::uint32_t begin = here();
    std::vector<std::uint32_t> jumps;
    std::uint32_t from = begin;
    for (;;) {
      while (at_ < source_.size() && !isAt('|') && !isAt(')'))
        if (!term() || made_.steps_.size() > kMaxProgram) return false;
      if (!isAt('|')) break;
      ++at_;
      insert(from, {Do::split, from + 1, 0});
      jumps.push_back(add({Do::jump, 0, 0}));
      made_.steps_[from].second = here();
      from = here();
    }
    for (const std::uint32_t jump : jumps)
      made_.steps_[jump].first = here();
    --nesting_;
    return true;
  }

  bool term() {
    const std::uint32_t begin = here();
    return atom() && repeat(begin);
  }

  bool atom() {
    const char c = source_[at_++];
    switch (c) {
      case '^':
        add({Do::begin, 0, 0});
        return true;
      case '$':
        add({Do::end, 0, 0});
        return true;
      case '.':
        one(isDotAll_ ? ~Pattern::Set() : ~bytesOf("\n\r"));
        return true;
      case '(':
        return group();
      case '[':
        return set();
      case '\\':
        return escape();
      case '*':
      case '+':
      case '?':
        return false;
      default:
        one(bytesOf(std::string_view(&c, 1)));
        return true;
    }
  }

  void one(Pattern::Set set) {
    if (isCaseless_)
      for (std::size_t c = 'a'; c <= 'z'; ++c) {
        const bool isIn = set[c] || set[c - 32];
        set[c] = set[c - 32] = isIn;
      }
    made_.sets_.push_back(set);
    add({Do::one, static_cast<std::uint32_t>(made_.sets_.size() - 1), 0});
  }

  bool group() {
    const bool isAhead = take("?=");
    const bool isNotAhead = !isAhead && take("?!");
    if (isAhead || isNotAhead) {
      const std::uint32_t look = add({isAhead ? Do::ahead : Do::notAhead, 0, 0});
      if (!alternatives() || !take(")")) return false;
      add({Do::done, 0, 0});
      made_.steps_[look].first = here();
      return true;
    }
    if (take("?:")) return alternatives() && take(")");
    std::string name;
    if (take("?<")) {
      const std::size_t end = source_.find('>', at_);
      if (isAt('=') || isAt('!') || end == std::string_view::npos) return false;
      name = source_.substr(at_, end - at_);
      at_ = end + 1;
    } else if (isAt('?')) {
      return false;
    }
    const auto number = static_cast<std::uint32_t>(made_.groups_++);
    made_.names_.push_back(name);
    add({Do::save, 2 * number, 0});
    if (!alternatives() || !take(")")) return false;
    add({Do::save, 2 * number + 1, 0});
    return true;
  }

  // A character that a backslash and letters stand for; nothing for classes.
  std::optional<char> character() {
    const char c = source_[at_++];
    switch (c) {
      case 'n':
        return '\n';
      case 'r':
        return '\r';
      case 't':
        return '\t';
      case 'f':
        return '\f';
      case 'v':
        return '\v';
      case '0':
        return '\0';
      case 'x':
        return code(2);
      case 'u':
        return code(4);
      default:
        return c;
    }
  }

  std::optional<char> code(std::size_t digits) {
    const std::string text(source_.substr(at_, digits));
    char* end = nullptr;
    const unsigned long value = std::strtoul(text.c_str(), &end, 16);
    if (text.size() != digits || *end != 0 || value > 127) return std::nullopt;
    at_ += digits;
    return static_cast<char>(value);
  }

  bool escape() {
    if (at_ >= source_.size()) return false;
    const char c = source_[at_];
    if (c == 'b' || c == 'B') {
      ++at_;
      add({c == 'b' ? Do::word : Do::noWord, 0, 0});
      return true;
    }
    if (std::string_view("dDwWsS").find(c) != std::string_view::npos) {
      ++at_;
      one(classOf(c));
      return true;
    }
    if (c >= '1' && c <= '9') {
      ++at_;
      add({Do::again, static_cast<std::uint32_t>(c - '0'), 0});
      return !(at_ < source_.size() && isDigit(source_[at_]));
    }
    if (c == 'p' || c == 'P' || c == 'k' || c == 'c') return false;
    const std::optional<char> byte = character();
    if (byte) one(bytesOf(std::string_view(&*byte, 1)));
    return byte.has_value();
  }

  // One character of a set, or a class, which `into` takes.
  bool setPart(Pattern::Set& into, std::optional<char>& single) {
    single.reset();
    if (!isAt('\\')) {
      single = source_[at_++];
      return true;
    }
    if (++at_ >= source_.size()) return false;
    const char c = source_[at_];
    if (std::string_view("dDwWsS").find(c) != std::string_view::npos) {
      ++at_;
      into |= classOf(c);
      return true;
    }
    if (c == 'p' || c == 'P') return false;
    if (c == 'b') {
      ++at_;
      single = '\b';
      return true;
    }
    single = character();
    return single.has_value();
  }

  bool set() {
    const bool isNot = take("^");
    Pattern::Set all;
    while (!isAt(']')) {
      if (at_ >= source_.size()) return false;
      std::optional<char> low;
      std::optional<char> high;
      if (!setPart(all, low)) return false;
      if (!low) continue;
      high = low;
      if (isAt('-') && at_ + 1 < source_.size() && source_[at_ + 1] != ']') {
        ++at_;
        if (!setPart(all, high)) return false;
      }
      if (!high) return false;
      for (int c = static_cast<unsigned char>(*low); c <= static_cast<unsigned char>(*high); ++c)
        all.set(static_cast<std::size_t>(c));
    }
    ++at_;
    one(isNot ? ~all : all);
    return true;
  }

  bool bounds(std::uint32_t& least, std::uint32_t& most) {
    const std::size_t sign = at_ < source_.size() ? std::string_view("*+?").find(source_[at_]) : std::string_view::npos;
    if (sign != std::string_view::npos) {
      ++at_;
      least = sign == 1 ? 1 : 0;
      most = sign == 2 ? 1 : kNoEnd;
      return true;
    }
    if (!isAt('{') || at_ + 1 >= source_.size() || !isDigit(source_[at_ + 1])) return false;
    const std::size_t end = source_.find('}', at_);
    if (end == std::string_view::npos) return false;
    const std::string inside(source_.substr(at_ + 1, end - at_ - 1));
    least = static_cast<std::uint32_t>(std::strtoul(inside.c_str(), nullptr, 10));
    const std::size_t comma = inside.find(',');
    most = comma == std::string::npos ? least
           : comma + 1 == inside.size()
               ? kNoEnd
               : static_cast<std::uint32_t>(std::strtoul(inside.c_str() + comma + 1, nullptr, 10));
    at_ = end + 1;
    return true;
  }

  // What stands from `begin` on again, after what is there now.
  void copy(const std::vector<Pattern::Step>& part, std::uint32_t begin) {
    const std::uint32_t shift = here() - begin;
    for (Pattern::Step step : part) {
      const bool doesGo =
          step.what == Do::split || step.what == Do::jump || step.what == Do::ahead || step.what == Do::notAhead;
      if (doesGo) step.first += shift;
      if (step.what == Do::split) step.second += shift;
      add(step);
    }
  }

  bool repeat(std::uint32_t begin) {
    std::uint32_t least = 1;
    std::uint32_t most = 1;
    if (!bounds(least, most)) return true;
    const bool isShort = take("?");
    const std::vector<Pattern::Step> part(made_.steps_.begin() + begin, made_.steps_.end());
    const std::uint32_t times = most == kNoEnd ? least + 1 : most;
    if (part.size() * std::max(times, 1U) > kMaxProgram) return false;
    made_.steps_.resize(begin);
    for (std::uint32_t i = 0; i < least; ++i)
      copy(part, begin);
    if (most == kNoEnd) {
      // A round that takes nothing ends the loop.
      const auto loop = static_cast<std::uint32_t>(made_.loops_++);
      const std::uint32_t split = add({Do::split, 0, 0});
      add({Do::mark, loop, 0});
      copy(part, begin);
      add({Do::moved, loop, 0});
      add({Do::jump, split, 0});
      go(split, isShort, here());
      return true;
    }
    std::vector<std::uint32_t> splits;
    for (std::uint32_t i = least; i < most; ++i) {
      splits.push_back(add({Do::split, 0, 0}));
      copy(part, begin);
    }
    for (const std::uint32_t split : splits)
      go(split, isShort, here());
    return true;
  }

  void go(std::uint32_t split, bool isShort, std::uint32_t end) {
    made_.steps_[split].first = isShort ? end : split + 1;
    made_.steps_[split].second = isShort ? split + 1 : end;
  }

  std::string_view source_;
  std::size_t at_ = 0;
  std::size_t nesting_ = 0;
  bool isCaseless_;
  bool isDotAll_;
  Pattern& made_;
};

std::optional<Pattern> Pattern::of(std::string_view source, std::string_view flags) {
  Pattern made;
  made.isGlobal_ = flags.find('g') != std::string_view::npos;
  made.isManyLines_ = flags.find('m') != std::string_view::npos;
  if (!PatternReader(source, flags, made).read()) return std::nullopt;
  return made;
}

bool Pattern::isWordEdge(const std::string& text, std::size_t at) {
  const bool isBefore = at > 0 && isWordByte(text[at - 1]);
  const bool isAfter = at < text.size() && isWordByte(text[at]);
  return isBefore != isAfter;
}

// Whether what takes no character holds at a place.
bool Pattern::holds(const Step& step, const std::string& text, std::size_t at) const {
  switch (step.what) {
    case Do::begin:
      return at == 0 || (isManyLines_ && text[at - 1] == '\n');
    case Do::end:
      return at == text.size() || (isManyLines_ && text[at] == '\n');
    case Do::word:
      return isWordEdge(text, at);
    default:
      return !isWordEdge(text, at);
  }
}

// The bytes of a group, where its text stands again at a place.
std::size_t Pattern::sizeAgain(const std::string& text, std::size_t at, const std::vector<std::size_t>& places,
                               std::size_t group) {
  const std::size_t begin = places[2 * group];
  const std::size_t end = places[2 * group + 1];
  if (begin == PatternMatch::kNowhere || end == PatternMatch::kNowhere) return 0;
  return text.compare(at, end - begin, text, begin, end - begin) == 0 ? end - begin : PatternMatch::kNowhere;
}

bool Pattern::run(const std::string& text, std::size_t at, std::uint32_t from, std::vector<std::size_t>& places,
                  std::size_t& steps) const {
  struct Other {
    std::uint32_t step;
    std::size_t at;
    std::vector<std::size_t> places;
  };
  std::vector<Other> others{{from, at, places}};
  while (!others.empty()) {
    Other now = std::move(others.back());
    others.pop_back();
    for (bool isAlive = true; isAlive;) {
      if (++steps > kMaxSteps) return false;
      const Step& step = steps_[now.step];
      ++now.step;
      switch (step.what) {
        case Do::one:
          isAlive = now.at < text.size() && sets_[step.first][static_cast<unsigned char>(text[now.at])];
          ++now.at;
          break;
        case Do::save:
          now.places[step.first] = now.at;
          break;
        case Do::split:
          others.push_back({step.second, now.at, now.places});
          now.step = step.first;
          break;
        case Do::jump:
          now.step = step.first;
          break;
        case Do::ahead:
        case Do::notAhead: {
          std::vector<std::size_t> inner = now.places;
          isAlive = run(text, now.at, now.step, inner, steps) == (step.what == Do::ahead);
          if (isAlive && step.what == Do::ahead) now.places = inner;
          now.step = step.first;
          break;
        }
        case Do::again: {
          const std::size_t size = step.first < groups_ ? sizeAgain(text, now.at, now.places, step.first) : 0;
          isAlive = size != PatternMatch::kNowhere;
          now.at += isAlive ? size : 0;
          break;
        }
        case Do::mark:
          now.places[2 * groups_ + step.first] = now.at;
          break;
        case Do::moved:
          isAlive = now.places[2 * groups_ + step.first] != now.at;
          break;
        case Do::done:
          places = now.places;
          return true;
        default:
          isAlive = holds(step, text, now.at);
      }
    }
  }
  return false;
}

std::optional<PatternMatch> Pattern::find(const std::string& text, std::size_t from) const {
  std::size_t steps = 0;
  for (std::size_t at = from; at <= text.size() && steps <= kMaxSteps; ++at) {
    PatternMatch match;
    match.places.assign(2 * groups_ + loops_, PatternMatch::kNowhere);
    if (!run(text, at, 0, match.places, steps)) continue;
    match.places.resize(2 * groups_);
    return match;
  }
  return std::nullopt;
}

}  // namespace flow
